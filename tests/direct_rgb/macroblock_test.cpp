// Planar 4:2:0, planar 4:2:2 and semi-planar pictures to RGB565, upright.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

constexpr int kTypes[] = {3, 12, 1, 13, 11, 35};

TEST(Macroblock, WholeBlocksReachBlackAndWhite) {
  for (const int width : {16, 32}) {
    Converted black = convertPicture(flatPicture(3, width, 16, 16, 128, 128), COLOR_RGB565);
    Converted white = convertPicture(flatPicture(3, width, 16, 235, 128, 128), COLOR_RGB565);
    ASSERT_EQ(CC_OK, black.code);
    ASSERT_EQ(CC_OK, white.code);
    for (int i = 0; i < width * 16; ++i) {
      ASSERT_EQ(0x0000, black.word(i % width, i / width)) << width << ": pixel " << i;
      ASSERT_EQ(0xFFFF, white.word(i % width, i / width)) << width << ": pixel " << i;
    }
  }
}

TEST(Macroblock, PartialBlocksKeepStudioLevels) {
  // Two whole blocks and one 8 wide in the first block row; a second row of blocks 4 high.
  Converted black = convertPicture(flatPicture(3, 40, 20, 16, 128, 128), COLOR_RGB565);
  Converted white = convertPicture(flatPicture(3, 40, 20, 235, 128, 128), COLOR_RGB565);
  ASSERT_EQ(CC_OK, black.code);
  ASSERT_EQ(CC_OK, white.code);
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 40; ++x) {
      const bool whole = x < 32 && y < 16;
      ASSERT_EQ(whole ? 0x0000 : 0x1082, black.word(x, y)) << x << ", " << y;
      ASSERT_EQ(whole ? 0xFFFF : 0xEF5D, white.word(x, y)) << x << ", " << y;
    }
  }
}

TEST(Macroblock, StrongColours) {
  // Cr 255: red 127 * 1673527, green -127 * 852492; >> 22 gives 50 and -26, >> 20 gives 202 and less than 16.
  Converted red = convertPicture(flatPicture(3, 18, 16, 16, 128, 255), COLOR_RGB565);
  // Cb 255: blue 127 * 2114977; >> 22 gives 64, >> 20 gives 256.
  Converted blue = convertPicture(flatPicture(3, 18, 16, 16, 255, 128), COLOR_RGB565);
  ASSERT_EQ(CC_OK, red.code);
  ASSERT_EQ(CC_OK, blue.code);
  EXPECT_EQ(25 << 11, red.word(15, 15));
  EXPECT_EQ(25 << 11 | 4 << 5 | 2, red.word(16, 15));
  EXPECT_EQ(31, blue.word(15, 15));
  EXPECT_EQ(2 << 11 | 4 << 5 | 29, blue.word(16, 15));
}

TEST(Macroblock, EveryInputTypeGivesTheSameColour) {
  for (const int type : kTypes) {
    Converted picture = convertPicture(flatPicture(type, 18, 16, 16, 128, 255), COLOR_RGB565);
    ASSERT_EQ(CC_OK, picture.code) << type;
    EXPECT_EQ(25 << 11, picture.word(0, 0)) << type;
    EXPECT_EQ(25 << 11 | 4 << 5 | 2, picture.word(17, 0)) << type;
  }
}

TEST(Macroblock, FullHeightChromaIsReadOnEvenLines) {
  for (const int type : {1, 13}) {
    Picture tall(type, 34, 34, 34, Fill::Noise, 5);
    Picture small(type == 1 ? 3 : 12, 34, 34, 34, Fill::Noise, 5);
    for (int plane = 1; plane <= 2; ++plane) {
      for (int k = 0; k < 17; ++k) {
        std::copy_n(lineOf(tall, plane, 2 * k, 17), 17, lineOf(small, plane, k, 17));
      }
    }
    Converted fromTall = convertPicture(tall, COLOR_RGB565);
    Converted fromSmall = convertPicture(small, COLOR_RGB565);
    ASSERT_EQ(CC_OK, fromTall.code);
    ASSERT_EQ(CC_OK, fromSmall.code);
    EXPECT_EQ("", fromTall.canvas.difference(fromSmall.canvas)) << type;
    for (int plane = 1; plane <= 2; ++plane) {
      for (int k = 0; k < 17; ++k) {
        std::memset(lineOf(tall, plane, 2 * k + 1, 17), 255, 17);
      }
    }
    Converted otherOddLines = convertPicture(tall, COLOR_RGB565);
    ASSERT_EQ(CC_OK, otherOddLines.code);
    EXPECT_EQ("", otherOddLines.canvas.difference(fromTall.canvas)) << type;
  }
}

TEST(Macroblock, BothSixteenBitCodesGiveTheSameWords) {
  const Picture picture(3, 50, 35, 50, Fill::Noise, 9);
  Converted a = convertPicture(picture, COLOR_RGB565);
  Converted b = convertPicture(picture, COLOR_RGB16_ALT);
  ASSERT_EQ(CC_OK, a.code);
  ASSERT_EQ(CC_OK, b.code);
  EXPECT_EQ("", b.canvas.difference(a.canvas));
  EXPECT_NE("", a.canvas.touched());
}

TEST(Macroblock, LastColumnAndLineOfOddPicturesTakeTheLastChromaSample) {
  Picture picture = flatPicture(3, 3, 3, 16, 128, 128);
  picture.plane(2)[0] = 255; // the only Cr sample there is
  Converted result = convertPicture(picture, COLOR_RGB565);
  ASSERT_EQ(CC_OK, result.code);
  for (int i = 0; i < 9; ++i) {
    EXPECT_EQ(25 << 11 | 4 << 5 | 2, result.word(i % 3, i / 3)) << i;
  }
}

TEST(Macroblock, NoMatrixMatters) {
  const DitherRestorer restorer;
  const Picture picture(3, 40, 36, 40, Fill::Noise, 3);
  Converted plain = convertPicture(picture, COLOR_RGB565);
  ASSERT_EQ(CC_OK, plain.code);
  for (const MatrixChoice &matrix : {MatrixChoice::entryOf(1), MatrixChoice::entryOf(2), MatrixChoice::entryOf(3),
                                     MatrixChoice::customOf({400.0, -3.0, 1e30, 7.5})}) {
    Converted other = convertPicture(picture, COLOR_RGB565, ROTATION_NONE, 0, matrix);
    ASSERT_EQ(CC_OK, other.code);
    EXPECT_EQ("", other.canvas.difference(plain.canvas)) << matrix.entry;
  }
}

TEST(Macroblock, ExchangedPlanesAreExchangedInTheRecord) {
  for (const int type : {12, 13}) {
    const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    ConvertContext *handle = nullptr;
    ASSERT_EQ(CC_OK, zqCCInit(&handle));
    ASSERT_EQ(CC_OK, zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params));
    ASSERT_EQ(picture.plane(1), params.inBuf[1]);
    const int expected[] = {0xC800, 0x001F, 0xC800};
    for (int call = 0; call < 3; ++call) {
      ASSERT_EQ(CC_OK, zqCCProcess(handle, &params));
      EXPECT_EQ(picture.plane(call % 2 == 0 ? 2 : 1), params.inBuf[1]) << type << ", call " << call;
      EXPECT_EQ(picture.plane(call % 2 == 0 ? 1 : 2), params.inBuf[2]) << type << ", call " << call;
      EXPECT_EQ(expected[call], canvas.plane(0)[0] | canvas.plane(0)[1] << 8) << type << ", call " << call;
    }
    EXPECT_EQ(CC_OK, zqCCUninit(handle));
  }
}

TEST(Macroblock, OtherTypesKeepTheRecord) {
  for (const int type : {3, 1, 11, 35}) {
    const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    const ConvertParams before = params;
    ASSERT_EQ(CC_OK, support::convertOnce(params));
    EXPECT_EQ(before.inBuf[0], params.inBuf[0]) << type;
    EXPECT_EQ(before.inBuf[1], params.inBuf[1]) << type;
    EXPECT_EQ(before.inBuf[2], params.inBuf[2]) << type;
    EXPECT_EQ(before.inType, params.inType) << type;
    EXPECT_EQ(before.rotation, params.rotation) << type;
  }
}

TEST(Macroblock, PicturesWithoutLinesOrColumnsWriteNothing) {
  const Picture picture = flatPicture(3, 16, 16, 16, 128, 128);
  for (const bool noLines : {true, false}) {
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.inWidth = params.outWidth = noLines ? 16 : 0;
    params.inHeight = params.outHeight = noLines ? 0 : 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    EXPECT_EQ(CC_OK, support::convertOnce(params));
    EXPECT_EQ("", canvas.touched());
  }
}

TEST(Macroblock, RefusesMissingPlanesAndEmptyChroma) {
  for (const int type : kTypes) {
    const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    for (int plane = 0; plane < support::planeCount(type); ++plane) {
      ConvertParams without = params;
      without.inBuf[plane] = nullptr;
      EXPECT_TRUE(refuses(without, canvas)) << type << " without plane " << plane;
    }
    ConvertParams without = params;
    without.outBuf[0] = nullptr;
    EXPECT_TRUE(refuses(without, canvas)) << type << " without output";
    ConvertParams narrow = params;
    narrow.inWidth = narrow.outWidth = 1;
    EXPECT_TRUE(refuses(narrow, canvas)) << type;
    if (type != 1 && type != 13) {
      ConvertParams low = params;
      low.inHeight = low.outHeight = 1;
      EXPECT_TRUE(refuses(low, canvas)) << type;
    }
  }
}

TEST(Macroblock, AgreesWithTheModelOnSmallSizes) {
  for (const int type : kTypes) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {ROTATION_NONE}).run(smallSizes(type == 3 ? 8 : 2), 1U + type));
  }
}

TEST(Macroblock, AgreesWithTheModelAroundBlocks) {
  for (const int type : kTypes) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {ROTATION_NONE}).run(blockSizes(7, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB16_ALT, {0, 1, 7}).run(blockSizes(29, type), type));
  }
}

TEST(Macroblock, AllLumaAndChromaPairs) {
  DirectCase c;
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 3, 256, 1)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 3, 272, 1)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 3, 8, 1)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 3, 8, 1)));
}

} // namespace
