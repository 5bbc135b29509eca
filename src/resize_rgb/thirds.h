// Sampling in thirds: three quarters and three halves of a size. The fixed phases make groups of three outputs that all
// look alike: the first is a sample itself, the other two lie between it or the next sample and the two after that. A
// line of phase 0 takes one source line only.
#pragma once

#include "resize_rgb/samplers.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Three outputs of four samples.
struct ThreeQuarters {
  using Weights = ThreeQuarterWeights;
  static constexpr int32_t kSamples = 4; ///< from one group to the next
  static constexpr int32_t kMixed =
      1; ///< the second output mixes this sample and the next, the third that and the one behind
};

/// Three outputs of two samples.
struct ThreeHalves {
  using Weights = ThreeHalfWeights;
  static constexpr int32_t kSamples = 2;
  static constexpr int32_t kMixed = 0;
};

/// Samples of two output lines, made.
struct SampleRows {
  const uint8_t *row[2];

  template <int line>
  [[nodiscard]] int32_t at(int32_t i) const {
    return row[line][i];
  }
};

template <class Ratio>
class Thirds {
public:
  using Samples = SampleRows;

  // cppcheck-suppress uninitMemberVar ; rows are made before they are read
  Thirds(const uint8_t *plane, std::ptrdiff_t stride, const ColumnTaps &x)
      : plane_(plane), stride_(stride), x_(x), alike_(outputsAlike(x)) {}

  Samples lines(const TapPair &y) {
    make(y.first, rows_[0]);
    make(y.second, rows_[1]);
    return {{rows_[0], rows_[1]}};
  }

private:
  /// Outputs of whole groups in front of the first one whose tap is another: the last sample of a line holds back a tap
  /// that would go past it, and in pictures of millions of columns single precision misplaces them.
  static int32_t outputsAlike(const ColumnTaps &x) {
    int32_t i = 0;
    while (i < x.count) {
      const int32_t place = i % 3;
      const int32_t index = x.taps[0].index + i / 3 * Ratio::kSamples + (place > 0 ? Ratio::kMixed + place - 1 : 0);
      if (x.taps[i].index != index || x.taps[i].next != Ratio::Weights::tap(&index, place).next) {
        break;
      }
      ++i;
    }
    return i - i % 3;
  }

  /// Makes a line: groups as they come, then the others one by one. valueOf(column) is a sample times 1 << shift.
  template <int shift, class ValueOf>
  void makeWith(ValueOf valueOf, uint8_t *row) const {
    constexpr int32_t kUnused = 0;
    constexpr int32_t kNext[2] = {Ratio::Weights::tap(&kUnused, 1).next, Ratio::Weights::tap(&kUnused, 2).next};
    const auto sample = [](int32_t value) { return static_cast<uint8_t>(value >> shift); };
    const auto mixed = [](int32_t a, int32_t b, int32_t next) {
      return static_cast<uint8_t>(mix(a, b, next) >> (shift + kWeightBits));
    };
    int32_t column = x_.taps[0].index;
    for (const uint8_t *const end = row + alike_; row != end; row += 3, column += Ratio::kSamples) {
      const int32_t first = valueOf(column);
      const int32_t a = Ratio::kMixed == 0 ? first : valueOf(column + Ratio::kMixed);
      const int32_t b = valueOf(column + Ratio::kMixed + 1);
      const int32_t c = valueOf(column + Ratio::kMixed + 2);
      row[0] = sample(first);
      row[1] = mixed(a, b, kNext[0]);
      row[2] = mixed(b, c, kNext[1]);
    }
    for (int32_t i = alike_; i < x_.count; ++i) {
      const Tap tap = x_.taps[i];
      *row++ = mixed(valueOf(tap.index), valueOf(tap.index + 1), tap.next);
    }
  }

  [[gnu::noinline]] void make(Tap y, uint8_t *row) const {
    const uint8_t *top = plane_ + y.index * stride_;
    if (y.next == 0) {
      makeWith<0>([top](int32_t column) { return int32_t{top[column]}; }, row);
    } else {
      const uint8_t *bottom = top + stride_;
      makeWith<kWeightBits>([=](int32_t column) { return mix(top[column], bottom[column], y.next); }, row);
    }
  }

  const uint8_t *plane_;
  std::ptrdiff_t stride_;
  const ColumnTaps &x_;
  int32_t alike_;
  uint8_t rows_[2][kChunk];
};

} // namespace zqcc
