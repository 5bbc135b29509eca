// Converts pictures of all types in all modes and hands back the picture written, for tests that look at colours.
#pragma once

#include "containment/cells.h"
#include "containment/expectation.h"
#include "support/picture.h"

#include <array>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace frame_test {

/// A written picture, its lines tight, as pixels of one number each.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> values;
  [[nodiscard]] uint32_t at(int x, int y) const {
    return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
  }
};

/// Planes of a picture as vectors of bytes.
using Planes = std::array<std::vector<uint8_t>, 3>;

class ModeRunner {
public:
  ModeRunner() { zqCCInit(&handle_); }
  ~ModeRunner() { zqCCUninit(handle_); }
  ModeRunner(const ModeRunner &) = delete;
  ModeRunner &operator=(const ModeRunner &) = delete;

  void selectMatrix(ColorMatrixIndex index) {
    zqCCSetParameter(handle_, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(static_cast<uintptr_t>(index)));
  }

  /// The planes written on a ground of `ground` bytes; nothing if the conversion is refused.
  std::optional<Planes> convert(const containment::Mode &mode, const support::Picture &from, const reference::Size &to,
                                uint8_t ground = 0x5A) {
    return convertPart(mode, from, {from.width, from.height}, {}, to, ground);
  }

  /// The same of a part of the picture: the plane pointers moved by `offsets` bytes.
  std::optional<Planes> convertPart(const containment::Mode &mode, const support::Picture &from,
                                    const reference::Size &part, const std::array<std::ptrdiff_t, 3> &offsets,
                                    const reference::Size &to, uint8_t ground = 0x5A) {
    ConvertParams p = containment::recordOf(mode, {part.width, part.height, to.width, to.height});
    const reference::Size written = containment::writtenSize(p);
    p.inStride = from.stride;
    p.outStride = support::tightStride(mode.outType, written.width);
    Planes planes;
    for (int i = 0; i < 3; ++i) {
      const auto index = static_cast<std::size_t>(i);
      const auto shape = support::planeShape(mode.outType, written.width, written.height, p.outStride, i);
      planes[index].assign(shape.bytes() + 16, ground);
      p.inBuf[i] = i < support::planeCount(from.type) ? from.plane(i) + offsets[index] : nullptr;
      p.outBuf[i] = planes[index].data();
    }
    const bool done = zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &p) == CC_OK && zqCCProcess(handle_, &p) == CC_OK;
    return done ? std::optional<Planes>(planes) : std::nullopt;
  }

  /// The same for RGB output, 16 bits or 24 bits (blue lowest) a pixel.
  std::optional<Pixels> convertToPixels(const containment::Mode &mode, const support::Picture &from,
                                        const reference::Size &to) {
    const std::optional<Planes> planes = convert(mode, from, to);
    if (!planes) {
      return std::nullopt;
    }
    const ConvertParams p = containment::recordOf(mode, {from.width, from.height, to.width, to.height});
    const reference::Size written = containment::writtenSize(p);
    Pixels pixels{written.width, written.height, {}};
    const std::size_t bytes = mode.outType == COLOR_RGB24 ? 3 : 2;
    const auto count = static_cast<std::size_t>(written.width) * static_cast<std::size_t>(written.height);
    for (std::size_t i = 0; i < count; ++i) {
      uint32_t value = 0;
      for (std::size_t k = bytes; k-- > 0;) {
        value = value << 8 | (*planes)[0][i * bytes + k];
      }
      pixels.values.push_back(value);
    }
    return pixels;
  }

private:
  ConvertContext *handle_ = nullptr;
};

inline bool isTurn(uint32_t rotation) {
  return rotation >= ROTATION_90_LEFT && rotation <= ROTATION_180;
}
inline bool isPlanar420(int type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR;
}
inline bool isPlanar422(int type) {
  return type == COLOR_YUV422_PLANAR || type == COLOR_YVU422_PLANAR;
}
/// Planar 4:4:4, 4:4:0, 4:1:1 and quarter height.
inline bool isOtherChroma(int type) {
  return type == COLOR_YUV444_PLANAR || type == COLOR_YUV440_PLANAR || type == COLOR_YUV411_PLANAR ||
         type == COLOR_YUV_QUARTER_HEIGHT;
}
inline bool isYuv(int type) {
  return !support::isRgb16(type) && type != COLOR_RGB24 && type != COLOR_RGB888_PLANAR;
}
inline bool isRgb(int type) {
  return support::isRgb16(type) || type == COLOR_RGB24;
}

/// The place of a pixel's luma, U and V in a picture's planes.
struct SamplePlaces {
  int uPlane, vPlane;
  std::ptrdiff_t y, u, v;
};

inline SamplePlaces placesOf(int type, int stride, int x, int y) {
  const std::ptrdiff_t line = std::ptrdiff_t{y} * stride;
  const bool vFirst = isPlanar420(type) ? type == COLOR_YVU420_PLANAR : type == COLOR_YVU422_PLANAR;
  SamplePlaces at{vFirst ? 2 : 1, vFirst ? 1 : 2, line + x, 0, 0};
  if (support::isPacked422(type)) {
    // Byte positions of left luma, right luma, U and V.
    static constexpr int kOrders[8][4] = {{0, 2, 1, 3}, {0, 2, 3, 1}, {1, 3, 0, 2}, {1, 3, 2, 0},
                                          {2, 0, 1, 3}, {2, 0, 3, 1}, {3, 1, 0, 2}, {3, 1, 2, 0}};
    const auto &order = kOrders[type < 10 ? type - 6 : type - 10];
    const std::ptrdiff_t group = line + std::ptrdiff_t{x / 2} * 4;
    return {0, 0, group + order[x % 2], group + order[2], group + order[3]};
  }
  if (support::isSemiPlanar(type)) {
    const std::ptrdiff_t pair = std::ptrdiff_t{y / 2} * stride + x / 2 * 2;
    return {1, 1, line + x, pair + (type == COLOR_YUV420_PACK ? 0 : 1), pair + (type == COLOR_YUV420_PACK ? 1 : 0)};
  }
  const int half = stride >> 1;
  switch (type) {
  case COLOR_YUV422_PLANAR:
  case COLOR_YVU422_PLANAR:
    at.u = std::ptrdiff_t{y} * half + x / 2;
    break;
  case COLOR_YUV440_PLANAR:
    at.u = std::ptrdiff_t{y / 2} * stride + x;
    break;
  case COLOR_YUV411_PLANAR:
    at.u = std::ptrdiff_t{y} * (stride >> 2) + x / 4;
    break;
  case COLOR_YUV_QUARTER_HEIGHT:
    at.u = std::ptrdiff_t{y / 4} * stride + x;
    break;
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    at.u = line + x;
    break;
  default:
    at.u = std::ptrdiff_t{y / 2} * half + x / 2;
  }
  at.v = at.u;
  return at;
}

struct Yuv {
  int y, u, v;
};

/// A picture of even sides, multiples of 4 for 4:1:1 and quarter height, whose pixel (x, y) is colour(x, y); the
/// bytes of RGB pixels are taken from it in order. Lines are tight: some conversions to RGB24 step by other pitches
/// than the planes'.
template <class Colour>
support::Picture paint(int type, int width, int height, Colour colour) {
  support::Picture picture(type, width, height, support::tightStride(type, width), support::Fill::Noise, 1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Yuv c = colour(x, y);
      if (isRgb(type)) {
        const int bytes = type == COLOR_RGB24 ? 3 : 2;
        const std::array<int, 3> parts{c.y, c.u, c.v};
        for (int k = 0; k < bytes; ++k) {
          picture.plane(0)[std::ptrdiff_t{y} * picture.stride + std::ptrdiff_t{x} * bytes + k] =
              static_cast<uint8_t>(parts.at(static_cast<std::size_t>(k)));
        }
        continue;
      }
      const SamplePlaces at = placesOf(type, picture.stride, x, y);
      picture.plane(0)[at.y] = static_cast<uint8_t>(c.y);
      picture.plane(at.uPlane)[at.u] = static_cast<uint8_t>(c.u);
      picture.plane(at.vPlane)[at.v] = static_cast<uint8_t>(c.v);
    }
  }
  return picture;
}

inline std::string nameOf(const containment::Mode &mode) {
  std::ostringstream text;
  text << "type " << mode.inType << " to " << mode.outType << ", isResize " << mode.isResize << ", rotation "
       << mode.rotation << ", quality " << mode.quality;
  return text.str();
}

} // namespace frame_test
