// What the public header says about luma range, matrix and quality: which conversions read limited or full range, which
// give which, and where the matrix and the quality count. Every mode is asked.
#include "frame/mode_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <vector>

namespace {

using containment::Mode;
using frame_test::isOtherChroma;
using frame_test::isPlanar420;
using frame_test::isRgb;
using frame_test::isTurn;
using frame_test::isYuv;
using frame_test::ModeRunner;
using frame_test::nameOf;
using support::isPacked422;
using support::isRgb16;
using support::isSemiPlanar;

/// Where the matrix in force counts.
bool usesMatrix(const Mode &m) {
  if (m.inType == m.outType || !isRgb(m.outType) || m.inType == COLOR_RGB24) {
    return false;
  }
  if (isPacked422(m.inType)) {
    return true;
  }
  if (m.outType == COLOR_RGB24) {
    return m.isResize == 1 || m.rotation == ROTATION_FLIP_V;
  }
  if (m.inType == COLOR_RGB888_PLANAR) {
    return false;
  }
  return m.rotation == ROTATION_FLIP_V || (isOtherChroma(m.inType) && m.isResize == 0 && !isTurn(m.rotation));
}

/// Where a quality above 0 changes a resized picture.
bool usesQuality(const Mode &m) {
  const bool quarter = m.rotation == ROTATION_90_LEFT || m.rotation == ROTATION_90_RIGHT;
  if (m.inType == m.outType) {
    return !quarter && (isPlanar420(m.inType) || isRgb16(m.inType) || (m.inType >= 6 && m.inType <= 9));
  }
  if (!isRgb16(m.outType) || isPacked422(m.inType) || m.inType == COLOR_RGB24 || m.rotation == ROTATION_FLIP_V) {
    return false;
  }
  return isOtherChroma(m.inType) || !isTurn(m.rotation);
}

support::Picture noise(int type, int width, int height) {
  return {type, width, height, support::tightStride(type, width) + 8, support::Fill::Noise, 17};
}

TEST(Range, TheMatrixCountsWhereTheHeaderSaysSo) {
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    if (mode.quality == 2) {
      continue;
    }
    const support::Picture from = noise(mode.inType, 40, 36);
    const reference::Size to = mode.isResize == 1 ? reference::Size{24, 20} : reference::Size{40, 36};
    runner.selectMatrix(MATRIX_BT601);
    const auto plain = runner.convert(mode, from, to);
    runner.selectMatrix(MATRIX_BT709);
    const auto other = runner.convert(mode, from, to);
    if (plain) {
      ++accepted;
      ASSERT_EQ(*plain != *other, usesMatrix(mode)) << nameOf(mode);
    }
  }
  EXPECT_GT(accepted, 5000);
}

TEST(Range, QualityCountsWhereTheHeaderSaysSo) {
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    const support::Picture from = noise(mode.inType, 40, 36);
    const reference::Size to = mode.isResize == 1 ? reference::Size{18, 14} : reference::Size{40, 36};
    const auto asked = mode.quality > 0 ? runner.convert(mode, from, to) : std::nullopt;
    if (asked) {
      ++accepted;
      Mode plainMode = mode;
      plainMode.quality = 0;
      ASSERT_EQ(*asked != *runner.convert(plainMode, from, to), mode.isResize == 1 && usesQuality(mode))
          << nameOf(mode);
    }
  }
  EXPECT_GT(accepted, 4000);
}

TEST(Range, OneShotConversionsHeedCoefficientsFromPacked422Alone) {
  constexpr int kSide = 32;
  constexpr std::array<double, 4> kCoefficients{900, 100, 700, 300};
  const reference::DitherRestorer restorer;
  const support::Picture from = noise(COLOR_YUV422_YUYV, kSide, kSide * 2); // bytes enough for every type
  for (const int inType : {1, 3, 11, 35, 6, 7, 8, 9, 14, 15, 16, 17}) {
    for (const int outType : {COLOR_RGB565, COLOR_RGB16_ALT, COLOR_RGB24}) {
      std::vector<uint8_t> plain(std::size_t{3} * kSide * kSide);
      std::vector<uint8_t> custom(plain.size());
      ASSERT_EQ(zqColorConvert(from.plane(0), plain.data(), inType, outType, kSide, kSide, kSide, nullptr), CC_OK);
      ASSERT_EQ(
          zqColorConvert(from.plane(0), custom.data(), inType, outType, kSide, kSide, kSide, kCoefficients.data()),
          CC_OK);
      EXPECT_EQ(plain != custom, isPacked422(inType)) << inType << " to " << outType;
    }
  }
}

// --- Levels: pictures of one grey, its chroma neutral.

using Values = std::set<uint32_t>;

struct Level {
  int luma;
  Values limitedToFull;  ///< 565: 16 is black, 235 white
  Values limitedInBand;  ///< 565: the same luma in the band behind the last whole 16, which keeps to video range
  Values limitedInStrip; ///< 565: the same in the strips of turned pictures
  Values full;           ///< 565: 0 is black, 255 white, dithered
  Values fullPlain;      ///< 565: the same without dither
  uint32_t limitedTo24;  ///< 24 bits, a component: 16 becomes 0
  uint32_t clamped24;    ///< 24 bits, a component: as it is, held in 16..235
};

constexpr uint32_t grey565(uint32_t redAndBlue, uint32_t green) {
  return redAndBlue << 11 | green << 5 | redAndBlue;
}
constexpr uint32_t kBlack = 0;
constexpr uint32_t kWhite = 0xFFFF;
constexpr uint32_t kNearWhite = grey565(30, 63); ///< red and blue reach 31 above 255 only
constexpr uint32_t kVideoBlack = grey565(2, 4);
constexpr uint32_t kVideoWhite = grey565(29, 58);

const std::vector<Level> kLevels{
    {0, {kBlack}, {kVideoBlack}, {kBlack}, {kBlack}, {kBlack}, 0, 16},
    {16, {kBlack}, {kVideoBlack}, {kBlack}, {kVideoBlack, grey565(1, 3), grey565(2, 3)}, {kVideoBlack}, 0, 16},
    // 112 * 1.164 = 130 of 256; as it is, 128
    {128,
     {grey565(16, 32)},
     {grey565(16, 32)},
     {grey565(16, 32)},
     {grey565(16, 32), grey565(15, 31), grey565(16, 31)},
     {grey565(16, 32)},
     130,
     128},
    {235, {kWhite}, {kVideoWhite}, {kNearWhite}, {kVideoWhite}, {kVideoWhite}, 254, 235},
    {255, {kWhite}, {kVideoWhite}, {kWhite}, {kWhite, kNearWhite}, {kNearWhite}, 255, 235},
};

constexpr int kWidth = 40;
constexpr int kHeight = 36;
constexpr int kBlocksRight = 32;
constexpr int kBlocksBottom = 32;

/// Source column and line of a pixel of a picture that is not resized.
std::array<int, 2> sourceOf(uint32_t rotation, int x, int y) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return {kWidth - 1 - y, x};
  case ROTATION_90_RIGHT:
    return {y, kHeight - 1 - x};
  case ROTATION_180:
    return {kWidth - 1 - x, kHeight - 1 - y};
  default:
    return {x, y};
  }
}

/// What pixel (x, y) of the written picture may be.
Values expected(const Mode &m, const Level &level, int x, int y) {
  if (m.outType == COLOR_RGB24) {
    const uint32_t component = usesMatrix(m) ? level.clamped24 : level.limitedTo24;
    return {component << 16 | component << 8 | component};
  }
  if (usesMatrix(m)) {
    return isPacked422(m.inType) && m.isResize == 1 ? level.fullPlain : level.full;
  }
  if (m.isResize == 1) {
    return level.limitedToFull;
  }
  const auto [column, line] = sourceOf(m.rotation, x, y);
  if (column < kBlocksRight && line < kBlocksBottom) {
    return level.limitedToFull;
  }
  return isTurn(m.rotation) ? level.limitedInStrip : level.limitedInBand;
}

TEST(Range, LevelsBecomeWhatTheHeaderSays) {
  ModeRunner runner;
  int accepted = 0;
  for (const Mode &mode : containment::allModes()) {
    const bool looksAtRange = isYuv(mode.inType) && isRgb(mode.outType);
    if (!looksAtRange || mode.quality == 2 || (mode.isResize == 0 && mode.quality > 0)) {
      continue;
    }
    for (const Level &level : kLevels) {
      const support::Picture from = frame_test::paint(mode.inType, kWidth, kHeight, [&](int, int) {
        return frame_test::Yuv{level.luma, 128, 128};
      });
      const reference::Size to = mode.isResize == 1 ? reference::Size{16, 12} : reference::Size{kWidth, kHeight};
      const auto pixels = runner.convertToPixels(mode, from, to);
      ASSERT_TRUE(pixels) << nameOf(mode);
      Values seen;
      for (int y = 0; y < pixels->height; ++y) {
        for (int x = 0; x < pixels->width; ++x) {
          const Values allowed = expected(mode, level, x, y);
          ASSERT_TRUE(allowed.contains(pixels->at(x, y))) << nameOf(mode) << ", luma " << level.luma << ", pixel " << x
                                                          << ", " << y << " is " << std::hex << pixels->at(x, y);
          seen.insert(pixels->at(x, y));
        }
      }
      if (usesMatrix(mode) && isRgb16(mode.outType) && !(isPacked422(mode.inType) && mode.isResize == 1)) {
        ASSERT_EQ(seen, level.full) << nameOf(mode) << ", luma " << level.luma;
      }
      ++accepted;
    }
  }
  EXPECT_GT(accepted, 5000);
}

TEST(Range, RepeatedLinesOfEnlargedRgb24AreWrittenInPart) {
  ModeRunner runner;
  for (const int type : containment::kTypes) {
    const Mode mode{type, COLOR_RGB24, 1, ROTATION_NONE, 0};
    if (support::planeCount(type) == 1) {
      continue;
    }
    const support::Picture from = noise(type, 20, 16);
    for (const auto &[to, taller] : std::vector<std::pair<reference::Size, bool>>{
             {{20, 16}, false}, {{10, 8}, false}, {{33, 11}, false}, {{20, 32}, true}, {{12, 25}, true}}) {
      const auto light = runner.convert(mode, from, to, 0xFF);
      const auto dark = runner.convert(mode, from, to, 0x00);
      ASSERT_TRUE(light && dark);
      const auto lineBytes = static_cast<std::size_t>(3 * to.width);
      const std::size_t repeatedFrom = (static_cast<std::size_t>(to.width) + 3) & ~std::size_t{3};
      int partial = 0;
      for (std::size_t y = 0; y < static_cast<std::size_t>(to.height); ++y) {
        std::size_t untouched = 0;
        for (std::size_t i = 0; i < lineBytes; ++i) {
          const std::size_t at = y * lineBytes + i;
          // No component leaves 16..235, so that every byte that is written differs from both grounds.
          const bool same = (*light)[0][at] == 0xFF && (*dark)[0][at] == 0x00;
          untouched += same ? 1 : 0;
          ASSERT_TRUE(!same || (taller && i < repeatedFrom)) << nameOf(mode) << ", line " << y << ", byte " << i;
        }
        ASSERT_TRUE(untouched == 0 || untouched == repeatedFrom) << nameOf(mode);
        partial += untouched > 0 ? 1 : 0;
      }
      EXPECT_EQ(partial > 0, taller) << nameOf(mode) << " to " << to.width << "x" << to.height;
    }
  }
}

} // namespace
