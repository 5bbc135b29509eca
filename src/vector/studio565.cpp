#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/studio565.cpp"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

#include "vector/studio565-inl.h"
#include "vector/studio565.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// One line, or two that share their chroma.
enum class StudioRows { halfPair, halfSingle, fullSingle };

template <StudioClamp clamp, class D>
HWY_INLINE void studioLine(D d, const uint8_t *y, const StudioTermsOf<hn::RebindToSigned<D>> &even,
                           const StudioTermsOf<hn::RebindToSigned<D>> &odd, uint8_t *to) {
  const auto pixels = studioPixels<clamp>(d, studioSamples(d, y), even, odd);
  auto *words = reinterpret_cast<uint16_t *>(to);
  hn::StoreU(pixels.first, d, words);
  hn::StoreU(pixels.second, d, words + hn::MaxLanes(d));
}

/// The group of pixels from column x on.
template <StudioClamp clamp, StudioRows rows, class D>
HWY_INLINE void studioGroup(D d, const SampleRows &from, uint8_t *const to[2], ptrdiff_t x) {
  if constexpr (rows == StudioRows::fullSingle) {
    const auto u = hn::BitCast(d, studioSamples(d, from.u + x));
    const auto v = hn::BitCast(d, studioSamples(d, from.v + x));
    const auto low = hn::Set(d, 0xFF);
    studioLine<clamp>(d, from.y[0] + x, studioTerms<clamp>(d, hn::And(u, low), hn::And(v, low)),
                      studioTerms<clamp>(d, hn::ShiftRight<8>(u), hn::ShiftRight<8>(v)), to[0] + 2 * x);
  } else {
    const auto terms =
        studioTerms<clamp>(d, studioHalfSamples(d, from.u + x / 2), studioHalfSamples(d, from.v + x / 2));
    studioLine<clamp>(d, from.y[0] + x, terms, terms, to[0] + 2 * x);
    if constexpr (rows == StudioRows::halfPair) {
      studioLine<clamp>(d, from.y[1] + x, terms, terms, to[1] + 2 * x);
    }
  }
}

template <StudioClamp clamp, StudioRows rows, class D>
HWY_INLINE void studioGroups(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels) {
  constexpr auto kGroup = static_cast<ptrdiff_t>(2 * hn::MaxLanes(D()));
  const SampleRows samples = from;
  uint8_t *const lines[2] = {to[0], to[1]};
  const ptrdiff_t last = pixels - kGroup;
  for (ptrdiff_t x = 0; x < last; x += kGroup) {
    studioGroup<clamp, rows>(d, samples, lines, x);
  }
  studioGroup<clamp, rows>(d, samples, lines, last);
}

template <StudioClamp clamp, StudioRows rows>
void studioRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                const ColourConstants & /*constants*/) {
  const hn::ScalableTag<uint16_t> whole;
  if (pixels >= static_cast<int32_t>(2 * hn::MaxLanes(whole))) {
    studioGroups<clamp, rows>(whole, from, to, pixels);
  } else {
    studioGroups<clamp, rows>(hn::CappedTag<uint16_t, 8>(), from, to, pixels);
  }
}

constexpr ColourRows studioSixBitPair = studioRows<StudioClamp::sixBit, StudioRows::halfPair>;
constexpr ColourRows studioSixBitSingle = studioRows<StudioClamp::sixBit, StudioRows::halfSingle>;
constexpr ColourRows studioSixBitFull = studioRows<StudioClamp::sixBit, StudioRows::fullSingle>;
constexpr ColourRows studioVideoRangePair = studioRows<StudioClamp::videoRange, StudioRows::halfPair>;
constexpr ColourRows studioFiveSixPair = studioRows<StudioClamp::fiveSix, StudioRows::halfPair>;
constexpr ColourRows studioFiveSixSingle = studioRows<StudioClamp::fiveSix, StudioRows::halfSingle>;
constexpr ColourRows studioFiveSixFull = studioRows<StudioClamp::fiveSix, StudioRows::fullSingle>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR = ZQCC_EVERY_LEVEL(studioSixBitPair);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_SINGLE = ZQCC_EVERY_LEVEL(studioSixBitSingle);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_FULL = ZQCC_EVERY_LEVEL(studioSixBitFull);
constexpr PerLevel<ColourRows> STUDIO_VIDEO_RANGE_PAIR = ZQCC_EVERY_LEVEL(studioVideoRangePair);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_PAIR = ZQCC_EVERY_LEVEL(studioFiveSixPair);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_SINGLE = ZQCC_EVERY_LEVEL(studioFiveSixSingle);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_FULL = ZQCC_EVERY_LEVEL(studioFiveSixFull);
} // namespace zqcc
#endif
