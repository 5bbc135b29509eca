// Stages that take lines of pixels apart: a row of bytes for each component. Planar components are read where they lie.
#pragma once

#include <cstdint>

namespace zqp {

/// Which of the four bytes of a group of packed 4:2:2 holds what.
struct PackedOrder {
  uint8_t y0;
  uint8_t y1;
  uint8_t u;
  uint8_t v;
};

struct FetchStages {
  /// `count` pairs of bytes.
  void (*pairs)(const uint8_t *from, int32_t count, uint8_t *first, uint8_t *second);
  /// (pixels + 1) / 2 groups: `pixels` samples of luma, as many of u and v as there are groups.
  void (*packed)(const uint8_t *from, const PackedOrder &order, int32_t pixels, uint8_t *y, uint8_t *u, uint8_t *v);
  /// 16-bit words, red at the top, the lower byte first or, swapped, last. Components become 0..255.
  void (*rgb565)(const uint8_t *from, bool isSwapped, int32_t pixels, uint8_t *const to[3]);
  /// Bytes of pixels in the order of their memory.
  void (*three)(const uint8_t *from, int32_t pixels, uint8_t *const to[3]);
  void (*four)(const uint8_t *from, int32_t pixels, uint8_t *const to[4]);
};

} // namespace zqp
