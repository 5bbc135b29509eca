// Which bytes of a source line the five taps of every output column are made of, laid out as vector code reads them.
// Plans are made at set-up by portable code from the words of a filtered table and serve every level.
#pragma once

#include "base/table_format.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Outputs of a group: 32 bits each in the widest vectors.
inline constexpr int32_t kFilterGroup = 16;

/// Bytes of a group in a row of windows: four for every output.
inline constexpr int32_t kWindowBytes = 4 * kFilterGroup;

constexpr int32_t filterGroups(int32_t outputs) {
  return outputs / kFilterGroup + (outputs % kFilterGroup != 0 ? 1 : 0);
}

/// Sixteen outputs, four to a block of 128 bits, in their order. A tap is two neighbouring bytes of a row of windows.
/// Weights are times 16: a sample is then the top byte of a sum modulo 2^32, whatever the signs of the weights.
struct alignas(64) FilterGroup {
  int16_t weight[kFilterTaps][2 * kFilterGroup]; ///< [tap][2 i]: 16 (1024 - next), 16 next
  uint8_t mask[kFilterTaps][kWindowBytes];       ///< [tap][4 i]: number of the byte in its block, 0x80, the next, 0x80
};

/// What the rows of windows of a source line hold.
enum class FilterWindows : int32_t {
  Near,       ///< as Shared, and a group's windows lie near one another
  Shared,     ///< one row: 16 bytes for four outputs hold all of their taps
  NearOfTaps, ///< as OfTaps, and those of a group and a tap lie near one another
  OfTaps,     ///< a row for each tap: 16 bytes for four outputs hold one tap of each
  Gathered,   ///< a row for each tap: four bytes for an output
};

constexpr bool isNear(FilterWindows kind) {
  return kind == FilterWindows::Near || kind == FilterWindows::NearOfTaps;
}

/// Rows of windows that a source line has.
constexpr int32_t windowRows(FilterWindows kind) {
  const bool isShared = kind == FilterWindows::Near || kind == FilterWindows::Shared;
  return isShared ? 1 : static_cast<int32_t>(kFilterTaps);
}

/// Windows of a group in one row.
constexpr int32_t windowsOfGroup(FilterWindows kind) {
  return kind == FilterWindows::Gathered ? kFilterGroup : 4;
}

/// Windows of a group in one row that lie at multiples of four from the first of 64 bytes, which hold all of them:
/// where in these, in fours, the 16 outputs have theirs.
struct NearWindows {
  int32_t first;
  uint8_t from[kFilterGroup];
};

/// Groups that take their samples from source lines as they lie: masks have the numbers of bytes out of `bytes`.
struct LineColumns {
  const FilterGroup *groups;
  const int32_t *first; ///< where in the line the bytes of each group begin
  int32_t bytes;        ///< 32 or 64 hold the taps of a group; 0 where there are no such groups
};

/// The columns of a plane, group by group and in these row by row.
struct FilterColumns {
  const FilterGroup *groups;
  const int32_t *windows;  ///< their first bytes in the line
  const NearWindows *near; ///< the same where they are near one another
  LineColumns lines = {};  ///< of FilterWindows::Near
};

/// The columns of a frame's planes. Chroma takes the entries that luma takes, and its line ends earlier: most groups
/// are the same.
struct FilterPlan {
  bool exists; ///< false where some tap stands where no plan reaches, or a line is too short
  FilterWindows kind;
  FilterColumns luma;
  FilterColumns chroma; ///< from group `common` on
  int32_t common;       ///< chroma's groups before this are luma's
  int32_t leading;      ///< only groups before this have negative weights

  [[nodiscard]] FilterColumns from(const FilterColumns &columns, int32_t group) const {
    const std::ptrdiff_t row = std::ptrdiff_t{group} * windowRows(kind);
    return {columns.groups + group,
            columns.windows + row * windowsOfGroup(kind),
            columns.near + row,
            {columns.lines.groups + group, columns.lines.first + group, columns.lines.bytes}};
  }
};

/// The lines of a plane: bytes of it that every line has, and where taps step back at its end, see HeldAtEnd and
/// EvenAtEnd in kernels/taps.h.
struct FilterLine {
  int32_t outputs;
  int32_t samples;
  int32_t limit;
  bool isEvenAtEnd = false;
};

/// Bytes that a plan takes at most.
uint64_t filterPlanBytes(const FilterLine &luma, const FilterLine &chroma);

/// Makes the plan of a filtered table in as many bytes, which begin at a multiple of 64.
FilterPlan makeFilterPlan(const int32_t *table, const FilterLine &luma, const FilterLine &chroma, uint8_t *memory);

} // namespace zqcc
