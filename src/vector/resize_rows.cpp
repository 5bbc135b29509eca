#include "vector/resize_rows.h"

#include "base/limits.h"
#include "vector/line_maker.h"
#include "vector/turned_block.h"
#include "vector/turned_rows.h"

#include <cstring>

namespace zqcc {
namespace {

/// A block of a quarter turn. Wide ones have fewer calls for a pixel, which counts for more than that output lines are
/// written 64 bytes at a time.
constexpr int32_t kTurnedLines = 32;
constexpr int32_t kTurnedBytes = kTurnedLines * 512 * 2;

/// Columns of a turned chunk at most.
constexpr int32_t turnedColumns(int pixelBytes) {
  return pixelBytes == 2 ? 512 : 256;
}
static_assert(turnedColumns(3) * kTurnedLines * 3 <= kTurnedBytes);

/// Where output lines overlap, the order of the stores shows; it is that of the portable code.
bool linesOverlap(const ResizeTarget &to, int pixelBytes) {
  const int32_t pixels = isQuarterTurn(to.turn) ? to.height : to.width;
  return to.target.stride < std::ptrdiff_t{pixels} * pixelBytes;
}

/// Sampler and colour stage: pixels of two lines of a chunk.
class PixelMaker {
public:
  explicit PixelMaker(const SamplerCalls &calls) : calls_(calls) {}

  bool prepare(const ResizeStages &stages, LevelSet usable, const ColorMatrix &matrix) {
    pair_ = stages.pair != nullptr ? stages.pair->in(usable) : nullptr;
    single_ = stages.single != nullptr ? stages.single->in(usable) : nullptr;
    pixelBytes_ = static_cast<std::size_t>(stages.pixelBytes);
    return (pair_ != nullptr || single_ != nullptr) &&
           (stages.makeConstants == nullptr || stages.makeConstants(matrix, constants_));
  }

  void columns(int32_t first, int32_t count) {
    calls_.columns(calls_.sampler, first, count);
    count_ = count;
  }

  /// Pixels that are made of every line: those of the chunk, and what the stages need beyond them.
  [[nodiscard]] int32_t made() const { return count_ < kLeastPixels ? kLeastPixels : (count_ + 1) & ~1; }

  void make(int32_t j, int32_t lineCount, uint8_t *const to[2]) const {
    SampleRows rows[2];
    calls_.lines(calls_.sampler, j, lineCount, rows);
    if (pair_ != nullptr) {
      pair_(rows[0], to, made(), 0, constants_);
      return;
    }
    makeSingle(rows[0], to[0], 0);
    if (lineCount == 1) {
      return;
    }
    if (areSame(rows[0], rows[1])) {
      std::memcpy(to[1], to[0], static_cast<std::size_t>(made()) * pixelBytes_);
    } else {
      makeSingle(rows[1], to[1], 1);
    }
  }

private:
  void makeSingle(const SampleRows &rows, uint8_t *to, int32_t line) const {
    uint8_t *const one[2] = {to, nullptr};
    single_(rows, one, made(), line, constants_);
  }

  /// Lines of the same rows have the same pixels: no arithmetic dithers when it resizes.
  static bool areSame(const SampleRows &a, const SampleRows &b) { return a.y[0] == b.y[0] && a.u == b.u && a.v == b.v; }

  const SamplerCalls &calls_;
  ColourRows pair_ = nullptr;
  ColourRows single_ = nullptr;
  std::size_t pixelBytes_ = 0;
  int32_t count_ = 0;
  ColourConstants constants_{};
};

/// A picture of a height, and how its pixels lie in the output.
struct Lines {
  int32_t height;
  Steps steps;
  int pixelBytes;
};

struct Chunk {
  int32_t count;
  uint8_t *to; ///< where its first pixel lands
};

/// Lines are made where they belong as long as all that is made belongs there.
void resizeUpright(const PixelMaker &maker, const Lines &lines, const Chunk &chunk) {
  alignas(64) uint8_t pixels[2][kMostColumns * kMostPixelBytes];
  const bool fits = maker.made() == chunk.count;
  uint8_t *line = chunk.to;
  for (int32_t j = 0; j < lines.height; j += 2, line += 2 * lines.steps.line) {
    const int32_t lineCount = smaller(lines.height - j, 2);
    // cppcheck-suppress legacyUninitvar ; the array is handed out to be filled
    uint8_t *const direct[2] = {line, lineCount == 2 ? line + lines.steps.line : pixels[1]};
    uint8_t *const buffered[2] = {pixels[0], pixels[1]};
    maker.make(j, lineCount, fits ? direct : buffered);
    for (int32_t l = 0; l < (fits ? 0 : lineCount); ++l) {
      std::memcpy(line + l * lines.steps.line, pixels[l],
                  static_cast<std::size_t>(chunk.count) * static_cast<std::size_t>(lines.pixelBytes));
    }
  }
}

void resizeHalfTurned(const PixelMaker &maker, ReverseRow reverse, const Lines &lines, const Chunk &chunk) {
  alignas(64) uint8_t pixels[2][kMostColumns * kMostPixelBytes];
  uint8_t *const made[2] = {pixels[0], pixels[1]};
  uint8_t *line = chunk.to + (chunk.count - 1) * lines.steps.column;
  for (int32_t j = 0; j < lines.height; j += 2) {
    const int32_t lineCount = smaller(lines.height - j, 2);
    maker.make(j, lineCount, made);
    for (int32_t l = 0; l < lineCount; ++l, line += lines.steps.line) {
      reverse(made[l], line, chunk.count);
    }
  }
}

void resizeQuarterTurned(const PixelMaker &maker, TransposeBlock transpose, const Lines &lines, const Chunk &chunk) {
  alignas(64) uint8_t pixels[kTurnedBytes];
  const BlockRows rows{pixels, kTurnedBytes / kTurnedLines};
  for (int32_t top = 0; top < lines.height; top += kTurnedLines) {
    const int32_t count = smaller(lines.height - top, kTurnedLines);
    turnBlock(transpose, rows, chunk.count, count,
              {chunk.to + top * lines.steps.line, lines.steps.column, lines.steps.line},
              [&](int32_t line, uint8_t *const row[2]) { maker.make(top + line, smaller(count - line, 2), row); });
  }
}

} // namespace

bool resizeRows(const SamplerCalls &calls, const ResizeStages &stages, LevelSet usable, const ResizeTarget &to,
                const ColorMatrix &matrix) {
  PixelMaker maker(calls);
  if (linesOverlap(to, stages.pixelBytes) || !maker.prepare(stages, usable, matrix)) {
    return false;
  }
  const Lines lines{to.height, stepsOf(to.turn, stages.pixelBytes, to.target.stride), stages.pixelBytes};
  const int32_t most =
      isQuarterTurn(to.turn) ? smaller(calls.mostColumns, turnedColumns(stages.pixelBytes)) : calls.mostColumns;
  for (int32_t first = 0; first < to.width; first += most) {
    const Chunk chunk{smaller(to.width - first, most), to.target.origin + first * lines.steps.column};
    maker.columns(first, chunk.count);
    if (isQuarterTurn(to.turn)) {
      resizeQuarterTurned(maker, stages.place.transpose->in(usable), lines, chunk);
    } else if (to.turn == Turn::Half) {
      resizeHalfTurned(maker, stages.place.reverse->in(usable), lines, chunk);
    } else {
      resizeUpright(maker, lines, chunk);
    }
  }
  return true;
}

} // namespace zqcc
