// What five-point and box means share: sums of products, and quotients as bytes.

// Read once a level.
#if defined(ZQCC_VECTOR_MEANS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_MEANS_INL_H
#undef ZQCC_VECTOR_MEANS_INL_H
#else
#define ZQCC_VECTOR_MEANS_INL_H
#endif

#include "vector/filter_plan.h"
#include "vector/words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

using D8 = hn::ScalableTag<uint8_t>;
using D16 = hn::Repartition<uint16_t, D8>;
using DI16 = hn::Repartition<int16_t, D8>;
using DI32 = hn::Repartition<int32_t, D8>;
using V8 = hn::Vec<D8>;
using V16 = hn::Vec<D16>;
using VI16 = hn::Vec<DI16>;
using VI32 = hn::Vec<DI32>;
constexpr D8 d8;
constexpr D16 d16;
constexpr DI16 di16;
constexpr DI32 di32;

constexpr int32_t kBytes = hn::MaxLanes(d8);
constexpr int32_t kWords = hn::MaxLanes(d16);
constexpr int32_t kLongs = hn::MaxLanes(di32);
constexpr int kVectors = kWindowBytes / kBytes; ///< of a group

/// Products of words, added in pairs.
HWY_INLINE VI32 addedProducts(VI16 a, VI16 b) {
  VI32 odd = hn::Zero(di32);
  const VI32 even = hn::ReorderWidenMulAccumulate(di32, a, b, hn::Zero(di32), odd);
  return hn::RearrangeToOddPlusEven(even, odd);
}

/// Sums of pairs of bytes.
template <class D>
HWY_INLINE hn::Vec<D> pairSums(D d, const uint8_t *from) {
  const auto bytes = hn::LoadU(hn::Repartition<uint8_t, D>(), from);
#if HWY_ARCH_X86
  const hn::RebindToSigned<D> di;
  return hn::BitCast(d, sumPairs(bytes, hn::Set(di, 0x0101)));
#else
  return hn::Add(hn::And(hn::BitCast(d, bytes), hn::Set(d, 0xFF)), hn::ShiftRight<8>(hn::BitCast(d, bytes)));
#endif
}

/// The lanes of a block of `a`, then those of the same block of `b`.
HWY_INLINE VI16 packedWords(VI32 a, VI32 b) {
  return hn::ReorderDemote2To(di16, a, b);
}

/// Stores a byte for each of 16 sums that fit words: what `quotient` makes of these, which fits a byte.
template <class Quotient>
HWY_INLINE void storeBytes(const VI32 (&sums)[kVectors], const Quotient &quotient, uint8_t *to) {
#if HWY_TARGET == HWY_AVX3
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to), _mm512_cvtepi32_epi8(quotient(hn::BitCast(di16, sums[0])).raw));
#elif HWY_TARGET == HWY_AVX2
  const VI16 words = quotient(packedWords(sums[0], sums[1]));
  const auto bytes = packBlocks(words, words);
  const auto order = _mm256_setr_epi32(0, 4, 1, 5, 0, 4, 1, 5);
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to),
                   _mm256_castsi256_si128(_mm256_permutevar8x32_epi32(bytes.raw, order)));
#else
  const VI16 low = quotient(packedWords(sums[0], sums[1]));
  const VI16 high = quotient(packedWords(sums[2], sums[3]));
  hn::StoreU(packBlocks(low, high), d8, to);
#endif
}

/// Stores the quotients of 16 sums below 2^16 as bytes.
HWY_INLINE void storeQuotients(const VI32 (&sums)[kVectors], V16 factor, int shift, uint8_t *to) {
  const auto quotient = [&](VI16 words) HWY_ATTR {
    return hn::BitCast(di16, hn::ShiftRightSame(hn::MulHigh(hn::BitCast(d16, words), factor), shift));
  };
  storeBytes(sums, quotient, to);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
