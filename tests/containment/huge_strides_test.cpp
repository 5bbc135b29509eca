// Lines a gigabyte apart. A picture's samples do not depend on its strides, so what the models make of a small stride
// is expected of lines whose offsets leave 32 bits.
#include "base/picture_shape.h"
#include "containment/cells.h"
#include "containment/expectation.h"
#include "reference/result_code.h"
#include "support/guarded_pages.h"
#include "support/picture.h"
#include "support/sparse_pages.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace {

using containment::Mode;
using containment::Sizes;
using support::PlaneShape;
using support::SparsePages;

constexpr int kStride = 1 << 30;
constexpr int kPadding = 16;
constexpr uint64_t kInLines = 20;
constexpr uint64_t kLines = 124; ///< of the highest output, the widest picture that is turned
constexpr Sizes kBlocks{32, 16, 32, 16};
constexpr Sizes kBlocksAndEdges{37, 19, 37, 19};
/// No ratio in particular, more columns than are made at a time, and each ratio that has routines of its own.
constexpr std::array<Sizes, 6> kResized{
    {{32, 16, 40, 20}, {32, 16, 124, 20}, {32, 16, 16, 8}, {32, 16, 24, 12}, {32, 16, 48, 24}, {32, 16, 64, 32}}};

/// Turns of planar input to RGB565 place blocks and edges from different ends of a stride.
bool tearsEdgesOff(const Mode &m) {
  return support::isRgb16(m.outType) && m.inType != m.outType && m.isResize == 0 && zqcc::isPlanar(m.inType) &&
         (m.rotation == ROTATION_90_RIGHT || m.rotation == ROTATION_180);
}

std::vector<Sizes> sizesFor(const Mode &m) {
  if (m.isResize == 0) {
    return tearsEdgesOff(m) ? std::vector<Sizes>{kBlocks} : std::vector<Sizes>{kBlocks, kBlocksAndEdges};
  }
  return m.quality == 0 ? std::vector<Sizes>(kResized.begin(), kResized.end()) : std::vector<Sizes>{kResized[0]};
}

/// Half turns to RGB565 end where the stride ends; so does the resized one of planar 4:2:0.
bool liesAtTheLinesEnd(const Mode &m) {
  if (m.rotation != ROTATION_180) {
    return false;
  }
  if (m.inType == m.outType) {
    return zqcc::isPlanar420(m.inType) && m.isResize == 1;
  }
  const bool otherChroma = m.inType == 0 || m.inType == 2 || m.inType == 4 || m.inType == 37;
  const bool keepsItsTurn = m.isResize == 0 || !(otherChroma || support::isPacked422(m.inType));
  return support::isRgb16(m.outType) && m.inType != COLOR_RGB24 && keepsItsTurn;
}

/// Set up with small strides, which frames may change: set-up measures scratch planes by them.
uint32_t convertFar(ConvertParams near, ConvertParams far) {
  ConvertContext *handle = nullptr;
  uint32_t code = zqCCInit(&handle);
  if (code == CC_OK) {
    code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &near);
  }
  if (code == CC_OK) {
    code = zqCCProcess(handle, &far);
  }
  zqCCUninit(handle);
  return code;
}

class HugeStrides : public testing::Test {
protected:
  void SetUp() override {
    for (const auto *planes : {&in_, &out_}) {
      for (const SparsePages &pages : *planes) {
        if (!pages.areThere()) {
          GTEST_SKIP() << pages.reason();
        }
      }
    }
  }

  /// Empty, or what is wrong with the picture.
  std::string convert(const Mode &mode, const Sizes &sizes);

  int converted_ = 0;

private:
  using Planes = std::array<std::vector<uint8_t>, 3>;

  /// The planes of a picture with a small stride, and the same lines far apart.
  static Planes planesOf(int type, int width, int height, int stride, uint32_t seed) {
    Planes planes;
    for (int i = 0; i < support::planeCount(type); ++i) {
      const PlaneShape shape = support::planeShape(type, width, height, stride, i);
      auto &plane = planes.at(static_cast<std::size_t>(i));
      plane.resize(static_cast<std::size_t>(shape.lines) * static_cast<std::size_t>(shape.stride));
      support::fill(plane.data(), plane.size(), support::Fill::Noise, seed + static_cast<uint32_t>(i));
    }
    return planes;
  }

  /// Calls visit(small line, huge line, bytes) for every line of a plane.
  template <class Visit>
  static void forEachLine(int type, const reference::Size &size, int stride, int index, bool atEnd, uint8_t *small,
                          uint8_t *huge, Visit visit) {
    const PlaneShape near = support::planeShape(type, size.width, size.height, stride, index);
    const PlaneShape far = support::planeShape(type, size.width, size.height, kStride, index);
    const std::ptrdiff_t nearStart = atEnd ? near.stride - near.lineBytes : 0;
    const std::ptrdiff_t farStart = atEnd ? far.stride - far.lineBytes : 0;
    for (std::ptrdiff_t y = 0; y < near.lines; ++y) {
      visit(small + y * near.stride + nearStart, huge + y * far.stride + farStart,
            static_cast<std::size_t>(near.lineBytes));
    }
  }

  std::array<SparsePages, 3> in_{SparsePages(kInLines * kStride), SparsePages(kInLines *kStride),
                                 SparsePages(kInLines *kStride)};
  std::array<SparsePages, 3> out_{SparsePages(kLines * kStride), SparsePages(kLines *kStride),
                                  SparsePages(kLines *kStride)};
};

std::string HugeStrides::convert(const Mode &mode, const Sizes &sizes) {
  const auto copy = [](uint8_t *small, uint8_t *huge, std::size_t bytes) { std::memcpy(huge, small, bytes); };
  ConvertParams p = containment::recordOf(mode, sizes);
  p.inStride = support::tightStride(mode.inType, sizes.width) + kPadding;
  const reference::Size written = containment::writtenSize(p);
  p.outStride = support::tightStride(mode.outType, written.width) + kPadding;
  Planes in = planesOf(mode.inType, sizes.width, sizes.height, p.inStride, 3);
  Planes out = planesOf(mode.outType, written.width, written.height, p.outStride, 9);
  const bool atEnd = liesAtTheLinesEnd(mode);
  ConvertParams far = p;
  far.inStride = far.outStride = kStride;
  for (int i = 0; i < 3; ++i) {
    const auto index = static_cast<std::size_t>(i);
    p.inBuf[i] = in[index].data();
    p.outBuf[i] = out[index].data();
    far.inBuf[i] = in_[index].data();
    far.outBuf[i] = out_[index].data();
    if (i < support::planeCount(mode.inType)) {
      forEachLine(mode.inType, {sizes.width, sizes.height}, p.inStride, i, false, in[index].data(), in_[index].data(),
                  copy);
    }
    if (i < support::planeCount(mode.outType)) {
      forEachLine(mode.outType, written, p.outStride, i, atEnd, out[index].data(), out_[index].data(), copy);
    }
  }
  if (reference::setupCode(p) != CC_OK || reference::resultCode(p, p) != CC_OK) {
    return "";
  }
  uint32_t code = CC_OK;
  if (support::catchFault([&] { code = convertFar(p, far); })) {
    return "reaches for memory that is not there";
  }
  containment::convertByReference(p, reference::Colour{});
  std::string found = code == CC_OK ? "" : "is refused";
  for (int i = 0; i < support::planeCount(mode.outType); ++i) {
    const auto index = static_cast<std::size_t>(i);
    forEachLine(mode.outType, written, p.outStride, i, atEnd, out[index].data(), out_[index].data(),
                [&](const uint8_t *small, const uint8_t *huge, std::size_t bytes) {
                  if (std::memcmp(small, huge, bytes) != 0) {
                    found = "plane " + std::to_string(i) + " differs";
                  }
                });
  }
  ++converted_;
  return found;
}

TEST_F(HugeStrides, ThePictureIsThatOfASmallStride) {
  for (const Mode &mode : containment::allModes()) {
    // Scratch planes would have to be as large as the stride.
    const bool splits = support::isSemiPlanar(mode.inType) && mode.inType != mode.outType;
    if (splits || mode.rotation < ROTATION_NONE || mode.rotation > ROTATION_FLIP_V ||
        containment::readsPadding(containment::recordOf(mode, kBlocks))) {
      continue;
    }
    for (const Sizes &sizes : sizesFor(mode)) {
      EXPECT_EQ(convert(mode, sizes), "")
          << "type " << mode.inType << " to " << mode.outType << ", rotation " << mode.rotation << ", quality "
          << mode.quality << ", isResize " << mode.isResize << ", " << sizes.width << "x" << sizes.height << " to "
          << sizes.outWidth << "x" << sizes.outHeight;
    }
  }
  EXPECT_GT(converted_, 3000);
}

} // namespace
