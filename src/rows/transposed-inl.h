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

/// 16 columns of `groups` times as many lines as a vector has bytes.
template <class D>
HWY_INLINE void transposeColumns(D d, const uint8_t *from, ptrdiff_t stride, uint8_t *to, ptrdiff_t toStride,
                                 int32_t groups) {
  for (; groups > 0; --groups) {
    const uint8_t *at[kBlocks<D>];
    for (const uint8_t *&block : at) {
      block = from;
      vec::moveOn(from, 16 * stride);
    }
    hn::Vec<D> half[16];
    for (int i = 0; i < 4; ++i) {
      interleaveFour(d, vec::loadRow(d, at, 0), vec::loadRow(d, at, 4 * stride), vec::loadRow(d, at, 8 * stride),
                     vec::loadRow(d, at, 12 * stride), half + 4 * i);
      for (const uint8_t *&block : at) {
        vec::moveOn(block, stride);
      }
    }
    uint8_t *line = to;
    for (int i = 0; i < 4; ++i) {
      hn::Vec<D> rows[4];
      interleaveFour(d, half[i], half[i + 4], half[i + 8], half[i + 12], rows);
      for (int row = 0; row < 4; ++row) {
        hn::StoreU(rows[row], d, line + row * toStride);
      }
      vec::moveOn(line, 4 * toStride);
    }
    to += kBytes<D>;
  }
}

struct Turn {
  const uint8_t *from;
  ptrdiff_t fromStride;
  int32_t columns;
  uint8_t *to;
  ptrdiff_t toStride;
};

/// The lines from the `first` one on that fill so many vectors of D, 16 columns at a time.
template <class D>
HWY_INLINE void transposeGroups(D d, const Turn &turn, int32_t first, int32_t groups) {
  const Turn all = turn; // a copy, which no store can change
  const uint8_t *lines = all.from + first * all.fromStride;
  const int32_t last = all.columns - 16;
  for (int32_t x = 0;; x = x + 16 < last ? x + 16 : last) {
    transposeColumns(d, lines + x, all.fromStride, all.to + x * all.toStride + first, all.toStride, groups);
    if (x == last) {
      return;
    }
  }
}

/// A block is as high as a line of the cache is long, so that what is written fills such lines, and a strip of columns
/// goes down all blocks: its output lines stay in the cache until they are full.
constexpr int32_t kBlockLines = 64;
constexpr int32_t kStripColumns = 64;

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
    transposeStrip(hn::CappedTag<uint8_t, 32>(),
                   {turn.from + x, turn.fromStride, some, turn.to + x * turn.toStride, turn.toStride}, lines, 0);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
