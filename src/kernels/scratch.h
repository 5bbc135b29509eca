// Unaligned output on processors that store words at aligned addresses only: a block is converted into an aligned
// scratch of its own and copied from there. Elsewhere none of this is compiled.
#pragma once

#include "kernels/placement.h"
#include "kernels/stores.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

/// Whether the words of a picture of 16-bit pixels can be stored where they lie.
template <Turn turn>
bool wordsFit(const Target &target) {
  if constexpr (kWordsAnywhere) {
    return true;
  }
  const std::uintptr_t first = reinterpret_cast<std::uintptr_t>(target.origin) - (pairsBackwards(turn) ? 2 : 0);
  return ((first | static_cast<std::uintptr_t>(target.stride)) & 3U) == 0;
}

inline constexpr int32_t kScratchSide = 16;

/// Calls convert(target) with a target whose pixel (0, 0) is the first pixel of a block of up to 16 x 16 source pixels,
/// then copies the block's pixels to where `first`, the address of its first pixel in the picture, and `stride` say.
template <Turn turn, class Convert>
void throughScratch(uint8_t *first, std::ptrdiff_t stride, int32_t columns, int32_t lines, Convert convert) {
  constexpr std::ptrdiff_t kStride = kScratchSide * 2;
  alignas(4) uint8_t scratch[kScratchSide * kStride];
  // Even sides keep pairs of pixels on word boundaries whichever way the block lies.
  const Target target = targetOf<turn, 2>(scratch, kStride, (columns + 1) & ~1, (lines + 1) & ~1);
  convert(target);
  const auto firstByte = [&](std::ptrdiff_t lineStride) {
    // Of the source pixel that becomes the block's top left one.
    const int32_t x = turn == Turn::Left || turn == Turn::Half ? columns - 1 : 0;
    const int32_t y = turn == Turn::Upright || turn == Turn::Left ? 0 : lines - 1;
    return x * columnStep<turn, 2>(lineStride) + y * lineStep<turn, 2>(lineStride);
  };
  const int32_t outLines = isQuarterTurn(turn) ? columns : lines;
  const int32_t outColumns = isQuarterTurn(turn) ? lines : columns;
  const uint8_t *from = target.origin + firstByte(kStride);
  uint8_t *to = first + firstByte(stride);
  for (int32_t line = 0; line < outLines; ++line) {
    std::memcpy(to + line * stride, from + line * kStride, static_cast<std::size_t>(outColumns) * 2);
  }
}

} // namespace zqcc
