// Resizing lines of two gigabytes. A wide picture has the bars of a narrow one, so that every sample lies in the middle
// of a bar in both; what the models make of the narrow one is expected of the wide one.
#include "base/picture_shape.h"
#include "containment/cells.h"
#include "containment/expectation.h"
#include "frame/resample_tables.h"
#include "frame/route.h"
#include "reference/result_code.h"
#include "support/guarded_pages.h"
#include "support/picture.h"
#include "support/sparse_pages.h"
#include "tables/color_matrix.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

using containment::Mode;
using PlaneShape = support::BasicPlaneShape<int64_t>;
using support::SparsePages;
using zqcc::Axis;
using zqcc::TableFormat;

constexpr int kHeight = 8;
constexpr int kOut = 8; ///< columns and lines of the result
constexpr int kNarrow = 1024;
constexpr int kStride = 2146435070;
constexpr std::ptrdiff_t kBars = 32;
constexpr std::ptrdiff_t kBarUnits = 2048; ///< how much of a wide bar is there; more than positions are off

/// Lines of more than one byte a pixel are longer than any stride and lie on one another, but no bar on another.
constexpr int kWidest = 2147483632;

/// Bytes of what a bar repeats: a sample, a pair, a pixel, a packed group.
std::ptrdiff_t unitOf(int type, int plane) {
  if (support::isPacked422(type)) {
    return 4;
  }
  if (support::isRgb16(type) || (support::isSemiPlanar(type) && plane == 1)) {
    return 2;
  }
  return type == COLOR_RGB24 ? 3 : 1;
}

/// The bytes that a bar repeats. Both pixels of a packed group have the same luma.
std::array<uint8_t, 4> unitAt(int type, int plane, std::ptrdiff_t bar, std::ptrdiff_t line) {
  std::array<uint8_t, 4> bytes{};
  support::fill(bytes.data(), bytes.size(), support::Fill::Noise,
                static_cast<uint32_t>((plane * 64 + bar) * 16 + line));
  if (support::isPacked422(type)) {
    bytes[2] = zqcc::packedVariantOf(type) % 4 < 2 ? bytes[0] : bytes[2];
    bytes[3] = zqcc::packedVariantOf(type) % 4 < 2 ? bytes[3] : bytes[1];
  }
  return bytes;
}

/// Draws the middle `units` of every bar.
void drawBars(int type, int plane, const PlaneShape &shape, std::ptrdiff_t units, uint8_t *to) {
  const std::ptrdiff_t unit = unitOf(type, plane);
  const std::ptrdiff_t columns = shape.lineBytes / unit;
  for (std::ptrdiff_t line = 0; line < shape.lines; ++line) {
    for (std::ptrdiff_t bar = 0; bar < kBars; ++bar) {
      const auto bytes = unitAt(type, plane, bar, line);
      const std::ptrdiff_t middle = bar * columns / kBars;
      const std::ptrdiff_t first = middle < units / 2 ? 0 : middle - units / 2;
      for (std::ptrdiff_t i = first; i < middle + units / 2; ++i) {
        std::memcpy(to + line * shape.stride + i * unit, bytes.data(), static_cast<std::size_t>(unit));
      }
    }
  }
}

class WideSources : public testing::Test {
protected:
  void SetUp() override {
    for (const SparsePages *pages : {&in_[0], &in_[1], &in_[2], &xTable_}) {
      if (!pages->areThere()) {
        GTEST_SKIP() << pages->reason();
      }
    }
  }

  void draw(int type);
  /// Empty, or what is wrong with the picture.
  std::string convert(const Mode &mode);

private:
  void buildTables(const zqcc::Route &route, const Axis &columns, uint32_t quality);

  static constexpr uint64_t kPlane = uint64_t{kHeight + 3} * kStride;
  std::array<SparsePages, 3> in_{SparsePages(kPlane), SparsePages(kPlane), SparsePages(kPlane)};
  std::array<std::vector<uint8_t>, 3> narrow_;
  SparsePages xTable_{uint64_t{1} << 30};
  std::vector<int32_t> yTable_;
};

void WideSources::draw(int type) {
  for (int i = 0; i < support::planeCount(type); ++i) {
    const auto index = static_cast<std::size_t>(i);
    const PlaneShape wide = support::planeShape<int64_t>(type, kWidest, kHeight, kStride, i);
    drawBars(type, i, wide, kBarUnits, in_[index].data());
    const PlaneShape narrow =
        support::planeShape<int64_t>(type, kNarrow, kHeight, support::tightStride(type, kNarrow), i);
    narrow_[index].assign(narrow.bytes() + 64, 0);
    drawBars(type, i, narrow, narrow.lineBytes / unitOf(type, i) / kBars, narrow_[index].data());
  }
}

/// Tables as set-up makes them; what it would clear is clear, being sparse.
void WideSources::buildTables(const zqcc::Route &route, const Axis &columns, uint32_t quality) {
  constexpr Axis kLines{kHeight, kOut};
  yTable_.assign(256, 0);
  std::memset(xTable_.data(), 0, 1024);
  auto *x = reinterpret_cast<int32_t *>(xTable_.data());
  int32_t *y = yTable_.data();
  switch (route.tables) {
  case TableFormat::Nearest:
    zqcc::buildNearest(x, columns);
    zqcc::buildNearest(y, kLines);
    break;
  case TableFormat::Bilinear:
    zqcc::buildBilinear(x, columns);
    zqcc::buildBilinear(y, kLines);
    break;
  case TableFormat::Filtered:
    zqcc::buildFiltered(x, columns, zqcc::Direction::Horizontal, quality);
    zqcc::buildFiltered(y, kLines, zqcc::Direction::Vertical, quality);
    break;
  case TableFormat::Grouped:
    zqcc::buildGrouped(x, columns);
    zqcc::buildGrouped(y, kLines);
    break;
  default:
    FAIL() << "no table of this format here";
  }
}

std::string WideSources::convert(const Mode &mode) {
  ConvertParams narrow = containment::recordOf(mode, {kNarrow, kHeight, kOut, kOut});
  narrow.inStride = support::tightStride(mode.inType, kNarrow);
  narrow.outStride = support::tightStride(mode.outType, kOut);
  ConvertParams wide = narrow;
  wide.inWidth = kWidest;
  wide.inStride = kStride;
  std::array<std::vector<uint8_t>, 6> out;
  for (std::size_t i = 0; i < 3; ++i) {
    out.at(i).assign(std::size_t{3} * kOut * kOut, 7);
    out.at(i + 3) = out.at(i);
    narrow.inBuf[i] = narrow_.at(i).data();
    narrow.outBuf[i] = out.at(i).data();
    wide.inBuf[i] = in_.at(i).data();
    wide.outBuf[i] = out.at(i + 3).data();
  }
  containment::convertByReference(narrow, reference::Colour{});
  const zqcc::Route route = zqcc::routeOf(wide);
  buildTables(route, {wide.inWidth, kOut}, mode.quality);
  if (mode.inType != mode.outType && (mode.inType == COLOR_YVU420_PLANAR || mode.inType == COLOR_YVU422_PLANAR)) {
    std::swap(wide.inBuf[1], wide.inBuf[2]); // dispatch's part
  }
  const uint32_t variant = zqcc::isPacked422(mode.inType) ? zqcc::packedVariantOf(mode.inType) : 0;
  const zqcc::Job job{wide,
                      reinterpret_cast<const int32_t *>(xTable_.data()),
                      yTable_.data(),
                      zqcc::matrixEntry(MATRIX_BT601),
                      zqcc::isPlanar420(mode.inType),
                      variant,
                      wide.inStride,
                      zqcc::usableLevels()};
  if (support::catchFault([&] { route.routine(job); })) {
    return "reaches for memory that is not there";
  }
  for (std::size_t i = 0; i < 3; ++i) {
    if (out.at(i) != out.at(i + 3)) {
      return "plane " + std::to_string(i) + " differs";
    }
  }
  return "";
}

TEST_F(WideSources, ThePictureIsThatOfANarrowOne) {
  int drawn = -1;
  int converted = 0;
  for (const Mode &mode : containment::allModes()) {
    const bool turnsPlanes = (mode.rotation == ROTATION_90_LEFT || mode.rotation == ROTATION_90_RIGHT) &&
                             (mode.inType == 0 || mode.inType == 2 || mode.inType == 4 || mode.inType == 37);
    const ConvertParams p = containment::recordOf(mode, {kNarrow, kHeight, kOut, kOut});
    // Boxes see what lies between the bars, runs end at 65536, and scratch planes would be as large as the picture.
    if (mode.isResize == 0 || mode.rotation < ROTATION_NONE || mode.rotation > ROTATION_180 || mode.quality == 3 ||
        !reference::scales(p) || turnsPlanes || containment::readsPadding(p) || zqcc::routeOf(p).code != CC_OK ||
        zqcc::routeOf(p).tables == TableFormat::RunLength ||
        (support::isSemiPlanar(mode.inType) && mode.inType != mode.outType)) {
      continue;
    }
    if (mode.inType != drawn) {
      drawn = mode.inType;
      draw(drawn);
    }
    EXPECT_EQ(convert(mode), "") << "type " << mode.inType << " to " << mode.outType << ", rotation " << mode.rotation
                                 << ", quality " << mode.quality;
    ++converted;
  }
  EXPECT_GT(converted, 200);
}

} // namespace
