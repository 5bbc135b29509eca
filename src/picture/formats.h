// What the formats are: how many planes, how chroma is subsampled, in what order components lie.
#pragma once

#include "rows/fetch.h"

#include <cstddef>
#include <cstdint>

namespace zqp {

enum class Family : int32_t { Planar, SemiPlanar, Grey, Packed422, Rgb565, Rgb24, Rgb32, RgbPlanes };

/// A sample of chroma for 2^x columns and 2^y lines.
struct Shifts {
  int32_t x;
  int32_t y;
};

struct Format {
  int32_t id;
  Family family;
  bool isOutput;
  bool isSwapped;    ///< V before U, blue before red, or the upper byte first
  Shifts chroma;     ///< of YUV
  PackedOrder order; ///< of packed 4:2:2

  [[nodiscard]] constexpr bool isRgb() const { return family >= Family::Rgb565; }
  [[nodiscard]] constexpr bool isGrey() const { return family == Family::Grey; }
  [[nodiscard]] constexpr bool hasAlpha() const { return family == Family::Rgb32; }
  [[nodiscard]] int32_t planes() const;
};

/// Null if there is no such format.
const Format *formatOf(int32_t id);

/// Samples of `pixels` columns or lines.
constexpr int32_t samplesOf(int32_t pixels, int32_t shift) {
  return (pixels + (1 << shift) - 1) >> shift;
}

struct PlaneShape {
  std::size_t lineBytes;
  int32_t lines;
};
PlaneShape planeShape(const Format &format, int32_t width, int32_t height, int32_t plane);

/// Where a part begins in a plane: bytes of a line before column `x`, lines before line `y`, both of whole samples.
PlaneShape placeInPlane(const Format &format, int32_t x, int32_t y, int32_t plane);

/// Columns and lines that share a sample in some plane.
Shifts wholeSamples(const Format &format);

} // namespace zqp
