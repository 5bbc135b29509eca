// A row of pixels from rows of samples, group by group.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_LINE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_LINE_INL_H
#undef ZQP_ROWS_COLOUR_LINE_INL_H
#else
#define ZQP_ROWS_COLOUR_LINE_INL_H
#endif

#include "rows/colour_pixels-inl.h"
#include "rows/colour_sources-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

// Emulated vectors are long loops: one copy of a group is enough of them.
#undef ZQP_GROUP
#if HWY_TARGET == HWY_EMU128
#define ZQP_GROUP HWY_NOINLINE
#else
#define ZQP_GROUP HWY_INLINE
#endif

template <class Source, class Pixels>
class Line {
public:
  using Rows = typename Source::Rows;

  /// `column`: that of the first pixels made, modulo 8.
  HWY_INLINE Line(const RgbOfYuv &colours, const Rounding &rounding, int32_t column)
      : sums(colours, Pixels::roundingOfRed(colours, rounding), Pixels::roundingOfGreen(colours, rounding), column,
             Source::kIsByParity),
        pixels(colours) {}

  ZQP_GROUP void makeGroup(const Rows &from, ptrdiff_t x, uint8_t *const to[3]) const {
    const GroupSamples samples = Source::template load<Pixels::kDeal>(from, x);
    const HalfGroup terms = sums.terms(samples.u[0], samples.v[0]);
    const HalfGroup first = sums.sums(samples.y[0], terms, 0);
    if constexpr (Source::kSharesChroma) {
      pixels.template store<Source::kIsByParity>(first, sums.sums(samples.y[1], terms, 1), x, to);
    } else {
      const HalfGroup second = sums.sums(samples.y[1], sums.terms(samples.u[1], samples.v[1]), 1);
      pixels.template store<Source::kIsByParity>(first, second, x, to);
    }
  }

private:
  const RgbSums<Pixels::kIsOneLuma> sums;
  const Pixels pixels;
};

/// Pixels x to x + count - 1, a group or, by way of buffers, less.
template <class Source, class Pixels>
HWY_NOINLINE void makeEdge(const typename Source::Rows &from, const RgbOfYuv &colours, const Rounding &rounding,
                           int32_t x, int32_t count, uint8_t *const to[3]) {
  const Line<Source, Pixels> line(colours, rounding, x % 8);
  SampleBuffer<typename Source::Sample> samples = {};
  uint8_t made[Pixels::kRows][static_cast<size_t>(Pixels::kBytes * kGroup)];
  uint8_t *const buffers[3] = {made[0], made[Pixels::kRows / 2], made[Pixels::kRows - 1]};
  const bool isWhole = count == kGroup;
  line.makeGroup(isWhole ? from : Source::copy(from, x, count, samples), isWhole ? x : 0, isWhole ? to : buffers);
  for (int32_t row = 0; row < Pixels::kRows && !isWhole; ++row) {
    std::memcpy(to[row] + static_cast<ptrdiff_t>(x) * Pixels::kBytes, made[row],
                static_cast<size_t>(count) * Pixels::kBytes);
  }
}

/// The last group overlaps the one before it. It has pairs of columns where that is what chroma belongs to; an odd last
/// column goes by itself then.
template <class Source, class Pixels>
void makeLine(const typename Source::Rows &from, const RgbOfYuv &colours, const Rounding &rounding, int32_t pixels,
              uint8_t *const to[3]) {
  if (pixels < kGroup) {
    makeEdge<Source, Pixels>(from, colours, rounding, 0, pixels, to);
    return;
  }
  const Line<Source, Pixels> line(colours, rounding, 0);
  const typename Source::Rows rows = from; // copies, so that the compiler knows that no store changes them
  uint8_t *const made[3] = {to[0], to[Pixels::kRows / 2], to[Pixels::kRows - 1]};
  int32_t x = 0;
  for (; x <= pixels - kGroup; x += kGroup) {
    line.makeGroup(rows, x, made);
  }
  const int32_t single = Source::kSharesChroma ? pixels % 2 : 0;
  if (x < pixels - single) {
    makeEdge<Source, Pixels>(from, colours, rounding, pixels - single - kGroup, kGroup, to);
  }
  if (single != 0) {
    makeEdge<Source, Pixels>(from, colours, rounding, pixels - 1, 1, to);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
