// A handle and buffers of ample size for tests of set-up's and dispatch's answers.
#pragma once

#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace frame_test {

/// Three input and three output planes with room for any type at up to 24 x 24 pixels, turned or not.
class Buffers {
public:
  Buffers() {
    for (std::size_t i = 0; i < 3; ++i) {
      in_[i] = support::Block(kPlaneBytes);
      support::fill(in_[i].data(), in_[i].size(), support::Fill::Noise, 5U + static_cast<uint32_t>(i));
    }
  }
  ConvertParams describe(int inType, int outType) {
    ConvertParams p = support::blankParams();
    p.inType = inType;
    p.outType = outType;
    p.inWidth = p.outWidth = 16;
    p.inHeight = p.outHeight = 16;
    p.inStride = kStride;
    for (std::size_t i = 0; i < 3; ++i) {
      p.inBuf[i] = in_[i].data();
    }
    canvas_.describe(p);
    return p;
  }
  [[nodiscard]] std::string touched() const { return canvas_.difference(untouched_); }
  /// Puts the planes back in place: records go on pointing at them.
  void renew() {
    for (int i = 0; i < 3; ++i) {
      std::memcpy(canvas_.plane(i), untouched_.plane(i), kPlaneBytes);
    }
  }

private:
  static constexpr int kStride = 80;
  static constexpr int kLines = 26;
  static constexpr std::size_t kPlaneBytes = std::size_t{kStride} * kLines;
  inline static const std::vector<support::PlaneShape> kShapes{
      {kStride, kLines, kStride}, {kStride, kLines, kStride}, {kStride, kLines, kStride}};
  std::array<support::Block, 3> in_;
  support::Canvas canvas_{kShapes};
  support::Canvas untouched_{kShapes};
};

inline std::string nameOf(const ConvertParams &p) {
  std::ostringstream text;
  text << "types " << p.inType << " to " << p.outType << ", " << p.inWidth << "x" << p.inHeight << " to " << p.outWidth
       << "x" << p.outHeight << ", isResize " << p.isResize << ", rotation " << p.rotation << ", antiAlias "
       << p.antiAlias;
  return text.str();
}

class DispatchFixture : public testing::Test {
protected:
  void SetUp() override { ASSERT_EQ(zqCCInit(&handle_), CC_OK); }
  void TearDown() override { EXPECT_EQ(zqCCUninit(handle_), CC_OK); }

  uint32_t setUp(ConvertParams p) { return zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &p); }

  /// A refused frame, or one with nothing to do, must not leave a trace.
  uint32_t process(ConvertParams p, bool mayWrite) {
    const uint32_t code = zqCCProcess(handle_, &p);
    if (!mayWrite) {
      EXPECT_EQ(buffers_.touched(), "") << nameOf(p);
    } else if (!buffers_.touched().empty()) {
      ++converted_;
      buffers_.renew();
    }
    return code;
  }

  /// Set-up and frame of one description.
  uint32_t convert(const ConvertParams &p) {
    const uint32_t code = setUp(p);
    return code == CC_OK ? process(p, true) : code;
  }

  void expectRefused(const ConvertParams &p, const char *why) {
    ConvertParams frame = p;
    EXPECT_EQ(zqCCProcess(handle_, &frame), CC_ERR_ARGUMENT) << why << ": " << nameOf(p);
    EXPECT_EQ(buffers_.touched(), "") << why << ": " << nameOf(p);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(frame.inBuf[i], p.inBuf[i]) << why;
      EXPECT_EQ(frame.outBuf[i], p.outBuf[i]) << why;
    }
  }

  ConvertContext *handle_ = nullptr;
  Buffers buffers_;
  int converted_ = 0;
};

/// Pairs of types that stand for every kind of input and output.
inline constexpr std::array<std::array<int, 2>, 22> kRoutes{
    {{3, 3},   {12, 12}, {30, 30}, {31, 31}, {11, 11}, {35, 35}, {6, 6},   {17, 17}, {3, 30}, {12, 31}, {1, 30},
     {13, 32}, {0, 30},  {2, 32},  {4, 3},   {37, 12}, {34, 31}, {11, 30}, {35, 3},  {9, 30}, {16, 3},  {32, 30}}};

inline void shrink(ConvertParams &p) {
  p.outWidth = 12;
  p.outHeight = 8;
}

inline void enlarge(ConvertParams &p) {
  p.outWidth = 20;
  p.outHeight = 24;
}

} // namespace frame_test
