// What zqPicture is asked to do with every frame, as the command line says it.
#pragma once

#include "frame.h"
#include "zqPicture.h"

#include <optional>

namespace zqconvert {

struct MatrixChoice {
  ZqpMatrix matrix = ZQP_BT601;
  float kr = 0; ///< Of ZQP_MATRIX_GIVEN.
  float kb = 0;
};

/// What is said of a picture's numbers; nothing: what the stream says, or what is usual.
struct ColourChoice {
  std::optional<MatrixChoice> matrix;
  std::optional<Range> range;
  std::optional<Siting> siting;
};

struct PictureRequest {
  int outType = 0;
  ColourChoice in;
  ColourChoice out;
  /// Of the finished picture. One side may be -N: as the other one asks for, a multiple of N.
  std::optional<Size> scale;
  std::optional<Rectangle> crop;
  int orientation = 1; ///< EXIF's, as zqPicture counts them.
  ZqpFilter filter = ZQP_FILTER_BILINEAR;
  ZqpDither dither = ZQP_DITHER_NONE;
  int threads = 1;
};

/// Whether the orientation exchanges width and height.
constexpr bool isQuarterTurn(int orientation) {
  return orientation >= 5;
}

} // namespace zqconvert
