// Rows of box means of a plane.
#pragma once

#include "base/job.h"
#include "kernels/mean_planes.h"
#include "vector/filter_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Means of the columns of a chunk, a line at a time: the lines of a box are added column by column, then the columns
/// of each box.
class BoxRows {
public:
  static constexpr int32_t kColumns = 512;

  static constexpr int32_t kSums = 4096;

  /// Sums of the lines of a box, of whichever plane is at it.
  struct Room {
    alignas(64) uint16_t sums[kSums + kFilterGroup * 2];
  };

  static int32_t mostColumns(const Job & /*job*/, int32_t /*chromaShift*/) { return kColumns; }

  BoxRows(const Job &job, const MeanPlane &plane, int number, int32_t chromaShift, Room &room);

  /// Whether the boxes of a frame's columns are such that rows can be made of them.
  [[nodiscard]] bool exist() const {
    return samples_ <= kMostBoxSamples && widest_ + (kFilterGroup - 1) * apart_ <= kSums;
  }

  void columns(int32_t first, int32_t count);

  /// A row of the lines of a table entry; whole groups are written.
  void row(const int32_t *yEntry, uint8_t *to);

  static void two(BoxRows &rows0, const int32_t *yEntry0, uint8_t *to0, BoxRows &rows1, const int32_t *yEntry1,
                  uint8_t *to1) {
    rows0.row(yEntry0, to0);
    rows1.row(yEntry1, to1);
  }

private:
  /// Sums of neighbouring columns where boxes allow it: half as many of them.
  struct Sums {
    AddLines add;
    int32_t columns; ///< of the plane for each sum: 1 or 2
    int32_t perBox;
    int32_t spacing;
  };

  [[nodiscard]] const int32_t *entry(int32_t i) const;
  [[nodiscard]] bool isWhole(int32_t i) const;
  [[nodiscard]] StraightBoxes straightStage() const;
  [[nodiscard]] Sums sumsOf(int32_t count) const;
  void planSums();
  void placeRuns();
  void makeRun(const AddedLines &lines, int32_t from, int32_t end, const BoxQuotient &quotient, uint8_t *to);
  [[nodiscard]] uint32_t sumOf(const AddedLines &lines, int32_t first, int32_t columns) const;
  void makeRest(const AddedLines &lines, int32_t from, uint8_t *to) const;

  const int32_t *xTable_;
  MeanPlane plane_;
  LevelSet levels_;
  int32_t samples_; ///< columns of a box that is not cut short
  int32_t spacing_;
  int32_t widest_; ///< from the first to behind the last of them
  int32_t apart_;  ///< from the first column of a box to that of the next, at most
  int32_t first_ = 0;
  int32_t count_ = 0;
  int32_t whole_ = 0;                ///< boxes of the chunk before the first one that is cut short
  int32_t cut_ = 0;                  ///< columns of that
  int32_t run_ = 0;                  ///< boxes whose sums are made at a time
  StraightBoxes straight_ = nullptr; ///< makes whole boxes without sums, where they are such
  Sums sums_{};
  int32_t start_[kColumns]; ///< of each box: the number of its first sum in its run
  uint16_t *row_;
};

} // namespace zqcc
