// The loops of every resizing conversion to RGB565: chunks of columns as the grouped tables list them, each down the
// whole picture, two output lines and two output columns at a time. The order does not show in the picture; going down
// lets every source line be interpolated once.
#pragma once

#include "base/job.h"
#include "kernels/layouts.h"
#include "kernels/placement.h"
#include "kernels/scratch.h"
#include "kernels/tap_pairs.h"
#include "kernels/writers.h"
#include "resize_rgb/sources.h"
#include "vector/resized.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Outputs [first, count) of a line pair, or of the upper line alone, one by one at any address.
template <class Lines, Turn turn>
[[gnu::noinline]] void convertOutputsSingly(const Lines &lines, int32_t first, int32_t count, int32_t lineCount,
                                            uint8_t *to, std::ptrdiff_t stride) {
  for (int32_t l = 0; l < lineCount; ++l) {
    uint8_t *p = to + first * columnStep<turn, 2>(stride) + l * lineStep<turn, 2>(stride);
    for (int32_t i = first; i < count; ++i, p += columnStep<turn, 2>(stride)) {
      storePixelAnywhere(p, lines.pixel(l, i));
    }
  }
}

/// Whole quads of a line pair; returns how many columns they cover.
template <class Lines, Turn turn>
[[gnu::noinline]] int32_t convertOutputQuads(const Lines lines, int32_t count, uint8_t *to, std::ptrdiff_t stride) {
  int32_t i = 0;
  for (; i + 1 < count; i += 2, to += 2 * columnStep<turn, 2>(stride)) {
    Quad<uint32_t> quad;
    lines.makeQuad(i, quad);
    Rgb565Writer<turn>::put(to, stride, quad);
  }
  return i;
}

/// Output columns of a chunk, every line of the picture; `to` is the place of its first output.
template <class Source, class Weights, Turn turn>
void resizeChunk(const Job &job, const PlaneView &view, const ColumnTaps &x, uint8_t *to, std::ptrdiff_t stride) {
  using Lines = typename Source::Lines;
  const bool aligned = wordsFit<turn>({to, stride});
  const int32_t height = job.params.outHeight;
  Source source(view, x);
  TapReader<Weights> y(job.yTable);
  for (int32_t j = 0; j < height; j += 2, to += 2 * lineStep<turn, 2>(stride)) {
    const int32_t lineCount = smaller(height - j, 2);
    const Lines lines = source.lines(y.nextPair(lineCount == 1));
    const bool inQuads = lineCount == 2 && aligned;
    const int32_t done = inQuads ? convertOutputQuads<Lines, turn>(lines, x.count, to, stride) : 0;
    if (done < x.count) {
      convertOutputsSingly<Lines, turn>(lines, done, x.count, lineCount, to, stride);
    }
  }
}

/// The whole picture. Like every walk by blocks it mirrors the half turn about the stride.
template <class Source, class Weights, Turn turn>
void resizePicture(const Job &job, const PlaneView &view) {
  const ConvertParams &p = job.params;
  const Target target = blockTargetOf<turn>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  if (resizedByRows(job, view, turn, target)) {
    return;
  }
  TapReader<Weights> taps(job.xTable);
  for (int32_t first = 0; first < p.outWidth; first += kChunk) {
    ColumnTaps x;
    x.count = smaller(p.outWidth - first, kChunk);
    for (int32_t i = 0; i < x.count; ++i) {
      x.taps[i] = taps.next();
    }
    resizeChunk<Source, Weights, turn>(job, view, x, target.origin + first * columnStep<turn, 2>(target.stride),
                                       target.stride);
  }
}

/// Planar 4:2:0, or 4:2:2 of which every second chroma line is read.
inline PlaneView viewOf420Or422(const Job &job) {
  const ConvertParams &p = job.params;
  return job.isYuv420 ? Yuv420::view(p, p.inWidth, p.inHeight) : Yuv422EvenLines::view(p, p.inWidth, p.inHeight);
}

} // namespace zqcc
