// Bytes at given places.

// Read once a level.
#if defined(ZQP_ROWS_PICK_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_PICK_INL_H
#undef ZQP_ROWS_PICK_INL_H
#else
#define ZQP_ROWS_PICK_INL_H
#endif

#include "rows/byte_pairs-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

HWY_INLINE void pickSingly(const uint8_t *from, const int32_t *at, int32_t count, uint8_t *to) {
  for (int32_t i = 0; i < count; ++i) {
    to[i] = from[at[i]];
  }
}

/// Outputs that are picked together.
inline constexpr int32_t kPicks = 16;

#if HWY_TARGET == HWY_AVX3

/// Of kPicks places that lie within 128 bytes of the first one, none of them before it, those bytes. False if there are
/// others. `end` is behind a byte of the row.
HWY_INLINE bool pickedTogether(const uint8_t *from, const int32_t *at, int32_t end, uint8_t *to) {
  constexpr int32_t kReach = 128;
  const int32_t base = at[0];
  const __m512i place = _mm512_sub_epi32(_mm512_loadu_si512(at), _mm512_set1_epi32(base));
  const int32_t readable = end - base < kReach ? end - base : kReach;
  if (readable <= 0 || _mm512_cmpge_epu32_mask(place, _mm512_set1_epi32(readable)) != 0) {
    return false;
  }
  const uint8_t *bytes = from + base;
  __m512i low;
  __m512i high = _mm512_setzero_si512();
  if (readable == kReach) {
    low = _mm512_loadu_si512(bytes);
    high = _mm512_loadu_si512(bytes + 64);
  } else if (readable > 64) {
    low = _mm512_loadu_si512(bytes);
    high = _mm512_maskz_loadu_epi8((uint64_t{1} << (readable - 64)) - 1, bytes + 64);
  } else {
    low = _mm512_maskz_loadu_epi8(~uint64_t{0} >> (64 - readable), bytes);
  }
  const __m512i lanes = _mm512_permutex2var_epi32(low, _mm512_srli_epi32(place, 2), high);
  const __m512i bits = _mm512_slli_epi32(_mm512_and_si512(place, _mm512_set1_epi32(3)), 3);
  const __m128i picked = _mm512_cvtepi32_epi8(_mm512_srlv_epi32(lanes, bits));
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to), picked);
  return true;
}

#else

/// Of kPicks places that lie within 32 bytes of the first one, none of them before it, those bytes. False if there are
/// others. `end` is behind a byte of the row.
HWY_INLINE bool pickedTogether(const uint8_t *from, const int32_t *at, int32_t end, uint8_t *to) {
  constexpr hn::CappedTag<uint8_t, 16> kSamples;
  constexpr hn::CappedTag<uint32_t, 4> kPlaces;
  constexpr hn::CappedTag<int32_t, 4> kNumbers;
  constexpr hn::CappedTag<int16_t, 8> kShorts;
  constexpr int32_t kReach = 32;
  const int32_t base = at[0];
  if (end - base < kReach) {
    return false;
  }
  const auto first = hn::Set(kNumbers, base);
  const auto placeAt = [&](int32_t i) HWY_ATTR { return hn::Sub(hn::LoadU(kNumbers, at + i), first); };
  const auto a = placeAt(0);
  const auto b = placeAt(4);
  const auto c = placeAt(8);
  const auto d = placeAt(12);
  const auto all = hn::BitCast(kPlaces, hn::Or(hn::Or(a, b), hn::Or(c, d)));
  if (!hn::AllTrue(kPlaces, hn::Eq(hn::And(all, hn::Set(kPlaces, ~uint32_t{kReach - 1})), hn::Zero(kPlaces)))) {
    return false;
  }
  const auto half = [&](auto low, auto high) HWY_ATTR {
    constexpr hn::CappedTag<int16_t, 4> kQuarter;
    return hn::Combine(kShorts, hn::DemoteTo(kQuarter, high), hn::DemoteTo(kQuarter, low));
  };
  constexpr hn::CappedTag<uint8_t, 8> kHalf;
  const auto places = hn::Combine(kSamples, hn::DemoteTo(kHalf, half(c, d)), hn::DemoteTo(kHalf, half(a, b)));
  // Numbers of 128 and more pick nothing: those of the other half.
  constexpr hn::CappedTag<int8_t, 16> kSigned;
  const auto isHigh = hn::Gt(hn::BitCast(kSigned, places), hn::Set(kSigned, int8_t{15}));
  const auto inLow = hn::Or(places, hn::BitCast(kSamples, hn::VecFromMask(kSigned, isHigh)));
  const auto inHigh = hn::Sub(places, hn::Set(kSamples, uint8_t{16}));
  const auto picked = hn::Or(hn::TableLookupBytesOr0(hn::LoadU(kSamples, from + base), inLow),
                             hn::TableLookupBytesOr0(hn::LoadU(kSamples, from + base + 16), inHigh));
  hn::StoreU(picked, kSamples, to);
  return true;
}

#endif

inline void pick(const uint8_t *from, const int32_t *at, int32_t count, uint8_t *to) {
  int32_t i = 0;
  if (!kIsEmulated) {
    const int32_t end = at[count - 1] + 1;
    for (; i + kPicks <= count; i += kPicks) {
      if (!pickedTogether(from, at + i, end, to + i)) {
        pickSingly(from, at + i, kPicks, to + i);
      }
    }
  }
  pickSingly(from, at + i, count - i, to + i);
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
