// Pictures that are taken apart, at every level and at lengths around those of vectors and pieces, against plain loops.
#include "vector/parts.h"

#include "support/levels.h"
#include "support/picture.h"
#include "tables/packed_layout.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;
using zqcc::Level;
using zqcc::MacropixelLines;
using zqcc::PairLines;

constexpr uint8_t kUntouched = 0xA5;

/// `lines` lines of noise, the last of which ends with its last byte.
Bytes noise(int lines, int stride, int lineBytes) {
  Bytes bytes(static_cast<std::size_t>((lines - 1) * stride + lineBytes));
  support::fill(bytes.data(), bytes.size(), support::Fill::Noise, static_cast<uint32_t>(stride));
  return bytes;
}

/// Calls check(level) for every level of vector code that the machine has.
template <class Check>
void atEveryLevel(const Check &check) {
  for (const Level level : support::kLevels) {
    if (level != zqcc::LEVEL_PORTABLE && support::hasLevel(level)) {
      check(level);
    }
  }
}

/// Three planes of a picture, with room around them.
class Planes {
public:
  static constexpr std::size_t kAround = 128;

  Planes(int lines, int lumaPitch, int chromaPitch)
      : plane_{Bytes(roomFor(lines, lumaPitch), kUntouched), Bytes(roomFor(lines, chromaPitch), kUntouched),
               Bytes(roomFor(lines, chromaPitch), kUntouched)} {}

  uint8_t *operator[](std::size_t plane) { return plane_[plane].data() + kAround; }
  bool operator==(const Planes &other) const {
    return plane_[0] == other.plane_[0] && plane_[1] == other.plane_[1] && plane_[2] == other.plane_[2];
  }

private:
  static std::size_t roomFor(int lines, int pitch) {
    return static_cast<std::size_t>(lines) * static_cast<std::size_t>(pitch) + 2 * kAround;
  }

  Bytes plane_[3];
};

// --- Packed 4:2:2 ---------------------------------------------------------------------------------------------------

std::vector<int> lengths() {
  std::vector<int> all;
  for (int pixels = 16; pixels < 140; pixels += 2) {
    all.push_back(pixels);
  }
  for (int pixels = 500; pixels < 540; pixels += 2) {
    all.push_back(pixels);
  }
  for (const int pixels : {1022, 1024, 1026, 1038, 1040, 1280, 1920}) {
    all.push_back(pixels);
  }
  return all;
}

/// What the byte table of a variant says of a picture.
void partPlainly(const uint8_t *from, int stride, const zqcc::PackedLayout &layout, Planes &to, int pitch, int pixels,
                 int lines) {
  for (int line = 0; line < lines; ++line) {
    for (int x = 0; x < pixels; x += 2) {
      const uint8_t *macropixel = from + line * stride + 2 * x;
      to[0][line * pitch + x] = macropixel[layout.left];
      to[0][line * pitch + x + 1] = macropixel[layout.right];
      if (line % 2 == 0 && line / 2 < lines / 2) {
        to[1][line / 2 * (pitch / 2) + x / 2] = macropixel[layout.u];
        to[2][line / 2 * (pitch / 2) + x / 2] = macropixel[layout.v];
      }
    }
  }
}

void partMacropixelsAt(Level level, uint32_t variant) {
  const zqcc::PackedLayout layout = zqcc::packedLayout(variant);
  for (const int pixels : lengths()) {
    const int lines = 1 + pixels / 2 % 4;
    const int stride = 2 * pixels + pixels / 2 % 3;
    const int pitch = pixels + pixels / 2 % 5;
    const Bytes picture = noise(lines, stride, 2 * pixels);
    Planes expected(lines, pitch, pitch / 2);
    partPlainly(picture.data(), stride, layout, expected, pitch, pixels, lines);
    Planes planes(lines, pitch, pitch / 2);
    const std::size_t first = layout.u < layout.v ? 1 : 2;
    ASSERT_TRUE(
        zqcc::parted(support::upTo(level),
                     MacropixelLines{picture.data(), stride, layout.isSwapped(), layout.firstChroma() == 0, planes[0],
                                     pitch, planes[first], planes[3 - first], pitch / 2, pixels, lines}));
    ASSERT_TRUE(planes == expected) << lines << " lines of " << pixels << " pixels of variant " << variant << " at "
                                    << support::nameOf(level);
  }
}

TEST(Parts, AreTheSamplesOfEveryMacropixel) {
  atEveryLevel([](Level level) {
    for (uint32_t variant = 0; variant < zqcc::kPackedVariants; ++variant) {
      partMacropixelsAt(level, variant);
    }
  });
}

// --- Pairs ----------------------------------------------------------------------------------------------------------

/// Planes that begin `at` and 3 * `at` bytes behind a boundary, wherever that is.
void partPairsAt(Level level, int count, int at) {
  constexpr int kLines = 3;
  const int stride = 2 * count + at % 7;
  const int pitch = count + at % 3;
  const Bytes pairs = noise(kLines, stride, 2 * count);
  Planes expected(kLines, 0, pitch + 192);
  Planes planes(kLines, 0, pitch + 192);
  for (int line = 0; line < kLines; ++line) {
    for (int i = 0; i < count; ++i) {
      const uint8_t *pair = pairs.data() + line * stride + 2 * i;
      expected[1][at + line * pitch + i] = pair[0];
      expected[2][3 * at + line * pitch + i] = pair[1];
    }
  }
  ASSERT_TRUE(zqcc::parted(support::upTo(level),
                           PairLines{pairs.data(), stride, planes[1] + at, planes[2] + 3 * at, pitch, count, kLines}));
  ASSERT_TRUE(planes == expected) << count << " pairs at " << at << " at " << support::nameOf(level);
}

TEST(Parts, AreTheSamplesOfEveryPair) {
  atEveryLevel([](Level level) {
    for (int at = 0; at < 64; ++at) {
      for (int count = 8; count < 280; ++count) {
        partPairsAt(level, count, at);
      }
    }
  });
}

TEST(Parts, LeaveShortLinesAndWhatHasNoLevel) {
  const Bytes picture(64, 1);
  Planes planes(1, 16, 8);
  const PairLines pairs{picture.data(), 16, planes[1], planes[2], 8, 8, 1};
  const MacropixelLines macropixels{picture.data(), 32, false, false, planes[0], 16, planes[1], planes[2], 8, 16, 1};
  PairLines fewPairs = pairs;
  fewPairs.count = 7;
  MacropixelLines fewPixels = macropixels;
  fewPixels.pixels = 14;
  EXPECT_FALSE(zqcc::parted(zqcc::detectedLevels(), fewPixels));
  EXPECT_FALSE(zqcc::parted(zqcc::setOf(zqcc::LEVEL_PORTABLE), macropixels));
  EXPECT_FALSE(zqcc::parted(zqcc::detectedLevels(), fewPairs));
  EXPECT_FALSE(zqcc::parted(zqcc::setOf(zqcc::LEVEL_PORTABLE), pairs));
  EXPECT_TRUE(planes == Planes(1, 16, 8));
}

} // namespace
