// The share that samples of the input have in those of the output, in real numbers.
#pragma once

#include "picture/reference/own_picture.h"

#include <vector>

namespace reference {

struct Share {
  int index;
  double weight;
};
/// Shares of the input's columns, or lines, in each output sample.
using Shares = std::vector<std::vector<Share>>;

struct IdealShares {
  Shares columns; ///< by the number of the sample that follows the input's columns, as the finished picture counts
  Shares lines;
  bool swapsAxes;
};
IdealShares idealShares(const ZqpConversion &conversion, const Format &in, int component, int outComponent);

} // namespace reference
