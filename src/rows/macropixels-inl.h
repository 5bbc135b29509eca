// Packed 4:2:2 in any order of its bytes. Four macropixels, the groups of four bytes that two pixels share, make a
// block of 16 bytes: by one shuffle it has eight bytes of luma in one half, and four of either chroma in the other.
// There are four such layouts, so that what comes together in a row stands at different places in each of four vectors,
// and blends collect it. The order of the bytes is nowhere but in the shuffles.

// Read once a level.
#if defined(ZQP_ROWS_MACROPIXELS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_MACROPIXELS_INL_H
#undef ZQP_ROWS_MACROPIXELS_INL_H
#else
#define ZQP_ROWS_MACROPIXELS_INL_H
#endif

#include "rows/fetch.h"
#include "rows/interleaved-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Roles: luma of the left and of the right pixel, u, v. As 32-bit lanes, the layouts are Y Y U V, U V Y Y, Y Y V U and
/// V U Y Y.
enum Role { LEFT, RIGHT, U, V };
template <int layout>
struct Layout {
  static constexpr bool isLuma(int byte) { return byte / 8 == layout % 2; }
  static constexpr int role(int byte) { return isLuma(byte) ? byte % 2 : U + (byte / 4 % 2 ^ layout / 2); }
  static constexpr int macropixel(int byte) { return isLuma(byte) ? byte % 8 / 2 : byte % 4; }
};
template <int layout>
struct RolesOf {
  static constexpr int of(int byte) { return Layout<layout>::role(byte); }
};
template <int layout>
struct MacropixelsOf {
  static constexpr int of(int byte) { return 4 * Layout<layout>::macropixel(byte); }
};
/// Where the byte of macropixel i / 4 stands that has role i % 4.
template <int layout>
struct PlacesOf {
  static constexpr int of(int i) {
    int byte = 0;
    while (Layout<layout>::macropixel(byte) != i / 4 || Layout<layout>::role(byte) != i % 4) {
      ++byte;
    }
    return byte;
  }
};
struct FirstBytes {
  static constexpr int of(int byte) { return byte / 4 * 4; }
};

template <class Order, class D>
HWY_INLINE hn::Vec<D> constantOf(D d) {
  return hn::LoadDup128(d, BlockOrder<Order>::kBytes.of);
}

/// The shuffles from macropixels to layouts.
template <class D>
struct TakenApart {
  hn::Vec<D> by[4];

  HWY_INLINE explicit TakenApart(const PackedOrder &order)
      : by{shuffle<0>(order), shuffle<1>(order), shuffle<2>(order), shuffle<3>(order)} {}

  template <int layout>
  HWY_INLINE static hn::Vec<D> shuffle(const PackedOrder &order) {
    const D d;
    const uint32_t places = order.y0 | uint32_t{order.y1} << 8 | uint32_t{order.u} << 16 | uint32_t{order.v} << 24;
    const auto ofRoles = hn::BitCast(d, hn::Set(hn::Repartition<uint32_t, D>(), places));
    return hn::Add(hn::TableLookupBytes(ofRoles, constantOf<RolesOf<layout>>(d)), constantOf<MacropixelsOf<layout>>(d));
  }
};

/// The shuffles from layouts to macropixels.
template <class D>
struct PutTogether {
  hn::Vec<D> by[4];

  HWY_INLINE explicit PutTogether(const PackedOrder &order)
      : by{shuffle<0>(order), shuffle<1>(order), shuffle<2>(order), shuffle<3>(order)} {}

  template <int layout>
  HWY_INLINE static hn::Vec<D> shuffle(const PackedOrder &order) {
    const D d;
    const uint32_t roles = uint32_t{RIGHT} << 8 * order.y1 | uint32_t{U} << 8 * order.u | uint32_t{V} << 8 * order.v;
    const auto atPlaces = hn::BitCast(d, hn::Set(hn::Repartition<uint32_t, D>(), roles));
    return hn::TableLookupBytes(constantOf<PlacesOf<layout>>(d), hn::Add(atPlaces, constantOf<FirstBytes>(d)));
  }
};

/// Four macropixels a lane: where the chroma is that comes at a place of a row, when it has been collected from vectors
/// that loadTwo() made; and where the chroma of a row goes from which the four layouts take theirs.
template <int isV>
struct ChromaToRow {
  static constexpr int of(int place, int blocks) {
    constexpr int kLane[4] = {2, 0, 3, 1}; // in the four layouts
    const int vector = blocks == 2 ? place / 4 * 2 + place % 2 : place / blocks;
    const int block = blocks == 2 ? place % 4 / 2 : place % blocks;
    return block * 4 + (kLane[vector] ^ isV);
  }
};
template <int isV>
struct ChromaOfRow {
  static constexpr int of(int lane, int blocks) {
    constexpr int kVector[4] = {1, 3, 0, 2}; // to which the lane goes
    return kVector[lane % 4 ^ isV] * blocks + lane / 4;
  }
};

/// As many macropixels as a vector has bytes.
template <class D>
struct Macropixels {
  hn::Vec<D> luma[2];
  hn::Vec<D> u;
  hn::Vec<D> v;

  HWY_INLINE void load(D d, const uint8_t *from, const TakenApart<D> &shuffles) {
    hn::Vec<D> block[4];
    loadTwo(d, from, block[0], block[1]);
    loadTwo(d, from + 2 * kBytes<D>, block[2], block[3]);
    for (int i = 0; i < 4; ++i) {
      block[i] = hn::TableLookupBytes(block[i], shuffles.by[i]);
    }
    luma[0] = mended(d, mixed<0b1100>(d, block[0], block[1]));
    luma[1] = mended(d, mixed<0b1100>(d, block[2], block[3]));
    const auto chroma0 = mixed<0b1100>(d, block[1], block[0]);
    const auto chroma1 = mixed<0b1100>(d, block[3], block[2]);
    u = permuted<ChromaToRow<0>>(d, mixed<0b1010>(d, chroma0, chroma1));
    v = permuted<ChromaToRow<1>>(d, mixed<0b1010>(d, chroma1, chroma0));
  }

  HWY_INLINE void store(D d, const PutTogether<D> &shuffles, uint8_t *to) const {
    const auto luma0 = vec::zipHalves(luma[0]);
    const auto luma1 = vec::zipHalves(luma[1]);
    const auto us = permuted<ChromaOfRow<0>>(d, u);
    const auto vs = permuted<ChromaOfRow<1>>(d, v);
    const auto chroma0 = mixed<0b1010>(d, us, vs);
    const auto chroma1 = mixed<0b1010>(d, vs, us);
    const hn::Vec<D> block[4] = {mixed<0b1100>(d, luma0, chroma0), mixed<0b1100>(d, chroma0, luma0),
                                 mixed<0b1100>(d, luma1, chroma1), mixed<0b1100>(d, chroma1, luma1)};
    for (int i = 0; i < 4; ++i) {
      hn::StoreU(hn::TableLookupBytes(block[i], shuffles.by[i]), d, to + i * kBytes<D>);
    }
  }
};

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
