// Means of the listed samples of a box, a chunk of output columns at a time.
#pragma once

#include "base/table_format.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Samples a direction: the spacing grows with the reach, so that there are never more.
inline constexpr int32_t kMostOfBox = 7;
inline constexpr int32_t kMostSamples = kMostOfBox * kMostOfBox;

/// 2^24 over a number of samples, 1 to kMostSamples, rounded up.
uint32_t reciprocalOf(int32_t samples);

/// The mean of samples with that sum, truncated: the upper 8 bits of a 32-bit product.
constexpr uint8_t boxMean(uint32_t sum, uint32_t reciprocal) {
  return static_cast<uint8_t>(sum * reciprocal >> 24);
}

/// What `count` boxes of one line have in common.
struct BoxLines {
  const uint8_t *first;      ///< column 0 of the topmost line
  std::ptrdiff_t lineStep;   ///< bytes from one line to the next
  std::ptrdiff_t columnStep; ///< bytes from one column to the next
  int32_t lines;             ///< 1 at least
};

/// Means of boxes of `columns` columns, which start at `at`.
void meansOfBoxes(const BoxLines &box, int32_t columns, const int32_t *at, int32_t count, uint8_t *means);

} // namespace zqcc
