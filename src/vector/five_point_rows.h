// Rows of five-point means of a plane.
#pragma once

#include "base/job.h"
#include "vector/filter_planes.h"
#include "vector/filter_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Means of the columns of a chunk, a line at a time. The windows of a source line are laid out once and kept while
/// output lines take taps of them.
class FivePointRows {
public:
  /// Whole lines of pictures of the usual sizes go at a time where there is room for their windows: parts of lines come
  /// slower from memory than the first-level cache gains.
  static constexpr int32_t kColumns = 1024;

  /// The windows of all planes.
  struct Room {
    alignas(64) uint8_t bytes[48 * 1024];
  };

  /// Luma's columns of a chunk whose windows have room.
  static int32_t mostColumns(const Job &job, int32_t chromaShift);

  /// Plane 0 of a frame is luma, 1 and 2 chroma.
  FivePointRows(const Job &job, const MeanPlane &plane, int number, int32_t chromaShift, Room &room);

  void columns(int32_t first, int32_t count);

  /// A row of the lines of a table entry; whole groups are written.
  void row(const int32_t *yEntry, uint8_t *to);

private:
  /// The lines that an output line takes lie within this many: floor(p + 1.6) + 1 - floor(p - 1.6) is at most 5.
  static constexpr int32_t kSharedRows = 6;
  /// A tap of its own takes two lines that are neighbours.
  static constexpr int32_t kTapRows = 2;
  static constexpr int32_t kMostSlots = kTapRows * static_cast<int32_t>(kFilterTaps);

  /// Rows of windows that are kept.
  static int32_t slotsOf(FilterWindows kind) { return windowRows(kind) == 1 ? kSharedRows : kMostSlots; }

  const uint8_t *windowsOf(int32_t line, int32_t tap);
  void prefetch(int32_t line) const;
  void fill(const uint8_t *line, int32_t row, uint8_t *to) const;

  /// Groups of the plan that lie in one array.
  struct Part {
    FilterColumns columns;
    int32_t groups;
  };

  const FilterPlan &plan_;
  MeanPlane plane_;
  WindowRow windowRow_;
  FivePointRow stage_;
  bool isLuma_;
  Part parts_[2]{};
  int32_t held_[kMostSlots]; ///< the line whose windows a slot has
  uint8_t *windows_;         ///< of the first slot
  int32_t rowBytes_;
};

} // namespace zqcc
