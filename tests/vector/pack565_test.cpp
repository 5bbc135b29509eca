// The stages that pack RGB samples against the portable arithmetic.
#include "vector/pack565.h"

#include "kernels/arithmetic.h"
#include "vector/colour_rows.h"

#include <gtest/gtest.h>

#include <array>

namespace zqcc {
namespace {

uint16_t packed(int32_t red, int32_t green, int32_t blue) {
  return static_cast<uint16_t>(PackRgb::pixel<0, 0>(PackRgb::terms(green, blue), red));
}

/// Planes and bytes of every blue with a red and a green.
struct Samples {
  std::array<uint8_t, 256> red;
  std::array<uint8_t, 256> green;
  std::array<uint8_t, 256> blue;
  std::array<uint8_t, std::size_t{3} * 256> bytes;

  Samples(int32_t r, int32_t g) {
    red.fill(static_cast<uint8_t>(r));
    green.fill(static_cast<uint8_t>(g));
    for (std::size_t b = 0; b < blue.size(); ++b) {
      blue[b] = static_cast<uint8_t>(b);
      bytes[3 * b] = blue[b];
      bytes[3 * b + 1] = green[b];
      bytes[3 * b + 2] = red[b];
    }
  }
};

TEST(Pack565, PacksEveryColour) {
  const ColourConstants constants{};
  std::array<uint16_t, 256> expected{};
  std::array<uint16_t, 256> pixels{};
  uint8_t *const to[2] = {reinterpret_cast<uint8_t *>(pixels.data()), nullptr};
  for (int32_t red = 0; red < 256; ++red) {
    for (int32_t green = 0; green < 256; ++green) {
      const Samples from(red, green);
      for (std::size_t blue = 0; blue < expected.size(); ++blue) {
        expected[blue] = packed(red, green, static_cast<int32_t>(blue));
      }
      for (const Level level : levelsOf(PACK565)) {
        PACK565.of[level]({{from.red.data(), nullptr}, from.green.data(), from.blue.data()}, to, 256, 0, constants);
        ASSERT_EQ(pixels, expected) << support::nameOf(level) << ", planes, red " << red << ", green " << green;
        pixels.fill(0);
        PACK565_RGB24.of[level]({{nullptr, nullptr}, nullptr, from.bytes.data()}, to, 256, 0, constants);
        ASSERT_EQ(pixels, expected) << support::nameOf(level) << ", bytes, red " << red << ", green " << green;
        pixels.fill(0);
      }
    }
  }
}

class Pack565Rows : public AtEveryLevel {
protected:
  /// Red, green and blue of a pixel, wherever they stand.
  using PixelOf = uint16_t (*)(const SampleRows &from, int32_t x);

  static void expectRows(const PerLevel<ColourRows> &stage, std::size_t bytesAPixel, PixelOf expected) {
    for (int32_t pixels = kShortestRow; pixels <= kLongestRow; ++pixels) {
      for (const auto against : {support::Against::End, support::Against::Start}) {
        const auto count = static_cast<std::size_t>(pixels);
        const GuardedRows rows(count, bytesAPixel * count, 2 * count, against);
        rows.run(stage.of[GetParam()], pixels, 0, ColourConstants{});
        for (int32_t x = 0; x < pixels; ++x) {
          ASSERT_EQ(rows.pixel(0, x), expected(rows.samples(), x)) << "pixel " << x << " of " << pixels;
        }
      }
    }
  }
};

TEST_P(Pack565Rows, OfPlanesKeepWithinTheirEnds) {
  expectRows(PACK565, 1, [](const SampleRows &from, int32_t x) { return packed(from.y[0][x], from.u[x], from.v[x]); });
}

TEST_P(Pack565Rows, OfBytesKeepWithinTheirEnds) {
  expectRows(PACK565_RGB24, 3, [](const SampleRows &from, int32_t x) {
    const uint8_t *bgr = from.v + std::ptrdiff_t{3} * x;
    return packed(bgr[2], bgr[1], bgr[0]);
  });
}

INSTANTIATE_TEST_SUITE_P(Levels, Pack565Rows, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
} // namespace zqcc
