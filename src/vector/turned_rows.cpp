#include "vector/turned_rows.h"

#include "base/limits.h"

namespace zqcc {
namespace {

/// Pixels to do next of those that are left: at most `most`, and not so many that less than a row would remain.
constexpr int32_t nextPixels(int32_t left, int32_t most) {
  if (left <= most) {
    return left;
  }
  return left - most < kLeastPixels ? most - kLeastPixels : most;
}

/// A block of a quarter turn in the first-level cache. Long rows have less to do for a pixel, many lines fill more of
/// an output line at a time.
constexpr int32_t kBlockLines = 64;
constexpr int32_t kBlockBytes = 16384;

/// Lines from one that is made to one whose samples are asked for: farther ahead they are gone again before their turn.
constexpr int32_t kLinesAhead = 4;

constexpr int32_t blockColumnsOf(std::ptrdiff_t pixelBytes) {
  return pixelBytes == 2 ? 128 : 64;
}
static_assert(blockColumnsOf(2) * kBlockLines * 2 <= kBlockBytes && blockColumnsOf(3) * kBlockLines * 3 <= kBlockBytes);

/// Asks for output lines before they are written, a few at a time: all at once would have to wait for each other.
class LinesAhead {
public:
  /// `lines` lines, of which `bytes` bytes will be written, in `times` times.
  LinesAhead(const uint8_t *first, std::ptrdiff_t stride, int32_t lines, std::ptrdiff_t bytes, int32_t times)
      : line_(first), end_(first + lines * stride), stride_(stride), lastByte_(bytes - 1),
        advance_((lines + times - 1) / times * stride) {}

  void next() {
    const std::ptrdiff_t left = end_ - line_;
    const uint8_t *end = (stride_ < 0 ? left < advance_ : left > advance_) ? line_ + advance_ : end_;
    for (; line_ != end; line_ += stride_) {
      for (std::ptrdiff_t byte = 0; byte < lastByte_; byte += 64) {
        __builtin_prefetch(line_ + byte, 1);
      }
      __builtin_prefetch(line_ + lastByte_, 1);
    }
  }

private:
  const uint8_t *line_;
  const uint8_t *end_;
  std::ptrdiff_t stride_;
  std::ptrdiff_t lastByte_;
  std::ptrdiff_t advance_;
};

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
  alignas(64) uint8_t pixels[kBlockBytes];
  // Where lines become columns from the right to the left, the last one is the first of the output.
  const bool rowsGoUp = steps.line < 0;
  const std::ptrdiff_t pixelBytes = rowsGoUp ? -steps.line : steps.line;
  const int32_t blockColumns = blockColumnsOf(pixelBytes);
  const std::ptrdiff_t stride = blockColumns * pixelBytes;
  int32_t lines = 0;
  for (int32_t top = rows.top; top < rows.bottom; top += lines) {
    lines = smaller(kBlockLines, rows.bottom - top);
    const std::ptrdiff_t firstLine = rowsGoUp ? lines - 1 : 0;
    int32_t columns = 0;
    for (int32_t left = rows.left; left < rows.right; left += columns) {
      columns = nextPixels(rows.right - left, blockColumns);
      uint8_t *to = origin + left * steps.column + (top + firstLine) * steps.line;
      LinesAhead output(to, steps.column, columns, lines * pixelBytes, lines / 2);
      // To the ends of lines of this block and of the next one.
      const SampleSteps ahead = maker.stepsTo(kLinesAhead, columns);
      const SampleSteps aside = maker.stepsTo(kLinesAhead - lines, 2 * columns);
      uint8_t *row[2] = {pixels, pixels + stride};
      for (int32_t line = 0; line < lines; line += 2) {
        output.next();
        maker.make(top + line, left, columns, row, line + kLinesAhead < lines ? &ahead : &aside);
        row[0] += 2 * stride;
        row[1] += 2 * stride;
      }
      transpose({pixels + firstLine * stride, rowsGoUp ? -stride : stride, columns, lines}, to, steps.column);
    }
  }
}

} // namespace zqcc
