// Colour stages of the matrix in force, full range, to RGB565.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// MatrixDither; MatrixPlain with constants that have no offsets. Offsets lie from -3 to kMostOffset for red and blue,
/// from -3 to 0 for green.
extern const PerLevel<ColourRows> MATRIX565_HALF_PAIR;
extern const PerLevel<ColourRows> MATRIX565_HALF;
extern const PerLevel<ColourRows> MATRIX565_FULL;

/// The same of packed 4:2:2 as it lies, two lines with the chroma of the upper one. Any order of U and V, either of
/// luma and chroma first; "swapped" says that the right pixel's luma comes first. Of the rows, y is the left pixel's
/// luma and all begin with the first macropixel; of the lower line only luma is used.
extern const PerLevel<ColourRows> MATRIX565_PACKED_PAIR;
extern const PerLevel<ColourRows> MATRIX565_SWAPPED_PACKED_PAIR;

} // namespace zqcc
