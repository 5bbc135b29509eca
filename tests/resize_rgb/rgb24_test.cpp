// Resizing with RGB24 at either end: planar input to RGB24 by run lengths, RGB24 input to RGB565 by weights.
#include "reference/resize_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using reference::compareResized;
using reference::convertedBytes;
using reference::convertedWords;
using reference::greyPicture;
using reference::Matrix;
using reference::Mixer;
using reference::pictureFor;
using reference::refuses;
using reference::ResizeCase;
using support::Picture;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::array<int, 11> kPlanarTypes{3, 12, 1, 13, 11, 35, 0, 2, 4, 37, 34};
constexpr uint8_t kGround = 0x5A; // what convertedBytes() converts onto

/// Line y has luma 20 + 10 y.
Picture steps(const ResizeCase &c) {
  Picture picture = greyPicture(c, 0);
  for (int y = 0; y < c.height; ++y) {
    std::memset(picture.plane(0) + y * picture.stride, 20 + 10 * y, static_cast<std::size_t>(c.width));
  }
  return picture;
}

std::vector<uint8_t> lineOf(const std::vector<uint8_t> &bytes, int line, int lineBytes) {
  const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(line) * lineBytes;
  return {begin, begin + lineBytes};
}

TEST(ResizeToRgb24, LumaStaysInVideoRange) {
  for (const int type : kPlanarTypes) {
    const ResizeCase c{.inType = type, .outType = 32, .width = 16, .height = 16, .outWidth = 8, .outHeight = 8};
    for (const auto &[luma, value] : {std::array<uint8_t, 2>{0, 16}, {16, 16}, {128, 128}, {235, 235}, {255, 235}}) {
      const auto bytes = convertedBytes(c, greyPicture(c, luma));
      ASSERT_THAT(bytes, SizeIs(192));
      EXPECT_THAT(bytes, Each(value)) << type;
    }
  }
}

TEST(ResizeToRgb24, SameSizeEndsWithTheLastLineTwice) {
  // Pairs 0/1, 2/3, 4/5; the last pair is never announced, both of its lines come from line 7.
  const ResizeCase c{.outType = 32, .width = 8, .height = 8, .outWidth = 8, .outHeight = 8};
  const auto bytes = convertedBytes(c, steps(c));
  ASSERT_THAT(bytes, SizeIs(192));
  const std::array<int, 8> luma{20, 30, 40, 50, 60, 70, 90, 90};
  for (int y = 0; y < 8; ++y) {
    EXPECT_THAT(lineOf(bytes, y, 24), Each(luma.at(static_cast<std::size_t>(y)))) << y;
  }
}

TEST(ResizeToRgb24, RepeatedLinesReceiveThePartBehindTheirFirstBytes) {
  // 4 to 8 lines of 16 pixels: lines 1, 2, 5, 6, 7 are converted from lines 0 to 3, 3; lines 0, 3, 4 receive bytes 16
  // to 47 of lines 1, 2, 5.
  const ResizeCase c{.outType = 32, .width = 8, .height = 4, .outWidth = 16, .outHeight = 8};
  const auto bytes = convertedBytes(c, steps(c));
  ASSERT_THAT(bytes, SizeIs(384));
  const std::array<int, 8> luma{20, 20, 30, 30, 40, 40, 50, 50};
  for (const int y : {1, 2, 5, 6, 7}) {
    EXPECT_THAT(lineOf(bytes, y, 48), Each(luma.at(static_cast<std::size_t>(y)))) << y;
  }
  for (const int y : {0, 3, 4}) {
    const auto line = lineOf(bytes, y, 48);
    EXPECT_THAT(std::vector<uint8_t>(line.begin(), line.begin() + 16), Each(kGround)) << y;
    EXPECT_THAT(std::vector<uint8_t>(line.begin() + 16, line.end()), Each(luma.at(static_cast<std::size_t>(y)))) << y;
  }
}

TEST(ResizeToRgb24, RepeatsCountWholeGroupsAndEndWithThePicture) {
  // 13 pixels count as 16: bytes 16 to 38 of 39. Two pixels count as 4: bytes 4 and 5 of 6; one leaves nothing.
  for (const auto &[width, begin] : {std::array<int, 2>{13, 16}, {2, 4}, {1, 3}}) {
    const ResizeCase c{.outType = 32, .width = 8, .height = 4, .outWidth = width, .outHeight = 8};
    const auto bytes = convertedBytes(c, steps(c));
    ASSERT_THAT(bytes, SizeIs(static_cast<std::size_t>(24 * width)));
    const auto line = lineOf(bytes, 0, 3 * width);
    EXPECT_THAT(std::vector<uint8_t>(line.begin(), line.begin() + begin), Each(kGround)) << width;
    EXPECT_THAT(std::vector<uint8_t>(line.begin() + begin, line.end()), Each(20)) << width;
  }
}

TEST(ResizeToRgb24, FarEnlargementEndsInTheFirstLine) {
  // 2 to 16 lines: seven repeats, lines 0 and 1 as a pair (7, 8), then three lines of line 1; behind the instructions
  // the table is zero, which is line 0.
  const ResizeCase c{.outType = 32, .width = 8, .height = 2, .outWidth = 4, .outHeight = 16};
  const auto bytes = convertedBytes(c, steps(c));
  ASSERT_THAT(bytes, SizeIs(192));
  const std::array<int, 16> luma{0, 0, 0, 0, 0, 0, 0, 20, 30, 30, 30, 30, 20, 20, 20, 20};
  for (int y = 7; y < 16; ++y) {
    EXPECT_THAT(lineOf(bytes, y, 12), Each(luma.at(static_cast<std::size_t>(y)))) << y;
  }
  for (int y = 0; y < 7; ++y) {
    EXPECT_THAT(lineOf(bytes, y, 12), ElementsAre(kGround, kGround, kGround, kGround, 20, 20, 20, 20, 20, 20, 20, 20));
  }
}

TEST(ResizeToRgb24, ARepeatBehindAPairIsMadeFromThePair) {
  // 5 to 7 lines by steps of 731: 0, 0, 1, 2, 2, 3, 4. The instructions are repeat, pair 0/1, repeat, pair 2/3, 4: the
  // second repeat stands for line 2 but is read as belonging to the pair before it.
  const ResizeCase c{.outType = 32, .width = 8, .height = 5, .outWidth = 4, .outHeight = 7};
  const auto bytes = convertedBytes(c, steps(c));
  ASSERT_THAT(bytes, SizeIs(84));
  EXPECT_THAT(lineOf(bytes, 1, 12), Each(20));
  EXPECT_THAT(lineOf(bytes, 2, 12), Each(30));
  EXPECT_THAT(lineOf(bytes, 3, 12), ElementsAre(kGround, kGround, kGround, kGround, 30, 30, 30, 30, 30, 30, 30, 30));
  EXPECT_THAT(lineOf(bytes, 4, 12), Each(40));
  EXPECT_THAT(lineOf(bytes, 5, 12), Each(50));
  EXPECT_THAT(lineOf(bytes, 6, 12), Each(60));
}

TEST(ResizeToRgb24, ChromaIsReadAtHalfWidthAndHalfPitch) {
  // Luma 100 and Cr 100: red 240 held at 235, green 100 - 71. Chroma line 1 is at offset 4 whatever the type.
  for (const int type : {3, 1, 0, 2, 37}) {
    const ResizeCase c{.inType = type, .outType = 32, .width = 8, .height = 8, .outWidth = 8, .outHeight = 8};
    Picture picture = greyPicture(c, 100);
    std::memset(picture.plane(2) + 4, 228, 2);
    const auto bytes = convertedBytes(c, picture);
    ASSERT_THAT(bytes, SizeIs(192));
    for (int y = 0; y < 8; ++y) {
      const auto line = lineOf(bytes, y, 24);
      for (std::size_t x = 0; x < 8; ++x) {
        const bool coloured = (y == 2 || y == 3) && x < 4;
        EXPECT_EQ(line[3 * x], 100);
        EXPECT_EQ(line[3 * x + 1], coloured ? 29 : 100) << type << ": " << x << ", " << y;
        EXPECT_EQ(line[3 * x + 2], coloured ? 235 : 100) << type << ": " << x << ", " << y;
      }
    }
  }
}

TEST(ResizeToRgb24, TheMatrixInForceIsUsed) {
  const ResizeCase c{.outType = 32, .width = 4, .height = 4, .outWidth = 1, .outHeight = 1};
  Picture picture = greyPicture(c, 100);
  std::memset(picture.plane(2), 228, 4);
  EXPECT_THAT(convertedBytes(c, picture), ElementsAre(100, 29, 235));
  EXPECT_THAT(convertedBytes(c, picture, Matrix{1, {}}), ElementsAre(100, 54, 235));
  EXPECT_THAT(convertedBytes(c, picture, Matrix{2, {}}), ElementsAre(100, 100, 100));
  EXPECT_THAT(convertedBytes(c, picture, Matrix{3, {256.0, 0.0, 0.0, 0.0}}), ElementsAre(100, 100, 150));
  reference::restoreDither();
}

TEST(ResizeToRgb24, TurnsAreNotMade) {
  for (const int type : {3, 12, 1, 13, 11, 35, 34}) {
    ResizeCase c{.inType = type, .outType = 32, .width = 24, .height = 18, .outWidth = 16, .outHeight = 11};
    const Picture picture = pictureFor(c);
    const auto upright = convertedBytes(c, picture);
    ASSERT_THAT(upright, SizeIs(528));
    for (const uint32_t rotation : {0U, 1U, 3U, 4U, 5U, 6U, 7U}) {
      c.rotation = rotation;
      EXPECT_EQ(convertedBytes(c, picture), upright) << type << " rotation " << rotation;
    }
  }
}

TEST(ResizeToRgb24, FourTypesAreTurnedBeforehand) {
  for (const int type : {0, 2, 4, 37}) {
    // 8 x 12 with luma 20 + 10 x: turned left, its lines are the columns from the right.
    ResizeCase c{.inType = type, .outType = 32, .width = 8, .height = 12, .outWidth = 4, .outHeight = 6};
    Picture picture = greyPicture(c, 0);
    for (int y = 0; y < 12; ++y) {
      for (int x = 0; x < 8; ++x) {
        picture.plane(0)[8 * y + x] = static_cast<uint8_t>(20 + 10 * x);
      }
    }
    c.rotation = 3; // lines 0, 2 | 4, 6 of the turned picture; the last pair is not announced: 6, 6
    auto bytes = convertedBytes(c, picture);
    ASSERT_THAT(bytes, SizeIs(72));
    EXPECT_THAT(lineOf(bytes, 0, 18), Each(90));
    EXPECT_THAT(lineOf(bytes, 1, 18), Each(70));
    EXPECT_THAT(lineOf(bytes, 2, 18), Each(30));
    EXPECT_THAT(lineOf(bytes, 3, 18), Each(30));
    c.rotation = 4;
    bytes = convertedBytes(c, picture);
    ASSERT_THAT(bytes, SizeIs(72));
    EXPECT_THAT(lineOf(bytes, 0, 18), Each(20));
    EXPECT_THAT(lineOf(bytes, 1, 18), Each(40));
  }
}

TEST(ResizeToRgb24, ManySizesRatiosAndMatrices) {
  Mixer mix(81);
  std::size_t n = 0;
  for (int width = 4; width < 52; ++width) {
    for (const int ratio : {1, 5, 9, 16, 21, 32, 50}) { // sixteenths
      for (int repeat = 0; repeat < 3; ++repeat) {
        ResizeCase c{.inType = kPlanarTypes[n % 11], .outType = 32};
        c.width = width;
        c.height = 4 + mix.below(40);
        c.outWidth = std::max(width * ratio / 16, 1);
        c.outHeight = 1 + mix.below(60);
        c.rotation = static_cast<uint32_t>(mix.below(8));
        c.quality = static_cast<uint32_t>(mix.below(4));
        mix.vary(c);
        ASSERT_EQ(compareResized(c, Matrix{n % 3, {}}), "");
        ++n;
      }
    }
  }
}

TEST(ResizeToRgb24, EveryRatioOfLines) {
  Mixer mix(82);
  for (int lines = 1; lines < 90; ++lines) {
    for (const int height : {2, 5, 11, 16, 30}) {
      ResizeCase c{.inType = lines % 2 == 0 ? 3 : 1,
                   .outType = 32,
                   .width = 6,
                   .height = height,
                   .outWidth = 7,
                   .outHeight = lines};
      mix.vary(c);
      ASSERT_EQ(compareResized(c), "");
    }
  }
}

TEST(ResizeToRgb24, SmallestPictures) {
  Mixer mix(83);
  for (const int type : kPlanarTypes) {
    const int leastWidth = type == 4 ? 4 : 2;
    const int leastHeight = type == 37 ? 4 : 2;
    for (int width = leastWidth; width < leastWidth + 5; ++width) {
      for (int height = leastHeight; height < leastHeight + 4; ++height) {
        for (const int size : {1, 2, 4, 7}) {
          ResizeCase c{.inType = type, .outType = 32, .width = width, .height = height};
          c.outWidth = size;
          c.outHeight = 8 - size;
          c.rotation = static_cast<uint32_t>(mix.below(8));
          mix.vary(c);
          ASSERT_EQ(compareResized(c), "");
        }
      }
    }
  }
}

TEST(ResizeToRgb24, MissingAndEmptyPlanesAreRefused) {
  for (const int type : kPlanarTypes) {
    const ResizeCase c{.inType = type, .outType = 32, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11};
    for (const int plane : {0, 1, 2, 3}) {
      if (plane == 2 && support::isSemiPlanar(type)) {
        continue;
      }
      EXPECT_EQ(refuses(c, plane), "");
    }
  }
  EXPECT_EQ(refuses({.inType = 4, .outType = 32, .width = 3, .height = 8, .outWidth = 4, .outHeight = 4}), "");
  EXPECT_EQ(refuses({.inType = 37, .outType = 32, .width = 8, .height = 3, .outWidth = 4, .outHeight = 4}), "");
  EXPECT_EQ(refuses({.outType = 32, .width = 1, .height = 8, .outWidth = 4, .outHeight = 4}), "");
  EXPECT_EQ(refuses({.outType = 32, .width = 8, .height = 8, .outWidth = 4, .outHeight = 0}), "");
}

Picture flatRgb(const ResizeCase &c, const std::array<uint8_t, 3> &bgr) {
  Picture picture = pictureFor(c);
  for (int y = 0; y < c.height; ++y) {
    for (int x = 0; x < 3 * c.width; ++x) {
      picture.plane(0)[y * picture.stride + x] = bgr[static_cast<std::size_t>(x % 3)];
    }
  }
  return picture;
}

TEST(ResizeRgb24, ChannelsAreTruncated) {
  for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
    const ResizeCase c{.inType = 32, .width = 20, .height = 18, .outWidth = 13, .outHeight = 29, .rotation = rotation};
    EXPECT_THAT(convertedWords(c, flatRgb(c, {0xFF, 0x00, 0x00})), Each(0x001F));
    EXPECT_THAT(convertedWords(c, flatRgb(c, {0x00, 0xFF, 0x00})), Each(0x07E0));
    EXPECT_THAT(convertedWords(c, flatRgb(c, {0x00, 0x00, 0xFF})), Each(0xF800));
    const auto dark = convertedWords(c, flatRgb(c, {0x07, 0x03, 0x07}));
    ASSERT_THAT(dark, SizeIs(377));
    EXPECT_THAT(dark, Each(0x0000));
  }
}

TEST(ResizeRgb24, ChannelsAreInterpolated) {
  // 4 to 6 columns: column 1 two thirds in: (682 * 255) >> 10 = 169: 21 of 31, 42 of 63.
  const ResizeCase c{.inType = 32, .width = 4, .height = 4, .outWidth = 6, .outHeight = 5};
  Picture picture = flatRgb(c, {0, 0, 0});
  std::memset(picture.plane(0) + 3, 255, 3);
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(30));
  EXPECT_EQ(words[0], 0);
  EXPECT_EQ(words[1], 21 << 11 | 42 << 5 | 21);
}

TEST(ResizeRgb24, LinesOfAPairHaveTheirOwnWeights) {
  // 4 to 6 lines: line 1 lies two thirds below line 0, line 0 exactly on it.
  for (const uint32_t rotation : {3U, 4U}) {
    const ResizeCase c{.inType = 32, .width = 4, .height = 4, .outWidth = 4, .outHeight = 6, .rotation = rotation};
    Picture picture = flatRgb(c, {0, 0, 0});
    std::memset(picture.plane(0) + 12, 255, 12);
    const auto words = convertedWords(c, picture);
    ASSERT_THAT(words, SizeIs(24));
    EXPECT_EQ(words[rotation == 3 ? 0 : 5], 0);
    EXPECT_EQ(words[rotation == 3 ? 1 : 4], 21 << 11 | 42 << 5 | 21);
  }
}

TEST(ResizeRgb24, AHalfTurnIsNotMade) {
  ResizeCase c{.inType = 32, .width = 20, .height = 18, .outWidth = 13, .outHeight = 29};
  const Picture picture = pictureFor(c);
  const auto upright = convertedWords(c, picture);
  ASSERT_THAT(upright, SizeIs(377));
  for (const uint32_t rotation : {0U, 1U, 5U, 6U, 7U}) {
    c.rotation = rotation;
    EXPECT_EQ(convertedWords(c, picture), upright) << rotation;
  }
}

TEST(ResizeRgb24, OtherOutputTypesAreSilentlyLeftAlone) {
  for (const int outType : {3, 31}) {
    const ResizeCase c{.inType = 32, .outType = outType, .width = 20, .height = 18, .outWidth = 12, .outHeight = 10};
    const Picture picture = pictureFor(c);
    support::Canvas canvas = reference::canvasFor(c);
    ConvertParams params = reference::recordFor(c);
    picture.describe(params);
    canvas.describe(params);
    EXPECT_EQ(support::convertOnce(params), CC_OK);
    EXPECT_EQ(canvas.touched(), "");
  }
}

TEST(ResizeRgb24, EnlargedMultiplesOf16AreWrittenWhole) {
  for (const int factor : {2, 3, 5}) {
    for (const uint32_t rotation : {2U, 3U, 4U}) {
      const ResizeCase c{.inType = 32,
                         .width = 32,
                         .height = 48,
                         .outWidth = 32 * factor,
                         .outHeight = 48 * factor,
                         .rotation = rotation};
      EXPECT_EQ(reference::leavesUnwritten(c), "");
    }
  }
}

TEST(ResizeRgb24, ManySizesAndRatios) {
  Mixer mix(84);
  for (int width = 2; width < 52; ++width) {
    for (const int ratio : {1, 5, 9, 16, 21, 32, 50}) { // sixteenths
      ResizeCase c{.inType = 32};
      c.width = width;
      c.height = 2 + mix.below(50);
      c.outWidth = std::max(width * ratio / 16, 1);
      c.outHeight = 1 + mix.below(60);
      c.rotation = static_cast<uint32_t>(mix.below(8));
      c.quality = static_cast<uint32_t>(mix.below(4));
      mix.vary(c);
      ASSERT_EQ(compareResized(c, Matrix{static_cast<uintptr_t>(mix.below(3)), {}}), "");
    }
  }
}

TEST(ResizeRgb24, MissingPlanesAndImpossibleSizesAreRefused) {
  ResizeCase c{.inType = 32, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11};
  EXPECT_EQ(refuses(c, 0), "");
  EXPECT_EQ(refuses(c, 3), "");
  c.height = 1;
  EXPECT_EQ(refuses(c), "");
  c.height = 16;
  c.outWidth = 0;
  EXPECT_EQ(refuses(c), "");
}

} // namespace
