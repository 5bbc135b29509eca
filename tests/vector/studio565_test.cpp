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

/// How the samples of chroma lie: as rows, every second one of two rows, in pairs of one row.
enum class Chroma { Rows, EverySecond, PairsOfUV, PairsOfVU };

struct Stage {
  const char *name;
  const PerLevel<ColourRows> &rows;
  PixelOf expected;
  int32_t lines;
  int32_t columns; ///< pixels a chroma sample, on a line
  Chroma chroma = Chroma::Rows;

  [[nodiscard]] bool isPairs() const { return chroma == Chroma::PairsOfUV || chroma == Chroma::PairsOfVU; }
  [[nodiscard]] std::ptrdiff_t step() const { return chroma == Chroma::Rows ? 1 : 2; }

  /// The rows with chroma that lies so, of two rows or of the first of them.
  [[nodiscard]] SampleRows from(const SampleRows &rowsOfSamples) const {
    SampleRows from = rowsOfSamples;
    if (chroma == Chroma::PairsOfUV) {
      from.v = from.u + 1;
    } else if (chroma == Chroma::PairsOfVU) {
      from.v = from.u++;
    }
    return from;
  }
};

const Stage kStages[] = {
    {"six bits, half chroma, pair", STUDIO_SIX_BIT_PAIR, pixelOf<StudioSixBit>, 2, 2},
    {"six bits, half chroma", STUDIO_SIX_BIT_SINGLE, pixelOf<StudioSixBit>, 1, 2},
    {"six bits, every second sample", STUDIO_SIX_BIT_EVEN_PAIR, pixelOf<StudioSixBit>, 2, 2, Chroma::EverySecond},
    {"six bits, pairs of samples", STUDIO_SIX_BIT_EVEN_PAIR, pixelOf<StudioSixBit>, 2, 2, Chroma::PairsOfUV},
    {"six bits, pairs with V first", STUDIO_SIX_BIT_EVEN_PAIR, pixelOf<StudioSixBit>, 2, 2, Chroma::PairsOfVU},
    {"six bits, full chroma, pair", STUDIO_SIX_BIT_FULL_PAIR, pixelOf<StudioSixBit>, 2, 1},
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
  std::vector<uint8_t> rowOfU(512, 0xA5);
  std::vector<uint8_t> rowOfV(512, 0x5A);
  const SampleRows from = stage.from({{y[0].data(), y[1].data()}, rowOfU.data(), rowOfV.data()});
  uint8_t *const u = rowOfU.data() + (from.u - rowOfU.data());
  uint8_t *const v = stage.isPairs() ? rowOfU.data() + (from.v - rowOfU.data()) : rowOfV.data();
  std::vector<uint16_t> made[2] = {std::vector<uint16_t>(count), std::vector<uint16_t>(count)};
  std::vector<uint16_t> expected[2] = {made[0], made[1]};
  uint8_t *const to[2] = {reinterpret_cast<uint8_t *>(made[0].data()), reinterpret_cast<uint8_t *>(made[1].data())};
  for (std::ptrdiff_t i = 0; i < 256; ++i) {
    v[i * stage.step()] = static_cast<uint8_t>(i * 77); // an odd step reaches all of them
  }
  for (int32_t cb = 0; cb < 256; ++cb) {
    for (std::ptrdiff_t i = 0; i < 256; ++i) {
      u[i * stage.step()] = static_cast<uint8_t>(cb);
    }
    for (int32_t luma = 0; luma < 256; luma += stage.lines * stage.columns) {
      for (int32_t line = 0; line < stage.lines; ++line) {
        for (std::size_t x = 0; x < count; ++x) {
          const int32_t cr = v[static_cast<std::ptrdiff_t>(x) / stage.columns * stage.step()];
          const int32_t own = luma + line * stage.columns + static_cast<int32_t>(x) % stage.columns;
          y[line][x] = static_cast<uint8_t>(own);
          expected[line][x] = stage.expected(own, cb, cr);
        }
      }
      rows(from, to, pixels, 0, ColourConstants{});
      ASSERT_EQ(made[0], expected[0]) << "u " << cb << ", y from " << luma;
      ASSERT_EQ(made[1], expected[1]) << "u " << cb << ", y from " << luma;
    }
  }
}

void expectRows(const Stage &stage, ColourRows rows, int32_t pixels, support::Against against) {
  const auto count = static_cast<std::size_t>(pixels);
  const auto samples = static_cast<std::size_t>(pixels / stage.columns * stage.step());
  const GuardedRows guarded(count, samples, 2 * count, against);
  const SampleRows from = stage.from(guarded.samples());
  guarded.run(rows, from, pixels, 0, ColourConstants{});
  for (int32_t line = 0; line < stage.lines; ++line) {
    for (int32_t x = 0; x < pixels; ++x) {
      const std::ptrdiff_t chroma = x / stage.columns * stage.step();
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
