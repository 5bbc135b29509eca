#include "yuv/yuv_to_yuv.h"

#include "base/limits.h"
#include "base/picture_shape.h"
#include "kernels/copy_lines.h"
#include "tables/packed_layout.h"
#include "vector/parts.h"
#include "vector/tile.h"

#include <cstring>

namespace zqcc {
namespace {

ChromaLimits chromaLimits(const ConvertParams &p) {
  const PictureSize planes = planesSize(p);
  return halfPitchLimits(p.inType, planes.width, planes.height, p.inStride);
}

/// Which chroma lines of the input make those of the output: every second one, and the last one for all below.
struct ChromaLines {
  int32_t last;
  int32_t even;   ///< lines of the output that are made of lines of even numbers
  int32_t made;   ///< these, and what is made of the last one
  int32_t copies; ///< lines below, copies of the last line made

  /// Output lines that overlap are all made in turn: what comes later stays.
  ChromaLines(const ChromaLimits &limits, int32_t lines, bool overlap)
      : last(limits.line), even(smaller(last / 2 + 1, lines)), made(overlap ? lines : smaller(even + 1, lines)),
        copies(lines - made) {}

  /// The input's line that makes line `k` of the output.
  [[nodiscard]] int32_t source(int32_t k) const { return smaller(2 * k, last); }
};

/// Copies of a line below it, as many at a time as there are already, but no more than leave the first-level cache.
void repeatLine(uint8_t *line, std::ptrdiff_t pitch, int32_t columns, int32_t copies) {
  constexpr int32_t kMostBytes = 8192;
  const int32_t most = columns < kMostBytes ? kMostBytes / larger(columns, 1) : 1;
  int32_t some = 0;
  for (int32_t done = 1; copies > 0; done += some, copies -= some) {
    some = smaller(smaller(done, most), copies);
    copyLines(line, pitch, line + done * pitch, pitch, columns, some);
  }
}

void copyChroma(const ConvertParams &p, int plane) {
  const int32_t columns = p.outWidth / 2;
  const ChromaLimits limits = chromaLimits(p);
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  const ChromaLines lines(limits, p.outHeight / 2, outPitch < columns);
  const auto whole = static_cast<std::size_t>(smaller(columns, limits.column + 1));
  const auto missing = static_cast<std::size_t>(columns) - whole;
  const std::ptrdiff_t inPitch = p.inStride >> 1;
  uint8_t *to = p.outBuf[plane];
  for (int32_t k = 0; k < lines.made; ++k, to += outPitch) {
    const uint8_t *from = p.inBuf[plane] + lines.source(k) * inPitch;
    std::memcpy(to, from, whole);
    std::memset(to + whole, from[limits.column], missing);
  }
  repeatLine(to - outPitch, outPitch, columns, lines.copies);
}

/// Pairs of samples into two planes.
void splitPairs(LevelSet levels, const PairLines &planes) {
  if (parted(levels, planes)) {
    return;
  }
  const PairLines all = planes; // a copy, which no store can change
  for (int32_t k = 0; k < all.lines; ++k) {
    const uint8_t *pairs = all.pairs + k * all.stride;
    uint8_t *first = all.first + k * all.pitch;
    uint8_t *second = all.second + k * all.pitch;
    for (int32_t i = 0; i < all.count; ++i) {
      first[i] = pairs[2 * i];
      second[i] = pairs[2 * i + 1];
    }
  }
}

/// copyChroma for both planes of pairs that have not been split. No sample is missing: the picture's input holds them.
void copyPairs(const Job &job) {
  const ConvertParams &p = job.params;
  const int32_t columns = p.outWidth / 2;
  const std::ptrdiff_t inPitch = p.inStride;
  const std::ptrdiff_t pitch = p.outStride >> 1;
  const ChromaLines lines(chromaLimits(p), p.outHeight / 2, pitch < columns);
  const int firstPlane = p.inType == COLOR_YUV420_PACK ? 1 : 2;
  uint8_t *first = p.outBuf[firstPlane];
  uint8_t *second = p.outBuf[3 - firstPlane];
  splitPairs(job.levels, {p.inBuf[1], 2 * inPitch, first, second, pitch, columns, lines.even});
  splitPairs(job.levels, {p.inBuf[1] + lines.last * inPitch, 0, first + lines.even * pitch, second + lines.even * pitch,
                          pitch, columns, lines.made - lines.even});
  repeatLine(first + (lines.made - 1) * pitch, pitch, columns, lines.copies);
  repeatLine(second + (lines.made - 1) * pitch, pitch, columns, lines.copies);
}

/// One line's luma, pixel pairs first, a lone last pixel from its own macropixel.
void unpackLuma(const uint8_t *from, uint8_t *to, int32_t width, const PackedLayout layout) {
  int32_t x = 0;
  for (; x + 1 < width; x += 2, from += kMacropixelBytes) {
    to[x] = from[layout.left];
    to[x + 1] = from[layout.right];
  }
  if (x < width) {
    to[x] = from[layout.left];
  }
}

void unpackChroma(const uint8_t *from, uint8_t *u, uint8_t *v, int32_t columns, const PackedLayout layout) {
  for (int32_t i = 0; i < columns; ++i, from += kMacropixelBytes) {
    u[i] = from[layout.u];
    v[i] = from[layout.v];
  }
}

/// Whole macropixels; a lone last pixel of each line is left. Where output lines overlap, the order of the stores
/// shows; it is that of the portable code.
bool unpackPairs(const Job &job, const PackedLayout &layout) {
  const ConvertParams &p = job.params;
  if (p.outStride < p.outWidth) {
    return false;
  }
  const bool uFirst = layout.u < layout.v;
  return parted(job.levels, MacropixelLines{p.inBuf[0], p.inStride, layout.isSwapped(), layout.firstChroma() == 0,
                                            p.outBuf[0], p.outStride, p.outBuf[uFirst ? 1 : 2],
                                            p.outBuf[uFirst ? 2 : 1], p.outStride >> 1, p.outWidth & ~1, p.outHeight});
}

} // namespace

void deinterleaveChroma(LevelSet levels, const ConvertParams &params, uint8_t *first, uint8_t *second) {
  if (params.inHeight < 2 || params.inWidth <= 0) {
    return;
  }
  const int32_t pairs = params.inWidth == 1 ? 1 : params.inWidth / 2;
  const std::ptrdiff_t pitch = params.inStride >> 1;
  splitPairs(levels, {params.inBuf[1], params.inStride, first, second, pitch, pairs, params.inHeight / 2});
}

void copyPlanarToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  copyLines(p.inBuf[0], p.inStride, p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  if (p.outHeight < 2) {
    return; // a single line has no chroma line
  }
  if (readsPairs(job)) {
    copyPairs(job);
    return;
  }
  copyChroma(p, 1);
  copyChroma(p, 2);
}

void convertPacked422ToYuv420Planar(const Job &job) {
  const ConvertParams &p = job.params;
  const PackedLayout layout = packedLayout(job.packedVariant);
  const int32_t pairs = p.outWidth / 2;
  const int32_t done = unpackPairs(job, layout) ? pairs : 0;
  const std::ptrdiff_t outPitch = p.outStride >> 1;
  for (int32_t j = 0; j < p.outHeight && 2 * done < p.outWidth; ++j) {
    const uint8_t *from = p.inBuf[0] + std::ptrdiff_t{j} * p.inStride + done * kMacropixelBytes;
    unpackLuma(from, p.outBuf[0] + std::ptrdiff_t{j} * p.outStride + 2 * done, p.outWidth - 2 * done, layout);
    if (j % 2 == 0 && j / 2 < p.outHeight / 2) {
      const std::ptrdiff_t line = j / 2 * outPitch + done;
      unpackChroma(from, p.outBuf[1] + line, p.outBuf[2] + line, pairs - done, layout);
    }
  }
}

} // namespace zqcc
