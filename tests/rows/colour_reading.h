// What docs/picture.md says about colours, read one sample at a time.
#pragma once

#include "rows/colour.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zqp::reading {

struct Matrix {
  double kr;
  double kb;
};
inline constexpr Matrix kMatrices[3] = {{.299, .114}, {.2126, .0722}, {.2627, .0593}};

struct Range {
  double black;
  double white;
  double chroma;
};
inline constexpr Range kLimited = {16, 235, 224};
inline constexpr Range kFull = {0, 255, 255};

inline int32_t sat(int32_t a) {
  return std::clamp(a, -32768, 32767);
}
inline int32_t f(int32_t distance, int32_t k) {
  return (distance * k + 16384) >> 15;
}
inline int32_t nearest(double a) {
  return static_cast<int32_t>(std::floor(a + .5));
}

/// c and b, the latter without the half.
inline Level levelOf(const Range &in, const Range &out, int32_t most, int32_t bits) {
  const double one = std::ldexp(1., bits);
  const double o0 = out.black * most / 255;
  const double o1 = out.white * most / 255;
  const int32_t c = nearest(256 * one * (o1 - o0) / (in.white - in.black));
  return {static_cast<uint16_t>(c), static_cast<int16_t>(nearest(o0 * one - in.black * c / 256))};
}

inline int32_t bitsBehind(int32_t most) {
  return most == 255 ? 6 : most == 31 ? 9 : 8;
}

inline Component componentOf(const Range &in, const Range &out, int32_t most, double ofU, double ofV) {
  const int32_t bits = bitsBehind(most);
  const double span = (out.white - out.black) * most / 255;
  const double g = 128 * std::ldexp(1., bits) * span / in.chroma;
  return {levelOf(in, out, most, bits), static_cast<int16_t>(nearest(ofU * g)), static_cast<int16_t>(nearest(ofV * g)),
          bits, most};
}

/// To components of 8 bits, or of 5, 6 and 5.
inline RgbOfYuv rgbOfYuv(const Matrix &m, const Range &in, const Range &out, bool isFiveSix) {
  const double kg = 1 - m.kr - m.kb;
  const int32_t redMost = isFiveSix ? 31 : 255;
  return {componentOf(in, out, redMost, 0, 2 * (1 - m.kr)),
          componentOf(in, out, isFiveSix ? 63 : 255, -2 * m.kb * (1 - m.kb) / kg, -2 * m.kr * (1 - m.kr) / kg),
          componentOf(in, out, redMost, 2 * (1 - m.kb), 0)};
}

/// Samples in units of 1/256.
struct Yuv {
  int32_t y;
  int32_t u;
  int32_t v;
};
inline int32_t lumaOf(const Level &level, int32_t s) {
  return (s * level.factor >> 16) + level.bias;
}
inline int32_t component(const Component &c, const Yuv &s, int32_t rounding) {
  const int32_t chroma = sat(f(s.u - 32768, c.u) + f(s.v - 32768, c.v));
  return std::clamp(sat(sat(lumaOf(c.luma, s.y) + chroma) + rounding) >> c.shift, 0, c.most);
}

struct Rgb {
  int32_t red;
  int32_t green;
  int32_t blue;
};
inline const uint16_t *roundingOf(const Rounding &rounding, int32_t most) {
  return most == 255 ? rounding.eight : most == 31 ? rounding.five : rounding.six;
}
inline Rgb rgb(const RgbOfYuv &colours, const Yuv &s, const Rounding &rounding, int32_t column) {
  const int32_t x = column % 8;
  return {component(colours.red, s, roundingOf(rounding, colours.red.most)[x]),
          component(colours.green, s, roundingOf(rounding, colours.green.most)[x]),
          component(colours.blue, s, roundingOf(rounding, colours.blue.most)[x])};
}

/// Halves, or the thresholds of a line.
inline Rounding halves() {
  Rounding rounding = {};
  for (int32_t x = 0; x < 8; ++x) {
    rounding.five[x] = 256;
    rounding.six[x] = 128;
    rounding.eight[x] = 32;
  }
  return rounding;
}
inline Rounding dither(int32_t y) {
  Rounding rounding = halves();
  const auto bit = [](int32_t a, int32_t i) { return a >> i & 1; };
  for (int32_t x = 0; x < 8; ++x) {
    int32_t b = 0;
    for (int32_t i = 0; i < 3; ++i) {
      b = 4 * b + 2 * (bit(x, i) ^ bit(y, i)) + bit(y, i);
    }
    rounding.five[x] = static_cast<uint16_t>(8 * b + 4);
    rounding.six[x] = static_cast<uint16_t>(4 * b + 2);
  }
  return rounding;
}

} // namespace zqp::reading
