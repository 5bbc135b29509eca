// How one sample of a resized plane is made. `top` points at the source line of the line's tap, `stride` leads to the
// next one; step is the distance of neighbouring samples in bytes. `pixel` and `line` say which of the two pixels and
// lines of an output group is made.
#pragma once

#include "resize_rgb/taps.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Weighted mean of two samples times 1024; exact for weights outside 0..1024 too.
constexpr int32_t mix(int32_t a, int32_t b, int32_t next) {
  return a * 1024 + (b - a) * next;
}

/// Bilinear, times 2^20.
template <int step>
inline int32_t bilinearSum(const uint8_t *top, std::ptrdiff_t stride, const Tap &x, const Tap &y) {
  const uint8_t *at = top + std::ptrdiff_t{x.index} * step;
  const int32_t upper = mix(at[0], at[step], x.next);
  const int32_t lower = mix(at[stride], at[stride + step], x.next);
  return mix(upper, lower, y.next);
}

struct Bilinear {
  template <int pixel, int line>
  static int32_t sample(const uint8_t *top, std::ptrdiff_t stride, const Tap &x, const Tap &y) {
    return bilinearSum<1>(top, stride, x, y) >> 20;
  }
};

/// The tap's own sample: reductions by powers of two drop the others.
struct Point {
  template <int pixel, int line>
  static int32_t sample(const uint8_t *top, std::ptrdiff_t /*stride*/, const Tap &x, const Tap & /*y*/) {
    return top[x.index];
  }
};

/// Doubling: the first pixel and line of a pair are samples, the second ones truncated means with their neighbours.
struct PairAverage {
  template <int pixel, int line>
  static int32_t sample(const uint8_t *top, std::ptrdiff_t stride, const Tap &x, const Tap & /*y*/) {
    const uint8_t *at = top + x.index;
    if constexpr (pixel == 0 && line == 0) {
      return at[0];
    } else if constexpr (line == 0) {
      return (at[0] + at[1]) >> 1;
    } else if constexpr (pixel == 0) {
      return (at[0] + at[stride]) >> 1;
    } else {
      return (at[0] + at[1] + at[stride] + at[stride + 1]) >> 2;
    }
  }
};

/// Weights of the next sample at phases 0, 1/3 and 2/3. 1024 has no third: phase 1/3 gives the nearer sample 683 and
/// phase 2/3 gives it 682.
inline constexpr int32_t kPhaseNext[3] = {0, 341, 682};

/// Phases of consecutive outputs when three are made of four samples.
struct ThreeQuarterPhases {
  static constexpr int32_t next(int32_t i) { return kPhaseNext[i % 3]; }
};

/// Phases of consecutive outputs when three are made of two samples.
struct ThreeHalfPhases {
  static constexpr int32_t next(int32_t i) { return kPhaseNext[2 * i % 3]; }
};

/// Fixed weights: the phase follows from the position in a step of six; phase 0 is not interpolated at all.
template <class Phases>
struct FixedPhase {
  template <int pixel, int line>
  static int32_t sample(const uint8_t *top, std::ptrdiff_t stride, const Tap &x, const Tap & /*y*/) {
    constexpr int32_t across = Phases::next(pixel);
    constexpr int32_t down = Phases::next(line);
    const uint8_t *at = top + x.index;
    if constexpr (across == 0 && down == 0) {
      return at[0];
    } else if constexpr (down == 0) {
      return mix(at[0], at[1], across) >> 10;
    } else if constexpr (across == 0) {
      return mix(at[0], at[stride], down) >> 10;
    } else {
      return mix(mix(at[0], at[1], across), mix(at[stride], at[stride + 1], across), down) >> 20;
    }
  }
};

/// The same weights handed out as taps, for what is left of a group behind its whole steps.
template <class Phases>
class PhaseTaps {
public:
  explicit PhaseTaps(const int32_t *triples) : triples_(triples) {}
  Tap operator[](int32_t i) const { return {triples_[3 * i], Phases::next(i)}; }

private:
  const int32_t *triples_;
};

} // namespace zqcc
