// What the chroma of a pixel adds to its luma, by a matrix whose coefficients have 20 fractional bits: exact in 16-bit
// lanes.
//
// Let T be coefficient times sample, or a sum of such, of which T >> 20 is wanted. A rounded product of what 16 bits
// hold of the coefficient gives T >> 15 or one more: the sample takes half a unit of the rounded coefficient at most,
// and rounding the product another half. The lowest 16 bits of T are exact and say whether T >> 15 is odd; taking that
// bit away leaves a number that gives the right one when it is halved, in either case. Green adds two rounded products,
// so it has four candidates for T >> 14, from one less to two more, and takes away two bits.

// Read once a level.
#if defined(ZQCC_VECTOR_MATRIX_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_MATRIX_INL_H
#undef ZQCC_VECTOR_MATRIX_INL_H
#else
#define ZQCC_VECTOR_MATRIX_INL_H
#endif

#include "vector/components-inl.h"
#include "vector/stages.h"

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// A coefficient in every lane.
template <class D16>
struct FactorLanes {
  HWY_INLINE FactorLanes(D16 d16, const MatrixFactor &factor)
      : rounded(hn::Set(d16, factor.rounded)), low(hn::Set(d16, factor.low)) {}
  hn::Vec<D16> rounded;
  hn::Vec<D16> low;
};

/// The coefficients of a matrix.
template <class D16>
struct MatrixLanes {
  HWY_INLINE MatrixLanes(D16 d16, const ColourConstants &constants)
      : crToR(d16, constants.crToR), crToG(d16, constants.crToG), cbToB(d16, constants.cbToB),
        cbToG(d16, constants.cbToG) {}
  FactorLanes<D16> crToR;
  FactorLanes<D16> crToG;
  FactorLanes<D16> cbToB;
  FactorLanes<D16> cbToG;
};

/// What chroma adds to luma in red and blue, and takes away from it in green.
template <class D16>
struct MatrixTerms {
  hn::Vec<D16> red;
  hn::Vec<D16> green;
  hn::Vec<D16> blue;
};

/// The term of red or blue; `times256` is 256 times the sample.
template <class D16, class V = hn::Vec<D16>>
HWY_INLINE V termOfOne(V sample, V times256, const FactorLanes<D16> &factor) {
  const V isOdd = hn::ShiftRight<15>(hn::Mul(sample, factor.low)); // 0 or -1
  return hn::ShiftRight<5>(hn::Add(hn::MulFixedPoint15(times256, factor.rounded), isOdd));
}

/// The terms of as many samples as D16 has lanes.
template <class D16, class V = hn::Vec<D16>>
HWY_INLINE MatrixTerms<D16> matrixTerms(D16 d16, V u, V v, const MatrixLanes<D16> &matrix) {
  const hn::RebindToUnsigned<D16> du16;
  const V middle = hn::Set(d16, int16_t{128});
  const V cb = hn::Sub(u, middle);
  const V cr = hn::Sub(v, middle);
  const V cb256 = hn::ShiftLeft<8>(cb);
  const V cr256 = hn::ShiftLeft<8>(cr);
  const V low = hn::Add(hn::Mul(cb, matrix.cbToG.low), hn::Mul(cr, matrix.crToG.low));
  const V lowBits = hn::BitCast(d16, hn::ShiftRight<14>(hn::BitCast(du16, low)));
  const V most = hn::Add(hn::Add(hn::MulFixedPoint15(cb256, matrix.cbToG.rounded), hn::Set(d16, int16_t{1})),
                         hn::MulFixedPoint15(cr256, matrix.crToG.rounded));
  return {termOfOne(cr, cr256, matrix.crToR), hn::ShiftRight<6>(hn::Sub(most, lowBits)),
          termOfOne(cb, cb256, matrix.cbToB)};
}

/// Pixels of 24 bits by the matrix in force (see zqcc::MatrixRgb24): every component is held in 16..235.
template <class D>
class MatrixRgb24Lanes {
public:
  using D16 = Words<D>;
  using V = hn::Vec<D16>;
  static constexpr int kLumaScale = 1;

  HWY_INLINE explicit MatrixRgb24Lanes(const ColourConstants &constants) : matrix(D16(), constants) {}

  using Terms = MatrixTerms<D16>;

  HWY_INLINE Terms terms(V u, V v) const { return matrixTerms(D16(), u, v, matrix); }

  HWY_INLINE Components<V> pixels(V y, const Terms &t) const {
    return {hn::Add(y, t.blue), hn::Sub(y, t.green), hn::Add(y, t.red)};
  }

  /// Packing has limited the components to 0..255.
  HWY_INLINE hn::Vec<D> limited(hn::Vec<D> components) const {
    const D d;
    return hn::Min(hn::Max(components, hn::Set(d, 16)), hn::Set(d, 235));
  }

private:
  MatrixLanes<D16> matrix;
};

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
