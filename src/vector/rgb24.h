// Rows of 24-bit pixels: bytes blue, green, red.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// Fixed BT.601 with 12 fractional bits; takes nothing from the frame.
extern const PerLevel<ColourRows> STUDIO_Q12_PAIR;

/// The matrix in force, components in video range; takes its coefficients from the frame.
extern const PerLevel<ColourRows> MATRIX_RGB24_PAIR;
extern const PerLevel<ColourRows> MATRIX_RGB24_SINGLE;

} // namespace zqcc
