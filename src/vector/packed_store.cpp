#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/packed_store.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/packed_store.h"
#include "vector/stages.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<uint16_t>;
using LeastWords = hn::CappedTag<uint16_t, kLeastPixels / 2>;

/// A macropixel for every 16-bit lane, from macropixel i on.
template <bool chromaFirst, bool rightFirst, class D>
HWY_INLINE void storeGroup(D d16, const MacropixelRows &from, uint8_t *to, std::ptrdiff_t i) {
  const hn::Repartition<uint8_t, D> d8;
  const hn::Rebind<uint8_t, D> half;
  const auto first = hn::PromoteTo(d16, hn::LoadU(half, from.firstChroma + i));
  const auto second = hn::PromoteTo(d16, hn::LoadU(half, from.secondChroma + i));
  const auto chroma = hn::BitCast(d8, hn::Or(first, hn::ShiftLeft<8>(second)));
  auto luma = hn::LoadU(d8, from.y + 2 * i);
  if constexpr (rightFirst) {
    const auto pairs = hn::BitCast(d16, luma);
    luma = hn::BitCast(d8, hn::Or(hn::ShiftLeft<8>(pairs), hn::ShiftRight<8>(pairs)));
  }
  hn::StoreInterleaved2(chromaFirst ? chroma : luma, chromaFirst ? luma : chroma, d8, to + 4 * i);
}

/// The last group overlaps the one before it.
template <bool chromaFirst, bool rightFirst, class D>
HWY_INLINE void storeGroups(D d16, const MacropixelRows from, uint8_t *to, std::ptrdiff_t count) {
  constexpr auto kStep = static_cast<std::ptrdiff_t>(hn::MaxLanes(D()));
  for (std::ptrdiff_t i = 0; i < count - kStep; i += kStep) {
    storeGroup<chromaFirst, rightFirst>(d16, from, to, i);
  }
  storeGroup<chromaFirst, rightFirst>(d16, from, to, count - kStep);
}

template <bool chromaFirst, bool rightFirst>
HWY_NOINLINE void storeRow(const MacropixelRows &from, uint8_t *to, int32_t count) {
  if (count < static_cast<int32_t>(hn::MaxLanes(Words()))) {
    storeGroups<chromaFirst, rightFirst>(LeastWords(), from, to, count);
  } else {
    storeGroups<chromaFirst, rightFirst>(Words(), from, to, count);
  }
}

void storeMacropixels(const MacropixelRows &from, MacropixelBytes bytes, uint8_t *to, int32_t count) {
  if (bytes.chromaFirst) {
    (bytes.rightFirst ? storeRow<true, true> : storeRow<true, false>)(from, to, count);
  } else {
    (bytes.rightFirst ? storeRow<false, true> : storeRow<false, false>)(from, to, count);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<StoreMacropixels> STORE_MACROPIXELS = ZQCC_EVERY_LEVEL(storeMacropixels);
} // namespace zqcc
#endif
