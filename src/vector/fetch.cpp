#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/fetch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "tables/packed_layout.h"
#include "vector/fetch.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// Calls samples(tag, first) for groups that cover [0, count), as wide as the count lets them be. The last one overlaps
/// the one before it; count is not less than kLeast. The copy of `samples` is this function's own, which no store can
/// change.
template <int kLeast, class D, class Samples>
HWY_INLINE void inGroups(D d, std::ptrdiff_t count, const Samples samples) {
  constexpr std::ptrdiff_t kLanes = hn::MaxLanes(D{});
  if constexpr (kLanes > kLeast) {
    if (count < kLanes) {
      inGroups<kLeast>(hn::Half<D>{}, count, samples);
      return;
    }
  }
  const std::ptrdiff_t last = count - kLanes;
  for (std::ptrdiff_t i = 0; i < last; i += kLanes) {
    samples(d, i);
  }
  samples(d, last);
}

constexpr hn::ScalableTag<uint8_t> kBytes;
constexpr int kLeastHalf = kLeastPixels / 2;

// --- Half chroma ----------------------------------------------------------------------------------------------------

/// Pairs of samples into two rows.
struct Pairs {
  const uint8_t *pairs;
  uint8_t *first;
  uint8_t *second;

  template <class D>
  HWY_INLINE void operator()(D d, std::ptrdiff_t i) const {
    hn::Vec<D> a;
    hn::Vec<D> b;
    hn::LoadInterleaved2(d, pairs + 2 * i, a, b);
    hn::StoreU(a, d, first + i);
    hn::StoreU(b, d, second + i);
  }
};

/// Every second sample of a row.
struct EvenSamples {
  const uint8_t *from;
  uint8_t *to;

  template <class D>
  HWY_INLINE void operator()(D d, std::ptrdiff_t i) const {
    const auto low = hn::LoadU(d, from + 2 * i);
    const auto high = hn::LoadU(d, from + 2 * i + hn::MaxLanes(d));
    hn::StoreU(hn::ConcatEven(d, high, low), d, to + i);
  }
};

HWY_NOINLINE void partPairs(const Pairs &pairs, std::ptrdiff_t count) {
  inGroups<kLeastHalf>(kBytes, count, pairs);
}
HWY_NOINLINE void takeEven(const EvenSamples &samples, std::ptrdiff_t count) {
  inGroups<kLeastHalf>(kBytes, count, samples);
}

void evenChromaRows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  const std::ptrdiff_t count = pixels / 2;
  if (from.v - from.u == 1) {
    partPairs({from.u, to.u, to.v}, count);
  } else if (from.u - from.v == 1) {
    partPairs({from.v, to.v, to.u}, count);
  } else {
    takeEven({from.u, to.u}, count);
    takeEven({from.v, to.v}, count);
  }
}

/// Every sample twice.
struct Doubled {
  const uint8_t *from;
  uint8_t *to;

  template <class D>
  HWY_INLINE void operator()(D d, std::ptrdiff_t i) const {
    const hn::RepartitionToWide<D> wide;
    const auto samples = hn::PromoteTo(wide, hn::LoadU(hn::Half<D>{}, from + i / 2));
    hn::StoreU(hn::BitCast(d, hn::Or(samples, hn::ShiftLeft<8>(samples))), d, to + i);
  }
};

HWY_NOINLINE void doubleSamples(const uint8_t *from, uint8_t *to, std::ptrdiff_t count) {
  inGroups<kLeastHalf>(kBytes, count & ~std::ptrdiff_t{1}, Doubled{from, to});
  to[count - 1] = from[(count - 1) / 2]; // the last of an odd number is the first of two
}

void quarterChromaRows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  doubleSamples(from.u, to.u, pixels / 2);
  doubleSamples(from.v, to.v, pixels / 2);
}

// --- Packed 4:2:2 ---------------------------------------------------------------------------------------------------

/// Where the bytes of four macropixels go: luma of eight pixels, the first chroma sample of each macropixel, the
/// second.
struct alignas(16) MacropixelOrder {
  uint8_t from[16];
};

/// `variant` as the byte tables number them; which of the two chroma samples is U makes no difference here.
constexpr MacropixelOrder orderOf(uint32_t variant) {
  const PackedLayout bytes = packedLayout(variant);
  MacropixelOrder order{};
  for (int32_t i = 0; i < 4; ++i) {
    order.from[2 * i] = static_cast<uint8_t>(4 * i + bytes.left);
    order.from[2 * i + 1] = static_cast<uint8_t>(4 * i + bytes.right);
    order.from[8 + i] = static_cast<uint8_t>(4 * i + bytes.firstChroma());
    order.from[12 + i] = static_cast<uint8_t>(4 * i + bytes.firstChroma() + 2);
  }
  return order;
}

/// [right pixel's luma first][chroma first]
constexpr MacropixelOrder kOrders[2][2] = {{orderOf(0), orderOf(2)}, {orderOf(4), orderOf(6)}};

/// Where 32-bit lanes go that hold four first or four second chroma samples, of two vectors that were interleaved block
/// by block: first samples in front, in the order of the vectors.
template <std::size_t kLanes>
struct ChromaLanes {
  alignas(64) uint32_t from[kLanes]{};

  constexpr ChromaLanes() {
    constexpr uint32_t kBlocks = kLanes / 4;
    for (uint32_t block = 0; block < kBlocks; ++block) {
      for (uint32_t i = 0; i < 4; ++i) {
        from[(i % 2 * 2 + i / 2) * kBlocks + block] = 4 * block + i;
      }
    }
  }
};

/// Samples of macropixels into rows: `first` and `second` for chroma, or luma alone.
template <bool chroma>
struct Macropixels {
  const uint8_t *from;
  MacropixelOrder order;
  uint8_t *luma;
  uint8_t *first;
  uint8_t *second;

  template <class D>
  HWY_INLINE void operator()(D half, std::ptrdiff_t i) const {
    const hn::Twice<D> d;
    const hn::Repartition<uint64_t, decltype(d)> d64;
    const auto positions = hn::LoadDup128(d, order.from);
    const uint8_t *at = from + 4 * i;
    const auto low = hn::BitCast(d64, hn::TableLookupBytes(hn::LoadU(d, at), positions));
    const auto high = hn::BitCast(d64, hn::TableLookupBytes(hn::LoadU(d, at + hn::MaxLanes(d)), positions));
    hn::StoreU(hn::BitCast(d, hn::ConcatEven(d64, high, low)), d, luma + 2 * i);
    if constexpr (chroma) {
      const hn::Repartition<uint32_t, decltype(d)> d32;
      static constexpr ChromaLanes<hn::MaxLanes(d32)> kLanes;
      const auto mixed = hn::BitCast(d32, hn::InterleaveUpper(d64, low, high));
      const auto parted = hn::BitCast(d, hn::TableLookupLanes(mixed, hn::SetTableIndices(d32, kLanes.from)));
      hn::StoreU(hn::LowerHalf(half, parted), half, first + i);
      hn::StoreU(hn::UpperHalf(half, parted), half, second + i);
    }
  }
};

template <bool chroma>
HWY_NOINLINE void partMacropixels(const Macropixels<chroma> &macropixels, std::ptrdiff_t count) {
  inGroups<kLeastHalf>(hn::Half<decltype(kBytes)>{}, count, macropixels);
}

/// Chroma tells where a macropixel starts: it comes first, or one byte behind the first luma.
template <bool swapped, bool chroma>
void packedRows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  const bool uFirst = from.u < from.v;
  const uint8_t *firstLuma = from.y - (swapped ? 2 : 0);
  const uint8_t *firstChroma = uFirst ? from.u : from.v;
  const int chromaFirst = firstChroma < firstLuma ? 1 : 0;
  partMacropixels<chroma>({chromaFirst != 0 ? firstChroma : firstLuma, kOrders[swapped ? 1 : 0][chromaFirst], to.y,
                           uFirst ? to.u : to.v, uFirst ? to.v : to.u},
                          pixels / 2);
}

constexpr FetchRows packedInOrder = packedRows<false, true>;
constexpr FetchRows lumaInOrder = packedRows<false, false>;
constexpr FetchRows packedSwapped = packedRows<true, true>;
constexpr FetchRows lumaSwapped = packedRows<true, false>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<FetchRows> EVEN_CHROMA_ROWS = ZQCC_EVERY_LEVEL(evenChromaRows);
constexpr PerLevel<FetchRows> QUARTER_CHROMA_ROWS = ZQCC_EVERY_LEVEL(quarterChromaRows);
constexpr PerLevel<FetchRows> PACKED_ROWS = ZQCC_EVERY_LEVEL(packedInOrder);
constexpr PerLevel<FetchRows> PACKED_LUMA_ROW = ZQCC_EVERY_LEVEL(lumaInOrder);
constexpr PerLevel<FetchRows> SWAPPED_PACKED_ROWS = ZQCC_EVERY_LEVEL(packedSwapped);
constexpr PerLevel<FetchRows> SWAPPED_PACKED_LUMA_ROW = ZQCC_EVERY_LEVEL(lumaSwapped);

} // namespace zqcc
#endif
