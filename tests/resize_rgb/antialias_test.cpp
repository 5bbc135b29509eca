// Resizing to 16-bit RGB by means of five weighted samples (quality 1 and 2) and of boxes (quality 3).
#include "resize_rgb/antialias.h"

#include "reference/resize_check.h"
#include "vector/detect.h"

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

TEST(ResizeAntiAlias, AnEmptyLumaBoxIsBlackBesideFilledChroma) {
  // The last column's luma box is empty: luma 0. Its chroma box 3 holds column 4, the first sample of the odd line, in
  // rows (y >> 1) + 1 of the doubled pitch, of which the fourth is missing. Grey chroma: -16 * 1220542 is below zero.
  const ResizeCase c{.inType = 1, .width = 8, .height = 8, .outWidth = 8, .outHeight = 8, .quality = 3};
  Picture picture = greyPicture(c, 128);
  auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(64));
  for (std::size_t y = 0; y < 8; ++y) {
    EXPECT_EQ(words[8 * y + 7], y < 6 ? 0x0000 : 0x0420) << y;
  }
  // Cr 200 in the second row's odd line, of lines 2 and 3: red (-19528672 + 72 * 1673527) >> 22 = 24, green below zero.
  picture.plane(2)[5 * 4] = 200;
  words = convertedWords(c, picture);
  for (std::size_t y = 0; y < 6; ++y) {
    EXPECT_EQ(words[8 * y + 7], y == 2 || y == 3 ? 12 << 11 : 0x0000) << y;
  }
}

TEST(ResizeAntiAlias, ChromaTapsStopBeforeTheLastColumn) {
  // 16 columns at the same size: chroma column 7 of 8 has taps at 7, 5.6, 7.9, 8.4 and 6.1. Samples 7 and 8 step back
  // to 6 with their weights. With Cr 128 up to column 6 and 228 in column 7:
  // (128 + 128 + (128 * 103 + 228 * 921 >> 10) + (128 * 615 + 228 * 409 >> 10) + (128 * 922 + 228 * 102 >> 10)) / 5
  // = (128 + 128 + 217 + 167 + 137) / 5 = 155: red (136700704 + 27 * 1673527) >> 22 = 43, green
  // (136700704 - 27 * 852492) >> 22 = 27.
  const ResizeCase c{.width = 16, .height = 16, .outWidth = 16, .outHeight = 16, .quality = 1};
  Picture picture = greyPicture(c, 128);
  for (int line = 0; line < 8; ++line) {
    picture.plane(2)[8 * line + 7] = 228;
  }
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(256));
  for (std::size_t y = 0; y < 16; ++y) {
    EXPECT_EQ(words[16 * y + 14], 21 << 11 | 27 << 5 | 16) << y;
    EXPECT_EQ(words[16 * y + 15], 21 << 11 | 27 << 5 | 16) << y;
    EXPECT_EQ(words[16 * y], 0x8410) << y;
  }
}

TEST(ResizeAntiAlias, LumaTapsStopBeforeTheLastColumnAndLineForBothSettings) {
  // Tables by hand, 8 x 4 to 2 x 2. Entry 0 of the columns mixes samples 0; 7, which steps back to 6 and gives all to
  // its neighbour 7; 6 and 7 evenly; 2; and 7 again, which gives all to 6. Entry 1 is that last tap five times. Line
  // entry 0 is line 0, line entry 1 is line 3, which steps back to line 2.
  const std::vector<int32_t> x{0, 0, 1024, 7, 1024, 0,    6, 512, 512,  2, 0, 1024, 7, 0, 1024,
                               7, 0, 1024, 7, 0,    1024, 7, 0,   1024, 7, 0, 1024, 7, 0, 1024};
  const std::vector<int32_t> y{0, 0, 1024, 0, 0, 1024, 0, 0, 1024, 0, 0, 1024, 0, 0, 1024,
                               3, 0, 1024, 3, 0, 1024, 3, 0, 1024, 3, 0, 1024, 3, 0, 1024};
  const ResizeCase c{.width = 8, .height = 4, .outWidth = 2, .outHeight = 2};
  Picture picture = greyPicture(c, 16);
  const std::array<std::array<uint8_t, 8>, 3> lines{
      {{20, 16, 40, 16, 16, 16, 100, 235}, {16, 16, 16, 16, 16, 16, 16, 16}, {200, 16, 200, 16, 16, 16, 200, 200}}};
  std::memcpy(picture.plane(0), lines.data(), sizeof lines);
  for (const uint32_t quality : {1U, 2U}) {
    std::array<uint8_t, 8> out{};
    ConvertParams p = reference::recordFor(c);
    picture.describe(p);
    p.outStride = 4;
    p.outBuf[0] = out.data();
    p.antiAlias = quality;
    zqcc::resizeYuvToRgb565AntiAlias(zqcc::Job{p, x.data(), y.data(), nullptr, true, 0, 8, zqcc::usableLevels()});
    // (20 + 235 + 167 + 40 + 100) / 5 = 112, level 27; 100 is level 24, 200 level 53.
    const std::array<int, 4> levels{27, 24, 53, 53};
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(out.at(2 * i) | out.at(2 * i + 1) << 8, grey(levels.at(i))) << "quality " << quality << ", " << i;
    }
  }
}

TEST(ResizeAntiAlias, BoxesEndAtAStrideShorterThanTheLine) {
  // Eight columns, 6 bytes from line to line: at the same size box i holds column i + 1 as far as that is below 6, in
  // full-size planes of all kinds. Box y holds line y + 1 of four.
  ResizeCase c{.inType = 34, .width = 8, .height = 4, .outWidth = 8, .outHeight = 4, .quality = 3, .inPadding = -2};
  Picture picture = greyPicture(c, 0);
  for (int plane = 0; plane < 3; ++plane) {
    for (int at = 0; at < 3 * 6 + 8; ++at) {
      picture.plane(plane)[at] = static_cast<uint8_t>(8 * at);
    }
  }
  auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(32));
  for (int i = 0; i < 32; ++i) {
    const int level = i % 8 < 5 && i / 8 < 3 ? 8 * (6 * (i / 8 + 1) + i % 8 + 1) : 0;
    EXPECT_EQ(words[static_cast<std::size_t>(i)], (level & 0xF8) << 8 | (level & 0xFC) << 3 | level >> 3) << i;
  }
  // Chroma boxes are empty where luma's are: 0, not 128, and therefore green.
  c.inType = 0;
  words = convertedWords(c, greyPicture(c, 128));
  ASSERT_THAT(words, SizeIs(32));
  for (std::size_t i = 0; i < 32; ++i) {
    EXPECT_EQ(words[i], i % 8 < 5 && i / 8 < 3 ? 0x8410 : 0x0420) << i;
  }
}

TEST(ResizeAntiAlias, TapsEndAtAStrideShorterThanTheLine) {
  // Lines 6 bytes apart whose samples repeat every 6. Column 7 has taps at 7, 5.6, 7.9, 8.4 and 6.1; all step back to
  // column 4 and keep the weights of 512 (positions behind sample 6), 614, 512, 512 and 102 for column 5.
  ResizeCase c{.inType = 34, .width = 8, .height = 4, .outWidth = 8, .outHeight = 4, .quality = 1, .inPadding = -2};
  Picture picture = greyPicture(c, 0);
  for (int at = 0; at < 3 * 6 + 8; ++at) {
    for (int plane = 0; plane < 3; ++plane) {
      picture.plane(plane)[at] = at % 6 == 4 ? 40 : at % 6 == 5 ? 240 : 0;
    }
  }
  // 40 and 240: (140 + 159 + 140 + 140 + 59) / 5 = 127.
  auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(32));
  for (std::size_t line = 0; line < 4; ++line) {
    EXPECT_EQ(words[8 * line + 7], 15 << 11 | 31 << 5 | 15) << line;
  }
  // Cr 128 and 228: (178 + 187 + 178 + 178 + 137) / 5 = 171: red (136700704 + 43 * 1673527) >> 22 = 49, green
  // (136700704 - 43 * 852492) >> 22 = 23.
  c.inType = 0;
  picture = greyPicture(c, 128);
  for (int at = 5; at < 3 * 6 + 8; at += 6) {
    picture.plane(2)[at] = 228;
  }
  words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(32));
  for (std::size_t line = 0; line < 4; ++line) {
    EXPECT_EQ(words[8 * line + 7], 24 << 11 | 23 << 5 | 16) << line;
  }
}

TEST(ResizeAntiAlias, IdenticalPlanesOfRgbStayGreyWhateverTheStride) {
  for (const uint32_t quality : {1U, 2U, 3U}) {
    for (const int padding : {-5, -1, 0, 3}) {
      ResizeCase c{.inType = 34, .width = 20, .height = 18, .outWidth = 13, .outHeight = 9, .quality = quality};
      c.inPadding = padding;
      Picture picture = reference::pictureFor(c);
      const std::size_t bytes = support::planeShape(34, 20, 18, picture.stride, 0).bytes();
      std::memcpy(picture.plane(1), picture.plane(0), bytes);
      std::memcpy(picture.plane(2), picture.plane(0), bytes);
      const auto words = convertedWords(c, picture);
      ASSERT_THAT(words, SizeIs(117));
      for (const uint16_t word : words) {
        ASSERT_EQ(word >> 11, word & 31) << "quality " << quality << ", padding " << padding;
        ASSERT_EQ(word >> 11, word >> 6 & 31) << "quality " << quality << ", padding " << padding;
      }
      EXPECT_NE(words.front(), words.back());
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

TEST(ResizeAntiAlias, WidthsAroundThoseMadeAtATime) {
  // 64 columns are made at a time, four of them side by side; a lone last pixel has no partner to share a word with.
  Mixer mix(54);
  for (const int type : kTypes) {
    for (const int outWidth : {61, 62, 63, 64, 65, 66, 67, 68, 69, 127, 128, 129, 130, 193}) {
      for (const uint32_t quality : {1U, 2U, 3U}) {
        ResizeCase c{.inType = type, .width = outWidth * (7 + mix.below(40)) / 10, .height = 8 + mix.below(20)};
        c.outWidth = outWidth;
        c.outHeight = 3 + mix.below(12);
        c.quality = quality;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeAntiAlias, BoxesOfEveryNumberOfSamples) {
  // Factors 1 to 16 in both directions: 1 to 7 columns and lines, next to one another up to 8, then 2 to 4 apart.
  Mixer mix(55);
  for (const int columns : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 13, 16}) {
    for (const int lines : {1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 13, 16}) {
      ResizeCase c{.inType = kTypes.at(static_cast<std::size_t>(mix.below(11))), .outWidth = 9, .outHeight = 7};
      c.width = c.outWidth * columns + mix.below(columns);
      c.height = c.outHeight * lines + mix.below(lines);
      c.quality = 3;
      mix.vary(c);
      ASSERT_EQ(compareResized(c), "");
    }
  }
}

TEST(ResizeAntiAlias, WideRatios) {
  Mixer mix(56);
  for (const int type : kTypes) {
    for (const auto &s : {std::array<int, 4>{2112, 8, 66, 5},
                          {4000, 6, 3, 9},
                          {8, 2100, 5, 2},
                          {3001, 700, 1, 1},
                          {4, 4, 130, 3},
                          {6, 5, 3, 160}}) {
      for (const uint32_t quality : {1U, 2U, 3U}) {
        ResizeCase c{.inType = type, .width = s[0], .height = s[1], .outWidth = s[2], .outHeight = s[3]};
        c.quality = quality;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeAntiAlias, StridesOfAnyLengthBelowTheLine) {
  // Lines lie on one another, down to a stride of nothing; columns end at the stride and lines of 4:2:2 at two pitches.
  Mixer mix(57);
  for (const int type : {3, 12, 1, 13, 0, 2, 4, 37, 34}) {
    for (int stride = 0; stride < 14; ++stride) {
      for (const uint32_t quality : {1U, 2U, 3U}) {
        ResizeCase c{.inType = type, .width = stride + 1 + mix.below(9), .height = 4 + mix.below(9)};
        c.width = c.width < 4 ? 4 : c.width;
        c.outWidth = 1 + mix.below(2 * c.width);
        c.outHeight = 1 + mix.below(2 * c.height);
        c.quality = quality;
        mix.vary(c);
        c.inPadding = stride - c.width;
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeAntiAlias, OutputLinesThatLieOnOneAnother) {
  // The lower line's pixels stay, up to the last one of a line that another covers.
  Mixer mix(58);
  for (const int type : kTypes) {
    for (const int outWidth : {20, 66, 100, 131}) {
      for (const int shorter : {1, 2, 3, 6, 38, 64, 80}) {
        ResizeCase c{.inType = type, .width = 90, .height = 12, .outWidth = outWidth, .outHeight = 9};
        c.quality = 1 + static_cast<uint32_t>(mix.below(3));
        mix.vary(c);
        c.outPadding = -(shorter < 2 * outWidth ? shorter : outWidth);
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
