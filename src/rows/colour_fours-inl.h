// Luma, and chroma of 2 x 2 pixels, straight from pixels of four bytes: even and odd bytes are words that are weighed
// in pairs, so that a pixel's sum is a 32-bit lane and nothing is taken apart.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_FOURS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_FOURS_INL_H
#undef ZQP_ROWS_COLOUR_FOURS_INL_H
#else
#define ZQP_ROWS_COLOUR_FOURS_INL_H
#endif

#include "rows/byte_pairs-inl.h"
#include "rows/colour_weighed-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Weights of a pixel's bytes in the order of their memory; alpha has none. `sumOfWords` shifts by 21, what weighs
/// numbers that are 2^less times as small by so much less, which loses nothing of the bias.
struct FourWeights {
  int16_t of[4];
  int32_t bias;
  int32_t shift;

  FourWeights(const Sum &sum, bool isBlueFirst, int32_t less)
      : of{isBlueFirst ? sum.blue : sum.red, sum.green, isBlueFirst ? sum.red : sum.blue, 0}, bias(sum.bias >> less),
        shift(21 - less) {}

  [[nodiscard]] uint8_t weigh(const int32_t bytes[3]) const {
    const int32_t sum = (bytes[0] * of[0] + bytes[1] * of[1] + bytes[2] * of[2] + bias) >> shift;
    return static_cast<uint8_t>(sum < 0 ? 0 : sum > 255 ? 255 : sum);
  }
};
constexpr int32_t kLessOfBytes = 7;
constexpr int32_t kLessOfFourBytes = 5;  ///< summed up
constexpr int32_t kLessOfEightBytes = 4; ///< a column counting twice

/// Words of the even bytes of four-byte pixels, or of sums of them, and of the odd ones.
struct EvenAndOdd {
  VI even;
  VI odd;
};

HWY_INLINE EvenAndOdd evenAndOdd(const uint8_t *from) {
  const V8 pixels = hn::LoadU(D8(), from);
  return {evenBytes(pixels), oddBytes(pixels)};
}
HWY_INLINE EvenAndOdd added(const EvenAndOdd &a, const EvenAndOdd &b) {
  return {hn::Add(a.even, b.even), hn::Add(a.odd, b.odd)};
}

template <int32_t shift>
class FourSums {
public:
  HWY_INLINE explicit FourSums(const FourWeights &weights)
      : even_(pairOf(weights.of[0], weights.of[2])), odd_(pairOf(weights.of[1], weights.of[3])),
        bias_(hn::Set(DI32(), weights.bias)) {}
  HWY_INLINE VI32 sum(const EvenAndOdd &words) const {
    const VI32 products = hn::Add(sumProducts(words.even, even_), sumProducts(words.odd, odd_));
    return hn::ShiftRight<shift>(hn::Add(products, bias_));
  }

private:
  static HWY_INLINE VI pairOf(int16_t first, int16_t second) {
    const uint32_t pair = static_cast<uint16_t>(first) | uint32_t{static_cast<uint16_t>(second)} << 16;
    return hn::BitCast(DI(), hn::Set(D32(), pair));
  }

  VI even_;
  VI odd_;
  VI32 bias_;
};

/// The way back from Deal::Fours.
constexpr Dwords ofFours() {
  Dwords order = {};
  for (int32_t i = 0; i < 4 * kBlocks; ++i) {
    order.at[i] = static_cast<uint32_t>(4 * (i % kBlocks) + i / kBlocks);
  }
  return order;
}
constexpr Dwords kOfFours = ofFours();

/// Lanes of four vectors as bytes, one vector behind the other.
HWY_INLINE V8 packFour(VI32 a, VI32 b, VI32 c, VI32 d) {
  return permuteDwords(packBlocks(packWords(a, b), packWords(c, d)), kOfFours);
}

/// Asks for what a group further on has: of this line, or of the next one, which mostly lies behind it. Pictures of
/// four bytes a pixel are larger than the caches that are near. Nothing is read, so that it may lie anywhere.
HWY_INLINE void askAhead(const uint8_t *from) {
  constexpr uintptr_t kAhead = 2048;
  for (uintptr_t at = kAhead; at < kAhead + uintptr_t{4} * kGroup; at += 64) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): an address that need not be one of the picture's
    __builtin_prefetch(reinterpret_cast<const void *>(reinterpret_cast<uintptr_t>(from) + at));
  }
}

/// Luma of a group of columns.
HWY_INLINE void lumaOfFours(const uint8_t *from, const FourSums<21 - kLessOfBytes> &sums, uint8_t *to) {
  const auto sum = [&](int32_t i) HWY_ATTR { return sums.sum(evenAndOdd(from + i * kGroup)); };
  hn::StoreU(packFour(sum(0), sum(1), sum(2), sum(3)), D8(), to);
}

/// What two vectors of columns sum up to, of two lines each: neighbours summed.
HWY_INLINE VI neighbours(VI a, VI b) {
  const D32 d;
  const auto first = hn::BitCast(d, a);
  const auto second = hn::BitCast(d, b);
  return hn::Add(hn::BitCast(DI(), hn::ConcatEven(d, second, first)),
                 hn::BitCast(DI(), hn::ConcatOdd(d, second, first)));
}
HWY_INLINE EvenAndOdd squares(const uint8_t *upper, const uint8_t *lower) {
  const EvenAndOdd a = added(evenAndOdd(upper), evenAndOdd(lower));
  const EvenAndOdd b = added(evenAndOdd(upper + kGroup), evenAndOdd(lower + kGroup));
  return {neighbours(a.even, b.even), neighbours(a.odd, b.odd)};
}

/// The same with the column before, the middle one counting twice.
HWY_INLINE EvenAndOdd leftSquares(const uint8_t *upper, const uint8_t *lower) {
  return added(squares(upper - 4, lower - 4), squares(upper, lower));
}

template <int32_t less>
struct TwoFourSums {
  FourSums<21 - less> u;
  FourSums<21 - less> v;
};

/// Of a group of columns: half as many samples of u and of v.
template <int32_t less>
HWY_INLINE void chromaOfFours(const uint8_t *upper, const uint8_t *lower, const TwoFourSums<less> &sums, uint8_t *toU,
                              uint8_t *toV) {
  constexpr auto kSums = less == kLessOfFourBytes ? squares : leftSquares;
  const EvenAndOdd first = kSums(upper, lower);
  const EvenAndOdd second = kSums(upper + 2 * kGroup, lower + 2 * kGroup);
  const V8 samples = packFour(sums.u.sum(first), sums.u.sum(second), sums.v.sum(first), sums.v.sum(second));
  const hn::Half<D8> half;
  hn::StoreU(hn::LowerHalf(half, samples), half, toU);
  hn::StoreU(hn::UpperHalf(half, samples), half, toV);
}

void lumaOfFourBytes(const uint8_t *from, bool isBlueFirst, const Sum &sum, int32_t pixels, uint8_t *to) {
  const FourWeights weights(sum, isBlueFirst, kLessOfBytes);
  if (kIsEmulated || pixels < kGroup) {
    for (int32_t x = 0; x < pixels; ++x, from += 4) {
      const int32_t bytes[3] = {from[0], from[1], from[2]};
      to[x] = weights.weigh(bytes);
    }
    return;
  }
  const FourSums<21 - kLessOfBytes> sums(weights);
  for (int32_t x = 0; x < pixels - kGroup; x += kGroup) {
    askAhead(from + ptrdiff_t{4} * x);
    lumaOfFours(from + ptrdiff_t{4} * x, sums, to + x);
  }
  const ptrdiff_t last = pixels - kGroup;
  lumaOfFours(from + 4 * last, sums, to + last);
}

/// Samples `begin` to `end` - 1 of chroma, if these are enough for a group.
template <int32_t less>
bool chromaByGroups(const uint8_t *upper, const uint8_t *lower, const FourWeights weights[2], ptrdiff_t begin,
                    ptrdiff_t end, uint8_t *const to[2]) {
  if (kIsEmulated || end - begin < kLanes) {
    return false;
  }
  const TwoFourSums<less> sums{FourSums<21 - less>(weights[0]), FourSums<21 - less>(weights[1])};
  const ptrdiff_t last = end - kLanes;
  for (ptrdiff_t x = begin;; x = x + kLanes < last ? x + kLanes : last) {
    askAhead(lower + 8 * x);
    chromaOfFours<less>(upper + 8 * x, lower + 8 * x, sums, to[0] + x, to[1] + x);
    if (x == last) {
      return true;
    }
  }
}

void chromaOfFourBytes(const uint8_t *upper, const uint8_t *lower, bool isBlueFirst, const Sum sum[2], int32_t pixels,
                       uint8_t *toU, uint8_t *toV) {
  const FourWeights weights[2] = {{sum[0], isBlueFirst, kLessOfFourBytes}, {sum[1], isBlueFirst, kLessOfFourBytes}};
  uint8_t *const to[2] = {toU, toV};
  const int32_t pairs = pixels / 2;
  const bool areMade = chromaByGroups<kLessOfFourBytes>(upper, lower, weights, 0, pairs, to);
  for (int32_t x = areMade ? pairs : 0; x < pixels - pairs; ++x) {
    const ptrdiff_t first = ptrdiff_t{8} * x;
    const ptrdiff_t second = x < pairs ? first + 4 : first; // an odd last column is its own neighbour
    int32_t bytes[3];
    for (ptrdiff_t c = 0; c < 3; ++c) {
      bytes[c] = upper[first + c] + upper[second + c] + lower[first + c] + lower[second + c];
    }
    toU[x] = weights[0].weigh(bytes);
    toV[x] = weights[1].weigh(bytes);
  }
}

/// Two columns that are all that there is of three: `ofFirst` of 16384, and the rest.
void chromaAtEdge(const uint8_t *upper, const uint8_t *lower, ptrdiff_t first, ptrdiff_t second, int32_t ofFirst,
                  const FourWeights weights[2], ptrdiff_t x, uint8_t *const to[2]) {
  constexpr int32_t kAll = 16384;
  int32_t words[3];
  for (ptrdiff_t c = 0; c < 3; ++c) {
    const int32_t one = 64 * (upper[first + c] + lower[first + c]);
    const int32_t other = 64 * (upper[second + c] + lower[second + c]);
    words[c] = (one * ofFirst + other * (kAll - ofFirst) + kAll / 2) >> 14;
  }
  to[0][x] = weights[0].weigh(words);
  to[1][x] = weights[1].weigh(words);
}

void leftChromaOfFourBytes(const uint8_t *upper, const uint8_t *lower, bool isBlueFirst, const Sum sum[2],
                           bool hasBefore, int32_t pixels, uint8_t *toU, uint8_t *toV) {
  constexpr int32_t kTwoThirds = 10923;
  const FourWeights ofWords[2] = {{sum[0], isBlueFirst, 0}, {sum[1], isBlueFirst, 0}};
  const FourWeights weights[2] = {{sum[0], isBlueFirst, kLessOfEightBytes}, {sum[1], isBlueFirst, kLessOfEightBytes}};
  uint8_t *const to[2] = {toU, toV};
  const int32_t pairs = pixels / 2;
  if (!hasBefore) {
    chromaAtEdge(upper, lower, 0, pixels > 1 ? 4 : 0, kTwoThirds, ofWords, 0, to);
  }
  const int32_t begin = hasBefore ? 0 : 1;
  const bool areMade = chromaByGroups<kLessOfEightBytes>(upper, lower, weights, begin, pairs, to);
  for (int32_t x = areMade ? pairs : begin; x < pairs; ++x) {
    const ptrdiff_t at = ptrdiff_t{8} * x;
    int32_t bytes[3];
    for (ptrdiff_t c = 0; c < 3; ++c) {
      bytes[c] = upper[at - 4 + c] + 2 * upper[at + c] + upper[at + 4 + c] + lower[at - 4 + c] + 2 * lower[at + c] +
                 lower[at + 4 + c];
    }
    toU[x] = weights[0].weigh(bytes);
    toV[x] = weights[1].weigh(bytes);
  }
  if (pixels % 2 != 0 && pairs >= begin) {
    const ptrdiff_t at = ptrdiff_t{8} * pairs;
    chromaAtEdge(upper, lower, at, at - 4, kTwoThirds, ofWords, pairs, to);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
