#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/rgb24.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/macropixels-inl.h"
#include "vector/matrix-inl.h"
#include "vector/rgb24.h"
#include "vector/rgb24_store-inl.h"
#include "vector/studio_q12-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Calls group(x) for groups of kPixels pixels from the first one on, the last of which overlaps.
template <std::ptrdiff_t kPixels, class Group>
HWY_INLINE void forEachGroup(int32_t pixels, const Group &group) {
  const std::ptrdiff_t last = pixels - kPixels;
  for (std::ptrdiff_t x = 0;; x += kPixels) {
    if (x > last) {
      x = last;
    }
    group(x);
    if (x == last) {
      return;
    }
  }
}

/// The terms of pixels of even and of odd columns.
template <class Terms>
struct TermsOfColumns {
  Terms even;
  Terms odd;
};

/// As many pixels of a line as D has lanes.
template <class D, class Lanes, class V>
HWY_INLINE void makePixels(D d, const Lanes &lanes, const TermsOfColumns<typename Lanes::Terms> &terms, V even, V odd,
                           uint8_t *to) {
  storePixels(
      d, lanes.pixels(even, terms.even), lanes.pixels(odd, terms.odd),
      [&lanes](hn::Vec<D> components) HWY_ATTR { return lanes.limited(components); }, to);
}

/// Chroma samples that serve two columns each.
struct HalfChroma {
  template <class D, class Lanes>
  HWY_INLINE static TermsOfColumns<typename Lanes::Terms> terms(D /*d*/, const Lanes &lanes, const SampleRows &rows,
                                                                std::ptrdiff_t x) {
    const hn::Rebind<uint8_t, Words<D>> samples;
    const Words<D> d16;
    const auto both = lanes.terms(hn::PromoteTo(d16, hn::LoadU(samples, rows.u + x / 2)),
                                  hn::PromoteTo(d16, hn::LoadU(samples, rows.v + x / 2)));
    return {both, both};
  }
};

/// A chroma sample for every column.
struct FullChroma {
  template <class D, class Lanes>
  HWY_INLINE static TermsOfColumns<typename Lanes::Terms> terms(D d, const Lanes &lanes, const SampleRows &rows,
                                                                std::ptrdiff_t x) {
    const EvenAndOdd<Words<D>, 1> u(hn::LoadU(d, rows.u + x));
    const EvenAndOdd<Words<D>, 1> v(hn::LoadU(d, rows.v + x));
    return {lanes.terms(u.even, v.even), lanes.terms(u.odd, v.odd)};
  }
};

/// Lines of at least as many pixels as D has lanes, all with the same chroma.
template <int lines, class Chroma, template <class> class Arithmetic>
struct FromRows {
  template <class D>
  HWY_INLINE static void make(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels,
                              const ColourConstants &constants) {
    const Arithmetic<D> lanes(constants);
    const SampleRows rows = from; // stores of bytes may alias what is reached through a reference
    uint8_t *const out[2] = {to[0], lines == 2 ? to[1] : nullptr};
    forEachGroup<hn::MaxLanes(D())>(pixels, [&](std::ptrdiff_t x) HWY_ATTR {
      const auto terms = Chroma::terms(d, lanes, rows, x);
      for (int line = 0; line < lines; ++line) {
        const EvenAndOdd<Words<D>, Arithmetic<D>::kLumaScale> luma(hn::LoadU(d, rows.y[line] + x));
        makePixels(d, lanes, terms, luma.even, luma.odd, out[line] + 3 * x);
      }
    });
  }
};

/// One line of macropixels as they lie; the left pixel's luma is the second of the two if they are swapped.
template <bool swapped>
struct FromMacropixels {
  template <class D>
  HWY_INLINE static void make(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels,
                              const ColourConstants &constants) {
    const MatrixRgb24Lanes<D> lanes(constants);
    const uint8_t *left = from.y[0];
    const uint8_t *right = left + (swapped ? -2 : 2);
    const MacropixelLanes<D> macropixels(left, right, from.u, from.v);
    uint8_t *const out = to[0];
    forEachGroup<hn::MaxLanes(D())>(pixels, [&](std::ptrdiff_t x) HWY_ATTR {
      const auto samples = macropixels.load(x);
      const auto terms = lanes.terms(samples.u, samples.v);
      makePixels(d, lanes, {terms, terms}, samples.even, samples.odd, out + 3 * x);
    });
  }
};

template <class Maker>
void makeRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, const ColourConstants &constants) {
  const hn::ScalableTag<uint8_t> whole;
  const hn::CappedTag<uint8_t, kLeastPixels> least;
  if (pixels >= static_cast<int32_t>(hn::Lanes(whole))) {
    Maker::make(whole, from, to, pixels, constants);
  } else {
    Maker::make(least, from, to, pixels, constants);
  }
}

void studioQ12Pair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                   const ColourConstants &constants) {
  makeRows<FromRows<2, HalfChroma, StudioQ12Lanes>>(from, to, pixels, constants);
}

template <int lines, class Chroma>
void matrixRgb24(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                 const ColourConstants &constants) {
  makeRows<FromRows<lines, Chroma, MatrixRgb24Lanes>>(from, to, pixels, constants);
}
constexpr ColourRows matrixRgb24Pair = matrixRgb24<2, HalfChroma>;
constexpr ColourRows matrixRgb24FullPair = matrixRgb24<2, FullChroma>;
constexpr ColourRows matrixRgb24Full = matrixRgb24<1, FullChroma>;

template <bool swapped>
void matrixRgb24Packed(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                       const ColourConstants &constants) {
  makeRows<FromMacropixels<swapped>>(from, to, pixels, constants);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<ColourRows> STUDIO_Q12_PAIR = ZQCC_EVERY_LEVEL(studioQ12Pair);
constexpr PerLevel<ColourRows> MATRIX_RGB24_PAIR = ZQCC_EVERY_LEVEL(matrixRgb24Pair);
constexpr PerLevel<ColourRows> MATRIX_RGB24_FULL_PAIR = ZQCC_EVERY_LEVEL(matrixRgb24FullPair);
constexpr PerLevel<ColourRows> MATRIX_RGB24_FULL = ZQCC_EVERY_LEVEL(matrixRgb24Full);
constexpr PerLevel<ColourRows> MATRIX_RGB24_PACKED = ZQCC_EVERY_LEVEL(matrixRgb24Packed<false>);
constexpr PerLevel<ColourRows> MATRIX_RGB24_PACKED_SWAPPED = ZQCC_EVERY_LEVEL(matrixRgb24Packed<true>);

} // namespace zqcc
#endif
