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

using D64 = hn::Repartition<uint64_t, D8>;
constexpr D64 d64;

#if HWY_ARCH_X86
/// Lane k of block b becomes lane b of the k-th run of as many lanes as there are blocks.
template <class T>
struct BlocksLast {
  static constexpr int of(int lane, int lanes) {
    constexpr int kInBlock = 16 / static_cast<int>(sizeof(T));
    const int blocks = lanes / kInBlock;
    return lane % blocks * kInBlock + lane / blocks;
  }
};
#endif

/// Stores bytes of words. Those of type T come together from all blocks, then the next ones.
template <class T>
HWY_INLINE void storeBytesOf(V16 words, uint8_t *to) {
  V8 bytes = packBlocks(hn::BitCast(di16, words), hn::BitCast(di16, words));
#if HWY_MAX_BYTES > 16
  bytes = choose<T, BlocksLast<T>>(bytes, bytes);
#endif
  hn::StoreU(hn::LowerHalf(bytes), hn::Half<D8>(), to);
}

/// Boxes of columns 4 i to 4 i + 3.
struct FourColumns {
  using Run = uint32_t; ///< means of a vector's block
  static constexpr int32_t kApart = 4;
  static constexpr int32_t kBefore = 0;

  template <int32_t lineCount>
  static HWY_INLINE VI16 sums(const uint8_t *const *line, ptrdiff_t at) {
    const VI32 low = part<lineCount>(line, at);
    return packedWords(low, part<lineCount>(line, at + kBytes));
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
  using Run = uint16_t;
  static constexpr int32_t kApart = 8;
  static constexpr int32_t kBefore = 1;

  template <int32_t lineCount>
  static HWY_INLINE VI16 sums(const uint8_t *const *line, ptrdiff_t at) {
    const VI16 low = packedWords(part<lineCount>(line, at), part<lineCount>(line, at + kBytes));
    const VI16 high = packedWords(part<lineCount>(line, at + 2 * kBytes), part<lineCount>(line, at + 3 * kBytes));
    return packedWords(hn::BitCast(di32, low), hn::BitCast(di32, high));
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

#if HWY_TARGET == HWY_AVX3
/// Multiples of three, modulo the lanes of a vector.
alignas(64) constexpr uint16_t kThirds[] = {0,  3,  6,  9,  12, 15, 18, 21, 24, 27, 30, 1,  4,  7,  10, 13,
                                            16, 19, 22, 25, 28, 31, 2,  5,  8,  11, 14, 17, 20, 23, 26, 29};
#endif

/// Boxes of columns 6 i to 6 i + 5.
struct SixColumns {
  using Run = uint64_t;
  static constexpr int32_t kApart = 6;
  static constexpr int32_t kBefore = 0;

  template <int32_t lineCount>
  static HWY_INLINE VI16 sums(const uint8_t *const *line, ptrdiff_t at) {
    alignas(64) uint16_t pairs[4 * kWords];
    for (int part = 0; part < 3; ++part) {
      const ptrdiff_t from = at + ptrdiff_t{part} * kBytes;
      V16 sum = pairSums(d16, line[0] + from);
      for (int32_t l = 1; l < lineCount; ++l) {
        sum = hn::Add(sum, pairSums(d16, line[l] + from));
      }
      hn::StoreU(sum, d16, pairs + part * kWords);
    }
    return hn::BitCast(di16, sumsOfThree(pairs));
  }

private:
  /// Every third one of the sums of three neighbours, of which three vectors have one in every lane.
  static HWY_INLINE V16 sumsOfThree(const uint16_t *from) {
#if HWY_TARGET == HWY_AVX3
    const auto sums = [&](int32_t at) HWY_ATTR {
      return hn::Add(hn::LoadU(d16, from + at), hn::Add(hn::LoadU(d16, from + at + 1), hn::LoadU(d16, from + at + 2)));
    };
    auto all = sums(0).raw;
    all = _mm512_mask_mov_epi16(all, 0x92492492, sums(kWords).raw);
    all = _mm512_mask_mov_epi16(all, 0x24924924, sums(2 * kWords).raw);
    return V16{_mm512_permutexvar_epi16(hn::LoadU(d16, kThirds).raw, all)};
#else
    V16 first;
    V16 second;
    V16 third;
    hn::LoadInterleaved3(d16, from, first, second, third);
    return hn::Add(first, hn::Add(second, third));
#endif
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
    const V16 sums = hn::BitCast(d16, Boxes::template sums<lineCount>(line, at));
    const V16 means = hn::ShiftRightSame(hn::MulHigh(sums, factor), shift);
    storeBytesOf<typename Boxes::Run>(means, to + box);
    for (int32_t byte = 0; byte < kWords * Boxes::kApart; byte += kLine) {
      for (int32_t l = 0; l < lineCount; ++l) {
        __builtin_prefetch(line[l] + at + byte + next);
      }
    }
    if (box + kWords == count) {
      return;
    }
  }
}

template <class Boxes>
void means(const AddedLines &lines, int32_t first, int32_t count, const BoxQuotient &quotient, uint8_t *to) {
  static_assert(straightLevels(kWords) != straightLevels(kWords - 1));
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
constexpr StraightBoxes sixColumns = means<SixColumns>;
constexpr StraightBoxes oddOfEight = means<OddOfEight>;

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
constexpr PerLevel<StraightBoxes> BOXES_OF_FOUR = ZQCC_EVERY_LEVEL(fourColumns);
constexpr PerLevel<StraightBoxes> BOXES_OF_SIX = ZQCC_EVERY_LEVEL(sixColumns);
constexpr PerLevel<StraightBoxes> BOXES_OF_EVERY_SECOND = ZQCC_EVERY_LEVEL(oddOfEight);
} // namespace zqcc
#endif
