#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/studio565.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/studio565-inl.h"
#include "vector/studio565.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

HWY_ALIGN constexpr uint8_t kEvenTwice[16] = {0, 0, 2, 2, 4, 4, 6, 6, 8, 8, 10, 10, 12, 12, 14, 14};
HWY_ALIGN constexpr uint8_t kOddTwice[16] = {1, 1, 3, 3, 5, 5, 7, 7, 9, 9, 11, 11, 13, 13, 15, 15};

template <class D>
HWY_INLINE void studioLine(D d, const uint8_t *y, const StudioTermsOf<D> &terms, uint8_t *to) {
  const hn::Repartition<uint8_t, D> bytes;
  const auto samples = hn::LoadU(bytes, y);
  const auto even = hn::TableLookupBytes(samples, hn::LoadDup128(bytes, kEvenTwice));
  const auto odd = hn::TableLookupBytes(samples, hn::LoadDup128(bytes, kOddTwice));
  hn::StoreInterleaved2(studioPixels(d, hn::BitCast(d, even), terms), studioPixels(d, hn::BitCast(d, odd), terms), d,
                        reinterpret_cast<uint16_t *>(to));
}

template <class D>
HWY_INLINE void studioPairRows(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels) {
  const auto group = static_cast<ptrdiff_t>(2 * hn::MaxLanes(d));
  const ptrdiff_t last = pixels - group;
  const uint8_t *HWY_RESTRICT y0 = from.y[0];
  const uint8_t *HWY_RESTRICT y1 = from.y[1];
  for (ptrdiff_t x = 0;; x = x + group < last ? x + group : last) {
    const auto terms = studioTerms(d, from.u + x / 2, from.v + x / 2);
    studioLine(d, y0 + x, terms, to[0] + 2 * x);
    studioLine(d, y1 + x, terms, to[1] + 2 * x);
    if (x == last) {
      return;
    }
  }
}

void studioSixBitPair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                      const ColourConstants & /*constants*/) {
  const hn::ScalableTag<uint16_t> whole;
  if (pixels >= static_cast<int32_t>(2 * hn::MaxLanes(whole))) {
    studioPairRows(whole, from, to, pixels);
  } else {
    studioPairRows(hn::CappedTag<uint16_t, 8>(), from, to, pixels);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR = ZQCC_EVERY_LEVEL(studioSixBitPair);
} // namespace zqcc
#endif
