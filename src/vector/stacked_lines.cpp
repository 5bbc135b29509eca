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

/// Lines of several pairs behind one another, upper and lower ones: in rows, chroma of both where it is not shared, or
/// as they lie among other samples.
struct LineMaker::Stacked {
  alignas(64) uint8_t y[2][kStackedPixels];
  uint8_t u[2][kStackedPixels];
  uint8_t v[2][kStackedPixels];
  uint8_t asTheyLie[2][2 * kStackedPixels];
  SampleRows first[2]; ///< of either line; of both in the first one where they are made together
};

bool LineMaker::canStack(const Rect &rows) const {
  const LayoutValues &layout = view_.layout;
  const bool planar = fetch_ == nullptr && layout.sampleStep == 1;
  const bool packed = fetch_ == nullptr && layout.pairStep == 4;
  // The last lines must have chroma lines of their own, or steps would not be the same all along.
  const bool regular = layout.yShift <= 1 && ((rows.bottom - 1) >> layout.yShift) * view_.lineStep <= view_.lastLine;
  return regular && (planar || packed || arePairs(view_));
}

/// Lines of macropixels.
void LineMaker::stackPacked(const LinePair &lines, int line, const Block &block, Stacked &rows) const {
  const LayoutValues &layout = view_.layout;
  const uint8_t *left = sourceAt(lines, line, block.x).y;
  // From the left pixel's luma; either line's chroma, also where only one is used.
  const std::ptrdiff_t u = view_.u - (view_.y + layout.leftLuma);
  const std::ptrdiff_t v = view_.v - (view_.y + layout.leftLuma);
  const std::ptrdiff_t first =
      smaller(smaller(std::ptrdiff_t{0}, std::ptrdiff_t{layout.rightLuma} - layout.leftLuma), smaller(u, v));
  uint8_t *raw = rows.asTheyLie[line];
  stackLines<std::size_t{2} * kLeastPixels>(raw, left + first, 2 * view_.yStride, std::ptrdiff_t{2} * block.pixels,
                                            block.pairs);
  rows.first[line] = {{raw - first, nullptr}, raw - first + u, raw - first + v};
}

void LineMaker::stackChroma(const LinePair &lines, int line, const Block &block, Stacked &rows) const {
  const SourceLine from = sourceAt(lines, line, block.x);
  const std::ptrdiff_t step = chromaLineOffset(view_, block.y + 2) - chromaLineOffset(view_, block.y);
  const int32_t bytes = (block.pixels >> view_.layout.xShift) * view_.layout.sampleStep;
  if (fetch_ == nullptr && step == bytes) { // one behind the other as they lie
    rows.first[line].u = from.u;
    rows.first[line].v = from.v;
    return;
  }
  rows.first[line].u = rows.u[line];
  rows.first[line].v = rows.v[line];
  if (view_.layout.sampleStep == 1) {
    stackLines<kLeastPixels / 2>(rows.u[line], from.u, step, bytes, block.pairs);
    stackLines<kLeastPixels / 2>(rows.v[line], from.v, step, bytes, block.pairs);
    return;
  }
  const uint8_t *first = lowest(from.u, from.v);
  uint8_t *raw = rows.asTheyLie[line];
  stackLines<kLeastPixels>(raw, first, step, block.pixels, block.pairs);
  if (fetch_ == nullptr) {
    rows.first[line].u = raw + (from.u - first);
    rows.first[line].v = raw + (from.v - first);
    return;
  }
  fetch_({nullptr, raw + (from.u - first), raw + (from.v - first)}, {nullptr, rows.u[line], rows.v[line]},
         block.pairs * block.pixels);
}

void LineMaker::stack(const Block &block, Stacked &rows) const {
  const LinePair lines = linePairAt(view_, block.y);
  for (int line = 0; line < 2; ++line) {
    if (view_.layout.pairStep == 4) {
      stackPacked(lines, line, block, rows);
      continue;
    }
    stackLines<kLeastPixels>(rows.y[line], lines.luma[line] + block.x, 2 * view_.yStride, block.pixels, block.pairs);
    rows.first[line].y[0] = rows.y[line];
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
    rows.first[0].y[1] = rows.first[1].y[0];
    pair_(rows.first[0], to, pixels, 0, constants_);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    single_(rows.first[line], one, pixels, line, constants_);
  }
}

} // namespace zqcc
