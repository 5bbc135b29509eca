// Writers put the four pixels of a quad, 2 x 2 of the source, at their places: whole words where two of them become
// neighbours.
#pragma once

#include "kernels/placement.h"
#include "kernels/stores.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Four pixels, [line][column] of the source.
template <class Pixel>
using Quad = Pixel[2][2];

/// 16-bit pixels. Words must be aligned where the processor asks for it; `turn` says which pixels share one.
template <Turn turn>
struct Rgb565Writer {
  using Pixel = uint32_t;
  static constexpr int kPixelBytes = 2;

  static void put(uint8_t *p, std::ptrdiff_t stride, const Quad<Pixel> &quad) {
    if constexpr (isQuarterTurn(turn)) {
      pair(p, quad[0][0], quad[1][0]);
      pair(p + columnStep<turn, kPixelBytes>(stride), quad[0][1], quad[1][1]);
    } else {
      pair(p, quad[0][0], quad[0][1]);
      pair(p + lineStep<turn, kPixelBytes>(stride), quad[1][0], quad[1][1]);
    }
  }
  static void one(uint8_t *p, Pixel pixel) { storePixelAnywhere(p, pixel); }

private:
  static void pair(uint8_t *p, Pixel first, Pixel second) {
    if constexpr (pairsBackwards(turn)) {
      storeWord(p - 2, second, first);
    } else {
      storeWord(p, first, second);
    }
  }
};

struct Bgr {
  uint8_t blue;
  uint8_t green;
  uint8_t red;
};

/// 24-bit pixels: bytes blue, green, red.
template <Turn turn>
struct Rgb24Writer {
  using Pixel = Bgr;
  static constexpr int kPixelBytes = 3;

  static void put(uint8_t *p, std::ptrdiff_t stride, const Quad<Pixel> &quad) {
    const std::ptrdiff_t dx = columnStep<turn, kPixelBytes>(stride);
    const std::ptrdiff_t dy = lineStep<turn, kPixelBytes>(stride);
    one(p, quad[0][0]);
    one(p + dx, quad[0][1]);
    one(p + dy, quad[1][0]);
    one(p + dx + dy, quad[1][1]);
  }
  static void one(uint8_t *p, const Pixel &pixel) {
    p[0] = pixel.blue;
    p[1] = pixel.green;
    p[2] = pixel.red;
  }
};

} // namespace zqcc
