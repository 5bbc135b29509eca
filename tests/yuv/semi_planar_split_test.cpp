// Semi-planar chroma taken apart into planes.
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

std::vector<int> bytesOf(Converted &picture, int plane, int count, int offset = 0) {
  std::vector<int> values;
  values.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    values.push_back(picture.byte(plane, offset + i));
  }
  return values;
}

TEST(SemiPlanarSplit, SemiPlanarChromaIsSplit) {
  for (const int type : {11, 35}) {
    Picture picture(type, 4, 2, 4, Fill::Ramp, 1);
    const uint8_t pairs[] = {10, 20, 11, 21};
    std::memcpy(picture.plane(1), pairs, sizeof pairs);
    for (const int outType : {3, 12}) {
      Converted result = convertPicture(picture, outType);
      ASSERT_EQ(CC_OK, result.code);
      EXPECT_EQ(0, std::memcmp(picture.plane(0), result.canvas.plane(0), 8));
      EXPECT_EQ((std::vector<int>{10, 11}), bytesOf(result, type == 11 ? 1 : 2, 2)) << type;
      EXPECT_EQ((std::vector<int>{20, 21}), bytesOf(result, type == 11 ? 2 : 1, 2)) << type;
    }
  }
}

/// What the splitter makes of `pairs`: two planes of twelve bytes that hold 7 where nothing was written.
std::array<std::vector<uint8_t>, 2> split(int width, int height, int stride, const std::vector<uint8_t> &pairs) {
  ConvertParams params = support::blankParams();
  params.inType = COLOR_YUV420_PACK;
  params.inWidth = width;
  params.inHeight = height;
  params.inStride = stride;
  params.inBuf[1] = pairs.data();
  std::array<std::vector<uint8_t>, 2> planes{std::vector<uint8_t>(12, 7), std::vector<uint8_t>(12, 7)};
  zqcc::deinterleaveChroma(zqcc::setOf(zqcc::LEVEL_PORTABLE), params, planes[0].data(), planes[1].data());
  return planes;
}

TEST(SemiPlanarSplit, SplitterSendsThePairsFirstSamplesToTheFirstPlane) {
  // Two chroma lines of two pairs, 8 bytes apart, go to lines 4 bytes apart; what stands behind the pairs stays.
  const std::vector<uint8_t> pairs{10, 20, 11, 21, 90, 91, 92, 93, 12, 22, 13, 23, 94, 95, 96, 97};
  const auto planes = split(4, 4, 8, pairs);
  EXPECT_EQ((std::vector<uint8_t>{10, 11, 7, 7, 12, 13, 7, 7, 7, 7, 7, 7}), planes[0]);
  EXPECT_EQ((std::vector<uint8_t>{20, 21, 7, 7, 22, 23, 7, 7, 7, 7, 7, 7}), planes[1]);
  // An odd fifth line has no chroma of its own.
  EXPECT_EQ(planes, split(4, 5, 8, pairs));
}

/// Any number of pairs, at every level; what lies between the lines stays.
TEST(SemiPlanarSplit, SplitterTakesEveryPairAtEveryLevel) {
  constexpr int kLines = 3;
  for (const zqcc::Level level : support::kLevels) {
    if (!support::hasLevel(level)) {
      continue;
    }
    for (int count = 1; count < 140; ++count) {
      const int stride = 2 * count + count % 5;
      const int pitch = stride / 2;
      std::vector<uint8_t> pairs(static_cast<std::size_t>((kLines - 1) * stride + 2 * count));
      support::fill(pairs.data(), pairs.size(), support::Fill::Noise, static_cast<uint32_t>(count));
      const std::vector<uint8_t> untouched(static_cast<std::size_t>(kLines * (pitch + 1)) + 64, 7);
      std::array<std::vector<uint8_t>, 2> planes{untouched, untouched};
      std::array<std::vector<uint8_t>, 2> expected{untouched, untouched};
      for (int line = 0; line < kLines; ++line) {
        for (int i = 0; i < 2 * count; ++i) {
          expected[static_cast<std::size_t>(i % 2)][static_cast<std::size_t>(line * pitch + i / 2)] =
              pairs[static_cast<std::size_t>(line * stride + i)];
        }
      }
      ConvertParams params = support::blankParams();
      params.inType = COLOR_YUV420_PACK;
      params.inWidth = 2 * count + count % 2;
      params.inHeight = 2 * kLines;
      params.inStride = stride;
      params.inBuf[1] = pairs.data();
      zqcc::deinterleaveChroma(support::upTo(level) & zqcc::detectedLevels(), params, planes[0].data(),
                               planes[1].data());
      ASSERT_EQ(expected, planes) << count << " pairs at " << support::nameOf(level);
    }
  }
}

TEST(SemiPlanarSplit, SplitterNeedsTwoLinesAndOneColumn) {
  const std::vector<uint8_t> pairs{10, 20, 11, 21, 12, 22, 13, 23};
  const std::vector<uint8_t> untouched(12, 7);
  for (const int height : {-2, 0, 1}) {
    EXPECT_EQ(untouched, split(4, height, 4, pairs)[0]) << height;
    EXPECT_EQ(untouched, split(4, height, 4, pairs)[1]) << height;
  }
  EXPECT_EQ(untouched, split(0, 4, 4, pairs)[0]);
  EXPECT_EQ(untouched, split(-4, 4, 4, pairs)[1]);
  // A single column still has one pair a line.
  const auto column = split(1, 4, 4, pairs);
  EXPECT_EQ((std::vector<uint8_t>{10, 7, 12, 7, 7, 7, 7, 7, 7, 7, 7, 7}), column[0]);
  EXPECT_EQ((std::vector<uint8_t>{20, 7, 22, 7, 7, 7, 7, 7, 7, 7, 7, 7}), column[1]);
}

TEST(SemiPlanarSplit, SplitPlanesOfAHandle) {
  const support::LevelsForced portable(zqcc::LEVEL_PORTABLE); // vector code reads the pairs as they lie
  // Type 11 has the samples of its second plane first in each pair, type 35 those of the third.
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    Picture picture(type, 6, 2, 6, Fill::Flat, 0);
    const uint8_t pairs[] = {10, 20, 11, 21, 12, 22};
    std::memcpy(picture.plane(1), pairs, sizeof pairs);
    ConvertContext *handle = nullptr;
    ASSERT_EQ(CC_OK, zqCCInit(&handle));
    ConvertParams params = support::blankParams();
    picture.describe(params);
    params.outType = COLOR_RGB565;
    params.outWidth = 6;
    params.outHeight = 2;
    Canvas canvas = Canvas::forPicture(COLOR_RGB565, 6, 2, 12);
    canvas.describe(params);
    ASSERT_EQ(CC_OK, zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params));
    ASSERT_EQ(CC_OK, zqCCProcess(handle, &params));
    const uint8_t *u = handle->uvBuf[0];
    const uint8_t *v = handle->uvBuf[1];
    const std::vector<uint8_t> tens{10, 11, 12};
    const std::vector<uint8_t> twenties{20, 21, 22};
    EXPECT_EQ(type == COLOR_YUV420_PACK ? tens : twenties, std::vector<uint8_t>(u, u + 3)) << type;
    EXPECT_EQ(type == COLOR_YUV420_PACK ? twenties : tens, std::vector<uint8_t>(v, v + 3)) << type;
    EXPECT_EQ(CC_OK, zqCCUninit(handle));
  }
}

} // namespace
