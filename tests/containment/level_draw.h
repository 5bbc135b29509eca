// Drawing what conversions at levels of vector code are swept over: strides and matrices.
#pragma once

#include "reference/direct_case.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>

namespace containment {

class Draw {
public:
  explicit Draw(uint32_t seed) : random_(seed) {}

  // Not the distribution of the standard library: a seed must give the same cases everywhere.
  int between(int low, int high) { return low + static_cast<int>(random_() % static_cast<uint32_t>(high - low + 1)); }
  uint32_t seed() { return random_() & 0xFFFFFFU; }

  /// Tight, longer by an odd or an even number of bytes, or so short that lines overlap.
  int stride(int tight) {
    switch (between(0, 7)) {
    case 0:
    case 1:
      return tight;
    case 2:
      return tight + 2 * between(0, 32) + 1;
    case 3:
      return tight + 64;
    case 4:
      return std::max(0, tight - between(1, 8));
    case 5:
      return between(0, tight);
    default:
      return tight + between(1, 40);
    }
  }

  reference::MatrixChoice matrix() {
    const int choice = between(0, 9);
    if (choice < 5) {
      return choice < 3 ? reference::MatrixChoice{}
                        : reference::MatrixChoice::entryOf(static_cast<uint32_t>(choice - 2));
    }
    std::array<double, 4> values{};
    for (double &value : values) {
      value = coefficient();
    }
    return reference::MatrixChoice::customOf(values);
  }

private:
  /// Any magnitude: nothing, a usual one, those around which 16-bit lanes end, those whose products wrap around.
  double coefficient() {
    const double sign = between(0, 1) == 0 ? 1.0 : -1.0;
    switch (between(0, 5)) {
    case 0:
      return 0.0;
    case 1:
    case 2:
      return sign * between(0, 2000) * 1.125;
    case 3:
      return sign * std::ldexp(1.0, between(7, 22));
    case 4:
      return sign * (std::ldexp(1.0, between(7, 22)) - between(1, 3));
    default:
      return sign * 1.0e9;
    }
  }

  std::mt19937 random_;
};

} // namespace containment
