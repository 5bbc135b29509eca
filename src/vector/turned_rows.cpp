#include "vector/turned_rows.h"

#include "base/limits.h"

namespace zqcc {
namespace {

constexpr int32_t kMostPixelBytes = 3;

/// Pixels to do next of those that are left: at most `most`, and not so many that less than a row would remain.
constexpr int32_t nextPixels(int32_t left, int32_t most) {
  if (left <= most) {
    return left;
  }
  return left - most < kLeastPixels ? most - kLeastPixels : most;
}

/// Output lines that are asked for before they are written, a few at a time: all at once they would have to wait for
/// each other.
class LinesAhead {
public:
  LinesAhead(uint8_t *first, std::ptrdiff_t stride, int32_t lines, int32_t bytes, int32_t steps)
      : line_(first), stride_(stride), left_(lines), bytes_(bytes), atATime_((lines + steps - 1) / steps) {}

  void next() {
    for (int32_t i = 0; i < atATime_ && left_ > 0; ++i) {
      for (int32_t byte = 0; byte < bytes_; byte += 64) {
        __builtin_prefetch(line_ + byte, 1);
      }
      line_ += stride_;
      --left_;
    }
  }

private:
  uint8_t *line_;
  std::ptrdiff_t stride_;
  int32_t left_;
  int32_t bytes_;
  int32_t atATime_;
};

/// Asks for the samples of lines y and y + 1 from column x on that a block of columns needs.
void prefetchSamples(const PlaneView &view, int32_t y, int32_t x) {
  const LayoutValues &layout = view.layout;
  const uint8_t *luma = view.y + y * view.yStride + std::ptrdiff_t{x >> 1} * layout.pairStep;
  __builtin_prefetch(luma);
  __builtin_prefetch(luma + view.yStride);
  const std::ptrdiff_t chroma = chromaLineOffset(view, y) + std::ptrdiff_t{x >> layout.xShift} * layout.sampleStep;
  __builtin_prefetch(view.u + chroma);
  __builtin_prefetch(view.v + chroma);
}

/// A block's lines fill 128 bytes of every output line that it has a column of.
constexpr int32_t kBlockColumns = 64;
constexpr int32_t kBlockLines = 64;

} // namespace

void convertHalfTurned(const LineMaker &maker, ReverseRow reverse, const Rect &rows, uint8_t *origin,
                       const Steps &steps) {
  constexpr int32_t kPixels = 512;
  alignas(64) uint8_t pixels[2][kPixels * kMostPixelBytes];
  uint8_t *const to[2] = {pixels[0], pixels[1]};
  for (int32_t y = rows.top; y < rows.bottom; y += 2) {
    int32_t count = 0;
    for (int32_t x = rows.left; x < rows.right; x += count) {
      count = nextPixels(rows.right - x, kPixels);
      maker.make(y, x, count, to);
      uint8_t *first = origin + (x + count - 1) * steps.column + y * steps.line;
      reverse(to[0], first, count);
      reverse(to[1], first + steps.line, count);
    }
  }
}

void convertQuarterTurned(const LineMaker &maker, TransposeBlock transpose, const Rect &rows, uint8_t *origin,
                          const Steps &steps) {
  constexpr std::ptrdiff_t kStride = kBlockColumns * kMostPixelBytes;
  alignas(64) uint8_t pixels[kBlockLines * kStride];
  // Where lines run backwards, the last one is the first of the output.
  const bool rowsGoUp = steps.line < 0;
  const int32_t pixelBytes = static_cast<int32_t>(rowsGoUp ? -steps.line : steps.line);
  int32_t lines = 0;
  for (int32_t top = rows.top; top < rows.bottom; top += lines) {
    lines = smaller(kBlockLines, rows.bottom - top);
    const int32_t firstLine = rowsGoUp ? lines - 1 : 0;
    int32_t columns = 0;
    for (int32_t left = rows.left; left < rows.right; left += columns) {
      columns = nextPixels(rows.right - left, kBlockColumns);
      uint8_t *to = origin + left * steps.column + (top + firstLine) * steps.line;
      LinesAhead ahead(to, steps.column, columns, lines * pixelBytes, lines / 2);
      for (int32_t line = 0; line < lines; line += 2) {
        ahead.next();
        if (left + columns < rows.right) {
          prefetchSamples(maker.view(), top + line, left + columns);
        }
        uint8_t *const row[2] = {pixels + line * kStride, pixels + (line + 1) * kStride};
        maker.make(top + line, left, columns, row);
      }
      transpose({pixels + firstLine * kStride, rowsGoUp ? -kStride : kStride, columns, lines}, to, steps.column);
    }
  }
}

} // namespace zqcc
