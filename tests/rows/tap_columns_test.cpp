// Means along rows of words, against plain numbers, at every level.
#include "rows/scale_rows.h"

#include <gtest/gtest.h>

namespace {

using namespace scale_rows;
using zqp::Lerp;
using zqp::Taps;

struct TapSet {
  std::vector<Taps> columns;
  std::vector<int32_t> weights;

  void add(int32_t first, const std::vector<int32_t> &of) {
    columns.push_back({first, static_cast<int32_t>(of.size()), static_cast<int32_t>(weights.size())});
    weights.insert(weights.end(), of.begin(), of.end());
  }
};

void checkTaps(const TapSet &set, int32_t samples, Random &random) {
  const auto outputs = static_cast<int32_t>(set.columns.size());
  const auto words = random.words(samples);
  std::vector<int16_t> expected;
  for (const Taps &taps : set.columns) {
    const int32_t bits = taps.count > 16 ? 23 : 14;
    int64_t sum = int64_t{1} << (bits - 1);
    for (int32_t k = 0; k < taps.count; ++k) {
      sum += int64_t{words[at(taps.first + k)]} * set.weights[at(taps.weight + k)];
    }
    expected.push_back(static_cast<int16_t>(floorDivide(sum, int64_t{1} << bits)));
  }
  LayoutMemory layout(zqp::tapLayoutBytes(outputs));
  zqp::layOutTaps(set.columns.data(), set.weights.data(), outputs, samples, layout.get());
  for (const auto *stages : everyLevel()) {
    for (const auto &[first, count] : partsOf(outputs, random)) {
      const Taps &last = set.columns[at(first + count - 1)];
      const int32_t start = random.upTo(1) == 0 ? 0 : set.columns[at(first)].first;
      Row<int16_t> from({words.begin() + start, words.begin() + last.first + last.count}, random.upTo(2));
      Row<int16_t> to(count + kGuards, 1);
      stages->tapColumns(from.data(), start, {set.columns.data(), set.weights.data(), outputs, layout.get()}, first,
                         count, to.data());
      const std::vector<int16_t> part(expected.begin() + first, expected.begin() + first + count);
      ASSERT_EQ(to.values(count), part) << samples << " samples as " << outputs << ", from " << first;
      ASSERT_TRUE(to.isWhole(count));
    }
  }
}

/// Area means.
TapSet means(int64_t samples, int64_t outputs) {
  TapSet set;
  for (int64_t i = 0; i < outputs; ++i) {
    // In units of 1/outputs of a sample the output covers i samples to (i + 1) samples.
    const int64_t first = i * samples / outputs;
    const int64_t end = ((i + 1) * samples + outputs - 1) / outputs;
    const int64_t whole = int64_t{1} << (end - first > 16 ? 23 : 14);
    std::vector<int32_t> weights;
    int64_t before = 0;
    for (int64_t sample = first; sample < end; ++sample) {
      const int64_t covered = std::min((sample + 1) * outputs, (i + 1) * samples) - i * samples;
      const int64_t weighed = (2 * whole * covered + samples) / (2 * samples);
      weights.push_back(static_cast<int32_t>(weighed - before));
      before = weighed;
    }
    set.add(static_cast<int32_t>(first), weights);
  }
  return set;
}

TapSet bilinearTaps(int32_t samples, int32_t outputs) {
  TapSet set;
  for (const Lerp &lerp : bilinear(samples, outputs, false)) {
    const int32_t next = lerp.next / 2;
    if (next == 0) {
      set.add(lerp.at, {16384});
    } else {
      set.add(lerp.at, {16384 - next, next});
    }
  }
  return set;
}

TEST(TapColumns, MeansOfManyRatios) {
  Random random(12);
  constexpr int32_t kPairs[][2] = {{1, 1},       {300, 300},  {2, 1},      {300, 150},  {2000, 1000}, {1920, 800},
                                   {1280, 1024}, {1280, 720}, {1000, 333}, {1000, 250}, {1000, 251},  {1000, 222},
                                   {4000, 1000}, {3000, 517}, {4000, 571}, {3000, 200}, {3000, 188},  {3000, 189},
                                   {32768, 1},   {32768, 5},  {32768, 90}, {3301, 200}, {400, 70},    {70, 4}};
  for (const auto &[samples, outputs] : kPairs) {
    checkTaps(means(samples, outputs), samples, random);
  }
  for (int32_t outputs = 1; outputs <= 300; ++outputs) {
    checkTaps(means(outputs * 12 / 5, outputs), outputs * 12 / 5, random);
    checkTaps(means(outputs * 2, outputs), outputs * 2, random);
    checkTaps(means(outputs, outputs), outputs, random);
    const int32_t samples = outputs + random.upTo(16 * outputs);
    checkTaps(means(samples, outputs), samples, random);
  }
}

TEST(TapColumns, BilinearColumnsOfManyRatios) {
  Random random(13);
  constexpr int32_t kPairs[][2] = {{1, 1},      {1, 300},    {2, 64},     {100, 3200},
                                   {640, 1280}, {1920, 800}, {3000, 300}, {9, 64}};
  for (const auto &[samples, outputs] : kPairs) {
    checkTaps(bilinearTaps(samples, outputs), samples, random);
  }
}

TEST(TapColumns, AnyMeansAtAll) {
  Random random(14);
  for (int32_t round = 0; round < 300; ++round) {
    TapSet set;
    int32_t first = random.upTo(10);
    int32_t end = first;
    const int32_t most = 1 + round % 20;
    const int32_t outputs = 1 + random.upTo(200);
    for (int32_t i = 0; i < outputs; ++i) {
      first += random.upTo(round % 6);
      end = std::max(end, first + 1 + random.upTo(most - 1));
      end = std::min(end, first + most);
      first = std::max(first, end - most);
      end = std::max(end, first + 1);
      set.add(first, weightsOf(end - first, end - first > 16 ? 23 : 14, random));
    }
    checkTaps(set, end, random);
  }
}

/// Rows that are kept or halved, but for samples that are left out between groups or within them.
TEST(TapColumns, GapsBetweenGroups) {
  Random random(16);
  for (const int32_t samples : {1, 2}) {
    for (int32_t gap = 60; gap <= 130; ++gap) {
      TapSet set;
      for (int32_t i = 0; i < 300; ++i) {
        set.add(i * samples + i / gap * 3, std::vector<int32_t>(at(samples), 16384 / samples));
      }
      checkTaps(set, 300 * samples + 15, random);
    }
  }
}

/// The left-sited halves of a row: quarters of three columns.
TEST(TapColumns, QuartersOfThreeColumns) {
  Random random(15);
  for (int32_t outputs = 1; outputs <= 300; ++outputs) {
    TapSet set;
    set.add(0, {10923, 5461});
    for (int32_t i = 1; i < outputs; ++i) {
      set.add(2 * i - 1, {4096, 8192, 4096});
    }
    checkTaps(set, 2 * outputs, random);
  }
}

} // namespace
