// Exchanging lines and columns of 16-bit lanes: 8 x 8 of them in every 128-bit block of eight vectors.

// Read once a level.
#if defined(ZQCC_VECTOR_TRANSPOSE16_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_TRANSPOSE16_INL_H
#undef ZQCC_VECTOR_TRANSPOSE16_INL_H
#else
#define ZQCC_VECTOR_TRANSPOSE16_INL_H
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// A vector at any address: pixels are bytes to those who write them.
template <class D>
HWY_INLINE hn::Vec<D> loadBytes(D d, const uint8_t *p) {
  return hn::BitCast(d, hn::LoadU(hn::Repartition<uint8_t, D>(), p));
}
template <class D>
HWY_INLINE void storeBytes(hn::Vec<D> v, D /*d*/, uint8_t *p) {
  const hn::Repartition<uint8_t, D> bytes;
  hn::StoreU(hn::BitCast(bytes, v), bytes, p);
}

/// 16 bytes a block: block b from p + b * step.
template <class D>
HWY_INLINE hn::Vec<D> loadBlocks(D d, const uint8_t *p, std::ptrdiff_t step) {
  constexpr std::size_t kBlocks = hn::MaxLanes(D()) * sizeof(hn::TFromD<D>) / 16;
  if constexpr (kBlocks == 1) {
    return loadBytes(d, p);
  } else {
    const hn::Half<D> half;
    return hn::Combine(d, loadBlocks(half, p + static_cast<std::ptrdiff_t>(kBlocks / 2) * step, step),
                       loadBlocks(half, p, step));
  }
}

/// Interleaves lanes of type T within blocks: the lower halves of the blocks to `a`, the upper ones to `b`.
template <class T, class D>
HWY_INLINE void interleave(D d, hn::Vec<D> &a, hn::Vec<D> &b) {
  const hn::Repartition<T, D> wide;
  const auto wideA = hn::BitCast(wide, a);
  const auto wideB = hn::BitCast(wide, b);
  a = hn::BitCast(d, hn::InterleaveLower(wide, wideA, wideB));
  b = hn::BitCast(d, hn::InterleaveUpper(wide, wideA, wideB));
}

/// Eight vectors of 16-bit lanes: lane i of a block of rows[j] is exchanged with lane j of that block of rows[i].
template <class D>
HWY_INLINE void transposeBlocks(D d, hn::Vec<D> (&rows)[8]) {
  auto [r0, r1, r2, r3, r4, r5, r6, r7] = rows;
  interleave<uint16_t>(d, r0, r1);
  interleave<uint16_t>(d, r2, r3);
  interleave<uint16_t>(d, r4, r5);
  interleave<uint16_t>(d, r6, r7);
  interleave<uint32_t>(d, r0, r2);
  interleave<uint32_t>(d, r1, r3);
  interleave<uint32_t>(d, r4, r6);
  interleave<uint32_t>(d, r5, r7);
  interleave<uint64_t>(d, r0, r4);
  interleave<uint64_t>(d, r2, r6);
  interleave<uint64_t>(d, r1, r5);
  interleave<uint64_t>(d, r3, r7);
  rows[0] = r0;
  rows[1] = r4;
  rows[2] = r2;
  rows[3] = r6;
  rows[4] = r1;
  rows[5] = r5;
  rows[6] = r3;
  rows[7] = r7;
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
