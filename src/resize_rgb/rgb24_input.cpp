#include "resize_rgb/rgb24_input.h"

#include "kernels/layouts.h"
#include "resize_rgb/resize_picture.h"

namespace zqcc {
namespace {

template <Turn turn>
void resizeRgb24(const Job &job) {
  const ConvertParams &p = job.params;
  resizePicture<RgbSource<3>, TableWeights, turn>(job, Rgb24Bytes::view(p, p.inWidth, p.inHeight));
}

} // namespace

void resizeRgb24ToRgb565(const Job &job) {
  resizeRgb24<Turn::Upright>(job);
}
void resizeRgb24ToRgb565Left(const Job &job) {
  resizeRgb24<Turn::Left>(job);
}
void resizeRgb24ToRgb565Right(const Job &job) {
  resizeRgb24<Turn::Right>(job);
}

} // namespace zqcc
