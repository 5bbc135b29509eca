// Lines whose samples lie between one another, taken apart in groups: pairs of samples, and macropixels of packed
// 4:2:2.

// Read once a level.
#if defined(ZQCC_VECTOR_PARTS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_PARTS_INL_H
#undef ZQCC_VECTOR_PARTS_INL_H
#else
#define ZQCC_VECTOR_PARTS_INL_H
#endif

#include "tables/packed_layout.h"
#include "vector/stages.h"

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr hn::ScalableTag<uint8_t> kBytes;
constexpr int kLeastHalf = kLeastPixels / 2;

/// Calls samples(tag, first) for groups that cover [0, count), as wide as the count lets them be. The last one overlaps
/// the one before it; count is not less than kLeast. The copy of `samples` is this function's own, which no store can
/// change.
template <int kLeast, class D, class Samples>
HWY_INLINE void inGroups(D d, std::ptrdiff_t count, const Samples samples) {
  constexpr std::ptrdiff_t kLanes = hn::MaxLanes(D{});
  if constexpr (kLanes > kLeast) {
    if (count < kLanes) {
      inGroups<kLeast>(hn::Half<D>{}, count, samples);
      return;
    }
  }
  const std::ptrdiff_t last = count - kLanes;
  std::ptrdiff_t i = 0;
  for (; i < last; i += kLanes) {
    samples(d, i);
  }
  if constexpr (kLanes > kLeast) {
    if (count - i <= kLanes / 2) {
      samples(hn::Half<D>{}, count - kLanes / 2);
      return;
    }
  }
  samples(d, last);
}

/// Pairs of samples into two rows.
struct Pairs {
  const uint8_t *pairs;
  uint8_t *first;
  uint8_t *second;

  template <class D>
  HWY_INLINE void operator()(D d, std::ptrdiff_t i) const {
    hn::Vec<D> a;
    hn::Vec<D> b;
    hn::LoadInterleaved2(d, pairs + 2 * i, a, b);
    hn::StoreU(a, d, first + i);
    hn::StoreU(b, d, second + i);
  }
};

/// Where the bytes of four macropixels go: luma of eight pixels, the first chroma sample of each macropixel, the
/// second.
struct alignas(16) MacropixelOrder {
  uint8_t from[16];
};

/// `variant` as the byte tables number them; which of the two chroma samples is U makes no difference here.
constexpr MacropixelOrder orderOf(uint32_t variant) {
  const PackedLayout bytes = packedLayout(variant);
  MacropixelOrder order{};
  for (int32_t i = 0; i < 4; ++i) {
    order.from[2 * i] = static_cast<uint8_t>(4 * i + bytes.left);
    order.from[2 * i + 1] = static_cast<uint8_t>(4 * i + bytes.right);
    order.from[8 + i] = static_cast<uint8_t>(4 * i + bytes.firstChroma());
    order.from[12 + i] = static_cast<uint8_t>(4 * i + bytes.firstChroma() + 2);
  }
  return order;
}

/// [right pixel's luma first][chroma first]
constexpr MacropixelOrder kOrders[2][2] = {{orderOf(0), orderOf(2)}, {orderOf(4), orderOf(6)}};

/// Where 32-bit lanes go that hold four first or four second chroma samples, of two vectors that were interleaved block
/// by block: first samples in front, in the order of the vectors.
template <std::size_t kLanes>
struct ChromaLanes {
  alignas(64) uint32_t from[kLanes]{};

  constexpr ChromaLanes() {
    constexpr uint32_t kBlocks = kLanes / 4;
    for (uint32_t block = 0; block < kBlocks; ++block) {
      for (uint32_t i = 0; i < 4; ++i) {
        from[(i % 2 * 2 + i / 2) * kBlocks + block] = 4 * block + i;
      }
    }
  }
};

/// Samples of macropixels into rows: `first` and `second` for chroma, or luma alone.
template <bool chroma>
struct Macropixels {
  const uint8_t *from;
  MacropixelOrder order;
  uint8_t *luma;
  uint8_t *first;
  uint8_t *second;

  template <class D>
  HWY_INLINE void operator()(D half, std::ptrdiff_t i) const {
    const hn::Twice<D> d;
    const hn::Repartition<uint64_t, decltype(d)> d64;
    const auto positions = hn::LoadDup128(d, order.from);
    const uint8_t *at = from + 4 * i;
    const auto low = hn::BitCast(d64, hn::TableLookupBytes(hn::LoadU(d, at), positions));
    const auto high = hn::BitCast(d64, hn::TableLookupBytes(hn::LoadU(d, at + hn::MaxLanes(d)), positions));
    hn::StoreU(hn::BitCast(d, hn::ConcatEven(d64, high, low)), d, luma + 2 * i);
    if constexpr (chroma) {
      const hn::Repartition<uint32_t, decltype(d)> d32;
      static constexpr ChromaLanes<hn::MaxLanes(d32)> kLanes;
      const auto mixed = hn::BitCast(d32, hn::InterleaveUpper(d64, low, high));
      const auto parted = hn::BitCast(d, hn::TableLookupLanes(mixed, hn::SetTableIndices(d32, kLanes.from)));
      hn::StoreU(hn::LowerHalf(half, parted), half, first + i);
      hn::StoreU(hn::UpperHalf(half, parted), half, second + i);
    }
  }
};

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
