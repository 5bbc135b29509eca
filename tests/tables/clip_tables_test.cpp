#include "tables/clip_tables.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(ClipTables, EightBitsHoldVideoRange) {
  EXPECT_EQ(16U, zqcc::clipEight()[-384]);
  EXPECT_EQ(235U, zqcc::clipEight()[639]);
  for (int i = -384; i <= 639; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(std::clamp(i, 16, 235)), zqcc::clipEight()[i]) << i;
  }
}

TEST(ClipTables, SixBitsClamp) {
  for (int i = -96; i <= 159; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(std::clamp(i, 0, 63)), zqcc::clipSix()[i]) << i;
  }
}

TEST(ClipTables, HalvedSixBitsAreSixBitsWithoutTheLast) {
  for (int i = -96; i <= 159; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(std::clamp(i, 0, 63) / 2), zqcc::clipSixHalved()[i]) << i;
  }
}

TEST(ClipTables, FiveBitsHoldBackAtTheTop) {
  const uint32_t top[] = {28, 29, 29, 30, 31};
  for (int i = 28; i <= 32; ++i) {
    EXPECT_EQ(top[i - 28], zqcc::clipFive()[i]) << i;
  }
  for (int i = 0; i <= 29; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(i), zqcc::clipFive()[i]);
  }
  EXPECT_EQ(31U, zqcc::clipFive()[79]);
  EXPECT_EQ(0U, zqcc::clipFive()[-48]);
  EXPECT_EQ(0U, zqcc::clipFive()[-1]);
}

TEST(ClipTables, IndicesPastAnEndTakeTheEndValue) {
  EXPECT_EQ(0U, zqcc::clipFive().at(-2147483647 - 1));
  EXPECT_EQ(31U, zqcc::clipFive().at(2147483647));
  EXPECT_EQ(63U, zqcc::clipSix().at(160));
  EXPECT_EQ(16U, zqcc::clipEight().at(-385));
}

} // namespace
