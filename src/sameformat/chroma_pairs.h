// Interleaved chroma without a change of type. A line of an odd picture has a pair for its lone last column too, as far
// as its stride goes: where the stride is the odd width itself, that pair has its first byte only.
#pragma once

#include "base/limits.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

constexpr std::ptrdiff_t kPairBytes = 2;

/// Bytes of a line of pairs below `width` columns of luma.
constexpr int32_t pairLineBytes(int32_t width, int32_t stride) {
  return width + (width % 2 != 0 && stride > width ? 1 : 0);
}

/// A line of pairs that is read: whatever lies behind its last first byte, or its last second byte, takes that one.
struct PairLine {
  int32_t lastFirst;
  int32_t lastSecond;
};

constexpr PairLine pairLine(int32_t width, int32_t stride) {
  const int32_t bytes = pairLineBytes(width, stride);
  return {bytes / 2 + bytes % 2 - 1, bytes / 2 - 1};
}

/// Pair `pair` of a line as one unit in memory order; `pair` is at most the line's last.
inline uint16_t chromaPair(const uint8_t *line, int32_t pair, int32_t lastSecond) {
  const std::ptrdiff_t second = smaller(pair, lastSecond);
  const uint8_t bytes[kPairBytes] = {line[pair * kPairBytes], line[second * kPairBytes + 1]};
  uint16_t unit;
  std::memcpy(&unit, bytes, sizeof unit);
  return unit;
}

} // namespace zqcc
