// Pictures of a few samples: chroma planes of one sample or none, single lines and columns, groups that are cut. Every
// mode meets them, in memory that ends where the planes end.
#include "containment/guarded_case.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

using containment::GuardedCase;
using containment::Mode;
using containment::Sizes;

std::vector<Sizes> plainSizes() {
  std::vector<Sizes> sizes;
  for (const int width : {1, 2, 3, 4, 5}) {
    for (const int height : {1, 2, 3, 4, 5}) {
      sizes.push_back({width, height, width, height});
    }
  }
  return sizes;
}

std::vector<Sizes> scaledSizes() {
  std::vector<Sizes> sizes;
  for (const int width : {2, 3, 4, 9}) {
    for (const int height : {2, 3, 5, 16}) {
      for (const int outWidth : {1, 2, 3, 4, 9}) {
        for (const int outHeight : {1, 2, 3, 7, 16}) {
          sizes.push_back({width, height, outWidth, outHeight});
        }
      }
    }
  }
  return sizes;
}

/// Converters that keep the size behind planes that have been turned: size and direction part ways here.
bool turnsWithoutScaling(const Mode &mode) {
  const bool turned = mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT;
  const bool to420 = mode.outType == COLOR_YUV420_PLANAR || mode.outType == COLOR_YVU420_PLANAR;
  return mode.isResize == 1 && mode.quality == 0 && turned && to420 && mode.inType != mode.outType;
}

struct Tally {
  int converted = 0;
  int refused = 0;
};

void convert(containment::Bench &bench, const Mode &mode, const Sizes &sizes, uint32_t seed, Tally &tally) {
  GuardedCase c;
  c.mode = mode;
  c.sizes = sizes;
  c.inPadding = seed % 3 == 0 ? 3 : 0;
  c.outPadding = seed % 5 == 0 ? 2 : 0;
  c.seed = seed;
  const containment::Outcome outcome = bench.run(c);
  ASSERT_EQ(outcome.report, "");
  ++(outcome.code == CC_OK ? tally.converted : tally.refused);
}

TEST(SmallSizes, EveryModeConvertsOrRefusesThem) {
  containment::Bench bench(std::size_t{16} << 10);
  const std::vector<Sizes> plain = plainSizes();
  const std::vector<Sizes> scaled = scaledSizes();
  constexpr std::size_t kTurns = 6; // sizes of a resizing mode; the modes take turns with the whole list
  Tally tally;
  std::size_t next = 0;
  uint32_t seed = 0;
  for (const Mode &mode : containment::allModes()) {
    if (mode.isResize == 0 && mode.quality > 0) {
      continue;
    }
    const std::vector<Sizes> &sizes = mode.isResize == 0 ? plain : scaled;
    const std::size_t count = mode.isResize == 0 || turnsWithoutScaling(mode) ? sizes.size() : kTurns;
    for (std::size_t i = 0; i < count; ++i) {
      convert(bench, mode, sizes[next++ % sizes.size()], ++seed, tally);
      if (HasFatalFailure()) {
        return;
      }
    }
  }
  EXPECT_GT(tally.converted, 30000);
  EXPECT_GT(tally.refused, 30000);
}

} // namespace
