#include "direct_rgb/packed422.h"

#include <utility>

namespace zqcc {
namespace {

/// Both lines of a pair take the upper line's chroma, although 4:2:2 has its own for each: the lower line's U and V are
/// never read.
template <uint32_t variant, Turn turn>
constexpr TileKernel kKernel = convertTile<typename Packed422UpperChroma<variant>::Layout, MatrixDither<turn>, turn>;

struct Placed {
  PackedTurn column;
  Target target;
};

template <Turn turn>
Target targetFor(const ConvertParams &p) {
  return blockTargetOf<turn>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
}

Placed placementOf(const ConvertParams &p) {
  switch (p.rotation) {
  case ROTATION_90_LEFT:
    return {PACKED_LEFT, targetFor<Turn::Left>(p)};
  case ROTATION_90_RIGHT:
    return {PACKED_RIGHT, targetFor<Turn::Right>(p)};
  case ROTATION_180:
    return {PACKED_HALF, targetFor<Turn::Half>(p)};
  default:
    return {PACKED_UPRIGHT, targetFor<Turn::Upright>(p)};
  }
}

} // namespace

#define PACKED_ROW(variant)                                                                                            \
  {                                                                                                                    \
    kKernel<variant, Turn::Upright>, kKernel<variant, Turn::Left>, kKernel<variant, Turn::Right>,                      \
        kKernel<variant, Turn::Half>                                                                                   \
  }
constexpr TileKernel PACKED_KERNELS[kPackedVariants][PACKED_TURN_COUNT] = {PACKED_ROW(0), PACKED_ROW(1), PACKED_ROW(2),
                                                                           PACKED_ROW(3), PACKED_ROW(4), PACKED_ROW(5),
                                                                           PACKED_ROW(6), PACKED_ROW(7)};
#undef PACKED_ROW

void convertPacked422ToRgb565(const Job &job) {
  const ConvertParams &p = job.params;
  if (p.outWidth <= 0 || p.outHeight <= 0) {
    return;
  }
  const Placed placed = placementOf(p);
  const PlaneView view = packedView(p, p.outWidth, p.outHeight, packedLayout(job.packedVariant), 0, true);
  inBlocks(PACKED_KERNELS[job.packedVariant][placed.column], view, placed.target, {0, 0, p.outWidth, p.outHeight},
           *job.matrix);
}

} // namespace zqcc
