// Between bytes and 16-bit lanes: what x86 has one instruction for and Highway 1.0.3 no name.
#if defined(ZQCC_VECTOR_BYTES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_BYTES_INL_H
#undef ZQCC_VECTOR_BYTES_INL_H
#else
#define ZQCC_VECTOR_BYTES_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/// Hides from the compiler which numbers stand there. It would make them anew from immediate operands at every use, and
/// shifts and sums of the products with them, instead of keeping them in registers or beside them on the stack.
template <class T>
HWY_INLINE const T *hidden(const T *numbers) {
  __asm__("" : "+r"(numbers));
  return numbers;
}

#if HWY_ARCH_X86
HWY_INLINE __m128i multiplyAddBytes(__m128i bytes, __m128i factors) {
  return _mm_maddubs_epi16(bytes, factors);
}
HWY_INLINE __m128i narrowBlocks(__m128i low, __m128i high) {
  return _mm_packus_epi16(low, high);
}
#if HWY_MAX_BYTES >= 32
HWY_INLINE __m256i multiplyAddBytes(__m256i bytes, __m256i factors) {
  return _mm256_maddubs_epi16(bytes, factors);
}
HWY_INLINE __m256i narrowBlocks(__m256i low, __m256i high) {
  return _mm256_packus_epi16(low, high);
}
#endif
#if HWY_MAX_BYTES >= 64
HWY_INLINE __m512i multiplyAddBytes(__m512i bytes, __m512i factors) {
  return _mm512_maddubs_epi16(bytes, factors);
}
HWY_INLINE __m512i narrowBlocks(__m512i low, __m512i high) {
  return _mm512_packus_epi16(low, high);
}
#endif
#endif

/// The even bytes of a vector of bytes times `factor`, which has 0..127 in every lane.
template <class DI>
HWY_INLINE hn::Vec<DI> evenBytesTimes(DI di, hn::Vec<hn::Repartition<uint8_t, DI>> bytes, hn::Vec<DI> factor) {
#if HWY_ARCH_X86
  (void)di;
  return hn::Vec<DI>{multiplyAddBytes(bytes.raw, factor.raw)};
#else
  return hn::Mul(hn::And(hn::BitCast(di, bytes), hn::Set(di, 0xFF)), factor);
#endif
}

/// The odd bytes of a vector of bytes times `factor256` / 256, which has 0..127 in every lane.
template <class DI>
HWY_INLINE hn::Vec<DI> oddBytesTimes(DI di, hn::Vec<hn::Repartition<uint8_t, DI>> bytes, hn::Vec<DI> factor256) {
#if HWY_ARCH_X86
  (void)di;
  return hn::Vec<DI>{multiplyAddBytes(bytes.raw, factor256.raw)};
#else
  const hn::RebindToUnsigned<DI> d;
  const auto odd = hn::BitCast(di, hn::ShiftRight<8>(hn::BitCast(d, bytes)));
  return hn::Mul(odd, hn::ShiftRight<8>(factor256));
#endif
}

/// Clamps words to 0..255; every block of 16 bytes has the eight of `low` first and those of `high` after them.
template <class DI>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, DI>> narrowInBlocks(DI di, hn::Vec<DI> low, hn::Vec<DI> high) {
  const hn::Repartition<uint8_t, DI> bytes;
#if HWY_ARCH_X86
  (void)di;
  return hn::Vec<decltype(bytes)>{narrowBlocks(low.raw, high.raw)};
#else
  (void)di;
  const hn::Half<decltype(bytes)> half;
  return hn::Combine(bytes, hn::DemoteTo(half, high), hn::DemoteTo(half, low));
#endif
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
