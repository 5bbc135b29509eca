// What calls leave behind that fail or have nothing to do: the matrix in force, and the caller's record.
#include "support/picture.h"
#include "tables/color_matrix.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::array<double, 4> kCoefficients{3.0, 5.0, 7.0, -9.0};

class LeftBehind : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(zqCCInit(&handle_), CC_OK); }
  void TearDown() override {
    EXPECT_EQ(zqCCUninit(handle_), CC_OK);
    constexpr double kDither[4] = {2 / 2048.0, -1 / 2048.0, 1 / 2048.0, -3 / 2048.0};
    zqcc::selectCustomMatrix(kDither);
    zqcc::selectMatrix(MATRIX_BT601);
  }
  uint32_t select(std::uintptr_t index) {
    void *value = nullptr;
    std::memcpy(&value, &index, sizeof value);
    return zqCCSetParameter(handle_, PARAM_COLOR_MATRIX, value);
  }
  static void expectInForce(uint32_t index) { EXPECT_EQ(zqcc::currentMatrix(), zqcc::matrixEntry(index)); }
  static uint32_t convert(int inType, int outType, int stride, const double *coefficients) {
    std::array<uint8_t, 1024> in{};
    std::array<uint8_t, 1024> out{};
    return zqColorConvert(in.data(), out.data(), inType, outType, 16, 16, stride, coefficients);
  }

  ConvertContext *handle_ = nullptr;
};

/// Coefficients are taken over before set-up's answer is looked at.
TEST_F(LeftBehind, CustomMatrixOfACallWhoseSetUpFails) {
  ASSERT_EQ(select(MATRIX_BT709), CC_OK);
  // Scratch planes of a negative size cannot be set up.
  EXPECT_EQ(convert(COLOR_YUV420_PACK, COLOR_RGB565, -16, kCoefficients.data()), CC_ERR_ARGUMENT);
  expectInForce(MATRIX_CUSTOM);
  const zqcc::ColorMatrix &custom = *zqcc::matrixEntry(MATRIX_CUSTOM);
  EXPECT_EQ(custom.crToR, 3 * 2048);
  EXPECT_EQ(custom.crToG, 5 * 2048);
  EXPECT_EQ(custom.cbToB, 7 * 2048);
  EXPECT_EQ(custom.cbToG, -9 * 2048);
}

TEST_F(LeftBehind, Bt601OfAFailedCallWithoutCoefficients) {
  ASSERT_EQ(select(MATRIX_BT709), CC_OK);
  EXPECT_EQ(convert(COLOR_YUV420_PACK, COLOR_RGB565, -16, nullptr), CC_ERR_ARGUMENT);
  expectInForce(MATRIX_BT601);
}

/// Equal types are refused before anything is done with the coefficients.
TEST_F(LeftBehind, Bt601OfACallThatIsRefusedForItsTypes) {
  ASSERT_EQ(select(MATRIX_BT709), CC_OK);
  EXPECT_EQ(convert(COLOR_RGB565, COLOR_RGB565, 32, kCoefficients.data()), CC_ERR_SAME_TYPE);
  expectInForce(MATRIX_BT601);
  EXPECT_NE(zqcc::matrixEntry(MATRIX_CUSTOM)->crToR, 3 * 2048);
}

TEST_F(LeftBehind, MatrixIndexIsLookedAtInFull) {
  if constexpr (sizeof(std::uintptr_t) > 4) {
    ASSERT_EQ(select(MATRIX_BT709), CC_OK);
    const zqcc::ColorMatrix *const before = zqcc::currentMatrix();
    for (const std::uint64_t low : {0U, 1U, 2U, 3U}) {
      EXPECT_EQ(select(static_cast<std::uintptr_t>((std::uint64_t{1} << 32) + low)), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqcc::currentMatrix(), before);
    }
  } else {
    GTEST_SKIP() << "values have 32 bits";
  }
}

/// A frame without lines or columns is converted like any other; there is only nothing to write.
TEST_F(LeftBehind, PlanesOfAnEmptyFrameAreExchanged) {
  const std::array<uint8_t, 4> planes{};
  for (const int type : {COLOR_YVU420_PLANAR, COLOR_YVU422_PLANAR}) {
    for (const auto &[width, height] : {std::array<int, 2>{0, 16}, {16, 0}, {0, 0}}) {
      for (const int outType : {COLOR_RGB565, COLOR_RGB24, COLOR_YUV420_PLANAR}) {
        ConvertParams p = support::blankParams();
        p.inType = type;
        p.outType = outType;
        p.inWidth = p.outWidth = width;
        p.inHeight = p.outHeight = height;
        for (int i = 0; i < 3; ++i) {
          p.inBuf[i] = &planes.at(static_cast<std::size_t>(i));
        }
        EXPECT_EQ(zqCCProcess(handle_, &p), CC_OK);
        EXPECT_EQ(p.inBuf[0], &planes[0]);
        EXPECT_EQ(p.inBuf[1], &planes[2]) << "type " << type << " to " << outType;
        EXPECT_EQ(p.inBuf[2], &planes[1]) << "type " << type << " to " << outType;
      }
    }
  }
}

TEST_F(LeftBehind, PlanesOfAnEmptyFrameThatKeepsItsTypeStay) {
  const std::array<uint8_t, 4> planes{};
  ConvertParams p = support::blankParams();
  p.inType = p.outType = COLOR_YVU420_PLANAR;
  p.inBuf[1] = &planes[1];
  p.inBuf[2] = &planes[2];
  EXPECT_EQ(zqCCProcess(handle_, &p), CC_OK);
  EXPECT_EQ(p.inBuf[1], &planes[1]);
  EXPECT_EQ(p.inBuf[2], &planes[2]);
}

} // namespace
