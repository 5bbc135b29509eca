// Samplers of filtered resizing for the driver of resizing by rows: every plane by itself, luma for each line, chroma
// for each line or for the lines that share it. `Rows` makes the rows of a plane.
#pragma once

#include "base/table_format.h"
#include "kernels/mean_planes.h"
#include "vector/resize_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// How chroma belongs to output pixels: sample k of a line serves columns k << columns on, entry k of the line table
/// lines k << lines on.
struct ChromaShifts {
  int32_t columns;
  int32_t lines;
};

template <class Rows>
class FilterSampler {
public:
  static constexpr int32_t kColumns = Rows::kColumns;

  // Rows are made before they are read.
  // cppcheck-suppress uninitMemberVar
  FilterSampler(const Job &job, const MeanPlanes &from, const ChromaShifts &shifts)
      : planes_{{job, from.planes[0], 0, shifts.columns, room_},
                {job, from.planes[1], 1, shifts.columns, room_},
                {job, from.planes[2], 2, shifts.columns, room_}},
        yTable_(job.yTable), shifts_(shifts) {}

  void columns(int32_t first, int32_t count) {
    const int32_t rest = (1 << shifts_.columns) - 1;
    chromaCount_ = (count + rest) >> shifts_.columns;
    planes_[0].columns(first, count);
    planes_[1].columns(first >> shifts_.columns, chromaCount_);
    planes_[2].columns(first >> shifts_.columns, chromaCount_);
    chromaEntry_ = -1;
  }

  void lines(int32_t j, int32_t lineCount, SampleRows (&rows)[2]) {
    if (lineCount == 2) {
      Rows::two(planes_[0], entry(j), luma_[0], planes_[0], entry(j + 1), luma_[1]);
    } else {
      planes_[0].row(entry(j), luma_[0]);
    }
    for (int32_t l = 0; l < 2; ++l) {
      const int32_t own = shifts_.lines == 0 ? l : 0;
      if (l < lineCount) {
        makeChroma((j + l) >> shifts_.lines, own);
      }
      rows[l] = {{luma_[l], luma_[1]}, chroma_[own][0], chroma_[own][1]};
    }
  }

private:
  static constexpr std::size_t kRoom = static_cast<std::size_t>(kColumns);

  [[nodiscard]] const int32_t *entry(int32_t j) const { return yTable_ + j * kBoxWords; }

  /// Rows of u and v of an entry of the line table, unless they stand there already.
  void makeChroma(int32_t number, int32_t own) {
    if (number == chromaEntry_) {
      return;
    }
    chromaEntry_ = number;
    const int32_t *lines = entry(number);
    uint8_t(&to)[2][kRoom] = shifts_.columns < 2 ? chroma_[own] : quarter_;
    Rows::two(planes_[1], lines, to[0], planes_[2], lines, to[1]);
    for (int32_t c = 0; c < 2 && shifts_.columns == 2; ++c) {
      for (int32_t k = 0; k < chromaCount_; ++k) { // pairs of columns are what colour stages know
        chroma_[own][c][2 * k] = chroma_[own][c][2 * k + 1] = quarter_[c][k];
      }
    }
  }

  static_assert(kEntryWords<kFilterTaps> == kBoxWords);
  typename Rows::Room room_;
  alignas(64) uint8_t luma_[2][kRoom];
  alignas(64) uint8_t chroma_[2][2][kRoom]; ///< [line][u, v]
  alignas(64) uint8_t quarter_[2][kRoom];
  Rows planes_[3];
  const int32_t *yTable_;
  ChromaShifts shifts_;
  int32_t chromaCount_ = 0;
  int32_t chromaEntry_ = -1;
};

} // namespace zqcc
