// Products that leave 32 bits, where nothing has to be read or written to see them.
#include "frame/oneshot_layout.h"
#include "frame/resample_tables.h"
#include "frame/route.h"
#include "sameformat/packed_line.h"
#include "support/picture.h"
#include "support/sparse_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

using testing::ElementsAre;
using zqcc::Axis;
using zqcc::Crop;

constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
constexpr bool kWideAddresses = sizeof(void *) > 4;

/// Distances from a buffer's start; nothing is read there.
class OneShotLayout : public testing::Test {
protected:
  void SetUp() override {
    if (!kWideAddresses) {
      GTEST_SKIP() << "addresses have 32 bits";
    }
  }
  /// Where plane i lies behind the buffer's start.
  template <class Byte>
  [[nodiscard]] int64_t distance(const Byte *plane) const {
    return static_cast<int64_t>(reinterpret_cast<std::uintptr_t>(plane) - reinterpret_cast<std::uintptr_t>(&byte_));
  }
  [[nodiscard]] std::array<int64_t, 3> input() const {
    return {distance(p_.inBuf[0]), distance(p_.inBuf[1]), distance(p_.inBuf[2])};
  }
  [[nodiscard]] std::array<int64_t, 3> output() const {
    return {distance(p_.outBuf[0]), distance(p_.outBuf[1]), distance(p_.outBuf[2])};
  }
  void placeInput(int type) {
    p_.inType = type;
    p_.inStride = p_.inHeight = 65536;
    EXPECT_TRUE(zqcc::placeConvertInput(p_, &byte_));
  }

  static constexpr int64_t kLuma = int64_t{1} << 32;
  ConvertParams p_ = support::blankParams();
  uint8_t byte_ = 0;
};

TEST_F(OneShotLayout, WholePicturesOfFourGigabytes) {
  placeInput(COLOR_YUV420_PLANAR);
  EXPECT_THAT(input(), ElementsAre(0, kLuma, kLuma + kLuma / 4));
  placeInput(COLOR_YUV422_PLANAR);
  EXPECT_THAT(input(), ElementsAre(0, kLuma, kLuma + kLuma / 2));
  placeInput(COLOR_YUV420_PACK);
  EXPECT_EQ(distance(p_.inBuf[1]), kLuma);
  p_.outType = COLOR_YVU420_PLANAR;
  p_.outWidth = p_.outHeight = 65536;
  EXPECT_TRUE(zqcc::placeConvertOutput(p_, &byte_));
  EXPECT_THAT(output(), ElementsAre(0, kLuma, kLuma + kLuma / 4));
}

TEST_F(OneShotLayout, CropsFarDownThePicture) {
  // Half way down, 65536 bytes a line: 2^31 bytes of luma, a quarter of that in each chroma plane.
  const Crop crop{65536, 65536, 6, 32768};
  const int64_t top = kLuma / 2;
  zqcc::placeInput420(p_, &byte_, 65536, crop);
  EXPECT_THAT(input(), ElementsAre(top + 6, kLuma + top / 4 + 3, kLuma + kLuma / 4 + top / 4 + 3));
  zqcc::placeInputSemiPlanar(p_, &byte_, 65536, crop);
  EXPECT_EQ(distance(p_.inBuf[0]), top + 6);
  EXPECT_EQ(distance(p_.inBuf[1]), kLuma + top / 2 + 6);
  zqcc::placeInputTwoBytes(p_, &byte_, crop);
  EXPECT_EQ(distance(p_.inBuf[0]), 2 * top + 12);
  zqcc::placeInputBytes(p_, &byte_, crop);
  EXPECT_EQ(distance(p_.inBuf[0]), top + 6);
  zqcc::placeOutputRgb565(p_, &byte_, 65536, 6, 32768);
  EXPECT_EQ(distance(p_.outBuf[0]), 2 * top + 12);
  // Columns, too: twice 2^30 pixels.
  zqcc::placeInputTwoBytes(p_, &byte_, {16, 16, 1 << 30, 0});
  EXPECT_EQ(distance(p_.inBuf[0]), kLuma / 2);
  zqcc::placeOutputRgb565(p_, &byte_, 16, 1 << 30, 0);
  EXPECT_EQ(distance(p_.outBuf[0]), kLuma / 2);
}

TEST(OneShotStride, EndsWhereAStrideDoes) {
  EXPECT_EQ(zqcc::strideOf(2, (1 << 30) - 1), kMost - 1);
  EXPECT_EQ(zqcc::strideOf(2, 1 << 30), zqcc::kNoStride);
  EXPECT_EQ(zqcc::strideOf(3, 715827882), kMost - 1);
  EXPECT_EQ(zqcc::strideOf(3, 715827883), zqcc::kNoStride);
  EXPECT_EQ(zqcc::strideOf(1, kMost), kMost);
  EXPECT_EQ(zqcc::strideOf(2, 0), 0);
  EXPECT_EQ(zqcc::strideOf(2, -5), -10);
  EXPECT_EQ(zqcc::strideOf(2, -(1 << 30)), zqcc::kNoStride);
  EXPECT_EQ(zqcc::strideOf(2, kMost), zqcc::kNoStride); // 2^32 - 2
}

TEST(OneShotCrop, EndsWhereItsPictureDoes) {
  EXPECT_TRUE(zqcc::isInside({16, 16, 8, 4}, 8, 12));
  EXPECT_FALSE(zqcc::isInside({16, 16, 8, 4}, 9, 12));
  EXPECT_FALSE(zqcc::isInside({16, 16, 8, 4}, 8, 13));
  EXPECT_TRUE(zqcc::isInside({16, 16, 0, 0}, 1, 1));
  EXPECT_FALSE(zqcc::isInside({16, 16, -1, 0}, 1, 1));
  EXPECT_FALSE(zqcc::isInside({16, 16, 0, -1}, 1, 1));
  // What is no picture leaves none.
  EXPECT_TRUE(zqcc::isInside({16, 16, 90, 90}, 0, 12));
  EXPECT_TRUE(zqcc::isInside({16, 16, 90, 90}, 8, 0));
  EXPECT_FALSE(zqcc::isInside({16, 16, 90, 0}, 1, 12));
  EXPECT_FALSE(zqcc::isInside({kMost, kMost, kMost, 0}, kMost, 1));
  EXPECT_FALSE(zqcc::isInside({kMost, kMost, 0, kMost}, 1, kMost));
}

/// A crop of packed input counts its columns in bytes: 2^30 + 8 pixels are 2^31 + 16 of them.
TEST(OneShotCrop, PackedPixelsAreCountedIn64Bits) {
  const support::Block in(1024);
  support::Canvas canvas = support::Canvas::forPicture(COLOR_RGB565, 16, 16, 32);
  EXPECT_EQ(zqYUV422PacktoRGB16Rotate(COLOR_YUV422_YUYV, in.data(), canvas.plane(0), 16, 0, 0, 0, (1 << 30) + 8, 4, 0,
                                      16, 0, 0, ROTATION_NONE),
            CC_ERR_ARGUMENT);
  EXPECT_EQ(canvas.touched(), "");
}

zqcc::ResizeRatioClass ratio(int32_t in, int32_t out) {
  ConvertParams p = support::blankParams();
  p.inWidth = p.inHeight = in;
  p.outWidth = p.outHeight = out;
  return zqcc::ratioClassOf(p);
}

TEST(RatioClassOfLargeSizes, ProductsAreComparedIn64Bits) {
  EXPECT_EQ(ratio(1 << 30, 3 << 28), zqcc::RATIO_THREE_QUARTERS);
  EXPECT_EQ(ratio(1 << 30, 7 << 28), zqcc::RATIO_GENERAL); // 3 in and 4 out differ by 2^32
  EXPECT_EQ(ratio(1 << 30, 3 << 29), zqcc::RATIO_THREE_HALVES);
  EXPECT_EQ(ratio(1500000000, 102516352), zqcc::RATIO_GENERAL); // 3 in and 2 out differ by 2^32
  EXPECT_EQ(ratio((1 << 30) - 1, kMost - 1), zqcc::RATIO_DOUBLE);
}

using Words = std::vector<int32_t>;

template <class Build>
Words built(std::size_t words, const Axis &axis, Build build) {
  Words table(words);
  build(table.data(), axis);
  return table;
}

/// 8388608 samples to two positions: a step of 2^22 samples is one of 2^32 in 1/1024.
TEST(TablesOfLargeSizes, StepsLeave32Bits) {
  constexpr Axis kAxis{8388608, 2};
  EXPECT_EQ(zqcc::stepOf(kAxis), int64_t{1} << 32);
  EXPECT_THAT(built(6, kAxis, zqcc::buildNearest), ElementsAre(0, 4194304, 255, 255, 255, 255));
  const Words box = built(30, kAxis, [](int32_t *t, const Axis &a) { zqcc::buildBox(t, a, zqcc::boxSpacing(a)); });
  // Every 2^20th of the 2^22 samples behind a position.
  EXPECT_THAT(Words(box.begin(), box.begin() + 5), ElementsAre(1, 1048577, 2097153, 3145729, -1));
  EXPECT_THAT(Words(box.begin() + 15, box.begin() + 20), ElementsAre(4194305, 5242881, 6291457, 7340033, -1));
}

/// Positions times steps leave 32 bits long before the samples do.
TEST(TablesOfLargeSizes, PositionsTimesStepsLeave32Bits) {
  constexpr Axis kAxis{1 << 23, 1 << 12}; // every 2048th sample
  const Words nearest = built(zqcc::tableWords(zqcc::TableFormat::Nearest, kAxis, 0), kAxis, zqcc::buildNearest);
  const Words box =
      built(15U << 12, kAxis, [](int32_t *t, const Axis &a) { zqcc::buildBox(t, a, zqcc::boxSpacing(a)); });
  for (const int i : {0, 1, 1023, 1024, 2048, 4095}) {
    EXPECT_EQ(nearest.at(static_cast<std::size_t>(i)), 2048 * i);
    EXPECT_EQ(box.at(15 * static_cast<std::size_t>(i)), 2048 * i + 1);
  }
}

TEST(TablesOfLargeSizes, TheLongestSourceThereIs) {
  // One position: 2147483647 samples, every 536870911th.
  const Words box = built(15, {kMost, 1}, [](int32_t *t, const Axis &a) { zqcc::buildBox(t, a, zqcc::boxSpacing(a)); });
  EXPECT_THAT(Words(box.begin(), box.begin() + 6), ElementsAre(1, 536870912, 1073741823, 1610612734, 2147483645, -1));
  EXPECT_THAT(Words(box.begin() + 6, box.end()), testing::Each(-1));
  // Three: 2147483647 / 3 * 1024 is 733007751509.33, truncated.
  EXPECT_THAT(built(7, {kMost, 3}, zqcc::buildNearest), ElementsAre(0, 715827882, 1431655764, 255, 255, 255, 255));
  // Single precision has 24 bits: 2147483647 / 3 is 715827904, twice that 1431655808.
  EXPECT_THAT(built(9, {kMost, 3}, zqcc::buildBilinear),
              ElementsAre(0, 0, 1024, 715827904, 0, 1024, 1431655808, 0, 1024));
  // Position 1 closes the first group, position 2 opens another; what follows stays as empty as it was.
  EXPECT_THAT(built(14, {kMost, 3}, zqcc::buildGrouped),
              ElementsAre(2, 0, 0, 1024, 715827904, 0, 1024, 0, 1, 1431655808, 0, 1024, 0, 0));
  EXPECT_EQ(zqcc::tableWords(zqcc::TableFormat::Grouped, {kMost, 3}, 0), 9U + 134217727U + 2U);
  EXPECT_EQ(zqcc::tableWords(zqcc::TableFormat::Nearest, {kMost, kMost}, 1), uint64_t{15} * kMost + 4);
  EXPECT_EQ(zqcc::tableWords(zqcc::TableFormat::Nearest, {kMost, kMost}, 0), uint64_t{3} * kMost + 4);
  EXPECT_EQ(zqcc::tableWords(zqcc::TableFormat::Box, {kMost, kMost}, 3), uint64_t{15} * kMost + 4);
  EXPECT_EQ(zqcc::tableWords(zqcc::TableFormat::Bilinear, {kMost, kMost}, 0), uint64_t{3} * kMost + 4);
}

/// In single precision the last of 13103685 positions rounds up to 2^31, behind every sample that there is. Groups are
/// full and empty by turns: eight words for two positions.
TEST(TablesOfLargeSizes, PositionsAreRoundedUpToTheEndOfTheType) {
  constexpr Axis kAxis{kMost, 13103685};
  constexpr std::size_t kLastGroup = std::size_t{8} * (13103685 / 2);
  const support::SparsePages pages((kLastGroup + 4) * sizeof(int32_t));
  if (!pages.areThere()) {
    GTEST_SKIP() << pages.reason();
  }
  auto *table = reinterpret_cast<int32_t *>(pages.data());
  zqcc::buildGrouped(table, kAxis);
  EXPECT_THAT(Words(table, table + 8), ElementsAre(2, 0, 0, 1024, 163, 905, 119, 0));
  EXPECT_THAT(Words(table + kLastGroup, table + kLastGroup + 4), ElementsAre(1, kMost - 2, 0, 1024));
}

TEST(PackedLines, BytesLeave32Bits) {
  if (!kWideAddresses) {
    GTEST_SKIP() << "lengths have 32 bits";
  }
  EXPECT_EQ(zqcc::lineBytes(1 << 30, kMost), int64_t{1} << 31);
  EXPECT_EQ(zqcc::macropixelsOf(kMost), 1 << 30);
  EXPECT_EQ(zqcc::lineBytes(kMost, kMost), int64_t{2} * kMost); // cut: no stride has room for its last group
  EXPECT_EQ(zqcc::lineBytes(kMost, int64_t{1} << 32), int64_t{1} << 32);
}

} // namespace
