// Where the pixels of a picture go: source pixel (x, y) lands at origin + x * dx + y * dy, and pixels that become
// neighbours in an output line are stored two to a word. Quarter turns make neighbours of two source lines, the other
// placements of two source columns.
#pragma once

#include "base/turn.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Pixels [left, right) x [top, bottom) of the source; left and top are even.
struct Rect {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};

/// Address of source pixel (0, 0) and the byte stride between output lines.
struct Target {
  uint8_t *origin;
  std::ptrdiff_t stride;
};

/// The second pixel of a pair stands at the lower address.
constexpr bool pairsBackwards(Turn turn) {
  return turn == Turn::Right || turn == Turn::Half;
}

/// Bytes from one source column to the next.
template <Turn turn, int pixelBytes>
constexpr std::ptrdiff_t columnStep(std::ptrdiff_t stride) {
  switch (turn) {
  case Turn::Left:
    return -stride;
  case Turn::Right:
    return stride;
  case Turn::Half:
    return -pixelBytes;
  default:
    return pixelBytes;
  }
}

/// Bytes from one source line to the next.
template <Turn turn, int pixelBytes>
constexpr std::ptrdiff_t lineStep(std::ptrdiff_t stride) {
  switch (turn) {
  case Turn::Left:
    return pixelBytes;
  case Turn::Right:
    return -pixelBytes;
  case Turn::Upright:
    return stride;
  default:
    return -stride;
  }
}

/// Target of a width x height source picture (before the turn) whose first output line starts at `out`. The half turn
/// mirrors about the picture's own width.
template <Turn turn, int pixelBytes>
constexpr Target targetOf(uint8_t *out, std::ptrdiff_t stride, int32_t width, int32_t height) {
  switch (turn) {
  case Turn::Left:
    return {out + (width - 1) * stride, stride};
  case Turn::Right:
    return {out + std::ptrdiff_t{height - 1} * pixelBytes, stride};
  case Turn::Half:
    return {out + (height - 1) * stride + std::ptrdiff_t{width - 1} * pixelBytes, stride};
  case Turn::Flip:
    return {out + (height - 1) * stride, stride};
  default:
    return {out, stride};
  }
}

/// As targetOf for 16-bit pixels, but the half turn mirrors about the end of the stride: with lines longer than the
/// picture it lies at their right end. Converters that walk blocks have always placed it there.
template <Turn turn>
constexpr Target blockTargetOf(uint8_t *out, std::ptrdiff_t stride, int32_t width, int32_t height) {
  if constexpr (turn == Turn::Half) {
    return {out + height * stride - 2, stride};
  }
  return targetOf<turn, 2>(out, stride, width, height);
}

} // namespace zqcc
