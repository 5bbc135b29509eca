// Walking the groups of tables that are long.
#include "sameformat/table_groups.h"

#include "support/guarded_pages.h"
#include "support/sparse_pages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
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

std::vector<Seen> walk(const int32_t *table, int32_t sourceSize) {
  std::vector<Seen> all;
  zqcc::forEachGroup(table, sourceSize, [&](const zqcc::TableGroup &group) {
    all.push_back({group.taps - table, group.count, group.first});
  });
  return all;
}

TEST(TableGroups, AsManyAsTheSourceHasBlocks) {
  // Counts 1, 0 and 2, then what is not the table's.
  const std::vector<int32_t> words{1, 7, 7, 7, 0, 2, 8, 8, 8, 9, 9, 9, 1, 5, 5, 5};
  const std::vector<Seen> one{{1, 1, 0}};
  const std::vector<Seen> three{{1, 1, 0}, {6, 2, 1}};
  for (const int32_t size : {2, 15, 16, 17, 32}) {
    EXPECT_EQ(walk(words.data(), size), one) << size;
  }
  for (const int32_t size : {33, 47, 48}) {
    EXPECT_EQ(walk(words.data(), size), three) << size;
  }
}

/// The block behind the last one begins at 2^31, which the type does not hold. The table ends with its memory.
TEST(TableGroups, TheLongestSourceThereIs) {
  constexpr uint64_t kWords = uint64_t{1} << 27;
  const support::SparsePages pages(kWords * sizeof(int32_t));
  if (!pages.areThere()) {
    GTEST_SKIP() << pages.reason();
  }
  // One tap takes three words of what would be counts; the last block's count stands in the last word but three.
  const auto word = [&](uint64_t index, int32_t value) {
    std::memcpy(pages.data() + index * sizeof value, &value, sizeof value);
  };
  const auto *table = reinterpret_cast<const int32_t *>(pages.data());
  word(3, 2); // the fourth block has two taps
  std::vector<Seen> seen;
  // 2^27 - 6 blocks: the first 2^27 - 6 counts and six words of taps fill the table.
  constexpr auto kShorter = static_cast<int32_t>((kWords - 6) * 16);
  EXPECT_FALSE(support::catchFault([&] { seen = walk(table, kShorter); }));
  EXPECT_EQ(seen, (std::vector<Seen>{{4, 2, 0}}));
  word(3, 0);
  for (const int32_t most : {std::numeric_limits<int32_t>::max(), std::numeric_limits<int32_t>::max() - 14}) {
    seen.clear();
    EXPECT_FALSE(support::catchFault([&] { seen = walk(table, most); })) << most;
    EXPECT_TRUE(seen.empty());
  }
}

} // namespace
