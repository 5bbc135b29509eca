#include "resize_rgb/other_planar.h"

#include "kernels/layouts.h"
#include "resize_rgb/resize_picture.h"

namespace zqcc {
namespace {

template <class Planes, class Chroma>
void resizeYuv(const Job &job) {
  const ConvertParams &p = job.params;
  resizePicture<YuvSource<Chroma, Bilinear>, TableWeights, Turn::Upright>(job, Planes::view(p, p.inWidth, p.inHeight));
}

template <Turn turn>
void resizePlanarRgb(const Job &job) {
  const ConvertParams &p = job.params;
  resizePicture<RgbSource<1>, TableWeights, turn>(job, Yuv444::view(p, p.inWidth, p.inHeight));
}

} // namespace

void resizeYuv444ToRgb565(const Job &job) {
  resizeYuv<Yuv444, FullChroma>(job);
}
void resizeYuv440ToRgb565(const Job &job) {
  resizeYuv<Yuv440, HalfHeightChroma>(job);
}
void resizeYuv411ToRgb565(const Job &job) {
  resizeYuv<Yuv411, QuarterWidthChroma>(job);
}
void resizeYuvQuarterHeightToRgb565(const Job &job) {
  resizeYuv<YuvQuarterHeight, QuarterHeightChroma>(job);
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
