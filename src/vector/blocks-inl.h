// Operations within the 128-bit blocks of vectors that Highway lacks or has for some processors only: packing with
// saturation, blending by a constant pattern, and storing the blocks of three vectors in turns.

// Read once a level.
#if defined(ZQCC_VECTOR_BLOCKS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_BLOCKS_INL_H
#undef ZQCC_VECTOR_BLOCKS_INL_H
#else
#define ZQCC_VECTOR_BLOCKS_INL_H
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// packBlocks: the lanes of a block of `a`, then those of the same block of `b`, saturated to bytes.
// sumPairs: every pair of bytes times the pair of signed bytes that the other lane holds, summed.
#if HWY_ARCH_X86
HWY_INLINE hn::Vec128<uint8_t> packBlocks(hn::Vec128<int16_t> a, hn::Vec128<int16_t> b) {
  return hn::Vec128<uint8_t>{_mm_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec128<int16_t> sumPairs(hn::Vec128<uint8_t> bytes, hn::Vec128<int16_t> factors) {
  return hn::Vec128<int16_t>{_mm_maddubs_epi16(bytes.raw, factors.raw)};
}
#if HWY_MAX_BYTES >= 32
HWY_INLINE hn::Vec256<uint8_t> packBlocks(hn::Vec256<int16_t> a, hn::Vec256<int16_t> b) {
  return hn::Vec256<uint8_t>{_mm256_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec256<int16_t> sumPairs(hn::Vec256<uint8_t> bytes, hn::Vec256<int16_t> factors) {
  return hn::Vec256<int16_t>{_mm256_maddubs_epi16(bytes.raw, factors.raw)};
}
#endif
#if HWY_MAX_BYTES >= 64
HWY_INLINE hn::Vec512<uint8_t> packBlocks(hn::Vec512<int16_t> a, hn::Vec512<int16_t> b) {
  return hn::Vec512<uint8_t>{_mm512_packus_epi16(a.raw, b.raw)};
}
HWY_INLINE hn::Vec512<int16_t> sumPairs(hn::Vec512<uint8_t> bytes, hn::Vec512<int16_t> factors) {
  return hn::Vec512<int16_t>{_mm512_maddubs_epi16(bytes.raw, factors.raw)};
}
#endif
#else
HWY_INLINE hn::Vec128<uint8_t> packBlocks(hn::Vec128<int16_t> a, hn::Vec128<int16_t> b) {
  return hn::Vec128<uint8_t>(vqmovun_high_s16(vqmovun_s16(a.raw), b.raw));
}
#endif

#if HWY_ARCH_X86

/// Lanes of type T of `a` and `b`, chosen by number: those of `b` follow those of `a`.
template <class T, class Choice, class V, std::size_t... lane>
HWY_INLINE V choose(V a, V b, std::index_sequence<lane...> /*lanes*/) {
  typedef T Lanes __attribute__((vector_size(sizeof(V))));
  const Lanes chosen =
      __builtin_shufflevector(reinterpret_cast<Lanes>(a.raw), reinterpret_cast<Lanes>(b.raw),
                              Choice::of(static_cast<int>(lane), static_cast<int>(sizeof...(lane)))...);
  return V{reinterpret_cast<decltype(a.raw)>(chosen)};
}
template <class T, class Choice, class V>
HWY_INLINE V choose(V a, V b) {
  return choose<T, Choice>(a, b, std::make_index_sequence<sizeof(V) / sizeof(T)>());
}

/// Lane i of a block is that of `b` where bit i of the pattern is set, else that of `a`.
template <int pattern, int lanesPerBlock>
struct Blend {
  static constexpr int of(int lane, int lanes) {
    return (pattern >> lane % lanesPerBlock & 1) != 0 ? lanes + lane : lane;
  }
};
template <class T, int pattern, class V>
HWY_INLINE V blendBlocks(V a, V b) {
  return choose<T, Blend<pattern, 16 / static_cast<int>(sizeof(T))>>(a, b);
}

/// Blocks p and q of `a`, then r and s of `b`, of vectors of four blocks.
template <int p, int q, int r, int s>
struct FourBlocks {
  static constexpr int of(int lane, int lanes) {
    constexpr int kFrom[4] = {p, q, r, s};
    const int block = lane / 2;
    return kFrom[block] * 2 + lane % 2 + (block < 2 ? 0 : lanes);
  }
};
template <int p, int q, int r, int s, class V>
HWY_INLINE V fourBlocks(V a, V b) {
  return choose<uint64_t, FourBlocks<p, q, r, s>>(a, b);
}

/// Stores the blocks of three vectors in turns: the first of a, b and c, then the second ones, and so on.
template <class D, class V = hn::Vec<D>>
HWY_INLINE void storeBlocks3(D d, V a, V b, V c, uint8_t *to) {
  constexpr std::size_t kBytes = hn::MaxLanes(D());
  V first = a;
  V second = b;
  V third = c;
  if constexpr (kBytes == 32) {
    first = hn::ConcatLowerLower(d, b, a);
    second = hn::ConcatUpperLower(d, a, c);
    third = hn::ConcatUpperUpper(d, c, b);
  } else if constexpr (kBytes == 64) {
    const V a02b02 = fourBlocks<0, 2, 0, 2>(a, b);
    const V c02a13 = fourBlocks<0, 2, 1, 3>(c, a);
    const V c13b13 = fourBlocks<1, 3, 1, 3>(c, b);
    first = fourBlocks<0, 2, 0, 2>(a02b02, c02a13);
    second = fourBlocks<2, 0, 1, 3>(c13b13, a02b02);
    third = fourBlocks<1, 3, 3, 1>(c02a13, c13b13);
  }
  hn::StoreU(first, d, to);
  hn::StoreU(second, d, to + kBytes);
  hn::StoreU(third, d, to + 2 * kBytes);
}

#endif

// blocksAt: 16 bytes from `line` + places[b] on for every block b.
template <class D, hwy::EnableIf<hn::MaxLanes(D()) == 16> * = nullptr>
HWY_INLINE hn::Vec<D> blocksAt(D d, const uint8_t *line, const int32_t *places) {
  return hn::LoadU(d, line + places[0]);
}
#if HWY_ARCH_X86 && HWY_MAX_BYTES >= 32
HWY_INLINE __m128i loadBlock(const uint8_t *at) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(at));
}
template <class D, hwy::EnableIf<hn::MaxLanes(D()) == 32> * = nullptr>
HWY_INLINE hn::Vec<D> blocksAt(D /*d*/, const uint8_t *line, const int32_t *places) {
  const auto first = _mm256_castsi128_si256(loadBlock(line + places[0]));
  return hn::Vec<D>{_mm256_inserti128_si256(first, loadBlock(line + places[1]), 1)};
}
#endif
#if HWY_ARCH_X86 && HWY_MAX_BYTES >= 64
template <class D, hwy::EnableIf<hn::MaxLanes(D()) == 64> * = nullptr>
HWY_INLINE hn::Vec<D> blocksAt(D /*d*/, const uint8_t *line, const int32_t *places) {
  auto all = _mm512_castsi128_si512(loadBlock(line + places[0]));
  all = _mm512_inserti32x4(all, loadBlock(line + places[1]), 1);
  all = _mm512_inserti32x4(all, loadBlock(line + places[2]), 2);
  return hn::Vec<D>{_mm512_inserti32x4(all, loadBlock(line + places[3]), 3)};
}
#endif

/// Of the blocks of two vectors, one behind the other: those of even numbers to `a`, the others to `b`.
template <class D, class V = hn::Vec<D>>
HWY_INLINE void evenAndOddBlocks(D d, V &a, V &b) {
  constexpr std::size_t kBytes = hn::MaxLanes(D());
  const V first = a;
  if constexpr (kBytes == 32) {
    a = hn::ConcatLowerLower(d, b, first);
    b = hn::ConcatUpperUpper(d, b, first);
  } else if constexpr (kBytes == 64) {
    a = fourBlocks<0, 2, 0, 2>(first, b);
    b = fourBlocks<1, 3, 1, 3>(first, b);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
