// The colour matrices, the one in force for the whole process, and the dither words that share their storage.
#pragma once

#include <cstdint>

namespace zqcc {

/// Coefficients with 20 fractional bits. R adds Cr * crToR, B adds Cb * cbToB, G subtracts Cr * crToG and Cb * cbToG.
struct ColorMatrix {
  int32_t crToR;
  int32_t crToG;
  int32_t cbToB;
  int32_t cbToG;
};

/// Dither offsets [line parity][pixel parity] that the edge kernels of the full-resolution chroma types read.
struct DitherWords {
  int32_t redBlue[2][2];
  int32_t green[2][2];
};

inline constexpr uint32_t kMatrixCount = 4;
inline constexpr uint32_t kCustomMatrix = 3;

/// The matrix in force; never null.
const ColorMatrix *currentMatrix();

/// Entry `index` (0..3) of the matrix array.
const ColorMatrix *matrixEntry(uint32_t index);

/// Puts entry `index` (0..3) in force.
void selectMatrix(uint32_t index);

/// Writes the custom entry (each coefficient times 2048, truncated, saturated, NaN as 0) and puts it in force. The
/// entry is also where the red/blue dither words stand, so this replaces them for the rest of the process.
void selectCustomMatrix(const double coefficients[4]);

/// The dither words as they stand now.
DitherWords currentDither();

} // namespace zqcc
