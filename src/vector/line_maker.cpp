#include "vector/line_maker.h"

#include "base/limits.h"

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

} // namespace

/// Aligned for the widest vectors, which would straddle two cache lines at every access otherwise.
struct LineMaker::Buffers {
  alignas(64) uint8_t u[kFetchedPixels];
  uint8_t v[kFetchedPixels];
};

bool LineMaker::prepare(const RowStages &stages, LevelSet usable, const ColorMatrix &matrix) {
  pair_ = bestOf(stages.pair, usable);
  single_ = bestOf(stages.single, usable);
  fetch_ = bestOf(stages.fetch, usable);
  planarPairs_ = pair_ != nullptr && view_.layout.sampleStep == 1 && view_.layout.xShift == 1;
  pixelBytes_ = stages.pixelBytes;
  const bool colours = pair_ != nullptr || single_ != nullptr;
  const bool fetches = stages.fetch == nullptr || fetch_ != nullptr;
  return colours && fetches && (stages.makeConstants == nullptr || stages.makeConstants(matrix, constants_));
}

/// Where the samples of a line's column x stand, x even.
SourceLine LineMaker::sourceAt(const LinePair &lines, int line, int32_t x) const {
  const LayoutValues &layout = view_.layout;
  const std::ptrdiff_t sample = std::ptrdiff_t{x >> layout.xShift} * layout.sampleStep;
  return {lines.luma[line] + std::ptrdiff_t{x >> 1} * layout.pairStep + layout.leftLuma, lines.u[line] + sample,
          lines.v[line] + sample};
}

/// The rows of one line's samples: chroma fetched, or where it lies.
SampleRows LineMaker::samplesOf(const SourceLine &from, Buffers &buffers, int32_t pixels) const {
  if (fetch_ == nullptr) {
    return {{from.y, nullptr}, from.u, from.v};
  }
  fetch_(from, {nullptr, buffers.u, buffers.v}, pixels);
  return {{from.y, nullptr}, buffers.u, buffers.v};
}

void LineMaker::makeColumns(const LinePair &lines, int32_t x, int32_t pixels, uint8_t *const to[2],
                            Buffers &buffers) const {
  if (pair_ != nullptr) {
    SampleRows rows = samplesOf(sourceAt(lines, 0, x), buffers, pixels);
    rows.y[1] = rows.y[0] + (lines.luma[1] - lines.luma[0]);
    pair_(rows, to, pixels, 0, constants_);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    single_(samplesOf(sourceAt(lines, line, x), buffers, pixels), one, pixels, line, constants_);
  }
}

[[gnu::always_inline]] inline void LineMaker::prefetch(const LinePair &lines, int32_t x,
                                                       const SampleSteps &nextEnd) const {
  const LayoutValues &layout = view_.layout;
  for (int line = 0; line < 2; ++line) {
    const SourceLine from = sourceAt(lines, line, x);
    prefetchEnd<2>(from.y + nextEnd.luma);
    if (layout.pairStep != 2) {
      prefetchEnd<2>(from.y + nextEnd.luma - 128);
    } else if (line == 0 || layout.yShift == 0) {
      prefetchEnd<2>(from.u + nextEnd.chroma);
      prefetchEnd<2>(from.v + nextEnd.chroma);
    }
  }
}

void LineMaker::makeFetched(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2],
                            const SampleSteps *nextEnd) const {
  const LinePair lines = linePairAt(view_, y);
  if (nextEnd != nullptr) {
    prefetch(lines, x, *nextEnd);
  }
  Buffers buffers;
  for (int32_t done = 0; done < pixels;) {
    const int32_t count = fetch_ == nullptr ? pixels : fetchedOf(pixels - done);
    const std::ptrdiff_t bytes = std::ptrdiff_t{done} * pixelBytes_;
    uint8_t *const part[2] = {to[0] + bytes, to[1] + bytes};
    makeColumns(lines, x + done, count, part, buffers);
    done += count;
  }
}

} // namespace zqcc
