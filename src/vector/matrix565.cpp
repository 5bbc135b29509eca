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
#include "vector/pack565-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Every group is as many pixels as a vector has bytes.
using Group = hn::ScalableTag<uint8_t>;
using LeastGroup = hn::CappedTag<uint8_t, kLeastPixels>;

/// Two vectors of 16-bit lanes that make up a group.
template <class D>
struct TwoHalves {
  hn::Vec<Words<D>> lower;
  hn::Vec<Words<D>> upper;
};

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
template <class D16>
HWY_INLINE MatrixTerms<D16> biasedTerms(D16 d16, const uint8_t *u, const uint8_t *v, const MatrixLanes<D16> &matrix) {
  const hn::Rebind<uint8_t, D16> d8;
  const auto uLanes = hn::PromoteTo(d16, hn::LoadU(d8, u));
  const auto vLanes = hn::PromoteTo(d16, hn::LoadU(d8, v));
  const auto terms = matrixTerms(d16, uLanes, vLanes, matrix);
  const auto bias = hn::Set(d16, kBias);
  return {hn::Sub(terms.red, bias), terms.green, hn::Sub(terms.blue, bias)};
}

/// With half chroma a group is taken apart into even and odd pixels, which have the same terms.
struct HalfChroma {
  static constexpr bool kIsFull = false;

  template <class D>
  static HWY_INLINE hn::Vec<D> lanes(D d8, const uint8_t *columns, int /*parity*/) {
    return hn::LoadDup128(d8, columns);
  }

  template <class D>
  static HWY_INLINE TwoHalves<D> luma(D d8, const uint8_t *y) {
    const hn::Repartition<uint16_t, D> d16;
    const auto both = hn::BitCast(d16, hn::LoadU(d8, y));
    return {hn::BitCast(Words<D>(), hn::And(both, hn::Set(d16, uint16_t{0xFF}))),
            hn::BitCast(Words<D>(), hn::ShiftRight<8>(both))};
  }

  template <class D>
  static HWY_INLINE void store(D d8, const Rgb565Bytes<hn::Vec<D>> &bytes, uint8_t *to) {
    const hn::Repartition<uint16_t, D> d16;
    hn::StoreInterleaved2(hn::BitCast(d16, hn::InterleaveLower(d8, bytes.low, bytes.high)),
                          hn::BitCast(d16, hn::InterleaveUpper(d8, bytes.low, bytes.high)), d16,
                          reinterpret_cast<uint16_t *>(to));
  }
};

/// With full chroma the pixels keep their order: packBlocks and interleaving cancel each other.
struct FullChroma {
  static constexpr bool kIsFull = true;

  template <class D>
  static HWY_INLINE hn::Vec<D> lanes(D d8, const uint8_t *columns, int parity) {
    const auto zero = hn::Set(d8, columns[parity * kColumnsOfParity]);
    return hn::InterleaveLower(d8, zero, hn::Set(d8, columns[(1 - parity) * kColumnsOfParity]));
  }

  template <class D>
  static HWY_INLINE TwoHalves<D> luma(D /*d8*/, const uint8_t *y) {
    const hn::Half<D> half;
    return {hn::PromoteTo(Words<D>(), hn::LoadU(half, y)),
            hn::PromoteTo(Words<D>(), hn::LoadU(half, y + hn::Lanes(half)))};
  }

  template <class D>
  static HWY_INLINE void store(D d8, const Rgb565Bytes<hn::Vec<D>> &bytes, uint8_t *to) {
    hn::StoreU(hn::InterleaveLower(d8, bytes.low, bytes.high), d8, to);
    hn::StoreU(hn::InterleaveUpper(d8, bytes.low, bytes.high), d8, to + hn::Lanes(d8));
  }
};

/// The offsets of a line whose first pixel is in a column of this parity.
template <class Chroma, class D>
HWY_INLINE DitherLanes<D> ditherLanes(D d8, const DitherLine &line, int column) {
  return {Chroma::lanes(d8, line.red, column), Chroma::lanes(d8, line.green, column),
          Chroma::lanes(d8, line.blue, column)};
}

/// Red or blue, of which the five highest bits count.
template <class D, class V = hn::Vec<D>>
HWY_INLINE V reducedByFive(D d8, V sum, V dither) {
  const V x = hn::SaturatedSub(sum, dither);
  return hn::Add(hn::SaturatedAdd(x, hn::Set(d8, uint8_t{23})), hn::Max(x, hn::Set(d8, uint8_t{240})));
}

/// A group of one line, given the terms of either half.
template <class Chroma, class D, class Terms = MatrixTerms<Words<D>>>
HWY_INLINE void convertGroup(D d8, const uint8_t *y, const Terms &lower, const Terms &upper,
                             const DitherLanes<D> &dither, uint8_t *to) {
  const TwoHalves<D> luma = Chroma::luma(d8, y);
  const auto red = packBlocks(hn::Add(luma.lower, lower.red), hn::Add(luma.upper, upper.red));
  const auto green = packBlocks(hn::Sub(luma.lower, lower.green), hn::Sub(luma.upper, upper.green));
  const auto blue = packBlocks(hn::Add(luma.lower, lower.blue), hn::Add(luma.upper, upper.blue));
  Chroma::store(d8,
                rgb565(d8, reducedByFive(d8, red, dither.red), hn::SaturatedSub(green, dither.green),
                       reducedByFive(d8, blue, dither.blue)),
                to);
}

/// A row in groups, the last of which ends with the row.
template <class Chroma, int lines, class D>
HWY_INLINE void convertRows(D d8, const SampleRows from, uint8_t *const to[2], int32_t pixels, int32_t line,
                            const ColourConstants &ofFrame) {
  constexpr std::ptrdiff_t kStep = hn::MaxLanes(D());
  const Words<D> d16;
  const ColourConstants *constants = hidden(&ofFrame);
  const MatrixLanes<Words<D>> matrix(d16, *constants);
  DitherLanes<D> first = ditherLanes<Chroma>(d8, constants->dither[line], 0);
  const DitherLanes<D> second = ditherLanes<Chroma>(d8, constants->dither[1 - line], 0);
  uint8_t *const upperLine = to[0];
  uint8_t *const lowerLine = lines == 2 ? to[1] : nullptr;
  const std::ptrdiff_t last = pixels - kStep;
  for (std::ptrdiff_t x = 0;;) {
    const std::ptrdiff_t sample = Chroma::kIsFull ? x : x >> 1;
    const auto terms = biasedTerms(d16, from.u + sample, from.v + sample, matrix);
    if constexpr (Chroma::kIsFull) {
      const std::ptrdiff_t next = sample + kStep / 2;
      convertGroup<Chroma>(d8, from.y[0] + x, terms, biasedTerms(d16, from.u + next, from.v + next, matrix), first,
                           upperLine + 2 * x);
    } else {
      convertGroup<Chroma>(d8, from.y[0] + x, terms, terms, first, upperLine + 2 * x);
    }
    if constexpr (lines == 2) {
      convertGroup<Chroma>(d8, from.y[1] + x, terms, terms, second, lowerLine + 2 * x);
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
template <class Chroma, int lines>
HWY_INLINE void convertAnyRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t line,
                               const ColourConstants &constants) {
  constexpr auto kPixels = static_cast<int32_t>(hn::MaxLanes(Group()));
  if (kPixels > kLeastPixels && pixels < kPixels) {
    convertRows<Chroma, lines>(LeastGroup(), from, to, pixels, line, constants);
  } else {
    convertRows<Chroma, lines>(Group(), from, to, pixels, line, constants);
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

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> MATRIX565_HALF_PAIR = ZQCC_EVERY_LEVEL(matrix565HalfPair);
constexpr PerLevel<ColourRows> MATRIX565_HALF = ZQCC_EVERY_LEVEL(matrix565Half);
constexpr PerLevel<ColourRows> MATRIX565_FULL = ZQCC_EVERY_LEVEL(matrix565Full);
} // namespace zqcc
#endif
