// Pixels of two lines at a time, made from samples of any layout: the fetch and colour stages of a conversion.
#pragma once

#include "vector/rows.h"

namespace zqcc {

inline constexpr int32_t kMostPixelBytes = 3;

/// Pixels that are made of one line after the other at a time.
inline constexpr int32_t kStackedPixels = 256;

/// Asks for the last `lines` cache lines of what ends at `end`; what is before them has been read with the bytes in
/// front. Always inlined, as all that calls it and does nothing else has to be: g++ drops calls of such functions.
template <int lines>
[[gnu::always_inline]] inline void prefetchEnd(const uint8_t *end) {
  for (int line = 0; line < lines; ++line) {
    __builtin_prefetch(end - 1 - 64 * line);
  }
}

/// Bytes from one column of a line to another one of another line.
struct SampleSteps {
  std::ptrdiff_t luma;
  std::ptrdiff_t chroma;
};

class LineMaker {
public:
  explicit LineMaker(const PlaneView &view) : view_(view) {}

  /// Looks the stages up. False if there is no stage for every line, or none that suits the matrix.
  bool prepare(const RowStages &stages, LevelSet usable, const ColorMatrix &matrix);

  /// Makes the pixels of columns [x, x + pixels) of lines y and y + 1 at to[0] and to[1]. x and y are even, all columns
  /// have chroma samples of their own. Unless `nextEnd` is null, lines that end so much further on than these begin are
  /// asked for.
  [[gnu::always_inline]] void make(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2],
                                   const SampleSteps *nextEnd = nullptr) const {
    if (planarPairs_) {
      makePlanar(y, x, pixels, to, nextEnd);
    } else {
      makeFetched(y, x, pixels, to, nextEnd);
    }
  }

  /// How far on the samples are that come `lines` lines and `columns` columns later, both even.
  [[nodiscard]] SampleSteps stepsTo(int32_t lines, int32_t columns) const {
    const LayoutValues &layout = view_.layout;
    return {lines * view_.yStride + std::ptrdiff_t{columns >> 1} * layout.pairStep,
            (lines >> layout.yShift) * view_.lineStep * view_.cStride +
                std::ptrdiff_t{columns >> layout.xShift} * layout.sampleStep};
  }

  /// Columns [x, x + pixels) of `pairs` pairs of lines from line y on.
  struct Block {
    int32_t y;
    int32_t pairs;
    int32_t x;
    int32_t pixels;
  };

  /// Makes the pixels of a block one line behind the other: upper lines at to[0], lower lines at to[1]. For rows that
  /// would leave most of a vector empty; at most kStackedPixels pixels of each.
  void makeStacked(const Block &block, uint8_t *const to[2]) const;

  /// Whether the lines of these rows lie so that makeStacked can be used.
  [[nodiscard]] bool canStack(const Rect &rows) const;

  [[nodiscard]] const PlaneView &view() const { return view_; }

private:
  struct Buffers;
  struct Stacked;
  /// As make, for pairs of lines whose samples lie as rows, with half chroma. Rows of a block are short, so that what a
  /// row costs shows.
  [[gnu::always_inline]] void makePlanar(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2],
                                         const SampleSteps *nextEnd) const {
    const int32_t sample = x >> 1;
    const uint8_t *luma = view_.y + y * view_.yStride + x;
    const std::ptrdiff_t chroma = chromaLineOffset(view_, y) + sample;
    const uint8_t *u = view_.u + chroma;
    const uint8_t *v = view_.v + chroma;
    if (nextEnd != nullptr) {
      const uint8_t *end = luma + nextEnd->luma;
      prefetchEnd<2>(end);
      prefetchEnd<2>(end + view_.yStride);
      prefetchEnd<1>(u + nextEnd->chroma);
      prefetchEnd<1>(v + nextEnd->chroma);
    }
    pair_({{luma, luma + view_.yStride}, u, v}, to, pixels, 0, constants_);
  }
  /// As make, for any layout.
  [[gnu::noinline]] void makeFetched(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2],
                                     const SampleSteps *nextEnd) const;
  void prefetch(const LinePair &lines, int32_t x, const SampleSteps &nextEnd) const;
  void makeColumns(const LinePair &lines, int32_t x, int32_t pixels, uint8_t *const to[2], Buffers &buffers) const;
  [[nodiscard]] SourceLine sourceAt(const LinePair &lines, int line, int32_t x) const;
  [[nodiscard]] SampleRows samplesOf(const SourceLine &from, Buffers &buffers, int32_t pixels) const;

  void stackPacked(const LinePair &lines, int line, const Block &block, Stacked &rows) const;
  void stackChroma(const LinePair &lines, int line, const Block &block, Stacked &rows) const;
  void stack(const Block &block, Stacked &rows) const;

  const PlaneView &view_;
  ColourRows pair_ = nullptr;
  ColourRows single_ = nullptr;
  FetchRows fetch_ = nullptr; ///< null where all samples are read as they lie
  bool planarPairs_ = false;
  int pixelBytes_ = 0;
  ColourConstants constants_{};
};

} // namespace zqcc
