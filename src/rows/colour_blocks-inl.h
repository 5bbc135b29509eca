// What the stages of colour do within and between the 128-bit blocks of a vector. A group of pixels fills a vector of
// bytes with one component; its pixels are dealt out to the blocks in one of three ways, so that interleaving within
// blocks gives whole vectors of pixels later.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_BLOCKS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_BLOCKS_INL_H
#undef ZQP_ROWS_COLOUR_BLOCKS_INL_H
#else
#define ZQP_ROWS_COLOUR_BLOCKS_INL_H
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

#if HWY_TARGET != HWY_EMU128
#include "vector/blocks-inl.h"
#endif

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using D8 = hn::ScalableTag<uint8_t>;
using D16 = hn::ScalableTag<uint16_t>;
using DI = hn::ScalableTag<int16_t>;
using D32 = hn::ScalableTag<uint32_t>;
using D64 = hn::ScalableTag<uint64_t>;
using V8 = hn::Vec<D8>;
using V16 = hn::Vec<D16>;
using VI = hn::Vec<DI>;

/// Pixels of a group.
constexpr int32_t kGroup = static_cast<int32_t>(hn::MaxLanes(D8()));
/// 16-bit lanes of a vector, half a group.
constexpr int32_t kLanes = kGroup / 2;
constexpr int32_t kBlocks = kGroup / 16;

/// Which pixels a block has, as pieces that are as far from one another as there are blocks.
enum class Deal : int32_t {
  Sixteens = 1, ///< block b has pixels 16 b to 16 b + 15
  Eights = 2,   ///< 8 b to 8 b + 7, and those half a group behind
  Fours = 4,    ///< 4 b to 4 b + 3, and those one, two and three quarters of a group behind
};

struct Dwords {
  alignas(64) uint32_t at[static_cast<size_t>(kGroup / 4)];
};

/// Four bytes of pixels in a row, of a vector in that deal: where they stand in one whose blocks have sixteen.
constexpr uint32_t dwordOf(Deal deal, int32_t block, int32_t dword) {
  const auto pieces = static_cast<int32_t>(deal);
  const int32_t size = 4 / pieces;
  return static_cast<uint32_t>((block + kBlocks * (dword / size)) * size + dword % size);
}
constexpr Dwords dealt(Deal deal) {
  Dwords order = {};
  for (int32_t i = 0; i < 4 * kBlocks; ++i) {
    order.at[i] = dwordOf(deal, i / 4, i % 4);
  }
  return order;
}
/// The way back from Eights, to another deal.
constexpr Dwords ofEights(Deal deal) {
  const Dwords from = dealt(Deal::Eights);
  const Dwords to = dealt(deal);
  Dwords order = {};
  for (int32_t i = 0; i < 4 * kBlocks; ++i) {
    for (uint32_t k = 0; k < static_cast<uint32_t>(4 * kBlocks); ++k) {
      order.at[i] = from.at[k] == to.at[i] ? k : order.at[i];
    }
  }
  return order;
}
template <Deal deal>
constexpr Dwords kDealt = dealt(deal);
template <Deal deal>
constexpr Dwords kOfEights = ofEights(deal);

HWY_INLINE V8 permuteDwords(V8 bytes, const Dwords &order) {
#if HWY_MAX_BYTES >= 32
  const D32 d32;
  return hn::BitCast(D8(), hn::TableLookupLanes(hn::BitCast(d32, bytes), hn::SetTableIndices(d32, order.at)));
#else
  static_cast<void>(order);
  return bytes;
#endif
}

/// Bytes in the order of the picture, dealt out.
template <Deal deal>
HWY_INLINE V8 dealOut(V8 bytes) {
  if constexpr (deal == Deal::Sixteens || kBlocks == 1) {
    return bytes;
  } else {
    return permuteDwords(bytes, kDealt<deal>);
  }
}
template <Deal deal>
HWY_INLINE V8 dealEights(V8 bytes) {
  if constexpr (deal == Deal::Eights || kBlocks == 1) {
    return bytes;
  } else {
    return permuteDwords(bytes, kOfEights<deal>);
  }
}

/// Half a vector of samples of u, then one of v: every block gets those of u that its pixels of the deal share, then v.
alignas(16) constexpr uint8_t kSamplesOfFours[2][16] = {{0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15},
                                                        {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15}};
template <Deal deal>
HWY_INLINE V8 dealHalves(V8 bytes) {
  if constexpr (kBlocks == 1) {
    return bytes;
  } else if constexpr (deal == Deal::Sixteens) {
    return permuteDwords(bytes, kDealt<Deal::Eights>);
  } else if constexpr (deal == Deal::Eights) {
    return permuteDwords(bytes, kDealt<Deal::Fours>);
  } else {
    const V8 order = hn::LoadDup128(D8(), kSamplesOfFours[kBlocks / 4]);
    return permuteDwords(hn::TableLookupBytes(bytes, order), kDealt < kBlocks == 4 ? Deal::Fours : Deal::Eights >);
  }
}

/// Two vectors of packed pixels in the order of the picture: each half of the blocks that a deal asks for.
template <Deal deal>
HWY_INLINE void dealPacked(V8 &a, V8 &b) {
#if HWY_MAX_BYTES >= 32
  if constexpr (deal == Deal::Sixteens) {
    zqcc::HWY_NAMESPACE::evenAndOddBlocks(D8(), a, b);
  } else if constexpr (deal == Deal::Fours) {
    a = permuteDwords(a, kDealt<Deal::Eights>);
    b = permuteDwords(b, kDealt<Deal::Eights>);
  }
#else
  static_cast<void>(a);
  static_cast<void>(b);
#endif
}

/// In every block the lanes of `a`, then those of `b`, held in 0..255.
HWY_INLINE V8 packBlocks(VI a, VI b) {
#if HWY_TARGET == HWY_EMU128
  const hn::Half<D8> half;
  return hn::Combine(D8(), hn::DemoteTo(half, b), hn::DemoteTo(half, a));
#else
  return zqcc::HWY_NAMESPACE::packBlocks(a, b);
#endif
}

/// Every bit of `yes` where the mask has a one, else that of `no`.
template <class V>
HWY_INLINE V selectBits(V mask, V yes, V no) {
#if HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_AVX2
  return hn::Or(hn::And(mask, yes), hn::AndNot(mask, no));
#else
  return hn::IfVecThenElse(mask, yes, no);
#endif
}

/// Bytes of eight even and eight odd pixels in a block, put in order.
alignas(16) constexpr uint8_t kMerged[16] = {0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15};
HWY_INLINE V8 mergeParities(V8 bytes) {
  return hn::TableLookupBytes(bytes, hn::LoadDup128(D8(), kMerged));
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
