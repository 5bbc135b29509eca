// The stages of box means, at every level that this machine has, against plain loops.
#include "vector/filter_rows.h"

#include "vector/colour_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace zqcc {
namespace {

using support::Against;
using support::GuardedPages;
using Access = GuardedPages::Access;

int between(std::mt19937 &random, int low, int high) {
  return low + static_cast<int>(random() % static_cast<uint32_t>(high - low + 1));
}

class BoxStages : public AtEveryLevel {
protected:
  std::mt19937 random_{5}; // NOLINT(cert-msc51-cpp): the same cases everywhere
};

INSTANTIATE_TEST_SUITE_P(Levels, BoxStages, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

struct Adding {
  const PerLevel<AddLines> *stage;
  int columns;
  bool both;
};

TEST_P(BoxStages, SumsOfLinesKeepWithinThem) {
  std::vector<std::unique_ptr<GuardedPages>> lines;
  for (int32_t l = 0; l < kMostBoxSamples; ++l) {
    lines.push_back(std::make_unique<GuardedPages>(1024, Access::ReadOnly));
  }
  GuardedPages sums(1024, Access::ReadWrite);
  for (const Adding &adding :
       {Adding{&ADD_LINES, 1, false}, Adding{&ADD_PAIRS, 2, true}, Adding{&ADD_FIRST_ONES, 2, false}}) {
    for (int32_t count = 1; count <= 200; ++count) {
      for (int32_t lineCount = 1; lineCount <= kMostBoxSamples; ++lineCount) {
        const Against against = (count + lineCount) % 2 == 0 ? Against::End : Against::Start;
        const int32_t first = against == Against::End ? count % 5 : 0;
        AddedLines added{{}, lineCount, 0};
        for (int32_t l = 0; l < lineCount; ++l) {
          GuardedPages &line = *lines[static_cast<std::size_t>(l)];
          line.place(static_cast<std::size_t>(first + count * adding.columns), against);
          support::fill(line.write(), line.size(), lineCount == 7 ? support::Fill::Extremes : support::Fill::Noise,
                        static_cast<uint32_t>(8 * count + l));
          added.line[l] = line.data();
        }
        sums.place(static_cast<std::size_t>(count) * sizeof(uint16_t), against);
        auto *to = reinterpret_cast<uint16_t *>(sums.data());
        const auto fault = support::catchFault([&] { adding.stage->of[GetParam()](added, first, count, to); });
        ASSERT_FALSE(fault.has_value() || sums.damage().has_value()) << count << " of " << lineCount;
        for (int32_t i = 0; i < count; ++i) {
          int32_t expected = 0;
          for (int32_t l = 0; l < lineCount; ++l) {
            const uint8_t *at = added.line[l] + first + std::ptrdiff_t{i} * adding.columns;
            expected += at[0] + (adding.both ? at[1] : 0);
          }
          ASSERT_EQ(to[i], expected) << i << " of " << count << ", " << lineCount << " lines";
        }
      }
    }
  }
}

TEST(BoxQuotient, IsExactForEverySum) {
  for (int32_t samples = 2; samples <= kMostBoxSamples * kMostBoxSamples; ++samples) {
    const BoxQuotient quotient = boxQuotient(samples);
    for (uint32_t sum = 0; sum <= 255U * static_cast<uint32_t>(samples); ++sum) {
      ASSERT_EQ((sum * quotient.factor >> 16) >> quotient.shift, sum / static_cast<uint32_t>(samples))
          << sum << " of " << samples;
    }
  }
}

/// Every sum of as many samples, each a box of its own.
TEST_P(BoxStages, EveryMeanOfABoxIsExact) {
  for (int32_t samples = 2; samples <= kMostBoxSamples * kMostBoxSamples; ++samples) {
    const int32_t count = 255 * samples + 1;
    const int32_t groups = filterGroups(count);
    const auto boxes = static_cast<std::size_t>(groups) * kFilterGroup;
    std::vector<uint16_t> sums(2 * boxes + 8);
    std::vector<int32_t> first(boxes);
    for (std::size_t i = 0; i < boxes; ++i) {
      const int32_t sum = std::min(static_cast<int32_t>(i), count - 1);
      sums[2 * i] = static_cast<uint16_t>(sum / 3);
      sums[2 * i + 1] = static_cast<uint16_t>(sum - sum / 3);
      first[i] = static_cast<int32_t>(2 * i);
    }
    const BoxColumns columns{first.data(), {1, 1}, boxQuotient(samples)};
    std::vector<uint8_t> means(boxes);
    BOX_ROW.of[GetParam()](sums.data(), columns, groups, means.data());
    for (int32_t i = 0; i < count; ++i) {
      ASSERT_EQ(means[static_cast<std::size_t>(i)], i / samples) << i << " of " << samples;
    }
  }
}

/// A stage and its boxes: the first column that it reads is `before` columns before the first box.
struct Straight {
  const PerLevel<StraightBoxes> *stage;
  int32_t apart;
  int32_t before;
  std::vector<int32_t> columns;
};

TEST_P(BoxStages, StraightBoxesReadTheirColumnsAlone) {
  std::vector<std::unique_ptr<GuardedPages>> lines;
  for (int32_t l = 0; l < kMostBoxSamples; ++l) {
    lines.push_back(std::make_unique<GuardedPages>(2048, Access::ReadOnly));
  }
  GuardedPages to(1024, Access::ReadWrite);
  for (const Straight &straight :
       {Straight{&BOXES_OF_FOUR, 4, 0, {0, 1, 2, 3}}, Straight{&BOXES_OF_SIX, 6, 0, {0, 1, 2, 3, 4, 5}},
        Straight{&BOXES_OF_EVERY_SECOND, 8, 1, {0, 2, 4, 6}}}) {
    int32_t count = 1;
    while ((straightLevels(count) & setOf(GetParam())) == 0) {
      ++count;
    }
    for (; count <= 150; ++count) {
      for (int32_t lineCount = 1; lineCount <= kMostBoxSamples; ++lineCount) {
        const Against against = (count + lineCount) % 2 == 0 ? Against::End : Against::Start;
        const int32_t first = straight.before + (against == Against::End ? count % 5 : 0);
        const int32_t length = first + (count - 1) * straight.apart + straight.columns.back() + 1;
        AddedLines added{{}, lineCount, 0};
        for (int32_t l = 0; l < lineCount; ++l) {
          GuardedPages &line = *lines[static_cast<std::size_t>(l)];
          line.place(static_cast<std::size_t>(length), against);
          support::fill(line.write(), line.size(), lineCount == 7 ? support::Fill::Extremes : support::Fill::Noise,
                        static_cast<uint32_t>(8 * count + l));
          added.line[l] = line.data();
        }
        to.place(static_cast<std::size_t>(count), against);
        const int32_t samples = lineCount * static_cast<int32_t>(straight.columns.size());
        const auto fault = support::catchFault(
            [&] { straight.stage->of[GetParam()](added, first, count, boxQuotient(samples), to.data()); });
        ASSERT_FALSE(fault.has_value() || to.damage().has_value()) << count << " of " << lineCount;
        for (int32_t i = 0; i < count; ++i) {
          int32_t sum = 0;
          for (int32_t l = 0; l < lineCount; ++l) {
            for (const int32_t column : straight.columns) {
              sum += added.line[l][first + i * straight.apart + column];
            }
          }
          ASSERT_EQ(to.data()[i], sum / samples) << i << " of " << count << ", " << lineCount << " lines";
        }
      }
    }
  }
}

TEST_P(BoxStages, BoxesHaveTheSumsOfTheirPattern) {
  for (int32_t groups = 1; groups <= 9; ++groups) {
    for (int pattern = 1; pattern < 256; ++pattern) {
      const int samples = 7;
      std::vector<uint16_t> sums(600);
      for (uint16_t &sum : sums) {
        sum = static_cast<uint16_t>(between(random_, 0, 7 * 255));
      }
      std::vector<int32_t> first(static_cast<std::size_t>(groups) * kFilterGroup);
      for (int32_t &each : first) {
        each = between(random_, 0, 592);
      }
      BoxColumns columns{first.data(), {}, boxQuotient(samples * samples)};
      for (int k = 0; k < 8; ++k) {
        columns.pattern[k] = static_cast<int16_t>(pattern >> k & 1);
      }
      GuardedPages to(1024, Access::ReadWrite);
      to.place(first.size(), Against::End);
      const auto fault = support::catchFault([&] { BOX_ROW.of[GetParam()](sums.data(), columns, groups, to.data()); });
      ASSERT_FALSE(fault.has_value() || to.damage().has_value());
      for (std::size_t i = 0; i < first.size(); ++i) {
        int32_t sum = 0;
        for (int k = 0; k < 8; ++k) {
          sum += columns.pattern[k] * sums[static_cast<std::size_t>(first[i] + k)];
        }
        ASSERT_EQ(to.data()[i], sum / (samples * samples)) << "pattern " << pattern << ", box " << i;
      }
    }
  }
}

} // namespace
} // namespace zqcc
