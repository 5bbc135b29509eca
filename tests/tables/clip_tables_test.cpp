#include "tables/clip_tables.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using zqcc::kClip;

TEST(ClipTables, EightBitsHoldVideoRange) {
  EXPECT_EQ(16U, kClip.eight[-384]);
  EXPECT_EQ(235U, kClip.eight[639]);
  for (int i = -384; i <= 639; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(std::clamp(i, 16, 235)), kClip.eight[i]) << i;
  }
}

TEST(ClipTables, SixBitsClamp) {
  for (int i = -96; i <= 159; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(std::clamp(i, 0, 63)), kClip.six[i]) << i;
  }
}

TEST(ClipTables, FiveBitsHoldBackAtTheTop) {
  const uint32_t top[] = {28, 29, 29, 30, 31};
  for (int i = 28; i <= 32; ++i) {
    EXPECT_EQ(top[i - 28], kClip.five[i]) << i;
  }
  for (int i = 0; i <= 29; ++i) {
    EXPECT_EQ(static_cast<uint32_t>(i), kClip.five[i]);
  }
  EXPECT_EQ(31U, kClip.five[79]);
  EXPECT_EQ(0U, kClip.five[-48]);
  EXPECT_EQ(0U, kClip.five[-1]);
}

TEST(ClipTables, IndicesPastAnEndTakeTheEndValue) {
  EXPECT_EQ(0U, kClip.five.at(-2147483647 - 1));
  EXPECT_EQ(31U, kClip.five.at(2147483647));
  EXPECT_EQ(63U, kClip.six.at(160));
  EXPECT_EQ(16U, kClip.eight.at(-385));
}

} // namespace
