// Stages that take whole pictures apart, line by line: where lines are short, a call for each would take a quarter of
// the time.
#pragma once

#include "base/levels.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Lines of pairs of samples; first and second samples go to planes of their own.
struct PairLines {
  const uint8_t *pairs;
  std::ptrdiff_t stride;
  uint8_t *first;
  uint8_t *second;
  std::ptrdiff_t pitch; ///< of both planes
  int32_t count;        ///< pairs of a line
  int32_t lines;
};

/// Lines of whole macropixels of packed 4:2:2. All luma is wanted, and the chroma of the first of every two lines.
struct MacropixelLines {
  const uint8_t *macropixels;
  std::ptrdiff_t stride;
  bool rightFirst;  ///< the right pixel's luma comes first
  bool chromaFirst; ///< chroma comes before luma
  uint8_t *luma;
  std::ptrdiff_t lumaPitch;
  uint8_t *first; ///< for the chroma samples that come first
  uint8_t *second;
  std::ptrdiff_t chromaPitch;
  int32_t pixels; ///< of a line, an even number
  int32_t lines;
};

using PartPairs = void (*)(const PairLines &picture);
using PartMacropixels = void (*)(const MacropixelLines &picture);

/// For lines of at least kLeastPixels / 2 pairs, and of at least kLeastPixels pixels.
extern const PerLevel<PartPairs> PART_PAIRS;
extern const PerLevel<PartMacropixels> PART_MACROPIXELS;

} // namespace zqcc
