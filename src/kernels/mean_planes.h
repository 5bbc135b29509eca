// The planes of a frame as filtered resizing reads them.
#pragma once

#include "base/job.h"
#include "base/limits.h"
#include "base/picture_shape.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// A plane and how much of it the means may take: columns and lines below the limits. The column limit can lie behind
/// the samples of a line: what stands there (padding, or the next line) is then part of the mean. Table entries end at
/// the picture's width, and where the limit lies behind a plane's last sample the width does not, so that nothing
/// behind a plane is read. Every line has bytes for as many columns, or for as many as the picture is wide if that is
/// less.
struct MeanPlane {
  const uint8_t *samples;
  std::ptrdiff_t stride;
  int32_t limitX;
  int32_t limitY;
  int32_t readable; ///< columns that every line has
};

/// Luma's columns end at the stride, not at the width, and so do those of planes as large as luma's. Subsampled
/// chroma's end at its samples, or at the pitch if that is less; but 4:2:2 is read at the pitch of two lines and its
/// columns end there.
struct MeanPlanes {
  MeanPlane planes[3];

  explicit MeanPlanes(const ConvertParams &p) {
    const ChromaShape shape = chromaShape(p.inType, p.inWidth, p.inHeight, p.inStride);
    const bool isFullSize = shape.columns == p.inWidth && shape.lines == p.inHeight;
    MeanPlane chroma{nullptr, shape.pitch, isFullSize ? p.inStride : smaller(shape.columns, shape.pitch), shape.lines,
                     0};
    if (isPlanar422(p.inType)) {
      chroma.stride = std::ptrdiff_t{shape.pitch} * 2;
      chroma.limitX = shape.pitch * 2;
      chroma.limitY = p.inHeight / 2;
    }
    planes[0] = {nullptr, p.inStride, p.inStride, p.inHeight, 0};
    planes[1] = planes[2] = chroma;
    for (int i = 0; i < 3; ++i) {
      planes[i].samples = p.inBuf[i];
      planes[i].readable = smaller(planes[i].limitX, p.inWidth);
    }
  }
};

} // namespace zqcc
