// Stages that find samples at other places: rows of bytes become rows of words, in units of 1/128.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqp {

/// A word of a sample is 128 times the sample.
inline constexpr int32_t kWordShift = 7;

/// Weights of a mean sum up to this: of up to kFewTaps samples, or of more.
inline constexpr int32_t kFewTaps = 16;
inline constexpr int32_t kFewTapsBits = 14;
inline constexpr int32_t kManyTapsBits = 23;

/// The sample of an output, and how much of 32768 the next one counts. Where that is nothing, no next one needs to be.
struct Lerp {
  int32_t at;
  int32_t next;
};

/// The samples that make an output: `count` from `first` on, with weights from weights[`weight`] on that sum up to 1 <<
/// kFewTapsBits, or 1 << kManyTapsBits where there are more than kFewTaps. From output to output neither the first
/// sample falls nor the last one.
struct Taps {
  int32_t first;
  int32_t count;
  int32_t weight;
};

/// A part of the columns, all of which are described by an array with an entry for each of the outputs that are made.
/// `at` and `first` count from the row's first sample that takes part on. Made by set-up, of memory that outlives it;
/// what vector code wants of it is laid out in `layout`, of layoutBytes() bytes that begin at a multiple of 64.
struct LerpColumns {
  const Lerp *columns;
  int32_t count;
  const uint8_t *layout;
};
struct TapColumns {
  const Taps *columns;
  const int32_t *weights;
  int32_t count;
  const uint8_t *layout;
};

/// Bytes of a layout, and the layout, of all outputs of a picture. Samples: how many there are from the first that
/// takes part on, all of which may be read.
size_t lerpLayoutBytes(int32_t outputs);
void layOutLerp(const Lerp *columns, int32_t outputs, int32_t samples, uint8_t *layout);
size_t tapLayoutBytes(int32_t outputs);
void layOutTaps(const Taps *columns, const int32_t *weights, int32_t outputs, int32_t samples, uint8_t *layout);

/// Outputs of a part begin at a multiple of this.
inline constexpr int32_t kColumnGroup = 64;

struct ScaleStages {
  /// Words of samples.
  void (*widen)(const uint8_t *from, int32_t count, int16_t *to);
  /// Outputs first to first + count - 1, `first` a multiple of kColumnGroup.
  void (*pick)(const uint8_t *from, const int32_t *at, int32_t count, uint8_t *to);
  void (*lerpColumns)(const uint8_t *from, const LerpColumns &columns, int32_t first, int32_t count, int16_t *to);
  /// A row between two, `next` of 32768 of the way to the lower one. The rows may be one and the same, and `to` one.
  void (*lerpLines)(const int16_t *upper, const int16_t *lower, int32_t next, int32_t count, int16_t *to);
  /// Samples of several lines, weighed. `lines[i]` is read from its beginning on.
  void (*addLines)(const uint8_t *const *lines, const int32_t *weights, int32_t lineCount, int32_t count, int16_t *to);
  /// The same for more lines than fit: sums, which begin at zero, and the words of finished sums.
  void (*addToSums)(const uint8_t *line, int32_t weight, int32_t count, uint32_t *sums);
  void (*wordsOfSums)(const uint32_t *sums, int32_t bits, int32_t count, int16_t *to);
  /// Outputs first to first + count - 1 of a row of words, of which from[0] is sample `start`.
  void (*tapColumns)(const int16_t *from, int32_t start, const TapColumns &columns, int32_t first, int32_t count,
                     int16_t *to);
};

} // namespace zqp
