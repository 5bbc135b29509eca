// Samples between samples and rows between rows, against a reading of their own in plain numbers, at every level.
#include "rows/scale_rows.h"

#include <gtest/gtest.h>

namespace {

using namespace scale_rows;
using zqp::Lerp;

std::vector<int16_t> lerped(const std::vector<uint8_t> &from, const std::vector<Lerp> &columns) {
  std::vector<int16_t> words;
  for (const Lerp &lerp : columns) {
    const int64_t a = 128 * from[at(lerp.at)];
    words.push_back(static_cast<int16_t>(lerp.next == 0 ? a : mix(a, 128 * from[at(lerp.at + 1)], lerp.next)));
  }
  return words;
}

void checkLerp(const std::vector<Lerp> &columns, int32_t samples, Random &random) {
  const auto outputs = static_cast<int32_t>(columns.size());
  const auto bytes = random.bytes(samples);
  const auto expected = lerped(bytes, columns);
  LayoutMemory layout(zqp::lerpLayoutBytes(outputs));
  zqp::layOutLerp(columns.data(), outputs, samples, layout.get());
  for (const auto *stages : everyLevel()) {
    for (const auto &[first, count] : partsOf(outputs, random)) {
      Row<uint8_t> from(bytes, random.upTo(3));
      Row<int16_t> to(count + kGuards, 1);
      stages->lerpColumns(from.data(), {columns.data(), outputs, layout.get()}, first, count, to.data());
      const std::vector<int16_t> part(expected.begin() + first, expected.begin() + first + count);
      ASSERT_EQ(to.values(count), part) << samples << " samples as " << outputs << ", from " << first;
      ASSERT_TRUE(to.isWhole(count));
    }
  }
}

TEST(Lerp, BilinearColumnsOfManyRatios) {
  Random random(1);
  constexpr int32_t kPairs[][2] = {{100, 3200},  {1, 1},       {1, 300},     {2, 64},       {3, 500},    {1920, 800},
                                   {1280, 1024}, {1024, 1280}, {640, 1280},  {1280, 640},   {320, 640},  {15, 30},
                                   {16, 32},     {17, 34},     {128, 256},   {127, 300},    {129, 64},   {1280, 720},
                                   {720, 1280},  {1920, 481},  {2000, 450},  {3000, 600},   {4000, 500}, {32768, 1},
                                   {32768, 7},   {4096, 4095}, {4095, 4096}, {1000, 32000}, {300, 128},  {300, 127}};
  for (const auto &[samples, outputs] : kPairs) {
    for (const bool left : {false, true}) {
      checkLerp(bilinear(samples, outputs, left), samples, random);
    }
  }
}

TEST(Lerp, EveryNumberOfOutputs) {
  Random random(2);
  for (int32_t outputs = 1; outputs <= 300; ++outputs) {
    checkLerp(bilinear(outputs * 12 / 5 + 1, outputs, false), outputs * 12 / 5 + 1, random);
    checkLerp(bilinear(outputs / 2 + 1, outputs, false), outputs / 2 + 1, random);
    checkLerp(bilinear(1 + random.upTo(1000), outputs, false), 1001, random);
  }
}

TEST(Lerp, AnyColumnsAtAll) {
  Random random(3);
  for (int32_t round = 0; round < 200; ++round) {
    const int32_t samples = 1 + random.upTo(round % 2 == 0 ? 40 : 400);
    std::vector<Lerp> columns(at(1 + random.upTo(200)));
    int32_t place = 0;
    for (Lerp &lerp : columns) {
      place = std::min(place + random.upTo(round % 5), samples - 1);
      const int32_t weight = round % 3 == 0 ? 256 * random.upTo(127) : random.upTo(32767);
      lerp = {round % 7 == 6 ? random.upTo(samples - 1) : place, 0};
      lerp.next = lerp.at < samples - 1 ? weight : 0;
    }
    checkLerp(columns, samples, random);
  }
}

/// Every two samples and every weight: what arithmetic of 16 bits could get wrong.
TEST(Lerp, AllWeightsOfExtremes) {
  Random random(4);
  std::vector<Lerp> columns;
  for (int32_t weight = 0; weight < 32768; ++weight) {
    columns.push_back({weight % 23, weight});
  }
  checkLerp(columns, 300, random);
  for (const auto *stages : everyLevel()) {
    std::vector<uint8_t> extremes;
    for (int32_t i = 0; i < 24; ++i) {
      extremes.push_back(i % 2 == 0 ? 0 : 255);
    }
    std::sort(columns.begin(), columns.end(), [](const Lerp &a, const Lerp &b) { return a.at < b.at; });
    LayoutMemory layout(zqp::lerpLayoutBytes(32768));
    zqp::layOutLerp(columns.data(), 32768, 24, layout.get());
    Row<int16_t> to(32768);
    stages->lerpColumns(extremes.data(), {columns.data(), 32768, layout.get()}, 0, 32768, to.data());
    ASSERT_EQ(to.values(32768), lerped(extremes, columns));
  }
}

TEST(LerpLines, EveryCountAndInPlace) {
  Random random(5);
  for (const auto *stages : everyLevel()) {
    for (int32_t count = 1; count <= 300; ++count) {
      const auto above = random.words(count);
      const auto below = random.words(count);
      const int32_t next = count % 9 == 0 ? 32767 * (count % 2) : random.upTo(32767);
      std::vector<int16_t> expected;
      for (int32_t i = 0; i < count; ++i) {
        expected.push_back(static_cast<int16_t>(mix(above[at(i)], below[at(i)], next)));
      }
      Row<int16_t> upper(above, count % 3);
      Row<int16_t> lower(below, count % 5);
      Row<int16_t> to(count + kGuards, 1);
      stages->lerpLines(upper.data(), lower.data(), next, count, to.data());
      ASSERT_EQ(to.values(count), expected) << count;
      ASSERT_TRUE(to.isWhole(count)) << count;
      Row<int16_t> lowerToo(below, 1);
      stages->lerpLines(upper.data(), lowerToo.data(), next, count, lowerToo.data());
      ASSERT_EQ(lowerToo.values(count), expected) << count;
      stages->lerpLines(upper.data(), lower.data(), next, count, upper.data());
      ASSERT_EQ(upper.values(count), expected) << count;
      stages->lerpLines(lower.data(), lower.data(), next, count, lower.data());
      ASSERT_EQ(lower.values(count), below) << count;
    }
  }
}

} // namespace
