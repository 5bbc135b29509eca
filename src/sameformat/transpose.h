// Exchanging lines and columns, the core of every quarter turn: the unit in column x of line c goes to place c of
// destination line x. Signed line steps make it any quarter turn.
//
// A block of 64 / b by 64 / b units of b bits is turned in registers: its lines are loaded as 64-bit words, and
// log2(64 / b) rounds exchange the off-diagonal halves, quarters, ... of every pair of words.
#pragma once

#include "base/limits.h"
#include "base/turn.h"
#include "sameformat/words.h"
#include "vector/turns.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace zqcc {

/// Units of `Unit`'s size in a 64-bit word, and lines in a block.
template <class Unit>
inline constexpr int kBlockUnits = static_cast<int>(sizeof(uint64_t) / sizeof(Unit));

/// Transposes the block whose lines are the given words.
template <class Unit>
void transposeWords(uint64_t (&rows)[kBlockUnits<Unit>]) {
  for (int distance = kBlockUnits<Unit> / 2; distance > 0; distance /= 2) {
    const int shift = distance * static_cast<int>(sizeof(Unit)) * 8;
    const uint64_t mask = ~uint64_t{0} / ((uint64_t{1} << shift) + 1); // the low `shift` bits of every 2 * shift
    for (int row = 0; row < kBlockUnits<Unit>; ++row) {
      if ((row & distance) == 0) {
        const uint64_t exchange = ((rows[row] >> shift) ^ rows[row + distance]) & mask;
        rows[row + distance] ^= exchange;
        rows[row] ^= exchange << shift;
      }
    }
  }
}

template <class Unit>
void transposeBlock(const uint8_t *src, std::ptrdiff_t srcStep, uint8_t *dst, std::ptrdiff_t dstStep) {
  uint64_t rows[kBlockUnits<Unit>];
  for (int line = 0; line < kBlockUnits<Unit>; ++line) {
    rows[line] = loadBytes<uint64_t>(src + line * srcStep);
  }
  transposeWords<Unit>(rows);
  for (int column = 0; column < kBlockUnits<Unit>; ++column) {
    storeBytes(dst + column * dstStep, rows[column]);
  }
}

/// Unit by unit, for what is left beside the blocks.
template <class Unit>
void transposeUnits(const uint8_t *src, std::ptrdiff_t srcStep, uint8_t *dst, std::ptrdiff_t dstStep, int32_t width,
                    int32_t lines) {
  for (int32_t line = 0; line < lines; ++line) {
    for (int32_t x = 0; x < width; ++x) {
      std::memcpy(dst + x * dstStep, src + x * static_cast<std::ptrdiff_t>(sizeof(Unit)), sizeof(Unit));
    }
    src += srcStep;
    dst += sizeof(Unit);
  }
}

/// Transposes `lines` source lines of `width` units into `width` destination lines of `lines` units. Sizes are free;
/// sizes that are not positive do nothing.
template <class Unit>
void transposeLines(const uint8_t *src, std::ptrdiff_t srcStep, uint8_t *dst, std::ptrdiff_t dstStep, int32_t width,
                    int32_t lines) {
  constexpr std::ptrdiff_t kBytes = sizeof(Unit);
  constexpr int32_t kBlock = kBlockUnits<Unit>;
  // A strip's destination lines stay in the first-level cache while the source lines run through it.
  constexpr int32_t kStrip = 32;
  const int32_t blockWidth = width > 0 ? width - width % kBlock : 0;
  const int32_t blockLines = lines > 0 ? lines - lines % kBlock : 0;

  for (int32_t left = 0; left < blockWidth; left += kStrip) {
    const int32_t right = left + smaller(kStrip, blockWidth - left);
    for (int32_t line = 0; line < blockLines; line += kBlock) {
      for (int32_t x = left; x < right; x += kBlock) {
        transposeBlock<Unit>(src + line * srcStep + x * kBytes, srcStep, dst + x * dstStep + line * kBytes, dstStep);
      }
    }
  }
  transposeUnits<Unit>(src + blockWidth * kBytes, srcStep, dst + blockWidth * dstStep, dstStep, width - blockWidth,
                       blockLines);
  transposeUnits<Unit>(src + blockLines * srcStep, srcStep, dst + blockLines * kBytes, dstStep, width,
                       lines - blockLines);
}

/// A plane of units and the lines that it is turned into.
struct PlaneTurn {
  const uint8_t *src;
  std::ptrdiff_t srcPitch;
  uint8_t *dst;
  std::ptrdiff_t dstPitch;
  int32_t width; ///< of the source
  int32_t lines;
};

/// The left turn writes its lines from the last one up, the right turn reads its lines from the last one up.
inline LineExchange quarterTurnOf(Turn turn, const PlaneTurn &p) {
  if (turn == Turn::Left) {
    return {p.src, p.srcPitch, p.dst + (p.width - 1) * p.dstPitch, -p.dstPitch, p.width, p.lines};
  }
  return {p.src + (p.lines - 1) * p.srcPitch, -p.srcPitch, p.dst, p.dstPitch, p.width, p.lines};
}

/// A quarter turn of any size; sizes that are not positive do nothing. `levels` is the vector code that may do it.
template <class Unit>
void quarterTurn(LevelSet levels, Turn turn, const PlaneTurn &plane) {
  if (plane.width <= 0 || plane.lines <= 0) {
    return;
  }
  const LineExchange p = quarterTurnOf(turn, plane);
  if (!turnedByBlocks<Unit>(levels, p)) {
    transposeLines<Unit>(p.from, p.fromStep, p.to, p.toStep, p.columns, p.lines);
  }
}

} // namespace zqcc
