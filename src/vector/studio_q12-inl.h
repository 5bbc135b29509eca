// Fixed BT.601 with 12 fractional bits, exact in 16-bit lanes.

// Read once a level.
#if defined(ZQCC_VECTOR_STUDIO_Q12_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_STUDIO_Q12_INL_H
#undef ZQCC_VECTOR_STUDIO_Q12_INL_H
#else
#define ZQCC_VECTOR_STUDIO_Q12_INL_H
#endif

#include "vector/components-inl.h"
#include "vector/stages.h"
#include "vector/words-inl.h"

#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// A number in every lane that stays there.
template <class D16>
HWY_INLINE hn::Vec<D16> constantLanes(D16 d16, int32_t number) {
  return hn::Set(d16, static_cast<int16_t>(hidden(number)));
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
      : half(constantLanes(D16(), factor / 2)), negative(constantLanes(D16(), low16(-factor))) {}

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
    return constantLanes(D16(), value);
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

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
