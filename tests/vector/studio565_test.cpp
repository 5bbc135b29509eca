// The stages of fixed BT.601 against the portable arithmetic.
#include "vector/studio565.h"

#include "kernels/arithmetic.h"
#include "vector/colour_rows.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zqcc {
namespace {

using PixelOf = uint16_t (*)(int32_t y, int32_t u, int32_t v);

template <class Arithmetic>
uint16_t pixelOf(int32_t y, int32_t u, int32_t v) {
  static const Arithmetic arithmetic(*matrixEntry(0));
  return static_cast<uint16_t>(arithmetic.template pixel<0, 0>(Arithmetic::terms(u, v), y));
}

struct Stage {
  const char *name;
  const PerLevel<ColourRows> &rows;
  PixelOf expected;
  int32_t lines;
  int32_t columns; ///< pixels a chroma sample, on a line
};

const Stage kStages[] = {
    {"six bits, half chroma, pair", STUDIO_SIX_BIT_PAIR, pixelOf<StudioSixBit>, 2, 2},
    {"six bits, half chroma", STUDIO_SIX_BIT_SINGLE, pixelOf<StudioSixBit>, 1, 2},
    {"six bits, full chroma", STUDIO_SIX_BIT_FULL, pixelOf<StudioSixBit>, 1, 1},
    {"video range, half chroma, pair", STUDIO_VIDEO_RANGE_PAIR, pixelOf<StudioVideoRange>, 2, 2},
    {"five and six bits, half chroma, pair", STUDIO_FIVE_SIX_PAIR, pixelOf<StudioFiveSix>, 2, 2},
    {"five and six bits, half chroma", STUDIO_FIVE_SIX_SINGLE, pixelOf<StudioFiveSix>, 1, 2},
    {"five and six bits, full chroma", STUDIO_FIVE_SIX_FULL, pixelOf<StudioFiveSix>, 1, 1},
};

/// Every v beside each other, so that neighbours differ, with as many lumas as pixels share a chroma sample.
void expectEveryColour(const Stage &stage, ColourRows rows) {
  const int32_t pixels = 256 * stage.columns;
  const auto count = static_cast<std::size_t>(pixels);
  std::vector<uint8_t> y[2] = {std::vector<uint8_t>(count), std::vector<uint8_t>(count)};
  std::vector<uint8_t> u(256);
  std::vector<uint8_t> v(256);
  std::vector<uint16_t> made[2] = {std::vector<uint16_t>(count), std::vector<uint16_t>(count)};
  std::vector<uint16_t> expected[2] = {made[0], made[1]};
  uint8_t *const to[2] = {reinterpret_cast<uint8_t *>(made[0].data()), reinterpret_cast<uint8_t *>(made[1].data())};
  for (std::size_t i = 0; i < v.size(); ++i) {
    v[i] = static_cast<uint8_t>(i * 77); // an odd step reaches all of them
  }
  for (int32_t cb = 0; cb < 256; ++cb) {
    u.assign(u.size(), static_cast<uint8_t>(cb));
    for (int32_t luma = 0; luma < 256; luma += stage.lines * stage.columns) {
      for (int32_t line = 0; line < stage.lines; ++line) {
        for (std::size_t x = 0; x < count; ++x) {
          const int32_t cr = v[x / static_cast<std::size_t>(stage.columns)];
          const int32_t own = luma + line * stage.columns + static_cast<int32_t>(x) % stage.columns;
          y[line][x] = static_cast<uint8_t>(own);
          expected[line][x] = stage.expected(own, cb, cr);
        }
      }
      rows({{y[0].data(), y[1].data()}, u.data(), v.data()}, to, pixels, 0, ColourConstants{});
      ASSERT_EQ(made[0], expected[0]) << "u " << cb << ", y from " << luma;
      ASSERT_EQ(made[1], expected[1]) << "u " << cb << ", y from " << luma;
    }
  }
}

void expectRows(const Stage &stage, ColourRows rows, int32_t pixels, support::Against against) {
  const auto count = static_cast<std::size_t>(pixels);
  const GuardedRows guarded(count, count / static_cast<std::size_t>(stage.columns), 2 * count, against);
  guarded.run(rows, pixels, 0, ColourConstants{});
  const SampleRows from = guarded.samples();
  for (int32_t line = 0; line < stage.lines; ++line) {
    for (int32_t x = 0; x < pixels; ++x) {
      const int32_t chroma = x / stage.columns;
      ASSERT_EQ(guarded.pixel(line, x), stage.expected(from.y[line][x], from.u[chroma], from.v[chroma]))
          << "pixel " << x << " of " << pixels << ", line " << line;
    }
  }
}

class Studio565 : public AtEveryLevel {};

TEST_P(Studio565, MakesEveryColour) {
  for (const Stage &stage : kStages) {
    SCOPED_TRACE(stage.name);
    ASSERT_NE(stage.rows.of[GetParam()], nullptr);
    ASSERT_NO_FATAL_FAILURE(expectEveryColour(stage, stage.rows.of[GetParam()]));
  }
}

TEST_P(Studio565, RowsKeepWithinTheirEnds) {
  for (const Stage &stage : kStages) {
    SCOPED_TRACE(stage.name);
    ASSERT_NE(stage.rows.of[GetParam()], nullptr);
    for (int32_t pixels = kShortestRow; pixels <= kLongestRow; pixels += stage.columns) {
      for (const auto against : {support::Against::End, support::Against::Start}) {
        ASSERT_NO_FATAL_FAILURE(expectRows(stage, stage.rows.of[GetParam()], pixels, against));
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, Studio565, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
} // namespace zqcc
