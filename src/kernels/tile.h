// The one loop of every same-size conversion to RGB: a rectangle of the source, two lines and two columns at a time.
// Source, arithmetic and writer are template arguments; nothing in the loop asks which mode it is in.
#pragma once

#include "kernels/arithmetic.h"
#include "kernels/placement.h"
#include "kernels/planes.h"
#include "kernels/writers.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Converts `rect` of the viewed picture. Reads the luma samples of the rectangle and the chroma samples that belong to
/// them, writes the rectangle's pixels and nothing else.
using TileKernel = void (*)(const PlaneView &, const Target &, const Rect &, const ColorMatrix &);

/// The lines that a pair of source lines reads; for a lone line both halves are the same line.
struct LinePair {
  const uint8_t *luma[2];
  const uint8_t *u[2];
  const uint8_t *v[2];
};

template <class Source>
LinePair linePairAt(const PlaneView &view, int32_t y, bool lone) {
  LinePair lines;
  for (int l = 0; l < 2; ++l) {
    const int32_t line = lone ? y : y + l;
    const std::ptrdiff_t chroma = Source::chromaLine(view, line);
    lines.luma[l] = view.y + line * view.yStride;
    lines.u[l] = view.u + chroma;
    lines.v[l] = view.v + chroma;
  }
  return lines;
}

/// Up to 2 x 2 pixels at even column x. Chroma terms are made once for all pixels that share them.
template <class Source, class Arithmetic, class Writer, int columns, int lines>
[[gnu::always_inline]] inline void convertGroup(const Arithmetic &arithmetic, const PlaneView &view,
                                                const LinePair &from, int32_t x, uint8_t *to, std::ptrdiff_t stride) {
  const std::ptrdiff_t at = std::ptrdiff_t{x >> 1} * Source::kPairStep;
  Quad<typename Writer::Pixel> quad{};
  const auto termsOf = [&](int line, int column) {
    const std::ptrdiff_t sample = Source::chromaOffset(view, x + column);
    return arithmetic.terms(from.u[line][sample], from.v[line][sample]);
  };
  const auto upperLeft = termsOf(0, 0);
  auto upperRight = upperLeft;
  auto lowerLeft = upperLeft;
  if constexpr (columns == 2 && !Source::kSharedByColumns) {
    upperRight = termsOf(0, 1);
  }
  quad[0][0] = arithmetic.template pixel<0, 0>(upperLeft, from.luma[0][at + Source::kLeftLuma]);
  if constexpr (columns == 2) {
    quad[0][1] = arithmetic.template pixel<0, 1>(upperRight, from.luma[0][at + Source::kRightLuma]);
  }
  if constexpr (lines == 2) {
    if constexpr (!Source::kSharedByLines) {
      lowerLeft = termsOf(1, 0);
    }
    auto lowerRight = Source::kSharedByLines ? upperRight : lowerLeft;
    if constexpr (columns == 2 && !Source::kSharedByLines && !Source::kSharedByColumns) {
      lowerRight = termsOf(1, 1);
    }
    quad[1][0] = arithmetic.template pixel<1, 0>(lowerLeft, from.luma[1][at + Source::kLeftLuma]);
    if constexpr (columns == 2) {
      quad[1][1] = arithmetic.template pixel<1, 1>(lowerRight, from.luma[1][at + Source::kRightLuma]);
    }
  }
  Writer::template put<columns, lines>(to, stride, quad);
}

template <class Source, class Arithmetic, class Writer, Turn turn, int lines>
void convertLines(const Arithmetic &arithmetic, const PlaneView &view, const LinePair &from, const Rect &rect,
                  uint8_t *to, std::ptrdiff_t stride) {
  const std::ptrdiff_t step = 2 * columnStep<turn, Writer::kPixelBytes>(stride);
  int32_t x = rect.left;
  for (; x + 1 < rect.right; x += 2) {
    convertGroup<Source, Arithmetic, Writer, 2, lines>(arithmetic, view, from, x, to, stride);
    to += step;
  }
  if (x < rect.right) {
    convertGroup<Source, Arithmetic, Writer, 1, lines>(arithmetic, view, from, x, to, stride);
  }
}

template <class Source, class Arithmetic, class Writer, Turn turn>
void convertRect(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  const Arithmetic arithmetic(matrix);
  const std::ptrdiff_t dx = columnStep<turn, Writer::kPixelBytes>(target.stride);
  const std::ptrdiff_t dy = lineStep<turn, Writer::kPixelBytes>(target.stride);
  int32_t y = rect.top;
  for (; y + 1 < rect.bottom; y += 2) {
    convertLines<Source, Arithmetic, Writer, turn, 2>(arithmetic, view, linePairAt<Source>(view, y, false), rect,
                                                      target.origin + rect.left * dx + y * dy, target.stride);
  }
  if (y < rect.bottom) {
    convertLines<Source, Arithmetic, Writer, turn, 1>(arithmetic, view, linePairAt<Source>(view, y, true), rect,
                                                      target.origin + rect.left * dx + y * dy, target.stride);
  }
}

/// Tile of 16-bit pixels.
template <class Source, class Arithmetic, Turn turn>
void convertTile(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  withStores(firstWordAt<turn>(target.origin), target.stride, [&]<class Stores>(Stores) {
    convertRect<Source, Arithmetic, Rgb565Writer<turn, Stores>, turn>(view, target, rect, matrix);
  });
}

/// Tile of 24-bit pixels.
template <class Source, class Arithmetic, Turn turn>
void convertTile24(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  convertRect<Source, Arithmetic, Rgb24Writer<turn>, turn>(view, target, rect, matrix);
}

inline bool isEmpty(const Rect &rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}

/// Runs a kernel over a rectangle in blocks of 16 x 16, which keeps the lines that a quarter turn writes in the cache.
inline void inBlocks(TileKernel kernel, const PlaneView &view, const Target &target, const Rect &rect,
                     const ColorMatrix &matrix) {
  constexpr int32_t kBlock = 16;
  for (int32_t top = rect.top; top < rect.bottom; top += kBlock) {
    for (int32_t left = rect.left; left < rect.right; left += kBlock) {
      const Rect block{left, top, smaller(left + kBlock, rect.right), smaller(top + kBlock, rect.bottom)};
      kernel(view, target, block, matrix);
    }
  }
}

} // namespace zqcc
