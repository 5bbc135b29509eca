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

/// How chroma comes for a pair of columns: one sample, the first of two samples, two samples.
enum class StudioChroma { half, even, full };

/// One line, or two that share their chroma.
template <StudioChroma chromaOfRows, int linesOfRows>
struct StudioRows {
  static constexpr StudioChroma kChroma = chromaOfRows;
  static constexpr int kLines = linesOfRows;
  static constexpr int kSamplesOfPair = kChroma == StudioChroma::half ? 1 : 2;
};

/// Where the samples wanted stand among those of a block; of neither row if all are.
template <StudioChroma chroma, class D>
struct StudioOrders {
  HWY_INLINE StudioOrders(D /*d*/, SampleRows & /*from*/) {}
};

/// Rows of pairs become one row that is read twice, so that nothing behind its last pair is.
template <class D>
struct StudioOrders<StudioChroma::even, D> {
  HWY_INLINE StudioOrders(D d, SampleRows &from)
      : u(studioOrder(d, from.u - from.v == 1)), v(studioOrder(d, from.v - from.u == 1)) {
    from.u -= from.u - from.v == 1 ? 1 : 0;
    from.v -= from.v - from.u == 1 ? 1 : 0;
  }
  const StudioOrder<D> u;
  const StudioOrder<D> v;
};

template <StudioClamp clamp, class Rows, class D>
HWY_INLINE void studioLines(D d, const StudioConstants<D> &k, const SampleRows &from, uint8_t *const to[2],
                            ptrdiff_t pair, const StudioTermsOf<D> &even, const StudioTermsOf<D> &odd) {
  studioPixels<clamp>(d, k, from.y[0] + 2 * pair, even, odd, to[0] + 4 * pair);
  if constexpr (Rows::kLines == 2) {
    studioPixels<clamp>(d, k, from.y[1] + 2 * pair, even, odd, to[1] + 4 * pair);
  }
}

/// The group of pixels from column 2 * pair on.
template <StudioClamp clamp, class Rows, class D>
HWY_INLINE void studioGroup(D d, const StudioConstants<D> &k,
                            [[maybe_unused]] const StudioOrders<Rows::kChroma, D> &orders, const SampleRows &from,
                            uint8_t *const to[2], ptrdiff_t pair) {
  const uint8_t *fromU = from.u + Rows::kSamplesOfPair * pair;
  const uint8_t *fromV = from.v + Rows::kSamplesOfPair * pair;
  if constexpr (Rows::kChroma == StudioChroma::full) {
    const auto u = studioFullSamples(d, fromU);
    const auto v = studioFullSamples(d, fromV);
    studioLines<clamp, Rows>(d, k, from, to, pair, studioTerms<clamp>(d, k, studioEven(u), studioEven(v)),
                             studioTerms<clamp>(d, k, studioOdd(u), studioOdd(v)));
  } else if constexpr (Rows::kChroma == StudioChroma::even) {
    const auto terms =
        studioTerms<clamp>(d, k, studioSamplesOf(d, fromU, orders.u), studioSamplesOf(d, fromV, orders.v));
    studioLines<clamp, Rows>(d, k, from, to, pair, terms, terms);
  } else {
    const auto terms = studioTerms<clamp>(d, k, studioHalfSamples(d, fromU), studioHalfSamples(d, fromV));
    studioLines<clamp, Rows>(d, k, from, to, pair, terms, terms);
  }
}

/// Whether rows are gone through by pointers that loads and stores move on, or by an index that is part of an address.
constexpr bool kMovesPointers = HWY_TARGET == HWY_NEON;

template <class Rows>
HWY_INLINE void movePointers(SampleRows &from, uint8_t *to[2], ptrdiff_t pairs) {
  for (int line = 0; line < Rows::kLines; ++line) {
    from.y[line] += 2 * pairs;
    to[line] += 4 * pairs;
  }
  from.u += Rows::kSamplesOfPair * pairs;
  from.v += Rows::kSamplesOfPair * pairs;
}

/// The compiler would go back to an index if it saw that the pointers move alike.
template <class Rows>
HWY_INLINE void hidePointers(SampleRows &from, uint8_t *to[2]) {
  for (int line = 0; line < Rows::kLines; ++line) {
    from.y[line] = hidden(from.y[line]);
    to[line] = hidden(to[line]);
  }
  from.u = hidden(from.u);
  from.v = hidden(from.v);
}

/// Whole groups, then one that ends with the row. Rows of full chroma may have an odd number of pixels: their last
/// group begins at an odd column.
template <StudioClamp clamp, class Rows, class D>
HWY_INLINE void studioGroups(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels) {
  constexpr auto kPairs = static_cast<ptrdiff_t>(hn::MaxLanes(D()));
  const StudioConstants<D> k(d);
  SampleRows samples = from;
  const StudioOrders<Rows::kChroma, D> orders(d, samples);
  uint8_t *lines[2] = {to[0], to[1]};
  const ptrdiff_t end = pixels / 2;
  const ptrdiff_t last = end - kPairs;
  bool odd = Rows::kChroma == StudioChroma::full && pixels % 2 != 0;
  for (ptrdiff_t pair = 0;;) {
    if constexpr (kMovesPointers) {
      hidePointers<Rows>(samples, lines);
      studioGroup<clamp, Rows>(d, k, orders, samples, lines, 0);
      movePointers<Rows>(samples, lines, kPairs);
    } else {
      studioGroup<clamp, Rows>(d, k, orders, samples, lines, pair);
    }
    pair += kPairs;
    if (pair <= last) {
      continue;
    }
    if (pair == end && !odd) {
      return;
    }
    if constexpr (kMovesPointers) {
      movePointers<Rows>(samples, lines, last - pair);
    }
    pair = last;
    if (odd) {
      odd = false;
      if constexpr (!kMovesPointers) {
        samples = from;
        lines[0] = to[0];
        lines[1] = to[1];
      }
      for (int line = 0; line < Rows::kLines; ++line) {
        ++samples.y[line];
        lines[line] += 2;
      }
      ++samples.u;
      ++samples.v;
    }
  }
}

template <StudioClamp clamp, class Rows>
void studioRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                const ColourConstants & /*constants*/) {
  const hn::ScalableTag<uint16_t> whole;
  if constexpr (hn::MaxLanes(whole) > 8) {
    if (pixels < static_cast<int32_t>(2 * hn::MaxLanes(whole))) {
      studioGroups<clamp, Rows>(hn::CappedTag<uint16_t, 8>(), from, to, pixels);
      return;
    }
  }
  studioGroups<clamp, Rows>(whole, from, to, pixels);
}

using HalfPair = StudioRows<StudioChroma::half, 2>;
using HalfSingle = StudioRows<StudioChroma::half, 1>;
using EvenPair = StudioRows<StudioChroma::even, 2>;
using FullPair = StudioRows<StudioChroma::full, 2>;
using FullSingle = StudioRows<StudioChroma::full, 1>;

constexpr ColourRows studioSixBitPair = studioRows<StudioClamp::sixBit, HalfPair>;
constexpr ColourRows studioSixBitSingle = studioRows<StudioClamp::sixBit, HalfSingle>;
constexpr ColourRows studioSixBitEvenPair = studioRows<StudioClamp::sixBit, EvenPair>;
constexpr ColourRows studioSixBitFullPair = studioRows<StudioClamp::sixBit, FullPair>;
constexpr ColourRows studioSixBitFull = studioRows<StudioClamp::sixBit, FullSingle>;
constexpr ColourRows studioVideoRangePair = studioRows<StudioClamp::videoRange, HalfPair>;
constexpr ColourRows studioFiveSixPair = studioRows<StudioClamp::fiveSix, HalfPair>;
constexpr ColourRows studioFiveSixSingle = studioRows<StudioClamp::fiveSix, HalfSingle>;
constexpr ColourRows studioFiveSixFull = studioRows<StudioClamp::fiveSix, FullSingle>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_PAIR = ZQCC_EVERY_LEVEL(studioSixBitPair);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_SINGLE = ZQCC_EVERY_LEVEL(studioSixBitSingle);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_EVEN_PAIR = ZQCC_EVERY_LEVEL(studioSixBitEvenPair);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_FULL_PAIR = ZQCC_EVERY_LEVEL(studioSixBitFullPair);
constexpr PerLevel<ColourRows> STUDIO_SIX_BIT_FULL = ZQCC_EVERY_LEVEL(studioSixBitFull);
constexpr PerLevel<ColourRows> STUDIO_VIDEO_RANGE_PAIR = ZQCC_EVERY_LEVEL(studioVideoRangePair);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_PAIR = ZQCC_EVERY_LEVEL(studioFiveSixPair);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_SINGLE = ZQCC_EVERY_LEVEL(studioFiveSixSingle);
constexpr PerLevel<ColourRows> STUDIO_FIVE_SIX_FULL = ZQCC_EVERY_LEVEL(studioFiveSixFull);
} // namespace zqcc
#endif
