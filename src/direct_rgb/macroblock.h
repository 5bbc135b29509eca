// Same-size conversion without a turn: whole 16 x 16 blocks go through a full kernel, blocks cut by the right or bottom
// edge through an edge kernel.
#pragma once

#include "base/job.h"
#include "vector/tile.h"

namespace zqcc {

/// Kernels of a source: `edge` for blocks smaller than 16 x 16, `full` for whole ones. They may differ in saturation
/// and dither, which is intended: the same pixel can come out one step apart in an edge block.
struct MbKernelPair {
  Tile edge;
  Tile full;
};

enum MbPair : unsigned {
  MB_RGB24,
  MB_YUV420,
  MB_YUV444,
  MB_YUV440,
  MB_YUV411,
  MB_QUARTER_HEIGHT,
  MB_PLANAR_RGB,
  MB_PAIR_COUNT
};

extern const MbKernelPair MB_KERNELS[MB_PAIR_COUNT];

/// Bytes of the described output, upright, from a view of the input.
void convertMacroblocks(const Job &job, const PlaneView &view, const MbKernelPair &kernels);

void convertMbYuv420ToRgb565(const Job &job);
void convertMbYuv444ToRgb565(const Job &job);
void convertMbYuv440ToRgb565(const Job &job);
void convertMbYuv411ToRgb565(const Job &job);
void convertMbYuvQuarterHeightToRgb565(const Job &job);
void convertMbPlanarRgbToRgb565(const Job &job);

} // namespace zqcc
