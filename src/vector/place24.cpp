#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/place24.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/blocks-inl.h"
#include "vector/place24.h"
#include "vector/transpose16-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

constexpr std::ptrdiff_t kBytes = 3; // a pixel's

/// The last five pixels of 16 bytes backwards, and one byte too many.
alignas(16) constexpr uint8_t kBackwards[16] = {13, 14, 15, 10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3, 0};

/// Fives of pixels, each with a byte behind it that the next five replace.
template <int fives>
HWY_INLINE void reverseFives(const uint8_t *&end, uint8_t *&to, int32_t &pixels) {
  const hn::Full128<uint8_t> d;
  const auto order = hn::Load(d, kBackwards);
  for (; pixels > 5 * fives; pixels -= 5 * fives) {
    for (std::ptrdiff_t five = 0; five < fives; ++five) {
      hn::StoreU(hn::TableLookupBytes(hn::LoadU(d, end - 16 - 15 * five), order), d, to + 15 * five);
    }
    end -= 15 * fives;
    to += 15 * fives;
  }
}

/// Wider vectors gain nothing: 15 bytes do not fill a block.
void reverseRow(const uint8_t *from, uint8_t *to, int32_t pixels) {
  const uint8_t *end = from + pixels * kBytes;
  reverseFives<4>(end, to, pixels);
  reverseFives<1>(end, to, pixels);
  reverseRow24(from, to, pixels);
}

/// Four pixels as 32-bit lanes, from the start of 16 bytes and from their end.
alignas(16) constexpr uint8_t kFirstFour[16] = {0, 1, 2, 255, 3, 4, 5, 255, 6, 7, 8, 255, 9, 10, 11, 255};
alignas(16) constexpr uint8_t kLastFour[16] = {4, 5, 6, 255, 7, 8, 9, 255, 10, 11, 12, 255, 13, 14, 15, 255};

/// Exchanges rows and columns of 4 x 4 lanes of 32 bits in every block.
template <class D>
HWY_INLINE void transposeLanes(D d, hn::Vec<D> (&rows)[4]) {
  interleave<uint32_t>(d, rows[0], rows[1]);
  interleave<uint32_t>(d, rows[2], rows[3]);
  interleave<uint64_t>(d, rows[0], rows[2]);
  interleave<uint64_t>(d, rows[1], rows[3]);
}

#if HWY_ARCH_X86

/// Where the three bytes of four lanes come from when they are packed and turned round to where they stand in the
/// vectors of 16 pixels: those of `quarter` begin at byte 12 * quarter, modulo 16.
template <int quarter>
struct TripleOrder {
  static constexpr uint8_t from(int byte) {
    const int packed = (byte - 12 * quarter % 16 + 16) % 16;
    return static_cast<uint8_t>(packed < 12 ? packed / 3 * 4 + packed % 3 : 255);
  }
  alignas(16) static constexpr uint8_t kOrder[16] = {from(0),  from(1),  from(2),  from(3), from(4),  from(5),
                                                     from(6),  from(7),  from(8),  from(9), from(10), from(11),
                                                     from(12), from(13), from(14), from(15)};
  template <class D>
  HWY_INLINE static hn::Vec<D> apply(D d, hn::Vec<D> lanes) {
    return hn::TableLookupBytes(lanes, hn::LoadDup128(d, kOrder));
  }
};

/// 16 pixels a block, four vectors of 32-bit lanes, to 48 bytes a block.
template <class D>
HWY_INLINE void storeTriples(D d, const hn::Vec<D> (&lanes)[4], uint8_t *to) {
  const auto first = TripleOrder<0>::apply(d, lanes[0]);
  const auto second = TripleOrder<1>::apply(d, lanes[1]);
  const auto third = TripleOrder<2>::apply(d, lanes[2]);
  const auto fourth = TripleOrder<3>::apply(d, lanes[3]);
  storeBlocks3(d, blendBlocks<uint32_t, 8>(first, second), blendBlocks<uint32_t, 12>(second, third),
               blendBlocks<uint32_t, 14>(third, fourth), to);
}

#else

/// Bytes of two vectors: those of the second count from 16 on.
HWY_INLINE hn::Vec128<uint8_t> bytesOfTwo(hn::Vec128<uint8_t> a, hn::Vec128<uint8_t> b, const uint8_t (&order)[16]) {
  return hn::Vec128<uint8_t>(vqtbl2q_u8(uint8x16x2_t{{a.raw, b.raw}}, vld1q_u8(order)));
}

/// 16 pixels, four vectors of 32-bit lanes, to 48 bytes.
alignas(16) constexpr uint8_t kTriples0[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20};
alignas(16) constexpr uint8_t kTriples1[16] = {5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25};
alignas(16) constexpr uint8_t kTriples2[16] = {10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28, 29, 30};
template <class D>
HWY_INLINE void storeTriples(D d, const hn::Vec<D> (&lanes)[4], uint8_t *to) {
  hn::StoreU(bytesOfTwo(lanes[0], lanes[1], kTriples0), d, to);
  hn::StoreU(bytesOfTwo(lanes[1], lanes[2], kTriples1), d, to + 16);
  hn::StoreU(bytesOfTwo(lanes[2], lanes[3], kTriples2), d, to + 32);
}

#endif

/// Four columns of 16 rows a block. Rows are read with `before` more bytes in front.
template <class D>
HWY_INLINE void transposeColumns(D d, const uint8_t *from, std::ptrdiff_t stride, hn::Vec<D> order, uint8_t *to,
                                 std::ptrdiff_t toStride) {
  hn::Vec<D> columns[4][4]; // [column][four rows]
  for (auto row = 0; row < 4; ++row) {
    hn::Vec<D> rows[4];
    for (auto &lanes : rows) {
      lanes = hn::TableLookupBytes(loadBlocks(d, from, 16 * stride), order);
      from += stride;
    }
    transposeLanes(d, rows);
    columns[0][row] = rows[0];
    columns[1][row] = rows[2];
    columns[2][row] = rows[1];
    columns[3][row] = rows[3];
  }
  for (const auto &column : columns) {
    storeTriples(d, column, to);
    to += toStride;
  }
}

/// Rows of a block of at least kLeastColumns columns and as many lines as D has bytes. The last group of columns and
/// that of lines overlap.
constexpr int32_t kLeastColumns = 6;
template <class D>
HWY_INLINE void transposeVectors(D d, const PixelBlock from, uint8_t *to, std::ptrdiff_t toStride) {
  constexpr int32_t kLines = hn::MaxLanes(D());
  const int32_t lastColumn = from.columns - 4;
  const int32_t lastLine = from.lines - kLines;
  auto order = hn::LoadDup128(d, kFirstFour);
  std::ptrdiff_t before = 0;
  for (int32_t x = 0;; x += 4) {
    if (x > lastColumn) {
      x = lastColumn;
    }
    for (int32_t line = 0;; line += kLines) {
      if (line > lastLine) {
        line = lastLine;
      }
      transposeColumns(d, from.first + line * from.stride + x * kBytes - before, from.stride, order,
                       to + x * toStride + line * kBytes, toStride);
      if (line == lastLine) {
        break;
      }
    }
    if (x == lastColumn) {
      return;
    }
    // 16 bytes from the start of the last four pixels on would end behind the row.
    order = hn::LoadDup128(d, kLastFour);
    before = 4;
  }
}

void transposeBlock(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  const hn::ScalableTag<uint8_t> d;
  const hn::CappedTag<uint8_t, 32> d32;
  const hn::CappedTag<uint8_t, 16> d16;
  if (from.columns < kLeastColumns || from.lines < 16) {
    transposeBlock24(from, to, toStride);
  } else if (from.lines >= static_cast<int32_t>(hn::Lanes(d))) {
    transposeVectors(d, from, to, toStride);
  } else if (from.lines >= static_cast<int32_t>(hn::Lanes(d32))) {
    transposeVectors(d32, from, to, toStride);
  } else {
    transposeVectors(d16, from, to, toStride);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {
namespace {

void copyPixel(const uint8_t *from, uint8_t *to) {
  to[0] = from[0];
  to[1] = from[1];
  to[2] = from[2];
}

} // namespace

[[gnu::noinline]] void reverseRow24(const uint8_t *from, uint8_t *to, int32_t pixels) {
  for (int32_t x = 0; x < pixels; ++x) {
    copyPixel(from + std::ptrdiff_t{x} * 3, to + std::ptrdiff_t{pixels - 1 - x} * 3);
  }
}

[[gnu::noinline]] void transposeBlock24(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  for (int32_t line = 0; line < from.lines; ++line) {
    for (int32_t x = 0; x < from.columns; ++x) {
      copyPixel(from.first + line * from.stride + std::ptrdiff_t{x} * 3, to + x * toStride + std::ptrdiff_t{line} * 3);
    }
  }
}

constexpr PerLevel<ReverseRow> REVERSE_ROW24 = ZQCC_EVERY_LEVEL(reverseRow);
constexpr PerLevel<TransposeBlock> TRANSPOSE_BLOCK24 = ZQCC_EVERY_LEVEL(transposeBlock);

} // namespace zqcc
#endif
