// Resizing to 16-bit RGB by means: five weighted samples (quality 1 and 2) or a box of up to 15 x 15 (quality 3).
#include "reference/resize_frame.h"
#include "reference/tables.h"

namespace reference::resize {
namespace {

constexpr int kEntryWords = 15;

/// A plane as the means read it: `columns` and `lines` are the bounds that positions are held against, and the pitch
/// may cover two lines. `end` is the first offset that holds no sample.
struct View {
  const uint8_t *data;
  std::ptrdiff_t pitch, columns, lines;
  std::ptrdiff_t end;
  [[nodiscard]] int at(std::ptrdiff_t column, std::ptrdiff_t line) const {
    return data[std::min(line * pitch + column, end - 1)];
  }
};

int boxMean(const View &view, const int32_t *columns, const int32_t *lines) {
  unsigned sum = 0;
  unsigned count = 0;
  for (int k = 0; k < kEntryWords && lines[k] != -1 && lines[k] < view.lines; ++k) {
    for (int i = 0; i < kEntryWords && columns[i] != -1 && columns[i] < view.columns; ++i) {
      sum += static_cast<unsigned>(view.at(columns[i], lines[k]));
      ++count;
    }
  }
  return count == 0 ? 0 : static_cast<int>(sum / count);
}

struct Pair {
  std::ptrdiff_t first, second;
};

/// The position and its neighbour, the last but one at most; a bound of one sample or none leaves only sample 0.
Pair bounded(std::ptrdiff_t position, std::ptrdiff_t bound) {
  bound = std::max<std::ptrdiff_t>(bound, 1);
  const std::ptrdiff_t first = std::max<std::ptrdiff_t>(position < bound - 1 ? position : bound - 2, 0);
  return {first, std::min(first + 1, bound - 1)};
}

int fivePointMean(const View &view, const int32_t *columns, const int32_t *lines) {
  int sum = 0;
  for (int t = 0; t < 5; ++t) {
    const int32_t *c = columns + 3 * t;
    const int32_t *l = lines + 3 * t;
    const Pair x = bounded(c[0], view.columns);
    const Pair y = bounded(l[0], view.lines);
    const int upper = c[2] * view.at(x.first, y.first) + c[1] * view.at(x.second, y.first);
    const int lower = c[2] * view.at(x.first, y.second) + c[1] * view.at(x.second, y.second);
    sum += (wrap(int64_t{upper} * l[2] + int64_t{lower} * l[1]) >> 20) & 0xFF;
  }
  return sum / 5;
}

View lumaView(const Frame &frame, std::size_t index) {
  const Plane &plane = frame.planes[index];
  return {plane.data, plane.pitch, frame.stride, frame.height, plane.end()};
}

View chromaView(const Frame &frame, std::size_t index) {
  const Plane &plane = frame.planes[index];
  if (frame.layout == COLOR_YUV444_PLANAR || frame.layout == COLOR_RGB888_PLANAR) {
    return lumaView(frame, index); // the bounds of luma hold for all three
  }
  if (frame.layout == COLOR_YUV422_PLANAR) {
    // Two chroma lines count as one, as wide as both pitches together.
    return {plane.data, 2 * plane.pitch, 2 * plane.pitch, frame.height / 2, plane.end()};
  }
  return {plane.data, plane.pitch, std::min<std::ptrdiff_t>(plane.columns, plane.pitch), plane.lines, plane.end()};
}

/// Number of the table entry that serves the chroma of an output column or line: entry >> shift.
struct Shifts {
  int column, line;
};

Shifts chromaShifts(int layout) {
  switch (layout) {
  case 1:
  case 3:
    return {1, 1};
  case 2:
    return {0, 1};
  case 4:
    return {2, 0};
  case 37:
    return {0, 2};
  default:
    return {0, 0};
  }
}

class Means {
public:
  explicit Means(const Frame &frame) : quality_(frame.quality) {
    if (quality_ == 3) {
      const int columnStep = columnBoxStep(frame.width, frame.outWidth);
      columns_ = box(frame.width, frame.outWidth, columnStep);
      lines_ = box(frame.height, frame.outHeight, lineBoxStep(frame.height, frame.outHeight, columnStep));
    } else {
      columns_ = filtered(frame.width, frame.outWidth, quality_, true);
      lines_ = filtered(frame.height, frame.outHeight, quality_, false);
    }
  }
  [[nodiscard]] int of(const View &view, int column, int line) const {
    const int32_t *c = columns_.data() + static_cast<std::ptrdiff_t>(kEntryWords) * column;
    const int32_t *l = lines_.data() + static_cast<std::ptrdiff_t>(kEntryWords) * line;
    return quality_ == 3 ? boxMean(view, c, l) : fivePointMean(view, c, l);
  }

private:
  int quality_;
  Words columns_;
  Words lines_;
};

} // namespace

void resizeFiltered(const Frame &frame) {
  const Means means(frame);
  const bool isRgb = frame.layout == COLOR_RGB888_PLANAR;
  const View first = lumaView(frame, 0);
  const View second = chromaView(frame, 1);
  const View third = chromaView(frame, 2);
  const Shifts shifts = chromaShifts(frame.layout);
  for (int y = 0; y < frame.outHeight; ++y) {
    for (int x = 0; x < frame.outWidth; ++x) {
      const int a = means.of(first, x, y);
      const int b = means.of(second, x >> shifts.column, y >> shifts.line);
      const int c = means.of(third, x >> shifts.column, y >> shifts.line);
      const uint16_t pixel = isRgb ? pack888(a, b, c) : studioFull(a, {b, c});
      storeWord(frame.out + y * frame.outStride + 2 * x, pixel);
    }
  }
}

} // namespace reference::resize
