// Turned pictures by rows. Rows of pixels are made in buffers that stay in the first-level cache and are placed from
// there: backwards for a half turn, block by block as output lines for a quarter turn.
#pragma once

#include "vector/line_maker.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Bytes from one source column, and from one source line, to the next in the output.
struct Steps {
  std::ptrdiff_t column;
  std::ptrdiff_t line;
};

constexpr Steps stepsOf(Turn turn, int pixelBytes, std::ptrdiff_t stride) {
  switch (turn) {
  case Turn::Left:
    return {-stride, pixelBytes};
  case Turn::Right:
    return {stride, -pixelBytes};
  case Turn::Half:
    return {-pixelBytes, -stride};
  case Turn::Flip:
    return {pixelBytes, -stride};
  default:
    return {pixelBytes, stride};
  }
}

/// A half turn. `origin` is where source pixel (0, 0) lands.
void convertHalfTurned(const LineMaker &maker, ReverseRow reverse, const Rect &rows, uint8_t *origin,
                       const Steps &steps);

/// A quarter turn.
void convertQuarterTurned(const LineMaker &maker, TransposeBlock transpose, const Rect &rows, uint8_t *origin,
                          const Steps &steps);

} // namespace zqcc
