// Resizing of packed 4:2:2 input: whole groups of two pixels by nearest index, colours by the current matrix.
#include "reference/resize_frame.h"
#include "reference/tables.h"

namespace reference::resize {
namespace {

/// Byte positions within a group of two pixels.
struct Order {
  int y0, y1, u, v;
};

Order orderOf(int type) {
  switch (type) {
  case 6: // Y0 U Y1 V
    return {0, 2, 1, 3};
  case 7: // Y0 V Y1 U
    return {0, 2, 3, 1};
  case 8: // U Y0 V Y1
    return {1, 3, 0, 2};
  case 9: // V Y0 U Y1
    return {1, 3, 2, 0};
  case 14: // Y1 U Y0 V
    return {2, 0, 1, 3};
  case 15: // Y1 V Y0 U
    return {2, 0, 3, 1};
  case 16: // U Y1 V Y0
    return {3, 1, 0, 2};
  default: // 17: V Y1 U Y0
    return {3, 1, 2, 0};
  }
}

uint8_t *placeOf(const ConvertParams &p, int bytes, int x, int y) {
  uint8_t *out = p.outBuf[0];
  const std::ptrdiff_t stride = p.outStride;
  switch (p.rotation) {
  case 3:
    return out + (p.outWidth - 1 - x) * stride + bytes * y;
  case 4:
    return out + x * stride + bytes * (p.outHeight - 1 - y);
  case 5:
    return out + (p.outHeight - 1 - y) * stride + bytes * (p.outWidth - 1 - x);
  default:
    return out + y * stride + bytes * x;
  }
}

void put(uint8_t *to, int bytes, int y, Chroma chroma, const Colour &colour) {
  if (bytes == 3) {
    const Components pixel = matrix24(y, chroma, colour);
    to[0] = static_cast<uint8_t>(pixel.blue);
    to[1] = static_cast<uint8_t>(pixel.green);
    to[2] = static_cast<uint8_t>(pixel.red);
    return;
  }
  storeWord(to, matrix565(y, chroma, colour, {}));
}

} // namespace

void resizePacked(const ConvertParams &p, const Colour &colour) {
  const Order order = orderOf(p.inType);
  const int bytes = p.outType == COLOR_RGB24 ? 3 : 2;
  const Words columns = nearest(p.inWidth, p.outWidth);
  const Words lines = nearest(p.inHeight, p.outHeight);
  for (int y = 0; y < p.outHeight; ++y) {
    const uint8_t *line = p.inBuf[0] + std::ptrdiff_t{lines[static_cast<std::size_t>(y)]} * p.inStride;
    for (int x = 0; x < p.outWidth; ++x) {
      const uint8_t *group = line + std::ptrdiff_t{4} * columns[static_cast<std::size_t>(x / 2)];
      put(placeOf(p, bytes, x, y), bytes, group[x % 2 == 0 ? order.y0 : order.y1], {group[order.u], group[order.v]},
          colour);
    }
  }
}

} // namespace reference::resize
