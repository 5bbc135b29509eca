// Names, codes and plane sizes of the colour types.
#include "color_types.h"
#include "error.h"
#include "text.h"
#include "zqColorConversion.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

using namespace zqconvert;

namespace {

struct Named {
  const char *name;
  int code;
};

const std::array kNames{Named{"i444", 0},
                        Named{"i422", 1},
                        Named{"i440", 2},
                        Named{"i420", 3},
                        Named{"i411", 4},
                        Named{"yuyv", 6},
                        Named{"yuy2", 6},
                        Named{"yvyu", 7},
                        Named{"uyvy", 8},
                        Named{"vyuy", 9},
                        Named{"nv12", 11},
                        Named{"yv12", 12},
                        Named{"yv16", 13},
                        Named{"yuyv2", 14},
                        Named{"yvyu2", 15},
                        Named{"uyvy2", 16},
                        Named{"vyuy2", 17},
                        Named{"rgb565", 30},
                        Named{"rgb16alt", 31},
                        Named{"bgr24", 32},
                        Named{"rgbp", 34},
                        Named{"nv21", 35},
                        Named{"yuv-quarter-height", 37},
                        Named{"yuv420p", 3},
                        Named{"yuyv422", 6},
                        Named{"uyvy422", 8},
                        Named{"NV12", 11},
                        Named{"I420", 3},
                        Named{"COLOR_YUV420_PLANAR", COLOR_YUV420_PLANAR},
                        Named{"color_yvu422_planar", COLOR_YVU422_PLANAR},
                        Named{"Color_Rgb888_Planar", COLOR_RGB888_PLANAR},
                        Named{"COLOR_YUV_QUARTER_HEIGHT", COLOR_YUV_QUARTER_HEIGHT}};

TEST(ColorTypes, EveryNameFindsItsCode) {
  for (const Named &named : kNames) {
    EXPECT_EQ(parseColorType(named.name), named.code) << named.name;
  }
}

TEST(ColorTypes, EveryCodeIsKnownAndNoOther) {
  const std::set<int> codes{0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37};
  for (int code = -2; code < 60; ++code) {
    EXPECT_EQ(isColorType(code), codes.contains(code)) << code;
    if (codes.contains(code)) {
      EXPECT_EQ(parseColorType(std::to_string(code)), code);
      EXPECT_EQ(parseColorType(colorType(code).constant), code);
      EXPECT_EQ(parseColorType(shortName(code)), code);
    } else {
      EXPECT_THROW(parseColorType(std::to_string(code)), Error) << code;
      EXPECT_THROW(colorType(code), Error) << code;
    }
  }
}

// "rgb24" among them: elsewhere it means bytes R, G, B, and this library has B, G, R.
TEST(ColorTypes, WhatIsNoTypeIsRefused) {
  for (const char *text :
       {"", " ", "i42", "i4200", "3 ", " 3", "0x3", "3.0", "99999999999", "yuv444p10", "COLOR_", "rgb24"}) {
    EXPECT_THROW(parseColorType(text), Error) << "'" << text << "'";
  }
}

TEST(ColorTypes, NamesAreUnambiguous) {
  std::set<std::string> seen;
  const std::string table = describeColorTypes();
  for (const ColorTypeInfo &type : colorTypes()) {
    EXPECT_TRUE(seen.insert(type.constant).second) << type.constant;
    EXPECT_NE(table.find(type.constant), std::string::npos);
    for (const std::string &name : split(type.names, ' ')) {
      EXPECT_TRUE(seen.insert(name).second) << name;
      EXPECT_NE(table.find(name), std::string::npos);
    }
  }
}

struct Shape {
  int type;
  int index;
  int lineBytes;
  int lines;
  int stride;
};

// A picture of 13 x 11: every halving and quartering drops a remainder.
TEST(ColorTypes, PlanesOfAnOddPicture) {
  for (const Shape &want :
       {Shape{0, 0, 13, 11, 13}, Shape{0, 2, 13, 11, 13}, Shape{1, 1, 6, 11, 6}, Shape{2, 1, 13, 5, 13},
        Shape{3, 0, 13, 11, 13}, Shape{3, 1, 6, 5, 6}, Shape{4, 2, 3, 11, 3}, Shape{6, 0, 28, 11, 28},
        Shape{17, 0, 28, 11, 28}, Shape{11, 1, 12, 5, 13}, Shape{35, 1, 12, 5, 13}, Shape{12, 2, 6, 5, 6},
        Shape{13, 1, 6, 11, 6}, Shape{30, 0, 26, 11, 26}, Shape{31, 0, 26, 11, 26}, Shape{32, 0, 39, 11, 39},
        Shape{34, 1, 13, 11, 13}, Shape{37, 1, 13, 2, 13}}) {
    const PlaneShape got = planeShape(want.type, 13, 11, tightStride(want.type, 13), want.index);
    EXPECT_EQ(got.lineBytes, want.lineBytes) << want.type << " plane " << want.index;
    EXPECT_EQ(got.lines, want.lines) << want.type << " plane " << want.index;
    EXPECT_EQ(got.stride, want.stride) << want.type << " plane " << want.index;
  }
  EXPECT_EQ(planeShape(11, 13, 11, 13, 1).bytes(), 4U * 13U + 12U);
}

TEST(ColorTypes, StridesReachTheChromaPlanes) {
  EXPECT_EQ(planeShape(3, 13, 11, 41, 1).stride, 20);
  EXPECT_EQ(planeShape(4, 13, 11, 41, 1).stride, 10);
  EXPECT_EQ(planeShape(2, 13, 11, 41, 1).stride, 41);
  EXPECT_EQ(planeShape(11, 13, 11, 41, 1).stride, 41);
}

TEST(ColorTypes, PicturesWithoutChromaSamplesAreRefused) {
  EXPECT_THROW(requireSamples(COLOR_YUV420_PLANAR, 1, 8, "x"), Error);
  EXPECT_THROW(requireSamples(COLOR_YUV420_PACK, 8, 1, "x"), Error);
  EXPECT_THROW(requireSamples(COLOR_YUV411_PLANAR, 3, 8, "x"), Error);
  EXPECT_THROW(requireSamples(COLOR_YUV_QUARTER_HEIGHT, 8, 3, "x"), Error);
  EXPECT_NO_THROW(requireSamples(COLOR_YUV444_PLANAR, 1, 1, "x"));
  EXPECT_NO_THROW(requireSamples(COLOR_RGB565, 1, 1, "x"));
  EXPECT_NO_THROW(requireSamples(COLOR_YUV411_PLANAR, 4, 1, "x"));
}

} // namespace
