// Which routine the sizes choose, and which number a packed byte order has.
#include "base/picture_shape.h"
#include "frame/route.h"
#include "frame/routine_tables.h"

#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace {

using zqcc::ratioClassOf;
using zqcc::ResizeRatioClass;

ConvertParams resize(int inWidth, int inHeight, int outWidth, int outHeight) {
  ConvertParams p = support::blankParams();
  p.inType = COLOR_YUV420_PLANAR;
  p.inWidth = p.inStride = inWidth;
  p.inHeight = inHeight;
  p.outType = COLOR_RGB565;
  p.outWidth = outWidth;
  p.outHeight = outHeight;
  p.outStride = 2 * outWidth;
  p.isResize = 1;
  return p;
}

struct Sizes {
  int inWidth, inHeight, outWidth, outHeight;
};

template <std::size_t count>
void expectClass(ResizeRatioClass expected, const std::array<Sizes, count> &list) {
  for (const Sizes &s : list) {
    EXPECT_EQ(ratioClassOf(resize(s.inWidth, s.inHeight, s.outWidth, s.outHeight)), expected)
        << s.inWidth << "x" << s.inHeight << " to " << s.outWidth << "x" << s.outHeight;
  }
}

TEST(RatioClass, OneOfEach) {
  EXPECT_EQ(ratioClassOf(resize(320, 240, 160, 100)), 0U);
  EXPECT_EQ(ratioClassOf(resize(320, 240, 80, 60)), 1U);
  EXPECT_EQ(ratioClassOf(resize(320, 240, 240, 180)), 2U);
  EXPECT_EQ(ratioClassOf(resize(320, 240, 480, 360)), 3U);
  EXPECT_EQ(ratioClassOf(resize(320, 240, 640, 480)), 4U);
}

TEST(RatioClass, HalvingsDropTheRemainder) {
  // 640 >> 7 = 5 and 480 >> 7 = 3; 641 >> 1 = 320; 327 >> 2 = 81 and 243 >> 2 = 60.
  expectClass(zqcc::RATIO_POW2_DOWN, std::array<Sizes, 6>{{{640, 480, 320, 240},
                                                           {640, 480, 160, 120},
                                                           {640, 480, 5, 3},
                                                           {641, 481, 320, 240},
                                                           {327, 243, 81, 60},
                                                           {3, 3, 1, 1}}});
  // Rounded the other way they are no halvings.
  expectClass(zqcc::RATIO_GENERAL, std::array<Sizes, 3>{{{641, 481, 321, 241}, {327, 243, 82, 61}, {3, 3, 2, 2}}});
}

TEST(RatioClass, TenHalvingsAtTheMost) {
  // 2048 is 2 << 10 and 4096 is 2 << 11.
  expectClass(zqcc::RATIO_POW2_DOWN, std::array<Sizes, 2>{{{2048, 1024, 2, 1}, {3071, 2047, 2, 1}}});
  expectClass(zqcc::RATIO_GENERAL, std::array<Sizes, 2>{{{4096, 2048, 2, 1}, {8192, 4096, 2, 1}}});
}

TEST(RatioClass, BothDimensionsAreHalvedEquallyOften) {
  expectClass(zqcc::RATIO_GENERAL,
              std::array<Sizes, 4>{{{320, 240, 160, 60}, {320, 240, 80, 120}, {320, 240, 320, 120}, {8, 8, 1, 2}}});
}

TEST(RatioClass, OneLineOrColumnOffIsGeneral) {
  for (const Sizes &s : {Sizes{320, 240, 80, 60}, {320, 240, 240, 180}, {320, 240, 480, 360}, {320, 240, 640, 480}}) {
    expectClass(zqcc::RATIO_GENERAL, std::array<Sizes, 4>{{{s.inWidth, s.inHeight, s.outWidth + 1, s.outHeight},
                                                           {s.inWidth, s.inHeight, s.outWidth - 1, s.outHeight},
                                                           {s.inWidth, s.inHeight, s.outWidth, s.outHeight + 1},
                                                           {s.inWidth, s.inHeight, s.outWidth, s.outHeight - 1}}});
  }
  // Products, not quotients, are compared: 3 * 322 = 966 is not 4 * 241 = 964, 3 * 323 = 969 is not 2 * 484 = 968.
  expectClass(zqcc::RATIO_GENERAL, std::array<Sizes, 2>{{{322, 240, 241, 180}, {323, 240, 484, 360}}});
}

TEST(RatioClass, MixedRatiosAndTheSameSizeAreGeneral) {
  expectClass(zqcc::RATIO_GENERAL, std::array<Sizes, 5>{{{320, 240, 640, 360},
                                                         {320, 240, 240, 360},
                                                         {320, 240, 640, 120},
                                                         {320, 240, 320, 240},
                                                         {320, 240, 640, 240}}});
}

TEST(RatioClass, ChoosesTheEntryForEveryTurn) {
  constexpr std::array<Sizes, 5> kByClass{
      {{320, 240, 160, 100}, {320, 240, 80, 60}, {320, 240, 240, 180}, {320, 240, 480, 360}, {320, 240, 640, 480}}};
  for (std::size_t ratio = 0; ratio < kByClass.size(); ++ratio) {
    const Sizes &s = kByClass.at(ratio);
    ConvertParams p = resize(s.inWidth, s.inHeight, s.outWidth, s.outHeight);
    const auto entryOf = [&p](uint32_t rotation, uint32_t quality) {
      p.rotation = rotation;
      p.antiAlias = quality;
      return zqcc::routeOf(p).routine;
    };
    const auto &entries = zqcc::RESIZE_TO_RGB565;
    for (const uint32_t quality : {0U, 1U, 2U, 3U}) {
      // The class goes before the quality in a quarter turn, the quality before the class upright; a half turn heeds
      // neither.
      EXPECT_EQ(entryOf(ROTATION_NONE, quality), entries[quality == 0 ? ratio : 16]) << ratio;
      EXPECT_EQ(entryOf(ROTATION_90_LEFT, quality), entries[5 + ratio]) << ratio;
      EXPECT_EQ(entryOf(ROTATION_90_RIGHT, quality), entries[10 + ratio]) << ratio;
      EXPECT_EQ(entryOf(ROTATION_180, quality), entries[15]) << ratio;
    }
  }
}

TEST(PackedVariant, CountsThroughBothRangesOfTypes) {
  constexpr std::array<int, 8> kTypes{6, 7, 8, 9, 14, 15, 16, 17};
  for (std::size_t variant = 0; variant < kTypes.size(); ++variant) {
    EXPECT_EQ(zqcc::packedVariantOf(kTypes.at(variant)), variant) << "type " << kTypes.at(variant);
  }
}

} // namespace
