// What each one-shot function hands to set-up and dispatch: type checks, sizes, strides and plane addresses, worked out
// from the arguments alone.
#pragma once

#include "zqColorConversion.h"

namespace reference {

/// A code other than CC_OK is the function's answer before anything is converted.
struct OneShot {
  uint32_t code = CC_OK;
  ConvertParams params{};
  int cropped = 0; ///< bytes of each input line in front of the picture's, where types stay equal
};

struct Buffers {
  const uint8_t *input;
  uint8_t *output;
};

struct Size {
  int32_t width;
  int32_t height;
};

/// A part of a picture; `picture` is the whole one.
struct Crop {
  Size picture;
  int32_t left;
  int32_t top;
  Size part;
};

/// Place in a 16-bit picture whose lines are `stridePixels` long.
struct Place {
  int32_t stridePixels;
  int32_t left;
  int32_t top;
};

OneShot scaleFrame(Buffers buffers, Size in, Size out, int32_t type, int32_t antiAlias);
OneShot scaleCroppedFrame(Buffers buffers, const Crop &crop, Size out, int32_t type, int32_t antiAlias);
OneShot rotateFrame(Buffers buffers, Size in, int32_t dimensionA, int32_t dimensionB, int32_t type, int32_t rotation);
OneShot rotateCroppedFrame(Buffers buffers, const Crop &crop, int32_t dimensionA, int32_t dimensionB, int32_t type,
                           int32_t rotation);
OneShot colorConvert(Buffers buffers, int32_t inType, int32_t outType, Size size, int32_t inStride);
/// `crop.picture.width` is the input stride in bytes.
OneShot yuv420PlanarToRgb16(Buffers buffers, const Crop &crop, Place place, int32_t rotation);
/// `crop.picture.width` is the input stride in pixels; `crop.left` counts bytes.
OneShot packed422ToRgb16(Buffers buffers, int32_t inType, const Crop &crop, Place place, int32_t rotation);
/// Semi-planar input of type 11 or 35; `crop.picture.width` is the input stride in bytes.
OneShot semiPlanarToRgb16(Buffers buffers, int32_t inType, const Crop &crop, Place place, int32_t rotation);

} // namespace reference
