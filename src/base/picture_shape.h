// What the planes of a picture hold, by colour type: the knowledge that validation and the converters share.
#pragma once

#include "zqColorConversion.h"

#include <cstdint>

namespace zqcc {

/// Samples of a chroma plane (the green and blue planes of planar RGB count as such): columns, lines and pitch.
struct ChromaShape {
  int32_t columns;
  int32_t lines;
  int32_t pitch;
};

/// Shape of the second and third plane of a planar type, or of the scratch planes of a semi-planar one; zeros for types
/// without such planes.
ChromaShape chromaShape(int32_t type, int32_t width, int32_t height, int32_t stride);

struct PictureSize {
  int32_t width;
  int32_t height;
};

/// Size of the picture that the input planes hold. Without resizing the output fields say it. A frame that asks for
/// resizing names its input's size, and a routine that does not scale then cuts a part out of planes that go on.
constexpr PictureSize planesSize(const ConvertParams &p) {
  return p.isResize == 1 ? PictureSize{p.inWidth, p.inHeight} : PictureSize{p.outWidth, p.outHeight};
}

/// Bytes from the first to the last sample of a chroma plane.
int64_t chromaPlaneBytes(int32_t type, int32_t width, int32_t height, int32_t stride);

/// Last chroma line and column of a plane.
struct ChromaLimits {
  int32_t line;
  int32_t column;
};

/// Readers that take every planar type for 4:2:0 or 4:2:2 step through its chroma planes by half the luma stride and
/// read w/2 samples a line. These are the last line that lies wholly inside the plane that way (the first if none does)
/// and the last column; a plane too short for one such line ends the line early.
ChromaLimits halfPitchLimits(int32_t type, int32_t width, int32_t height, int32_t stride);

constexpr bool isPacked422(int32_t type) {
  return (type >= 6 && type <= 9) || (type >= 14 && type <= 17);
}
constexpr bool isSemiPlanar(int32_t type) {
  return type == COLOR_YUV420_PACK || type == COLOR_YUV420_PACK2;
}
constexpr bool isRgb16(int32_t type) {
  return type == COLOR_RGB565 || type == COLOR_RGB16_ALT;
}
constexpr bool isPlanar420(int32_t type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR;
}
constexpr bool isPlanar422(int32_t type) {
  return type == COLOR_YUV422_PLANAR || type == COLOR_YVU422_PLANAR;
}

/// Types with three planes of their own.
constexpr bool isPlanar(int32_t type) {
  return isPlanar420(type) || isPlanar422(type) || type == COLOR_YUV444_PLANAR || type == COLOR_YUV440_PLANAR ||
         type == COLOR_YUV411_PLANAR || type == COLOR_YUV_QUARTER_HEIGHT || type == COLOR_RGB888_PLANAR;
}

/// The planar types whose chroma is neither 4:2:0 nor 4:2:2.
constexpr bool isOtherChroma(int32_t type) {
  return type == COLOR_YUV444_PLANAR || type == COLOR_YUV440_PLANAR || type == COLOR_YUV411_PLANAR ||
         type == COLOR_YUV_QUARTER_HEIGHT;
}

/// 0..7 for types 6..9 and 14..17.
constexpr uint32_t packedVariantOf(int32_t type) {
  return static_cast<uint32_t>(type <= 9 ? type - 6 : type - 10);
}

} // namespace zqcc
