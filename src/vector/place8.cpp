#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/place8.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/place8.h"
#include "vector/reverse-inl.h"
#include "vector/transpose_blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

alignas(16) constexpr uint8_t kBackwards[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};

void reverseRow(const uint8_t *from, uint8_t *to, int32_t samples) {
  reverseBytes(kBackwards, from, to, samples);
}

void transposeBlock(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  transposeByLines<AsTheyLie>(hn::ScalableTag<uint8_t>(), from, to, toStride);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<ReverseRow> REVERSE_ROW8 = ZQCC_EVERY_LEVEL(reverseRow);
constexpr PerLevel<TransposeBlock> TRANSPOSE_BLOCK8 = ZQCC_EVERY_LEVEL(transposeBlock);

} // namespace zqcc
#endif
