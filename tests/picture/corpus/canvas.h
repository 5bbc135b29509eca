// Pictures in memory of their own, laid out by the library: noise between guards, at any alignment, with any strides.
// Over the public interface alone, so that the corpus builds for every platform and uses the shared library.
#pragma once

#include "corpus/noise.h"
#include "zqPicture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corpus {

struct Shape {
  int32_t format, width, height;
};

/// How the planes lie in their memory.
struct Lie {
  unsigned misalign;
  uint32_t strideAlignment;
  bool isBottomUp;
};

class Canvas {
public:
  /// All of it is noise, guards and padding too.
  Canvas(const Shape &shape, const Lie &lie, uint32_t seed);

  [[nodiscard]] const ZqpPicture &view() const { return view_; }
  /// Planes, padding and guards alike.
  void addTo(Hash &hash) const { hash.add(block_, bytes_); }

private:
  std::vector<uint8_t> store_;
  uint8_t *block_ = nullptr;
  std::size_t bytes_ = 0;
  ZqpPicture view_{};
};

} // namespace corpus
