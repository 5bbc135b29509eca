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

struct DitherLines {
  DitherLine of[2];
};

using Offsets = int32_t[2][2];

/// A component's bytes for a line: `zero` less the offset.
template <Turn turn>
constexpr void fillColumns(uint8_t (&bytes)[2 * kColumnsOfParity], int zero, const Offsets &offsets, int line) {
  for (int i = 0; i < 2 * kColumnsOfParity; ++i) {
    const DitherPlace place = ditherPlace<turn>(line, i / kColumnsOfParity);
    bytes[i] = static_cast<uint8_t>(zero - offsets[place.line][place.column]);
  }
}

template <Turn turn>
constexpr DitherLines ditherLines(const Offsets &red, const Offsets &green, const Offsets &blue) {
  DitherLines lines{};
  for (int line = 0; line < 2; ++line) {
    fillColumns<turn>(lines.of[line].red, kMostOffset, red, line);
    fillColumns<turn>(lines.of[line].green, 0, green, line);
    fillColumns<turn>(lines.of[line].blue, kMostOffset, blue, line);
  }
  return lines;
}

constexpr Offsets kNoOffsets{};
constexpr DitherLines kPlainLines = ditherLines<Turn::Upright>(kNoOffsets, kNoOffsets, kNoOffsets);

template <Turn turn>
constexpr DitherLines kDitherLines = ditherLines<turn>(kDitherRed, kDitherGreen, kDitherBlue);

} // namespace

bool makeMatrixConstants(const ColorMatrix &matrix, ColourConstants &constants) {
  constants.crToR = matrixFactor<kDroppedOfOne>(matrix.crToR);
  constants.crToG = matrixFactor<kDroppedOfGreen>(matrix.crToG);
  constants.cbToB = matrixFactor<kDroppedOfOne>(matrix.cbToB);
  constants.cbToG = matrixFactor<kDroppedOfGreen>(matrix.cbToG);
  constants.dither = kPlainLines.of;
  return magnitude(matrix.crToR) <= kMostOfOne && magnitude(matrix.cbToB) <= kMostOfOne &&
         magnitude(matrix.crToG) + magnitude(matrix.cbToG) <= kMostOfGreen;
}

template <Turn turn>
bool makeDitherConstants(const ColorMatrix &matrix, ColourConstants &constants) {
  const bool isInRange = makeMatrixConstants(matrix, constants);
  constants.dither = kDitherLines<turn>.of;
  return isInRange;
}

template bool makeDitherConstants<Turn::Upright>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Left>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Right>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Half>(const ColorMatrix &, ColourConstants &);
template bool makeDitherConstants<Turn::Flip>(const ColorMatrix &, ColourConstants &);

} // namespace zqcc
