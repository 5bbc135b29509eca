#include "frame.h"

#include "support/picture.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace bench {
namespace {

constexpr std::size_t kAlignment = 64;
/// Vector code of other libraries may read a little behind a plane.
constexpr std::size_t kSlack = 128;

int32_t tightStride(int32_t type, int32_t width) {
  return type == kBgra ? 4 * width : support::tightStride(type, width);
}

/// Chroma lines are at boundaries too, down to a quarter of the stride.
int32_t alignedStride(int32_t type, int32_t width) {
  constexpr int32_t kStep = 4 * static_cast<int32_t>(kAlignment);
  return (tightStride(type, width) + kStep - 1) / kStep * kStep;
}

support::PlaneShape shapeOf(int32_t type, const Size &size, int32_t stride, int32_t index) {
  if (type == kBgra) {
    return {4 * size.width, size.height, stride};
  }
  return support::planeShape(type, size.width, size.height, stride, index);
}

/// How a plane lies under the picture: bytes a sample, and the shifts from pixels to samples. Pairs of chroma count as
/// one sample of two bytes.
struct Placing {
  int32_t bytes, across, down;
};

Placing placingOf(int32_t type, int32_t plane) {
  switch (type) {
  case kBgra:
    return {4, 0, 0};
  case COLOR_RGB24:
    return {3, 0, 0};
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    return {1, 0, 0};
  default:
    break;
  }
  if (support::isRgb16(type) || support::isPacked422(type)) {
    return {2, 0, 0};
  }
  if (plane == 0) {
    return {1, 0, 0};
  }
  switch (type) {
  case COLOR_YUV422_PLANAR:
    return {1, 1, 0};
  case COLOR_YUV440_PLANAR:
    return {1, 0, 1};
  case COLOR_YUV411_PLANAR:
    return {1, 2, 0};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {1, 0, 2};
  default:
    return {support::isSemiPlanar(type) ? 2 : 1, 1, 1};
  }
}

std::size_t roomFor(const support::PlaneShape &shape) {
  return (shape.bytes() + kSlack + kAlignment - 1) / kAlignment * kAlignment;
}

/// Channel values over the picture, positions from 0 to 255.
int32_t scene(int32_t channel, int32_t across, int32_t down, uint32_t noise) {
  const auto grain = static_cast<int32_t>(noise >> 29) - 4;
  switch (channel) {
  case 0:
    return 56 + across / 3 + down / 5 + grain;
  case 1:
    return 64 + down / 2;
  default:
    return 192 - across / 2;
  }
}

/// Which channel a byte of a plane belongs to.
int32_t channelAt(int32_t type, int32_t plane, int32_t byte) {
  constexpr struct {
    int32_t type;
    int32_t channels[4];
  } kPacked[] = {
      {COLOR_YUV422_YUYV, {0, 1, 0, 2}}, {COLOR_YUV422_YVYU, {0, 2, 0, 1}},  {COLOR_YUV422_UYVY, {1, 0, 2, 0}},
      {COLOR_YUV422_VYUY, {2, 0, 1, 0}}, {COLOR_YUV422_YUYV2, {0, 1, 0, 2}},
  };
  for (const auto &order : kPacked) {
    if (order.type == type) {
      return order.channels[byte % 4];
    }
  }
  if (type == COLOR_YUV420_PACK2 && plane == 1) {
    return 2 - byte % 2;
  }
  if (support::isSemiPlanar(type)) {
    return plane == 0 ? 0 : 1 + byte % 2;
  }
  return type == COLOR_RGB24 ? byte % 3 : type == kBgra ? byte % 4 : plane;
}

class Noise {
public:
  uint32_t next() {
    state_ = state_ * 1664525U + 1013904223U;
    return state_;
  }

private:
  uint32_t state_ = 1;
};

void drawBytes(const View &view, int32_t index, Noise &noise) {
  const Size size = planeSize(view, index);
  for (int32_t y = 0; y < size.height; ++y) {
    uint8_t *line =
        view.plane[static_cast<std::size_t>(index)] + std::ptrdiff_t{y} * view.stride[static_cast<std::size_t>(index)];
    for (int32_t x = 0; x < size.width; ++x) {
      const int32_t value =
          scene(channelAt(view.type, index, x), x * 255 / size.width, y * 255 / size.height, noise.next());
      line[x] = static_cast<uint8_t>(value);
    }
  }
}

void drawWords(const View &view, Noise &noise) {
  for (int32_t y = 0; y < view.size.height; ++y) {
    uint8_t *to = view.plane[0] + std::ptrdiff_t{y} * view.stride[0];
    for (int32_t x = 0; x < view.size.width; ++x, to += 2) {
      int32_t channel[3];
      for (int32_t c = 0; c < 3; ++c) {
        channel[c] = scene(c, x * 255 / view.size.width, y * 255 / view.size.height, noise.next());
      }
      const int32_t pixel = channel[0] >> 3 << 11 | channel[1] >> 2 << 5 | channel[2] >> 3;
      to[0] = static_cast<uint8_t>(pixel);
      to[1] = static_cast<uint8_t>(pixel >> 8);
    }
  }
}

int32_t channelsDifference(int32_t a, int32_t b) {
  return (std::abs((a >> 11) - (b >> 11)) * 8 + std::abs((a >> 5 & 63) - (b >> 5 & 63)) * 4 +
          std::abs((a & 31) - (b & 31)) * 8) /
         3;
}

struct Sum {
  int64_t total = 0;
  int64_t count = 0;
};

void addLine(Sum &sum, int32_t type, const uint8_t *a, const uint8_t *b, int32_t bytes) {
  if (support::isRgb16(type)) {
    for (int32_t x = 0; x + 1 < bytes; x += 2) {
      sum.total += channelsDifference(a[x] | a[x + 1] << 8, b[x] | b[x + 1] << 8);
    }
    sum.count += bytes / 2;
    return;
  }
  for (int32_t x = 0; x < bytes; ++x) {
    sum.total += std::abs(a[x] - b[x]);
  }
  sum.count += bytes;
}

} // namespace

int32_t planeCount(int32_t type) {
  return type == kBgra ? 1 : support::planeCount(type);
}

Size planeSize(const View &view, int32_t index) {
  const support::PlaneShape shape = shapeOf(view.type, view.size, tightStride(view.type, view.size.width), index);
  return {shape.lineBytes, shape.lines};
}

View bottomUp(const View &view) {
  View up = view;
  for (int32_t i = 0; i < planeCount(view.type); ++i) {
    const auto p = static_cast<std::size_t>(i);
    up.plane[p] += std::ptrdiff_t{planeSize(view, i).height - 1} * view.stride[p];
    up.stride[p] = -view.stride[p];
  }
  return up;
}

View part(const View &view, int32_t left, int32_t top, const Size &size) {
  View smaller = view;
  smaller.size = size;
  for (int32_t i = 0; i < planeCount(view.type); ++i) {
    const Placing placing = placingOf(view.type, i);
    const auto p = static_cast<std::size_t>(i);
    smaller.plane[p] += std::ptrdiff_t{top >> placing.down} * view.stride[p] + (left >> placing.across) * placing.bytes;
  }
  return smaller;
}

Frame::Frame(int32_t type, const Size &size, Lines lines) : view_{type, size, {}, {}} {
  const int32_t stride = lines == Lines::Tight ? tightStride(type, size.width) : alignedStride(type, size.width);
  std::size_t bytes = kAlignment;
  for (int32_t i = 0; i < planeCount(type); ++i) {
    bytes += roomFor(shapeOf(type, size, stride, i));
  }
  store_.resize(bytes);
  const auto address = reinterpret_cast<std::uintptr_t>(store_.data());
  uint8_t *next = store_.data() + (kAlignment - address % kAlignment) % kAlignment;
  for (int32_t i = 0; i < planeCount(type); ++i) {
    const support::PlaneShape shape = shapeOf(type, size, stride, i);
    view_.plane[static_cast<std::size_t>(i)] = next;
    view_.stride[static_cast<std::size_t>(i)] = shape.stride;
    next += roomFor(shape);
  }
}

void Frame::drawScene() {
  Noise noise;
  if (support::isRgb16(view_.type)) {
    drawWords(view_, noise);
    return;
  }
  for (int32_t i = 0; i < planeCount(view_.type); ++i) {
    drawBytes(view_, i, noise);
  }
}

double largestDifference(const View &a, const View &b) {
  double largest = 0;
  for (int32_t i = 0; i < planeCount(a.type); ++i) {
    const auto p = static_cast<std::size_t>(i);
    const Size size = planeSize(a, i);
    Sum sum;
    for (int32_t y = 0; y < size.height; ++y) {
      addLine(sum, a.type, a.plane[p] + std::ptrdiff_t{y} * a.stride[p], b.plane[p] + std::ptrdiff_t{y} * b.stride[p],
              size.width);
    }
    if (sum.count > 0) {
      largest = std::max(largest, static_cast<double>(sum.total) / static_cast<double>(sum.count));
    }
  }
  return largest;
}

} // namespace bench
