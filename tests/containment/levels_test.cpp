// Every conversion at its own size, at every level of vector code: the bytes are those of the portable level, whatever
// the width, the strides and the addresses, and nothing outside the planes is touched.
#include "containment/level_case.h"
#include "containment/level_draw.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

using containment::Draw;
using containment::LevelBench;
using containment::LevelCase;
using containment::Mode;
using containment::Placement;

/// Sizes, strides and matrices are drawn anew in each.
constexpr int kRounds = 2;

/// From nothing to twice the lanes of the widest level and one more: those that are cut, and those around two groups.
std::vector<int> widths() {
  std::vector<int> all;
  for (int width = 0; width <= 130; width += width == 70 ? 50 : 1) {
    all.push_back(width);
  }
  return all;
}

/// The modes that vector code may serve and that the library accepts.
std::vector<Mode> modesToRgb() {
  std::vector<Mode> modes;
  for (const Mode &mode : containment::allModes()) {
    const bool turns = mode.rotation >= ROTATION_NONE && mode.rotation <= ROTATION_FLIP_V;
    const bool toRgb = support::isRgb16(mode.outType) || mode.outType == COLOR_RGB24;
    const bool plain = mode.isResize == 0 && mode.quality == 0 && mode.inType != mode.outType;
    if (turns && toRgb && plain && containment::cellOf(containment::recordOf(mode, {32, 32, 32, 32})) >= 0) {
      modes.push_back(mode);
    }
  }
  return modes;
}

LevelCase caseOf(const Mode &mode, int width, Draw &draw) {
  LevelCase c;
  c.mode = mode;
  const int height = draw.between(1, 40);
  c.sizes = {width, height, width, height};
  const bool quarter = mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT;
  c.inStride = draw.stride(support::tightStride(mode.inType, width));
  c.outStride = draw.stride(support::tightStride(mode.outType, quarter ? height : width));
  c.seed = draw.seed();
  c.matrix = draw.matrix();
  return c;
}

struct Tally {
  int converted = 0;
  int refused = 0;
};

/// All widths of a mode, three times each.
void sweep(LevelBench &bench, zqcc::Level level, const Mode &mode, Draw &draw, Tally &tally) {
  std::size_t number = 0;
  for (const int width : widths()) {
    for (const Placement placement : {Placement::End, Placement::Start, Placement::Aligned}) {
      LevelCase c = caseOf(mode, width, draw);
      c.placement = placement;
      // There are more widths than alignments, and 29 is odd: both sides meet every one of the 64.
      c.inAlignment = number % 64;
      c.outAlignment = (29 * number + 5) % 64;
      const LevelBench::Outcome outcome = bench.compare(c, level);
      ASSERT_EQ(outcome.report, "");
      ++(outcome.code == CC_OK ? tally.converted : tally.refused);
    }
    ++number;
  }
}

class Levels : public testing::TestWithParam<zqcc::Level> {};

TEST_P(Levels, ConvertLikeThePortableCodeAndKeepInside) {
  if (!support::hasLevel(GetParam())) {
    GTEST_SKIP() << support::missing(GetParam());
  }
  LevelBench bench(std::size_t{32} << 10);
  Draw draw(7);
  Tally tally;
  for (int round = 0; round < kRounds; ++round) {
    for (const Mode &mode : modesToRgb()) {
      sweep(bench, GetParam(), mode, draw, tally);
      if (HasFatalFailure()) {
        return;
      }
    }
  }
  std::cout << tally.converted << " conversions, " << tally.refused << " refused\n";
  EXPECT_GT(tally.converted, 4 * tally.refused);
}

INSTANTIATE_TEST_SUITE_P(Vector, Levels,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<zqcc::Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

} // namespace
