#include "direct_rgb/rotated.h"

#include "base/picture_shape.h"
#include "direct_rgb/macroblock.h"
#include "kernels/layouts.h"
#include "vector/tile.h"

namespace zqcc {
namespace {

/// A turned conversion covers what it can with whole 16 x 16 blocks; the right and bottom strips that remain go through
/// another arithmetic. Pictures smaller than a block in either direction are one bottom strip.
struct Regions {
  Rect blocks;
  Rect rightStrip;
  Rect bottomStrip;
};

Regions regionsOf(int32_t width, int32_t height) {
  const bool anyBlock = width >= 16 && height >= 16;
  const int32_t coveredWidth = anyBlock ? width & ~15 : 0;
  const int32_t coveredHeight = anyBlock ? height & ~15 : 0;
  return {
      {0, 0, coveredWidth, coveredHeight}, {coveredWidth, 0, width, coveredHeight}, {0, coveredHeight, width, height}};
}

/// The right strip of the right turn is placed from the end of each output line, that of the half turn from its start:
/// the reverse of where the blocks are placed. It shows with strides longer than the picture only.
template <Turn turn>
Target rightStripTarget(const ConvertParams &p) {
  if constexpr (turn == Turn::Right) {
    return {p.outBuf[0] + p.outStride - 2, p.outStride};
  }
  return targetOf<turn, 2>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
}

struct TurnedKernels {
  Tile block;
  Tile strip;
};

template <Turn turn>
void convertRegions(const Job &job, const PlaneView &blockView, const PlaneView &stripView,
                    const TurnedKernels &kernels) {
  const ConvertParams &p = job.params;
  const Regions regions = regionsOf(p.outWidth, p.outHeight);
  const Target target = blockTargetOf<turn>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight);
  runTileInBlocks(job, kernels.block, blockView, target, regions.blocks);
  runTileInBlocks(job, kernels.strip, stripView, rightStripTarget<turn>(p), regions.rightStrip);
  runTileInBlocks(job, kernels.strip, stripView, target, regions.bottomStrip);
}

/// BlockSource and StripSource differ for 4:2:2, whose blocks read every second chroma line and whose strips read all.
template <class BlockSource, class StripSource, class BlockArithmetic, class StripArithmetic, Turn turn>
void convertTurned(const Job &job) {
  const ConvertParams &p = job.params;
  constexpr TurnedKernels kernels{kTile<typename BlockSource::Layout, BlockArithmetic, turn>,
                                  kStrip<typename StripSource::Layout, StripArithmetic, turn>};
  convertRegions<turn>(job, BlockSource::view(p, p.outWidth, p.outHeight),
                       StripSource::view(p, p.outWidth, p.outHeight), kernels);
}

template <class BlockSource, class StripSource, class BlockArithmetic, class StripArithmetic>
void convertRotated(const Job &job) {
  withTurn<Turn::Left, Turn::Right, Turn::Half>(turnOf(job.params.rotation), [&job](auto turn) {
    convertTurned<BlockSource, StripSource, BlockArithmetic, StripArithmetic, turn>(job);
  });
}

template <class BlockSource, class StripSource>
void convertRotatedYuv(const Job &job) {
  convertRotated<BlockSource, StripSource, StudioSixBit, StudioFiveSix>(job);
}

template <class Source, class Arithmetic>
void convertFlipped(const Job &job) {
  const ConvertParams &p = job.params;
  const PictureSize planes = planesSize(p);
  runTile(job, kTile<typename Source::Layout, Arithmetic, Turn::Flip>, Source::view(p, planes.width, planes.height),
          targetOf<Turn::Flip, 2>(p.outBuf[0], p.outStride, p.outWidth, p.outHeight), {0, 0, p.outWidth, p.outHeight});
}

/// The dither of a flip follows the source lines.
using FlipDither = MatrixDither<Turn::Upright>;

} // namespace

void convertRotatedMbYuv420ToRgb565(const Job &job) {
  if (readsPairs(job)) {
    convertRotatedYuv<SemiPlanar420, SemiPlanar420>(job);
  } else if (job.isYuv420) {
    convertRotatedYuv<Yuv420, Yuv420>(job);
  } else {
    convertRotatedYuv<Yuv422EvenLines, Yuv422>(job);
  }
}

void convertRotatedMbYuv444ToRgb565(const Job &job) {
  convertRotatedYuv<Yuv444, Yuv444>(job);
}
void convertRotatedMbYuv440ToRgb565(const Job &job) {
  convertRotatedYuv<Yuv440, Yuv440>(job);
}
void convertRotatedMbYuv411ToRgb565(const Job &job) {
  convertRotatedYuv<Yuv411, Yuv411>(job);
}
void convertRotatedMbYuvQuarterHeightToRgb565(const Job &job) {
  convertRotatedYuv<YuvQuarterHeight, YuvQuarterHeight>(job);
}

void convertRotatedPlanarRgbToRgb565(const Job &job) {
  convertRotated<Yuv444, Yuv444, PackRgb, PackRgb>(job);
}

void convertFlippedYuv420ToRgb565(const Job &job) {
  if (readsPairs(job)) {
    convertFlipped<SemiPlanar420, FlipDither>(job);
  } else if (job.isYuv420) {
    convertFlipped<Yuv420, FlipDither>(job);
  } else {
    convertFlipped<Yuv422As420, FlipDither>(job);
  }
}

void convertFlippedYuv444ToRgb565(const Job &job) {
  convertFlipped<Yuv444, FlipDither>(job);
}
void convertFlippedYuv440ToRgb565(const Job &job) {
  convertFlipped<Yuv440, FlipDither>(job);
}
void convertFlippedYuv411ToRgb565(const Job &job) {
  convertFlipped<Yuv411, FlipDither>(job);
}
void convertFlippedYuvQuarterHeightToRgb565(const Job &job) {
  convertFlipped<YuvQuarterHeight, FlipDither>(job);
}
void convertFlippedPlanarRgbToRgb565(const Job &job) {
  convertFlipped<Yuv444, PackRgb>(job);
}

} // namespace zqcc
