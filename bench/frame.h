// Pictures as the benchmarks hand them to every library: planes at 64-byte boundaries, tight lines; and pictures
// between the steps of other libraries, whose lines begin at such boundaries too.
#pragma once

#include "jobs.h"

#include <array>
#include <cstdint>
#include <vector>

namespace bench {

/// Planes of a picture that somebody else owns.
struct View {
  int32_t type = 0;
  Size size{};
  std::array<uint8_t *, 3> plane{};
  std::array<int32_t, 3> stride{};
};

int32_t planeCount(int32_t type);
/// Samples (or, where a plane interleaves, bytes) of one line and number of lines of a plane.
Size planeSize(const View &view, int32_t index);
/// The same planes read or written from the last line up.
View bottomUp(const View &view);
/// The part that begins at a pixel and has a size, both multiples of what the chroma asks for.
View part(const View &view, int32_t left, int32_t top, const Size &size);

enum class Lines { Tight, Aligned };

class Frame {
public:
  Frame(int32_t type, const Size &size, Lines lines = Lines::Tight);
  ~Frame() = default;
  Frame(Frame &&) noexcept = default;
  Frame &operator=(Frame &&) noexcept = default;
  Frame(const Frame &) = delete; // the view points into the store
  Frame &operator=(const Frame &) = delete;
  [[nodiscard]] const View &view() const { return view_; }

  /// Smooth ramps with a little noise, different in every channel and in both directions, so that neither a turn nor
  /// an exchange of channels could pass unseen.
  void drawScene();

private:
  std::vector<uint8_t> store_;
  View view_;
};

/// Mean absolute difference of two pictures of one type and size, in steps of 8-bit channels, of the plane where it is
/// largest.
double largestDifference(const View &a, const View &b);

} // namespace bench
