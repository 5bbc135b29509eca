#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/component_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/blocks-inl.h"
#include "vector/scale_rows.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

using Bytes = hn::ScalableTag<uint8_t>;
using LeastBytes = hn::CappedTag<uint8_t, kLeastPixels>;

template <class V>
struct Channels {
  V blue;
  V green;
  V red;
};

#if HWY_ARCH_X86

/// Twelve bytes, four pixels, from every 48 on: one for each block, from which they begin `skipped` bytes behind. The
/// lowest four become blue samples, then come green and red ones.
template <int32_t skipped, class D>
HWY_INLINE hn::Vec<D> fourPixels(D d, const uint8_t *bytes) {
  alignas(16) static constexpr uint8_t kOrder[16] = {
      skipped + 0, skipped + 3, skipped + 6, skipped + 9,  skipped + 1, skipped + 4, skipped + 7, skipped + 10,
      skipped + 2, skipped + 5, skipped + 8, skipped + 11, 128,         128,         128,         128};
  static constexpr int32_t kPlaces[4] = {0, 48, 96, 144};
  return hn::TableLookupBytesOr0(blocksAt(d, bytes - skipped, kPlaces), hn::LoadDup128(d, kOrder));
}

/// The last four pixels of a block are read from where they end.
template <class D>
HWY_INLINE Channels<hn::Vec<D>> channelsOf(D d, const uint8_t *bytes) {
  const hn::Repartition<uint32_t, D> d32;
  const hn::Repartition<uint64_t, D> d64;
  const auto a = hn::BitCast(d32, fourPixels<0>(d, bytes));
  const auto b = hn::BitCast(d32, fourPixels<0>(d, bytes + 12));
  const auto c = hn::BitCast(d32, fourPixels<0>(d, bytes + 24));
  const auto e = hn::BitCast(d32, fourPixels<4>(d, bytes + 36));
  const auto ab = hn::BitCast(d64, hn::InterleaveLower(d32, a, b));
  const auto ce = hn::BitCast(d64, hn::InterleaveLower(d32, c, e));
  const auto abRed = hn::BitCast(d64, hn::InterleaveUpper(d32, a, b));
  const auto ceRed = hn::BitCast(d64, hn::InterleaveUpper(d32, c, e));
  return {hn::BitCast(d, hn::InterleaveLower(d64, ab, ce)), hn::BitCast(d, hn::InterleaveUpper(d64, ab, ce)),
          hn::BitCast(d, hn::InterleaveLower(d64, abRed, ceRed))};
}

#else

template <class D>
HWY_INLINE Channels<hn::Vec<D>> channelsOf(D d, const uint8_t *bytes) {
  Channels<hn::Vec<D>> all;
  hn::LoadInterleaved3(d, bytes, all.blue, all.green, all.red);
  return all;
}

#endif

struct BgrBytes {
  template <class D>
  static HWY_INLINE void part(D d, const uint8_t *bytes, const RowBuffers &to, std::ptrdiff_t i) {
    const auto all = channelsOf(d, bytes + 3 * i);
    hn::StoreU(all.red, d, to.y + i);
    hn::StoreU(all.green, d, to.u + i);
    hn::StoreU(all.blue, d, to.v + i);
  }
};

/// As many pixels as a vector has bytes. Bytes are shifted as 16-bit lanes; the masks drop what comes over from the
/// neighbour.
struct Words {
  template <class D>
  static HWY_INLINE void part(D d, const uint8_t *pixels, const RowBuffers &to, std::ptrdiff_t i) {
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
};

/// The last group overlaps the one before it.
template <class Pixels, class D>
HWY_INLINE void partRow(D d, const uint8_t *from, const RowBuffers to, std::ptrdiff_t pixels) {
  const std::ptrdiff_t last = pixels - static_cast<std::ptrdiff_t>(hn::MaxLanes(d));
  for (std::ptrdiff_t i = 0; i < last; i += static_cast<std::ptrdiff_t>(hn::MaxLanes(d))) {
    Pixels::part(d, from, to, i);
  }
  Pixels::part(d, from, to, last);
}

template <class Pixels>
void componentRows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  if (pixels < static_cast<int32_t>(hn::MaxLanes(Bytes()))) {
    partRow<Pixels>(LeastBytes(), from.v, to, pixels);
  } else {
    partRow<Pixels>(Bytes(), from.v, to, pixels);
  }
}

constexpr FetchRows rgb24Rows = componentRows<BgrBytes>;
constexpr FetchRows rgb565Rows = componentRows<Words>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<FetchRows> RGB24_ROWS = ZQCC_EVERY_LEVEL(rgb24Rows);
constexpr PerLevel<FetchRows> RGB565_ROWS = ZQCC_EVERY_LEVEL(rgb565Rows);
} // namespace zqcc
#endif
