#include "resize_rgb/general.h"

#include "resize_rgb/tile.h"

namespace zqcc {
namespace {

template <Turn turn>
constexpr ResizeKernel kKernel = resizeTile<YuvSource<GroupChroma, Bilinear>, turn>;

constexpr ResizeKernel resizeBlockYuvToRgb565 = kKernel<Turn::Upright>;
constexpr ResizeKernel resizeBlockYuvToRgb565Rot3 = kKernel<Turn::Left>;
constexpr ResizeKernel resizeBlockYuvToRgb565Rot4 = kKernel<Turn::Right>;
constexpr ResizeKernel resizeBlockYuvToRgb565Rot5 = kKernel<Turn::Half>;

} // namespace

void resizeYuvToRgb565(const Job &job) {
  resizeBlocks<Turn::Upright>(job, viewOf420Or422(job), resizeBlockYuvToRgb565);
}
void resizeYuvToRgb565Rot3(const Job &job) {
  resizeBlocks<Turn::Left>(job, viewOf420Or422(job), resizeBlockYuvToRgb565Rot3);
}
void resizeYuvToRgb565Rot4(const Job &job) {
  resizeBlocks<Turn::Right>(job, viewOf420Or422(job), resizeBlockYuvToRgb565Rot4);
}
void resizeYuvToRgb565Rot5(const Job &job) {
  resizeBlocks<Turn::Half>(job, viewOf420Or422(job), resizeBlockYuvToRgb565Rot5);
}

} // namespace zqcc
