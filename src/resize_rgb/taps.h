// Reading grouped resampling tables: for each 16-pixel block of the source a count and as many tap triples, one an
// output position.
#pragma once

#include "frame/routine.h"

#include <cstdint>

namespace zqcc {

/// Source index and the weight, out of 1024, of the sample behind it; the sample itself has the rest.
struct Tap {
  int32_t index;
  int32_t next;
};

/// The taps of a group as the table holds them.
class TripleTaps {
public:
  explicit TripleTaps(const int32_t *triples) : triples_(triples) {}
  Tap operator[](int32_t i) const { return {triples_[3 * i], triples_[3 * i + 1]}; }

private:
  const int32_t *triples_;
};

/// Outputs of one block: `columns` x `lines` positions from output column `left` and line `top` on.
struct TableTile {
  const int32_t *xTriples;
  const int32_t *yTriples;
  int32_t columns;
  int32_t lines;
  int32_t left;
  int32_t top;
};

/// Calls run(tile) for every block of the source that has outputs.
template <class Run>
void forEachTile(const Job &job, Run run) {
  const int32_t blockColumns = (job.params.inWidth + 15) / 16;
  const int32_t blockRows = (job.params.inHeight + 15) / 16;
  const int32_t *y = job.yTable;
  int32_t top = 0;
  for (int32_t row = 0; row < blockRows; ++row) {
    const int32_t lines = *y;
    const int32_t *x = job.xTable;
    int32_t left = 0;
    for (int32_t column = 0; column < blockColumns; ++column) {
      const int32_t columns = *x;
      if (columns != 0 && lines != 0) {
        run(TableTile{x + 1, y + 1, columns, lines, left, top});
      }
      left += columns;
      x += 1 + 3 * columns;
    }
    top += lines;
    y += 1 + 3 * lines;
  }
}

} // namespace zqcc
