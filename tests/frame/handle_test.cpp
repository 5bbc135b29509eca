// The life of a handle: null arguments, set-ups one after another, parameters, the matrix that all handles share, and
// what a frame does to the caller's record.
#include "frame/context.h"
#include "reference/same_format.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>

namespace {

void *indexValue(uintptr_t index) {
  void *value = nullptr;
  static_assert(sizeof value == sizeof index);
  std::memcpy(&value, &index, sizeof value);
  return value;
}

uint32_t setMatrix(ConvertContext *handle, uintptr_t index) {
  return zqCCSetParameter(handle, PARAM_COLOR_MATRIX, indexValue(index));
}

uint32_t setCustom(ConvertContext *handle, std::array<double, 4> coefficients) {
  return zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, coefficients.data());
}

class Handle : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(zqCCInit(&handle_), CC_OK); }

  /// The custom entry is shared with the dither words and outlives every handle: put the words back.
  void TearDown() override {
    EXPECT_EQ(setCustom(handle_, {2.0 / 2048, -1.0 / 2048, 1.0 / 2048, -3.0 / 2048}), CC_OK);
    EXPECT_EQ(setMatrix(handle_, MATRIX_BT601), CC_OK);
    EXPECT_EQ(zqCCUninit(handle_), CC_OK);
  }

  /// A packed picture of one colour, halved: a route that follows the matrix and does not dither.
  uint32_t probe(uint8_t luma, uint8_t u, uint8_t v) {
    std::array<uint8_t, 64> in{};
    for (std::size_t i = 0; i < in.size(); i += 4) {
      in[i] = in[i + 2] = luma;
      in[i + 1] = u;
      in[i + 3] = v;
    }
    std::array<uint8_t, 16> out{};
    ConvertParams p = support::blankParams();
    p.inType = COLOR_YUV422_YUYV;
    p.inWidth = 8;
    p.inHeight = 4;
    p.inStride = 16;
    p.inBuf[0] = in.data();
    p.outType = COLOR_RGB565;
    p.outWidth = 4;
    p.outHeight = 2;
    p.outStride = 8;
    p.outBuf[0] = out.data();
    p.isResize = 1;
    EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &p), CC_OK);
    EXPECT_EQ(zqCCProcess(handle_, &p), CC_OK);
    const auto word = static_cast<uint32_t>(out[0] | (out[1] << 8));
    for (std::size_t i = 0; i < out.size(); i += 2) {
      EXPECT_EQ(static_cast<uint32_t>(out[i] | (out[i + 1] << 8)), word);
    }
    return word;
  }
  /// Luma 128, Cb 128, Cr 192.
  uint32_t reddish() { return probe(128, 128, 192); }

  ConvertContext *handle_ = nullptr;
};

// The reddish colour in each matrix: 64 times Cr to R and Cr to G over 2^20, added to and taken from 128, to 5 and 6
// bits: 601: +89, -45; 709: +100, -29; 896 and 448 as custom values: +112 (240 >> 3 is 30, which the table makes 29),
// -56.
constexpr uint32_t kBt601 = (27U << 11) | (20U << 5) | 16U;
constexpr uint32_t kBt709 = (28U << 11) | (24U << 5) | 16U;
constexpr uint32_t kGrey = (16U << 11) | (32U << 5) | 16U;
constexpr uint32_t kCustom = (29U << 11) | (18U << 5) | 16U;
constexpr std::array<double, 4> kCustomValues{896.0, 448.0, 0.0, 0.0};

TEST_F(Handle, NullArguments) {
  EXPECT_EQ(zqCCInit(nullptr), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCUninit(nullptr), CC_ERR_ARGUMENT);
  ConvertParams p = support::blankParams();
  EXPECT_EQ(zqCCSetParameter(nullptr, PARAM_CONVERT_DESC, &p), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCSetParameter(nullptr, PARAM_COLOR_MATRIX, indexValue(MATRIX_BT709)), CC_ERR_ARGUMENT);
  std::array<double, 4> values{};
  EXPECT_EQ(zqCCSetParameter(nullptr, PARAM_CUSTOM_MATRIX, values.data()), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, nullptr), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CUSTOM_MATRIX, nullptr), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCProcess(nullptr, &p), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCProcess(handle_, nullptr), CC_ERR_ARGUMENT);
  EXPECT_EQ(reddish(), kBt601);
}

TEST_F(Handle, UnknownParameterChangesNothing) {
  ASSERT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  ConvertParams p = support::blankParams();
  for (const uint32_t id : {0U, 1U, 0x40E00000U, 0x40E00004U, 0xFFFFFFFFU}) {
    EXPECT_EQ(zqCCSetParameter(handle_, id, &p), CC_ERR_PARAM_ID);
    EXPECT_EQ(zqCCSetParameter(handle_, id, nullptr), CC_ERR_PARAM_ID);
  }
  EXPECT_EQ(reddish(), kBt709);
}

TEST_F(Handle, MatrixIsSelectedByIndex) {
  EXPECT_EQ(reddish(), kBt601);
  EXPECT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  EXPECT_EQ(reddish(), kBt709);
  EXPECT_EQ(setMatrix(handle_, MATRIX_GREY), CC_OK);
  EXPECT_EQ(reddish(), kGrey);
  EXPECT_EQ(setCustom(handle_, kCustomValues), CC_OK);
  EXPECT_EQ(reddish(), kCustom);
  EXPECT_EQ(setMatrix(handle_, MATRIX_BT601), CC_OK);
  EXPECT_EQ(reddish(), kBt601);
  EXPECT_EQ(setMatrix(handle_, MATRIX_CUSTOM), CC_OK);
  EXPECT_EQ(reddish(), kCustom);
}

TEST_F(Handle, MatrixIndexAboveThreeIsRefused) {
  ASSERT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  for (const uintptr_t index : {uintptr_t{4}, uintptr_t{5}, uintptr_t{0x7FFFFFFF}, ~uintptr_t{0}}) {
    EXPECT_EQ(setMatrix(handle_, index), CC_ERR_ARGUMENT);
  }
  EXPECT_EQ(reddish(), kBt709);
}

TEST_F(Handle, RecordsTheMatrixThatWasSelectedByIndex) {
  EXPECT_EQ(handle_->matrix, nullptr);
  ASSERT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  const zqcc::ColorMatrix *const bt709 = handle_->matrix;
  ASSERT_NE(bt709, nullptr);
  EXPECT_EQ(bt709->crToR, 1646369);
  EXPECT_EQ(bt709->crToG, 489055);
  EXPECT_EQ(bt709->cbToB, 1945737);
  EXPECT_EQ(bt709->cbToG, 196083);
  // A custom matrix is in force for everybody and recorded by nobody.
  ASSERT_EQ(setCustom(handle_, kCustomValues), CC_OK);
  EXPECT_EQ(reddish(), kCustom);
  EXPECT_EQ(handle_->matrix, bt709);
  // Neither a refused index nor the choice of another handle is recorded.
  EXPECT_EQ(setMatrix(handle_, 4), CC_ERR_ARGUMENT);
  ConvertContext *other = nullptr;
  ASSERT_EQ(zqCCInit(&other), CC_OK);
  ASSERT_EQ(setMatrix(other, MATRIX_GREY), CC_OK);
  EXPECT_EQ(other->matrix->crToR, 0);
  EXPECT_EQ(zqCCUninit(other), CC_OK);
  EXPECT_EQ(handle_->matrix, bt709);
  // The entries stand in a row: BT.601, BT.709, grey, custom.
  for (const uint32_t index : {0U, 1U, 2U, 3U}) {
    ASSERT_EQ(setMatrix(handle_, index), CC_OK);
    EXPECT_EQ(handle_->matrix - bt709, static_cast<std::ptrdiff_t>(index) - 1);
  }
}

TEST_F(Handle, CustomCoefficientsTruncateSaturateAndIgnoreNoNumbers) {
  // 1.0 weighs 1/512 of what it would in a built-in entry: a Cr of 64 adds nothing at all.
  ASSERT_EQ(setCustom(handle_, {1.0, 1.0, 1.0, 1.0}), CC_OK);
  EXPECT_EQ(reddish(), kGrey);
  // Cr 129 and Cb 129 show the coefficients themselves, over 2^20: 2047 saturates red, -2048 empties blue.
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double huge : {1e300, kInfinity, 1048576.0}) {
    ASSERT_EQ(setCustom(handle_, {huge, std::nan(""), -huge, 0.0}), CC_OK);
    EXPECT_EQ(probe(128, 129, 129), (31U << 11) | (32U << 5));
  }
  // 512 * 8 is 8 * 2^20: eight levels. A hair less is truncated to seven, toward zero on either side.
  ASSERT_EQ(setCustom(handle_, {4096.0, 0.0, -4096.0, 0.0}), CC_OK);
  EXPECT_EQ(probe(128, 129, 129), (17U << 11) | (32U << 5) | 15U);
  ASSERT_EQ(setCustom(handle_, {4095.9999, 0.0, -4096.0004, 0.0}), CC_OK);
  EXPECT_EQ(probe(128, 129, 129), (16U << 11) | (32U << 5) | 15U);
}

TEST_F(Handle, InitAndOneShotFunctionsSelectBt601) {
  ASSERT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  ASSERT_EQ(reddish(), kBt709);
  ConvertContext *other = nullptr;
  ASSERT_EQ(zqCCInit(&other), CC_OK);
  EXPECT_EQ(reddish(), kBt601);
  // Any handle sets it for all; releasing one changes nothing.
  ASSERT_EQ(setMatrix(other, MATRIX_GREY), CC_OK);
  EXPECT_EQ(zqCCUninit(other), CC_OK);
  EXPECT_EQ(reddish(), kGrey);
  ASSERT_EQ(setMatrix(handle_, MATRIX_BT709), CC_OK);
  const std::array<uint8_t, 8> in{};
  std::array<uint8_t, 8> out{};
  EXPECT_EQ(zqScaleFrame(in.data(), out.data(), 2, 2, 2, 2, COLOR_RGB565, 0), CC_OK);
  EXPECT_EQ(reddish(), kBt601);
}

TEST_F(Handle, SetUpKeepsTheMatrix) {
  ASSERT_EQ(setMatrix(handle_, MATRIX_GREY), CC_OK);
  EXPECT_EQ(reddish(), kGrey);
  EXPECT_EQ(reddish(), kGrey);
}

struct Resize {
  support::Picture picture;
  support::Canvas got;
  support::Canvas want;
  ConvertParams params;

  Resize(int type, int width, int height, int outWidth, int outHeight, uint32_t antiAlias = 0)
      : picture(type, width, height, support::tightStride(type, width), support::Fill::Noise, 3),
        got(support::Canvas::forPicture(type, outWidth, outHeight, support::tightStride(type, outWidth))),
        want(support::Canvas::forPicture(type, outWidth, outHeight, support::tightStride(type, outWidth))),
        params(support::blankParams()) {
    picture.describe(params);
    params.outType = type;
    params.outWidth = outWidth;
    params.outHeight = outHeight;
    params.isResize = 1;
    params.antiAlias = antiAlias;
    want.describe(params);
    reference::convertSameFormat(params);
    got.describe(params);
  }
  [[nodiscard]] std::string difference() const { return got.difference(want); }
};

TEST_F(Handle, SecondSetUpReplacesTheFirst) {
  Resize first(COLOR_YUV420_PLANAR, 20, 14, 13, 31);
  Resize second(COLOR_RGB565, 33, 17, 20, 20, 1);
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &first.params), CC_OK);
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &second.params), CC_OK);
  EXPECT_EQ(zqCCProcess(handle_, &first.params), CC_ERR_ARGUMENT);
  EXPECT_EQ(first.got.touched(), "");
  EXPECT_EQ(zqCCProcess(handle_, &second.params), CC_OK);
  EXPECT_EQ(second.difference(), "");
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &first.params), CC_OK);
  EXPECT_EQ(zqCCProcess(handle_, &first.params), CC_OK);
  EXPECT_EQ(first.difference(), "");
}

TEST_F(Handle, RefusedSetUpKeepsTheLastOne) {
  Resize frame(COLOR_YUV420_PLANAR, 20, 14, 13, 31);
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &frame.params), CC_OK);
  ConvertParams bad = frame.params;
  bad.rotation = 8;
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &bad), CC_ERR_ARGUMENT);
  bad = frame.params;
  bad.isResize = 2;
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &bad), CC_ERR_ARGUMENT);
  bad = frame.params;
  bad.antiAlias = 4;
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &bad), CC_ERR_ARGUMENT);
  bad = frame.params;
  bad.outWidth = 0;
  EXPECT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &bad), CC_ERR_ARGUMENT);
  EXPECT_EQ(zqCCProcess(handle_, &frame.params), CC_OK);
  EXPECT_EQ(frame.difference(), "");
}

TEST_F(Handle, ConvertsManyFramesAfterOneSetUp) {
  Resize frame(COLOR_YUV420_PACK, 20, 14, 13, 31);
  ConvertParams description = frame.params;
  for (int i = 0; i < 3; ++i) {
    description.inBuf[i] = nullptr; // set-up does not read the planes
    description.outBuf[i] = nullptr;
  }
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &description), CC_OK);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(zqCCProcess(handle_, &frame.params), CC_OK);
    EXPECT_EQ(frame.difference(), "");
  }
}

TEST_F(Handle, TwoHandlesKeepTheirOwnTables) {
  ConvertContext *other = nullptr;
  ASSERT_EQ(zqCCInit(&other), CC_OK);
  Resize first(COLOR_RGB565, 20, 14, 13, 31);
  Resize second(COLOR_RGB565, 31, 13, 20, 20);
  ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &first.params), CC_OK);
  ASSERT_EQ(zqCCSetParameter(other, PARAM_CONVERT_DESC, &second.params), CC_OK);
  EXPECT_EQ(zqCCProcess(handle_, &first.params), CC_OK);
  EXPECT_EQ(zqCCProcess(other, &second.params), CC_OK);
  EXPECT_EQ(zqCCUninit(other), CC_OK);
  EXPECT_EQ(first.difference(), "");
  EXPECT_EQ(second.difference(), "");
}

/// The record without the padding behind its last field.
constexpr std::size_t kRecordBytes = offsetof(ConvertParams, antiAlias) + sizeof(uint32_t);

/// A 16 x 16 frame of a type to another, without resizing.
class Frame {
public:
  Frame(int inType, int outType)
      : picture_(inType, 16, 16, support::tightStride(inType, 16), support::Fill::Noise, 9),
        canvas_(support::Canvas::forPicture(outType, 16, 16, support::tightStride(outType, 16))) {
    picture_.describe(params);
    params.outType = outType;
    params.outWidth = params.outHeight = 16;
    params.rotation = ROTATION_NONE;
    canvas_.describe(params);
  }
  [[nodiscard]] std::string touched() const { return canvas_.touched(); }
  [[nodiscard]] std::string difference(const Frame &other) const { return canvas_.difference(other.canvas_); }
  ConvertParams params{};

private:
  support::Picture picture_;
  support::Canvas canvas_;
};

TEST_F(Handle, ExchangedTypesExchangeTheCallersPlanes) {
  for (const int type : {COLOR_YVU420_PLANAR, COLOR_YVU422_PLANAR}) {
    Frame once(type, COLOR_RGB565);
    const std::array<const uint8_t *, 3> planes{once.params.inBuf[0], once.params.inBuf[1], once.params.inBuf[2]};
    EXPECT_EQ(zqCCProcess(handle_, &once.params), CC_OK);
    EXPECT_EQ(once.params.inBuf[0], planes[0]);
    EXPECT_EQ(once.params.inBuf[1], planes[2]);
    EXPECT_EQ(once.params.inBuf[2], planes[1]);
    // A second call exchanges them back and so converts with U and V mistaken for each other.
    Frame twice(type, COLOR_RGB565);
    EXPECT_EQ(zqCCProcess(handle_, &twice.params), CC_OK);
    EXPECT_EQ(twice.difference(once), "");
    EXPECT_EQ(zqCCProcess(handle_, &twice.params), CC_OK);
    EXPECT_NE(twice.difference(once), "");
    // The plain type with the planes in the other order is the same picture.
    Frame plain(type, COLOR_RGB565);
    for (std::size_t i = 0; i < 3; ++i) {
      plain.params.inBuf[i] = planes.at(i == 0 ? 0 : 3 - i);
    }
    plain.params.inType = type == COLOR_YVU420_PLANAR ? COLOR_YUV420_PLANAR : COLOR_YUV422_PLANAR;
    EXPECT_EQ(zqCCProcess(handle_, &plain.params), CC_OK);
    EXPECT_EQ(plain.difference(once), "");
  }
}

TEST_F(Handle, RefusedFramesLeaveTheCallersPlanesAlone) {
  Frame frame(COLOR_YVU420_PLANAR, COLOR_RGB565);
  const ConvertParams before = frame.params;
  frame.params.outBuf[0] = nullptr;
  EXPECT_EQ(zqCCProcess(handle_, &frame.params), CC_ERR_ARGUMENT);
  EXPECT_EQ(frame.params.inBuf[1], before.inBuf[1]);
  frame.params = before;
  frame.params.antiAlias = 4;
  EXPECT_EQ(zqCCProcess(handle_, &frame.params), CC_ERR_ARGUMENT);
  EXPECT_EQ(frame.params.inBuf[1], before.inBuf[1]);
  EXPECT_EQ(frame.touched(), "");
}

TEST_F(Handle, OtherFramesLeaveTheRecordAsItIs) {
  constexpr std::array<std::array<int, 2>, 9> kPairs{
      {{12, 12}, {3, 30}, {11, 30}, {35, 32}, {6, 31}, {0, 30}, {34, 30}, {32, 30}, {30, 30}}};
  for (const auto &pair : kPairs) {
    Frame frame(pair[0], pair[1]);
    const ConvertParams before = frame.params;
    ASSERT_EQ(zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &frame.params), CC_OK);
    EXPECT_EQ(std::memcmp(&before, &frame.params, kRecordBytes), 0) << "set-up, type " << pair[0];
    EXPECT_EQ(zqCCProcess(handle_, &frame.params), CC_OK);
    EXPECT_EQ(std::memcmp(&before, &frame.params, kRecordBytes), 0) << "frame, type " << pair[0];
    EXPECT_NE(frame.touched(), "");
  }
}

TEST_F(Handle, RotationSevenCopiesUpright) {
  Frame upright(COLOR_YUV420_PLANAR, COLOR_YUV420_PLANAR);
  Frame seven(COLOR_YUV420_PLANAR, COLOR_YUV420_PLANAR);
  seven.params.rotation = 7;
  EXPECT_EQ(zqCCProcess(handle_, &upright.params), CC_OK);
  EXPECT_EQ(zqCCProcess(handle_, &seven.params), CC_OK);
  EXPECT_EQ(seven.difference(upright), "");
  EXPECT_NE(upright.touched(), "");
}

} // namespace
