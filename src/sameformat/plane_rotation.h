// Turning one plane of 8-bit samples without resampling. Any size; every sample is mapped and nothing else is written.
// `levels` is the vector code that may run.
#pragma once

#include "base/levels.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Quarter turn anticlockwise: sample (x, y) of a width x height plane goes to column y of line width - 1 - x.
void rotatePlaneLeft(LevelSet levels, const uint8_t *src, uint8_t *dst, int32_t width, int32_t height,
                     std::ptrdiff_t srcPitch, std::ptrdiff_t dstPitch);

/// Quarter turn clockwise: sample (x, y) goes to column height - 1 - y of line x.
void rotatePlaneRight(LevelSet levels, const uint8_t *src, uint8_t *dst, int32_t width, int32_t height,
                      std::ptrdiff_t srcPitch, std::ptrdiff_t dstPitch);

/// @name Tight planes
/// Source lines follow one another without gaps, and so do the result's, whatever `pitch` says: it is there so that
/// every rotator of a frame's planes can be called alike, and is not read.
/// @{
void rotateTightPlaneLeft(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t pitch,
                          uint8_t *dst);
void rotateTightPlaneRight(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t pitch,
                           uint8_t *dst);
/// Half turn: sample (x, y) goes to column width - 1 - x of line height - 1 - y.
void rotateTightPlane180(LevelSet levels, const uint8_t *src, int32_t width, int32_t height, std::ptrdiff_t pitch,
                         uint8_t *dst);
/// @}

} // namespace zqcc
