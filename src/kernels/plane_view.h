// The planes of a picture as a kernel reads them, and the pattern that its samples make. A shape has the pattern at
// compile time for the loops; a view has it as values and says where this picture's planes are and where they end.
#pragma once

#include "base/limits.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Pattern of a source as values: see Shape, which has it as constants.
struct LayoutValues {
  int32_t xShift;
  int32_t yShift;
  int32_t sampleStep;
  int32_t pairStep;
  int32_t leftLuma;
  int32_t rightLuma;
};

/// The planes of one picture as a kernel reads them. Columns and lines past the last sample take the last one.
struct PlaneView {
  const uint8_t *y;
  const uint8_t *u;
  const uint8_t *v;
  std::ptrdiff_t yStride;
  std::ptrdiff_t cStride;
  int32_t lastColumn; ///< index of the last chroma sample of a line
  int32_t lastLine;   ///< index of the last chroma line
  int32_t lineStep;   ///< chroma lines from one that is read to the next: 2 where every second one is skipped
  LayoutValues layout;
};

/// Offset of the chroma line of picture line y.
inline std::ptrdiff_t chromaLineOffset(const PlaneView &view, int32_t y) {
  return smaller((y >> view.layout.yShift) * view.lineStep, view.lastLine) * view.cStride;
}

/// Pattern of a source: luma of the pixel pair at even column x stands at lineStart + x / 2 * pairStep plus leftLuma or
/// rightLuma; the chroma sample of pixel (x, y) is number x >> xShift of line y >> yShift, sampleStep bytes apart.
template <int xShift, int yShift, int sampleStep = 1, int pairStep = 2, int leftLuma = 0, int rightLuma = 1>
struct Shape {
  static constexpr LayoutValues kValues{xShift, yShift, sampleStep, pairStep, leftLuma, rightLuma};
  static constexpr bool kSharedByColumns = xShift > 0;
  static constexpr bool kSharedByLines = yShift > 0;

  /// Offset of the luma sample at column x + column, x even.
  template <int column>
  static std::ptrdiff_t lumaOffset(int32_t x) {
    return std::ptrdiff_t{x >> 1} * pairStep + (column == 0 ? leftLuma : rightLuma);
  }
  static std::ptrdiff_t chromaOffset(int32_t x) { return std::ptrdiff_t{x >> xShift} * sampleStep; }
  /// First column, a multiple of two, whose pixel pair may lie behind the last chroma sample.
  static int32_t ownChromaEnd(const PlaneView &view) { return ((view.lastColumn + 1) << xShift) & ~1; }
};

} // namespace zqcc
