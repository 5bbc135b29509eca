// Turns without a conversion by vector code, as the families call them. Each does all of a plane or nothing, and says
// which; what it leaves, and everything where there is no vector code, is the portable code's.
#pragma once

#include "base/levels.h"
#include "tables/packed_layout.h"
#include "vector/turned_planes.h"
#if ZQCC_VECTOR
#include "vector/place16.h"
#include "vector/place8.h"
#include "vector/place_packed422.h"
#endif

namespace zqcc {

#if ZQCC_VECTOR

/// The stages of units of `unitBytes` bytes.
inline PlaneExchange planeExchange(LevelSet levels, const PerLevel<TransposeBlock> &stage,
                                   const PerLevel<TransposeBlock> &ofSmall, int32_t unitBytes) {
  return {{stage.in(levels), unitBytes}, ofSmall.in(levels), stripColumnsOf(stage.levelIn(levels), unitBytes)};
}

/// A quarter turn of samples, or of units of two bytes.
template <class Unit>
bool turnedByBlocks(LevelSet levels, const LineExchange &plane) {
  static_assert(sizeof(Unit) == 1 || sizeof(Unit) == 2);
  const PerLevel<TransposeBlock> &stage = sizeof(Unit) == 1 ? TRANSPOSE_BLOCK8 : TRANSPOSE_UNITS16;
  const PerLevel<TransposeBlock> &ofSmall = sizeof(Unit) == 1 ? TRANSPOSE_BLOCK8 : TRANSPOSE_BLOCK16;
  return exchangeByBlocks(planeExchange(levels, stage, ofSmall, sizeof(Unit)), plane);
}

/// A quarter turn of even numbers of lines and columns of packed 4:2:2 pixels. Two lines become a column of
/// macropixels, with the chroma of the first one; where the right pixel's luma comes first, pixels just take what they
/// have along.
inline bool turnedByBlocks(LevelSet levels, const PackedLayout &layout, const LineExchange &picture) {
  if (layout.isSwapped()) {
    return turnedByBlocks<uint16_t>(levels, picture);
  }
  const PerLevel<TransposeBlock> &stage = layout.firstLuma() == 0 ? TRANSPOSE_LUMA_FIRST : TRANSPOSE_CHROMA_FIRST;
  return exchangeByBlocks(planeExchange(levels, stage, stage, kMacropixelBytes / 2), picture);
}

/// A half turn of samples that follow one another without gaps.
inline bool reversedByRows(LevelSet levels, const uint8_t *src, uint8_t *dst, std::ptrdiff_t samples) {
  return reverseSamples(REVERSE_ROW8.in(levels), src, dst, samples);
}

#else

template <class Unit>
constexpr bool turnedByBlocks(LevelSet /*levels*/, const LineExchange & /*plane*/) {
  return false;
}

constexpr bool turnedByBlocks(LevelSet /*levels*/, const PackedLayout & /*layout*/, const LineExchange & /*picture*/) {
  return false;
}

constexpr bool reversedByRows(LevelSet /*levels*/, const uint8_t * /*src*/, uint8_t * /*dst*/,
                              std::ptrdiff_t /*samples*/) {
  return false;
}

#endif

} // namespace zqcc
