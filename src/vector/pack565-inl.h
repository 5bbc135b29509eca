// RGB565 from components in byte lanes: packing takes fewer operations there than in 16-bit lanes.
#if defined(ZQCC_PACK565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_PACK565_INL_H
#undef ZQCC_PACK565_INL_H
#else
#define ZQCC_PACK565_INL_H
#endif

#include "vector/words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// The two bytes of the pixels of a group.
template <class V>
struct Rgb565Bytes {
  V low;
  V high;
};

/// Components of 8 bits, of which red and blue lose three and green two. Bytes are shifted as 16-bit lanes; the masks
/// drop what comes over from the neighbour.
template <class D, class V = hn::Vec<D>>
HWY_INLINE Rgb565Bytes<V> rgb565(D d8, V red, V green, V blue) {
  const hn::Repartition<uint16_t, D> d16;
  const auto words = hn::BitCast(d16, green);
  const V greenAtBottom = hn::BitCast(d8, hn::ShiftRight<5>(words));
  const V greenAtTop = hn::BitCast(d8, hn::ShiftLeft<3>(words));
  const V blueAtBottom = hn::BitCast(d8, hn::ShiftRight<3>(hn::BitCast(d16, blue)));
  return {selectBits(hn::Set(d8, uint8_t{0x1F}), blueAtBottom, greenAtTop),
          selectBits(hn::Set(d8, uint8_t{0xF8}), red, greenAtBottom)};
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
