#include "vector/matrix_constants.h"

namespace zqcc {
namespace {

// Lowest bits that the rounded coefficients are without. Green is a sum of two products.
constexpr int kDroppedOfOne = 8;
constexpr int kDroppedOfGreen = 7;

// The widest coefficients whose rounded products fit 16-bit lanes. Rounding may add one to each.
constexpr int64_t kMostOfOne = int64_t{0x7FFF} << kDroppedOfOne;
constexpr int64_t kMostOfGreen = int64_t{0x8000 - 4} << kDroppedOfGreen;

constexpr int64_t magnitude(int32_t coefficient) {
  return coefficient < 0 ? -int64_t{coefficient} : int64_t{coefficient};
}

template <int dropped>
constexpr MatrixFactor matrixFactor(int32_t coefficient) {
  return {static_cast<int16_t>((int64_t{coefficient} + (1 << (dropped - 1))) >> dropped),
          static_cast<int16_t>(coefficient)};
}

/// The offset of one source pixel.
template <Turn turn>
constexpr int16_t offsetOf(const int32_t (&offsets)[2][2], int line, int column) {
  const DitherPlace place = ditherPlace<turn>(line, column);
  return static_cast<int16_t>(offsets[place.line][place.column]);
}

} // namespace

bool makeMatrixConstants(const ColorMatrix &matrix, ColourConstants &constants) {
  constants = {matrixFactor<kDroppedOfOne>(matrix.crToR),
               matrixFactor<kDroppedOfGreen>(matrix.crToG),
               matrixFactor<kDroppedOfOne>(matrix.cbToB),
               matrixFactor<kDroppedOfGreen>(matrix.cbToG),
               {},
               {},
               {}};
  return magnitude(matrix.crToR) <= kMostOfOne && magnitude(matrix.cbToB) <= kMostOfOne &&
         magnitude(matrix.crToG) + magnitude(matrix.cbToG) <= kMostOfGreen;
}

template <Turn turn>
bool makeDitherConstants(const ColorMatrix &matrix, ColourConstants &constants) {
  const bool isInRange = makeMatrixConstants(matrix, constants);
  for (int line = 0; line < 2; ++line) {
    for (int column = 0; column < 2; ++column) {
      constants.red[line][column] = offsetOf<turn>(kDitherRed, line, column);
      constants.green[line][column] = offsetOf<turn>(kDitherGreen, line, column);
      constants.blue[line][column] = offsetOf<turn>(kDitherBlue, line, column);
    }
  }
  return isInRange;
}

template bool makeDitherConstants<Turn::Upright>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Left>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Right>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Half>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Flip>(const ColorMatrix &, ColourConstants &);

} // namespace zqcc
