// How a picture is turned, and the one way from a rotation code to the code that turns.
#pragma once

#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zqcc {

enum class Turn : uint32_t { Upright, Left, Right, Half, Flip };

/// Codes that name no turn leave the picture upright.
constexpr Turn turnOf(uint32_t rotation) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return Turn::Left;
  case ROTATION_90_RIGHT:
    return Turn::Right;
  case ROTATION_180:
    return Turn::Half;
  case ROTATION_FLIP_V:
    return Turn::Flip;
  default:
    return Turn::Upright;
  }
}

/// Lines become columns.
constexpr bool isQuarterTurn(Turn turn) {
  return turn == Turn::Left || turn == Turn::Right;
}

/// A number for every turn: the columns of tables that list some of them.
struct PerTurn {
  uint32_t upright;
  uint32_t left;
  uint32_t right;
  uint32_t half;
  uint32_t flip;

  constexpr uint32_t operator[](Turn turn) const {
    const uint32_t all[] = {upright, left, right, half, flip};
    return all[static_cast<std::size_t>(turn)];
  }
};

/// A turn as a constant that is passed like a value.
template <Turn turn>
using KnownTurn = std::integral_constant<Turn, turn>;

/// Calls run(KnownTurn) for a turn that is known only now, if it is among those served; any other counts as the first.
template <Turn first, Turn... others, class Run>
void withTurn(Turn turn, Run run) {
  const bool isOther = ((turn == others && (run(KnownTurn<others>{}), true)) || ...);
  if (!isOther) {
    run(KnownTurn<first>{});
  }
}

} // namespace zqcc
