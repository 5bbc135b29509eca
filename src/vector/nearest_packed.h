// Quarter turns of packed 4:2:2 that is resized to its nearest macropixels, by vector code: even numbers of lines and
// columns. What is left, and everything where there is no vector code, is the portable code's.
#pragma once

#include "base/levels.h"
#include "tables/packed_layout.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Source macropixels by number, of lines by the entries of a line table, and where the turn puts them.
struct PickedMacropixels {
  const uint8_t *first; ///< line 0
  std::ptrdiff_t stride;
  int32_t readable;      ///< whole macropixels of a line
  const int32_t *xTable; ///< of every macropixel of a turned line
  const int32_t *yFirst; ///< entry of the line that comes first
  std::ptrdiff_t yStep;
  uint8_t *to; ///< the output line that the first column becomes
  std::ptrdiff_t toStep;
  int32_t columns; ///< pixels, an even number, as of lines
  int32_t lines;
};

#if ZQCC_VECTOR

/// Two lines become a column of macropixels with the chroma of the first one, whatever the order of luma. False, and
/// nothing is done, where the picture is smaller than a block, where a line is read behind its whole macropixels, or
/// where output lines overlap.
bool pickedMacropixelsTurned(LevelSet levels, const PackedLayout &layout, const PickedMacropixels &picture);

#else

constexpr bool pickedMacropixelsTurned(LevelSet /*levels*/, const PackedLayout & /*layout*/,
                                       const PickedMacropixels & /*picture*/) {
  return false;
}

#endif

} // namespace zqcc
