// Frames that are not resized and yet give two sizes. Converters take the size from the output fields, turning copies
// and pre-passes partly from the input's; whichever it is, nothing beyond the larger of the two is touched.
#include "containment/cells.h"
#include "support/guarded_pages.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>

namespace {

using containment::Mode;
using containment::Sizes;
using support::Against;
using support::GuardedPages;

constexpr std::size_t kCapacity = std::size_t{16} << 10;
constexpr std::array<Sizes, 14> kSizes{{{24, 20, 17, 15},
                                        {17, 15, 24, 20},
                                        {16, 16, 16, 18},
                                        {40, 8, 12, 30},
                                        {9, 33, 33, 9},
                                        {16, 1, 16, 16},
                                        {1, 16, 16, 16},
                                        {3, 3, 17, 20},
                                        {16, 16, 1, 1},
                                        {0, 16, 16, 16},
                                        {16, 0, 16, 16},
                                        {16, -3, 16, 16},
                                        {-3, 16, 16, 16},
                                        {-1, -1, 20, 18}}};

struct Planes {
  explicit Planes(GuardedPages::Access access) {
    for (auto &plane : pages) {
      plane = std::make_unique<GuardedPages>(kCapacity, access);
    }
  }
  void place(int type, int width, int height, int stride, support::LastPair lastPair, Against against) {
    for (int i = 0; i < 3; ++i) {
      const bool exists = i < support::planeCount(type);
      pages.at(static_cast<std::size_t>(i))
          ->place(exists ? support::planeShape(type, width, height, stride, i, lastPair).bytes() : 0, against);
    }
  }
  std::array<std::unique_ptr<GuardedPages>, 3> pages;
};

/// Empty, or what the frame touched that it must not.
std::string convert(const Mode &mode, const Sizes &sizes, Against against, int &converted) {
  static Planes in(GuardedPages::Access::ReadOnly);
  static Planes out(GuardedPages::Access::ReadWrite);
  const int width = std::max(sizes.width, sizes.outWidth);
  const int height = std::max(sizes.height, sizes.outHeight);
  ConvertParams p = containment::recordOf(mode, sizes);
  p.inStride = support::tightStride(mode.inType, width);
  const bool turned = mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT;
  in.place(mode.inType, width, height, p.inStride, support::lastInputPair(p), against);
  const int line = turned ? std::max(width, height) : width;
  const int lines = turned ? std::max(width, height) : height;
  p.outStride = support::tightStride(mode.outType, line);
  out.place(mode.outType, line, lines, p.outStride, support::lastOutputPair(p), against);
  for (std::size_t i = 0; i < 3; ++i) {
    p.inBuf[i] = in.pages[i]->data();
    p.outBuf[i] = out.pages[i]->data();
  }
  uint32_t code = CC_OK;
  if (support::catchFault([&] { code = support::convertOnce(p); })) {
    return "touches memory outside its planes";
  }
  converted += code == CC_OK ? 1 : 0;
  for (const auto &plane : out.pages) {
    if (plane->damage()) {
      return "writes outside its planes";
    }
  }
  return "";
}

TEST(UnequalSizes, NothingBeyondTheLargerIsTouched) {
  int converted = 0;
  for (const Mode &mode : containment::allModes()) {
    for (const Sizes &sizes : kSizes) {
      for (const Against against : {Against::End, Against::Start}) {
        if (mode.isResize == 0 && mode.quality == 0) {
          ASSERT_EQ(convert(mode, sizes, against, converted), "")
              << "type " << mode.inType << " to " << mode.outType << ", rotation " << mode.rotation << ", "
              << sizes.width << "x" << sizes.height << " and " << sizes.outWidth << "x" << sizes.outHeight;
        }
      }
    }
  }
  EXPECT_GT(converted, 5000);
}

} // namespace
