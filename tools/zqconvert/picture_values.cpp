#include "picture_values.h"

#include "error.h"

#include <array>

namespace zqconvert {

namespace {

/// Two words, either of which may be empty, but not both.
std::array<std::string, 2> inAndOut(const std::string &option, const std::string &text) {
  const std::vector<std::string> parts = split(lowerCase(text), ':');
  const std::string out = parts.size() == 2 ? parts[1] : "";
  if (parts.size() > 2 || (parts.size() == 2 && out.empty()) || (parts[0].empty() && out.empty())) {
    throw Error(option + " takes IN, IN:OUT or :OUT, not '" + text + "'");
  }
  return {parts[0], out};
}

MatrixChoice matrixOf(const std::string &text) {
  if (text == "bt601") {
    return {ZQP_BT601, 0, 0};
  }
  if (text == "bt709") {
    return {ZQP_BT709, 0, 0};
  }
  if (text == "bt2020") {
    return {ZQP_BT2020, 0, 0};
  }
  const std::vector<std::string> parts = split(text, ',');
  const std::optional<double> kr = parts.size() == 2 ? parseNumber(parts[0]) : std::nullopt;
  const std::optional<double> kb = parts.size() == 2 ? parseNumber(parts[1]) : std::nullopt;
  if (!kr || !kb) {
    throw Error("--matrix takes bt601, bt709, bt2020 or two numbers Kr,Kb, such as 0.2126,0.0722, not '" + text + "'");
  }
  if (*kr <= 0 || *kb <= 0 || *kr + *kb > 0.8) {
    throw Error("--matrix: Kr and Kb must be above 0 and together at most 0.8, which " + text + " are not");
  }
  return {ZQP_MATRIX_GIVEN, static_cast<float>(*kr), static_cast<float>(*kb)};
}

Range rangeOf(const std::string &text) {
  if (text != "limited" && text != "full") {
    throw Error("--range takes limited or full, of the input and behind a colon of the output, not '" + text + "'");
  }
  return text == "full" ? Range::Full : Range::Limited;
}

Siting sitingOf(const std::string &text) {
  if (text == "left") {
    return Siting::Left;
  }
  if (text == "centre" || text == "center") {
    return Siting::Centre;
  }
  throw Error("--siting takes left or centre, of the input and behind a colon of the output, not '" + text + "'");
}

template <class Value>
void parsePair(const std::string &option, const std::string &text, Value (*parse)(const std::string &),
               std::optional<Value> &in, std::optional<Value> &out) {
  if (text.empty()) {
    return;
  }
  const std::array<std::string, 2> words = inAndOut(option, text);
  if (!words[0].empty()) {
    in = parse(words[0]);
  }
  if (!words[1].empty()) {
    out = parse(words[1]);
  }
}

/// Quarter turns clockwise.
int quartersOf(const std::string &rotate) {
  const std::string lower = lowerCase(rotate);
  if (lower.empty()) {
    return 0;
  }
  if (lower == "right" || lower == "90") {
    return 1;
  }
  if (lower == "180") {
    return 2;
  }
  if (lower == "left" || lower == "270") {
    return 3;
  }
  throw Error("--rotate takes left, right, or 90, 180 or 270 degrees clockwise, not '" + rotate + "'");
}

} // namespace

int parseOrientation(const std::string &rotate, const std::string &flip) {
  constexpr std::array kTurned{1, 6, 3, 8};
  constexpr std::array kThenMirrored{2, 5, 4, 7}; // left to right
  const int quarters = quartersOf(rotate);
  const std::string lower = lowerCase(flip);
  if (lower.empty()) {
    return kTurned.at(static_cast<std::size_t>(quarters));
  }
  if (lower != "h" && lower != "v") {
    throw Error("--flip takes h (left to right) or v (top to bottom), not '" + flip + "'");
  }
  // Top to bottom is left to right and a half turn.
  const int turns = lower == "v" ? quarters + 2 : quarters;
  return kThenMirrored.at(static_cast<std::size_t>(turns % 4));
}

ZqpFilter parseFilter(const std::string &text) {
  const std::string lower = lowerCase(text);
  if (lower == "nearest") {
    return ZQP_FILTER_NEAREST;
  }
  if (lower == "area") {
    return ZQP_FILTER_AREA;
  }
  if (lower != "bilinear") {
    throw Error("--filter takes bilinear, nearest or area, not '" + text + "'");
  }
  return ZQP_FILTER_BILINEAR;
}

ZqpDither parseDither(const std::string &text) {
  const std::string lower = lowerCase(text);
  if (lower != "none" && lower != "ordered") {
    throw Error("--dither takes none or ordered, not '" + text + "'");
  }
  return lower == "none" ? ZQP_DITHER_NONE : ZQP_DITHER_ORDERED;
}

int parseThreads(const std::string &text) {
  constexpr int kMost = 256;
  const std::optional<int> threads = parseCount(text, kMost);
  if (!threads || *threads == 0) {
    throw Error("--threads takes a number from 1 to " + std::to_string(kMost) + ", not '" + text + "'");
  }
  return *threads;
}

void parseMatrices(const std::string &text, PictureRequest &request) {
  parsePair("--matrix", text, matrixOf, request.in.matrix, request.out.matrix);
}

void parseRanges(const std::string &text, PictureRequest &request) {
  parsePair("--range", text, rangeOf, request.in.range, request.out.range);
}

void parseSitings(const std::string &text, PictureRequest &request) {
  parsePair("--siting", text, sitingOf, request.in.siting, request.out.siting);
}

} // namespace zqconvert
