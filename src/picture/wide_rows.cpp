#include "picture/wide_rows.h"

namespace zqp {
namespace {

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}
int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// Aims the input at one segment of the span after another.
template <class Use>
void forSegments(const GridPlan &plan, InputRows &input, const Span &span, Use use) {
  const int32_t end = span.first + span.count;
  for (int32_t first = span.first; first < end; first += kSegment) {
    const Span segment = {first, smaller(kSegment, end - first)};
    const Span none = {0, 0};
    input.aim({plan.isOfChroma ? none : segment, plan.isOfChroma ? segment : none});
    use(segment);
  }
}

/// The samples of a line that outputs are made of, for each output that is made of one of the segment.
template <class Sample>
void gather(const uint8_t *row, const Span &segment, int32_t count, Sample sampleOf, uint8_t *to) {
  for (int32_t k = 0; k < count; ++k) {
    const int32_t sample = sampleOf(k);
    if (sample >= segment.first && sample < segment.first + segment.count) {
      to[k] = row[sample];
    }
  }
}

/// As docs say: to b by `next` of 32768.
int32_t mixed(int32_t a, int32_t b, int32_t next) {
  return a + (((b - a) * next + (1 << 14)) >> 15);
}

/// Both samples of outputs, of a line.
struct Ends {
  uint8_t at[4][kWideOutputs];
  uint8_t next[4][kWideOutputs];
};

void gatherEnds(const GridPlan &plan, InputRows &input, const Part &part, int32_t line, Ends &ends) {
  const Lerp *columns = plan.lerp.columns + part.first;
  const int32_t last = plan.columns.samples() - 1;
  forSegments(plan, input, spanOf(plan, part), [&](const Span &segment) {
    const uint8_t *rows[4];
    input.rows(plan.isOfChroma, line, rows);
    for (int32_t c = 0; c < plan.components; ++c) {
      gather(
          rows[c], segment, part.count, [&](int32_t k) { return columns[k].at; }, ends.at[c]);
      gather(
          rows[c], segment, part.count, [&](int32_t k) { return smaller(columns[k].at + 1, last); }, ends.next[c]);
    }
  });
}

int32_t mixedColumns(const Ends &ends, int32_t c, int32_t k, int32_t next) {
  return next == 0 ? ends.at[c][k] << kWordShift
                   : mixed(ends.at[c][k] << kWordShift, ends.next[c][k] << kWordShift, next);
}

/// Adds what a segment's words weigh in outputs.
void addWeighed(const int16_t *words, const Span &segment, const TapColumns &columns, const Part &part, int64_t *sums) {
  const int32_t end = segment.first + segment.count;
  for (int32_t k = 0; k < part.count; ++k) {
    const Taps &taps = columns.columns[part.first + k];
    const int32_t *weights = columns.weights + taps.weight;
    const int32_t stop = smaller(taps.first + taps.count, end);
    for (int32_t s = larger(taps.first, segment.first); s < stop; ++s) {
      sums[k] += int64_t{words[s - segment.first]} * weights[s - taps.first];
    }
  }
}

} // namespace

void pickWide(const GridPlan &plan, InputRows &input, const Part &part, int32_t line, uint8_t *const to[4]) {
  forSegments(plan, input, spanOf(plan, part), [&](const Span &segment) {
    const uint8_t *rows[4];
    input.rows(plan.isOfChroma, line, rows);
    for (int32_t c = 0; c < plan.components; ++c) {
      gather(
          rows[c], segment, part.count, [&](int32_t k) { return plan.at[part.first + k]; }, to[c]);
    }
  });
}

void lerpWide(const GridPlan &plan, InputRows &input, const Part &part, int32_t j, int16_t *const to[4]) {
  const Lerp lines = plan.lines.lerp(j);
  Ends upper{};
  Ends lower{};
  gatherEnds(plan, input, part, lines.at, upper);
  if (lines.next != 0) {
    gatherEnds(plan, input, part, lines.at + 1, lower);
  }
  for (int32_t c = 0; c < plan.components; ++c) {
    for (int32_t k = 0; k < part.count; ++k) {
      const int32_t next = plan.lerp.columns[part.first + k].next;
      const int32_t above = mixedColumns(upper, c, k, next);
      to[c][k] =
          static_cast<int16_t>(lines.next == 0 ? above : mixed(above, mixedColumns(lower, c, k, next), lines.next));
    }
  }
}

void tapWide(const GridPlan &plan, LineMeans &means, InputRows &input, const Part &part, int32_t j,
             int16_t *const to[4]) {
  int64_t sums[4][kWideOutputs] = {};
  forSegments(plan, input, spanOf(plan, part), [&](const Span &segment) {
    means.begin(j, segment);
    for (int32_t c = 0; c < plan.components; ++c) {
      addWeighed(means.component(c), segment, plan.taps, part, sums[c]);
    }
  });
  for (int32_t k = 0; k < part.count; ++k) {
    const int32_t bits = plan.taps.columns[part.first + k].count <= kFewTaps ? kFewTapsBits : kManyTapsBits;
    for (int32_t c = 0; c < plan.components; ++c) {
      to[c][k] = static_cast<int16_t>((sums[c][k] + (int64_t{1} << (bits - 1))) >> bits);
    }
  }
}

} // namespace zqp
