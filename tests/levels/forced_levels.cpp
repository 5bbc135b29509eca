// The level that is forced is the one that runs: of every stage the column of that level is called and no other, for
// every conversion that vector code is meant for, and no pixel is left to portable code.
#include "levels/served.h"
#include "support/levels.h"
#include "vector/detect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using containment::Mode;
using levels::Calls;
using levels::Served;
using support::LevelsForced;
using zqcc::Level;
using zqcc::LevelSet;

/// The highest of some levels; portable if there is none.
Level highestOf(LevelSet set) {
  Level highest = zqcc::LEVEL_PORTABLE;
  for (const Level level : support::kLevels) {
    highest = (set & zqcc::setOf(level)) != 0 ? level : highest;
  }
  return highest;
}

/// The level that has to serve a stage, should `usable` be all that may run.
Level dueLevel(const std::string &stage, LevelSet usable) {
  for (const levels::Stage &each : levels::stages()) {
    if (each.name == stage) {
      return highestOf(each.own & usable);
    }
  }
  return zqcc::LEVEL_PORTABLE;
}

/// Converts by every mode and expects of every stage that the right column was called, and of every conversion that
/// stages made it, if any level may run.
void expectColumns(LevelSet usable) {
  for (const Mode &mode : levels::servedConversions()) {
    const Served served = levels::servedBy(mode);
    if (highestOf(usable) == zqcc::LEVEL_PORTABLE) {
      EXPECT_THAT(served.calls, testing::IsEmpty()) << levels::nameOf(mode);
    } else {
      EXPECT_TRUE(served.whole) << levels::nameOf(mode);
    }
    for (const Calls &call : served.calls) {
      EXPECT_EQ(support::nameOf(call.level), support::nameOf(dueLevel(call.stage, usable)))
          << call.stage << " converting " << levels::nameOf(mode);
    }
  }
}

class ForcedLevel : public testing::TestWithParam<Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }
};

TEST_P(ForcedLevel, ServesEveryConversion) {
  const LevelsForced forced(GetParam());
  for (const Mode &mode : levels::servedConversions()) {
    EXPECT_TRUE(levels::servedBy(mode).whole) << levels::nameOf(mode);
  }
}

/// Stages that make a part of a conversion only: planes that are turned or split before they are resized, and pairs
/// that are split on their way into planes beside luma that is copied.
TEST_P(ForcedLevel, TurnsAndSplitsPlanes) {
  const LevelsForced forced(GetParam());
  constexpr containment::Sizes kReduced{128, 64, 96, 48};
  const struct {
    Mode mode;
    containment::Sizes sizes;
    std::string stage;
  } kParts[] = {
      {{COLOR_YUV444_PLANAR, COLOR_RGB565, 1, ROTATION_90_LEFT, 0}, kReduced, "TRANSPOSE_BLOCK8"},
      {{COLOR_YUV440_PLANAR, COLOR_RGB565, 1, ROTATION_90_RIGHT, 0}, kReduced, "TRANSPOSE_BLOCK8"},
      {{COLOR_YUV420_PACK, COLOR_RGB565, 1, ROTATION_NONE, 0}, kReduced, "PART_PAIRS"},
      {{COLOR_YUV420_PACK, COLOR_YUV420_PLANAR, 0, ROTATION_NONE, 0}, levels::kWholeBlocks, "PART_PAIRS"},
      {{COLOR_YUV420_PACK2, COLOR_YUV420_PLANAR, 0, ROTATION_NONE, 0}, levels::kWholeBlocks, "PART_PAIRS"},
  };
  for (const auto &part : kParts) {
    const std::vector<Calls> calls = levels::servedBy(part.mode, part.sizes).calls;
    const auto called = std::find_if(calls.begin(), calls.end(), [&](const Calls &c) { return c.stage == part.stage; });
    ASSERT_NE(called, calls.end()) << part.stage << " for " << levels::nameOf(part.mode);
    const Level due = dueLevel(part.stage, support::upTo(GetParam()) & zqcc::detectedLevels());
    EXPECT_EQ(support::nameOf(called->level), support::nameOf(due)) << levels::nameOf(part.mode);
  }
}

TEST_P(ForcedLevel, RunsItsOwnColumnsAndNoOthers) {
  const LevelsForced forced(GetParam());
  expectColumns(support::upTo(GetParam()) & zqcc::detectedLevels());
}

/// A column that nothing leads to would be compiled for nothing, and nobody would see it fail.
TEST_P(ForcedLevel, CallsEveryStageThatItHas) {
  const LevelsForced forced(GetParam());
  std::set<std::string> uncalled;
  for (const levels::Stage &stage : levels::stages()) {
    if ((stage.own & zqcc::setOf(GetParam())) != 0) {
      uncalled.insert(stage.name);
    }
  }
  for (const Mode &mode : levels::servedConversions()) {
    std::vector<containment::Sizes> all{levels::kWholeBlocks, levels::kCutBlocks};
    if (mode.isResize == 1) {
      all.insert(all.end(), {levels::kHalf, levels::kQuarter, levels::kSixth, levels::kEighth, levels::kTenth});
    } else if (mode.inType == COLOR_RGB565 && mode.outType == COLOR_RGB565 && mode.rotation == ROTATION_90_LEFT) {
      all.push_back(levels::kLarge);
    }
    for (const containment::Sizes &sizes : all) {
      for (const Calls &call : levels::servedBy(mode, sizes).calls) {
        if (call.level == GetParam()) {
          uncalled.erase(call.stage);
        }
      }
    }
  }
  EXPECT_THAT(uncalled, testing::IsEmpty());
}

/// Where a level has nothing, the next lower one that may run has the conversion.
TEST_P(ForcedLevel, FallsThroughWhereItHasNothing) {
  const LevelsForced forced(GetParam());
  const levels::Emptied emptied(GetParam());
  expectColumns(support::upTo(GetParam()) & zqcc::detectedLevels() & ~zqcc::setOf(GetParam()));
}

/// Sets of levels with holes in them.
TEST_P(ForcedLevel, LeavesOutWhatMayNotRun) {
  for (const Level left : support::kLevels) {
    const LevelSet usable = support::upTo(GetParam()) & zqcc::detectedLevels() & ~zqcc::setOf(left);
    const LevelsForced forced(usable);
    expectColumns(usable);
  }
}

INSTANTIATE_TEST_SUITE_P(Vector, ForcedLevel,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_AVX512VBMI,
                                         zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

TEST(PortableLevel, CallsNoStage) {
  const LevelsForced forced(zqcc::LEVEL_PORTABLE);
  for (const Mode &mode : levels::servedConversions()) {
    const Served served = levels::servedBy(mode);
    EXPECT_THAT(served.calls, testing::IsEmpty()) << levels::nameOf(mode);
    EXPECT_FALSE(served.whole) << "portable code writes nothing converting " << levels::nameOf(mode);
  }
}

} // namespace
