// Walking a grouped table: for every 16 source positions a count and that many taps of three words.
#pragma once

#include "base/table_format.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// The way through a table. Every count but the last one's is even, so a pair of outputs never lies in two groups.
class GroupWalk {
public:
  explicit GroupWalk(const int32_t *table) : at_(table) {}

  /// Once the outputs of a group are taken, enters the next group that has any; there is one.
  void enter() {
    while (taken_ == count_) {
      count_ = *at_++;
      taken_ = 0;
    }
  }

  /// Goes on behind the next `outputs` of the group.
  void take(int32_t outputs) {
    at_ += outputs * kTapWords;
    taken_ += outputs;
  }

  /// The next output's tap, and its number in the group.
  [[nodiscard]] const int32_t *tap() const { return at_; }
  [[nodiscard]] int32_t taken() const { return taken_; }
  [[nodiscard]] int32_t left() const { return count_ - taken_; }

private:
  const int32_t *at_;
  int32_t count_ = 0;
  int32_t taken_ = 0;
};

/// The outputs whose sources start in one block of 16.
struct TableGroup {
  const int32_t *taps;
  int32_t count;

  [[nodiscard]] const int32_t *tap(int32_t i) const { return taps + i * kTapWords; }
};

/// Calls visit(group, first) with every group that has outputs and the number of its first one, `outputs` in all.
template <class Visit>
void forEachGroup(const int32_t *table, int32_t outputs, Visit visit) {
  GroupWalk walk(table);
  for (int32_t first = 0; first < outputs;) {
    walk.enter();
    const TableGroup group{walk.tap(), walk.left()};
    visit(group, first);
    walk.take(group.count);
    first += group.count;
  }
}

} // namespace zqcc
