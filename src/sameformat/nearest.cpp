#include "sameformat/nearest.h"

#include "base/limits.h"
#include "sameformat/chroma_pairs.h"

#include <cstring>

namespace zqcc {

namespace {

const uint8_t *pickLine(const NearestSource &src, int32_t position) {
  return src.samples + smaller(src.yTable[position], src.lastLine) * src.pitch;
}

template <class Unit>
Unit pickUnit(const NearestSource &src, const uint8_t *line, int32_t column) {
  if constexpr (sizeof(Unit) == 1) {
    return line[column];
  } else {
    return chromaPair(line, column, src.lastSecond);
  }
}

/// Columns [left, right) of the strip that a walk over all lines covers.
struct Strip {
  int32_t left;
  int32_t right;
};

/// Picks one unit from each of `count` source lines at every column of the strip and stores them side by side, one
/// destination line (`step` bytes) a column. Up-scaling repeats columns: their units are fetched once.
template <class Unit, std::size_t count>
void turnLines(const NearestSource &src, const uint8_t *const (&lines)[count], uint8_t *dst, std::ptrdiff_t step,
               Strip strip) {
  Unit units[count] = {};
  int32_t column = -1;
  for (int32_t i = strip.left; i < strip.right; ++i) {
    const int32_t wanted = smaller(src.xTable[i], src.lastColumn);
    if (wanted != column) {
      column = wanted;
      for (std::size_t k = 0; k < count; ++k) {
        units[k] = pickUnit<Unit>(src, lines[k], column);
      }
    }
    std::memcpy(dst + i * step, units, sizeof units);
  }
}

/// The `count` source lines that make the output columns from `column` on. The right turn puts the last line first.
template <class Unit, std::size_t count>
void turnColumns(bool left, const NearestSource &src, int32_t column, int32_t height, uint8_t *dst, std::ptrdiff_t step,
                 Strip strip) {
  const uint8_t *lines[count];
  int32_t position = left ? column : height - 1 - column;
  for (const uint8_t *&line : lines) {
    line = pickLine(src, position);
    position += left ? 1 : -1;
  }
  turnLines<Unit, count>(src, lines, dst + column * static_cast<std::ptrdiff_t>(sizeof(Unit)), step, strip);
}

template <class Unit>
void turnUnits(Turn turn, const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
               std::ptrdiff_t dstPitch) {
  if (width <= 0 || height <= 0) {
    return;
  }
  const bool left = turn == Turn::Left;
  uint8_t *const origin = left ? dst + (width - 1) * dstPitch : dst;
  const std::ptrdiff_t step = left ? -dstPitch : dstPitch;
  // The destination lines of a strip stay in the cache until every source line has passed.
  constexpr int32_t kStrip = 64;
  constexpr int kLines = 4;
  for (int32_t first = 0; first < width; first += smaller(kStrip, width - first)) {
    const Strip strip{first, first + smaller(kStrip, width - first)};
    int32_t column = 0;
    for (; height - column >= kLines; column += kLines) {
      turnColumns<Unit, kLines>(left, src, column, height, origin, step, strip);
    }
    for (; column < height; ++column) {
      turnColumns<Unit, 1>(left, src, column, height, origin, step, strip);
    }
  }
}

} // namespace

void resizeRotatePlane(Turn turn, const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                       std::ptrdiff_t dstPitch) {
  turnUnits<uint8_t>(turn, src, dst, width, height, dstPitch);
}

void resizeRotateChromaPairs(Turn turn, const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                             std::ptrdiff_t dstPitch) {
  turnUnits<uint16_t>(turn, src, dst, width, height, dstPitch);
}

void resizeRotate180Plane(const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                          std::ptrdiff_t dstPitch) {
  for (int32_t j = 0; j < height; ++j) {
    const uint8_t *line = pickLine(src, j);
    uint8_t *end = dst + (height - j) * dstPitch;
    for (int32_t i = 0; i < width; ++i) {
      *--end = line[smaller(src.xTable[i], src.lastColumn)];
    }
  }
}

} // namespace zqcc
