// A stage that makes macropixels of packed 4:2:2 from rows of samples.
#pragma once

#include "base/levels.h"

#include <cstdint>

namespace zqcc {

/// Rows of luma and of the two chroma samples of macropixels, the one that stands first in memory first.
struct MacropixelRows {
  const uint8_t *y;
  const uint8_t *firstChroma;
  const uint8_t *secondChroma;
};

/// Which bytes of a macropixel hold what.
struct MacropixelBytes {
  bool chromaFirst;
  bool rightFirst; ///< the right pixel's luma stands before the left one's
};

/// Writes `count` macropixels, at least kLeastPixels / 2, and reads as many samples of chroma and twice as many of
/// luma.
using StoreMacropixels = void (*)(const MacropixelRows &from, MacropixelBytes bytes, uint8_t *to, int32_t count);
extern const PerLevel<StoreMacropixels> STORE_MACROPIXELS;

} // namespace zqcc
