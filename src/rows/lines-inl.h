// Samples of lines weighed and added up, column by column.

// Read once a level.
#if defined(ZQP_ROWS_LINES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_LINES_INL_H
#undef ZQP_ROWS_LINES_INL_H
#else
#define ZQP_ROWS_LINES_INL_H
#endif

#include "rows/byte_pairs-inl.h"
#include "rows/line_words-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

// Weights of lines are 128 high + low, so that words of 16 bits can hold all there is:
//   sum of sample * weight + 64 >> 7  =  sum of sample * high + (sum of sample * low + 64 >> 7).

/// Up to so many lines the low factors sum up to nothing and the positive ones among them to 128 at most, so that their
/// sum fits into a word.
inline constexpr int32_t kFewLines = 4;

struct LineFactors {
  int32_t high[kFewTaps];
  int32_t low[kFewTaps];
  bool anyLow;
  bool asBytes; ///< factors are signed bytes
};

/// Of few lines those with the largest low parts are rounded up, as many as make the high factors sum up to 128.
inline void roundFew(LineFactors &factors, int32_t lineCount) {
  int32_t rest = 0;
  for (int32_t i = 0; i < lineCount; ++i) {
    rest += factors.low[i];
  }
  for (; rest >= 128; rest -= 128) {
    int32_t largest = 0;
    for (int32_t i = 1; i < lineCount; ++i) {
      largest = factors.low[i] > factors.low[largest] ? i : largest;
    }
    ++factors.high[largest];
    factors.low[largest] -= 128;
  }
}

/// Of many lines each is rounded by itself: two low factors are -126 to 128, two high ones 128 at most.
inline void roundMany(LineFactors &factors, int32_t lineCount) {
  for (int32_t i = 0; i < lineCount; ++i) {
    if (factors.low[i] > 64) {
      ++factors.high[i];
      factors.low[i] -= 128;
    }
  }
}

inline LineFactors factorsOfLines(const int32_t *weights, int32_t lineCount) {
  LineFactors factors = {};
  for (int32_t i = 0; i < lineCount; ++i) {
    factors.high[i] = weights[i] >> 7;
    factors.low[i] = weights[i] & 127;
  }
  if (lineCount <= kFewLines) {
    roundFew(factors, lineCount);
  } else {
    roundMany(factors, lineCount);
  }
  factors.asBytes = true;
  for (int32_t i = 0; i < lineCount; ++i) {
    factors.anyLow = factors.anyLow || factors.low[i] != 0;
    factors.asBytes = factors.asBytes && factors.high[i] < 128;
  }
  return factors;
}

/// Sums of words. Those of many lines keep the lower parts of low products apart.
template <class D, bool many>
struct LineSum {
  using V = hn::Vec<D>;
  V high;
  V low;

  HWY_INLINE LineSum() : high(hn::Zero(D())), low(hn::Zero(D())) {}
  HWY_INLINE void add(V highProduct, V lowProduct) {
    high = hn::Add(high, highProduct);
    if constexpr (many) {
      high = hn::Add(high, hn::ShiftRight<7>(lowProduct));
      low = hn::Add(low, hn::And(lowProduct, hn::Set(D(), int16_t{127})));
    } else {
      low = hn::Add(low, lowProduct);
    }
  }
  HWY_INLINE V words() const { return hn::Add(high, hn::ShiftRight<7>(hn::Add(low, hn::Set(D(), int16_t{64})))); }
};

/// Line by line: for all factors, and where there is nothing that adds products in pairs.
template <class D, bool many>
HWY_NOINLINE void addSingly(D d, const uint8_t *const *lines, const LineFactors &factors, int32_t lineCount,
                            int32_t count, int16_t *to) {
  constexpr hn::Rebind<uint8_t, D> kSamples;
  everyVector(static_cast<int32_t>(hn::MaxLanes(d)), count, [&](int32_t at) HWY_ATTR {
    LineSum<D, many> sum;
    for (int32_t i = 0; i < lineCount; ++i) {
      const auto samples = hn::PromoteTo(d, hn::LoadU(kSamples, lines[i] + at));
      sum.add(hn::Mul(samples, hn::Set(d, static_cast<int16_t>(factors.high[i]))),
              hn::Mul(samples, hn::Set(d, static_cast<int16_t>(factors.low[i]))));
    }
    hn::StoreU(sum.words(), d, to + at);
  });
}

#if HWY_ARCH_X86 && HWY_TARGET != HWY_EMU128

/// Words of the lower and the upper halves of blocks of 16 columns.
template <class D>
HWY_INLINE void storeBlocks(D d, hn::Vec<D> lower, hn::Vec<D> upper, int16_t *to) {
  auto first = lower;
  auto second = upper;
  if constexpr (hn::MaxLanes(D()) == 16) {
    first = hn::ConcatLowerLower(d, upper, lower);
    second = hn::ConcatUpperUpper(d, upper, lower);
  }
#if HWY_TARGET == HWY_AVX3
  if constexpr (hn::MaxLanes(D()) == 32) {
    const auto place = _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11);
    const auto four = _mm512_set1_epi64(4);
    first.raw = _mm512_permutex2var_epi64(lower.raw, place, upper.raw);
    second.raw = _mm512_permutex2var_epi64(lower.raw, _mm512_add_epi64(place, four), upper.raw);
  }
#endif
  hn::StoreU(first, d, to);
  hn::StoreU(second, d, to + hn::MaxLanes(D()));
}

/// Two lines at a time. `pairs` is 0 for any number.
template <class D, int32_t pairs, bool low>
HWY_NOINLINE void addInPairs(D d, const uint8_t *const *lines, const LineFactors &factors, int32_t lineCount,
                             int32_t count, int16_t *to) {
  constexpr hn::Repartition<int16_t, D> kSums;
  using Sum = LineSum<decltype(kSums), pairs == 0>;
  const int32_t pairCount = pairs == 0 ? (lineCount + 1) / 2 : pairs;
  int16_t highs[kFewTaps / 2];
  int16_t lows[kFewTaps / 2];
  for (int32_t i = 0; i < pairCount; ++i) {
    highs[i] = factorsOf(factors.high[2 * i], factors.high[2 * i + 1]);
    lows[i] = factorsOf(factors.low[2 * i], factors.low[2 * i + 1]);
  }
  everyVector(static_cast<int32_t>(hn::MaxLanes(d)), count, [&](int32_t at) HWY_ATTR {
    Sum lower;
    Sum upper;
    for (int32_t i = 0; i < pairCount; ++i) {
      const auto a = hn::LoadU(d, lines[2 * i] + at);
      const auto b = 2 * i + 1 < lineCount ? hn::LoadU(d, lines[2 * i + 1] + at) : a; // counts nothing
      const auto add = [&](Sum &sum, auto samples) HWY_ATTR {
        const auto high = sumPairs(samples, hn::Set(kSums, highs[i]));
        if constexpr (low) {
          sum.add(high, sumPairs(samples, hn::Set(kSums, lows[i])));
        } else {
          sum.high = hn::Add(sum.high, high);
        }
      };
      add(lower, hn::InterleaveLower(d, a, b));
      add(upper, hn::InterleaveUpper(d, a, b));
    }
    if constexpr (low) {
      storeBlocks(kSums, lower.words(), upper.words(), to + at);
    } else {
      storeBlocks(kSums, lower.high, upper.high, to + at);
    }
  });
}

template <class D, bool low>
HWY_INLINE void addInPairs(D d, const uint8_t *const *lines, const LineFactors &factors, int32_t lineCount,
                           int32_t count, int16_t *to) {
  if (lineCount <= 2) {
    return addInPairs<D, 1, low>(d, lines, factors, lineCount, count, to);
  }
  if (lineCount <= kFewLines) {
    return addInPairs<D, 2, low>(d, lines, factors, lineCount, count, to);
  }
  return addInPairs<D, 0, low>(d, lines, factors, lineCount, count, to);
}

template <class D>
HWY_INLINE bool addedInPairs(D d, const uint8_t *const *lines, const LineFactors &factors, int32_t lineCount,
                             int32_t count, int16_t *to) {
  if (!factors.asBytes || count < static_cast<int32_t>(hn::MaxLanes(d))) {
    return false;
  }
  if (factors.anyLow) {
    addInPairs<D, true>(d, lines, factors, lineCount, count, to);
  } else {
    addInPairs<D, false>(d, lines, factors, lineCount, count, to);
  }
  return true;
}

#else

template <class D>
HWY_INLINE bool addedInPairs(D /*d*/, const uint8_t *const * /*lines*/, const LineFactors & /*factors*/,
                             int32_t /*lineCount*/, int32_t /*count*/, int16_t * /*to*/) {
  return false;
}

#endif

template <class D>
HWY_INLINE bool addedSingly(D d, const uint8_t *const *lines, const LineFactors &factors, int32_t lineCount,
                            int32_t count, int16_t *to) {
  if (count < static_cast<int32_t>(hn::MaxLanes(d))) {
    return false;
  }
  if (lineCount <= kFewLines) {
    addSingly<D, false>(d, lines, factors, lineCount, count, to);
  } else {
    addSingly<D, true>(d, lines, factors, lineCount, count, to);
  }
  return true;
}

inline HWY_NOINLINE void addPlainly(const uint8_t *const *lines, const int32_t *weights, int32_t lineCount,
                                    int32_t count, int16_t *to) {
  for (int32_t column = 0; column < count; ++column) {
    int32_t sum = 1 << (kFewTapsBits - kWordShift - 1);
    for (int32_t i = 0; i < lineCount; ++i) {
      sum += lines[i][column] * weights[i];
    }
    to[column] = static_cast<int16_t>(sum >> (kFewTapsBits - kWordShift));
  }
}

inline void addLines(const uint8_t *const *lines, const int32_t *weights, int32_t lineCount, int32_t count,
                     int16_t *to) {
  constexpr hn::CappedTag<uint8_t, 16> kBlock;
  constexpr hn::CappedTag<int16_t, 8> kHalfBlock;
  if (lineCount == 1) {
    return widen(lines[0], count, to);
  }
  if (kIsEmulated || count < static_cast<int32_t>(hn::MaxLanes(kHalfBlock))) {
    return addPlainly(lines, weights, lineCount, count, to);
  }
  const LineFactors factors = factorsOfLines(weights, lineCount);
  if (!addedInPairs(kBytes, lines, factors, lineCount, count, to) &&
      !addedInPairs(kBlock, lines, factors, lineCount, count, to) &&
      !addedSingly(kWords, lines, factors, lineCount, count, to)) {
    addedSingly(kHalfBlock, lines, factors, lineCount, count, to);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
