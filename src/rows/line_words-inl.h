// Words of single lines, and of lines that are added up one by one.

// Read once a level.
#if defined(ZQP_ROWS_LINE_WORDS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_LINE_WORDS_INL_H
#undef ZQP_ROWS_LINE_WORDS_INL_H
#else
#define ZQP_ROWS_LINE_WORDS_INL_H
#endif

#include "rows/byte_pairs-inl.h"
#include "rows/scale.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Does columns `at` to `at` + lanes - 1 for every vector of a row, which has as many lanes at least: the last one
/// overlaps the one before it.
template <class Do>
HWY_INLINE void everyVector(int32_t lanes, int32_t count, const Do &columns) {
  for (int32_t i = 0; i < count - lanes; i += lanes) {
    columns(i);
  }
  columns(count - lanes);
}

template <class D>
HWY_INLINE void widenVectors(D d, const uint8_t *from, int32_t count, int16_t *to) {
  constexpr hn::Rebind<uint8_t, D> kSamples;
  everyVector(static_cast<int32_t>(hn::MaxLanes(d)), count, [&](int32_t at) HWY_ATTR {
    hn::StoreU(hn::ShiftLeft<kWordShift>(hn::PromoteTo(d, hn::LoadU(kSamples, from + at))), d, to + at);
  });
}

inline void widen(const uint8_t *from, int32_t count, int16_t *to) {
  constexpr hn::CappedTag<int16_t, 8> kFew;
  if (kIsEmulated || count < static_cast<int32_t>(hn::MaxLanes(kFew))) {
    for (int32_t i = 0; i < count; ++i) {
      to[i] = static_cast<int16_t>(from[i] << kWordShift);
    }
  } else if (count < static_cast<int32_t>(hn::MaxLanes(kWords))) {
    widenVectors(kFew, from, count, to);
  } else {
    widenVectors(kWords, from, count, to);
  }
}

// --- Sums -----------------------------------------------------------------------------------------------------------

inline constexpr hn::ScalableTag<uint32_t> kLineSums;
inline constexpr auto kLineSumLanes = static_cast<int32_t>(hn::MaxLanes(kLineSums));

/// As many columns as whole vectors have: sums are added to, so that no vector may overlap another one.
HWY_INLINE int32_t addVectors(const uint8_t *line, int32_t weight, int32_t count, uint32_t *sums) {
  constexpr hn::Rebind<uint8_t, decltype(kLineSums)> kSamples;
  const auto weights = hn::Set(kLineSums, static_cast<uint32_t>(weight));
  int32_t i = 0;
  for (; i + kLineSumLanes <= count; i += kLineSumLanes) {
    const auto products = hn::Mul(hn::PromoteTo(kLineSums, hn::LoadU(kSamples, line + i)), weights);
    hn::StoreU(hn::Add(hn::LoadU(kLineSums, sums + i), products), kLineSums, sums + i);
  }
  return i;
}

inline void addToSums(const uint8_t *line, int32_t weight, int32_t count, uint32_t *sums) {
  for (int32_t i = kIsEmulated ? 0 : addVectors(line, weight, count, sums); i < count; ++i) {
    sums[i] += static_cast<uint32_t>(line[i]) * static_cast<uint32_t>(weight);
  }
}

HWY_INLINE int32_t roundVectors(const uint32_t *sums, int32_t shift, int32_t count, int16_t *to) {
  constexpr hn::RebindToSigned<decltype(kLineSums)> kNumbers;
  constexpr hn::Rebind<int16_t, decltype(kLineSums)> kSumWords;
  const auto half = hn::Set(kLineSums, uint32_t{1} << (shift - 1));
  int32_t i = 0;
  for (; i + kLineSumLanes <= count; i += kLineSumLanes) {
    const auto sum = hn::ShiftRightSame(hn::Add(hn::LoadU(kLineSums, sums + i), half), shift);
    hn::StoreU(hn::DemoteTo(kSumWords, hn::BitCast(kNumbers, sum)), kSumWords, to + i);
  }
  return i;
}

inline void wordsOfSums(const uint32_t *sums, int32_t bits, int32_t count, int16_t *to) {
  const int32_t shift = bits - kWordShift;
  for (int32_t i = kIsEmulated ? 0 : roundVectors(sums, shift, count, to); i < count; ++i) {
    to[i] = static_cast<int16_t>((sums[i] + (uint32_t{1} << (shift - 1))) >> shift);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
