// Resizing of planar and semi-planar 4:2:0 and 4:2:2 input to 16-bit RGB at any ratio, upright and turned.
#include "reference/resize_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

namespace {

using reference::compareResized;
using reference::convertedWords;
using reference::greyPicture;
using reference::Matrix;
using reference::Mixer;
using reference::refuses;
using reference::ResizeCase;
using support::Picture;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::array<int, 6> kTypes{3, 12, 1, 13, 11, 35};

TEST(ResizeGeneral, BlackAndWhiteWhateverTheMatrix) {
  const std::array<Matrix, 4> matrices{{{0, {}}, {1, {}}, {2, {}}, {3, {900.0, -700.0, 500.0, 300.0}}}};
  for (const int type : kTypes) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      const ResizeCase c{
          .inType = type, .width = 20, .height = 12, .outWidth = 31, .outHeight = 17, .rotation = rotation};
      for (const Matrix &matrix : matrices) {
        const auto black = convertedWords(c, greyPicture(c, 16), matrix);
        const auto white = convertedWords(c, greyPicture(c, 235), matrix);
        ASSERT_THAT(black, SizeIs(31 * 17));
        EXPECT_THAT(black, Each(0x0000)) << type;
        ASSERT_THAT(white, SizeIs(31 * 17));
        EXPECT_THAT(white, Each(0xFFFF)) << type;
      }
    }
  }
  reference::restoreDither();
}

TEST(ResizeGeneral, TheMatrixDoesNotMatter) {
  for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
    const ResizeCase c{.width = 37, .height = 22, .outWidth = 24, .outHeight = 30, .rotation = rotation};
    for (const uintptr_t index : {0U, 1U, 2U}) {
      EXPECT_EQ(compareResized(c, Matrix{index, {}}), "");
    }
    EXPECT_EQ(compareResized(c, Matrix{3, {900.0, -700.0, 500.0, 300.0}}), "");
  }
  reference::restoreDither();
}

TEST(ResizeGeneral, BlocksWithoutOutputPixelsAreSkipped) {
  // 64 to 2 columns: columns 0 and 32, the second and fourth blocks of 16 give nothing. Luma 100 is 24 of 63, 200
  // is 53.
  const ResizeCase c{.width = 64, .height = 64, .outWidth = 2, .outHeight = 4};
  Picture picture = greyPicture(c, 100);
  for (int y = 0; y < 64; ++y) {
    std::memset(picture.plane(0) + y * picture.stride + 32, 200, 32);
  }
  EXPECT_THAT(convertedWords(c, picture), ElementsAre(0x630C, 0xD6BA, 0x630C, 0xD6BA, 0x630C, 0xD6BA, 0x630C, 0xD6BA));
}

TEST(ResizeGeneral, BlocksWithoutOutputPixelsBetweenOthersAreSkipped) {
  // 64 to 4 columns: 0, 16, 32, 48. Position 1 closes the first group, position 2 opens the third: counts 2, 0, 2, 0.
  // 80 to 4 lines: 0, 20, 40, 60 in groups of 2, 0, 2, 0, 0. Luma 100 is 24 of 63, 200 is 53.
  const ResizeCase c{.width = 64, .height = 80, .outWidth = 4, .outHeight = 4};
  Picture picture = greyPicture(c, 180);
  const std::array<uint8_t, 4> levels{16, 100, 200, 235};
  for (std::size_t j = 0; j < 4; ++j) {
    for (std::size_t i = 0; i < 4; ++i) {
      picture.plane(0)[20 * j * 64 + 16 * i] = levels.at((i + j) % 4);
    }
  }
  EXPECT_THAT(convertedWords(c, picture), ElementsAre(0x0000, 0x630C, 0xD6BA, 0xFFFF, 0x630C, 0xD6BA, 0xFFFF, 0x0000,
                                                      0xD6BA, 0xFFFF, 0x0000, 0x630C, 0xFFFF, 0x0000, 0x630C, 0xD6BA));
}

TEST(ResizeGeneral, PairsShareTheChromaBetweenTheirTaps) {
  // 14 to 5 columns is 2.8 a pixel: taps 0, 2 | 5, 8 | 11. Taps 5 and 8 use chroma column (5 + 8 + 1) >> 2 = 3.
  // Luma 128 and Cr 72: red (136700704 + 120493944) >> 22 = 61, green (136700704 - 61379424) >> 22 = 17, blue 32.
  const ResizeCase c{.width = 14, .height = 8, .outWidth = 5, .outHeight = 3};
  Picture picture = greyPicture(c, 128);
  for (int y = 0; y < 4; ++y) {
    picture.plane(2)[y * 7 + 3] = 200;
  }
  constexpr int grey = 0x8410;
  constexpr int red = 30 << 11 | 17 << 5 | 16;
  EXPECT_THAT(convertedWords(c, picture),
              ElementsAre(grey, grey, red, red, grey, grey, grey, red, red, grey, grey, grey, red, red, grey));
}

TEST(ResizeGeneral, LumaIsWeightedAndTruncated) {
  // 4 to 6 columns and lines of 4 to 5: the second pixel lies at 0.6666667, weights 682 and 342, on line 0.
  // (342 * 16 + 682 * 235) >> 10 = 161; (161 - 16) * 1220542 >> 22 = 42.
  const ResizeCase c{.width = 4, .height = 4, .outWidth = 6, .outHeight = 5};
  Picture picture = greyPicture(c, 16);
  for (int y = 0; y < 4; ++y) {
    picture.plane(0)[4 * y + 1] = 235;
  }
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(30));
  EXPECT_EQ(words[0], 0);
  EXPECT_EQ(words[1], 21 << 11 | 42 << 5 | 21);
}

TEST(ResizeGeneral, PlanarFourTwoTwoUsesEverySecondChromaLine) {
  // 6 to 12 lines: the pairs' first rows are 0 to 5 (the last steps back to 4), their chroma rows 0, 0, 2, 2, 4, 4.
  const ResizeCase c{.inType = 1, .width = 8, .height = 6, .outWidth = 8, .outHeight = 12};
  for (const int coloured : {0, 1}) {
    Picture picture = greyPicture(c, 128);
    for (int y = coloured; y < 6; y += 2) {
      std::memset(picture.plane(2) + y * 4, 200, 4);
    }
    const auto words = convertedWords(c, picture);
    ASSERT_THAT(words, SizeIs(96));
    EXPECT_THAT(words, Each(coloured == 0 ? 30 << 11 | 17 << 5 | 16 : 0x8410));
  }
}

TEST(ResizeGeneral, LinesOfAPairTakeTheFirstLinesChroma) {
  // 8 to 3 lines is 2.67 a line: rows 0, 2 | 5. The first two lines use chroma row 0, the last row 2.
  const ResizeCase c{.width = 8, .height = 8, .outWidth = 7, .outHeight = 3};
  Picture picture = greyPicture(c, 128);
  std::memset(picture.plane(2) + 4, 200, 4); // chroma row 1, rows 2 and 3 of luma
  EXPECT_THAT(convertedWords(c, picture), Each(0x8410));
  std::memset(picture.plane(2), 200, 4);
  std::memset(picture.plane(2) + 4, 128, 4);
  const auto words = convertedWords(c, picture);
  ASSERT_THAT(words, SizeIs(21));
  for (std::size_t i = 0; i < 21; ++i) {
    EXPECT_EQ(words[i], i < 14 ? 30 << 11 | 17 << 5 | 16 : 0x8410) << i;
  }
}

TEST(ResizeGeneral, FirstPixelGoesWhereTheTurnSendsIt) {
  const auto brightAt = [](uint32_t rotation) {
    const ResizeCase c{.width = 8, .height = 6, .outWidth = 8, .outHeight = 6, .rotation = rotation};
    Picture picture = greyPicture(c, 16);
    picture.plane(0)[0] = 235;
    const auto words = convertedWords(c, picture);
    std::vector<std::size_t> bright;
    for (std::size_t i = 0; i < words.size(); ++i) {
      if (words[i] != 0) {
        bright.push_back(i);
      }
    }
    return bright;
  };
  EXPECT_THAT(brightAt(2), ElementsAre(0));
  EXPECT_THAT(brightAt(3), ElementsAre(7 * 6)); // start of the last of eight lines of six
  EXPECT_THAT(brightAt(4), ElementsAre(5));     // end of the first line of six
  EXPECT_THAT(brightAt(5), ElementsAre(47));    // last pixel
}

TEST(ResizeGeneral, HalfTurnIsMeasuredFromTheEndOfTheStride) {
  const ResizeCase c{.width = 20, .height = 12, .outWidth = 31, .outHeight = 17, .rotation = 5, .outPadding = 32};
  const Picture picture = greyPicture(c, 235);
  support::Canvas canvas = reference::canvasFor(c);
  support::Canvas fresh = reference::canvasFor(c);
  ConvertParams params = reference::recordFor(c);
  picture.describe(params);
  canvas.describe(params);
  ASSERT_EQ(support::convertOnce(params), CC_OK);
  for (int y = 0; y < 17; ++y) {
    const uint8_t *line = canvas.plane(0) + y * 94;
    EXPECT_EQ(std::memcmp(line, fresh.plane(0) + y * 94, 32), 0) << y;
    EXPECT_THAT(std::vector<uint8_t>(line + 32, line + 94), Each(0xFF)) << y;
  }
}

TEST(ResizeGeneral, EnlargedMultiplesOf16AreWrittenWhole) {
  for (const int factor : {2, 3, 5}) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      const ResizeCase c{
          .width = 48, .height = 32, .outWidth = 48 * factor, .outHeight = 32 * factor, .rotation = rotation};
      EXPECT_EQ(reference::leavesUnwritten(c), "");
      EXPECT_EQ(compareResized(c), "");
    }
  }
}

TEST(ResizeGeneral, EveryRemainderOf16AtManyRatios) {
  Mixer mix(31);
  std::size_t n = 0;
  for (int width = 16; width < 48; ++width) {
    for (const int ratio : {3, 7, 11, 15, 17, 23, 29, 41}) { // sixteenths
      for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
        ResizeCase c{.inType = kTypes[n % 6], .outType = n % 5 == 0 ? 31 : 30};
        c.width = width;
        c.height = 16 + width * 5 % 32;
        c.outWidth = width * ratio / 16;
        c.outHeight = 3 + mix.below(40);
        c.rotation = rotation;
        c.quality = rotation == 2 ? 0 : static_cast<uint32_t>(mix.below(4));
        mix.vary(c);
        ASSERT_EQ(compareResized(c), "");
        ++n;
      }
    }
  }
}

TEST(ResizeGeneral, FarReductionsAndEnlargements) {
  Mixer mix(32);
  for (const int type : kTypes) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      for (const int factor : {5, 8, 13, 32}) {
        ResizeCase small{.inType = type, .width = 96 + mix.below(17), .height = 96 + mix.below(17)};
        small.outWidth = small.width / factor;
        small.outHeight = small.height / (factor - 1);
        small.rotation = rotation;
        mix.vary(small);
        ASSERT_EQ(compareResized(small), "");
      }
      for (const int factor : {3, 7, 8}) {
        ResizeCase large{.inType = type, .width = 2 + mix.below(15), .height = 2 + mix.below(9)};
        large.outWidth = large.width * factor + mix.below(3);
        large.outHeight = large.height * (factor - 1);
        large.rotation = rotation;
        mix.vary(large);
        ASSERT_EQ(compareResized(large), "");
      }
    }
  }
}

TEST(ResizeGeneral, SmallestPictures) {
  Mixer mix(33);
  for (const int type : kTypes) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      for (int width = 2; width < 6; ++width) {
        for (int height = 2; height < 5; ++height) {
          for (const int size : {1, 2, 3, 5}) {
            ResizeCase c{.inType = type, .width = width, .height = height, .outWidth = size, .outHeight = 6 - size};
            c.rotation = rotation;
            mix.vary(c);
            ASSERT_EQ(compareResized(c), "");
          }
        }
      }
    }
  }
}

TEST(ResizeGeneral, UnnamedRotationCodesActAsNone) {
  for (const uint32_t rotation : {0U, 1U, 7U}) {
    EXPECT_EQ(compareResized({.width = 21, .height = 34, .outWidth = 30, .outHeight = 19, .rotation = rotation}), "");
  }
}

TEST(ResizeGeneral, PlanesAreExchangedForTypes12And13) {
  for (const int type : {12, 13}) {
    const ResizeCase c{.inType = type, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11};
    Picture picture = greyPicture(c, 128);
    std::memset(picture.plane(1), 200, support::planeShape(type, 16, 16, 16, 1).bytes()); // Cr comes second
    EXPECT_THAT(convertedWords(c, picture), Each(30 << 11 | 17 << 5 | 16)) << type;
  }
}

TEST(ResizeGeneral, MissingPlanesAreRefused) {
  for (const int type : kTypes) {
    const ResizeCase c{.inType = type, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11};
    for (const int plane : {0, 1, 2, 3}) {
      if (plane == 2 && support::isSemiPlanar(type)) {
        continue;
      }
      EXPECT_EQ(refuses(c, plane), "");
    }
  }
}

TEST(ResizeGeneral, SizesThatCannotBeAreRefused) {
  for (const int type : kTypes) {
    ResizeCase c{.inType = type, .width = 8, .height = 8, .outWidth = 4, .outHeight = 5};
    c.width = 1;
    EXPECT_EQ(refuses(c), "");
    c.width = 8;
    c.height = 1;
    EXPECT_EQ(refuses(c), "");
    c.height = 8;
    c.outWidth = 0;
    EXPECT_EQ(refuses(c), "");
    c.outWidth = 4;
    c.outHeight = 0;
    EXPECT_EQ(refuses(c), "");
    c.height = 2;
    c.outHeight = 2049;
    EXPECT_EQ(refuses(c), "");
  }
}

TEST(ResizeGeneral, TheFarthestEnlargement) {
  EXPECT_EQ(compareResized({.width = 2, .height = 2, .outWidth = 3, .outHeight = 2048}), "");
  EXPECT_EQ(compareResized({.inType = 1, .width = 2, .height = 2, .outWidth = 2048, .outHeight = 3, .rotation = 4}),
            "");
}

} // namespace
