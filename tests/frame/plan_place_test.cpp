// Where the plan of a resizing conversion's columns lies, and who gets it.
#include "frame/plan_place.h"
#include "support/levels.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace {

ConvertParams resizing(int inType, int inWidth, int outWidth) {
  ConvertParams params{};
  params.inType = inType;
  params.outType = COLOR_RGB565;
  params.inWidth = inWidth;
  params.inHeight = 60;
  params.outWidth = outWidth;
  params.outHeight = 50;
  params.isResize = 1;
  params.rotation = ROTATION_NONE;
  return params;
}

bool hasVectorCode() {
  for (const zqcc::Level level : support::kLevels) {
    if (level != zqcc::LEVEL_PORTABLE && support::hasLevel(level)) {
      return true;
    }
  }
  return false;
}

TEST(PlanPlace, IsAlignedBehindTheTable) {
  if (!hasVectorCode()) {
    GTEST_SKIP() << "no vector code is built, or none can run";
  }
  for (int outWidth = 16; outWidth < 200; ++outWidth) {
    for (const int type : {COLOR_YUV420_PLANAR, COLOR_YUV444_PLANAR, COLOR_RGB24}) {
      const ConvertParams params = resizing(type, 97, outWidth);
      const zqcc::PlanPlace place = zqcc::planPlaceOf(zqcc::routeOf(params), params);
      ASSERT_EQ(place.offset % 64, 0U) << outWidth;
      ASSERT_GE(place.offset, 12U * static_cast<unsigned>(outWidth)) << "a tap of three words for every column";
      ASSERT_GT(place.end, place.offset) << outWidth;
    }
  }
}

TEST(PlanPlace, NothingIsPlannedForWhatKeepsItsSize) {
  ConvertParams params = resizing(COLOR_YUV420_PLANAR, 640, 640);
  params.isResize = 0;
  const zqcc::PlanPlace place = zqcc::planPlaceOf(zqcc::routeOf(params), params);
  EXPECT_EQ(place.end, place.offset);
}

TEST(PlanPlace, OnlyVectorCodeGetsThePlan) {
  const ConvertParams params = resizing(COLOR_YUV420_PLANAR, 97, 120);
  const zqcc::Route route = zqcc::routeOf(params);
  const zqcc::PlanPlace place = zqcc::planPlaceOf(route, params);
  std::vector<int32_t> memory(place.end / sizeof(int32_t) + 1);
  ConvertContext context{};
  context.params = params;
  context.xTable = memory.data();
  EXPECT_EQ(zqcc::planOf(context, route, zqcc::setOf(zqcc::LEVEL_PORTABLE)), nullptr);
  const void *behind = reinterpret_cast<const uint8_t *>(memory.data()) + place.offset;
  EXPECT_EQ(zqcc::planOf(context, route, zqcc::kEveryLevel), hasVectorCode() ? behind : nullptr);
}

} // namespace
