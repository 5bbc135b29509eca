// Every conversion at its own size, at every level of vector code: the bytes are those of the portable level, whatever
// the width, the strides and the addresses, and nothing outside the planes is touched.
#include "base/picture_shape.h"
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

/// The modes at the picture's own size that the library accepts.
std::vector<Mode> modes() {
  std::vector<Mode> all;
  for (const Mode &mode : containment::allModes()) {
    const bool turns = mode.rotation >= ROTATION_NONE && mode.rotation <= ROTATION_FLIP_V;
    const bool plain = mode.isResize == 0 && mode.quality == 0;
    if (turns && plain && containment::cellOf(containment::recordOf(mode, {32, 32, 32, 32})) >= 0) {
      all.push_back(mode);
    }
  }
  return all;
}

/// Both pictures of these are taken for tight: strides that are shorter than a line would not hold them.
bool takesPlanesForTight(const Mode &mode) {
  return mode.inType == mode.outType && zqcc::isPlanar420(mode.inType) && mode.rotation >= ROTATION_90_LEFT &&
         mode.rotation <= ROTATION_180;
}

LevelCase caseOf(const Mode &mode, int width, Draw &draw) {
  LevelCase c;
  c.mode = mode;
  const int height = draw.between(1, 40);
  c.sizes = {width, height, width, height};
  const bool quarter = mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT;
  const int inTight = support::tightStride(mode.inType, width);
  const int outTight = support::tightStride(mode.outType, quarter ? height : width);
  const bool tight = takesPlanesForTight(mode);
  c.inStride = std::max(draw.stride(inTight), tight ? inTight : 0);
  c.outStride = std::max(draw.stride(outTight), tight ? outTight : 0);
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
    for (const Mode &mode : modes()) {
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
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_AVX512VBMI,
                                         zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<zqcc::Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

} // namespace
