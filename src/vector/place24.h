// Placing rows of 24-bit pixels: backwards, and as the output lines of a quarter turn.
#pragma once

#include "vector/place_stages.h"

namespace zqcc {

/// Pixel by pixel, at every level: for what is smaller than the smallest group.
void reverseRow24(const uint8_t *from, uint8_t *to, int32_t pixels);
void transposeBlock24(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride);

extern const PerLevel<ReverseRow> REVERSE_ROW24;
extern const PerLevel<TransposeBlock> TRANSPOSE_BLOCK24;

} // namespace zqcc
