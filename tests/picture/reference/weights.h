// Samples of an input, weighed in integers: words in units of 1/128.
#pragma once

#include "picture/reference/own_picture.h"
#include "picture/reference/positions.h"

#include <cstdint>
#include <vector>

namespace reference {

struct Tap {
  int index;
  int64_t weight;
};

/// What an output sample is made of along one axis.
struct AxisSample {
  int nearest;      ///< the only one, if it is the same or the nearest
  int low;          ///< the sample at or before it
  int high;         ///< the next one
  int64_t distance; ///< from `low`, in units of 1/32768
  std::vector<Tap> taps;
  int bits; ///< weights of the taps sum up to 2^bits
};

struct AxisPlan {
  Way way;
  std::vector<AxisSample> samples; ///< by the number of the output sample
};
AxisPlan planAxis(const Axis &axis, Grid in, Grid out, int64_t count, int32_t filter);

/// A component of the input at the places of samples of the output.
class Resampled {
public:
  /// `outComponent` decides about the places.
  Resampled(const ZqpConversion &conversion, const OwnPicture &in, int component, int outComponent);
  /// At the output's sample `x` of line `y`, as they lie in the finished picture.
  [[nodiscard]] int word(int x, int y) const;

private:
  [[nodiscard]] int sample(int column, int line) const;
  [[nodiscard]] int bilinear(const AxisSample &column, const AxisSample &line) const;
  [[nodiscard]] int weighed(const AxisSample &column, const AxisSample &line) const;

  const OwnPicture *in_;
  int component_;
  bool swapsAxes_;
  int32_t filter_;
  AxisPlan columns_;
  AxisPlan lines_;
};

/// Samples of an input as 8 bits: those of RGB565 are enlarged.
int byteOf(const OwnPicture &picture, int component, int x, int y);

} // namespace reference
