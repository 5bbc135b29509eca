#include "vector/line_maker.h"

#include "base/limits.h"
#include "vector/short_lines.h"

namespace zqcc {
namespace {

template <class Function>
Function bestOf(const PerLevel<Function> *levels, LevelSet usable) {
  return levels != nullptr ? levels->in(usable) : nullptr;
}

/// Pixels whose samples are fetched at a time: the buffers share the first-level cache with what is read and written.
constexpr int32_t kFetchedPixels = 1024;

/// Pixels of the widest groups.
constexpr int32_t kWidestGroup = 64;

/// As many of the pixels as are fetched at once, all in whole groups. Those that remain are none, or not too few for
/// one.
int32_t fetchedOf(int32_t pixels) {
  return pixels <= kFetchedPixels ? pixels : smaller(kFetchedPixels, (pixels - kWidestGroup) & -kWidestGroup);
}

/// The line `below` bytes on: among its luma stands chroma that is passed over.
SourceLine lowered(const SourceLine &upper, std::ptrdiff_t below) {
  return {upper.y + below, upper.u + below, upper.v + below};
}

/// Lines copied one behind the other.
template <std::size_t leastBytes>
void stackLines(uint8_t *to, const uint8_t *from, std::ptrdiff_t step, std::ptrdiff_t bytes, int32_t lines) {
  copyShortLines<leastBytes>({from, step}, {to, bytes}, bytes, lines);
}

} // namespace

struct LineMaker::Buffers {
  uint8_t y[2][kFetchedPixels];
  uint8_t u[kFetchedPixels];
  uint8_t v[kFetchedPixels];
};

/// Rows of several lines behind one another; chroma of both lines of a pair where it is not shared.
struct LineMaker::Stacked {
  uint8_t y[2][kStackedPixels];
  uint8_t u[2][kStackedPixels];
  uint8_t v[2][kStackedPixels];
};

bool LineMaker::prepare(const RowStages &stages, LevelSet usable, const ColorMatrix &matrix) {
  pair_ = bestOf(stages.pair, usable);
  single_ = bestOf(stages.single, usable);
  whole_ = bestOf(stages.fetch.whole, usable);
  luma_ = bestOf(stages.fetch.luma, usable);
  lumaLies_ = view_.layout.pairStep == 2;
  pixelBytes_ = stages.pixelBytes;
  const bool colours = pair_ != nullptr || single_ != nullptr;
  const bool fetches =
      (stages.fetch.whole == nullptr || whole_ != nullptr) && (stages.fetch.luma == nullptr || luma_ != nullptr);
  return colours && fetches && (stages.makeConstants == nullptr || stages.makeConstants(matrix, constants_));
}

/// Where the samples of a line's column x stand, x even.
SourceLine LineMaker::sourceAt(const LinePair &lines, int line, int32_t x) const {
  const LayoutValues &layout = view_.layout;
  const std::ptrdiff_t sample = std::ptrdiff_t{x >> layout.xShift} * layout.sampleStep;
  return {lines.luma[line] + std::ptrdiff_t{x >> 1} * layout.pairStep + layout.leftLuma, lines.u[line] + sample,
          lines.v[line] + sample};
}

/// The rows of one line's samples: fetched, or where they lie.
SampleRows LineMaker::samplesOf(const SourceLine &from, Buffers &buffers, int32_t pixels) const {
  if (whole_ == nullptr) {
    return {{from.y, nullptr}, from.u, from.v};
  }
  whole_(from, {buffers.y[0], buffers.u, buffers.v}, pixels);
  return {{lumaLies_ ? from.y : buffers.y[0], nullptr}, buffers.u, buffers.v};
}

/// Luma of the line `below` bytes on, which shares the chroma of `upper`.
const uint8_t *LineMaker::lumaBelow(const SourceLine &upper, std::ptrdiff_t below, Buffers &buffers,
                                    int32_t pixels) const {
  if (lumaLies_) {
    return upper.y + below;
  }
  luma_(lowered(upper, below), {buffers.y[1], nullptr, nullptr}, pixels);
  return buffers.y[1];
}

void LineMaker::makeColumns(const LinePair &lines, int32_t x, int32_t pixels, uint8_t *const to[2],
                            Buffers &buffers) const {
  if (pair_ != nullptr) {
    const SourceLine upper = sourceAt(lines, 0, x);
    SampleRows rows = samplesOf(upper, buffers, pixels);
    rows.y[1] = lumaBelow(upper, lines.luma[1] - lines.luma[0], buffers, pixels);
    pair_(rows, to, pixels, 0, constants_);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    single_(samplesOf(sourceAt(lines, line, x), buffers, pixels), one, pixels, line, constants_);
  }
}

/// What comes next if the lines are cut into blocks.
void LineMaker::prefetchNext(const LinePair &lines, int32_t x, int32_t pixels) const {
  const LayoutValues &layout = view_.layout;
  const std::ptrdiff_t lumaBytes = std::ptrdiff_t{pixels >> 1} * layout.pairStep;
  const std::ptrdiff_t chromaBytes = std::ptrdiff_t{pixels >> layout.xShift} * layout.sampleStep;
  for (int line = 0; line < 2; ++line) {
    const SourceLine from = sourceAt(lines, line, x);
    prefetchBehind(from.y, lumaBytes);
    if (layout.pairStep == 2) {
      prefetchBehind(from.u, chromaBytes);
      prefetchBehind(from.v, chromaBytes);
    } else {
      prefetchBehind(from.y + lumaBytes / 2, lumaBytes);
    }
  }
}

void LineMaker::makeFetched(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) const {
  const LinePair lines = linePairAt(view_, y);
  prefetchNext(lines, x, pixels);
  Buffers buffers;
  for (int32_t done = 0; done < pixels;) {
    const int32_t count = whole_ == nullptr ? pixels : fetchedOf(pixels - done);
    const std::ptrdiff_t bytes = std::ptrdiff_t{done} * pixelBytes_;
    uint8_t *const part[2] = {to[0] + bytes, to[1] + bytes};
    makeColumns(lines, x + done, count, part, buffers);
    done += count;
  }
}

/// Fetches the samples of one line, from pixel `at` of the stacked rows on.
void LineMaker::fetchStacked(const LinePair &lines, int line, int32_t x, int32_t pixels, int32_t at,
                             Stacked &rows) const {
  const SourceLine from = sourceAt(lines, line, x);
  whole_(from, {rows.y[line] + at, rows.u[line] + at / 2, rows.v[line] + at / 2}, pixels);
  if (lumaLies_) {
    stackLines<kLeastPixels>(rows.y[line] + at, from.y, 0, pixels, 1);
  }
}

void LineMaker::fetchStacked(int32_t y, int32_t pairs, int32_t x, int32_t pixels, Stacked &rows) const {
  for (int32_t pair = 0; pair < pairs; ++pair) {
    const LinePair lines = linePairAt(view_, y + 2 * pair);
    const int32_t at = pair * pixels;
    fetchStacked(lines, 0, x, pixels, at, rows);
    if (pair_ == nullptr) {
      fetchStacked(lines, 1, x, pixels, at, rows);
    } else if (lumaLies_) {
      stackLines<kLeastPixels>(rows.y[1] + at, lines.luma[1] + x, 0, pixels, 1);
    } else {
      const SourceLine lower = lowered(sourceAt(lines, 0, x), lines.luma[1] - lines.luma[0]);
      luma_(lower, {rows.y[1] + at, nullptr, nullptr}, pixels);
    }
  }
}

/// Planes are stacked one after the other: lines are the same number of bytes apart.
void LineMaker::stackPlanes(int32_t y, int32_t pairs, int32_t x, int32_t pixels, Stacked &rows) const {
  const LinePair lines = linePairAt(view_, y);
  const int32_t shift = view_.layout.xShift;
  const std::ptrdiff_t chromaStep = chromaLineOffset(view_, y + 2) - chromaLineOffset(view_, y);
  for (int line = 0; line < 2; ++line) {
    stackLines<kLeastPixels>(rows.y[line], lines.luma[line] + x, 2 * view_.yStride, pixels, pairs);
  }
  for (int line = 0; line < (pair_ != nullptr ? 1 : 2); ++line) {
    stackLines<kLeastPixels / 2>(rows.u[line], lines.u[line] + (x >> shift), chromaStep, pixels >> shift, pairs);
    stackLines<kLeastPixels / 2>(rows.v[line], lines.v[line] + (x >> shift), chromaStep, pixels >> shift, pairs);
  }
}

bool LineMaker::canStack(const Rect &rows) const {
  if (whole_ != nullptr) {
    return true;
  }
  // The last lines must have chroma lines of their own, or steps would not be the same all along.
  const LayoutValues &layout = view_.layout;
  return layout.pairStep == 2 && layout.yShift <= 1 &&
         ((rows.bottom - 1) >> layout.yShift) * view_.lineStep <= view_.lastLine;
}

void LineMaker::makeStacked(int32_t y, int32_t pairs, int32_t x, int32_t pixels, uint8_t *const to[2]) const {
  Stacked rows;
  if (whole_ != nullptr) {
    fetchStacked(y, pairs, x, pixels, rows);
  } else {
    stackPlanes(y, pairs, x, pixels, rows);
  }
  const int32_t all = pairs * pixels;
  if (pair_ != nullptr) {
    pair_({{rows.y[0], rows.y[1]}, rows.u[0], rows.v[0]}, to, all, 0, constants_);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    single_({{rows.y[line], nullptr}, rows.u[line], rows.v[line]}, one, all, line, constants_);
  }
}

} // namespace zqcc
