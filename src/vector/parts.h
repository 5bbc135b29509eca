// Lines taken apart by vector code, as the families call it. Each does all that it is asked for or nothing, and says
// which; what it leaves, and everything where there is no vector code, is the portable code's.
#pragma once

#include "base/levels.h"
#include "tables/packed_layout.h"
#if ZQCC_VECTOR
#include "vector/fetch.h"
#endif

#include <cstdint>

namespace zqcc {

/// Where the samples of a line go; only luma is wanted where u is null.
struct PartedLine {
  uint8_t *y;
  uint8_t *u;
  uint8_t *v;
};

#if ZQCC_VECTOR

/// `count` pairs of samples into two lines.
inline bool partedPairs(LevelSet levels, const uint8_t *pairs, uint8_t *first, uint8_t *second, int32_t count) {
  const FetchRows fetch = EVEN_CHROMA_ROWS.in(levels);
  if (fetch == nullptr || count < kLeastPixels / 2) {
    return false;
  }
  fetch({nullptr, pairs, pairs + 1}, {nullptr, first, second}, 2 * count);
  return true;
}

/// The macropixels of an even number of pixels of packed 4:2:2.
inline bool partedMacropixels(LevelSet levels, const PackedLayout &layout, const uint8_t *from, const PartedLine &to,
                              int32_t pixels) {
  const bool luma = to.u == nullptr;
  const PerLevel<FetchRows> &inOrder = luma ? PACKED_LUMA_ROW : PACKED_ROWS;
  const PerLevel<FetchRows> &swapped = luma ? SWAPPED_PACKED_LUMA_ROW : SWAPPED_PACKED_ROWS;
  const FetchRows fetch = (layout.isSwapped() ? swapped : inOrder).in(levels);
  if (fetch == nullptr || pixels < kLeastPixels) {
    return false;
  }
  fetch({from + layout.left, from + layout.u, from + layout.v}, {to.y, to.u, to.v}, pixels);
  return true;
}

#else

constexpr bool partedPairs(LevelSet /*levels*/, const uint8_t * /*pairs*/, uint8_t * /*first*/, uint8_t * /*second*/,
                           int32_t /*count*/) {
  return false;
}

constexpr bool partedMacropixels(LevelSet /*levels*/, const PackedLayout & /*layout*/, const uint8_t * /*from*/,
                                 const PartedLine & /*to*/, int32_t /*pixels*/) {
  return false;
}

#endif

} // namespace zqcc
