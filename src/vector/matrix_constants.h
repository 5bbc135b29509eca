// What the stages of matrix arithmetic take from the matrix in force.
#pragma once

#include "kernels/arithmetic.h"
#include "vector/stages.h"

namespace zqcc {

/// The coefficients without dither, which is all that other arithmetics take. False where 16-bit lanes do not do: from
/// about 8 on for red and blue, from about 4 on for the two of green together.
bool makeMatrixConstants(const ColorMatrix &matrix, ColourConstants &constants);

/// The same with the offsets that MatrixDither<turn> adds to the pixels of source line and column. Made for every turn.
template <Turn turn>
bool makeDitherConstants(const ColorMatrix &matrix, ColourConstants &constants);

} // namespace zqcc
