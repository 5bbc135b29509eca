// Plans of filtered columns read as their layout says, without any vector code: every output finds its samples and
// weights, in windows that lie inside the line.
#include "vector/filter_plan.h"

#include "frame/resample_tables.h"
#include "kernels/taps.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace zqcc {
namespace {

constexpr int32_t kNoLimit = std::numeric_limits<int32_t>::max();

struct Planned {
  std::vector<int32_t> table;
  std::vector<FilterGroup> memory; ///< for the alignment
  FilterPlan plan;

  Planned(int32_t source, int32_t outputs, uint32_t quality, const FilterLine &chroma) {
    const Axis axis{source, outputs};
    const FilterLine luma{outputs, source, source};
    table.resize(tableWords(TableFormat::Filtered, axis, quality));
    buildFiltered(table.data(), axis, Direction::Horizontal, quality);
    memory.resize(filterPlanBytes(luma, chroma) / sizeof(FilterGroup) + 1);
    plan = makeFilterPlan(table.data(), luma, chroma, reinterpret_cast<uint8_t *>(memory.data()));
  }
};

/// First byte of the window that an output's tap is looked for in, as stages lay windows out.
int32_t windowOf(const FilterPlan &plan, const FilterColumns &columns, int32_t group, int32_t lane, int32_t tap) {
  const int32_t *windows = plan.from(columns, group).windows;
  switch (plan.kind) {
  case FilterWindows::Near:
  case FilterWindows::Shared:
    return windows[lane / 4];
  case FilterWindows::NearOfTaps:
  case FilterWindows::OfTaps:
    return windows[4 * tap + lane / 4];
  default:
    return windows[16 * tap + lane] - lane % 4 * 4; // where the block would begin
  }
}

/// The same tap in the line as it lies.
void expectInLine(const LineColumns &columns, const FilterGroup &windows, int32_t lane, int32_t tap,
                  const SampleTap &due) {
  const uint8_t *mask = columns.groups->mask[tap] + 4 * lane;
  ASSERT_EQ(*columns.first + mask[0], due.self) << "tap " << tap;
  ASSERT_EQ(*columns.first + mask[2], due.next) << "tap " << tap;
  ASSERT_LT(mask[2], columns.bytes);
  ASSERT_EQ(columns.groups->weight[tap][2 * lane], windows.weight[tap][2 * lane]);
  ASSERT_EQ(columns.groups->weight[tap][2 * lane + 1], windows.weight[tap][2 * lane + 1]);
}

void expectLine(const Planned &planned, const FilterLine &line, bool isLuma) {
  const FilterPlan &plan = planned.plan;
  for (int32_t i = 0; i < line.outputs; ++i) {
    const int32_t group = i / kFilterGroup;
    const int32_t lane = i % kFilterGroup;
    const bool own = !isLuma && group >= plan.common;
    const FilterColumns &columns = own ? plan.chroma : plan.luma;
    const int32_t at = own ? group - plan.common : group;
    for (int32_t t = 0; t < static_cast<int32_t>(kFilterTaps); ++t) {
      const int32_t *words = planned.table.data() + i * kEntryWords<kFilterTaps> + t * kTapWords;
      const SampleTap tap = line.isEvenAtEnd ? EvenAtEnd{line.limit}(words) : HeldAtEnd{line.limit}(words);
      const FilterGroup &each = columns.groups[at];
      const uint8_t *mask = each.mask[t] + 4 * lane;
      const int32_t window = windowOf(plan, columns, at, lane, t);
      ASSERT_EQ(window + mask[0], tap.self) << "output " << i << ", tap " << t;
      ASSERT_EQ(window + mask[2], tap.next) << "output " << i << ", tap " << t;
      ASSERT_EQ(mask[1], 0x80);
      ASSERT_EQ(mask[3], 0x80);
      ASSERT_LT(mask[2], 16);
      ASSERT_EQ(each.weight[t][2 * lane], 16 * tap.weights.self);
      ASSERT_EQ(each.weight[t][2 * lane + 1], 16 * tap.weights.next);
      const bool gathered = plan.kind == FilterWindows::Gathered;
      const int32_t first = gathered ? window + lane % 4 * 4 : window;
      ASSERT_GE(first, 0);
      ASSERT_LE(first + (gathered ? 4 : 16), line.samples) << "output " << i << " of " << line.outputs;
      if (gathered) {
        ASSERT_EQ(mask[0] / 4, lane % 4);
        ASSERT_EQ(mask[2] / 4, lane % 4);
      }
      if (isNear(plan.kind)) {
        const NearWindows &near = plan.from(columns, at).near[plan.kind == FilterWindows::Near ? 0 : t];
        ASSERT_EQ(near.first + 4 * near.from[lane], window + lane % 4 * 4);
        ASSERT_LE(near.first + kWindowBytes, line.samples);
      }
      if (plan.kind == FilterWindows::Near) {
        const LineColumns lines = plan.from(columns, at).lines;
        ASSERT_GE(*lines.first, 0);
        ASSERT_LE(*lines.first + lines.bytes, line.samples);
        expectInLine(lines, each, lane, t, tap);
      }
    }
  }
}

TEST(FilterPlan, GivesEveryOutputItsTaps) {
  int kinds[5] = {};
  for (const uint32_t quality : {1U, 2U}) {
    for (const int32_t outputs : {1, 2, 7, 15, 16, 17, 33, 100, 160, 257}) {
      for (const int32_t eighths : {1, 4, 6, 8, 11, 13, 16, 19, 20, 24, 25, 28, 32, 33, 35, 40, 64, 128, 256}) {
        const int32_t source = std::max(2, outputs * eighths / 8);
        const FilterLine luma{outputs, source, source};
        const std::array<FilterLine, 5> chromas{{{outputs, source, source},
                                                 {(outputs + 1) / 2, source / 2, source / 2, true},
                                                 {(outputs + 1) / 2, source / 2, source / 2},
                                                 {(outputs + 3) / 4, source / 4, source / 4},
                                                 {(outputs + 1) / 2, source / 2 * 2, kNoLimit}}};
        for (const FilterLine &chroma : chromas) {
          SCOPED_TRACE(std::to_string(source) + " to " + std::to_string(outputs) + ", chroma " +
                       std::to_string(chroma.samples) + " to " + std::to_string(chroma.outputs));
          const Planned planned(source, outputs, quality, chroma);
          if (!planned.plan.exists) {
            ASSERT_TRUE(chroma.samples < 8 || source < 8);
            continue;
          }
          ++kinds[static_cast<int>(planned.plan.kind)];
          expectLine(planned, luma, true);
          expectLine(planned, chroma, false);
          if (HasFatalFailure()) {
            return;
          }
        }
      }
    }
  }
  for (const int count : kinds) {
    EXPECT_GT(count, 10);
  }
}

TEST(FilterPlan, SaysWhichGroupsHaveNegativeWeights) {
  int32_t most = 0;
  for (const uint32_t quality : {1U, 2U}) {
    for (const int32_t outputs : {1, 16, 17, 31, 33, 200, 400, 700}) {
      for (const int32_t source : {20, 100, 321, 1900}) {
        const Planned planned(source, outputs, quality, {outputs, source, source});
        ASSERT_TRUE(planned.plan.exists);
        int32_t groups = 0;
        for (int32_t k = 0; k < outputs * static_cast<int32_t>(kFilterTaps); ++k) {
          if (planned.table.at(static_cast<std::size_t>(k * kTapWords + 1)) < 0) {
            groups = k / static_cast<int32_t>(kFilterTaps) / kFilterGroup + 1;
          }
        }
        ASSERT_EQ(planned.plan.leading, groups) << source << " to " << outputs;
        most = std::max(most, groups);
      }
    }
  }
  EXPECT_GT(most, 3);
}

FilterWindows kindOf(int32_t source, int32_t outputs, uint32_t quality = 2) {
  const Planned planned(source, outputs, quality, {(outputs + 1) / 2, source / 2, source / 2});
  EXPECT_TRUE(planned.plan.exists);
  return planned.plan.kind;
}

TEST(FilterPlan, TakesTheNearestWindowsThatHoldTheTaps) {
  EXPECT_EQ(kindOf(1920, 800), FilterWindows::Near);
  EXPECT_EQ(kindOf(1920, 1152), FilterWindows::Near);
  EXPECT_EQ(kindOf(1280, 1280), FilterWindows::Near);
  EXPECT_EQ(kindOf(320, 800), FilterWindows::Near);
  EXPECT_EQ(kindOf(1920, 600), FilterWindows::Shared);
  EXPECT_EQ(kindOf(1920, 480), FilterWindows::NearOfTaps);
  EXPECT_EQ(kindOf(1920, 460), FilterWindows::OfTaps);
  EXPECT_EQ(kindOf(1920, 240), FilterWindows::Gathered);
  EXPECT_EQ(kindOf(1920, 60), FilterWindows::Gathered);
}

TEST(FilterPlan, TakesHalfOfTheBytesOfALineWhereTheyHoldTheTaps) {
  const auto bytesOf = [](int32_t source, int32_t outputs, uint32_t quality) {
    const Planned planned(source, outputs, quality, {(outputs + 1) / 2, source / 2, source / 2});
    EXPECT_EQ(planned.plan.chroma.lines.bytes, planned.plan.luma.lines.bytes);
    return planned.plan.luma.lines.bytes;
  };
  for (const uint32_t quality : {1U, 2U}) {
    EXPECT_EQ(bytesOf(1920, 1152, quality), 32);
    EXPECT_EQ(bytesOf(1280, 1280, quality), 32);
    EXPECT_EQ(bytesOf(320, 800, quality), 32);
    EXPECT_EQ(bytesOf(1920, 1151, quality), 64);
    EXPECT_EQ(bytesOf(1920, 800, quality), 64);
  }
}

TEST(FilterPlan, IsNotMadeWhereATapStandsBehindTheLine) {
  // Without a limit that it steps back from, the last tap is behind ten samples.
  EXPECT_FALSE(Planned(20, 20, 1, {10, 10, kNoLimit}).plan.exists);
  EXPECT_TRUE(Planned(20, 20, 1, {10, 20, kNoLimit}).plan.exists);
  EXPECT_TRUE(Planned(20, 20, 1, {10, 10, 10}).plan.exists);
  // Lines of less than four samples hold no window.
  EXPECT_FALSE(Planned(6, 20, 1, {10, 3, 3}).plan.exists);
}

} // namespace
} // namespace zqcc
