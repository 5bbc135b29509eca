// Means of five bilinear samples, a chunk of output columns at a time.
//
// With column weights (xs, xn) and line weights (ys, yn) a sample is floor(S / 2^20) of
//
//   S = v0 * xs + v1 * xn,  v0 = p00 * ys + p10 * yn,  v1 = p01 * ys + p11 * yn
//
// where p01 is the right neighbour and p10, p11 stand one line below. S is an exact integer, so that it does not matter
// which direction is mixed first; with xs + xn = 1024 it is v0 * 1024 + (v1 - v0) * xn. The five samples of a mean
// share nothing, whichever way they are made, unless a picture grows or nearly keeps its size: four loads and six
// products each. What can be saved is everything around them, so they are made tap by tap. All that belongs to the
// lines of a tap then stays in registers while the columns go by, and what belongs to the columns is prepared once for
// all lines.
#pragma once

#include "base/limits.h"
#include "kernels/taps.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Output columns that are made at a time, a multiple of eight: chunks of chroma begin where those of luma do.
inline constexpr int32_t kMeanChunk = 64;

/// Calls visit(first, count) with every chunk of `width` columns, each of which goes down the whole picture. The last
/// one comes first: where a stride is so short that output lines lie on one another, what a lower line writes must
/// stay, and it lies further left.
template <class Visit>
void forEachMeanChunk(int32_t width, Visit visit) {
  for (int32_t first = (width - 1) / kMeanChunk * kMeanChunk; first >= 0; first -= kMeanChunk) {
    visit(first, smaller(width - first, kMeanChunk));
  }
}

/// A tap at a column: how far into a line its sample stands, in bytes, and the neighbour's weight.
struct TapPlace {
  uint32_t at;
  int32_t next;
};

/// The lines of a tap: where both start, and where they do for the right neighbours.
struct TapLines {
  const uint8_t *top;
  const uint8_t *topNext;
  const uint8_t *bottom;
  const uint8_t *bottomNext;
  TapWeights weights;
};

/// Sums of five samples; those of a chunk that is not full are without meaning behind its last column.
using FiveSums = int32_t[kMeanChunk];

/// Makes `count` sums, a multiple of kColumnsAtOnce, from a tap's samples.
using SumSamples = void (*)(const TapLines &line, const TapPlace *columns, int32_t count, int32_t *sums);
inline constexpr int32_t kColumnsAtOnce = 4;

/// What is summed: the first tap's samples, and those of the others.
struct SampleKind {
  SumSamples set;
  SumSamples add;
};
/// The low 8 bits of every sample: a negative weight can lead outside 0..255.
extern const SampleKind LOW_BYTES;
/// The samples as they are.
extern const SampleKind WHOLE_SAMPLES;

/// A fifth, truncated, of the low bytes of five samples.
constexpr uint8_t fifthOfBytes(int32_t sum) {
  return static_cast<uint8_t>(static_cast<uint32_t>(sum) * 52429 >> 18);
}

/// The column taps of a chunk, for all planes that have them.
class FivePointColumns {
public:
  /// Of `count` outputs whose table entries follow one another, each tap read through `tapOf`. Neighbouring samples are
  /// `step` bytes apart.
  template <class TapOf>
  // cppcheck-suppress uninitMemberVar ; as many taps as are read
  FivePointColumns(const int32_t *entries, int32_t count, TapOf tapOf, std::ptrdiff_t step)
      : count_((count + kColumnsAtOnce - 1) / kColumnsAtOnce * kColumnsAtOnce) {
    for (int32_t i = 0; i < count_; ++i) {
      const int32_t *words = entries + smaller(i, count - 1) * kEntryWords<kFilterTaps>; // the last one fills up
      for (auto &taps : taps_) {
        const SampleTap tap = tapOf(words);
        taps[i] = {static_cast<uint32_t>(tap.self * step), tap.weights.next};
        neighbour_ = (tap.next - tap.self) * step; // the same for all: nothing if a line has a single sample
        words += kTapWords;
      }
    }
  }

  /// The sums of one output line of the plane that starts at `samples`, by its table entry.
  template <class TapOf>
  void sumLine(const uint8_t *samples, std::ptrdiff_t stride, const int32_t *entry, TapOf tapOf, const SampleKind &kind,
               FiveSums &sums) const {
    SumSamples sum = kind.set;
    for (const auto &columns : taps_) {
      const SampleTap tap = tapOf(entry);
      const uint8_t *top = samples + tap.self * stride;
      const uint8_t *bottom = samples + tap.next * stride;
      sum({top, top + neighbour_, bottom, bottom + neighbour_, tap.weights}, columns, count_, sums);
      sum = kind.add;
      entry += kTapWords;
    }
  }

private:
  TapPlace taps_[kFilterTaps][kMeanChunk];
  std::ptrdiff_t neighbour_ = 0;
  int32_t count_;
};

} // namespace zqcc
