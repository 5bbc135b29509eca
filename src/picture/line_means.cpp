#include "picture/line_means.h"

#include <cstring>

namespace zqp {
void LineMeans::layOut(Arena &arena, int32_t samples) {
  row_ = arena.take<int16_t>(static_cast<std::size_t>(samples));
  if (input_.holds(plan_.isOfChroma, plan_.mostLines)) {
    return;
  }
  for (int32_t c = 0; c < plan_.components; ++c) {
    sums_[c] = arena.take<uint32_t>(static_cast<std::size_t>(samples));
  }
}

void LineMeans::begin(int32_t j, const Span &span) {
  span_ = span;
  taps_ = plan_.lineTaps.columns[j];
  areSummed_ = !input_.holds(plan_.isOfChroma, taps_.count);
  if (areSummed_) {
    for (int32_t c = 0; c < plan_.components; ++c) {
      std::memset(sums_[c], 0, static_cast<std::size_t>(span_.count) * sizeof(uint32_t));
    }
  }
  const int32_t *weights = plan_.lineTaps.weights + taps_.weight;
  for (int32_t i = 0; i < taps_.count; ++i) {
    const uint8_t *rows[4];
    input_.rows(plan_.isOfChroma, taps_.first + i, rows);
    for (int32_t c = 0; c < plan_.components; ++c) {
      const uint8_t *row = rows[c] + span_.first;
      if (areSummed_) {
        scale_.addToSums(row, weights[i], span_.count, sums_[c]);
      } else {
        lines_[c][i] = row;
      }
    }
  }
}

void LineMeans::component(int32_t c, int16_t *to) const {
  if (areSummed_) {
    scale_.wordsOfSums(sums_[c], taps_.count <= kFewTaps ? kFewTapsBits : kManyTapsBits, span_.count, to);
  } else if (taps_.count == 1) {
    scale_.widen(lines_[c][0], span_.count, to); // with all of the weight
  } else {
    scale_.addLines(lines_[c], plan_.lineTaps.weights + taps_.weight, taps_.count, span_.count, to);
  }
}

const int16_t *LineMeans::component(int32_t c) const {
  component(c, row_);
  return row_;
}

} // namespace zqp
