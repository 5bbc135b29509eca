// From a rotation code to the code that turns.
#include "base/turn.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

using zqcc::Turn;
using zqcc::turnOf;

constexpr std::array kTurns{Turn::Upright, Turn::Left, Turn::Right, Turn::Half, Turn::Flip};

TEST(Turn, CodesNameTurnsAndAllOthersAreUpright) {
  const std::array<std::pair<uint32_t, Turn>, 9> codes{{{0, Turn::Upright},
                                                        {1, Turn::Upright},
                                                        {2, Turn::Upright},
                                                        {3, Turn::Left},
                                                        {4, Turn::Right},
                                                        {5, Turn::Half},
                                                        {6, Turn::Flip},
                                                        {7, Turn::Upright},
                                                        {UINT32_MAX, Turn::Upright}}};
  for (const auto &[code, turn] : codes) {
    EXPECT_EQ(turnOf(code), turn) << code;
  }
}

TEST(Turn, OnlyQuarterTurnsExchangeTheSides) {
  const std::vector<bool> exchanges{false, true, true, false, false};
  for (std::size_t i = 0; i < kTurns.size(); ++i) {
    EXPECT_EQ(zqcc::isQuarterTurn(kTurns.at(i)), exchanges.at(i)) << i;
  }
}

TEST(Turn, EveryTurnHasItsNumber) {
  constexpr zqcc::PerTurn kNumbers{.upright = 10, .left = 11, .right = 12, .half = 13, .flip = 14};
  uint32_t expected = 10;
  for (const Turn turn : kTurns) {
    EXPECT_EQ(kNumbers[turn], expected++);
  }
}

/// What withTurn<served...> calls, and with which turns.
template <Turn... served>
std::vector<Turn> calledFor(Turn turn) {
  std::vector<Turn> calls;
  zqcc::withTurn<served...>(turn, [&](Turn known) { calls.push_back(known); });
  return calls;
}

TEST(Turn, WhatIsServedIsCalledOnceAndTheRestCountsAsTheFirst) {
  for (const Turn turn : kTurns) {
    const Turn all = turn == Turn::Flip ? Turn::Upright : turn;
    EXPECT_EQ((calledFor<Turn::Upright, Turn::Left, Turn::Right, Turn::Half>(turn)), std::vector<Turn>{all});
    const Turn quarter = turn == Turn::Left ? Turn::Left : Turn::Right;
    EXPECT_EQ((calledFor<Turn::Right, Turn::Left>(turn)), std::vector<Turn>{quarter});
    EXPECT_EQ((calledFor<Turn::Half>(turn)), std::vector<Turn>{Turn::Half});
  }
}

} // namespace
