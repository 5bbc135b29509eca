// Where the planes of a one-shot call lie in its two buffers. Nothing is refused here but types and lengths of lines; a
// part that leaves its picture still gets addresses, which are not used.
#pragma once

#include "zqColorConversion.h"

#include <cstdint>
#include <limits>

namespace zqcc {

/// A part of a picture: the picture's line length and lines, and where the part starts. Columns are pixels, or bytes
/// where the function counts those.
struct Crop {
  int32_t pictureWidth;
  int32_t pictureHeight;
  int32_t left;
  int32_t top;
};

/// Only the function knows the whole picture, so only it can tell that a part leaves it. What sizes below 1 mean is
/// dispatch's to say.
bool isInside(const Crop &crop, int64_t width, int64_t height);

/// Marks a line that is too long for a stride.
inline constexpr int32_t kNoStride = std::numeric_limits<int32_t>::min();

/// Bytes of a line, or kNoStride.
int32_t strideOf(int32_t bytesPerPixel, int32_t pixels);

// Each sets a side's stride and planes from the buffer that holds them.

/// Planar 4:2:0; the chroma of a crop is exact for even tops only.
void placeInput420(ConvertParams &p, const uint8_t *input, int32_t stride, const Crop &crop);
void placeInputSemiPlanar(ConvertParams &p, const uint8_t *input, int32_t stride, const Crop &crop);
/// Two bytes a pixel, lines tight.
void placeInputTwoBytes(ConvertParams &p, const uint8_t *input, const Crop &crop);
/// As placeInputTwoBytes with the crop's columns in bytes; its picture is as wide as the stride.
void placeInputBytes(ConvertParams &p, const uint8_t *input, const Crop &crop);
/// A whole picture by its type, false for a type that has no place here. The stride is set already.
bool placeConvertInput(ConvertParams &p, const uint8_t *input);

void placeOutput420(ConvertParams &p, uint8_t *output, int32_t lineLength, int32_t lines);
void placeOutput(ConvertParams &p, uint8_t *output, int32_t bytesPerPixel, int32_t lineLength);
/// At a place in a larger picture.
void placeOutputRgb565(ConvertParams &p, uint8_t *output, int32_t stridePixels, int32_t left, int32_t top);
/// A whole picture by its type, false for a type that has no place here.
bool placeConvertOutput(ConvertParams &p, uint8_t *output);

} // namespace zqcc
