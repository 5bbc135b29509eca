// Samples of pixels of even and of odd columns in vectors of their own: so what comes from half chroma is never
// duplicated.

// Read once a level.
#if defined(ZQCC_VECTOR_MACROPIXELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_MACROPIXELS_INL_H
#undef ZQCC_VECTOR_MACROPIXELS_INL_H
#else
#define ZQCC_VECTOR_MACROPIXELS_INL_H
#endif

#include "vector/blocks-inl.h"
#include "vector/components-inl.h"

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// The bytes of even and of odd numbers, once or twice their value, as 16-bit lanes.
template <class D16, int scale>
struct EvenAndOdd {
  hn::Vec<D16> even;
  hn::Vec<D16> odd;

  HWY_INLINE explicit EvenAndOdd(hn::Vec<hn::Repartition<uint8_t, D16>> bytes) {
    const D16 d;
#if HWY_ARCH_X86
    even = sumPairs(bytes, hn::Set(d, scale));
    odd = sumPairs(bytes, hn::Set(d, scale << 8));
#else
    const hn::RebindToUnsigned<D16> u16;
    const auto both = hn::BitCast(u16, bytes);
    even = hn::BitCast(d, hn::And(both, hn::Set(u16, 0xFF)));
    odd = hn::BitCast(d, hn::ShiftRight<8>(both));
    if constexpr (scale == 2) {
      even = hn::Add(even, even);
      odd = hn::Add(odd, odd);
    }
#endif
  }
};

/// Macropixels, the four bytes that hold two pixels and the chroma they share, as 16-bit lanes.
template <class D>
class MacropixelLanes {
public:
  using D16 = Words<D>;
  using V = hn::Vec<D16>;

  /// Where the samples of the first macropixel stand.
  HWY_INLINE MacropixelLanes(const uint8_t *left, const uint8_t *right, const uint8_t *u, const uint8_t *v)
      : base(HWY_MIN(HWY_MIN(left, right), HWY_MIN(u, v))), luma(order(left - base, right - base)),
        chroma(order(u - base, v - base)) {}

  struct Samples {
    V even;
    V odd;
    V u;
    V v;
  };

  /// The samples of as many pixels as D has lanes, from an even column on.
  HWY_INLINE Samples load(std::ptrdiff_t x) const {
    const D d;
    const hn::Repartition<uint64_t, D> halves;
    const D16 d16;
    auto first = hn::LoadU(d, base + 2 * x);
    auto second = hn::LoadU(d, base + 2 * x + static_cast<std::ptrdiff_t>(hn::MaxLanes(D())));
    evenAndOddBlocks(d, first, second);
    const auto pick = [&](hn::Vec<D> bytes, hn::Vec<D> which)
                          HWY_ATTR { return hn::BitCast(halves, hn::TableLookupBytes(bytes, which)); };
    const auto luma0 = pick(first, luma);
    const auto luma1 = pick(second, luma);
    const auto chroma0 = pick(first, chroma);
    const auto chroma1 = pick(second, chroma);
    return {hn::BitCast(d16, hn::InterleaveLower(halves, luma0, luma1)),
            hn::BitCast(d16, hn::InterleaveUpper(halves, luma0, luma1)),
            hn::BitCast(d16, hn::InterleaveLower(halves, chroma0, chroma1)),
            hn::BitCast(d16, hn::InterleaveUpper(halves, chroma0, chroma1))};
  }

private:
  /// Two samples of the four macropixels of a block, a 16-bit lane each: first all of the one, then all of the other.
  HWY_INLINE static hn::Vec<D> order(std::ptrdiff_t one, std::ptrdiff_t other) {
    const D d;
    const D16 d16;
    const hn::Repartition<uint64_t, D> halves;
    const auto positions = hn::InterleaveLower(halves, hn::BitCast(halves, hn::Set(d16, static_cast<int16_t>(one))),
                                               hn::BitCast(halves, hn::Set(d16, static_cast<int16_t>(other))));
    return hn::Add(hn::LoadDup128(d, kMacropixels), hn::BitCast(d, positions));
  }
  alignas(16) static constexpr uint8_t kMacropixels[16] = {0, 128, 4, 128, 8, 128, 12, 128,
                                                           0, 128, 4, 128, 8, 128, 12, 128};

  const uint8_t *base;
  hn::Vec<D> luma;
  hn::Vec<D> chroma;
};

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
