// What is planned for which pictures; that the plans are right shows in what is made by them.
#include "vector/resize_plan.h"

#include <gtest/gtest.h>

#include <array>

namespace {

using zqcc::PlanKind;

ConvertParams resizing(int inWidth, int outWidth, int outHeight) {
  ConvertParams params{};
  params.inWidth = inWidth;
  params.inHeight = 100;
  params.outWidth = outWidth;
  params.outHeight = outHeight;
  params.isResize = 1;
  return params;
}

uint64_t bytesFor(PlanKind kind, int outWidth, int outHeight) {
  return zqcc::resizePlanBytes(kind, resizing(1000, outWidth, outHeight));
}

/// Positions of more than 24 bits lose the half that their numbers in a table would have.
TEST(ResizePlan, DoublesByThePlaceOfTheOutput) {
  const std::array<int32_t, 3> words{7, 300, 724};
  const zqcc::Weighting weighting = zqcc::weightingOf(PlanKind::Double);
  EXPECT_EQ(weighting(words.data(), 0).next, 0);
  EXPECT_EQ(weighting(words.data(), 1).next, 512);
  EXPECT_EQ(weighting(words.data(), 1).index, 7);
  EXPECT_EQ(zqcc::weightingOf(PlanKind::General)(words.data(), 1).next, 300);
}

/// Far to the right of very wide pictures the table's weights have left the phases.
TEST(ResizePlan, FixedPhasesGoByThePlaceInTheGroup) {
  const std::array<int32_t, 3> words{7, 300, 724};
  const zqcc::Weighting quarters = zqcc::weightingOf(PlanKind::ThreeQuarters);
  const zqcc::Weighting halves = zqcc::weightingOf(PlanKind::ThreeHalves);
  constexpr std::array<int32_t, 4> kQuarters{0, 341, 682, 0};
  constexpr std::array<int32_t, 4> kHalves{0, 682, 341, 0};
  for (std::size_t i = 0; i < kQuarters.size(); ++i) {
    EXPECT_EQ(quarters(words.data(), static_cast<int32_t>(i)).next, kQuarters.at(i)) << i;
    EXPECT_EQ(halves(words.data(), static_cast<int32_t>(i)).next, kHalves.at(i)) << i;
  }
}

TEST(ResizePlan, LeavesSmallPicturesAlone) {
  EXPECT_GT(bytesFor(PlanKind::General, 16, 32), 0U);
  EXPECT_EQ(bytesFor(PlanKind::General, 15, 1000), 0U) << "narrow";
  EXPECT_EQ(bytesFor(PlanKind::General, 16, 31), 0U) << "few pixels";
  EXPECT_GT(bytesFor(PlanKind::General, 1000, 4), 0U);
  EXPECT_EQ(bytesFor(PlanKind::General, 1000, 3), 0U) << "few lines";
  EXPECT_EQ(bytesFor(PlanKind::None, 1000, 1000), 0U);
}

TEST(ResizePlan, NeedsASampleOfChroma) {
  EXPECT_EQ(zqcc::resizePlanBytes(PlanKind::Yuv411, resizing(3, 64, 64)), 0U);
  EXPECT_GT(zqcc::resizePlanBytes(PlanKind::Yuv411, resizing(4, 64, 64)), 0U);
}

} // namespace
