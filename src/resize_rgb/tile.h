// The loops of every resizing conversion to RGB565: blocks of the source as the grouped tables list them, two output
// lines and two output columns at a time.
#pragma once

#include "kernels/placement.h"
#include "kernels/writers.h"
#include "resize_rgb/sources.h"
#include "resize_rgb/taps.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Converts the outputs of one block; `out` is the address of the tile's first output.
using ResizeKernel = void (*)(const PlaneView &, const TableTile &, uint8_t *out, std::ptrdiff_t stride);

inline TapPair pairOf(const Tap &lone) {
  return {lone, lone};
}

template <class Source, class Writer, int pixel, int line, int columns, int lineCount>
[[gnu::always_inline]] inline void resizeGroup(const PlaneView &view, const typename Source::Lines &lines,
                                               const TapPair &x, uint8_t *to, std::ptrdiff_t stride) {
  uint32_t quad[2][2];
  quad[0][1] = quad[1][0] = quad[1][1] = 0;
  Source::template convert<pixel, line, columns, lineCount>(view, lines, x, quad);
  Writer::template put<columns, lineCount>(to, stride, quad);
}

/// Output columns from `first` on of one line pair or lone line.
template <class Source, class Writer, Turn turn, int lineCount, class Taps>
void resizeColumns(const PlaneView &view, const typename Source::Lines &lines, const Taps &x, int32_t first,
                   int32_t count, uint8_t *to, std::ptrdiff_t stride) {
  const std::ptrdiff_t step = 2 * columnStep<turn, Writer::kPixelBytes>(stride);
  int32_t i = first;
  for (; i + 1 < count; i += 2, to += step) {
    resizeGroup<Source, Writer, 0, 0, 2, lineCount>(view, lines, {x[i], x[i + 1]}, to, stride);
  }
  if (i < count) {
    resizeGroup<Source, Writer, 0, 0, 1, lineCount>(view, lines, pairOf(x[i]), to, stride);
  }
}

/// Lines from `first` on of a tile.
template <class Source, class Writer, Turn turn, class Taps>
void resizeLines(const PlaneView &view, const TableTile &tile, int32_t first, uint8_t *to, std::ptrdiff_t stride) {
  const Taps x(tile.xTriples);
  const Taps y(tile.yTriples);
  const std::ptrdiff_t step = 2 * lineStep<turn, Writer::kPixelBytes>(stride);
  int32_t j = first;
  for (; j + 1 < tile.lines; j += 2, to += step) {
    resizeColumns<Source, Writer, turn, 2>(view, Source::linesAt(view, {y[j], y[j + 1]}), x, 0, tile.columns, to,
                                           stride);
  }
  if (j < tile.lines) {
    resizeColumns<Source, Writer, turn, 1>(view, Source::linesAt(view, pairOf(y[j])), x, 0, tile.columns, to, stride);
  }
}

/// Kernel of the sources that treat all groups alike.
template <class Source, Turn turn>
void resizeTile(const PlaneView &view, const TableTile &tile, uint8_t *out, std::ptrdiff_t stride) {
  withStores(firstWordAt<turn>(out), stride, [&]<class Stores>(Stores) {
    resizeLines<Source, Rgb565Writer<turn, Stores>, turn, TripleTaps>(view, tile, 0, out, stride);
  });
}

/// Address of source pixel (0, 0) in the output picture; grouped walks mirror the half turn about the stride.
template <Turn turn>
Target resizeTarget(const ConvertParams &p) {
  return blockTargetOf<turn>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
}

/// Driver: every block through the kernel, each tile at its place.
template <Turn turn>
void resizeBlocks(const Job &job, const PlaneView &view, ResizeKernel kernel) {
  const Target target = resizeTarget<turn>(job.params);
  const std::ptrdiff_t dx = columnStep<turn, 2>(target.stride);
  const std::ptrdiff_t dy = lineStep<turn, 2>(target.stride);
  forEachTile(job, [&](const TableTile &tile) {
    kernel(view, tile, target.origin + tile.left * dx + tile.top * dy, target.stride);
  });
}

/// Planar 4:2:0, or 4:2:2 of which every second chroma line is read.
inline PlaneView viewOf420Or422(const Job &job) {
  const ConvertParams &p = job.params;
  return job.isYuv420 ? Yuv420::view(p, p.inWidth, p.inHeight) : Yuv422EvenLines::view(p, p.inWidth, p.inHeight);
}

} // namespace zqcc
