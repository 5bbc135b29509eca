// Resizing of the planar types whose chroma is not half as wide to 16-bit RGB: 4:4:4, 4:4:0, 4:1:1, quarter height and
// planar RGB. The first four are turned before they are resized.
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
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::array<int, 5> kTypes{0, 2, 4, 37, 34};
constexpr std::array<int, 4> kTurnedTypes{0, 2, 4, 37};
constexpr int kGrey = 0x8410;
constexpr int kRed = 30 << 11 | 17 << 5 | 16; // luma 128, Cr 200

std::vector<std::size_t> placesOf(const std::vector<uint16_t> &words, int value) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == value) {
      places.push_back(i);
    }
  }
  return places;
}

TEST(ResizeOtherPlanar, FullChromaTakesTheLineBelowForTheSecondLine) {
  // 8 to 4 lines: rows 0, 2 | 4, 6. Line 1 has the luma of row 2 and the chroma of row 1.
  // Luma 235 and Cr 200: red above 31, green (267298698 - 61379424) >> 22 = 49, blue 63 >> 1.
  const ResizeCase c{.inType = 0, .width = 8, .height = 8, .outWidth = 8, .outHeight = 4};
  Picture picture = greyPicture(c, 128);
  std::memset(picture.plane(0) + 2 * 8, 235, 8);
  std::memset(picture.plane(2) + 8, 200, 8);
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(32));
  for (std::size_t i = 0; i < 32; ++i) {
    EXPECT_EQ(words[i], i / 8 == 1 ? 31 << 11 | 49 << 5 | 31 : kGrey) << i;
  }
}

TEST(ResizeOtherPlanar, FullChromaTakesEachColumnsOwnTap) {
  const ResizeCase c{.inType = 0, .width = 8, .height = 8, .outWidth = 8, .outHeight = 4};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[4 * 8 + 3] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(2 * 8 + 3));
}

TEST(ResizeOtherPlanar, HalfHeightSharesTheFirstLinesRow) {
  // 12 to 4 lines: rows 0, 3 | 6, 9; chroma rows 0, 0, 3, 3 of six.
  const ResizeCase c{.inType = 2, .width = 4, .height = 12, .outWidth = 4, .outHeight = 4};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[3 * 4 + 1] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(9, 13));
  picture = greyPicture(c, 128);
  std::memset(picture.plane(2) + 4, 200, 8);  // rows 1 and 2
  std::memset(picture.plane(2) + 16, 200, 8); // rows 4 and 5
  EXPECT_THAT(convertedWords(c, picture), Each(kGrey));
}

TEST(ResizeOtherPlanar, QuarterWidthTakesTheMiddleOfThePair) {
  // Taps 8 and 9 use column (8 + 9 + 4) >> 3 = 2, as do 6 and 7; each line its own row.
  const ResizeCase c{.inType = 4, .width = 16, .height = 4, .outWidth = 16, .outHeight = 4};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[4 + 2] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(16 + 6, 16 + 7, 16 + 8, 16 + 9));
}

TEST(ResizeOtherPlanar, QuarterWidthEndsWithItsLastColumn) {
  // Taps 14 and 14 ask for column 4 of four.
  const ResizeCase c{.inType = 4, .width = 16, .height = 4, .outWidth = 16, .outHeight = 4};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[3] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(10, 11, 12, 13, 14, 15));
}

TEST(ResizeOtherPlanar, QuarterHeightTakesEachLinesOwnRow) {
  // 16 to 8 lines: rows 0, 2 | 4, 6 | 8, 10 | 12, 14; chroma rows 0, 0, 1, 1, 2, 2, 3, 3. With 5 lines: 0, 3 | 6, 9
  // | 12.
  ResizeCase c{.inType = 37, .width = 4, .height = 16, .outWidth = 4, .outHeight = 8};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[2 * 4 + 1] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(17, 21));
  c.outHeight = 5;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(13));
}

TEST(ResizeOtherPlanar, PlanarRgbIsInterpolatedAndTruncated) {
  for (const uint32_t quality : {0U, 1U, 2U}) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      const ResizeCase c{.inType = 34,
                         .width = 20,
                         .height = 18,
                         .outWidth = 13,
                         .outHeight = 9,
                         .rotation = rotation,
                         .quality = quality};
      Picture picture = reference::pictureFor(c);
      std::memset(picture.plane(0), 0x87, 360);
      std::memset(picture.plane(1), 0x43, 360);
      std::memset(picture.plane(2), 0xFF, 360);
      const auto words = convertedWords(c, picture);
      ASSERT_THAT(words, SizeIs(117));
      EXPECT_THAT(words, Each(0x821F));
    }
  }
  // 4 to 6 columns: column 1 lies two thirds in: (682 * 255) >> 10 = 169 = 0xA9.
  const ResizeCase c{.inType = 34, .width = 4, .height = 4, .outWidth = 6, .outHeight = 5};
  Picture picture = reference::pictureFor(c);
  for (int i = 0; i < 3; ++i) {
    std::memset(picture.plane(i), 0, 16);
    picture.plane(i)[1] = 255;
  }
  EXPECT_EQ(convertedWords(c, picture).at(1), 0xA8 << 8 | 0xA8 << 3 | 0xA9 >> 3);
}

TEST(ResizeOtherPlanar, AHalfTurnIsNotMade) {
  for (const int type : kTurnedTypes) {
    for (const uint32_t quality : {0U, 1U, 3U}) {
      ResizeCase c{.inType = type, .width = 21, .height = 18, .outWidth = 13, .outHeight = 9, .quality = quality};
      const Picture picture = reference::pictureFor(c);
      const auto upright = convertedWords(c, picture);
      ASSERT_THAT(upright, SizeIs(117));
      c.rotation = 5;
      EXPECT_EQ(convertedWords(c, picture), upright) << type;
    }
  }
}

TEST(ResizeOtherPlanar, QuarterTurnsAreMadeBeforehand) {
  // The four samples at the start of the first lines become the first pixel of the halved picture.
  for (const int type : kTurnedTypes) {
    ResizeCase c{.inType = type, .width = 16, .height = 12, .outWidth = 8, .outHeight = 6};
    Picture picture = greyPicture(c, 16);
    for (const int at : {0, 1, 16, 17}) {
      picture.plane(0)[at] = 235;
    }
    EXPECT_THAT(placesOf(convertedWords(c, picture), 0xFFFF), ElementsAre(0));
    c.rotation = 3;
    EXPECT_THAT(placesOf(convertedWords(c, picture), 0xFFFF), ElementsAre(7 * 6));
    c.rotation = 4;
    EXPECT_THAT(placesOf(convertedWords(c, picture), 0xFFFF), ElementsAre(5));
  }
}

TEST(ResizeOtherPlanar, TurnedChromaFollowsItsOwnGeometry) {
  // Turned right, quarter-width chroma of 16 x 8 becomes 8 wide and 4 high: column 1 of line 2 stands in column 5 of
  // row 1, which serves lines 4 to 7.
  ResizeCase c{.inType = 4, .width = 16, .height = 8, .outWidth = 16, .outHeight = 8, .rotation = 4};
  Picture picture = greyPicture(c, 128);
  picture.plane(2)[2 * 4 + 1] = 200;
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(4 * 8 + 5, 5 * 8 + 5, 6 * 8 + 5, 7 * 8 + 5));
  // Turned left, half-height chroma of 8 x 16 becomes 8 wide (half of 16) and 8 high; rows 0, 2, 4, 6 are used.
  c = {.inType = 2, .width = 8, .height = 16, .outWidth = 8, .outHeight = 16, .rotation = 3};
  picture = greyPicture(c, 128);
  picture.plane(2)[3 * 8 + 5] = 200; // column 5 of row 3 becomes column 3 of line 2
  EXPECT_THAT(placesOf(convertedWords(c, picture), kRed), ElementsAre(2 * 16 + 6, 2 * 16 + 7, 3 * 16 + 6, 3 * 16 + 7));
}

/// The picture turned left, plane by plane: sample (x, y) of a plane W wide goes to column y of line W - 1 - x.
Picture turnedLeft(const Picture &from, int type) {
  Picture to(type, from.height, from.width, from.height, support::Fill::Flat, 0);
  for (int plane = 0; plane < 3; ++plane) {
    const support::PlaneShape a = support::planeShape(from.type, from.width, from.height, from.stride, plane);
    const support::PlaneShape b = support::planeShape(to.type, to.width, to.height, to.stride, plane);
    EXPECT_EQ(a.lineBytes, b.lines);
    EXPECT_EQ(a.lines, b.lineBytes);
    for (int y = 0; y < a.lines; ++y) {
      for (int x = 0; x < a.lineBytes; ++x) {
        to.plane(plane)[(a.lineBytes - 1 - x) * b.stride + y] = from.plane(plane)[y * a.stride + x];
      }
    }
  }
  return to;
}

TEST(ResizeOtherPlanar, HalfHeightChromaTurnedIsHalfWidthChroma) {
  // Full columns and half the lines become half the columns and full lines: planar 4:2:2, resized upright to the size
  // with its sides exchanged.
  for (const uint32_t quality : {0U, 1U, 2U, 3U}) {
    const ResizeCase turned{.inType = 2,
                            .width = 40,
                            .height = 24,
                            .outWidth = 26,
                            .outHeight = 34,
                            .rotation = ROTATION_90_LEFT,
                            .quality = quality,
                            .inPadding = 5};
    const ResizeCase upright{
        .inType = 1, .width = 24, .height = 40, .outWidth = 34, .outHeight = 26, .quality = quality};
    const Picture picture = reference::pictureFor(turned);
    const auto words = convertedWords(turned, picture);
    ASSERT_THAT(words, SizeIs(26 * 34));
    EXPECT_EQ(words, convertedWords(upright, turnedLeft(picture, COLOR_YUV422_PLANAR))) << "quality " << quality;
  }
}

TEST(ResizeOtherPlanar, EnlargedMultiplesOf16AreWrittenWhole) {
  for (const int type : kTypes) {
    for (const int factor : {2, 3, 5}) {
      const uint32_t rotation = 2 + static_cast<uint32_t>(factor) % 4;
      const ResizeCase c{.inType = type,
                         .width = 32,
                         .height = 16,
                         .outWidth = 32 * factor,
                         .outHeight = 16 * factor,
                         .rotation = rotation};
      EXPECT_EQ(reference::leavesUnwritten(c), "");
    }
  }
}

TEST(ResizeOtherPlanar, EveryRemainderOf16AtManyRatios) {
  Mixer mix(61);
  constexpr std::array<uint32_t, 7> kRotations{2, 3, 4, 5, 0, 1, 7};
  std::size_t n = 0;
  for (int width = 16; width < 48; ++width) {
    for (const int ratio : {3, 7, 12, 16, 24, 33}) { // sixteenths
      for (const int type : kTypes) {
        ResizeCase c{.inType = type, .outType = n % 5 == 0 ? 31 : 30};
        c.width = width;
        c.height = 16 + width * 5 % 32;
        c.outWidth = width * ratio / 16;
        c.outHeight = 3 + mix.below(30);
        c.rotation = kRotations[n % 7];
        c.quality = n % 3 == 0 ? static_cast<uint32_t>(mix.below(4)) : 0;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
        ++n;
      }
    }
  }
}

TEST(ResizeOtherPlanar, SimpleRatiosFarOnesAndTurns) {
  Mixer mix(62);
  for (const int type : kTypes) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      for (const auto &size : {std::array<int, 2>{24, 16}, {36, 24}, {72, 48}, {96, 64}, {2, 1}, {6, 4}, {190, 130}}) {
        ResizeCase c{.inType = type, .width = 48, .height = 32, .outWidth = size[0], .outHeight = size[1]};
        c.rotation = rotation;
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
        c.quality = 1 + static_cast<uint32_t>(mix.below(3));
        ASSERT_EQ(compareResized(c), "");
      }
    }
  }
}

TEST(ResizeOtherPlanar, OddSizesHalvedAndTurned) {
  // Turned half-height chroma counts as planar 4:2:2, simple ratios included.
  Mixer mix(63);
  for (const uint32_t rotation : {2U, 3U, 4U}) {
    for (int width = 17; width < 26; ++width) {
      ResizeCase c{.inType = 2, .width = width, .height = 35 - width, .outWidth = width / 2};
      c.outHeight = c.height / 2;
      c.rotation = rotation;
      mix.vary(c);
      ASSERT_EQ(compareResized(c), "");
    }
  }
}

TEST(ResizeOtherPlanar, SmallestPictures) {
  Mixer mix(64);
  for (const int type : kTypes) {
    const int leastWidth = type == 4 ? 4 : 2;
    const int leastHeight = type == 37 ? 4 : 2;
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      for (int width = leastWidth; width < leastWidth + 3; ++width) {
        for (int height = leastHeight; height < leastHeight + 3; ++height) {
          for (const int size : {1, 2, 3, 9}) {
            ResizeCase c{.inType = type, .width = width, .height = height, .outWidth = size, .outHeight = 10 - size};
            c.rotation = rotation;
            c.quality = static_cast<uint32_t>(mix.below(4));
            mix.vary(c);
            ASSERT_EQ(compareResized(c), "");
          }
        }
      }
    }
  }
}

TEST(ResizeOtherPlanar, TheMatrixDoesNotMatter) {
  for (const int type : kTypes) {
    const ResizeCase c{.inType = type, .width = 18, .height = 22, .outWidth = 24, .outHeight = 13};
    EXPECT_EQ(compareResized(c, reference::Matrix{1, {}}), "");
    EXPECT_EQ(compareResized(c, reference::Matrix{2, {}}), "");
  }
}

TEST(ResizeOtherPlanar, MissingAndEmptyPlanesAreRefused) {
  for (const int type : kTypes) {
    for (const uint32_t rotation : {2U, 3U}) {
      const ResizeCase c{
          .inType = type, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11, .rotation = rotation};
      for (const int plane : {0, 1, 2, 3}) {
        EXPECT_EQ(refuses(c, plane), "");
      }
    }
  }
  EXPECT_EQ(refuses({.inType = 4, .width = 3, .height = 16, .outWidth = 10, .outHeight = 11}), "");
  EXPECT_EQ(refuses({.inType = 37, .width = 16, .height = 3, .outWidth = 10, .outHeight = 11}), "");
  EXPECT_EQ(refuses({.inType = 4, .width = 3, .height = 16, .outWidth = 10, .outHeight = 11, .rotation = 4}), "");
  EXPECT_EQ(refuses({.inType = 2, .width = 16, .height = 1, .outWidth = 10, .outHeight = 11}), "");
}

} // namespace
