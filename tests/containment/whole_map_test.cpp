// The closing walk: every combination of types and modes that there is, over a few sizes, in memory that ends where the
// planes end; and every cell of every routine table reached on the way.
#include "containment/guarded_case.h"

#include "frame/route.h"

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace {

using containment::GuardedCase;
using containment::Mode;
using containment::Sizes;

/// Same size: with whole blocks and without, odd and even.
constexpr std::array<Sizes, 4> kPlainSizes{{{33, 19, 33, 19}, {16, 32, 16, 32}, {5, 7, 5, 7}, {22, 34, 22, 34}}};
/// Every mode gets a general ratio and, for converters that keep the size whatever they are asked, the same size.
constexpr std::array<Sizes, 2> kAlwaysScaled{{{22, 18, 17, 25}, {17, 18, 17, 18}}};
/// The modes take turns with these: one pair for each ratio class, odd and long sides, boxes that are spaced.
constexpr std::array<Sizes, 7> kTakingTurns{{{34, 22, 17, 11},
                                             {24, 20, 18, 15},
                                             {20, 18, 30, 27},
                                             {18, 17, 36, 34},
                                             {7, 5, 19, 3},
                                             {66, 37, 5, 4},
                                             {3, 2, 40, 33}}};

std::vector<Sizes> sizesOf(const Mode &mode, uint32_t number) {
  if (mode.isResize == 0) {
    return {kPlainSizes[number % 4], kPlainSizes[(number / 4 + 1 + number) % 4]};
  }
  std::vector<Sizes> sizes(kAlwaysScaled.begin(), kAlwaysScaled.end());
  sizes.push_back(kTakingTurns[number % kTakingTurns.size()]);
  return sizes;
}

struct Tally {
  int accepted = 0;
  int refused = 0;
  int conversions = 0;
  uint32_t cases = 0;
  std::set<int> reached;
};

/// Strides, contents and matrices turn over from case to case.
GuardedCase caseOf(const Mode &mode, const Sizes &sizes, uint32_t number) {
  static constexpr std::array<int, 5> kInPadding{0, 0, 5, 16, 1};
  static constexpr std::array<int, 7> kOutPadding{0, 0, 2, 7, 0, 34, 1};
  GuardedCase c;
  c.mode = mode;
  c.sizes = sizes;
  c.inPadding = kInPadding[number % kInPadding.size()];
  c.outPadding = kOutPadding[number % kOutPadding.size()];
  c.fill = number % 4 == 3 ? support::Fill::Extremes : support::Fill::Noise;
  c.seed = number;
  if (number % 3 == 1) {
    c.matrix = reference::MatrixChoice::entryOf(MATRIX_BT709);
  }
  return c;
}

void walk(containment::Bench &bench, const Mode &mode, uint32_t number, Tally &tally) {
  bool accepted = false;
  for (const Sizes &sizes : sizesOf(mode, number)) {
    const GuardedCase c = caseOf(mode, sizes, ++tally.cases);
    const containment::Outcome outcome = bench.run(c);
    ASSERT_EQ(outcome.report, "");
    if (outcome.code != CC_OK) {
      continue;
    }
    accepted = true;
    ++tally.conversions;
    const int cell = containment::cellOf(containment::recordOf(mode, sizes));
    if (cell >= 0) {
      tally.reached.insert(cell);
    }
  }
  ++(accepted ? tally.accepted : tally.refused);
}

TEST(WholeMap, EveryCombinationInItsOwnMemory) {
  containment::Bench bench(std::size_t{64} << 10);
  Tally tally;
  uint32_t number = 0;
  for (const Mode &mode : containment::allModes()) {
    walk(bench, mode, number++, tally);
    if (HasFatalFailure()) {
      return;
    }
  }
  int filled = 0;
  std::set<std::string> unreached;
  std::set<zqcc::Routine> routines;
  for (std::size_t i = 0; i < containment::cells().size(); ++i) {
    const containment::Cell &cell = containment::cells()[i];
    filled += cell.routine != nullptr ? 1 : 0;
    routines.insert(cell.routine);
    if (!tally.reached.contains(static_cast<int>(i))) {
      unreached.insert(cell.name);
    }
  }
  std::cout << tally.accepted << " combinations of types, isResize, rotation and quality are accepted, "
            << tally.refused << " refused; " << tally.conversions << " conversions, each made twice, reached "
            << tally.reached.size() << " of " << containment::cells().size()
            << " cells (two of them outside the tables), " << filled << " of which are filled\n";
  EXPECT_EQ(unreached, (std::set<std::string>{"SAME_PLANAR420[7]", "SAME_PLANAR420[8]", "SAME_RGB16[5]"}))
      << "only these cells are empty";
  // No routine serves two cells, so that reaching it means reaching its cell; the empty ones share one null.
  EXPECT_EQ(routines.size(), static_cast<std::size_t>(filled) + 1);
}

TEST(WholeMap, EmptyCellsRefuse) {
  struct Empty {
    int type;
    uint32_t rotation;
  };
  containment::Bench bench(std::size_t{64} << 10);
  for (const Empty &empty : {Empty{3, 3}, Empty{3, 4}, Empty{3, 5}, Empty{12, 3}, Empty{12, 4}, Empty{12, 5},
                             Empty{30, 3}, Empty{30, 4}, Empty{31, 3}, Empty{31, 4}}) {
    for (const uint32_t quality : {1U, 2U}) {
      const Mode mode{empty.type, empty.type, 1, empty.rotation, quality};
      const containment::Outcome outcome = bench.run(caseOf(mode, {22, 18, 17, 25}, quality));
      EXPECT_EQ(outcome.report, "");
      EXPECT_EQ(outcome.code, CC_ERR_ARGUMENT);
      EXPECT_EQ(zqcc::routeOf(containment::recordOf(mode, {22, 18, 17, 25})).routine, nullptr);
    }
  }
}

} // namespace
