// The stages of matrix arithmetic against the portable arithmetic.
#include "vector/matrix565.h"

#include "vector/colour_rows.h"
#include "vector/matrix_constants.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

namespace zqcc {
namespace {

constexpr int32_t kMostOfOne = 0x7FFF00;
constexpr int32_t kMostOfGreen = 0x3FFE00;

/// The built-in matrices; the widest coefficients; those that lose most, or nothing, when they are rounded; terms that
/// are integers, or next to them.
const std::array<ColorMatrix, 9> kMatrices{{
    *matrixEntry(0),
    *matrixEntry(1),
    *matrixEntry(2),
    {kMostOfOne, kMostOfGreen, -kMostOfOne, 0},
    {-kMostOfOne, -kMostOfGreen / 2, kMostOfOne, -kMostOfGreen / 2},
    {0x16E380, 0xC4540, -0x1DB280, 0x6B2C0},
    {0x16E37F, -0xC453F, 0x1DB281, 0x6B2C1},
    {1 << 20, -1, (1 << 20) - 1, 1},
    {-(1 << 20), 1 << 19, 1 - (1 << 20), (1 << 19) + 1},
}};

/// Pixels of 256 chroma samples, two to each, on two lines.
using Lines = std::array<std::array<uint16_t, 512>, 2>;

/// What the arithmetic makes of luma y, chroma u and every v: the even and the odd pixel of either line.
template <class Arithmetic>
Lines expectedLines(const Arithmetic &arithmetic, int32_t y, int32_t u) {
  Lines lines;
  for (int32_t v = 0; v < 256; ++v) {
    const auto at = static_cast<std::size_t>(2 * v);
    const auto terms = arithmetic.terms(u, v);
    lines[0][at] = static_cast<uint16_t>(arithmetic.template pixel<0, 0>(terms, y));
    lines[0][at + 1] = static_cast<uint16_t>(arithmetic.template pixel<0, 1>(terms, y));
    lines[1][at] = static_cast<uint16_t>(arithmetic.template pixel<1, 0>(terms, y));
    lines[1][at + 1] = static_cast<uint16_t>(arithmetic.template pixel<1, 1>(terms, y));
  }
  return lines;
}

/// Rows of samples for expectedLines.
struct Samples {
  std::array<uint8_t, 512> y;
  std::array<uint8_t, 512> u;
  std::array<uint8_t, 256> everyV;
  std::array<uint8_t, 512> everyVTwice;
  std::array<uint8_t, 1024> packed; ///< Y, U, Y, V

  Samples() {
    for (std::size_t v = 0; v < everyV.size(); ++v) {
      everyV[v] = static_cast<uint8_t>(v);
      everyVTwice[2 * v] = everyVTwice[2 * v + 1] = packed[4 * v + 3] = static_cast<uint8_t>(v);
    }
  }

  void setU(int32_t value) {
    u.fill(static_cast<uint8_t>(value));
    for (std::size_t i = 1; i < packed.size(); i += 4) {
      packed[i] = static_cast<uint8_t>(value);
    }
  }

  void setY(int32_t value) {
    y.fill(static_cast<uint8_t>(value));
    for (std::size_t i = 0; i < packed.size(); i += 2) {
      packed[i] = static_cast<uint8_t>(value);
    }
  }
};

uint8_t *bytesOf(Lines &lines, std::size_t line) {
  return reinterpret_cast<uint8_t *>(lines[line].data());
}

/// The same lines by the stages of a level.
void expectStages(Level level, const Samples &from, const ColourConstants &constants, const Lines &expected) {
  Lines pair;
  uint8_t *const both[2] = {bytesOf(pair, 0), bytesOf(pair, 1)};
  const SampleRows half{{from.y.data(), from.y.data()}, from.u.data(), from.everyV.data()};
  MATRIX565_HALF_PAIR.of[level](half, both, 512, 0, constants);
  ASSERT_EQ(pair, expected) << "pair of lines";
  Lines packedPair;
  uint8_t *const packedTo[2] = {bytesOf(packedPair, 0), bytesOf(packedPair, 1)};
  const uint8_t *packed = from.packed.data();
  MATRIX565_PACKED_PAIR.of[level]({{packed, packed}, packed + 1, packed + 3}, packedTo, 512, 0, constants);
  ASSERT_EQ(packedPair, expected) << "packed pair of lines";
  Lines single;
  Lines full;
  for (std::size_t line = 0; line < 2; ++line) {
    const auto parity = static_cast<int32_t>(line);
    uint8_t *const one[2] = {bytesOf(single, line), nullptr};
    MATRIX565_HALF.of[level]({{from.y.data(), nullptr}, half.u, half.v}, one, 512, parity, constants);
    uint8_t *const another[2] = {bytesOf(full, line), nullptr};
    MATRIX565_FULL.of[level]({{from.y.data(), nullptr}, half.u, from.everyVTwice.data()}, another, 512, parity,
                             constants);
  }
  ASSERT_EQ(single, expected) << "half chroma";
  ASSERT_EQ(full, expected) << "full chroma";
}

/// Every level on every v with the luma and chroma u given, `step` apart.
template <class Arithmetic>
void expectEverySample(const ColorMatrix &matrix, const ColourConstants &constants, int32_t step) {
  const Arithmetic arithmetic(matrix);
  Samples samples;
  for (int32_t u = 0; u < 256; u += step) {
    samples.setU(u);
    for (int32_t y = 0; y < 256; ++y) {
      samples.setY(y);
      const Lines expected = expectedLines(arithmetic, y, u);
      for (const Level level : levelsOf(MATRIX565_HALF)) {
        expectStages(level, samples, constants, expected);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << support::nameOf(level) << ", y " << y << ", u " << u;
      }
    }
  }
}

TEST(Matrix565, MakesEveryColourOfEveryMatrix) {
  for (const ColorMatrix &matrix : kMatrices) {
    SCOPED_TRACE(testing::Message() << matrix.crToR << ' ' << matrix.crToG << ' ' << matrix.cbToB << ' '
                                    << matrix.cbToG);
    ColourConstants constants;
    ASSERT_TRUE(makeDitherConstants<Turn::Upright>(matrix, constants));
    ASSERT_NO_FATAL_FAILURE((expectEverySample<MatrixDither<Turn::Upright>>(matrix, constants, 1)));
  }
}

template <Turn turn>
void expectTurn() {
  for (const uint32_t index : {0U, 1U}) {
    SCOPED_TRACE(testing::Message() << "turn " << static_cast<uint32_t>(turn) << ", matrix " << index);
    ColourConstants constants;
    ASSERT_TRUE(makeDitherConstants<turn>(*matrixEntry(index), constants));
    ASSERT_NO_FATAL_FAILURE((expectEverySample<MatrixDither<turn>>(*matrixEntry(index), constants, 15)));
  }
}

TEST(Matrix565, DithersByTurn) {
  ASSERT_NO_FATAL_FAILURE(expectTurn<Turn::Left>());
  ASSERT_NO_FATAL_FAILURE(expectTurn<Turn::Right>());
  ASSERT_NO_FATAL_FAILURE(expectTurn<Turn::Half>());
  ASSERT_NO_FATAL_FAILURE(expectTurn<Turn::Flip>());
}

TEST(Matrix565, IsPlainWithoutOffsets) {
  for (const uint32_t index : {0U, 1U, 2U}) {
    ColourConstants constants;
    ASSERT_TRUE(makeMatrixConstants(*matrixEntry(index), constants));
    ASSERT_NO_FATAL_FAILURE(expectEverySample<MatrixPlain>(*matrixEntry(index), constants, 5));
  }
}

bool isServed(const ColorMatrix &matrix) {
  ColourConstants constants;
  const bool served = makeMatrixConstants(matrix, constants);
  EXPECT_EQ(makeDitherConstants<Turn::Left>(matrix, constants), served);
  return served;
}

TEST(Matrix565, RefusesWhatDoesNotFitLanes) {
  constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
  constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();
  for (const int32_t inside : {kMostOfOne, -kMostOfOne}) {
    EXPECT_TRUE(isServed({inside, 0, inside, 0}));
  }
  for (const int32_t outside : {kMostOfOne + 1, -kMostOfOne - 1, kLowest, kHighest}) {
    EXPECT_FALSE(isServed({outside, 0, 0, 0})) << outside;
    EXPECT_FALSE(isServed({0, 0, outside, 0})) << outside;
  }
  for (const int32_t part : {0, 1, kMostOfGreen / 2, kMostOfGreen}) {
    const int32_t rest = kMostOfGreen - part;
    EXPECT_TRUE(isServed({0, part, 0, rest}) && isServed({0, -part, 0, rest}) && isServed({0, part, 0, -rest}));
    EXPECT_FALSE(isServed({0, part + 1, 0, rest}) || isServed({0, -part - 1, 0, rest})) << part;
    EXPECT_FALSE(isServed({0, part, 0, rest + 1}) || isServed({0, part, 0, -rest - 1})) << part;
  }
  for (const int32_t outside : {kLowest, kHighest}) {
    EXPECT_FALSE(isServed({0, outside, 0, 0}) || isServed({0, 0, 0, outside})) << outside;
    EXPECT_FALSE(isServed({0, outside, 0, outside})) << outside;
  }
}

/// The pixel of the arithmetic in portable code; `half` says that two pixels share their chroma.
uint16_t portablePixel(const SampleRows &from, int line, int parity, int32_t x, bool half) {
  const MatrixDither<Turn::Upright> arithmetic(*matrixEntry(0));
  const int32_t sample = half ? x / 2 : x;
  const auto terms = arithmetic.terms(from.u[sample], from.v[sample]);
  const int32_t y = from.y[line][x];
  const uint32_t pixels[2][2] = {{arithmetic.pixel<0, 0>(terms, y), arithmetic.pixel<0, 1>(terms, y)},
                                 {arithmetic.pixel<1, 0>(terms, y), arithmetic.pixel<1, 1>(terms, y)}};
  return static_cast<uint16_t>(pixels[parity][x % 2]);
}

class Matrix565Rows : public AtEveryLevel {
protected:
  /// A stage on rows of a length, either of its lines being one of an even line first.
  void expectRow(const PerLevel<ColourRows> &stage, int32_t pixels, int lines, bool half, support::Against against) {
    ColourConstants constants;
    ASSERT_TRUE(makeDitherConstants<Turn::Upright>(*matrixEntry(0), constants));
    const auto bytes = static_cast<std::size_t>(pixels);
    const GuardedRows rows(bytes, half ? bytes / 2 : bytes, 2 * bytes, against);
    for (int first = 0; first < 2; ++first) {
      rows.run(stage.of[GetParam()], pixels, first, constants);
      for (int line = 0; line < lines; ++line) {
        for (int32_t x = 0; x < pixels; ++x) {
          ASSERT_EQ(rows.pixel(line, x), portablePixel(rows.samples(), line, (first + line) % 2, x, half))
              << "pixel " << x << " of " << pixels << ", line " << first + line;
        }
      }
    }
  }

  void expectRows(const PerLevel<ColourRows> &stage, int lines, bool half) {
    for (int32_t pixels = kShortestRow; pixels <= kLongestRow; pixels += half ? 2 : 1) {
      ASSERT_NO_FATAL_FAILURE(expectRow(stage, pixels, lines, half, support::Against::End));
      ASSERT_NO_FATAL_FAILURE(expectRow(stage, pixels, lines, half, support::Against::Start));
    }
  }
};

TEST_P(Matrix565Rows, OfPairsKeepWithinTheirEnds) {
  expectRows(MATRIX565_HALF_PAIR, 2, true);
}

/// A pixel of macropixels in portable code.
uint16_t portablePackedPixel(const SampleRows &from, const PackedLayout &order, int line, int parity, int32_t x) {
  const std::ptrdiff_t macropixel = std::ptrdiff_t{x / 2} * 4;
  const uint8_t u = from.u[macropixel];
  const uint8_t v = from.v[macropixel];
  const uint8_t *luma = from.y[line] + macropixel + (x % 2 != 0 ? order.right - order.left : 0);
  const uint8_t y[2] = {*luma, *luma}; // for an even column and an odd one
  const int32_t column = x % 2;
  const SampleRows one{{y, y}, &u, &v};
  return portablePixel(one, 0, parity, column, true);
}

TEST_P(Matrix565Rows, OfMacropixelsInEveryOrderKeepWithinTheirEnds) {
  ColourConstants constants;
  ASSERT_TRUE(makeDitherConstants<Turn::Upright>(*matrixEntry(0), constants));
  for (uint32_t variant = 0; variant < kPackedVariants; ++variant) {
    const PackedLayout order = packedLayout(variant);
    const ColourRows stage = (order.isSwapped() ? MATRIX565_SWAPPED_PACKED_PAIR : MATRIX565_PACKED_PAIR).of[GetParam()];
    for (int32_t pixels = kShortestRow; pixels <= kLongestRow; pixels += 2) {
      for (const auto against : {support::Against::End, support::Against::Start}) {
        const auto bytes = static_cast<std::size_t>(2 * pixels);
        const GuardedRows rows(bytes, 0, bytes, against);
        const SampleRows from = rows.packedSamples(order);
        rows.run(stage, from, pixels, 0, constants);
        for (int32_t i = 0; i < 2 * pixels; ++i) {
          const int line = i / pixels;
          const int32_t x = i % pixels;
          ASSERT_EQ(rows.pixel(line, x), portablePackedPixel(from, order, line, line, x))
              << "pixel " << x << " of " << pixels << ", line " << line << ", variant " << variant;
        }
      }
    }
  }
}

TEST_P(Matrix565Rows, WithHalfChromaKeepWithinTheirEnds) {
  expectRows(MATRIX565_HALF, 1, true);
}

TEST_P(Matrix565Rows, WithFullChromaKeepWithinTheirEnds) {
  expectRows(MATRIX565_FULL, 1, false);
}

INSTANTIATE_TEST_SUITE_P(Levels, Matrix565Rows, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
} // namespace zqcc
