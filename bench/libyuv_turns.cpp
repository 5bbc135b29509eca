// Turns by libyuv. What it has no function for is split into planes, turned and joined.
#include "libyuv_stages.h"

#include <libyuv.h>

#include <cstddef>
#include <vector>

namespace bench::yuv {
namespace {

bool good(int result) {
  return result == 0;
}

template <class Function>
bool rotatePlanes(Function function, const View &from, const View &to, libyuv::RotationMode mode) {
  return good(function(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.plane[2], from.stride[2],
                       to.plane[0], to.stride[0], to.plane[1], to.stride[1], to.plane[2], to.stride[2], from.size.width,
                       from.size.height, mode));
}

/// Pairs of chroma samples cannot be turned as they are: split, turn, join.
bool rotateNv12(const View &from, const View &to, libyuv::RotationMode mode) {
  static std::vector<uint8_t> scratch;
  const int32_t pairs = to.size.width / 2;
  const int32_t lines = to.size.height / 2;
  const std::size_t bytes = static_cast<std::size_t>(pairs) * static_cast<std::size_t>(lines);
  scratch.resize(2 * bytes);
  uint8_t *u = scratch.data();
  uint8_t *v = u + bytes;
  const bool turned = good(libyuv::RotatePlane(from.plane[0], from.stride[0], to.plane[0], to.stride[0],
                                               from.size.width, from.size.height, mode)) &&
                      good(libyuv::SplitRotateUV(from.plane[1], from.stride[1], u, pairs, v, pairs, from.size.width / 2,
                                                 from.size.height / 2, mode));
  libyuv::MergeUVPlane(u, pairs, v, pairs, to.plane[1], to.stride[1], pairs, lines);
  return turned;
}

/// Narrow pictures are turned by vector code as pairs of bytes are, and joined again. The function for planes of 16-bit
/// samples, plain C, is faster for wide ones.
bool rotateRgb565(const View &from, const View &to, libyuv::RotationMode mode) {
  constexpr int32_t kNarrow = 128;
  if (from.size.width > kNarrow) {
    return good(libyuv::RotatePlane_16(reinterpret_cast<const uint16_t *>(from.plane[0]), from.stride[0] / 2,
                                       reinterpret_cast<uint16_t *>(to.plane[0]), to.stride[0] / 2, from.size.width,
                                       from.size.height, mode));
  }
  static std::vector<uint8_t> scratch;
  const int32_t stride = (to.size.width + 63) / 64 * 64;
  const std::size_t bytes = static_cast<std::size_t>(stride) * static_cast<std::size_t>(to.size.height);
  scratch.resize(2 * bytes);
  uint8_t *low = scratch.data();
  uint8_t *high = low + bytes;
  const bool turned = good(libyuv::SplitRotateUV(from.plane[0], from.stride[0], low, stride, high, stride,
                                                 from.size.width, from.size.height, mode));
  libyuv::MergeUVPlane(low, stride, high, stride, to.plane[0], to.stride[0], to.size.width, to.size.height);
  return turned;
}

bool rotateNv12ToI420(const View &from, const View &to, libyuv::RotationMode mode) {
  return good(libyuv::NV12ToI420Rotate(from.plane[0], from.stride[0], from.plane[1], from.stride[1], to.plane[0],
                                       to.stride[0], to.plane[1], to.stride[1], to.plane[2], to.stride[2],
                                       from.size.width, from.size.height, mode));
}

} // namespace

bool rotate(const View &from, const View &to, libyuv::RotationMode mode) {
  switch (from.type) {
  case COLOR_YUV420_PLANAR:
    return rotatePlanes(libyuv::I420Rotate, from, to, mode);
  case COLOR_YUV422_PLANAR:
    return rotatePlanes(libyuv::I422Rotate, from, to, mode);
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    return rotatePlanes(libyuv::I444Rotate, from, to, mode);
  case COLOR_YUV420_PACK:
    return to.type == COLOR_YUV420_PACK ? rotateNv12(from, to, mode) : rotateNv12ToI420(from, to, mode);
  case COLOR_RGB565:
    return rotateRgb565(from, to, mode);
  case kBgra:
    return good(libyuv::ARGBRotate(from.plane[0], from.stride[0], to.plane[0], to.stride[0], from.size.width,
                                   from.size.height, mode));
  default:
    return false;
  }
}

} // namespace bench::yuv
