// A block of a picture that is turned by a quarter: rows of pixels in the first-level cache, placed as output lines.
#pragma once

#include "vector/lines_ahead.h"
#include "vector/place_stages.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Lines of a block at most: many lines fill more of an output line at a time.
inline constexpr int32_t kBlockLines = 64;

/// Where a block's rows are made: `stride` bytes apart, with room for an even number of them.
struct BlockRows {
  uint8_t *pixels;
  std::ptrdiff_t stride;
};

/// Where a block goes: its pixel (0, 0), and the bytes from one of its columns, and from one of its lines, to the next.
struct BlockTarget {
  uint8_t *to;
  std::ptrdiff_t column;
  std::ptrdiff_t line; ///< the bytes of a pixel, negative where lines become columns from the right to the left
};

/// Calls make(line, row) for every second line of a block: it makes lines `line` and `line` + 1 at row[0] and row[1].
/// Then they are placed. A lone last line has a row below it to be made, but nothing of that is placed.
template <class MakeLines>
[[gnu::always_inline]] inline void turnBlock(TransposeBlock transpose, const BlockRows &rows, int32_t columns,
                                             int32_t lines, const BlockTarget &target, MakeLines make) {
  // Where lines become columns from the right to the left, the last one is the first of the output.
  const bool rowsGoUp = target.line < 0;
  const std::ptrdiff_t firstLine = rowsGoUp ? lines - 1 : 0;
  uint8_t *to = target.to + firstLine * target.line;
  const std::ptrdiff_t pixelBytes = rowsGoUp ? -target.line : target.line;
  LinesAhead<true> output(to, target.column, columns, lines * pixelBytes, (lines + 1) / 2);
  uint8_t *row[2] = {rows.pixels, rows.pixels + rows.stride};
  for (int32_t line = 0; line < lines; line += 2) {
    output.next();
    make(line, row);
    row[0] += 2 * rows.stride;
    row[1] += 2 * rows.stride;
  }
  transpose({rows.pixels + firstLine * rows.stride, rowsGoUp ? -rows.stride : rows.stride, columns, lines}, to,
            target.column);
}

} // namespace zqcc
