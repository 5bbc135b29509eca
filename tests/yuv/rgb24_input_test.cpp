// RGB24 to RGB565 at the same size.
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

TEST(Rgb24Input, ChannelsAreTruncated) {
  const struct {
    uint8_t bgr[3];
    int word;
  } expected[] = {{{0xFF, 0x00, 0x00}, 0x001F}, {{0x00, 0xFF, 0x00}, 0x07E0}, {{0x00, 0x00, 0xFF}, 0xF800},
                  {{0x07, 0x03, 0x07}, 0x0000}, {{0x08, 0x04, 0x08}, 0x0821}, {{0xFF, 0xFF, 0xFF}, 0xFFFF}};
  for (const auto &[bgr, word] : expected) {
    for (const int rotation : {2, 3, 4, 5}) {
      Converted result = convertPicture(flatPicture(32, 7, 5, bgr[2], bgr[1], bgr[0]), COLOR_RGB565, rotation);
      ASSERT_EQ(CC_OK, result.code);
      const int columns = rotation == 3 || rotation == 4 ? 5 : 7;
      for (int i = 0; i < 35; ++i) {
        ASSERT_EQ(word, result.word(i % columns, i / columns)) << rotation << ": " << i;
      }
    }
  }
}

TEST(Rgb24Input, TurnedPixelsLandInTheirPlaces) {
  for (const auto &[w, h] : {std::pair{8, 6}, {7, 5}}) {
    Picture picture = flatPicture(32, w, h, 0, 0, 0);
    std::memset(&picture.plane(0)[2 * 3 * w + 3 * 5], 0xFF, 3); // column 5 of line 2
    const struct {
      int rotation, column, line;
    } places[] = {{2, 5, 2}, {3, 2, w - 6}, {4, h - 3, 5}, {0, 5, 2}, {1, 5, 2}, {5, 5, 2}, {6, 5, 2}, {7, 5, 2}};
    for (const auto &[rotation, column, line] : places) {
      Converted result = convertPicture(picture, COLOR_RGB565, rotation, 6);
      ASSERT_EQ(CC_OK, result.code);
      const int columns = rotation == 3 || rotation == 4 ? h : w;
      for (int i = 0; i < w * h; ++i) {
        ASSERT_EQ(i == line * columns + column ? 0xFFFF : 0, result.word(i % columns, i / columns))
            << w << "x" << h << ", rotation " << rotation << ": " << i;
      }
    }
  }
}

TEST(Rgb24Input, OtherOutputTypesSucceedAndWriteNothing) {
  for (const int outType : {31, 3, 12, 6, 34, 11, 99}) {
    const Picture picture = flatPicture(32, 16, 16, 1, 2, 3);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = outType;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(0, 16, 16, 64);
    canvas.describe(params);
    EXPECT_EQ(CC_OK, support::convertOnce(params)) << outType;
    EXPECT_EQ("", canvas.touched()) << outType;
  }
}

TEST(Rgb24Input, NoMatrixMatters) {
  const Picture picture(32, 20, 20, 60, Fill::Noise, 1);
  Converted plain = convertPicture(picture, COLOR_RGB565);
  Converted grey = convertPicture(picture, COLOR_RGB565, ROTATION_NONE, 0, MatrixChoice::entryOf(MATRIX_GREY));
  ASSERT_EQ(CC_OK, plain.code);
  ASSERT_EQ(CC_OK, grey.code);
  EXPECT_EQ("", grey.canvas.difference(plain.canvas));
  EXPECT_NE("", grey.canvas.touched());
}

TEST(Rgb24Input, RefusesMissingPlanes) {
  for (const uint32_t rotation : {2U, 3U, 4U}) {
    const Picture picture = flatPicture(32, 16, 16, 1, 2, 3);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.rotation = rotation;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
    canvas.describe(params);
    ConvertParams noInput = params;
    noInput.inBuf[0] = nullptr;
    EXPECT_TRUE(refuses(noInput, canvas));
    ConvertParams noOutput = params;
    noOutput.outBuf[0] = nullptr;
    EXPECT_TRUE(refuses(noOutput, canvas));
  }
}

TEST(Rgb24Input, AgreesWithTheModel) {
  for (const int rotation : {2, 3, 4}) {
    ASSERT_TRUE(Grid(32, COLOR_RGB565, {rotation}).run(blockSizes(3, rotation), 1U + rotation));
    ASSERT_TRUE(Grid(32, COLOR_RGB565, {rotation}).run(smallSizes(2), 9U + rotation));
  }
  ASSERT_TRUE(Grid(32, COLOR_RGB565, allRotations()).run(blockSizes(37)));
}

} // namespace
