// The nine one-shot functions: their codes, and their pictures against the references fed with planes, strides and
// cropping worked out apart from the library.
#include "reference/direct.h"
#include "reference/one_shot.h"
#include "reference/result_code.h"
#include "reference/same_format.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace {

using reference::Buffers;
using reference::Colour;
using reference::Crop;
using reference::OneShot;
using reference::Place;
using reference::Size;

constexpr std::array<int, 8> kPacked{6, 7, 8, 9, 14, 15, 16, 17};
constexpr std::array<int, 10> kWords{6, 7, 8, 9, 14, 15, 16, 17, 30, 31};

/// One input buffer of noise with exactly the bytes given, and two equal output buffers with guards.
class Single {
public:
  Single(std::size_t inputBytes, int outputBytes, unsigned misalign = 0)
      : input_(inputBytes, misalign), got_({shape(outputBytes)}, misalign), want_({shape(outputBytes)}, misalign) {
    support::fill(input_.data(), input_.size(), support::Fill::Noise, static_cast<uint32_t>(inputBytes));
  }
  [[nodiscard]] const uint8_t *input() const { return input_.data(); }
  uint8_t *output() { return got_.plane(0); }
  /// What the reference is to be given.
  Buffers expected() { return {input_.data(), want_.plane(0)}; }
  [[nodiscard]] std::string difference() const { return got_.difference(want_); }
  [[nodiscard]] std::string touched() const { return got_.touched(); }

private:
  static support::PlaneShape shape(int bytes) { return {bytes, 1, bytes}; }
  support::Block input_;
  support::Canvas got_;
  support::Canvas want_;
};

/// Bytes of a picture whose planes follow one another.
std::size_t bytesOf(int type, int stride, int lines) {
  const auto luma = static_cast<std::size_t>(stride) * static_cast<std::size_t>(lines);
  if (type == 3 || type == 12) {
    return luma + luma / 4 * 2;
  }
  if (type == 11 || type == 35) {
    return luma + luma / 2;
  }
  return type == 1 ? 2 * luma : luma;
}

int bytesPerLine(int type, int width) {
  return type == 3 || type == 12 ? width : 2 * width;
}

/// Completes the comparison: the code that set-up and dispatch give, and the picture that the reference makes.
void expectLike(Single &buffers, OneShot expected, uint32_t code, const Colour *colour = nullptr) {
  if (expected.code == CC_OK) {
    expected.code = reference::setupCode(expected.params);
  }
  if (expected.code == CC_OK) {
    expected.code = reference::resultCode(expected.params, expected.params);
  }
  ASSERT_EQ(code, expected.code);
  if (expected.code != CC_OK) {
    EXPECT_EQ(buffers.touched(), "");
    return;
  }
  if (colour == nullptr) {
    reference::convertSameFormat(expected.params, expected.cropped);
  } else {
    reference::convertDirect(expected.params, *colour);
  }
  EXPECT_EQ(buffers.difference(), "");
  EXPECT_NE(buffers.touched(), "");
}

struct ScaleSizes {
  Size in, out;
};

/// Packed lines of odd width end behind their last pixel here: tight lines have no room for the rest of its group.
constexpr std::array<ScaleSizes, 7> kScaleSizes{{{{16, 16}, {8, 8}},
                                                 {{20, 12}, {33, 17}},
                                                 {{18, 14}, {18, 14}},
                                                 {{2, 2}, {5, 7}},
                                                 {{17, 13}, {10, 22}},
                                                 {{3, 5}, {7, 2}},
                                                 {{9, 9}, {9, 9}}}};

TEST(OneShotScale, WholeFrames) {
  for (const int type : {3, 12, 6, 7, 8, 9, 14, 15, 16, 17, 30, 31}) {
    for (const ScaleSizes &size : kScaleSizes) {
      for (int quality = 0; quality < 4; ++quality) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", quality " << quality << ", to " << size.out.width);
        Single buffers(bytesOf(type, bytesPerLine(type, size.in.width), size.in.height),
                       static_cast<int>(bytesOf(type, bytesPerLine(type, size.out.width), size.out.height)), 1);
        const uint32_t code = zqScaleFrame(buffers.input(), buffers.output(), size.in.width, size.in.height,
                                           size.out.width, size.out.height, type, quality);
        expectLike(buffers, reference::scaleFrame(buffers.expected(), size.in, size.out, type, quality), code);
      }
    }
  }
}

TEST(OneShotScale, Crops) {
  const Size picture{40, 30};
  const std::array<Crop, 4> crops{
      {{picture, 0, 0, picture}, {picture, 8, 6, {16, 12}}, {picture, 5, 4, {15, 11}}, {picture, 22, 14, {18, 16}}}};
  for (const int type : {3, 6, 9, 14, 17, 30, 31}) {
    for (const Crop &crop : crops) {
      for (const Size out : {Size{12, 20}, Size{21, 9}}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", crop at " << crop.left << ", " << crop.top);
        Single buffers(bytesOf(type, bytesPerLine(type, picture.width), picture.height),
                       static_cast<int>(bytesOf(type, bytesPerLine(type, out.width), out.height)));
        const uint32_t code =
            zqScaleCroppedFrame(buffers.input(), buffers.output(), picture.width, picture.height, crop.left, crop.top,
                                crop.part.width, crop.part.height, out.width, out.height, type, 0);
        expectLike(buffers, reference::scaleCroppedFrame(buffers.expected(), crop, out, type, 0), code);
      }
    }
  }
}

/// A packed group that the picture's edge cuts is not read any further, whatever the stride holds behind the edge: the
/// next line, or nothing.
TEST(OneShotScale, OddPackedCropsEndAtTheRightEdge) {
  for (const int type : kPacked) {
    for (const Crop &crop : {Crop{{13, 9}, 2, 2, {11, 7}}, Crop{{12, 9}, 5, 0, {7, 9}}, Crop{{13, 9}, 0, 0, {13, 9}}}) {
      for (const Size out : {Size{12, 20}, Size{21, 9}, Size{11, 7}}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", crop at " << crop.left << ", to " << out.width);
        const int lines = crop.picture.height;
        Single buffers(2 * crop.picture.width * lines, 2 * out.width * out.height);
        const uint32_t code =
            zqScaleCroppedFrame(buffers.input(), buffers.output(), crop.picture.width, lines, crop.left, crop.top,
                                crop.part.width, crop.part.height, out.width, out.height, type, 0);
        expectLike(buffers, reference::scaleCroppedFrame(buffers.expected(), crop, out, type, 0), code);
      }
      for (const int rotation : {2, 3, 4}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", crop at " << crop.left << ", rotation " << rotation);
        const Size part = crop.part;
        const int line = part.width + part.height + 1;
        Single buffers(2 * crop.picture.width * crop.picture.height, 2 * line * line);
        const uint32_t code =
            zqRotateCroppedFrame(buffers.input(), buffers.output(), crop.picture.width, crop.picture.height, crop.left,
                                 crop.top, part.width, part.height, line, line, type, rotation);
        expectLike(buffers, reference::rotateCroppedFrame(buffers.expected(), crop, line, line, type, rotation), code);
      }
    }
  }
}

TEST(OneShotScale, OddCropTopsShiftTheChroma) {
  // A 8 x 8 picture cropped at line 3: the chroma starts at (8 * 3) / 4 + 2 / 2 = 7, the last but one byte of line 1.
  std::vector<uint8_t> in(96, 50);
  for (std::size_t i = 0; i < 16; ++i) {
    in[64 + i] = static_cast<uint8_t>(100 + i);
    in[80 + i] = static_cast<uint8_t>(200 + i);
  }
  std::array<uint8_t, 6> out{};
  ASSERT_EQ(zqScaleCroppedFrame(in.data(), out.data(), 8, 8, 2, 3, 2, 2, 2, 2, COLOR_YUV420_PLANAR, 0), CC_OK);
  EXPECT_EQ(out, (std::array<uint8_t, 6>{50, 50, 50, 50, 107, 207}));
}

/// Dimensions for a picture of the size given: what the turned picture needs, by the order that the function expects.
std::array<int, 2> dimensionsFor(int type, Size size, int rotation) {
  const bool turned = rotation == 3 || rotation == 4;
  const bool tight180 = rotation == 5 && type == 3;
  const int line = turned && !tight180 ? size.height : size.width;
  const int lines = turned ? size.width : size.height;
  return rotation == 2 ? std::array<int, 2>{line, lines} : std::array<int, 2>{lines, line};
}

TEST(OneShotRotate, WholeFrames) {
  for (const int type : {3, 6, 7, 8, 9, 14, 15, 16, 17, 30, 31}) {
    for (const Size size : {Size{16, 12}, Size{22, 34}, Size{8, 7}, Size{2, 2}, Size{9, 11}, Size{3, 2}}) {
      for (int rotation = 0; rotation < 9; ++rotation) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", rotation " << rotation << ", width " << size.width);
        const auto [a, b] = dimensionsFor(type, size, rotation);
        Single buffers(bytesOf(type, bytesPerLine(type, size.width), size.height),
                       static_cast<int>(bytesOf(type, bytesPerLine(type, a), b)), 3);
        const uint32_t code =
            zqRotateFrame(buffers.input(), buffers.output(), size.width, size.height, a, b, type, rotation);
        expectLike(buffers, reference::rotateFrame(buffers.expected(), size, a, b, type, rotation), code);
      }
    }
  }
}

TEST(OneShotRotate, WiderOutputsFollowTheirDimensions) {
  // The line length is the first dimension for rotation 2 alone.
  for (const int type : {3, 6, 30}) {
    for (const int rotation : {0, 2, 7}) {
      SCOPED_TRACE(testing::Message() << "type " << type << ", rotation " << rotation);
      const int a = rotation == 2 ? 14 : 8;
      const int b = rotation == 2 ? 8 : 14;
      Single buffers(bytesOf(type, bytesPerLine(type, 10), 6),
                     static_cast<int>(bytesOf(type, bytesPerLine(type, 14), 8)));
      const uint32_t code = zqRotateFrame(buffers.input(), buffers.output(), 10, 6, a, b, type, rotation);
      expectLike(buffers, reference::rotateFrame(buffers.expected(), {10, 6}, a, b, type, rotation), code);
    }
  }
}

TEST(OneShotRotate, Crops) {
  const Size picture{36, 28};
  const std::array<Crop, 3> crops{{{picture, 6, 4, {16, 12}}, {picture, 0, 8, {10, 20}}, {picture, 20, 2, {16, 26}}}};
  for (const int type : {3, 6, 8, 15, 16, 30, 31}) {
    for (const Crop &crop : crops) {
      for (const int rotation : {2, 3, 4, 5, 6}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", rotation " << rotation << ", left " << crop.left);
        const auto [a, b] = dimensionsFor(type, crop.part, rotation);
        Single buffers(bytesOf(type, bytesPerLine(type, picture.width), picture.height),
                       static_cast<int>(bytesOf(type, bytesPerLine(type, a), b)));
        const uint32_t code =
            zqRotateCroppedFrame(buffers.input(), buffers.output(), picture.width, picture.height, crop.left, crop.top,
                                 crop.part.width, crop.part.height, a, b, type, rotation);
        expectLike(buffers, reference::rotateCroppedFrame(buffers.expected(), crop, a, b, type, rotation), code);
      }
    }
  }
}

TEST(OneShotConvert, EveryPairOfTypes) {
  const Colour colour;
  for (const int inType : {0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37, 99}) {
    for (const int outType : {3, 12, 30, 31, 32, 1, 6, 11, 34, 35, 99}) {
      for (const Size size : {Size{16, 16}, Size{22, 18}, Size{32, 34}}) {
        SCOPED_TRACE(testing::Message() << inType << " to " << outType << ", width " << size.width);
        const int stride = size.width + 6;
        Single buffers(bytesOf(inType, support::isPacked422(inType) ? 2 * size.width : stride, size.height),
                       4 * size.width * size.height, 2);
        const uint32_t code = zqColorConvert(buffers.input(), buffers.output(), inType, outType, size.width,
                                             size.height, stride, nullptr);
        expectLike(buffers, reference::colorConvert(buffers.expected(), inType, outType, size, stride), code, &colour);
      }
    }
  }
}

class OneShotMatrix : public testing::Test {
protected:
  /// Puts the words of the custom entry and the matrix back for later tests.
  void TearDown() override {
    ConvertContext *handle = nullptr;
    ASSERT_EQ(zqCCInit(&handle), CC_OK);
    std::array<double, 4> words{2.0 / 2048, -1.0 / 2048, 1.0 / 2048, -3.0 / 2048};
    EXPECT_EQ(zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, words.data()), CC_OK);
    EXPECT_EQ(zqCCSetParameter(handle, PARAM_COLOR_MATRIX, nullptr), CC_OK);
    EXPECT_EQ(zqCCUninit(handle), CC_OK);
  }
};

TEST_F(OneShotMatrix, CoefficientsServeTheCallAndStaySelected) {
  const std::array<double, 4> coefficients{900.0, 300.0, 700.0, -100.0};
  Colour custom;
  custom.matrix = {900 * 2048, 300 * 2048, 700 * 2048, -100 * 2048};
  custom.redBlueDither = custom.matrix;
  for (const int type : kPacked) {
    SCOPED_TRACE(type);
    Single first(512, 512);
    uint32_t code = zqColorConvert(first.input(), first.output(), type, 30, 16, 16, 0, coefficients.data());
    expectLike(first, reference::colorConvert(first.expected(), type, 30, {16, 16}, 0), code, &custom);
    // Without coefficients the next call starts from BT.601 again.
    Single second(512, 512);
    code = zqColorConvert(second.input(), second.output(), type, 30, 16, 16, 0, nullptr);
    Colour standard;
    expectLike(second, reference::colorConvert(second.expected(), type, 30, {16, 16}, 0), code, &standard);
  }
}

TEST_F(OneShotMatrix, CustomMatrixOutlivesTheCall) {
  ConvertContext *handle = nullptr;
  ASSERT_EQ(zqCCInit(&handle), CC_OK);
  const std::array<double, 4> coefficients{900.0, 300.0, 700.0, -100.0};
  Single buffers(512, 512);
  // A type that cannot be laid out ends the call, but the coefficients have been taken over by then.
  EXPECT_EQ(zqColorConvert(buffers.input(), buffers.output(), 6, 35, 16, 16, 0, coefficients.data()), CC_ERR_IN_TYPE);
  EXPECT_EQ(buffers.touched(), "");
  OneShot frame = reference::colorConvert({buffers.input(), buffers.output()}, 6, 30, {16, 16}, 0);
  frame.params.rotation = ROTATION_NONE;
  EXPECT_EQ(zqCCProcess(handle, &frame.params), CC_OK);
  Colour custom;
  custom.matrix = {900 * 2048, 300 * 2048, 700 * 2048, -100 * 2048};
  reference::convertDirect(reference::colorConvert(buffers.expected(), 6, 30, {16, 16}, 0).params, custom);
  EXPECT_EQ(buffers.difference(), "");
  EXPECT_EQ(zqCCUninit(handle), CC_OK);
}

constexpr Size kPicture{48, 40};
/// Crops with room for a turned result at (3, 2) of a 64-pixel-wide output.
constexpr std::array<Crop, 3> kCrops{
    {{kPicture, 4, 6, {32, 20}}, {kPicture, 0, 0, {21, 35}}, {kPicture, 10, 8, {16, 16}}}};
constexpr Place kPlace{64, 3, 2};

TEST(OneShotToRgb16, FromPlanar) {
  const Colour colour;
  for (const Crop &crop : kCrops) {
    for (int rotation = 0; rotation < 9; ++rotation) {
      SCOPED_TRACE(testing::Message() << "rotation " << rotation << ", left " << crop.left);
      Single buffers(bytesOf(3, kPicture.width, kPicture.height), 128 * 60);
      const uint32_t code = zqYUV420PlanartoRGB16Rotate(
          buffers.input(), buffers.output(), kPicture.width, kPicture.height, crop.left, crop.top, crop.part.width,
          crop.part.height, -12345, kPlace.stridePixels, kPlace.left, kPlace.top, rotation);
      expectLike(buffers, reference::yuv420PlanarToRgb16(buffers.expected(), crop, kPlace, rotation), code, &colour);
    }
  }
}

TEST(OneShotToRgb16, FromPackedWithTheCropCountedInBytes) {
  const Colour colour;
  for (const int type : kPacked) {
    for (Crop crop : kCrops) {
      crop.part.width &= ~1;
      for (const int rotation : {2, 3, 4, 5, 6, 8}) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", rotation " << rotation << ", left " << crop.left);
        Single buffers(bytesOf(type, 2 * kPicture.width, kPicture.height), 128 * 60);
        const uint32_t code = zqYUV422PacktoRGB16Rotate(type, buffers.input(), buffers.output(), kPicture.width, 777,
                                                        crop.left, crop.top, crop.part.width, crop.part.height, -777,
                                                        kPlace.stridePixels, kPlace.left, kPlace.top, rotation);
        expectLike(buffers, reference::packed422ToRgb16(buffers.expected(), type, crop, kPlace, rotation), code,
                   &colour);
      }
    }
  }
}

TEST(OneShotToRgb16, FromSemiPlanar) {
  const Colour colour;
  for (const int type : {11, 35}) {
    for (const Crop &crop : kCrops) {
      for (int rotation = 0; rotation < 9; ++rotation) {
        SCOPED_TRACE(testing::Message() << "type " << type << ", rotation " << rotation << ", left " << crop.left);
        Single buffers(bytesOf(type, kPicture.width, kPicture.height), 128 * 60);
        const auto convert = type == 11 ? zqYUV420PacktoRGB16Rotate : zqYUV420Pack2toRGB16Rotate;
        const uint32_t code =
            convert(buffers.input(), buffers.output(), kPicture.width, kPicture.height, crop.left, crop.top,
                    crop.part.width, crop.part.height, 99, kPlace.stridePixels, kPlace.left, kPlace.top, rotation);
        expectLike(buffers, reference::semiPlanarToRgb16(buffers.expected(), type, crop, kPlace, rotation), code,
                   &colour);
      }
    }
  }
}

} // namespace
