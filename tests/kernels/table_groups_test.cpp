// Walking the groups of a table: empty ones are passed over, and nothing behind the last output's tap is read.
#include "kernels/table_groups.h"

#include "support/guarded_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

struct Seen {
  std::ptrdiff_t at; ///< word of the first tap
  int32_t count;
  int32_t first;
  bool operator==(const Seen &other) const = default;
};

void PrintTo(const Seen &seen, std::ostream *out) {
  *out << seen.count << " from " << seen.first << " at " << seen.at;
}

/// The words in memory that ends behind the last of them.
class Table {
public:
  explicit Table(const std::vector<int32_t> &words) : pages_(4096, support::GuardedPages::Access::ReadOnly) {
    pages_.place(words.size() * sizeof(int32_t), support::Against::End);
    std::copy(words.begin(), words.end(), reinterpret_cast<int32_t *>(pages_.write()));
  }
  [[nodiscard]] const int32_t *words() const { return reinterpret_cast<const int32_t *>(pages_.data()); }

private:
  support::GuardedPages pages_;
};

std::vector<Seen> walk(const Table &table, int32_t outputs) {
  std::vector<Seen> all;
  const auto fault = support::catchFault([&] {
    zqcc::forEachGroup(table.words(), outputs, [&](const zqcc::TableGroup &group, int32_t first) {
      all.push_back({group.taps - table.words(), group.count, first});
    });
  });
  EXPECT_FALSE(fault.has_value());
  return all;
}

TEST(TableGroups, EmptyOnesArePassedOver) {
  const Table table({0, 0, 2, 7, 7, 7, 7, 7, 7, 0, 4, 8, 8, 8, 8, 8, 8, 8, 8, 8, 8, 8, 8, 0, 0, 1, 9, 9, 9});
  EXPECT_EQ(walk(table, 7), (std::vector<Seen>{{3, 2, 0}, {11, 4, 2}, {26, 1, 6}}));
}

TEST(TableGroups, TheLastOutputEndsTheWalk) {
  const Table first({2, 7, 7, 7, 7, 7, 7});
  EXPECT_EQ(walk(first, 2), (std::vector<Seen>{{1, 2, 0}}));
  const Table second({2, 7, 7, 7, 7, 7, 7, 0, 1, 8, 8, 8});
  EXPECT_EQ(walk(second, 2), (std::vector<Seen>{{1, 2, 0}}));
  EXPECT_EQ(walk(second, 3), (std::vector<Seen>{{1, 2, 0}, {9, 1, 2}}));
}

TEST(TableGroups, NoOutputsReadNothing) {
  EXPECT_TRUE(walk(Table({}), 0).empty());
}

TEST(TableGroups, OutputsAreTakenOneAfterTheOther) {
  const Table table({0, 2, 7, 7, 7, 8, 8, 8, 0, 1, 9, 9, 9});
  zqcc::GroupWalk walk(table.words());
  std::vector<int32_t> taps;
  for (int32_t i = 0; i < 3; ++i) {
    walk.enter();
    taps.push_back(*walk.tap());
    EXPECT_EQ(walk.taken(), i % 2);
    EXPECT_EQ(walk.left(), i == 0 ? 2 : 1);
    walk.take(1);
  }
  EXPECT_EQ(taps, (std::vector<int32_t>{7, 8, 9}));
}

} // namespace
