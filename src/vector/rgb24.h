// Rows of 24-bit pixels: bytes blue, green, red.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// Fixed BT.601 with 12 fractional bits; takes nothing from the frame.
extern const PerLevel<ColourRows> STUDIO_Q12_PAIR;

/// The matrix in force, components in video range; takes its coefficients from the frame.
extern const PerLevel<ColourRows> MATRIX_RGB24_PAIR;

/// The same with a chroma sample for every pixel: two lines that share it, or one.
extern const PerLevel<ColourRows> MATRIX_RGB24_FULL_PAIR;
extern const PerLevel<ColourRows> MATRIX_RGB24_FULL;

/// The same of one line of packed 4:2:2 as it lies: y is the first pixel's luma, u and v are the chroma in the same
/// four bytes. Swapped: the left pixel's luma stands two bytes behind the right one's.
extern const PerLevel<ColourRows> MATRIX_RGB24_PACKED;
extern const PerLevel<ColourRows> MATRIX_RGB24_PACKED_SWAPPED;

} // namespace zqcc
