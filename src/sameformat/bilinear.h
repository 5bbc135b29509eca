// Bilinear sampling by table, written once for every same-format resizer.
//
// A table entry ("tap") holds three words: the position s of a source sample, the weight of sample s + 1 and the weight
// of sample s, both out of 1024. With column weights (xs, xn) and line weights (ys, yn) a sample is
//
//   ((p00 * xs + p01 * xn) * ys + (p10 * xs + p11 * xn) * yn) >> 20
//
// truncated, where p01 is the right neighbour and p10, p11 stand one line below. The filtered tables hold five taps a
// position; column tap k is paired with line tap k, and the result is the mean of the five samples, each of them
// truncated before they are summed. SampleWeights of filtered taps may lie outside 0..1024; they stay within
// -1024..2048, so that every sum fits into 32 bits.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zqcc {

inline constexpr std::ptrdiff_t kTapWords = 3;
inline constexpr std::size_t kFilterTaps = 5;

/// Words of a table entry of `taps` taps.
template <std::size_t taps>
inline constexpr std::ptrdiff_t kEntryWords = static_cast<std::ptrdiff_t>(taps) * kTapWords;

/// SampleWeights of a sample and of the one after it.
struct SampleWeights {
  int32_t self;
  int32_t next;
};

inline int32_t bilinear(int32_t p00, int32_t p01, int32_t p10, int32_t p11, SampleWeights x, SampleWeights y) {
  return ((p00 * x.self + p01 * x.next) * y.self + (p10 * x.self + p11 * x.next) * y.next) >> 20;
}

struct SampleTap {
  std::ptrdiff_t self; ///< position of the sample
  std::ptrdiff_t next; ///< position of its neighbour
  SampleWeights weights;
};

// How a table entry becomes a tap. Tables are built for the full picture; where they serve planes of half its size, the
// entries near the end may point past it.

/// The entry as set-up built it: both samples lie inside.
struct AsBuilt {
  SampleTap operator()(const int32_t *entry) const {
    return {entry[0], std::ptrdiff_t{entry[0]} + 1, {entry[2], entry[1]}};
  }
};

/// The last two of `count` samples; a single one serves twice.
inline SampleTap tapAtEnd(std::ptrdiff_t count, SampleWeights weights) {
  return {count > 1 ? count - 2 : 0, count - 1, weights};
}

/// At the last sample or past it: the even mean of the last two.
struct EvenAtEnd {
  std::ptrdiff_t count;
  SampleTap operator()(const int32_t *entry) const {
    return entry[0] < count - 1 ? AsBuilt{}(entry) : tapAtEnd(count, {512, 512});
  }
};

/// At the last sample or past it: the last two, weighed as the entry says.
struct HeldAtEnd {
  std::ptrdiff_t count;
  SampleTap operator()(const int32_t *entry) const {
    return entry[0] < count - 1 ? AsBuilt{}(entry) : tapAtEnd(count, {entry[2], entry[1]});
  }
};

/// The two source lines of a line tap.
struct SourceLines {
  const uint8_t *self;
  const uint8_t *next;
  SampleWeights weights;
};

inline SourceLines linePair(const uint8_t *plane, std::ptrdiff_t pitch, const SampleTap &tap) {
  return {plane + tap.self * pitch, plane + tap.next * pitch, tap.weights};
}

/// The line pairs of one output line: its entry of `taps` taps, read through `lineTap`.
template <std::size_t taps, class LineTap>
struct SourceLineSet {
  SourceLines pair[taps];
  // cppcheck-suppress uninitMemberVar ; the body fills every pair
  SourceLineSet(const uint8_t *plane, std::ptrdiff_t pitch, const int32_t *entry, LineTap lineTap) {
    for (SourceLines &each : pair) {
      each = linePair(plane, pitch, lineTap(entry));
      entry += kTapWords;
    }
  }
};

/// One output byte: the mean of its paired taps (a single tap is its own mean). `byteOf` gives the place in the line of
/// the sample at a position. The mean of filtered taps can lie outside 0..255; its low byte is kept.
template <std::size_t taps, class ColumnTap, class ByteOf>
uint8_t sampleByte(const SourceLines (&lines)[taps], const int32_t *entry, ColumnTap columnTap, ByteOf byteOf) {
  int32_t sum = 0;
  for (const SourceLines &line : lines) {
    const SampleTap tap = columnTap(entry);
    entry += kTapWords;
    const std::ptrdiff_t self = byteOf(tap.self);
    const std::ptrdiff_t next = byteOf(tap.next);
    sum += bilinear(line.self[self], line.self[next], line.next[self], line.next[next], tap.weights, line.weights);
  }
  return static_cast<uint8_t>(sum / static_cast<int32_t>(taps));
}

} // namespace zqcc
