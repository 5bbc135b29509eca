// Lines and columns of bytes exchanged, 16 columns of as many lines as a vector has bytes at a time. Vectors of more
// than 32 bytes gain nothing: they shuffle at half the rate.

// Read once a level.
#if defined(ZQP_ROWS_TRANSPOSED_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_TRANSPOSED_INL_H
#undef ZQP_ROWS_TRANSPOSED_INL_H
#else
#define ZQP_ROWS_TRANSPOSED_INL_H
#endif

#include "rows/interleaved-inl.h"
#include "vector/transpose_blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Four vectors of a network of 16: what is left of a row's number moves on to the column's, twice. Four at a time, the
/// 16 stay in as many registers.
template <class D>
HWY_INLINE void interleaveFour(D d, hn::Vec<D> a, hn::Vec<D> b, hn::Vec<D> c, hn::Vec<D> e, hn::Vec<D> *to) {
  const auto lowAc = hn::InterleaveLower(d, a, c);
  const auto highAc = hn::InterleaveUpper(d, a, c);
  const auto lowBe = hn::InterleaveLower(d, b, e);
  const auto highBe = hn::InterleaveUpper(d, b, e);
  to[0] = hn::InterleaveLower(d, lowAc, lowBe);
  to[1] = hn::InterleaveUpper(d, lowAc, lowBe);
  to[2] = hn::InterleaveLower(d, highAc, highBe);
  to[3] = hn::InterleaveUpper(d, highAc, highBe);
}

/// 16 columns of as many lines as a vector has bytes: every block has lines of its own.
template <class D>
struct Tall {
  static constexpr int32_t kColumns = 16;
  static constexpr int32_t kLines = kBytes<D>;
  const uint8_t *at[kBlocks<D>];
  ptrdiff_t stride;

  HWY_INLINE Tall(const uint8_t *from, ptrdiff_t distance) : stride(distance) {
    for (const uint8_t *&block : at) {
      block = from;
      vec::moveOn(from, 16 * stride);
    }
  }
  HWY_INLINE hn::Vec<D> row(ptrdiff_t i) const { return vec::loadRow(D(), at, i * stride); }
  HWY_INLINE void next() {
    for (const uint8_t *&block : at) {
      vec::moveOn(block, stride);
    }
  }
  HWY_INLINE static void store(hn::Vec<D> column, uint8_t *to, ptrdiff_t /*toStride*/) { hn::StoreU(column, D(), to); }
};

/// 16 lines of as many columns as a vector of two blocks has bytes.
template <class D>
struct Wide {
  static constexpr int32_t kColumns = kBytes<D>;
  static constexpr int32_t kLines = 16;
  const uint8_t *at;
  ptrdiff_t stride;

  HWY_INLINE Wide(const uint8_t *from, ptrdiff_t distance) : at(from), stride(distance) {}
  HWY_INLINE hn::Vec<D> row(ptrdiff_t i) const { return hn::LoadU(D(), at + i * stride); }
  HWY_INLINE void next() { vec::moveOn(at, stride); }
  HWY_INLINE static void store(hn::Vec<D> columns, uint8_t *to, ptrdiff_t toStride) {
    const hn::Half<D> half;
    hn::StoreU(hn::LowerHalf(half, columns), half, to);
    hn::StoreU(hn::UpperHalf(half, columns), half, to + 16 * toStride);
  }
};

template <template <class> class Shape, class D>
HWY_INLINE void transposeOne(D d, Shape<D> block, uint8_t *to, ptrdiff_t toStride) {
  hn::Vec<D> half[16];
  for (int i = 0; i < 4; ++i) {
    interleaveFour(d, block.row(0), block.row(4), block.row(8), block.row(12), half + 4 * i);
    block.next();
  }
  for (int i = 0; i < 4; ++i) {
    hn::Vec<D> columns[4];
    interleaveFour(d, half[i], half[i + 4], half[i + 8], half[i + 12], columns);
    for (int column = 0; column < 4; ++column) {
      Shape<D>::store(columns[column], to + column * toStride, toStride);
    }
    vec::moveOn(to, 4 * toStride);
  }
}

struct Turn {
  const uint8_t *from;
  ptrdiff_t fromStride;
  int32_t columns;
  uint8_t *to;
  ptrdiff_t toStride;
};

/// The lines from the `first` one on that fill so many blocks, of at least as many columns as a block has.
template <template <class> class Shape, class D>
HWY_INLINE void transposeBlocks(D d, const Turn &turn, int32_t first, int32_t blocks) {
  using Block = Shape<D>;
  const Turn all = turn; // a copy, which no store can change
  const int32_t last = all.columns - Block::kColumns;
  for (int32_t x = 0;; x = x + Block::kColumns < last ? x + Block::kColumns : last) {
    const uint8_t *from = all.from + first * all.fromStride + x;
    uint8_t *to = all.to + x * all.toStride + first;
    for (int32_t i = 0; i < blocks; ++i) {
      transposeOne<Shape>(d, Block(from, all.fromStride), to, all.toStride);
      from += Block::kLines * all.fromStride;
      to += Block::kLines;
    }
    if (x == last) {
      return;
    }
  }
}

using TransposedBytes = hn::CappedTag<uint8_t, 32>;

/// Vectors that have more bytes than there are lines may have columns.
template <class D>
HWY_INLINE void transposeGroups(D d, const Turn &turn, int32_t first, int32_t groups) {
  if constexpr (kBytes<D> < kBytes<TransposedBytes>) {
    if (turn.columns >= Wide<TransposedBytes>::kColumns) {
      transposeBlocks<Wide>(TransposedBytes(), turn, first, groups);
      return;
    }
  }
  transposeBlocks<Tall>(d, turn, first, groups);
}

/// A block is as high as a line of the cache is long, so that what is written fills such lines, and a strip of columns
/// goes down all blocks: its output lines stay in the cache until they are full.
inline constexpr int32_t kBlockLines = 64;
inline constexpr int32_t kStripColumns = 64;

/// Of at least 16 x 16 bytes, of which `done` lines are done: as many as fill vectors of D, then the rest by the
/// narrowest vectors that hold it, overlapping what is done.
template <class D>
HWY_INLINE void transposeStrip(D d, const Turn &turn, int32_t lines, int32_t done) {
  constexpr auto kLines = static_cast<int32_t>(hn::MaxLanes(D()));
  while (lines - done >= kLines) {
    const int32_t some = lines - done < kBlockLines ? lines - done : kBlockLines;
    transposeGroups(d, turn, done, some / kLines);
    done += some / kLines * kLines;
  }
  if (done == lines) {
    return;
  }
  if constexpr (kLines > 16) {
    if (lines - done <= kLines / 2 || lines < kLines) {
      transposeStrip(hn::Half<D>(), turn, lines, done);
      return;
    }
  }
  transposeGroups(d, turn, lines - kLines, 1);
}

/// Of at least 16 columns and lines.
HWY_INLINE void transposeStrips(const Turn &turn, int32_t lines) {
  int32_t some = 0;
  for (int32_t x = 0; x < turn.columns; x += some) {
    const int32_t left = turn.columns - x;
    some = left < kStripColumns + 16 ? left : kStripColumns;
    transposeStrip(TransposedBytes(),
                   {turn.from + x, turn.fromStride, some, turn.to + x * turn.toStride, turn.toStride}, lines, 0);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
