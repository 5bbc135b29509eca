// Outputs so far apart in the input that segments of lines are read, and pictures that are turned before they have
// colours: beside the model.
#include "picture/bench.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

namespace {

using picture::between;
using picture::Random;
using picture::Trial;

TEST(FarApart, EveryPairOfFormats) {
  uint32_t seed = 70000000;
  for (const int32_t in : picture::inputFormats()) {
    for (const int32_t out : picture::outputFormats()) {
      Random random(++seed);
      ZqpConversion c = picture::anyResized(random, in, out, 9);
      c.inWidth += between(random, 5000, 32000);
      (c.orientation >= 5 ? c.outHeight : c.outWidth) += between(random, 0, 150);
      if (c.crop.width != 0) {
        c.crop.width = between(random, c.inWidth / 2, c.inWidth) - c.crop.x;
      }
      const std::string report = Trial(c, picture::kContents[between(random, 0, 3)], seed).run();
      ASSERT_EQ(report, "") << "seed " << seed;
    }
  }
}

TEST(TurnedYuv, SizesOfSeveralBlocks) {
  uint32_t seed = 90000000;
  for (const int32_t in : {ZQP_I420, ZQP_YV12, ZQP_NV12, ZQP_NV21, ZQP_I422, ZQP_I444, ZQP_I440, ZQP_QUARTER_HEIGHT}) {
    for (const int32_t out : {ZQP_RGB565, ZQP_RGB565_SWAPPED, ZQP_RGB24, ZQP_BGR24, ZQP_RGBA, ZQP_BGRA}) {
      for (int round = 0; round < 2; ++round) {
        Random random(++seed);
        ZqpConversion c = picture::anySameSize(random, in, out, between(random, 1, 200), between(random, 1, 700));
        if (c.orientation < 5) {
          std::swap(c.outWidth, c.outHeight);
          c.orientation = between(random, 5, 8);
        }
        c.filter = ZQP_FILTER_NEAREST;
        if (round == 1) {
          c.crop = {between(random, 0, 3), between(random, 0, 3), c.inWidth, c.inHeight};
          c.inWidth += c.crop.x + 2;
          c.inHeight += c.crop.y + between(random, 0, 3);
        }
        const std::string report = Trial(c, picture::kContents[between(random, 0, 3)], seed).run();
        ASSERT_EQ(report, "") << "seed " << seed;
      }
    }
  }
}

} // namespace
