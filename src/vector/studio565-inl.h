// Fixed limited-range BT.601 to RGB565, exact for every (y, u, v), in 16-bit lanes.
//
// The equations, with 20 fractional bits (kernels/arithmetic.h):
//   T(red)   = 1220542 (y - 16)                      + 1673527 (v - 128)
//   T(green) = 1220542 (y - 16) - 411041 (u - 128)   -  852492 (v - 128)
//   T(blue)  = 1220542 (y - 16) + 2114977 (u - 128)
// A pixel needs floor(T / 2^23) of red and blue and floor(T / 2^22) of green, clamped. T has 30 bits; the lanes
// have 16.
//
// Red and blue. 1220542 / 2^23 is 0.1455 but for 5e-8, and 55 / 378 is a close approximation of that. On a scale of 378
// units a level, luma is therefore the whole number 55 y, without any rounding, and adding chroma as a whole number g
// asks of g only that 55 y + g reaches 378 k exactly when T reaches 2^23 k, for the 256 values of y and the levels k
// that aren't clamped away. The 256 values of y fall on different places modulo 378, in the true order, so that for
// each chroma sample there is a range of one to dozens of numbers g that are right for all y and k. The constants below
// are one choice (of a search over all of its kind) where a 16-bit product lies inside these ranges: of red for all
// 256 samples, of blue for all but one (and one more where the level above the highest counts), which are corrected.
// (sum + 1) * 1387 >> 16 then is eight times the level, three fractional bits below it: 1387 * 378 is 2^19 - 2, and the
// added one makes up for the two up to level 40.
//
// Green has too many combinations of chroma for that. One unit of the same scale is 22192 of T, so that a rounded
// product of 55 y - g with 22192 / 2^15 is an approximation of T >> 15, with g a 16-bit product of 54 u + 112 v, whose
// ratio is that of the factors. It is either T >> 15 or one less, for all 2^24 colours: twice a rounding, and the
// constants leave just enough for the errors of ratio and scale. T modulo 2^16, of low products, has no error, and its
// upper bit is the lowest one of T >> 15. With that bit's complement added, the approximation is in the same pair of
// numbers as T >> 15 itself, and no level ends inside of a pair.
//
// So every component comes as a word whose upper bits are exact, on a scale of 256 for full range. Narrowing with
// saturation to bytes clamps all of them; even and odd pixels were apart until then, so that chroma is never doubled.
#if defined(ZQCC_VECTOR_STUDIO565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_STUDIO565_INL_H
#undef ZQCC_VECTOR_STUDIO565_INL_H
#else
#define ZQCC_VECTOR_STUDIO565_INL_H
#endif

#include "vector/pack565-inl.h"
#include "vector/words-inl.h"

namespace zqcc::HWY_NAMESPACE {
namespace {

/// How components are clamped and reduced; see kernels/arithmetic.h.
enum class StudioClamp { sixBit, videoRange, fiveSix };

} // namespace
} // namespace zqcc::HWY_NAMESPACE

#if HWY_TARGET == HWY_NEON
#include "vector/studio565_neon-inl.h"
#else
HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Every number of the arithmetic; sums and products are modulo 2^16.
struct StudioNumbers {
  static constexpr int64_t kY = 1220542;
  static constexpr int64_t kCrG = 852492;
  static constexpr int64_t kCbG = 411041;
  static constexpr uint16_t low(int64_t value) { return static_cast<uint16_t>(value & 0xFFFF); }

  // Chroma before its high products.
  uint16_t scaleU = 96;
  uint16_t offsetU = 8;
  uint16_t scaleV = 167;
  uint16_t offsetV = low(-23323);
  // Red and blue, 378 a level. Of blue, samples 168 and, for the level above the highest, 132 get one less.
  uint16_t redFactor = 29594;
  uint16_t blueFactor = 65061;
  uint16_t blueOffset = low(1 - 13087);
  uint16_t blueLess = 168;
  uint16_t blueLessAtTop = 132;
  uint16_t eighths = 1387;
  // Green: its g, and -1 - T.
  uint16_t greenScaleU = 54;
  uint16_t greenScaleV = 112;
  uint16_t greenScaled = 24;
  uint16_t greenFactor = 22478;
  uint16_t greenOffset = low(-6414);
  uint16_t halfUnit = 22192;
  uint16_t restFactorU = low(kCbG);
  uint16_t restFactorV = low(kCrG);
  uint16_t restOffset = low(-1 - 128 * (kCrG + kCbG) + 16 * kY);
  uint16_t restFactorY = 27854;
  // Luma.
  uint16_t even55 = 55;
  uint16_t odd55 = 55 << 8;
};
static_assert(StudioNumbers::low(StudioNumbers().restFactorY * 55 + StudioNumbers::kY) == 0);
static_assert(StudioNumbers().eighths * 378 == (1 << 19) - 2);

constexpr StudioNumbers kStudioNumbers;

/// All of them in vectors.
template <class D>
struct StudioConstants {
  using V = hn::Vec<D>;
  using VI = hn::Vec<hn::RebindToSigned<D>>;

  HWY_INLINE explicit StudioConstants(D /*d*/) {} // written out, so that it is compiled for the level

  const StudioNumbers *const numbers = hidden(&kStudioNumbers);
  const V scaleU = of(numbers->scaleU);
  const V offsetU = of(numbers->offsetU);
  const V scaleV = of(numbers->scaleV);
  const V offsetV = of(numbers->offsetV);
  const V blueFactor = of(numbers->blueFactor);
  const V blueOffset = of(numbers->blueOffset);
  const V blueLess = of(numbers->blueLess);
  const V blueLessAtTop = of(numbers->blueLessAtTop);
  const V greenScaleU = of(numbers->greenScaleU);
  const V greenScaleV = of(numbers->greenScaleV);
  const V greenScaled = of(numbers->greenScaled);
  const V greenFactor = of(numbers->greenFactor);
  const V greenOffset = of(numbers->greenOffset);
  const V restFactorU = of(numbers->restFactorU);
  const V restFactorV = of(numbers->restFactorV);
  const V restOffset = of(numbers->restOffset);
  const V restFactorY = of(numbers->restFactorY);
  const VI redFactor = signedOf(numbers->redFactor);
  const VI halfUnit = signedOf(numbers->halfUnit);
  const VI eighths = signedOf(numbers->eighths);
  const VI even55 = signedOf(numbers->even55);
  const VI odd55 = signedOf(numbers->odd55);

private:
  static HWY_INLINE V of(uint16_t number) { return hn::Set(D(), number); }
  static HWY_INLINE VI signedOf(uint16_t number) { return hn::BitCast(hn::RebindToSigned<D>(), of(number)); }
};

/// What the pixels of a chroma sample add to their luma.
template <class D>
struct StudioTermsOf {
  hn::Vec<hn::RebindToSigned<D>> red;
  hn::Vec<hn::RebindToSigned<D>> blue;
  hn::Vec<hn::RebindToSigned<D>> green;
  hn::Vec<D> greenRest;
};

template <StudioClamp clamp, class D>
HWY_INLINE StudioTermsOf<D> studioTerms(D d, const StudioConstants<D> &k, hn::Vec<D> u, hn::Vec<D> v) {
  const hn::RebindToSigned<D> di;
  const auto scaledU = hn::Add(hn::Mul(u, k.scaleU), k.offsetU);
  const auto scaledV = hn::BitCast(di, hn::Add(hn::Mul(v, k.scaleV), k.offsetV));
  const auto red = hn::MulHigh(scaledV, k.redFactor);
  auto blue = hn::Add(hn::MulHigh(scaledU, k.blueFactor), k.blueOffset);
  blue = hn::Add(blue, hn::VecFromMask(d, hn::Eq(u, k.blueLess)));
  if constexpr (clamp == StudioClamp::fiveSix) {
    blue = hn::Add(blue, hn::VecFromMask(d, hn::Eq(u, k.blueLessAtTop)));
  }
  const auto scaled = hn::Add(hn::Add(hn::Mul(u, k.greenScaleU), hn::Mul(v, k.greenScaleV)), k.greenScaled);
  const auto green = hn::Add(hn::MulHigh(scaled, k.greenFactor), k.greenOffset);
  const auto rest = hn::Add(hn::Mul(u, k.restFactorU), hn::Mul(v, k.restFactorV));
  return {red, hn::BitCast(di, blue), hn::BitCast(di, green), hn::Add(rest, k.restOffset)};
}

/// Words on a scale of 256 a full range, not clamped yet.
template <class D>
struct StudioWords {
  hn::Vec<hn::RebindToSigned<D>> red, green, blue;
};

/// From 55 y.
template <class D>
HWY_INLINE StudioWords<D> studioWords(D d, const StudioConstants<D> &k, hn::Vec<hn::RebindToSigned<D>> y,
                                      const StudioTermsOf<D> &terms) {
  const hn::RebindToSigned<D> di;
  const auto rest = hn::ShiftRight<15>(hn::Add(hn::Mul(hn::BitCast(d, y), k.restFactorY), terms.greenRest));
  const auto green = hn::Add(hn::MulFixedPoint15(hn::Sub(y, terms.green), k.halfUnit), hn::BitCast(di, rest));
  return {hn::MulHigh(hn::SaturatedAdd(y, terms.red), k.eighths), hn::ShiftRight<5>(green),
          hn::MulHigh(hn::SaturatedAdd(y, terms.blue), k.eighths)};
}

/// Words clamped to the range of the arithmetic. Its bounds of 8 bits, 16 and 235, are bounds of levels as well.
template <StudioClamp clamp, class DI>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, DI>> studioBytes(DI /*di*/, hn::Vec<DI> even, hn::Vec<DI> odd) {
  const hn::Repartition<uint8_t, DI> bytes;
  const auto narrow = packBlocks(even, odd);
  if constexpr (clamp == StudioClamp::videoRange) {
    return hn::Min(hn::Max(narrow, hn::Set(bytes, 16)), hn::Set(bytes, 235));
  } else {
    return narrow;
  }
}

/// The same of red and blue: in the table of 5 bits 29 stands twice, so that from level 30 on it is one level less.
template <StudioClamp clamp, class DI>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, DI>> studioRedBlueBytes(DI di, hn::Vec<DI> even, hn::Vec<DI> odd) {
  const auto narrow = studioBytes<clamp>(di, even, odd);
  if constexpr (clamp == StudioClamp::fiveSix) {
    const auto level = hn::Set(di, 8);
    const auto less = packBlocks(hn::Sub(even, level), hn::Sub(odd, level));
    return hn::Max(hn::Min(narrow, hn::Set(hn::Repartition<uint8_t, DI>(), 30 * 8 - 1)), less);
  } else {
    return narrow;
  }
}

// Orders of samples. Interleaving works within blocks of 16 bytes. So that its results are whole halves of the group,
// block b of a vector of samples gets the eight that belong to the first half and the eight that belong to the second.

HWY_ALIGN constexpr uint8_t kChroma2[32] = {0, 128, 1, 128, 2, 128, 3, 128, 8,  128, 9,  128, 10, 128, 11, 128,
                                            4, 128, 5, 128, 6, 128, 7, 128, 12, 128, 13, 128, 14, 128, 15, 128};
HWY_ALIGN constexpr uint32_t kChroma4[8] = {0, 4, 1, 5, 2, 6, 3, 7};

/// Samples of full resolution.
template <class D>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, D>> studioSamples(D /*d*/, const uint8_t *from) {
  return zipHalves(hn::LoadU(hn::Repartition<uint8_t, D>(), from));
}

/// Samples of full resolution, and the even and the odd ones of them as words.
template <class D>
HWY_INLINE hn::Vec<D> studioFullSamples(D d, const uint8_t *from) {
  return hn::BitCast(d, studioSamples(d, from));
}
template <class V>
HWY_INLINE V studioEven(V samples) {
  return hn::And(samples, hn::Set(hn::DFromV<V>(), 0xFF));
}
template <class V>
HWY_INLINE V studioOdd(V samples) {
  return hn::ShiftRight<8>(samples);
}

/// Samples of half resolution as words.
template <class D>
HWY_INLINE hn::Vec<D> studioHalfSamples(D d, const uint8_t *from) {
  if constexpr (hn::MaxLanes(d) == 8) {
    return hn::PromoteTo(d, hn::LoadU(hn::Rebind<uint8_t, D>(), from));
  } else if constexpr (hn::MaxLanes(d) == 16) {
    const hn::Repartition<uint8_t, D> bytes;
    return hn::BitCast(d, hn::TableLookupBytes(hn::LoadDup128(bytes, from), hn::Load(bytes, kChroma2)));
  } else {
    const hn::Rebind<uint8_t, D> bytes;
    const hn::Repartition<uint32_t, decltype(bytes)> d32;
    const auto order = hn::SetTableIndices(d32, kChroma4);
    return hn::PromoteTo(d, hn::BitCast(bytes, hn::TableLookupLanes(hn::BitCast(d32, hn::LoadU(bytes, from)), order)));
  }
}

/// Of pairs of samples the first ones, or the second ones, as words.
HWY_ALIGN constexpr uint8_t kOfPairs[2][16] = {{0, 128, 2, 128, 4, 128, 6, 128, 8, 128, 10, 128, 12, 128, 14, 128},
                                               {1, 128, 3, 128, 5, 128, 7, 128, 9, 128, 11, 128, 13, 128, 15, 128}};
template <class D>
using StudioOrder = hn::Vec<hn::Repartition<uint8_t, D>>;

template <class D>
HWY_INLINE StudioOrder<D> studioOrder(D /*d*/, bool second) {
  return hn::LoadDup128(hn::Repartition<uint8_t, D>(), kOfPairs[second ? 1 : 0]);
}
template <class D>
HWY_INLINE hn::Vec<D> studioSamplesOf(D d, const uint8_t *from, StudioOrder<D> order) {
  return hn::BitCast(d, hn::TableLookupBytes(studioSamples(d, from), order));
}

/// Makes the pixels of a line, whose even and odd ones have the terms given.
template <StudioClamp clamp, class D>
HWY_INLINE void studioPixels(D d, const StudioConstants<D> &k, const uint8_t *from, const StudioTermsOf<D> &evenTerms,
                             const StudioTermsOf<D> &oddTerms, uint8_t *to) {
  const hn::RebindToSigned<D> di;
  const hn::Repartition<uint8_t, D> bytes;
  const auto y = studioSamples(d, from);
  const auto even = studioWords(d, k, sumPairs(y, k.even55), evenTerms);
  const auto odd = studioWords(d, k, sumPairs(y, k.odd55), oddTerms);
  const auto red = studioRedBlueBytes<clamp>(di, even.red, odd.red);
  const auto green = studioBytes<clamp>(di, even.green, odd.green);
  const auto blue = studioRedBlueBytes<clamp>(di, even.blue, odd.blue);
  const auto packed = rgb565(bytes, red, green, blue);
  const auto evens = hn::BitCast(d, hn::InterleaveLower(bytes, packed.low, packed.high));
  const auto odds = hn::BitCast(d, hn::InterleaveUpper(bytes, packed.low, packed.high));
  auto *words = reinterpret_cast<uint16_t *>(to);
  hn::StoreU(hn::InterleaveLower(d, evens, odds), d, words);
  hn::StoreU(hn::InterleaveUpper(d, evens, odds), d, words + hn::MaxLanes(d));
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif // NEON
#endif
