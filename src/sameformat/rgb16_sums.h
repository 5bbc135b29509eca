// Sums of bilinear samples of 16-bit pixels, three channels at a time.
#pragma once

#include "kernels/five_point.h"
#include "sameformat/bilinear.h"

#include <cstdint>

namespace zqcc {

/// The sums of up to five samples of every channel, of weights within 0..1024, in one word: red from bit 20 on, green
/// from bit 10 on, blue below.
struct Rgb16Sum {
  static constexpr int kRedShift = 20;
  static constexpr int kGreenShift = 10;
  uint32_t word;
};

/// Adds the samples of one tap of a line at `count` columns.
using AddPixels = void (*)(const SourceLines &line, const TapPlace *columns, int32_t count, Rgb16Sum *sums);
/// The function for pixels at these addresses.
AddPixels addPixelsOf(const uint8_t *pixels, std::ptrdiff_t pitch);

/// Stores a fifth of every channel as pixels.
void storeFifths(const Rgb16Sum *sums, int32_t count, uint8_t *out);

} // namespace zqcc
