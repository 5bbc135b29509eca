#include "libyuv_stages.h"

#include <libyuv.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench::yuv {
namespace {

constexpr int32_t I420 = COLOR_YUV420_PLANAR;
constexpr int32_t I422 = COLOR_YUV422_PLANAR;
constexpr int32_t I444 = COLOR_YUV444_PLANAR;
constexpr int32_t NV12 = COLOR_YUV420_PACK;
constexpr int32_t YUYV = COLOR_YUV422_YUYV;
constexpr int32_t UYVY = COLOR_YUV422_UYVY;
constexpr int32_t RGB565 = COLOR_RGB565;
constexpr int32_t RGB24 = COLOR_RGB24;
constexpr int32_t PLANAR_RGB = COLOR_RGB888_PLANAR;

/// Lines of an ARGB intermediate: few enough to stay in the cache between the two conversions.
constexpr int32_t kStripLines = 16;

/// The dithering packer with nothing to add makes the plain packer's pixels, by faster code.
constexpr uint8_t kNoDither[16] = {};

bool good(int result) {
  return result == 0;
}

// libyuv spells out planes and strides; these call its functions with the first `count` planes of two views.

template <class Function, class... Rest>
bool threeToOne(Function function, const View &from, const View &to, Rest... rest) {
  return good(function(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.plane[2], from.stride[2],
                       to.plane[0], to.stride[0], rest...));
}

template <class Function>
bool twoToOne(Function function, const View &from, const View &to) {
  return good(function(from.plane[0], from.stride[0], from.plane[1], from.stride[1], to.plane[0], to.stride[0],
                       from.size.width, from.size.height));
}

template <class Function>
bool oneToOne(Function function, const View &from, const View &to) {
  return good(function(from.plane[0], from.stride[0], to.plane[0], to.stride[0], from.size.width, from.size.height));
}

template <class Function>
bool oneToThree(Function function, const View &from, const View &to) {
  return good(function(from.plane[0], from.stride[0], to.plane[0], to.stride[0], to.plane[1], to.stride[1], to.plane[2],
                       to.stride[2], from.size.width, from.size.height));
}

template <class Function, class... Rest>
bool threeToThree(Function function, const View &from, const View &to, Rest... rest) {
  return good(function(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.plane[2], from.stride[2],
                       to.plane[0], to.stride[0], to.plane[1], to.stride[1], to.plane[2], to.stride[2], rest...));
}

template <class Function>
bool scalePlanes(Function function, const View &from, const View &to, libyuv::FilterMode filter) {
  return good(function(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.plane[2], from.stride[2],
                       from.size.width, from.size.height, to.plane[0], to.stride[0], to.plane[1], to.stride[1],
                       to.plane[2], to.stride[2], to.size.width, to.size.height, filter));
}

bool toArgb(const View &from, const View &to) {
  const int32_t width = from.size.width;
  const int32_t height = from.size.height;
  switch (from.type) {
  case I420:
    return threeToOne(libyuv::I420ToARGB, from, to, width, height);
  case I422:
    return threeToOne(libyuv::I422ToARGB, from, to, width, height);
  case NV12:
    return twoToOne(libyuv::NV12ToARGB, from, to);
  case I444:
    return threeToOne(libyuv::I444ToARGB, from, to, width, height);
  case PLANAR_RGB:
    libyuv::MergeARGBPlane(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.plane[2], from.stride[2],
                           nullptr, 0, to.plane[0], to.stride[0], width, height);
    return true;
  case YUYV:
    return oneToOne(libyuv::YUY2ToARGB, from, to);
  case UYVY:
    return oneToOne(libyuv::UYVYToARGB, from, to);
  case RGB565:
    return oneToOne(libyuv::RGB565ToARGB, from, to);
  case RGB24:
    return oneToOne(libyuv::RGB24ToARGB, from, to);
  default:
    return false;
  }
}

bool fromArgb(const View &from, const View &to, Packer packer) {
  if (to.type != RGB565) {
    return oneToOne(libyuv::ARGBToRGB24, from, to);
  }
  if (packer == Packer::Plain) {
    return oneToOne(libyuv::ARGBToRGB565, from, to);
  }
  return good(libyuv::ARGBToRGB565Dither(from.plane[0], from.stride[0], to.plane[0], to.stride[0], kNoDither,
                                         from.size.width, from.size.height));
}

/// For layouts with a line of every plane for each line of the picture.
bool throughArgb(const View &from, const View &to, Packer packer) {
  static std::vector<uint8_t> scratch;
  const int32_t stride = 4 * from.size.width;
  scratch.resize(static_cast<std::size_t>(stride) * kStripLines);
  bool done = true;
  for (int32_t top = 0; done && top < from.size.height; top += kStripLines) {
    const int32_t lines = std::min(kStripLines, from.size.height - top);
    const View argb{kBgra, {from.size.width, lines}, {scratch.data(), nullptr, nullptr}, {stride, 0, 0}};
    done = toArgb(part(from, 0, top, argb.size), argb) && fromArgb(argb, part(to, 0, top, argb.size), packer);
  }
  return done;
}

bool toRgb565(const View &from, const View &to, Packer packer) {
  const int32_t width = from.size.width;
  const int32_t height = from.size.height;
  const bool plain = packer == Packer::Plain;
  switch (from.type) {
  case I420:
    return plain ? threeToOne(libyuv::I420ToRGB565, from, to, width, height)
                 : threeToOne(libyuv::I420ToRGB565Dither, from, to, kNoDither, width, height);
  case I422:
    return plain ? threeToOne(libyuv::I422ToRGB565, from, to, width, height) : throughArgb(from, to, packer);
  case NV12:
    return twoToOne(libyuv::NV12ToRGB565, from, to);
  case kBgra:
    return fromArgb(from, to, packer);
  default:
    return throughArgb(from, to, packer);
  }
}

bool toRgb24(const View &from, const View &to) {
  const int32_t width = from.size.width;
  const int32_t height = from.size.height;
  switch (from.type) {
  case I420:
    return threeToOne(libyuv::I420ToRGB24, from, to, width, height);
  case I422:
    return threeToOne(libyuv::I422ToRGB24, from, to, width, height);
  case NV12:
    return twoToOne(libyuv::NV12ToRGB24, from, to);
  case kBgra:
    return fromArgb(from, to, Packer::Plain);
  default:
    return throughArgb(from, to, Packer::Plain);
  }
}

bool toI420(const View &from, const View &to) {
  switch (from.type) {
  case I422:
    return threeToThree(libyuv::I422ToI420, from, to, from.size.width, from.size.height);
  case NV12:
    return good(libyuv::NV12ToI420(from.plane[0], from.stride[0], from.plane[1], from.stride[1], to.plane[0],
                                   to.stride[0], to.plane[1], to.stride[1], to.plane[2], to.stride[2], from.size.width,
                                   from.size.height));
  case YUYV:
    return oneToThree(libyuv::YUY2ToI420, from, to);
  case UYVY:
    return oneToThree(libyuv::UYVYToI420, from, to);
  case kBgra:
    return oneToThree(libyuv::ARGBToI420, from, to);
  default:
    return false;
  }
}

bool toNv12(const View &from, const View &to) {
  return from.type == kBgra && good(libyuv::ARGBToNV12(from.plane[0], from.stride[0], to.plane[0], to.stride[0],
                                                       to.plane[1], to.stride[1], from.size.width, from.size.height));
}

bool toI422(const View &from, const View &to) {
  switch (from.type) {
  case YUYV:
    return oneToThree(libyuv::YUY2ToI422, from, to);
  case UYVY:
    return oneToThree(libyuv::UYVYToI422, from, to);
  default:
    return false;
  }
}

} // namespace

bool scale(const View &from, const View &to, libyuv::FilterMode filter) {
  switch (from.type) {
  case I420:
    return scalePlanes(libyuv::I420Scale, from, to, filter);
  case I422:
    return scalePlanes(libyuv::I422Scale, from, to, filter);
  case I444:
  case PLANAR_RGB:
    return scalePlanes(libyuv::I444Scale, from, to, filter);
  case NV12:
    return good(libyuv::NV12Scale(from.plane[0], from.stride[0], from.plane[1], from.stride[1], from.size.width,
                                  from.size.height, to.plane[0], to.stride[0], to.plane[1], to.stride[1], to.size.width,
                                  to.size.height, filter));
  case kBgra:
    return good(libyuv::ARGBScale(from.plane[0], from.stride[0], from.size.width, from.size.height, to.plane[0],
                                  to.stride[0], to.size.width, to.size.height, filter));
  default:
    return false;
  }
}

bool convert(const View &from, const View &to, Packer packer) {
  switch (to.type) {
  case RGB565:
    return toRgb565(from, to, packer);
  case RGB24:
    return toRgb24(from, to);
  case kBgra:
    return toArgb(from, to);
  case I420:
    return toI420(from, to);
  case I422:
    return toI422(from, to);
  case NV12:
    return toNv12(from, to);
  case YUYV:
    return threeToOne(from.type == I422 ? libyuv::I422ToYUY2 : libyuv::I420ToYUY2, from, to, from.size.width,
                      from.size.height);
  case UYVY:
    return threeToOne(from.type == I422 ? libyuv::I422ToUYVY : libyuv::I420ToUYVY, from, to, from.size.width,
                      from.size.height);
  default:
    return false;
  }
}

bool spreadChroma(const View &from, const View &to) {
  for (int32_t i = 1; i < 3; ++i) {
    const auto p = static_cast<std::size_t>(i);
    const Size source = planeSize(from, i);
    const Size target = planeSize(to, i);
    libyuv::ScalePlane(from.plane[p], from.stride[p], source.width, source.height, to.plane[p], to.stride[p],
                       target.width, target.height, libyuv::kFilterNone);
  }
  return true;
}

bool copy(const View &from, const View &to) {
  for (int32_t i = 0; i < planeCount(from.type); ++i) {
    const auto p = static_cast<std::size_t>(i);
    const Size size = planeSize(from, i);
    libyuv::CopyPlane(from.plane[p], from.stride[p], to.plane[p], to.stride[p], size.width, size.height);
  }
  return true;
}

} // namespace bench::yuv
