#include "resize_rgb/rgb24_input.h"

#include "resize_rgb/tile.h"

namespace zqcc {
namespace {

constexpr ResizeKernel resizeRgb24ToRgb565Block = resizeTile<RgbSource<3>, Turn::Upright>;
constexpr ResizeKernel resizeRgb24ToRgb565BlockLeft = resizeTile<RgbSource<3>, Turn::Left>;
constexpr ResizeKernel resizeRgb24ToRgb565BlockRight = resizeTile<RgbSource<3>, Turn::Right>;

template <Turn turn>
void resizeRgb24(const Job &job, ResizeKernel kernel) {
  const ConvertParams &p = job.params;
  resizeBlocks<turn>(job, Rgb24Bytes::view(p, p.inWidth, p.inHeight), kernel);
}

} // namespace

void resizeRgb24ToRgb565(const Job &job) {
  resizeRgb24<Turn::Upright>(job, resizeRgb24ToRgb565Block);
}
void resizeRgb24ToRgb565Left(const Job &job) {
  resizeRgb24<Turn::Left>(job, resizeRgb24ToRgb565BlockLeft);
}
void resizeRgb24ToRgb565Right(const Job &job) {
  resizeRgb24<Turn::Right>(job, resizeRgb24ToRgb565BlockRight);
}

} // namespace zqcc
