#include "vector/turned_planes.h"

#include "base/limits.h"
#include "vector/lines_ahead.h"

namespace zqcc {
namespace {

/// A block is as high as an output line's 64 bytes have units, so that what is written fills whole lines of the cache.
constexpr int32_t kBlockBytes = 64;

/// Columns of a strip of a small picture.
constexpr int32_t kStripColumns = 64;

/// A strip's columns are exchanged a few at a time; in between the next block is asked for.
constexpr int32_t kPieceColumns = 16;

/// Pictures as small as that stay in the second-level cache and need not be asked for.
constexpr std::ptrdiff_t kSmall = std::ptrdiff_t{160} << 10;

const uint8_t *sourceOf(const LineExchange &picture, int32_t unitBytes, int32_t x, int32_t line) {
  return picture.from + line * picture.fromStep + std::ptrdiff_t{x} * unitBytes;
}
uint8_t *outputOf(const LineExchange &picture, int32_t unitBytes, int32_t x, int32_t line) {
  return picture.to + x * picture.toStep + std::ptrdiff_t{line} * unitBytes;
}

/// The columns [x, x + columns) of the picture, block by block downwards.
void exchangeStrip(const UnitExchange &units, const LineExchange &picture, int32_t x, int32_t columns, int32_t pieces,
                   bool isSmall) {
  const int32_t bytes = units.unitBytes;
  const int32_t least = kLeastBytes / bytes;
  const int32_t piece = isSmall ? columns : smaller(columns, kPieceColumns);
  int32_t lines = nextUnits(picture.lines, kBlockBytes / bytes, least);
  for (int32_t line = 0; line < picture.lines;) {
    const int32_t below = line + lines;
    const int32_t next = nextUnits(picture.lines - below, kBlockBytes / bytes, least);
    const int32_t asked = isSmall ? 0 : next;
    LinesAhead<false> source(sourceOf(picture, bytes, x, below), picture.fromStep, asked, 1, pieces);
    LinesAhead<true> output(outputOf(picture, bytes, x, below) + (next * bytes - 1), picture.toStep,
                            asked > 0 ? columns : 0, 1, pieces);
    int32_t some = 0;
    for (int32_t column = 0; column < columns; column += some) {
      some = columns - column < piece + least ? columns - column : piece;
      source.next();
      output.next();
      units.transpose({sourceOf(picture, bytes, x + column, line), picture.fromStep, some, lines},
                      outputOf(picture, bytes, x + column, line), picture.toStep);
    }
    line = below;
    lines = next;
  }
}

} // namespace

bool exchangeByBlocks(const PlaneExchange &stages, const LineExchange &picture) {
  const int32_t bytes = stages.units.unitBytes;
  const int32_t least = kLeastBytes / bytes;
  const std::ptrdiff_t lineBytes = std::ptrdiff_t{picture.lines} * bytes;
  const std::ptrdiff_t distance = picture.toStep < 0 ? -picture.toStep : picture.toStep;
  if (stages.units.transpose == nullptr || picture.columns < least || picture.lines < least || distance < lineBytes) {
    return false;
  }
  const bool isSmall = picture.columns <= kSmall / lineBytes;
  const UnitExchange units{isSmall ? stages.ofSmall : stages.units.transpose, bytes};
  const int32_t strip = isSmall ? kStripColumns : stages.stripColumns;
  int32_t columns = 0;
  for (int32_t x = 0; x < picture.columns; x += columns) {
    columns = nextUnits(picture.columns - x, strip, least);
    exchangeStrip(units, picture, x, columns, strip / kPieceColumns, isSmall);
  }
  return true;
}

bool reverseSamples(ReverseRow reverse, const uint8_t *from, uint8_t *to, std::ptrdiff_t samples) {
  constexpr std::ptrdiff_t kMost = std::ptrdiff_t{1} << 20;
  if (reverse == nullptr || samples < kLeastBytes) {
    return false;
  }
  std::ptrdiff_t count = 0;
  for (std::ptrdiff_t left = samples; left > 0; left -= count, from += count) {
    count = nextUnits(left, kMost, std::ptrdiff_t{kLeastBytes});
    reverse(from, to + (left - count), static_cast<int32_t>(count));
  }
  return true;
}

} // namespace zqcc
