// Means of five points of source lines as they lie: where bytes can be taken from anywhere in 64, no window has to be
// laid out.
#include "vector/targets.h"

#include "vector/filter_rows.h"

#if defined(__x86_64__)

#include <hwy/base.h>
// What intrinsics leave undefined on purpose is reported where they are used.
#if HWY_COMPILER_GCC_ACTUAL
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>
#if HWY_COMPILER_GCC_ACTUAL
#pragma GCC diagnostic pop
#endif

HWY_PUSH_ATTRIBUTES("avx512f,avx512dq,avx512bw,avx512vl,avx512vbmi")
namespace zqcc::N_AVX3_VBMI {
namespace {

constexpr auto kTaps = static_cast<int32_t>(kFilterTaps);
constexpr int kDown = _MM_FROUND_TO_NEG_INF | _MM_FROUND_NO_EXC;
constexpr std::ptrdiff_t kFourGroups = kWindowBytes; ///< outputs
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
/// samples, 1536 with the power of two itself, which is more than what is taken away: x and y above -1 lead no lower
/// than -1020 and no higher than 1275.
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

/// A number whose last place is a sample of `bits` bits.
template <class Sign>
HWY_INLINE int32_t numberOf(int32_t bits) {
  return (Sign::kExponent + Sign::kUnitBits + 8 - bits) << kMantissaBits;
}

/// A value is loaded once: as an operand in memory it would be loaded with every use.
HWY_INLINE __m512i loaded(const void *from) {
  __m512i value = _mm512_load_si512(from);
  __asm__("" : "+v"(value));
  return value;
}

/// Bytes that hold the taps of a group. Fewer of them cross the lines of the cache less often, which costs as much as
/// two loads.
template <int bytes>
HWY_INLINE __m512i windowAt(const uint8_t *from) {
  if constexpr (bytes == 32) {
    return _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i *>(from)));
  } else {
    return _mm512_loadu_si512(from);
  }
}

HWY_INLINE __m512 mixed(__m512i window, __mmask64 even, __m512i order, __m512i weight) {
  const __m512i pairs = _mm512_mask_permutexvar_epi8(_mm512_set1_epi16(kUpper), even, order, window);
  return _mm512_castsi512_ps(_mm512_madd_epi16(pairs, weight));
}

/// What two rows have for all of their groups, and how far they have come.
template <int bytes>
class Rows {
public:
  HWY_INLINE Rows(const LineColumns &columns, const FivePointTaps &taps)
      : group_(columns.groups), first_(columns.first),
        below_(taps.below), ahead_{taps.ahead[0], taps.ahead[1], taps.ahead[2], taps.ahead[3]} {
    __asm__("" : "+Yk"(even_)); // were it known, bytes would be taken from two vectors, which costs twice
    for (int32_t t = 0; t < kTaps; ++t) {
      for (int r = 0; r < 2; ++r) {
        top_[r][t] = taps.top[r][t];
        __asm__("" : "+r"(top_[r][t])); // loads of several would wait for the stores of each
        next_[r][t] = _mm512_set1_ps(static_cast<float>(taps.next[r][t]) / kWholeWeight);
      }
    }
  }

  /// Adds the taps of the next group, in Sign's units, to both sums.
  template <class Sign, class Sum>
  HWY_INLINE void addTaps(Sum &sum0, Sum &sum1) {
    const std::ptrdiff_t first = *first_++;
    const std::ptrdiff_t below = first + below_;
    for (const uint8_t *ahead : ahead_) {
      __builtin_prefetch(ahead + first);
    }
    for (int32_t t = 0; t < kTaps; ++t) {
      const __m512i order = loaded(group_->mask[t]);
      const __m512i weight = Sign::weight(loaded(group_->weight[t]));
      sum0.add(tap(0, t, first, below, order, weight));
      sum1.add(tap(1, t, first, below, order, weight));
    }
    ++group_;
  }

private:
  HWY_INLINE __m512 tap(int r, int32_t t, std::ptrdiff_t first, std::ptrdiff_t below, __m512i order,
                        __m512i weight) const {
    const __m512 top = mixed(windowAt<bytes>(top_[r][t] + first), even_, order, weight);
    const __m512 apart = mixed(windowAt<bytes>(top_[r][t] + below), even_, order, weight) - top;
    return _mm512_fmadd_round_ps(apart, next_[r][t], top, kDown);
  }

  __mmask64 even_ = 0x5555555555555555ULL;
  const FilterGroup *group_;
  const int32_t *first_;
  std::ptrdiff_t below_;
  const uint8_t *ahead_[kLinesAhead];
  const uint8_t *top_[2][kTaps];
  __m512 next_[2][kTaps];
};

/// Sums of samples in the lower words; what the upper ones have is without meaning.
class PositiveSum {
public:
  using Sign = Positive;

  HWY_INLINE static __m512i start(int32_t bits) {
    // The taps' powers of two lead the lower word to 0.
    const int32_t added = kTaps << (kMantissaBits - Positive::kUnitBits - 8 + bits);
    return _mm512_set1_epi32(numberOf<Positive>(bits) + (1 << 16) - added);
  }

  HWY_INLINE PositiveSum(__m512i start) : sum_(_mm512_castsi512_ps(start)) {}
  HWY_INLINE void add(__m512 tap) { sum_ = _mm512_add_round_ps(sum_, tap, kDown); }
  HWY_INLINE __m512i sums() const { return _mm512_castps_si512(sum_); }

private:
  __m512 sum_;
};

/// The low bits of every sample.
class LowBits {
public:
  HWY_INLINE explicit LowBits(int32_t bits)
      : number_(_mm512_castsi512_ps(_mm512_set1_epi32(numberOf<Negative>(bits)))),
        mask_(_mm512_set1_epi32((1 << bits) - 1)) {}

  HWY_INLINE void add(__m512 tap) {
    const __m512i sample = _mm512_castps_si512(_mm512_add_round_ps(number_, tap, kDown));
    sum_ = _mm512_adds_epu16(sum_, _mm512_and_si512(sample, mask_));
  }

  HWY_INLINE __m512i means() const { return _mm512_mulhi_epu16(sum_, _mm512_set1_epi32(kFifth)); }

private:
  __m512 number_;
  __m512i mask_;
  __m512i sum_ = _mm512_setzero_si512();
};

/// Samples that are whole numbers.
class WholeNumbers {
public:
  HWY_INLINE explicit WholeNumbers(int32_t bits)
      : added_(_mm512_set1_epi32(kTaps * Negative::kBias >> (8 - bits))),
        sum_(_mm512_castsi512_ps(_mm512_set1_epi32(numberOf<Negative>(bits)))) {}

  HWY_INLINE void add(__m512 tap) { sum_ = _mm512_add_round_ps(sum_, tap, kDown); }

  HWY_INLINE __m512i means() const {
    // The number's lower words are 0, and no sum leaves them.
    const __m512i whole = _mm512_subs_epi16(_mm512_castps_si512(sum_), added_);
    // Negative ones are truncated upwards.
    return _mm512_subs_epi16(_mm512_mulhi_epi16(whole, _mm512_set1_epi32(kFifth)), _mm512_srai_epi16(whole, 15));
  }

private:
  __m512i added_;
  __m512 sum_;
};

/// The fifths of the sums of four groups, one after the other.
HWY_INLINE __m512i fifthsOf(const PositiveSum (&sums)[4]) {
  alignas(64) static constexpr uint8_t kOrder[64] = {0, 4, 8,  12, 16, 20, 24, 28, 32, 36, 40, 44, 48, 52, 56, 60,
                                                     2, 6, 10, 14, 18, 22, 26, 30, 34, 38, 42, 46, 50, 54, 58, 62,
                                                     1, 5, 9,  13, 17, 21, 25, 29, 33, 37, 41, 45, 49, 53, 57, 61,
                                                     3, 7, 11, 15, 19, 23, 27, 31, 35, 39, 43, 47, 51, 55, 59, 63};
  constexpr __mmask32 kOdd = 0xAAAAAAAA;
  const __m512i fifth = _mm512_set1_epi16(kFifth);
  const __m512i low = _mm512_mask_mov_epi16(sums[0].sums(), kOdd, _mm512_slli_epi32(sums[1].sums(), 16));
  const __m512i high = _mm512_mask_mov_epi16(sums[2].sums(), kOdd, _mm512_slli_epi32(sums[3].sums(), 16));
  const __m512i bytes =
      _mm512_or_si512(_mm512_mulhi_epu16(low, fifth), _mm512_slli_epi16(_mm512_mulhi_epu16(high, fifth), 8));
  return _mm512_permutexvar_epi8(_mm512_load_si512(kOrder), bytes);
}

/// A mean for each of 16 outputs, which stand in longs.
HWY_INLINE void storeBytes(__m512i means, __m128i shift, uint8_t *to) {
  _mm_storeu_si128(reinterpret_cast<__m128i *>(to), _mm512_cvtepi32_epi8(_mm512_sll_epi32(means, shift)));
}

template <class Samples, int bytes>
HWY_NOINLINE void sumTaps(const LineColumns &columns, const GroupRange &groups, const FivePointTaps &taps,
                          uint8_t *const (&to)[2]) {
  Rows<bytes> rows(columns, taps);
  const __m128i shift = _mm_cvtsi32_si128(8 - taps.bits);
  const __m512i start = PositiveSum::start(taps.bits);
  const __m512i fifth = _mm512_set1_epi32(kFifth);
  uint8_t *to0 = to[0];
  uint8_t *to1 = to[1];
  for (int32_t g = 0; g < groups.leading; ++g, to0 += kFilterGroup, to1 += kFilterGroup) {
    Samples sum0(taps.bits);
    Samples sum1(taps.bits);
    rows.template addTaps<Negative>(sum0, sum1);
    storeBytes(sum0.means(), shift, to0);
    storeBytes(sum1.means(), shift, to1);
  }
  int32_t left = groups.end - groups.leading;
  for (; left >= 4; left -= 4, to0 += kFourGroups, to1 += kFourGroups) {
    PositiveSum sums0[4] = {start, start, start, start};
    PositiveSum sums1[4] = {start, start, start, start};
    rows.template addTaps<Positive>(sums0[0], sums1[0]);
    rows.template addTaps<Positive>(sums0[1], sums1[1]);
    rows.template addTaps<Positive>(sums0[2], sums1[2]);
    rows.template addTaps<Positive>(sums0[3], sums1[3]);
    _mm512_storeu_si512(to0, _mm512_sll_epi32(fifthsOf(sums0), shift));
    _mm512_storeu_si512(to1, _mm512_sll_epi32(fifthsOf(sums1), shift));
  }
  for (; left > 0; --left, to0 += kFilterGroup, to1 += kFilterGroup) {
    PositiveSum sum0(start);
    PositiveSum sum1(start);
    rows.template addTaps<Positive>(sum0, sum1);
    storeBytes(_mm512_mulhi_epu16(sum0.sums(), fifth), shift, to0);
    storeBytes(_mm512_mulhi_epu16(sum1.sums(), fifth), shift, to1);
  }
}

template <class Samples>
void fivePointLineRow(const LineColumns &columns, const GroupRange &groups, const FivePointTaps &taps,
                      uint8_t *const (&to)[2]) {
  return columns.bytes == 32 ? sumTaps<Samples, 32>(columns, groups, taps, to)
                             : sumTaps<Samples, kWindowBytes>(columns, groups, taps, to);
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
