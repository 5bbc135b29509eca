// The stages that find samples at other places, against a reading of their own in plain numbers, at every level.
#include "rows/scale.h"
#include "rows/stages.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

using zqp::Lerp;
using zqp::Taps;

/// All levels that the processor has, lowest first.
std::vector<const zqp::ScaleStages *> everyLevel() {
  std::vector<const zqp::ScaleStages *> stages;
  for (uint32_t level = 0; level < zqcc::LEVEL_COUNT; ++level) {
    const auto set = zqcc::setOf(static_cast<zqcc::Level>(level));
    if ((zqcc::detectedLevels() & set) != 0) {
      stages.push_back(zqp::stagesOf(set).scale);
    }
  }
  return stages;
}

/// A row that ends where its heap block ends, so that a sanitizer sees what is read or written behind it; in front of
/// it stand so many elements that alignments differ. Writers are checked by guards on either side.
template <class T>
class Row {
public:
  explicit Row(int32_t count, int32_t shift = 0)
      : elements_(static_cast<size_t>(count)), shift_(static_cast<size_t>(shift)), memory_(new T[elements_ + shift_]) {
    std::fill_n(memory_.get(), elements_ + shift_, kGuard);
  }
  Row(const std::vector<T> &values, int32_t shift) : Row(static_cast<int32_t>(values.size()), shift) {
    std::copy(values.begin(), values.end(), data());
  }
  T *data() { return memory_.get() + shift_; }
  std::vector<T> values(int32_t count) { return {data(), data() + count}; }
  bool isWhole(int32_t written) const {
    const auto untouched = [](T value) { return value == kGuard; };
    return std::all_of(memory_.get(), memory_.get() + shift_, untouched) &&
           std::all_of(memory_.get() + shift_ + written, memory_.get() + shift_ + elements_, untouched);
  }

private:
  static constexpr T kGuard = static_cast<T>(0x5A5B5A5B);
  size_t elements_;
  size_t shift_;
  std::unique_ptr<T[]> memory_;
};

constexpr int32_t kGuards = 70; ///< elements behind an output that must stay as they are

class Random {
public:
  explicit Random(uint32_t seed) : engine_(seed) {}
  int32_t upTo(int32_t most) { return static_cast<int32_t>(engine_() % (static_cast<uint32_t>(most) + 1)); }
  std::vector<uint8_t> bytes(int32_t count) {
    std::vector<uint8_t> all(static_cast<size_t>(count));
    for (uint8_t &byte : all) {
      const int32_t kind = upTo(7);
      byte = static_cast<uint8_t>(kind == 0 ? 0 : kind == 1 ? 255 : upTo(255));
    }
    return all;
  }
  std::vector<int16_t> words(int32_t count) {
    std::vector<int16_t> all(static_cast<size_t>(count));
    for (int16_t &word : all) {
      const int32_t kind = upTo(7);
      word = static_cast<int16_t>(kind == 0 ? 0 : kind == 1 ? 32640 : upTo(32640));
    }
    return all;
  }

private:
  std::mt19937 engine_;
};

int64_t floorDivide(int64_t number, int64_t by) {
  return number >= 0 ? number / by : -((-number + by - 1) / by);
}

size_t at(int64_t index) {
  return static_cast<size_t>(index);
}

int64_t mix(int64_t a, int64_t b, int64_t weight) {
  return a + floorDivide((b - a) * weight + 16384, 32768);
}

/// 64 byte aligned memory for a layout, as long as is asked for.
class LayoutMemory {
public:
  explicit LayoutMemory(size_t bytes)
      : memory_(static_cast<uint8_t *>(std::aligned_alloc(64, (bytes + 63) / 64 * 64)), std::free) {
    std::fill_n(memory_.get(), bytes, uint8_t{0xEE});
  }
  uint8_t *get() { return memory_.get(); }

private:
  std::unique_ptr<uint8_t, decltype(&std::free)> memory_;
};

/// Bilinear columns of `samples` samples seen as `outputs`; `doubled` says that positions lie on samples.
std::vector<Lerp> bilinear(int64_t samples, int64_t outputs, bool left) {
  std::vector<Lerp> columns;
  for (int64_t i = 0; i < outputs; ++i) {
    // 2 outputs t = (2 i + 1) samples - outputs, or 2 i samples
    const int64_t t = left ? 2 * i * samples : (2 * i + 1) * samples - outputs;
    const int64_t whole = floorDivide(t, 2 * outputs);
    const int64_t next = (t - whole * 2 * outputs) * 32768 / (2 * outputs);
    if (whole < 0 || whole >= samples - 1) {
      columns.push_back({static_cast<int32_t>(whole < 0 ? 0 : samples - 1), 0});
    } else {
      columns.push_back({static_cast<int32_t>(whole), static_cast<int32_t>(next)});
    }
  }
  return columns;
}

std::vector<int16_t> lerped(const std::vector<uint8_t> &from, const std::vector<Lerp> &columns) {
  std::vector<int16_t> words;
  for (const Lerp &lerp : columns) {
    const int64_t a = 128 * from[at(lerp.at)];
    words.push_back(static_cast<int16_t>(lerp.next == 0 ? a : mix(a, 128 * from[at(lerp.at + 1)], lerp.next)));
  }
  return words;
}

/// Beginnings and lengths of parts of `outputs` outputs.
std::vector<std::pair<int32_t, int32_t>> partsOf(int32_t outputs, Random &random) {
  std::vector<std::pair<int32_t, int32_t>> parts = {{0, outputs}};
  for (int k = 0; k < 3; ++k) {
    const int32_t first = random.upTo((outputs - 1) / 64) * 64;
    parts.emplace_back(first, 1 + random.upTo(outputs - first - 1));
  }
  return parts;
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

TEST(Widen, EveryCount) {
  Random random(6);
  for (const auto *stages : everyLevel()) {
    for (int32_t count = 1; count <= 300; ++count) {
      const auto bytes = random.bytes(count);
      std::vector<int16_t> expected;
      for (const uint8_t byte : bytes) {
        expected.push_back(static_cast<int16_t>(128 * byte));
      }
      Row<uint8_t> from(bytes, count % 4);
      Row<int16_t> to(count + kGuards, count % 2);
      stages->widen(from.data(), count, to.data());
      ASSERT_EQ(to.values(count), expected) << count;
      ASSERT_TRUE(to.isWhole(count)) << count;
    }
  }
}

void checkPick(const std::vector<int32_t> &places, int32_t samples, Random &random) {
  const auto bytes = random.bytes(samples);
  std::vector<uint8_t> expected;
  for (const int32_t place : places) {
    expected.push_back(bytes[at(place)]);
  }
  const auto count = static_cast<int32_t>(places.size());
  for (const auto *stages : everyLevel()) {
    Row<uint8_t> from(bytes, random.upTo(3));
    Row<int32_t> wanted(places, random.upTo(1));
    Row<uint8_t> to(count + kGuards, random.upTo(3));
    stages->pick(from.data(), wanted.data(), count, to.data());
    ASSERT_EQ(to.values(count), expected) << count << " of " << samples;
    ASSERT_TRUE(to.isWhole(count));
  }
}

TEST(Pick, ManyRatiosAndPlaces) {
  Random random(7);
  for (int32_t count = 1; count <= 300; ++count) {
    for (const auto &[by, of] : {std::pair{1, 1}, {1, 2}, {2, 1}, {3, 1}, {12, 5}, {5, 12}, {4, 1}, {31, 4}, {40, 1}}) {
      std::vector<int32_t> places;
      for (int32_t i = 0; i < count; ++i) {
        places.push_back((2 * i + 1) * by / (2 * of));
      }
      checkPick(places, places.back() + 1, random);
    }
    std::vector<int32_t> anywhere;
    const int32_t samples = 1 + random.upTo(count);
    for (int32_t i = 0; i < count; ++i) {
      anywhere.push_back(random.upTo(samples - 1));
    }
    checkPick(anywhere, samples, random);
    std::reverse(anywhere.begin(), anywhere.end());
    std::sort(anywhere.begin(), anywhere.begin() + count / 2);
    checkPick(anywhere, samples, random);
  }
}

/// Weights that sum up to 1 << bits.
std::vector<int32_t> weightsOf(int32_t count, int32_t bits, Random &random) {
  std::vector<int32_t> cuts = {0, 1 << bits};
  const int32_t kind = random.upTo(3);
  for (int32_t i = 1; i < count; ++i) {
    const int64_t even = (int64_t{i} << bits) / count;
    cuts.push_back(kind == 0   ? static_cast<int32_t>(even)
                   : kind == 1 ? random.upTo(1 << bits)
                   : kind == 2 ? random.upTo(100)
                               : static_cast<int32_t>(even) / 128 * 128 + (i % 2 == 0 ? 64 : 63));
  }
  std::sort(cuts.begin(), cuts.end());
  std::vector<int32_t> weights;
  for (size_t i = 1; i < cuts.size(); ++i) {
    weights.push_back(cuts[i] - cuts[i - 1]);
  }
  return weights;
}

/// Columns of lines: sums, rounded to words.
std::vector<int16_t> addedUp(const std::vector<std::vector<uint8_t>> &lines, const std::vector<int32_t> &weights,
                             int32_t bits) {
  std::vector<int16_t> words;
  for (size_t column = 0; column < lines[0].size(); ++column) {
    int64_t sum = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
      sum += int64_t{lines[i][column]} * weights[i];
    }
    words.push_back(static_cast<int16_t>(floorDivide(sum * 256 + (int64_t{1} << bits), int64_t{2} << bits)));
  }
  return words;
}

void checkLines(const std::vector<int32_t> &weights, int32_t count, bool extreme, Random &random) {
  std::vector<std::vector<uint8_t>> bytes;
  for (size_t i = 0; i < weights.size(); ++i) {
    bytes.push_back(random.bytes(count));
    if (extreme) {
      for (uint8_t &byte : bytes.back()) {
        byte = random.upTo(1) == 0 ? 0 : 255;
      }
    }
  }
  const auto lineCount = static_cast<int32_t>(weights.size());
  for (const auto *stages : everyLevel()) {
    std::vector<std::unique_ptr<Row<uint8_t>>> rows;
    std::vector<const uint8_t *> lines;
    for (const auto &line : bytes) {
      rows.push_back(std::make_unique<Row<uint8_t>>(line, random.upTo(3)));
      lines.push_back(rows.back()->data());
    }
    Row<int16_t> to(count + kGuards, 1);
    stages->addLines(lines.data(), weights.data(), lineCount, count, to.data());
    ASSERT_EQ(to.values(count), addedUp(bytes, weights, 14)) << lineCount << " lines, " << weights[0];
    ASSERT_TRUE(to.isWhole(count));
  }
}

TEST(AddLines, EveryCount) {
  Random random(8);
  for (int32_t count = 1; count <= 300; ++count) {
    checkLines(weightsOf(1 + random.upTo(15), 14, random), count, false, random);
    checkLines(weightsOf(1 + count % 4, 14, random), count, true, random);
  }
}

TEST(AddLines, AllPairsOfWeights) {
  Random random(9);
  for (int32_t weight = 0; weight <= 16384; ++weight) {
    checkLines({weight, 16384 - weight}, 130, true, random);
  }
  for (int32_t weight = 0; weight <= 16384; weight += 64) {
    checkLines({weight, 16384 - weight, 0, 0, 0, 0}, 130, true, random);
  }
  checkLines({16384}, 1000, true, random);
  checkLines({8192, 8192}, 1000, false, random);
  checkLines({4096, 8192, 4096}, 1000, false, random);
}

TEST(AddLines, ManyWeights) {
  Random random(10);
  for (int32_t round = 0; round < 4000; ++round) {
    checkLines(weightsOf(1 + round % 16, 14, random), 70 + 2 * random.upTo(40), round % 3 != 0, random);
  }
}

TEST(AddToSums, ManyLines) {
  Random random(11);
  for (int32_t count = 1; count <= 150; ++count) {
    const int32_t lineCount = 17 + random.upTo(50);
    const auto weights = weightsOf(lineCount, 23, random);
    std::vector<std::vector<uint8_t>> bytes;
    for (int32_t i = 0; i < lineCount; ++i) {
      bytes.push_back(count % 7 == 0 ? std::vector<uint8_t>(at(count), 255) : random.bytes(count));
    }
    for (const auto *stages : everyLevel()) {
      Row<uint32_t> sums(count + kGuards, 1);
      std::fill_n(sums.data(), count, 0U);
      for (size_t i = 0; i < bytes.size(); ++i) {
        Row<uint8_t> line(bytes[i], count % 4);
        stages->addToSums(line.data(), weights[i], count, sums.data());
      }
      ASSERT_TRUE(sums.isWhole(count)) << count;
      Row<uint32_t> exact(sums.values(count), 0);
      Row<int16_t> to(count + kGuards, 1);
      stages->wordsOfSums(exact.data(), 23, count, to.data());
      ASSERT_EQ(to.values(count), addedUp(bytes, weights, 23)) << count;
      ASSERT_TRUE(to.isWhole(count)) << count;
    }
  }
}

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
