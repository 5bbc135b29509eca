// What the reference conversions with resizing share: a frame whose planes have been put in order, the place of an
// output pixel, and the colour arithmetic. Internal to tests/reference.
#pragma once

#include "reference/colour.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference::resize {

/// A plane of single samples; pitch in bytes.
struct Plane {
  const uint8_t *data = nullptr;
  int pitch = 0;
  int columns = 0;
  int lines = 0;

  /// Offset just behind the last sample.
  [[nodiscard]] int end() const { return (lines - 1) * pitch + columns; }
  /// An index past the last sample takes the last.
  [[nodiscard]] int at(int column, int line) const {
    return data[std::min(line, lines - 1) * pitch + std::min(column, columns - 1)];
  }
};

/// Layout is the type whose arrangement the planes have after semi-planar chroma has been separated, the planes of
/// types 12 and 13 exchanged and turned input turned. planes[1] is always U (or green), planes[2] V (or blue).
struct Frame {
  int layout = 0;
  int width = 0, height = 0, stride = 0;
  std::array<Plane, 3> planes;
  std::array<std::vector<uint8_t>, 3> scratch;
  int outWidth = 0, outHeight = 0, outStride = 0;
  uint8_t *out = nullptr;
  /// 2, 3, 4 or 5: what is left to do after a turned pre-pass.
  int rotation = 2;
  int quality = 0;
};

/// One output position of a grouped table with the position it shares chroma with.
struct Tap {
  int index = 0;     ///< source sample
  int next = 0;      ///< weight of the sample behind it
  int self = 0;      ///< its own weight
  int member = 0;    ///< number within the group
  int pairFirst = 0; ///< source samples of the pair that it belongs to
  int pairSecond = 0;
};
std::vector<Tap> expandGroups(int source, int positions);

inline int32_t wrap(int64_t v) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(v)));
}
inline int32_t multiply(int32_t a, int32_t b) {
  return wrap(static_cast<int64_t>(a) * b);
}

int clip8(int i);
int clip6(int i);
int clip5(int i);

/// Fixed BT.601 with luma 16..235, no matrix and no dither.
uint16_t fixedPixel(int luma, int u, int v);

/// Terms that the current matrix adds to (red, blue) or takes from (green) the luma; u and v are the samples.
struct Terms {
  int red = 0, green = 0, blue = 0;
};
Terms matrixTerms(const Colour &colour, int u, int v);

inline void putWord(uint8_t *at, uint16_t word) {
  at[0] = static_cast<uint8_t>(word & 0xFF);
  at[1] = static_cast<uint8_t>(word >> 8);
}

void resizeBlocks(const Frame &frame);                           ///< planar to 16-bit RGB, plain
void resizeFiltered(const Frame &frame);                         ///< planar to 16-bit RGB, quality 1..3
void resizeRunLength(const Frame &frame, const Colour &colour);  ///< planar to RGB24
void resizePacked(const ConvertParams &p, const Colour &colour); ///< packed 4:2:2 to 16-bit RGB and RGB24
void resizeRgb24(const ConvertParams &p);                        ///< RGB24 to 16-bit RGB

} // namespace reference::resize
