// Rows of five-point means of a plane.
#pragma once

#include "base/job.h"
#include "base/limits.h"
#include "kernels/mean_planes.h"
#include "kernels/taps.h"
#include "vector/column_plan.h"
#include "vector/filter_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// How the means of a picture that keeps its type differ from those of a picture that is converted.
struct MeanKind {
  bool isWhole = false;     ///< samples that negative weights lead outside of their range count as they are
  bool isEvenAtEnd = false; ///< of a line tap at the last line or past it: the even mean of the last two
  bool isAlike = false;     ///< all taps of a line are weighed as the first one
  int32_t bits = 8;         ///< of a component
};

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

  /// Whether the frame has a plan, and a usable level the stages.
  static bool serve(const Job &job);

  /// Luma's columns of a chunk whose windows, or whose lines if these are `made`, have room.
  static int32_t mostColumns(const Job &job, int32_t chromaShift, bool made = false);

  /// Plane 0 of a frame is luma, 1 and 2 chroma.
  FivePointRows(const Job &job, const MeanPlane &plane, int number, int32_t chromaShift, Room &room,
                const MeanKind &kind = {});

  void columns(int32_t first, int32_t count);

  /// A row of the lines of a table entry; whole groups are written.
  void row(const int32_t *yEntry, uint8_t *to);

  /// Two rows at once: of two table entries, or of two planes with the same columns.
  static void two(FivePointRows &rows0, const int32_t *yEntry0, uint8_t *to0, FivePointRows &rows1,
                  const int32_t *yEntry1, uint8_t *to1);

  // Lines that do not lie as planes (of a plane without samples) are made when they are needed. A row takes those of
  // each tap, two rows at once those of both.

  /// Whether samples are taken from made lines as they lie: these are kept then, instead of windows.
  [[nodiscard]] bool takesLines() const { return lineStage_ != nullptr; }
  /// Kept lines begin with this sample.
  void beginLines(int32_t first) { firstSample_ = first; }
  /// Where the samples of a line are kept.
  [[nodiscard]] uint8_t *keptLine(int32_t line) const { return windows_ + line % kMadeLines * rowBytes_; }
  /// The samples of a line, `count` of them, have been put there.
  void keep(int32_t line, int32_t count);
  /// What is asked for while rows are made, for every sample of a kept line a byte.
  void askFor(const uint8_t *const (&ahead)[kLinesAhead]) {
    for (int32_t i = 0; i < kLinesAhead; ++i) {
      ahead_[i] = ahead[i] - firstSample_;
    }
  }

  /// What of a line the chunk takes. Not of gathered windows.
  [[nodiscard]] ByteRange bytesTaken() const;

  /// Calls make(line, tap) for what a table entry takes and nothing stands there of yet; it has to be taken then.
  template <class Make>
  void forEachMissing(const int32_t *yEntry, Make make) const {
    for (int32_t t = 0; t < static_cast<int32_t>(kFilterTaps); ++t, yEntry += kTapWords) {
      const SampleTap tap = tapOf(yEntry);
      const int32_t lines[2] = {static_cast<int32_t>(tap.self), static_cast<int32_t>(tap.next)};
      for (const int32_t line : lines) {
        if (held_[slotOf(line, t)] != line) {
          make(line, t);
        }
      }
    }
  }

  /// Lays out the windows of a line, given where its first sample would be.
  void take(int32_t line, int32_t tap, const uint8_t *from);

private:
  /// The lines that an output line takes lie within this many: floor(p + 1.6) + 1 - floor(p - 1.6) is at most 5.
  static constexpr int32_t kSharedRows = 6;
  /// A tap of its own takes two lines that are neighbours.
  static constexpr int32_t kTapRows = 2;
  /// The lines that two output lines take lie within this many where these are not more than 2.75 lines apart:
  /// floor(p + 2.75 + 1.6) + 1 - floor(p - 1.6) is at most 7.
  static constexpr int32_t kMadeLines = 8;
  static constexpr int32_t kMostQuarters = 11;
  static constexpr int32_t kMostSlots = kTapRows * static_cast<int32_t>(kFilterTaps);

  /// The first line that is asked for before it is read lies so far behind the middle of the taps.
  static constexpr int32_t kAhead = 6;

  /// Rows of windows that are kept.
  static int32_t slotsOf(FilterWindows kind) { return windowRows(kind) == 1 ? kSharedRows : kMostSlots; }

  /// How the windows or lines of a chunk lie in the room.
  struct Layout {
    int32_t rows;
    int32_t bytesOfColumn; ///< of a row
    int32_t rest;          ///< of a row
  };
  static Layout layoutOf(const Job &job, bool made);
  /// Whether samples are taken from lines as they lie, which are planes' or made.
  static bool usesLines(const Job &job, bool made);

  [[nodiscard]] bool isShared() const { return windowRows(plan_.kind) == 1; }
  [[nodiscard]] int32_t slotOf(int32_t line, int32_t tap) const {
    if (takesLines()) {
      return line % kMadeLines;
    }
    return isShared() ? line % kSharedRows : kTapRows * tap + line % kTapRows;
  }
  [[nodiscard]] SampleTap tapOf(const int32_t *words) const {
    return kind_.isEvenAtEnd ? EvenAtEnd{plane_.limitY}(words) : HeldAtEnd{plane_.limitY}(words);
  }

  // False if all weights of the entry are positive.
  bool readTaps(const int32_t *yEntry, SampleTap (&taps)[kFilterTaps]) const;
  bool setLines(const int32_t *yEntry, FivePointLines &lines);
  bool setTaps(const int32_t *yEntry, int row, FivePointTaps &to) const;
  void setAhead(int32_t line, FivePointTaps &to, int32_t first, int32_t end) const;
  [[nodiscard]] const uint8_t *lineAt(int32_t line) const {
    return plane_.samples != nullptr ? plane_.samples + line * plane_.stride : keptLine(line) - firstSample_;
  }
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
  FivePointRow negativeStage_;           ///< where weights are negative
  FivePointLineRow lineStage_ = nullptr; ///< of samples as they lie; null where windows are laid out
  int32_t firstSample_ = 0;              ///< of kept lines
  const uint8_t *ahead_[kLinesAhead]{};  ///< what is asked for while rows of kept lines are made
  MeanKind kind_;
  bool isLuma_;
  int32_t leading_ = 0; ///< groups of the chunk that may have negative weights
  Part parts_[2]{};
  int32_t held_[kMostSlots]; ///< the line whose windows a slot has
  uint8_t *windows_;         ///< of the first slot
  int32_t rowBytes_;
};

} // namespace zqcc
