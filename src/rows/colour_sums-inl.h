// Components of RGB from samples of YUV, in 16-bit lanes. A sum has 14 bits where it is neither too small nor too
// large, whatever the component's bits; shifted by 6, its largest value is 255, so that packing to bytes clamps it.
//
// What rounds is added to luma together with its bias. The sum then saturates otherwise than one that has it added
// last, but only where the component is clamped to the same end.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_SUMS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_SUMS_INL_H
#undef ZQP_ROWS_COLOUR_SUMS_INL_H
#else
#define ZQP_ROWS_COLOUR_SUMS_INL_H
#endif

#include "rows/colour.h"
#include "rows/colour_blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Samples of a group, as two vectors of half the pixels. Of luma s, of chroma S. With shared chroma, the even pixels
/// are the first and the odd ones the second, and there is one vector of chroma.
struct GroupSamples {
  V16 y[2];
  VI u[2];
  VI v[2];
};

/// Components of half the pixels.
struct HalfGroup {
  VI red;
  VI green;
  VI blue;
};

HWY_INLINE VI signedOf(V16 words) {
  return hn::BitCast(DI(), words);
}

/// Eight biases, of which a half has the columns that belong to it.
struct Biases {
  VI of[2];

  HWY_INLINE Biases(const Level &level, const uint16_t rounding[8], int32_t column, bool isByParity) {
    const int32_t step = isByParity ? 2 : 1;
    for (int32_t half = 0; half < 2; ++half) {
      int16_t eight[8];
      for (int32_t i = 0; i < 8; ++i) {
        const int32_t at = (column + step * i + (isByParity ? half : 0)) & 7;
        eight[i] = static_cast<int16_t>(level.bias + rounding[at]);
      }
      of[half] = hn::LoadDup128(DI(), eight);
    }
  }
};

HWY_INLINE VI lumaOf(V16 samples, V16 factor, VI bias) {
  return hn::SaturatedAdd(signedOf(hn::MulHigh(samples, factor)), bias);
}

/// Numbers of the arithmetic. Red and blue have as many bits and one luma; where `isOneLuma`, green has it too.
template <bool isOneLuma>
struct RgbSums {
  V16 factor;
  V16 factorOfGreen;
  Biases biases;
  Biases biasesOfGreen;
  VI redV;
  VI greenU;
  VI greenV;
  VI blueU;

  /// `column`: that of the group's first pixel, modulo 8.
  HWY_INLINE RgbSums(const RgbOfYuv &colours, const uint16_t *ofRedAndBlue, const uint16_t *ofGreen, int32_t column,
                     bool isByParity)
      : factor(hn::Set(D16(), colours.red.luma.factor)), factorOfGreen(hn::Set(D16(), colours.green.luma.factor)),
        biases(colours.red.luma, ofRedAndBlue, column, isByParity),
        biasesOfGreen(colours.green.luma, ofGreen, column, isByParity), redV(hn::Set(DI(), colours.red.v)),
        greenU(hn::Set(DI(), colours.green.u)), greenV(hn::Set(DI(), colours.green.v)),
        blueU(hn::Set(DI(), colours.blue.u)) {}

  /// What chroma adds to the components of its pixels.
  HWY_INLINE HalfGroup terms(VI u, VI v) const {
    return {hn::MulFixedPoint15(v, redV),
            hn::SaturatedAdd(hn::MulFixedPoint15(u, greenU), hn::MulFixedPoint15(v, greenV)),
            hn::MulFixedPoint15(u, blueU)};
  }

  /// Components on a scale of 256 a full range, not clamped yet.
  HWY_INLINE HalfGroup sums(V16 y, const HalfGroup &terms, int32_t half) const {
    const VI luma = lumaOf(y, factor, biases.of[half]);
    const VI lumaOfGreen = isOneLuma ? luma : lumaOf(y, factorOfGreen, biasesOfGreen.of[half]);
    return {hn::ShiftRight<6>(hn::SaturatedAdd(luma, terms.red)),
            hn::ShiftRight<6>(hn::SaturatedAdd(lumaOfGreen, terms.green)),
            hn::ShiftRight<6>(hn::SaturatedAdd(luma, terms.blue))};
  }
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
