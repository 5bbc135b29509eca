// Luma or chroma from red, green and blue: sums of three products in 32 bits.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_WEIGHED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_WEIGHED_INL_H
#undef ZQP_ROWS_COLOUR_WEIGHED_INL_H
#else
#define ZQP_ROWS_COLOUR_WEIGHED_INL_H
#endif

#include "rows/colour.h"
#include "rows/colour_rows-inl.h"
#include "rows/colour_sums-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

using DI32 = hn::ScalableTag<int32_t>;
using VI32 = hn::Vec<DI32>;

// sumProducts: the products of a pair of words with a pair of weights, summed.
#if HWY_TARGET == HWY_SSE4
HWY_INLINE VI32 sumProducts(VI pairs, VI weights) {
  return VI32{_mm_madd_epi16(pairs.raw, weights.raw)};
}
#elif HWY_TARGET == HWY_AVX2
HWY_INLINE VI32 sumProducts(VI pairs, VI weights) {
  return VI32{_mm256_madd_epi16(pairs.raw, weights.raw)};
}
#elif HWY_TARGET == HWY_AVX3
HWY_INLINE VI32 sumProducts(VI pairs, VI weights) {
  return VI32{_mm512_madd_epi16(pairs.raw, weights.raw)};
}
#else
HWY_INLINE VI32 firstOf(VI pairs) {
  return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(DI32(), pairs)));
}
HWY_INLINE VI32 secondOf(VI pairs) {
  return hn::ShiftRight<16>(hn::BitCast(DI32(), pairs));
}
HWY_INLINE VI32 sumProducts(VI pairs, VI weights) {
  return hn::Add(hn::Mul(firstOf(pairs), firstOf(weights)), hn::Mul(secondOf(pairs), secondOf(weights)));
}
#endif

/// In every block the lanes of `a`, then those of `b`, saturated to words.
HWY_INLINE VI packWords(VI32 a, VI32 b) {
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
  return hn::ReorderDemote2To(DI(), a, b);
#else
  const hn::Half<DI> half;
  return hn::Combine(DI(), hn::DemoteTo(half, b), hn::DemoteTo(half, a));
#endif
}

/// A word is 128 times the byte: with bytes the sum is shifted by 14 instead of 21. What of the bias is below 128 then
/// makes no difference, since the rest of the sum is a multiple of that.
template <class Sample>
struct WeighedGroup {
  using From = Sample;
  static constexpr int32_t kFrom = 3;
  static constexpr int32_t kTo = 1;
  static constexpr int32_t kShift = sizeof(Sample) == 1 ? 14 : 21;

  HWY_INLINE explicit WeighedGroup(const Sum &sum)
      : redGreen(pairOf(sum.red, sum.green)), blue(pairOf(sum.blue, 0)),
        bias(hn::Set(DI32(), sum.bias >> (21 - kShift))) {}

  HWY_INLINE void make(const uint8_t *const from[3], ptrdiff_t x, uint8_t *const to[1]) const {
    const V8 red = hn::LoadU(D8(), from[0] + x);
    const V8 green = hn::LoadU(D8(), from[1] + x);
    const V8 blues = hn::LoadU(D8(), from[2] + x);
    const V8 zero = hn::Zero(D8());
    const VI first = half(hn::InterleaveLower(D8(), red, green), hn::InterleaveLower(D8(), blues, zero));
    const VI second = half(hn::InterleaveUpper(D8(), red, green), hn::InterleaveUpper(D8(), blues, zero));
    hn::StoreU(packBlocks(first, second), D8(), to[0] + x);
  }

  HWY_INLINE void make(const int16_t *const from[3], ptrdiff_t x, uint8_t *const to[1]) const {
    const V8 bytes = packBlocks(half(from, x), half(from, x + kLanes));
    hn::StoreU(dealEights<Deal::Sixteens>(bytes), D8(), to[0] + x);
  }

private:
  static HWY_INLINE VI pairOf(int16_t first, int16_t second) {
    const int16_t pairs[8] = {first, second, first, second, first, second, first, second};
    return hn::LoadDup128(DI(), pairs);
  }

  HWY_INLINE VI32 sum(VI redsGreens, VI blues) const {
    const VI32 products = hn::Add(sumProducts(redsGreens, redGreen), sumProducts(blues, blue));
    return hn::ShiftRight<kShift>(hn::Add(products, bias));
  }

  /// Of pairs of bytes, and of bytes as words.
  HWY_INLINE VI half(V8 redsGreens, V8 blues) const {
    const V8 zero = hn::Zero(D8());
    const VI none = hn::Zero(DI());
    const VI words = hn::BitCast(DI(), blues);
    const VI32 first =
        sum(hn::BitCast(DI(), hn::InterleaveLower(D8(), redsGreens, zero)), hn::InterleaveLower(DI(), words, none));
    const VI32 second =
        sum(hn::BitCast(DI(), hn::InterleaveUpper(D8(), redsGreens, zero)), hn::InterleaveUpper(DI(), words, none));
    return packWords(first, second);
  }

  HWY_INLINE VI half(const int16_t *const from[3], ptrdiff_t x) const {
    const VI red = hn::LoadU(DI(), from[0] + x);
    const VI green = hn::LoadU(DI(), from[1] + x);
    const VI blues = hn::LoadU(DI(), from[2] + x);
    const VI none = hn::Zero(DI());
    return packWords(sum(hn::InterleaveLower(DI(), red, green), hn::InterleaveLower(DI(), blues, none)),
                     sum(hn::InterleaveUpper(DI(), red, green), hn::InterleaveUpper(DI(), blues, none)));
  }

  VI redGreen;
  VI blue;
  VI32 bias;
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
