#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/five_point_stages.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/filter_rows.h"
#include "vector/means-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

constexpr auto kTaps = static_cast<int32_t>(kFilterTaps);

/// Sixteen bytes of every place.
HWY_INLINE V8 windowsAt(const uint8_t *line, const int32_t *first) {
#if HWY_MAX_BYTES == 16
  return hn::LoadU(d8, line + first[0]);
#else
  const hn::Half<D8> dh;
#if HWY_MAX_BYTES == 32
  return hn::Combine(d8, hn::LoadU(dh, line + first[1]), hn::LoadU(dh, line + first[0]));
#else
  const hn::Half<decltype(dh)> dq;
  return hn::Combine(d8, hn::Combine(dh, hn::LoadU(dq, line + first[3]), hn::LoadU(dq, line + first[2])),
                     hn::Combine(dh, hn::LoadU(dq, line + first[1]), hn::LoadU(dq, line + first[0])));
#endif
#endif
}

void windowRow(const uint8_t *line, const FilterColumns &columns, int32_t rows, int32_t groups, uint8_t *to) {
  const int32_t *first = columns.windows;
  for (int32_t g = 0; g < groups; ++g, first += ptrdiff_t{4} * rows) {
    for (int v = 0; v < kVectors; ++v, to += kBytes) {
      hn::StoreU(windowsAt(line, first + v * (kBytes / 16)), d8, to);
    }
  }
}

#if HWY_TARGET == HWY_AVX3
void nearWindowRow(const uint8_t *line, const FilterColumns &columns, int32_t rows, int32_t groups, uint8_t *to) {
  const NearWindows *near = columns.near;
  for (int32_t g = 0; g < groups; ++g, near += rows, to += kBytes) {
    const __m512i from = _mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i *>(near->from)));
    hn::StoreU(V8{_mm512_permutexvar_epi32(from, hn::LoadU(d8, line + near->first).raw)}, d8, to);
  }
}
#else
constexpr WindowRow nearWindowRow = windowRow;
#endif

/// Fifth of a sum up to 1275: the upper half of the product with 2^16 / 5, rounded up.
constexpr uint16_t kFifth = 13108;

// A sample is floor(S / 2^20) modulo 2^8, S = (p00 (1024 - x) + p01 x) (1024 - y) + (p10 (1024 - x) + p11 x) y. S is a
// whole number, so the order of the sums is free. With weights of columns times 16 the sample is the upper byte of
// 16 S modulo 2^32, negative weights included.

#if HWY_TARGET == HWY_AVX3

/// Lines first, in words: with y = 32 high + low, p0 (1024 - y) + p1 y is 32 (p0 (32 - high) + p1 high) + (p1 - p0)
/// low. Weights of a line lie within -1023 and 1023, so the factors fit signed bytes and both sums words. Multiplying
/// 32-bit sums would be two instructions more a tap.
struct LineFactors {
  VI16 high[kTaps];
  VI16 low[kTaps];

  HWY_INLINE explicit LineFactors(const int32_t (&next)[kTaps]) {
    for (int32_t t = 0; t < kTaps; ++t) {
      const int32_t part = next[t] >> 5;
      const int32_t rest = next[t] & 31;
      high[t] = hn::Set(di16, static_cast<int16_t>((part * 256) | (32 - part)));
      low[t] = hn::Set(di16, static_cast<int16_t>((rest * 256) | (-rest & 255)));
    }
  }
};

/// 16 S of 16 outputs.
HWY_INLINE VI32 tapSum(V8 top, V8 bottom, const uint8_t *mask, VI16 weight, VI16 high, VI16 low) {
  constexpr __mmask64 kOdd = 0xAAAAAAAAAAAAAAAAULL;
  // Bytes of the lower line go between those of the upper one: their mask is the same, one byte on.
  const auto upper = _mm512_shuffle_epi8(top.raw, hn::Load(d8, mask).raw);
  const V8 pairs{_mm512_mask_shuffle_epi8(upper, kOdd, bottom.raw, hn::LoadU(d8, mask - 1).raw)};
  const VI32 highSum = addedProducts(sumPairs(pairs, high), weight);
  const VI32 lowSum = addedProducts(sumPairs(pairs, low), weight);
  return hn::Add(hn::ShiftLeft<5>(highSum), lowSum);
}

#else

/// Columns first, then products of 32 bits.
struct LineFactors {
  VI32 high[kTaps];
  VI32 low[kTaps];

  HWY_INLINE explicit LineFactors(const int32_t (&next)[kTaps]) {
    for (int32_t t = 0; t < kTaps; ++t) {
      high[t] = hn::Set(di32, kWholeWeight - next[t]);
      low[t] = hn::Set(di32, next[t]);
    }
  }
};

HWY_INLINE VI32 tapSum(V8 top, V8 bottom, const uint8_t *mask, VI16 weight, VI32 high, VI32 low) {
  const V8 order = hn::Load(d8, mask);
  const auto mixed = [&](V8 window) HWY_ATTR {
    return addedProducts(hn::BitCast(di16, hn::TableLookupBytesOr0(window, order)), weight);
  };
  return hn::Add(hn::Mul(mixed(top), high), hn::Mul(mixed(bottom), low));
}

#endif

/// Samples that are the low bits of theirs.
template <int bits>
struct LowBits {
  HWY_INLINE static VI16 weight(VI16 times16) { return times16; }
  HWY_INLINE static VI32 sample(VI32 sum) {
    const hn::RebindToUnsigned<DI32> du32;
    return hn::BitCast(di32, hn::ShiftRight<32 - bits>(hn::BitCast(du32, sum)));
  }
  HWY_INLINE static void store(const VI32 (&sums)[kVectors], uint8_t *to) {
    VI32 atTop[kVectors];
    for (int v = 0; v < kVectors; ++v) {
      atTop[v] = hn::ShiftLeft<8 - bits>(sums[v]);
    }
    storeQuotients(atTop, hn::Set(d16, kFifth), 0, to);
  }
};

/// Samples that are whole numbers: without the factor of 16 their sums do not run over.
template <int bits>
struct WholeNumbers {
  HWY_INLINE static VI16 weight(VI16 times16) { return hn::ShiftRight<4>(times16); }
  HWY_INLINE static VI32 sample(VI32 sum) { return hn::ShiftRight<2 * kWeightBits + 8 - bits>(sum); }
  HWY_INLINE static void store(const VI32 (&sums)[kVectors], uint8_t *to) {
    const VI16 factor = hn::Set(di16, static_cast<int16_t>(kFifth));
    const VI16 byte = hn::Set(di16, 0xFF);
    const auto quotient = [&](VI16 words) HWY_ATTR { // negative ones are truncated upwards
      const VI16 fifth = hn::Sub(hn::MulHigh(words, factor), hn::ShiftRight<15>(words));
      return hn::And(hn::ShiftLeft<8 - bits>(fifth), byte);
    };
    storeBytes(sums, quotient, to);
  }
};

template <class Samples>
HWY_NOINLINE void sumTaps(const FilterGroup *columns, int32_t groups, const FivePointLines &from, uint8_t *to) {
  const FivePointLines lines = from; // which no store can change
  const LineFactors factors(lines.next);
  for (ptrdiff_t at = 0; at < ptrdiff_t{groups} * kWindowBytes; at += kWindowBytes, ++columns) {
    VI32 sums[kVectors];
    for (int v = 0; v < kVectors; ++v) {
      VI32 sum = hn::Zero(di32);
      for (int32_t t = 0; t < kTaps; ++t) {
        const ptrdiff_t byte = at + ptrdiff_t{v} * kBytes;
        const VI32 tap = tapSum(
            hn::LoadU(d8, lines.top[t] + byte), hn::LoadU(d8, lines.bottom[t] + byte), columns->mask[t] + v * kBytes,
            Samples::weight(hn::Load(di16, columns->weight[t] + v * kWords)), factors.high[t], factors.low[t]);
        sum = hn::Add(sum, Samples::sample(tap));
      }
      sums[v] = sum;
    }
    Samples::store(sums, to + at / 4);
  }
}

template <template <int> class Samples>
void sumBits(const FilterGroup *columns, int32_t groups, const FivePointLines &lines, uint8_t *to) {
  switch (lines.bits) {
  case 5:
    return sumTaps<Samples<5>>(columns, groups, lines, to);
  case 6:
    return sumTaps<Samples<6>>(columns, groups, lines, to);
  default:
    return sumTaps<Samples<8>>(columns, groups, lines, to);
  }
}

constexpr FivePointRow fivePointRow = sumBits<LowBits>;
constexpr FivePointRow wholeFivePointRow = sumBits<WholeNumbers>;

#if HWY_TARGET == HWY_AVX3

/// Positive weights in floating point, which is rounded down: no sum is rounded past a whole sample. Bytes are given
/// upper bytes such that the products of a line, added, are the bits of 2^-64 and 16 (p0 (1024 - x) + p1 x) units of
/// its last place, without a conversion. That the lines are mixed loses less than a unit, and a sample's bits below the
/// point go when it is added to a number whose last place it is.
template <int bits>
HWY_NOINLINE void sumFloats(const FilterGroup *columns, int32_t groups, const FivePointLines &from, uint8_t *to) {
  const FivePointLines lines = from; // which no store can change
  constexpr int kDown = _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC;
  constexpr int kMantissaBits = 23;
  constexpr int32_t kExponent = 63; // 2^-64
  constexpr int kSampleBits = kWeightBits + 4 + 8 - bits;
  // A sample that counts is 2^kSampleBits last places of 2^-64, and one of the number that it is added to.
  constexpr int32_t kSum = (kExponent + kSampleBits) << kMantissaBits;
  constexpr int32_t kAdded = kTaps << (kMantissaBits - kSampleBits); // with the taps' 2^-64
  constexpr __mmask64 kEven = 0x5555555555555555ULL;
  const __m512i upper = _mm512_set1_epi16(kExponent << (kMantissaBits - kWeightBits - 4));
  __m512 next[kTaps];
  for (int32_t t = 0; t < kTaps; ++t) {
    next[t] = _mm512_set1_ps(static_cast<float>(lines.next[t]) / kWholeWeight);
  }
  for (ptrdiff_t at = 0; at < ptrdiff_t{groups} * kWindowBytes; at += kWindowBytes, ++columns) {
    __m512 sum = _mm512_castsi512_ps(_mm512_set1_epi32(kSum));
    for (int32_t t = 0; t < kTaps; ++t) {
      const __m512i order = hn::Load(d8, columns->mask[t]).raw;
      const __m512i weight = hn::Load(di16, columns->weight[t]).raw;
      const auto mixed = [&](const uint8_t *windows) HWY_ATTR {
        const __m512i pairs = _mm512_mask_shuffle_epi8(upper, kEven, hn::LoadU(d8, windows + at).raw, order);
        return _mm512_castsi512_ps(_mm512_madd_epi16(pairs, weight));
      };
      const __m512 top = mixed(lines.top[t]);
      const __m512 apart = _mm512_sub_ps(mixed(lines.bottom[t]), top);
      sum = _mm512_add_round_ps(sum, _mm512_fmadd_round_ps(apart, next[t], top, kDown), kDown);
    }
    const VI32 whole = hn::Sub(VI32{_mm512_castps_si512(sum)}, hn::Set(di32, kSum + kAdded));
    LowBits<bits>::store({whole}, to + at / 4);
  }
}

void positiveFivePointRow(const FilterGroup *columns, int32_t groups, const FivePointLines &lines, uint8_t *to) {
  switch (lines.bits) {
  case 5:
    return sumFloats<5>(columns, groups, lines, to);
  case 6:
    return sumFloats<6>(columns, groups, lines, to);
  default:
    return sumFloats<8>(columns, groups, lines, to);
  }
}

#else
constexpr FivePointRow positiveFivePointRow = fivePointRow;
#endif

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<WindowRow> WINDOW_ROW = ZQCC_EVERY_LEVEL(windowRow);
constexpr PerLevel<WindowRow> NEAR_WINDOW_ROW = ZQCC_EVERY_LEVEL(nearWindowRow);
constexpr PerLevel<FivePointRow> FIVE_POINT_ROW = ZQCC_EVERY_LEVEL(fivePointRow);
constexpr PerLevel<FivePointRow> POSITIVE_FIVE_POINT_ROW = ZQCC_EVERY_LEVEL(positiveFivePointRow);
constexpr PerLevel<FivePointRow> WHOLE_FIVE_POINT_ROW = ZQCC_EVERY_LEVEL(wholeFivePointRow);
} // namespace zqcc
#endif
