#include "vector/rows.h"

#include "base/limits.h"
#include "vector/place16.h"
#include "vector/turned_rows.h"

namespace zqcc {
namespace {

/// The stages of a conversion as the machine has them, and what they take from the frame.
struct Work {
  ColourRows pair;
  ColourRows single;
  ReverseRow reverse;
  TransposeBlock transpose;
  ColourConstants constants;
};

/// Bytes from one source column, and from one source line, to the next in the output.
struct Steps {
  std::ptrdiff_t column;
  std::ptrdiff_t line;
};

Steps stepsOf(Turn turn, int pixelBytes, std::ptrdiff_t stride) {
  switch (turn) {
  case Turn::Left:
    return {-stride, pixelBytes};
  case Turn::Right:
    return {stride, -pixelBytes};
  case Turn::Half:
    return {-pixelBytes, -stride};
  case Turn::Flip:
    return {pixelBytes, -stride};
  default:
    return {pixelBytes, stride};
  }
}

constexpr PlaceStages kPlace16{&REVERSE_ROW16, &TRANSPOSE_BLOCK16};

/// Whether there are stages that turn the pixels.
bool prepareTurn(const RowStages &stages, LevelSet usable, Work &work) {
  if (stages.pixelBytes != 2) {
    return stages.turn == Turn::Upright || stages.turn == Turn::Flip;
  }
  work.reverse = kPlace16.reverse->in(usable);
  work.transpose = kPlace16.transpose->in(usable);
  return work.reverse != nullptr && work.transpose != nullptr;
}

/// Whether there is a stage for every line, and the constants for this matrix.
bool prepare(const RowStages &stages, LevelSet usable, const ColorMatrix &matrix, Work &work) {
  work.pair = stages.pair != nullptr ? stages.pair->in(usable) : nullptr;
  work.single = stages.single != nullptr ? stages.single->in(usable) : nullptr;
  if ((work.pair == nullptr && work.single == nullptr) || !prepareTurn(stages, usable, work)) {
    return false;
  }
  return stages.makeConstants == nullptr || stages.makeConstants(matrix, work.constants);
}

/// What of a rectangle goes by rows: pairs of lines, and pairs of columns that have chroma samples of their own.
Rect rowsOf(const Rect &rect, const PlaneView &view) {
  const int32_t ownChromaEnd = ((view.lastColumn + 1) << view.layout.xShift) & ~1;
  return {rect.left, rect.top, smaller(rect.right & ~1, ownChromaEnd), rect.bottom & ~1};
}

/// As colourLines, where each line has chroma of its own.
[[gnu::noinline]] void colourSingleLines(const Work &work, const PlaneView &view, int32_t y, int32_t x, int32_t pixels,
                                         uint8_t *const to[2]) {
  for (int line = 0; line < 2; ++line) {
    const uint8_t *luma = view.y + (y + line) * view.yStride + x;
    const std::ptrdiff_t chroma = chromaLineOffset(view, y + line) + (x >> view.layout.xShift);
    work.single({{luma, nullptr}, view.u + chroma, view.v + chroma}, to + line, pixels, line, work.constants);
  }
}

/// Columns [x, x + pixels) of lines y and y + 1 to `to`. Rows may be short, so that what a row costs shows.
void colourLines(const Work &work, const PlaneView &view, int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) {
  if (work.pair == nullptr) {
    colourSingleLines(work, view, y, x, pixels, to);
    return;
  }
  const uint8_t *luma = view.y + y * view.yStride + x;
  const std::ptrdiff_t chroma = chromaLineOffset(view, y) + (x >> view.layout.xShift);
  work.pair({{luma, luma + view.yStride}, view.u + chroma, view.v + chroma}, to, pixels, 0, work.constants);
}

/// Lines that stay lines, and run the way they did, are written where they belong.
void convertUpright(const Work &work, const PlaneView &view, const Rect &rows, uint8_t *origin, const Steps &steps) {
  for (int32_t y = rows.top; y < rows.bottom; y += 2) {
    uint8_t *first = origin + rows.left * steps.column + y * steps.line;
    uint8_t *const to[2] = {first, first + steps.line};
    colourLines(work, view, y, rows.left, rows.right - rows.left, to);
  }
}

void convertRows(const Work &work, const PlaneView &view, const Rect &rows, Turn turn, uint8_t *origin,
                 const Steps &steps) {
  const auto makeRows = [&work, &view](int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) {
    colourLines(work, view, y, x, pixels, to);
  };
  if (isQuarterTurn(turn)) {
    convertQuarterTurned(makeRows, work.transpose, view, rows, origin, steps.column, steps.line);
  } else if (turn == Turn::Half) {
    convertHalfTurned(makeRows, work.reverse, rows, origin, -steps.column, steps.line);
  } else {
    convertUpright(work, view, rows, origin, steps);
  }
}

} // namespace

bool convertByRows(const RowStages &stages, LevelSet usable, TileKernel rest, const PlaneView &view,
                   const Target &target, const Rect &rect, const ColorMatrix &matrix) {
  const Rect rows = rowsOf(rect, view);
  const int32_t outPixels = isQuarterTurn(stages.turn) ? rows.bottom - rows.top : rows.right - rows.left;
  // Where output lines overlap, the order of the stores shows; it is that of the portable kernel.
  const bool linesOverlap = target.stride < std::ptrdiff_t{outPixels} * stages.pixelBytes;
  Work work{};
  if (rows.right - rows.left < 64 || rows.bottom <= rows.top || linesOverlap ||
      !prepare(stages, usable, matrix, work)) {
    return false;
  }
  convertRows(work, view, rows, stages.turn, target.origin, stepsOf(stages.turn, stages.pixelBytes, target.stride));
  if (rows.right < rect.right) {
    rest(view, target, {rows.right, rect.top, rect.right, rows.bottom}, matrix);
  }
  if (rows.bottom < rect.bottom) {
    rest(view, target, {rect.left, rows.bottom, rect.right, rect.bottom}, matrix);
  }
  return true;
}

} // namespace zqcc
