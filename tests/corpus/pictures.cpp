#include "pictures.h"

#include <cstring>

namespace corpus {
namespace {

constexpr std::size_t kGuard = 64;
constexpr std::size_t kAlignment = 64;
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

/// Noise; every eighth byte, and long runs with an odd seed, sit at an end of the range, where saturation shows.
void generate(uint8_t *bytes, std::size_t count, uint32_t seed) {
  static constexpr uint8_t kEnds[8] = {0, 255, 16, 235, 240, 128, 1, 254};
  uint32_t state = seed * 2654435761u + 1;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525u + 1013904223u;
    const uint32_t draw = state >> 8;
    const bool atEnd = (draw & 7) == 0 || ((seed & 1) != 0 && (i >> 5 & 1) != 0);
    bytes[i] = atEnd ? kEnds[draw >> 3 & 7] : static_cast<uint8_t>(draw >> 16);
  }
}

uint8_t *alignedStart(std::vector<uint8_t> &store, unsigned misalign) {
  const auto address = reinterpret_cast<std::uintptr_t>(store.data());
  return store.data() + (kAlignment - address % kAlignment) % kAlignment + misalign;
}

} // namespace

void Hash::add(const uint8_t *bytes, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    value_ = (value_ ^ bytes[i]) * UINT64_C(0x100000001B3);
  }
}

void Hash::add(uint32_t word) {
  for (int shift = 0; shift < 32; shift += 8) {
    const auto byte = static_cast<uint8_t>(word >> shift);
    add(&byte, 1);
  }
}

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
