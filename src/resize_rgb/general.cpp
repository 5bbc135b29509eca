#include "resize_rgb/general.h"

#include "resize_rgb/resize_picture.h"

namespace zqcc {
namespace {

template <Turn turn>
void resizeGeneral(const Job &job) {
  resizePicture<YuvSource<QuadChroma, Bilinear>, TableWeights, turn>(job, viewOf420Or422(job));
}

} // namespace

void resizeYuvToRgb565(const Job &job) {
  resizeGeneral<Turn::Upright>(job);
}
void resizeYuvToRgb565Rot3(const Job &job) {
  resizeGeneral<Turn::Left>(job);
}
void resizeYuvToRgb565Rot4(const Job &job) {
  resizeGeneral<Turn::Right>(job);
}
void resizeYuvToRgb565Rot5(const Job &job) {
  resizeGeneral<Turn::Half>(job);
}

} // namespace zqcc
