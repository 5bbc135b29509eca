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

/// As many pixels of a line as D has lanes, with the terms of even and of odd columns.
template <class D, class Lanes, class V>
HWY_INLINE void makePixels(D d, const Lanes &lanes, const typename Lanes::Terms &evenTerms,
                           const typename Lanes::Terms &oddTerms, V even, V odd, uint8_t *to) {
  storePixels(
      d, lanes.pixels(even, evenTerms), lanes.pixels(odd, oddTerms),
      [&lanes](hn::Vec<D> components) HWY_ATTR { return lanes.limited(components); }, to);
}

// Chroma of as many pixels as D has lanes. The terms of even and of odd columns are named one by one: compilers keep
// them in registers as long as nobody copies a whole record of them.

/// Samples that serve two columns each.
template <class D, class Lanes>
class HalfChroma {
public:
  HWY_INLINE HalfChroma(const Lanes &lanes, const SampleRows &rows, std::ptrdiff_t x)
      : both(lanes.terms(load(rows.u + x / 2), load(rows.v + x / 2))) {}

  HWY_INLINE const typename Lanes::Terms &even() const { return both; }
  HWY_INLINE const typename Lanes::Terms &odd() const { return both; }

private:
  HWY_INLINE static hn::Vec<Words<D>> load(const uint8_t *samples) {
    return hn::PromoteTo(Words<D>(), hn::LoadU(hn::Rebind<uint8_t, Words<D>>(), samples));
  }

  typename Lanes::Terms both;
};

/// A sample for every column.
template <class D, class Lanes>
class FullChroma {
public:
  HWY_INLINE FullChroma(const Lanes &lanes, const SampleRows &rows, std::ptrdiff_t x)
      : FullChroma(lanes, Samples(hn::LoadU(D(), rows.u + x)), Samples(hn::LoadU(D(), rows.v + x))) {}

  HWY_INLINE const typename Lanes::Terms &even() const { return evenTerms; }
  HWY_INLINE const typename Lanes::Terms &odd() const { return oddTerms; }

private:
  using Samples = EvenAndOdd<Words<D>, 1>;
  HWY_INLINE FullChroma(const Lanes &lanes, const Samples &u, const Samples &v)
      : evenTerms(lanes.terms(u.even, v.even)), oddTerms(lanes.terms(u.odd, v.odd)) {}

  typename Lanes::Terms evenTerms;
  typename Lanes::Terms oddTerms;
};

/// Lines of at least as many pixels as D has lanes, all with the same chroma.
template <int lines, template <class, class> class Chroma, template <class> class Arithmetic>
struct FromRows {
  template <class D>
  HWY_INLINE static void make(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels,
                              const ColourConstants &constants) {
    const Arithmetic<D> lanes(constants);
    const SampleRows rows = from; // stores of bytes may alias what is reached through a reference
    uint8_t *const out[2] = {to[0], lines == 2 ? to[1] : nullptr};
    forEachGroup<hn::MaxLanes(D())>(pixels, [&](std::ptrdiff_t x) HWY_ATTR {
      const Chroma<D, Arithmetic<D>> chroma(lanes, rows, x);
      for (int line = 0; line < lines; ++line) {
        const EvenAndOdd<Words<D>, Arithmetic<D>::kLumaScale> luma(hn::LoadU(d, rows.y[line] + x));
        makePixels(d, lanes, chroma.even(), chroma.odd(), luma.even, luma.odd, out[line] + 3 * x);
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
      makePixels(d, lanes, terms, terms, samples.even, samples.odd, out + 3 * x);
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

template <int lines, template <class, class> class Chroma>
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
