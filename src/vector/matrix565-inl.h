// What the chroma of a pixel adds to its luma, by a matrix whose coefficients have 20 fractional bits: exact, so
// products are made in 32-bit lanes; what is left behind the shift fits 16.
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

/// Sums of products of 16-bit lanes, for the samples in the lower and in the upper half of their vector (of every block
/// of 128 bits).
template <class V>
struct WideSums {
  V lower;
  V upper;
};

// Products of samples c and 24-bit factors are 256c * high + c * low.
#if HWY_TARGET == HWY_NEON

template <class D16>
struct FactorLanes {
  explicit FactorLanes(const SplitFactor &factor)
      : high(hn::Set(D16(), factor.high)), low(hn::Set(D16(), factor.low)) {}
  hn::Vec<D16> high;
  hn::Vec<D16> low;
};

template <class D16>
struct ChromaLanes {
  explicit ChromaLanes(hn::Vec<D16> samples) : times256(hn::ShiftLeft<8>(samples)), once(samples) {}
  hn::Vec<D16> times256;
  hn::Vec<D16> once;
};

template <class D16, class D32 = hn::RepartitionToWide<D16>, class V32 = hn::Vec<D32>>
HWY_INLINE WideSums<V32> addProducts(const ChromaLanes<D16> &chroma, const FactorLanes<D16> &factor,
                                     WideSums<V32> sums) {
  sums.lower = hn::ReorderWidenMulAccumulate(D32(), chroma.times256, factor.high, sums.lower, sums.upper);
  sums.lower = hn::ReorderWidenMulAccumulate(D32(), chroma.once, factor.low, sums.lower, sums.upper);
  return sums;
}

/// The sums shifted right by 20.
template <class D16, class V32>
HWY_INLINE hn::Vec<D16> integers(D16 d16, const WideSums<V32> &sums) {
  return hn::ShiftRight<4>(hn::ConcatOdd(d16, hn::BitCast(d16, sums.upper), hn::BitCast(d16, sums.lower)));
}

#else

template <class D16>
struct FactorLanes {
  explicit HWY_INLINE FactorLanes(const SplitFactor &factor)
      : pairs(hn::BitCast(
            D16(), hn::Set(hn::RepartitionToWide<D16>(), static_cast<int32_t>(static_cast<uint32_t>(factor.low) << 16 |
                                                                              static_cast<uint16_t>(factor.high))))) {}
  hn::Vec<D16> pairs;
};

template <class D16>
struct ChromaLanes {
  explicit HWY_INLINE ChromaLanes(hn::Vec<D16> samples)
      : lower(hn::InterleaveLower(D16(), hn::ShiftLeft<8>(samples), samples)),
        upper(hn::InterleaveUpper(D16(), hn::ShiftLeft<8>(samples), samples)) {}
  hn::Vec<D16> lower;
  hn::Vec<D16> upper;
};

template <class D16, class D32 = hn::RepartitionToWide<D16>, class V32 = hn::Vec<D32>>
HWY_INLINE WideSums<V32> addProducts(const ChromaLanes<D16> &chroma, const FactorLanes<D16> &factor,
                                     WideSums<V32> sums) {
  V32 none = hn::Zero(D32()); // neighbours are added here
  return {hn::ReorderWidenMulAccumulate(D32(), chroma.lower, factor.pairs, sums.lower, none),
          hn::ReorderWidenMulAccumulate(D32(), chroma.upper, factor.pairs, sums.upper, none)};
}

/// The sums shifted right by 20.
template <class D16, class V32>
HWY_INLINE hn::Vec<D16> integers(D16 d16, const WideSums<V32> &sums) {
  return hn::ReorderDemote2To(d16, hn::ShiftRight<20>(sums.lower), hn::ShiftRight<20>(sums.upper));
}

#endif

/// The coefficients of a matrix.
template <class D16>
struct MatrixLanes {
  explicit HWY_INLINE MatrixLanes(const ColourConstants &constants)
      : crToR(constants.crToR), crToG(constants.crToG), cbToB(constants.cbToB), cbToG(constants.cbToG) {}
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

/// The terms of as many samples as D16 has lanes.
template <class D16>
HWY_INLINE MatrixTerms<D16> matrixTerms(D16 d16, const uint8_t *u, const uint8_t *v, const MatrixLanes<D16> &matrix) {
  const hn::Rebind<uint8_t, D16> d8;
  const hn::RepartitionToWide<D16> d32;
  const auto middle = hn::Set(d16, int16_t{128});
  const ChromaLanes<D16> cb(hn::Sub(hn::PromoteTo(d16, hn::LoadU(d8, u)), middle));
  const ChromaLanes<D16> cr(hn::Sub(hn::PromoteTo(d16, hn::LoadU(d8, v)), middle));
  const WideSums<hn::Vec<decltype(d32)>> none{hn::Zero(d32), hn::Zero(d32)};
  return {integers(d16, addProducts(cr, matrix.crToR, none)),
          integers(d16, addProducts(cr, matrix.crToG, addProducts(cb, matrix.cbToG, none))),
          integers(d16, addProducts(cb, matrix.cbToB, none))};
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
