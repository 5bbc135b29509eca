// Words for what went wrong in a plane: which edge was crossed, by how much, and the bytes side by side.
#pragma once

#include "support/guarded_pages.h"
#include "support/picture.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace containment {

/// A plane of a frame in its guarded pages.
struct PlaneInMemory {
  std::string name; ///< such as "output plane 0"
  support::PlaneShape shape;
  support::GuardedPages *pages = nullptr;
  int pixelBytes = 1; ///< bytes that are printed together
};

/// Names the place of a byte by its distance from the plane's first: inside the picture, in the padding of a line or
/// beyond one of the edges, with the number of bytes by which the edge was crossed.
std::string placeOf(const PlaneInMemory &plane, std::ptrdiff_t offset);

/// Empty when the plane holds exactly `expected`; else the number of differing bytes, the place of the first one and
/// the first differing lines, found and expected side by side.
std::string differences(const PlaneInMemory &plane, const uint8_t *expected, std::size_t bytes);

} // namespace containment
