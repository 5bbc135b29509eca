// Sizes of scaled results, and where the mean of a box is no mean.
#include "convert.h"
#include "error.h"
#include "workspace.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace zqconvert;

namespace {

TEST(Scaling, AnOpenSideOfTheScaleKeepsTheShape) {
  struct Case {
    Size in, scale, want;
  };
  for (const Case &c : {Case{{64, 32}, {32, -1}, {32, 16}}, Case{{64, 32}, {-1, 8}, {16, 8}},
                        Case{{64, 32}, {31, -1}, {31, 16}}, // 15.5 to the nearest
                        Case{{64, 32}, {29, -2}, {29, 14}}, // 14.5 to the nearest even
                        Case{{64, 32}, {31, -2}, {31, 16}}, Case{{64, 32}, {-4, 11}, {24, 11}},
                        Case{{64, 32}, {1, -1}, {1, 1}}, Case{{1920, 1080}, {854, -1}, {854, 480}},
                        Case{{1920, 1080}, {-2, 480}, {854, 480}}, Case{{1920, 1080}, {-1, 480}, {853, 480}}}) {
    Request request;
    request.scale = c.scale;
    const Converter converter({COLOR_YUV420_PLANAR, c.in.width, c.in.height, "25:1", "420jpeg"}, request);
    EXPECT_EQ((Size{converter.output().width, converter.output().height}), c.want) << toText(c.scale);
  }
  Request part;
  part.crop = Rectangle{0, 0, 16, 32};
  part.scale = Size{8, -1};
  part.rotation = ROTATION_90_LEFT;
  const Converter converter({COLOR_YUV420_PLANAR, 64, 32, "25:1", "420jpeg"}, part);
  EXPECT_EQ((Size{converter.output().width, converter.output().height}), (Size{16, 8}));
}

/// Whether a picture of one grey comes out as one grey.
bool staysEven(int type, Size size, uint32_t rotation) {
  Frame in = makeFrame(type, 32, 32);
  for (std::vector<uint8_t> &plane : in.planes) {
    std::ranges::fill(plane, uint8_t{128});
  }
  Request request;
  request.scale = size;
  request.quality = 3;
  request.rotation = rotation;
  Converter converter({type, in.width, in.height, "25:1", "420jpeg"}, request);
  Frame result;
  converter.convert(in, result);
  const std::vector<uint8_t> &out = result.planes[0];
  for (std::size_t i = 2; i < out.size(); ++i) {
    if (out[i] != out[i % 2]) {
      return false;
    }
  }
  return true;
}

// The boxes of a side that does not shrink are empty, and the library would paint black or green there.
TEST(Scaling, TheMeanOfABoxOnlyReduces) {
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR, COLOR_YUV422_PLANAR, COLOR_YUV420_PACK,
                         COLOR_RGB888_PLANAR, COLOR_YUV444_PLANAR}) {
    for (const uint32_t rotation : {ROTATION_NONE, ROTATION_90_LEFT}) {
      for (const Size size : {Size{33, 24}, Size{24, 33}, Size{32, 24}, Size{24, 32}, Size{32, 32}, Size{64, 64}}) {
        const bool filtered = rotation == ROTATION_NONE || type == COLOR_YUV444_PLANAR;
        if (filtered) {
          EXPECT_THROW(staysEven(type, size, rotation), Error) << type << " " << toText(size) << " " << rotation;
        } else {
          EXPECT_TRUE(staysEven(type, size, rotation)) << type << " " << toText(size) << " " << rotation;
        }
      }
      EXPECT_TRUE(staysEven(type, {24, 16}, rotation)) << type << " " << rotation;
    }
  }
}

// What counts is the size of the part that is converted.
TEST(Scaling, TheMeanOfABoxOnlyReducesParts) {
  Request request;
  request.crop = Rectangle{0, 0, 16, 16};
  request.quality = 3;
  const StreamInfo whole{COLOR_YUV420_PLANAR, 32, 32, "", ""};
  for (const Size size : {Size{24, 8}, Size{8, 24}}) {
    request.scale = size;
    EXPECT_THROW(Converter(whole, request), Error) << toText(size);
    Request uncut = request;
    uncut.crop.reset();
    EXPECT_NO_THROW(Converter(whole, uncut)) << toText(size);
  }
}

} // namespace
