#include "tables/color_matrix.h"

#include "zqColorConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using zqcc::ColorMatrix;

void expectEntry(uint32_t index, int32_t crToR, int32_t crToG, int32_t cbToB, int32_t cbToG) {
  const ColorMatrix &m = *zqcc::matrixEntry(index);
  EXPECT_EQ(crToR, m.crToR);
  EXPECT_EQ(crToG, m.crToG);
  EXPECT_EQ(cbToB, m.cbToB);
  EXPECT_EQ(cbToG, m.cbToG);
}

/// Leaves the process as it found it: the dither words in the custom entry, BT.601 in force.
class ColorMatrixTest : public ::testing::Test {
protected:
  ~ColorMatrixTest() override {
    const double dither[4] = {2 / 2048.0, -1 / 2048.0, 1 / 2048.0, -3 / 2048.0};
    zqcc::selectCustomMatrix(dither);
    zqcc::selectMatrix(MATRIX_BT601);
  }
  void SetUp() override { ASSERT_EQ(CC_OK, zqCCInit(&handle)); }
  void TearDown() override { EXPECT_EQ(CC_OK, zqCCUninit(handle)); }
  uint32_t select(std::uintptr_t index) {
    return zqCCSetParameter(handle, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(index));
  }
  uint32_t custom(double a, double b, double c, double d) {
    double values[4] = {a, b, c, d};
    return zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, values);
  }
  ConvertContext *handle = nullptr;
};

TEST_F(ColorMatrixTest, BuiltInEntries) {
  expectEntry(0, 1471152, 748683, 1859125, 360710);
  expectEntry(1, 1646369, 489055, 1945737, 196083);
  expectEntry(2, 0, 0, 0, 0);
}

TEST_F(ColorMatrixTest, SelectionPointsAtTheEntry) {
  for (std::uintptr_t n = 0; n < 4; ++n) {
    EXPECT_EQ(CC_OK, select(n));
    EXPECT_EQ(zqcc::matrixEntry(static_cast<uint32_t>(n)), zqcc::currentMatrix());
  }
}

TEST_F(ColorMatrixTest, IndexAboveThreeChangesNothing) {
  ASSERT_EQ(CC_OK, select(1));
  for (const std::uintptr_t n : {std::uintptr_t{4}, std::uintptr_t{0x80000000U}, ~std::uintptr_t{0}}) {
    EXPECT_EQ(CC_ERR_ARGUMENT, select(n));
    EXPECT_EQ(zqcc::matrixEntry(1), zqcc::currentMatrix());
  }
}

TEST_F(ColorMatrixTest, InitReturnsToBt601) {
  ASSERT_EQ(CC_OK, select(2));
  ConvertContext *other = nullptr;
  ASSERT_EQ(CC_OK, zqCCInit(&other));
  EXPECT_EQ(zqcc::matrixEntry(0), zqcc::currentMatrix());
  EXPECT_EQ(CC_OK, zqCCUninit(other));
}

TEST_F(ColorMatrixTest, CustomOnesAre2048AndReplaceTheRedBlueDither) {
  ASSERT_EQ(CC_OK, custom(1.0, 1.0, 1.0, 1.0));
  expectEntry(3, 2048, 2048, 2048, 2048);
  const zqcc::DitherWords words = zqcc::currentDither();
  for (int line = 0; line < 2; ++line) {
    for (int pixel = 0; pixel < 2; ++pixel) {
      EXPECT_EQ(2048, words.redBlue[line][pixel]);
    }
  }
  EXPECT_EQ(0, words.green[0][0]);
  EXPECT_EQ(-3, words.green[0][1]);
  EXPECT_EQ(-2, words.green[1][0]);
  EXPECT_EQ(-1, words.green[1][1]);
}

TEST_F(ColorMatrixTest, CustomValuesTruncateTowardsZeroAndSaturate) {
  ASSERT_EQ(CC_OK, custom(1.5 / 2048, -1.5 / 2048, std::nan(""), 1e300));
  expectEntry(3, 1, -1, 0, std::numeric_limits<int32_t>::max());
  const double inf = std::numeric_limits<double>::infinity();
  ASSERT_EQ(CC_OK, custom(-inf, inf, 1048575.9999, -1048576.0));
  expectEntry(3, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(), 2147483647,
              std::numeric_limits<int32_t>::min());
}

} // namespace
