// Every conversion that resizes, at every level of vector code: the bytes are those of the portable level, whatever the
// ratio, the widths, the strides and the addresses, and nothing outside the planes is touched.
#include "containment/level_case.h"
#include "containment/level_draw.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <vector>

namespace {

using containment::Draw;
using containment::LevelBench;
using containment::LevelCase;
using containment::Mode;
using containment::Placement;
using containment::Sizes;

std::vector<Mode> modesThatResize() {
  std::vector<Mode> modes;
  for (const Mode &mode : containment::allModes()) {
    const bool turns = mode.rotation >= ROTATION_NONE && mode.rotation <= ROTATION_FLIP_V;
    const bool toRgb = support::isRgb16(mode.outType) || mode.outType == COLOR_RGB24;
    const bool resizes = mode.isResize == 1 && mode.quality != 2;
    if (turns && resizes && (toRgb || mode.inType == mode.outType) &&
        containment::cellOf(containment::recordOf(mode, {24, 24, 23, 29})) >= 0) {
      modes.push_back(mode);
    }
  }
  return modes;
}

constexpr int kWidest = 4200;

/// A source side for `out` outputs at any ratio from 1/32 to 32, most of them within what one window reaches.
int anySource(int out, Draw &draw) {
  switch (draw.between(0, 5)) {
  case 0:
    return draw.between(2, 40);
  case 1:
    return out * 32 / draw.between(1, 32);
  case 2:
    return out * draw.between(1, 32) / 32;
  case 3:
    return out * draw.between(32, 160) / 32;
  default:
    return out * draw.between(16, 64) / 32;
  }
}

int sourceOf(int out, Draw &draw) {
  return std::clamp(anySource(out, draw), std::max(2, (out + 31) / 32), kWidest);
}

/// Sizes of one of the ratios with routines of their own, or of none.
Sizes sizesOf(int width, Draw &draw) {
  struct Ratio {
    int in;
    int out;
  };
  constexpr std::array<Ratio, 6> kRatios{{{2, 1}, {4, 1}, {8, 1}, {4, 3}, {2, 3}, {1, 2}}};
  const int drawn = draw.between(0, 11);
  const int outHeight = draw.between(1, width > 200 ? 6 : 80);
  if (drawn >= static_cast<int>(kRatios.size())) {
    return {sourceOf(width, draw), sourceOf(outHeight, draw), width, outHeight};
  }
  const Ratio &ratio = kRatios.at(static_cast<std::size_t>(drawn));
  const auto units = [&ratio](int side) { return std::max(2 / ratio.in, (side + ratio.out - 1) / ratio.out); };
  const int columns = std::max(1, units(width));
  const int lines = std::max(1, units(outHeight));
  // Reductions by powers of two drop what is left over; positions are no whole numbers then.
  const int over = ratio.out == 1 ? ratio.in - 1 : 0;
  return {columns * ratio.in + draw.between(0, over), lines * ratio.in + draw.between(0, over), columns * ratio.out,
          lines * ratio.out};
}

/// One of the widths up to a few groups of a plan, or of those around a chunk or of several chunks.
int outWidth(Draw &draw) {
  constexpr std::array<int, 12> kWide{256, 384, 511, 512, 513, 527, 528, 529, 1025, 1200, 2050, 2065};
  const int drawn = draw.between(0, 15);
  if (drawn == 0) {
    return kWide.at(static_cast<std::size_t>(draw.between(0, 11)));
  }
  return draw.between(1, drawn < 8 ? 66 : 200);
}

/// Conversions by a mode.
constexpr int kRounds = 40;

LevelCase caseOf(const Mode &mode, Draw &draw) {
  LevelCase c;
  c.mode = mode;
  const bool quarter = mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT;
  c.sizes = sizesOf(outWidth(draw), draw);
  c.inStride = draw.stride(support::tightStride(mode.inType, c.sizes.width));
  c.outStride = draw.stride(support::tightStride(mode.outType, quarter ? c.sizes.outHeight : c.sizes.outWidth));
  c.seed = draw.seed();
  c.matrix = draw.matrix();
  c.placement = static_cast<Placement>(draw.between(0, 2));
  c.inAlignment = static_cast<std::size_t>(draw.between(0, 63));
  c.outAlignment = static_cast<std::size_t>(draw.between(0, 63));
  return c;
}

class ResizedLevels : public testing::TestWithParam<zqcc::Level> {};

TEST_P(ResizedLevels, ConvertLikeThePortableCodeAndKeepInside) {
  if (!support::hasLevel(GetParam())) {
    GTEST_SKIP() << support::missing(GetParam());
  }
  LevelBench bench(std::size_t{4} << 20);
  Draw draw(11);
  int converted = 0;
  int refused = 0;
  for (const Mode &mode : modesThatResize()) {
    for (int round = 0; round < kRounds; ++round) {
      const LevelBench::Outcome outcome = bench.compare(caseOf(mode, draw), GetParam());
      ASSERT_EQ(outcome.report, "");
      ++(outcome.code == CC_OK ? converted : refused);
    }
  }
  std::cout << converted << " conversions, " << refused << " refused\n";
  EXPECT_GT(converted, 4 * refused);
}

INSTANTIATE_TEST_SUITE_P(Vector, ResizedLevels,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_AVX512VBMI,
                                         zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<zqcc::Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

} // namespace
