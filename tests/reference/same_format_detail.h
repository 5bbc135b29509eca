// What the same-format reference's families share.
#pragma once

#include "reference/same_format_tables.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace reference::detail {

/// A plane of samples of `unit` bytes; positions outside it take the nearest sample inside.
struct Source {
  const uint8_t *bytes;
  int pitch;
  int columns;
  int lines;
  int unit = 1;

  [[nodiscard]] const uint8_t *sample(int x, int y) const {
    const int column = std::clamp(x, 0, columns - 1);
    const int line = std::clamp(y, 0, lines - 1);
    return bytes + static_cast<std::ptrdiff_t>(line) * pitch + static_cast<std::ptrdiff_t>(column) * unit;
  }
  [[nodiscard]] int operator()(int x, int y) const { return *sample(x, y); }
};

/// Where output sample (column, line) lies.
struct Target {
  uint8_t *bytes;
  int pitch;
  int unit = 1;

  [[nodiscard]] uint8_t *sample(int x, int y) const {
    return bytes + static_cast<std::ptrdiff_t>(y) * pitch + static_cast<std::ptrdiff_t>(x) * unit;
  }
};

inline std::size_t slot(int index) {
  return static_cast<std::size_t>(index);
}

inline bool quarterTurn(const ConvertParams &p) {
  return p.rotation == ROTATION_90_LEFT || p.rotation == ROTATION_90_RIGHT;
}

/// Q10 weights on both axes; `at(x, y)` gives a sample's value.
template <typename At>
int bilinear(const At &at, const Tap &x, const Tap &y) {
  const int top = at(x.at, y.at) * x.self + at(x.at + 1, y.at) * x.next;
  const int bottom = at(x.at, y.at + 1) * x.self + at(x.at + 1, y.at + 1) * x.next;
  return (top * y.self + bottom * y.next) >> 20;
}

/// Places an unturned output sample (x, y) of a w x h picture after a quarter turn.
inline uint8_t *placeTurned(const Target &target, uint32_t rotation, int x, int y, int w, int h) {
  return rotation == ROTATION_90_LEFT ? target.sample(y, w - 1 - x) : target.sample(h - 1 - y, x);
}

void convertPlanar(const ConvertParams &p);
void convertSemiPlanar(const ConvertParams &p);
void convertRgb16(const ConvertParams &p);
/// Input lines end `room` bytes behind their start.
void convertPacked(const ConvertParams &p, int room);

} // namespace reference::detail
