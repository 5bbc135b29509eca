// The last size that is taken and the first that is refused, and refusals that rest on products beyond 32 bits.
#include "frame/dispatch_fixture.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using frame_test::DispatchFixture;
using frame_test::nameOf;
using support::Block;

/// Grey of 100 in planar 4:2:0, with a line or a column of another colour at each of the places given.
class Long420 {
public:
  Long420(int width, int height)
      : width_(width), height_(height), luma_(bytes(width, height)), u_(bytes(width / 2, height / 2)),
        v_(bytes(width / 2, height / 2)) {
    std::memset(luma_.data(), 100, luma_.size());
    std::memset(u_.data(), 128, u_.size());
    std::memset(v_.data(), 128, v_.size());
  }
  void colourLine(int line, uint8_t luma, uint8_t v) {
    std::memset(luma_.data() + std::ptrdiff_t{line} * width_, luma, static_cast<std::size_t>(width_));
    std::memset(v_.data() + std::ptrdiff_t{line / 2} * (width_ / 2), v, static_cast<std::size_t>(width_ / 2));
  }
  void colourColumn(int column, uint8_t luma, uint8_t v) {
    for (std::ptrdiff_t y = 0; y < height_; ++y) {
      luma_.data()[y * width_ + column] = luma;
      v_.data()[y / 2 * (width_ / 2) + column / 2] = v;
    }
  }
  /// Resized to RGB24; the pixels without padding.
  [[nodiscard]] ConvertParams record(int outWidth, int outHeight, std::vector<uint8_t> &out) const {
    ConvertParams p = support::blankParams();
    p.inType = COLOR_YUV420_PLANAR;
    p.inWidth = p.inStride = width_;
    p.inHeight = height_;
    p.inBuf[0] = luma_.data();
    p.inBuf[1] = u_.data();
    p.inBuf[2] = v_.data();
    p.outType = COLOR_RGB24;
    p.outWidth = outWidth;
    p.outHeight = outHeight;
    p.outStride = 3 * outWidth;
    p.isResize = 1;
    out.assign(static_cast<std::size_t>(p.outStride) * static_cast<std::size_t>(outHeight), 1);
    p.outBuf[0] = out.data();
    return p;
  }

private:
  static std::size_t bytes(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  }
  int width_;
  int height_;
  Block luma_;
  Block u_;
  Block v_;
};

/// The pixel at an index of an RGB24 picture: blue, green, red.
std::vector<int> pixelAt(const std::vector<uint8_t> &out, int index) {
  const auto at = out.begin() + std::ptrdiff_t{index} * 3;
  return {at, at + 3};
}

/// Luma 136 and Cr 192 in BT.601: 64 times 1.403 is added to red, 64 times 0.714 taken from green.
const std::vector<int> kReddish{136, 136 - 45, 136 + 89};
const std::vector<int> kGrey{100, 100, 100};

class ExactLimits : public DispatchFixture {};

/// Tables of runs hold positions in 16 bits: 65536 lines are the most.
TEST_F(ExactLimits, RunLengthsReachLine65535) {
  std::vector<uint8_t> out;
  Long420 picture(4, 65536);
  // To four lines: 0, 16384 and then the last one, 49152, twice.
  picture.colourLine(49152, 136, 192);
  ConvertParams p = picture.record(4, 4, out);
  EXPECT_EQ(support::convertOnce(p), CC_OK);
  for (int x = 0; x < 4; ++x) {
    EXPECT_EQ(pixelAt(out, x), kGrey);
    EXPECT_EQ(pixelAt(out, 4 + x), kGrey);
    EXPECT_EQ(pixelAt(out, 8 + x), kReddish);
    EXPECT_EQ(pixelAt(out, 12 + x), kReddish);
  }
}

TEST_F(ExactLimits, RunLengthsReachTheVeryLastLineAndColumn) {
  std::vector<uint8_t> out;
  Long420 tall(2, 65536);
  tall.colourLine(50001, 136, 192); // the second line of a pair
  tall.colourLine(65535, 136, 192);
  ConvertParams p = tall.record(2, 65536, out); // the last two lines are the last one
  EXPECT_EQ(support::convertOnce(p), CC_OK);
  EXPECT_EQ(pixelAt(out, 2 * 49999), kGrey);
  EXPECT_EQ(pixelAt(out, 2 * 50001), kReddish);
  EXPECT_EQ(pixelAt(out, 2 * 50002), kGrey);
  EXPECT_EQ(pixelAt(out, 2 * 65533), kGrey);
  EXPECT_EQ(pixelAt(out, 2 * 65534), kReddish);
  EXPECT_EQ(pixelAt(out, 2 * 65535 + 1), kReddish);
  Long420 wide(65536, 2);
  wide.colourColumn(65535, 136, 192);
  p = wide.record(65536, 2, out);
  EXPECT_EQ(support::convertOnce(p), CC_OK);
  EXPECT_EQ(pixelAt(out, 65533), kGrey);
  EXPECT_EQ(pixelAt(out, 65534), (std::vector<int>{100, 100 - 45, 100 + 89})); // shares the last chroma sample
  EXPECT_EQ(pixelAt(out, 65535), kReddish);
}

/// Every line of 40,000 is found, that is, a line number's 16 bits and its chroma line's 15 are all looked at.
TEST_F(ExactLimits, RunLengthsFindEveryLineOf40000) {
  std::vector<uint8_t> out;
  for (const int line : {1000, 17000, 32000, 33000, 37000}) {
    Long420 picture(2, 40000);
    picture.colourLine(line, 136, 192);
    ConvertParams p = picture.record(2, 40, out);
    ASSERT_EQ(support::convertOnce(p), CC_OK);
    for (int y = 0; y < 40; ++y) {
      EXPECT_EQ(pixelAt(out, 2 * y), y == line / 1000 ? kReddish : kGrey) << "line " << y << " of " << line;
    }
  }
}

TEST_F(ExactLimits, RunLengthsEndAt65536) {
  std::vector<uint8_t> out;
  for (const bool tall : {true, false}) {
    const Long420 picture(tall ? 4 : 65537, tall ? 65537 : 4);
    ConvertParams p = picture.record(4, 4, out);
    EXPECT_EQ(support::convertOnce(p), CC_ERR_ARGUMENT) << nameOf(p);
    EXPECT_EQ(out, std::vector<uint8_t>(48, 1)) << nameOf(p);
  }
  // Other tables have no such limit.
  const Long420 picture(2, 65537);
  ConvertParams p = picture.record(2, 2, out);
  p.outType = COLOR_RGB565;
  EXPECT_EQ(support::convertOnce(p), CC_OK);
}

TEST_F(ExactLimits, EnlargedBy1024AtTheMost) {
  ConvertParams p = buffers_.describe(COLOR_RGB565, COLOR_RGB565);
  p.isResize = 1;
  p.inWidth = 2;
  p.inHeight = 3;
  for (const auto &[width, height, code] : {std::array<uint32_t, 3>{2048, 3072, CC_OK},
                                            {2049, 3072, CC_ERR_ARGUMENT},
                                            {2048, 3073, CC_ERR_ARGUMENT},
                                            {1, 1, CC_OK}}) {
    p.outWidth = static_cast<int32_t>(width);
    p.outHeight = static_cast<int32_t>(height);
    EXPECT_EQ(setUp(p), code) << nameOf(p);
  }
}

/// 1024 times 4194305 is 2^32 + 1024, which is 1024 where it has 32 bits.
TEST_F(ExactLimits, EnlargementsAreComparedIn64Bits) {
  ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, COLOR_RGB565);
  p.isResize = 1;
  p.inWidth = 4194305;
  p.outWidth = 4096;
  EXPECT_EQ(setUp(p), CC_OK);
}

/// Split planes of a 16 x 2 picture have 16 * 2 / 4 + 32 = 40 bytes: 40 pairs of a line, and not one more.
TEST_F(ExactLimits, SplitPlanesAreFilledToTheLastByte) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, COLOR_RGB565);
    p.inHeight = p.outHeight = 2;
    p.inStride = 16;
    ASSERT_EQ(setUp(p), CC_OK);
    const support::Picture line(type, 82, 2, 82, support::Fill::Noise, 8);
    support::Canvas canvas = support::Canvas::forPicture(COLOR_RGB565, 82, 2, 164);
    ConvertParams frame = p;
    line.describe(frame);
    canvas.describe(frame);
    frame.outWidth = 82;
    EXPECT_EQ(zqCCProcess(handle_, &frame), CC_ERR_ARGUMENT) << nameOf(frame);
    EXPECT_EQ(canvas.touched(), "");
    frame.inWidth = frame.outWidth = 80;
    EXPECT_EQ(zqCCProcess(handle_, &frame), CC_OK) << nameOf(frame);
    // As much in several lines: the last sample of the third line is the 40th byte, 16 * 2 + 8.
    const support::Picture lines(type, 16, 6, 32, support::Fill::Noise, 8);
    ConvertParams three = p;
    lines.describe(three);
    three.outHeight = 6;
    EXPECT_EQ(process(three, true), CC_OK) << nameOf(three);
    const support::Picture wider(type, 18, 6, 32, support::Fill::Noise, 8);
    ConvertParams beyond = p;
    wider.describe(beyond);
    beyond.outWidth = 18;
    beyond.outHeight = 6;
    expectRefused(beyond, "a byte more than there is");
  }
}

/// Two lines have chroma that is split, though a single one is made of it; what the output fields ask for beyond the
/// input never is.
TEST_F(ExactLimits, WhatIsSplitIsTheInputs) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, COLOR_YUV420_PLANAR);
    ASSERT_EQ(setUp(p), CC_OK);
    p.inHeight = 2;
    p.outHeight = 1;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.inBuf[1] = nullptr;
    expectRefused(p, "the chroma of two lines");
    p = buffers_.describe(type, COLOR_RGB565);
    p.inWidth = p.inHeight = 15;
    EXPECT_EQ(setUp(p), CC_OK);
    p.outWidth = p.outHeight = 15;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.outWidth = 16;
    expectRefused(p, "a column more than there is");
    p.outWidth = 15;
    p.outHeight = 16;
    expectRefused(p, "a line more than there is");
  }
}

/// 131071 lines of 32768 bytes are 2^32 - 32768 bytes: a small number, or one below zero, to whoever counts in 32 bits.
TEST_F(ExactLimits, SplitPlanesAreMeasuredIn64Bits) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, COLOR_RGB565);
    p.inStride = 16;
    ASSERT_EQ(setUp(p), CC_OK);
    p.inHeight = p.outHeight = 262144;
    p.inStride = 65536;
    expectRefused(p, "chroma beyond the scratch planes");
  }
}

/// 2^30 pixels take 2^31 bytes, which is below zero where it has 32 bits.
TEST_F(ExactLimits, LinesPlacedFromTheStrideEndAreMeasuredIn64Bits) {
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_RGB888_PLANAR, COLOR_YUV422_YUYV}) {
    ConvertParams p = buffers_.describe(type, COLOR_RGB565);
    p.rotation = ROTATION_180;
    p.inWidth = p.outWidth = 1 << 30;
    p.outStride = 64;
    expectRefused(p, "a stride shorter than a line");
  }
  ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, COLOR_RGB565);
  p.rotation = ROTATION_90_RIGHT;
  p.inHeight = p.outHeight = 1 << 30;
  p.outStride = 64;
  expectRefused(p, "a stride shorter than a turned line");
}

TEST_F(ExactLimits, PicturesPlacedFromTheStrideEndTakeNoByteLess) {
  for (const auto &[inType, outType] : {std::array<int, 2>{3, 30}, {6, 30}, {34, 31}}) {
    ConvertParams p = buffers_.describe(inType, outType);
    p.rotation = ROTATION_180;
    p.outStride = 32;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.outStride = 31;
    expectRefused(p, "a byte short");
  }
}

/// The right turn begins with the input's last line; a line alone has no chroma where chroma has half as many.
TEST_F(ExactLimits, RightTurnsOfASingleLine) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, type);
    p.rotation = ROTATION_90_RIGHT;
    p.inHeight = 1;
    p.outHeight = 4;
    ASSERT_EQ(setUp(p), CC_OK);
    expectRefused(p, "no chroma line to begin with");
    p.inHeight = 2;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
  }
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_VYUY2}) {
    ConvertParams p = buffers_.describe(type, type);
    p.rotation = ROTATION_90_RIGHT;
    p.outHeight = 4;
    p.inHeight = 1;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.inHeight = 0;
    expectRefused(p, "no line to begin with");
  }
}

/// All lines may lie on one another.
TEST_F(ExactLimits, AStrideOfNothingIsAStride) {
  ConvertParams p = buffers_.describe(COLOR_YUV422_YUYV, COLOR_RGB565);
  p.inStride = 0;
  EXPECT_EQ(process(p, true), CC_OK);
  p.outStride = 0;
  EXPECT_EQ(process(p, true), CC_OK);
  for (int32_t ConvertParams::*stride : {&ConvertParams::inStride, &ConvertParams::outStride}) {
    ConvertParams below = p;
    below.*stride = -1;
    expectRefused(below, "a stride below zero");
  }
}

TEST_F(ExactLimits, SetUpOfSplitChromaTakesNothingButRefusesLess) {
  ConvertParams p = buffers_.describe(COLOR_YUV420_PACK, COLOR_RGB565);
  p.inStride = 0;
  EXPECT_EQ(setUp(p), CC_OK);
  p.inStride = -1;
  EXPECT_EQ(setUp(p), CC_ERR_ARGUMENT);
  p.inStride = 16;
  p.inHeight = 0;
  EXPECT_EQ(setUp(p), CC_OK);
  p.inHeight = -1;
  EXPECT_EQ(setUp(p), CC_ERR_ARGUMENT);
}

} // namespace
