#include "sameformat/packed422.h"

#include "base/limits.h"
#include "base/turn.h"
#include "kernels/copy_lines.h"
#include "sameformat/bilinear.h"
#include "sameformat/packed_line.h"

namespace zqcc {

namespace {

/// One output line. Chroma positions count groups and end at the last whole one; luma positions count pixels.
template <std::size_t taps, int luma, bool swapped>
class LineResizer {
public:
  explicit LineResizer(const Job &job)
      : xTable_(job.xTable), chromaTap_{job.params.inWidth / 2},
        lastSlot_(isCut(job.params.inWidth, job.inRoom) ? job.params.inWidth - 1
                                                        : groupsOf(job.params.inWidth) * 2 - 1) {}

  /// Group k of the line: output pixels 2k and 2k + 1.
  void makeGroup(const SourceLines (&lines)[taps], std::ptrdiff_t k, uint8_t (&bytes)[kGroupBytes]) const {
    makeLoneGroup(lines, k, bytes);
    bytes[kRightLuma] = lumaOf(lines, 2 * k + 1);
  }

  /// The group of a lone last pixel 2k. Nothing is sampled for the place beside it, whose luma stays 0.
  void makeLoneGroup(const SourceLines (&lines)[taps], std::ptrdiff_t k, uint8_t (&bytes)[kGroupBytes]) const {
    constexpr int chroma = 1 - luma;
    const auto firstByte = [](std::ptrdiff_t group) { return group * kGroupBytes + chroma; };
    const auto secondByte = [](std::ptrdiff_t group) { return group * kGroupBytes + chroma + 2; };
    bytes[chroma] = sampleByte<taps>(lines, entry(k), chromaTap_, firstByte);
    bytes[chroma + 2] = sampleByte<taps>(lines, entry(k), chromaTap_, secondByte);
    bytes[kLeftLuma] = lumaOf(lines, 2 * k);
    bytes[kRightLuma] = 0;
  }

private:
  static constexpr int kLeftLuma = swapped ? luma + 2 : luma;
  static constexpr int kRightLuma = swapped ? luma : luma + 2;

  [[nodiscard]] uint8_t lumaOf(const SourceLines (&lines)[taps], std::ptrdiff_t pixel) const {
    const auto byteOf = [this](std::ptrdiff_t at) { return slotOf(at) * 2 + luma; };
    return sampleByte<taps>(lines, entry(pixel), AsBuilt{}, byteOf);
  }

  [[nodiscard]] const int32_t *entry(std::ptrdiff_t position) const { return xTable_ + position * kEntryWords<taps>; }

  /// Place of a pixel's luma among the line's luma bytes. The lone pixel of a cut line is not exchanged with anything.
  [[nodiscard]] std::ptrdiff_t slotOf(std::ptrdiff_t pixel) const {
    if constexpr (swapped) {
      return smaller(pixel ^ 1, lastSlot_);
    } else {
      return pixel;
    }
  }

  const int32_t *xTable_;
  EvenAtEnd chromaTap_;
  std::ptrdiff_t lastSlot_;
};

template <std::size_t taps, int luma, bool swapped>
void resizeLines(const Job &job) {
  const ConvertParams &p = job.params;
  const LineResizer<taps, luma, swapped> resizer(job);
  const std::ptrdiff_t outPitch = p.outStride;
  const std::ptrdiff_t pairs = p.outWidth / 2;
  const auto tail = static_cast<std::size_t>(lineBytes(p.outWidth, outPitch) - pairs * kGroupBytes);
  for (int32_t j = 0; j < p.outHeight; ++j) {
    const SourceLineSet<taps, AsBuilt> lines(p.inBuf[0], p.inStride, job.yTable + j * kEntryWords<taps>, AsBuilt{});
    uint8_t *out = p.outBuf[0] + j * outPitch;
    uint8_t bytes[kGroupBytes];
    for (std::ptrdiff_t k = 0; k < pairs; ++k, out += kGroupBytes) {
      resizer.makeGroup(lines.pair, k, bytes);
      std::memcpy(out, bytes, sizeof bytes);
    }
    if (tail > 0) {
      resizer.makeLoneGroup(lines.pair, pairs, bytes);
      std::memcpy(out, bytes, tail);
    }
  }
}

/// resizeLines for the byte order of the picture.
template <std::size_t taps, bool swapped>
void resizeOrder(const Job &job) {
  if (packedOrder(job.packedVariant).luma == 0) {
    resizeLines<taps, 0, swapped>(job);
  } else {
    resizeLines<taps, 1, swapped>(job);
  }
}

/// Bits of a group that its two chroma bytes occupy.
uint32_t chromaMask(uint32_t variant) {
  return packedOrder(variant).luma == 0 ? 0xFF00FF00U : 0x00FF00FFU;
}

/// Source groups of a turn without resizing, by column and line in reading order.
template <class Line>
struct PlainGroups {
  Line reader;
  const uint8_t *first;
  std::ptrdiff_t step;
  int32_t lines; ///< the right turn's way up ends at the picture's first line, which then stands for what is missing

  [[nodiscard]] const uint8_t *line(int32_t t) const { return first + smaller(t, lines - 1) * step; }
  [[nodiscard]] uint32_t group(const uint8_t *line, int32_t s) const { return reader.group(line, s); }
};

/// Source groups picked by nearest-sample tables.
template <class Line>
struct PickedGroups {
  Line reader;
  const uint8_t *src;
  std::ptrdiff_t pitch;
  const int32_t *xTable;
  const int32_t *yFirst; ///< entry of the line read first
  std::ptrdiff_t yStep;

  [[nodiscard]] const uint8_t *line(int32_t t) const { return src + yFirst[t * yStep] * pitch; }
  [[nodiscard]] uint32_t group(const uint8_t *line, int32_t s) const { return reader.group(line, xTable[s]); }
};

/// Where the turned groups go and which of their bits are chroma of the first line.
struct TurnTarget {
  uint8_t *origin;     ///< the first source column's output line
  std::ptrdiff_t step; ///< to the next column's
  int32_t columns;     ///< pixels of a source line
  uint32_t mask;
};

/// Turns the groups [begin, end) of two source lines into two columns of pixels; `bytes` of each output group are
/// written. An odd last source column makes one output line.
template <std::size_t bytes, class Groups>
void turnLinePair(const Groups &groups, const uint8_t *a, const uint8_t *b, const TurnTarget &target, uint8_t *column,
                  int32_t begin, int32_t end) {
  for (int32_t s = begin; s < end; ++s) {
    const uint32_t first = groups.group(a, s);
    const uint32_t second = groups.group(b, s);
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

/// Turns `lines` source lines. A lone last one is its own partner; its output groups are cut where `wholeTail` is
/// false.
template <class Groups>
void turnGroups(const Groups &groups, const TurnTarget &target, int32_t lines, bool wholeTail) {
  // The output lines of a strip stay in the cache until every source line has passed.
  constexpr int32_t kStrip = 32;
  const int32_t all = groupsOf(target.columns);
  for (int32_t begin = 0; begin < all; begin += kStrip) {
    const int32_t end = begin + smaller(kStrip, all - begin);
    uint8_t *column = target.origin;
    for (int32_t t = 0; t < lines; t += 2, column += kGroupBytes) {
      const bool lone = t == lines - 1;
      const uint8_t *a = groups.line(t);
      const uint8_t *b = lone ? a : groups.line(t + 1);
      if (lone && !wholeTail) {
        turnLinePair<kGroupBytes / 2>(groups, a, b, target, column, begin, end);
      } else {
        turnLinePair<kGroupBytes>(groups, a, b, target, column, begin, end);
      }
    }
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
    run(CutLine{width / 2, packedOrder(job.packedVariant).chroma == 1 ? 0xFF00FF00U : 0x00FF00FFU});
  } else {
    run(WholeLine{});
  }
}

bool isEmpty(const ConvertParams &p) {
  return p.outWidth <= 0 || p.outHeight <= 0;
}

} // namespace

void copyPacked422(const Job &job) {
  const ConvertParams &p = job.params;
  const int64_t room = smaller<int64_t>(job.inRoom, p.outStride);
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, lineBytes(p.outWidth, room), p.outHeight);
}

void rotatePacked422(const Job &job) {
  const ConvertParams &p = job.params;
  if (isEmpty(p)) {
    return;
  }
  const uint32_t mask = packedOrder(job.packedVariant).swapped ? 0 : chromaMask(job.packedVariant);
  const bool left = turnOf(p.rotation) == Turn::Left;
  const std::ptrdiff_t pitch = p.inStride;
  const uint8_t *const first = left ? p.inBuf[0] : p.inBuf[0] + (p.inHeight - 1) * pitch;
  withReader(job, p.outWidth, [&](auto reader) {
    const PlainGroups<decltype(reader)> groups{reader, first, left ? pitch : -pitch, left ? p.outHeight : p.inHeight};
    turnGroups(groups, turnTarget(p, mask), p.outHeight, !isCut(p.outHeight, p.outStride));
  });
}

void resizePacked422Select(const Job &job) {
  if (packedOrder(job.packedVariant).swapped) {
    resizePacked422Swapped(job);
  } else if (job.params.antiAlias != 0) {
    resizePacked422AntiAlias(job);
  } else {
    resizePacked422(job);
  }
}

void resizePacked422(const Job &job) {
  resizeOrder<1, false>(job);
}

void resizePacked422Swapped(const Job &job) {
  resizeOrder<1, true>(job);
}

void resizePacked422AntiAlias(const Job &job) {
  resizeOrder<kFilterTaps, false>(job);
}

void resizeRotatePacked422(const Job &job) {
  const ConvertParams &p = job.params;
  if (isEmpty(p)) {
    return;
  }
  const bool left = turnOf(p.rotation) == Turn::Left;
  const int32_t *const yFirst = left ? job.yTable : job.yTable + (p.outHeight - 1);
  withReader(job, p.inWidth, [&](auto reader) {
    const PickedGroups<decltype(reader)> groups{reader, p.inBuf[0], p.inStride, job.xTable, yFirst, left ? 1 : -1};
    turnGroups(groups, turnTarget(p, chromaMask(job.packedVariant)), p.outHeight, !isCut(p.outHeight, p.outStride));
  });
}

} // namespace zqcc
