// Bilinear rows of samples: source lines are interpolated along themselves once, kept while output lines need them, and
// mixed with their neighbours.
#pragma once

#include "vector/resize_plan.h"
#include "vector/resize_rows.h"
#include "vector/scale_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Rows of samples of a chunk, of two lines.
template <std::size_t columns>
struct SampleBuffer {
  alignas(64) uint8_t line[2][columns];
};

/// The stages that samplers are made of, of the highest level that may run.
struct ScaleStages {
  FillRow fill;
  MixRows mix;
  PickRow pick;
  FetchRows fetchRgb24;
  FetchRows fetchRgb565;
  FillWordRows fillWords;
};

inline ScaleStages scaleStagesOf(LevelSet usable) {
  return {FILL_ROW.in(usable),   MIX_ROWS.in(usable),    PICK_ROW.in(usable),
          RGB24_ROWS.in(usable), RGB565_ROWS.in(usable), FILL_WORD_ROWS.in(usable)};
}

/// The taps of output lines, pair by pair.
class LineTaps {
public:
  /// Of lines that are weighed alike, the second of a pair takes the weights of the first.
  LineTaps(const int32_t *table, Weighting weighting, bool alike = false)
      : walk_(table), weighting_(weighting), alike_(alike) {}

  /// Of the next two lines, or of a lone last one twice.
  TapPair next(int32_t lineCount) {
    const Tap first = nextTap();
    if (lineCount == 1) {
      return {first, first};
    }
    const Tap second = nextTap();
    return {first, {second.index, alike_ ? first.next : second.next}};
  }

private:
  Tap nextTap() {
    walk_.enter();
    const Tap tap = weighting_(walk_.tap(), walk_.taken());
    walk_.take(1);
    return tap;
  }

  GroupWalk walk_;
  Weighting weighting_;
  bool alike_;
};

/// The groups of a plan that hold the outputs of a chunk.
struct ChunkGroups {
  int32_t first;
  int32_t count;
};

/// `first` is a multiple of kPlanGroup.
constexpr ChunkGroups groupsOf(int32_t first, int32_t outputs) {
  return {first / kPlanGroup, planGroups(outputs)};
}

/// Two interpolated lines of as many planes: those with the highest numbers that were asked for, since lines come in
/// rising order and an output line lies between neighbours.
template <std::size_t planes, std::size_t columns>
class KeptRows {
public:
  // Rows are filled before they are read; clearing them would cost more than a small picture.
  // cppcheck-suppress uninitMemberVar
  KeptRows() {} // NOLINT(modernize-use-equals-default): the default would clear rows of a value-initialised object

  void forget() { lines_[0] = lines_[1] = -1; }

  /// The two source lines of an output line, interpolated: a row of every plane.
  struct Neighbours {
    const int32_t (*top)[columns];
    const int32_t (*bottom)[columns];
  };

  /// fill(line, rows) interpolates a source line of every plane.
  template <class Fill>
  Neighbours neighbours(const Tap &y, Fill fill) {
    const int32_t top = slotOf(y.index, fill);
    // Without weight the lower line is not needed, not now at least.
    const int32_t bottom = y.next == 0 ? top : slotOf(y.index + 1, fill);
    return {rows_[top], rows_[bottom]};
  }

  /// Samples of an output line at to[plane].
  template <class Fill>
  void mixed(MixRows mix, const Tap &y, int32_t groups, uint8_t *const (&to)[planes], Fill fill) {
    const Neighbours rows = neighbours(y, fill);
    for (std::size_t plane = 0; plane < planes; ++plane) {
      mix(rows.top[plane], rows.bottom[plane], y.next, groups, to[plane]);
    }
  }

private:
  template <class Fill>
  int32_t slotOf(int32_t line, Fill fill) {
    const int32_t slot = line & 1;
    if (lines_[slot] != line) {
      fill(line, rows_[slot]);
      lines_[slot] = line;
    }
    return slot;
  }

  alignas(64) int32_t rows_[2][planes][columns];
  int32_t lines_[2] = {-1, -1};
};

} // namespace zqcc
