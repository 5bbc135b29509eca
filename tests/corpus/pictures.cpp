#include "pictures.h"

#include <cstring>

namespace corpus {
namespace {

constexpr std::size_t kGuard = 64;
// The one-shot functions place the chroma planes of odd pictures a few bytes further back than planes without gaps lie.
constexpr std::size_t kTail = 256;

struct Plane {
  int stride, lines;
  [[nodiscard]] std::size_t bytes() const { return static_cast<std::size_t>(stride) * static_cast<std::size_t>(lines); }
};

/// Plane `index` of a picture; no lines where the type has no such plane.
Plane planeOf(int type, int height, int stride, int index) {
  if (index == 0) {
    return {stride, height};
  }
  switch (type) {
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    return {stride, height};
  case COLOR_YUV422_PLANAR:
  case COLOR_YVU422_PLANAR:
    return {stride >> 1, height};
  case COLOR_YUV440_PLANAR:
    return {stride, height / 2};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {stride, height / 4};
  case COLOR_YUV411_PLANAR:
    return {stride >> 2, height};
  case COLOR_YUV420_PLANAR:
  case COLOR_YVU420_PLANAR:
    return {stride >> 1, height / 2};
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {stride, index == 1 ? height / 2 : 0};
  default:
    return {0, 0};
  }
}

} // namespace

int lineBytes(int type, int width) {
  switch (type) {
  case COLOR_YUV422_YUYV:
  case COLOR_YUV422_YVYU:
  case COLOR_YUV422_UYVY:
  case COLOR_YUV422_VYUY:
  case COLOR_YUV422_YUYV2:
  case COLOR_YUV422_YVYU2:
  case COLOR_YUV422_UYVY2:
  case COLOR_YUV422_VYUY2:
    return (width + 1) / 2 * 4;
  case COLOR_RGB565:
  case COLOR_RGB16_ALT:
    return 2 * width;
  case COLOR_RGB24:
    return 3 * width;
  default:
    return width;
  }
}

std::size_t pictureBytes(int type, int height, int stride) {
  std::size_t bytes = 0;
  for (int i = 0; i < 3; ++i) {
    bytes += planeOf(type, height, stride, i).bytes();
  }
  return bytes;
}

Input::Input(int type, int width, int height, int stride, unsigned misalign, uint32_t seed)
    : store_(pictureBytes(type, height, stride) + kTail + kAlignment + misalign), start_(nullptr), type_(type),
      width_(width), height_(height), stride_(stride) {
  uint8_t *start = alignedStart(store_, misalign);
  generate(start, pictureBytes(type, height, stride) + kTail, seed);
  start_ = start;
}

void Input::describe(ConvertParams &params) const {
  params.inType = type_;
  params.inWidth = width_;
  params.inHeight = height_;
  params.inStride = stride_;
  const uint8_t *next = start_;
  for (int i = 0; i < 3; ++i) {
    params.inBuf[i] = next;
    next += planeOf(type_, height_, stride_, i).bytes();
  }
}

Output::Output(int type, int height, int stride, unsigned misalign) : type_(type), stride_(stride) {
  blockBytes_ = pictureBytes(type, height, stride) + 4 * kGuard;
  store_.resize(blockBytes_ + kAlignment + misalign);
  block_ = alignedStart(store_, misalign);
  std::memset(block_, 0xA5, blockBytes_);
  uint8_t *next = block_ + kGuard;
  for (int i = 0; i < 3; ++i) {
    planes_[i] = next;
    next += planeOf(type, height, stride, i).bytes() + kGuard;
  }
}

void Output::describe(ConvertParams &params) {
  params.outType = type_;
  params.outStride = stride_;
  for (int i = 0; i < 3; ++i) {
    params.outBuf[i] = planes_[i];
  }
}

} // namespace corpus
