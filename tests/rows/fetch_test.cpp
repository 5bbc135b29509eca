#include "rows/line_guard.h"

#include <cmath>

namespace {

using namespace rowtest;

using Bytes = std::vector<uint8_t>;

/// For every level and count: stage, count and a number that moves rows to other alignments.
template <class Try>
void forAll(const Try &attempt) {
  for (const zqcc::LevelSet level : levels()) {
    for (const int32_t count : counts()) {
      SCOPED_TRACE(saying(level, count));
      attempt(*zqp::stagesOf(level).fetch, static_cast<size_t>(count), static_cast<size_t>(count) * 7 % 64);
      if (testing::Test::HasFailure()) {
        return;
      }
    }
  }
}

void expect(const Output &row, const Bytes &bytes, const char *what) {
  EXPECT_TRUE(row.bytes() == bytes) << what;
  EXPECT_TRUE(row.guardsStand()) << "around " << what;
}

/// Byte `at` of every `step`.
Bytes everyOf(const Input &from, size_t count, size_t step, size_t at) {
  Bytes all;
  for (size_t i = 0; i < count; ++i) {
    all.push_back(from[step * i + at]);
  }
  return all;
}

TEST(FetchStages, PairsArePartedInOrder) {
  forAll([](const zqp::FetchStages &stages, size_t count, size_t shift) {
    const Input from(2 * count, shift, 1);
    Output first(count, shift + 1);
    Output second(count, shift + 30);
    stages.pairs(from.data(), static_cast<int32_t>(count), first.data(), second.data());
    expect(first, everyOf(from, count, 2, 0), "first");
    expect(second, everyOf(from, count, 2, 1), "second");
  });
}

TEST(FetchStages, MacropixelsAreTakenApartInEveryOrder) {
  forAll([](const zqp::FetchStages &stages, size_t pixels, size_t shift) {
    for (const zqp::PackedOrder &order : kOrders) {
      const size_t groups = (pixels + 1) / 2;
      const Input from(4 * groups, shift, order.y0 + 4U * order.u);
      Output y(pixels, shift + 3);
      Output u(groups, shift);
      Output v(groups, shift + 17);
      stages.packed(from.data(), order, static_cast<int32_t>(pixels), y.data(), u.data(), v.data());
      Bytes luma;
      for (size_t i = 0; i < pixels; ++i) {
        luma.push_back(from[i / 2 * 4 + (i % 2 == 0 ? order.y0 : order.y1)]);
      }
      expect(y, luma, "luma");
      expect(u, everyOf(from, groups, 4, order.u), "u");
      expect(v, everyOf(from, groups, 4, order.v), "v");
    }
  });
}

/// The nearest of 0..255 of a number that goes up to `most`.
uint8_t byteOf(uint32_t number, uint32_t most) {
  return static_cast<uint8_t>(std::floor(number * 255.0 / most + 0.5));
}

/// Components of words, red first.
std::vector<Bytes> componentsOf(const Input &from, size_t pixels, bool isSwapped) {
  std::vector<Bytes> rows(3);
  for (size_t i = 0; i < pixels; ++i) {
    const uint32_t low = from[2 * i + (isSwapped ? 1 : 0)];
    const uint32_t high = from[2 * i + (isSwapped ? 0 : 1)];
    rows[0].push_back(byteOf(high / 8, 31));
    rows[1].push_back(byteOf(high % 8 * 8 + low / 32, 63));
    rows[2].push_back(byteOf(low % 32, 31));
  }
  return rows;
}

void tryWords(const zqp::FetchStages &stages, const Input &from, size_t pixels, size_t shift) {
  for (const bool isSwapped : {false, true}) {
    Output red(pixels, shift);
    Output green(pixels, shift + 5);
    Output blue(pixels, shift + 31);
    uint8_t *const to[3] = {red.data(), green.data(), blue.data()};
    stages.rgb565(from.data(), isSwapped, static_cast<int32_t>(pixels), to);
    const std::vector<Bytes> rows = componentsOf(from, pixels, isSwapped);
    expect(red, rows[0], "red");
    expect(green, rows[1], "green");
    expect(blue, rows[2], "blue");
  }
}

TEST(FetchStages, WordsBecomeTheNearestBytes) {
  forAll([](const zqp::FetchStages &stages, size_t pixels, size_t shift) {
    tryWords(stages, Input(2 * pixels, shift, 3), pixels, shift);
  });
}

TEST(FetchStages, EveryWordBecomesTheNearestBytes) {
  constexpr size_t kWords = 65536;
  Input all(2 * kWords, 0, 0);
  for (size_t i = 0; i < kWords; ++i) {
    all.data()[2 * i] = static_cast<uint8_t>(i);
    all.data()[2 * i + 1] = static_cast<uint8_t>(i >> 8);
  }
  for (const zqcc::LevelSet level : levels()) {
    SCOPED_TRACE(saying(level, kWords));
    tryWords(*zqp::stagesOf(level).fetch, all, kWords, 0);
  }
}

TEST(FetchStages, PixelsOfThreeBytesAreTakenApart) {
  forAll([](const zqp::FetchStages &stages, size_t pixels, size_t shift) {
    const Input from(3 * pixels, shift, 4);
    Output first(pixels, shift + 9);
    Output second(pixels, shift + 4);
    Output third(pixels, shift + 3);
    uint8_t *const to[3] = {first.data(), second.data(), third.data()};
    stages.three(from.data(), static_cast<int32_t>(pixels), to);
    expect(first, everyOf(from, pixels, 3, 0), "first");
    expect(second, everyOf(from, pixels, 3, 1), "second");
    expect(third, everyOf(from, pixels, 3, 2), "third");
  });
}

TEST(FetchStages, PixelsOfFourBytesAreTakenApart) {
  forAll([](const zqp::FetchStages &stages, size_t pixels, size_t shift) {
    const Input from(4 * pixels, shift, 5);
    Output first(pixels, shift + 2);
    Output second(pixels, shift + 4);
    Output third(pixels, shift + 33);
    Output fourth(pixels, shift + 63);
    uint8_t *const to[4] = {first.data(), second.data(), third.data(), fourth.data()};
    stages.four(from.data(), static_cast<int32_t>(pixels), to);
    expect(first, everyOf(from, pixels, 4, 0), "first");
    expect(second, everyOf(from, pixels, 4, 1), "second");
    expect(third, everyOf(from, pixels, 4, 2), "third");
    expect(fourth, everyOf(from, pixels, 4, 3), "fourth");
  });
}

} // namespace
