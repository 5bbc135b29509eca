// Plain resizing to 16-bit RGB: luma by weights, by single samples, by fixed phases or by pair means, chroma by single
// samples that neighbouring output pixels share.
#include "reference/resize_frame.h"

namespace reference::resize {
namespace {

enum class Ratio { General, Pow2Down, ThreeQuarters, ThreeHalves, Double };

Ratio ratioOf(int w, int h, int ow, int oh) {
  for (int k = 1; k <= 10; ++k) {
    if (ow == w >> k && oh == h >> k) {
      return Ratio::Pow2Down;
    }
  }
  if (3 * w == 4 * ow && 3 * h == 4 * oh) {
    return Ratio::ThreeQuarters;
  }
  if (3 * w == 2 * ow && 3 * h == 2 * oh) {
    return Ratio::ThreeHalves;
  }
  return ow == 2 * w && oh == 2 * h ? Ratio::Double : Ratio::General;
}

struct Weights {
  int self, next;
};

/// Thirds are 683/341 after a third and 342/682 after two thirds.
Weights phaseWeights(Ratio ratio, int member) {
  constexpr Weights kNone{1024, 0};
  constexpr Weights kThird{683, 341};
  constexpr Weights kTwoThirds{342, 682};
  const int phase = member % 3;
  if (phase == 0) {
    return kNone;
  }
  return (phase == 1) == (ratio == Ratio::ThreeQuarters) ? kThird : kTwoThirds;
}

/// Weighted sum of four samples, 20 fractional bits. `step` is the distance of neighbours.
int32_t weighted(const uint8_t *line, std::ptrdiff_t pitch, int step, Weights h, Weights v) {
  const int upper = h.self * line[0] + h.next * line[step];
  const int lower = h.self * line[pitch] + h.next * line[pitch + step];
  return wrap(int64_t{v.self} * upper + int64_t{v.next} * lower);
}

int phaseLuma(const Plane &y, Ratio ratio, const Tap &column, const Tap &line) {
  const uint8_t *s = y.data + line.index * y.pitch + column.index;
  const Weights h = phaseWeights(ratio, column.member);
  const Weights v = phaseWeights(ratio, line.member);
  if (h.next == 0 && v.next == 0) {
    return s[0];
  }
  if (v.next == 0) {
    return (h.self * s[0] + h.next * s[1]) >> 10;
  }
  if (h.next == 0) {
    return (v.self * s[0] + v.next * s[y.pitch]) >> 10;
  }
  return (h.self * v.self * s[0] + h.next * v.self * s[1] + h.self * v.next * s[y.pitch] +
          h.next * v.next * s[y.pitch + 1]) >>
         20;
}

int doubleLuma(const Plane &y, const Tap &column, const Tap &line) {
  const uint8_t *s = y.data + line.index * y.pitch + column.index;
  const bool between = column.member % 2 != 0;
  const bool betweenLines = line.member % 2 != 0;
  if (between && betweenLines) {
    return (s[0] + s[1] + s[y.pitch] + s[y.pitch + 1]) >> 2;
  }
  if (between) {
    return (s[0] + s[1]) >> 1;
  }
  return betweenLines ? (s[0] + s[y.pitch]) >> 1 : s[0];
}

int lumaOf(const Plane &y, Ratio ratio, const Tap &column, const Tap &line) {
  switch (ratio) {
  case Ratio::Pow2Down:
    return y.at(column.index, line.index);
  case Ratio::ThreeQuarters:
  case Ratio::ThreeHalves:
    return phaseLuma(y, ratio, column, line);
  case Ratio::Double:
    return doubleLuma(y, column, line);
  case Ratio::General:
    break;
  }
  const uint8_t *s = y.data + line.index * y.pitch + column.index;
  return weighted(s, y.pitch, 1, {column.self, column.next}, {line.self, line.next}) >> 20;
}

struct Place {
  int column, line;
};

Place chromaPlace(int layout, const Tap &column, const Tap &line) {
  switch (layout) {
  case 0: // the second line of a pair takes the row below the first one's, not its own
    return {column.index, line.pairFirst + line.member % 2};
  case 1: // every second chroma line
    return {(column.pairFirst + column.pairSecond + 1) >> 2, 2 * (line.pairFirst >> 1)};
  case 2:
    return {column.index, line.pairFirst >> 1};
  case 4:
    return {(column.pairFirst + column.pairSecond + 4) >> 3, line.index};
  case 37:
    return {column.index, line.index >> 2};
  default: // 3
    return {(column.pairFirst + column.pairSecond + 1) >> 2, line.pairFirst >> 1};
  }
}

uint16_t planarRgbPixel(const Frame &frame, const Tap &column, const Tap &line) {
  std::array<int, 3> value{};
  for (std::size_t i = 0; i < 3; ++i) {
    const Plane &plane = frame.planes[i];
    const uint8_t *s = plane.data + line.index * plane.pitch + column.index;
    value[i] = weighted(s, plane.pitch, 1, {column.self, column.next}, {line.self, line.next}) >> 20;
  }
  return pack888(value[0], value[1], value[2]);
}

/// The half turn is measured from the end of the stride, the quarter turns from the picture.
uint8_t *placeOf(uint8_t *out, std::ptrdiff_t stride, int width, int height, int rotation, int x, int y) {
  switch (rotation) {
  case 3:
    return out + (width - 1 - x) * stride + 2 * y;
  case 4:
    return out + x * stride + 2 * (height - 1 - y);
  case 5:
    return out + (height - y) * stride - 2 - 2 * x;
  default:
    return out + y * stride + 2 * x;
  }
}

} // namespace

void resizeBlocks(const Frame &frame) {
  const std::vector<Tap> columns = expandGroups(frame.width, frame.outWidth);
  const std::vector<Tap> lines = expandGroups(frame.height, frame.outHeight);
  Ratio ratio = Ratio::General;
  if ((frame.layout == 1 || frame.layout == 3) && frame.rotation != 5) {
    ratio = ratioOf(frame.width, frame.height, frame.outWidth, frame.outHeight);
  }
  for (int y = 0; y < frame.outHeight; ++y) {
    const Tap &line = lines.at(static_cast<std::size_t>(y));
    for (int x = 0; x < frame.outWidth; ++x) {
      const Tap &column = columns.at(static_cast<std::size_t>(x));
      uint16_t pixel = 0;
      if (frame.layout == COLOR_RGB888_PLANAR) {
        pixel = planarRgbPixel(frame, column, line);
      } else {
        const Place c = chromaPlace(frame.layout, column, line);
        pixel = studioFull(lumaOf(frame.planes[0], ratio, column, line),
                           {frame.planes[1].at(c.column, c.line), frame.planes[2].at(c.column, c.line)});
      }
      storeWord(placeOf(frame.out, frame.outStride, frame.outWidth, frame.outHeight, frame.rotation, x, y), pixel);
    }
  }
}

void resizeRgb24(const ConvertParams &p) {
  const std::vector<Tap> columns = expandGroups(p.inWidth, p.outWidth);
  const std::vector<Tap> lines = expandGroups(p.inHeight, p.outHeight);
  const int rotation = p.rotation == 3 || p.rotation == 4 ? static_cast<int>(p.rotation) : 2;
  for (int y = 0; y < p.outHeight; ++y) {
    const Tap &line = lines.at(static_cast<std::size_t>(y));
    for (int x = 0; x < p.outWidth; ++x) {
      const Tap &column = columns.at(static_cast<std::size_t>(x));
      const uint8_t *s = p.inBuf[0] + std::ptrdiff_t{line.index} * p.inStride + std::ptrdiff_t{3} * column.index;
      std::array<int, 3> bgr{};
      for (std::size_t i = 0; i < 3; ++i) {
        bgr[i] = weighted(s + i, p.inStride, 3, {column.self, column.next}, {line.self, line.next}) >> 20;
      }
      storeWord(placeOf(p.outBuf[0], p.outStride, p.outWidth, p.outHeight, rotation, x, y),
                pack888(bgr[2], bgr[1], bgr[0]));
    }
  }
}

} // namespace reference::resize
