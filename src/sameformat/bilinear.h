// Bilinear sampling by table, written once for every same-format resizer.
//
// With column weights (xs, xn) and line weights (ys, yn) of a tap's sample and its neighbour, an output sample is
//
//   ((p00 * xs + p01 * xn) * ys + (p10 * xs + p11 * xn) * yn) >> 20
//
// truncated, where p01 is the right neighbour and p10, p11 stand one line below. Weights stay within -1024..2048, so
// that every sum fits into 32 bits.
#pragma once

#include "kernels/taps.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

inline int32_t bilinear(int32_t p00, int32_t p01, int32_t p10, int32_t p11, TapWeights x, TapWeights y) {
  return ((p00 * x.self + p01 * x.next) * y.self + (p10 * x.self + p11 * x.next) * y.next) >> (2 * kWeightBits);
}

/// The two source lines of a line tap.
struct SourceLines {
  const uint8_t *self;
  const uint8_t *next;
  TapWeights weights;
};

inline SourceLines linePair(const uint8_t *plane, std::ptrdiff_t pitch, const SampleTap &tap) {
  return {plane + tap.self * pitch, plane + tap.next * pitch, tap.weights};
}

/// One output byte from its column tap. `byteOf` gives the place in the line of the sample at a position.
template <class ByteOf>
uint8_t sampleByte(const SourceLines &line, const SampleTap &tap, ByteOf byteOf) {
  const std::ptrdiff_t self = byteOf(tap.self);
  const std::ptrdiff_t next = byteOf(tap.next);
  return static_cast<uint8_t>(
      bilinear(line.self[self], line.self[next], line.next[self], line.next[next], tap.weights, line.weights));
}

} // namespace zqcc
