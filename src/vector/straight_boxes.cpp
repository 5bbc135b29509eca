#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/straight_boxes.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/filter_rows.h"
#include "vector/means-inl.h"

#include <utility>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

using D32 = hn::Repartition<uint32_t, D8>;
using D64 = hn::Repartition<uint64_t, D8>;
constexpr D64 d64;

#if HWY_ARCH_X86
/// Lane k of block b comes to where lane b of block k would stand if there were as many lanes as blocks.
template <class T>
struct BlocksLast {
  static constexpr int of(int lane, int lanes) {
    constexpr int kInBlock = 16 / static_cast<int>(sizeof(T));
    const int blocks = lanes / kInBlock;
    return lane % blocks * kInBlock + lane / blocks;
  }
};
#endif

/// Sums that were made of vectors of boxes, one of each in every block: runs of type T of a vector come together.
template <class T>
HWY_INLINE VI16 inOrder(VI16 sums) {
#if HWY_MAX_BYTES > 16
  return choose<T, BlocksLast<T>>(sums, sums);
#else
  return sums;
#endif
}

/// Boxes of columns 4 i to 4 i + 3.
struct FourColumns {
  static constexpr int32_t kApart = 4;
  static constexpr int32_t kBefore = 0;

  template <int32_t lineCount>
  static HWY_INLINE VI16 sums(const uint8_t *const *line, ptrdiff_t at) {
    const VI32 low = part<lineCount>(line, at);
    return inOrder<uint64_t>(packedWords(low, part<lineCount>(line, at + kBytes)));
  }

private:
  template <int32_t lineCount>
  static HWY_INLINE VI32 part(const uint8_t *const *line, ptrdiff_t at) {
    V16 sum = pairSums(d16, line[0] + at);
    for (int32_t l = 1; l < lineCount; ++l) {
      sum = hn::Add(sum, pairSums(d16, line[l] + at));
    }
    return addedProducts(hn::BitCast(di16, sum), hn::Set(di16, 1));
  }
};

/// Boxes of columns 8 i + 1, 3, 5 and 7.
struct OddOfEight {
  static constexpr int32_t kApart = 8;
  static constexpr int32_t kBefore = 1;

  template <int32_t lineCount>
  static HWY_INLINE VI16 sums(const uint8_t *const *line, ptrdiff_t at) {
    const VI16 low = packedWords(part<lineCount>(line, at), part<lineCount>(line, at + kBytes));
    const VI16 high = packedWords(part<lineCount>(line, at + 2 * kBytes), part<lineCount>(line, at + 3 * kBytes));
    return inOrder<uint32_t>(packedWords(hn::BitCast(di32, low), hn::BitCast(di32, high)));
  }

private:
  /// Odd columns of two lines fill a vector.
  template <int32_t lineCount>
  static HWY_INLINE VI32 part(const uint8_t *const *line, ptrdiff_t at) {
    const auto words = [at](const uint8_t *from) HWY_ATTR { return hn::BitCast(d16, hn::LoadU(d8, from + at)); };
    auto sum = hn::Zero(d64);
    for (int32_t l = 0; l < lineCount; l += 2) {
      V16 odd = hn::ShiftRight<8>(words(line[l]));
      if (l + 1 < lineCount) {
        odd = hn::OrAnd(odd, words(line[l + 1]), hn::Set(d16, 0xFF00));
      }
      sum = hn::Add(sum, hn::SumsOf8(hn::BitCast(d8, odd)));
    }
    return hn::BitCast(di32, sum);
  }
};

/// Whole vectors, then one that ends with the row.
template <class Boxes, int32_t lineCount>
HWY_NOINLINE void meansOf(const AddedLines &lines, int32_t first, int32_t count, const BoxQuotient &quotient,
                          uint8_t *to) {
  constexpr int32_t kLine = 64; ///< of the cache
  const V16 factor = hn::Set(d16, quotient.factor);
  const int shift = quotient.shift;
  const ptrdiff_t next = lines.next;
  const uint8_t *line[kMostBoxSamples];
  for (int32_t l = 0; l < lineCount; ++l) {
    line[l] = hidden(lines.line[l]) + first - Boxes::kBefore;
  }
  for (int32_t box = 0;; box = box + 2 * kWords > count ? count - kWords : box + kWords) {
    const ptrdiff_t at = ptrdiff_t{box} * Boxes::kApart;
    for (int32_t byte = 0; byte < kWords * Boxes::kApart; byte += kLine) {
      for (int32_t l = 0; l < lineCount; ++l) {
        __builtin_prefetch(line[l] + at + byte + next);
      }
    }
    const V16 sums = hn::BitCast(d16, Boxes::template sums<lineCount>(line, at));
    const V16 means = hn::ShiftRightSame(hn::MulHigh(sums, factor), shift);
    const hn::Rebind<uint8_t, DI16> dBytes;
    hn::StoreU(hn::DemoteTo(dBytes, hn::BitCast(di16, means)), dBytes, to + box);
    if (box + kWords == count) {
      return;
    }
  }
}

template <class Boxes>
void means(const AddedLines &lines, int32_t first, int32_t count, const BoxQuotient &quotient, uint8_t *to) {
  static_assert(kWords <= kLeastStraightBoxes);
  static_assert(kMostBoxSamples == 7);
  switch (lines.count) {
  case 1:
    return meansOf<Boxes, 1>(lines, first, count, quotient, to);
  case 2:
    return meansOf<Boxes, 2>(lines, first, count, quotient, to);
  case 3:
    return meansOf<Boxes, 3>(lines, first, count, quotient, to);
  case 4:
    return meansOf<Boxes, 4>(lines, first, count, quotient, to);
  case 5:
    return meansOf<Boxes, 5>(lines, first, count, quotient, to);
  case 6:
    return meansOf<Boxes, 6>(lines, first, count, quotient, to);
  default:
    return meansOf<Boxes, 7>(lines, first, count, quotient, to);
  }
}

constexpr StraightBoxes fourColumns = means<FourColumns>;
constexpr StraightBoxes oddOfEight = means<OddOfEight>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<StraightBoxes> BOXES_OF_FOUR = ZQCC_EVERY_LEVEL(fourColumns);
constexpr PerLevel<StraightBoxes> BOXES_OF_EVERY_SECOND = ZQCC_EVERY_LEVEL(oddOfEight);
} // namespace zqcc
#endif
