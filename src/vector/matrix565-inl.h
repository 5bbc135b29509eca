// What the chroma of a pixel adds to its luma, by a matrix whose coefficients have 20 fractional bits: exact in 16-bit
// lanes.
//
// Let T be coefficient times sample, or a sum of such, of which T >> 20 is wanted. A rounded product of what 16 bits
// hold of the coefficient gives T >> 15 or one more: the sample takes half a unit of the rounded coefficient at most,
// and rounding the product another half. The lowest 16 bits of T are exact and say whether T >> 15 is odd; taking that
// bit away leaves a number that gives the right one when it is halved, in either case. Green adds two rounded products,
// so it has four candidates for T >> 14, from one less to two more, and takes away two bits.
#if defined(ZQCC_MATRIX565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_MATRIX565_INL_H
#undef ZQCC_MATRIX565_INL_H
#else
#define ZQCC_MATRIX565_INL_H
#endif

#include "vector/stages.h"

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/// A coefficient: without its lowest bits, rounded, and without all that is above 16 bits.
template <class D16>
struct FactorLanes {
  HWY_INLINE FactorLanes(D16 d16, const SplitFactor &factor, int dropped)
      : rounded(hn::Set(d16, static_cast<int16_t>((whole(factor) + (1 << (dropped - 1))) >> dropped))),
        low(hn::Set(d16, static_cast<int16_t>(whole(factor)))) {}
  hn::Vec<D16> rounded;
  hn::Vec<D16> low;

private:
  static HWY_INLINE int whole(const SplitFactor &factor) { return factor.high * 256 + factor.low; }
};

/// The coefficients of a matrix.
template <class D16>
struct MatrixLanes {
  HWY_INLINE MatrixLanes(D16 d16, const ColourConstants &constants)
      : crToR(d16, constants.crToR, 8), crToG(d16, constants.crToG, 7), cbToB(d16, constants.cbToB, 8),
        cbToG(d16, constants.cbToG, 7) {}
  FactorLanes<D16> crToR;
  FactorLanes<D16> crToG;
  FactorLanes<D16> cbToB;
  FactorLanes<D16> cbToG;
};

/// Red and blue are added to luma, green is taken away from it.
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
template <class D16>
HWY_INLINE MatrixTerms<D16> matrixTerms(D16 d16, const uint8_t *u, const uint8_t *v, const MatrixLanes<D16> &matrix) {
  const hn::Rebind<uint8_t, D16> d8;
  const hn::RebindToUnsigned<D16> du16;
  const auto middle = hn::Set(d16, int16_t{128});
  const auto cb = hn::Sub(hn::PromoteTo(d16, hn::LoadU(d8, u)), middle);
  const auto cr = hn::Sub(hn::PromoteTo(d16, hn::LoadU(d8, v)), middle);
  const auto cb256 = hn::ShiftLeft<8>(cb);
  const auto cr256 = hn::ShiftLeft<8>(cr);
  const auto low = hn::Add(hn::Mul(cb, matrix.cbToG.low), hn::Mul(cr, matrix.crToG.low));
  const auto lowBits = hn::BitCast(d16, hn::ShiftRight<14>(hn::BitCast(du16, low)));
  const auto most = hn::Add(hn::Add(hn::MulFixedPoint15(cb256, matrix.cbToG.rounded), hn::Set(d16, int16_t{1})),
                            hn::MulFixedPoint15(cr256, matrix.crToG.rounded));
  return {termOfOne(cr, cr256, matrix.crToR), hn::ShiftRight<6>(hn::Sub(most, lowBits)),
          termOfOne(cb, cb256, matrix.cbToB)};
}

/// Two vectors of 16-bit lanes as one of bytes from 0 to 255, block by block of 128 bits: the lanes of `lower`, then
/// those of `upper`.
#if HWY_TARGET == HWY_NEON
HWY_INLINE hn::Vec128<uint8_t> saturatedBytes(hn::Vec128<int16_t> lower, hn::Vec128<int16_t> upper) {
  return hn::Vec128<uint8_t>(vqmovun_high_s16(vqmovun_s16(lower.raw), upper.raw));
}
#else
HWY_INLINE hn::Vec128<uint8_t> saturatedBytes(hn::Vec128<int16_t> lower, hn::Vec128<int16_t> upper) {
  return hn::Vec128<uint8_t>{_mm_packus_epi16(lower.raw, upper.raw)};
}
#if HWY_MAX_BYTES >= 32
HWY_INLINE hn::Vec256<uint8_t> saturatedBytes(hn::Vec256<int16_t> lower, hn::Vec256<int16_t> upper) {
  return hn::Vec256<uint8_t>{_mm256_packus_epi16(lower.raw, upper.raw)};
}
#endif
#if HWY_MAX_BYTES >= 64
HWY_INLINE hn::Vec512<uint8_t> saturatedBytes(hn::Vec512<int16_t> lower, hn::Vec512<int16_t> upper) {
  return hn::Vec512<uint8_t>{_mm512_packus_epi16(lower.raw, upper.raw)};
}
#endif
#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
