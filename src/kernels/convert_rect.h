// The one loop of every same-size conversion to RGB: a rectangle of the source, two lines and two columns at a time.
// Layout, arithmetic and writer are template arguments; nothing in the loop asks which mode it is in.
#pragma once

#include "kernels/arithmetic.h"
#include "kernels/placement.h"
#include "kernels/plane_view.h"
#include "kernels/scratch.h"
#include "kernels/writers.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Converts `rect` of the viewed picture. Reads the luma samples of the rectangle and the chroma samples that belong to
/// them, writes the rectangle's pixels and nothing else.
using TileKernel = void (*)(const PlaneView &, const Target &, const Rect &, const ColorMatrix &);

/// The lines that a pair of source lines reads.
struct LinePair {
  const uint8_t *luma[2];
  const uint8_t *u[2];
  const uint8_t *v[2];
};

inline LinePair linePairAt(const PlaneView &view, int32_t y) {
  LinePair lines;
  for (int l = 0; l < 2; ++l) {
    const std::ptrdiff_t chroma = chromaLineOffset(view, y + l);
    lines.luma[l] = view.y + (y + l) * view.yStride;
    lines.u[l] = view.u + chroma;
    lines.v[l] = view.v + chroma;
  }
  return lines;
}

template <class Layout, int line, int column, class Arithmetic, class Terms>
[[gnu::always_inline]] inline auto quadPixel(const Arithmetic &arithmetic, const LinePair &from, int32_t x,
                                             const Terms &terms) {
  return arithmetic.template pixel<line, column>(terms, from.luma[line][Layout::template lumaOffset<column>(x)]);
}

/// The quad at even column x. Chroma terms are made once for all pixels that share them.
template <class Layout, class Arithmetic, class Writer>
[[gnu::always_inline]] inline void convertQuad(const Arithmetic &arithmetic, const LinePair &from, int32_t x,
                                               uint8_t *to, std::ptrdiff_t stride) {
  const auto terms = [&](int line, int column) {
    const std::ptrdiff_t sample = Layout::chromaOffset(x + column);
    return arithmetic.terms(from.u[line][sample], from.v[line][sample]);
  };
  Quad<typename Writer::Pixel> quad;
  auto left = terms(0, 0);
  auto right = Layout::kSharedByColumns ? left : terms(0, 1);
  quad[0][0] = quadPixel<Layout, 0, 0>(arithmetic, from, x, left);
  quad[0][1] = quadPixel<Layout, 0, 1>(arithmetic, from, x, right);
  if constexpr (!Layout::kSharedByLines) {
    left = terms(1, 0);
    right = Layout::kSharedByColumns ? left : terms(1, 1);
  }
  quad[1][0] = quadPixel<Layout, 1, 0>(arithmetic, from, x, left);
  quad[1][1] = quadPixel<Layout, 1, 1>(arithmetic, from, x, right);
  Writer::put(to, stride, quad);
}

/// Pixels one by one: the columns [x, end) of line y, those behind the last chroma sample with its colour. `line` is
/// the line's place in its pair where that matters to the arithmetic, else 0. Edges and strips go this way, so it looks
/// the source's pattern up in the view and is made once an arithmetic.
template <class Arithmetic, class Writer, int line>
[[gnu::noinline]] void convertSingles(const Arithmetic &arithmetic, const PlaneView &view, int32_t y, int32_t x,
                                      int32_t end, uint8_t *to, std::ptrdiff_t dx) {
  const LayoutValues &layout = view.layout;
  const uint8_t *luma = view.y + y * view.yStride;
  const uint8_t *u = view.u + chromaLineOffset(view, y);
  const uint8_t *v = view.v + chromaLineOffset(view, y);
  for (; x < end; ++x, to += dx) {
    const std::ptrdiff_t sample = std::ptrdiff_t{smaller(x >> layout.xShift, view.lastColumn)} * layout.sampleStep;
    const auto terms = arithmetic.terms(u[sample], v[sample]);
    const bool even = x % 2 == 0;
    const int32_t value = luma[std::ptrdiff_t{x >> 1} * layout.pairStep + (even ? layout.leftLuma : layout.rightLuma)];
    if (!Arithmetic::kDithers || even) {
      Writer::one(to, arithmetic.template pixel<line, 0>(terms, value));
    } else {
      Writer::one(to, arithmetic.template pixel<line, 1>(terms, value));
    }
  }
}

/// Lines [top, bottom) of a rectangle pixel by pixel.
template <class Arithmetic, class Writer>
[[gnu::noinline]] void convertRectSingly(const Arithmetic &arithmetic, const PlaneView &view, const Rect &rect,
                                         uint8_t *origin, std::ptrdiff_t dx, std::ptrdiff_t dy) {
  constexpr int lower = Arithmetic::kDithers ? 1 : 0;
  for (int32_t y = rect.top; y < rect.bottom; ++y) {
    uint8_t *to = origin + rect.left * dx + y * dy;
    if (y % 2 == 0) {
      convertSingles<Arithmetic, Writer, 0>(arithmetic, view, y, rect.left, rect.right, to, dx);
    } else {
      convertSingles<Arithmetic, Writer, lower>(arithmetic, view, y, rect.left, rect.right, to, dx);
    }
  }
}

/// Columns [left, right) of two lines, all of which have chroma samples of their own.
template <class Layout, class Arithmetic, class Writer, Turn turn>
void convertLines(const Arithmetic &arithmetic, const LinePair from, int32_t left, int32_t right, uint8_t *to,
                  std::ptrdiff_t stride) {
  const Arithmetic local = arithmetic; // stores of bytes may alias anything that is reached through a reference
  for (int32_t x = left; x < right; x += 2) {
    convertQuad<Layout, Arithmetic, Writer>(local, from, x, to, stride);
    to += 2 * columnStep<turn, Writer::kPixelBytes>(stride);
  }
}

/// Whole quads first, then the columns behind them and a lone last line pixel by pixel.
template <class Layout, class Arithmetic, class Writer, Turn turn>
void convertRect(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  const Arithmetic arithmetic(matrix);
  const std::ptrdiff_t dx = columnStep<turn, Writer::kPixelBytes>(target.stride);
  const std::ptrdiff_t dy = lineStep<turn, Writer::kPixelBytes>(target.stride);
  const int32_t pairsEnd = smaller(rect.right & ~1, Layout::ownChromaEnd(view));
  const int32_t right = pairsEnd > rect.left ? pairsEnd : rect.left;
  const int32_t bottom = rect.bottom & ~1;
  for (int32_t y = rect.top; y < bottom; y += 2) {
    convertLines<Layout, Arithmetic, Writer, turn>(arithmetic, linePairAt(view, y), rect.left, right,
                                                   target.origin + rect.left * dx + y * dy, target.stride);
  }
  if (right < rect.right) {
    convertRectSingly<Arithmetic, Writer>(arithmetic, view, {right, rect.top, rect.right, bottom}, target.origin, dx,
                                          dy);
  }
  if (bottom < rect.bottom) {
    convertRectSingly<Arithmetic, Writer>(arithmetic, view, {rect.left, bottom, rect.right, rect.bottom}, target.origin,
                                          dx, dy);
  }
}

/// Kernel of strips and edge blocks, which are never wide or high: all pixel by pixel, at any address.
template <class Arithmetic, Turn turn>
void convertStrip(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  convertRectSingly<Arithmetic, Rgb565Writer<Turn::Upright>>(Arithmetic(matrix), view, rect, target.origin,
                                                             columnStep<turn, 2>(target.stride),
                                                             lineStep<turn, 2>(target.stride));
}

/// Calls run(block) for the blocks of at most width x height that make up a rectangle.
template <class Run>
void forEachBlock(const Rect &rect, int32_t width, int32_t height, Run run) {
  for (int32_t top = rect.top; top < rect.bottom; top += height) {
    for (int32_t left = rect.left; left < rect.right; left += width) {
      run(Rect{left, top, smaller(left + width, rect.right), smaller(top + height, rect.bottom)});
    }
  }
}

/// A rectangle block by block through aligned scratch.
template <Turn turn>
[[gnu::noinline]] void tileThroughScratch(TileKernel convert, const PlaneView &view, const Target &target,
                                          const Rect &rect, const ColorMatrix &matrix) {
  const std::ptrdiff_t dx = columnStep<turn, 2>(target.stride);
  const std::ptrdiff_t dy = lineStep<turn, 2>(target.stride);
  forEachBlock(rect, kScratchSide, kScratchSide, [&](const Rect &block) {
    uint8_t *first = target.origin + block.left * dx + block.top * dy;
    throughScratch<turn>(first, target.stride, block.right - block.left, block.bottom - block.top,
                         [&](const Target &scratch) {
                           const std::ptrdiff_t before = block.left * columnStep<turn, 2>(scratch.stride) +
                                                         block.top * lineStep<turn, 2>(scratch.stride);
                           convert(view, {scratch.origin - before, scratch.stride}, block, matrix);
                         });
  });
}

/// Tile of 16-bit pixels.
template <class Layout, class Arithmetic, Turn turn>
void convertTile(const PlaneView &view, const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  constexpr TileKernel convert = convertRect<Layout, Arithmetic, Rgb565Writer<turn>, turn>;
  if (wordsFit<turn>(target)) {
    convert(view, target, rect, matrix);
  } else {
    tileThroughScratch<turn>(convert, view, target, rect, matrix);
  }
}

/// Tile of 24-bit pixels.
template <class Layout, class Arithmetic, Turn turn>
constexpr TileKernel convertTile24 = convertRect<Layout, Arithmetic, Rgb24Writer<turn>, turn>;

inline bool isEmpty(const Rect &rect) {
  return rect.left >= rect.right || rect.top >= rect.bottom;
}

/// Runs a kernel over a rectangle in blocks that keep the lines which a quarter turn writes in the cache: 32 source
/// lines fill 64 bytes of each.
inline void inBlocks(TileKernel kernel, const PlaneView &view, const Target &target, const Rect &rect,
                     const ColorMatrix &matrix) {
  forEachBlock(rect, 64, 32, [&](const Rect &block) { kernel(view, target, block, matrix); });
}

} // namespace zqcc
