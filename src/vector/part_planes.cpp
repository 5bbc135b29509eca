#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/part_planes.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/part_planes.h"
#include "vector/parts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

// --- Pairs ----------------------------------------------------------------------------------------------------------

/// One line. Its first vector ends where a vector's boundary is in the first plane: stores of whole vectors that reach
/// into two lines of the cache would take twice as long.
HWY_INLINE void partPairsOfLine(Pairs pairs, std::ptrdiff_t count) {
  constexpr std::ptrdiff_t kLanes = hn::MaxLanes(hn::ScalableTag<uint8_t>());
  const auto behind = static_cast<std::ptrdiff_t>(reinterpret_cast<std::uintptr_t>(pairs.first) % kLanes);
  if (behind != 0 && count >= 2 * kLanes) {
    if (behind >= kLanes / 2) {
      pairs(hn::Half<decltype(kBytes)>(), 0);
    } else {
      pairs(kBytes, 0);
    }
    const std::ptrdiff_t done = kLanes - behind;
    pairs = {pairs.pairs + 2 * done, pairs.first + done, pairs.second + done};
    count -= done;
  }
  inGroups<kLeastHalf>(kBytes, count, pairs);
}

void partPairLines(const PairLines &picture) {
  const PairLines all = picture; // a copy, which no store can change
  Pairs line{all.pairs, all.first, all.second};
  for (int32_t k = 0; k < all.lines; ++k) {
    partPairsOfLine(line, all.count);
    line = {line.pairs + all.stride, line.first + all.pitch, line.second + all.pitch};
  }
}

// --- Packed 4:2:2 ---------------------------------------------------------------------------------------------------

/// Lines are done in pieces, and while one is made, what comes some pixels behind it is asked for, of narrow pictures
/// in the next lines: it takes longer until the cache has a line to write to than it takes to fill it.
constexpr int32_t kPiece = 512;
constexpr std::ptrdiff_t kAhead = 512;

template <int write>
HWY_INLINE void askFor(const uint8_t *first, std::ptrdiff_t bytes) {
  for (std::ptrdiff_t i = 0; i < bytes; i += 64) {
    __builtin_prefetch(first + i, write);
  }
}

/// Pixels of the next piece: a last one is never too short.
HWY_INLINE int32_t pieceOf(int32_t left) {
  if (left <= kPiece) {
    return left;
  }
  return left - kPiece < kLeastPixels ? kPiece - kLeastPixels : kPiece;
}

template <bool chroma>
HWY_INLINE void partLine(Macropixels<chroma> line, int32_t pixels) {
  for (int32_t some = 0; pixels > 0; pixels -= some) {
    some = pieceOf(pixels);
    const std::ptrdiff_t half = some / 2;
    askFor<0>(line.from + 2 * kAhead, 4 * half);
    askFor<1>(line.luma + kAhead, some);
    if constexpr (chroma) {
      askFor<1>(line.first + kAhead / 2, half);
      askFor<1>(line.second + kAhead / 2, half);
    }
    inGroups<kLeastHalf>(hn::Half<decltype(kBytes)>(), half, line);
    line.from += 4 * half;
    line.luma += some;
    if constexpr (chroma) {
      line.first += half;
      line.second += half;
    }
  }
}

void partMacropixelLines(const MacropixelLines &picture) {
  const MacropixelLines all = picture; // a copy, which no store can change
  const MacropixelOrder order = kOrders[all.rightFirst ? 1 : 0][all.chromaFirst ? 1 : 0];
  for (int32_t k = 0; k < all.lines; ++k) {
    const uint8_t *from = all.macropixels + k * all.stride;
    uint8_t *luma = all.luma + k * all.lumaPitch;
    if (k % 2 == 0 && k + 1 < all.lines) {
      const std::ptrdiff_t at = k / 2 * all.chromaPitch;
      partLine<true>({from, order, luma, all.first + at, all.second + at}, all.pixels);
    } else {
      partLine<false>({from, order, luma, nullptr, nullptr}, all.pixels);
    }
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<PartPairs> PART_PAIRS = ZQCC_EVERY_LEVEL(partPairLines);
constexpr PerLevel<PartMacropixels> PART_MACROPIXELS = ZQCC_EVERY_LEVEL(partMacropixelLines);

} // namespace zqcc
#endif
