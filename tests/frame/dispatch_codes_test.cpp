// The code of every combination of types and modes.
#include "frame/dispatch_fixture.h"
#include "reference/result_code.h"

#include <functional>
#include <map>

namespace {

using frame_test::DispatchFixture;
using frame_test::enlarge;
using frame_test::nameOf;
using frame_test::shrink;

constexpr std::array<int, 22> kTypes{0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37};
constexpr std::array<int, 7> kUnknownTypes{5, 10, 18, 33, 36, 99, -1};

std::vector<int> allTypes() {
  std::vector<int> types(kTypes.begin(), kTypes.end());
  types.insert(types.end(), kUnknownTypes.begin(), kUnknownTypes.end());
  return types;
}

class DispatchCodes : public DispatchFixture {
protected:
  void walk(const ConvertParams &p) {
    const uint32_t setup = setUp(p);
    ASSERT_EQ(setup, reference::setupCode(p)) << nameOf(p);
    const uint32_t expected = reference::resultCode(p, p);
    ASSERT_EQ(process(p, expected == CC_OK && !(p.inType == COLOR_RGB24 && p.outType != COLOR_RGB565)), expected)
        << nameOf(p);
    ++codes_[expected];
  }

  /// Every set of modes for a pair of types, from one size to another.
  void walkModes(int inType, int outType, const std::function<void(ConvertParams &)> &resized) {
    for (uint32_t mode = 0; mode < 3 * 9 * 5; ++mode) {
      ConvertParams p = buffers_.describe(inType, outType);
      p.isResize = mode % 3;
      p.rotation = mode / 3 % 9;
      p.antiAlias = mode / 27;
      if (p.isResize != 0) {
        resized(p);
      }
      walk(p);
      if (HasFatalFailure()) {
        return;
      }
    }
  }

  std::map<uint32_t, int> codes_;
};

TEST_F(DispatchCodes, EveryCombinationOfTypesAndModes) {
  const std::vector<int> types = allTypes();
  for (const int inType : types) {
    for (const int outType : types) {
      walkModes(inType, outType, shrink);
      ASSERT_FALSE(HasFatalFailure());
    }
  }
  EXPECT_EQ(static_cast<std::size_t>(codes_[CC_OK]) + static_cast<std::size_t>(codes_[CC_ERR_ARGUMENT]) +
                static_cast<std::size_t>(codes_[CC_ERR_IN_TYPE]) + static_cast<std::size_t>(codes_[CC_ERR_OUT_TYPE]),
            types.size() * types.size() * 135);
  // Planar and semi-planar to 30, 31, 32, 3, 12 (bar themselves): 9 * 5 - 2 + 2 * 5; packed to 30, 31, 32, 3: 8 * 4;
  // RGB24 to everything else. 64 accepted modes each.
  const int conversions = (9 * 5 - 2 + 2 * 5 + 8 * 4 + static_cast<int>(types.size()) - 1) * 64;
  // Same type: semi-planar and packed take all 48 modes; planar loses quality without resizing (16) and the filtered
  // turns (6), RGB the former and the filtered quarter turns (4).
  const int same = 10 * 48 + 2 * (48 - 22) + 2 * (48 - 20);
  EXPECT_EQ(codes_[CC_OK], conversions + same);
  EXPECT_EQ(converted_, conversions + same - (static_cast<int>(types.size()) - 2) * 64);
}

TEST_F(DispatchCodes, EveryCombinationThatEnlarges) {
  const std::vector<int> types = allTypes();
  for (const int inType : kTypes) {
    for (const int outType : types) {
      walkModes(inType, outType, enlarge);
      ASSERT_FALSE(HasFatalFailure());
    }
  }
  EXPECT_GT(codes_[CC_OK], 4000);
  EXPECT_GT(converted_, 4000);
}

TEST_F(DispatchCodes, ResizingSucceedsInEveryRatioClass) {
  const std::array<std::array<int, 2>, 5> outputs{{{8, 8}, {12, 12}, {24, 24}, {16, 10}, {4, 4}}};
  for (const auto &size : outputs) {
    for (const uint32_t rotation : {2U, 3U, 4U, 5U}) {
      ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, COLOR_RGB565);
      p.isResize = 1;
      p.rotation = rotation;
      p.outWidth = size[0];
      p.outHeight = size[1];
      EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    }
  }
  EXPECT_EQ(converted_, 20);
}

TEST_F(DispatchCodes, ModesOutOfRangeAreArguments) {
  for (const int outType : {30, 3, 99}) {
    ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, outType);
    ASSERT_EQ(setUp(p), CC_OK);
    for (const uint32_t far : {8U, 0x80000000U, 0xFFFFFFFFU}) {
      ConvertParams bad = p;
      bad.rotation = far;
      EXPECT_EQ(setUp(bad), CC_ERR_ARGUMENT);
      expectRefused(bad, "rotation");
      bad = p;
      bad.isResize = far;
      EXPECT_EQ(setUp(bad), CC_ERR_ARGUMENT);
      expectRefused(bad, "isResize");
      bad = p;
      bad.antiAlias = far;
      EXPECT_EQ(setUp(bad), CC_ERR_ARGUMENT);
      expectRefused(bad, "antiAlias");
    }
  }
}

TEST_F(DispatchCodes, BoxQualityIsForConversionsOnly) {
  ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, COLOR_RGB565);
  p.isResize = 1;
  p.antiAlias = 3;
  shrink(p);
  EXPECT_EQ(convert(p), CC_OK);
  for (const int type : {3, 12, 30, 31, 6, 17, 11, 35}) {
    p.inType = p.outType = type;
    EXPECT_EQ(setUp(p), CC_OK) << type;
    expectRefused(p, "box");
  }
}

TEST_F(DispatchCodes, Rgb24ToAnythingButRgb565SucceedsSilently) {
  for (const int outType : {3, 6, 11, 31, 34, 99}) {
    ConvertParams p = buffers_.describe(COLOR_RGB24, outType);
    EXPECT_EQ(setUp(p), CC_OK);
    EXPECT_EQ(process(p, false), CC_OK) << outType;
  }
}

TEST_F(DispatchCodes, TypesAreJudgedBeforeSizesAndPlanes) {
  ConvertParams p = buffers_.describe(99, COLOR_RGB565);
  p.inBuf[0] = nullptr;
  EXPECT_EQ(process(p, false), CC_ERR_IN_TYPE);
  p.inType = COLOR_YUV420_PACK; // no set-up has made its scratch planes either
  p.outType = COLOR_YUV422_YUYV;
  EXPECT_EQ(process(p, false), CC_ERR_OUT_TYPE);
  p.inType = p.outType = COLOR_YUV444_PLANAR;
  EXPECT_EQ(process(p, false), CC_ERR_IN_TYPE);
  p.rotation = 8;
  EXPECT_EQ(process(p, false), CC_ERR_ARGUMENT);
}

} // namespace
