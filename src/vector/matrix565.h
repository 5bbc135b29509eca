// Colour stages of the matrix in force, full range, to RGB565.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// MatrixDither; MatrixPlain with constants that have no offsets. Offsets lie from -3 to kMostOffset for red and blue,
/// from -3 to 0 for green.
extern const PerLevel<ColourRows> MATRIX565_HALF_PAIR;
extern const PerLevel<ColourRows> MATRIX565_HALF;
extern const PerLevel<ColourRows> MATRIX565_FULL;

} // namespace zqcc
