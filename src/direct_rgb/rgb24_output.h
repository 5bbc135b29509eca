// 24-bit RGB output at the same size, from planar and from packed YUV.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Planar input: upright, or flipped for rotation 6; quarter and half turns are not applied.
void convertYuvToRgb24(const Job &job);
void convertMbYuvToRgb24(const Job &job);
void convertFlippedYuvToRgb24(const Job &job);

/// Packed 4:2:2 input: upright or turned; every line keeps its own chroma.
void convertPacked422ToRgb24(const Job &job);

} // namespace zqcc
