// What the program says of a conversion is what the library does: every route is tried on pictures that show it.
#include "color_types.h"
#include "notes.h"
#include "painting.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace zqconvert;
using painting::paint;
using painting::pixelOf;
using painting::Sample;

namespace {

constexpr Size kSquare{128, 128};
constexpr Size kReduced{96, 96};

std::string describe(const Route &route) {
  return shortName(route.inType) + " to " + shortName(route.outType) + (route.scaled ? " scaled" : "") + " rotation " +
         std::to_string(route.rotation);
}

template <typename Visit>
void forEachRoute(Visit visit) {
  for (const ColorTypeInfo &in : colorTypes()) {
    for (const ColorTypeInfo &out : colorTypes()) {
      for (const bool scaled : {false, true}) {
        for (uint32_t rotation = ROTATION_NONE; rotation <= ROTATION_FLIP_V; ++rotation) {
          const Route route{in.code, out.code, scaled, rotation, 0};
          if (whyNot(route).empty()) {
            visit(route);
          }
        }
      }
    }
  }
}

bool notes(const Route &route, const Circumstances &now, const std::string &words) {
  return std::ranges::any_of(notesOn(route, now),
                             [&](const std::string &note) { return note.find(words) != std::string::npos; });
}

Circumstances plain(const Route &route) {
  return {kSquare, route.scaled ? kReduced : kSquare, false, Range::Unknown};
}

/// Where a place of the upright result lies in the turned one.
std::pair<int, int> turned(uint32_t rotation, int x, int y, int side) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return {y, side - 1 - x};
  case ROTATION_90_RIGHT:
    return {side - 1 - y, x};
  case ROTATION_180:
    return {side - 1 - x, side - 1 - y};
  case ROTATION_FLIP_V:
    return {x, side - 1 - y};
  default:
    return {x, y};
  }
}

constexpr std::array<Sample, 4> kQuarters{Sample{128, 60, 128}, {128, 196, 128}, {128, 128, 60}, {128, 128, 196}};

/// Between the readings of both ranges and the common matrices, which the colours below are far enough apart for.
Sample rgbOf(const Sample &yuv) {
  const double u = yuv.second - 128;
  const double v = yuv.third - 128;
  const auto clamp = [](double value) { return static_cast<int>(std::clamp(value, 0.0, 255.0)); };
  return {clamp(129.6 + 1.5 * v), clamp(129.6 - 0.76 * v - 0.37 * u), clamp(129.6 + 1.9 * u)};
}

bool near(const Sample &a, const Sample &b, int distance) {
  return std::abs(a.first - b.first) <= distance && std::abs(a.second - b.second) <= distance &&
         std::abs(a.third - b.third) <= distance;
}

Sample resultAt(const Frame &out, int x, int y, bool rgbIn) {
  if (painting::isRgb(out.type)) {
    return pixelOf(out, x, y);
  }
  const auto at = static_cast<std::size_t>(y / 2 * (out.stride / 2) + x / 2);
  const bool vFirst = out.type == COLOR_YVU420_PLANAR;
  const Sample sample{128, out.planes.at(vFirst ? 2 : 1).at(at), out.planes.at(vFirst ? 1 : 2).at(at)};
  return rgbIn ? sample : rgbOf(sample);
}

/// Four quarters of different colours, looked at in nine places each.
bool keepsColours(const Route &route) {
  Frame in = paint(route.inType, kSquare, [](int x, int y) { return kQuarters.at((y / 64 * 2) + (x / 64)); });
  const int side = route.scaled ? kReduced.width : kSquare.width;
  const Frame out = painting::viaLibrary(route, in, {side, side});
  const bool rgbIn = !painting::isYuv(route.inType);
  for (std::size_t k = 0; k < 4; ++k) {
    const Sample want = rgbIn ? kQuarters.at(k) : rgbOf(kQuarters.at(k));
    for (int place = 0; place < 9; ++place) {
      const int x = (k % 2 == 0 ? side / 4 : side * 3 / 4) + (place % 3 - 1) * side / 6;
      const int y = (k / 2 == 0 ? side / 4 : side * 3 / 4) + (place / 3 - 1) * side / 6;
      const auto [toX, toY] = turned(route.rotation, x, y, side);
      if (!near(resultAt(out, toX, toY, rgbIn), want, 24)) {
        return false;
      }
    }
  }
  return true;
}

// Looked at are results that resultAt() can read; what stays packed or semi-planar is copied or resampled as it is.
TEST(Notes, ColoursInWrongPlacesAreSaid) {
  int wrong = 0;
  forEachRoute([&](const Route &route) {
    const bool planarYuv = route.outType == COLOR_YUV420_PLANAR || route.outType == COLOR_YVU420_PLANAR;
    if (!painting::isRgb(route.outType) && !planarYuv) {
      return;
    }
    // The planes of RGB land in those of YUV unmixed, which no colour in any place makes right.
    const bool mixedUp = route.inType == COLOR_RGB888_PLANAR && planarYuv;
    const bool right = !mixedUp && keepsColours(route);
    EXPECT_EQ(notes(route, plain(route), "colours in wrong places"), !right) << describe(route);
    wrong += right ? 0 : 1;
  });
  EXPECT_GT(wrong, 40);
}

TEST(Notes, AMatrixThatChangesNothingIsSaid) {
  int idle = 0;
  int used = 0;
  forEachRoute([&](const Route &route) {
    Frame in = paint(route.inType, {40, 40}, [](int x, int y) {
      return Sample{(5 * x + y) & 255, (6 * x) & 255, (6 * y) & 255};
    });
    const Size upright = route.scaled ? Size{24, 24} : Size{40, 40};
    const Frame first = painting::viaLibrary(route, in, upright, 0, MATRIX_BT601);
    bool same = true;
    for (const int matrix : {MATRIX_BT709, MATRIX_GREY}) {
      same = same && painting::viaLibrary(route, in, upright, 0, matrix).planes == first.planes;
    }
    Circumstances now = plain(route);
    EXPECT_FALSE(notes(route, now, "--matrix")) << describe(route);
    now.otherMatrix = true;
    EXPECT_EQ(notes(route, now, "--matrix changes nothing"), same) << describe(route);
    ++(same ? idle : used);
  });
  EXPECT_GT(idle, 100);
  EXPECT_GT(used, 100);
}

/// Green of a picture of one grey.
int greyAt(const Route &route, int luma) {
  Frame in = paint(route.inType, {64, 64}, [luma](int, int) { return Sample{luma, 128, 128}; });
  const Size upright = route.scaled ? Size{48, 48} : Size{64, 64};
  return pixelOf(painting::viaLibrary(route, in, upright), 9, 10).second;
}

// Dither and five bits move a grey by 7 at most; the wrong range moves it by 12 and more.
TEST(Notes, ARangeThatIsNotHonouredIsSaid) {
  int broken = 0;
  forEachRoute([&](const Route &route) {
    if (!painting::isRgb(route.outType) || !painting::isYuv(route.inType)) {
      return;
    }
    bool full = true;
    for (const int luma : {3, 16, 128, 235, 252}) {
      full = full && std::abs(greyAt(route, luma) - luma) <= 7;
    }
    const bool limited = greyAt(route, 16) <= 7 && greyAt(route, 235) >= 248;
    Circumstances now = plain(route);
    EXPECT_FALSE(notes(route, now, "range")) << describe(route);
    now.range = Range::Full;
    EXPECT_EQ(notes(route, now, "of full range"), !full) << describe(route);
    now.range = Range::Limited;
    EXPECT_EQ(notes(route, now, "of limited range"), !limited) << describe(route);
    broken += full ? 0 : 1;
  });
  EXPECT_GT(broken, 100);
}

bool leavesHoles(const Route &route, Size upright) {
  std::array<Frame, 2> results;
  for (std::size_t i = 0; i < 2; ++i) {
    Frame in = paint(route.inType, {40, 40}, [](int, int) { return Sample{100, 128, 128}; });
    results.at(i) = painting::viaLibrary(route, in, upright, i == 0 ? 0 : 255);
  }
  return results[0].planes != results[1].planes;
}

TEST(Notes, LinesThatAreOnlyPartlyWrittenAreSaid) {
  int holes = 0;
  forEachRoute([&](const Route &route) {
    if (!route.scaled || !painting::isRgb(route.outType)) {
      return;
    }
    for (const Size upright : {Size{24, 24}, Size{40, 40}, Size{60, 40}, Size{40, 41}, Size{24, 60}, Size{60, 24},
                               Size{61, 61}, Size{120, 80}}) {
      const bool holey = leavesHoles(route, upright);
      const Circumstances now{{40, 40}, upright, false, Range::Unknown};
      EXPECT_EQ(notes(route, now, "only parts of the lines"), holey) << describe(route) << " " << toText(upright);
      holes += holey ? 1 : 0;
    }
  });
  EXPECT_GT(holes, 50);
}

/// Whether black and white come out as one shade everywhere.
bool isEven(const Route &route, Size size) {
  for (const int luma : {16, 235}) {
    Frame in = paint(route.inType, size, [luma](int, int) { return Sample{luma, 128, 128}; });
    const Frame out = painting::viaLibrary(route, in, size);
    const int first = pixelOf(out, 0, 0).second;
    for (int y = 0; y < out.height; ++y) {
      for (int x = 0; x < out.width; ++x) {
        if (std::abs(pixelOf(out, x, y).second - first) > 8) {
          return false;
        }
      }
    }
  }
  return true;
}

TEST(Notes, TheBandAtTheEdgeIsSaid) {
  int bands = 0;
  forEachRoute([&](const Route &route) {
    if (route.scaled || !painting::isRgb(route.outType) || !painting::isYuv(route.inType)) {
      return;
    }
    for (const Size size : {Size{32, 48}, Size{40, 32}, Size{32, 40}, Size{36, 44}}) {
      const bool even = isEven(route, size);
      const Circumstances now{size, size, false, Range::Unknown};
      EXPECT_EQ(notes(route, now, "beyond the last whole 16"), !even) << describe(route) << " " << toText(size);
      bands += even ? 0 : 1;
    }
  });
  EXPECT_GT(bands, 20);
}

TEST(Notes, TheBandIsMeasured) {
  const Route route{COLOR_YUV420_PLANAR, COLOR_RGB565, false, ROTATION_NONE, 0};
  const auto note = [&](Size size) {
    const std::vector<std::string> all = notesOn(route, {size, size, false, Range::Unknown});
    return all.empty() ? "" : all.front();
  };
  EXPECT_THAT(note({33, 40}), testing::StartsWith("the last column and the last 8 lines of the picture"));
  EXPECT_THAT(note({34, 32}), testing::StartsWith("the last 2 columns of the picture"));
  EXPECT_THAT(note({32, 17}), testing::StartsWith("the last line of the picture"));
  EXPECT_EQ(note({32, 32}), "");
}

TEST(Notes, OneLineEach) {
  forEachRoute([&](const Route &route) {
    for (const Range range : {Range::Full, Range::Limited}) {
      for (const std::string &note : notesOn(route, {{40, 40}, {60, 60}, true, range})) {
        EXPECT_EQ(note.find('\n'), std::string::npos);
        EXPECT_LT(note.size(), 140U) << note;
      }
    }
  });
}

} // namespace
