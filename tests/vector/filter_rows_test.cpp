// The stages of filtered resizing, at every level that this machine has, against plain loops.
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

/// A stage, whether it makes the means of whole samples, and whether it takes negative weights.
struct Means {
  const PerLevel<FivePointRow> *stage;
  bool isWhole;
  bool takesNegative;
};

class FilterRows : public AtEveryLevel {
protected:
  void expectMeans(const Means &means, int32_t bits);

  std::mt19937 random_{5}; // NOLINT(cert-msc51-cpp): the same cases everywhere
};

INSTANTIATE_TEST_SUITE_P(Levels, FilterRows, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

// --- Windows --------------------------------------------------------------------------------------------------------

TEST_P(FilterRows, WindowsAreCopiedFromWhereTheyLie) {
  constexpr int32_t kMostGroups = 5;
  GuardedPages line(1024, Access::ReadOnly);
  GuardedPages to(1024, Access::ReadWrite);
  for (int round = 0; round < 200; ++round) {
    const Against against = round % 2 == 0 ? Against::End : Against::Start;
    const bool near = round % 4 < 2;
    const int32_t rows = round % 8 < 4 ? 1 : 5;
    const int32_t groups = 1 + round % kMostGroups;
    const int32_t samples = between(random_, near ? 64 : 16, 400);
    line.place(static_cast<std::size_t>(samples), against);
    support::fill(line.write(), line.size(), support::Fill::Noise, static_cast<uint32_t>(samples));
    to.place(static_cast<std::size_t>(groups) * kWindowBytes, against);
    std::vector<int32_t> windows;
    std::vector<NearWindows> nearest(static_cast<std::size_t>(groups * rows));
    for (NearWindows &each : nearest) {
      each.first = between(random_, 0, std::max(0, samples - 64));
      for (int block = 0; block < 4; ++block) {
        const int from = between(random_, 0, 12);
        windows.push_back(near ? each.first + 4 * from : between(random_, 0, samples - 16));
        for (int i = 0; i < 4; ++i) {
          each.from[4 * block + i] = static_cast<uint8_t>(from + i);
        }
      }
    }
    const WindowRow stage = (near ? NEAR_WINDOW_ROW : WINDOW_ROW).of[GetParam()];
    for (int32_t row = 0; row < rows; ++row) {
      const FilterColumns columns{nullptr, windows.data() + std::ptrdiff_t{4} * row, nearest.data() + row};
      const auto fault = support::catchFault([&] { stage(line.data(), columns, rows, groups, to.data()); });
      ASSERT_FALSE(fault.has_value() || to.damage().has_value());
      for (int32_t w = 0; w < 4 * groups; ++w) {
        const int32_t at = windows[static_cast<std::size_t>((w / 4 * rows + row) * 4 + w % 4)];
        ASSERT_EQ(std::memcmp(to.data() + std::ptrdiff_t{16} * w, line.data() + at, 16), 0) << "window " << w;
      }
    }
  }
}

// --- Five points ----------------------------------------------------------------------------------------------------

/// A sample of the upper bits of bytes.
int32_t bilinear(const uint8_t *top, const uint8_t *bottom, int32_t x, int32_t y, int32_t bits) {
  const auto component = [bits](uint8_t byte) { return int64_t{byte} >> (8 - bits); };
  const auto mixed = [x](int64_t left, int64_t right) { return left * 1024 + (right - left) * x; };
  const int64_t upper = mixed(component(top[0]), component(top[1]));
  const int64_t lower = mixed(component(bottom[0]), component(bottom[1]));
  return static_cast<int32_t>((upper * 1024 + (lower - upper) * y) >> 20);
}

/// From all of the range that tables have: positions between -1 and 0 have negative weights.
int32_t weight(std::mt19937 &random) {
  switch (between(random, 0, 9)) {
  case 0:
    return 0;
  case 1:
    return 512;
  case 2:
    return 1023;
  case 3:
    return -1023;
  case 4:
    return between(random, -1023, -1);
  default:
    return between(random, 0, 1023);
  }
}

void FilterRows::expectMeans(const Means &means, int32_t bits) {
  constexpr std::size_t kMost = 4;
  std::vector<FilterGroup> columns(kMost);
  GuardedPages rows(std::size_t{2} * kFilterTaps * kMost * kWindowBytes, Access::ReadOnly);
  GuardedPages to(kMost * kFilterGroup, Access::ReadWrite);
  for (int round = 0; round < 1000; ++round) {
    const std::size_t groups = 1 + static_cast<std::size_t>(round) % kMost;
    const std::size_t rowBytes = groups * kWindowBytes;
    const Against against = round % 2 == 0 ? Against::End : Against::Start;
    rows.place(2 * kFilterTaps * rowBytes, against);
    const auto fill = round % 3 == 0 ? support::Fill::Extremes : support::Fill::Noise;
    support::fill(rows.write(), rows.size(), fill, static_cast<uint32_t>(round));
    const auto component = static_cast<uint8_t>(0xFF00 >> bits);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      rows.write()[i] &= component;
    }
    to.place(groups * kFilterGroup, against);
    FivePointLines lines{};
    lines.bits = bits;
    int32_t at[kMost * kFilterGroup][kFilterTaps];
    int32_t next[kMost * kFilterGroup][kFilterTaps];
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      lines.top[t] = rows.data() + 2 * t * rowBytes;
      lines.bottom[t] = rows.data() + (2 * t + 1) * rowBytes;
      lines.next[t] = means.takesNegative ? weight(random_) : std::abs(weight(random_));
      for (std::size_t i = 0; i < groups * kFilterGroup; ++i) {
        const int32_t number = between(random_, 0, 14);
        FilterGroup &group = columns[i / kFilterGroup];
        const std::size_t lane = i % kFilterGroup;
        at[i][t] = static_cast<int32_t>(i / 4 * 16) + number;
        next[i][t] = means.takesNegative ? weight(random_) : std::abs(weight(random_));
        group.mask[t][4 * lane] = static_cast<uint8_t>(number);
        group.mask[t][4 * lane + 1] = group.mask[t][4 * lane + 3] = 0x80;
        group.mask[t][4 * lane + 2] = static_cast<uint8_t>(number + 1);
        group.weight[t][2 * lane] = static_cast<int16_t>(16 * (1024 - next[i][t]));
        group.weight[t][2 * lane + 1] = static_cast<int16_t>(16 * next[i][t]);
      }
    }
    const auto fault = support::catchFault(
        [&] { means.stage->of[GetParam()](columns.data(), static_cast<int32_t>(groups), lines, to.data()); });
    ASSERT_FALSE(fault.has_value() || to.damage().has_value());
    for (std::size_t i = 0; i < groups * kFilterGroup; ++i) {
      int32_t sum = 0;
      for (std::size_t t = 0; t < kFilterTaps; ++t) {
        const int32_t sample =
            bilinear(lines.top[t] + at[i][t], lines.bottom[t] + at[i][t], next[i][t], lines.next[t], bits);
        sum += means.isWhole ? sample : sample & ((1 << bits) - 1);
      }
      const int32_t mean = sum / 5 & ((1 << bits) - 1);
      ASSERT_EQ(to.data()[i] >> (8 - bits), mean) << bits << " bits, output " << i << " of round " << round;
    }
  }
}

TEST_P(FilterRows, MeansOfFivePointsHaveTheLowBitsOfEverySample) {
  for (const int32_t bits : {5, 6, 8}) {
    expectMeans({&FIVE_POINT_ROW, false, true}, bits);
    expectMeans({&POSITIVE_FIVE_POINT_ROW, false, false}, bits);
  }
}

TEST_P(FilterRows, WholeMeansOfFivePointsAreTruncatedAtLast) {
  for (const int32_t bits : {5, 6, 8}) {
    expectMeans({&WHOLE_FIVE_POINT_ROW, true, true}, bits);
  }
}

TEST_P(FilterRows, FifthsAreExact) {
  // Sums 0 to 1275: samples that differ by one at most.
  FilterGroup columns{};
  std::vector<uint8_t> rows(kFilterTaps * kWindowBytes);
  FivePointLines lines{};
  for (std::size_t t = 0; t < kFilterTaps; ++t) {
    lines.top[t] = lines.bottom[t] = rows.data() + t * kWindowBytes;
    for (std::size_t i = 0; i < kFilterGroup; ++i) {
      columns.mask[t][4 * i] = 0;
      columns.mask[t][4 * i + 1] = columns.mask[t][4 * i + 3] = 0x80;
      columns.mask[t][4 * i + 2] = 1;
      columns.weight[t][2 * i] = 16 * 1024;
    }
  }
  for (int32_t sum = 0; sum <= 1275; ++sum) {
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      const int32_t sample = (sum + static_cast<int32_t>(t)) / 5;
      std::fill_n(rows.begin() + static_cast<std::ptrdiff_t>(t * kWindowBytes), kWindowBytes,
                  static_cast<uint8_t>(sample));
    }
    uint8_t to[kFilterGroup];
    for (const auto *stage : {&FIVE_POINT_ROW, &POSITIVE_FIVE_POINT_ROW, &WHOLE_FIVE_POINT_ROW}) {
      stage->of[GetParam()](&columns, 1, lines, to);
      for (const uint8_t mean : to) {
        ASSERT_EQ(mean, sum / 5) << sum;
      }
    }
  }
}

/// Groups of lines as they lie, of two rows at once.
class LineMeans {
public:
  /// How many of 32 or 64 bytes groups take, and the bits of a component.
  LineMeans(int32_t bytes, int32_t bits) : bytes_(bytes), bits_(bits) {}

  /// A stage and whether it makes the means of whole samples.
  void expect(FivePointLineRow stage, bool isWhole) {
    for (round_ = 0; round_ < 600; ++round_) {
      prepare();
      uint8_t *const to[2] = {to_[0].data(), to_[1].data()};
      const LineColumns columns{groups_.data(), first_.data(), bytes_};
      const auto fault = support::catchFault([&] { stage(columns, {leading_, count_}, taps_, to); });
      ASSERT_FALSE(fault.has_value() || to_[0].damage().has_value() || to_[1].damage().has_value());
      for (int row = 0; row < 2; ++row) {
        for (int32_t i = 0; i < count_ * kFilterGroup; ++i) {
          ASSERT_EQ(to[row][i] >> (8 - bits_), mean(row, i, isWhole))
              << bits_ << " bits, output " << i << " of row " << row << ", round " << round_;
        }
      }
    }
  }

private:
  static constexpr int32_t kMost = 11;
  static constexpr int32_t kLines = 6;

  int32_t weightOf(bool mayBeNegative) { return mayBeNegative ? weight(random_) : std::abs(weight(random_)); }

  void prepare() {
    const Against against = round_ % 2 == 0 ? Against::End : Against::Start;
    count_ = 1 + round_ % kMost;
    const bool isNegative = round_ % 5 == 0;
    leading_ = isNegative ? count_ : between(random_, 0, round_ % 3) % (count_ + 1);
    const int32_t samples = between(random_, bytes_, 200);
    lines_.place(static_cast<std::size_t>(kLines * samples), against);
    const auto fill = round_ % 3 == 0 ? support::Fill::Extremes : support::Fill::Noise;
    support::fill(lines_.write(), lines_.size(), fill, static_cast<uint32_t>(round_));
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      lines_.write()[i] &= static_cast<uint8_t>(0xFF00 >> bits_);
    }
    taps_.bits = bits_;
    taps_.below = samples;
    std::fill_n(taps_.ahead, kLinesAhead, lines_.data());
    for (int row = 0; row < 2; ++row) {
      to_[row].place(static_cast<std::size_t>(count_ * kFilterGroup), against);
      for (std::size_t t = 0; t < kFilterTaps; ++t) {
        taps_.top[row][t] = lines_.data() + between(random_, 0, kLines - 2) * samples;
        taps_.next[row][t] = weightOf(isNegative);
      }
    }
    for (int32_t g = 0; g < count_; ++g) {
      first_[static_cast<std::size_t>(g)] = between(random_, 0, samples - bytes_);
      FilterGroup &group = groups_[static_cast<std::size_t>(g)];
      for (std::size_t t = 0; t < kFilterTaps; ++t) {
        for (std::size_t i = 0; i < kFilterGroup; ++i) {
          const int32_t number = between(random_, 0, bytes_ - 2);
          const int32_t next = weightOf(g < leading_);
          const int32_t mask[4] = {number, between(random_, 0, 255), number + 1, 0x80};
          std::copy_n(mask, 4, group.mask[t] + 4 * i);
          group.weight[t][2 * i] = static_cast<int16_t>(16 * (1024 - next));
          group.weight[t][2 * i + 1] = static_cast<int16_t>(16 * next);
        }
      }
    }
  }

  int32_t mean(int row, int32_t output, bool isWhole) const {
    const auto g = static_cast<std::size_t>(output / kFilterGroup);
    const auto lane = static_cast<std::size_t>(output % kFilterGroup);
    int32_t sum = 0;
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      const uint8_t *top = taps_.top[row][t] + first_[g] + groups_[g].mask[t][4 * lane];
      const int32_t sample =
          bilinear(top, top + taps_.below, groups_[g].weight[t][2 * lane + 1] / 16, taps_.next[row][t], bits_);
      sum += isWhole ? sample : sample & ((1 << bits_) - 1);
    }
    return sum / 5 & ((1 << bits_) - 1);
  }

  std::mt19937 random_{7}; // NOLINT(cert-msc51-cpp): the same cases everywhere
  int32_t bytes_;
  int32_t bits_;
  int round_ = 0;
  int32_t count_ = 0;
  int32_t leading_ = 0;
  FivePointTaps taps_{};
  std::vector<FilterGroup> groups_{kMost};
  std::vector<int32_t> first_ = std::vector<int32_t>(kMost);
  GuardedPages lines_{2048, Access::ReadOnly};
  GuardedPages to_[2] = {{kMost * kFilterGroup, Access::ReadWrite}, {kMost * kFilterGroup, Access::ReadWrite}};
};

TEST(FivePointLines, MeansAreThoseOfTheLines) {
  if (!support::hasLevel(LEVEL_AVX512VBMI)) {
    GTEST_SKIP() << support::missing(LEVEL_AVX512VBMI);
  }
  for (const int32_t bytes : {32, 64}) {
    for (const int32_t bits : {5, 6, 8}) {
      LineMeans(bytes, bits).expect(FIVE_POINT_LINE_ROW.of[LEVEL_AVX512VBMI], false);
      LineMeans(bytes, bits).expect(WHOLE_FIVE_POINT_LINE_ROW.of[LEVEL_AVX512VBMI], true);
    }
  }
}

/// Samples that differ by one at most, of whole weights: every sum, in groups that are stored four at a time and alone.
TEST(FivePointLines, FifthsAreExact) {
  if (!support::hasLevel(LEVEL_AVX512VBMI)) {
    GTEST_SKIP() << support::missing(LEVEL_AVX512VBMI);
  }
  constexpr std::size_t kGroups = 6;
  std::vector<FilterGroup> groups(kGroups);
  const std::vector<int32_t> first(kGroups);
  for (FilterGroup &group : groups) {
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      for (std::size_t i = 0; i < kFilterGroup; ++i) {
        group.mask[t][4 * i + 2] = 1;
        group.weight[t][2 * i] = 16 * 1024;
      }
    }
  }
  std::vector<uint8_t> lines((kFilterTaps + 1) * kWindowBytes);
  FivePointTaps taps{};
  taps.below = 0;
  taps.bits = 8;
  for (int32_t sum = 0; sum <= 1275; ++sum) {
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      uint8_t *line = lines.data() + t * kWindowBytes;
      std::fill_n(line, kWindowBytes, static_cast<uint8_t>((sum + static_cast<int32_t>(t)) / 5));
      taps.top[0][t] = taps.top[1][t] = line;
    }
    std::fill_n(taps.ahead, kLinesAhead, lines.data());
    for (const auto *stage : {&FIVE_POINT_LINE_ROW, &WHOLE_FIVE_POINT_LINE_ROW}) {
      std::vector<uint8_t> rows[2] = {std::vector<uint8_t>(kGroups * kFilterGroup),
                                      std::vector<uint8_t>(kGroups * kFilterGroup)};
      stage->of[LEVEL_AVX512VBMI]({groups.data(), first.data(), 64}, {1, kGroups}, taps,
                                  {rows[0].data(), rows[1].data()});
      for (const std::vector<uint8_t> &row : rows) {
        ASSERT_EQ(row, std::vector<uint8_t>(row.size(), static_cast<uint8_t>(sum / 5))) << sum;
      }
    }
  }
}

} // namespace
} // namespace zqcc
