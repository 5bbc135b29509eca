// Where the samples of a source pixel lie, for every planar, semi-planar and packed type.
#pragma once

#include "reference/colour_arith.h"
#include "reference/plane.h"
#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace reference::direct {

/// Which line of a full-height half-width chroma plane serves luma line y: the pair's first line, the line itself, or
/// line y / 2 (read as if the plane were 4:2:0).
enum class ChromaLines { FirstOfPair, Own, Halved };

/// The planes of a planar or semi-planar picture in the order Y, U, V (or red, green, blue). With isResize 0 the
/// picture is as large as the output fields say. With isResize 1 it is the input's, from which the output's size is cut
/// out: the planes, their last samples and their last lines do not depend on what is cut out of them.
class PlanarSource {
public:
  explicit PlanarSource(const ConvertParams &p);

  [[nodiscard]] int luma(int x, int y) const { return planes_[0].at(x, y); }
  /// The chroma sample of the type's own layout.
  [[nodiscard]] Chroma chroma(int x, int y, ChromaLines lines) const;
  /// Sample `column` of line `line` of a chroma plane, read at half the luma pitch whatever the layout.
  [[nodiscard]] int halfPitch(int plane, int column, int line) const;
  /// Chroma of the 24-bit converters, which know only half-width planes.
  [[nodiscard]] Chroma chromaAsHalfWidth(int x, int y) const;
  /// Planar RGB, truncated.
  [[nodiscard]] uint16_t rgb565(int x, int y) const;
  [[nodiscard]] bool is420() const { return type_ == 3; }

private:
  int type_;
  int width_;
  int stride_;
  std::array<Plane, 3> planes_;
};

/// One packed 4:2:2 plane.
class PackedSource {
public:
  explicit PackedSource(const ConvertParams &p);
  [[nodiscard]] int luma(int x, int y) const;
  /// Chroma of the group that holds column x of line y.
  [[nodiscard]] Chroma chroma(int x, int y) const;

private:
  [[nodiscard]] const uint8_t *group(int x, int y) const;
  const uint8_t *base_;
  int stride_;
  std::array<std::size_t, 2> lumaAt_{};
  std::size_t uAt_ = 0;
  std::size_t vAt_ = 0;
};

} // namespace reference::direct
