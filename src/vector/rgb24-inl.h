// Colour arithmetics of 24-bit pixels in 16-bit lanes, and how pixels are stored. Pixels of even and of odd columns
// stay in vectors of their own until they are packed, so that what comes from half chroma is never duplicated.

// Read once a level.
#if defined(ZQCC_VECTOR_RGB24_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_RGB24_INL_H
#undef ZQCC_VECTOR_RGB24_INL_H
#else
#define ZQCC_VECTOR_RGB24_INL_H
#endif

#include "vector/blocks-inl.h"
#include "vector/stages.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// 16-bit lanes for a vector of bytes.
template <class D>
using Words = hn::Repartition<int16_t, D>;

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

/// Components of the pixels of every second column, one a lane, not yet limited to a byte.
template <class V>
struct Components {
  V blue;
  V green;
  V red;
};

/// A constant that is made once: its value is hidden from the compiler, which would rather make it anew in every turn
/// of a loop that is short of registers than read it from memory.
HWY_INLINE int16_t once(int32_t value) {
  __asm__("" : "+r"(value));
  return static_cast<int16_t>(value);
}

/// The low 16 bits.
constexpr int16_t low16(int32_t value) {
  return static_cast<int16_t>(static_cast<uint16_t>(static_cast<uint32_t>(value) & 0xFFFF));
}

/// Fixed limited-range BT.601 with 12 fractional bits (see zqcc::StudioQ12), scaled by 16: with Y = 76272 y and a term
/// t of the chroma, a component is (Y + t) >> 16, of which
///
///   Y = 65536 yHigh + yLow,  t = 65536 tHigh + tLow,  both low parts signed 16-bit numbers.
///
/// So it is yHigh + tHigh, less one where yLow + tLow is negative: where yLow < -tLow. The low parts are products
/// modulo 65536, the high ones rounded products, which is what signed low parts need.
///
/// Y and t are multiples of 16. A constant below 16 in t (kSlack) does not show in the result, and keeps tLow and the
/// sums that it is made of away from -32768, which has no negative.
struct Studio24 {

  static constexpr int32_t kLuma = 16 * 4767;
  static constexpr int32_t kSlack = 8;
  static constexpr int32_t kOffset = -16 * kLuma + kSlack;

  /// A factor F, and with it an offset e so that F * (8 (c - 128) + e) = 8 F (c - 128) + kOffset modulo 65536: the
  /// offset of a term comes with the product. What the product has too much is a multiple of 65536.
  static constexpr int32_t kBlue = 16 * 8261 / 8;
  static constexpr int32_t kRed = 16 * 6537 / 8;
  static constexpr int32_t kGreenU = 16 * 1605 / 8;
  static constexpr int32_t kGreenV = 16 * 3330 / 8;
  static constexpr int32_t kOffsetU = 180;
  static constexpr int32_t kOffsetV = 16228;
  /// The same for green, which takes both: u has an offset of its own there.
  static constexpr int32_t kOffsetGreenU = 7972;

  static constexpr int32_t kTooMuchBlue = kBlue * kOffsetU - kOffset;
  static constexpr int32_t kTooMuchRed = kRed * kOffsetV - kOffset;
  static constexpr int32_t kTooMuchGreen = -kGreenV * kOffsetV - kGreenU * kOffsetGreenU - kOffset;
  static_assert(kTooMuchBlue % 65536 == 0 && kTooMuchRed % 65536 == 0 && kTooMuchGreen % 65536 == 0);
};

/// A factor F, even, of signed 16-bit numbers.
template <class D16>
class SplitProduct {
public:
  HWY_INLINE explicit SplitProduct(int32_t factor)
      : half(hn::Set(D16(), once(factor / 2))), negative(hn::Set(D16(), once(low16(-factor)))) {}

  /// (F value + 32768) >> 16.
  HWY_INLINE hn::Vec<D16> high(hn::Vec<D16> value) const { return hn::MulFixedPoint15(value, half); }
  /// - F value modulo 65536.
  HWY_INLINE hn::Vec<D16> negativeLow(hn::Vec<D16> value) const { return hn::Mul(value, negative); }

private:
  hn::Vec<D16> half;
  hn::Vec<D16> negative;
};

template <class D>
class StudioQ12Lanes {
public:
  using D16 = Words<D>;
  using V = hn::Vec<D16>;
  static constexpr int kLumaScale = 2; // a rounded product has no factor as large as 76272 / 65536, but half of it

  HWY_INLINE explicit StudioQ12Lanes(const ColourConstants & /*built in*/) {}

  /// Of every component what is added to yHigh, and what yLow is compared with.
  struct Terms {
    Components<V> high;
    Components<V> negativeLow;
  };

  HWY_INLINE Terms terms(V u, V v) const {
    const V u8 = hn::Add(hn::ShiftLeft<3>(u), offsetU);
    const V v8 = hn::Add(hn::ShiftLeft<3>(v), offsetV);
    const V greenU8 = hn::Add(u8, moreGreenU);
    Terms t;
    t.high.blue = hn::Sub(blue.high(u8), tooMuchBlue);
    t.negativeLow.blue = blue.negativeLow(u8);
    t.high.red = hn::Sub(red.high(v8), tooMuchRed);
    t.negativeLow.red = red.negativeLow(v8);
    // Two products in two such parts each. The sum of the low parts may need 17 bits: that it does shows in its sign.
    const V negativeLowU = greenU.negativeLow(greenU8);
    const V lowV = hn::Mul(v8, greenLowV);
    const V floored =
        lessOneWhere(hn::Lt(lowV, negativeLowU), hn::Add(greenU.high(greenU8), hn::MulFixedPoint15(v8, greenHighV)));
    t.negativeLow.green = hn::Sub(negativeLowU, lowV);
    t.high.green = oneMoreWhere(hn::Gt(t.negativeLow.green, hn::Zero(D16())), hn::Sub(floored, tooMuchGreen));
    return t;
  }

  /// y is doubled.
  HWY_INLINE Components<V> pixels(V y, const Terms &t) const {
    const V yHigh = hn::MulFixedPoint15(y, lumaHigh);
    const V yLow = hn::Mul(y, lumaLow);
    return {component(yHigh, yLow, t.high.blue, t.negativeLow.blue),
            component(yHigh, yLow, t.high.green, t.negativeLow.green),
            component(yHigh, yLow, t.high.red, t.negativeLow.red)};
  }

  /// Packing has limited the components to 0..255.
  HWY_INLINE hn::Vec<D> limited(hn::Vec<D> components) const { return components; }

private:
#if HWY_TARGET == HWY_AVX3
  template <class M>
  HWY_INLINE static V lessOneWhere(M mask, V value) {
    return hn::IfThenElse(mask, hn::Sub(value, hn::Set(D16(), 1)), value);
  }
  template <class M>
  HWY_INLINE static V oneMoreWhere(M mask, V value) {
    return hn::IfThenElse(mask, hn::Add(value, hn::Set(D16(), 1)), value);
  }
#else
  template <class M>
  HWY_INLINE static V lessOneWhere(M mask, V value) {
    return hn::Add(value, hn::VecFromMask(D16(), mask));
  }
  template <class M>
  HWY_INLINE static V oneMoreWhere(M mask, V value) {
    return hn::Sub(value, hn::VecFromMask(D16(), mask));
  }
#endif
  HWY_INLINE static V component(V yHigh, V yLow, V tHigh, V negativeLow) {
    return lessOneWhere(hn::Lt(yLow, negativeLow), hn::Add(yHigh, tHigh));
  }
  HWY_INLINE static V constant(int32_t value) {
    return hn::Set(D16(), once(value));
  }

  V lumaHigh = constant(Studio24::kLuma / 4);
  V lumaLow = constant(low16(Studio24::kLuma / 2));
  SplitProduct<D16> blue{Studio24::kBlue};
  SplitProduct<D16> red{Studio24::kRed};
  SplitProduct<D16> greenU{-Studio24::kGreenU};
  V greenHighV = constant(-Studio24::kGreenV / 2);
  V greenLowV = constant(-Studio24::kGreenV);
  V offsetU = constant(Studio24::kOffsetU - 8 * 128);
  V offsetV = constant(Studio24::kOffsetV - 8 * 128);
  V moreGreenU = constant(Studio24::kOffsetGreenU - Studio24::kOffsetU);
  V tooMuchBlue = constant(Studio24::kTooMuchBlue / 65536);
  V tooMuchRed = constant(Studio24::kTooMuchRed / 65536);
  V tooMuchGreen = constant(Studio24::kTooMuchGreen / 65536);
};

/// The matrix in force (see zqcc::MatrixRgb24): terms of whole steps, and every component held in 16..235.
template <class D>
class MatrixRgb24Lanes {
public:
  using D16 = Words<D>;
  using V = hn::Vec<D16>;
  static constexpr int kLumaScale = 1;

  HWY_INLINE explicit MatrixRgb24Lanes(const ColourConstants &constants)
      : crToR(constants.crToR), crToG(constants.crToG), cbToB(constants.cbToB), cbToG(constants.cbToG) {}

  /// What luma gains in blue and red, and loses in green.
  using Terms = Components<V>;

  HWY_INLINE Terms terms(V u, V v) const {
    const D16 d;
    const V cb = hn::Sub(u, hn::Set(d, 128));
    const V cr = hn::Sub(v, hn::Set(d, 128));
    const V cb256 = hn::ShiftLeft<8>(cb);
    const V cr256 = hn::ShiftLeft<8>(cr);
    return {shifted(cbToB.times(cb256, cb)), shifted(sum(cbToG.times(cb256, cb), crToG.times(cr256, cr))),
            shifted(crToR.times(cr256, cr))};
  }

  HWY_INLINE Components<V> pixels(V y, const Terms &t) const {
    return {hn::Add(y, t.blue), hn::Sub(y, t.green), hn::Add(y, t.red)};
  }

  HWY_INLINE hn::Vec<D> limited(hn::Vec<D> components) const {
    const D d;
    return hn::Min(hn::Max(components, hn::Set(d, 16)), hn::Set(d, 235));
  }

private:
  using D32 = hn::Repartition<int32_t, D>;
  using V32 = hn::Vec<D32>;

  /// 32-bit lanes for the lower and the upper half of every block's 16-bit lanes; of NEON's only block in order as
  /// well.
  struct Wide {
    V32 lower;
    V32 upper;
  };

  /// A coefficient of 24 bits: c * coefficient = (256 c) * high + c * low.
  class Factor {
  public:
#if HWY_ARCH_X86
    /// Products of pairs are summed by one instruction.
    HWY_INLINE explicit Factor(const SplitFactor &split)
        : pair(hn::BitCast(D16(), hn::Set(D32(), static_cast<int32_t>(static_cast<uint32_t>(split.low) << 16 |
                                                                      (static_cast<uint32_t>(split.high) & 0xFFFF))))) {
    }
    HWY_INLINE Wide times(V c256, V c) const {
      V32 none = hn::Zero(D32());
      const auto products = [&](V pairs) HWY_ATTR {
        return hn::ReorderWidenMulAccumulate(D32(), pairs, pair, hn::Zero(D32()), none);
      };
      return {products(hn::InterleaveLower(D16(), c256, c)), products(hn::InterleaveUpper(D16(), c256, c))};
    }

  private:
    V pair;
#else
    HWY_INLINE explicit Factor(const SplitFactor &split)
        : high(hn::Set(D16(), split.high)), low(hn::Set(D16(), split.low)) {}
    HWY_INLINE Wide times(V c256, V c) const {
      Wide sums{hn::Zero(D32()), hn::Zero(D32())};
      sums.lower = hn::ReorderWidenMulAccumulate(D32(), c256, high, sums.lower, sums.upper);
      sums.lower = hn::ReorderWidenMulAccumulate(D32(), c, low, sums.lower, sums.upper);
      return sums;
    }

  private:
    V high;
    V low;
#endif
  };

  HWY_INLINE static Wide sum(const Wide &a, const Wide &b) {
    return {hn::Add(a.lower, b.lower), hn::Add(a.upper, b.upper)};
  }
  HWY_INLINE static V shifted(const Wide &products) {
    return hn::ReorderDemote2To(D16(), hn::ShiftRight<20>(products.lower), hn::ShiftRight<20>(products.upper));
  }

  Factor crToR;
  Factor crToG;
  Factor cbToB;
  Factor cbToG;
};

#if HWY_ARCH_X86

/// Six bytes of two neighbouring pixels are three words: blue and green of the even pixel, its red and blue of the odd
/// one, green and red of the odd one. Packing puts the bytes of eight such words into a block, those that come first in
/// its lower half; one shuffle makes words of them, each where it stands in the block of the picture that it goes to.
/// Word k of kind w is number 3 k + w, so that every kind fills each of the eight positions once.
template <int kind>
struct WordOrder {
  static constexpr uint8_t word(int position) { return static_cast<uint8_t>((position - kind + 8) * 3 % 8); }
  static constexpr uint8_t from(int byte) { return static_cast<uint8_t>(word(byte / 2) + byte % 2 * 8); }
  alignas(16) static constexpr uint8_t kOrder[16] = {from(0),  from(1),  from(2),  from(3), from(4),  from(5),
                                                     from(6),  from(7),  from(8),  from(9), from(10), from(11),
                                                     from(12), from(13), from(14), from(15)};
};

template <int kind, class D, class V>
HWY_INLINE hn::Vec<D> packWords(D d, V first, V second) {
  return hn::TableLookupBytes(packBlocks(first, second), hn::LoadDup128(d, WordOrder<kind>::kOrder));
}

/// Stores as many pixels as D has lanes: bytes blue, green, red.
template <class D, class V, class Limit>
HWY_INLINE void storePixels(D d, const Components<V> &even, const Components<V> &odd, const Limit &limit, uint8_t *to) {
  const auto w0 = packWords<0>(d, even.blue, even.green);
  const auto w1 = packWords<1>(d, even.red, odd.blue);
  const auto w2 = packWords<2>(d, odd.green, odd.red);
  // Bits of the words whose number is 1 and 2 modulo 3, in three blocks one after another.
  const auto block0 = blendBlocks<uint16_t, 0x24>(blendBlocks<uint16_t, 0x92>(w0, w1), w2);
  const auto block1 = blendBlocks<uint16_t, 0x49>(blendBlocks<uint16_t, 0x24>(w0, w1), w2);
  const auto block2 = blendBlocks<uint16_t, 0x92>(blendBlocks<uint16_t, 0x49>(w0, w1), w2);
  storeBlocks3(d, limit(block0), limit(block1), limit(block2), to);
}

#else

/// Bytes of even and odd pixels in the order of the picture.
alignas(16) constexpr uint8_t kMerged[16] = {0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15};
template <class D, class V>
HWY_INLINE hn::Vec<D> mergePixels(D d, V even, V odd) {
  return hn::TableLookupBytes(packBlocks(even, odd), hn::Load(d, kMerged));
}

/// Stores as many pixels as D has lanes: bytes blue, green, red.
template <class D, class V, class Limit>
HWY_INLINE void storePixels(D d, const Components<V> &even, const Components<V> &odd, const Limit &limit, uint8_t *to) {
  hn::StoreInterleaved3(limit(mergePixels(d, even.blue, odd.blue)), limit(mergePixels(d, even.green, odd.green)),
                        limit(mergePixels(d, even.red, odd.red)), d, to);
}

#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
