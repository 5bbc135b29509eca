// Blocks of rows whose lines and columns are exchanged in registers, for units of one or two bytes: as many columns at
// a time as 16 bytes hold, of as many rows as a vector has lanes.

// Read once a level.
#if defined(ZQCC_VECTOR_TRANSPOSE_BLOCKS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_TRANSPOSE_BLOCKS_INL_H
#undef ZQCC_VECTOR_TRANSPOSE_BLOCKS_INL_H
#else
#define ZQCC_VECTOR_TRANSPOSE_BLOCKS_INL_H
#endif

#include "vector/place_stages.h"
#include "vector/transpose16-inl.h"
#include "vector/words-inl.h"

#include <utility>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

/// One round of exchanging 16 rows and columns of bytes: what is left of a row's number moves on to the column's. Four
/// of them and the two have changed places.
template <class D, std::size_t... i>
HWY_INLINE void interleaveRows(D d, hn::Vec<D> (&rows)[16], std::index_sequence<i...> /*pairs*/) {
  const hn::Vec<D> from[16] = {rows[0], rows[1], rows[2],  rows[3],  rows[4],  rows[5],  rows[6],  rows[7],
                               rows[8], rows[9], rows[10], rows[11], rows[12], rows[13], rows[14], rows[15]};
  ((rows[2 * i] = hn::InterleaveLower(d, from[i], from[i + 8])), ...);
  ((rows[2 * i + 1] = hn::InterleaveUpper(d, from[i], from[i + 8])), ...);
}

/// 16 vectors of bytes: lane i of a block of rows[j] is exchanged with lane j of that block of rows[i].
template <class D>
HWY_INLINE void transposeBlocks(D d, hn::Vec<D> (&rows)[16]) {
  constexpr auto kPairs = std::make_index_sequence<8>();
  interleaveRows(d, rows, kPairs);
  interleaveRows(d, rows, kPairs);
  interleaveRows(d, rows, kPairs);
  interleaveRows(d, rows, kPairs);
}

/// What happens to rows before they become columns.
struct AsTheyLie {
  template <class D, std::size_t side>
  HWY_INLINE void operator()(D /*d*/, hn::Vec<D> (&/*rows*/)[side]) const {}
};

/// Columns, and rows a 128-bit block, that are exchanged at a time.
template <class D>
inline constexpr int kSide = 16 / static_cast<int>(sizeof(hn::TFromD<D>));

/// Moves a pointer on. It is hidden how: else all addresses would be computed beforehand, and would not fit registers.
template <class Byte>
HWY_INLINE void moveOn(Byte *&p, std::ptrdiff_t bytes) {
  p = hidden(p + bytes);
}

/// 16 bytes of a row in every block, block b from at[b] + offset.
template <class D, std::size_t blocks>
HWY_INLINE hn::Vec<D> loadRow(D d, const uint8_t *const (&at)[blocks], std::ptrdiff_t offset) {
  if constexpr (blocks == 1) {
    return loadBytes(d, at[0] + offset);
  } else if constexpr (blocks == 2) {
    const hn::Half<D> half;
    return hn::Combine(d, loadBytes(half, at[1] + offset), loadBytes(half, at[0] + offset));
  } else {
    const hn::Half<D> half;
    return hn::Combine(d, loadRow(half, {at[2], at[3]}, offset), loadRow(half, {at[0], at[1]}, offset));
  }
}

/// As many rows a block as it has columns, from `from` on.
template <class D>
HWY_INLINE void loadRows(D d, const uint8_t *from, std::ptrdiff_t stride, hn::Vec<D> (&rows)[kSide<D>]) {
  constexpr std::size_t kBlocks = hn::MaxLanes(D()) / kSide<D>;
  const uint8_t *at[kBlocks];
  for (const uint8_t *&block : at) {
    block = from;
    moveOn(from, kSide<D> * stride);
  }
  for (int four = 0; four < kSide<D>; four += 4) {
    for (int row = 0; row < 4; ++row) {
      rows[four + row] = loadRow(d, at, row * stride);
    }
    for (const uint8_t *&block : at) {
      moveOn(block, 4 * stride);
    }
  }
}

/// kSide columns of `groups` times as many rows as a vector has lanes.
template <class Prepare, class D>
HWY_INLINE void transposeColumns(D d, const uint8_t *from, std::ptrdiff_t stride, uint8_t *to, std::ptrdiff_t toStride,
                                 int32_t groups) {
  constexpr std::ptrdiff_t kLanes = hn::MaxLanes(D());
  for (; groups > 0; --groups) {
    hn::Vec<D> rows[kSide<D>];
    loadRows(d, from, stride, rows);
    Prepare()(d, rows);
    transposeBlocks(d, rows);
    uint8_t *line = to;
    for (int four = 0; four < kSide<D>; four += 4) {
      for (int row = 0; row < 4; ++row) {
        storeBytes(rows[four + row], d, line + row * toStride);
      }
      moveOn(line, 4 * toStride);
    }
    from += kLanes * stride;
    to += kLanes * static_cast<std::ptrdiff_t>(sizeof(hn::TFromD<D>));
  }
}

/// For blocks of at least kSide columns and a vector's lanes of rows. kSide output lines are written as far as whole
/// vectors of rows go before the next ones are begun; then comes the vector that overlaps.
template <class Prepare, class D>
HWY_INLINE void transposeVectors(D d, const PixelBlock &block, uint8_t *to, std::ptrdiff_t toStride) {
  const PixelBlock from = block; // a copy, which no store can change
  constexpr std::ptrdiff_t kBytes = sizeof(hn::TFromD<D>);
  const auto lanes = static_cast<int32_t>(hn::Lanes(d));
  const int32_t last = from.columns - kSide<D>;
  int32_t overlapping = from.lines % lanes != 0 ? 1 : 0;
  int32_t line = 0;
  for (int32_t groups = from.lines / lanes; groups > 0; groups = overlapping--) {
    const uint8_t *rows = from.first + line * from.stride;
    for (int32_t x = 0;; x = x + kSide<D> < last ? x + kSide<D> : last) {
      transposeColumns<Prepare>(d, rows + x * kBytes, from.stride, to + x * toStride + line * kBytes, toStride, groups);
      if (x == last) {
        break;
      }
    }
    line = from.lines - lanes;
  }
}

/// By the widest vectors that the rows fill; D has the widest there are. For blocks of at least kSide columns and rows.
template <class Prepare, class D>
HWY_INLINE void transposeByLines(D d, const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  if constexpr (hn::MaxLanes(D()) > kSide<D>) {
    if (from.lines < static_cast<int32_t>(hn::Lanes(d))) {
      transposeByLines<Prepare>(hn::Half<D>(), from, to, toStride);
      return;
    }
  }
  transposeVectors<Prepare>(d, from, to, toStride);
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
