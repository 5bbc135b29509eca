// Rows of 24-bit pixels against the portable arithmetic: every sample triple, every length, every level.
#include "vector/rgb24.h"

#include "kernels/arithmetic.h"
#include "tables/packed_layout.h"
#include "vector/detect.h"
#include "vector/matrix_constants.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using zqcc::ColorMatrix;
using zqcc::ColourConstants;
using zqcc::Level;

const char *nameOf(Level level) {
  constexpr std::array<const char *, zqcc::LEVEL_COUNT> kNames{"portable", "sse4",       "avx2",
                                                               "avx512",   "avx512vbmi", "neon"};
  return kNames.at(level);
}

void append(std::vector<uint8_t> &row, const zqcc::Bgr &pixel, int times = 1) {
  for (int i = 0; i < times; ++i) {
    row.push_back(pixel.blue);
    row.push_back(pixel.green);
    row.push_back(pixel.red);
  }
}

template <class Arithmetic>
zqcc::Bgr pixelOf(const Arithmetic &arithmetic, int y, int u, int v) {
  return arithmetic.template pixel<0, 0>(arithmetic.terms(u, v), y);
}

ColourConstants constantsOf(const ColorMatrix &matrix) {
  ColourConstants constants{};
  EXPECT_TRUE(zqcc::makeMatrixConstants(matrix, constants));
  return constants;
}

// The widest coefficients that rows take: of red and blue, and of green's two together.
constexpr int32_t kMost = 0x7FFF00;
constexpr int32_t kMostOfGreen = 0x3FFE00;

std::vector<ColorMatrix> matrices() {
  std::vector<ColorMatrix> all;
  for (uint32_t i = 0; i < zqcc::kCustomMatrix; ++i) {
    all.push_back(*zqcc::matrixEntry(i));
  }
  all.insert(all.end(), {{kMost, kMostOfGreen / 2, kMost, kMostOfGreen / 2},
                         {-kMost, -kMostOfGreen / 2, -kMost, -kMostOfGreen / 2},
                         {kMost, -kMostOfGreen, -1471152, 0},
                         {1, -1, 255, -256},
                         {0x0FFFFF, 0x100000, -0x100001, 0x0FFFF0}});
  return all;
}

/// A stage with one level of it chosen.
class Rgb24 : public testing::TestWithParam<Level> {
protected:
  void SetUp() override {
    if ((zqcc::detectedLevels() & zqcc::setOf(GetParam())) == 0) {
      GTEST_SKIP() << "this machine has no " << nameOf(GetParam());
    }
  }
  static zqcc::ColourRows at(const zqcc::PerLevel<zqcc::ColourRows> &stage) {
    zqcc::ColourRows rows = stage.of[GetParam()];
    EXPECT_NE(rows, nullptr) << nameOf(GetParam());
    return rows;
  }
};

constexpr std::size_t kRow = 512;

/// Every y with every u for one v: a row is every u with one y, and the second line of a pair has another y.
template <class Arithmetic>
class EveryLuma {
public:
  EveryLuma(const ColorMatrix &matrix, int v)
      : constants(constantsOf(matrix)), rowV(kRow / 2, static_cast<uint8_t>(v)) {
    const Arithmetic arithmetic(matrix);
    for (int u = 0; u < 256; ++u) {
      rowU.push_back(static_cast<uint8_t>(u));
      for (int y = 0; y < 256; ++y) {
        append(pixels.at(static_cast<std::size_t>(y)), pixelOf(arithmetic, y, u, v), 2);
      }
    }
    for (std::size_t y = 0; y < 256; ++y) {
      luma.at(y).assign(kRow, static_cast<uint8_t>(y));
    }
  }

  void compareWith(zqcc::ColourRows stage) const {
    ASSERT_NE(stage, nullptr);
    std::array<std::vector<uint8_t>, 2> got{std::vector<uint8_t>(3 * kRow), std::vector<uint8_t>(3 * kRow)};
    uint8_t *const to[2] = {got[0].data(), got[1].data()};
    for (std::size_t y = 0; y < 256; ++y) {
      const std::size_t second = 255 - y;
      stage({{luma.at(y).data(), luma.at(second).data()}, rowU.data(), rowV.data()}, to, kRow, 0, constants);
      ASSERT_EQ(got[0], pixels.at(y)) << "y " << y << ", v " << int{rowV.front()};
      ASSERT_EQ(got[1], pixels.at(second)) << "y " << second << ", v " << int{rowV.front()};
    }
  }

  /// The same from chroma rows that are as long as luma's.
  void compareWithFull(zqcc::ColourRows stage, std::size_t lines) const {
    ASSERT_NE(stage, nullptr);
    std::vector<uint8_t> fullU;
    for (const uint8_t u : rowU) {
      fullU.insert(fullU.end(), 2, u);
    }
    const std::vector<uint8_t> fullV(kRow, rowV.front());
    std::array<std::vector<uint8_t>, 2> got{std::vector<uint8_t>(3 * kRow), std::vector<uint8_t>(3 * kRow)};
    uint8_t *const to[2] = {got[0].data(), lines == 2 ? got[1].data() : nullptr};
    for (std::size_t y = 0; y < 256; ++y) {
      const std::array<std::size_t, 2> each{y, 255 - y};
      const uint8_t *second = lines == 2 ? luma.at(each[1]).data() : nullptr;
      stage({{luma.at(y).data(), second}, fullU.data(), fullV.data()}, to, kRow, 0, constants);
      for (std::size_t line = 0; line < lines; ++line) {
        ASSERT_EQ(got.at(line), pixels.at(each.at(line))) << "y " << each.at(line) << ", v " << int{rowV.front()};
      }
    }
  }

  /// The same from macropixels.
  void compareWithPacked(zqcc::ColourRows stage, const zqcc::PackedLayout &order) const {
    ASSERT_NE(stage, nullptr);
    std::vector<uint8_t> got(3 * kRow);
    uint8_t *const to[2] = {got.data(), nullptr};
    std::vector<uint8_t> packed(2 * kRow);
    for (std::size_t y = 0; y < 256; ++y) {
      for (std::size_t i = 0; i < kRow / 2; ++i) {
        uint8_t *macropixel = packed.data() + 4 * i;
        macropixel[order.left] = macropixel[order.right] = static_cast<uint8_t>(y);
        macropixel[order.u] = rowU[i];
        macropixel[order.v] = rowV[i];
      }
      stage({{packed.data() + order.left, nullptr}, packed.data() + order.u, packed.data() + order.v}, to, kRow, 0,
            constants);
      ASSERT_EQ(got, pixels.at(y)) << "y " << y << ", v " << int{rowV.front()};
    }
  }

private:
  ColourConstants constants;
  std::vector<uint8_t> rowU;
  std::vector<uint8_t> rowV;
  std::array<std::vector<uint8_t>, 256> luma;   // by luma: a row of it
  std::array<std::vector<uint8_t>, 256> pixels; // by luma: the pixels of that row
};

TEST_P(Rgb24, StudioMakesThePortablePixelOfEveryTriple) {
  for (int v = 0; v < 256 && !HasFatalFailure(); ++v) {
    EveryLuma<zqcc::StudioQ12>(*zqcc::matrixEntry(0), v).compareWith(at(zqcc::STUDIO_Q12_PAIR));
  }
}

TEST_P(Rgb24, MatrixMakesThePortablePixelOfEveryTriple) {
  for (const ColorMatrix &matrix : matrices()) {
    for (int v = 0; v < 256 && !HasFatalFailure(); ++v) {
      const EveryLuma<zqcc::MatrixRgb24> every(matrix, v);
      every.compareWith(at(zqcc::MATRIX_RGB24_PAIR));
    }
  }
}

TEST_P(Rgb24, FullChromaMakesThePortablePixelOfEveryTriple) {
  for (const ColorMatrix &matrix : matrices()) {
    for (int v = 0; v < 256 && !HasFatalFailure(); ++v) {
      const EveryLuma<zqcc::MatrixRgb24> every(matrix, v);
      every.compareWithFull(at(zqcc::MATRIX_RGB24_FULL_PAIR), 2);
      every.compareWithFull(at(zqcc::MATRIX_RGB24_FULL), 1);
    }
  }
}

TEST_P(Rgb24, PackedMakesThePortablePixelOfEveryTriple) {
  for (int v = 0; v < 256 && !HasFatalFailure(); ++v) {
    const EveryLuma<zqcc::MatrixRgb24> every(*zqcc::matrixEntry(1), v);
    every.compareWithPacked(at(zqcc::MATRIX_RGB24_PACKED), zqcc::packedLayout(0));
  }
}

/// Samples that differ everywhere, at an address that is `offset` bytes past an aligned one.
class Samples {
public:
  Samples(std::size_t count, std::size_t offset, unsigned seed) : start(offset), bytes(offset + count) {
    unsigned state = seed;
    for (uint8_t &byte : bytes) {
      state = state * 1664525U + 1013904223U;
      byte = static_cast<uint8_t>(state >> 24);
    }
    bytes.shrink_to_fit(); // so that the address sanitizer sees what is read past the last one
  }
  [[nodiscard]] const uint8_t *data() const { return bytes.data() + start; }
  [[nodiscard]] int at(std::size_t i) const { return bytes.at(start + i); }

private:
  std::size_t start;
  std::vector<uint8_t> bytes;
};

constexpr std::size_t kGuard = 96;
constexpr uint8_t kUntouched = 0xA5;

/// What a stage is for: how many lines, and how many columns a chroma sample serves.
struct Kind {
  std::size_t lines;
  std::size_t columns;
};

/// A row of every length, every pixel compared and every byte around the row still what it was.
template <class Arithmetic>
void expectRow(zqcc::ColourRows stage, const Kind &kind, std::size_t pixels, std::size_t offset) {
  const ColorMatrix &matrix = *zqcc::matrixEntry(1);
  const Arithmetic arithmetic(matrix);
  const Samples u(pixels / kind.columns, offset, 1);
  const Samples v(pixels / kind.columns, offset + 1, 2);
  const std::array<Samples, 2> luma{Samples(pixels, offset + 2, 3), Samples(pixels, offset + 3, 4)};
  std::array<std::vector<uint8_t>, 2> got;
  std::array<std::vector<uint8_t>, 2> want;
  for (std::size_t line = 0; line < 2; ++line) {
    got.at(line).assign(kGuard + offset + 3 * pixels + kGuard, kUntouched);
    want.at(line).assign(kGuard + offset, kUntouched);
    for (std::size_t x = 0; line < kind.lines && x < pixels; ++x) {
      const std::size_t sample = x / kind.columns;
      append(want.at(line), pixelOf(arithmetic, luma.at(line).at(x), u.at(sample), v.at(sample)));
    }
    want.at(line).resize(got.at(line).size(), kUntouched);
  }
  uint8_t *const to[2] = {got[0].data() + kGuard + offset, got[1].data() + kGuard + offset};
  stage({{luma[0].data(), luma[1].data()}, u.data(), v.data()}, to, static_cast<int32_t>(pixels), 0,
        constantsOf(matrix));
  ASSERT_EQ(got, want) << pixels << " pixels, offset " << offset;
}

template <class Arithmetic>
void expectEveryLength(zqcc::ColourRows stage, const Kind &kind) {
  ASSERT_NE(stage, nullptr);
  for (std::size_t pixels = zqcc::kLeastPixels; pixels <= 260; pixels += kind.columns) {
    for (std::size_t offset = 0; offset < 4 && !testing::Test::HasFatalFailure(); ++offset) {
      expectRow<Arithmetic>(stage, kind, pixels, offset);
    }
  }
}

TEST_P(Rgb24, RowsOfEveryLengthStayInside) {
  expectEveryLength<zqcc::StudioQ12>(at(zqcc::STUDIO_Q12_PAIR), {2, 2});
  expectEveryLength<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_PAIR), {2, 2});
  expectEveryLength<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_FULL_PAIR), {2, 1});
  expectEveryLength<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_FULL), {1, 1});
}

void expectPackedRow(zqcc::ColourRows stage, const zqcc::PackedLayout &order, std::size_t pixels, std::size_t offset) {
  const ColorMatrix &matrix = *zqcc::matrixEntry(1);
  const zqcc::MatrixRgb24 arithmetic(matrix);
  const Samples packed(2 * pixels, offset, 5);
  const auto sample = [&packed](int32_t position, std::size_t i) {
    return packed.at(4 * i + static_cast<std::size_t>(position));
  };
  std::vector<uint8_t> got(kGuard + offset + 3 * pixels + kGuard, kUntouched);
  std::vector<uint8_t> want(kGuard + offset, kUntouched);
  for (std::size_t i = 0; i < pixels / 2; ++i) {
    for (const int32_t luma : {order.left, order.right}) {
      append(want, pixelOf(arithmetic, sample(luma, i), sample(order.u, i), sample(order.v, i)));
    }
  }
  want.resize(got.size(), kUntouched);
  uint8_t *const to[2] = {got.data() + kGuard + offset, nullptr};
  stage({{packed.data() + order.left, nullptr}, packed.data() + order.u, packed.data() + order.v}, to,
        static_cast<int32_t>(pixels), 0, constantsOf(matrix));
  ASSERT_EQ(got, want) << pixels << " pixels, offset " << offset;
}

TEST_P(Rgb24, PackedRowsOfEveryOrderAndLengthStayInside) {
  for (uint32_t variant = 0; variant < zqcc::kPackedVariants; ++variant) {
    const zqcc::PackedLayout order = zqcc::packedLayout(variant);
    zqcc::ColourRows stage = at(order.isSwapped() ? zqcc::MATRIX_RGB24_PACKED_SWAPPED : zqcc::MATRIX_RGB24_PACKED);
    ASSERT_NE(stage, nullptr);
    for (std::size_t pixels = zqcc::kLeastPixels; pixels <= 260; pixels += 2) {
      for (std::size_t offset = 0; offset < 4 && !HasFatalFailure(); ++offset) {
        expectPackedRow(stage, order, pixels, offset);
      }
    }
  }
}

constexpr std::array kLevels {
#if defined(__x86_64__)
  zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512
#else
  zqcc::LEVEL_NEON
#endif
};

INSTANTIATE_TEST_SUITE_P(EveryLevel, Rgb24, testing::ValuesIn(kLevels),
                         [](const auto &test) { return std::string(nameOf(test.param)); });

} // namespace
