// RGB565 from components in byte lanes: packing takes fewer operations there than in 16-bit lanes.
#if defined(ZQCC_PACK565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_PACK565_INL_H
#undef ZQCC_PACK565_INL_H
#else
#define ZQCC_PACK565_INL_H
#endif

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {
namespace hn = hwy::HWY_NAMESPACE;

/// The two bytes of the pixels of a group.
template <class V>
struct Rgb565Bytes {
  V low;
  V high;
};

/// The bits of `yes` where those of the mask are set, of `no` elsewhere.
template <class V>
HWY_INLINE V selectBits(V mask, V yes, V no) {
#if HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_AVX2
  return hn::Or(hn::And(mask, yes), hn::AndNot(mask, no)); // what follows would look at the highest bit of lanes only
#else
  return hn::IfVecThenElse(mask, yes, no);
#endif
}

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
