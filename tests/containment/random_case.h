// Random conversions for one cell of the routine tables.
#pragma once

#include "containment/guarded_case.h"

#include <cstdint>
#include <random>
#include <vector>

namespace containment {

/// Modes that lead to each cell: first index the cell, as in cells().
class CaseMaker {
public:
  explicit CaseMaker(uint32_t seed);

  /// A case for a cell that is served by at least one mode. Sizes are drawn so that resizing lands in the cell's ratio
  /// class; now and then they are impossible, or land elsewhere, which the caller sees with cellOf().
  GuardedCase make(int cell);
  [[nodiscard]] bool hasModes(int cell) const { return !modes_[static_cast<std::size_t>(cell)].empty(); }

private:
  struct Entry {
    Mode mode;
    int ratio = 0;
  };
  int between(int low, int high);
  Sizes sizesFor(const Entry &entry);
  int side();
  void vary(GuardedCase &c);
  reference::MatrixChoice matrix();

  std::mt19937 random_;
  std::vector<std::vector<Entry>> modes_;
};

} // namespace containment
