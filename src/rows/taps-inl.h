// Words of means along a row of words.

// Read once a level.
#if defined(ZQP_ROWS_TAPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_TAPS_INL_H
#undef ZQP_ROWS_TAPS_INL_H
#else
#define ZQP_ROWS_TAPS_INL_H
#endif

#include "rows/byte_pairs-inl.h"
#include "rows/tap_layout.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// A row of words: words[0] is sample `start`, the one before sample `end` the last one that may be read.
struct TapRow {
  const int16_t *words;
  int32_t start;
  int32_t end;

  HWY_INLINE const int16_t *at(int32_t sample) const { return words + (sample - start); }
};

inline int16_t meanOf(const TapRow &row, const Taps &taps, const int32_t *weights) {
  const int16_t *words = row.at(taps.first);
  const int32_t *weight = weights + taps.weight;
  if (taps.count <= kFewTaps) {
    int32_t sum = 1 << (kFewTapsBits - 1);
    for (int32_t k = 0; k < taps.count; ++k) {
      sum += words[k] * weight[k];
    }
    return static_cast<int16_t>(sum >> kFewTapsBits);
  }
  int64_t sum = int64_t{1} << (kManyTapsBits - 1);
  for (int32_t k = 0; k < taps.count; ++k) {
    sum += int64_t{words[k]} * weight[k];
  }
  return static_cast<int16_t>(sum >> kManyTapsBits);
}

inline void singly(const TapRow &row, const Taps *taps, const int32_t *weights, int32_t count, int16_t *to) {
  for (int32_t i = 0; i < count; ++i) {
    to[i] = meanOf(row, taps[i], weights);
  }
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

inline void halves(const int16_t *from, int32_t count, int16_t *to) {
  constexpr hn::ScalableTag<int16_t> kMany;
  constexpr hn::CappedTag<int16_t, 8> kFew;
  if (kIsEmulated || count < static_cast<int32_t>(hn::MaxLanes(kFew))) {
    for (int32_t i = 0; i < count; ++i) {
      to[i] = static_cast<int16_t>((from[2 * i] + from[2 * i + 1] + 1) >> 1);
    }
  } else if (count < static_cast<int32_t>(hn::MaxLanes(kMany))) {
    meansOfPairs(kFew, from, count, to);
  } else {
    meansOfPairs(kMany, from, count, to);
  }
}

// --- Up to sixteen samples, output by output ------------------------------------------------------------------------

inline constexpr hn::CappedTag<int16_t, 8> kTapWords;
inline constexpr hn::CappedTag<int32_t, 4> kTapSums;
using TapSum = hn::Vec<decltype(kTapSums)>;

/// Pairs of words times pairs of factors, summed.
HWY_INLINE TapSum sumsOfPairs(hn::Vec<decltype(kTapWords)> words, hn::Vec<decltype(kTapWords)> factors) {
#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128
  return TapSum{_mm_madd_epi16(words.raw, factors.raw)};
#else
  const auto even = [](auto v) HWY_ATTR { return hn::ShiftRight<16>(hn::ShiftLeft<16>(hn::BitCast(kTapSums, v))); };
  const auto odd = [](auto v) HWY_ATTR { return hn::ShiftRight<16>(hn::BitCast(kTapSums, v)); };
  return hn::Add(hn::Mul(even(words), even(factors)), hn::Mul(odd(words), odd(factors)));
#endif
}

/// The sums of pairs of `a`, then of `b`.
HWY_INLINE TapSum pairsAdded(TapSum a, TapSum b) {
  return hn::Add(hn::ConcatEven(kTapSums, b, a), hn::ConcatOdd(kTapSums, b, a));
}

/// Four outputs.
template <int32_t words>
HWY_INLINE TapSum fourSums(const TapRow &row, const Taps *taps, const int16_t *factors) {
  if constexpr (words == 4) {
    constexpr hn::CappedTag<int16_t, 4> kHalf;
    const auto two = [&](int32_t i) HWY_ATTR {
      const auto low = hn::LoadU(kHalf, row.at(taps[i].first));
      const auto high = hn::LoadU(kHalf, row.at(taps[i + 1].first));
      return sumsOfPairs(hn::Combine(kTapWords, high, low), hn::LoadU(kTapWords, factors + i * words));
    };
    return pairsAdded(two(0), two(2));
  } else {
    const auto one = [&](int32_t i) HWY_ATTR {
      const int16_t *from = row.at(taps[i].first);
      TapSum sum = sumsOfPairs(hn::LoadU(kTapWords, from), hn::LoadU(kTapWords, factors + i * words));
      if constexpr (words == 16) {
        sum = hn::Add(sum, sumsOfPairs(hn::LoadU(kTapWords, from + 8), hn::LoadU(kTapWords, factors + i * words + 8)));
      }
      return sum;
    };
    return pairsAdded(pairsAdded(one(0), one(1)), pairsAdded(one(2), one(3)));
  }
}

/// A group, as far as the row is long enough for `words` words of each output: the others are made one by one.
template <int32_t words>
HWY_NOINLINE void meansOfGroup(const TapRow &row, const Taps *taps, const int32_t *weights, const int16_t *factors,
                               int32_t count, int16_t *to) {
  constexpr hn::CappedTag<int16_t, 4> kMeans;
  const auto half = hn::Set(kTapSums, 1 << (kFewTapsBits - 1));
  int32_t inside = count;
  while (inside > 0 && taps[inside - 1].first + words > row.end) {
    --inside;
  }
  int32_t i = 0;
  for (; i + 4 <= inside; i += 4) {
    const TapSum sums = hn::Add(fourSums<words>(row, taps + i, factors + i * words), half);
    hn::StoreU(hn::DemoteTo(kMeans, hn::ShiftRight<kFewTapsBits>(sums)), kMeans, to + i);
  }
  singly(row, taps + i, weights, count - i, to + i);
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

/// Outputs of a group, or of those from this one on that go on alike: makes `count` at most and gives how many.
HWY_INLINE int32_t tapGroup(const TapRow &row, const TapGroup &group, const Taps *taps, const int32_t *weights,
                            int32_t count, int16_t *to) {
  if (group.kind == TapKind::Kept || group.kind == TapKind::Halves) {
    count = count < group.run ? count : group.run;
    const int16_t *from = row.at(taps[0].first);
    if (group.kind == TapKind::Kept) {
      std::memcpy(to, from, static_cast<size_t>(count) * sizeof *to);
    } else {
      halves(from, count, to);
    }
    return count;
  }
  count = count < kColumnGroup ? count : kColumnGroup;
  if (group.kind == TapKind::Plain || kIsEmulated) {
    singly(row, taps, weights, count, to);
  } else if (group.kind == TapKind::Sixteen) {
    meansOfGroup<16>(row, taps, weights, group.factors, count, to);
  } else if (!madeByReach(row, group, count, to)) {
    if (group.kind == TapKind::Four) {
      meansOfGroup<4>(row, taps, weights, group.factors + kWordFactors, count, to);
    } else {
      meansOfGroup<8>(row, taps, weights, group.factors + kWordFactors, count, to);
    }
  }
  return count;
}

inline void tapColumns(const int16_t *from, int32_t start, const TapColumns &columns, int32_t first, int32_t count,
                       int16_t *to) {
  const Taps *taps = columns.columns + first;
  const TapRow row = {from, start, taps[count - 1].first + taps[count - 1].count};
  const auto *group = reinterpret_cast<const TapGroup *>(columns.layout) + first / kColumnGroup;
  while (count > 0) {
    const int32_t made = tapGroup(row, *group, taps, columns.weights, count, to);
    count -= made;
    taps += made;
    to += made;
    group += made / kColumnGroup;
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
