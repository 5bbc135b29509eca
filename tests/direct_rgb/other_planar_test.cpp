// The planar types with chroma layouts of their own, and planar RGB, to RGB565.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

using namespace reference;
using support::Canvas;
using support::Picture;

constexpr int kYuvTypes[] = {0, 2, 4, 37};

TEST(OtherPlanar, RgbIsTruncated) {
  const std::pair<int, int> expected[] = {{255, 0xFFFF}, {0x03, 0x0000}, {0x07, 0x0020}, {0x08, 0x0841}};
  for (const auto &[sample, word] : expected) {
    for (const int rotation : {2, 3, 4, 5, 6}) {
      // One whole block, and partial blocks or strips on two sides.
      Converted result = convertPicture(flatPicture(34, 21, 18, sample, sample, sample), COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, result.code);
      const int columns = rotation == 3 || rotation == 4 ? 18 : 21;
      for (int i = 0; i < 21 * 18; ++i) {
        ASSERT_EQ(word, result.word(i % columns, i / columns)) << sample << ", rotation " << rotation << ": " << i;
      }
    }
  }
}

TEST(OtherPlanar, RgbPlanesAreRedGreenBlue) {
  for (const int rotation : {2, 5, 6}) {
    Converted result = convertPicture(flatPicture(34, 20, 16, 0xF8, 0x04, 0x10), COLOR_RGB565, rotation);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(31 << 11 | 1 << 5 | 2, result.word(0, 0));
    EXPECT_EQ(31 << 11 | 1 << 5 | 2, result.word(19, 15));
  }
}

TEST(OtherPlanar, WholeBlocksDitherTwoByTwo) {
  for (const int type : kYuvTypes) {
    Converted result = convertPicture(flatPicture(type, 16, 16, 128, 128, 128), COLOR_RGB565);
    ASSERT_EQ(CC_OK, result.code);
    for (int i = 0; i < 256; ++i) {
      const int x = i % 16;
      const int y = i / 16;
      ASSERT_EQ(x % 2 == 1 ? 0x7BEF : y % 2 == 0 ? 0x8410 : 0x83F0, result.word(x, y)) << type << ": " << i;
    }
  }
}

TEST(OtherPlanar, PartialBlocksExchangeTheRowsOfRedAndBlue) {
  // Luma 126: the whole block's upper left offsets (red +1, blue +2) leave red at 15 and lift blue to 16; the partial
  // block's (red +2, blue +1) do the opposite.
  for (const int type : kYuvTypes) {
    Converted result = convertPicture(flatPicture(type, 20, 18, 126, 128, 128), COLOR_RGB565);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(15 << 11 | 31 << 5 | 16, result.word(0, 0)) << type;
    EXPECT_EQ(16 << 11 | 31 << 5 | 15, result.word(0, 1)) << type;
    EXPECT_EQ(16 << 11 | 31 << 5 | 15, result.word(16, 0)) << type;
    EXPECT_EQ(15 << 11 | 31 << 5 | 16, result.word(16, 1)) << type;
    EXPECT_EQ(16 << 11 | 31 << 5 | 15, result.word(0, 16)) << type;
    EXPECT_EQ(15 << 11 | 31 << 5 | 16, result.word(0, 17)) << type;
  }
}

TEST(OtherPlanar, CustomMatrixChangesTheDitherOfPartialBlocksOnly) {
  for (const int type : kYuvTypes) {
    const Picture grey = flatPicture(type, 20, 18, 128, 128, 128);
    Converted before = convertPicture(grey, COLOR_RGB565);
    ASSERT_EQ(CC_OK, before.code);
    {
      const DitherRestorer restorer;
      // 1.0 is stored as 2048, which also becomes every red and blue offset.
      Converted custom =
          convertPicture(grey, COLOR_RGB565, ROTATION_NONE, 0, MatrixChoice::customOf({1.0, 1.0, 1.0, 1.0}));
      ASSERT_EQ(CC_OK, custom.code);
      EXPECT_EQ(0x8410, custom.word(0, 0)) << type;
      EXPECT_EQ(0x7BEF, custom.word(15, 15)) << type;
      EXPECT_EQ(31 << 11 | 32 << 5 | 31, custom.word(16, 0)) << type;
      EXPECT_EQ(31 << 11 | 31 << 5 | 31, custom.word(17, 0)) << type;
      EXPECT_EQ(31 << 11 | 31 << 5 | 31, custom.word(3, 17)) << type;
      // The offsets stay when another matrix is selected.
      Converted later = convertPicture(grey, COLOR_RGB565);
      ASSERT_EQ(CC_OK, later.code);
      EXPECT_EQ("", later.canvas.difference(custom.canvas)) << type;
      Converted negative =
          convertPicture(grey, COLOR_RGB565, ROTATION_NONE, 0, MatrixChoice::customOf({-1.0, -1.0, -1.0, -1.0}));
      ASSERT_EQ(CC_OK, negative.code);
      EXPECT_EQ(0x8410, negative.word(0, 0)) << type;
      EXPECT_EQ(32 << 5, negative.word(16, 0)) << type;
    }
    Converted after = convertPicture(grey, COLOR_RGB565);
    ASSERT_EQ(CC_OK, after.code);
    EXPECT_EQ("", after.canvas.difference(before.canvas)) << type;
  }
}

TEST(OtherPlanar, GreyMatrixRemovesColour) {
  for (const int type : kYuvTypes) {
    Converted result = convertPicture(flatPicture(type, 16, 16, 128, 0, 255), COLOR_RGB565, ROTATION_NONE, 0,
                                      MatrixChoice::entryOf(MATRIX_GREY));
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(0x8410, result.word(0, 0)) << type;
  }
}

TEST(OtherPlanar, SelectedMatrixLastsUntilAOneShotCall) {
  // Red 16 + (127 * c0 >> 20) + 1 with c0 of BT.601 or BT.709, green below 0, blue 16 + 2.
  const int bt601 = (16 + 178 + 1) >> 3 << 11 | 2;
  const int bt709 = (16 + 199 + 1) >> 3 << 11 | 2;
  const Picture red = flatPicture(0, 16, 16, 16, 128, 255);
  ConvertParams params = support::blankParams();
  red.describe(params);
  params.outType = COLOR_RGB565;
  params.outWidth = params.outHeight = 16;
  Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
  canvas.describe(params);
  const auto first = [&] { return canvas.plane(0)[0] | canvas.plane(0)[1] << 8; };
  ConvertContext *handle = nullptr;
  ASSERT_EQ(CC_OK, zqCCInit(&handle));
  ASSERT_EQ(CC_OK, MatrixChoice::entryOf(MATRIX_BT709).select(handle));
  ASSERT_EQ(CC_OK, zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params));
  ASSERT_EQ(CC_OK, zqCCProcess(handle, &params));
  EXPECT_EQ(bt709, first());
  EXPECT_EQ(CC_ERR_ARGUMENT, MatrixChoice::entryOf(4).select(handle));
  ASSERT_EQ(CC_OK, zqCCProcess(handle, &params));
  EXPECT_EQ(bt709, first());
  uint8_t small[2] = {1, 2};
  uint8_t scaled[2] = {};
  (void)zqScaleFrame(small, scaled, 1, 1, 1, 1, COLOR_RGB565, 0);
  ASSERT_EQ(CC_OK, zqCCProcess(handle, &params));
  EXPECT_EQ(bt601, first());
  EXPECT_EQ(CC_OK, zqCCUninit(handle));
}

/// Source pixels whose colour changes when one Cr sample does.
std::set<std::pair<int, int>> pixelsOfSample(int type, int column, int line, int rotation) {
  constexpr int kWidth = 20;
  constexpr int kHeight = 20;
  Picture picture = flatPicture(type, kWidth, kHeight, 16, 128, 128);
  Converted before = convertPicture(picture, COLOR_RGB565, rotation);
  const support::PlaneShape shape = support::planeShape(type, kWidth, kHeight, picture.stride, 2);
  picture.plane(2)[line * shape.stride + column] = 255;
  Converted after = convertPicture(picture, COLOR_RGB565, rotation);
  EXPECT_EQ(CC_OK, before.code);
  EXPECT_EQ(CC_OK, after.code);
  std::set<std::pair<int, int>> changed;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const std::pair<int, int> at = rotation == 3   ? std::pair{y, kWidth - 1 - x}
                                     : rotation == 4 ? std::pair{kHeight - 1 - y, x}
                                     : rotation == 5 ? std::pair{kWidth - 1 - x, kHeight - 1 - y}
                                     : rotation == 6 ? std::pair{x, kHeight - 1 - y}
                                                     : std::pair{x, y};
      if (before.word(at.first, at.second) != after.word(at.first, at.second)) {
        changed.insert({x, y});
      }
    }
  }
  return changed;
}

TEST(OtherPlanar, EachTypeReadsItsOwnChromaLayout) {
  using Pixels = std::set<std::pair<int, int>>;
  for (const int rotation : {2, 3, 4, 5, 6}) {
    SCOPED_TRACE(rotation);
    // In the whole block and, from column or line 16 on, in the partial ones.
    EXPECT_EQ((Pixels{{5, 3}}), pixelsOfSample(0, 5, 3, rotation));
    EXPECT_EQ((Pixels{{17, 3}}), pixelsOfSample(0, 17, 3, rotation));
    EXPECT_EQ((Pixels{{4, 4}, {5, 4}, {4, 5}, {5, 5}}), pixelsOfSample(2, 4, 2, rotation));
    EXPECT_EQ((Pixels{{16, 18}, {17, 18}, {16, 19}, {17, 19}}), pixelsOfSample(2, 16, 9, rotation));
    EXPECT_EQ(Pixels{}, pixelsOfSample(2, 5, 2, rotation));
    EXPECT_EQ((Pixels{{4, 3}, {5, 3}, {6, 3}, {7, 3}}), pixelsOfSample(4, 1, 3, rotation));
    EXPECT_EQ((Pixels{{16, 3}, {17, 3}, {18, 3}, {19, 3}}), pixelsOfSample(4, 4, 3, rotation));
    EXPECT_EQ((Pixels{{5, 4}, {5, 5}, {5, 6}, {5, 7}}), pixelsOfSample(37, 5, 1, rotation));
    EXPECT_EQ((Pixels{{1, 16}, {1, 17}, {1, 18}, {1, 19}}), pixelsOfSample(37, 1, 4, rotation));
  }
}

TEST(OtherPlanar, PixelsPastTheLastChromaSampleTakeTheLast) {
  // 4:1:1 of 7 columns has one sample a line, quarter height of 7 lines one chroma line, 4:4:0 of 3 lines one.
  const Size sizes[] = {{7, 2}, {2, 7}, {2, 3}};
  const int types[] = {4, 37, 2};
  for (int i = 0; i < 3; ++i) {
    const auto [w, h] = sizes[i];
    for (const int rotation : {2, 6}) {
      Converted result = convertPicture(flatPicture(types[i], w, h, 16, 128, 255), COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, result.code);
      for (int pixel = 0; pixel < w * h; ++pixel) {
        EXPECT_GE(result.word(pixel % w, pixel / w) >> 11, (16 + 178 - 3) >> 3) << types[i] << ": " << pixel;
      }
    }
  }
}

TEST(OtherPlanar, RefusesMissingPlanesAndEmptyChroma) {
  for (const int type : {0, 2, 4, 37, 34}) {
    const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    for (const uint32_t rotation : {2U, 3U, 5U, 6U}) {
      params.rotation = rotation;
      for (int plane = 0; plane < 3; ++plane) {
        ConvertParams without = params;
        without.inBuf[plane] = nullptr;
        EXPECT_TRUE(refuses(without, canvas)) << "without plane " << plane;
      }
      ConvertParams small = params;
      if (type == 4) {
        small.inWidth = small.outWidth = 3;
        EXPECT_TRUE(refuses(small, canvas));
      } else if (type == 37 || type == 2) {
        small.inHeight = small.outHeight = type == 37 ? 3 : 1;
        EXPECT_TRUE(refuses(small, canvas));
      }
    }
  }
}

TEST(OtherPlanar, AgreesWithTheModelUpright) {
  for (const int type : {0, 2, 4, 37, 34}) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {ROTATION_NONE}).run(smallSizes(2), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {ROTATION_NONE}).run(blockSizes(5, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB16_ALT, {7, 0, 1, 2}).run(blockSizes(71, type), type));
  }
}

TEST(OtherPlanar, AgreesWithTheModelTurned) {
  for (const int type : {0, 2, 4, 37, 34}) {
    ASSERT_TRUE(Grid(type, COLOR_RGB565, {3, 4, 5, 6}).run(blockSizes(13, type), type));
    ASSERT_TRUE(Grid(type, COLOR_RGB16_ALT, {3, 4, 5, 6}).run(blockSizes(97, type), type));
  }
}

TEST(OtherPlanar, AgreesWithTheModelUnderEveryMatrix) {
  const DitherRestorer restorer;
  const MatrixChoice choices[] = {MatrixChoice::entryOf(1),
                                  MatrixChoice::entryOf(2),
                                  MatrixChoice::customOf({2 / 2048.0, -1 / 2048.0, 1 / 2048.0, -3 / 2048.0}),
                                  MatrixChoice::customOf({700.5, -300.25, 512.0, 0.5}),
                                  MatrixChoice::customOf({0.004, -0.002, 0.009, -0.003}),
                                  MatrixChoice::customOf({1e12, -1e12, 1000000.0, 524288.0}),
                                  MatrixChoice::customOf({-1e300, 1e300, 0.0 / 1.0, 1048575.9})};
  uint32_t start = 0;
  for (const MatrixChoice &matrix : choices) {
    for (const int type : kYuvTypes) {
      ASSERT_TRUE(Grid(type, COLOR_RGB565, {2, 2, 4}).with(matrix).run(blockSizes(37, type), ++start));
    }
  }
}

TEST(OtherPlanar, CustomEntryHoldsTheDitherWordsAtFirst) {
  const DitherRestorer restorer;
  { const DitherRestorer initial; }
  ASSERT_TRUE(Grid(0, COLOR_RGB565, {2}).with(MatrixChoice::entryOf(MATRIX_CUSTOM)).run(blockSizes(37)));
}

TEST(OtherPlanar, AllLumaAndChromaPairs) {
  DirectCase c;
  c.inType = 0;
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 0, 512, 2)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Pairs, 0, 8, 2)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 0, 544, 2)));
  EXPECT_TRUE(matches(c, sweepPicture(Sweep::Greens, 0, 8, 2)));
}

} // namespace
