// What the reference conversions with resizing share: a frame whose planes have been put in order, the place of an
// output pixel, and what the pixels are made of. Internal to tests/reference.
#pragma once

#include "reference/colour_arith.h"
#include "reference/plane.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference::resize {

/// Layout is the type whose arrangement the planes have after semi-planar chroma has been separated, the planes of
/// types 12 and 13 exchanged and turned input turned. planes[1] is always U (or green), planes[2] V (or blue).
struct Frame {
  int layout = 0;
  int width = 0, height = 0;
  std::ptrdiff_t stride = 0;
  std::array<Plane, 3> planes;
  std::array<std::vector<uint8_t>, 3> scratch;
  int outWidth = 0, outHeight = 0;
  std::ptrdiff_t outStride = 0;
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

void resizeBlocks(const Frame &frame);                           ///< planar to 16-bit RGB, plain
void resizeFiltered(const Frame &frame);                         ///< planar to 16-bit RGB, quality 1..3
void resizeRunLength(const Frame &frame, const Colour &colour);  ///< planar to RGB24
void resizePacked(const ConvertParams &p, const Colour &colour); ///< packed 4:2:2 to 16-bit RGB and RGB24
void resizeRgb24(const ConvertParams &p);                        ///< RGB24 to 16-bit RGB

} // namespace reference::resize
