#include "option_values.h"

#include "error.h"

#include <algorithm>
#include <array>

namespace zqconvert {

namespace {

/// A size of no pixels deserves words of its own.
void requirePixels(const std::string &name, const std::string &text, int width, int height) {
  if (width == 0 || height == 0) {
    throw Error(name + ": a picture of " + text + " has no pixels");
  }
}

/// Nothing if the text is not two counts with a cross between them.
std::optional<Size> parseTwoSides(const std::string &text) {
  const std::vector<std::string> sides = split(lowerCase(text), 'x');
  if (sides.size() != 2) {
    return std::nullopt;
  }
  const auto side = [](const std::string &word) -> std::optional<int> {
    if (!word.starts_with('-')) {
      return parseCount(word);
    }
    const std::optional<int> multiple = parseCount(word.substr(1), kMaxSide);
    return multiple && *multiple > 0 ? std::optional(-*multiple) : std::nullopt;
  };
  const std::optional<int> width = side(sides[0]);
  const std::optional<int> height = side(sides[1]);
  return width && height ? std::optional(Size{*width, *height}) : std::nullopt;
}

} // namespace

Size parseSizeOption(const std::string &name, const std::string &text) {
  const std::optional<Size> size = parseTwoSides(text);
  if (!size || size->width < 0 || size->height < 0) {
    throw Error(name + " takes WIDTHxHEIGHT, such as 640x480, not '" + text + "'");
  }
  requirePixels(name, text, size->width, size->height);
  requirePlausible(*size, name);
  return *size;
}

Size parseScale(const std::string &text) {
  const std::optional<Size> size = parseTwoSides(text);
  if (!size || (size->width < 0 && size->height < 0)) {
    throw Error("--scale takes WIDTHxHEIGHT, such as 640x480, or -1 for one of them (640x-1), not '" + text + "'");
  }
  requirePixels("--scale", text, size->width, size->height);
  requirePlausible({std::max(size->width, 1), std::max(size->height, 1)}, "--scale");
  return *size;
}

Matrix parseMatrix(const std::string &text) {
  const std::string lower = lowerCase(text);
  if (lower == "bt601") {
    return {MATRIX_BT601, {}};
  }
  if (lower == "bt709") {
    return {MATRIX_BT709, {}};
  }
  if (lower == "grey" || lower == "gray") {
    return {MATRIX_GREY, {}};
  }
  Matrix matrix{MATRIX_CUSTOM, {}};
  const std::vector<std::string> parts = split(text, ',');
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<double> value = parseNumber(parts[i]);
    if (parts.size() != matrix.custom.size() || !value) {
      throw Error("--matrix takes bt601, bt709, grey or four numbers a,b,c,d, not '" + text + "'");
    }
    matrix.custom.at(i) = *value;
  }
  return matrix;
}

uint32_t parseRotation(const std::string &text, bool flip) {
  if (text.empty()) {
    return flip ? ROTATION_FLIP_V : ROTATION_NONE;
  }
  if (flip) {
    throw Error("--rotate and --flip cannot be combined");
  }
  const std::string lower = lowerCase(text);
  if (lower == "left" || lower == "270") {
    return ROTATION_90_LEFT;
  }
  if (lower == "right" || lower == "90") {
    return ROTATION_90_RIGHT;
  }
  if (lower == "180") {
    return ROTATION_180;
  }
  throw Error("--rotate takes left, right, or 90, 180 or 270 degrees clockwise, not '" + text + "'");
}

uint32_t parseQuality(const std::string &text) {
  const std::optional<int> quality = parseCount(text, 3);
  if (!quality) {
    throw Error("--quality takes 0, 1, 2 or 3, not '" + text + "'");
  }
  return static_cast<uint32_t>(*quality);
}

Rectangle parseCrop(const std::string &text) {
  const std::vector<std::string> parts = split(text, ',');
  std::array<int, 4> values{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<int> value = parseCount(parts[i], kMaxSide);
    if (parts.size() != values.size() || !value) {
      throw Error("--crop takes X,Y,WIDTH,HEIGHT in pixels, not '" + text + "'");
    }
    values.at(i) = *value;
  }
  return {values[0], values[1], values[2], values[3]};
}

FrameRange parseFrames(const std::string &text) {
  const std::vector<std::string> parts = split(text, ':');
  FrameRange range;
  const bool open = parts.size() == 2 && parts[1].empty();
  const std::optional<int> first = parts[0].empty() && parts.size() == 2 ? 1 : parseCount(parts[0]);
  const std::optional<int> last = open ? 0 : parseCount(parts.back());
  const bool ordered = first && last && *first >= 1 && (open || *last >= *first);
  if (parts.size() > 2 || text == ":" || !ordered) {
    throw Error("--frames takes FIRST:LAST, FIRST:, :LAST or one number, counted from 1, not '" + text + "'");
  }
  range.first = *first;
  range.last = *last;
  return range;
}

} // namespace zqconvert
