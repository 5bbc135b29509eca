// Words of means along a row of words.

// Read once a level.
#if defined(ZQP_ROWS_TAPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_TAPS_INL_H
#undef ZQP_ROWS_TAPS_INL_H
#else
#define ZQP_ROWS_TAPS_INL_H
#endif

#include "rows/tap_layout.h"

#include <hwy/highway.h>

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// A row of words: words[0] is sample `start`, the one before sample `end` the last one that may be read.
struct TapRow {
  const int16_t *words;
  int32_t start;
  int32_t end;

  HWY_INLINE const int16_t *at(int32_t sample) const { return words + (sample - start); }
};

int16_t meanOf(const TapRow &row, const Taps &taps, const int32_t *weights) {
  const int16_t *words = row.at(taps.first);
  const int32_t bits = taps.count > kFewTaps ? kManyTapsBits : kFewTapsBits;
  int64_t sum = int64_t{1} << (bits - 1);
  for (int32_t k = 0; k < taps.count; ++k) {
    sum += int64_t{words[k]} * weights[taps.weight + k];
  }
  return static_cast<int16_t>(sum >> bits);
}

// --- Neighbouring pairs ---------------------------------------------------------------------------------------------

template <class D>
HWY_INLINE void meansOfPairs(D d, const int16_t *from, int32_t count, int16_t *to) {
  constexpr auto kLanes = static_cast<int32_t>(hn::MaxLanes(d));
  constexpr hn::RebindToUnsigned<D> kNumbers;
  const auto numbersAt = [&](int32_t i) HWY_ATTR { return hn::BitCast(kNumbers, hn::LoadU(d, from + i)); };
  for (int32_t i = 0;; i = i + 2 * kLanes <= count ? i + kLanes : count - kLanes) {
    const auto low = numbersAt(2 * i);
    const auto high = numbersAt(2 * i + kLanes);
    const auto mean = hn::AverageRound(hn::ConcatEven(kNumbers, high, low), hn::ConcatOdd(kNumbers, high, low));
    hn::StoreU(hn::BitCast(d, mean), d, to + i);
    if (i + kLanes == count) {
      return;
    }
  }
}

void halves(const int16_t *from, int32_t count, int16_t *to) {
  constexpr hn::ScalableTag<int16_t> kMany;
  constexpr hn::CappedTag<int16_t, 8> kFew;
  if (count >= static_cast<int32_t>(hn::MaxLanes(kMany))) {
    return meansOfPairs(kMany, from, count, to);
  }
  if (count >= static_cast<int32_t>(hn::MaxLanes(kFew))) {
    return meansOfPairs(kFew, from, count, to);
  }
  for (int32_t i = 0; i < count; ++i) {
    to[i] = static_cast<int16_t>((from[2 * i] + from[2 * i + 1] + 1) >> 1);
  }
}

// --- Up to sixteen samples, output by output ------------------------------------------------------------------------

constexpr hn::CappedTag<int16_t, 8> kTapWords;
constexpr hn::CappedTag<int32_t, 4> kTapSums;
using TapSum = hn::Vec<decltype(kTapSums)>;

template <int32_t words>
HWY_INLINE TapSum sumOf(const int16_t *from, const int16_t *factors) {
  TapSum rest = hn::Zero(kTapSums);
  TapSum sum = rest;
  for (int32_t k = 0; k < words; k += 8) {
    sum = hn::ReorderWidenMulAccumulate(kTapSums, hn::LoadU(kTapWords, from + k), hn::Load(kTapWords, factors + k), sum,
                                        rest);
  }
  return hn::Add(sum, rest);
}

/// Four outputs at a time; all rows are long enough for `words` words of each.
template <int32_t words>
HWY_INLINE void meansOfWords(const TapRow &row, const Taps *taps, const int16_t *factors, int32_t count, int16_t *to) {
  constexpr hn::CappedTag<int16_t, 4> kMeans;
  const auto half = hn::Set(kTapSums, 1 << (kFewTapsBits - 1));
  for (int32_t i = 0; i < count; i += 4) {
    const auto sum = [&](int32_t k) HWY_ATTR {
      const int32_t output = i + k < count ? i + k : count - 1;
      return sumOf<words>(row.at(taps[output].first), factors + output * words);
    };
    const TapSum a = sum(0);
    const TapSum b = sum(1);
    const TapSum c = sum(2);
    const TapSum d = sum(3);
    const auto ab = hn::Add(hn::InterleaveLower(kTapSums, a, b), hn::InterleaveUpper(kTapSums, a, b));
    const auto cd = hn::Add(hn::InterleaveLower(kTapSums, c, d), hn::InterleaveUpper(kTapSums, c, d));
    const auto all = hn::Add(hn::ConcatLowerLower(kTapSums, cd, ab), hn::ConcatUpperUpper(kTapSums, cd, ab));
    const auto means = hn::DemoteTo(kMeans, hn::ShiftRight<kFewTapsBits>(hn::Add(all, half)));
    if (i + 4 <= count) {
      hn::StoreU(means, kMeans, to + i);
    } else {
      alignas(16) int16_t last[4];
      hn::Store(means, kMeans, last);
      std::memcpy(to + i, last, static_cast<size_t>(count - i) * sizeof *to);
    }
  }
}

/// Outputs near the end of the row are made from a copy of it, behind which more can be read.
template <int32_t words>
HWY_NOINLINE void meansOfGroup(const TapRow &row, const Taps *taps, const int16_t *factors, int32_t count,
                               int16_t *to) {
  int32_t inside = count;
  while (inside > 0 && taps[inside - 1].first + words > row.end) {
    --inside;
  }
  meansOfWords<words>(row, taps, factors, inside, to);
  if (inside < count) {
    int16_t copy[size_t{2 * words}] = {};
    const int32_t first = taps[inside].first;
    std::memcpy(copy, row.at(first), static_cast<size_t>(row.end - first) * sizeof(int16_t));
    meansOfWords<words>({copy, first, row.end}, taps + inside, factors + inside * words, count - inside, to + inside);
  }
}

// --- Up to eight samples, sixteen outputs at once -------------------------------------------------------------------

#if HWY_TARGET == HWY_AVX3

/// `count` words, up to those of a vector.
HWY_INLINE __m512i wordsAt(const int16_t *from, int32_t count) {
  if (count >= 32) {
    return _mm512_loadu_si512(from);
  }
  return count > 0 ? _mm512_maskz_loadu_epi16((1U << count) - 1, from) : _mm512_setzero_si512();
}

template <int32_t pairs>
HWY_NOINLINE void meansByReach(const TapRow &row, const TapGroup &group, int32_t count, int16_t *to) {
  const __m512i half = _mm512_set1_epi32(1 << (kFewTapsBits - 1));
  const __m512i one = _mm512_set1_epi32(1);
  for (int32_t block = 0; block * kTapBlock < count; ++block) {
    const int32_t words = row.end - group.base[block];
    const int16_t *from = row.at(group.base[block]);
    const __m512i low = wordsAt(from, words);
    const __m512i high = wordsAt(from + (words > 32 ? 32 : 0), words - 32);
    const int16_t *factors = group.factors + block * pairs * 2 * kTapBlock;
    __m512i number = _mm512_load_si512(group.firstPair[block]);
    __m512i sum = half;
    for (int32_t pair = 0; pair < pairs; ++pair) {
      const __m512i samples = _mm512_permutex2var_epi32(low, number, high);
      const __m512i products = _mm512_madd_epi16(samples, _mm512_load_si512(factors + pair * 2 * kTapBlock));
      sum = _mm512_add_epi32(sum, products);
      number = _mm512_add_epi32(number, one);
    }
    const __m256i means = _mm512_cvtepi32_epi16(_mm512_srai_epi32(sum, kFewTapsBits));
    const int32_t left = count - block * kTapBlock;
    if (left >= kTapBlock) {
      _mm256_storeu_si256(reinterpret_cast<__m256i *>(to + block * kTapBlock), means);
    } else {
      _mm256_mask_storeu_epi16(to + block * kTapBlock, static_cast<__mmask16>((1U << left) - 1), means);
    }
  }
}

/// False if the group's blocks are out of reach.
HWY_INLINE bool madeByReach(const TapRow &row, const TapGroup &group, int32_t count, int16_t *to) {
  switch (group.pairs) {
  case 1:
    meansByReach<1>(row, group, count, to);
    return true;
  case 2:
    meansByReach<2>(row, group, count, to);
    return true;
  case 3:
    meansByReach<3>(row, group, count, to);
    return true;
  case 4:
    meansByReach<4>(row, group, count, to);
    return true;
  default:
    return false;
  }
}

#else

HWY_INLINE bool madeByReach(const TapRow & /*row*/, const TapGroup & /*group*/, int32_t /*count*/, int16_t * /*to*/) {
  return false;
}

#endif

void tapGroup(const TapRow &row, const TapGroup &group, const Taps *taps, const int32_t *weights, int32_t count,
              int16_t *to) {
  switch (group.kind) {
  case TapKind::Kept:
    std::memcpy(to, row.at(taps[0].first), static_cast<size_t>(count) * sizeof *to);
    return;
  case TapKind::Halves:
    return halves(row.at(taps[0].first), count, to);
  case TapKind::Eight:
    if (!madeByReach(row, group, count, to)) {
      meansOfGroup<8>(row, taps, group.factors + kEightFactors, count, to);
    }
    return;
  case TapKind::Sixteen:
    return meansOfGroup<16>(row, taps, group.factors, count, to);
  default:
    for (int32_t i = 0; i < count; ++i) {
      to[i] = meanOf(row, taps[i], weights);
    }
  }
}

void tapColumns(const int16_t *from, int32_t start, const TapColumns &columns, int32_t first, int32_t count,
                int16_t *to) {
  const Taps *taps = columns.columns + first;
  const TapRow row = {from, start, taps[count - 1].first + taps[count - 1].count};
  const auto *group = reinterpret_cast<const TapGroup *>(columns.layout) + first / kColumnGroup;
  for (; count > 0; count -= kColumnGroup, taps += kColumnGroup, to += kColumnGroup, ++group) {
    tapGroup(row, *group, taps, columns.weights, count < kColumnGroup ? count : kColumnGroup, to);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
