#include "pixels.h"

#include "zqColorConversion.h"

#include <utility>

namespace zqconvert {

namespace {

struct Pixel {
  uint8_t red, green, blue, alpha;
};

Pixel spread(unsigned word) {
  const unsigned red = word >> 11;
  const unsigned green = (word >> 5) & 63;
  const unsigned blue = word & 31;
  return {static_cast<uint8_t>((red << 3) | (red >> 2)), static_cast<uint8_t>((green << 2) | (green >> 4)),
          static_cast<uint8_t>((blue << 3) | (blue >> 2)), 255};
}

Pixel pixelAt(int type, const uint8_t *at) {
  switch (type) {
  case COLOR_RGB565:
  case COLOR_RGB16_ALT:
    return spread(at[0] | (unsigned{at[1]} << 8));
  case kRgb565Swapped:
    return spread(at[1] | (unsigned{at[0]} << 8));
  case COLOR_RGB24:
    return {at[2], at[1], at[0], 255};
  case kRgb24:
    return {at[0], at[1], at[2], 255};
  case kRgba:
    return {at[0], at[1], at[2], at[3]};
  case kBgra:
    return {at[2], at[1], at[0], at[3]};
  default:
    return {at[0], at[0], at[0], 255};
  }
}

} // namespace

bool hasAlpha(int type) {
  return colorType(type).family == Family::Rgb32;
}

const uint8_t *lineOf(const Frame &frame, int line) {
  return frame.planes[0].data() + static_cast<std::size_t>(line) * static_cast<std::size_t>(frame.stride);
}

void expandLine(const Frame &frame, int line, PixelOrder order, bool alpha, std::vector<uint8_t> &bytes) {
  const bool fourth = alpha && hasAlpha(frame.type);
  const int step = tightStride(frame.type, 1);
  const uint8_t *in = lineOf(frame, line);
  bytes.clear();
  for (int x = 0; x < frame.width; ++x, in += step) {
    Pixel pixel = pixelAt(frame.type, in);
    if (order == PixelOrder::Bgr) {
      std::swap(pixel.red, pixel.blue);
    }
    bytes.insert(bytes.end(), {pixel.red, pixel.green, pixel.blue});
    if (fourth) {
      bytes.push_back(pixel.alpha);
    }
  }
}

} // namespace zqconvert
