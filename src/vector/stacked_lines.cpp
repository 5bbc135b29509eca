// Lines of narrow pictures, made one behind the other so that vectors fill: samples are copied together as they lie,
// and fetched, if they have to be, all at once.
#include "vector/line_maker.h"
#include "vector/short_lines.h"

namespace zqcc {
namespace {

/// Lines copied one behind the other.
template <std::size_t leastBytes>
void stackLines(uint8_t *to, const uint8_t *from, std::ptrdiff_t step, std::ptrdiff_t bytes, int32_t lines) {
  copyShortLines<leastBytes>({from, step}, {to, bytes}, bytes, lines);
}

const uint8_t *lowest(const uint8_t *a, const uint8_t *b) {
  return a < b ? a : b;
}

bool arePairs(const PlaneView &view) {
  return view.layout.sampleStep == 2 && (view.v - view.u == 1 || view.u - view.v == 1);
}

} // namespace

/// Rows of several lines behind one another; chroma of both lines of a pair where it is not shared.
struct LineMaker::Stacked {
  alignas(64) uint8_t y[2][kStackedPixels];
  uint8_t u[2][kStackedPixels];
  uint8_t v[2][kStackedPixels];
  uint8_t asTheyLie[2 * kStackedPixels];
};

bool LineMaker::canStack(const Rect &rows) const {
  const LayoutValues &layout = view_.layout;
  const bool planar = whole_ == nullptr && layout.pairStep == 2;
  const bool packed = whole_ != nullptr && layout.pairStep == 4;
  // The last lines must have chroma lines of their own, or steps would not be the same all along.
  const bool regular = layout.yShift <= 1 && ((rows.bottom - 1) >> layout.yShift) * view_.lineStep <= view_.lastLine;
  return regular && (planar || packed || arePairs(view_));
}

/// One line of each pair, luma and chroma in macropixels.
void LineMaker::stackPacked(const LinePair &lines, int line, const Block &block, Stacked &rows) const {
  const bool sharesChroma = line == 1 && pair_ != nullptr;
  const SourceLine upper = sourceAt(lines, sharesChroma ? 0 : line, block.x);
  const LayoutValues &layout = view_.layout;
  const uint8_t *first =
      lowest(lowest(upper.y, upper.y + (layout.rightLuma - layout.leftLuma)), lowest(upper.u, upper.v));
  const std::ptrdiff_t below = sharesChroma ? view_.yStride : 0;
  uint8_t *raw = rows.asTheyLie;
  stackLines<std::size_t{2} * kLeastPixels>(raw, first + below, 2 * view_.yStride, std::ptrdiff_t{2} * block.pixels,
                                            block.pairs);
  const FetchRows fetch = sharesChroma ? luma_ : whole_;
  fetch({raw + (upper.y - first), raw + (upper.u - first), raw + (upper.v - first)},
        {rows.y[line], rows.u[line], rows.v[line]}, block.pairs * block.pixels);
}

void LineMaker::stackChroma(const LinePair &lines, int line, const Block &block, Stacked &rows) const {
  const SourceLine from = sourceAt(lines, line, block.x);
  const std::ptrdiff_t step = chromaLineOffset(view_, block.y + 2) - chromaLineOffset(view_, block.y);
  if (whole_ == nullptr) {
    const int32_t samples = block.pixels >> view_.layout.xShift;
    stackLines<kLeastPixels / 2>(rows.u[line], from.u, step, samples, block.pairs);
    stackLines<kLeastPixels / 2>(rows.v[line], from.v, step, samples, block.pairs);
    return;
  }
  const uint8_t *first = lowest(from.u, from.v);
  uint8_t *raw = rows.asTheyLie;
  stackLines<kLeastPixels>(raw, first, step, block.pixels, block.pairs);
  whole_({from.y, raw + (from.u - first), raw + (from.v - first)}, {nullptr, rows.u[line], rows.v[line]},
         block.pairs * block.pixels);
}

void LineMaker::stack(const Block &block, Stacked &rows) const {
  const LinePair lines = linePairAt(view_, block.y);
  for (int line = 0; line < 2; ++line) {
    if (!lumaLies_) {
      stackPacked(lines, line, block, rows);
      continue;
    }
    stackLines<kLeastPixels>(rows.y[line], lines.luma[line] + block.x, 2 * view_.yStride, block.pixels, block.pairs);
    if (line == 0 || pair_ == nullptr) {
      stackChroma(lines, line, block, rows);
    }
  }
}

void LineMaker::makeStacked(const Block &block, uint8_t *const to[2]) const {
  Stacked rows;
  stack(block, rows);
  const int32_t pixels = block.pairs * block.pixels;
  if (pair_ != nullptr) {
    pair_({{rows.y[0], rows.y[1]}, rows.u[0], rows.v[0]}, to, pixels, 0, constants_);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    single_({{rows.y[line], nullptr}, rows.u[line], rows.v[line]}, one, pixels, line, constants_);
  }
}

} // namespace zqcc
