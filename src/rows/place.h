// Stages that put lines of pixels together from rows of bytes, one for each component, and that turn rows.
#pragma once

#include "rows/fetch.h"

#include <cstddef>
#include <cstdint>

namespace zqp {

struct PlaceStages {
  /// `count` pairs of bytes.
  void (*pairs)(const uint8_t *first, const uint8_t *second, int32_t count, uint8_t *to);
  /// (pixels + 1) / 2 groups; an odd last pixel stands twice.
  void (*packed)(const uint8_t *y, const uint8_t *u, const uint8_t *v, const PackedOrder &order, int32_t pixels,
                 uint8_t *to);
  /// 16-bit words of rows of 5, 6 and 5 bits, red at the top, the lower byte first or, swapped, last.
  void (*rgb565)(const uint8_t *const from[3], bool isSwapped, int32_t pixels, uint8_t *to);
  /// Bytes of pixels in the order of their memory; of four, a null last row stands for 255.
  void (*three)(const uint8_t *const from[3], int32_t pixels, uint8_t *to);
  void (*four)(const uint8_t *const from[4], int32_t pixels, uint8_t *to);
  /// The row from right to left. Rows do not overlap.
  void (*reversed)(const uint8_t *from, int32_t count, uint8_t *to);
  /// Column i of the block becomes line i: byte (x, y) of `from` goes to to[x * toStride + y]. Strides may be negative.
  void (*transposed)(const uint8_t *from, ptrdiff_t fromStride, int32_t columns, int32_t lines, uint8_t *to,
                     ptrdiff_t toStride);
};

} // namespace zqp
