// Filtered resizing by rows: which frames it takes, and that it makes the portable code's bytes of them.
#include "vector/filtered.h"

#include "base/picture_shape.h"
#include "base/plan_kind.h"
#include "frame/resample_tables.h"
#include "resize_rgb/antialias.h"
#include "support/picture.h"
#include "tables/color_matrix.h"
#include "vector/colour_rows.h"
#include "vector/resize_plan.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace zqcc {
namespace {

using support::GuardedPages;

/// A planar type, how its chroma belongs to pixels, and the routine that has it.
struct Type {
  int32_t type;
  int32_t columnShift;
  int32_t lineShift;
  Routine routine;
};

constexpr std::array<Type, 8> kTypes{{{COLOR_YUV420_PLANAR, 1, 1, resizeYuvToRgb565AntiAlias},
                                      {COLOR_YUV422_PLANAR, 1, 1, resizeYuvToRgb565AntiAlias},
                                      {COLOR_YUV420_PACK, 1, 1, resizeYuvToRgb565AntiAlias},
                                      {COLOR_YUV444_PLANAR, 0, 0, resizeYuv444ToRgb565AntiAlias},
                                      {COLOR_YUV440_PLANAR, 0, 1, resizeYuv440ToRgb565AntiAlias},
                                      {COLOR_YUV411_PLANAR, 2, 0, resizeYuv411ToRgb565AntiAlias},
                                      {COLOR_YUV_QUARTER_HEIGHT, 0, 2, resizeYuvQuarterHeightToRgb565AntiAlias},
                                      {COLOR_RGB888_PLANAR, 0, 0, resizePlanarRgbToRgb565AntiAlias}}};

/// A frame of noise with the tables and the plan that set-up would make.
class Frame {
public:
  Frame(int32_t type, const std::array<int32_t, 4> &sizes, uint32_t quality, int32_t padding = 0) {
    const Axis columns{sizes[0], sizes[2]};
    const Axis lines{sizes[1], sizes[3]};
    params_.inType = type;
    params_.outType = COLOR_RGB565;
    params_.isResize = 1;
    params_.antiAlias = quality;
    params_.inWidth = sizes[0];
    params_.inStride = sizes[0] + padding;
    params_.inHeight = sizes[1];
    params_.outWidth = sizes[2];
    params_.outHeight = sizes[3];
    params_.outStride = 2 * sizes[2];
    const int64_t luma = int64_t{params_.inStride} * (sizes[1] - 1) + sizes[0];
    const int64_t chroma = chromaPlaneBytes(type, sizes[0], sizes[1], params_.inStride);
    for (std::size_t i = 0; i < 3; ++i) {
      const auto bytes = static_cast<std::size_t>(i == 0 ? luma : chroma);
      planes_.at(i) = std::make_unique<GuardedPages>(bytes, GuardedPages::Access::ReadOnly);
      planes_.at(i)->place(bytes, support::Against::End);
      support::fill(planes_.at(i)->write(), bytes, support::Fill::Noise, static_cast<uint32_t>(i + 3));
      params_.inBuf[i] = planes_.at(i)->data();
    }
    const bool isBox = quality == 3;
    const TableFormat format = isBox ? TableFormat::Box : TableFormat::Filtered;
    x_.resize(tableWords(format, columns, quality));
    y_.resize(tableWords(format, lines, quality));
    if (isBox) {
      buildBox(x_.data(), columns, boxSpacing(columns));
      buildBox(y_.data(), lines, boxSpacing(lines));
    } else {
      buildFiltered(x_.data(), columns, Direction::Horizontal, quality);
      buildFiltered(y_.data(), lines, Direction::Vertical, quality);
    }
    const PlanKind kind = isBox ? PlanKind::Box : PlanKind::FivePoint;
    const uint64_t bytes = resizePlanBytes(kind, params_);
    plan_.resize(static_cast<std::size_t>(bytes) / sizeof(FilterGroup) + 1);
    if (bytes > 0) {
      auto *memory = reinterpret_cast<uint8_t *>(plan_.data());
      buildResizePlan(kind, params_, x_.data(), memory);
      plan = reinterpret_cast<const ResizePlan *>(memory);
    }
  }

  void setStride(int32_t stride) { params_.inStride = stride; }

  /// The picture, from 0xA5 everywhere. `convert` is given the job and must read what is in the planes only.
  template <class Convert>
  std::vector<uint8_t> picture(Level level, Convert convert) {
    std::vector<uint8_t> out(static_cast<std::size_t>(params_.outStride) * static_cast<std::size_t>(params_.outHeight),
                             0xA5);
    params_.outBuf[0] = out.data();
    const ColorMatrix matrix{};
    const bool isPortable = level == LEVEL_PORTABLE;
    const Job job{params_,
                  x_.data(),
                  y_.data(),
                  &matrix,
                  false,
                  0,
                  params_.inStride,
                  support::upTo(level),
                  false,
                  isPortable ? nullptr : plan};
    EXPECT_FALSE(support::catchFault([&] { convert(job); }).has_value()) << "reads behind a plane";
    return out;
  }

  const ResizePlan *plan = nullptr;

private:
  ConvertParams params_{};
  std::array<std::unique_ptr<GuardedPages>, 3> planes_; ///< with unmapped pages behind them
  std::vector<int32_t> x_;
  std::vector<int32_t> y_;
  std::vector<FilterGroup> plan_; ///< for the alignment
};

class Filtered : public AtEveryLevel {
protected:
  /// Whether the frame is taken; then its bytes are the portable ones.
  static bool isTaken(const Type &type, Frame &frame) {
    bool taken = false;
    const auto byRows = frame.picture(GetParam(), [&](const Job &job) {
      taken = filteredByRows(job, type.columnShift, type.lineShift, type.type == COLOR_RGB888_PLANAR);
    });
    if (taken) {
      EXPECT_EQ(byRows, frame.picture(LEVEL_PORTABLE, type.routine));
    } else {
      EXPECT_EQ(byRows, std::vector<uint8_t>(byRows.size(), 0xA5)) << "not taken, but written";
    }
    return taken;
  }
};

INSTANTIATE_TEST_SUITE_P(Levels, Filtered, testing::ValuesIn(kFilterLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

TEST_P(Filtered, TakesEveryLayoutAtEveryRatio) {
  constexpr std::array<std::array<int32_t, 4>, 25> kSizes{
      {{256, 160, 32, 20},   {576, 72, 64, 8},     {1920, 108, 800, 48}, {1920, 60, 1152, 36}, {1280, 60, 768, 36},
       {1920, 60, 320, 10},  {1280, 64, 320, 16},  {1280, 64, 160, 8},   {1921, 81, 481, 19},  {640, 64, 20, 32},
       {2048, 128, 64, 8},   {300, 300, 150, 290}, {257, 67, 300, 99},   {64, 64, 2048, 70},   {700, 101, 699, 100},
       {4096, 40, 1100, 13}, {4216, 20, 1054, 5},  {4216, 24, 527, 12},  {3200, 30, 533, 30},  {3162, 36, 527, 5},
       {1290, 40, 320, 10},  {1930, 40, 320, 10},  {1280, 40, 128, 4},   {140, 2400, 35, 400}, {96, 3200, 16, 400}}};
  for (const Type &type : kTypes) {
    for (const auto &sizes : kSizes) {
      for (const uint32_t quality : {1U, 2U, 3U}) {
        Frame frame(type.type, sizes, quality);
        EXPECT_TRUE(isTaken(type, frame)) << "type " << type.type << ", " << sizes[0] << "x" << sizes[1] << " to "
                                          << sizes[2] << "x" << sizes[3] << ", quality " << quality;
      }
    }
  }
}

TEST_P(Filtered, LeavesWhatHasNoPlan) {
  // Pictures for which a plan does not pay, and lines too short for any window.
  Frame small(COLOR_YUV420_PLANAR, {64, 64, 15, 40}, 1);
  EXPECT_FALSE(isTaken(kTypes[0], small));
  Frame narrow(COLOR_YUV420_PLANAR, {6, 64, 40, 40}, 1);
  EXPECT_FALSE(isTaken(kTypes[0], narrow));
  // Taps are planned for lines that do not end before the picture does; boxes are as wide as the stride allows.
  for (const uint32_t quality : {1U, 3U}) {
    for (const int32_t stride : {180, 182}) {
      Frame shortened(COLOR_YUV444_PLANAR, {200, 64, 80, 40}, quality);
      shortened.setStride(stride);
      EXPECT_EQ(isTaken(kTypes[3], shortened), quality == 3);
    }
  }
}

TEST_P(Filtered, TakesPaddedLines) {
  for (const Type &type : kTypes) {
    for (const uint32_t quality : {1U, 2U, 3U}) {
      for (const int32_t padding : {1, 2, 8, 37}) {
        Frame frame(type.type, {400, 60, 170, 20}, quality, padding);
        EXPECT_TRUE(isTaken(type, frame)) << "type " << type.type << ", padding " << padding;
      }
    }
  }
}

} // namespace
} // namespace zqcc
