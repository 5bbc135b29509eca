// The answers of the one-shot functions to arguments that they do not take.
#include "support/picture.h"
#include "zqColorConversion.h"

#include <gtest/gtest.h>

#include <array>

namespace {

class OneShotCodes : public testing::Test {
protected:
  void SetUp() override { support::fill(in_.data(), in_.size(), support::Fill::Noise, 4); }
  void TearDown() override { EXPECT_EQ(canvas_.touched(), ""); }

  [[nodiscard]] const uint8_t *in() const { return in_.data(); }
  uint8_t *out() { return canvas_.plane(0); }

  uint32_t scale(int type, int quality) { return zqScaleFrame(in(), out(), 16, 16, 8, 8, type, quality); }
  uint32_t scaleCrop(int type, int quality) {
    return zqScaleCroppedFrame(in(), out(), 16, 16, 2, 2, 8, 8, 8, 8, type, quality);
  }
  uint32_t rotate(int type, int rotation) { return zqRotateFrame(in(), out(), 16, 16, 16, 16, type, rotation); }
  uint32_t rotateCrop(int type, int rotation) {
    return zqRotateCroppedFrame(in(), out(), 16, 16, 2, 2, 8, 8, 8, 8, type, rotation);
  }
  uint32_t convert(int inType, int outType) {
    return zqColorConvert(in(), out(), inType, outType, 16, 16, 16, nullptr);
  }

private:
  std::array<uint8_t, 1024> in_{};
  support::Canvas canvas_{{{1024, 1, 1024}}};
};

constexpr std::array<int, 14> kNeverLaidOut{0, 1, 2, 4, 5, 10, 11, 13, 32, 34, 35, 37, 99, -1};

TEST_F(OneShotCodes, ScalingTakesSomeTypesOnly) {
  for (const int type : kNeverLaidOut) {
    EXPECT_EQ(scale(type, 0), CC_ERR_IN_TYPE) << type;
    EXPECT_EQ(scale(type, 1), CC_ERR_IN_TYPE) << type;
    EXPECT_EQ(scaleCrop(type, 0), CC_ERR_IN_TYPE) << type;
    EXPECT_EQ(scaleCrop(type, 2), CC_ERR_IN_TYPE) << type;
  }
  // Cropping leaves out the exchanged order, which the whole frame may have.
  EXPECT_EQ(scaleCrop(COLOR_YVU420_PLANAR, 0), CC_ERR_IN_TYPE);
}

TEST_F(OneShotCodes, FilterTypesAreCheckedBeforeTheModes) {
  for (const int type : {12, 14, 15, 16, 17, 31, 11}) {
    for (const int quality : {1, 2, 3, 4, -1}) {
      EXPECT_EQ(scale(type, quality), CC_ERR_IN_TYPE) << type;
      EXPECT_EQ(scaleCrop(type, quality), CC_ERR_IN_TYPE) << type;
    }
  }
  for (const int type : {3, 6, 7, 8, 9, 30}) {
    for (const int quality : {3, 4, -1}) {
      EXPECT_EQ(scale(type, quality), CC_ERR_ARGUMENT) << type;
      EXPECT_EQ(scaleCrop(type, quality), CC_ERR_ARGUMENT) << type;
    }
  }
}

TEST_F(OneShotCodes, SetUpComesBeforeTheLayout) {
  // Types without a layout are refused after set-up has looked at the modes and sizes.
  EXPECT_EQ(rotate(COLOR_YUV420_PACK, 8), CC_ERR_ARGUMENT);
  EXPECT_EQ(rotate(COLOR_YVU420_PLANAR, -1), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleFrame(in(), out(), 1, 16, 8, 8, COLOR_YUV420_PACK, 0), CC_ERR_ARGUMENT);
}

TEST_F(OneShotCodes, TurningTakesSomeTypesOnly) {
  for (const int type : kNeverLaidOut) {
    EXPECT_EQ(rotate(type, 3), CC_ERR_IN_TYPE) << type;
    EXPECT_EQ(rotateCrop(type, 2), CC_ERR_IN_TYPE) << type;
  }
  EXPECT_EQ(rotate(COLOR_YVU420_PLANAR, 3), CC_ERR_IN_TYPE);
  EXPECT_EQ(rotateCrop(COLOR_YVU420_PLANAR, 4), CC_ERR_IN_TYPE);
  for (const int type : {3, 6, 17, 30, 31}) {
    EXPECT_EQ(rotate(type, 8), CC_ERR_ARGUMENT);
    EXPECT_EQ(rotateCrop(type, -1), CC_ERR_ARGUMENT);
  }
}

TEST_F(OneShotCodes, ConvertingNeedsTwoTypesThatItCanLayOut) {
  for (const int type : {0, 3, 6, 11, 12, 30, 32, 99}) {
    EXPECT_EQ(convert(type, type), CC_ERR_SAME_TYPE) << type;
  }
  for (const int type : {0, 2, 4, 12, 13, 30, 31, 32, 34, 37, 99, -1}) {
    EXPECT_EQ(convert(type, type == 30 ? 31 : 30), CC_ERR_IN_TYPE) << type;
  }
  for (const int type : {0, 1, 6, 11, 13, 34, 35, 99, -1}) {
    EXPECT_EQ(convert(3, type), CC_ERR_IN_TYPE) << type;
  }
  // Laid out, but without a route.
  for (const int type : {6, 7, 8, 9, 14, 15, 16, 17}) {
    EXPECT_EQ(convert(type, COLOR_YVU420_PLANAR), CC_ERR_OUT_TYPE) << type;
  }
}

TEST_F(OneShotCodes, PackedConversionTakesPackedTypesOnly) {
  for (const int type : {0, 1, 2, 3, 4, 5, 10, 11, 12, 13, 18, 30, 31, 32, 34, 35, 37, 99, -1}) {
    EXPECT_EQ(zqYUV422PacktoRGB16Rotate(type, in(), out(), 16, 0, 0, 0, 8, 8, 0, 16, 0, 0, 2), CC_ERR_SAME_TYPE)
        << type;
    // The type is looked at before anything else.
    EXPECT_EQ(zqYUV422PacktoRGB16Rotate(type, in(), out(), 16, 0, 0, 0, 8, 8, 0, 16, 0, 0, 8), CC_ERR_SAME_TYPE);
  }
}

TEST_F(OneShotCodes, NullBuffersAreArguments) {
  for (const int offset : {0, 2}) {
    for (const bool noInput : {true, false}) {
      const uint8_t *source = noInput ? nullptr : in();
      uint8_t *target = noInput ? out() : nullptr;
      EXPECT_EQ(zqScaleFrame(source, target, 16, 16, 8, 8, 3, 0), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqScaleCroppedFrame(source, target, 16, 16, offset, offset, 8, 8, 8, 8, 30, 0), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqRotateFrame(source, target, 16, 16, 16, 16, 3, 3), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqRotateCroppedFrame(source, target, 16, 16, offset, offset, 8, 8, 8, 8, 6, 3), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqColorConvert(source, target, 11, 30, 16, 16, 16, nullptr), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqYUV420PlanartoRGB16Rotate(source, target, 16, 16, offset, offset, 8, 8, 0, 16, offset, offset, 2),
                CC_ERR_ARGUMENT);
      EXPECT_EQ(zqYUV422PacktoRGB16Rotate(6, source, target, 16, 0, offset, offset, 8, 8, 0, 16, offset, offset, 2),
                CC_ERR_ARGUMENT);
      EXPECT_EQ(zqYUV420PacktoRGB16Rotate(source, target, 16, 16, offset, offset, 8, 8, 0, 16, offset, offset, 3),
                CC_ERR_ARGUMENT);
      EXPECT_EQ(zqYUV420Pack2toRGB16Rotate(source, target, 16, 16, offset, offset, 8, 8, 0, 16, offset, offset, 4),
                CC_ERR_ARGUMENT);
    }
  }
}

TEST_F(OneShotCodes, SizesThatCannotBe) {
  EXPECT_EQ(zqScaleFrame(in(), out(), 16, 16, 0, 8, 30, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleFrame(in(), out(), 16, 16, 8, -1, 30, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleFrame(in(), out(), 1, 16, 8, 8, 30, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleFrame(in(), out(), 16, 0, 8, 8, 3, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleFrame(in(), out(), 2, 2, 2049, 2, 6, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqScaleCroppedFrame(in(), out(), 16, 16, 0, 0, 1, 8, 8, 8, 30, 0), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqColorConvert(in(), out(), 3, 30, 1, 16, 16, nullptr), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqYUV420PlanartoRGB16Rotate(in(), out(), 16, 16, 0, 0, 8, 1, 0, 16, 0, 0, 2), CC_ERR_ARGUMENT);
}

TEST_F(OneShotCodes, PartsThatLeaveTheirPicture) {
  struct Part {
    int left, top, width, height;
  };
  for (const Part &part : {Part{-2, 0, 8, 8},
                           {0, -2, 8, 8},
                           {10, 0, 8, 8},
                           {0, 10, 8, 8},
                           {2, 0, 16, 8},
                           {0, 2, 8, 16},
                           {INT32_MAX, 0, 8, 8},
                           {0, INT32_MAX, 8, 8},
                           {INT32_MIN, INT32_MIN, 8, 8}}) {
    const auto [left, top, width, height] = part;
    SCOPED_TRACE(testing::Message() << left << ", " << top << ", " << width << " x " << height);
    for (const int type : {3, 6, 17, 30, 31}) {
      EXPECT_EQ(zqScaleCroppedFrame(in(), out(), 16, 16, left, top, width, height, 8, 8, type, 0), CC_ERR_ARGUMENT);
      EXPECT_EQ(zqRotateCroppedFrame(in(), out(), 16, 16, left, top, width, height, 16, 16, type, 3), CC_ERR_ARGUMENT);
    }
    for (const auto convert : {zqYUV420PlanartoRGB16Rotate, zqYUV420PacktoRGB16Rotate, zqYUV420Pack2toRGB16Rotate}) {
      EXPECT_EQ(convert(in(), out(), 16, 16, left, top, width, height, 0, 16, 0, 0, 2), CC_ERR_ARGUMENT);
    }
  }
  // Columns of the packed one are bytes, and its lines are not counted.
  for (const auto &[left, top] : {std::array<int, 2>{-4, 0}, {20, 0}, {0, -2}}) {
    EXPECT_EQ(zqYUV422PacktoRGB16Rotate(6, in(), out(), 16, 0, left, top, 8, 8, 0, 16, 0, 0, 2), CC_ERR_ARGUMENT);
  }
}

} // namespace
