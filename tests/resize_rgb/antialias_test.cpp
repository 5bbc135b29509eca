// Resizing to 16-bit RGB by means of five weighted samples (quality 1 and 2) and of boxes (quality 3).
#include "reference/resize_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using reference::compareResized;
using reference::convertedWords;
using reference::greyPicture;
using reference::Mixer;
using reference::refuses;
using reference::ResizeCase;
using support::Picture;
using testing::Each;
using testing::SizeIs;

constexpr std::array<int, 11> kTypes{3, 12, 1, 13, 11, 35, 0, 2, 4, 37, 34};
constexpr std::array<int, 6> kHalfWidthTypes{3, 12, 1, 13, 11, 35};

constexpr int grey(int level) {
  return (level >> 1) << 11 | level << 5 | level >> 1;
}

/// Every line holds the same samples: the given ones first, `rest` behind them.
Picture columns(const ResizeCase &c, const std::vector<uint8_t> &first, uint8_t rest) {
  Picture picture = greyPicture(c, rest);
  for (int y = 0; y < c.height; ++y) {
    std::copy(first.begin(), first.end(), picture.plane(0) + y * picture.stride);
  }
  return picture;
}

TEST(ResizeAntiAlias, NarrowTaps) {
  // 16 to 8: column 0 samples 0, 0 (in place of -1.4), 0.9, 1.4 and -0.9 (weights 1945 and -921):
  // (100 + 100 + 171 + 132 + 28) / 5 = 106, level 26.
  const ResizeCase c{.width = 16, .height = 16, .outWidth = 8, .outHeight = 9, .quality = 1};
  const auto words = convertedWords(c, columns(c, {100, 180, 60}, 60));
  ASSERT_THAT(words, SizeIs(72));
  EXPECT_EQ(words[0], grey(26));
  EXPECT_EQ(words[32], grey(26));
}

TEST(ResizeAntiAlias, WideTaps) {
  // 0, 0, 1.1, 1.6, 0: (100 + 100 + 168 + 108 + 100) / 5 = 115, level 28.
  const ResizeCase c{.width = 16, .height = 16, .outWidth = 8, .outHeight = 9, .quality = 2};
  const auto words = convertedWords(c, columns(c, {100, 180, 60}, 60));
  ASSERT_THAT(words, SizeIs(72));
  EXPECT_EQ(words[0], grey(28));
}

TEST(ResizeAntiAlias, ASampleKeepsItsLowEightBits) {
  // (-921 * 255) >> 10 = -230, whose low byte is 26: (0 + 0 + 229 + 153 + 26) / 5 = 81, level 18.
  const ResizeCase c{.width = 16, .height = 16, .outWidth = 8, .outHeight = 9, .quality = 1};
  const auto words = convertedWords(c, columns(c, {0, 255, 0}, 0));
  ASSERT_THAT(words, SizeIs(72));
  EXPECT_EQ(words[0], grey(18));
}

TEST(ResizeAntiAlias, TapSpacingIsAllThatTellsTheSettingsApart) {
  for (const int type : kHalfWidthTypes) {
    ResizeCase c{.inType = type, .width = 33, .height = 26, .outWidth = 17, .outHeight = 40, .quality = 1};
    const auto narrow = convertedWords(c, greyPicture(c, 128));
    c.quality = 2;
    const auto wide = convertedWords(c, greyPicture(c, 128));
    ASSERT_THAT(narrow, SizeIs(680));
    EXPECT_THAT(narrow, Each(0x8410));
    EXPECT_EQ(narrow, wide);
  }
}

TEST(ResizeAntiAlias, BoxMean) {
  // 32 to 8: box 0 holds columns 1 to 4, mean 110, level 27; box 7 columns 29 to 31, mean 220, level 59.
  const ResizeCase c{.width = 32, .height = 32, .outWidth = 8, .outHeight = 8, .quality = 3};
  std::vector<uint8_t> ramp;
  for (int x = 0; x < 32; ++x) {
    ramp.push_back(static_cast<uint8_t>(100 + 4 * x));
  }
  const auto words = convertedWords(c, columns(c, ramp, 0));
  ASSERT_THAT(words, SizeIs(64));
  EXPECT_EQ(words[0], grey(27));
  EXPECT_EQ(words[7], grey(59));
}

TEST(ResizeAntiAlias, EmptyBoxesGiveZero) {
  // Luma 0 and chroma 0: green is (-19528672 + 161732224) >> 22 = 33, red and blue are below zero.
  for (const int type : kHalfWidthTypes) {
    const ResizeCase c{.inType = type, .width = 8, .height = 8, .outWidth = 16, .outHeight = 12, .quality = 3};
    const auto words = convertedWords(c, greyPicture(c, 128));
    ASSERT_THAT(words, SizeIs(192));
    EXPECT_THAT(words, Each(0x0420)) << type;
  }
}

TEST(ResizeAntiAlias, BoxesAtTheEdgesRunEmpty) {
  // At the same size box i holds sample i + 1: the last luma box and, in 4:2:0, the last pair's chroma boxes are empty.
  // Luma 128 with chroma 0: green (136700704 + 161732224) >> 22 is above 63.
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 8, .outHeight = 8, .quality = 3};
  const auto words = convertedWords(c, greyPicture(c, 128));
  ASSERT_THAT(words, SizeIs(64));
  for (std::size_t y = 0; y < 8; ++y) {
    for (std::size_t x = 0; x < 8; ++x) {
      const bool hasLuma = x < 7 && y < 7;
      const bool hasChroma = x < 6 && y < 6;
      EXPECT_EQ(words[8 * y + x], !hasLuma ? 0x0420 : hasChroma ? 0x8410 : 0x07E0) << x << ", " << y;
    }
  }
}

TEST(ResizeAntiAlias, FourTwoTwoBoxesReachIntoTheOddChromaLine) {
  // At the same size chroma box 3 holds column 4 of four, which is the first sample of the odd line behind it.
  const ResizeCase c{.inType = 1, .width = 8, .height = 8, .outWidth = 8, .outHeight = 8, .quality = 3};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[3 * 4] = 200; // line 3, first sample: row 1 of the doubled pitch, column 4
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(64));
  constexpr int red = 30 << 11 | 17 << 5 | 16;
  for (std::size_t y = 0; y < 6; ++y) {
    for (std::size_t x = 0; x < 7; ++x) {
      EXPECT_EQ(words[8 * y + x], x == 6 && y < 2 ? red : 0x8410) << x << ", " << y;
    }
  }
}

TEST(ResizeAntiAlias, TurnedFramesIgnoreTheQuality) {
  for (const int type : {3, 12, 1, 13, 11, 35, 34}) {
    for (const uint32_t rotation : {3U, 4U, 5U}) {
      ResizeCase c{.inType = type, .width = 40, .height = 22, .outWidth = 25, .outHeight = 30, .rotation = rotation};
      const Picture picture = reference::pictureFor(c);
      const auto plain = convertedWords(c, picture);
      ASSERT_THAT(plain, SizeIs(750));
      for (const uint32_t quality : {1U, 2U, 3U}) {
        c.quality = quality;
        EXPECT_EQ(convertedWords(c, picture), plain) << type;
      }
    }
  }
}

TEST(ResizeAntiAlias, SimpleRatiosAreFilteredToo) {
  for (const uint32_t quality : {1U, 2U, 3U}) {
    for (const auto &size : {std::array<int, 2>{24, 16}, {36, 24}, {72, 48}, {96, 64}}) {
      EXPECT_EQ(
          compareResized({.width = 48, .height = 32, .outWidth = size[0], .outHeight = size[1], .quality = quality}),
          "");
    }
  }
}

TEST(ResizeAntiAlias, UnnamedRotationCodesActAsNone) {
  for (const uint32_t rotation : {0U, 1U, 7U}) {
    for (const int type : kTypes) {
      EXPECT_EQ(compareResized({.inType = type,
                                .width = 21,
                                .height = 34,
                                .outWidth = 12,
                                .outHeight = 19,
                                .rotation = rotation,
                                .quality = 1 + rotation % 3}),
                "");
    }
  }
}

TEST(ResizeAntiAlias, EveryRemainderOf16AtManyRatios) {
  Mixer mix(51);
  std::size_t n = 0;
  for (int width = 16; width < 48; ++width) {
    for (const int ratio : {2, 5, 8, 13, 16, 21}) { // sixteenths
      for (const uint32_t quality : {1U, 2U, 3U}) {
        ResizeCase c{.inType = kTypes[n % 11], .outType = n % 7 == 0 ? 31 : 30};
        c.width = width;
        c.height = 16 + width * 5 % 32;
        c.outWidth = width * ratio / 16;
        c.outHeight = 3 + mix.below(24);
        c.quality = quality;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
        ++n;
      }
    }
  }
}

TEST(ResizeAntiAlias, FarReductions) {
  // From 8 on boxes skip samples; lines below 8 inherit the columns' distance.
  Mixer mix(52);
  for (const int type : kTypes) {
    for (const uint32_t quality : {1U, 2U, 3U}) {
      for (const auto &f : {std::array<int, 2>{8, 8}, {9, 3}, {3, 9}, {20, 2}, {32, 31}}) {
        ResizeCase c{.inType = type, .width = 96 + mix.below(40), .height = 64 + mix.below(40)};
        c.outWidth = c.width / f[0];
        c.outHeight = c.height / f[1];
        c.quality = quality;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeAntiAlias, SmallestPictures) {
  Mixer mix(53);
  for (const int type : kTypes) {
    const int leastWidth = type == 4 ? 4 : 2;
    const int leastHeight = type == 37 ? 4 : 2;
    for (int width = leastWidth; width < leastWidth + 4; ++width) {
      for (int height = leastHeight; height < leastHeight + 4; ++height) {
        for (const int size : {1, 2, 3, 5, 9}) {
          ResizeCase c{.inType = type, .width = width, .height = height, .outWidth = size, .outHeight = 10 - size};
          c.quality = 1 + static_cast<uint32_t>(mix.below(3));
          mix.vary(c);
          ASSERT_EQ(compareResized(c), "");
        }
      }
    }
  }
}

TEST(ResizeAntiAlias, MissingPlanesAreRefused) {
  for (const uint32_t quality : {1U, 3U}) {
    const ResizeCase c{.width = 16, .height = 16, .outWidth = 10, .outHeight = 11, .quality = quality};
    for (const int plane : {0, 1, 2, 3}) {
      EXPECT_EQ(refuses(c, plane), "");
    }
  }
}

} // namespace
