// Holding numbers within limits.
#pragma once

#include <cstdint>

namespace zqcc {

template <class Number>
constexpr Number smaller(Number a, Number b) {
  return a < b ? a : b;
}

template <class Number>
constexpr Number larger(Number a, Number b) {
  return a > b ? a : b;
}

constexpr int32_t clampTo(int32_t value, int32_t low, int32_t high) {
  return value < low ? low : (value > high ? high : value);
}

} // namespace zqcc
