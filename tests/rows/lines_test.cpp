// Words of lines, their sums and bytes at given places, against plain numbers, at every level.
#include "rows/scale_rows.h"

#include <gtest/gtest.h>

namespace {

using namespace scale_rows;

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

} // namespace
