// Means of several lines of the input, as words.
#pragma once

#include "picture/input_rows.h"
#include "rows/scale.h"

namespace zqp {

class LineMeans {
public:
  LineMeans(const GridPlan &plan, InputRows &input, const ScaleStages &scale)
      : plan_(plan), input_(input), scale_(scale) {}

  /// For at most so many samples.
  void layOut(Arena &arena, int32_t samples);

  /// The lines of line `j` of the grid, of which the input holds the span.
  void begin(int32_t j, const Span &span);
  /// Words of a component, the first of them of the span's first sample.
  void component(int32_t c, int16_t *to) const;
  /// The same, into a row that stays until the next component.
  [[nodiscard]] const int16_t *component(int32_t c) const;

private:
  const GridPlan &plan_;
  InputRows &input_;
  const ScaleStages &scale_;
  Span span_ = {};
  Taps taps_ = {};
  bool areSummed_ = false;
  const uint8_t *lines_[4][kFewTaps] = {};
  uint32_t *sums_[4] = {};
  int16_t *row_ = nullptr;
};

} // namespace zqp
