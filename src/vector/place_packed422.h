// Placing rows of packed 4:2:2 as the output lines of a quarter turn.
#pragma once

#include "vector/place_stages.h"

namespace zqcc {

/// As TRANSPOSE_UNITS16, pixel by pixel of two bytes, but the two pixels that become a macropixel get the chroma of
/// one: of rows 0 and 1, 2 and 3 and so on, both get that of the first, the former its first chroma byte, the latter
/// its second one. Luma comes first in a macropixel, or chroma does. Blocks of even numbers of columns and rows, at
/// least eight each, which begin with a macropixel's left pixel.
extern const PerLevel<TransposeBlock> TRANSPOSE_LUMA_FIRST;
extern const PerLevel<TransposeBlock> TRANSPOSE_CHROMA_FIRST;

} // namespace zqcc
