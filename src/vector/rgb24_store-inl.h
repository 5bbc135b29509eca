// Packing components to bytes, and storing pixels of 24 bits.

// Read once a level.
#if defined(ZQCC_VECTOR_RGB24_STORE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_RGB24_STORE_INL_H
#undef ZQCC_VECTOR_RGB24_STORE_INL_H
#else
#define ZQCC_VECTOR_RGB24_STORE_INL_H
#endif

#include "vector/blocks-inl.h"
#include "vector/components-inl.h"

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

#if HWY_ARCH_X86

/// Six bytes of two neighbouring pixels are three words: blue and green of the even pixel, its red and blue of the odd
/// one, green and red of the odd one. Packing puts the bytes of eight such words into a block, those that come first in
/// its lower half; one shuffle makes words of them, each where it stands in the block of the picture that it goes to.
/// Word k of kind w is number 3 k + w, so that every kind fills each of the eight positions once.
template <int kind>
struct WordOrder {
  static constexpr uint8_t word(int position) { return static_cast<uint8_t>((position - kind + 8) * 3 % 8); }
  static constexpr uint8_t from(int byte) { return static_cast<uint8_t>(word(byte / 2) + byte % 2 * 8); }
  alignas(16) static constexpr uint8_t kOrder[16] = {from(0),  from(1),  from(2),  from(3), from(4),  from(5),
                                                     from(6),  from(7),  from(8),  from(9), from(10), from(11),
                                                     from(12), from(13), from(14), from(15)};
};

template <int kind, class D, class V>
HWY_INLINE hn::Vec<D> packWords(D d, V first, V second) {
  return hn::TableLookupBytes(packBlocks(first, second), hn::LoadDup128(d, WordOrder<kind>::kOrder));
}

/// Stores as many pixels as D has lanes: bytes blue, green, red.
template <class D, class V, class Limit>
HWY_INLINE void storePixels(D d, const Components<V> &even, const Components<V> &odd, const Limit &limit, uint8_t *to) {
  const auto w0 = packWords<0>(d, even.blue, even.green);
  const auto w1 = packWords<1>(d, even.red, odd.blue);
  const auto w2 = packWords<2>(d, odd.green, odd.red);
  // Bits of the words whose number is 1 and 2 modulo 3, in three blocks one after another.
  const auto block0 = blendBlocks<uint16_t, 0x24>(blendBlocks<uint16_t, 0x92>(w0, w1), w2);
  const auto block1 = blendBlocks<uint16_t, 0x49>(blendBlocks<uint16_t, 0x24>(w0, w1), w2);
  const auto block2 = blendBlocks<uint16_t, 0x92>(blendBlocks<uint16_t, 0x49>(w0, w1), w2);
  storeBlocks3(d, limit(block0), limit(block1), limit(block2), to);
}

#else

/// Bytes of even and odd pixels in the order of the picture.
alignas(16) constexpr uint8_t kMerged[16] = {0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15};
template <class D, class V>
HWY_INLINE hn::Vec<D> mergePixels(D d, V even, V odd) {
  return hn::TableLookupBytes(packBlocks(even, odd), hn::Load(d, kMerged));
}

/// Stores as many pixels as D has lanes: bytes blue, green, red.
template <class D, class V, class Limit>
HWY_INLINE void storePixels(D d, const Components<V> &even, const Components<V> &odd, const Limit &limit, uint8_t *to) {
  hn::StoreInterleaved3(limit(mergePixels(d, even.blue, odd.blue)), limit(mergePixels(d, even.green, odd.green)),
                        limit(mergePixels(d, even.red, odd.red)), d, to);
}

#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
