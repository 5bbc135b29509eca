// Semi-planar 4:2:0: a luma plane and a plane of two-byte chroma pairs, both with the same stride; nearest samples
// only.
#include "reference/same_format_detail.h"

namespace reference::detail {

namespace {

struct Plane {
  Source in;
  Target out;
  int width;
  int height;
};

Plane lumaOf(const ConvertParams &p) {
  return {{p.inBuf[0], p.inStride, p.inWidth, p.inHeight}, {p.outBuf[0], p.outStride}, p.outWidth, p.outHeight};
}

Plane pairsOf(const ConvertParams &p) {
  return {{p.inBuf[1], p.inStride, p.inWidth / 2, p.inHeight / 2, 2},
          {p.outBuf[1], p.outStride, 2},
          p.outWidth / 2,
          p.outHeight / 2};
}

void move(const uint8_t *from, uint8_t *to, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    to[i] = from[i];
  }
}

/// Without resizing a turn to the right counts its lines from the input's last one.
void copyOrTurn(const ConvertParams &p, const Plane &plane) {
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < plane.width; ++x) {
      const int line = p.rotation == ROTATION_90_RIGHT ? plane.in.lines - plane.height + y : y;
      const uint8_t *from =
          plane.in.bytes + static_cast<std::ptrdiff_t>(line) * plane.in.pitch + std::ptrdiff_t{x} * plane.in.unit;
      uint8_t *to =
          quarterTurn(p) ? placeTurned(plane.out, p.rotation, x, y, plane.width, plane.height) : plane.out.sample(x, y);
      move(from, to, plane.in.unit);
    }
  }
}

template <typename Column, typename Line>
void resize(const ConvertParams &p, const Plane &plane, const Column &column, const Line &line) {
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < plane.width; ++x) {
      uint8_t *to =
          quarterTurn(p) ? placeTurned(plane.out, p.rotation, x, y, plane.width, plane.height) : plane.out.sample(x, y);
      move(plane.in.sample(column(x), line(y)), to, plane.in.unit);
    }
  }
}

} // namespace

void convertSemiPlanar(const ConvertParams &p) {
  if (p.isResize == 0) {
    copyOrTurn(p, lumaOf(p));
    copyOrTurn(p, pairsOf(p));
    return;
  }
  const auto xs = nearestPositions(p.inWidth, p.outWidth);
  const auto ys = nearestPositions(p.inHeight, p.outHeight);
  const auto direct = [](const std::vector<int32_t> &table) { return [&table](int i) { return table[slot(i)]; }; };
  const auto evenHalved = [](const std::vector<int32_t> &table) {
    return [&table](int i) { return table[slot(2 * i)] >> 1; };
  };
  resize(p, lumaOf(p), direct(xs), direct(ys));
  // Upright, a pair follows the even luma column above it; turned, pair numbers come from the first half of the table.
  if (quarterTurn(p)) {
    resize(p, pairsOf(p), direct(xs), direct(ys));
  } else {
    resize(p, pairsOf(p), evenHalved(xs), evenHalved(ys));
  }
}

} // namespace reference::detail
