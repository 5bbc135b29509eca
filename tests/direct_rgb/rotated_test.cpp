// Planar pictures to RGB565 with quarter turns, half turn and flip.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

constexpr int kWhiteBlock = 0xFFFF;
// 219 * 1220542 >> 23 is 31, which the 5-bit table turns into 30; >> 22 is 63.
constexpr int kWhiteStrip = 30 << 11 | 63 << 5 | 30;

std::pair<int, int> place(int rotation, int x, int y, int w, int h) {
  switch (rotation) {
  case 3:
    return {y, w - 1 - x};
  case 4:
    return {h - 1 - y, x};
  case 5:
    return {w - 1 - x, h - 1 - y};
  default:
    return {x, h - 1 - y};
  }
}

TEST(Rotated, FirstWordOfALeftTurnedBlockIsOnTheLastLine) {
  Picture picture = flatPicture(3, 16, 16, 16, 128, 128);
  picture.plane(0)[0] = 235;
  Converted result = convertPicture(picture, COLOR_RGB565, ROTATION_90_LEFT);
  ASSERT_EQ(CC_OK, result.code);
  EXPECT_EQ(kWhiteBlock, result.word(0, 15));
  EXPECT_EQ(0, result.word(1, 15));
  EXPECT_EQ(0, result.word(0, 14));
  picture.plane(0)[16] = 235; // second line, first column: the high half of the same word
  result = convertPicture(picture, COLOR_RGB565, ROTATION_90_LEFT);
  EXPECT_EQ(kWhiteBlock, result.word(1, 15));
}

TEST(Rotated, EveryPixelLandsWhereTheTurnSendsIt) {
  const Size sizes[] = {{16, 16}, {20, 20}, {6, 4}, {34, 18}};
  for (const int rotation : {3, 4, 5, 6}) {
    for (const auto &[w, h] : sizes) {
      for (const auto &[x, y] : {std::pair{0, 0}, {w - 1, 0}, {0, h - 1}, {w - 1, h - 1}, {w / 2, h / 3}, {1, 2}}) {
        Picture picture = flatPicture(3, w, h, 16, 128, 128);
        picture.plane(0)[y * w + x] = 235;
        Converted result = convertPicture(picture, COLOR_RGB565, rotation);
        ASSERT_EQ(CC_OK, result.code);
        const auto [column, line] = place(rotation, x, y, w, h);
        const bool quarter = rotation < 5;
        for (int i = 0; i < w * h; ++i) {
          const int c = i % (quarter ? h : w);
          const int l = i / (quarter ? h : w);
          const bool bright = (result.word(c, l) >> 5 & 63) > 50;
          ASSERT_EQ(c == column && l == line, bright) << "rotation " << rotation << ", " << w << "x" << h << ", source "
                                                      << x << "," << y << ", output " << c << "," << l;
        }
      }
    }
  }
}

TEST(Rotated, BlockAndStripsSaturateDifferently) {
  const Picture picture = flatPicture(3, 20, 20, 235, 128, 128);
  for (const int rotation : {3, 4, 5}) {
    Converted result = convertPicture(picture, COLOR_RGB565, rotation);
    ASSERT_EQ(CC_OK, result.code);
    for (int y = 0; y < 20; ++y) {
      for (int x = 0; x < 20; ++x) {
        const auto [column, line] = place(rotation, x, y, 20, 20);
        const bool block = x < 16 && y < 16;
        ASSERT_EQ(block ? kWhiteBlock : kWhiteStrip, result.word(column, line))
            << "rotation " << rotation << ", source " << x << "," << y;
      }
    }
  }
}

TEST(Rotated, PicturesThinnerThanABlockAreOneStrip) {
  for (const int rotation : {3, 4, 5}) {
    for (const auto &[w, h] : {std::pair{10, 100}, {100, 10}}) {
      Converted white = convertPicture(flatPicture(3, w, h, 235, 128, 128), COLOR_RGB565, rotation);
      Converted red = convertPicture(flatPicture(3, w, h, 16, 128, 255), COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, white.code);
      ASSERT_EQ(CC_OK, red.code);
      const int columns = rotation == 5 ? w : h;
      for (int i = 0; i < w * h; ++i) {
        ASSERT_EQ(kWhiteStrip, white.word(i % columns, i / columns)) << rotation << ": " << i;
        // 127 * 1673527 >> 23 is 25; green is far below 0, blue 0.
        ASSERT_EQ(25 << 11, red.word(i % columns, i / columns)) << rotation << ": " << i;
      }
    }
  }
}

/// What a picture of white pixels leaves untouched shows where its pixels went.
bool isWhite(Converted &picture, int byteOffset) {
  const int word = picture.byte(0, byteOffset) | picture.byte(0, byteOffset + 1) << 8;
  return word == kWhiteBlock || word == kWhiteStrip;
}

TEST(Rotated, HalfTurnWithWideStrideIsShiftedToTheEndOfTheLine) {
  Converted result = convertPicture(flatPicture(3, 16, 16, 235, 128, 128), COLOR_RGB565, ROTATION_180, 8);
  ASSERT_EQ(CC_OK, result.code);
  const Canvas fresh = Canvas::forPicture(COLOR_RGB565, 16, 16, 40);
  Canvas expected = fresh;
  for (int line = 0; line < 16; ++line) {
    std::memset(lineOf(expected, 0, line, 40) + 8, 0xFF, 32);
  }
  EXPECT_EQ("", result.canvas.difference(expected));
}

TEST(Rotated, RightStripOfTheHalfTurnStaysAtTheLineStart) {
  // 20x16: the block's 16 columns end with the stride, the strip's 4 columns stand at the line start, and the 4 spare
  // pixels lie between them.
  Converted result = convertPicture(flatPicture(3, 20, 16, 235, 128, 128), COLOR_RGB565, ROTATION_180, 8);
  ASSERT_EQ(CC_OK, result.code);
  Canvas expected = Canvas::forPicture(COLOR_RGB565, 20, 16, 48);
  for (int line = 0; line < 16; ++line) {
    for (int i = 0; i < 4; ++i) {
      expected.plane(0)[line * 48 + 2 * i] = kWhiteStrip & 0xFF;
      expected.plane(0)[line * 48 + 2 * i + 1] = kWhiteStrip >> 8;
    }
    std::memset(lineOf(expected, 0, line, 48) + 16, 0xFF, 32);
  }
  EXPECT_EQ("", result.canvas.difference(expected));
}

TEST(Rotated, BottomStripOfTheHalfTurnIsShiftedLikeItsBlocks) {
  Converted result = convertPicture(flatPicture(3, 16, 20, 235, 128, 128), COLOR_RGB565, ROTATION_180, 8);
  ASSERT_EQ(CC_OK, result.code);
  for (int line = 0; line < 20; ++line) {
    for (int column = 0; column < 16; ++column) {
      ASSERT_TRUE(isWhite(result, line * 40 + 8 + 2 * column)) << line << ", " << column;
    }
    EXPECT_EQ(line < 4 ? kWhiteStrip : kWhiteBlock, result.word(4, line));
  }
}

TEST(Rotated, RightStripOfTheClockwiseTurnIsShiftedToTheEndOfTheLine) {
  // 20x16 turns into 16 columns by 20 lines; lines 16 to 19 come from the strip.
  Converted result = convertPicture(flatPicture(3, 20, 16, 235, 128, 128), COLOR_RGB565, ROTATION_90_RIGHT, 8);
  ASSERT_EQ(CC_OK, result.code);
  Canvas expected = Canvas::forPicture(COLOR_RGB565, 16, 20, 40);
  for (int line = 0; line < 16; ++line) {
    std::memset(lineOf(expected, 0, line, 40), 0xFF, 32);
  }
  for (int line = 16; line < 20; ++line) {
    for (int i = 0; i < 16; ++i) {
      expected.plane(0)[line * 40 + 8 + 2 * i] = kWhiteStrip & 0xFF;
      expected.plane(0)[line * 40 + 8 + 2 * i + 1] = kWhiteStrip >> 8;
    }
  }
  EXPECT_EQ("", result.canvas.difference(expected));
}

TEST(Rotated, FlipDithersTwoByTwo) {
  for (const int height : {6, 7}) {
    Converted result = convertPicture(flatPicture(3, 6, height, 128, 128, 128), COLOR_RGB565, ROTATION_FLIP_V);
    ASSERT_EQ(CC_OK, result.code);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < 6; ++x) {
        const int expected = x % 2 == 1 ? 0x7BEF : y % 2 == 0 ? 0x8410 : 0x83F0;
        ASSERT_EQ(expected, result.word(x, height - 1 - y)) << x << ", " << y << " of " << height;
      }
    }
  }
}

TEST(Rotated, FlipFollowsTheMatrix) {
  const DitherRestorer restorer;
  const Picture red = flatPicture(3, 16, 16, 16, 128, 255);
  // Red 16 + (127 * c >> 20) + 1, green below 0, blue 16 + 2.
  const std::pair<uint32_t, int> expected[] = {{0, (16 + 178 + 1) >> 3}, {1, (16 + 199 + 1) >> 3}};
  for (const auto &[entry, r5] : expected) {
    Converted result =
        convertPicture(red, COLOR_RGB565, ROTATION_FLIP_V, 0, MatrixChoice::entryOf(static_cast<uint32_t>(entry)));
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(r5 << 11 | 2, result.word(0, 15)) << entry;
  }
  Converted grey = convertPicture(flatPicture(3, 16, 16, 128, 3, 250), COLOR_RGB565, ROTATION_FLIP_V, 0,
                                  MatrixChoice::entryOf(MATRIX_GREY));
  ASSERT_EQ(CC_OK, grey.code);
  EXPECT_EQ(0x8410, grey.word(0, 15));
  EXPECT_EQ(0x7BEF, grey.word(1, 14));
  // 512.0 is stored as 2^20 and so weighs exactly one: red 100 + 50, green 100 - (50 - 30), blue 100 - 30.
  Converted custom = convertPicture(flatPicture(3, 16, 16, 100, 98, 178), COLOR_RGB565, ROTATION_FLIP_V, 0,
                                    MatrixChoice::customOf({512.0, 512.0, 512.0, 512.0}));
  ASSERT_EQ(CC_OK, custom.code);
  EXPECT_EQ(151 >> 3 << 11 | 80 >> 2 << 5 | 72 >> 3, custom.word(0, 15));
}

TEST(Rotated, TurnsIgnoreTheMatrix) {
  const DitherRestorer restorer;
  const Picture picture(3, 20, 36, 20, Fill::Noise, 3);
  for (const int rotation : {3, 4, 5}) {
    Converted plain = convertPicture(picture, COLOR_RGB565, rotation);
    Converted other =
        convertPicture(picture, COLOR_RGB565, rotation, 0, MatrixChoice::customOf({99.0, 512.0, -512.0, 1e9}));
    ASSERT_EQ(CC_OK, plain.code);
    ASSERT_EQ(CC_OK, other.code);
    EXPECT_EQ("", other.canvas.difference(plain.canvas));
  }
}

TEST(Rotated, StripsOfFullHeightChromaReadEveryLineAndBlocksEverySecond) {
  for (const int type : {1, 13}) {
    Picture picture = flatPicture(type, 20, 20, 16, 128, 128);
    const int crPlane = type == 1 ? 2 : 1;
    for (int line = 1; line < 20; line += 2) {
      std::memset(lineOf(picture, crPlane, line, 10), 255, 10);
    }
    for (const int rotation : {3, 4, 5}) {
      Converted result = convertPicture(picture, COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, result.code);
      for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
          const auto [column, line] = place(rotation, x, y, 20, 20);
          const bool block = x < 16 && y < 16;
          ASSERT_EQ(!block && y % 2 == 1 ? 25 << 11 : 0, result.word(column, line))
              << rotation << ": " << x << "," << y;
        }
      }
    }
  }
}

TEST(Rotated, FlipReadsFullHeightChromaAsIfItWereHalfHeight) {
  for (const int height : {20, 21}) {
    Picture tall(1, 22, height, 22, Fill::Noise, 4);
    Picture small(3, 22, 22, 22, Fill::Noise, 4);
    for (int plane = 1; plane <= 2; ++plane) {
      std::memcpy(small.plane(plane), tall.plane(plane), 121);
    }
    std::memcpy(small.plane(0), tall.plane(0), std::size_t{22} * static_cast<std::size_t>(height));
    Converted fromTall = convertPicture(tall, COLOR_RGB565, ROTATION_FLIP_V);
    Converted fromSmall = convertPicture(small, COLOR_RGB565, ROTATION_FLIP_V);
    ASSERT_EQ(CC_OK, fromTall.code);
    ASSERT_EQ(CC_OK, fromSmall.code);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < 22; ++x) {
        ASSERT_EQ(fromSmall.word(x, 21 - y), fromTall.word(x, height - 1 - y)) << x << ", " << y << " of " << height;
      }
    }
  }
}

TEST(Rotated, UnnamedCodesActAsNone) {
  for (const int type : {3, 1, 0, 2, 4, 37, 34}) {
    const Picture picture(type, 35, 21, 35, Fill::Noise, 8);
    Converted plain = convertPicture(picture, COLOR_RGB565);
    ASSERT_EQ(CC_OK, plain.code);
    for (const int rotation : {0, 1, 7}) {
      Converted other = convertPicture(picture, COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, other.code);
      EXPECT_EQ("", other.canvas.difference(plain.canvas)) << type << ", rotation " << rotation;
    }
  }
}

TEST(Rotated, RefusesMissingPlanesAndEmptyChroma) {
  for (const uint32_t rotation : {3U, 4U, 5U, 6U}) {
    const Picture picture = flatPicture(12, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.rotation = rotation;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    for (int plane = 0; plane < 3; ++plane) {
      ConvertParams without = params;
      without.inBuf[plane] = nullptr;
      EXPECT_TRUE(refuses(without, canvas)) << "without plane " << plane;
    }
    ConvertParams without = params;
    without.outBuf[0] = nullptr;
    EXPECT_TRUE(refuses(without, canvas));
    params.inHeight = params.outHeight = 1;
    EXPECT_TRUE(refuses(params, canvas));
    ConvertParams nine = params;
    nine.inHeight = nine.outHeight = 16;
    nine.rotation = 8;
    EXPECT_TRUE(refuses(nine, canvas));
  }
}

TEST(Rotated, AgreesWithTheModelOnSmallSizes) {
  for (const int rotation : {3, 4, 5, 6}) {
    ASSERT_TRUE(Grid(3, COLOR_RGB565, {rotation}).run(smallSizes(3), 40U + rotation));
  }
}

TEST(Rotated, AgreesWithTheModelAroundBlocks) {
  for (const int type : {3, 12, 1, 13, 11, 35}) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {3, 4, 5, 6}).run(blockSizes(11, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB16_ALT, {5, 6, 4, 3}).run(blockSizes(53, type), type));
  }
}

TEST(Rotated, FlipAgreesWithTheModelUnderEveryMatrix) {
  const DitherRestorer restorer;
  const MatrixChoice choices[] = {MatrixChoice::entryOf(1), MatrixChoice::entryOf(2), MatrixChoice::entryOf(3),
                                  MatrixChoice::customOf({700.5, -300.25, 512.0, 0.5}),
                                  MatrixChoice::customOf({1e12, -1e12, 1000000.0, 524288.0})};
  uint32_t start = 0;
  for (const MatrixChoice &matrix : choices) {
    for (const int type : {3, 13, 35, 0, 2, 4, 37, 34}) {
      ASSERT_TRUE(Grid(type, COLOR_RGB565, {6}).with(matrix).run(blockSizes(61, type), ++start));
    }
  }
}

TEST(Rotated, FlipNeverScales) {
  DirectCase c;
  c.rotation = ROTATION_FLIP_V;
  c.isResize = 1;
  for (const int type : {3, 12, 1, 11, 0, 2, 4, 37, 34}) {
    c.inType = type;
    c.width = 36;
    c.height = 24;
    c.outWidth = c.outHeight = 0;
    EXPECT_TRUE(matches(c));
    for (const auto &[w, h] : {std::pair{20, 16}, {36, 17}, {19, 24}, {7, 5}}) {
      c.outWidth = w;
      c.outHeight = h;
      EXPECT_TRUE(matches(c));
    }
  }
}

TEST(Rotated, AllLumaAndChromaPairs) {
  for (const int rotation : {3, 4, 5}) {
    DirectCase c;
    c.rotation = rotation;
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 3, 256, 1)));
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 3, 8, 1)));
    if (rotation == 4) {
      EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 3, 272, 1)));
      EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 3, 8, 1)));
    }
  }
  DirectCase flip;
  flip.rotation = ROTATION_FLIP_V;
  EXPECT_TRUE(matches(flip, sweepPicture(Sweep::Pairs, 3, 512, 2)));
  EXPECT_TRUE(matches(flip, sweepPicture(Sweep::Greens, 3, 544, 2)));
}

} // namespace
