// Turned rows of packed 4:2:2 at every level, against plain loops that build every macropixel from bytes, with unmapped
// pages next to what is read and written.
#include "vector/place_packed422.h"

#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using support::Against;
using support::GuardedPages;
using zqcc::PixelBlock;

constexpr std::ptrdiff_t kPixelBytes = 2;

struct Turning {
  int32_t columns;
  int32_t lines;
  std::ptrdiff_t padding;
  bool rowsGoUp;
  bool outputGoesUp;
  Against against;
};

std::string nameOf(const Turning &t) {
  return std::to_string(t.columns) + " columns, " + std::to_string(t.lines) + " lines, padded by " +
         std::to_string(t.padding) + (t.rowsGoUp ? ", rows up" : "") + (t.outputGoesUp ? ", output up" : "") +
         (t.against == Against::End ? ", against the end" : "");
}

class TurnedMacropixels : public testing::TestWithParam<zqcc::Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }

  /// Turns by the stage for macropixels whose first luma byte is byte `luma`. Says what went wrong.
  std::string turned(const Turning &t, std::ptrdiff_t luma) {
    const std::ptrdiff_t stride = t.columns * kPixelBytes + t.padding;
    const std::ptrdiff_t outStride = t.lines * kPixelBytes + t.padding;
    rows_.place(static_cast<std::size_t>(stride * t.lines - t.padding), t.against);
    output_.place(static_cast<std::size_t>(outStride * t.columns - t.padding), t.against);
    support::fill(rows_.write(), rows_.size(), support::Fill::Noise, seed_++);
    support::fill(output_.write(), output_.size(), support::Fill::Noise, seed_++);
    std::vector<uint8_t> expected(output_.write(), output_.write() + output_.size());
    const std::ptrdiff_t chroma = 1 - luma;
    for (std::ptrdiff_t line = 0; line < t.lines; ++line) {
      const auto rowOf = [&](std::ptrdiff_t l) { return rows_.data() + (t.rowsGoUp ? t.lines - 1 - l : l) * stride; };
      const uint8_t *row = rowOf(line);
      const uint8_t *giver = rowOf(line - line % 2); // the first of two lines has the chroma of both
      for (std::ptrdiff_t x = 0; x < t.columns; ++x) {
        const std::ptrdiff_t macropixel = x / 2 * 4;
        uint8_t *to = expected.data() + (t.outputGoesUp ? t.columns - 1 - x : x) * outStride + line * kPixelBytes;
        to[luma] = row[macropixel + x % 2 * 2 + luma];
        to[chroma] = giver[macropixel + line % 2 * 2 + chroma];
      }
    }
    const auto stage = (luma == 0 ? zqcc::TRANSPOSE_LUMA_FIRST : zqcc::TRANSPOSE_CHROMA_FIRST).of[GetParam()];
    const PixelBlock block = t.rowsGoUp ? PixelBlock{rows_.data() + (t.lines - 1) * stride, -stride, t.columns, t.lines}
                                        : PixelBlock{rows_.data(), stride, t.columns, t.lines};
    uint8_t *const to = output_.data() + (t.outputGoesUp ? (t.columns - 1) * outStride : 0);
    if (support::catchFault([&] { stage(block, to, t.outputGoesUp ? -outStride : outStride); })) {
      return "touches memory that is not its own";
    }
    if (output_.damage()) {
      return "writes beside the output";
    }
    const auto wrong = std::mismatch(expected.begin(), expected.end(), output_.write());
    return wrong.first == expected.end() ? "" : "byte " + std::to_string(wrong.first - expected.begin()) + " is wrong";
  }

private:
  GuardedPages rows_{1 << 16, GuardedPages::Access::ReadOnly};
  GuardedPages output_{1 << 16, GuardedPages::Access::ReadWrite};
  uint32_t seed_ = 1;
};

TEST_P(TurnedMacropixels, ShareTheirChromaInBlocksOfEverySize) {
  for (int32_t columns = 8; columns <= 40; columns += 2) {
    for (int32_t lines = 8; lines <= 70; lines += 2) {
      for (const std::ptrdiff_t luma : {0, 1}) {
        const int32_t n = columns * 71 + lines;
        const Turning t{columns, lines, n % 7, n % 3 == 0, n % 4 == 0, n % 5 < 3 ? Against::End : Against::Start};
        ASSERT_EQ(turned(t, luma), "") << nameOf(t) << ", luma in byte " << luma;
      }
    }
  }
}

TEST_P(TurnedMacropixels, ShareTheirChromaEveryWay) {
  for (const int32_t columns : {8, 10, 16, 62, 64, 130}) {
    for (const int32_t lines : {8, 14, 16, 18, 32, 34, 64, 66, 100}) {
      for (const Against against : {Against::End, Against::Start}) {
        for (const bool rowsGoUp : {false, true}) {
          for (const bool outputGoesUp : {false, true}) {
            for (const std::ptrdiff_t luma : {0, 1}) {
              const Turning t{columns, lines, columns % 3, rowsGoUp, outputGoesUp, against};
              ASSERT_EQ(turned(t, luma), "") << nameOf(t) << ", luma in byte " << luma;
            }
          }
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, TurnedMacropixels,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<zqcc::Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

} // namespace
