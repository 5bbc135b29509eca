// Stages that place 8-bit samples and 16-bit and 24-bit pixels, each level against a plain loop, with unmapped pages
// next to what they read and write.
#include "vector/place16.h"
#include "vector/place24.h"
#include "vector/place8.h"

#include "support/guarded_pages.h"
#include "support/picture.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

using support::Against;
using support::GuardedPages;
using zqcc::PixelBlock;

std::size_t bytesOf(std::ptrdiff_t count) {
  return static_cast<std::size_t>(count);
}

struct Turning {
  int32_t columns;
  int32_t lines;
  std::ptrdiff_t rowPadding;
  std::ptrdiff_t outPadding;
  bool rowsGoUp;
  bool outputGoesUp;
  Against against;
};

std::string nameOf(const Turning &t) {
  return std::to_string(t.columns) + " columns, " + std::to_string(t.lines) + " lines, padded by " +
         std::to_string(t.rowPadding) + " and " + std::to_string(t.outPadding) + (t.rowsGoUp ? ", rows up" : "") +
         (t.outputGoesUp ? ", output up" : "") + (t.against == Against::End ? ", against the end" : "");
}

/// The stages of one pixel size at one of the levels that they are made for.
struct Placed {
  std::ptrdiff_t pixelBytes;
  zqcc::Level level;
  zqcc::PlaceStages stages;
  int32_t least; ///< pixels both ways; fewer are left to portable code
};

class Placing : public testing::TestWithParam<Placed> {
protected:
  void SetUp() override {
    if ((zqcc::detectedLevels() & zqcc::setOf(GetParam().level)) == 0) {
      GTEST_SKIP() << "this machine does not have the level";
    }
    ASSERT_NE(reverse_, nullptr);
    ASSERT_NE(transpose_, nullptr);
  }

  /// Rows of noise that end or begin at an unmapped page.
  const uint8_t *placeRows(std::ptrdiff_t bytes, Against against) {
    rows_.place(bytesOf(bytes), against);
    support::fill(rows_.write(), bytesOf(bytes), support::Fill::Noise, seed_++);
    return rows_.data();
  }
  /// An output full of noise, which stands in expected_ as well.
  uint8_t *placeOutput(std::ptrdiff_t bytes, Against against) {
    output_.place(bytesOf(bytes), against);
    expected_.resize(bytesOf(bytes));
    support::fill(expected_.data(), expected_.size(), support::Fill::Noise, seed_++);
    std::memcpy(output_.write(), expected_.data(), expected_.size());
    return output_.data();
  }

  /// Runs a stage. Says which byte it touches that it may not touch, or which one is wrong.
  std::string run(const std::function<void()> &stage) const {
    if (const auto fault = support::catchFault(stage)) {
      const bool inRows = rows_.covers(fault->address);
      const auto start = reinterpret_cast<std::uintptr_t>((inRows ? rows_ : output_).data());
      return "touches byte " + std::to_string(static_cast<std::ptrdiff_t>(fault->address - start)) +
             (inRows ? " of the rows" : " of the output");
    }
    if (const auto damage = output_.damage()) {
      return "writes beside the output, " + std::to_string(*damage) + " bytes from its start";
    }
    const auto wrong = std::mismatch(expected_.begin(), expected_.end(), output_.write());
    return wrong.first == expected_.end()
               ? ""
               : "byte " + std::to_string(wrong.first - expected_.begin()) + " is " + std::to_string(*wrong.second) +
                     " instead of " + std::to_string(*wrong.first);
  }

  /// Transposes by the stage and by a plain loop.
  std::string transpose(const Turning &t) {
    const std::ptrdiff_t rowStride = t.columns * bytes_ + t.rowPadding;
    const std::ptrdiff_t outStride = t.lines * bytes_ + t.outPadding;
    // The padding behind the last line belongs to nobody.
    const uint8_t *rows = placeRows(rowStride * t.lines - t.rowPadding, t.against);
    uint8_t *out = placeOutput(outStride * t.columns - t.outPadding, t.against);
    for (std::ptrdiff_t line = 0; line < t.lines; ++line) {
      for (std::ptrdiff_t x = 0; x < t.columns; ++x) {
        const std::ptrdiff_t row = t.rowsGoUp ? t.lines - 1 - line : line;
        const std::ptrdiff_t outLine = t.outputGoesUp ? t.columns - 1 - x : x;
        std::memcpy(expected_.data() + outLine * outStride + line * bytes_, rows + row * rowStride + x * bytes_,
                    bytes_);
      }
    }
    const PixelBlock block = t.rowsGoUp ? PixelBlock{rows + (t.lines - 1) * rowStride, -rowStride, t.columns, t.lines}
                                        : PixelBlock{rows, rowStride, t.columns, t.lines};
    return run([&] {
      if (t.outputGoesUp) {
        transpose_(block, out + (t.columns - 1) * outStride, -outStride);
      } else {
        transpose_(block, out, outStride);
      }
    });
  }

  const std::ptrdiff_t bytes_ = GetParam().pixelBytes;
  const zqcc::ReverseRow reverse_ = GetParam().stages.reverse->of[GetParam().level];
  const zqcc::TransposeBlock transpose_ = GetParam().stages.transpose->of[GetParam().level];
  const int32_t least_ = GetParam().least;
  std::vector<uint8_t> expected_;

private:
  GuardedPages rows_{1 << 16, GuardedPages::Access::ReadOnly};
  GuardedPages output_{1 << 16, GuardedPages::Access::ReadWrite};
  uint32_t seed_ = 1;
};

TEST_P(Placing, ReversesRowsOfEveryLength) {
  for (int32_t pixels = least_; pixels <= 140; ++pixels) {
    for (const Against against : {Against::End, Against::Start}) {
      const std::ptrdiff_t bytes = pixels * bytes_;
      const uint8_t *row = placeRows(bytes, against);
      uint8_t *out = placeOutput(bytes, against);
      for (std::ptrdiff_t x = 0; x < bytes; x += bytes_) {
        std::memcpy(expected_.data() + bytes - bytes_ - x, row + x, bytes_);
      }
      ASSERT_EQ(run([&] { reverse_(row, out, pixels); }), "") << pixels << " pixels";
    }
  }
}

TEST_P(Placing, ReversesRowsAtEveryAddress) {
  constexpr int32_t kPixels = 77;
  std::vector<uint8_t> from(bytesOf(kPixels * bytes_ + 64));
  support::fill(from.data(), from.size(), support::Fill::Noise, 5);
  for (std::ptrdiff_t offset = 0; offset < 64; ++offset) {
    std::vector<uint8_t> to(from.size(), 0xA5);
    std::vector<uint8_t> expected = to;
    for (std::ptrdiff_t x = 0; x < kPixels; ++x) {
      std::memcpy(expected.data() + 63 - offset + (kPixels - 1 - x) * bytes_, from.data() + offset + x * bytes_,
                  bytes_);
    }
    reverse_(from.data() + offset, to.data() + 63 - offset, kPixels);
    EXPECT_EQ(to, expected) << "offset " << offset;
  }
}

TEST_P(Placing, TransposesBlocksOfEverySize) {
  for (int32_t columns = least_; columns <= 40; ++columns) {
    for (int32_t lines = least_; lines <= (bytes_ == 1 ? 130 : 70); ++lines) {
      // Every size one way; which one changes from size to size, with periods that share no factor.
      const int32_t n = columns * 131 + lines;
      const Turning t{columns, lines, n % 7, n % 11, n % 3 == 0, n % 2 == 0, n % 5 < 3 ? Against::End : Against::Start};
      ASSERT_EQ(transpose(t), "") << nameOf(t);
    }
  }
}

TEST_P(Placing, TransposesEveryWay) {
  for (const int32_t columns : {7, 8, 9, 16, 63, 64, 130}) {
    for (const int32_t lines : {7, 8, 15, 16, 17, 31, 32, 33, 64, 100}) {
      if (columns < least_ || lines < least_) {
        continue;
      }
      for (const std::ptrdiff_t padding : {0, 1, 2, 30}) {
        for (const Against against : {Against::End, Against::Start}) {
          for (const bool rowsGoUp : {false, true}) {
            for (const bool outputGoesUp : {false, true}) {
              const Turning t{columns, lines, padding, 3 - padding % 3, rowsGoUp, outputGoesUp, against};
              ASSERT_EQ(transpose(t), "") << nameOf(t);
            }
          }
        }
      }
    }
  }
}

std::vector<Placed> ofLevel(zqcc::Level level) {
  return {{1, level, {&zqcc::REVERSE_ROW8, &zqcc::TRANSPOSE_BLOCK8}, zqcc::kLeastSamples},
          {2, level, {&zqcc::REVERSE_ROW16, &zqcc::TRANSPOSE_BLOCK16}, 1},
          {2, level, {&zqcc::REVERSE_ROW16, &zqcc::TRANSPOSE_UNITS16}, 8},
          {3, level, {&zqcc::REVERSE_ROW24, &zqcc::TRANSPOSE_BLOCK24}, 1}};
}

#if defined(__x86_64__)
INSTANTIATE_TEST_SUITE_P(Sse4, Placing, testing::ValuesIn(ofLevel(zqcc::LEVEL_SSE4)));
INSTANTIATE_TEST_SUITE_P(Avx2, Placing, testing::ValuesIn(ofLevel(zqcc::LEVEL_AVX2)));
INSTANTIATE_TEST_SUITE_P(Avx512, Placing, testing::ValuesIn(ofLevel(zqcc::LEVEL_AVX512)));
#elif defined(__aarch64__)
INSTANTIATE_TEST_SUITE_P(Neon, Placing, testing::ValuesIn(ofLevel(zqcc::LEVEL_NEON)));
#endif

} // namespace
