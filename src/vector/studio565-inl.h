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
// Green has too many combinations of chroma for that. A sum of three 16-bit products approximates T >> 14: it is one
// of (T >> 14) - 3 .. T >> 14. T modulo 2^16, of low products without rounding, tells the two lowest bits of T >> 14:
// adding their complement to the approximation gives a number in the same group of four as T >> 14 itself, and no level
// ends inside of such a group.
//
// So every component comes as a word whose upper bits are exact, on a scale of 256 for full range. Narrowing with
// saturation to bytes clamps all of them; even and odd pixels were apart until then, so that chroma is never doubled.
#if defined(ZQCC_VECTOR_STUDIO565_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_STUDIO565_INL_H
#undef ZQCC_VECTOR_STUDIO565_INL_H
#else
#define ZQCC_VECTOR_STUDIO565_INL_H
#endif

#include "vector/bytes-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// How components are clamped and reduced; see kernels/arithmetic.h.
enum class StudioClamp { sixBit, videoRange, fiveSix };

/// What the pixels of a chroma sample add to their luma.
template <class DI>
struct StudioTermsOf {
  hn::Vec<DI> red;
  hn::Vec<DI> blue;
  hn::Vec<DI> green;
  hn::Vec<DI> greenRest; // -1 - T modulo 2^16, chroma's share
};

constexpr int64_t kStudioY = 1220542;
constexpr int64_t kStudioCrG = 852492;
constexpr int64_t kStudioCbG = 411041;

/// A constant modulo 2^16.
template <class D>
HWY_INLINE hn::Vec<D> wordOf(D d, int64_t value) {
  return hn::Set(d, static_cast<hn::TFromD<D>>(value & 0xFFFF));
}

/// (scale * sample + offset) * factor >> 16, unsigned.
template <StudioClamp clamp, class D>
HWY_INLINE StudioTermsOf<hn::RebindToSigned<D>> studioTerms(D d, hn::Vec<D> u, hn::Vec<D> v) {
  const hn::RebindToSigned<D> di;
  const auto scaledU = hn::Add(hn::Mul(u, hn::Set(d, 96)), hn::Set(d, 8));
  const auto scaledV = hn::Add(hn::Mul(v, hn::Set(d, 110)), hn::Set(d, 3));
  StudioTermsOf<hn::RebindToSigned<D>> terms;
  terms.red = hn::BitCast(di, hn::Add(hn::MulHigh(scaledV, hn::Set(d, 44929)), wordOf(d, 1 - 10535)));
  auto blue = hn::Add(hn::MulHigh(scaledU, hn::Set(d, 65061)), wordOf(d, 1 - 13087));
  blue = hn::Add(blue, hn::VecFromMask(d, hn::Eq(u, hn::Set(d, 168))));
  if constexpr (clamp == StudioClamp::fiveSix) {
    blue = hn::Add(blue, hn::VecFromMask(d, hn::Eq(u, hn::Set(d, 132))));
  }
  terms.blue = hn::BitCast(di, blue);
  const auto green = hn::Add(hn::MulHigh(scaledU, hn::Set(d, 17126)), hn::MulHigh(scaledV, hn::Set(d, 31000)));
  terms.green = hn::BitCast(di, hn::Sub(wordOf(d, 8680), green));
  const auto rest = hn::Add(hn::Mul(u, wordOf(d, kStudioCbG)), hn::Mul(v, wordOf(d, kStudioCrG)));
  terms.greenRest = hn::BitCast(di, hn::Add(rest, wordOf(d, -1 - 128 * (kStudioCrG + kStudioCbG) + 16 * kStudioY)));
  return terms;
}

/// Words on a scale of 256 a full range, not clamped yet.
template <class DI>
struct StudioWords {
  hn::Vec<DI> red, green, blue;
};

/// From 55 y and 110 y.
template <class DI>
HWY_INLINE StudioWords<DI> studioWords(DI di, hn::Vec<DI> y55, hn::Vec<DI> y110, const StudioTermsOf<DI> &terms) {
  const hn::RebindToUnsigned<DI> d;
  const auto eighths = hn::Set(di, 1387);
  const auto y = hn::BitCast(d, y110);
  const auto approximation = hn::Add(hn::BitCast(di, hn::MulHigh(y, hn::Set(d, 44384))), terms.green);
  const auto rest = hn::Add(hn::Mul(y, hn::Set(d, 13927)), hn::BitCast(d, terms.greenRest));
  const auto green = hn::Add(approximation, hn::BitCast(di, hn::ShiftRight<14>(rest)));
  return {hn::MulHigh(hn::SaturatedAdd(y55, terms.red), eighths), hn::ShiftRight<6>(green),
          hn::MulHigh(hn::SaturatedAdd(y55, terms.blue), eighths)};
}

/// Pixels in two vectors, the first half of the group and the second.
template <class D>
struct StudioPixels {
  hn::Vec<D> first, second;
};

template <StudioClamp clamp, class DI>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, DI>> studioRedBlue(DI di, hn::Vec<DI> even, hn::Vec<DI> odd) {
  const hn::Repartition<uint8_t, DI> bytes;
  const auto narrow = narrowInBlocks(di, even, odd);
  if constexpr (clamp == StudioClamp::videoRange) {
    return hn::Min(hn::Max(narrow, hn::Set(bytes, 16)), hn::Set(bytes, 235));
  } else if constexpr (clamp == StudioClamp::fiveSix) {
    // 29 stands twice: from level 30 on, one level less.
    const auto level = hn::Set(di, 8);
    const auto lower = narrowInBlocks(di, hn::Sub(even, level), hn::Sub(odd, level));
    return hn::Max(hn::Min(narrow, hn::Set(bytes, 239)), lower);
  } else {
    return narrow;
  }
}

template <StudioClamp clamp, class DI>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, DI>> studioGreen(DI di, hn::Vec<DI> even, hn::Vec<DI> odd) {
  const hn::Repartition<uint8_t, DI> bytes;
  const auto narrow = narrowInBlocks(di, even, odd);
  if constexpr (clamp == StudioClamp::videoRange) {
    return hn::Min(hn::Max(narrow, hn::Set(bytes, 16)), hn::Set(bytes, 235));
  } else {
    return narrow;
  }
}

/// The pixels of a line, whose even and odd ones have the terms given.
template <StudioClamp clamp, class D>
HWY_INLINE StudioPixels<D> studioPixels(D d, hn::Vec<hn::Repartition<uint8_t, D>> y,
                                        const StudioTermsOf<hn::RebindToSigned<D>> &evenTerms,
                                        const StudioTermsOf<hn::RebindToSigned<D>> &oddTerms) {
  const hn::RebindToSigned<D> di;
  const hn::Repartition<uint8_t, D> bytes;
  const auto even = studioWords(di, evenBytesTimes<55>(di, y), evenBytesTimes<110>(di, y), evenTerms);
  const auto odd = studioWords(di, oddBytesTimes<55>(di, y), oddBytesTimes<110>(di, y), oddTerms);
  const auto red = studioRedBlue<clamp>(di, even.red, odd.red);
  const auto green = hn::BitCast(d, studioGreen<clamp>(di, even.green, odd.green));
  const auto blue = hn::BitCast(d, studioRedBlue<clamp>(di, even.blue, odd.blue));
  const auto select = [&](uint8_t mask, auto yes, auto no) HWY_ATTR {
    const auto m = hn::Set(bytes, mask);
    return hn::Or(hn::And(m, hn::BitCast(bytes, yes)), hn::AndNot(m, hn::BitCast(bytes, no)));
  };
  const auto high = select(0xF8, red, hn::ShiftRight<5>(green));
  const auto low = select(0xE0, hn::ShiftLeft<3>(green), hn::ShiftRight<3>(blue));
  const auto evens = hn::BitCast(d, hn::InterleaveLower(bytes, low, high));
  const auto odds = hn::BitCast(d, hn::InterleaveUpper(bytes, low, high));
  return {hn::InterleaveLower(d, evens, odds), hn::InterleaveUpper(d, evens, odds)};
}

// --- Orders of samples
// ------------------------------------------------------------------------------------------------ Interleaving works
// within blocks of 16 bytes. So that its results are whole halves of the group, block b of a vector of samples gets the
// eight that belong to the first half and the eight that belong to the second one.

HWY_ALIGN constexpr uint32_t kBlocks2[8] = {0, 1, 4, 5, 2, 3, 6, 7};
HWY_ALIGN constexpr uint32_t kBlocks4[16] = {0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15};
HWY_ALIGN constexpr uint8_t kChroma2[32] = {0, 128, 1, 128, 2, 128, 3, 128, 8,  128, 9,  128, 10, 128, 11, 128,
                                            4, 128, 5, 128, 6, 128, 7, 128, 12, 128, 13, 128, 14, 128, 15, 128};
HWY_ALIGN constexpr uint32_t kChroma4[8] = {0, 4, 1, 5, 2, 6, 3, 7};

/// Samples of full resolution.
template <class D>
HWY_INLINE hn::Vec<hn::Repartition<uint8_t, D>> studioSamples(D d, const uint8_t *from) {
  const hn::Repartition<uint8_t, D> bytes;
  (void)d;
  if constexpr (hn::MaxLanes(d) == 8) {
    return hn::LoadU(bytes, from);
  } else {
    const hn::Repartition<uint32_t, D> d32;
    const auto order = hn::SetTableIndices(d32, hn::MaxLanes(d) == 16 ? kBlocks2 : kBlocks4);
    return hn::BitCast(bytes, hn::TableLookupLanes(hn::BitCast(d32, hn::LoadU(bytes, from)), order));
  }
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

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif
