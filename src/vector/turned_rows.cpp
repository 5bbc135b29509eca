#include "vector/turned_rows.h"

#include "base/limits.h"
#include "vector/lines_ahead.h"
#include "vector/turned_block.h"

namespace zqcc {
namespace {

/// A block of a quarter turn in the first-level cache. Long rows have less to do for a pixel.
constexpr int32_t kBlockBytes = 16384;

/// Lines from one that is made to one whose samples are asked for: farther ahead they are gone again before their turn.
constexpr int32_t kLinesAhead = 4;

constexpr int32_t blockColumnsOf(std::ptrdiff_t pixelBytes) {
  return pixelBytes == 2 ? 128 : 64;
}
static_assert(blockColumnsOf(2) * kBlockLines * 2 <= kBlockBytes && blockColumnsOf(3) * kBlockLines * 3 <= kBlockBytes);

} // namespace

void convertHalfTurned(const LineMaker &maker, ReverseRow reverse, const Rect &rows, uint8_t *origin,
                       const Steps &steps) {
  constexpr int32_t kPixels = 512;
  alignas(64) uint8_t pixels[2][kPixels * kMostPixelBytes];
  uint8_t *const to[2] = {pixels[0], pixels[1]};
  for (int32_t y = rows.top; y < rows.bottom; y += 2) {
    int32_t count = 0;
    for (int32_t x = rows.left; x < rows.right; x += count) {
      count = nextUnits(rows.right - x, kPixels, kLeastPixels);
      maker.make(y, x, count, to);
      uint8_t *first = origin + (x + count - 1) * steps.column + y * steps.line;
      reverse(to[0], first, count);
      reverse(to[1], first + steps.line, count);
    }
  }
}

void convertQuarterTurned(const LineMaker &maker, TransposeBlock transpose, const Rect &rows, uint8_t *origin,
                          const Steps &steps) {
  alignas(64) uint8_t pixels[kBlockBytes];
  const std::ptrdiff_t pixelBytes = steps.line < 0 ? -steps.line : steps.line;
  const int32_t blockColumns = blockColumnsOf(pixelBytes);
  int32_t lines = 0;
  for (int32_t top = rows.top; top < rows.bottom; top += lines) {
    lines = smaller(kBlockLines, rows.bottom - top);
    int32_t columns = 0;
    for (int32_t left = rows.left; left < rows.right; left += columns) {
      columns = nextUnits(rows.right - left, blockColumns, kLeastPixels);
      uint8_t *to = origin + left * steps.column + top * steps.line;
      // To the ends of lines of this block and of the next one.
      const SampleSteps ahead = maker.stepsTo(kLinesAhead, columns);
      const SampleSteps aside = maker.stepsTo(kLinesAhead - lines, 2 * columns);
      turnBlock(transpose, {pixels, blockColumns * pixelBytes}, columns, lines, {to, steps.column, steps.line},
                [&](int32_t line, uint8_t *const row[2]) {
                  maker.make(top + line, left, columns, row, line + kLinesAhead < lines ? &ahead : &aside);
                });
    }
  }
}

} // namespace zqcc
