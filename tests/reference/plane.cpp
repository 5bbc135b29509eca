#include "reference/plane.h"

#include <algorithm>

namespace reference {

std::ptrdiff_t Plane::end() const {
  return static_cast<std::ptrdiff_t>(lines - 1) * pitch + static_cast<std::ptrdiff_t>(columns - 1) * step + 1;
}

int Plane::at(int column, int line) const {
  const std::ptrdiff_t x = std::clamp(column, 0, columns - 1);
  const std::ptrdiff_t y = std::clamp(line, 0, lines - 1);
  return data[y * pitch + x * step];
}

Plane chromaPlane(int type, const uint8_t *data, int width, int height, int stride) {
  switch (type) {
  case 1:
  case 13:
    return {data, stride >> 1, width / 2, height};
  case 2:
    return {data, stride, width, height / 2};
  case 3:
  case 12:
    return {data, stride >> 1, width / 2, height / 2};
  case 4:
    return {data, stride >> 2, width / 4, height};
  case 37:
    return {data, stride, width, height / 4};
  default: // 0 and 34
    return {data, stride, width, height};
  }
}

int atHalfPitch(const Plane &plane, int stride, int width, int column, int line) {
  const std::ptrdiff_t pitch = stride >> 1;
  const std::ptrdiff_t samples = std::max(width / 2, 1);
  const std::ptrdiff_t lastStart = std::max<std::ptrdiff_t>(plane.end() - samples, 0);
  const std::ptrdiff_t lastLine = pitch > 0 ? lastStart / pitch : line;
  const std::ptrdiff_t start = std::min<std::ptrdiff_t>(line, lastLine) * pitch;
  return plane.data[std::min(start + std::min<std::ptrdiff_t>(column, samples - 1), plane.end() - 1)];
}

std::vector<uint8_t> turnedSamples(const Plane &plane, bool left) {
  std::vector<uint8_t> samples(static_cast<std::size_t>(plane.columns) * static_cast<std::size_t>(plane.lines));
  for (int y = 0; y < plane.lines; ++y) {
    for (int x = 0; x < plane.columns; ++x) {
      const std::ptrdiff_t line = left ? plane.columns - 1 - x : x;
      const std::ptrdiff_t column = left ? y : plane.lines - 1 - y;
      samples[static_cast<std::size_t>(line * plane.lines + column)] = static_cast<uint8_t>(plane.at(x, y));
    }
  }
  return samples;
}

int turnedLayout(int type) {
  switch (type) {
  case 2:
    return 1;
  case 4:
    return 37;
  case 37:
    return 4;
  default:
    return type;
  }
}

} // namespace reference
