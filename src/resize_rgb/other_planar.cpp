#include "resize_rgb/other_planar.h"

#include "resize_rgb/tile.h"

namespace zqcc {
namespace {

template <class Chroma>
constexpr ResizeKernel kYuv = resizeTile<YuvSource<Chroma, Bilinear>, Turn::Upright>;

constexpr ResizeKernel resizeBlockYuv444ToRgb565 = kYuv<FullChroma>;
constexpr ResizeKernel resizeBlockYuv440ToRgb565 = kYuv<HalfHeightChroma>;
constexpr ResizeKernel resizeBlockYuv411ToRgb565 = kYuv<QuarterWidthChroma>;
constexpr ResizeKernel resizeBlockYuvQuarterHeightToRgb565 = kYuv<QuarterHeightChroma>;

template <Turn turn>
constexpr ResizeKernel resizeBlockPlanarRgbToRgb565 = resizeTile<RgbSource<1>, turn>;

template <class Planes, Turn turn>
void resizeWith(const Job &job, ResizeKernel kernel) {
  const ConvertParams &p = job.params;
  resizeBlocks<turn>(job, Planes::view(p, p.inWidth, p.inHeight), kernel);
}

template <Turn turn>
void resizePlanarRgb(const Job &job) {
  resizeWith<Yuv444, turn>(job, resizeBlockPlanarRgbToRgb565<turn>);
}

} // namespace

void resizeYuv444ToRgb565(const Job &job) {
  resizeWith<Yuv444, Turn::Upright>(job, resizeBlockYuv444ToRgb565);
}
void resizeYuv440ToRgb565(const Job &job) {
  resizeWith<Yuv440, Turn::Upright>(job, resizeBlockYuv440ToRgb565);
}
void resizeYuv411ToRgb565(const Job &job) {
  resizeWith<Yuv411, Turn::Upright>(job, resizeBlockYuv411ToRgb565);
}
void resizeYuvQuarterHeightToRgb565(const Job &job) {
  resizeWith<YuvQuarterHeight, Turn::Upright>(job, resizeBlockYuvQuarterHeightToRgb565);
}

void resizePlanarRgbToRgb565(const Job &job) {
  resizePlanarRgb<Turn::Upright>(job);
}
void resizePlanarRgbToRgb565Rot3(const Job &job) {
  resizePlanarRgb<Turn::Left>(job);
}
void resizePlanarRgbToRgb565Rot4(const Job &job) {
  resizePlanarRgb<Turn::Right>(job);
}
void resizePlanarRgbToRgb565Rot5(const Job &job) {
  resizePlanarRgb<Turn::Half>(job);
}

} // namespace zqcc
