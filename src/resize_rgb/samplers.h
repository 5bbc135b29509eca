// How the samples of two output lines are made. A sampler is built for a plane and the column taps of a chunk; lines(y)
// gives samples whose at<line>(i) is sample i of the upper (0) or lower (1) output line.
#pragma once

#include "base/table_format.h"
#include "kernels/tap_pairs.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Output columns that are made at a time.
inline constexpr int32_t kChunk = 120;

/// Column taps of a chunk.
struct ColumnTaps {
  int32_t count;
  Tap taps[kChunk];
};

/// Weighted mean of two samples times 1024; exact for weights outside 0..1024 too.
constexpr int32_t mix(int32_t a, int32_t b, int32_t next) {
  return a * kWholeWeight + (b - a) * next;
}

/// Source lines interpolated along the line, times 1024, each made once and kept while the output lines need it. step
/// is the distance of neighbouring samples in bytes.
template <int step>
class InterpolatedRows {
public:
  struct Pair {
    const int32_t *top;
    const int32_t *bottom;
  };

  // Rows are filled before they are read; clearing them would cost more than a small picture.
  // cppcheck-suppress uninitMemberVar
  InterpolatedRows(const uint8_t *plane, std::ptrdiff_t stride, const ColumnTaps &x)
      : plane_(plane), stride_(stride), x_(x) {}

  /// Rows `line` and `line` + 1. Lines come in rising order, and the rows of the call before stay as they are, so that
  /// two output lines can be made side by side.
  Pair at(int32_t line) {
    if (line == line_ + 1) {
      rotate({1, 2, 0, 3});
      fill(slots_[1], line + 1);
    } else if (line != line_) {
      rotate({2, 3, 0, 1});
      fill(slots_[0], line);
      fill(slots_[1], line + 1);
    }
    line_ = line;
    return {slots_[0], slots_[1]};
  }

private:
  struct Order {
    int at[4];
  };

  void rotate(const Order &order) {
    int32_t *const before[4] = {slots_[0], slots_[1], slots_[2], slots_[3]};
    for (int i = 0; i < 4; ++i) {
      slots_[i] = before[order.at[i]];
    }
  }

  void fill(int32_t *row, int32_t line) const {
    const uint8_t *from = plane_ + line * stride_;
    const Tap *tap = x_.taps;
    for (const Tap *const end = tap + x_.count; tap != end; ++tap) {
      const uint8_t *at = from + std::ptrdiff_t{tap->index} * step;
      *row++ = mix(at[0], at[step], tap->next);
    }
  }

  const uint8_t *plane_;
  std::ptrdiff_t stride_;
  const ColumnTaps &x_;
  int32_t rows_[4][kChunk];
  int32_t *slots_[4] = {rows_[0], rows_[1], rows_[2], rows_[3]}; ///< the current two rows, then the free ones
  int32_t line_ = -2;
};

/// Bilinear samples of two lines, times 2^20.
struct MixedRows {
  InterpolatedRows<1>::Pair rows[2];
  int32_t next[2];

  template <int line>
  [[nodiscard]] int32_t sum(int32_t i) const {
    return mix(rows[line].top[i], rows[line].bottom[i], next[line]);
  }
  template <int line>
  [[nodiscard]] int32_t at(int32_t i) const {
    return sum<line>(i) >> (2 * kWeightBits);
  }
};

template <int step>
MixedRows mixedRows(InterpolatedRows<step> &rows, const TapPair &y) {
  const auto upper = rows.at(y.first.index);
  const auto lower = rows.at(y.second.index);
  return {{{upper.top, upper.bottom}, {lower.top, lower.bottom}}, {y.first.next, y.second.next}};
}

class Bilinear {
public:
  using Samples = MixedRows;
  Bilinear(const uint8_t *plane, std::ptrdiff_t stride, const ColumnTaps &x) : rows_(plane, stride, x) {}
  Samples lines(const TapPair &y) { return mixedRows(rows_, y); }

private:
  InterpolatedRows<1> rows_;
};

/// Samples as the plane has them, for two output lines.
struct PlaneSamples {
  const uint8_t *row[2];
  std::ptrdiff_t stride;
  const Tap *taps;
};

/// Sampler whose Samples read the plane themselves.
template <class SamplesOfPlane>
class Uninterpolated {
public:
  using Samples = SamplesOfPlane;
  Uninterpolated(const uint8_t *plane, std::ptrdiff_t stride, const ColumnTaps &x)
      : plane_(plane), stride_(stride), taps_(x.taps) {}
  [[nodiscard]] Samples lines(const TapPair &y) const {
    return {{{plane_ + y.first.index * stride_, plane_ + y.second.index * stride_}, stride_, taps_}};
  }

private:
  const uint8_t *plane_;
  std::ptrdiff_t stride_;
  const Tap *taps_;
};

/// The tap's own sample: reductions by powers of two drop the others.
struct PointSamples : PlaneSamples {
  template <int line>
  [[nodiscard]] int32_t at(int32_t i) const {
    return row[line][taps[i].index];
  }
};
using Point = Uninterpolated<PointSamples>;

/// Doubling: the first pixel and line of a pair are samples, the second ones truncated means with their neighbours.
struct PairAverageSamples : PlaneSamples {
  template <int line>
  [[nodiscard]] int32_t at(int32_t i) const {
    const uint8_t *from = row[line] + taps[i].index;
    const bool second = i % 2 != 0;
    if constexpr (line == 0) {
      return second ? (from[0] + from[1]) >> 1 : from[0];
    } else {
      return second ? (from[0] + from[1] + from[stride] + from[stride + 1]) >> 2 : (from[0] + from[stride]) >> 1;
    }
  }
};
using PairAverage = Uninterpolated<PairAverageSamples>;

} // namespace zqcc
