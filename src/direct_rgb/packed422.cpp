#include "direct_rgb/packed422.h"

#include "kernels/layouts.h"

namespace zqcc {
namespace {

/// Both lines of a pair take the upper line's chroma, although 4:2:2 has its own for each: the lower line's U and V are
/// never read.
template <uint32_t variant, Turn turn>
constexpr Tile kKernel = kTile<typename Packed422UpperChroma<variant>::Layout, MatrixDither<turn>, turn>;

/// Where the turned picture lies.
Target targetFor(const ConvertParams &p, Turn turn) {
  Target target{};
  withTurn<Turn::Upright, Turn::Left, Turn::Right, Turn::Half>(
      turn, [&](auto known) { target = blockTargetOf<known>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight); });
  return target;
}

} // namespace

#define PACKED_ROW(variant)                                                                                            \
  {                                                                                                                    \
    kKernel<variant, Turn::Upright>, kKernel<variant, Turn::Left>, kKernel<variant, Turn::Right>,                      \
        kKernel<variant, Turn::Half>                                                                                   \
  }
constexpr Tile PACKED_KERNELS[kPackedVariants][4] = {PACKED_ROW(0), PACKED_ROW(1), PACKED_ROW(2), PACKED_ROW(3),
                                                     PACKED_ROW(4), PACKED_ROW(5), PACKED_ROW(6), PACKED_ROW(7)};
#undef PACKED_ROW

void convertPacked422ToRgb565(const Job &job) {
  const ConvertParams &p = job.params;
  const Turn turn = turnOf(p.rotation);
  const PlaneView view = packedView(p, p.outWidth, p.outHeight, packedLayout(job.packedVariant), 0, true);
  runTileInBlocks(job, PACKED_KERNELS[job.packedVariant][kPackedColumns[turn]], view, targetFor(p, turn),
                  {0, 0, p.outWidth, p.outHeight});
}

} // namespace zqcc
