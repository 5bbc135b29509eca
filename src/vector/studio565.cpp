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

/// One line, or two that share their chroma.
enum class StudioRows { halfPair, halfSingle, fullSingle };

/// The group of pixels from column 2 * pair on.
template <StudioClamp clamp, StudioRows rows, class D>
HWY_INLINE void studioGroup(D d, const StudioConstants<D> &k, const SampleRows &from, uint8_t *const to[2],
                            ptrdiff_t pair) {
  if constexpr (rows == StudioRows::fullSingle) {
    const auto u = studioFullSamples(d, from.u + 2 * pair);
    const auto v = studioFullSamples(d, from.v + 2 * pair);
    studioPixels<clamp>(d, k, from.y[0] + 2 * pair, studioTerms<clamp>(d, k, studioEven(u), studioEven(v)),
                        studioTerms<clamp>(d, k, studioOdd(u), studioOdd(v)), to[0] + 4 * pair);
  } else {
    const auto terms =
        studioTerms<clamp>(d, k, studioHalfSamples(d, from.u + pair), studioHalfSamples(d, from.v + pair));
    studioPixels<clamp>(d, k, from.y[0] + 2 * pair, terms, terms, to[0] + 4 * pair);
    if constexpr (rows == StudioRows::halfPair) {
      studioPixels<clamp>(d, k, from.y[1] + 2 * pair, terms, terms, to[1] + 4 * pair);
    }
  }
}

/// Whether rows are gone through by pointers that loads and stores move on, or by an index that is part of an address.
constexpr bool kMovesPointers = HWY_TARGET == HWY_NEON;

template <StudioRows rows>
HWY_INLINE void movePointers(SampleRows &from, uint8_t *to[2], ptrdiff_t pairs) {
  for (int line = 0; line < (rows == StudioRows::halfPair ? 2 : 1); ++line) {
    from.y[line] += 2 * pairs;
    to[line] += 4 * pairs;
  }
  from.u += rows == StudioRows::fullSingle ? 2 * pairs : pairs;
  from.v += rows == StudioRows::fullSingle ? 2 * pairs : pairs;
}

/// The compiler would go back to an index if it saw that the pointers move alike.
template <StudioRows rows>
HWY_INLINE void hidePointers(SampleRows &from, uint8_t *to[2]) {
  for (int line = 0; line < (rows == StudioRows::halfPair ? 2 : 1); ++line) {
    from.y[line] = hidden(from.y[line]);
    to[line] = hidden(to[line]);
  }
  from.u = hidden(from.u);
  from.v = hidden(from.v);
}

/// Whole groups, then one that ends with the row. Rows of full chroma may have an odd number of pixels: their last
/// group begins at an odd column.
template <StudioClamp clamp, StudioRows rows, class D>
HWY_INLINE void studioGroups(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels) {
  constexpr auto kPairs = static_cast<ptrdiff_t>(hn::MaxLanes(D()));
  const StudioConstants<D> k(d);
  SampleRows samples = from;
  uint8_t *lines[2] = {to[0], to[1]};
  const ptrdiff_t end = pixels / 2;
  const ptrdiff_t last = end - kPairs;
  bool odd = rows == StudioRows::fullSingle && pixels % 2 != 0;
  for (ptrdiff_t pair = 0;;) {
    if constexpr (kMovesPointers) {
      hidePointers<rows>(samples, lines);
      studioGroup<clamp, rows>(d, k, samples, lines, 0);
      movePointers<rows>(samples, lines, kPairs);
    } else {
      studioGroup<clamp, rows>(d, k, samples, lines, pair);
    }
    pair += kPairs;
    if (pair <= last) {
      continue;
    }
    if (pair == end && !odd) {
      return;
    }
    if constexpr (kMovesPointers) {
      movePointers<rows>(samples, lines, last - pair);
    }
    pair = last;
    if (odd) {
      odd = false;
      if constexpr (kMovesPointers) {
        samples = {{samples.y[0] + 1, nullptr}, samples.u + 1, samples.v + 1};
        lines[0] += 2;
      } else {
        samples = {{from.y[0] + 1, nullptr}, from.u + 1, from.v + 1};
        lines[0] = to[0] + 2;
      }
    }
  }
}

template <StudioClamp clamp, StudioRows rows>
void studioRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                const ColourConstants & /*constants*/) {
  const hn::ScalableTag<uint16_t> whole;
  if constexpr (hn::MaxLanes(whole) > 8) {
    if (pixels < static_cast<int32_t>(2 * hn::MaxLanes(whole))) {
      studioGroups<clamp, rows>(hn::CappedTag<uint16_t, 8>(), from, to, pixels);
      return;
    }
  }
  studioGroups<clamp, rows>(whole, from, to, pixels);
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
