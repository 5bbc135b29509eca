// The four simple ratios: halving any number of times, three quarters, three halves and doubling of both sizes.
#include "reference/resize_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using reference::compareResized;
using reference::convertedWords;
using reference::greyPicture;
using reference::Mixer;
using reference::ResizeCase;
using support::Picture;
using testing::Each;
using testing::SizeIs;

constexpr std::array<int, 6> kTypes{3, 12, 1, 13, 11, 35};

/// Grey of a 6-bit level, chroma 128.
constexpr int grey(int level) {
  return (level >> 1) << 11 | level << 5 | level >> 1;
}

/// Vertical stripes: even columns black, odd columns white.
Picture stripes(const ResizeCase &c) {
  Picture picture = greyPicture(c, 16);
  for (int y = 0; y < c.height; ++y) {
    for (int x = 1; x < c.width; x += 2) {
      picture.plane(0)[y * picture.stride + x] = 235;
    }
  }
  return picture;
}

TEST(ResizeSpecialRatio, HalvingTakesSingleSamples) {
  // 641 to 320 columns: column 100 lies at 200.31. The even sample 200 alone is black.
  const ResizeCase c{.width = 641, .height = 481, .outWidth = 320, .outHeight = 240};
  const auto words = convertedWords(c, stripes(c));
  ASSERT_THAT(words, SizeIs(320 * 240));
  EXPECT_EQ(words[100], 0);
}

TEST(ResizeSpecialRatio, HalvingSevenTimes) {
  // 641 to 5 columns: column 1 lies at 128.2, column 4 at 512.8.
  const ResizeCase c{.width = 641, .height = 481, .outWidth = 5, .outHeight = 3};
  const auto words = convertedWords(c, stripes(c));
  ASSERT_THAT(words, SizeIs(15));
  EXPECT_THAT(words, Each(0));
  // One line more is another ratio: (819 * 16 + 204 * 235 + ...) >> 10 is well above black.
  const ResizeCase other{.width = 641, .height = 481, .outWidth = 5, .outHeight = 4};
  EXPECT_NE(convertedWords(other, stripes(other)).at(1), 0);
}

TEST(ResizeSpecialRatio, HalvingWithAHalfTurnIsInterpolated) {
  ResizeCase c{.width = 641, .height = 481, .outWidth = 320, .outHeight = 240, .rotation = 5};
  const auto words = convertedWords(c, stripes(c));
  ASSERT_THAT(words, SizeIs(320 * 240));
  // (704 * 16 + 320 * 235) >> 10 = 84; (84 - 16) * 1220542 >> 22 = 19.
  EXPECT_EQ(words[320 * 240 - 1 - 100], grey(19));
  for (const uint32_t rotation : {3U, 4U}) {
    c.rotation = rotation;
    EXPECT_EQ(compareResized(c, stripes(c)), "");
  }
}

TEST(ResizeSpecialRatio, ThreeQuartersUsesFixedPhases) {
  // Columns 1 | 2 a third in: (341 * 255) >> 10 = 84 gives level 19; columns 2 | 3 two thirds in: (342 * 255) >> 10 =
  // 85 gives level 20.
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 6, .outHeight = 6};
  Picture picture = greyPicture(c, 0);
  for (int y = 0; y < 8; ++y) {
    picture.plane(0)[8 * y + 2] = 255;
  }
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(36));
  EXPECT_EQ(words[0], 0);
  EXPECT_EQ(words[1], grey(19));
  EXPECT_EQ(words[2], grey(20));
}

TEST(ResizeSpecialRatio, ThreeQuartersInBothDirections) {
  // Only sample (2, 2) is lit: (341 * 341 * 255) >> 20 = 28, level 3, at (1, 1); (342 * 341 * 255) >> 20 = 28 at (2,
  // 1); sample (3, 2) lit: (682 * 342 * 255) >> 20 = 56, level 11, at (2, 2).
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 6, .outHeight = 6};
  Picture picture = greyPicture(c, 0);
  picture.plane(0)[8 * 2 + 2] = 255;
  const auto first = convertedWords(c, picture);
  picture.plane(0)[8 * 2 + 2] = 0;
  picture.plane(0)[8 * 2 + 3] = 255;
  const auto second = convertedWords(c, picture);
  ASSERT_THAT(first, SizeIs(36));
  ASSERT_THAT(second, SizeIs(36));
  EXPECT_EQ(first[6 + 1], grey(3));
  EXPECT_EQ(first[6 + 2], grey(3));
  EXPECT_EQ(second[12 + 2], grey(11));
}

TEST(ResizeSpecialRatio, ThreeHalvesUsesFixedPhases) {
  // Columns 0 | 1 two thirds in, columns 1 | 2 a third in.
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 12, .outHeight = 12};
  Picture picture = greyPicture(c, 255);
  for (int y = 0; y < 8; ++y) {
    picture.plane(0)[8 * y + 1] = 0;
  }
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(144));
  EXPECT_EQ(words[1], grey(20)); // (342 * 255) >> 10 = 85
  EXPECT_EQ(words[2], grey(19)); // (341 * 255) >> 10 = 84
}

TEST(ResizeSpecialRatio, DoublingTruncatesItsMeans) {
  // 200 is level 53, 201 still 53, 202 and 203 are 54. (200 + 203) >> 1 = 201; (200 + 203 + 203 + 201) >> 2 = 201.
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 16, .outHeight = 16};
  Picture picture = greyPicture(c, 128);
  picture.plane(0)[0] = 200;
  picture.plane(0)[1] = 203;
  picture.plane(0)[8] = 203;
  picture.plane(0)[9] = 201;
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(256));
  EXPECT_EQ(words[0], grey(53));
  EXPECT_EQ(words[1], grey(53));
  EXPECT_EQ(words[2], grey(54));
  EXPECT_EQ(words[16], grey(53));
  EXPECT_EQ(words[17], grey(53));
}

TEST(ResizeSpecialRatio, NamedSizes) {
  const std::array<std::array<int, 4>, 8> sizes{{{640, 480, 320, 240},
                                                 {640, 480, 160, 120},
                                                 {640, 480, 5, 3},
                                                 {320, 240, 80, 60},
                                                 {320, 240, 240, 180},
                                                 {160, 120, 240, 180},
                                                 {160, 120, 320, 240},
                                                 {160, 120, 320, 180}}};
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const auto &s = sizes.at(i);
    ResizeCase c{.width = s[0], .height = s[1], .outWidth = s[2], .outHeight = s[3]};
    c.rotation = i % 2 == 0 ? 2 : 3 + static_cast<uint32_t>(i / 2) % 3;
    EXPECT_EQ(compareResized(c), "");
  }
}

TEST(ResizeSpecialRatio, HalvingAnySize) {
  Mixer mix(41);
  for (int width = 2; width < 72; ++width) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      ResizeCase c{.inType = kTypes.at(static_cast<std::size_t>(mix.below(6)))};
      int k = 1 + mix.below(5);
      while (width >> k == 0) {
        --k;
      }
      c.width = width;
      c.height = (1 << k) + mix.below(60);
      c.outWidth = width >> k;
      c.outHeight = c.height >> k;
      c.rotation = rotation;
      mix.vary(c);
      ASSERT_EQ(compareResized(c), "");
    }
  }
}

TEST(ResizeSpecialRatio, FixedRatiosOfAnySize) {
  Mixer mix(42);
  constexpr std::array<std::array<int, 2>, 3> kRatios{{{4, 3}, {2, 3}, {1, 2}}};
  for (const auto &ratio : kRatios) {
    for (int periods = 1; periods < 24; ++periods) {
      for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
        ResizeCase c{.inType = kTypes.at(static_cast<std::size_t>(mix.below(6)))};
        const int rows = 2 + mix.below(14);
        c.width = ratio[0] * (periods + 1);
        c.outWidth = ratio[1] * (periods + 1);
        c.height = ratio[0] * rows;
        c.outHeight = ratio[1] * rows;
        c.rotation = rotation;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeSpecialRatio, FixedRatiosAroundTheColumnsMadeAtATime) {
  // 120 columns are made at a time, in groups of three.
  Mixer mix(44);
  constexpr std::array<std::array<int, 2>, 2> kRatios{{{4, 3}, {2, 3}}};
  for (const auto &ratio : kRatios) {
    for (const int groups : {38, 39, 40, 41, 42, 79, 80, 81, 120, 121}) {
      for (const uint32_t rotation : {2U, 3U, 4U}) {
        ResizeCase c{.inType = kTypes.at(static_cast<std::size_t>(mix.below(6)))};
        const int rows = 2 + mix.below(6);
        c.width = ratio[0] * groups;
        c.outWidth = ratio[1] * groups;
        c.height = ratio[0] * rows;
        c.outHeight = ratio[1] * rows;
        c.rotation = rotation;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeSpecialRatio, FixedRatiosPastSinglePrecision) {
  // From 2^22 columns on positions are halves: groups are no longer alike, and phases shift.
  EXPECT_EQ(compareResized({.width = 4327360, .height = 4, .outWidth = 3245520, .outHeight = 3}), "");
  EXPECT_EQ(compareResized({.width = 4327360, .height = 2, .outWidth = 6491040, .outHeight = 3}), "");
}

TEST(ResizeSpecialRatio, SmallestPictures) {
  Mixer mix(43);
  constexpr std::array<std::array<int, 4>, 6> kSizes{
      {{2, 2, 1, 1}, {2, 2, 3, 3}, {2, 2, 4, 4}, {4, 4, 3, 3}, {3, 3, 1, 1}, {3, 2, 6, 4}}};
  for (const auto &s : kSizes) {
    for (const int type : kTypes) {
      for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
        ResizeCase c{.inType = type, .width = s[0], .height = s[1], .outWidth = s[2], .outHeight = s[3]};
        c.rotation = rotation;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

} // namespace
