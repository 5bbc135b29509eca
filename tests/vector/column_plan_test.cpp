// Plans read as their layout says, without any vector code: every output finds its samples and weights.
#include "vector/column_plan.h"

#include "vector/scaled_rows.h"

#include <gtest/gtest.h>

#include <string>

namespace zqcc {
namespace {

std::string nameOf(Scaling scaling, int32_t step) {
  return std::to_string(scaling.samples) + " to " + std::to_string(scaling.outputs) + ", step " + std::to_string(step);
}

/// Number of the byte in the line that a mask's byte stands for.
int32_t byteOf(uint8_t mask, int32_t window, int32_t lineBytes) {
  EXPECT_LT(mask, kPlanWindow);
  EXPECT_GE(window, 0);
  EXPECT_LE(window, lineBytes - kPlanWindow);
  return window + mask;
}

/// Where an output stands in its group.
struct Place {
  int32_t k;
  int32_t b;
  int32_t lane;
  explicit Place(int32_t i) : k(i % 16 / 4), b(i % 64 / 16), lane(i % 4) {}
};

TEST(ColumnPlan, GivesEveryOutputItsSamplesAndWeights) {
  for (const Scaling scaling : everyScaling()) {
    for (const int32_t step : {1, 3}) {
      SCOPED_TRACE(nameOf(scaling, step));
      const auto taps = tapsFor(scaling);
      const GuardedPlan guarded(taps, {scaling.samples, step});
      const TapPlan &plan = guarded.taps();
      const int32_t lineBytes = (scaling.samples - 1) * step + 1;
      for (int32_t i = 0; i < scaling.outputs; ++i) {
        const Tap tap = taps[static_cast<std::size_t>(i)];
        const bool last = tap.index == scaling.samples - 1;
        const Place at(i);
        const TapGroup &group = plan.groups[i / kPlanGroup];
        const int16_t *weight = group.weight[at.k] + 8 * at.b + 2 * at.lane;
        const int32_t index = last ? tap.index - 1 : tap.index;
        ASSERT_EQ(weight[1], last ? 1024 : tap.next) << i;
        ASSERT_EQ(weight[0] + weight[1], 1024) << i;
        ASSERT_EQ(plan.taps[i].index, index) << i;
        const uint8_t *mask = group.mask[at.k] + 16 * at.b + 4 * at.lane;
        ASSERT_GE(mask[1], 0x80) << i;
        ASSERT_GE(mask[3], 0x80) << i;
        if (plan.parts == 0) {
          // The pairs of a group lie one behind the other.
          const int32_t window = group.window[at.k / 2][at.b];
          ASSERT_EQ(byteOf(mask[0], window, 128), i % kPlanGroup * 2) << i;
          ASSERT_EQ(byteOf(mask[2], window, 128), i % kPlanGroup * 2 + 1) << i;
        } else {
          const int32_t window = group.window[at.k * plan.parts / 4][at.b];
          ASSERT_EQ(byteOf(mask[0], window, lineBytes), index * step) << i;
          ASSERT_EQ(byteOf(mask[2], window, lineBytes), (index + 1) * step) << i;
        }
      }
    }
  }
}

/// The windows of plans within reach are lanes of 128 bytes that lie inside the line.
TEST(ColumnPlan, NumbersTheLanesOfWindowsWithinReach) {
  for (const Scaling scaling : everyScaling()) {
    SCOPED_TRACE(nameOf(scaling, 1));
    const GuardedPlan guarded(tapsFor(scaling), {scaling.samples, 1});
    const TapPlan &plan = guarded.taps();
    if (!plan.withinReach) {
      continue;
    }
    ASSERT_TRUE(plan.parts == 1 || plan.parts == 2);
    for (int32_t g = 0; g < planGroups(scaling.outputs); ++g) {
      const TapGroup &group = plan.groups[g];
      const int32_t base = group.base;
      ASSERT_GE(base, 0);
      ASSERT_LE(base + kPlanReach, scaling.samples);
      for (int32_t part = 0; part < plan.parts; ++part) {
        for (int32_t lane = 0; lane < 16; ++lane) {
          ASSERT_LT(group.lane[part][lane], 32U);
          ASSERT_EQ(base + 4 * static_cast<int32_t>(group.lane[part][lane]),
                    group.window[part][lane / 4] + lane % 4 * 4);
        }
      }
    }
  }
}

TEST(ColumnPlan, GivesEveryOutputItsNearestSample) {
  for (const Scaling scaling : everyScaling()) {
    for (const int32_t step : {1, 3}) {
      SCOPED_TRACE(nameOf(scaling, step));
      const auto columns = columnsFor(scaling);
      const GuardedPlan guarded(columns, {scaling.samples, step});
      const PickPlan &plan = guarded.columns();
      for (int32_t i = 0; i < scaling.outputs; ++i) {
        const int32_t column = columns[static_cast<std::size_t>(i)];
        ASSERT_EQ(plan.columns[i], column) << i;
        const PickGroup &group = plan.groups[i / kPlanGroup];
        for (int32_t part = 0; part < plan.parts; ++part) {
          const uint8_t mask = group.mask[part][i % kPlanGroup];
          if (part == i % 16 * plan.parts / 16) {
            const int32_t window = group.window[part][i % kPlanGroup / 16];
            ASSERT_EQ(byteOf(mask, window, (scaling.samples - 1) * step + 1), column * step) << i;
          } else {
            ASSERT_GE(mask, 0x80) << i;
          }
        }
      }
    }
  }
}

/// Windows are what makes a plan fast: ratios that they can serve must not fall back to single bytes.
TEST(ColumnPlan, TakesAsFewWindowsAsTheRatioLets) {
  const auto tapParts = [](Scaling scaling) {
    return GuardedPlan(tapsFor(scaling), {scaling.samples, 1}).taps().parts;
  };
  EXPECT_EQ(tapParts({480, 512}), 1);
  EXPECT_EQ(tapParts({960, 512}), 2);
  EXPECT_EQ(tapParts({1229, 512}), 4);
  EXPECT_EQ(tapParts({2048, 512}), 4);
  EXPECT_EQ(tapParts({4096, 512}), 0);
  EXPECT_EQ(tapParts({15, 64}), 0);
  const auto pickParts = [](Scaling scaling) {
    return GuardedPlan(columnsFor(scaling), {scaling.samples, 1}).columns().parts;
  };
  EXPECT_EQ(pickParts({512, 512}), 1);
  EXPECT_EQ(pickParts({1024, 512}), 2);
  EXPECT_EQ(pickParts({2048, 512}), 4);
  EXPECT_EQ(pickParts({4096, 512}), 0);
}

TEST(ColumnPlan, HasWindowsWithinReachUpToThreeHalves) {
  const auto withinReach = [](Scaling scaling) {
    return GuardedPlan(tapsFor(scaling), {scaling.samples, 1}).taps().withinReach;
  };
  EXPECT_TRUE(withinReach({128, 1024}));
  EXPECT_TRUE(withinReach({640, 512}));
  EXPECT_TRUE(withinReach({768, 512}));
  EXPECT_FALSE(withinReach({1100, 512}));
  EXPECT_FALSE(withinReach({127, 1024}));
}

TEST(ColumnPlan, SaysWhichColumnsAreEquallyFarApart) {
  const auto ratio = [](Scaling scaling) {
    return GuardedPlan(columnsFor(scaling), {scaling.samples, 1}).columns().ratio;
  };
  EXPECT_EQ(ratio({200, 100}), 2);
  EXPECT_EQ(ratio({400, 100}), 4);
  EXPECT_EQ(ratio({100, 100}), 1);
  EXPECT_EQ(ratio({230, 100}), 0);
  EXPECT_EQ(ratio({150, 100}), 0);
  for (const int32_t change : {-1, 1}) {
    std::vector<int32_t> but = columnsFor({200, 100});
    but.back() += change;
    EXPECT_EQ(GuardedPlan(but, {200, 1}).columns().ratio, 0);
  }
}

/// A single column has no neighbour: whatever its weights, it stands for every output.
TEST(ColumnPlan, TakesALineOfOneSample) {
  const GuardedPlan guarded(std::vector<Tap>(5, Tap{0, 77}), {1, 1});
  EXPECT_EQ(guarded.taps().parts, 0);
  EXPECT_EQ(guarded.taps().step, 0);
}

} // namespace
} // namespace zqcc
