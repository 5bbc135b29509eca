// Walking a grouped table: for every 16 source positions a count word and that many taps of three words.
#pragma once

#include "sameformat/bilinear.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// The output positions whose sources start in one block of 16.
struct TableGroup {
  const int32_t *taps;
  int32_t count;
  int32_t first; ///< output position of the first tap

  [[nodiscard]] SampleTap tap(int32_t i) const { return AsBuilt{}(taps + std::ptrdiff_t{i} * kTapWords); }
};

/// Calls `visit` with every group that is not empty; the table has one for each block of `sourceSize`.
template <class Visit>
void forEachGroup(const int32_t *table, int32_t sourceSize, Visit visit) {
  int32_t first = 0;
  for (int32_t block = 0; block < sourceSize; block += 16) {
    const int32_t count = *table++;
    if (count > 0) {
      visit(TableGroup{table, count, first});
      table += std::ptrdiff_t{count} * kTapWords;
      first += count;
    }
    if (sourceSize - block <= 16) {
      return; // the next block's number could leave the range of the type
    }
  }
}

} // namespace zqcc
