// Vectors of pairs of bytes: their sums, and windows of 16 bytes put together.

// Read once a level.
#if defined(ZQP_ROWS_BYTE_PAIRS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_BYTE_PAIRS_INL_H
#undef ZQP_ROWS_BYTE_PAIRS_INL_H
#else
#define ZQP_ROWS_BYTE_PAIRS_INL_H
#endif

#include <hwy/highway.h>

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// Where vectors are emulated, plain loops take fewer steps, and processors without unaligned loads the fewest.
#if HWY_TARGET == HWY_EMU128
inline constexpr bool kIsEmulated = true;
#else
inline constexpr bool kIsEmulated = false;
#endif

inline constexpr hn::ScalableTag<uint8_t> kBytes;
inline constexpr hn::ScalableTag<int16_t> kWords;
using ByteVec = hn::Vec<decltype(kBytes)>;
using WordVec = hn::Vec<decltype(kWords)>;

/// Words of the first bytes of pairs, and of the second ones.
template <class V>
HWY_INLINE auto evenBytes(V pairs) {
  const hn::Repartition<int16_t, hn::DFromV<V>> words;
  return hn::And(hn::BitCast(words, pairs), hn::Set(words, int16_t{0xFF}));
}
template <class V>
HWY_INLINE auto oddBytes(V pairs) {
  const hn::Repartition<uint16_t, hn::DFromV<V>> numbers;
  const hn::Repartition<int16_t, hn::DFromV<V>> words;
  return hn::BitCast(words, hn::ShiftRight<8>(hn::BitCast(numbers, pairs)));
}

// sumPairs: every pair of bytes times the pair of signed bytes that the other lane holds, summed, which must fit.
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
HWY_INLINE hn::Vec128<int16_t> sumPairs(hn::Vec128<uint8_t> bytes, hn::Vec128<int16_t> factors) {
  return hn::Vec128<int16_t>{_mm_maddubs_epi16(bytes.raw, factors.raw)};
}
#if HWY_MAX_BYTES >= 32
HWY_INLINE hn::Vec256<int16_t> sumPairs(hn::Vec256<uint8_t> bytes, hn::Vec256<int16_t> factors) {
  return hn::Vec256<int16_t>{_mm256_maddubs_epi16(bytes.raw, factors.raw)};
}
#endif
#if HWY_MAX_BYTES >= 64
HWY_INLINE hn::Vec512<int16_t> sumPairs(hn::Vec512<uint8_t> bytes, hn::Vec512<int16_t> factors) {
  return hn::Vec512<int16_t>{_mm512_maddubs_epi16(bytes.raw, factors.raw)};
}
#endif
#else
template <class V, class W>
HWY_INLINE W sumPairs(V bytes, W factors) {
  const auto first = hn::ShiftRight<8>(hn::ShiftLeft<8>(factors));
  return hn::Add(hn::Mul(evenBytes(bytes), first), hn::Mul(oddBytes(bytes), hn::ShiftRight<8>(factors)));
}
#endif

/// Two factors of sumPairs.
constexpr int16_t factorsOf(int32_t first, int32_t second) {
  return static_cast<int16_t>((second * 256) | (first & 0xFF));
}
HWY_INLINE WordVec pairFactors(int32_t first, int32_t second) {
  return hn::Set(kWords, factorsOf(first, second));
}

/// 16 bytes from `base` + places[b] on for every block b of a vector.
HWY_INLINE ByteVec windowsAt(const uint8_t *base, const int32_t *places) {
#if HWY_TARGET == HWY_AVX3
  const auto at = [&](int32_t b)
                      HWY_ATTR { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(base + places[b])); };
  const auto low = _mm512_inserti32x4(_mm512_castsi128_si512(at(0)), at(1), 1);
  return ByteVec{_mm512_inserti32x4(_mm512_inserti32x4(low, at(2), 2), at(3), 3)};
#elif HWY_TARGET == HWY_AVX2
  const auto at = [&](int32_t b)
                      HWY_ATTR { return _mm_loadu_si128(reinterpret_cast<const __m128i *>(base + places[b])); };
  return ByteVec{_mm256_inserti128_si256(_mm256_castsi128_si256(at(0)), at(1), 1)};
#else
  return hn::LoadU(kBytes, base + places[0]);
#endif
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
