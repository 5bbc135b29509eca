// Planar, semi-planar and packed pictures to planar 4:2:0.
#include "yuv/yuv_to_yuv.h"

#include "frame/context.h"
#include "reference/direct_expect.h"
#include "support/levels.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

constexpr int kPlanarTypes[] = {12, 1, 13, 11, 35, 0, 2, 4, 37, 34};
constexpr int kPackedTypes[] = {6, 7, 8, 9, 14, 15, 16, 17};

std::vector<int> bytesOf(Converted &picture, int plane, int count, int offset = 0) {
  std::vector<int> values;
  values.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    values.push_back(picture.byte(plane, offset + i));
  }
  return values;
}

TEST(YuvToYuv, ChromaIsDecimatedUpToTheLastLine) {
  // 2x8: output chroma lines take input lines 0, 2, 4, 6; of 4:2:0 input there are only 0 to 3.
  Picture tall(1, 2, 8, 2, Fill::Ramp, 0);
  Picture half(12, 2, 8, 2, Fill::Ramp, 0);
  Picture pairs(11, 2, 8, 2, Fill::Ramp, 0);
  for (int line = 0; line < 8; ++line) {
    tall.plane(1)[line] = static_cast<uint8_t>(40 + line);
    tall.plane(2)[line] = static_cast<uint8_t>(80 + line);
  }
  for (int line = 0; line < 4; ++line) {
    half.plane(2)[line] = *lineOf(pairs, 1, line, 2) = static_cast<uint8_t>(40 + line);
    half.plane(1)[line] = pairs.plane(1)[2 * line + 1] = static_cast<uint8_t>(80 + line);
  }
  Converted fromTall = convertPicture(tall, COLOR_YUV420_PLANAR);
  ASSERT_EQ(CC_OK, fromTall.code);
  EXPECT_EQ((std::vector<int>{40, 42, 44, 46}), bytesOf(fromTall, 1, 4));
  EXPECT_EQ((std::vector<int>{80, 82, 84, 86}), bytesOf(fromTall, 2, 4));
  for (const Picture *picture : {&half, &pairs}) {
    Converted result = convertPicture(*picture, COLOR_YUV420_PLANAR);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ((std::vector<int>{40, 42, 43, 43}), bytesOf(result, 1, 4)) << picture->type;
    EXPECT_EQ((std::vector<int>{80, 82, 83, 83}), bytesOf(result, 2, 4)) << picture->type;
  }
}

/// A plane of `lines` lines of `columns` samples that are made in turn of every second line, then of the last one.
std::vector<uint8_t> decimated(const std::vector<uint8_t> &from, int step, int stride, int lines, int columns,
                               int pitch) {
  std::vector<uint8_t> to(static_cast<std::size_t>(lines * pitch + columns), 7);
  for (int line = 0; line < lines; ++line) {
    for (int i = 0; i < columns; ++i) {
      to[static_cast<std::size_t>(line * pitch + i)] =
          from[static_cast<std::size_t>(std::min(2 * line, lines - 1) * stride + i * step)];
    }
  }
  return to;
}

/// 4:2:0 has half the lines that are asked for; lines that overlap, lie next to each other, lie apart.
TEST(YuvToYuv, TheLastChromaLineIsRepeatedToTheEnd) {
  constexpr int kWidth = 256;
  for (const zqcc::Level level : support::kLevels) {
    if (!support::hasLevel(level)) {
      continue;
    }
    const support::LevelsForced forced(level);
    for (const int height : {2, 4, 6, 8, 10, 14, 18, 66, 798, 1600}) {
      for (const int outStride : {kWidth - 6, kWidth, kWidth + 10}) {
        for (const bool pairs : {false, true}) {
          const int lines = height / 2;
          auto seed = static_cast<uint32_t>(height);
          std::array<std::vector<uint8_t>, 3> in;
          for (std::vector<uint8_t> &plane : in) {
            plane.resize(static_cast<std::size_t>(height * kWidth));
            support::fill(plane.data(), plane.size(), support::Fill::Noise, seed++);
          }
          std::array<std::vector<uint8_t>, 3> out;
          out[0].resize(static_cast<std::size_t>(height * outStride + kWidth));
          out[1] = out[2] = std::vector<uint8_t>(static_cast<std::size_t>(lines * (outStride / 2) + kWidth / 2), 7);
          ConvertParams params = support::blankParams();
          params.inType = pairs ? COLOR_YUV420_PACK : COLOR_YVU420_PLANAR;
          params.outType = COLOR_YUV420_PLANAR;
          params.inWidth = params.inStride = params.outWidth = kWidth;
          params.inHeight = params.outHeight = height;
          params.outStride = outStride;
          for (std::size_t i = 0; i < 3; ++i) {
            params.inBuf[i] = in.at(i).data();
            params.outBuf[i] = out.at(i).data();
          }
          ASSERT_EQ(CC_OK, support::convertOnce(params));
          const int stride = pairs ? kWidth : kWidth / 2;
          const std::vector<uint8_t> second =
              pairs ? std::vector<uint8_t>(in[1].begin() + 1, in[1].end()) : in[1]; // planes change places
          const auto u = decimated(pairs ? in[1] : in[2], pairs ? 2 : 1, stride, lines, kWidth / 2, outStride / 2);
          const auto v = decimated(second, pairs ? 2 : 1, stride, lines, kWidth / 2, outStride / 2);
          ASSERT_TRUE(u == out[1] && v == out[2])
              << pairs << ", " << height << " lines " << outStride << " apart at " << support::nameOf(level);
        }
      }
    }
  }
}

TEST(YuvToYuv, PlaneOrderChangesOnTheInputSideOnly) {
  // From 3 to 12 the second plane stays the second; from 12 to 3 the planes change places, in the record too.
  Converted kept = convertPicture(flatPicture(3, 4, 4, 1, 50, 60), COLOR_YVU420_PLANAR);
  ASSERT_EQ(CC_OK, kept.code);
  EXPECT_EQ(50, kept.byte(1, 0));
  EXPECT_EQ(60, kept.byte(2, 0));
  for (const int type : {12, 13}) {
    const Picture picture = flatPicture(type, 4, 4, 1, 50, 60);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_YUV420_PLANAR;
    params.outWidth = params.outHeight = 4;
    Canvas canvas = Canvas::forPicture(3, 4, 4, 4);
    canvas.describe(params);
    ASSERT_EQ(CC_OK, support::convertOnce(params));
    EXPECT_EQ(50, canvas.plane(1)[3]) << type;
    EXPECT_EQ(60, canvas.plane(2)[3]) << type;
    EXPECT_EQ(picture.plane(2), params.inBuf[1]);
    EXPECT_EQ(picture.plane(1), params.inBuf[2]);
  }
}

TEST(YuvToYuv, PackedGroups) {
  const uint8_t lines[2][8] = {{16, 128, 17, 129, 18, 130, 19, 131}, {30, 140, 31, 141, 32, 142, 33, 143}};
  const struct {
    int type;
    std::vector<int> first, second, u, v;
  } expected[] = {{6, {16, 17, 18, 19}, {30, 31, 32, 33}, {128, 130}, {129, 131}},
                  {7, {16, 17, 18, 19}, {30, 31, 32, 33}, {129, 131}, {128, 130}},
                  {8, {128, 129, 130, 131}, {140, 141, 142, 143}, {16, 18}, {17, 19}},
                  {9, {128, 129, 130, 131}, {140, 141, 142, 143}, {17, 19}, {16, 18}},
                  {14, {17, 16, 19, 18}, {31, 30, 33, 32}, {128, 130}, {129, 131}},
                  {15, {17, 16, 19, 18}, {31, 30, 33, 32}, {129, 131}, {128, 130}},
                  {16, {129, 128, 131, 130}, {141, 140, 143, 142}, {16, 18}, {17, 19}},
                  {17, {129, 128, 131, 130}, {141, 140, 143, 142}, {17, 19}, {16, 18}}};
  for (const auto &want : expected) {
    Picture picture(want.type, 4, 2, 8, Fill::Flat, 0);
    std::memcpy(picture.plane(0), lines, sizeof lines);
    Converted result = convertPicture(picture, COLOR_YUV420_PLANAR);
    ASSERT_EQ(CC_OK, result.code);
    EXPECT_EQ(want.first, bytesOf(result, 0, 4)) << want.type;
    EXPECT_EQ(want.second, bytesOf(result, 0, 4, 4)) << want.type;
    EXPECT_EQ(want.u, bytesOf(result, 1, 2)) << want.type;
    EXPECT_EQ(want.v, bytesOf(result, 2, 2)) << want.type;
  }
}

TEST(YuvToYuv, PackedOddSizesWriteWhatIsInside) {
  Picture picture(6, 3, 3, 8, Fill::Flat, 0);
  const uint8_t lines[3][8] = {
      {1, 60, 2, 70, 3, 61, 4, 71}, {5, 62, 6, 72, 7, 63, 8, 73}, {9, 64, 10, 74, 11, 65, 12, 75}};
  std::memcpy(picture.plane(0), lines, sizeof lines);
  Converted result = convertPicture(picture, COLOR_YUV420_PLANAR, ROTATION_NONE, 5);
  ASSERT_EQ(CC_OK, result.code);
  Canvas expected = Canvas::forPicture(COLOR_YUV420_PLANAR, 3, 3, 8);
  const uint8_t luma[3][3] = {{1, 2, 3}, {5, 6, 7}, {9, 10, 11}};
  for (int line = 0; line < 3; ++line) {
    std::memcpy(lineOf(expected, 0, line, 8), luma[line], 3);
  }
  expected.plane(1)[0] = 60;
  expected.plane(2)[0] = 70;
  EXPECT_EQ("", result.canvas.difference(expected));
}

TEST(YuvToYuv, OneLineHasLumaOnly) {
  for (const int type : {3, 12, 1, 13, 11, 35, 0, 34}) {
    const Picture picture = flatPicture(type, 4, 2, 77, 1, 2);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = type == 3 ? 12 : 3;
    params.outWidth = 4;
    params.inHeight = params.outHeight = 1;
    Canvas canvas = Canvas::forPicture(3, 4, 2, 4);
    Canvas expected = canvas;
    canvas.describe(params);
    ASSERT_EQ(CC_OK, support::convertOnce(params)) << type;
    std::memset(expected.plane(0), 77, 4);
    EXPECT_EQ("", canvas.difference(expected)) << type;
  }
  Converted fromPacked = convertPicture(flatPicture(6, 4, 1, 77, 1, 2), COLOR_YUV420_PLANAR);
  ASSERT_EQ(CC_OK, fromPacked.code);
  Canvas expected = Canvas::forPicture(COLOR_YUV420_PLANAR, 4, 1, 4);
  std::memset(expected.plane(0), 77, 4);
  EXPECT_EQ("", fromPacked.canvas.difference(expected));
}

TEST(YuvToYuv, NothingIsTurned) {
  for (const int type : {3, 1, 11, 0, 37, 6, 17}) {
    const Picture picture(type, 20, 12, support::tightStride(type, 20), Fill::Noise, 7);
    const int outType = type == 3 ? 12 : 3;
    Converted plain = convertPicture(picture, outType);
    ASSERT_EQ(CC_OK, plain.code);
    EXPECT_NE("", plain.canvas.touched());
    for (const int rotation : {0, 1, 3, 4, 5, 6, 7}) {
      Converted other = convertPicture(picture, outType, rotation);
      ASSERT_EQ(CC_OK, other.code);
      EXPECT_EQ("", other.canvas.difference(plain.canvas)) << type << ", rotation " << rotation;
    }
  }
}

TEST(YuvToYuv, QuarterPlanesAreReadUpToTheirLastWholeLine) {
  // 8x8: 16 chroma bytes read in lines of 4; output lines take input lines 0, 2, 3, 3.
  for (const int type : {4, 37}) {
    Picture picture(type, 8, 8, 8, Fill::Flat, 0);
    for (int i = 0; i < 16; ++i) {
      picture.plane(1)[i] = static_cast<uint8_t>(i);
      picture.plane(2)[i] = static_cast<uint8_t>(100 + i);
    }
    Converted result = convertPicture(picture, COLOR_YUV420_PLANAR);
    ASSERT_EQ(CC_OK, result.code);
    const std::vector<int> u{0, 1, 2, 3, 8, 9, 10, 11, 12, 13, 14, 15, 12, 13, 14, 15};
    EXPECT_EQ(u, bytesOf(result, 1, 16)) << type;
    EXPECT_EQ(100 + 15, result.byte(2, 15)) << type;
  }
}

TEST(YuvToYuv, PackedHasNoWayToTheExchangedOrder) {
  for (const int type : kPackedTypes) {
    Converted result = convertPicture(flatPicture(type, 16, 16, 1, 2, 3), COLOR_YVU420_PLANAR);
    EXPECT_EQ(CC_ERR_OUT_TYPE, result.code) << type;
    EXPECT_EQ("", result.canvas.touched()) << type;
  }
}

TEST(YuvToYuv, RefusesMissingPlanesAndEmptyChroma) {
  for (const int type : {3, 12, 1, 13, 11, 35, 0, 2, 4, 37, 34, 6, 15}) {
    const Picture picture = flatPicture(type, 16, 16, 16, 128, 255);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = type == 3 ? 12 : 3;
    params.outWidth = params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(3, 16, 16, 16);
    canvas.describe(params);
    for (int plane = 0; plane < support::planeCount(type); ++plane) {
      ConvertParams without = params;
      without.inBuf[plane] = nullptr;
      EXPECT_TRUE(refuses(without, canvas)) << "without plane " << plane;
    }
    for (int plane = 0; plane < 3; ++plane) {
      ConvertParams without = params;
      without.outBuf[plane] = nullptr;
      EXPECT_TRUE(refuses(without, canvas)) << "without output plane " << plane;
    }
    // The output has chroma lines and columns to fill, the input not a single sample to fill them from.
    ConvertParams small = params;
    if (type == 37) {
      small.inHeight = small.outHeight = 3;
      EXPECT_TRUE(refuses(small, canvas));
    } else if (type == 4) {
      small.inWidth = small.outWidth = 3;
      EXPECT_TRUE(refuses(small, canvas));
    }
  }
}

TEST(YuvToYuv, LargerOutputIsRefusedWhereNothingScales) {
  for (const int type : {12, 1, 11, 0, 6}) {
    const Picture picture = flatPicture(type, 16, 16, 1, 2, 3);
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = 3;
    params.isResize = 1;
    params.outWidth = 18;
    params.outHeight = 16;
    Canvas canvas = Canvas::forPicture(3, 18, 18, 18);
    canvas.describe(params);
    EXPECT_TRUE(refuses(params, canvas));
    params.outWidth = 16;
    params.outHeight = 18;
    EXPECT_TRUE(refuses(params, canvas));
  }
}

/// Sizes of which a 4:2:0 output holds chroma.
std::vector<Size> chromaSizes(int thin, int first) {
  std::vector<Size> sizes;
  for (const Size &size : blockSizes(thin, first)) {
    if (size.width > 1 && size.height > 1) {
      sizes.push_back(size);
    }
  }
  return sizes;
}

TEST(YuvToYuv, AgreesWithTheModel) {
  for (const int type : kPlanarTypes) {
    ASSERT_TRUE(Grid(type, 3, {2}).run(chromaSizes(5, type), type));
    if (type != 12) {
      ASSERT_TRUE(Grid(type, 12, allRotations()).run(chromaSizes(61, type), type));
    }
  }
  ASSERT_TRUE(Grid(3, 12, {2}).run(chromaSizes(3, 1)));
  for (const int type : kPackedTypes) {
    ASSERT_TRUE(Grid(type, 3, {2}).run(chromaSizes(5, type), type));
    ASSERT_TRUE(Grid(type, 3, allRotations()).run(chromaSizes(131, type), type));
  }
}

TEST(YuvToYuv, TinyQuarterWidthPlanesGiveTheirLastSample) {
  // Two lines of one sample each: not one line of two (or three) samples.
  for (int width = 4; width < 8; ++width) {
    DirectCase c;
    c.inType = 4;
    c.outType = 3;
    c.width = width;
    for (c.height = 2; c.height < 4; ++c.height) {
      EXPECT_TRUE(matches(c));
    }
  }
}

TEST(YuvToYuv, ScalingIsNotApplied) {
  const Size sizes[] = {{36, 24}, {20, 24}, {36, 10}, {18, 12}, {17, 11}, {35, 3}};
  for (const int type : {12, 1, 13, 11, 35, 34, 6, 9, 14, 17}) {
    for (const auto &[w, h] : sizes) {
      DirectCase c;
      c.inType = type;
      c.outType = 3;
      c.width = 36;
      c.height = 24;
      c.isResize = 1;
      c.outWidth = w;
      c.outHeight = h;
      c.inExtra = 4;
      c.outExtra = 3;
      EXPECT_TRUE(matches(c));
    }
  }
}

TEST(YuvToYuv, OtherLayoutsAskedToScaleAreTurnedFirst) {
  const Size sizes[] = {{36, 24}, {16, 16}, {21, 34}, {40, 9}};
  for (const int type : {0, 2, 4, 37}) {
    for (const int outType : {3, 12}) {
      for (const int rotation : {2, 3, 4, 5, 6}) {
        for (const auto &[w, h] : sizes) {
          DirectCase c;
          c.inType = type;
          c.outType = outType;
          c.width = w;
          c.height = h;
          c.rotation = rotation;
          c.isResize = 1;
          c.inExtra = 6;
          c.outExtra = 3;
          c.seed = static_cast<uint32_t>(w + type);
          EXPECT_TRUE(matches(c));
        }
      }
    }
  }
}

TEST(YuvToYuv, TurnedLumaLandsWhereTheTurnSendsIt) {
  Picture picture = flatPicture(0, 6, 4, 10, 20, 30);
  picture.plane(0)[0] = 99;
  for (const int rotation : {3, 4}) {
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = 3;
    params.isResize = 1;
    params.rotation = static_cast<uint32_t>(rotation);
    params.outWidth = 6;
    params.outHeight = 4;
    Canvas canvas = Canvas::forPicture(3, 4, 6, 4);
    canvas.describe(params);
    ASSERT_EQ(CC_OK, support::convertOnce(params));
    for (int i = 0; i < 24; ++i) {
      EXPECT_EQ(i == (rotation == 3 ? 20 : 3) ? 99 : 10, canvas.plane(0)[i]) << rotation << ": " << i;
    }
    EXPECT_EQ(20, canvas.plane(1)[5]);
    EXPECT_EQ(30, canvas.plane(2)[5]);
  }
}

} // namespace
