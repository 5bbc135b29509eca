#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/fetch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/fetch.h"
#include "rows/row_groups-inl.h"
#if !ZQP_PORTABLE
#include "rows/macropixels-inl.h"
#endif

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

struct Pairs {
  const uint8_t *from;
  uint8_t *first;
  uint8_t *second;

  HWY_INLINE void one(ptrdiff_t i) const {
    first[i] = from[2 * i];
    second[i] = from[2 * i + 1];
  }
};

struct Packed {
  const uint8_t *from;
  PackedOrder order;
  uint8_t *y;
  uint8_t *u;
  uint8_t *v;

  /// Macropixel i but for its right pixel.
  HWY_INLINE void left(ptrdiff_t i) const {
    y[2 * i] = from[4 * i + order.y0];
    u[i] = from[4 * i + order.u];
    v[i] = from[4 * i + order.v];
  }
  HWY_INLINE void one(ptrdiff_t i) const {
    left(i);
    y[2 * i + 1] = from[4 * i + order.y1];
  }
};

template <bool isSwapped>
struct Rgb565 {
  const uint8_t *from;
  uint8_t *to[3];

  HWY_INLINE static uint8_t ofFive(uint32_t n) { return static_cast<uint8_t>((527 * n + 23) >> 6); }
  HWY_INLINE static uint8_t ofSix(uint32_t n) { return static_cast<uint8_t>((259 * n + 33) >> 6); }
  HWY_INLINE void one(ptrdiff_t i) const {
    const uint32_t low = from[2 * i + (isSwapped ? 1 : 0)];
    const uint32_t word = low | static_cast<uint32_t>(from[2 * i + (isSwapped ? 0 : 1)]) << 8;
    to[0][i] = ofFive(word >> 11);
    to[1][i] = ofSix(word >> 5 & 63);
    to[2][i] = ofFive(word & 31);
  }
};

/// Pixels of three or four bytes.
template <std::size_t bytes>
struct Pixels {
  const uint8_t *from;
  uint8_t *to[bytes];

  HWY_INLINE void one(ptrdiff_t i) const {
    for (std::size_t component = 0; component < bytes; ++component) {
      to[component][i] = from[static_cast<ptrdiff_t>(bytes) * i + static_cast<ptrdiff_t>(component)];
    }
  }
};

template <class D>
struct PairGroups;
template <class D>
struct PackedGroups;
template <class D>
struct SwappedGroups;
template <class D>
struct Rgb565Groups;
template <class D>
struct ThreeGroups;
template <class D>
struct FourGroups;

#if !ZQP_PORTABLE

template <class D>
struct PairGroups : Pairs {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit PairGroups(const Pairs &rows) : Pairs(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    hn::Vec<D> a;
    hn::Vec<D> b;
    loadPairs(d, from + 2 * i, a, b);
    hn::StoreU(a, d, first + i);
    hn::StoreU(b, d, second + i);
  }
};

template <class D>
struct PackedGroups : Packed {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  TakenApart<D> shuffles;
  HWY_INLINE explicit PackedGroups(const Packed &rows) : Packed(rows), shuffles(rows.order) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    Macropixels<D> all;
    all.load(d, from + 4 * i, shuffles);
    hn::StoreU(all.luma[0], d, y + 2 * i);
    hn::StoreU(all.luma[1], d, y + 2 * i + kBytes<D>);
    hn::StoreU(all.u, d, u + i);
    hn::StoreU(all.v, d, v + i);
  }
};

struct SwappedBytes {
  static constexpr int of(int byte) { return byte ^ 1; }
};

/// Products of unsigned words, of which the upper half is kept, do the shifts too. No factor is exact enough for five
/// bits in one step: 1021 * 264 / 32768 times the number, rounded, is what is asked for, for each of the 32.
template <class D, bool isSwapped>
struct WordGroups : Rgb565<isSwapped> {
  using Rows = Rgb565<isSwapped>;
  using D16 = hn::Repartition<uint16_t, D>;
  using Words = hn::Vec<D16>;
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit WordGroups(const Rows &rows) : Rows(rows) {}

  HWY_INLINE static Words halfRounded(Words v) {
    const hn::RebindToSigned<D16> d;
    return hn::BitCast(D16(), hn::MulFixedPoint15(hn::BitCast(d, v), hn::Set(d, 264)));
  }
  HWY_INLINE static Words red(Words v) {
    return halfRounded(hn::MulHigh(hn::And(v, hn::Set(D16(), 0xF800)), hn::Set(D16(), 1021 << 5)));
  }
  /// (259 (1024 n + 131)) >> 16.
  HWY_INLINE static Words green(Words v) {
    const auto atTop = hn::And(hn::ShiftLeft<5>(v), hn::Set(D16(), 0xFC00));
    return hn::MulHigh(hn::Or(atTop, hn::Set(D16(), 131)), hn::Set(D16(), 259));
  }
  HWY_INLINE static Words blue(Words v) {
    return halfRounded(hn::Mul(hn::And(v, hn::Set(D16(), 31)), hn::Set(D16(), 1021)));
  }
  HWY_INLINE static Words words(hn::Vec<D> bytes) {
    if constexpr (isSwapped) {
      return hn::BitCast(D16(), shuffled<SwappedBytes>(D(), bytes));
    } else {
      return hn::BitCast(D16(), bytes);
    }
  }
  HWY_INLINE static hn::Vec<D> packed(Words a, Words b) {
    const hn::RebindToSigned<D16> d;
    return mended(D(), vec::packBlocks(hn::BitCast(d, a), hn::BitCast(d, b)));
  }

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    hn::Vec<D> first;
    hn::Vec<D> second;
    loadTwo(d, Rows::from + 2 * i, first, second);
    const Words a = words(first);
    const Words b = words(second);
    hn::StoreU(packed(red(a), red(b)), d, Rows::to[0] + i);
    hn::StoreU(packed(green(a), green(b)), d, Rows::to[1] + i);
    hn::StoreU(packed(blue(a), blue(b)), d, Rows::to[2] + i);
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
struct ThreeGroups : Pixels<3> {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit ThreeGroups(const Pixels<3> &rows) : Pixels<3>(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    hn::Vec<D> v[3];
    loadThree(d, from + 3 * i, v);
    hn::StoreU(v[0], d, to[0] + i);
    hn::StoreU(v[1], d, to[1] + i);
    hn::StoreU(v[2], d, to[2] + i);
  }
};

template <class D>
struct FourGroups : Pixels<4> {
  static constexpr ptrdiff_t kUnits = kBytes<D>;
  HWY_INLINE explicit FourGroups(const Pixels<4> &rows) : Pixels<4>(rows) {}

  HWY_INLINE void group(ptrdiff_t i) const {
    const D d;
    hn::Vec<D> v[4];
    loadFour(d, from + 4 * i, v);
    hn::StoreU(v[0], d, to[0] + i);
    hn::StoreU(v[1], d, to[1] + i);
    hn::StoreU(v[2], d, to[2] + i);
    hn::StoreU(v[3], d, to[3] + i);
  }
};

#endif

void pairs(const uint8_t *from, int32_t count, uint8_t *first, uint8_t *second) {
  eachUnit<PairGroups>(Pairs{from, first, second}, count);
}

void macropixels(const Packed &rows, int32_t pixels) {
  eachUnit<PackedGroups>(rows, pixels / 2);
  if (pixels % 2 != 0) {
    rows.left(pixels / 2);
  }
}

void packed(const uint8_t *from, const PackedOrder &order, int32_t pixels, uint8_t *y, uint8_t *u, uint8_t *v) {
  macropixels(Packed{from, order, y, u, v}, pixels);
}

void rgb565(const uint8_t *from, bool isSwapped, int32_t pixels, uint8_t *const to[3]) {
  if (isSwapped) {
    eachUnit<SwappedGroups>(Rgb565<true>{from, {to[0], to[1], to[2]}}, pixels);
  } else {
    eachUnit<Rgb565Groups>(Rgb565<false>{from, {to[0], to[1], to[2]}}, pixels);
  }
}

void three(const uint8_t *from, int32_t pixels, uint8_t *const to[3]) {
  eachUnit<ThreeGroups>(Pixels<3>{from, {to[0], to[1], to[2]}}, pixels);
}

void four(const uint8_t *from, int32_t pixels, uint8_t *const to[4]) {
  eachUnit<FourGroups>(Pixels<4>{from, {to[0], to[1], to[2], to[3]}}, pixels);
}

} // namespace

extern const FetchStages kFetchStages;
const FetchStages kFetchStages = {pairs, packed, rgb565, three, four};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
