#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/box_stages.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/filter_rows.h"
#include "vector/means-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Sums of `lanes` columns of a line.
struct Columns {
  static constexpr int32_t kStep = 1;

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, const uint8_t *from) const {
    return hn::PromoteTo(d, hn::LoadU(hn::Rebind<uint8_t, D>(), from));
  }
  static uint32_t one(const uint8_t *from) { return *from; }
};

struct FirstOnes {
  static constexpr int32_t kStep = 2;

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, const uint8_t *from) const {
    return hn::And(hn::BitCast(d, hn::LoadU(hn::Repartition<uint8_t, D>(), from)), hn::Set(d, 0xFF));
  }
  static uint32_t one(const uint8_t *from) { return *from; }
};

struct BothOnes {
  static constexpr int32_t kStep = 2;

  template <class D>
  HWY_INLINE hn::Vec<D> operator()(D d, const uint8_t *from) const {
    return pairSums(d, from);
  }
  static uint32_t one(const uint8_t *from) { return static_cast<uint32_t>(from[0] + from[1]); }
};

/// Whole vectors, then one that ends with the row.
template <class Samples, int32_t lineCount, class D>
HWY_INLINE void addVectors(D d, const AddedLines &lines, int32_t first, int32_t count, uint16_t *sums) {
  constexpr int32_t kLanes = hn::MaxLanes(D());
  const Samples samples{};
  const ptrdiff_t next = lines.next;
  const uint8_t *line[kMostBoxSamples];
  for (int32_t l = 0; l < lineCount; ++l) {
    line[l] = hidden(lines.line[l]) + first;
  }
  for (int32_t at = 0;; at = at + 2 * kLanes > count ? count - kLanes : at + kLanes) {
    auto sum = hn::Zero(d);
    for (int32_t l = 0; l < lineCount; ++l) {
      const uint8_t *from = line[l] + ptrdiff_t{at} * Samples::kStep;
      __builtin_prefetch(from + next);
      const auto columns = samples(d, from);
      sum = l == 0 ? columns : hn::Add(sum, columns);
    }
    hn::StoreU(sum, d, sums + at);
    if (at + kLanes == count) {
      return;
    }
  }
}

template <class Samples, int32_t lineCount>
HWY_NOINLINE void addCounted(const AddedLines &lines, int32_t first, int32_t count, uint16_t *sums) {
  constexpr hn::CappedTag<uint16_t, 8> kShort;
  if (count >= kWords) {
    addVectors<Samples, lineCount>(d16, lines, first, count, sums);
  } else if (count >= 8) {
    addVectors<Samples, lineCount>(kShort, lines, first, count, sums);
  } else {
    for (int32_t i = 0; i < count; ++i) {
      uint32_t sum = 0;
      for (int32_t l = 0; l < lineCount; ++l) {
        sum += Samples::one(lines.line[l] + first + ptrdiff_t{i} * Samples::kStep);
      }
      sums[i] = static_cast<uint16_t>(sum);
    }
  }
}

template <class Samples>
void addLines(const AddedLines &lines, int32_t first, int32_t count, uint16_t *sums) {
  static_assert(kMostBoxSamples == 7);
  switch (lines.count) {
  case 1:
    return addCounted<Samples, 1>(lines, first, count, sums);
  case 2:
    return addCounted<Samples, 2>(lines, first, count, sums);
  case 3:
    return addCounted<Samples, 3>(lines, first, count, sums);
  case 4:
    return addCounted<Samples, 4>(lines, first, count, sums);
  case 5:
    return addCounted<Samples, 5>(lines, first, count, sums);
  case 6:
    return addCounted<Samples, 6>(lines, first, count, sums);
  default:
    return addCounted<Samples, 7>(lines, first, count, sums);
  }
}

constexpr AddLines addColumns = addLines<Columns>;
constexpr AddLines addPairs = addLines<BothOnes>;
constexpr AddLines addFirstOnes = addLines<FirstOnes>;

/// Eight sums from first[0] on in the first block, from first[4], first[8] and first[12] on in the next ones.
HWY_INLINE VI16 windows(const uint16_t *sums, const int32_t *first) {
  const auto *from = reinterpret_cast<const int16_t *>(sums);
#if HWY_MAX_BYTES == 16
  return hn::LoadU(di16, from + first[0]);
#else
  const hn::Half<DI16> dh;
#if HWY_MAX_BYTES == 32
  return hn::Combine(di16, hn::LoadU(dh, from + first[4]), hn::LoadU(dh, from + first[0]));
#else
  const hn::Half<decltype(dh)> dq;
  return hn::Combine(di16, hn::Combine(dh, hn::LoadU(dq, from + first[12]), hn::LoadU(dq, from + first[8])),
                     hn::Combine(dh, hn::LoadU(dq, from + first[4]), hn::LoadU(dq, from + first[0])));
#endif
#endif
}

/// Boxes of a vector, four to a block: products leave four partial sums of each, two more rounds one.
HWY_INLINE VI32 boxSums(const uint16_t *sums, const int32_t *first, VI16 pattern) {
  const VI16 ones = hn::Set(di16, 1);
  const auto partial = [&](int k) HWY_ATTR { return addedProducts(windows(sums, first + k), pattern); };
  const VI32 low = addedProducts(packedWords(partial(0), partial(1)), ones);
  const VI32 high = addedProducts(packedWords(partial(2), partial(3)), ones);
  return addedProducts(packedWords(low, high), ones);
}

void boxRow(const uint16_t *sums, const BoxColumns &columns, int32_t groups, uint8_t *to) {
  const VI16 pattern = hn::LoadDup128(di16, columns.pattern);
  const V16 factor = hn::Set(d16, columns.quotient.factor);
  const int32_t *first = columns.first;
  for (const uint8_t *const end = to + ptrdiff_t{groups} * kFilterGroup; to != end; to += kFilterGroup) {
    VI32 boxes[kVectors];
    for (VI32 &box : boxes) {
      box = boxSums(sums, first, pattern);
      first += kLongs;
    }
    storeQuotients(boxes, factor, columns.quotient.shift, to);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<AddLines> ADD_LINES = ZQCC_EVERY_LEVEL(addColumns);
constexpr PerLevel<AddLines> ADD_PAIRS = ZQCC_EVERY_LEVEL(addPairs);
constexpr PerLevel<AddLines> ADD_FIRST_ONES = ZQCC_EVERY_LEVEL(addFirstOnes);
constexpr PerLevel<BoxRow> BOX_ROW = ZQCC_EVERY_LEVEL(boxRow);
} // namespace zqcc
#endif
