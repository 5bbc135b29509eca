// What the program offers is what the library does: every combination is tried on a noise picture.
#include "color_types.h"
#include "routes.h"
#include "workspace.h"
#include "zqColorConversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

using namespace zqconvert;

namespace {

constexpr int kSide = 32;

struct Result {
  uint32_t code = 0;
  std::vector<uint8_t> bytes;
};

/// A square picture, so that turned and upright results have the same shape.
Result viaLibrary(const Route &route) {
  static std::map<int, Frame> pictures;
  Frame &in = pictures[route.inType];
  if (in.width == 0) {
    in = workspace::noiseFrame(route.inType, kSide, kSide, 3);
  }
  const int side = route.scaled ? 24 : kSide;
  Frame out = makeFrame(route.outType, side, side);
  ConvertParams params{};
  params.inType = route.inType;
  params.inWidth = params.inHeight = kSide;
  params.inStride = in.stride;
  params.outType = route.outType;
  params.outWidth = params.outHeight = side;
  params.outStride = out.stride;
  for (std::size_t i = 0; i < 3; ++i) {
    params.inBuf[i] = in.planes[i].data();
    params.outBuf[i] = out.planes[i].data();
  }
  params.isResize = route.scaled ? 1 : 0;
  params.rotation = route.rotation;
  params.antiAlias = route.quality;
  ConvertContext *handle = nullptr;
  EXPECT_EQ(zqCCInit(&handle), CC_OK);
  Result result;
  result.code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params);
  if (result.code == CC_OK) {
    result.code = zqCCProcess(handle, &params);
  }
  zqCCUninit(handle);
  for (const std::vector<uint8_t> &plane : out.planes) {
    result.bytes.insert(result.bytes.end(), plane.begin(), plane.end());
  }
  return result;
}

bool untouched(const Result &result) {
  return std::ranges::all_of(result.bytes, [](uint8_t byte) { return byte == 0; });
}

std::string describe(const Route &route) {
  return shortName(route.inType) + " to " + shortName(route.outType) + (route.scaled ? " scaled" : "") + " rotation " +
         std::to_string(route.rotation) + " quality " + std::to_string(route.quality);
}

constexpr std::array<uint32_t, 4> kTurns{ROTATION_90_LEFT, ROTATION_90_RIGHT, ROTATION_180, ROTATION_FLIP_V};

template <typename Visit>
void forEachPair(Visit visit) {
  for (const ColorTypeInfo &in : colorTypes()) {
    for (const ColorTypeInfo &out : colorTypes()) {
      for (const bool scaled : {false, true}) {
        visit(Route{in.code, out.code, scaled, ROTATION_NONE, 0});
      }
    }
  }
}

TEST(Routes, UprightOnesExistExactlyWhereTheLibraryConverts) {
  int offered = 0;
  forEachPair([&](const Route &route) {
    const Result result = viaLibrary(route);
    if (whyNot(route).empty()) {
      ++offered;
      EXPECT_EQ(result.code, CC_OK) << describe(route);
      EXPECT_FALSE(untouched(result)) << describe(route);
    } else if (result.code == CC_OK && !untouched(result)) {
      // The library copies part of the picture where it cannot scale: nothing to offer.
      const bool to420 = route.outType == COLOR_YUV420_PLANAR || route.outType == COLOR_YVU420_PLANAR;
      EXPECT_TRUE(route.scaled && to420) << describe(route);
    }
  });
  EXPECT_GT(offered, 150);
}

TEST(Routes, TurnsAreOfferedWhereTheLibraryTurns) {
  int offered = 0;
  int refused = 0;
  forEachPair([&](Route route) {
    if (!whyNot(route).empty()) {
      return;
    }
    const Result upright = viaLibrary(route);
    for (const uint32_t rotation : kTurns) {
      route.rotation = rotation;
      const Result turned = viaLibrary(route);
      if (whyNot(route).empty()) {
        ++offered;
        EXPECT_EQ(turned.code, CC_OK) << describe(route);
        EXPECT_FALSE(turned.bytes == upright.bytes) << describe(route);
      } else if (turned.code == CC_OK && !(route.scaled && rotation == ROTATION_FLIP_V)) {
        // A flip with another size takes the picture's first lines and columns unscaled.
        ++refused;
        EXPECT_TRUE(turned.bytes == upright.bytes) << describe(route);
      }
    }
  });
  EXPECT_GT(offered, 200);
  EXPECT_GT(refused, 50);
}

TEST(Routes, QualitiesAreOfferedWhereTheLibraryTakesThem) {
  int offered = 0;
  forEachPair([&](Route route) {
    if (!route.scaled || !whyNot(route).empty()) {
      return;
    }
    for (const uint32_t rotation : {uint32_t{ROTATION_NONE}, kTurns[0], kTurns[1], kTurns[2]}) {
      route.rotation = rotation;
      route.quality = 0;
      if (!whyNot(route).empty()) {
        continue;
      }
      for (route.quality = 1; route.quality <= 3; ++route.quality) {
        const bool taken = viaLibrary(route).code == CC_OK;
        EXPECT_EQ(whyNot(route).empty(), taken) << describe(route);
        offered += taken ? 1 : 0;
      }
    }
  });
  EXPECT_GT(offered, 200);
}

// Where the program says that the quality changes nothing it changes nothing, and only there.
TEST(Routes, QualitiesAreIdleWhereTheLibraryTakesNoNotice) {
  int idle = 0;
  int effective = 0;
  forEachPair([&](Route route) {
    for (const uint32_t rotation : {uint32_t{ROTATION_NONE}, kTurns[0], kTurns[1], kTurns[2]}) {
      route.rotation = rotation;
      route.quality = 0;
      if (!route.scaled || !whyNot(route).empty()) {
        continue;
      }
      EXPECT_EQ(whyQualityIsIdle(route), "") << describe(route);
      const Result plain = viaLibrary(route);
      for (route.quality = 1; route.quality <= 3; ++route.quality) {
        if (whyNot(route).empty()) {
          const bool same = viaLibrary(route).bytes == plain.bytes;
          EXPECT_EQ(!whyQualityIsIdle(route).empty(), same) << describe(route);
          ++(same ? idle : effective);
        }
      }
    }
  });
  EXPECT_GT(idle, 100);
  EXPECT_GT(effective, 40);
}

TEST(Routes, QualitiesAreIdleWithoutScaling) {
  Route route{COLOR_YUV420_PLANAR, COLOR_RGB565, false, ROTATION_NONE, 2};
  EXPECT_NE(whyQualityIsIdle(route).find("--scale"), std::string::npos);
  route.quality = 0;
  EXPECT_EQ(whyQualityIsIdle(route), "");
}

} // namespace
