#include "direct_rgb/rgb24_output.h"

#include "base/picture_shape.h"
#include "direct_rgb/macroblock.h"
#include "kernels/layouts.h"
#include "vector/tile.h"

namespace zqcc {
namespace {

/// Every planar type but 4:2:0 is read as 4:2:2, every second chroma line of half the luma stride, whatever its planes
/// really hold. Where that would leave the plane, the last line that lies wholly inside it is read instead.
PlaneView viewAs422(const ConvertParams &p) {
  PlaneView view = Yuv422EvenLines::view(p, p.outWidth, p.outHeight);
  const ChromaLimits limits = halfPitchLimits(p.inType, p.outWidth, p.outHeight, p.inStride);
  view.lastLine = limits.line;
  view.lastColumn = limits.column;
  return view;
}

PlaneView viewOf(const Job &job) {
  const ConvertParams &p = job.params;
  if (readsPairs(job)) {
    return SemiPlanar420::view(p, p.outWidth, p.outHeight);
  }
  return job.isYuv420 ? Yuv420::view(p, p.outWidth, p.outHeight) : viewAs422(p);
}

constexpr Tile convertPairs = kTile24<SemiPlanar420::Layout, StudioQ12, Turn::Upright>;
constexpr MbKernelPair kSemiPlanar{convertPairs, convertPairs};

template <class Source>
constexpr Tile kFlip = kTile24<typename Source::Layout, MatrixRgb24, Turn::Flip>;

template <bool swapped>
void convertPacked(const Job &job, const PlaneView &view) {
  const ConvertParams &p = job.params;
  withTurn<Turn::Upright, Turn::Left, Turn::Right, Turn::Half>(turnOf(p.rotation), [&](auto turn) {
    runTileInBlocks(job, kTile24<typename Packed422<swapped>::Layout, MatrixRgb24, turn>, view,
                    targetOf<turn, 3>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight),
                    {0, 0, p.outWidth, p.outHeight});
  });
}

} // namespace

void convertYuvToRgb24(const Job &job) {
  if (turnOf(job.params.rotation) == Turn::Flip) {
    convertFlippedYuvToRgb24(job);
  } else {
    convertMbYuvToRgb24(job);
  }
}

void convertMbYuvToRgb24(const Job &job) {
  convertMacroblocks(job, viewOf(job), readsPairs(job) ? kSemiPlanar : MB_KERNELS[MB_RGB24]);
}

void convertFlippedYuvToRgb24(const Job &job) {
  const ConvertParams &p = job.params;
  runTile(job, readsPairs(job) ? kFlip<SemiPlanar420> : kFlip<Yuv420>, viewOf(job),
          targetOf<Turn::Flip, 3>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight), {0, 0, p.outWidth, p.outHeight});
}

void convertPacked422ToRgb24(const Job &job) {
  const ConvertParams &p = job.params;
  const PackedLayout layout = packedLayout(job.packedVariant);
  const PlaneView view = packedView(p, p.outWidth, p.outHeight, layout, layout.left, false);
  if (layout.isSwapped()) {
    convertPacked<true>(job, view);
  } else {
    convertPacked<false>(job, view);
  }
}

} // namespace zqcc
