// libyuv by its row functions: a line at a time through ARGB in the first-level cache, which is how its own fastest
// functions work inside, for all the layouts and placements that it has no such function for.
#pragma once

#include "frame.h"

#include <libyuv/row.h>

#include <cstdint>
#include <vector>

namespace bench::yuv {

/// What the samples of a line look like to a row function.
enum class RowKind { I422, I444, I411, Nv12, Nv21, Yuy2, Uyvy, PlanarRgb, Rgb24, None };

/// A picture as row functions read it: line y has its chroma in line y >> chromaShift.
struct RowPicture {
  RowKind kind = RowKind::None;
  int32_t chromaShift = 0;
  bool swapsChroma = false; ///< V where the kind has U
  bool swapsLuma = false;   ///< the second pixel of a macropixel first
  View view{};
};

RowPicture rowPicture(const View &view);

/// Whether the processor has the vector instructions that the rows are written for.
bool haveRows();

/// Makes lines of RGB565, RGB24 or four bytes a pixel from lines of a kind.
class RowConverter {
public:
  RowConverter(const RowPicture &shape, int32_t outType, bool mirrored);
  void line(const RowPicture &from, int32_t y, uint8_t *to);

private:
  void toArgb(const RowPicture &from, int32_t y, uint8_t *to);
  const uint8_t *packedLine(const RowPicture &from, int32_t y);

  int32_t width_;
  int32_t outType_;
  bool mirrored_;
  std::vector<uint8_t> argb_, other_, u_, v_;
  const libyuv::YuvConstants &constants_;
};

} // namespace bench::yuv
