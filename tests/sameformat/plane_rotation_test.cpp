#include "sameformat/plane_rotation.h"

#include "support/levels.h"
#include "support/picture.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <numeric>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

Bytes counted(std::size_t count) {
  Bytes bytes(count);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0});
  return bytes;
}

const Bytes kLeft{3, 7, 11, 15, 2, 6, 10, 14, 1, 5, 9, 13, 0, 4, 8, 12};
const Bytes kRight{12, 8, 4, 0, 13, 9, 5, 1, 14, 10, 6, 2, 15, 11, 7, 3};

TEST(PlaneRotation, FourByFourTurnedLeftAndRight) {
  const Bytes plane = counted(16);
  Bytes out(16);
  zqcc::rotatePlaneLeft(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), out.data(), 4, 4, 4, 4);
  EXPECT_EQ(kLeft, out);
  zqcc::rotatePlaneRight(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), out.data(), 4, 4, 4, 4);
  EXPECT_EQ(kRight, out);
}

TEST(PlaneRotation, TightRoutinesIgnoreThePitch) {
  const Bytes plane = counted(16);
  for (const int pitch : {4, 0, 100}) {
    Bytes out(16);
    zqcc::rotateTightPlaneLeft(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), 4, 4, pitch, out.data());
    EXPECT_EQ(kLeft, out) << pitch;
    zqcc::rotateTightPlaneRight(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), 4, 4, pitch, out.data());
    EXPECT_EQ(kRight, out) << pitch;
  }
}

TEST(PlaneRotation, HalfTurnOfOneLineReversesIt) {
  const Bytes plane = counted(8);
  Bytes out(8);
  zqcc::rotateTightPlane180(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), 8, 1, 8, out.data());
  EXPECT_EQ((Bytes{7, 6, 5, 4, 3, 2, 1, 0}), out);
}

TEST(PlaneRotation, NoLinesMeansNothing) {
  const Bytes plane = counted(16);
  Bytes out(16, 0xEE);
  zqcc::rotatePlaneLeft(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), out.data(), 4, 0, 4, 4);
  zqcc::rotatePlaneRight(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), out.data(), 4, 0, 4, 4);
  EXPECT_EQ(Bytes(16, 0xEE), out);
}

/// Every sample goes to its place, nothing else is touched, whatever the sizes, the pitches and the level.
void mapEverySample(zqcc::Level level, int width, int height, int padding) {
  const zqcc::LevelSet levels = support::upTo(level) & zqcc::detectedLevels();
  const int inPitch = width + padding;
  const int outPitch = height + padding;
  const support::PlaneShape shape{width, height, inPitch};
  support::Block plane(shape.bytes(), 1);
  support::fill(plane.data(), plane.size(), support::Fill::Noise, 5);
  support::Canvas left({{height, width, outPitch}}, 1);
  support::Canvas right = left;
  support::Canvas expectedLeft = left;
  support::Canvas expectedRight = left;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const uint8_t sample = plane.data()[y * inPitch + x];
      expectedLeft.plane(0)[(width - 1 - x) * outPitch + y] = sample;
      expectedRight.plane(0)[x * outPitch + height - 1 - y] = sample;
    }
  }
  zqcc::rotatePlaneLeft(levels, plane.data(), left.plane(0), width, height, inPitch, outPitch);
  zqcc::rotatePlaneRight(levels, plane.data(), right.plane(0), width, height, inPitch, outPitch);
  const char *const name = support::nameOf(level);
  ASSERT_EQ("", left.difference(expectedLeft)) << width << "x" << height << " + " << padding << " at " << name;
  ASSERT_EQ("", right.difference(expectedRight)) << width << "x" << height << " + " << padding << " at " << name;
}

TEST(PlaneRotation, StridedRoutinesMapEverySample) {
  for (const zqcc::Level level : support::kLevels) {
    if (!support::hasLevel(level)) {
      continue;
    }
    for (const int width : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 33, 70}) {
      for (const int height : {1, 2, 3, 4, 6, 8, 11, 16, 19, 32, 35, 81}) {
        for (const int padding : {0, 1, 6}) {
          mapEverySample(level, width, height, padding);
        }
      }
    }
  }
}

/// Lines that overlap are written one after the other, whatever the level.
TEST(PlaneRotation, LinesThatOverlapAreThoseOfPortableCode) {
  constexpr int kSide = 40;
  const Bytes plane = counted(std::size_t{kSide} * kSide);
  for (const int outPitch : {0, 1, 16, 39}) {
    Bytes expected(std::size_t{kSide} * kSide, 0xEE);
    zqcc::rotatePlaneLeft(zqcc::setOf(zqcc::LEVEL_PORTABLE), plane.data(), expected.data(), kSide, kSide, kSide,
                          outPitch);
    Bytes out(expected.size(), 0xEE);
    zqcc::rotatePlaneLeft(zqcc::detectedLevels(), plane.data(), out.data(), kSide, kSide, kSide, outPitch);
    EXPECT_EQ(expected, out) << outPitch;
  }
}

} // namespace
