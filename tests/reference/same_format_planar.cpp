// Planar 4:2:0: three planes, each on its own; the chroma planes reuse the first half of the luma's positions.
#include "reference/same_format_detail.h"

namespace reference::detail {

namespace {

struct Plane {
  Source in;
  Target out;
  int width;  ///< Output samples along the source's lines.
  int height; ///< Output samples across them.
  bool chroma;
};

Plane planeOf(const ConvertParams &p, int index) {
  const int halving = index == 0 ? 0 : 1;
  return {{p.inBuf[index], p.inStride >> halving, p.inWidth >> halving, p.inHeight >> halving},
          {p.outBuf[index], p.outStride >> halving},
          p.outWidth >> halving,
          p.outHeight >> halving,
          index != 0};
}

template <typename Fetch>
void fillUpright(const Plane &plane, const Fetch &fetch) {
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < plane.width; ++x) {
      *plane.out.sample(x, y) = static_cast<uint8_t>(fetch(x, y));
    }
  }
}

/// The turns without resizing work on packed planes whatever the strides say.
void turnTight(const Plane &plane, uint32_t rotation) {
  const int w = plane.in.columns;
  const int h = plane.in.lines;
  const Target out{plane.out.bytes, rotation == ROTATION_180 ? w : h};
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const uint8_t value = plane.in.bytes[y * w + x];
      uint8_t *place =
          rotation == ROTATION_180 ? out.sample(w - 1 - x, h - 1 - y) : placeTurned(out, rotation, x, y, w, h);
      *place = value;
    }
  }
}

void resizeTurned(const Plane &plane, const std::vector<int32_t> &xs, const std::vector<int32_t> &ys,
                  uint32_t rotation) {
  for (int y = 0; y < plane.height; ++y) {
    for (int x = 0; x < plane.width; ++x) {
      const int value = plane.in(xs[slot(x)], ys[slot(y)]);
      // The half turn mirrors about the line pitch, not about the width.
      uint8_t *place = rotation == ROTATION_180 ? plane.out.sample(plane.out.pitch - 1 - x, plane.height - 1 - y)
                                                : placeTurned(plane.out, rotation, x, y, plane.width, plane.height);
      *place = static_cast<uint8_t>(value);
    }
  }
}

void resizeBilinear(const Plane &plane, const std::vector<Tap> &xs, const std::vector<Tap> &ys) {
  const int lastColumn = plane.in.columns - 1;
  const int lastLine = plane.in.lines - 1;
  fillUpright(plane, [&](int x, int y) {
    Tap column = xs[slot(x)];
    Tap line = ys[slot(y)];
    if (plane.chroma && column.at >= lastColumn) {
      column = {lastColumn - 1, 512, 512};
    }
    if (plane.chroma && line.at >= lastLine) {
      line.at = lastLine - 1; // the weights stay
    }
    return bilinear(plane.in, column, line);
  });
}

Tap insideChroma(const Tap &tap, int samples) {
  return tap.at >= samples - 1 ? Tap{samples - 2, 512, 512} : tap;
}

void resizeFiltered(const Plane &plane, const std::vector<FiveTaps> &xs, const std::vector<FiveTaps> &ys) {
  fillUpright(plane, [&](int x, int y) {
    int sum = 0;
    for (std::size_t k = 0; k < 5; ++k) {
      Tap column = xs[slot(x)][k];
      Tap line = ys[slot(y)][k];
      if (plane.chroma) {
        column = insideChroma(column, plane.in.columns);
        line = insideChroma(line, plane.in.lines);
      }
      sum += bilinear(plane.in, column, line);
    }
    return sum / 5;
  });
}

void convertPlane(const ConvertParams &p, const Plane &plane) {
  const bool turned = quarterTurn(p) || p.rotation == ROTATION_180;
  if (p.isResize == 0 && turned) {
    turnTight(plane, p.rotation);
  } else if (p.isResize == 0) {
    fillUpright(plane, [&](int x, int y) { return plane.in.bytes[std::ptrdiff_t{y} * plane.in.pitch + x]; });
  } else if (turned) {
    resizeTurned(plane, nearestPositions(p.inWidth, p.outWidth), nearestPositions(p.inHeight, p.outHeight), p.rotation);
  } else if (p.antiAlias == 0) {
    resizeBilinear(plane, bilinearPositions(p.inWidth, p.outWidth), bilinearPositions(p.inHeight, p.outHeight));
  } else {
    resizeFiltered(plane, filteredPositions(p.inWidth, p.outWidth, p.antiAlias, Axis::Horizontal),
                   filteredPositions(p.inHeight, p.outHeight, p.antiAlias, Axis::Vertical));
  }
}

} // namespace

void convertPlanar(const ConvertParams &p) {
  for (int index = 0; index < 3; ++index) {
    convertPlane(p, planeOf(p, index));
  }
}

} // namespace reference::detail
