// What a picture should be: a conversion in real numbers, of which nothing is rounded.
#pragma once

#include "picture/reference/own_picture.h"

#include <cstddef>
#include <vector>

namespace reference {

/// The samples of a component, in the numbers of its bits, held between 0 and the largest.
struct IdealPlane {
  int columns;
  int lines;
  std::vector<double> samples;

  [[nodiscard]] double at(int x, int y) const { return samples[static_cast<std::size_t>(y * columns + x)]; }
};

/// By component.
std::vector<IdealPlane> idealOf(const ZqpConversion &conversion, const OwnPicture &in);

} // namespace reference
