// Components of a group become pixels, one class for each way that pixels lie. A class has
//   kDeal           the deal that even and odd pixels come in; halves that are not by parity come as Deal::Eights
//   kIsOneLuma      whether all components have as many bits
//   kBytes, kRows   bytes of a pixel in a row, and rows
//   store(first, second, to)   all pixels of the group, in their order

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_PIXELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_PIXELS_INL_H
#undef ZQP_ROWS_COLOUR_PIXELS_INL_H
#else
#define ZQP_ROWS_COLOUR_PIXELS_INL_H
#endif

#include "rows/colour_sums-inl.h"

#if HWY_TARGET != HWY_EMU128
#include "vector/rgb24_store-inl.h"
#endif

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Bytes of a component.
struct GroupBytes {
  V8 red;
  V8 green;
  V8 blue;
};

HWY_INLINE GroupBytes bytesOf(const HalfGroup &first, const HalfGroup &second) {
  return {packBlocks(first.red, second.red), packBlocks(first.green, second.green),
          packBlocks(first.blue, second.blue)};
}

/// The same with the pixels of every block in their order.
template <bool isByParity, Deal deal>
HWY_INLINE GroupBytes orderedBytes(const HalfGroup &first, const HalfGroup &second) {
  const GroupBytes bytes = bytesOf(first, second);
  if constexpr (isByParity) {
    return {mergeParities(bytes.red), mergeParities(bytes.green), mergeParities(bytes.blue)};
  } else {
    return {dealEights<deal>(bytes.red), dealEights<deal>(bytes.green), dealEights<deal>(bytes.blue)};
  }
}

/// 16-bit words, red at the top. Bytes are shifted as words; the masks drop what comes over from the neighbour.
template <bool isSwapped>
struct Rgb565Pixels {
  static constexpr Deal kDeal = Deal::Eights;
  static constexpr bool kIsOneLuma = false;
  static constexpr int32_t kBytes = 2;
  static constexpr int32_t kRows = 1;

  static HWY_INLINE const uint16_t *roundingOfRed(const RgbOfYuv & /*colours*/, const Rounding &rounding) {
    return rounding.five;
  }
  static HWY_INLINE const uint16_t *roundingOfGreen(const RgbOfYuv & /*colours*/, const Rounding &rounding) {
    return rounding.six;
  }

  HWY_INLINE explicit Rgb565Pixels(const RgbOfYuv & /*colours*/) {}

  template <bool isByParity>
  HWY_INLINE void store(const HalfGroup &first, const HalfGroup &second, ptrdiff_t x, uint8_t *const to[3]) const {
    const GroupBytes bytes = bytesOf(first, second);
    const V16 green = hn::BitCast(D16(), bytes.green);
    const V8 upperGreen = hn::BitCast(D8(), hn::ShiftRight<5>(green));
    const V8 lowerGreen = hn::BitCast(D8(), hn::ShiftLeft<3>(green));
    const V8 blue = hn::BitCast(D8(), hn::ShiftRight<3>(hn::BitCast(D16(), bytes.blue)));
    const V8 high = selectBits(hn::Set(D8(), uint8_t{0xF8}), bytes.red, upperGreen);
    const V8 low = selectBits(hn::Set(D8(), uint8_t{0x1F}), blue, lowerGreen);
    storeWords<isByParity>(isSwapped ? high : low, isSwapped ? low : high, to[0] + 2 * x);
  }

private:
  template <bool isByParity>
  static HWY_INLINE void storeWords(V8 lower, V8 upper, uint8_t *at) {
    V8 first = hn::InterleaveLower(D8(), lower, upper);
    V8 second = hn::InterleaveUpper(D8(), lower, upper);
    if constexpr (isByParity) {
      const V16 evens = hn::BitCast(D16(), first);
      const V16 odds = hn::BitCast(D16(), second);
      first = hn::BitCast(D8(), hn::InterleaveLower(D16(), evens, odds));
      second = hn::BitCast(D8(), hn::InterleaveUpper(D16(), evens, odds));
    }
    hn::StoreU(first, D8(), at);
    hn::StoreU(second, D8(), at + kGroup);
  }
};

/// What pixels of components of 8 bits have in common.
struct EightBits {
  static constexpr bool kIsOneLuma = true;
  static constexpr int32_t kRows = 1;

  static HWY_INLINE const uint16_t *roundingOfRed(const RgbOfYuv & /*colours*/, const Rounding &rounding) {
    return rounding.eight;
  }
  static HWY_INLINE const uint16_t *roundingOfGreen(const RgbOfYuv & /*colours*/, const Rounding &rounding) {
    return rounding.eight;
  }
};

/// Four bytes, alpha the last.
template <bool isBlueFirst>
struct Rgb32Pixels : EightBits {
  static constexpr Deal kDeal = Deal::Fours;
  static constexpr int32_t kBytes = 4;

  HWY_INLINE explicit Rgb32Pixels(const RgbOfYuv & /*colours*/) {}

  template <bool isByParity>
  HWY_INLINE void store(const HalfGroup &first, const HalfGroup &second, ptrdiff_t x, uint8_t *const to[3]) const {
    const GroupBytes bytes = orderedBytes<isByParity, kDeal>(first, second);
    const V8 one = isBlueFirst ? bytes.blue : bytes.red;
    const V8 three = isBlueFirst ? bytes.red : bytes.blue;
    const V8 alpha = hn::Set(D8(), uint8_t{255});
    uint8_t *const at = to[0] + 4 * x;
    storeEight(hn::InterleaveLower(D8(), one, bytes.green), hn::InterleaveLower(D8(), three, alpha), at);
    storeEight(hn::InterleaveUpper(D8(), one, bytes.green), hn::InterleaveUpper(D8(), three, alpha), at + 2 * kGroup);
  }

private:
  static HWY_INLINE void storeEight(V8 lower, V8 upper, uint8_t *at) {
    const V16 lows = hn::BitCast(D16(), lower);
    const V16 highs = hn::BitCast(D16(), upper);
    hn::StoreU(hn::BitCast(D8(), hn::InterleaveLower(D16(), lows, highs)), D8(), at);
    hn::StoreU(hn::BitCast(D8(), hn::InterleaveUpper(D16(), lows, highs)), D8(), at + kGroup);
  }
};

/// Three bytes.
template <bool isBlueFirst>
struct Rgb24Pixels : EightBits {
  static constexpr Deal kDeal = Deal::Sixteens;
  static constexpr int32_t kBytes = 3;

  HWY_INLINE explicit Rgb24Pixels(const RgbOfYuv & /*colours*/) {}

#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
  template <bool isByParity>
  HWY_INLINE void store(const HalfGroup &first, const HalfGroup &second, ptrdiff_t x, uint8_t *const to[3]) const {
    namespace vector = zqcc::HWY_NAMESPACE;
    const auto limit = [](V8 bytes) HWY_ATTR { return bytes; };
    if constexpr (isByParity) {
      vector::storePixels(D8(), partsOf(first), partsOf(second), limit, to[0] + 3 * x);
    } else {
      const GroupBytes bytes = orderedBytes<false, kDeal>(first, second);
      const HalfGroup even = {evenBytes(bytes.red), evenBytes(bytes.green), evenBytes(bytes.blue)};
      const HalfGroup odd = {oddBytes(bytes.red), oddBytes(bytes.green), oddBytes(bytes.blue)};
      vector::storePixels(D8(), partsOf(even), partsOf(odd), limit, to[0] + 3 * x);
    }
  }

private:
  static HWY_INLINE zqcc::HWY_NAMESPACE::Components<VI> partsOf(const HalfGroup &half) {
    return {isBlueFirst ? half.blue : half.red, half.green, isBlueFirst ? half.red : half.blue};
  }
  static HWY_INLINE VI evenBytes(V8 bytes) {
    return signedOf(hn::And(hn::BitCast(D16(), bytes), hn::Set(D16(), uint16_t{0xFF})));
  }
  static HWY_INLINE VI oddBytes(V8 bytes) {
    return signedOf(hn::ShiftRight<8>(hn::BitCast(D16(), bytes)));
  }
#else
  template <bool isByParity>
  HWY_INLINE void store(const HalfGroup &first, const HalfGroup &second, ptrdiff_t x, uint8_t *const to[3]) const {
    const GroupBytes bytes = orderedBytes<isByParity, kDeal>(first, second);
    hn::StoreInterleaved3(isBlueFirst ? bytes.blue : bytes.red, bytes.green, isBlueFirst ? bytes.red : bytes.blue, D8(),
                          to[0] + 3 * x);
  }
#endif
};

/// A row for each component, of 8 bits or of less.
struct RowPixels {
  static constexpr Deal kDeal = Deal::Sixteens;
  static constexpr bool kIsOneLuma = false;
  static constexpr int32_t kBytes = 1;
  static constexpr int32_t kRows = 3;

  static HWY_INLINE const uint16_t *roundingOfRed(const RgbOfYuv &colours, const Rounding &rounding) {
    return colours.red.most == 31 ? rounding.five : rounding.eight;
  }
  static HWY_INLINE const uint16_t *roundingOfGreen(const RgbOfYuv &colours, const Rounding &rounding) {
    return colours.green.most == 63 ? rounding.six : rounding.eight;
  }

  HWY_INLINE explicit RowPixels(const RgbOfYuv &colours)
      : shift(colours.red.shift - 6), shiftOfGreen(colours.green.shift - 6),
        most(hn::Set(D8(), static_cast<uint8_t>(colours.red.most))),
        mostOfGreen(hn::Set(D8(), static_cast<uint8_t>(colours.green.most))) {}

  template <bool isByParity>
  HWY_INLINE void store(const HalfGroup &first, const HalfGroup &second, ptrdiff_t x, uint8_t *const to[3]) const {
    const GroupBytes bytes = orderedBytes<isByParity, kDeal>(first, second);
    hn::StoreU(upperBits(bytes.red, shift, most), D8(), to[0] + x);
    hn::StoreU(upperBits(bytes.green, shiftOfGreen, mostOfGreen), D8(), to[1] + x);
    hn::StoreU(upperBits(bytes.blue, shift, most), D8(), to[2] + x);
  }

private:
  static HWY_INLINE V8 upperBits(V8 bytes, int32_t bits, V8 mask) {
    return hn::And(hn::BitCast(D8(), hn::ShiftRightSame(hn::BitCast(D16(), bytes), bits)), mask);
  }

  int32_t shift;
  int32_t shiftOfGreen;
  V8 most;
  V8 mostOfGreen;
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
