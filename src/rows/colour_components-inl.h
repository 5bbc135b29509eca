// Rows of bytes of one component each, from rows of samples.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_COMPONENTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_COMPONENTS_INL_H
#undef ZQP_ROWS_COLOUR_COMPONENTS_INL_H
#else
#define ZQP_ROWS_COLOUR_COMPONENTS_INL_H
#endif

#include "rows/colour_rows-inl.h"
#include "rows/colour_sources-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// The halves of a group of words, held in 0..255 and put in the order of the picture.
HWY_INLINE V8 bytesInOrder(VI first, VI second) {
  return dealEights<Deal::Sixteens>(packBlocks(first, second));
}

/// A component of RGB from luma, or from itself.
template <class Sample>
struct ComponentGroup {
  using From = Sample;
  static constexpr int32_t kFrom = 1;
  static constexpr int32_t kTo = 1;
  static constexpr bool kIsByParity = sizeof(Sample) == 1;

  HWY_INLINE ComponentGroup(const Component &component, const uint16_t *rounding, int32_t column)
      : factor(hn::Set(D16(), component.luma.factor)), biases(component.luma, rounding, column, kIsByParity),
        shift(component.shift), most(hn::Set(D8(), static_cast<uint8_t>(component.most))) {}

  HWY_INLINE void make(const uint8_t *const from[1], ptrdiff_t x, uint8_t *const to[1]) const {
    const V8 bytes = hn::LoadU(D8(), from[0] + x);
    store(mergeParities(packed(lowerBytes(bytes), upperBytes(bytes))), to[0] + x);
  }
  HWY_INLINE void make(const int16_t *const from[1], ptrdiff_t x, uint8_t *const to[1]) const {
    const int16_t *words = from[0] + x;
    store(dealEights<Deal::Sixteens>(packed(wordsFrom(words), wordsFrom(words + kLanes))), to[0] + x);
  }

private:
  HWY_INLINE V8 packed(V16 first, V16 second) const {
    return packBlocks(hn::ShiftRightSame(lumaOf(first, factor, biases.of[0]), shift),
                      hn::ShiftRightSame(lumaOf(second, factor, biases.of[1]), shift));
  }
  HWY_INLINE void store(V8 bytes, uint8_t *to) const { hn::StoreU(hn::Min(bytes, most), D8(), to); }

  V16 factor;
  Biases biases;
  int32_t shift;
  V8 most;
};

template <class Sample>
HWY_INLINE void makeComponent(const Sample *from, const Component &component, const uint16_t *rounding, int32_t count,
                              uint8_t *to) {
  const ComponentGroup<Sample> group(component, rounding, 0);
  const int32_t last = count - kGroup;
  if (last <= 0 || last % 8 == 0) {
    makeRows(group, group, &from, count, &to);
  } else {
    makeRows(group, ComponentGroup<Sample>(component, rounding, last % 8), &from, count, &to);
  }
}

/// (word + 64) >> 7.
struct RoundedGroup {
  using From = int16_t;
  static constexpr int32_t kFrom = 1;
  static constexpr int32_t kTo = 1;

  static HWY_INLINE void make(const int16_t *const from[1], ptrdiff_t x, uint8_t *const to[1]) {
    hn::StoreU(bytesInOrder(rounded(from[0] + x), rounded(from[0] + x + kLanes)), D8(), to[0] + x);
  }

private:
  static HWY_INLINE VI rounded(const int16_t *from) {
    return hn::ShiftRight<7>(hn::SaturatedAdd(hn::LoadU(DI(), from), hn::Set(DI(), int16_t{64})));
  }
};

/// Luma of another matrix or range.
struct LumaGroup {
  using From = int16_t;
  static constexpr int32_t kFrom = 3;
  static constexpr int32_t kTo = 1;

  HWY_INLINE explicit LumaGroup(const YuvOfYuv &colours)
      : factor(hn::Set(D16(), colours.luma.factor)), bias(hn::Set(DI(), colours.luma.bias)),
        ofU(hn::Set(DI(), colours.lumaU)), ofV(hn::Set(DI(), colours.lumaV)) {}

  HWY_INLINE void make(const int16_t *const from[3], ptrdiff_t x, uint8_t *const to[1]) const {
    hn::StoreU(bytesInOrder(half(from, x), half(from, x + kLanes)), D8(), to[0] + x);
  }

private:
  HWY_INLINE VI half(const int16_t *const from[3], ptrdiff_t x) const {
    const VI u = hn::MulFixedPoint15(middleWordsFrom(from[1] + x), ofU);
    const VI v = hn::MulFixedPoint15(middleWordsFrom(from[2] + x), ofV);
    return hn::ShiftRight<6>(hn::SaturatedAdd(lumaOf(wordsFrom(from[0] + x), factor, bias), hn::SaturatedAdd(u, v)));
  }

  V16 factor;
  VI bias;
  VI ofU;
  VI ofV;
};

/// Chroma of another matrix or range.
struct ChromaGroup {
  using From = int16_t;
  static constexpr int32_t kFrom = 2;
  static constexpr int32_t kTo = 2;

  HWY_INLINE explicit ChromaGroup(const YuvOfYuv &colours)
      : uu(hn::Set(DI(), colours.uu)), uv(hn::Set(DI(), colours.uv)), vu(hn::Set(DI(), colours.vu)),
        vv(hn::Set(DI(), colours.vv)) {}

  HWY_INLINE void make(const int16_t *const from[2], ptrdiff_t x, uint8_t *const to[2]) const {
    const VI u[2] = {middleWordsFrom(from[0] + x), middleWordsFrom(from[0] + x + kLanes)};
    const VI v[2] = {middleWordsFrom(from[1] + x), middleWordsFrom(from[1] + x + kLanes)};
    hn::StoreU(bytesInOrder(sum(u[0], uu, v[0], uv), sum(u[1], uu, v[1], uv)), D8(), to[0] + x);
    hn::StoreU(bytesInOrder(sum(u[0], vu, v[0], vv), sum(u[1], vu, v[1], vv)), D8(), to[1] + x);
  }

private:
  static HWY_INLINE VI sum(VI u, VI ofU, VI v, VI ofV) {
    const VI both = hn::SaturatedAdd(hn::MulFixedPoint15(u, ofU), hn::MulFixedPoint15(v, ofV));
    return hn::ShiftRight<6>(hn::SaturatedAdd(both, hn::Set(DI(), static_cast<int16_t>(kChromaBias))));
  }

  VI uu;
  VI uv;
  VI vu;
  VI vv;
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
