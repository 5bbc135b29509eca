// Means of five points of source lines as they lie: where bytes can be taken from anywhere in 64, no window has to be
// laid out.
#include "vector/targets.h"

#include "vector/filter_rows.h"

#if defined(__x86_64__)

#include <hwy/base.h>
// What intrinsics leave undefined on purpose is reported where they are used.
HWY_DIAGNOSTICS(push)
#if HWY_COMPILER_GCC_ACTUAL
HWY_DIAGNOSTICS_OFF(, ignored "-Wmaybe-uninitialized")
#endif
#include <immintrin.h>
HWY_DIAGNOSTICS(pop)

HWY_PUSH_ATTRIBUTES("avx512f,avx512dq,avx512bw,avx512vl,avx512vbmi")
namespace zqcc::N_AVX3_VBMI {
namespace {

constexpr auto kTaps = static_cast<int32_t>(kFilterTaps);
constexpr int kDown = _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC;
constexpr int kMantissaBits = 23;
/// Fifth of a sum up to 1275: the upper half of the product with 2^16 / 5, rounded up.
constexpr int32_t kFifth = 13108;

// Sums are made in floating point, which is rounded down: no sum is rounded past a whole sample. Bytes are given upper
// bytes such that the products of a line, added, are the bits of a power of two and p0 (1024 - x) + p1 x units of its
// last place, without a conversion. That the lines are mixed loses less than a unit, and a sample's bits below the
// point go when it is added to a number whose last place it is.

/// Weights that are not negative: 2^-64 and 16 (p0 (1024 - x) + p1 x), below 2^22, of its last places.
struct Positive {
  static constexpr int32_t kExponent = 63;
  static constexpr int kUnitBits = kWeightBits + 4; ///< of a sample
  HWY_INLINE static __m512i weight(__m512i times16) { return times16; }
};

/// Weights of which one may be negative down to -1023, and the other one is 1024 and more then: 1.5 times 2^-96 and
/// 8 (p0 (1024 - x) + p1 x), which lies between -2^21 and 2^22, of its last places. The half of the mantissa is 512
/// samples, 1536 with the power of two itself, which is more than what is taken away: |x|, |y| < 1 lead no lower than
/// -765 and no higher than 1276.
struct Negative {
  static constexpr int32_t kExponent = 31;
  static constexpr int kUnitBits = kWeightBits + 3;
  static constexpr int32_t kBias = 1536; ///< a multiple of 256: the low bits of samples do not know it
  HWY_INLINE static __m512i weight(__m512i times16) { return _mm512_srai_epi16(times16, 1); }
};

/// The upper bytes: 63 << 23 in products that are weighed 2^14, (31 << 23) + (1 << 22) in those that are weighed 2^13.
constexpr int16_t kUpper = 0x7E00;
static_assert(kUpper << (kWeightBits + 4) == 63 << kMantissaBits);
static_assert(kUpper << (kWeightBits + 3) == (31 << kMantissaBits | 1 << (kMantissaBits - 1)));

/// What a row has for all of its groups.
struct Lines {
  const uint8_t *top[kTaps];
  const uint8_t *bottom[kTaps];
  __m512 next[kTaps];

  HWY_INLINE explicit Lines(const FivePointLines &lines) {
    for (int32_t t = 0; t < kTaps; ++t) {
      top[t] = lines.top[t];
      bottom[t] = lines.bottom[t];
      next[t] = _mm512_set1_ps(static_cast<float>(lines.next[t]) / kWholeWeight);
    }
  }
};

/// A register is loaded once: as an operand in memory it would be loaded with every use.
HWY_INLINE __m512i loaded(const void *from) {
  __m512i value = _mm512_load_si512(from);
  __asm__("" : "+v"(value));
  return value;
}

HWY_INLINE __m512 mixed(const uint8_t *window, __m512i order, __m512i weight) {
  constexpr __mmask64 kEven = 0x5555555555555555ULL;
  const __m512i pairs =
      _mm512_mask_permutexvar_epi8(_mm512_set1_epi16(kUpper), kEven, order, _mm512_loadu_si512(window));
  return _mm512_castsi512_ps(_mm512_madd_epi16(pairs, weight));
}

/// Tap t of a group, in Sign's units.
template <class Sign>
HWY_INLINE __m512 tapOf(const FilterColumns &columns, std::ptrdiff_t g, const Lines &lines, int32_t t) {
  const std::ptrdiff_t first = columns.near[g].first;
  const __m512i order = loaded(columns.places[g].at[t]);
  const __m512i weight = Sign::weight(loaded(columns.groups[g].weight[t]));
  const __m512 top = mixed(lines.top[t] + first, order, weight);
  const __m512 apart = _mm512_sub_ps(mixed(lines.bottom[t] + first, order, weight), top);
  return _mm512_fmadd_round_ps(apart, lines.next[t], top, kDown);
}

/// A number whose last place is a sample of `bits` bits.
template <class Sign, int bits>
constexpr int32_t numberOf = (Sign::kExponent + Sign::kUnitBits + 8 - bits) << kMantissaBits;

HWY_INLINE __m512 asFloat(int32_t number) {
  return _mm512_castsi512_ps(_mm512_set1_epi32(number));
}

/// The sums of a group's samples in the lower words; what the upper ones have is without meaning.
template <int bits>
HWY_INLINE __m512i positiveSums(const FilterColumns &columns, std::ptrdiff_t g, const Lines &lines) {
  // The taps' powers of two lead the lower word to 0.
  constexpr int32_t kAdded = kTaps << (kMantissaBits - Positive::kUnitBits - 8 + bits);
  __m512 sum = asFloat(numberOf<Positive, bits> + (1 << 16) - kAdded);
  for (int32_t t = 0; t < kTaps; ++t) {
    sum = _mm512_add_round_ps(sum, tapOf<Positive>(columns, g, lines, t), kDown);
  }
  return _mm512_castps_si512(sum);
}

template <int bits>
HWY_INLINE void storeFour(const __m512i (&sums)[4], uint8_t *to) {
  alignas(64) static constexpr uint8_t kOrder[64] = {0, 4, 8,  12, 16, 20, 24, 28, 32, 36, 40, 44, 48, 52, 56, 60,
                                                     2, 6, 10, 14, 18, 22, 26, 30, 34, 38, 42, 46, 50, 54, 58, 62,
                                                     1, 5, 9,  13, 17, 21, 25, 29, 33, 37, 41, 45, 49, 53, 57, 61,
                                                     3, 7, 11, 15, 19, 23, 27, 31, 35, 39, 43, 47, 51, 55, 59, 63};
  constexpr __mmask32 kOdd = 0xAAAAAAAA;
  const __m512i fifth = _mm512_set1_epi16(kFifth);
  const __m512i low = _mm512_mask_mov_epi16(sums[0], kOdd, _mm512_slli_epi32(sums[1], 16));
  const __m512i high = _mm512_mask_mov_epi16(sums[2], kOdd, _mm512_slli_epi32(sums[3], 16));
  const __m512i bytes =
      _mm512_or_si512(_mm512_mulhi_epu16(low, fifth), _mm512_slli_epi16(_mm512_mulhi_epu16(high, fifth), 8));
  const __m512i placed = _mm512_permutexvar_epi8(_mm512_load_si512(kOrder), bytes);
  _mm512_storeu_si512(to, _mm512_slli_epi32(placed, 8 - bits));
}

HWY_INLINE void storeBytes(__m512i sums, uint8_t *to) {
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to), _mm512_cvtepi32_epi8(sums));
}

template <int bits>
HWY_INLINE void positiveGroups(const FilterColumns &columns, std::ptrdiff_t g, std::ptrdiff_t end, const Lines &lines,
                               uint8_t *to) {
  for (; g + 4 <= end; g += 4) {
    const __m512i sums[4] = {positiveSums<bits>(columns, g, lines), positiveSums<bits>(columns, g + 1, lines),
                             positiveSums<bits>(columns, g + 2, lines), positiveSums<bits>(columns, g + 3, lines)};
    storeFour<bits>(sums, to + g * kFilterGroup);
  }
  for (; g < end; ++g) {
    const __m512i means = _mm512_mulhi_epu16(positiveSums<bits>(columns, g, lines), _mm512_set1_epi32(kFifth));
    storeBytes(_mm512_slli_epi32(means, 8 - bits), to + g * kFilterGroup);
  }
}

/// The low bits of every sample.
template <int bits>
struct LowBits {
  HWY_INLINE static __m512i mean(const FilterColumns &columns, std::ptrdiff_t g, const Lines &lines) {
    const __m512 number = asFloat(numberOf<Negative, bits>);
    const __m512i mask = _mm512_set1_epi32((1 << bits) - 1);
    __m512i sum = _mm512_setzero_si512();
    for (int32_t t = 0; t < kTaps; ++t) {
      const __m512 sample = _mm512_add_round_ps(number, tapOf<Negative>(columns, g, lines, t), kDown);
      sum = _mm512_add_epi32(sum, _mm512_and_si512(_mm512_castps_si512(sample), mask));
    }
    return _mm512_mulhi_epu16(sum, _mm512_set1_epi32(kFifth));
  }
};

/// Samples that are whole numbers.
template <int bits>
struct WholeNumbers {
  HWY_INLINE static __m512i mean(const FilterColumns &columns, std::ptrdiff_t g, const Lines &lines) {
    constexpr int32_t kNumber = numberOf<Negative, bits>;
    constexpr int32_t kAdded = kTaps * Negative::kBias >> (8 - bits);
    __m512 sum = asFloat(kNumber);
    for (int32_t t = 0; t < kTaps; ++t) {
      sum = _mm512_add_round_ps(sum, tapOf<Negative>(columns, g, lines, t), kDown);
    }
    const __m512i whole = _mm512_sub_epi32(_mm512_castps_si512(sum), _mm512_set1_epi32(kNumber + kAdded));
    // Negative ones are truncated upwards.
    return _mm512_sub_epi16(_mm512_mulhi_epi16(whole, _mm512_set1_epi32(kFifth)), _mm512_srai_epi16(whole, 15));
  }
};

template <template <int> class Samples, int bits>
HWY_NOINLINE void sumTaps(const FilterColumns &columns, const GroupRange &groups, const FivePointLines &from,
                          uint8_t *to) {
  const FilterColumns own = columns; // which no store can change
  const Lines lines(from);
  for (std::ptrdiff_t g = 0; g < groups.leading; ++g) {
    storeBytes(_mm512_slli_epi32(Samples<bits>::mean(own, g, lines), 8 - bits), to + g * kFilterGroup);
  }
  positiveGroups<bits>(own, groups.leading, groups.end, lines, to);
}

template <template <int> class Samples>
void fivePointLineRow(const FilterColumns &columns, const GroupRange &groups, const FivePointLines &lines,
                      uint8_t *to) {
  switch (lines.bits) {
  case 5:
    return sumTaps<Samples, 5>(columns, groups, lines, to);
  case 6:
    return sumTaps<Samples, 6>(columns, groups, lines, to);
  default:
    return sumTaps<Samples, 8>(columns, groups, lines, to);
  }
}

} // namespace
} // namespace zqcc::N_AVX3_VBMI
HWY_POP_ATTRIBUTES

#define ZQCC_WHERE_BYTES_PERMUTE(...)                                                                                  \
  {                                                                                                                    \
    { nullptr, nullptr, nullptr, nullptr, __VA_ARGS__, nullptr }                                                       \
  }
#else
#define ZQCC_WHERE_BYTES_PERMUTE(...)                                                                                  \
  {}
#endif

namespace zqcc {
constexpr PerLevel<FivePointLineRow> FIVE_POINT_LINE_ROW =
    ZQCC_WHERE_BYTES_PERMUTE(N_AVX3_VBMI::fivePointLineRow<N_AVX3_VBMI::LowBits>);
constexpr PerLevel<FivePointLineRow> WHOLE_FIVE_POINT_LINE_ROW =
    ZQCC_WHERE_BYTES_PERMUTE(N_AVX3_VBMI::fivePointLineRow<N_AVX3_VBMI::WholeNumbers>);
} // namespace zqcc
