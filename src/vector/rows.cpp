#include "vector/rows.h"

#include "base/limits.h"
#include "vector/line_maker.h"
#include "vector/short_lines.h"
#include "vector/turned_rows.h"

namespace zqcc {
namespace {

/// What of a rectangle goes by rows: pairs of lines, and pairs of columns that have chroma samples of their own.
Rect rowsOf(const Rect &rect, const PlaneView &view) {
  const int32_t ownChromaEnd = ((view.lastColumn + 1) << view.layout.xShift) & ~1;
  return {rect.left, rect.top, smaller(rect.right & ~1, ownChromaEnd), rect.bottom & ~1};
}

/// Where output lines overlap, the order of the stores shows; it is that of the portable kernel.
bool linesOverlap(const Rect &rect, Turn turn, int pixelBytes, std::ptrdiff_t stride) {
  const int32_t pixels = isQuarterTurn(turn) ? rect.bottom - rect.top : rect.right - rect.left;
  return stride < std::ptrdiff_t{pixels} * pixelBytes;
}

/// Lines that stay lines, and run the way they did, are written where they belong.
void convertUpright(const LineMaker &maker, const Rect &rows, uint8_t *origin, const Steps &steps) {
  for (int32_t y = rows.top; y < rows.bottom; y += 2) {
    uint8_t *first = origin + rows.left * steps.column + y * steps.line;
    uint8_t *const to[2] = {first, first + steps.line};
    maker.make(y, rows.left, rows.right - rows.left, to);
  }
}

/// Rows that would leave most of a vector empty are made one line behind the other.
constexpr int32_t kNarrow = 64;

void convertNarrow(const LineMaker &maker, const Rect &rows, uint8_t *origin, const Steps &steps) {
  constexpr std::size_t kLeastBytes = std::size_t{2} * kLeastPixels;
  alignas(64) uint8_t pixels[2][kStackedPixels * kMostPixelBytes];
  uint8_t *const made[2] = {pixels[0], pixels[1]};
  const int32_t width = rows.right - rows.left;
  const std::ptrdiff_t bytes = width * steps.column;
  int32_t pairs = 0;
  for (int32_t y = rows.top; y < rows.bottom; y += 2 * pairs) {
    pairs = smaller(kStackedPixels / width, (rows.bottom - y) / 2);
    maker.makeStacked({y, pairs, rows.left, width}, made);
    uint8_t *to = origin + rows.left * steps.column + y * steps.line;
    copyShortLines<kLeastBytes>({made[0], bytes}, {to, 2 * steps.line}, bytes, pairs);
    copyShortLines<kLeastBytes>({made[1], bytes}, {to + steps.line, 2 * steps.line}, bytes, pairs);
  }
}

} // namespace

bool convertByRows(const RowStages &stages, LevelSet usable, TileKernel rest, const PlaneView &view,
                   const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  const Rect rows = rowsOf(rect, view);
  LineMaker maker(view);
  if (rows.right - rows.left < kLeastPixels || rows.bottom <= rows.top ||
      linesOverlap(rect, stages.turn, stages.pixelBytes, target.stride) || !maker.prepare(stages, usable, matrix)) {
    return false;
  }
  const Steps steps = stepsOf(stages.turn, stages.pixelBytes, target.stride);
  if (isQuarterTurn(stages.turn)) {
    convertQuarterTurned(maker, stages.place.transpose->in(usable), rows, target.origin, steps);
  } else if (stages.turn == Turn::Half) {
    convertHalfTurned(maker, stages.place.reverse->in(usable), rows, target.origin, steps);
  } else if (rows.right - rows.left < kNarrow && maker.canStack(rows)) {
    convertNarrow(maker, rows, target.origin, steps);
  } else {
    convertUpright(maker, rows, target.origin, steps);
  }
  if (rows.right < rect.right) {
    rest(view, target, {rows.right, rect.top, rect.right, rows.bottom}, matrix);
  }
  if (rows.bottom < rect.bottom) {
    rest(view, target, {rect.left, rows.bottom, rect.right, rect.bottom}, matrix);
  }
  return true;
}

} // namespace zqcc
