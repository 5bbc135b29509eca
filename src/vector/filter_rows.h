// Stages that make rows of 8-bit samples of another width by means of several source samples.
//
//     WINDOW_ROW       source line                     -> row of windows
//     FIVE_POINT_ROW   rows of windows of source lines -> row of means of five bilinear samples
//     FIVE_POINT_LINE_ROW  source lines                -> the same
//     ADD_LINES        source lines                    -> row of sums, one for a column
//     ADD_PAIRS        source lines                    -> row of sums, one for two columns
//     BOX_ROW          row of sums                     -> row of means of a box
//     BOXES_OF_FOUR    source lines                    -> row of means of boxes that follow one another
#pragma once

#include "base/levels.h"
#include "vector/filter_plan.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Lays the windows of `groups` groups out, four of 16 bytes each, of which the groups have one in `rows` rows. Of near
/// windows the 64 bytes that hold them are read.
using WindowRow = void (*)(const uint8_t *line, const FilterColumns &columns, int32_t rows, int32_t groups,
                           uint8_t *to);
extern const PerLevel<WindowRow> WINDOW_ROW;
extern const PerLevel<WindowRow> NEAR_WINDOW_ROW;

/// For each tap the rows of windows of its two lines, and the weight of the lower one out of 1024.
struct FivePointLines {
  const uint8_t *top[kFilterTaps];
  const uint8_t *bottom[kFilterTaps];
  int32_t next[kFilterTaps];
  int32_t bits = 8; ///< of samples that are bytes, or of components of 16-bit pixels, which stand at the top of bytes
};

/// Means of five samples, each the low bits of the bilinear sum: `groups` groups of 16 outputs. What stands below the
/// bits of a component is without meaning.
using FivePointRow = void (*)(const FilterGroup *columns, int32_t groups, const FivePointLines &lines, uint8_t *to);
extern const PerLevel<FivePointRow> FIVE_POINT_ROW;
/// The same where no weight is negative.
extern const PerLevel<FivePointRow> POSITIVE_FIVE_POINT_ROW;
/// The low bits of the truncated means of whole sums, which negative weights may lead below 0 or beyond the bits.
extern const PerLevel<FivePointRow> WHOLE_FIVE_POINT_ROW;

/// Groups of a row, of which those before `leading` may have negative weights.
struct GroupRange {
  int32_t leading;
  int32_t end;
};

/// Lines that are asked for before they are read.
inline constexpr int32_t kLinesAhead = 4;

/// Two rows of the same columns, which may be one row twice: for each tap the upper one of its two lines, given where
/// its first sample is, and the weight of the lower one out of 1024.
struct FivePointTaps {
  const uint8_t *top[2][kFilterTaps];
  std::ptrdiff_t below;              ///< from each line to the lower one
  const uint8_t *ahead[kLinesAhead]; ///< where bytes will be read soon, for as many as lines have samples
  int32_t next[2][kFilterTaps];
  int32_t bits; ///< as in FivePointLines
};

/// The same means of source lines as they lie, of two rows.
using FivePointLineRow = void (*)(const LineColumns &columns, const GroupRange &groups, const FivePointTaps &taps,
                                  uint8_t *const (&to)[2]);
/// Where a level has none, windows are laid out.
extern const PerLevel<FivePointLineRow> FIVE_POINT_LINE_ROW;
extern const PerLevel<FivePointLineRow> WHOLE_FIVE_POINT_LINE_ROW;

/// Samples in each direction of a box at most.
inline constexpr int32_t kMostBoxSamples = 7;

/// The lines of a box: their first samples.
struct AddedLines {
  const uint8_t *line[kMostBoxSamples];
  int32_t count;
  std::ptrdiff_t next; ///< from the lines to what will be added next, which is asked for in time
};

/// Adds `count` sums of the lines, at least one: sum i has column first + i, or columns first + 2 i and the one behind
/// it, weighed 0 or 1. Reads those columns.
using AddLines = void (*)(const AddedLines &lines, int32_t first, int32_t count, uint16_t *sums);
extern const PerLevel<AddLines> ADD_LINES;
extern const PerLevel<AddLines> ADD_PAIRS;      ///< both columns
extern const PerLevel<AddLines> ADD_FIRST_ONES; ///< column 2 i alone

/// A division of 16-bit sums: the upper half of a product, then a shift.
struct BoxQuotient {
  uint16_t factor;
  int32_t shift;
};

/// Exact for sums of `samples` samples, two at least and kMostBoxSamples squared at most: 2^shift < samples <=
/// 2^(shift + 1), and the factor is 2^(16 + shift) / samples, rounded up.
constexpr BoxQuotient boxQuotient(int32_t samples) {
  int32_t shift = 0;
  while (2 << shift < samples) {
    ++shift;
  }
  return {
      static_cast<uint16_t>(((65536U << shift) + static_cast<uint32_t>(samples) - 1) / static_cast<uint32_t>(samples)),
      shift};
}

/// Boxes of a row: where in the row of sums each begins, which of the eight sums from there on count (as factors), and
/// what their sum is divided by.
struct BoxColumns {
  const int32_t *first;
  int16_t pattern[8];
  BoxQuotient quotient;
};

/// Means of `groups` groups of 16 boxes. Reads eight sums for every box.
using BoxRow = void (*)(const uint16_t *sums, const BoxColumns &columns, int32_t groups, uint8_t *to);
extern const PerLevel<BoxRow> BOX_ROW;

/// Means of `count` boxes of the lines, which follow one another from column `first` on: those of a vector at least, of
/// which all lie within a row. Reads the columns of these boxes.
using StraightBoxes = void (*)(const AddedLines &lines, int32_t first, int32_t count, const BoxQuotient &quotient,
                               uint8_t *to);
extern const PerLevel<StraightBoxes> BOXES_OF_FOUR;
extern const PerLevel<StraightBoxes> BOXES_OF_SIX;
/// Of the first, third, fifth and seventh of eight columns. Reads the column before the first box, too, and none behind
/// the last one that counts.
extern const PerLevel<StraightBoxes> BOXES_OF_EVERY_SECOND;

/// The levels of which a vector has no more boxes than that.
constexpr LevelSet straightLevels(int32_t boxes) {
  constexpr int32_t kFewest = 8; ///< of vectors of 128 bits
  return (boxes >= kFewest ? setOf(LEVEL_SSE4) | setOf(LEVEL_NEON) : 0) |
         (boxes >= 2 * kFewest ? setOf(LEVEL_AVX2) : 0) | (boxes >= 4 * kFewest ? setOf(LEVEL_AVX512) : 0);
}

} // namespace zqcc
