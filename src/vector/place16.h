// Placing rows of 16-bit pixels: backwards, and as the output lines of a quarter turn.
#pragma once

#include "vector/place_stages.h"

namespace zqcc {

/// Pixel by pixel, at every level: for what is smaller than the smallest vector.
void reverseRow16(const uint8_t *from, uint8_t *to, int32_t pixels);
void transposeBlock16(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride);

extern const PerLevel<ReverseRow> REVERSE_ROW16;
extern const PerLevel<TransposeBlock> TRANSPOSE_BLOCK16;

/// The same for units of two bytes that come from afar, in blocks of at least eight both ways: by the widest vectors,
/// which fill a line of the cache at once.
extern const PerLevel<TransposeBlock> TRANSPOSE_UNITS16;

} // namespace zqcc
