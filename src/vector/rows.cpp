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
  FetchRows whole; ///< null where all samples lie as rows
  FetchRows luma;  ///< null where no line is without chroma of its own, or its luma lies as rows
  bool lumaLies;
  ReverseRow reverse;       ///< null where no pixels of this size are turned
  TransposeBlock transpose; ///< the same
  int pixelBytes;
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

template <class Function>
Function bestOf(const PerLevel<Function> *levels, LevelSet usable) {
  return levels != nullptr ? levels->in(usable) : nullptr;
}

constexpr PlaceStages kPlace16{&REVERSE_ROW16, &TRANSPOSE_BLOCK16};
constexpr PlaceStages kPlaceNothing{};

/// Whether there is a stage for every line, one that turns, and the constants for this matrix.
bool prepare(const RowStages &stages, LevelSet usable, const LayoutValues &layout, const ColorMatrix &matrix,
             Work &work) {
  work.pair = bestOf(stages.pair, usable);
  work.single = bestOf(stages.single, usable);
  work.whole = bestOf(stages.fetch.whole, usable);
  work.luma = bestOf(stages.fetch.luma, usable);
  work.lumaLies = layout.pairStep == 2;
  const PlaceStages &place = stages.pixelBytes == 2 ? kPlace16 : kPlaceNothing;
  work.reverse = bestOf(place.reverse, usable);
  work.transpose = bestOf(place.transpose, usable);
  work.pixelBytes = stages.pixelBytes;
  const bool turns = (stages.turn != Turn::Half || work.reverse != nullptr) &&
                     (!isQuarterTurn(stages.turn) || work.transpose != nullptr);
  const bool colours = work.pair != nullptr || work.single != nullptr;
  const bool fetches = (stages.fetch.whole == nullptr || work.whole != nullptr) &&
                       (stages.fetch.luma == nullptr || work.luma != nullptr);
  return colours && fetches && turns &&
         (stages.makeConstants == nullptr || stages.makeConstants(matrix, work.constants));
}

/// What of a rectangle goes by rows: pairs of lines, and pairs of columns that have chroma samples of their own.
Rect rowsOf(const Rect &rect, const PlaneView &view) {
  const int32_t ownChromaEnd = ((view.lastColumn + 1) << view.layout.xShift) & ~1;
  return {rect.left, rect.top, smaller(rect.right & ~1, ownChromaEnd), rect.bottom & ~1};
}

/// Pixels whose samples are fetched at a time: the buffers share the first-level cache with what is read and written.
constexpr int32_t kFetchedPixels = 1024;

struct FetchBuffers {
  uint8_t y[2][kFetchedPixels];
  uint8_t u[kFetchedPixels];
  uint8_t v[kFetchedPixels];
};

/// Where the samples of a line's column x stand, x even.
SourceLine sourceAt(const PlaneView &view, const LinePair &lines, int line, int32_t x) {
  const LayoutValues &layout = view.layout;
  const std::ptrdiff_t sample = std::ptrdiff_t{x >> layout.xShift} * layout.sampleStep;
  return {lines.luma[line] + std::ptrdiff_t{x >> 1} * layout.pairStep + layout.leftLuma, lines.u[line] + sample,
          lines.v[line] + sample};
}

/// The rows of one line's samples: fetched, or where they lie.
SampleRows samplesOf(const Work &work, const SourceLine &from, FetchBuffers &buffers, int32_t pixels) {
  if (work.whole == nullptr) {
    return {{from.y, nullptr}, from.u, from.v};
  }
  work.whole(from, {buffers.y[0], buffers.u, buffers.v}, pixels);
  return {{work.lumaLies ? from.y : buffers.y[0], nullptr}, buffers.u, buffers.v};
}

/// As samplesOf for the line below, which shares the chroma.
const uint8_t *lumaOf(const Work &work, const SourceLine &from, FetchBuffers &buffers, int32_t pixels) {
  if (work.lumaLies) {
    return from.y;
  }
  work.luma(from, {buffers.y[1], nullptr, nullptr}, pixels);
  return buffers.y[1];
}

/// Columns [x, x + pixels) of a pair of lines to `to`.
void colourColumns(const Work &work, const PlaneView &view, const LinePair &lines, int32_t x, int32_t pixels,
                   uint8_t *const to[2], FetchBuffers &buffers) {
  if (work.pair != nullptr) {
    SampleRows rows = samplesOf(work, sourceAt(view, lines, 0, x), buffers, pixels);
    rows.y[1] = lumaOf(work, sourceAt(view, lines, 1, x), buffers, pixels);
    work.pair(rows, to, pixels, 0, work.constants);
    return;
  }
  for (int line = 0; line < 2; ++line) {
    uint8_t *const one[2] = {to[line], nullptr};
    work.single(samplesOf(work, sourceAt(view, lines, line, x), buffers, pixels), one, pixels, line, work.constants);
  }
}

/// As many of the pixels as are fetched at once. Those that remain are none or enough for every stage, and begin with a
/// chroma sample.
int32_t fetchedOf(int32_t pixels) {
  return pixels <= kFetchedPixels ? pixels : smaller(kFetchedPixels, (pixels - kLeastPixels) & ~3);
}

/// As colourLines, for any layout.
[[gnu::noinline]] void colourAnyLines(const Work &work, const PlaneView &view, int32_t y, int32_t x, int32_t pixels,
                                      uint8_t *const to[2]) {
  const LinePair lines = linePairAt(view, y);
  FetchBuffers buffers;
  for (int32_t done = 0; done < pixels;) {
    const int32_t count = work.whole == nullptr ? pixels : fetchedOf(pixels - done);
    const std::ptrdiff_t bytes = std::ptrdiff_t{done} * work.pixelBytes;
    uint8_t *const part[2] = {to[0] + bytes, to[1] + bytes};
    colourColumns(work, view, lines, x + done, count, part, buffers);
    done += count;
  }
}

/// Columns [x, x + pixels) of lines y and y + 1 to `to`. Rows of a block are short, so that what a row costs shows:
/// pairs of planar lines go the short way.
void colourLines(const Work &work, const PlaneView &view, int32_t y, int32_t x, int32_t pixels, uint8_t *const to[2]) {
  if (work.pair == nullptr || work.whole != nullptr) {
    colourAnyLines(work, view, y, x, pixels, to);
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
  const int32_t outPixels = isQuarterTurn(stages.turn) ? rect.bottom - rect.top : rect.right - rect.left;
  // Where output lines overlap, the order of the stores shows; it is that of the portable kernel.
  const bool linesOverlap = target.stride < std::ptrdiff_t{outPixels} * stages.pixelBytes;
  Work work{};
  if (rows.right - rows.left < 64 || rows.bottom <= rows.top || linesOverlap ||
      !prepare(stages, usable, view.layout, matrix, work)) {
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
