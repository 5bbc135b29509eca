// Resizing of packed 4:2:2 input to 16-bit RGB and to RGB24: whole groups of two pixels, colours by the matrix in
// force.
#include "reference/resize_check.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using reference::compareResized;
using reference::convertedBytes;
using reference::convertedWords;
using reference::Matrix;
using reference::Mixer;
using reference::pictureFor;
using reference::refuses;
using reference::ResizeCase;
using support::Picture;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::array<int, 8> kTypes{6, 7, 8, 9, 14, 15, 16, 17};

/// Every group holds the same four bytes.
Picture groupsOf(const ResizeCase &c, const std::array<uint8_t, 4> &group) {
  Picture picture = pictureFor(c);
  const std::size_t bytes = support::planeShape(c.inType, c.width, c.height, picture.stride, 0).bytes();
  for (std::size_t i = 0; i < bytes; ++i) {
    picture.plane(0)[i] = group[i % 4];
  }
  return picture;
}

TEST(ResizePacked, GreyHasNoDither) {
  for (const int type : kTypes) {
    ResizeCase c{.inType = type, .width = 20, .height = 14, .outWidth = 31, .outHeight = 9};
    const Picture grey = groupsOf(c, {128, 128, 128, 128});
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      c.rotation = rotation;
      c.outType = 30;
      const auto words = convertedWords(c, grey);
      ASSERT_THAT(words, SizeIs(279));
      EXPECT_THAT(words, Each(0x8410));
      c.outType = 32;
      const auto bytes = convertedBytes(c, grey);
      ASSERT_THAT(bytes, SizeIs(837));
      EXPECT_THAT(bytes, Each(128));
    }
  }
}

TEST(ResizePacked, Rgb24StaysInVideoRange) {
  const ResizeCase c{.inType = 6, .outType = 32, .width = 8, .height = 8, .outWidth = 5, .outHeight = 5};
  for (const auto &[luma, value] : {std::array<uint8_t, 2>{0, 16}, {16, 16}, {17, 17}, {235, 235}, {255, 235}}) {
    const auto bytes = convertedBytes(c, groupsOf(c, {luma, 128, luma, 128}));
    ASSERT_THAT(bytes, SizeIs(75));
    EXPECT_THAT(bytes, Each(value));
  }
}

TEST(ResizePacked, ByteOrders) {
  // Luma 96 left, 160 right, U 128, V 228 with BT.601: red + 140, green - 71.
  // Left: 236 >> 3 = 29, 25 >> 2 = 6, 96 >> 3 = 12; right: above 31, 89 >> 2 = 22, 20.
  const std::array<std::array<uint8_t, 4>, 8> groups{{{96, 128, 160, 228},
                                                      {96, 228, 160, 128},
                                                      {128, 96, 228, 160},
                                                      {228, 96, 128, 160},
                                                      {160, 128, 96, 228},
                                                      {160, 228, 96, 128},
                                                      {128, 160, 228, 96},
                                                      {228, 160, 128, 96}}};
  for (std::size_t i = 0; i < 8; ++i) {
    ResizeCase c{.inType = kTypes[i], .width = 8, .height = 8, .outWidth = 4, .outHeight = 1};
    EXPECT_THAT(convertedWords(c, groupsOf(c, groups[i])), ElementsAre(29 << 11 | 6 << 5 | 12, 31 << 11 | 22 << 5 | 20,
                                                                       29 << 11 | 6 << 5 | 12, 31 << 11 | 22 << 5 | 20))
        << kTypes[i];
    c.outType = 32;
    c.outWidth = 2;
    EXPECT_THAT(convertedBytes(c, groupsOf(c, groups[i])), ElementsAre(96, 25, 235, 160, 89, 235)) << kTypes[i];
  }
}

TEST(ResizePacked, ExchangedLumaGivesExchangedPixels) {
  for (const auto &[first, second] : {std::array<int, 2>{6, 14}, {7, 15}, {8, 16}, {9, 17}}) {
    for (const int outType : {30, 32}) {
      ResizeCase c{.inType = first, .outType = outType, .width = 24, .height = 12, .outWidth = 18, .outHeight = 7};
      const Picture picture = pictureFor(c);
      std::vector<uint8_t> expected = convertedBytes(c, picture);
      const std::ptrdiff_t bytes = outType == 32 ? 3 : 2;
      ASSERT_THAT(expected, SizeIs(static_cast<std::size_t>(126 * bytes)));
      for (auto pair = expected.begin(); pair != expected.end(); pair += 2 * bytes) {
        std::swap_ranges(pair, pair + bytes, pair + bytes);
      }
      c.inType = second;
      EXPECT_TRUE(convertedBytes(c, picture) == expected) << second << " to " << outType;
    }
  }
}

TEST(ResizePacked, ReducingKeepsWholeGroups) {
  // 16 to 8: groups 0, 2, 4, 6, each with both of its pixels. Without colour, luma 8 x is x, 2 x, x.
  const ResizeCase c{.inType = 6, .width = 16, .height = 2, .outWidth = 8, .outHeight = 1};
  Picture picture = groupsOf(c, {0, 90, 0, 30});
  for (int x = 0; x < 16; ++x) {
    picture.plane(0)[2 * x] = static_cast<uint8_t>(8 * x);
  }
  const auto pixel = [](int x) { return x << 11 | 2 * x << 5 | x; };
  EXPECT_THAT(convertedWords(c, picture, Matrix{2, {}}),
              ElementsAre(pixel(0), pixel(1), pixel(4), pixel(5), pixel(8), pixel(9), pixel(12), pixel(13)));
}

TEST(ResizePacked, EnlargingRepeatsGroups) {
  // 4 to 9: 4 / 9 in 1/1024 is 455; groups 0, 0, 0, 1, 1 (455 * 3 = 1365); the last pixel is a group's first.
  const ResizeCase c{.inType = 8, .width = 4, .height = 2, .outWidth = 9, .outHeight = 1};
  Picture picture = groupsOf(c, {128, 0, 128, 0});
  for (int x = 0; x < 4; ++x) {
    picture.plane(0)[2 * x + 1] = static_cast<uint8_t>(80 + 8 * x);
  }
  const auto pixel = [](int x) { return (10 + x) << 11 | (20 + 2 * x) << 5 | (10 + x); };
  EXPECT_THAT(convertedWords(c, picture),
              ElementsAre(pixel(0), pixel(1), pixel(0), pixel(1), pixel(0), pixel(1), pixel(2), pixel(3), pixel(2)));
}

TEST(ResizePacked, FullRedAndBlueComeLate) {
  const ResizeCase c{.inType = 6, .width = 2, .height = 2, .outWidth = 1, .outHeight = 1};
  EXPECT_THAT(convertedWords(c, groupsOf(c, {232, 128, 0, 128})), ElementsAre(29 << 11 | 58 << 5 | 29));
  EXPECT_THAT(convertedWords(c, groupsOf(c, {240, 128, 0, 128})), ElementsAre(29 << 11 | 60 << 5 | 29));
  EXPECT_THAT(convertedWords(c, groupsOf(c, {255, 128, 0, 128})), ElementsAre(30 << 11 | 63 << 5 | 30));
}

TEST(ResizePacked, TheMatrixInForceIsUsed) {
  const ResizeCase c{.inType = 6, .width = 8, .height = 8, .outWidth = 1, .outHeight = 1};
  ResizeCase c24 = c;
  c24.outType = 32;
  const Picture picture = groupsOf(c, {100, 128, 100, 228});
  // BT.601: red + 140, green - 71. BT.709: red + 157, green - 46. Custom 256: 256 * 2048 / 2^20 is a half.
  EXPECT_THAT(convertedWords(c, picture), ElementsAre(29 << 11 | 7 << 5 | 12));
  EXPECT_THAT(convertedWords(c, picture, Matrix{1, {}}), ElementsAre(31 << 11 | 13 << 5 | 12));
  EXPECT_THAT(convertedWords(c, picture, Matrix{2, {}}), ElementsAre(12 << 11 | 25 << 5 | 12));
  EXPECT_THAT(convertedWords(c, picture, Matrix{3, {256.0, 0.0, 0.0, 0.0}}), ElementsAre(18 << 11 | 25 << 5 | 12));
  EXPECT_THAT(convertedBytes(c24, picture), ElementsAre(100, 29, 235));
  EXPECT_THAT(convertedBytes(c24, picture, Matrix{1, {}}), ElementsAre(100, 54, 235));
  EXPECT_THAT(convertedBytes(c24, picture, Matrix{2, {}}), ElementsAre(100, 100, 100));
  EXPECT_THAT(convertedBytes(c24, picture, Matrix{3, {256.0, 0.0, 0.0, 0.0}}), ElementsAre(100, 100, 150));
  reference::restoreDither();
}

TEST(ResizePacked, HalfTurnEndsWithThePicture) {
  // The first pixel lands in the last column of the picture, not of the stride.
  for (const int outType : {30, 32}) {
    ResizeCase c{.inType = 6, .outType = outType, .width = 4, .height = 4, .outWidth = 4, .outHeight = 4};
    c.rotation = 5;
    c.outPadding = 6;
    const Picture picture = groupsOf(c, {128, 128, 128, 128});
    support::Canvas canvas = reference::canvasFor(c);
    ConvertParams params = reference::recordFor(c);
    picture.describe(params);
    canvas.describe(params);
    const support::Canvas fresh = reference::canvasFor(c);
    ASSERT_EQ(support::convertOnce(params), CC_OK);
    const int bytes = outType == 32 ? 12 : 8;
    support::Canvas expected = fresh;
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < bytes; ++x) {
        const uint8_t grey = outType == 32 ? 128 : x % 2 == 0 ? 0x10 : 0x84;
        expected.plane(0)[y * (bytes + 6) + x] = grey;
      }
    }
    EXPECT_EQ(canvas.difference(expected), "");
  }
}

TEST(ResizePacked, FirstPixelGoesWhereTheTurnSendsIt) {
  for (const auto &[rotation, place] : {std::array<std::size_t, 2>{2, 0}, {3, 7 * 6}, {4, 5}, {5, 47}}) {
    ResizeCase c{.inType = 6, .width = 8, .height = 6, .outWidth = 8, .outHeight = 6};
    c.rotation = static_cast<uint32_t>(rotation);
    Picture picture = groupsOf(c, {0, 128, 0, 128});
    picture.plane(0)[0] = 255;
    const auto words = convertedWords(c, picture);
    ASSERT_THAT(words, SizeIs(48));
    for (std::size_t i = 0; i < 48; ++i) {
      EXPECT_EQ(words[i], i == place ? 30 << 11 | 63 << 5 | 30 : 0) << i;
    }
  }
}

TEST(ResizePacked, EnlargedMultiplesOf16AreWrittenWhole) {
  for (const int factor : {2, 3, 5}) {
    for (const int outType : {30, 32}) {
      for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
        const ResizeCase c{.inType = 9,
                           .outType = outType,
                           .width = 32,
                           .height = 16,
                           .outWidth = 32 * factor,
                           .outHeight = 16 * factor,
                           .rotation = rotation};
        EXPECT_EQ(reference::leavesUnwritten(c), "");
      }
    }
  }
}

TEST(ResizePacked, ManySizesRatiosAndMatrices) {
  Mixer mix(71);
  std::size_t n = 0;
  for (int width = 2; width < 50; ++width) {
    for (const int ratio : {1, 6, 10, 16, 25, 40}) { // sixteenths
      for (const int outType : {30, 31, 32}) {
        ResizeCase c{.inType = kTypes[n % 8], .outType = outType};
        c.width = width;
        c.height = 2 + mix.below(40);
        c.outWidth = std::max(width * ratio / 16, 1);
        c.outHeight = 1 + mix.below(40);
        c.rotation = static_cast<uint32_t>(mix.below(8));
        c.quality = static_cast<uint32_t>(mix.below(4));
        mix.vary(c);
        const Matrix matrix{n % 3, {}};
        ASSERT_EQ(compareResized(c, matrix), "");
        ++n;
      }
    }
  }
}

TEST(ResizePacked, CustomMatrices) {
  for (const int outType : {30, 32}) {
    for (const auto &custom : {std::array<double, 4>{718.3, 365.6, 907.8, 176.1},
                               {-718.3, 365.6, -907.8, -176.1},
                               {1.0, 1.0, 1.0, 1.0},
                               {8000.0, -8000.0, 8000.0, 7000.0}}) {
      const ResizeCase c{.inType = 16, .outType = outType, .width = 34, .height = 11, .outWidth = 20, .outHeight = 30};
      EXPECT_EQ(compareResized(c, Matrix{3, custom}), "");
    }
  }
  reference::restoreDither();
}

TEST(ResizePacked, MissingPlanesAndImpossibleSizesAreRefused) {
  for (const int outType : {30, 31, 32}) {
    ResizeCase c{.inType = 7, .outType = outType, .width = 16, .height = 16, .outWidth = 10, .outHeight = 11};
    EXPECT_EQ(refuses(c, 0), "");
    EXPECT_EQ(refuses(c, 3), "");
    c.width = 1;
    EXPECT_EQ(refuses(c), "");
    c.width = 16;
    c.height = 1;
    EXPECT_EQ(refuses(c), "");
    c.height = 16;
    c.outHeight = 0;
    EXPECT_EQ(refuses(c), "");
  }
}

} // namespace
