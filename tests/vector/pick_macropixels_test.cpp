// Picks of macropixels, at every level, against a plain loop, with unmapped pages at either end of the line.
#include "vector/pick_macropixels.h"

#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using support::Against;
using support::GuardedPages;

constexpr std::size_t kBytes = 4; // a macropixel's
constexpr int32_t kMostPicked = 600;
constexpr int32_t kLargestStep = 33 * 1024;
constexpr std::size_t kAround = 80;
constexpr uint8_t kUntouched = 0xA5;

/// Macropixels of a line that ends with the last one chosen.
class Line {
public:
  void place(int32_t readable, Against against) {
    readable_ = readable;
    pages_.place(static_cast<std::size_t>(readable) * kBytes, against);
    support::fill(pages_.write(), pages_.size(), support::Fill::Noise, static_cast<uint32_t>(readable));
  }

  /// What a stage makes, and bytes around it that it should leave alone.
  [[nodiscard]] std::vector<uint8_t> picked(zqcc::PickMacropixels pick, const std::vector<int32_t> &index) const {
    std::vector<uint8_t> row(index.size() * kBytes + 2 * kAround, kUntouched);
    const auto count = static_cast<int32_t>(index.size());
    const auto fault =
        support::catchFault([&] { pick(pages_.data(), index.data(), count, readable_, row.data() + kAround); });
    EXPECT_FALSE(fault.has_value()) << "reads what lies outside the line";
    return row;
  }

  [[nodiscard]] std::vector<uint8_t> expected(const std::vector<int32_t> &index) const {
    std::vector<uint8_t> row(kAround, kUntouched);
    for (const int32_t number : index) {
      for (std::size_t byte = 0; byte < kBytes; ++byte) {
        row.push_back(pages_.write()[static_cast<std::size_t>(number) * kBytes + byte]);
      }
    }
    row.resize(row.size() + kAround, kUntouched);
    return row;
  }

private:
  GuardedPages pages_{std::size_t{kMostPicked} * kBytes * (kLargestStep / 1024 + 1), GuardedPages::Access::ReadOnly};
  int32_t readable_ = 0;
};

/// Column tables as set-up makes them, of which a part is asked for.
std::vector<int32_t> numbers(int32_t first, int32_t count, int64_t step) {
  std::vector<int32_t> index;
  for (int64_t i = first; i < first + count; ++i) {
    index.push_back(static_cast<int32_t>(i * step >> 10));
  }
  return index;
}

class PickMacropixels : public testing::TestWithParam<zqcc::Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }

  void expectPicks(const std::vector<int32_t> &index, int32_t spare) {
    const zqcc::PickMacropixels pick = zqcc::PICK_MACROPIXELS.of[GetParam()];
    ASSERT_NE(pick, nullptr);
    for (const Against against : {Against::End, Against::Start}) {
      line_.place(index.back() + 1 + spare, against);
      ASSERT_EQ(line_.picked(pick, index), line_.expected(index))
          << index.size() << " from " << index.front() << " to " << index.back() << ", spare " << spare;
    }
  }

private:
  Line line_;
};

TEST_P(PickMacropixels, TakesEveryCountAtEveryRatio) {
  for (const int64_t step :
       {32, 100, 511, 512, 682, 819, 1023, 1024, 1025, 1092, 1365, 1706, 2047, 2048, 2184, 2185, 3000, 5000, 32768}) {
    for (int32_t count = 1; count <= 200; ++count) {
      ASSERT_NO_FATAL_FAILURE(expectPicks(numbers(0, count, step), 0)) << "step " << step;
    }
  }
}

TEST_P(PickMacropixels, TakesPartsOfATable) {
  for (int64_t step = 32; step <= kLargestStep; step += step / 7) {
    for (const int32_t first : {0, 1, 37, 256}) {
      for (const int32_t count : {8, 16, 33, 256}) {
        ASSERT_NO_FATAL_FAILURE(expectPicks(numbers(first, count, step), 0)) << "step " << step;
        ASSERT_NO_FATAL_FAILURE(expectPicks(numbers(first, count, step), 5)) << "step " << step;
      }
    }
  }
}

/// Groups that just fit one or two vectors, or just do not.
TEST_P(PickMacropixels, TakesUnevenNumbers) {
  for (int32_t last = 15; last <= 70; ++last) {
    for (int32_t at = 1; at < 16; ++at) {
      std::vector<int32_t> index(16);
      for (int32_t i = 0; i < 16; ++i) {
        index[static_cast<std::size_t>(i)] = i < at ? i : last - 15 + i;
      }
      ASSERT_NO_FATAL_FAILURE(expectPicks(index, 0));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, PickMacropixels,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_NEON),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
