// The formats of resampling tables: set-up builds them, routines read them. A table says for one direction where every
// output position takes its samples from, and with which weights.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqcc {

enum class TableFormat {
  None,
  Nearest,   ///< one word a position: the source index
  Bilinear,  ///< one tap a position: {index, weight of index + 1, weight of index}
  Filtered,  ///< five taps a position
  Box,       ///< fifteen source indices a position, -1 for none
  Grouped,   ///< for every 16 source positions a group: a count, then as many taps
  RunLength, ///< horizontal: index and flags; vertical: line instructions
};

/// The weights of a tap are out of this.
inline constexpr int32_t kWholeWeight = 1024;
inline constexpr int kWeightBits = 10;
static_assert(kWholeWeight == 1 << kWeightBits);

inline constexpr std::ptrdiff_t kTapWords = 3;
inline constexpr std::size_t kFilterTaps = 5;
inline constexpr std::ptrdiff_t kBoxWords = 15;

/// Words of a table entry of `taps` taps.
template <std::size_t taps>
inline constexpr std::ptrdiff_t kEntryWords = static_cast<std::ptrdiff_t>(taps) * kTapWords;

/// Source positions that a group of a grouped table stands for.
inline constexpr int32_t kGroupSpan = 16;

// Run-length tables. A column word is (source column << 16) | flags; without kNewPixel the pixel repeats its neighbour.
// A line word is a source line (with kLinePair for the pair of it and the next one) or, negative, how many output lines
// repeat.
inline constexpr int kRunColumnShift = 16;
inline constexpr uint32_t kNewChroma = 1;
inline constexpr uint32_t kNewPixel = 2;
inline constexpr int32_t kLinePair = 0x10000;
inline constexpr int32_t kLineMask = kLinePair - 1;
/// Columns and lines that fit beside those bits.
inline constexpr int32_t kRunLengthLimit = 65536;

} // namespace zqcc
