// Groups of samples as the matrix arithmetic of RGB565 takes them, one class for each way that rows lie. A class has
//   chroma(x)      samples of the pixels from column x on: of the whole group with half chroma, of half of it else
//   luma(line, x)  luma of the group, in the two vectors that the arithmetic works on
//   lanes(columns, parity)  a byte for each pixel, of columns whose first one has that parity
//   store(bytes, to)        the pixels in their order

// Read once a level.
#if defined(ZQCC_VECTOR_MATRIX565_ROWS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_MATRIX565_ROWS_INL_H
#undef ZQCC_VECTOR_MATRIX565_ROWS_INL_H
#else
#define ZQCC_VECTOR_MATRIX565_ROWS_INL_H
#endif

#include "vector/components-inl.h"
#include "vector/pack565-inl.h"
#include "vector/stages.h"

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// Two vectors of 16-bit lanes that make up a group.
template <class D>
struct TwoHalves {
  hn::Vec<Words<D>> lower;
  hn::Vec<Words<D>> upper;
};

/// As many chroma samples as a vector has 16-bit lanes.
template <class D>
struct ChromaWords {
  hn::Vec<Words<D>> u;
  hn::Vec<Words<D>> v;
};

template <class D>
HWY_INLINE ChromaWords<D> chromaWords(D /*d8*/, const uint8_t *u, const uint8_t *v) {
  const Words<D> d16;
  const hn::Half<D> half;
  return {hn::PromoteTo(d16, hn::LoadU(half, u)), hn::PromoteTo(d16, hn::LoadU(half, v))};
}

/// A pair of bytes in every lane, taken apart.
template <class D>
HWY_INLINE TwoHalves<D> partPairs(D /*d8*/, hn::Vec<D> bytes) {
  const hn::Repartition<uint16_t, D> d16;
  const auto both = hn::BitCast(d16, bytes);
  return {hn::BitCast(Words<D>(), hn::And(both, hn::Set(d16, uint16_t{0xFF}))),
          hn::BitCast(Words<D>(), hn::ShiftRight<8>(both))};
}

/// Rows of half chroma. A group is taken apart into even and odd pixels, which have the same terms.
template <class D>
struct HalfChroma {
  static constexpr bool kIsFull = false;

  HWY_INLINE HalfChroma(D /*d8*/, const SampleRows &from) : rows(from) {}

  HWY_INLINE ChromaWords<D> chroma(std::ptrdiff_t x) const { return chromaWords(D(), rows.u + x / 2, rows.v + x / 2); }
  HWY_INLINE TwoHalves<D> luma(int line, std::ptrdiff_t x) const {
    return partPairs(D(), hn::LoadU(D(), rows.y[line] + x));
  }

  static HWY_INLINE hn::Vec<D> lanes(const uint8_t *columns, int /*parity*/) { return hn::LoadDup128(D(), columns); }

  static HWY_INLINE void store(const Rgb565Bytes<hn::Vec<D>> &bytes, uint8_t *to) {
    const D d8;
    const hn::Repartition<uint16_t, D> d16;
    hn::StoreInterleaved2(hn::BitCast(d16, hn::InterleaveLower(d8, bytes.low, bytes.high)),
                          hn::BitCast(d16, hn::InterleaveUpper(d8, bytes.low, bytes.high)), d16,
                          reinterpret_cast<uint16_t *>(to));
  }

private:
  const SampleRows rows;
};

/// The same of macropixels as they lie, whose right pixel's luma stands `right` bytes behind the left one's. Every
/// block of a group's lanes has the pixels of a block of each of the two vectors that the group is read as.
template <std::ptrdiff_t right>
struct PackedChroma {
  template <class D>
  class Of {
  public:
    static constexpr bool kIsFull = false;

    HWY_INLINE Of(D /*d8*/, const SampleRows &from) {
      const std::ptrdiff_t y = right < 0 ? right : 0;
      const uint8_t *firstLuma = from.y[0] + y;
      const uint8_t *first = HWY_MIN(HWY_MIN(from.u, from.v), firstLuma);
      const std::ptrdiff_t left = from.y[0] - first;
      macropixels[0] = first;
      macropixels[1] = from.y[1] - left;
      order = hn::Add(hn::LoadDup128(D(), kMacropixels),
                      pairs(left | (left + right) << 8, (from.u - first) | (from.v - first) << 8));
    }

    HWY_INLINE ChromaWords<D> chroma(std::ptrdiff_t x) const {
      const auto both = ordered(0, x);
      const hn::Repartition<uint64_t, D> halves;
      const auto parts = partPairs(D(), hn::BitCast(D(), hn::InterleaveUpper(halves, both.lower, both.upper)));
      return {parts.lower, parts.upper};
    }
    HWY_INLINE TwoHalves<D> luma(int line, std::ptrdiff_t x) const {
      const auto both = ordered(line, x);
      const hn::Repartition<uint64_t, D> halves;
      return partPairs(D(), hn::BitCast(D(), hn::InterleaveLower(halves, both.lower, both.upper)));
    }

    static HWY_INLINE hn::Vec<D> lanes(const uint8_t *columns, int /*parity*/) { return hn::LoadDup128(D(), columns); }

    static HWY_INLINE void store(const Rgb565Bytes<hn::Vec<D>> &bytes, uint8_t *to) {
      const D d8;
      const hn::Repartition<uint16_t, D> d16;
      const auto evens = hn::BitCast(d16, hn::InterleaveLower(d8, bytes.low, bytes.high));
      const auto odds = hn::BitCast(d16, hn::InterleaveUpper(d8, bytes.low, bytes.high));
      hn::StoreU(hn::BitCast(d8, hn::InterleaveLower(d16, evens, odds)), d8, to);
      hn::StoreU(hn::BitCast(d8, hn::InterleaveUpper(d16, evens, odds)), d8, to + hn::MaxLanes(D()));
    }

  private:
    using Halves = hn::Vec<hn::Repartition<uint64_t, D>>;
    struct Two {
      Halves lower;
      Halves upper;
    };

    /// The macropixels of a group: in every block luma of its eight pixels, then their chroma in pairs.
    HWY_INLINE Two ordered(int line, std::ptrdiff_t x) const {
      const D d8;
      const hn::Repartition<uint64_t, D> halves;
      const uint8_t *at = macropixels[line] + 2 * x;
      return {hn::BitCast(halves, hn::TableLookupBytes(hn::LoadU(d8, at), order)),
              hn::BitCast(halves, hn::TableLookupBytes(hn::LoadU(d8, at + hn::MaxLanes(D())), order))};
    }

    /// The 16-bit number `luma` four times, then `chroma` four times.
    static HWY_INLINE hn::Vec<D> pairs(std::ptrdiff_t luma, std::ptrdiff_t chroma) {
      const hn::Repartition<uint16_t, D> d16;
      const hn::Repartition<uint64_t, D> halves;
      return hn::BitCast(D(),
                         hn::InterleaveLower(halves, hn::BitCast(halves, hn::Set(d16, static_cast<uint16_t>(luma))),
                                             hn::BitCast(halves, hn::Set(d16, static_cast<uint16_t>(chroma)))));
    }
    alignas(16) static constexpr uint8_t kMacropixels[16] = {0, 0, 4, 4, 8, 8, 12, 12, 0, 0, 4, 4, 8, 8, 12, 12};

    const uint8_t *macropixels[2];
    hn::Vec<D> order;
  };
};
template <class D>
using PackedInOrder = PackedChroma<2>::Of<D>;
template <class D>
using PackedSwapped = PackedChroma<-2>::Of<D>;

/// Rows of full chroma. The pixels keep their order: packBlocks and interleaving cancel each other.
template <class D>
struct FullChroma {
  static constexpr bool kIsFull = true;

  HWY_INLINE FullChroma(D /*d8*/, const SampleRows &from) : rows(from) {}

  HWY_INLINE ChromaWords<D> chroma(std::ptrdiff_t x) const { return chromaWords(D(), rows.u + x, rows.v + x); }
  HWY_INLINE TwoHalves<D> luma(int /*line*/, std::ptrdiff_t x) const {
    const hn::Half<D> half;
    const uint8_t *y = rows.y[0] + x;
    return {hn::PromoteTo(Words<D>(), hn::LoadU(half, y)),
            hn::PromoteTo(Words<D>(), hn::LoadU(half, y + hn::Lanes(half)))};
  }

  static HWY_INLINE hn::Vec<D> lanes(const uint8_t *columns, int parity) {
    const D d8;
    const auto zero = hn::Set(d8, columns[parity * kColumnsOfParity]);
    return hn::InterleaveLower(d8, zero, hn::Set(d8, columns[(1 - parity) * kColumnsOfParity]));
  }

  static HWY_INLINE void store(const Rgb565Bytes<hn::Vec<D>> &bytes, uint8_t *to) {
    const D d8;
    hn::StoreU(hn::InterleaveLower(d8, bytes.low, bytes.high), d8, to);
    hn::StoreU(hn::InterleaveUpper(d8, bytes.low, bytes.high), d8, to + hn::Lanes(d8));
  }

private:
  const SampleRows rows;
};

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
