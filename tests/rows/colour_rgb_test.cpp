// Rows of YUV become pixels of RGB: every layout on either side, at every level.
#include "rows/colour_lines.h"
#include "rows/colour_reading.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace zqp;
using namespace zqp::lines;

int32_t bytesOf(RgbLayout layout) {
  constexpr int32_t kBytes[kRgbLayouts] = {1, 2, 2, 3, 3, 4, 4};
  return kBytes[static_cast<int32_t>(layout)];
}
int32_t rowsOf(RgbLayout layout) {
  return layout == RgbLayout::Rows ? 3 : 1;
}
bool isFiveSix(RgbLayout layout) {
  return layout == RgbLayout::Rgb565 || layout == RgbLayout::Rgb565Swapped;
}

/// A pixel as the layout has it.
void place(RgbLayout layout, const reading::Rgb &p, size_t x, std::vector<uint8_t> (&rows)[3]) {
  const auto byte = [](int32_t a) { return static_cast<uint8_t>(a); };
  const int32_t word = p.red << 11 | p.green << 5 | p.blue;
  std::vector<uint8_t> bytes;
  switch (layout) {
  case RgbLayout::Rows:
    rows[0][x] = byte(p.red);
    rows[1][x] = byte(p.green);
    rows[2][x] = byte(p.blue);
    return;
  case RgbLayout::Rgb565:
    bytes = {byte(word & 255), byte(word >> 8)};
    break;
  case RgbLayout::Rgb565Swapped:
    bytes = {byte(word >> 8), byte(word & 255)};
    break;
  case RgbLayout::Rgb24:
    bytes = {byte(p.red), byte(p.green), byte(p.blue)};
    break;
  case RgbLayout::Bgr24:
    bytes = {byte(p.blue), byte(p.green), byte(p.red)};
    break;
  case RgbLayout::Rgba:
    bytes = {byte(p.red), byte(p.green), byte(p.blue), 255};
    break;
  case RgbLayout::Bgra:
    bytes = {byte(p.blue), byte(p.green), byte(p.red), 255};
    break;
  }
  std::copy(bytes.begin(), bytes.end(), rows[0].begin() + static_cast<ptrdiff_t>(x * bytes.size()));
}

/// Runs a stage between guards and compares all bytes with those of `wanted`.
template <class Rows, class Stage>
void expectRows(Stage stage, const Rows &from, const RgbOfYuv &colours, const Rounding &rounding, size_t width,
                RgbLayout layout, const std::vector<uint8_t> (&wanted)[3], size_t skew) {
  std::vector<uint8_t> made[3];
  uint8_t *to[3] = {};
  for (size_t row = 0; row < static_cast<size_t>(rowsOf(layout)); ++row) {
    made[row].assign(wanted[row].size() + 2 * kGuards + skew, kGuard);
    to[row] = made[row].data() + kGuards + skew;
  }
  stage(from, colours, rounding, static_cast<int32_t>(width), to);
  for (size_t row = 0; row < static_cast<size_t>(rowsOf(layout)); ++row) {
    std::vector<uint8_t> all(made[row].size(), kGuard);
    std::copy(wanted[row].begin(), wanted[row].end(), all.begin() + static_cast<ptrdiff_t>(kGuards + skew));
    ASSERT_EQ(made[row], all) << "row " << row;
  }
}

/// Samples of one width in one layout, and what they are.
struct ByteLine {
  ByteLine(YuvLayout layout, size_t width, std::mt19937 &random)
      : pairs((width + 1) / 2),
        y(layout >= YuvLayout::Yuyv && layout <= YuvLayout::Vyuy ? 4 * pairs : width, width % 5),
        u(layout == YuvLayout::Full   ? width
          : layout == YuvLayout::Half ? pairs
                                      : 2 * pairs,
          width % 3),
        v(layout == YuvLayout::Full ? width : pairs, width % 7) {
    for (size_t x = 0; x < width; ++x) {
      fill(layout, x, random);
    }
    rows = {y.begin(), u.begin(), v.begin()};
  }

  size_t pairs;
  Row<uint8_t> y, u, v;
  std::vector<reading::Yuv> samples;
  YuvBytes rows = {};

private:
  void fill(YuvLayout layout, size_t x, std::mt19937 &random) {
    const bool isShared = layout != YuvLayout::Full && x % 2 == 1;
    const auto any = [&random] { return static_cast<uint8_t>(random()); };
    const uint8_t luma = any();
    const uint8_t newU = any();
    const uint8_t newV = any();
    const int32_t us = isShared ? samples.back().u : newU << 8;
    const int32_t vs = isShared ? samples.back().v : newV << 8;
    samples.push_back({luma << 8, us, vs});
    const auto u8 = static_cast<uint8_t>(us >> 8);
    const auto v8 = static_cast<uint8_t>(vs >> 8);
    const size_t at = x / 2 * 4;
    const auto packed = [&](size_t y0, size_t y1, size_t uAt, size_t vAt) {
      y[at + (x % 2 == 0 ? y0 : y1)] = luma;
      y[at + uAt] = u8;
      y[at + vAt] = v8;
    };
    switch (layout) {
    case YuvLayout::Half:
      y[x] = luma;
      u[x / 2] = u8;
      v[x / 2] = v8;
      break;
    case YuvLayout::Full:
      y[x] = luma;
      u[x] = u8;
      v[x] = v8;
      break;
    case YuvLayout::Pairs:
      y[x] = luma;
      u[x / 2 * 2] = u8;
      u[x / 2 * 2 + 1] = v8;
      break;
    case YuvLayout::PairsVu:
      y[x] = luma;
      u[x / 2 * 2] = v8;
      u[x / 2 * 2 + 1] = u8;
      break;
    case YuvLayout::Yuyv:
      packed(0, 2, 1, 3);
      break;
    case YuvLayout::Uyvy:
      packed(1, 3, 0, 2);
      break;
    case YuvLayout::Yvyu:
      packed(0, 2, 3, 1);
      break;
    case YuvLayout::Vyuy:
      packed(1, 3, 2, 0);
      break;
    }
  }
};

void wantedRows(RgbLayout layout, const std::vector<reading::Yuv> &samples, const RgbOfYuv &colours,
                const Rounding &rounding, std::vector<uint8_t> (&wanted)[3]) {
  for (auto &row : wanted) {
    row.assign(samples.size() * static_cast<size_t>(bytesOf(layout)), 0);
  }
  for (size_t x = 0; x < samples.size(); ++x) {
    place(layout, reading::rgb(colours, samples[x], rounding, static_cast<int32_t>(x)), x, wanted);
  }
}

/// Rows are of 8 bits at even widths and of 5 and 6 bits at odd ones, everything dithered where that counts.
RgbOfYuv coloursFor(RgbLayout layout, size_t width) {
  const bool isSmall = isFiveSix(layout) || (layout == RgbLayout::Rows && width % 2 == 1);
  return reading::rgbOfYuv(reading::kMatrices[width % 3], width % 7 < 5 ? reading::kLimited : reading::kFull,
                           width % 11 < 8 ? reading::kFull : reading::kLimited, isSmall);
}

class ColourLayouts : public testing::TestWithParam<zqcc::Level> {};
INSTANTIATE_TEST_SUITE_P(Levels, ColourLayouts, testing::ValuesIn(levels()),
                         [](const auto &level) { return std::to_string(level.param); });

TEST_P(ColourLayouts, BytesOfEveryWidth) {
  std::mt19937 random(1);
  for (int32_t from = 0; from < kYuvLayouts; ++from) {
    for (size_t width = 1; width <= 200; ++width) {
      ByteLine line(static_cast<YuvLayout>(from), width, random);
      for (int32_t to = 0; to < kRgbLayouts; ++to) {
        const auto layout = static_cast<RgbLayout>(to);
        const RgbOfYuv colours = coloursFor(layout, width);
        const Rounding rounding = width % 4 == 0 ? reading::halves() : reading::dither(static_cast<int32_t>(width % 8));
        std::vector<uint8_t> wanted[3];
        wantedRows(layout, line.samples, colours, rounding, wanted);
        SCOPED_TRACE(testing::Message() << "from " << from << " to " << to << ", width " << width);
        ASSERT_NO_FATAL_FAILURE(expectRows(stagesAt(GetParam()).rgbOfBytes[from][to], line.rows, colours, rounding,
                                           width, layout, wanted, width % 9));
      }
    }
  }
}

TEST_P(ColourLayouts, WordsOfEveryWidth) {
  std::mt19937 random(2);
  const int32_t ends[4] = {0, 1, 32639, 32640};
  const auto any = [&] {
    const uint32_t chosen = static_cast<uint32_t>(random()) % 20;
    return static_cast<int16_t>(chosen < 4 ? ends[chosen] : static_cast<int32_t>(random() % 32641));
  };
  for (size_t width = 1; width <= 200; ++width) {
    Row<int16_t> rows[3] = {{width, width % 5}, {width, width % 3}, {width, width % 7}};
    std::vector<reading::Yuv> samples;
    for (size_t x = 0; x < width; ++x) {
      for (auto &row : rows) {
        row[x] = any();
      }
      samples.push_back({2 * rows[0][x], 2 * rows[1][x], 2 * rows[2][x]});
    }
    for (int32_t to = 0; to < kRgbLayouts; ++to) {
      const auto layout = static_cast<RgbLayout>(to);
      const RgbOfYuv colours = coloursFor(layout, width);
      const Rounding rounding = width % 4 == 0 ? reading::halves() : reading::dither(static_cast<int32_t>(width % 8));
      std::vector<uint8_t> wanted[3];
      wantedRows(layout, samples, colours, rounding, wanted);
      SCOPED_TRACE(testing::Message() << "to " << to << ", width " << width);
      const YuvWords from = {rows[0].begin(), rows[1].begin(), rows[2].begin()};
      ASSERT_NO_FATAL_FAILURE(
          expectRows(stagesAt(GetParam()).rgbOfWords[to], from, colours, rounding, width, layout, wanted, width % 9));
    }
  }
}

/// All 2^24 colours, a row for each pair of u and v, compared at all levels at once.
void expectEveryColour(RgbLayout layout, const RgbOfYuv &colours, int32_t step) {
  const Rounding rounding = reading::halves();
  uint8_t y[256];
  for (int32_t i = 0; i < 256; ++i) {
    y[i] = static_cast<uint8_t>(i);
  }
  const auto bytes = static_cast<size_t>(256 * bytesOf(layout));
  std::vector<uint8_t> wanted[3];
  wanted[0].resize(bytes);
  std::vector<uint8_t> made(bytes);
  for (int32_t uv = 0; uv < 65536; uv += step) {
    for (int32_t x = 0; x < 256; ++x) {
      const reading::Rgb p = reading::rgb(colours, {x << 8, (uv & 255) << 8, uv & 0xFF00}, rounding, x);
      if (layout == RgbLayout::Rgb565) {
        const auto word = static_cast<uint16_t>(p.red << 11 | p.green << 5 | p.blue);
        const uint8_t pixel[2] = {static_cast<uint8_t>(word), static_cast<uint8_t>(word >> 8)};
        std::memcpy(&wanted[0][static_cast<size_t>(2 * x)], pixel, 2);
      } else {
        const uint8_t pixel[4] = {static_cast<uint8_t>(p.blue), static_cast<uint8_t>(p.green),
                                  static_cast<uint8_t>(p.red), 255};
        std::memcpy(&wanted[0][static_cast<size_t>(4 * x)], pixel, 4);
      }
    }
    uint8_t u[256];
    uint8_t v[256];
    std::memset(u, uv & 255, sizeof u);
    std::memset(v, uv >> 8, sizeof v);
    for (const zqcc::Level level : levels()) {
      uint8_t *const to[3] = {made.data(), nullptr, nullptr};
      stagesAt(level).rgbOfBytes[static_cast<int32_t>(YuvLayout::Full)][static_cast<int32_t>(layout)](
          {y, u, v}, colours, rounding, 256, to);
      ASSERT_EQ(std::memcmp(made.data(), wanted[0].data(), bytes), 0) << "level " << level << " uv " << uv;
    }
  }
}

TEST(ColourValues, EveryColourOfLimitedBt601) {
  const RgbOfYuv eight = reading::rgbOfYuv(reading::kMatrices[0], reading::kLimited, reading::kFull, false);
  expectEveryColour(RgbLayout::Bgra, eight, 1);
  const RgbOfYuv fiveSix = reading::rgbOfYuv(reading::kMatrices[0], reading::kLimited, reading::kFull, true);
  expectEveryColour(RgbLayout::Rgb565, fiveSix, 1);
}

TEST(ColourValues, ManyColoursOfOtherMatricesAndRanges) {
  for (const reading::Matrix &matrix : reading::kMatrices) {
    for (const reading::Range &in : {reading::kLimited, reading::kFull}) {
      for (const reading::Range &out : {reading::kLimited, reading::kFull}) {
        expectEveryColour(RgbLayout::Bgra, reading::rgbOfYuv(matrix, in, out, false), 37);
        expectEveryColour(RgbLayout::Rgb565, reading::rgbOfYuv(matrix, in, out, true), 37);
      }
    }
  }
}

/// The page promises it of the formulas, so that this is a test of the reading too.
TEST(ColourValues, GreysAreExact) {
  for (const reading::Range &in : {reading::kLimited, reading::kFull}) {
    for (const reading::Range &out : {reading::kLimited, reading::kFull}) {
      for (const bool isSmall : {false, true}) {
        const RgbOfYuv colours = reading::rgbOfYuv(reading::kMatrices[0], in, out, isSmall);
        for (int32_t y = 0; y < 256; ++y) {
          const reading::Rgb p = reading::rgb(colours, {y << 8, 32768, 32768}, reading::halves(), 0);
          const double level = out.black + (y - in.black) / (in.white - in.black) * (out.white - out.black);
          EXPECT_EQ(p.red, std::clamp(reading::nearest(level * colours.red.most / 255), 0, colours.red.most)) << y;
          EXPECT_EQ(p.green, std::clamp(reading::nearest(level * colours.green.most / 255), 0, colours.green.most));
          EXPECT_EQ(p.blue, p.red);
        }
      }
    }
  }
}

} // namespace
