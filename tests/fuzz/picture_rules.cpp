#include "fuzz/picture_rules.h"

#include "picture/reference/formats.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <utility>

namespace fuzz {

namespace {

using reference::Format;

bool isFormat(int32_t number) {
  return number >= 1 && number <= static_cast<int32_t>(reference::allFormats().size());
}

bool isSide(int32_t pixels) {
  return pixels >= 1 && pixels <= ZQP_MOST_PIXELS;
}

bool isIn(int32_t value, int32_t least, int32_t most) {
  return value >= least && value <= most;
}

bool liesIn(const ZqpRect &rect, int32_t width, int32_t height) {
  return rect.x >= 0 && rect.y >= 0 && rect.width >= 1 && rect.height >= 1 && int64_t{rect.x} + rect.width <= width &&
         int64_t{rect.y} + rect.height <= height;
}

bool areColours(const ZqpColours &colours) {
  if (!isIn(colours.matrix, ZQP_BT601, ZQP_MATRIX_GIVEN) || !isIn(colours.range, ZQP_RANGE_USUAL, ZQP_RANGE_FULL) ||
      !isIn(colours.siting, ZQP_SITING_LEFT, ZQP_SITING_CENTRE)) {
    return false;
  }
  // .8 is no float: what lies within a float's rounding of it is taken.
  return colours.matrix != ZQP_MATRIX_GIVEN ||
         (colours.kr > 0 && colours.kb > 0 && double{colours.kr} + double{colours.kb} <= 0.8000001);
}

struct Extent {
  uintptr_t start;
  uint64_t bytes;
};

/// Errors of one plane; what it takes from its lowest address on.
Errors errorsOf(const ZqpPlane &plane, const Format &format, int number, const ZqpPicture &picture, Extent &extent) {
  const auto lineBytes = static_cast<uint64_t>(lineBytesOf(format, number, picture.width));
  const auto lines = static_cast<uint64_t>(planeLinesOf(format, number, picture.height));
  const uint64_t pitch = plane.stride < 0 ? -static_cast<uint64_t>(plane.stride) : static_cast<uint64_t>(plane.stride);
  Errors errors = 0;
  if (plane.data == nullptr) {
    errors |= only(ZQP_ERR_PLANE);
  }
  if (lines > 1 && pitch < lineBytes) {
    errors |= only(ZQP_ERR_STRIDE);
  }
  uint64_t gaps = 0;
  if (__builtin_mul_overflow(pitch, lines - 1, &gaps) || __builtin_add_overflow(gaps, lineBytes, &extent.bytes) ||
      extent.bytes > plane.bytes) {
    errors |= only(ZQP_ERR_PLANE);
  }
  extent.start = reinterpret_cast<uintptr_t>(plane.data);
  return errors;
}

struct Extents {
  Extent of[3]{};
  int count = 0;
};

Errors errorsOf(const ZqpPicture &picture, int32_t format, int32_t width, int32_t height, Extents &extents) {
  if (picture.format != format || picture.width != width || picture.height != height) {
    return only(ZQP_ERR_VIEW);
  }
  Errors errors = 0;
  const Format &is = reference::formatOf(format);
  for (; extents.count < planesOf(is); ++extents.count) {
    errors |= errorsOf(picture.planes[extents.count], is, extents.count, picture, extents.of[extents.count]);
  }
  return errors;
}

bool overlap(const Extent &a, const Extent &b) {
  return a.start < b.start + b.bytes && b.start < a.start + a.bytes;
}

bool overlap(const Extents &in, const Extents &out) {
  for (int p = 0; p < out.count; ++p) {
    for (int q = 0; q < in.count; ++q) {
      if (overlap(out.of[p], in.of[q])) {
        return true;
      }
    }
    for (int q = 0; q < p; ++q) {
      if (overlap(out.of[p], out.of[q])) {
        return true;
      }
    }
  }
  return false;
}

ZqpColours readColours(Script &script) {
  ZqpColours colours{};
  colours.matrix = script.below(4);
  colours.range = script.below(3);
  colours.siting = script.below(2);
  colours.kr = static_cast<float>(1 + script.below(40)) / 100;
  colours.kb = static_cast<float>(1 + script.below(40)) / 100;
  return colours;
}

/// Any number, or one that is beside those that mean something.
int32_t readAnything(Script &script) {
  const uint8_t first = script.byte();
  return first < 128 ? first - 2 : first < 192 ? ZQP_MOST_PIXELS - 2 + first % 4 : script.number();
}

void spoil(Script &script, ZqpConversion &c) {
  int32_t *fields[] = {&c.inFormat,         &c.inWidth,           &c.inHeight,         &c.crop.x,
                       &c.crop.y,           &c.crop.width,        &c.crop.height,      &c.outFormat,
                       &c.outWidth,         &c.outHeight,         &c.orientation,      &c.filter,
                       &c.dither,           &c.inColours.matrix,  &c.inColours.range,  &c.inColours.siting,
                       &c.outColours.range, &c.outColours.matrix, &c.outColours.siting};
  const int choice = script.below(std::size(fields) + 4);
  const auto bits = [&] {
    const uint32_t word = script.word();
    float value = 0;
    std::memcpy(&value, &word, sizeof value);
    return value;
  };
  switch (choice) {
  case 0:
    c.recordSize = script.word();
    break;
  case 1:
    c.inColours.matrix = ZQP_MATRIX_GIVEN;
    c.inColours.kr = bits();
    break;
  case 2:
    c.outColours.matrix = ZQP_MATRIX_GIVEN;
    c.outColours.kb = bits();
    break;
  case 3:
    c.crop.width = c.crop.height = 0;
    break;
  default:
    *fields[choice - 4] = readAnything(script);
    break;
  }
}

} // namespace

Errors errorsOf(const ZqpConversion &c) {
  if (c.recordSize != sizeof c) {
    return only(ZQP_ERR_RECORD);
  }
  Errors errors = 0;
  if (!isFormat(c.inFormat) || !isFormat(c.outFormat) || reference::formatOf(c.outFormat).isInputOnly) {
    errors |= only(ZQP_ERR_FORMAT);
  }
  if (!isSide(c.inWidth) || !isSide(c.inHeight) || !isSide(c.outWidth) || !isSide(c.outHeight)) {
    errors |= only(ZQP_ERR_SIZE);
  }
  ZqpRect crop = c.crop;
  if (crop.width == 0 && crop.height == 0) {
    crop.width = c.inWidth;
    crop.height = c.inHeight;
  }
  if (!liesIn(crop, c.inWidth, c.inHeight)) {
    errors |= only(ZQP_ERR_CROP);
  }
  errors |= isIn(c.orientation, 0, 8) ? 0 : only(ZQP_ERR_ORIENTATION);
  errors |= isIn(c.filter, ZQP_FILTER_BILINEAR, ZQP_FILTER_AREA) ? 0 : only(ZQP_ERR_FILTER);
  errors |= isIn(c.dither, ZQP_DITHER_NONE, ZQP_DITHER_ORDERED) ? 0 : only(ZQP_ERR_DITHER);
  errors |= areColours(c.inColours) && areColours(c.outColours) ? 0 : only(ZQP_ERR_COLOURS);
  return errors;
}

Errors errorsOf(const ZqpConversion &c, const ZqpPicture &in, const ZqpPicture &out, int32_t firstLine,
                int32_t lineCount) {
  if (in.recordSize != sizeof in || out.recordSize != sizeof out) {
    return only(ZQP_ERR_RECORD);
  }
  Extents inExtents;
  Extents outExtents;
  Errors errors = errorsOf(in, c.inFormat, c.inWidth, c.inHeight, inExtents) |
                  errorsOf(out, c.outFormat, c.outWidth, c.outHeight, outExtents);
  if (overlap(inExtents, outExtents)) {
    errors |= only(ZQP_ERR_OVERLAP);
  }
  if (firstLine < 0 || lineCount < 0 || int64_t{firstLine} + lineCount > c.outHeight) {
    errors |= only(ZQP_ERR_LINES);
  }
  return errors;
}

void expect(int32_t error, Errors allowed, const char *what) {
  const bool isExpected = error == ZQP_OK ? allowed == 0 : error > 0 && error < 32 && (allowed & only(error)) != 0;
  if (!isExpected) {
    failPicture(what, error);
  }
}

void failPicture(const char *what, int32_t error) {
  std::fprintf(stderr, "%s: code %d (%s)\n", what, error, zqpErrorText(error));
  std::abort();
}

ZqpConversion readGoodConversion(Script &script) {
  ZqpConversion c{};
  c.recordSize = sizeof c;
  c.inFormat = 1 + script.below(ZQP_RGB_PLANES);
  c.outFormat = 1 + script.below(ZQP_BGRA);
  const auto side = [&] {
    const uint8_t byte = script.byte();
    return 1 + (byte < 224 ? byte % 72 : byte * (1 + script.byte() % 8));
  };
  c.inWidth = side();
  c.inHeight = side();
  c.orientation = script.below(9);
  c.filter = script.below(3);
  c.dither = script.below(2);
  c.inColours = readColours(script);
  c.outColours = script.below(2) != 0 ? readColours(script) : c.inColours;
  int32_t width = c.inWidth;
  int32_t height = c.inHeight;
  if (script.below(3) == 0) {
    c.crop.x = static_cast<int32_t>(script.word() % static_cast<uint32_t>(c.inWidth));
    c.crop.y = static_cast<int32_t>(script.word() % static_cast<uint32_t>(c.inHeight));
    width = c.crop.width = 1 + static_cast<int32_t>(script.word() % static_cast<uint32_t>(c.inWidth - c.crop.x));
    height = c.crop.height = 1 + static_cast<int32_t>(script.word() % static_cast<uint32_t>(c.inHeight - c.crop.y));
  }
  if (c.orientation >= 5) {
    std::swap(width, height);
  }
  c.outWidth = script.below(2) != 0 ? side() : width;
  c.outHeight = script.below(2) != 0 ? side() : height;
  return c;
}

ZqpConversion readConversion(Script &script) {
  const int kind = script.below(4);
  if (kind == 0) {
    unsigned char bytes[sizeof(ZqpConversion)];
    for (unsigned char &byte : bytes) {
      byte = script.byte();
    }
    ZqpConversion c;
    std::memcpy(&c, bytes, sizeof c);
    return c;
  }
  ZqpConversion c = readGoodConversion(script);
  for (int i = 1; i < kind; ++i) {
    spoil(script, c);
  }
  return c;
}

void writeConversion(ScriptWriter &writer, int32_t in, int32_t out, int variety) {
  const auto byte = [&](int value) { writer.byte(static_cast<uint8_t>(value)); };
  byte(in - 1);
  byte(out - 1);
  byte(variety * 7 % 72);
  byte(variety * 5 % 31);
  byte(variety % 9);
  byte(variety % 3);
  byte(variety % 2);
  for (int i = 0; i < 2; ++i) { // colours of both sides
    byte(variety / 2 % 4);
    byte(variety / 3 % 3);
    byte(variety / 5 % 2);
    byte(20);
    byte(10);
    if (i == 0) {
      byte(1);
    }
  }
  byte(variety % 3);
  if (variety % 3 == 0) {
    for (int i = 0; i < 4; ++i) {
      writer.word(static_cast<uint32_t>(variety * (i + 3)));
    }
  }
  for (int i = 0; i < 2; ++i) {
    byte(variety / 2 % 2);
    if (variety / 2 % 2 != 0) {
      byte(variety * (11 + i) % 72);
    }
  }
}

} // namespace fuzz
