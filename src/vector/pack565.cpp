#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/pack565.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/pack565-inl.h"
#include "vector/pack565.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Every group is as many pixels as a vector has bytes.
using Group = hn::ScalableTag<uint8_t>;
using LeastGroup = hn::CappedTag<uint8_t, kLeastPixels>;

struct Planes {
  template <class D>
  static HWY_INLINE void convert(D d8, const SampleRows &from, int32_t x, uint8_t *to) {
    const auto bytes = rgb565(d8, hn::LoadU(d8, from.y[0] + x), hn::LoadU(d8, from.u + x), hn::LoadU(d8, from.v + x));
    hn::StoreInterleaved2(bytes.low, bytes.high, d8, to);
  }
};

#if HWY_TARGET == HWY_NEON

struct BgrBytes {
  template <class D>
  static HWY_INLINE void convert(D d8, const SampleRows &from, int32_t x, uint8_t *to) {
    hn::Vec<D> red;
    hn::Vec<D> green;
    hn::Vec<D> blue;
    hn::LoadInterleaved3(d8, from.v + std::ptrdiff_t{3} * x, blue, green, red);
    const auto bytes = rgb565(d8, red, green, blue);
    hn::StoreInterleaved2(bytes.low, bytes.high, d8, to);
  }
};

#else

/// Taking the bytes of a group apart into three vectors would cost more than packing them does. A group goes in
/// quarters instead, four pixels to a block of 128 bits: a shuffle of bytes makes words of (G, R) in the lower half of
/// the block, of (B, 0) in the upper one, and two quarters are brought together.
struct BgrBytes {
  template <class D>
  static HWY_INLINE void convert(D d8, const SampleRows &from, int32_t x, uint8_t *to) {
    constexpr std::ptrdiff_t kQuarter = hn::MaxLanes(D()) * 3 / 4;
    const uint8_t *bytes = from.v + std::ptrdiff_t{3} * x;
    hn::StoreU(pixels(d8, words<false>(d8, bytes), words<false>(d8, bytes + kQuarter)), d8, to);
    hn::StoreU(pixels(d8, words<false>(d8, bytes + 2 * kQuarter), words<true>(d8, bytes + 3 * kQuarter)), d8,
               to + hn::MaxLanes(D()));
  }

private:
  /// The words of a quarter. A vector is longer than its bytes; for the last quarter of a group it is loaded so that it
  /// ends where they do.
  template <bool last, class D>
  static HWY_INLINE hn::Vec<D> words(D d8, const uint8_t *bytes) {
    constexpr std::size_t kSkipped = last ? hn::MaxLanes(D()) / 4 : 0;
    const auto loaded = hn::LoadU(d8, bytes - kSkipped);
    alignas(16) static constexpr uint8_t kGreenRedBlue[16] = {1, 2, 4, 5, 7, 8, 10, 11, 0, 128, 3, 128, 6, 128, 9, 128};
    const auto order = hn::LoadDup128(d8, kGreenRedBlue);
    if constexpr (hn::MaxLanes(D()) == 16) {
      return hn::TableLookupBytesOr0(loaded, hn::Add(order, hn::Set(d8, uint8_t{kSkipped})));
    } else {
      const hn::Repartition<uint32_t, D> d32;
      alignas(64) static constexpr uint32_t kTwelveBytesEach[16] = {0, 1, 2, 0, 3, 4, 5, 0, 6, 7, 8, 0, 9, 10, 11, 0};
      const auto places = hn::Add(hn::LoadU(d32, kTwelveBytesEach), hn::Set(d32, uint32_t{kSkipped / 4}));
      return hn::TableLookupBytesOr0(
          hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d32, loaded), hn::IndicesFromVec(d32, places))), order);
    }
  }

  /// Half a group of pixels from the words of its two quarters.
  template <class D, class V = hn::Vec<D>>
  static HWY_INLINE V pixels(D d8, V first, V second) {
    const hn::Repartition<uint16_t, D> d16;
    const hn::Repartition<uint64_t, D> d64;
    const auto a = hn::BitCast(d64, first);
    const auto b = hn::BitCast(d64, second);
    const auto greenRed = hn::BitCast(d16, hn::InterleaveLower(d64, a, b));
    const auto blue = hn::BitCast(d16, hn::InterleaveUpper(d64, a, b));
    const auto redAndBlue = hn::OrAnd(hn::ShiftRight<3>(blue), greenRed, hn::Set(d16, uint16_t{0xF800}));
    const auto mixed = hn::OrAnd(redAndBlue, hn::ShiftLeft<3>(greenRed), hn::Set(d16, uint16_t{0x07E0}));
    if constexpr (hn::MaxLanes(D()) == 16) {
      return hn::BitCast(d8, mixed);
    } else {
      // The quarters take turns, four pixels each.
      alignas(64) static constexpr uint64_t kTurns[2][8] = {{0, 2, 1, 3}, {0, 2, 4, 6, 1, 3, 5, 7}};
      const auto places = hn::LoadU(d64, kTurns[hn::MaxLanes(D()) / 64]);
      return hn::BitCast(d8, hn::TableLookupLanes(hn::BitCast(d64, mixed), hn::IndicesFromVec(d64, places)));
    }
  }
};

#endif

template <class Source, class D>
HWY_INLINE void convertRow(D d8, const SampleRows &from, uint8_t *to, int32_t pixels) {
  constexpr auto kStep = static_cast<int32_t>(hn::MaxLanes(D()));
  for (int32_t x = 0; x <= pixels - kStep; x += kStep) {
    Source::convert(d8, from, x, to + std::ptrdiff_t{2} * x);
  }
  if (pixels % kStep != 0) {
    Source::convert(d8, from, pixels - kStep, to + std::ptrdiff_t{2} * (pixels - kStep));
  }
}

/// Rows shorter than a vector go in the smallest groups.
template <class Source>
HWY_INLINE void convertAnyRow(const SampleRows &from, uint8_t *to, int32_t pixels) {
  constexpr auto kPixels = static_cast<int32_t>(hn::MaxLanes(Group()));
  if (kPixels > kLeastPixels && pixels < kPixels) {
    convertRow<Source>(LeastGroup(), from, to, pixels);
  } else {
    convertRow<Source>(Group(), from, to, pixels);
  }
}

void pack565(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
             const ColourConstants & /*constants*/) {
  convertAnyRow<Planes>(from, to[0], pixels);
}

void pack565Rgb24(const SampleRows &from, uint8_t *const to[2], int32_t pixels, int32_t /*line*/,
                  const ColourConstants & /*constants*/) {
  convertAnyRow<BgrBytes>(from, to[0], pixels);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<ColourRows> PACK565 = ZQCC_EVERY_LEVEL(pack565);
constexpr PerLevel<ColourRows> PACK565_RGB24 = ZQCC_EVERY_LEVEL(pack565Rgb24);
} // namespace zqcc
#endif
