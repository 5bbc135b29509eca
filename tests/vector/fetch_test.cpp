// Every fetch stage, at every level that this machine has, against plain loops over what the layouts say.
#include "vector/fetch.h"

#include "kernels/layouts.h"
#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace {

using support::Against;
using support::GuardedPages;
using zqcc::FetchRows;
using zqcc::kFetchOf;
using zqcc::LayoutValues;
using zqcc::PackedLayout;
using zqcc::SourceLine;

constexpr int kShortest = 16;
constexpr int kLongest = 140;

/// A layout of one line in one or two buffers, and the stage that makes rows of it.
struct Layout {
  std::string name;
  const zqcc::PerLevel<FetchRows> *stage;
  LayoutValues values;
  bool planes;        ///< u and v in buffers of their own
  std::ptrdiff_t y;   ///< where the samples of the first pixel stand in the first buffer
  std::ptrdiff_t u;   ///< in the second, if there is one
  std::ptrdiff_t v;   ///< in the third
  int bytesOf4Pixels; ///< bytes of the buffer (or of each chroma plane) that may be read for four pixels
  bool fullChroma;
};

template <class Shape>
Layout layoutOf(const std::string &name, bool planes, std::ptrdiff_t y, std::ptrdiff_t u, std::ptrdiff_t v, int bytes) {
  return {name, kFetchOf<Shape>, Shape::kValues, planes, y, u, v, bytes, Shape::kValues.xShift == 0};
}

template <uint32_t variant>
void addPacked(std::vector<Layout> &all) {
  const PackedLayout bytes = zqcc::packedLayout(variant);
  const std::string name = "packed " + std::to_string(variant);
  all.push_back(layoutOf<typename zqcc::Packed422UpperChroma<variant>::Layout>(name + ", chroma of the upper line",
                                                                               false, bytes.left, bytes.u, bytes.v, 8));
  all.push_back(
      layoutOf<typename zqcc::Packed422<(variant > 3)>::Layout>(name, false, bytes.left, bytes.u, bytes.v, 8));
}

std::vector<Layout> everyLayout() {
  std::vector<Layout> all;
  using Half = zqcc::Yuv440::Layout;
  all.push_back(layoutOf<Half>("pairs, U first", false, 0, 0, 1, 4));
  all.push_back(layoutOf<Half>("pairs, V first", false, 0, 1, 0, 4));
  all.push_back(layoutOf<Half>("4:4:0", true, 0, 0, 0, 4));
  all.push_back(layoutOf<zqcc::Yuv411::Layout>("4:1:1", true, 0, 0, 0, 1));
  addPacked<0>(all);
  addPacked<1>(all);
  addPacked<2>(all);
  addPacked<3>(all);
  addPacked<4>(all);
  addPacked<5>(all);
  addPacked<6>(all);
  addPacked<7>(all);
  return all;
}

/// Whether a stage makes a row of luma; where luma lies as it is, the layout's pattern says so.
bool makesLuma(const Layout &layout) {
  return layout.values.pairStep != 2;
}

struct Rows {
  std::vector<uint8_t> y;
  std::vector<uint8_t> u;
  std::vector<uint8_t> v;
};

/// Bytes that no stage is asked for, around every row.
constexpr std::size_t kAround = 80;
constexpr uint8_t kUntouched = 0xA5;

Rows untouchedRows(int pixels) {
  const std::vector<uint8_t> row(static_cast<std::size_t>(pixels) + 2 * kAround, kUntouched);
  return {row, row, row};
}

/// One line in guarded memory.
class Line {
public:
  explicit Line(const Layout &layout) : layout_(layout) {}

  void place(int pixels, Against against, uint32_t seed) {
    const auto bytes = static_cast<std::size_t>((pixels * layout_.bytesOf4Pixels + 3) / 4);
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      pages_[i].place(bytes, against);
      support::fill(pages_[i].write(), bytes, support::Fill::Noise, seed + static_cast<uint32_t>(i));
    }
    // Luma that lies as it is gets no address at all: no stage may look at it.
    const uint8_t *y = layout_.values.pairStep != 2 ? pages_[0].data() + layout_.y : nullptr;
    source_ = {y, pages_[0].data() + layout_.u, pages_[layout_.planes ? 1 : 0].data() + layout_.v};
  }
  [[nodiscard]] const SourceLine &source() const { return source_; }

  [[nodiscard]] Rows expected(int pixels, bool luma) const {
    Rows rows = untouchedRows(pixels);
    const LayoutValues &values = layout_.values;
    for (int x = 0; luma && x < pixels; ++x) {
      const int right = x % 2 != 0 ? values.rightLuma - values.leftLuma : 0;
      rows.y[kAround + static_cast<std::size_t>(x)] = source_.y[x / 2 * values.pairStep + right];
    }
    const int step = layout_.fullChroma ? 1 : 2;
    for (int x = 0; x < pixels; x += step) {
      const std::size_t i = kAround + static_cast<std::size_t>(x / step);
      rows.u[i] = source_.u[(x >> values.xShift) * values.sampleStep];
      rows.v[i] = source_.v[(x >> values.xShift) * values.sampleStep];
    }
    return rows;
  }

private:
  const Layout &layout_;
  std::array<GuardedPages, 2> pages_{GuardedPages(4096, GuardedPages::Access::ReadOnly),
                                     GuardedPages(4096, GuardedPages::Access::ReadOnly)};
  SourceLine source_{};
};

void expectRows(const Layout &layout, FetchRows stage) {
  Line line(layout);
  for (int pixels = kShortest; pixels <= kLongest; pixels += 2) {
    for (const Against against : {Against::End, Against::Start}) {
      line.place(pixels, against, static_cast<uint32_t>(pixels));
      Rows rows = untouchedRows(pixels);
      const auto fault = support::catchFault([&] {
        stage(line.source(), {rows.y.data() + kAround, rows.u.data() + kAround, rows.v.data() + kAround}, pixels);
      });
      ASSERT_FALSE(fault.has_value()) << layout.name << ", " << pixels << " pixels";
      const Rows expected = line.expected(pixels, makesLuma(layout));
      ASSERT_EQ(rows.y, expected.y) << layout.name << ", " << pixels << " pixels";
      ASSERT_EQ(rows.u, expected.u) << layout.name << ", " << pixels << " pixels";
      ASSERT_EQ(rows.v, expected.v) << layout.name << ", " << pixels << " pixels";
    }
  }
}

class FetchStage : public testing::TestWithParam<zqcc::Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }
};

TEST_P(FetchStage, MakesTheRowsOfEveryLayout) {
  for (const Layout &layout : everyLayout()) {
    ASSERT_NE(layout.stage, nullptr) << layout.name;
    const FetchRows stage = layout.stage->of[GetParam()];
    ASSERT_NE(stage, nullptr) << layout.name;
    expectRows(layout, stage);
  }
}

TEST_P(FetchStage, TakesRowsAtAnyAddress) {
  for (const Layout &layout : everyLayout()) {
    const FetchRows stage = layout.stage->of[GetParam()];
    Line line(layout);
    for (std::size_t shift = 0; shift < 64; ++shift) {
      constexpr int kPixels = 134;
      line.place(kPixels, Against::End, static_cast<uint32_t>(shift));
      // Buffers that begin at every place within a group.
      alignas(64) std::array<uint8_t, 256> y{};
      alignas(64) std::array<uint8_t, 256> u{};
      alignas(64) std::array<uint8_t, 256> v{};
      stage(line.source(), {y.data() + shift, u.data() + shift, v.data() + shift}, kPixels);
      const Rows expected = line.expected(kPixels, makesLuma(layout));
      const auto bytes = static_cast<std::size_t>(layout.fullChroma ? kPixels : kPixels / 2);
      ASSERT_EQ(std::memcmp(u.data() + shift, expected.u.data() + kAround, bytes), 0) << layout.name << " " << shift;
      ASSERT_EQ(std::memcmp(v.data() + shift, expected.v.data() + kAround, bytes), 0) << layout.name << " " << shift;
      if (makesLuma(layout)) {
        ASSERT_EQ(std::memcmp(y.data() + shift, expected.y.data() + kAround, kPixels), 0)
            << layout.name << " " << shift;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, FetchStage,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_NEON));

} // namespace
