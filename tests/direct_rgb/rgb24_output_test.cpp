// Planar and packed pictures to RGB24 at the same size.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;
using Bytes = std::array<int, 3>;

constexpr int kPlanarTypes[] = {3, 12, 1, 13, 11, 35, 0, 2, 4, 37, 34};
constexpr int kPackedTypes[] = {6, 7, 8, 9, 14, 15, 16, 17};

TEST(Rgb24Output, MacroblocksUseTheWholeRange) {
  for (const int size : {16, 20}) {
    Converted black = convertPicture(flatPicture(3, size, size, 16, 128, 128), COLOR_RGB24);
    Converted white = convertPicture(flatPicture(3, size, size, 235, 128, 128), COLOR_RGB24);
    ASSERT_EQ(CC_OK, black.code);
    ASSERT_EQ(CC_OK, white.code);
    for (int i = 0; i < size * size; ++i) {
      ASSERT_EQ((Bytes{0, 0, 0}), black.bgr(i % size, i / size)) << i;
      ASSERT_EQ((Bytes{254, 254, 254}), white.bgr(i % size, i / size)) << i;
    }
  }
}

TEST(Rgb24Output, FlipAndPackedKeepStudioLevels) {
  for (const auto &[type, rotation] : {std::pair{3, 6}, {1, 6}, {6, 2}, {8, 3}, {17, 4}}) {
    for (const int luma : {0, 16, 235, 255}) {
      Converted result = convertPicture(flatPicture(type, 10, 10, luma, 128, 128), COLOR_RGB24, rotation);
      ASSERT_EQ(CC_OK, result.code);
      const int level = luma < 128 ? 16 : 235;
      for (int i = 0; i < 100; ++i) {
        ASSERT_EQ((Bytes{level, level, level}), result.bgr(i % 10, i / 10)) << type << ", rotation " << rotation;
      }
    }
  }
}

TEST(Rgb24Output, StrongColours) {
  // Macroblocks: 6537 * 127 >> 12 is 202, 8261 * 127 >> 12 is 256.
  Converted red = convertPicture(flatPicture(3, 4, 4, 16, 128, 255), COLOR_RGB24);
  Converted blue = convertPicture(flatPicture(3, 4, 4, 16, 255, 128), COLOR_RGB24);
  ASSERT_EQ(CC_OK, red.code);
  ASSERT_EQ(CC_OK, blue.code);
  EXPECT_EQ((Bytes{0, 0, 202}), red.bgr(3, 3));
  EXPECT_EQ((Bytes{255, 0, 0}), blue.bgr(0, 0));
  // The flip follows the matrix: 127 * 1471152 >> 20 is 178, 127 * 1646369 >> 20 is 199.
  Converted bt601 = convertPicture(flatPicture(3, 4, 4, 16, 128, 255), COLOR_RGB24, ROTATION_FLIP_V);
  Converted bt709 = convertPicture(flatPicture(3, 4, 4, 16, 128, 255), COLOR_RGB24, ROTATION_FLIP_V, 0,
                                   MatrixChoice::entryOf(MATRIX_BT709));
  ASSERT_EQ(CC_OK, bt601.code);
  ASSERT_EQ(CC_OK, bt709.code);
  EXPECT_EQ((Bytes{16, 16, 194}), bt601.bgr(1, 1));
  EXPECT_EQ((Bytes{16, 16, 215}), bt709.bgr(1, 1));
  Converted packed = convertPicture(flatPicture(9, 4, 4, 16, 128, 255), COLOR_RGB24);
  ASSERT_EQ(CC_OK, packed.code);
  EXPECT_EQ((Bytes{16, 16, 194}), packed.bgr(2, 1));
}

TEST(Rgb24Output, PlanarInputIsNotTurned) {
  for (const int type : kPlanarTypes) {
    const Picture picture(type, 22, 20, 22, Fill::Noise, 3);
    Converted plain = convertPicture(picture, COLOR_RGB24);
    ASSERT_EQ(CC_OK, plain.code);
    EXPECT_NE("", plain.canvas.touched());
    for (const int rotation : {0, 1, 3, 4, 5, 7}) {
      Converted other = convertPicture(picture, COLOR_RGB24, rotation);
      ASSERT_EQ(CC_OK, other.code);
      EXPECT_EQ("", other.canvas.difference(plain.canvas)) << type << ", rotation " << rotation;
    }
  }
}

TEST(Rgb24Output, FlipSendsTheFirstLineToTheLast) {
  for (const int height : {6, 7}) {
    Picture picture = flatPicture(3, 6, height, 16, 128, 128);
    for (int line = 0; line < height; ++line) {
      std::memset(lineOf(picture, 0, line, 6), 20 + line, 6);
    }
    Converted result = convertPicture(picture, COLOR_RGB24, ROTATION_FLIP_V, 5);
    ASSERT_EQ(CC_OK, result.code);
    for (int line = 0; line < height; ++line) {
      for (int x = 0; x < 6; ++x) {
        ASSERT_EQ((Bytes{20 + line, 20 + line, 20 + line}), result.bgr(x, height - 1 - line)) << height;
      }
    }
  }
}

TEST(Rgb24Output, PackedLinesKeepTheirOwnChroma) {
  Picture picture = flatPicture(6, 4, 2, 100, 128, 128);
  for (const int at : {3, 7}) {
    picture.plane(0)[8 + at] = 178; // Cr of the second line: 50 * 1471152 >> 20 is 70, 50 * 748683 >> 20 is 35
  }
  Converted result = convertPicture(picture, COLOR_RGB24);
  ASSERT_EQ(CC_OK, result.code);
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ((Bytes{100, 100, 100}), result.bgr(x, 0)) << x;
    EXPECT_EQ((Bytes{100, 65, 170}), result.bgr(x, 1)) << x;
  }
}

TEST(Rgb24Output, TheZeroMatrixLeavesClampedLuma) {
  // Every luma level against five pairs of chroma, a line each. Nothing is added to luma, so all three bytes are luma
  // in 16..235.
  constexpr std::array<std::array<uint8_t, 2>, 5> kChroma{{{128, 128}, {0, 255}, {255, 0}, {1, 127}, {200, 60}}};
  Picture picture(6, 256, 5, 512, Fill::Flat, 0);
  for (int line = 0; line < 5; ++line) {
    uint8_t *group = lineOf(picture, 0, line, 512);
    for (int y = 0; y < 256; y += 2, group += 4) {
      group[0] = static_cast<uint8_t>(y);
      group[1] = kChroma.at(static_cast<std::size_t>(line))[0];
      group[2] = static_cast<uint8_t>(y + 1);
      group[3] = kChroma.at(static_cast<std::size_t>(line))[1];
    }
  }
  Converted result = convertPicture(picture, COLOR_RGB24, ROTATION_NONE, 0, MatrixChoice::entryOf(MATRIX_GREY));
  ASSERT_EQ(CC_OK, result.code);
  for (int line = 0; line < 5; ++line) {
    for (int y = 0; y < 256; ++y) {
      const int level = y < 16 ? 16 : y > 235 ? 235 : y;
      ASSERT_EQ((Bytes{level, level, level}), result.bgr(y, line)) << "chroma " << line;
    }
  }
}

TEST(Rgb24Output, PackedTurns) {
  Picture picture = flatPicture(8, 5, 3, 20, 128, 128);
  picture.plane(0)[1 * 12 + 4 + 3] = 200; // column 3 of line 1; a line of five pixels holds three groups
  const struct {
    int rotation, column, line, columns;
  } places[] = {{2, 3, 1, 5}, {3, 1, 1, 3}, {4, 1, 3, 3}, {5, 1, 1, 5},
                {0, 3, 1, 5}, {1, 3, 1, 5}, {6, 3, 1, 5}, {7, 3, 1, 5}};
  for (const auto &place : places) {
    // The half turn places its lines exactly, however wide the stride.
    for (const int extra : {0, 7}) {
      Converted result = convertPicture(picture, COLOR_RGB24, place.rotation, extra);
      ASSERT_EQ(CC_OK, result.code);
      for (int i = 0; i < 15; ++i) {
        const int level = i == place.line * place.columns + place.column ? 200 : 20;
        ASSERT_EQ((Bytes{level, level, level}), result.bgr(i % place.columns, i / place.columns))
            << "rotation " << place.rotation << ", stride +" << extra << ", pixel " << i;
      }
    }
  }
}

TEST(Rgb24Output, PackedByteOrders) {
  const struct {
    int type;
    uint8_t bytes[4];
  } groups[] = {{6, {50, 128, 80, 178}},  {7, {50, 178, 80, 128}},  {8, {128, 50, 178, 80}},  {9, {178, 50, 128, 80}},
                {14, {80, 128, 50, 178}}, {15, {80, 178, 50, 128}}, {16, {128, 80, 178, 50}}, {17, {178, 80, 128, 50}}};
  for (const auto &[type, bytes] : groups) {
    Picture picture(type, 2, 1, 4, Fill::Flat, 0);
    std::memcpy(picture.plane(0), bytes, 4);
    Converted result = convertPicture(picture, COLOR_RGB24);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ((Bytes{50, 16, 120}), result.bgr(0, 0)) << type; // green 50 - 35, raised to 16
    EXPECT_EQ((Bytes{80, 45, 150}), result.bgr(1, 0)) << type;
  }
}

TEST(Rgb24Output, OtherPlanarTypesAreReadAsHalfWidthChroma) {
  // The planes of types 0 and 34, handed over as planar 4:2:2, give the same picture.
  for (const int type : {0, 34}) {
    for (const int rotation : {2, 6}) {
      const Picture picture(type, 24, 20, 26, Fill::Noise, 6);
      Converted own = convertPicture(picture, COLOR_RGB24, rotation);
      ASSERT_EQ(CC_OK, own.code);
      ConvertParams params = support::blankParams();
      picture.describe(params);
      params.inType = 1;
      params.outType = COLOR_RGB24;
      params.rotation = static_cast<uint32_t>(rotation);
      params.outWidth = 24;
      params.outHeight = 20;
      Canvas canvas = Canvas::forPicture(COLOR_RGB24, 24, 20, 72);
      canvas.describe(params);
      ASSERT_EQ(CC_OK, support::convertOnce(params));
      EXPECT_EQ("", own.canvas.difference(canvas)) << type << ", rotation " << rotation;
    }
  }
}

TEST(Rgb24Output, QuarterPlanesAreReadUpToTheirLastWholeLine) {
  // 4:1:1, 8x8: 16 chroma bytes in lines of 2, read in lines of 4; lines 0 and 2 fit, lines 4 and 6 give way to 3.
  Picture narrow = flatPicture(4, 8, 8, 16, 128, 128);
  narrow.plane(2)[12] = 255; // first sample of line 3 at the pitch of 4
  // Quarter height, 8x8: two lines of 8, read as four lines of 4.
  Picture low = flatPicture(37, 8, 8, 16, 128, 128);
  low.plane(2)[12] = 255;
  for (const Picture *picture : {&narrow, &low}) {
    Converted result = convertPicture(*picture, COLOR_RGB24);
    ASSERT_EQ(CC_OK, result.code);
    for (int i = 0; i < 64; ++i) {
      const bool red = i % 8 < 2 && i / 8 >= 4;
      ASSERT_EQ(red ? (Bytes{0, 0, 202}) : (Bytes{0, 0, 0}), result.bgr(i % 8, i / 8)) << picture->type << ": " << i;
    }
  }
}

TEST(Rgb24Output, SingleColumnsAndTinyPlanesTakeTheirLastSample) {
  DirectCase c;
  c.outType = COLOR_RGB24;
  for (const int rotation : {2, 6}) {
    c.rotation = rotation;
    // One column: half of it is no column, so the first sample serves.
    for (const int type : {0, 2, 37, 34}) {
      c.inType = type;
      c.width = 1;
      for (const int height : {4, 5, 16, 17}) {
        c.height = height;
        EXPECT_TRUE(matches(c));
      }
    }
    // 4:1:1 planes too small to hold one line of w/2 samples.
    c.inType = 4;
    for (c.width = 4; c.width < 8; ++c.width) {
      for (c.height = 1; c.height < 4; ++c.height) {
        EXPECT_TRUE(matches(c));
      }
    }
  }
  Picture column = flatPicture(0, 1, 2, 16, 128, 255);
  Converted result = convertPicture(column, COLOR_RGB24);
  ASSERT_EQ(CC_OK, result.code);
  EXPECT_EQ((Bytes{0, 0, 202}), result.bgr(0, 0));
  EXPECT_EQ((Bytes{0, 0, 202}), result.bgr(0, 1));
}

TEST(Rgb24Output, RefusesMissingPlanesAndEmptyChroma) {
  for (const int type : kPlanarTypes) {
    for (const uint32_t rotation : {2U, 6U}) {
      const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
      ConvertParams params = support::blankParams();
      picture.describe(params);
      params.outType = COLOR_RGB24;
      params.rotation = rotation;
      params.outWidth = params.outHeight = 16;
      Canvas canvas = Canvas::forPicture(COLOR_RGB24, 16, 16, 48);
      canvas.describe(params);
      for (int plane = 0; plane < support::planeCount(type); ++plane) {
        ConvertParams without = params;
        without.inBuf[plane] = nullptr;
        EXPECT_TRUE(refuses(without, canvas)) << "without plane " << plane;
      }
      ConvertParams without = params;
      without.outBuf[0] = nullptr;
      EXPECT_TRUE(refuses(without, canvas));
      ConvertParams small = params;
      small.inWidth = small.outWidth = small.inHeight = small.outHeight = 1;
      if (!holdsSamples(type, 1, 1)) {
        EXPECT_TRUE(refuses(small, canvas));
      }
    }
  }
}

TEST(Rgb24Output, PlanarAgreesWithTheModel) {
  for (const int type : kPlanarTypes) {
    ASSERT_TRUE(Grid(type, COLOR_RGB24, {2, 6}).run(blockSizes(11, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB24, allRotations()).run(blockSizes(131, type), type));
  }
}

TEST(Rgb24Output, PlanarAgreesWithTheModelOnSmallSizes) {
  ASSERT_TRUE(Grid(3, COLOR_RGB24, {2}).run(smallSizes(3), 1));
  ASSERT_TRUE(Grid(3, COLOR_RGB24, {6}).run(smallSizes(3), 2));
  ASSERT_TRUE(Grid(4, COLOR_RGB24, {2, 6}).run(smallSizes(1), 3));
  ASSERT_TRUE(Grid(37, COLOR_RGB24, {2, 6}).run(smallSizes(1), 4));
}

TEST(Rgb24Output, PackedAgreesWithTheModel) {
  for (const int type : kPackedTypes) {
    ASSERT_TRUE(Grid(type, COLOR_RGB24, {2, 3, 4, 5}).run(blockSizes(13, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB24, allRotations()).run(blockSizes(131, type), type));
  }
}

TEST(Rgb24Output, AgreesWithTheModelUnderEveryMatrix) {
  const DitherRestorer restorer;
  uint32_t start = 0;
  for (const MatrixChoice &matrix :
       {MatrixChoice::entryOf(1), MatrixChoice::entryOf(2), MatrixChoice::entryOf(3),
        MatrixChoice::customOf({700.5, -300.25, 512.0, 0.5}), MatrixChoice::customOf({1e12, -1e12, 1e6, 524288.0})}) {
    for (const int type : {3, 1, 35, 0, 37, 6, 9, 14, 16}) {
      ASSERT_TRUE(Grid(type, COLOR_RGB24, {2, 6, 3, 4, 5}).with(matrix).run(blockSizes(131, type), ++start));
    }
  }
}

TEST(Rgb24Output, AllLumaAndChromaPairs) {
  for (const int rotation : {2, 6}) {
    DirectCase c;
    c.outType = COLOR_RGB24;
    c.rotation = rotation;
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 3, 256, 1)));
    EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 3, 272, 1)));
  }
  DirectCase packed;
  packed.inType = 6;
  packed.outType = COLOR_RGB24;
  EXPECT_TRUE(matches(packed, sweepPicture(Sweep::Pairs, 6, 512, 2)));
  EXPECT_TRUE(matches(packed, sweepPicture(Sweep::Greens, 6, 544, 2)));
}

} // namespace
