// Taps and columns of any ratio for tests of plans and of the stages that read them, and plans that are made of them in
// memory of exactly the size asked for.
#pragma once

#include "support/guarded_pages.h"
#include "vector/column_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zqcc {

/// So many samples of a line made into so many outputs.
struct Scaling {
  int32_t samples;
  int32_t outputs;
};

/// Positions at equal distances; weights of the next sample in 1024ths. The last ones may point at the last sample.
inline std::vector<Tap> tapsFor(Scaling scaling) {
  std::vector<Tap> taps;
  for (int64_t i = 0; i < scaling.outputs; ++i) {
    const int64_t position = i * scaling.samples * 1024 / scaling.outputs;
    taps.push_back({static_cast<int32_t>(position / 1024), static_cast<int32_t>(position % 1024)});
  }
  return taps;
}

inline std::vector<int32_t> columnsFor(Scaling scaling) {
  std::vector<int32_t> columns;
  for (const Tap &tap : tapsFor(scaling)) {
    columns.push_back(tap.index);
  }
  return columns;
}

/// Widths of one output on, and ratios from 1/32 to 32 and beyond what one window serves.
inline std::vector<Scaling> everyScaling() {
  static constexpr Scaling kRatios[] = {{1, 32}, {1, 9}, {1, 2}, {2, 3}, {1, 1}, {5, 4}, {4, 3},  {5, 3},
                                        {2, 1},  {9, 4}, {7, 2}, {9, 2}, {5, 1}, {8, 1}, {16, 1}, {32, 1}};
  std::vector<Scaling> all;
  for (const Scaling ratio : kRatios) {
    for (int32_t outputs = 1; outputs <= 200; ++outputs) {
      all.push_back({std::max(2, outputs * ratio.samples / ratio.outputs), outputs});
    }
    for (const int32_t outputs : {511, 512, 513, 1000}) {
      all.push_back({std::max(2, outputs * ratio.samples / ratio.outputs), outputs});
    }
  }
  return all;
}

/// A plan in memory of its own, between unmapped pages.
class GuardedPlan {
public:
  GuardedPlan(const std::vector<Tap> &taps, PlanLine line) {
    const auto outputs = place(tapPlanBytes, taps.size());
    std::copy(taps.begin(), taps.end(), planTaps(memory_.data(), outputs));
    fault_ = support::catchFault([&] { taps_ = makeTapPlan(memory_.data(), outputs, line); });
    checkMade();
  }
  GuardedPlan(const std::vector<int32_t> &columns, PlanLine line) {
    const auto outputs = place(pickPlanBytes, columns.size());
    std::copy(columns.begin(), columns.end(), planColumns(memory_.data(), outputs));
    fault_ = support::catchFault([&] { columns_ = makePickPlan(memory_.data(), outputs, line); });
    checkMade();
  }

  [[nodiscard]] const TapPlan &taps() const { return taps_; }
  [[nodiscard]] const PickPlan &columns() const { return columns_; }

private:
  int32_t place(std::size_t (*bytesOf)(int32_t), std::size_t count) {
    const auto outputs = static_cast<int32_t>(count);
    const std::size_t bytes = bytesOf(outputs);
    EXPECT_EQ(bytes % 64, 0U);
    memory_.place(bytes, support::Against::End);
    std::memset(memory_.write(), 0x5A, bytes);
    return outputs;
  }
  void checkMade() const {
    EXPECT_FALSE(fault_.has_value()) << "makes the plan outside its memory";
    EXPECT_FALSE(memory_.damage().has_value()) << "writes outside the plan's memory";
  }

  support::GuardedPages memory_{std::size_t{1} << 16, support::GuardedPages::Access::ReadWrite};
  std::optional<support::Fault> fault_;
  TapPlan taps_{};
  PickPlan columns_{};
};

} // namespace zqcc
