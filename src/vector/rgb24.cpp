#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/rgb24.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/rgb24-inl.h"
#include "vector/rgb24.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// As many pixels of a line as D has lanes, with the terms of their pairs.
template <class D, class Lanes>
HWY_INLINE void makePixels(D d, const Lanes &lanes, const typename Lanes::Terms &terms, const uint8_t *y, uint8_t *to) {
  const EvenAndOdd<Words<D>, Lanes::kLumaScale> luma(hn::LoadU(d, y));
  storePixels(
      d, lanes.pixels(luma.even, terms), lanes.pixels(luma.odd, terms),
      [&lanes](hn::Vec<D> components) HWY_ATTR { return lanes.limited(components); }, to);
}

/// Lines of at least as many pixels as D has lanes, all with the same half chroma. The last group overlaps.
template <int lines, template <class> class Arithmetic, class D>
HWY_INLINE void makeLines(D d, const SampleRows &from, uint8_t *const to[2], int32_t pixels,
                          const ColourConstants &constants) {
  const hn::Rebind<uint8_t, Words<D>> samples;
  const Words<D> d16;
  const Arithmetic<D> lanes(constants);
  constexpr std::ptrdiff_t kPixels = hn::MaxLanes(D());
  const std::ptrdiff_t last = pixels - kPixels;
  const SampleRows rows = from; // stores of bytes may alias what is reached through a reference
  uint8_t *const out[2] = {to[0], lines == 2 ? to[1] : nullptr};
  for (std::ptrdiff_t x = 0;; x += kPixels) {
    if (x > last) {
      x = last;
    }
    const auto terms = lanes.terms(hn::PromoteTo(d16, hn::LoadU(samples, rows.u + x / 2)),
                                   hn::PromoteTo(d16, hn::LoadU(samples, rows.v + x / 2)));
    for (int line = 0; line < lines; ++line) {
      makePixels(d, lanes, terms, rows.y[line] + x, out[line] + 3 * x);
    }
    if (x == last) {
      return;
    }
  }
}

template <int lines, template <class> class Arithmetic>
void makeRows(const SampleRows &from, uint8_t *const to[2], int32_t pixels, const ColourConstants &constants) {
  const hn::ScalableTag<uint8_t> whole;
  const hn::CappedTag<uint8_t, kLeastPixels> least;
  if (pixels >= static_cast<int32_t>(hn::Lanes(whole))) {
    makeLines<lines, Arithmetic>(whole, from, to, pixels, constants);
  } else {
    makeLines<lines, Arithmetic>(least, from, to, pixels, constants);
  }
}

void studioQ12Pair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                   const ColourConstants &constants) {
  makeRows<2, StudioQ12Lanes>(from, to, pixels, constants);
}

void matrixRgb24Pair(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                     const ColourConstants &constants) {
  makeRows<2, MatrixRgb24Lanes>(from, to, pixels, constants);
}

void matrixRgb24Single(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                       const ColourConstants &constants) {
  makeRows<1, MatrixRgb24Lanes>(from, to, pixels, constants);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<ColourRows> STUDIO_Q12_PAIR = ZQCC_EVERY_LEVEL(studioQ12Pair);
constexpr PerLevel<ColourRows> MATRIX_RGB24_PAIR = ZQCC_EVERY_LEVEL(matrixRgb24Pair);
constexpr PerLevel<ColourRows> MATRIX_RGB24_SINGLE = ZQCC_EVERY_LEVEL(matrixRgb24Single);

} // namespace zqcc
#endif
