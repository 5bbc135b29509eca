// Stages that put rows of pixels of two or three bytes where a turn wants them.
#pragma once

#include "base/levels.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Copies a row of `pixels` pixels, at least one, to `to` in reverse order: the last one first. Reads the row and
/// writes as many bytes; the two do not overlap.
using ReverseRow = void (*)(const uint8_t *from, uint8_t *to, int32_t pixels);

/// A block of rows: `lines` rows of `columns` pixels, at least one of each. Pixel x of row l is at
/// first + l * stride + x * pixel bytes; a negative stride takes the rows from the last one up.
struct PixelBlock {
  const uint8_t *first;
  std::ptrdiff_t stride;
  int32_t columns;
  int32_t lines;
};

/// Exchanges rows and columns: column x of the block becomes the `lines` pixels at to + x * toStride. Reads the pixels
/// of the block and writes those bytes, some of them more than once, so that no two output lines may overlap.
///
/// A left turn has the output line of the block's first column for `to` and goes up from there (toStride < 0); a right
/// turn goes down and has a block whose rows go up.
using TransposeBlock = void (*)(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride);

/// What turns pixels of one size.
struct PlaceStages {
  const PerLevel<ReverseRow> *reverse;
  const PerLevel<TransposeBlock> *transpose;
};

} // namespace zqcc
