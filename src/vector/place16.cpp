#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/place16.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/place16.h"
#include "vector/reverse-inl.h"
#include "vector/transpose_blocks-inl.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

alignas(16) constexpr uint8_t kBackwards[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};

void reverseRow(const uint8_t *from, uint8_t *to, int32_t pixels) {
  if (pixels >= 8) {
    reverseBytes(kBackwards, from, to, std::ptrdiff_t{pixels} * 2);
  } else {
    reverseRow16(from, to, pixels);
  }
}

void transposeBlock(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  // Wider vectors take longer where rows are at hand: every row of a block is loaded by itself.
  const hn::CappedTag<uint16_t, 16> d;
  if (from.columns < kSide<decltype(d)> || from.lines < kSide<decltype(d)>) {
    transposeBlock16(from, to, toStride);
  } else {
    transposeByLines<AsTheyLie>(d, from, to, toStride);
  }
}

void transposeUnits(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  transposeByLines<AsTheyLie>(hn::ScalableTag<uint16_t>(), from, to, toStride);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

[[gnu::noinline]] void reverseRow16(const uint8_t *from, uint8_t *to, int32_t pixels) {
  for (int32_t x = 0; x < pixels; ++x) {
    std::memcpy(to + std::ptrdiff_t{pixels - 1 - x} * 2, from + std::ptrdiff_t{x} * 2, 2);
  }
}

[[gnu::noinline]] void transposeBlock16(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  for (int32_t line = 0; line < from.lines; ++line) {
    for (int32_t x = 0; x < from.columns; ++x) {
      std::memcpy(to + x * toStride + std::ptrdiff_t{line} * 2, from.first + line * from.stride + std::ptrdiff_t{x} * 2,
                  2);
    }
  }
}

constexpr PerLevel<ReverseRow> REVERSE_ROW16 = ZQCC_EVERY_LEVEL(reverseRow);
constexpr PerLevel<TransposeBlock> TRANSPOSE_BLOCK16 = ZQCC_EVERY_LEVEL(transposeBlock);
constexpr PerLevel<TransposeBlock> TRANSPOSE_UNITS16 = ZQCC_EVERY_LEVEL(transposeUnits);

} // namespace zqcc
#endif
