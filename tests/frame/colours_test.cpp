// Which conversions put colours where they belong, as README's table says, and how a part of a picture is converted
// through plane pointers moved into it, as the public header says. Every mode is asked.
#include "frame/mode_runner.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <set>
#include <vector>

namespace {

using containment::Mode;
using frame_test::isOtherChroma;
using frame_test::isPlanar420;
using frame_test::isPlanar422;
using frame_test::isRgb;
using frame_test::ModeRunner;
using frame_test::nameOf;
using frame_test::Pixels;
using frame_test::Yuv;
using support::isPacked422;
using support::isRgb16;
using support::isSemiPlanar;

// --- Right colours: four quarters, each with a luma and a chroma of its own.

constexpr int kSide = 64;
constexpr std::array<Yuv, 4> kQuarters{{{60, 90, 150}, {100, 150, 90}, {140, 90, 90}, {180, 150, 150}}};

int quarterOf(int x, int y, int width, int height) {
  return (x >= width / 2 ? 1 : 0) + (y >= height / 2 ? 2 : 0);
}
/// Away from where the quarters meet, which resizing blurs.
bool isInside(int x, int y, int width, int height) {
  return std::abs(2 * x + 1 - width) > 8 && std::abs(2 * y + 1 - height) > 8;
}

support::Picture flat(int type, const Yuv &colour) {
  return frame_test::paint(type, kSide, kSide, [&](int, int) { return colour; });
}
support::Picture quartered(int type) {
  return frame_test::paint(type, kSide, kSide, [](int x, int y) {
    return kQuarters.at(static_cast<std::size_t>(quarterOf(x, y, kSide, kSide)));
  });
}

/// README's cells: colours stand where luma does.
bool isRight(const Mode &m) {
  if (isRgb16(m.outType)) {
    return !(isPlanar422(m.inType) && m.rotation == ROTATION_FLIP_V);
  }
  if (isPacked422(m.inType)) {
    return true;
  }
  if (m.outType == COLOR_RGB24) {
    return isPlanar420(m.inType) || isSemiPlanar(m.inType) || (isPlanar422(m.inType) && m.isResize == 0);
  }
  return isPlanar422(m.inType);
}

/// The filtered resize of planar 4:2:2, which 4:4:0 is once its planes are turned, mixes chroma from beyond the end of
/// its line into the last two columns.
bool isWrongAtRightEdge(const Mode &m) {
  const bool turned = m.rotation == ROTATION_90_LEFT || m.rotation == ROTATION_90_RIGHT;
  const bool upright = !frame_test::isTurn(m.rotation) && m.rotation != ROTATION_FLIP_V;
  const bool as422 = isPlanar422(m.inType) ? upright : m.inType == COLOR_YUV440_PLANAR && turned;
  return isRgb16(m.outType) && m.isResize == 1 && m.quality == 1 && as422;
}

struct Verdict {
  bool right = true;     ///< all but the last two columns
  bool rightEdge = true; ///< the last two columns
};

/// Every pixel must be one of those that a flat picture in the colour of one of the quarters gives.
Verdict judge(ModeRunner &runner, const Mode &mode, const reference::Size &to, const Pixels &pixels) {
  std::set<uint32_t> ofQuarters;
  for (const Yuv &colour : kQuarters) {
    const auto flatPixels = runner.convertToPixels(mode, flat(mode.inType, colour), to);
    ofQuarters.insert(flatPixels->values.begin(), flatPixels->values.end());
  }
  Verdict verdict;
  for (int y = 0; y < pixels.height; ++y) {
    for (int x = 0; x < pixels.width; ++x) {
      if (isInside(x, y, pixels.width, pixels.height) && !ofQuarters.contains(pixels.at(x, y))) {
        (x < pixels.width - 2 ? verdict.right : verdict.rightEdge) = false;
      }
    }
  }
  return verdict;
}

TEST(Colours, AreRightInRgbWhereTheTableSaysSo) {
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    const bool relevant = !isRgb(mode.inType) && isRgb(mode.outType) && mode.quality != 2;
    if (!relevant || (mode.isResize == 0 && mode.quality > 0)) {
      continue;
    }
    // Quality 3 is for reducing, and a flip to 16 bits is cut out, not resized.
    const reference::Size to = mode.isResize == 1 && mode.rotation != ROTATION_FLIP_V ? reference::Size{40, 48}
                                                                                      : reference::Size{kSide, kSide};
    const auto pixels = runner.convertToPixels(mode, quartered(mode.inType), to);
    ASSERT_TRUE(pixels) << nameOf(mode);
    const Verdict verdict = judge(runner, mode, to, *pixels);
    ASSERT_EQ(verdict.right, isRight(mode)) << nameOf(mode);
    if (verdict.right) {
      ASSERT_EQ(verdict.rightEdge, !isWrongAtRightEdge(mode)) << nameOf(mode);
    }
    ++accepted;
  }
  EXPECT_GT(accepted, 1500);
}

TEST(Colours, AreRightInPlanar420WhereTheTableSaysSo) {
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    if (mode.inType == mode.outType || !isPlanar420(mode.outType) || mode.rotation != ROTATION_NONE ||
        mode.isResize == 1 || mode.quality > 0) {
      continue;
    }
    const auto planes = runner.convert(mode, quartered(mode.inType), {kSide, kSide});
    if (!planes || mode.inType == COLOR_RGB24) {
      continue;
    }
    bool right = true;
    for (int y = 0; y < kSide / 2; ++y) {
      for (int x = 0; x < kSide / 2; ++x) {
        const Yuv &colour = kQuarters.at(static_cast<std::size_t>(quarterOf(x, y, kSide / 2, kSide / 2)));
        const auto at = static_cast<std::size_t>(y * kSide / 2 + x);
        // U goes to the second plane for both orders.
        right = right && (*planes)[1][at] == colour.u && (*planes)[2][at] == colour.v;
      }
    }
    EXPECT_EQ(right, isRight(mode)) << nameOf(mode);
    ++accepted;
  }
  EXPECT_EQ(accepted, 2 * 11 - 2 + 8); // to 3 and to 12 from planar and semi-planar, to 3 from packed
}

// --- Parts: plane pointers moved to pixel (x, y), the stride left as it is.

/// What a part's left and top must be multiples of.
struct Multiples {
  int x, y;
};

Multiples multiplesOf(int type) {
  if (isPlanar420(type) || isSemiPlanar(type)) {
    return {2, 2};
  }
  if (isPlanar422(type) || isPacked422(type)) {
    return {2, 1};
  }
  switch (type) {
  case COLOR_YUV440_PLANAR:
    return {1, 2};
  case COLOR_YUV411_PLANAR:
    return {4, 1};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {1, 4};
  default:
    return {1, 1};
  }
}

/// Bytes by which each plane pointer moves.
std::array<std::ptrdiff_t, 3> offsetsOf(int type, std::ptrdiff_t s, std::ptrdiff_t x, std::ptrdiff_t y) {
  const std::ptrdiff_t half = s >> 1;
  const std::ptrdiff_t full = y * s + x;
  if (isPlanar420(type)) {
    return {full, y / 2 * half + x / 2, y / 2 * half + x / 2};
  }
  if (isPlanar422(type)) {
    return {full, y * half + x / 2, y * half + x / 2};
  }
  if (isSemiPlanar(type)) {
    return {full, y / 2 * s + x, 0};
  }
  switch (type) {
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    return {full, full, full};
  case COLOR_YUV440_PLANAR:
    return {full, y / 2 * s + x, y / 2 * s + x};
  case COLOR_YUV411_PLANAR:
    return {full, y * (s >> 2) + x / 4, y * (s >> 2) + x / 4};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {full, y / 4 * s + x, y / 4 * s + x};
  case COLOR_RGB24:
    return {y * s + 3 * x, 0, 0};
  default:
    return {y * s + 2 * x, 0, 0}; // packed 4:2:2 and 16-bit RGB
  }
}

/// One colour for each 4 x 4 pixels, so that every layout holds the same picture.
Yuv cell(int x, int y) {
  const int number = x / 4 * 31 + y / 4 * 47;
  return {(number * 13) & 255, (number * 5 + 40) & 255, (number * 11 + 90) & 255};
}

TEST(Parts, MovedPlanePointersConvertThePartAlone) {
  constexpr int kPartWidth = 36;
  constexpr int kPartHeight = 32;
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    const Multiples step = multiplesOf(mode.inType);
    const int left = 3 * step.x;
    const int top = 3 * step.y;
    const support::Picture alone =
        frame_test::paint(mode.inType, kPartWidth, kPartHeight, [&](int x, int y) { return cell(x + left, y + top); });
    const reference::Size to = mode.isResize == 1 ? reference::Size{20, 24} : reference::Size{kPartWidth, kPartHeight};
    const auto expected = mode.quality == 2 ? std::nullopt : runner.convert(mode, alone, to);
    ConvertParams p = containment::recordOf(mode, {kPartWidth, kPartHeight, to.width, to.height});
    p.inStride = 1;
    if (!expected || containment::readsPadding(p)) {
      continue;
    }
    const support::Picture whole = frame_test::paint(mode.inType, 64, 60, cell);
    ASSERT_EQ(
        runner.convertPart(mode, whole, {kPartWidth, kPartHeight}, offsetsOf(mode.inType, whole.stride, left, top), to),
        expected)
        << nameOf(mode);
    ++accepted;
  }
  EXPECT_GT(accepted, 4000);
}

/// The turning copies of planar 4:2:0 take planes for tight; a resize to the same size turns a part.
TEST(Parts, OfPlanar420AreTurnedByAResizeToTheSameSize) {
  constexpr reference::Size kPart{36, 32};
  ModeRunner runner;
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR}) {
    const support::Picture whole = frame_test::paint(type, 64, 60, cell);
    const support::Picture alone =
        frame_test::paint(type, kPart.width, kPart.height, [](int x, int y) { return cell(x + 6, y + 10); });
    for (const uint32_t rotation : {ROTATION_90_LEFT, ROTATION_90_RIGHT, ROTATION_180}) {
      const auto offsets = offsetsOf(type, whole.stride, 6, 10);
      const auto tight = runner.convert({type, type, 0, rotation, 0}, alone, kPart);
      ASSERT_TRUE(tight);
      EXPECT_EQ(runner.convertPart({type, type, 1, rotation, 0}, whole, kPart, offsets, kPart), tight);
      EXPECT_NE(runner.convertPart({type, type, 0, rotation, 0}, whole, kPart, offsets, kPart), tight);
    }
  }
}

} // namespace
