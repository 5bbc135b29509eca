// The sums and products of studio565-inl.h as NEON has them. Luma is the same 55 y, green's terms are the same numbers,
// those of red and blue are inside the same ranges; what differs is the instructions that they suit:
//  - the doubling high product is signed, takes one instruction, and its factors can be lanes of one register;
//  - chroma and luma are multiplied as bytes, even and odd ones brought apart when they are loaded;
//  - the shift that follows a product is part of clamping it, and shifts that insert make pixels of components.
#if defined(ZQCC_VECTOR_STUDIO565_NEON_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_STUDIO565_NEON_INL_H
#undef ZQCC_VECTOR_STUDIO565_NEON_INL_H
#else
#define ZQCC_VECTOR_STUDIO565_NEON_INL_H
#endif

#include "vector/words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Every number of the arithmetic; sums and products are modulo 2^16.
struct StudioNumbers {
  static constexpr int64_t kY = 1220542;
  static constexpr int64_t kCrG = 852492;
  static constexpr int64_t kCbG = 411041;
  static constexpr int64_t kInverseOf167 = 42775;
  static constexpr int16_t low(int64_t value) { return static_cast<int16_t>(static_cast<uint16_t>(value & 0xFFFF)); }

  static constexpr uint8_t kLuma = 55;
  static constexpr uint8_t kScaleV = 167;
  static constexpr uint8_t kScaleU = 96;
  static constexpr uint8_t kGreenScaleU = 54;
  static constexpr uint8_t kGreenScaleV = 112;
  static constexpr uint8_t kBlueLess = 168;
  static constexpr uint8_t kBlueLessAtTop = 132;

  enum Factor { eighths, halfUnit, redFactor, blueFactor, greenFactor, restFactorU, restFactorV, restFactorY };
  enum Offset { offsetV, offsetU, blueOffset, greenScaled, greenOffset, restOffset };
  static constexpr int16_t kOffsetV = -23323;
  static constexpr int16_t kOffsetU = -1439;

  // By the names above. Blue is 96 u and the rest of its factor of offsetU - u; the last term of green is made of what
  // red and blue have made of u and v already.
  alignas(16) int16_t factors[8] = {1387,
                                    22192,
                                    14797,
                                    22796,
                                    11239,
                                    low(-kCbG),               // of kOffsetU - u
                                    low(kCrG *kInverseOf167), // of 167 v + kOffsetV
                                    27854};
  alignas(16) int16_t offsets[8] = {
      kOffsetV,
      kOffsetU,
      -12077,
      24 - 32768,
      11239 - 6414,
      low(-1 - 128 * (kCrG + kCbG) + 16 * kY + kCbG * kOffsetU - (kCrG * kInverseOf167 % 65536) * kOffsetV)};
};
static_assert(StudioNumbers::low(StudioNumbers().factors[StudioNumbers::restFactorY] * 55 + StudioNumbers::kY) == 0);
static_assert(StudioNumbers::kInverseOf167 * 167 % 65536 == 1);

constexpr StudioNumbers kStudioNumbers;

/// All of them in registers: factors as lanes of one.
template <class D>
struct StudioConstants {
  HWY_INLINE explicit StudioConstants(D /*d*/) {} // written out, so that it is compiled for the level

  const StudioNumbers *const numbers = hidden(&kStudioNumbers);
  const int16x8_t factors = factorsOf(*numbers);
  const int16x8_t offsetV = offsetOf(*numbers, StudioNumbers::offsetV);
  const int16x8_t offsetU = offsetOf(*numbers, StudioNumbers::offsetU);
  const int16x8_t blueOffset = offsetOf(*numbers, StudioNumbers::blueOffset);
  const int16x8_t greenScaled = offsetOf(*numbers, StudioNumbers::greenScaled);
  const int16x8_t greenOffset = offsetOf(*numbers, StudioNumbers::greenOffset);
  const int16x8_t restOffset = offsetOf(*numbers, StudioNumbers::restOffset);

  /// The upper half of twice the product.
  template <int factor>
  HWY_INLINE int16x8_t high(int16x8_t a) const {
    return vqdmulhq_laneq_s16(a, factors, factor);
  }

private:
  static HWY_INLINE int16x8_t factorsOf(const StudioNumbers &numbers) { return vld1q_s16(numbers.factors); }
  static HWY_INLINE int16x8_t offsetOf(const StudioNumbers &numbers, StudioNumbers::Offset offset) {
    return vld1q_dup_s16(numbers.offsets + offset);
  }
};

/// What the pixels of a chroma sample add to their luma.
template <class D>
struct StudioTermsOf {
  int16x8_t red, blue, green, greenRest;
};

HWY_INLINE int16x8_t timesByte(uint8x8_t bytes, uint8_t factor) {
  return vreinterpretq_s16_u16(vmull_u8(bytes, vdup_n_u8(factor)));
}

template <StudioClamp clamp, class D>
HWY_INLINE StudioTermsOf<D> studioTerms(D /*d*/, const StudioConstants<D> &k, uint8x8_t u, uint8x8_t v) {
  using N = StudioNumbers;
  const auto scaledV = vaddq_s16(timesByte(v, N::kScaleV), k.offsetV);
  const auto minusU = vreinterpretq_s16_u16(vsubw_u8(vreinterpretq_u16_s16(k.offsetU), u));
  const auto blueRest = vreinterpretq_u16_s16(k.template high<N::blueFactor>(minusU));
  auto blue = vaddq_s16(vreinterpretq_s16_u16(vmlal_u8(blueRest, u, vdup_n_u8(N::kScaleU))), k.blueOffset);
  blue = vaddw_s8(blue, vreinterpret_s8_u8(vceq_u8(u, vdup_n_u8(N::kBlueLess))));
  if constexpr (clamp == StudioClamp::fiveSix) {
    blue = vaddw_s8(blue, vreinterpret_s8_u8(vceq_u8(u, vdup_n_u8(N::kBlueLessAtTop))));
  }
  auto green = vmull_u8(u, vdup_n_u8(N::kGreenScaleU));
  green = vmlal_u8(green, v, vdup_n_u8(N::kGreenScaleV));
  const auto scaledGreen = vaddq_s16(vreinterpretq_s16_u16(green), k.greenScaled);
  auto rest = vmulq_laneq_s16(scaledV, k.factors, N::restFactorV);
  rest = vaddq_s16(vmlaq_laneq_s16(rest, minusU, k.factors, N::restFactorU), k.restOffset);
  return {k.template high<N::redFactor>(scaledV), blue,
          vaddq_s16(k.template high<N::greenFactor>(scaledGreen), k.greenOffset), rest};
}

/// Components of eight pixels, not clamped yet. A full range is 256, with kRedBlueShift and kGreenShift bits below it.
struct StudioWords {
  int16x8_t red, green, blue;
};
constexpr int kRedBlueShift = 1;
constexpr int kGreenShift = 5;

template <class D>
HWY_INLINE StudioWords studioWords(const StudioConstants<D> &k, uint8x8_t luma, const StudioTermsOf<D> &terms) {
  using N = StudioNumbers;
  const auto y = timesByte(luma, N::kLuma);
  const auto rest = vmlaq_laneq_s16(terms.greenRest, y, k.factors, N::restFactorY);
  const auto near = vqrdmulhq_laneq_s16(vsubq_s16(y, terms.green), k.factors, N::halfUnit);
  const auto green = vsraq_n_u16(vreinterpretq_u16_s16(near), vreinterpretq_u16_s16(rest), 15);
  return {k.template high<N::eighths>(vaddq_s16(y, terms.red)), vreinterpretq_s16_u16(green),
          k.template high<N::eighths>(vaddq_s16(y, terms.blue))};
}

/// Even words, then odd ones, clamped to bytes and to the range of the arithmetic.
template <StudioClamp clamp, int shift>
HWY_INLINE uint8x16_t studioBytes(int16x8_t even, int16x8_t odd) {
  const auto narrow = vqshrun_high_n_s16(vqshrun_n_s16(even, shift), odd, shift);
  if constexpr (clamp == StudioClamp::videoRange) {
    return vminq_u8(vmaxq_u8(narrow, vdupq_n_u8(16)), vdupq_n_u8(235));
  } else {
    return narrow;
  }
}

/// The same of red and blue: in the table of 5 bits 29 stands twice, so that from level 30 on it is one level less.
template <StudioClamp clamp>
HWY_INLINE uint8x16_t studioRedBlueBytes(int16x8_t even, int16x8_t odd) {
  const auto narrow = studioBytes<clamp, kRedBlueShift>(even, odd);
  if constexpr (clamp == StudioClamp::fiveSix) {
    const auto level = vdupq_n_s16(8 << kRedBlueShift);
    const auto less = studioBytes<clamp, kRedBlueShift>(vsubq_s16(even, level), vsubq_s16(odd, level));
    return vmaxq_u8(vminq_u8(narrow, vdupq_n_u8(30 * 8 - 1)), less);
  } else {
    return narrow;
  }
}

/// Makes the pixels of a line, whose even and odd ones have the terms given.
template <StudioClamp clamp, class D>
HWY_INLINE void studioPixels(D d, const StudioConstants<D> &k, const uint8_t *from, const StudioTermsOf<D> &evenTerms,
                             const StudioTermsOf<D> &oddTerms, uint8_t *to) {
  const auto y = vld2_u8(from);
  const auto even = studioWords(k, y.val[0], evenTerms);
  const auto odd = studioWords(k, y.val[1], oddTerms);
  const auto red = studioRedBlueBytes<clamp>(even.red, odd.red);
  const auto green = studioBytes<clamp, kGreenShift>(even.green, odd.green);
  const auto blue = studioRedBlueBytes<clamp>(even.blue, odd.blue);
  const uint8x16_t high = vsriq_n_u8(red, green, 5);
  const uint8x16_t low = vsriq_n_u8(vshlq_n_u8(green, 3), blue, 3);
  const hn::Vec<D> evens{vreinterpretq_u16_u8(vzip1q_u8(low, high))};
  const hn::Vec<D> odds{vreinterpretq_u16_u8(vzip2q_u8(low, high))};
  hn::StoreInterleaved2(evens, odds, d, reinterpret_cast<uint16_t *>(to));
}

/// Samples of half resolution.
template <class D>
HWY_INLINE uint8x8_t studioHalfSamples(D /*d*/, const uint8_t *from) {
  return vld1_u8(from);
}

/// Of pairs of samples the first ones, or the second ones.
template <class D>
using StudioOrder = uint8x8_t;

template <class D>
HWY_INLINE uint8x8_t studioOrder(D /*d*/, bool second) {
  return vcreate_u8(0x0E0C0A0806040200 + (second ? 0x0101010101010101 : 0));
}
template <class D>
HWY_INLINE uint8x8_t studioSamplesOf(D /*d*/, const uint8_t *from, uint8x8_t order) {
  return vqtbl1_u8(vld1q_u8(from), order);
}

/// Samples of full resolution, and the even and the odd ones of them.
template <class D>
HWY_INLINE uint8x8x2_t studioFullSamples(D /*d*/, const uint8_t *from) {
  return vld2_u8(from);
}
HWY_INLINE uint8x8_t studioEven(uint8x8x2_t samples) {
  return samples.val[0];
}
HWY_INLINE uint8x8_t studioOdd(uint8x8x2_t samples) {
  return samples.val[1];
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
