// Vectors of bytes that lie side by side in memory, two, three or four components in turns: taken apart and put
// together. Where the processor has no instructions for it, crossing the 128-bit blocks of a vector is what costs most:
// shuffles within blocks put bytes where they are out of one another's way, blends collect them, and at most one
// permutation a vector brings blocks into order.

// Read once a level.
#if defined(ZQP_ROWS_INTERLEAVED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_INTERLEAVED_INL_H
#undef ZQP_ROWS_INTERLEAVED_INL_H
#else
#define ZQP_ROWS_INTERLEAVED_INL_H
#endif

#include "vector/transpose16-inl.h"
#include "vector/words-inl.h"

#include <type_traits>
#include <utility>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;
namespace vec = zqcc::HWY_NAMESPACE;

template <class D>
inline constexpr ptrdiff_t kBytes = static_cast<ptrdiff_t>(hn::MaxLanes(D()));
template <class D>
inline constexpr int kBlocks = static_cast<int>(kBytes<D> / 16);

/// 16 bytes, byte i being Order::of(i).
template <class Order, std::size_t... i>
constexpr auto bytesOf(std::index_sequence<i...> /*bytes*/) {
  struct Bytes {
    alignas(16) uint8_t of[sizeof...(i)];
  };
  return Bytes{{static_cast<uint8_t>(Order::of(static_cast<int>(i)))...}};
}
template <class Order>
struct BlockOrder {
  static constexpr auto kBytes = bytesOf<Order>(std::make_index_sequence<16>());
};

/// Every block in that order.
template <class Order, class D>
HWY_INLINE hn::Vec<D> shuffled(D d, hn::Vec<D> bytes) {
  return hn::TableLookupBytes(bytes, hn::LoadDup128(d, BlockOrder<Order>::kBytes.of));
}

/// The 32-bit lanes of a vector, lane i being number Order::of(i, blocks).
template <class Order, int blocks, std::size_t... i>
constexpr auto lanesOf(std::index_sequence<i...> /*lanes*/) {
  struct Lanes {
    alignas(64) int32_t of[sizeof...(i)];
  };
  return Lanes{{Order::of(static_cast<int>(i), blocks)...}};
}
template <class Order, int blocks>
struct LaneOrder {
  static constexpr auto kLanes = lanesOf<Order, blocks>(std::make_index_sequence<std::size_t{4} * blocks>());
};
template <class Order, class D>
HWY_INLINE hn::Vec<D> permuted(D d, hn::Vec<D> bytes) {
  const hn::Repartition<uint32_t, D> lanes;
  const auto order = hn::SetTableIndices(lanes, LaneOrder<Order, kBlocks<D>>::kLanes.of);
  return hn::BitCast(d, hn::TableLookupLanes(hn::BitCast(lanes, bytes), order));
}

/// 32-bit lane i of a block is that of `b` where bit i of the pattern is set, else that of `a`.
template <int pattern, class D>
HWY_INLINE hn::Vec<D> mixed(D d, hn::Vec<D> a, hn::Vec<D> b) {
#if HWY_ARCH_X86
  (void)d;
  // SSE4 blends words where it shuffles, but floating-point numbers anywhere.
  using Lane = std::conditional_t<HWY_TARGET == HWY_SSE4, float, uint32_t>;
  return vec::blendBlocks<Lane, pattern>(a, b);
#else
  alignas(16) static constexpr uint32_t kChosen[4] = {(pattern & 1) != 0 ? ~0U : 0, (pattern & 2) != 0 ? ~0U : 0,
                                                      (pattern & 4) != 0 ? ~0U : 0, (pattern & 8) != 0 ? ~0U : 0};
  const hn::Repartition<uint32_t, D> lanes;
  return vec::selectBits(hn::BitCast(d, hn::LoadDup128(lanes, kChosen)), b, a);
#endif
}

/// Four vectors, of which lane p of block j of vector i goes to lane p of that block of vector i ^ p.
template <class D>
HWY_INLINE void exchangeLanes(D d, hn::Vec<D> (&v)[4]) {
  const auto t0 = mixed<0b1010>(d, v[0], v[1]);
  const auto t1 = mixed<0b1010>(d, v[1], v[0]);
  const auto t2 = mixed<0b1010>(d, v[2], v[3]);
  const auto t3 = mixed<0b1010>(d, v[3], v[2]);
  v[0] = mixed<0b1100>(d, t0, t2);
  v[1] = mixed<0b1100>(d, t1, t3);
  v[2] = mixed<0b1100>(d, t2, t0);
  v[3] = mixed<0b1100>(d, t3, t1);
}

/// Two vectors of bytes so that what is made of a block of `a` and then of that block of `b`, half a block each, is in
/// order after mended().
template <class D>
HWY_INLINE void loadTwo(D d, const uint8_t *from, hn::Vec<D> &a, hn::Vec<D> &b) {
  if constexpr (kBlocks<D> == 2) { // blocks 0 and 2, 1 and 3: loading them so is cheaper than moving them
    a = vec::loadBlocks(d, from, 32);
    b = vec::loadBlocks(d, from + 16, 32);
  } else {
    a = hn::LoadU(d, from);
    b = hn::LoadU(d, from + kBytes<D>);
  }
}

/// Halves of blocks: all first ones, then all second ones.
struct Mended {
  static constexpr int of(int lane, int blocks) { return lane / 2 % blocks * 4 + lane / 2 / blocks * 2 + lane % 2; }
};
template <class D>
HWY_INLINE hn::Vec<D> mended(D d, hn::Vec<D> bytes) {
  if constexpr (kBlocks<D> == 4) {
    return permuted<Mended>(d, bytes);
  } else {
    return bytes;
  }
}

#if HWY_ARCH_X86

template <class D>
HWY_INLINE void loadPairs(D d, const uint8_t *from, hn::Vec<D> &first, hn::Vec<D> &second) {
  const hn::Repartition<int16_t, D> d16;
  const hn::Repartition<uint16_t, D> u16;
  hn::Vec<D> a;
  hn::Vec<D> b;
  loadTwo(d, from, a, b);
  const auto low = [&](hn::Vec<D> v)
                       HWY_ATTR { return hn::BitCast(d16, hn::And(hn::BitCast(u16, v), hn::Set(u16, 0xFF))); };
  const auto high = [&](hn::Vec<D> v) HWY_ATTR { return hn::BitCast(d16, hn::ShiftRight<8>(hn::BitCast(u16, v))); };
  first = mended(d, vec::packBlocks(low(a), low(b)));
  second = mended(d, vec::packBlocks(high(a), high(b)));
}

template <class D>
HWY_INLINE void storePairs(D d, hn::Vec<D> first, hn::Vec<D> second, uint8_t *to) {
  const auto a = vec::zipHalves(first);
  const auto b = vec::zipHalves(second);
  hn::StoreU(hn::InterleaveLower(d, a, b), d, to);
  hn::StoreU(hn::InterleaveUpper(d, a, b), d, to + kBytes<D>);
}

/// Byte i of one of three vectors that hold 48 bytes in turns belongs to component (i + vector) % 3, so that the bytes
/// of a component all stand at different places.
template <int vector, int component>
constexpr int bytesOfThree() {
  int pattern = 0;
  for (int i = 0; i < 16; ++i) {
    pattern |= (i + vector) % 3 == component ? 1 << i : 0;
  }
  return pattern;
}
template <int component>
struct TakenOfThree {
  static constexpr int of(int pixel) { return (3 * pixel + component) % 16; }
};
template <int component>
struct PutInThree {
  static constexpr int of(int i) { return (i + 16 * ((component - i + 48) % 3) - component) / 3; }
};

template <int component, class D>
HWY_INLINE hn::Vec<D> oneOfThree(D d, hn::Vec<D> a, hn::Vec<D> b, hn::Vec<D> c) {
  const auto ab = vec::blendBlocks<uint8_t, bytesOfThree<1, component>()>(a, b);
  return shuffled<TakenOfThree<component>>(d, vec::blendBlocks<uint8_t, bytesOfThree<2, component>()>(ab, c));
}
template <class D>
HWY_INLINE void loadThree(D d, const uint8_t *from, hn::Vec<D> (&v)[3]) {
  static constexpr int32_t kPlaces[4] = {0, 48, 96, 144};
  const auto a = vec::blocksAt(d, from, kPlaces);
  const auto b = vec::blocksAt(d, from + 16, kPlaces);
  const auto c = vec::blocksAt(d, from + 32, kPlaces);
  v[0] = oneOfThree<0>(d, a, b, c);
  v[1] = oneOfThree<1>(d, a, b, c);
  v[2] = oneOfThree<2>(d, a, b, c);
}

template <int vector, class V>
HWY_INLINE V allOfThree(const V (&v)[3]) {
  const auto two = vec::blendBlocks<uint8_t, bytesOfThree<vector, 1>()>(v[0], v[1]);
  return vec::blendBlocks<uint8_t, bytesOfThree<vector, 2>()>(two, v[2]);
}
template <class D>
HWY_INLINE void storeThree(D d, const hn::Vec<D> (&components)[3], uint8_t *to) {
  const hn::Vec<D> v[3] = {shuffled<PutInThree<0>>(d, components[0]), shuffled<PutInThree<1>>(d, components[1]),
                           shuffled<PutInThree<2>>(d, components[2])};
  vec::storeBlocks3(d, allOfThree<0>(v), allOfThree<1>(v), allOfThree<2>(v), to);
}

/// Four pixels: component c of them as 32-bit lane c ^ vector.
template <int vector>
struct TakenOfFour {
  static constexpr int of(int byte) { return byte % 4 * 4 + (byte / 4 ^ vector); }
};
template <int vector>
struct PutInFour {
  static constexpr int of(int byte) { return (byte % 4 ^ vector) * 4 + byte / 4; }
};
/// Four pixels a lane, of component c: where those are that come at a place of a row, and the other way round.
template <int component>
struct LanesToRow {
  static constexpr int of(int place, int blocks) { return place % blocks * 4 + (component ^ place / blocks); }
};
template <int component>
struct LanesOfRow {
  static constexpr int of(int lane, int blocks) { return (component ^ lane % 4) * blocks + lane / 4; }
};

template <class D>
HWY_INLINE void loadFour(D d, const uint8_t *from, hn::Vec<D> (&v)[4]) {
  v[0] = shuffled<TakenOfFour<0>>(d, hn::LoadU(d, from));
  v[1] = shuffled<TakenOfFour<1>>(d, hn::LoadU(d, from + kBytes<D>));
  v[2] = shuffled<TakenOfFour<2>>(d, hn::LoadU(d, from + 2 * kBytes<D>));
  v[3] = shuffled<TakenOfFour<3>>(d, hn::LoadU(d, from + 3 * kBytes<D>));
  exchangeLanes(d, v);
  v[0] = permuted<LanesToRow<0>>(d, v[0]);
  v[1] = permuted<LanesToRow<1>>(d, v[1]);
  v[2] = permuted<LanesToRow<2>>(d, v[2]);
  v[3] = permuted<LanesToRow<3>>(d, v[3]);
}

template <class D>
HWY_INLINE void storeFour(D d, const hn::Vec<D> (&components)[4], uint8_t *to) {
  hn::Vec<D> v[4] = {permuted<LanesOfRow<0>>(d, components[0]), permuted<LanesOfRow<1>>(d, components[1]),
                     permuted<LanesOfRow<2>>(d, components[2]), permuted<LanesOfRow<3>>(d, components[3])};
  exchangeLanes(d, v);
  hn::StoreU(shuffled<PutInFour<0>>(d, v[0]), d, to);
  hn::StoreU(shuffled<PutInFour<1>>(d, v[1]), d, to + kBytes<D>);
  hn::StoreU(shuffled<PutInFour<2>>(d, v[2]), d, to + 2 * kBytes<D>);
  hn::StoreU(shuffled<PutInFour<3>>(d, v[3]), d, to + 3 * kBytes<D>);
}

#else

template <class D>
HWY_INLINE void loadPairs(D d, const uint8_t *from, hn::Vec<D> &first, hn::Vec<D> &second) {
  hn::LoadInterleaved2(d, from, first, second);
}
template <class D>
HWY_INLINE void storePairs(D d, hn::Vec<D> first, hn::Vec<D> second, uint8_t *to) {
  hn::StoreInterleaved2(first, second, d, to);
}
template <class D>
HWY_INLINE void loadThree(D d, const uint8_t *from, hn::Vec<D> (&v)[3]) {
  hn::LoadInterleaved3(d, from, v[0], v[1], v[2]);
}
template <class D>
HWY_INLINE void storeThree(D d, const hn::Vec<D> (&v)[3], uint8_t *to) {
  hn::StoreInterleaved3(v[0], v[1], v[2], d, to);
}
template <class D>
HWY_INLINE void loadFour(D d, const uint8_t *from, hn::Vec<D> (&v)[4]) {
  hn::LoadInterleaved4(d, from, v[0], v[1], v[2], v[3]);
}
template <class D>
HWY_INLINE void storeFour(D d, const hn::Vec<D> (&v)[4], uint8_t *to) {
  hn::StoreInterleaved4(v[0], v[1], v[2], v[3], d, to);
}

#endif

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
