// Ordered dither: each pixel is one of the two values around the ideal, and their mean is the ideal.
#include "picture/cases.h"
#include "picture/contents.h"
#include "picture/reference/colours.h"
#include "picture/reference/exact_model.h"
#include "picture/reference/ideal_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using reference::OwnPicture;

TEST(Dither, ThresholdsOfABlockAreAllDifferent) {
  std::set<int> thresholds;
  for (int y = 8; y < 16; ++y) {
    for (int x = 24; x < 32; ++x) {
      thresholds.insert(reference::thresholdOf(x, y));
    }
  }
  EXPECT_EQ(thresholds.size(), 64U);
  EXPECT_EQ(*thresholds.begin(), 0);
  EXPECT_EQ(*thresholds.rbegin(), 63);
}

TEST(Dither, MeansAreTheIdeal) {
  picture::Random random(7);
  for (int round = 0; round < 200; ++round) {
    for (const int32_t in : {ZQP_I444, ZQP_RGB24}) {
      ZqpConversion c = picture::anySameSize(random, in, ZQP_RGB565, 8, 8);
      c.dither = ZQP_DITHER_ORDERED;
      OwnPicture even(in, 8, 8);
      for (int component = 0; component < 3; ++component) {
        const int value = picture::between(random, 0, 255);
        for (int pixel = 0; pixel < 64; ++pixel) {
          even.setSample(component, pixel % 8, pixel / 8, value);
        }
      }
      OwnPicture out(ZQP_RGB565, 8, 8);
      convertExactly(c, even, out);
      const auto ideal = reference::idealOf(c, even);
      for (int component = 0; component < 3; ++component) {
        const double wanted = ideal[static_cast<std::size_t>(component)].at(0, 0);
        double sum = 0;
        for (int pixel = 0; pixel < 64; ++pixel) {
          const int value = out.sample(component, pixel % 8, pixel / 8);
          EXPECT_LT(std::abs(value - wanted), 1.02) << picture::describe(c);
          sum += value;
        }
        // Means are whole 64ths.
        EXPECT_NEAR(sum / 64, wanted, .02) << picture::describe(c);
      }
    }
  }
}

} // namespace
