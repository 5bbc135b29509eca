// Pictures of the tests: memory with bytes around it and between its lines, and samples by their place.
#pragma once

#include "picture/reference/formats.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference {

/// How the planes lie in their memory.
struct Lie {
  int before = 0;  ///< bytes before each plane, which decide about its alignment
  int behind = 0;  ///< bytes behind the last pixel of each plane
  int padding = 0; ///< bytes between lines; each plane has one more than the one before it, unless it is none
  bool isBottomUp = false;
};

class OwnPicture {
public:
  /// All bytes are noise, those around the pixels too.
  OwnPicture(int32_t format, int width, int height, Lie lie = {}, uint32_t seed = 1);

  [[nodiscard]] const Format &format() const { return *format_; }
  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }

  /// Sample `x` of line `y` of a component, each counted in samples. Of packed 4:2:2 with an odd number of columns
  /// luma has one more than there are columns.
  [[nodiscard]] int sample(int component, int x, int y) const;
  void setSample(int component, int x, int y, int value);

  [[nodiscard]] ZqpPicture view();
  /// All memory of all planes.
  [[nodiscard]] const std::vector<std::vector<uint8_t>> &memory() const { return memory_; }

private:
  [[nodiscard]] std::size_t byteOf(int component, int x, int y) const;

  const Format *format_;
  int width_;
  int height_;
  Lie lie_;
  std::vector<int> strides_; ///< lengths; the sign is the lie's
  std::vector<std::vector<uint8_t>> memory_;
};

} // namespace reference
