#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/fetch.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/fetch.h"
#include "vector/parts-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

// --- Half chroma ----------------------------------------------------------------------------------------------------

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

HWY_NOINLINE void partMacropixels(const Macropixels<true> &macropixels, std::ptrdiff_t count) {
  inGroups<kLeastHalf>(hn::Half<decltype(kBytes)>{}, count, macropixels);
}

/// Chroma tells where a macropixel starts: it comes first, or one byte behind the first luma.
template <bool swapped>
void packedRows(const SourceLine &from, const RowBuffers &to, int32_t pixels) {
  const bool uFirst = from.u < from.v;
  const uint8_t *firstLuma = from.y - (swapped ? 2 : 0);
  const uint8_t *firstChroma = uFirst ? from.u : from.v;
  const int chromaFirst = firstChroma < firstLuma ? 1 : 0;
  partMacropixels({chromaFirst != 0 ? firstChroma : firstLuma, kOrders[swapped ? 1 : 0][chromaFirst], to.y,
                   uFirst ? to.u : to.v, uFirst ? to.v : to.u},
                  pixels / 2);
}

constexpr FetchRows packedInOrder = packedRows<false>;
constexpr FetchRows packedSwapped = packedRows<true>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

constexpr PerLevel<FetchRows> EVEN_CHROMA_ROWS = ZQCC_EVERY_LEVEL(evenChromaRows);
constexpr PerLevel<FetchRows> QUARTER_CHROMA_ROWS = ZQCC_EVERY_LEVEL(quarterChromaRows);
constexpr PerLevel<FetchRows> PACKED_ROWS = ZQCC_EVERY_LEVEL(packedInOrder);
constexpr PerLevel<FetchRows> SWAPPED_PACKED_ROWS = ZQCC_EVERY_LEVEL(packedSwapped);

} // namespace zqcc
#endif
