// The stages that scale rows, at every level that this machine has, against plain loops.
#include "vector/scale_rows.h"

#include "vector/colour_rows.h"
#include "vector/scaled_rows.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zqcc {
namespace {

using support::Against;
using support::GuardedPages;
using Access = GuardedPages::Access;

class ScaleRows : public AtEveryLevel {
protected:
  [[nodiscard]] static FillRow fill() { return FILL_ROW.of[GetParam()]; }
  [[nodiscard]] static MixRows mix() { return MIX_ROWS.of[GetParam()]; }
  [[nodiscard]] static PickRow pick() { return PICK_ROW.of[GetParam()]; }
};

using Row = std::vector<int32_t>;

std::size_t wholeGroups(std::size_t outputs) {
  return (outputs + kPlanGroup - 1) / kPlanGroup * kPlanGroup;
}
int32_t groupsOf(std::size_t outputs) {
  return planGroups(static_cast<int32_t>(outputs));
}

/// A sum as it is defined, of two samples or of two such sums.
int32_t mean(int32_t first, int32_t second, int32_t next) {
  return first * 1024 + (second - first) * next;
}

// --- Every sum ------------------------------------------------------------------------------------------------------

constexpr int32_t kGreatestSum = 255 * 1024;

/// A line of pairs of samples, each of which is interpolated with a weight of its own.
class PairLine {
public:
  explicit PairLine(std::size_t count)
      : line_(2 * count), memory_(tapPlanBytes(static_cast<int32_t>(count)) / sizeof(TapGroup) + 1), count_(count) {}

  void set(std::size_t i, int32_t first, int32_t second, int32_t next) {
    line_[2 * i] = static_cast<uint8_t>(first);
    line_[2 * i + 1] = static_cast<uint8_t>(second);
    taps()[i] = {static_cast<int32_t>(2 * i), next};
  }
  /// Any sum lies between the samples below and above it.
  void set(std::size_t i, int32_t sum) {
    const int32_t whole = sum / 1024;
    set(i, whole, whole < 255 ? whole + 1 : whole, sum % 1024);
  }

  void makeRow(FillRow fill, Row &row) {
    const auto count = static_cast<int32_t>(count_);
    fill(line_.data(), makeTapPlan(memory_.data(), count, {2 * count, 1}), 0, planGroups(count), row.data());
  }

private:
  Tap *taps() { return planTaps(memory_.data(), static_cast<int32_t>(count_)); }

  std::vector<uint8_t> line_;
  std::vector<TapGroup> memory_;
  std::size_t count_;
};

/// Sums do not show themselves. Mixed half and half with one that completes them to a whole sample, and with one that
/// is less by one, they do: any sum that is not exact gives another sample in one of the two.
TEST_P(ScaleRows, InterpolatesEveryPairWithEveryWeightExactly) {
  constexpr std::size_t kPairs = 65536;
  PairLine pairs(kPairs);
  PairLine complements(kPairs);
  PairLine less(kPairs);
  Row sums(kPairs);
  Row complementSums(kPairs);
  Row lessSums(kPairs);
  std::vector<uint8_t> samples(kPairs);
  std::vector<uint8_t> lessSamples(kPairs);
  std::vector<uint8_t> expected(kPairs);
  for (int32_t next = 0; next < 1024; ++next) {
    for (std::size_t i = 0; i < kPairs; ++i) {
      const auto first = static_cast<int32_t>(i / 256);
      const auto second = static_cast<int32_t>(i % 256);
      const int32_t sum = mean(first, second, next);
      const int32_t sample = (sum + kGreatestSum / 2) / 2048;
      pairs.set(i, first, second, next);
      complements.set(i, sample * 2048 - sum);
      less.set(i, sample * 2048 - sum - 1);
      expected[i] = static_cast<uint8_t>(sample);
    }
    pairs.makeRow(fill(), sums);
    complements.makeRow(fill(), complementSums);
    less.makeRow(fill(), lessSums);
    mix()(sums.data(), complementSums.data(), 512, groupsOf(kPairs), samples.data());
    mix()(sums.data(), lessSums.data(), 512, groupsOf(kPairs), lessSamples.data());
    ASSERT_EQ(samples, expected) << "weight " << next;
    for (uint8_t &sample : expected) {
      --sample;
    }
    ASSERT_EQ(lessSamples, expected) << "weight " << next;
  }
}

/// For every weight: sums that bring the mean as near to the next sample as they can, from both sides, and any sums.
TEST_P(ScaleRows, MixesSumsWithEveryWeightExactly) {
  constexpr std::size_t kSums = 2048;
  std::mt19937 random(1);
  std::uniform_int_distribution<int32_t> anySum(0, kGreatestSum);
  PairLine tops(kSums);
  PairLine bottoms(kSums);
  Row topSums(kSums);
  Row bottomSums(kSums);
  std::vector<uint8_t> samples(kSums);
  std::vector<uint8_t> expected(kSums);
  for (int32_t next = 0; next < 1024; ++next) {
    for (std::size_t i = 0; i < kSums; ++i) {
      const int32_t top = i == 0 ? 0 : i == 1 ? kGreatestSum : anySum(random);
      int32_t bottom = i < 4 ? (i % 2 == 0 ? kGreatestSum : 0) : anySum(random);
      if (i % 4 != 0 && i >= 4 && next != 0) {
        // The bottom that completes the mean to a whole sample, rounded down, and the ones above and below it.
        const int32_t whole = mean(top, bottom, next) >> 20;
        bottom = ((whole << 20) - top * (1024 - next)) / next + static_cast<int32_t>(i % 4) - 2;
        bottom = std::clamp(bottom, 0, kGreatestSum);
      }
      tops.set(i, top);
      bottoms.set(i, bottom);
      expected[i] = static_cast<uint8_t>(mean(top, bottom, next) >> 20);
    }
    tops.makeRow(fill(), topSums);
    bottoms.makeRow(fill(), bottomSums);
    mix()(topSums.data(), bottomSums.data(), next, groupsOf(kSums), samples.data());
    ASSERT_EQ(samples, expected) << "weight " << next;
  }
}

// --- Every width and ratio ------------------------------------------------------------------------------------------

/// A line between unmapped pages and what stages make of it.
class GuardedRow {
public:
  void place(std::size_t lineBytes, std::size_t outputs, Against against) {
    for (GuardedPages *const line : {&top_, &bottom_}) {
      line->place(lineBytes, against);
      support::fill(line->write(), line->size(), support::Fill::Noise, ++seed_);
    }
    for (GuardedPages *const row : {&topRow_, &bottomRow_}) {
      row->place(wholeGroups(outputs) * sizeof(int32_t), against);
    }
    to_.place(wholeGroups(outputs), against);
  }

  [[nodiscard]] const uint8_t *top() const { return top_.data(); }
  [[nodiscard]] const uint8_t *bottom() const { return bottom_.data(); }
  [[nodiscard]] const uint8_t *samples() const { return to_.write(); }

  /// Runs stages group by group or in one go.
  void bilinear(FillRow fill, MixRows mix, const TapPlan &plan, int32_t next, int32_t groups) {
    run([&] {
      fill(top_.data(), plan, 0, groups, rowOf(topRow_));
      fill(bottom_.data(), plan, 0, groups, rowOf(bottomRow_));
      mix(rowOf(topRow_), next != 0 ? rowOf(bottomRow_) : nullptr, next, groups, to_.data());
    });
  }
  void nearest(PickRow pick, const PickPlan &plan, int32_t groups) {
    run([&] { pick(top_.data(), plan, 0, groups, to_.data()); });
  }

private:
  static constexpr std::size_t kCapacity = 3 * 32 * 1000;

  static int32_t *rowOf(const GuardedPages &pages) { return reinterpret_cast<int32_t *>(pages.data()); }

  template <class Stages>
  void run(Stages stages) {
    const auto fault = support::catchFault(stages);
    EXPECT_FALSE(fault.has_value()) << "touches what lies outside its rows";
    for (const GuardedPages *const pages : {&topRow_, &bottomRow_, &to_}) {
      EXPECT_FALSE(pages->damage().has_value()) << "writes outside its rows";
    }
  }

  GuardedPages top_{kCapacity, Access::ReadOnly};
  GuardedPages bottom_{kCapacity, Access::ReadOnly};
  GuardedPages topRow_{std::size_t{1} << 13, Access::ReadWrite};
  GuardedPages bottomRow_{std::size_t{1} << 13, Access::ReadWrite};
  GuardedPages to_{std::size_t{1} << 11, Access::ReadWrite};
  uint32_t seed_ = 0;
};

std::string nameOf(Scaling scaling, int32_t step) {
  return std::to_string(scaling.samples) + " to " + std::to_string(scaling.outputs) + ", step " + std::to_string(step);
}

/// Calls check(scaling, step, row) for everything there is, the row's line against either end.
template <class Check>
void forEveryScaling(Check check) {
  GuardedRow row;
  for (const Scaling scaling : everyScaling()) {
    for (const int32_t step : {1, 3}) {
      for (const Against against : {Against::End, Against::Start}) {
        SCOPED_TRACE(nameOf(scaling, step));
        const auto lineBytes = static_cast<std::size_t>((scaling.samples - 1) * step + 1);
        row.place(lineBytes, static_cast<std::size_t>(scaling.outputs), against);
        check(scaling, step, row);
        if (testing::Test::HasFailure()) {
          return;
        }
      }
    }
  }
}

/// Interpolated along a line; behind the last sample there is nothing.
int32_t alongLine(const uint8_t *line, Tap tap, Scaling scaling, int32_t step) {
  const int32_t next = tap.index + 1 < scaling.samples ? tap.index + 1 : tap.index;
  return mean(line[tap.index * step], line[next * step], tap.next);
}

TEST_P(ScaleRows, InterpolatesEveryWidthAndRatioWithinItsLine) {
  int32_t weight = 0;
  forEveryScaling([&](Scaling scaling, int32_t step, GuardedRow &row) {
    const auto taps = tapsFor(scaling);
    const GuardedPlan plan(taps, {scaling.samples, step});
    weight = (weight + 331) % 1024;
    row.bilinear(fill(), mix(), plan.taps(), weight, groupsOf(taps.size()));
    for (std::size_t i = 0; i < taps.size(); ++i) {
      const int32_t top = alongLine(row.top(), taps[i], scaling, step);
      const int32_t bottom = alongLine(row.bottom(), taps[i], scaling, step);
      ASSERT_EQ(row.samples()[i], mean(top, bottom, weight) >> 20) << "output " << i << ", weight " << weight;
    }
  });
}

TEST_P(ScaleRows, TakesTheNearestSampleAtEveryWidthAndRatioWithinItsLine) {
  forEveryScaling([&](Scaling scaling, int32_t step, GuardedRow &row) {
    const auto columns = columnsFor(scaling);
    const GuardedPlan plan(columns, {scaling.samples, step});
    row.nearest(pick(), plan.columns(), groupsOf(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
      ASSERT_EQ(row.samples()[i], row.top()[columns[i] * step]) << "output " << i;
    }
  });
}

// --- Parts of a row -------------------------------------------------------------------------------------------------

/// A part of a line, with nothing around it, that stages are given as if the whole line were there.
class PartOfLine {
public:
  explicit PartOfLine(ByteRange range) : first_(range.first) {
    bytes_.place(static_cast<std::size_t>(range.end - range.first), Against::End);
  }
  void copyFrom(const std::vector<uint8_t> &line) const {
    std::memcpy(bytes_.write(), line.data() + first_, bytes_.size());
  }
  [[nodiscard]] const uint8_t *line() const {
    return reinterpret_cast<const uint8_t *>(reinterpret_cast<std::uintptr_t>(bytes_.data()) -
                                             static_cast<std::uintptr_t>(first_));
  }

private:
  GuardedPages bytes_{std::size_t{1} << 16, Access::ReadOnly};
  int32_t first_;
};

constexpr Scaling kWide[] = {{40, 1000}, {900, 1000}, {1500, 1000}, {3500, 1000}, {20000, 1000}, {9, 1000}};

std::vector<uint8_t> noise(std::size_t bytes) {
  std::vector<uint8_t> line(bytes);
  support::fill(line.data(), line.size(), support::Fill::Noise, 5);
  return line;
}

TEST_P(ScaleRows, InterpolatesGroupsFromThePartOfTheLineThatTheyRead) {
  for (const Scaling scaling : kWide) {
    const auto taps = tapsFor(scaling);
    const GuardedPlan plan(taps, {scaling.samples, 1});
    const auto line = noise(static_cast<std::size_t>(scaling.samples));
    for (int32_t first = 0; first < groupsOf(taps.size()); ++first) {
      for (const int32_t groups : {1, 3, 10, groupsOf(taps.size())}) {
        if (first + groups > groupsOf(taps.size())) {
          continue;
        }
        const PartOfLine part(bytesRead(plan.taps(), first, groups));
        part.copyFrom(line);
        Row row(static_cast<std::size_t>(groups) * kPlanGroup);
        std::vector<uint8_t> samples(row.size());
        const auto fault = support::catchFault([&] {
          fill()(part.line(), plan.taps(), first, groups, row.data());
          mix()(row.data(), nullptr, 0, groups, samples.data());
        });
        ASSERT_FALSE(fault.has_value());
        const auto firstTap = static_cast<std::size_t>(first) * kPlanGroup;
        for (std::size_t i = 0; i < samples.size() && firstTap + i < taps.size(); ++i) {
          ASSERT_EQ(samples[i], alongLine(line.data(), taps[firstTap + i], scaling, 1) >> 10)
              << nameOf(scaling, 1) << ", output " << firstTap + i;
        }
      }
    }
  }
}

TEST_P(ScaleRows, TakesNearestSamplesFromThePartOfTheLineThatTheyRead) {
  for (const Scaling scaling : kWide) {
    const auto columns = columnsFor(scaling);
    const GuardedPlan plan(columns, {scaling.samples, 1});
    const auto line = noise(static_cast<std::size_t>(scaling.samples));
    for (int32_t first = 0; first < groupsOf(columns.size()); ++first) {
      const PartOfLine part(bytesRead(plan.columns(), first, 1));
      part.copyFrom(line);
      uint8_t samples[kPlanGroup];
      const auto fault = support::catchFault([&] { pick()(part.line(), plan.columns(), first, 1, samples); });
      ASSERT_FALSE(fault.has_value());
      const auto firstColumn = static_cast<std::size_t>(first) * kPlanGroup;
      for (std::size_t i = 0; i < kPlanGroup && firstColumn + i < columns.size(); ++i) {
        ASSERT_EQ(samples[i], line[static_cast<std::size_t>(columns[firstColumn + i])])
            << nameOf(scaling, 1) << ", output " << firstColumn + i;
      }
    }
  }
}

// --- RGB24 ----------------------------------------------------------------------------------------------------------

TEST_P(ScaleRows, PartsRgb24BytesOfEveryWidthWithinTheirEnds) {
  GuardedPages bytes(1024, Access::ReadOnly);
  GuardedPages rows[3] = {{256, Access::ReadWrite}, {256, Access::ReadWrite}, {256, Access::ReadWrite}};
  for (std::size_t pixels = kLeastPixels; pixels <= 200; ++pixels) {
    for (const Against against : {Against::End, Against::Start}) {
      bytes.place(3 * pixels, against);
      support::fill(bytes.write(), bytes.size(), support::Fill::Noise, static_cast<uint32_t>(pixels));
      for (GuardedPages &row : rows) {
        row.place(pixels, against);
      }
      const auto fault = support::catchFault([&] {
        RGB24_ROWS.of[GetParam()]({nullptr, nullptr, bytes.data()}, {rows[2].data(), rows[1].data(), rows[0].data()},
                                  static_cast<int32_t>(pixels));
      });
      ASSERT_FALSE(fault.has_value()) << "touches what lies outside its rows, " << pixels << " pixels";
      for (std::size_t channel = 0; channel < 3; ++channel) {
        ASSERT_FALSE(rows[channel].damage().has_value()) << pixels << " pixels";
        for (std::size_t i = 0; i < pixels; ++i) {
          ASSERT_EQ(rows[channel].write()[i], bytes.write()[3 * i + channel])
              << "byte " << channel << " of pixel " << i << " of " << pixels;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, ScaleRows, testing::ValuesIn(kVectorLevels),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
} // namespace zqcc
