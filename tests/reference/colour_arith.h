// Samples to components, components to pixels: one function per arithmetic, written as formulas, for every model.
#pragma once

#include "reference/colour.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace reference {

/// Chroma of one pixel: U is Cb, V is Cr.
struct Chroma {
  int u = 0;
  int v = 0;
};

/// Three components in the precision of the arithmetic that made them.
struct Components {
  int red = 0;
  int green = 0;
  int blue = 0;
};

/// Offsets added before a component is reduced.
struct Dither {
  int32_t red = 0;
  int32_t green = 0;
  int32_t blue = 0;
};

/// The low 32 bits, as two's complement.
inline int32_t wrap(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}
inline int32_t wrapMul(int32_t a, int32_t b) {
  return wrap(int64_t{a} * b);
}
inline int32_t wrapAdd(int32_t a, int32_t b) {
  return wrap(int64_t{a} + b);
}
inline int32_t wrapSub(int32_t a, int32_t b) {
  return wrap(int64_t{a} - b);
}

inline int saturate8(int32_t index) {
  return std::clamp<int32_t>(index, 16, 235);
}
inline int saturate6(int32_t index) {
  return std::clamp<int32_t>(index, 0, 63);
}
/// Full intensity is reached one step late: 30 gives 29, 31 gives 30, only 32 and above give 31.
inline int saturate5(int32_t index) {
  if (index <= 0) {
    return 0;
  }
  if (index <= 29) {
    return index;
  }
  return index >= 32 ? 31 : index - 1;
}

inline uint16_t pack565(int red5, int green6, int blue5) {
  return static_cast<uint16_t>(red5 << 11 | green6 << 5 | blue5);
}
/// Eight-bit components, truncated.
inline uint16_t pack888(int red, int green, int blue) {
  return pack565(red >> 3, green >> 2, blue >> 3);
}

inline void storeWord(uint8_t *at, uint16_t word) {
  at[0] = static_cast<uint8_t>(word & 0xFF);
  at[1] = static_cast<uint8_t>(word >> 8);
}

/// Studio-range BT.601 sums with 20 fractional bits, before any shift.
inline Components studioSums(int y, Chroma c) {
  const int u = c.u - 128;
  const int v = c.v - 128;
  const int luma = (y - 16) * 1220542;
  return {luma + v * 1673527, luma - (u * 411041 + v * 852492), luma + u * 2114977};
}
/// Blocks of exactly 16x16.
inline uint16_t studioFull(int y, Chroma c) {
  const Components s = studioSums(y, c);
  return pack565(saturate6(s.red >> 22) >> 1, saturate6(s.green >> 22), saturate6(s.blue >> 22) >> 1);
}
/// Smaller blocks: components never leave 16..235.
inline uint16_t studioEdge(int y, Chroma c) {
  const Components s = studioSums(y, c);
  return pack888(saturate8(s.red >> 20), saturate8(s.green >> 20), saturate8(s.blue >> 20));
}
/// The strips beside and below the turned blocks.
inline uint16_t studioStrip(int y, Chroma c) {
  const Components s = studioSums(y, c);
  return pack565(saturate5(s.red >> 23), saturate6(s.green >> 22), saturate5(s.blue >> 23));
}

/// Full-range components through the selected matrix, offsets added, not yet saturated.
inline Components matrixSums(int y, Chroma c, const Colour &colour, Dither d) {
  const auto &m = colour.matrix;
  const int u = c.u - 128;
  const int v = c.v - 128;
  const int32_t redAdd = wrapMul(v, m[0]) >> 20;
  const int32_t greenSub = wrapAdd(wrapMul(u, m[3]), wrapMul(v, m[1])) >> 20;
  const int32_t blueAdd = wrapMul(u, m[2]) >> 20;
  return {wrapAdd(wrapAdd(y, redAdd), d.red), wrapAdd(wrapSub(y, greenSub), d.green),
          wrapAdd(wrapAdd(y, blueAdd), d.blue)};
}
inline uint16_t matrix565(int y, Chroma c, const Colour &colour, Dither d) {
  const Components s = matrixSums(y, c, colour, d);
  return pack565(saturate5(s.red >> 3), saturate6(s.green >> 2), saturate5(s.blue >> 3));
}
inline Components matrix24(int y, Chroma c, const Colour &colour) {
  const Components s = matrixSums(y, c, colour, {});
  return {saturate8(s.red), saturate8(s.green), saturate8(s.blue)};
}
/// Studio-range BT.601 with 12 fractional bits, clamped to whole bytes.
inline Components studioBytes(int y, Chroma c) {
  const int u = c.u - 128;
  const int v = c.v - 128;
  const int luma = (y - 16) * 4767;
  return {std::clamp((luma + 6537 * v) >> 12, 0, 255), std::clamp((luma - (3330 * v + 1605 * u)) >> 12, 0, 255),
          std::clamp((luma + 8261 * u) >> 12, 0, 255)};
}

/// Built-in offsets by line parity and column parity, as the pixel lies in its 2x2 cell.
inline Dither fixedDither(int line, int column) {
  static constexpr Dither kCell[2][2] = {{{1, 0, 2}, {-3, -3, -1}}, {{2, -2, 1}, {-1, -1, -3}}};
  return kCell[line & 1][column & 1];
}
/// Offsets of partial blocks, read from the words that a custom matrix overwrites; blue takes the other line's row.
inline Dither storedDither(const Colour &colour, int line, int column) {
  const auto index = [&](int row) -> std::size_t { return ((row & 1) != 0 ? 2U : 0U) + ((column & 1) != 0 ? 1U : 0U); };
  return {colour.redBlueDither[index(line)], colour.greenDither[index(line)], colour.redBlueDither[index(line + 1)]};
}

} // namespace reference
