#include "canvas.h"

namespace corpus {
namespace {

constexpr std::size_t kGuard = 64;

} // namespace

Canvas::Canvas(const Shape &shape, const Lie &lie, uint32_t seed) {
  std::size_t bytes = 0;
  (void)zqpPictureBytes(shape.format, shape.width, shape.height, lie.strideAlignment, &bytes);
  bytes_ = bytes + 2 * kGuard;
  store_.resize(bytes_ + kAlignment + lie.misalign);
  block_ = alignedStart(store_, lie.misalign);
  generate(block_, bytes_, seed);
  view_.recordSize = sizeof view_;
  (void)zqpPictureLayOut(&view_, shape.format, shape.width, shape.height, lie.strideAlignment, block_ + kGuard, bytes);
  for (ZqpPlane &plane : view_.planes) {
    plane.stride = lie.isBottomUp ? -plane.stride : plane.stride;
  }
}

} // namespace corpus
