// Packed 4:2:2: groups of four bytes, two pixels each.
#include "reference/same_format_detail.h"

#include <array>

namespace reference::detail {

namespace {

using Group = std::array<uint8_t, 4>;

/// Bytes of a line that belong to the picture: a lone last pixel has a whole group where there is room for it.
int lineBytes(int width, int room) {
  const int whole = (width + 1) / 2 * 4;
  return room >= whole ? whole : 2 * width;
}

struct Layout {
  int chroma;   ///< Offset of a group's first chroma byte; the second lies two bytes further.
  bool swapped; ///< The right pixel's luma comes first.
};

Layout layoutOf(int type) {
  switch (type) {
  case COLOR_YUV422_YUYV:
  case COLOR_YUV422_YVYU:
    return {1, false};
  case COLOR_YUV422_UYVY:
  case COLOR_YUV422_VYUY:
    return {0, false};
  case COLOR_YUV422_YUYV2:
  case COLOR_YUV422_YVYU2:
    return {1, true};
  default:
    return {0, true};
  }
}

int lumaByte(const Layout &layout, int pixel) {
  return 2 * (layout.swapped ? pixel ^ 1 : pixel) + 1 - layout.chroma;
}

struct Frame : ConvertParams {
  int room; ///< bytes from the start of an input line to where it ends
};

const uint8_t *inputLine(const Frame &p, int y) {
  return p.inBuf[0] + static_cast<std::ptrdiff_t>(y) * p.inStride;
}

/// Byte of an input line. Where a cut line lacks the second half of its last group, the last sample of the kind that
/// the line does hold stands in: the group's own luma, the chroma of the group before.
int byteOf(const Frame &p, int y, int at) {
  if (at < lineBytes(p.inWidth, p.room)) {
    return inputLine(p, y)[at];
  }
  const bool isLuma = at % 2 != layoutOf(p.inType).chroma;
  return inputLine(p, y)[at - (isLuma || at < 4 ? 2 : 4)];
}

Group groupOf(const Frame &p, int y, int index) {
  Group group{};
  for (int i = 0; i < 4; ++i) {
    group[slot(i)] = static_cast<uint8_t>(byteOf(p, y, 4 * index + i));
  }
  return group;
}

/// Stores the bytes of a group that lie inside an output line of `width` pixels.
void storeGroup(const Frame &p, int width, int line, int index, const Group &group) {
  const int end = lineBytes(width, p.outStride);
  for (int i = 0; i < 4 && 4 * index + i < end; ++i) {
    p.outBuf[0][static_cast<std::ptrdiff_t>(line) * p.outStride + std::ptrdiff_t{4} * index + i] = group[slot(i)];
  }
}

void copy(const Frame &p) {
  const int bytes = std::min(lineBytes(p.outWidth, p.room), lineBytes(p.outWidth, p.outStride));
  for (int y = 0; y < p.outHeight; ++y) {
    for (int i = 0; i < bytes; ++i) {
      p.outBuf[0][static_cast<std::ptrdiff_t>(y) * p.outStride + i] = inputLine(p, y)[i];
    }
  }
}

/// Half `half` of two groups side by side. Repaired, both pixels carry the chroma of the first group.
Group turnedGroup(const Group &a, const Group &b, std::size_t half, bool repair, int chroma) {
  Group out{a[2 * half], a[2 * half + 1], b[2 * half], b[2 * half + 1]};
  if (repair) {
    out[slot(chroma)] = a[slot(chroma)];
    out[slot(chroma + 2)] = a[slot(chroma + 2)];
  }
  return out;
}

/// `lineAt(i)` is the input line of output column i, `groupAt(k)` the group of source step k.
template <typename LineAt, typename GroupAt>
void turn(const Frame &p, bool repair, const LineAt &lineAt, const GroupAt &groupAt) {
  const int chroma = layoutOf(p.inType).chroma;
  for (int column = 0; column < p.outHeight; column += 2) {
    const int lineA = lineAt(column);
    const int lineB = column + 1 < p.outHeight ? lineAt(column + 1) : lineA;
    for (int x = 0; x < p.outWidth; ++x) {
      const Group a = groupOf(p, lineA, groupAt(x / 2));
      const Group b = groupOf(p, lineB, groupAt(x / 2));
      const int line = p.rotation == ROTATION_90_LEFT ? p.outWidth - 1 - x : x;
      storeGroup(p, p.outHeight, line, column / 2, turnedGroup(a, b, x % 2 == 0 ? 0 : 1, repair, chroma));
    }
  }
}

void turnPlain(const Frame &p) {
  const bool left = p.rotation == ROTATION_90_LEFT;
  turn(
      p, !layoutOf(p.inType).swapped, [&](int i) { return left ? i : p.inHeight - 1 - i; }, [](int k) { return k; });
}

void resizeTurned(const Frame &p) {
  const auto xs = nearestPositions(p.inWidth, p.outWidth);
  const auto ys = nearestPositions(p.inHeight, p.outHeight);
  const bool left = p.rotation == ROTATION_90_LEFT;
  turn(
      p, true, [&](int i) { return ys[slot(left ? i : p.outHeight - 1 - i)]; },
      [&](int k) { return std::min(xs[slot(k)], p.inWidth / 2 + p.inWidth % 2 - 1); });
}

Tap insideGroups(const Tap &tap, int groups) {
  return tap.at >= groups - 1 ? Tap{groups - 2, 512, 512} : tap;
}

/// Fills the upright picture: `mean(byteAt, column entry, line, isChroma)` gives a byte from the taps of its entries.
template <typename Mean>
void resizeUpright(const Frame &p, const Mean &mean) {
  const Layout layout = layoutOf(p.inType);
  const auto luma = [&](int x, int y) { return byteOf(p, y, lumaByte(layout, x)); };
  const auto chroma = [&](int second) {
    return [&p, layout, second](int g, int y) { return byteOf(p, y, 4 * std::max(g, 0) + layout.chroma + second); };
  };
  for (int y = 0; y < p.outHeight; ++y) {
    for (int k = 0; k < p.outWidth / 2 + p.outWidth % 2; ++k) {
      Group group{};
      for (int i = 0; i < 2; ++i) {
        const int pixel = 2 * k + i;
        // The partner of a lone last pixel has no position: zero weights.
        const int value = pixel < p.outWidth ? mean(luma, pixel, y, false) : 0;
        group[slot(lumaByte(layout, i))] = static_cast<uint8_t>(value);
        group[slot(layout.chroma + 2 * i)] = static_cast<uint8_t>(mean(chroma(2 * i), k, y, true));
      }
      storeGroup(p, p.outWidth, y, k, group);
    }
  }
}

void resizeBilinear(const Frame &p) {
  const auto xs = bilinearPositions(p.inWidth, p.outWidth);
  const auto ys = bilinearPositions(p.inHeight, p.outHeight);
  resizeUpright(p, [&](const auto &at, int entry, int y, bool isChroma) {
    const Tap &column = xs[slot(entry)];
    return bilinear(at, isChroma ? insideGroups(column, p.inWidth / 2) : column, ys[slot(y)]);
  });
}

void resizeFiltered(const Frame &p) {
  const auto xs = filteredPositions(p.inWidth, p.outWidth, p.antiAlias, Axis::Horizontal);
  const auto ys = filteredPositions(p.inHeight, p.outHeight, p.antiAlias, Axis::Vertical);
  resizeUpright(p, [&](const auto &at, int entry, int y, bool isChroma) {
    int sum = 0;
    for (std::size_t k = 0; k < 5; ++k) {
      const Tap &column = xs[slot(entry)][k];
      sum += bilinear(at, isChroma ? insideGroups(column, p.inWidth / 2) : column, ys[slot(y)][k]);
    }
    return sum / 5;
  });
}

} // namespace

void convertPacked(const ConvertParams &params, int room) {
  const Frame p{params, room};
  if (p.isResize == 0) {
    quarterTurn(p) ? turnPlain(p) : copy(p);
  } else if (quarterTurn(p)) {
    resizeTurned(p);
  } else if (p.antiAlias != 0 && !layoutOf(p.inType).swapped) {
    resizeFiltered(p);
  } else {
    resizeBilinear(p);
  }
}

} // namespace reference::detail
