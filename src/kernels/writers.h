// Writers put up to 2 x 2 pixels of a source group at their places, whole words where two of them become neighbours.
#pragma once

#include "kernels/placement.h"
#include "kernels/stores.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Up to four pixels, [line][column] of the source group.
template <class Pixel>
using Quad = Pixel[2][2];

/// 16-bit pixels.
template <Turn turn, class Stores>
struct Rgb565Writer {
  using Pixel = uint32_t;
  static constexpr int kPixelBytes = 2;

  template <int columns, int lines>
  static void put(uint8_t *p, std::ptrdiff_t stride, const Quad<Pixel> &quad) {
    if constexpr (pairsLines(turn)) {
      for (int c = 0; c < columns; ++c) {
        run<lines>(p + c * columnStep<turn, kPixelBytes>(stride), quad[0][c], quad[1][c]);
      }
    } else {
      for (int l = 0; l < lines; ++l) {
        run<columns>(p + l * lineStep<turn, kPixelBytes>(stride), quad[l][0], quad[l][1]);
      }
    }
  }

private:
  template <int count>
  static void run(uint8_t *p, Pixel first, Pixel second) {
    if constexpr (count == 1) {
      Stores::store(p, first);
    } else if constexpr (pairsBackwards(turn)) {
      Stores::store(p - 2, second, first);
    } else {
      Stores::store(p, first, second);
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

  template <int columns, int lines>
  static void put(uint8_t *p, std::ptrdiff_t stride, const Quad<Pixel> &quad) {
    for (int l = 0; l < lines; ++l) {
      for (int c = 0; c < columns; ++c) {
        one(p + c * columnStep<turn, kPixelBytes>(stride) + l * lineStep<turn, kPixelBytes>(stride), quad[l][c]);
      }
    }
  }

  static void one(uint8_t *p, const Pixel &pixel) {
    p[0] = pixel.blue;
    p[1] = pixel.green;
    p[2] = pixel.red;
  }
};

/// Address of the first word that a writer of 16-bit pixels stores when it starts at pixel address p.
template <Turn turn>
constexpr const uint8_t *firstWordAt(const uint8_t *p) {
  return pairsBackwards(turn) ? p - 2 : p;
}

} // namespace zqcc
