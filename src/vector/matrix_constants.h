// What the stages of matrix arithmetic take from the matrix in force.
#pragma once

#include "kernels/arithmetic.h"
#include "vector/stages.h"

namespace zqcc {

/// The coefficients as split factors, without dither. False if one of them has more than 24 bits. Arithmetics that do
/// not dither take nothing else.
bool makeMatrixConstants(const ColorMatrix &matrix, ColourConstants &constants);

/// The same with the offsets that MatrixDither<turn> adds to the pixels of source line and column. Made for every turn.
template <Turn turn>
bool makeDitherConstants(const ColorMatrix &matrix, ColourConstants &constants);

} // namespace zqcc
