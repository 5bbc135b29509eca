#include "sameformat/packed422.h"

#include "base/limits.h"
#include "base/turn.h"
#include "kernels/copy_lines.h"
#include "sameformat/packed_line.h"
#include "vector/nearest_packed.h"
#include "vector/turns.h"

namespace zqcc {

namespace {

/// Bits of a macropixel that its two chroma bytes occupy.
uint32_t chromaMask(const PackedLayout &layout) {
  return layout.firstChroma() == 0 ? 0x00FF00FFU : 0xFF00FF00U;
}

/// Source macropixels of a turn without resizing, by column and line in reading order.
template <class Line>
struct PlainSource {
  Line reader;
  const uint8_t *first;
  std::ptrdiff_t step;
  int32_t lines; ///< the right turn's way up ends at the picture's first line, which then stands for what is missing

  [[nodiscard]] const uint8_t *line(int32_t t) const { return first + smaller(t, lines - 1) * step; }
  [[nodiscard]] uint32_t macropixel(const uint8_t *line, int32_t s) const { return reader.macropixel(line, s); }
};

/// Source macropixels picked by nearest-sample tables.
template <class Line>
struct PickedSource {
  Line reader;
  const uint8_t *src;
  std::ptrdiff_t pitch;
  const int32_t *xTable;
  const int32_t *yFirst; ///< entry of the line read first
  std::ptrdiff_t yStep;

  [[nodiscard]] const uint8_t *line(int32_t t) const { return src + yFirst[t * yStep] * pitch; }
  [[nodiscard]] uint32_t macropixel(const uint8_t *line, int32_t s) const { return reader.macropixel(line, xTable[s]); }
};

/// Where the turned macropixels go and which of their bits are chroma of the first line.
struct TurnTarget {
  uint8_t *origin;     ///< the first source column's output line
  std::ptrdiff_t step; ///< to the next column's
  int32_t columns;     ///< pixels of a source line
  uint32_t mask;
};

/// Turns the macropixels [begin, end) of two source lines into two columns of pixels; `bytes` of each output macropixel
/// are written. An odd last source column makes one output line.
template <std::size_t bytes, class Source>
void turnLinePair(const Source &source, const uint8_t *a, const uint8_t *b, const TurnTarget &target, uint8_t *column,
                  int32_t begin, int32_t end) {
  for (int32_t s = begin; s < end; ++s) {
    const uint32_t first = source.macropixel(a, s);
    const uint32_t second = source.macropixel(b, s);
    const uint32_t kept = first & target.mask;
    const uint32_t left = (((first & 0xFFFFU) | second << 16) & ~target.mask) | kept;
    const uint32_t right = (((second & 0xFFFF0000U) | first >> 16) & ~target.mask) | kept;
    uint8_t *out = column + std::ptrdiff_t{s} * 2 * target.step;
    std::memcpy(out, &left, bytes);
    if (2 * s + 1 < target.columns) {
      std::memcpy(out + target.step, &right, bytes);
    }
  }
}

/// What of a picture is turned already: the first macropixels of the first lines.
struct Turned {
  int32_t macropixels;
  int32_t lines;
};

/// Turns the macropixels from `firstMacropixel` on of the lines from the even line `firstLine` to `lines`. A lone last
/// line is its own partner; its output macropixels are cut where `wholeTail` is false.
template <class Source>
void turnMacropixels(const Source &source, const TurnTarget &target, int32_t firstMacropixel, int32_t firstLine,
                     int32_t lines, bool wholeTail) {
  // The output lines of a strip stay in the cache until every source line has passed.
  constexpr int32_t kStrip = 32;
  const int32_t all = macropixelsOf(target.columns);
  for (int32_t begin = firstMacropixel; begin < all; begin += kStrip) {
    const int32_t end = begin + smaller(kStrip, all - begin);
    uint8_t *column = target.origin + firstLine * (kMacropixelBytes / 2);
    for (int32_t t = firstLine; t < lines; t += 2, column += kMacropixelBytes) {
      const bool lone = t == lines - 1;
      const uint8_t *a = source.line(t);
      const uint8_t *b = lone ? a : source.line(t + 1);
      if (lone && !wholeTail) {
        turnLinePair<kMacropixelBytes / 2>(source, a, b, target, column, begin, end);
      } else {
        turnLinePair<kMacropixelBytes>(source, a, b, target, column, begin, end);
      }
    }
  }
}

/// Where output lines overlap, the order of the stores shows; it is that of the portable code.
bool turnedLinesOverlap(const ConvertParams &p) {
  return p.outStride / (kMacropixelBytes / 2) < p.outHeight;
}

/// Turns pairs of lines and pairs of columns by vector code. The lines are those that the input has.
template <class Source>
Turned turnPairs(const Job &job, const Source &source, const TurnTarget &target) {
  const ConvertParams &p = job.params;
  const int32_t lines = smaller(source.lines, p.outHeight) & ~1;
  const int32_t columns = target.columns & ~1;
  const LineExchange pairs{source.first, source.step, target.origin, target.step, columns, lines};
  if (turnedLinesOverlap(p) || !turnedByBlocks(job.levels, packedLayout(job.packedVariant), pairs)) {
    return {0, 0};
  }
  return {columns / 2, lines};
}

/// The same of lines and columns that tables pick.
template <class Source>
Turned turnPickedPairs(const Job &job, const Source &source, const TurnTarget &target) {
  const ConvertParams &p = job.params;
  const int32_t lines = p.outHeight & ~1;
  const int32_t columns = target.columns & ~1;
  const int32_t whole = isCut(p.inWidth, job.inRoom) ? p.inWidth / 2 : macropixelsOf(p.inWidth);
  const PickedMacropixels pairs{source.src,   source.pitch,  whole,       source.xTable, source.yFirst,
                                source.yStep, target.origin, target.step, columns,       lines};
  if (turnedLinesOverlap(p) || !pickedMacropixelsTurned(job.levels, packedLayout(job.packedVariant), pairs)) {
    return {0, 0};
  }
  return {columns / 2, lines};
}

/// What vector code has left: lines below, and a column beside what it has turned.
template <class Source>
void turnRest(const Source &source, const TurnTarget &target, const Turned &turned, const ConvertParams &p) {
  turnMacropixels(source, target, 0, turned.lines, p.outHeight, !isCut(p.outHeight, p.outStride));
  if (turned.lines > 0) {
    turnMacropixels(source, target, turned.macropixels, 0, turned.lines, true);
  }
}

TurnTarget turnTarget(const ConvertParams &p, uint32_t mask) {
  const std::ptrdiff_t pitch = p.outStride;
  if (turnOf(p.rotation) == Turn::Left) {
    return {p.outBuf[0] + (p.outWidth - 1) * pitch, -pitch, p.outWidth, mask};
  }
  return {p.outBuf[0], pitch, p.outWidth, mask};
}

/// Calls `run` with the reader that fits lines of `width` pixels.
template <class Run>
void withReader(const Job &job, int32_t width, Run run) {
  if (isCut(width, job.inRoom)) {
    run(CutLine{width / 2, chromaMask(packedLayout(job.packedVariant))});
  } else {
    run(WholeLine{});
  }
}

} // namespace

void copyPacked422(const Job &job) {
  const ConvertParams &p = job.params;
  const auto room = smaller<int64_t>(job.inRoom, p.outStride);
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, lineBytes(p.outWidth, room), p.outHeight);
}

void rotatePacked422(const Job &job) {
  const ConvertParams &p = job.params;
  const PackedLayout layout = packedLayout(job.packedVariant);
  const uint32_t mask = layout.isSwapped() ? 0 : chromaMask(layout);
  const bool left = turnOf(p.rotation) == Turn::Left;
  const std::ptrdiff_t pitch = p.inStride;
  const uint8_t *const first = left ? p.inBuf[0] : p.inBuf[0] + (p.inHeight - 1) * pitch;
  withReader(job, p.outWidth, [&](auto reader) {
    const PlainSource<decltype(reader)> source{reader, first, left ? pitch : -pitch, left ? p.outHeight : p.inHeight};
    const TurnTarget target = turnTarget(p, mask);
    const Turned turned = turnPairs(job, source, target);
    turnRest(source, target, turned, p);
  });
}

void resizeRotatePacked422(const Job &job) {
  const ConvertParams &p = job.params;
  const bool left = turnOf(p.rotation) == Turn::Left;
  const int32_t *const yFirst = left ? job.yTable : job.yTable + (p.outHeight - 1);
  withReader(job, p.inWidth, [&](auto reader) {
    const PickedSource<decltype(reader)> source{reader, p.inBuf[0], p.inStride, job.xTable, yFirst, left ? 1 : -1};
    const TurnTarget target = turnTarget(p, chromaMask(packedLayout(job.packedVariant)));
    const Turned turned = turnPickedPairs(job, source, target);
    turnRest(source, target, turned, p);
  });
}

} // namespace zqcc
