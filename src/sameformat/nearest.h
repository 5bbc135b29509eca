// Resizing one plane by picking the nearest sample, upright and turned.
//
// Tables hold one word a position: the source column or line. They are built for the full picture; a half-size plane
// reads their first halves, where the last entries may point past its end and take its last sample. In the turned
// kernels `width` counts along the source's lines and `height` across them: the result is height samples wide and width
// lines high.
#pragma once

#include "base/turn.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// A plane and the tables that pick from it.
struct NearestSource {
  const uint8_t *samples;
  std::ptrdiff_t pitch;
  int32_t lastColumn; ///< in units of what is picked: samples or chroma pairs
  int32_t lastLine;
  const int32_t *xTable;
  const int32_t *yTable;
  int32_t lastSecond = 0; ///< chroma pairs: the last one that has its second byte
};

/// Quarter turn.
void resizeRotatePlane(Turn turn, const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                       std::ptrdiff_t dstPitch);

/// As resizeRotatePlane for interleaved chroma: columns, widths and heights count two-byte pairs.
void resizeRotateChromaPairs(Turn turn, const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                             std::ptrdiff_t dstPitch);

/// Half turn, mirrored about the end of the destination's pitch: with a pitch wider than the picture, the picture lies
/// at the right end of its lines.
void resizeRotate180Plane(const NearestSource &src, uint8_t *dst, int32_t width, int32_t height,
                          std::ptrdiff_t dstPitch);

} // namespace zqcc
