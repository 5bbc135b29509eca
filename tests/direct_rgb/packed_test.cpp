// Packed 4:2:2 to RGB565 at the same size.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

constexpr int kTypes[] = {6, 7, 8, 9, 14, 15, 16, 17};

// Luma 126 without colour, by place in the 2x2 cell; all four differ.
constexpr int kUpperLeft = 15 << 11 | 31 << 5 | 16;
constexpr int kUpperRight = 15 << 11 | 30 << 5 | 15;
constexpr int kLowerLeft = 16 << 11 | 31 << 5 | 15;
constexpr int kLowerRight = 15 << 11 | 31 << 5 | 15;

TEST(Packed, GreyIsDitheredTwoByTwo) {
  for (const int type : kTypes) {
    // 16x16 is one block; 20x20 takes four, of which only what lies inside is written.
    for (const int size : {16, 20}) {
      Converted result = convertPicture(flatPicture(type, size, size, 128, 128, 128), COLOR_RGB565);
      ASSERT_EQ(CC_OK, result.code);
      for (int i = 0; i < size * size; ++i) {
        const int x = i % size;
        const int y = i / size;
        ASSERT_EQ(x % 2 == 1 ? 0x7BEF : y % 2 == 0 ? 0x8410 : 0x83F0, result.word(x, y)) << type << ": " << i;
      }
    }
  }
}

TEST(Packed, TheSecondWordCodeAndTheLastByteOrder) {
  // The left luma is 100, the right 160, Cb 64 and Cr 192: red adds 64 * 1471152 >> 20 = 89, green takes away
  // (64 * 748683 - 64 * 360710) >> 20 = 23, blue adds -64 * 1859125 >> 20 = -114.
  const struct {
    int type, outType;
    std::array<uint8_t, 4> group;
  } cases[] = {{6, 31, {100, 64, 160, 192}}, {17, 30, {192, 160, 64, 100}}};
  // With the dither of its place in the 2x2 cell every channel of the four pixels comes to:
  constexpr int upperLeft = 23 << 11 | 19 << 5 | 0;  // 190 >> 3, 77 >> 2, -12
  constexpr int upperRight = 29 << 11 | 33 << 5 | 5; // 246 >> 3 is 30, which the table makes 29; 134 >> 2, 45 >> 3
  constexpr int lowerLeft = 23 << 11 | 18 << 5 | 0;  // 191 >> 3, 75 >> 2, -13
  constexpr int lowerRight = 30 << 11 | 34 << 5 | 5; // 248 >> 3 is 31, which the table makes 30; 136 >> 2, 43 >> 3
  for (const auto &each : cases) {
    Picture picture(each.type, 2, 2, 4, Fill::Flat, 0);
    std::memcpy(picture.plane(0), each.group.data(), 4);
    std::memcpy(picture.plane(0) + 4, each.group.data(), 4);
    Converted result = convertPicture(picture, each.outType);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(upperLeft, result.word(0, 0)) << each.type;
    EXPECT_EQ(upperRight, result.word(1, 0)) << each.type;
    EXPECT_EQ(lowerLeft, result.word(0, 1)) << each.type;
    EXPECT_EQ(lowerRight, result.word(1, 1)) << each.type;
  }
}

TEST(Packed, PartialBlocksTouchNothingOutsideThePicture) {
  Converted result = convertPicture(flatPicture(8, 20, 20, 128, 128, 128), COLOR_RGB565, ROTATION_NONE, 24);
  ASSERT_EQ(CC_OK, result.code);
  Canvas expected = Canvas::forPicture(COLOR_RGB565, 20, 20, 64);
  for (int i = 0; i < 400; ++i) {
    const int x = i % 20;
    const int y = i / 20;
    const int word = x % 2 == 1 ? 0x7BEF : y % 2 == 0 ? 0x8410 : 0x83F0;
    expected.plane(0)[y * 64 + 2 * x] = static_cast<uint8_t>(word & 0xFF);
    expected.plane(0)[y * 64 + 2 * x + 1] = static_cast<uint8_t>(word >> 8);
  }
  EXPECT_EQ("", result.canvas.difference(expected));
}

TEST(Packed, DitherFollowsTheOutputOfATurn) {
  for (const int type : {6, 17}) {
    for (const int n : {16, 18}) {
      const Picture grey = flatPicture(type, n, n, 126, 128, 128);
      const int last = n - 1;
      Converted upright = convertPicture(grey, COLOR_RGB565);
      EXPECT_EQ(kUpperLeft, upright.word(0, 0));
      EXPECT_EQ(kUpperRight, upright.word(1, 0));
      EXPECT_EQ(kLowerLeft, upright.word(0, 1));
      EXPECT_EQ(kLowerRight, upright.word(1, 1));
      Converted left = convertPicture(grey, COLOR_RGB565, ROTATION_90_LEFT);
      EXPECT_EQ(kUpperLeft, left.word(0, last));
      EXPECT_EQ(kUpperRight, left.word(1, last));
      EXPECT_EQ(kLowerLeft, left.word(0, last - 1));
      EXPECT_EQ(kLowerRight, left.word(1, last - 1));
      Converted right = convertPicture(grey, COLOR_RGB565, ROTATION_90_RIGHT);
      EXPECT_EQ(kUpperRight, right.word(last, 0));
      EXPECT_EQ(kUpperLeft, right.word(last - 1, 0));
      EXPECT_EQ(kLowerRight, right.word(last, 1));
      EXPECT_EQ(kLowerLeft, right.word(last - 1, 1));
      Converted half = convertPicture(grey, COLOR_RGB565, ROTATION_180);
      EXPECT_EQ(kUpperRight, half.word(last, last));
      EXPECT_EQ(kUpperLeft, half.word(last - 1, last));
      EXPECT_EQ(kLowerRight, half.word(last, last - 1));
      EXPECT_EQ(kLowerLeft, half.word(last - 1, last - 1));
      for (Converted *each : {&upright, &left, &right, &half}) {
        ASSERT_EQ(CC_OK, each->code);
      }
    }
  }
}

TEST(Packed, TurnedPixelsLandInTheirPlaces) {
  Picture picture = flatPicture(8, 18, 20, 16, 128, 128);
  picture.plane(0)[2 * 36 + 2 * 4 + 1] = 235; // column 4 of line 2
  const struct { int rotation, column, line; } places[] = {{2, 4, 2}, {3, 2, 13}, {4, 17, 4}, {5, 13, 17}};
  for (const auto &[rotation, column, line] : places) {
    Converted result = convertPicture(picture, COLOR_RGB565, rotation);
    ASSERT_EQ(CC_OK, result.code);
    const int columns = rotation == 3 || rotation == 4 ? 20 : 18;
    for (int i = 0; i < 360; ++i) {
      const bool bright = (result.word(i % columns, i / columns) >> 5 & 63) > 40;
      ASSERT_EQ(i == line * columns + column, bright) << rotation << ": " << i;
    }
  }
}

TEST(Packed, OtherCodesActAsNone) {
  const Picture picture(7, 37, 21, 76, Fill::Noise, 8);
  Converted plain = convertPicture(picture, COLOR_RGB565);
  ASSERT_EQ(CC_OK, plain.code);
  for (const int rotation : {0, 1, 6, 7}) {
    Converted other = convertPicture(picture, COLOR_RGB565, rotation);
    ASSERT_EQ(CC_OK, other.code);
    EXPECT_EQ("", other.canvas.difference(plain.canvas)) << rotation;
  }
}

TEST(Packed, ChromaOfTheLowerLineIsNotRead) {
  for (const int rotation : {2, 3, 4, 5}) {
    Picture picture(6, 20, 20, 40, Fill::Noise, 2);
    Converted before = convertPicture(picture, COLOR_RGB565, rotation);
    for (int line = 1; line < 20; line += 2) {
      for (int i = 1; i < 40; i += 2) {
        picture.plane(0)[line * 40 + i] ^= 0xFF;
      }
    }
    Converted after = convertPicture(picture, COLOR_RGB565, rotation);
    ASSERT_EQ(CC_OK, before.code);
    ASSERT_EQ(CC_OK, after.code);
    EXPECT_EQ("", after.canvas.difference(before.canvas)) << rotation;
    EXPECT_NE("", after.canvas.touched());
  }
}

TEST(Packed, ByteOrders) {
  // Red 16 + (127 * 1471152 >> 20 = 178) + 1 from Cr 255, blue 16 + (127 * 1859125 >> 20 = 225) + 2 from Cb 255.
  const struct {
    int type;
    uint8_t bytes[4];
  } groups[] = {{6, {16, 128, 80, 255}},  {7, {16, 255, 80, 128}},  {8, {128, 16, 255, 80}},  {9, {255, 16, 128, 80}},
                {14, {80, 128, 16, 255}}, {15, {80, 255, 16, 128}}, {16, {128, 80, 255, 16}}, {17, {255, 80, 128, 16}}};
  for (const auto &[type, bytes] : groups) {
    Picture picture(type, 2, 2, 4, Fill::Flat, 0);
    std::memcpy(picture.plane(0), bytes, 4);
    std::memcpy(picture.plane(0) + 4, bytes, 4);
    Converted result = convertPicture(picture, COLOR_RGB565);
    ASSERT_EQ(CC_OK, result.code);
    // The left pixel is the dark one in every order; green lies below zero in both. Red 80 + 178 - 3 is 255, whose five
    // bits the saturation table lowers to 30.
    EXPECT_EQ(195 >> 3 << 11 | 18 >> 3, result.word(0, 0)) << type;
    EXPECT_EQ(30 << 11 | 79 >> 3, result.word(1, 0)) << type;
  }
}

TEST(Packed, ExchangedLumaExchangesThePixelsOfAPair) {
  // The same bytes as type 6 and as type 14, seen in green: luma 200 stands out in either.
  Picture six(6, 16, 2, 32, Fill::Flat, 128);
  Picture fourteen(14, 16, 2, 32, Fill::Flat, 128);
  for (Picture *picture : {&six, &fourteen}) {
    for (int group = 0; group < 8; ++group) {
      *lineOf(*picture, 0, group, 4) = 16;
      picture->plane(0)[4 * group + 2] = 200;
    }
  }
  Converted a = convertPicture(six, COLOR_RGB565);
  Converted b = convertPicture(fourteen, COLOR_RGB565);
  ASSERT_EQ(CC_OK, a.code);
  ASSERT_EQ(CC_OK, b.code);
  for (int x = 0; x < 16; ++x) {
    EXPECT_EQ(x % 2 == 1, (a.word(x, 0) >> 5 & 63) > 40) << x;
    EXPECT_EQ(x % 2 == 0, (b.word(x, 0) >> 5 & 63) > 40) << x;
  }
}

TEST(Packed, FollowsTheMatrixButNotTheStoredDither) {
  const DitherRestorer restorer;
  const Picture red = flatPicture(6, 16, 16, 16, 128, 255);
  Converted bt709 = convertPicture(red, COLOR_RGB565, ROTATION_NONE, 0, MatrixChoice::entryOf(MATRIX_BT709));
  ASSERT_EQ(CC_OK, bt709.code);
  EXPECT_EQ((16 + 199 + 1) >> 3 << 11 | 18 >> 3, bt709.word(0, 0));
  Converted grey = convertPicture(flatPicture(6, 16, 16, 128, 0, 255), COLOR_RGB565, ROTATION_NONE, 0,
                                  MatrixChoice::entryOf(MATRIX_GREY));
  ASSERT_EQ(CC_OK, grey.code);
  EXPECT_EQ(0x8410, grey.word(0, 0));
  Converted custom = convertPicture(flatPicture(6, 18, 18, 128, 128, 128), COLOR_RGB565, ROTATION_NONE, 0,
                                    MatrixChoice::customOf({1.0, 1.0, 1.0, 1.0}));
  ASSERT_EQ(CC_OK, custom.code);
  EXPECT_EQ(0x8410, custom.word(0, 0));
  EXPECT_EQ(0x7BEF, custom.word(17, 17));
}

TEST(Packed, HalfTurnWithWideStrideIsShiftedToTheEndOfTheLine) {
  Converted result = convertPicture(flatPicture(6, 18, 6, 235, 128, 128), COLOR_RGB565, ROTATION_180, 10);
  ASSERT_EQ(CC_OK, result.code);
  Canvas fresh = Canvas::forPicture(COLOR_RGB565, 18, 6, 46);
  for (int line = 0; line < 6; ++line) {
    EXPECT_EQ(0, std::memcmp(lineOf(result.canvas, 0, line, 46), lineOf(fresh, 0, line, 46), 10)) << line;
    for (int i = 0; i < 18; ++i) {
      const int word = result.byte(0, line * 46 + 10 + 2 * i) | result.byte(0, line * 46 + 11 + 2 * i) << 8;
      EXPECT_GE(word >> 5 & 63, 58) << line << ", " << i;
    }
  }
}

TEST(Packed, PicturesWithoutLinesWriteNothing) {
  const Picture picture = flatPicture(6, 16, 16, 128, 128, 128);
  ConvertParams params = support::blankParams();
  picture.describe(params);
  params.outType = COLOR_RGB565;
  params.outWidth = 16;
  params.inHeight = params.outHeight = 0;
  Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
  canvas.describe(params);
  EXPECT_EQ(CC_OK, support::convertOnce(params));
  EXPECT_EQ("", canvas.touched());
}

TEST(Packed, RefusesMissingPlanes) {
  for (const int outType : {30, 31, 32}) {
    const Picture picture = flatPicture(6, 16, 16, 128, 128, 128);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = outType;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(outType, 16, 16, 48);
    canvas.describe(params);
    ConvertParams noInput = params;
    noInput.inBuf[0] = nullptr;
    EXPECT_TRUE(refuses(noInput, canvas));
    ConvertParams noOutput = params;
    noOutput.outBuf[0] = nullptr;
    EXPECT_TRUE(refuses(noOutput, canvas));
  }
}

TEST(Packed, AgreesWithTheModel) {
  for (const int type : kTypes) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {2, 3, 4, 5}).run(blockSizes(11, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB16_ALT, allRotations()).run(blockSizes(97, type), type));
  }
}

TEST(Packed, AgreesWithTheModelOnSmallSizes) {
  for (const int rotation : {2, 3, 4, 5}) {
    ASSERT_TRUE(Grid(8, COLOR_RGB565, {rotation}).run(smallSizes(2), 20U + rotation));
  }
}

TEST(Packed, AgreesWithTheModelUnderEveryMatrix) {
  const DitherRestorer restorer;
  uint32_t start = 0;
  for (const MatrixChoice &matrix :
       {MatrixChoice::entryOf(1), MatrixChoice::entryOf(2), MatrixChoice::entryOf(3),
        MatrixChoice::customOf({700.5, -300.25, 512.0, 0.5}), MatrixChoice::customOf({1e12, -1e12, 1e6, 524288.0})}) {
    for (const int type : kTypes) {
      ASSERT_TRUE(Grid(type, COLOR_RGB565, {2, 3, 4, 5}).with(matrix).run(blockSizes(131, type), ++start));
    }
  }
}

TEST(Packed, AllLumaAndChromaPairs) {
  for (const int rotation : {2, 4}) {
    DirectCase c;
    c.rotation = rotation;
    c.inType = rotation == 2 ? 6 : 17;
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, c.inType, 512, 2)));
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, c.inType, 544, 2)));
  }
}

} // namespace
