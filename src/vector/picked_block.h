// Quarter turns of lines that are picked: as many as fill the caches' lines of the output are picked into rows in the
// first-level cache, which are exchanged with columns there.
#pragma once

#include "vector/turned_block.h"
#include "vector/turned_planes.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

/// Columns of a strip that goes down the picture. A last strip is up to so many bytes wider that none is too narrow for
/// a stage.
inline constexpr int32_t kPickedStrip = 128;

/// Bytes from a row to the next: a strip, rounded up to what a plan's group writes.
inline constexpr std::ptrdiff_t kPickedRow = kPickedStrip + 64;

/// Where a quarter turn of picked lines goes, in units of `units.unitBytes`: unit x of line l is unit l of output line
/// x.
struct PickedTurn {
  UnitExchange units;
  uint8_t *to; ///< output line 0 of the turn's order
  std::ptrdiff_t toStep;
  int32_t columns;
  int32_t lines;
};

/// Too small for a block, or output lines that overlap, whose order of stores shows.
inline bool isTurnedByBlocks(const PickedTurn &turn) {
  const int32_t least = kLeastBytes / turn.units.unitBytes;
  const std::ptrdiff_t distance = turn.toStep < 0 ? -turn.toStep : turn.toStep;
  return turn.units.transpose != nullptr && turn.columns >= least && turn.lines >= least &&
         distance >= std::ptrdiff_t{turn.lines} * turn.units.unitBytes;
}

/// Turns lines of which lineOf(l) says where they lie and pick(line, byte, bytes, row) makes `bytes` output bytes from
/// `byte`, a multiple of kPickedStrip, on. Lines that are the same as the one before are copied from it.
template <class LineOf, class Pick>
void turnPickedLines(const PickedTurn &turn, LineOf lineOf, Pick pick) {
  alignas(64) uint8_t rows[kBlockLines * kPickedRow];
  const int32_t unit = turn.units.unitBytes;
  const int32_t bytes = turn.columns * unit;
  int32_t some = 0;
  for (int32_t byte = 0; byte < bytes; byte += some) {
    some = bytes - byte < kPickedStrip + kLeastBytes ? bytes - byte : kPickedStrip;
    uint8_t *to = turn.to + byte / unit * turn.toStep;
    int32_t lines = 0;
    for (int32_t first = 0; first < turn.lines; first += lines) {
      lines = nextUnits(turn.lines - first, kBlockLines / unit, kLeastBytes / unit);
      const uint8_t *made = nullptr;
      const auto make = [&](int32_t line, uint8_t *const(&row)[2]) {
        for (int32_t i = 0; i < 2 && line + i < lines; ++i) {
          const uint8_t *from = lineOf(first + line + i);
          if (from == made) {
            std::memcpy(row[i], row[i] - kPickedRow, static_cast<std::size_t>(some));
          } else {
            pick(from, byte, some, row[i]);
            made = from;
          }
        }
      };
      // cppcheck-suppress legacyUninitvar ; the rows are handed out to be filled
      turnBlock(turn.units.transpose, {rows, kPickedRow}, some / unit, lines,
                {to + std::ptrdiff_t{first} * unit, turn.toStep, unit}, make);
    }
  }
}

} // namespace zqcc
