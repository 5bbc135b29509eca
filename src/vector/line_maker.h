// Pixels of two lines at a time, made from samples of any layout: the fetch and colour stages of a conversion.
#pragma once

#include "vector/rows.h"

namespace zqcc {

class LineMaker {
public:
  explicit LineMaker(const PlaneView &view) : view_(view) {}

  /// Looks the stages up. False if there is no stage for every line, or none that suits the matrix.
  bool prepare(const RowStages &stages, LevelSet usable, const ColorMatrix &matrix);

  /// Makes the pixels of columns [x, x + pixels) of lines y and y + 1 at to[0] and to[1]. x and y are even, all columns
  /// have chroma samples of their own.
  void make(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) const;

  [[nodiscard]] const PlaneView &view() const { return view_; }

private:
  struct Buffers;
  /// As make, for any layout. Rows of a block are short, so that what a row costs shows: pairs of planar lines have a
  /// shorter way.
  [[gnu::noinline]] void makeFetched(int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) const;
  void makeColumns(const LinePair &lines, int32_t x, int32_t pixels, uint8_t *const to[2], Buffers &buffers) const;
  [[nodiscard]] SourceLine sourceAt(const LinePair &lines, int line, int32_t x) const;
  [[nodiscard]] SampleRows samplesOf(const SourceLine &from, Buffers &buffers, int32_t pixels) const;
  [[nodiscard]] const uint8_t *lumaBelow(const SourceLine &upper, std::ptrdiff_t below, Buffers &buffers,
                                         int32_t pixels) const;

  const PlaneView &view_;
  ColourRows pair_ = nullptr;
  ColourRows single_ = nullptr;
  FetchRows whole_ = nullptr; ///< null where all samples lie as rows
  FetchRows luma_ = nullptr;  ///< null where no line is without chroma of its own, or its luma lies as a row
  bool lumaLies_ = true;
  int pixelBytes_ = 0;
  ColourConstants constants_{};
};

} // namespace zqcc
