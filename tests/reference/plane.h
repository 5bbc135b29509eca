// A plane of samples as conversions to other types read it, and what is done with whole planes before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference {

/// Single samples, `step` bytes apart; pitch in bytes.
struct Plane {
  const uint8_t *data = nullptr;
  std::ptrdiff_t pitch = 0;
  int columns = 0;
  int lines = 0;
  int step = 1;

  /// Offset just behind the last sample.
  [[nodiscard]] std::ptrdiff_t end() const;
  /// An index past the last sample takes the last.
  [[nodiscard]] int at(int column, int line) const;
};

/// The second or third plane of a planar w x h picture of which `stride` is the first plane's.
Plane chromaPlane(int type, const uint8_t *data, int width, int height, int stride);

/// Sample of a chroma plane that is read at half the luma stride, half as wide as the picture, whatever its layout. A
/// line that does not lie wholly in the plane at that pitch gives way to the last one that does.
int atHalfPitch(const Plane &plane, int stride, int width, int column, int line);

/// A plane turned by a quarter, without gaps between its lines.
std::vector<uint8_t> turnedSamples(const Plane &plane, bool left);

/// The type whose layout the planes of type 0, 2, 4 or 37 have when they are turned.
int turnedLayout(int type);

} // namespace reference
