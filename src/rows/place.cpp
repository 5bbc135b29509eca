#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/place.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/place.h"
#include "rows/row_groups-inl.h"
#if !ZQP_PORTABLE
#include "rows/macropixels-inl.h"
#include "rows/transposed-inl.h"
#include "vector/reverse-inl.h"
#endif

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

struct Pairs {
  const uint8_t *first;
  const uint8_t *second;
  uint8_t *to;

  HWY_INLINE void one(ptrdiff_t i) const {
    to[2 * i] = first[i];
    to[2 * i + 1] = second[i];
  }
};

struct Packed {
  const uint8_t *y;
  const uint8_t *u;
  const uint8_t *v;
  PackedOrder order;
  uint8_t *to;

  /// Macropixel i, the right pixel being that one.
  HWY_INLINE void put(ptrdiff_t i, uint8_t right) const {
    to[4 * i + order.y0] = y[2 * i];
    to[4 * i + order.y1] = right;
    to[4 * i + order.u] = u[i];
    to[4 * i + order.v] = v[i];
  }
  HWY_INLINE void one(ptrdiff_t i) const { put(i, y[2 * i + 1]); }
};

template <bool isSwapped>
struct Rgb565 {
  const uint8_t *from[3];
  uint8_t *to;

  HWY_INLINE void one(ptrdiff_t i) const {
    const uint32_t green = from[1][i];
    to[2 * i + (isSwapped ? 1 : 0)] = static_cast<uint8_t>(from[2][i] | green << 5);
    to[2 * i + (isSwapped ? 0 : 1)] = static_cast<uint8_t>(static_cast<uint32_t>(from[0][i]) << 3 | green >> 3);
  }
};

struct Three {
  const uint8_t *from[3];
  uint8_t *to;

  HWY_INLINE void one(ptrdiff_t i) const {
    for (int component = 0; component < 3; ++component) {
      to[3 * i + component] = from[component][i];
    }
  }
};

template <bool isOpaque>
struct Four {
  const uint8_t *from[4];
  uint8_t *to;

  HWY_INLINE void one(ptrdiff_t i) const {
    for (int component = 0; component < 3; ++component) {
      to[4 * i + component] = from[component][i];
    }
    to[4 * i + 3] = isOpaque ? uint8_t{255} : from[3][i];
  }
};

struct Backwards {
  const uint8_t *last;
  uint8_t *to;

  HWY_INLINE void one(ptrdiff_t i) const { to[i] = last[-i]; }
};

template <class D>
struct PairGroups;
template <class D>
struct PackedGroups;
template <class D>
struct Rgb565Groups;
template <class D>
struct SwappedGroups;
template <class D>
struct ThreeGroups;
template <class D>
struct FourGroups;
template <class D>
struct OpaqueGroups;

#if !ZQP_PORTABLE

template <class D>
struct PairGroups : Pairs {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit PairGroups(const Pairs &rows) : Pairs(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    storePairs(d, hn::LoadU(d, first + i), hn::LoadU(d, second + i), to + 2 * i);
  }
};

template <class D>
struct PackedGroups : Packed {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  PutTogether<D> shuffles;
  HWY_INLINE explicit PackedGroups(const Packed &rows) : Packed(rows), shuffles(rows.order) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    const Macropixels<D> all{
        {hn::LoadU(d, y + 2 * i), hn::LoadU(d, y + 2 * i + kBytes<D>)}, hn::LoadU(d, u + i), hn::LoadU(d, v + i)};
    all.store(d, shuffles, to + 4 * i);
  }
};

/// Bytes are shifted as 16-bit lanes; the masks drop what comes over from the neighbour.
template <class D, bool isSwapped>
struct WordGroups : Rgb565<isSwapped> {
  using Rows = Rgb565<isSwapped>;
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit WordGroups(const Rows &rows) : Rows(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    const hn::Repartition<uint16_t, D> d16;
    const auto red = hn::BitCast(d16, hn::LoadU(d, Rows::from[0] + i));
    const auto green = hn::BitCast(d16, hn::LoadU(d, Rows::from[1] + i));
    const auto blue = hn::LoadU(d, Rows::from[2] + i);
    const auto low = hn::Or(hn::And(hn::BitCast(d, hn::ShiftLeft<5>(green)), hn::Set(d, 0xE0)), blue);
    const auto high = hn::Or(hn::And(hn::BitCast(d, hn::ShiftRight<3>(green)), hn::Set(d, 0x07)),
                             hn::BitCast(d, hn::ShiftLeft<3>(red)));
    if constexpr (isSwapped) {
      storePairs(d, high, low, Rows::to + 2 * i);
    } else {
      storePairs(d, low, high, Rows::to + 2 * i);
    }
  }
};
template <class D>
struct Rgb565Groups : WordGroups<D, false> {
  HWY_INLINE explicit Rgb565Groups(const Rgb565<false> &rows) : WordGroups<D, false>(rows) {}
};
template <class D>
struct SwappedGroups : WordGroups<D, true> {
  HWY_INLINE explicit SwappedGroups(const Rgb565<true> &rows) : WordGroups<D, true>(rows) {}
};

template <class D>
struct ThreeGroups : Three {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit ThreeGroups(const Three &rows) : Three(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    const hn::Vec<D> v[3] = {hn::LoadU(d, from[0] + i), hn::LoadU(d, from[1] + i), hn::LoadU(d, from[2] + i)};
    storeThree(d, v, to + 3 * i);
  }
};

template <class D, bool isOpaque>
struct FourBytes : Four<isOpaque> {
  using Rows = Four<isOpaque>;
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit FourBytes(const Rows &rows) : Rows(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    const auto &rows = Rows::from;
    const hn::Vec<D> v[4] = {hn::LoadU(d, rows[0] + i), hn::LoadU(d, rows[1] + i), hn::LoadU(d, rows[2] + i),
                             isOpaque ? hn::Set(d, 255) : hn::LoadU(d, rows[3] + i)};
    storeFour(d, v, Rows::to + 4 * i);
  }
};
template <class D>
struct FourGroups : FourBytes<D, false> {
  HWY_INLINE explicit FourGroups(const Four<false> &rows) : FourBytes<D, false>(rows) {}
};
template <class D>
struct OpaqueGroups : FourBytes<D, true> {
  HWY_INLINE explicit OpaqueGroups(const Four<true> &rows) : FourBytes<D, true>(rows) {}
};

struct BlockBackwards {
  static constexpr int of(int byte) { return 15 - byte; }
};

#endif

void pairs(const uint8_t *first, const uint8_t *second, int32_t count, uint8_t *to) {
  eachUnit<PairGroups>(Pairs{first, second, to}, count);
}

void macropixels(const Packed &rows, int32_t pixels) {
  eachUnit<PackedGroups>(rows, pixels / 2);
  if (pixels % 2 != 0) {
    rows.put(pixels / 2, rows.y[pixels - 1]);
  }
}

void packed(const uint8_t *y, const uint8_t *u, const uint8_t *v, const PackedOrder &order, int32_t pixels,
            uint8_t *to) {
  macropixels(Packed{y, u, v, order, to}, pixels);
}

void rgb565(const uint8_t *const from[3], bool isSwapped, int32_t pixels, uint8_t *to) {
  if (isSwapped) {
    eachUnit<SwappedGroups>(Rgb565<true>{{from[0], from[1], from[2]}, to}, pixels);
  } else {
    eachUnit<Rgb565Groups>(Rgb565<false>{{from[0], from[1], from[2]}, to}, pixels);
  }
}

void three(const uint8_t *const from[3], int32_t pixels, uint8_t *to) {
  eachUnit<ThreeGroups>(Three{{from[0], from[1], from[2]}, to}, pixels);
}

void four(const uint8_t *const from[4], int32_t pixels, uint8_t *to) {
  if (from[3] == nullptr) {
    eachUnit<OpaqueGroups>(Four<true>{{from[0], from[1], from[2], nullptr}, to}, pixels);
  } else {
    eachUnit<FourGroups>(Four<false>{{from[0], from[1], from[2], from[3]}, to}, pixels);
  }
}

void reversed(const uint8_t *from, int32_t count, uint8_t *to) {
#if !ZQP_PORTABLE
  if (count >= 16) {
    vec::reverseBytes(BlockOrder<BlockBackwards>::kBytes.of, from, to, count);
    return;
  }
#endif
  oneByOne(Backwards{from + count - 1, to}, count);
}

/// So many bytes of each column, from as many lines.
template <int32_t lines>
HWY_INLINE void transposeFew(const uint8_t *from, ptrdiff_t fromStride, int32_t columns, uint8_t *to,
                             ptrdiff_t toStride) {
  for (int32_t x = 0; x < columns; ++x) {
    for (int32_t line = 0; line < lines; ++line) {
      to[line] = from[x + line * fromStride];
    }
    to += toStride;
  }
}

/// Strips of columns, so that the output lines stay in the cache until they are full.
void transposeBytes(const uint8_t *from, ptrdiff_t fromStride, int32_t columns, int32_t lines, uint8_t *to,
                    ptrdiff_t toStride) {
  constexpr int32_t kStrip = 16;
  constexpr int32_t kFew = 8;
  for (int32_t x = 0; x < columns; x += kStrip) {
    const int32_t some = columns - x < kStrip ? columns - x : kStrip;
    const uint8_t *strip = from + x;
    uint8_t *column = to + x * toStride;
    int32_t line = 0;
    for (; line <= lines - kFew; line += kFew) {
      transposeFew<kFew>(strip + line * fromStride, fromStride, some, column + line, toStride);
    }
    for (; line < lines; ++line) {
      transposeFew<1>(strip + line * fromStride, fromStride, some, column + line, toStride);
    }
  }
}

void transposed(const uint8_t *from, ptrdiff_t fromStride, int32_t columns, int32_t lines, uint8_t *to,
                ptrdiff_t toStride) {
#if !ZQP_PORTABLE
  if (columns >= 16 && lines >= 16) {
    transposeStrips({from, fromStride, columns, to, toStride}, lines);
    return;
  }
#endif
  transposeBytes(from, fromStride, columns, lines, to, toStride);
}

} // namespace

extern const PlaceStages kPlaceStages;
const PlaceStages kPlaceStages = {pairs, packed, rgb565, three, four, reversed, transposed};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
