#include "direct_rgb/macroblock.h"

#include "kernels/layouts.h"

namespace zqcc {
namespace {

// 4:2:0 saturates at two precisions: see StudioVideoRange.
constexpr Tile convertEdgeBlockToRgb565 = kStrip<Yuv420::Layout, StudioVideoRange, Turn::Upright>;
constexpr Tile convertFullBlockToRgb565 = kTile<Yuv420::Layout, StudioSixBit, Turn::Upright>;
constexpr Tile convertBlockToRgb24 = kTile24<Yuv420::Layout, StudioQ12, Turn::Upright>;

/// The other chroma layouts differ between edge and full in where their dither offsets come from.
template <class Source>
constexpr MbKernelPair kDithered{kStrip<typename Source::Layout, MatrixDitherWords, Turn::Upright>,
                                 kTile<typename Source::Layout, MatrixDither<Turn::Upright>, Turn::Upright>};

constexpr MbKernelPair kSemiPlanar{kStrip<SemiPlanar420::Layout, StudioVideoRange, Turn::Upright>,
                                   kTile<SemiPlanar420::Layout, StudioSixBit, Turn::Upright>};

constexpr Tile packPlanes = kTile<Yuv444::Layout, PackRgb, Turn::Upright>;

template <class Source>
void convertWith(const Job &job, const MbKernelPair &kernels) {
  const ConvertParams &p = job.params;
  convertMacroblocks(job, Source::view(p, p.outWidth, p.outHeight), kernels);
}

} // namespace

constexpr MbKernelPair MB_KERNELS[MB_PAIR_COUNT] = {
    {convertBlockToRgb24, convertBlockToRgb24},
    {convertEdgeBlockToRgb565, convertFullBlockToRgb565},
    kDithered<Yuv444>,
    kDithered<Yuv440>,
    kDithered<Yuv411>,
    kDithered<YuvQuarterHeight>,
    {packPlanes, packPlanes},
};

void convertMacroblocks(const Job &job, const PlaneView &view, const MbKernelPair &kernels) {
  const ConvertParams &params = job.params;
  const int32_t width = params.outWidth;
  const int32_t height = params.outHeight;
  const Target target{params.outBuf[0], params.outStride};
  const Rect full{0, 0, width & ~15, height & ~15};
  const Rect right{full.right, 0, width, full.bottom};
  const Rect bottom{0, full.bottom, width, height};
  // Block order does not show in the picture, so whole lines of blocks are converted at once.
  if (!isEmpty(full)) {
    runTile(job, kernels.full, view, target, full);
  }
  if (!isEmpty(right)) {
    runTile(job, kernels.edge, view, target, right);
  }
  if (!isEmpty(bottom)) {
    runTile(job, kernels.edge, view, target, bottom);
  }
}

void convertMbYuv420ToRgb565(const Job &job) {
  if (readsPairs(job)) {
    convertWith<SemiPlanar420>(job, kSemiPlanar);
  } else if (job.isYuv420) {
    convertWith<Yuv420>(job, MB_KERNELS[MB_YUV420]);
  } else {
    convertWith<Yuv422EvenLines>(job, MB_KERNELS[MB_YUV420]);
  }
}

void convertMbYuv444ToRgb565(const Job &job) {
  convertWith<Yuv444>(job, MB_KERNELS[MB_YUV444]);
}
void convertMbYuv440ToRgb565(const Job &job) {
  convertWith<Yuv440>(job, MB_KERNELS[MB_YUV440]);
}
void convertMbYuv411ToRgb565(const Job &job) {
  convertWith<Yuv411>(job, MB_KERNELS[MB_YUV411]);
}
void convertMbYuvQuarterHeightToRgb565(const Job &job) {
  convertWith<YuvQuarterHeight>(job, MB_KERNELS[MB_QUARTER_HEIGHT]);
}
void convertMbPlanarRgbToRgb565(const Job &job) {
  convertWith<Yuv444>(job, MB_KERNELS[MB_PLANAR_RGB]);
}

} // namespace zqcc
