#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/rgb565_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/scale_rows.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Bytes = hn::ScalableTag<uint8_t>;
using LeastBytes = hn::CappedTag<uint8_t, kLeastPixels>;

/// As many pixels as a vector has bytes. Bytes are shifted as 16-bit lanes; the masks drop what comes over from the
/// neighbour.
template <class D>
HWY_INLINE void partPixels(D d, const uint8_t *pixels, const RowBuffers &to, std::ptrdiff_t i) {
  const hn::Repartition<uint16_t, D> d16;
  const auto first = hn::LoadU(d, pixels + 2 * i);
  const auto second = hn::LoadU(d, pixels + 2 * i + static_cast<std::ptrdiff_t>(hn::MaxLanes(d)));
  const auto low = hn::ConcatEven(d, second, first);
  const auto high = hn::ConcatOdd(d, second, first);
  const auto blue = hn::BitCast(d, hn::ShiftLeft<3>(hn::BitCast(d16, low)));
  const auto greenBelow = hn::BitCast(d, hn::ShiftRight<3>(hn::BitCast(d16, low)));
  const auto greenAbove = hn::BitCast(d, hn::ShiftLeft<5>(hn::BitCast(d16, high)));
  const auto masked = [d](auto v, uint8_t mask) HWY_ATTR { return hn::And(v, hn::Set(d, mask)); };
  hn::StoreU(masked(high, 0xF8), d, to.y + i);
  hn::StoreU(hn::Or(masked(greenAbove, 0xE0), masked(greenBelow, 0x1C)), d, to.u + i);
  hn::StoreU(masked(blue, 0xF8), d, to.v + i);
}

/// The last group overlaps the one before it.
template <class D>
HWY_INLINE void partRow(D d, const uint8_t *from, const RowBuffers to, std::ptrdiff_t pixels) {
  const std::ptrdiff_t last = pixels - static_cast<std::ptrdiff_t>(hn::MaxLanes(d));
  for (std::ptrdiff_t i = 0; i < last; i += static_cast<std::ptrdiff_t>(hn::MaxLanes(d))) {
    partPixels(d, from, to, i);
  }
  partPixels(d, from, to, last);
}

void rgb565Rows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  if (pixels < static_cast<int32_t>(hn::MaxLanes(Bytes()))) {
    partRow(LeastBytes(), from.v, to, pixels);
  } else {
    partRow(Bytes(), from.v, to, pixels);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<FetchRows> RGB565_ROWS = ZQCC_EVERY_LEVEL(rgb565Rows);
} // namespace zqcc
#endif
