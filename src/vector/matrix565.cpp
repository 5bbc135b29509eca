// A component is y + term + offset. Terms fit 16-bit lanes; the sum of luma and term saturates to bytes, and the rest
// is done in those.
//
// Green is a plain clamp to 0..255. Red and blue follow the table of 5 bits, in which 29 stands twice: component a is
// reduced as a below 240, as a - 8 from 248 on, and as anything from 232 to 239 in between. That has 257 values that
// matter, but those up to 7 are one: with x = a - 7, held in 0..255, min(x + 23, 255) + max(x, 240) is just that modulo
// 256, for both bends are in it: the first term stops at a = 239, and the second one begins to grow at 247.
#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/matrix565.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/blocks-inl.h"
#include "vector/matrix-inl.h"
#include "vector/matrix565.h"
#include "vector/matrix565_rows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Every group is as many pixels as a vector has bytes.
using Group = hn::ScalableTag<uint8_t>;
using LeastGroup = hn::CappedTag<uint8_t, kLeastPixels>;

/// Red and blue are held in bytes kBias below the sum of luma and term, so that they lose no more than they may with
/// any offset from -3 to kMostOffset: at the bottom a = 7 becomes 0 at the highest offset, and at the top a = 256 stays
/// in the range at the lowest one.
constexpr int16_t kBias = 7 - kMostOffset;

/// What the offsets of the dither take away from the components.
template <class D>
struct DitherLanes {
  hn::Vec<D> red;
  hn::Vec<D> green;
  hn::Vec<D> blue;
};

/// Red and blue are biased here once, and not in every pixel.
template <class D>
HWY_INLINE MatrixTerms<Words<D>> biasedTerms(D /*d8*/, const ChromaWords<D> &chroma,
                                             const MatrixLanes<Words<D>> &matrix) {
  const Words<D> d16;
  const auto terms = matrixTerms(d16, chroma.u, chroma.v, matrix);
  const auto bias = hn::Set(d16, kBias);
  return {hn::Sub(terms.red, bias), terms.green, hn::Sub(terms.blue, bias)};
}

/// The offsets of a line whose first pixel is in a column of this parity.
template <class Chroma, class D>
HWY_INLINE DitherLanes<D> ditherLanes(D /*d8*/, const DitherLine &line, int column) {
  return {Chroma::lanes(line.red, column), Chroma::lanes(line.green, column), Chroma::lanes(line.blue, column)};
}

/// Red or blue, of which the five highest bits count.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V reducedByFive(D d8, V sum, V dither) {
  const V x = hn::SaturatedSub(sum, dither);
  return hn::Add(hn::SaturatedAdd(x, hn::Set(d8, uint8_t{23})), hn::Max(x, hn::Set(d8, uint8_t{240})));
}

/// A group of one line, given the terms of either half.
template <class Chroma, class D, class Terms = MatrixTerms<Words<D>>>
HWY_INLINE void convertGroup(D d8, const TwoHalves<D> &luma, const Terms &lower, const Terms &upper,
                             const DitherLanes<D> &dither, uint8_t *to) {
  const auto red = packBlocks(hn::Add(luma.lower, lower.red), hn::Add(luma.upper, upper.red));
  const auto green = packBlocks(hn::Sub(luma.lower, lower.green), hn::Sub(luma.upper, upper.green));
  const auto blue = packBlocks(hn::Add(luma.lower, lower.blue), hn::Add(luma.upper, upper.blue));
  Chroma::store(rgb565(d8, reducedByFive(d8, red, dither.red), hn::SaturatedSub(green, dither.green),
                       reducedByFive(d8, blue, dither.blue)),
                to);
}

/// A row in groups, the last of which ends with the row.
template <class Chroma, int lines, class D>
HWY_INLINE void convertRows(D d8, const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                            const ColourConstants &ofFrame) {
  constexpr std::ptrdiff_t kStep = hn::MaxLanes(D());
  const ColourConstants *constants = hidden(&ofFrame); // each width of groups reads them for itself
  const MatrixLanes<Words<D>> matrix(Words<D>(), *constants);
  const Chroma samples(d8, from);
  DitherLanes<D> first = ditherLanes<Chroma>(d8, constants->dither[line], 0);
  const DitherLanes<D> second = ditherLanes<Chroma>(d8, constants->dither[1 - line], 0);
  uint8_t *const upperLine = to[0];
  uint8_t *const lowerLine = lines == 2 ? to[1] : nullptr;
  const std::ptrdiff_t last = pixels - kStep;
  for (std::ptrdiff_t x = 0;;) {
    const auto terms = biasedTerms(d8, samples.chroma(x), matrix);
    if constexpr (Chroma::kIsFull) {
      convertGroup<Chroma>(d8, samples.luma(0, x), terms, biasedTerms(d8, samples.chroma(x + kStep / 2), matrix), first,
                           upperLine + 2 * x);
    } else {
      convertGroup<Chroma>(d8, samples.luma(0, x), terms, terms, first, upperLine + 2 * x);
    }
    if constexpr (lines == 2) {
      convertGroup<Chroma>(d8, samples.luma(1, x), terms, terms, second, lowerLine + 2 * x);
    }
    if (x == last) {
      return;
    }
    x += kStep;
    if (x > last) {
      x = last;
      if constexpr (Chroma::kIsFull) {
        first = ditherLanes<Chroma>(d8, constants->dither[line], static_cast<int>(last & 1));
      }
    }
  }
}

/// Rows shorter than a vector go in the smallest groups.
template <template <class> class Chroma, int lines>
HWY_INLINE void convertAnyRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                               const ColourConstants &constants) {
  constexpr auto kPixels = static_cast<int32_t>(hn::MaxLanes(Group()));
  if (kPixels > kLeastPixels && pixels < kPixels) {
    convertRows<Chroma<LeastGroup>, lines>(LeastGroup(), from, to, pixels, line, constants);
  } else {
    convertRows<Chroma<Group>, lines>(Group(), from, to, pixels, line, constants);
  }
}

void matrix565HalfPair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                       const ColourConstants &constants) {
  convertAnyRows<HalfChroma, 2>(from, to, pixels, line, constants);
}

void matrix565Half(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                   const ColourConstants &constants) {
  convertAnyRows<HalfChroma, 1>(from, to, pixels, line, constants);
}

void matrix565Full(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                   const ColourConstants &constants) {
  convertAnyRows<FullChroma, 1>(from, to, pixels, line, constants);
}

void matrix565PackedPair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                         const ColourConstants &constants) {
  convertAnyRows<PackedInOrder, 2>(from, to, pixels, line, constants);
}

void matrix565SwappedPackedPair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                                const ColourConstants &constants) {
  convertAnyRows<PackedSwapped, 2>(from, to, pixels, line, constants);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> MATRIX565_HALF_PAIR = ZQCC_EVERY_LEVEL(matrix565HalfPair);
constexpr PerLevel<ColourRows> MATRIX565_HALF = ZQCC_EVERY_LEVEL(matrix565Half);
constexpr PerLevel<ColourRows> MATRIX565_FULL = ZQCC_EVERY_LEVEL(matrix565Full);
constexpr PerLevel<ColourRows> MATRIX565_PACKED_PAIR = ZQCC_EVERY_LEVEL(matrix565PackedPair);
constexpr PerLevel<ColourRows> MATRIX565_SWAPPED_PACKED_PAIR = ZQCC_EVERY_LEVEL(matrix565SwappedPackedPair);
} // namespace zqcc
#endif
