// Words of bytes: bits of one or the other, orders of bytes that suit interleaving within blocks of 16 bytes, and
// constants that stay constants.

// Read once a level.
#if defined(ZQCC_VECTOR_WORDS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_WORDS_INL_H
#undef ZQCC_VECTOR_WORDS_INL_H
#else
#define ZQCC_VECTOR_WORDS_INL_H
#endif

#include "vector/blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Hides from the compiler which number that is, or which numbers stand at that address. It would make them anew from
/// immediate operands at every use, and shifts and sums of the products with them, instead of keeping them in registers
/// or beside them on the stack.
template <class T>
HWY_INLINE T hidden(T value) {
  __asm__("" : "+r"(value));
  return value;
}

/// Every bit of `yes` where the mask has a one, else that of `no`. IfVecThenElse does that for whole lanes, and bit by
/// bit where the processor has one instruction for it.
template <class V>
HWY_INLINE V selectBits(V mask, V yes, V no) {
#if HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_AVX2
  return hn::Or(hn::And(mask, yes), hn::AndNot(mask, no));
#else
  return hn::IfVecThenElse(mask, yes, no);
#endif
}

// zipHalves: block b of the result has the b-th eight bytes of the lower half, then the b-th eight of the upper half.
template <class V128>
HWY_INLINE V128 zipHalves(V128 bytes) {
  return bytes;
}
#if HWY_ARCH_X86 && HWY_MAX_BYTES >= 32
HWY_INLINE hn::Vec256<uint8_t> zipHalves(hn::Vec256<uint8_t> bytes) {
  return hn::Vec256<uint8_t>{_mm256_permute4x64_epi64(bytes.raw, 0xD8)};
}
#endif
#if HWY_ARCH_X86 && HWY_MAX_BYTES >= 64
HWY_INLINE hn::Vec512<uint8_t> zipHalves(hn::Vec512<uint8_t> bytes) {
  const auto order = _mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7);
  return hn::Vec512<uint8_t>{_mm512_permutexvar_epi64(order, bytes.raw)};
}
#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
