// Which samples of an input component make the samples of an output grid, along one axis. Positions are fractions of
// whole numbers, so that they are exact.
#pragma once

#include "rows/scale.h"

#include <cstdint>

namespace zqp {

enum class Sampling : int32_t { Same, Nearest, Bilinear, Area };

/// The samples of an output component along an axis of the picture before the turn.
struct OutputAxis {
  int32_t pixels; ///< of the output along the axis
  int32_t shift;
  bool isLeft;     ///< each sample on the first pixel that it stands for
  bool isMirrored; ///< the finished picture counts from the other end
};

struct InputAxis {
  int32_t start; ///< of the crop
  int32_t pixels;
  int32_t shift;
  bool isLeft;
};

class Axis {
public:
  Axis(const OutputAxis &out, const InputAxis &in, int32_t filter);

  [[nodiscard]] Sampling sampling() const { return sampling_; }
  [[nodiscard]] int32_t outputs() const { return outputs_; }
  /// The samples of the input that take part: the first one's number in its plane, and how many.
  [[nodiscard]] int32_t firstSample() const { return first_; }
  [[nodiscard]] int32_t samples() const { return samples_; }

  // What makes output k; samples are counted from the first one that takes part.
  [[nodiscard]] int32_t nearest(int32_t k) const;
  [[nodiscard]] Lerp lerp(int32_t k) const;
  /// Of any sampling. `weights`, unless null, gets as many numbers as there are taps; Taps::weight is left at 0.
  Taps taps(int32_t k, int32_t *weights) const;
  /// Whether output k is the mean of samples 2 k and 2 k + 1, or of the last sample alone.
  [[nodiscard]] bool halves() const;
  /// Whether output k is a quarter, a half and a quarter of samples 2 k - 1 to 2 k + 1, or what of that is at the ends.
  [[nodiscard]] bool halvesLeft() const;

private:
  [[nodiscard]] int64_t twiceCentre(int32_t k) const;
  [[nodiscard]] int64_t place(int64_t twicePosition) const;
  Taps mean(int32_t k, int32_t *weights) const;

  OutputAxis out_;
  InputAxis in_;
  Sampling sampling_;
  int32_t outputs_;
  int32_t first_;
  int32_t samples_;
  int64_t unit_; ///< of places: a sample
};

} // namespace zqp
