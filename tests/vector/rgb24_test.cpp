// Rows of 24-bit pixels against the portable arithmetic: every sample triple, every length, every level.
#include "vector/rgb24.h"

#include "kernels/arithmetic.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace {

using zqcc::ColorMatrix;
using zqcc::ColourConstants;
using zqcc::Level;

const char *nameOf(Level level) {
  constexpr std::array<const char *, zqcc::LEVEL_COUNT> kNames{"portable", "sse4", "avx2", "avx512", "neon"};
  return kNames.at(level);
}

void append(std::vector<uint8_t> &row, const zqcc::Bgr &pixel) {
  row.insert(row.end(), {pixel.blue, pixel.green, pixel.red});
}

template <class Arithmetic>
zqcc::Bgr pixelOf(const Arithmetic &arithmetic, int y, int u, int v) {
  return arithmetic.template pixel<0, 0>(arithmetic.terms(u, v), y);
}

zqcc::SplitFactor split(int32_t coefficient) {
  return {static_cast<int16_t>(coefficient >> 8), static_cast<int16_t>(coefficient & 255)};
}

ColourConstants constantsOf(const ColorMatrix &matrix) {
  ColourConstants constants{};
  constants.crToR = split(matrix.crToR);
  constants.crToG = split(matrix.crToG);
  constants.cbToB = split(matrix.cbToB);
  constants.cbToG = split(matrix.cbToG);
  return constants;
}

constexpr int32_t kMost = (1 << 23) - 1; // what 24 bits hold
constexpr int32_t kLeast = -(1 << 23);

std::vector<ColorMatrix> matrices() {
  std::vector<ColorMatrix> all;
  for (uint32_t i = 0; i < zqcc::kCustomMatrix; ++i) {
    all.push_back(*zqcc::matrixEntry(i));
  }
  all.insert(all.end(), {{kMost, kMost, kMost, kMost},
                         {kLeast, kLeast, kLeast, kLeast},
                         {kMost, kLeast, kLeast, kMost},
                         {-1471152, -748683, -1859125, -360710},
                         {1, -1, 255, -256},
                         {0x0FFFFF, 0x100000, 0x100001, 0x0FFFF0}});
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

/// Every y with every u for one v, as one line of 512 pixels a y. Odd columns and the second line have other lumas.
template <class Arithmetic>
void expectEveryLuma(zqcc::ColourRows stage, int lines, const ColorMatrix &matrix, int v) {
  const Arithmetic arithmetic(matrix);
  const ColourConstants constants = constantsOf(matrix);
  const std::vector<uint8_t> rowV(256, static_cast<uint8_t>(v));
  std::vector<uint8_t> rowU;
  std::array<std::vector<uint8_t>, 256> expected; // by luma: the pixels of all u
  for (int u = 0; u < 256; ++u) {
    rowU.push_back(static_cast<uint8_t>(u));
    for (int y = 0; y < 256; ++y) {
      append(expected.at(static_cast<std::size_t>(y)), pixelOf(arithmetic, y, u, v));
    }
  }
  for (int y = 0; y < 256; ++y) {
    std::array<std::vector<uint8_t>, 2> luma;
    std::array<std::vector<uint8_t>, 2> got{std::vector<uint8_t>(1536), std::vector<uint8_t>(1536)};
    std::array<std::vector<uint8_t>, 2> want{std::vector<uint8_t>(1536), std::vector<uint8_t>(1536)};
    for (int line = 0; line < lines; ++line) {
      const auto l = static_cast<std::size_t>(line);
      const auto even = static_cast<uint8_t>(y ^ (line == 0 ? 0 : 0x5A));
      const auto odd = static_cast<uint8_t>(255 - even);
      for (std::size_t u = 0; u < 256; ++u) {
        luma.at(l).insert(luma.at(l).end(), {even, odd});
        std::copy_n(expected.at(even).begin() + static_cast<std::ptrdiff_t>(3 * u), 3,
                    want.at(l).begin() + static_cast<std::ptrdiff_t>(6 * u));
        std::copy_n(expected.at(odd).begin() + static_cast<std::ptrdiff_t>(3 * u), 3,
                    want.at(l).begin() + static_cast<std::ptrdiff_t>(6 * u + 3));
      }
    }
    uint8_t *const to[2] = {got[0].data(), lines == 2 ? got[1].data() : nullptr};
    stage({{luma[0].data(), lines == 2 ? luma[1].data() : nullptr}, rowU.data(), rowV.data()}, to, 512, 0, constants);
    ASSERT_EQ(got, want) << "y " << y << ", v " << v;
  }
}

template <class Arithmetic>
void expectEveryTriple(zqcc::ColourRows stage, int lines, const ColorMatrix &matrix) {
  ASSERT_NE(stage, nullptr);
  for (int v = 0; v < 256 && !testing::Test::HasFatalFailure(); ++v) {
    expectEveryLuma<Arithmetic>(stage, lines, matrix, v);
  }
}

TEST_P(Rgb24, StudioMakesThePortablePixelOfEveryTriple) {
  expectEveryTriple<zqcc::StudioQ12>(at(zqcc::STUDIO_Q12_PAIR), 2, *zqcc::matrixEntry(0));
}

TEST_P(Rgb24, MatrixPairMakesThePortablePixelOfEveryTriple) {
  for (const ColorMatrix &matrix : matrices()) {
    expectEveryTriple<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_PAIR), 2, matrix);
  }
}

TEST_P(Rgb24, MatrixSingleMakesThePortablePixelOfEveryTriple) {
  for (const ColorMatrix &matrix : matrices()) {
    expectEveryTriple<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_SINGLE), 1, matrix);
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

/// A row of every length, every pixel compared and every byte around the row still what it was.
template <class Arithmetic>
void expectRow(zqcc::ColourRows stage, std::size_t lines, std::size_t pixels, std::size_t offset) {
  const ColorMatrix &matrix = *zqcc::matrixEntry(1);
  const Arithmetic arithmetic(matrix);
  const Samples u(pixels / 2, offset, 1);
  const Samples v(pixels / 2, offset + 1, 2);
  const std::array<Samples, 2> luma{Samples(pixels, offset + 2, 3), Samples(pixels, offset + 3, 4)};
  std::array<std::vector<uint8_t>, 2> got;
  std::array<std::vector<uint8_t>, 2> want;
  for (std::size_t line = 0; line < 2; ++line) {
    got.at(line).assign(kGuard + offset + 3 * pixels + kGuard, kUntouched);
    want.at(line).assign(kGuard + offset, kUntouched);
    for (std::size_t x = 0; x < pixels && line < lines; ++x) {
      append(want.at(line), pixelOf(arithmetic, luma.at(line).at(x), u.at(x / 2), v.at(x / 2)));
    }
    want.at(line).resize(got.at(line).size(), kUntouched);
  }
  uint8_t *const to[2] = {got[0].data() + kGuard + offset, got[1].data() + kGuard + offset};
  stage({{luma[0].data(), luma[1].data()}, u.data(), v.data()}, to, static_cast<int32_t>(pixels), 0,
        constantsOf(matrix));
  ASSERT_EQ(got, want) << pixels << " pixels, offset " << offset;
}

template <class Arithmetic>
void expectEveryLength(zqcc::ColourRows stage, std::size_t lines) {
  ASSERT_NE(stage, nullptr);
  for (std::size_t pixels = zqcc::kLeastPixels; pixels <= 260; pixels += 2) {
    for (std::size_t offset = 0; offset < 4 && !testing::Test::HasFatalFailure(); ++offset) {
      expectRow<Arithmetic>(stage, lines, pixels, offset);
    }
  }
}

TEST_P(Rgb24, RowsOfEveryLengthStayInside) {
  expectEveryLength<zqcc::StudioQ12>(at(zqcc::STUDIO_Q12_PAIR), 2);
  expectEveryLength<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_PAIR), 2);
  expectEveryLength<zqcc::MatrixRgb24>(at(zqcc::MATRIX_RGB24_SINGLE), 1);
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
