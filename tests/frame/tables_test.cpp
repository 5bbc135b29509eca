// The formats of the resampling tables, by values worked out on paper. Set-up's own tables are compared with this
// builder; here the builder itself is held against the arithmetic it stands for.
#include "frame/resample_tables.h"

#include "frame/context.h"
#include "reference/tables.h"
#include "support/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using reference::Words;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

Words entry(const Words &words, int position, int wordsPerEntry) {
  const auto begin = words.begin() + static_cast<std::ptrdiff_t>(position) * wordsPerEntry;
  return {begin, begin + wordsPerEntry};
}

std::vector<int> groupCounts(const Words &words) {
  std::vector<int> counts;
  for (std::size_t at = 0; at < words.size(); at += 1 + 3 * static_cast<std::size_t>(words[at])) {
    counts.push_back(words[at]);
  }
  return counts;
}

TEST(NearestTable, TruncatesAfterTheStep) {
  // 7 / 3 in 1/1024 is 2389; 2389 >> 10 = 2, 4778 >> 10 = 4.
  EXPECT_EQ(reference::stepOf(7, 3), 2389);
  EXPECT_THAT(reference::nearest(7, 3), ElementsAre(0, 2, 4));
  EXPECT_THAT(reference::nearest(2, 4), ElementsAre(0, 0, 1, 1));
}

TEST(BilinearTable, HalvingHitsEverySecondSample) {
  const Words words = reference::bilinear(320, 160);
  ASSERT_THAT(words, SizeIs(480));
  for (int i = 0; i < 160; ++i) {
    EXPECT_THAT(entry(words, i, 3), ElementsAre(2 * i, 0, 1024));
  }
}

TEST(BilinearTable, LastSampleHasNoNeighbour) {
  const Words words = reference::bilinear(4, 8);
  EXPECT_THAT(entry(words, 1, 3), ElementsAre(0, 512, 512));
  EXPECT_THAT(entry(words, 5, 3), ElementsAre(2, 512, 512)); // 2.5
  EXPECT_THAT(entry(words, 6, 3), ElementsAre(2, 512, 512)); // 3.0, past the last pair
  EXPECT_THAT(entry(words, 7, 3), ElementsAre(2, 512, 512)); // 3.5
}

TEST(BilinearTable, PositionIsMadeInDoublePrecisionAndNarrowed) {
  // 26 / 46 * 23 is a hair below 13 in double precision and exactly 13 once narrowed.
  EXPECT_THAT(entry(reference::bilinear(26, 46), 23, 3), ElementsAre(13, 0, 1024));
}

TEST(GroupedTable, PositionIsMadeInSinglePrecision) {
  // 14 / 46 in single precision is 0.3043478131; times 23 is 6.9999997, nearest 6.9999995: sample 6, not 7.
  EXPECT_THAT(reference::bilinear(14, 46).at(69), 7);
  const Words words = reference::grouped(14, 46);
  ASSERT_EQ(words.at(0), 46);
  EXPECT_THAT(Words(words.begin() + 70, words.begin() + 73), ElementsAre(6, 1023, 1));
}

TEST(FilteredTable, ColumnsListTheNarrowTapsInTheirOrder) {
  // 16 to 8. Position 0: 0, -1.4 (a copy of the first), 0.9, 1.4, -0.9 (truncates to 0, weight -921).
  const Words words = reference::filtered(16, 8, 1, true);
  ASSERT_THAT(words, SizeIs(120));
  EXPECT_THAT(entry(words, 0, 15), ElementsAre(0, 0, 1024, 0, 0, 1024, 0, 921, 103, 1, 409, 615, 0, -921, 1945));
  // Position 7: 14, 12.6, 14.9, 15.4 (past the last pair), 13.1.
  EXPECT_THAT(entry(words, 7, 15), ElementsAre(14, 0, 1024, 12, 614, 410, 14, 921, 103, 14, 512, 512, 13, 102, 922));
}

TEST(FilteredTable, LinesListTheNarrowTapsInAnotherOrder) {
  const Words words = reference::filtered(16, 8, 1, false);
  EXPECT_THAT(entry(words, 0, 15), ElementsAre(0, 0, 1024, 0, -921, 1945, 0, 0, 1024, 0, 921, 103, 1, 409, 615));
}

TEST(FilteredTable, WideTaps) {
  // Position 0: 0, -1.6 (copy), 1.1, 1.6, -1.1 (copy); for lines 0, -1.1, -1.6, 1.1, 1.6.
  EXPECT_THAT(entry(reference::filtered(16, 8, 2, true), 0, 15),
              ElementsAre(0, 0, 1024, 0, 0, 1024, 1, 102, 922, 1, 614, 410, 0, 0, 1024));
  EXPECT_THAT(entry(reference::filtered(16, 8, 2, false), 0, 15),
              ElementsAre(0, 0, 1024, 0, 0, 1024, 0, 0, 1024, 1, 102, 922, 1, 614, 410));
}

TEST(BoxTable, ListsWholeSamplesBelowTheRatio) {
  constexpr int n = -1;
  EXPECT_EQ(reference::columnBoxStep(32, 8), 1);
  const Words words = reference::box(32, 8, 1);
  EXPECT_THAT(entry(words, 0, 15), ElementsAre(1, 2, 3, 4, n, n, n, n, n, n, n, n, n, n, n));
  EXPECT_THAT(entry(words, 7, 15), ElementsAre(29, 30, 31, n, n, n, n, n, n, n, n, n, n, n, n));
}

TEST(BoxTable, FromEightOnSamplesAreSkipped) {
  constexpr int n = -1;
  EXPECT_EQ(reference::columnBoxStep(64, 4), 4);
  EXPECT_EQ(reference::columnBoxStep(64, 8), 2);
  EXPECT_EQ(reference::columnBoxStep(63, 8), 1);
  const Words words = reference::box(64, 4, 4);
  EXPECT_THAT(entry(words, 0, 15), ElementsAre(1, 5, 9, 13, n, n, n, n, n, n, n, n, n, n, n));
  EXPECT_THAT(entry(words, 3, 15), ElementsAre(49, 53, 57, 61, n, n, n, n, n, n, n, n, n, n, n));
}

TEST(BoxTable, LinesInheritTheColumnsStep) {
  constexpr int n = -1;
  EXPECT_EQ(reference::lineBoxStep(30, 10, 4), 4);
  EXPECT_EQ(reference::lineBoxStep(30, 10, 1), 1);
  EXPECT_EQ(reference::lineBoxStep(80, 10, 5), 2);
  EXPECT_THAT(entry(reference::box(30, 10, 4), 2, 15), ElementsAre(7, n, n, n, n, n, n, n, n, n, n, n, n, n, n));
}

TEST(BoxTable, EnlargingAndTheLastPositionLeaveEmptyBoxes) {
  EXPECT_THAT(reference::box(8, 16, 1), Each(-1));
  const Words same = reference::box(4, 4, 1);
  EXPECT_EQ(same.at(30), 3);
  EXPECT_THAT(entry(same, 3, 15), Each(-1)); // would start at sample 4
}

TEST(GroupedTable, SameSizeOf32) {
  const Words words = reference::grouped(32, 32);
  ASSERT_THAT(words, SizeIs(98));
  EXPECT_THAT(groupCounts(words), ElementsAre(16, 16));
  for (int i = 0; i < 31; ++i) {
    EXPECT_THAT(entry(Words(words.begin() + (i < 16 ? 1 : 2), words.end()), i, 3), ElementsAre(i, 0, 1024));
  }
  // The last position has no right neighbour; its index steps back, its weight stays.
  EXPECT_THAT(Words(words.end() - 3, words.end()), ElementsAre(30, 0, 1024));
}

TEST(GroupedTable, GroupsEndBehindOddPositions) {
  // 1.5 samples a position: position 10 is at 15 (even, opens a group), position 21 at 31.5 (odd, closes one).
  EXPECT_THAT(groupCounts(reference::grouped(48, 32)), ElementsAre(10, 12, 10));
  EXPECT_THAT(groupCounts(reference::grouped(33, 33)), ElementsAre(16, 16, 1));
  EXPECT_THAT(groupCounts(reference::grouped(17, 17)), ElementsAre(16, 1));
}

TEST(GroupedTable, EnlargedMultiplesOf16LoseNothing) {
  EXPECT_THAT(groupCounts(reference::grouped(16, 48)), ElementsAre(48));
  EXPECT_THAT(groupCounts(reference::grouped(32, 64)), ElementsAre(30, 34));
  EXPECT_THAT(groupCounts(reference::grouped(48, 96)), ElementsAre(30, 32, 34));
}

TEST(GroupedTable, GroupsWithoutPositions) {
  EXPECT_THAT(reference::grouped(64, 2), ElementsAre(2, 0, 0, 1024, 32, 0, 1024, 0, 0, 0));
  EXPECT_THAT(reference::grouped(40, 1), ElementsAre(1, 0, 0, 1024, 0, 0));
}

TEST(GroupedTable, FixedPhasesStayTrueAcrossGroups) {
  for (int periods = 1; periods < 60; ++periods) {
    const std::vector<int> reduced = groupCounts(reference::grouped(4 * periods, 3 * periods));
    const std::vector<int> enlarged = groupCounts(reference::grouped(2 * periods, 3 * periods));
    for (std::size_t i = 0; i + 1 < reduced.size(); ++i) {
      EXPECT_EQ(reduced[i] % 6, 0) << periods;
    }
    for (std::size_t i = 0; i + 1 < enlarged.size(); ++i) {
      EXPECT_EQ(enlarged[i] % 6, 0) << periods;
    }
  }
}

TEST(GroupedTable, EveryPositionInOneGroupForEverySixteenSamples) {
  for (int source = 2; source < 100; ++source) {
    for (int positions = 1; positions < 200; positions += 1 + positions / 9) {
      const Words words = reference::grouped(source, positions);
      const std::vector<int> counts = groupCounts(words);
      int sum = 0;
      for (std::size_t i = 0; i < counts.size(); ++i) {
        sum += counts[i];
        EXPECT_TRUE(counts[i] % 2 == 0 || sum == positions) << source << " to " << positions;
      }
      EXPECT_EQ(sum, positions) << source;
      EXPECT_EQ(counts.size(), static_cast<std::size_t>((source + 15) / 16)) << positions;
    }
  }
}

TEST(RunLengthColumns, FlagsNameNewSamplesAndNewChroma) {
  constexpr int k = 65536;
  EXPECT_THAT(reference::runLengthX(4, 4), ElementsAre(3, k + 2, 2 * k + 3, 3 * k + 2));
  EXPECT_THAT(reference::runLengthX(2, 4), ElementsAre(3, 0, k + 2, k));
  EXPECT_THAT(reference::runLengthX(12, 4), ElementsAre(3, 3 * k + 3, 6 * k + 3, 9 * k + 3));
}

TEST(RunLengthLines, SameSizeIsPairs) {
  EXPECT_THAT(reference::runLengthY(8, 8), ElementsAre(0x10000, 0x10002, 0x10004, 7, 7, 7));
}

TEST(RunLengthLines, DoublingRepeatsBeforeAndBehind) {
  EXPECT_THAT(reference::runLengthY(4, 8), ElementsAre(-1, 0x10000, -1, -1, 0x10002, 3, 3, 3));
}

TEST(RunLengthLines, ReducingSplitsPairs) {
  EXPECT_THAT(reference::runLengthY(9, 3), ElementsAre(0, 3, 6, 6, 6));
  // Lines 0, 1, 3, 4, 6, 7: the odd line 3 begins no pair.
  EXPECT_THAT(reference::runLengthY(9, 6), ElementsAre(0x10000, 3, 4, 7, 7, 7));
  EXPECT_THAT(reference::runLengthY(6, 4), ElementsAre(0x10000, 4, 4, 4));
}

TEST(RunLengthLines, EndsAreTheLastLineThreeTimes) {
  EXPECT_THAT(reference::runLengthY(6, 2), ElementsAre(3, 3, 3));
  EXPECT_THAT(reference::runLengthY(2, 1), ElementsAre(0, 0, 0));
  EXPECT_THAT(reference::runLengthY(2, 16), ElementsAre(-7, 0x10000, 1, 1, 1));
}

/// A table as set-up makes it: zeroed, then built.
template <typename Build>
Words built(zqcc::TableFormat format, int source, int positions, int quality, Build build) {
  const zqcc::Axis axis{source, positions};
  Words words(zqcc::tableWords(format, axis, static_cast<uint32_t>(quality)));
  build(words.data(), axis);
  return words;
}

/// The content followed by nothing but zeros; `least` words in all at the least.
bool isPadded(const Words &table, const Words &content, std::size_t least) {
  return table.size() >= least && table.size() >= content.size() &&
         std::equal(content.begin(), content.end(), table.begin()) &&
         std::all_of(table.begin() + static_cast<std::ptrdiff_t>(content.size()), table.end(),
                     [](int32_t word) { return word == 0; });
}

using zqcc::Axis;
using zqcc::TableFormat;

void checkPlainTables(int source, int positions) {
  const std::string sizes = std::to_string(source) + " to " + std::to_string(positions);
  const std::size_t least = 3 * static_cast<std::size_t>(positions) + 4;
  Words nearest = reference::nearest(source, positions);
  nearest.insert(nearest.end(), 4, 255);
  EXPECT_TRUE(isPadded(built(TableFormat::Nearest, source, positions, 0, zqcc::buildNearest), nearest, least)) << sizes;
  EXPECT_TRUE(isPadded(built(TableFormat::Bilinear, source, positions, 0, zqcc::buildBilinear),
                       reference::bilinear(source, positions), least))
      << sizes;
  EXPECT_TRUE(isPadded(built(TableFormat::Grouped, source, positions, 0, zqcc::buildGrouped),
                       reference::grouped(source, positions), least - 2 + static_cast<std::size_t>(source / 16)))
      << sizes;
  EXPECT_TRUE(isPadded(built(TableFormat::RunLength, source, positions, 0, zqcc::buildRunLengthColumns),
                       reference::runLengthX(source, positions), least))
      << sizes;
  EXPECT_TRUE(isPadded(built(TableFormat::RunLength, source, positions, 0, zqcc::buildRunLengthLines),
                       reference::runLengthY(source, positions), least))
      << sizes;
}

void checkFilteredTables(int source, int positions) {
  const std::string sizes = std::to_string(source) + " to " + std::to_string(positions);
  const std::size_t least = 15 * static_cast<std::size_t>(positions) + 4;
  for (const int quality : {1, 2}) {
    for (const bool isX : {true, false}) {
      const auto build = [&](int32_t *table, const Axis &axis) {
        zqcc::buildFiltered(table, axis, isX ? zqcc::Direction::Horizontal : zqcc::Direction::Vertical,
                            static_cast<uint32_t>(quality));
      };
      EXPECT_TRUE(isPadded(built(TableFormat::Filtered, source, positions, quality, build),
                           reference::filtered(source, positions, quality, isX), least))
          << sizes << ", quality " << quality;
    }
  }
  const int step = reference::columnBoxStep(source, positions);
  EXPECT_EQ(zqcc::boxSpacing({source, positions}), step) << sizes;
  for (const int spacing : {step, step + 2}) {
    const auto build = [&](int32_t *table, const Axis &axis) { zqcc::buildBox(table, axis, spacing); };
    EXPECT_TRUE(isPadded(built(TableFormat::Box, source, positions, 3, build),
                         reference::box(source, positions, spacing), least))
        << sizes << ", spacing " << spacing;
  }
}

TEST(LibraryTables, AgreeWithTheReferenceOverThousandsOfSizes) {
  for (int source = 2; source < 130; ++source) {
    for (int positions = 1 + source % 3; positions < 260; positions += 1 + positions / 6) {
      checkPlainTables(source, positions);
      if ((source + positions) % 4 == 0) {
        checkFilteredTables(source, positions);
      }
    }
  }
}

TEST(LibraryTables, AgreeWithTheReferenceAtPictureSizes) {
  const std::array<int, 12> sizes{160, 176, 240, 320, 352, 481, 640, 641, 720, 1080, 1920, 4095};
  for (const int source : sizes) {
    for (const int positions : sizes) {
      checkPlainTables(source, positions);
    }
    checkFilteredTables(source, 1920);
    checkFilteredTables(source, 97);
  }
}

/// 32 samples to 32 positions. Position 15 is the first to reach sample 15 and, being odd, closes the first group;
/// position 31 reaches sample 31, closes the second and leaves a third one open, whose count is 0. Sample 31 has no
/// right neighbour, so its index steps back to 30 and its weights stay those of a whole position.
Words sameSizeOf32() {
  Words words{16};
  for (int i = 0; i < 32; ++i) {
    if (i == 16) {
      words.push_back(16);
    }
    words.insert(words.end(), {i < 31 ? i : 30, 0, 1024});
  }
  words.push_back(0);
  return words;
}

TEST(LibraryTables, GroupsCloseAtTheLastSampleOfABlock) {
  // 1.5 samples a position. Position 10 stands at sample 15, the limit, and being even opens the second group. Position
  // 21 stands at 31.5, reaches 31 and being odd closes it. Position 31 stands at 46.5, below 47. Two words are spare.
  EXPECT_THAT(groupCounts(built(TableFormat::Grouped, 48, 32, 0, zqcc::buildGrouped)), ElementsAre(10, 12, 10, 0, 0));
}

TEST(LibraryTables, GroupedSameSizeOf32WordByWord) {
  const Words words = built(TableFormat::Grouped, 32, 32, 0, zqcc::buildGrouped);
  // 3 * 32 + 32 / 16 + 2 words: the last one is spare.
  ASSERT_THAT(words, SizeIs(100));
  const Words expected = sameSizeOf32();
  ASSERT_THAT(expected, SizeIs(99));
  EXPECT_EQ(Words(words.begin(), words.end() - 1), expected);
  EXPECT_EQ(words.back(), 0);
  // The places that matter, by number.
  EXPECT_EQ(words[0], 16);
  EXPECT_THAT(Words(words.begin() + 46, words.begin() + 53), ElementsAre(15, 0, 1024, 16, 16, 0, 1024));
  EXPECT_THAT(Words(words.begin() + 92, words.begin() + 99), ElementsAre(30, 0, 1024, 30, 0, 1024, 0));
}

class PreparedHandle : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(zqCCInit(&handle_), CC_OK); }
  void TearDown() override { EXPECT_EQ(zqCCUninit(handle_), CC_OK); }
  uint32_t prepare(ConvertParams params) { return zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &params); }
  uint32_t process(ConvertParams params) { return zqCCProcess(handle_, &params); }
  ConvertParams record(uint32_t isResize) {
    ConvertParams params = support::blankParams();
    params.outType = 30;
    params.outWidth = params.outHeight = 16;
    params.isResize = isResize;
    source_.describe(params);
    canvas_.describe(params);
    return params;
  }

  ConvertContext *handle_ = nullptr;
  support::Picture source_{11, 16, 16, 16, support::Fill::Noise, 1};
  support::Canvas canvas_ = support::Canvas::forPicture(30, 16, 16, 32);
};

TEST_F(PreparedHandle, SemiPlanarInputNeedsItsChromaPlanes) {
  EXPECT_EQ(process(record(0)), CC_ERR_ARGUMENT);
  EXPECT_EQ(canvas_.touched(), "");
  EXPECT_EQ(prepare(record(0)), CC_OK);
  EXPECT_EQ(process(record(0)), CC_OK);
}

TEST_F(PreparedHandle, WithoutResizeThereAreNoTables) {
  EXPECT_EQ(prepare(record(0)), CC_OK);
  EXPECT_EQ(process(record(1)), CC_ERR_ARGUMENT);
  EXPECT_EQ(canvas_.touched(), "");
  EXPECT_EQ(prepare(record(1)), CC_OK);
  EXPECT_EQ(process(record(1)), CC_OK);
}

TEST_F(PreparedHandle, TablesOfAnotherSizeDoNotServe) {
  ConvertParams other = record(1);
  other.outWidth = 15;
  EXPECT_EQ(prepare(other), CC_OK);
  EXPECT_EQ(process(record(1)), CC_ERR_ARGUMENT);
  EXPECT_EQ(canvas_.touched(), "");
}

TEST_F(PreparedHandle, SetUpKeepsTheGroupedTablesOfBothDirections) {
  ConvertParams description = record(1);
  description.inType = COLOR_YUV420_PLANAR;
  description.inWidth = description.inStride = description.outWidth = 32;
  description.inHeight = description.outHeight = 32;
  ASSERT_EQ(prepare(description), CC_OK);
  const Words expected = sameSizeOf32();
  ASSERT_NE(handle_->xTable, nullptr);
  ASSERT_NE(handle_->yTable, nullptr);
  EXPECT_EQ(Words(handle_->xTable, handle_->xTable + expected.size()), expected);
  EXPECT_EQ(Words(handle_->yTable, handle_->yTable + expected.size()), expected);
}

TEST_F(PreparedHandle, TheOutputStrideMayDifferFromFrameToFrame) {
  EXPECT_EQ(prepare(record(1)), CC_OK);
  ConvertParams params = record(1);
  support::Canvas wide = support::Canvas::forPicture(30, 16, 16, 46);
  wide.describe(params);
  EXPECT_EQ(process(params), CC_OK);
}

} // namespace
