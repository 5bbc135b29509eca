#include "vector/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vector/place16.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "vector/place16.h"
#include "vector/transpose16-inl.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

constexpr std::ptrdiff_t kBytes = 2; // a pixel's

alignas(16) constexpr uint8_t kBackwards[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};

/// The vector at `from` backwards to `to`.
template <class D>
HWY_INLINE void reverseVector(D d, const uint8_t *from, uint8_t *to) {
  const hn::Repartition<uint8_t, D> bytes;
  const auto reversed = hn::TableLookupBytes(hn::LoadU(bytes, from), hn::LoadDup128(bytes, kBackwards));
  storeBytes(hn::ReverseBlocks(d, hn::BitCast(d, reversed)), d, to);
}

/// Vectors from the row's start on, the last of which overlaps. For rows of at least one vector.
template <class D>
HWY_INLINE void reverseVectors(D d, const uint8_t *from, uint8_t *to, int32_t pixels) {
  constexpr std::ptrdiff_t kVector = hn::MaxLanes(D()) * kBytes;
  const uint8_t *last = from + pixels * kBytes - kVector;
  uint8_t *end = to + pixels * kBytes;
  for (; last - from >= kVector; from += 2 * kVector) {
    end -= 2 * kVector;
    reverseVector(d, from, end + kVector);
    reverseVector(d, from + kVector, end);
  }
  if (from < last) {
    reverseVector(d, from, end - kVector);
  }
  reverseVector(d, last, to);
}

void reverseRow(const uint8_t *from, uint8_t *to, int32_t pixels) {
  const hn::ScalableTag<uint16_t> d;
  const hn::CappedTag<uint16_t, 8> d8;
  if (pixels >= static_cast<int32_t>(hn::Lanes(d))) {
    reverseVectors(d, from, to, pixels);
  } else if (pixels >= 8) {
    reverseVectors(d8, from, to, pixels);
  } else {
    reverseRow16(from, to, pixels);
  }
}

/// Eight columns of `groups` times as many rows as a vector has lanes.
template <class D>
HWY_INLINE void transposeColumns(D d, const uint8_t *from, std::ptrdiff_t stride, uint8_t *to, std::ptrdiff_t toStride,
                                 int32_t groups) {
  constexpr std::ptrdiff_t kLanes = hn::MaxLanes(D());
  const std::ptrdiff_t fourRows = 4 * stride;
  const std::ptrdiff_t fourLines = 4 * toStride;
  for (; groups > 0; --groups) {
    hn::Vec<D> rows[8];
    for (int half = 0; half < 2; ++half) {
      for (int row = 0; row < 4; ++row) {
        rows[4 * half + row] = loadBlocks(d, from + half * fourRows + row * stride, 8 * stride);
      }
    }
    transposeBlocks(d, rows);
    for (int half = 0; half < 2; ++half) {
      for (int row = 0; row < 4; ++row) {
        storeBytes(rows[4 * half + row], d, to + half * fourLines + row * toStride);
      }
    }
    from += kLanes * stride;
    to += kLanes * kBytes;
  }
}

/// For blocks of at least 8 columns and a vector's lanes of rows. Eight output lines are written as far as whole
/// vectors of rows go before the next eight are begun; then comes the vector that overlaps.
template <class D>
HWY_INLINE void transposeVectors(D d, const PixelBlock from, uint8_t *to, std::ptrdiff_t toStride) {
  const auto lanes = static_cast<int32_t>(hn::Lanes(d));
  const int32_t last = from.columns - 8;
  int32_t overlapping = from.lines % lanes != 0 ? 1 : 0;
  int32_t line = 0;
  for (int32_t groups = from.lines / lanes; groups > 0; groups = overlapping--) {
    const uint8_t *rows = from.first + line * from.stride;
    for (int32_t x = 0;; x = x + 8 < last ? x + 8 : last) {
      transposeColumns(d, rows + x * kBytes, from.stride, to + x * toStride + line * kBytes, toStride, groups);
      if (x == last) {
        break;
      }
    }
    line = from.lines - lanes;
  }
}

void transposeBlock(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  const hn::CappedTag<uint16_t, 16> d16;
  const hn::CappedTag<uint16_t, 8> d8;
  if (from.columns < 8 || from.lines < 8) {
    transposeBlock16(from, to, toStride);
  } else if (from.lines >= static_cast<int32_t>(hn::Lanes(d16))) {
    transposeVectors(d16, from, to, toStride);
  } else {
    transposeVectors(d8, from, to, toStride);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zqcc {

[[gnu::noinline]] void reverseRow16(const uint8_t *from, uint8_t *to, int32_t pixels) {
  for (int32_t x = 0; x < pixels; ++x) {
    std::memcpy(to + std::ptrdiff_t{pixels - 1 - x} * 2, from + std::ptrdiff_t{x} * 2, 2);
  }
}

[[gnu::noinline]] void transposeBlock16(const PixelBlock &from, uint8_t *to, std::ptrdiff_t toStride) {
  for (int32_t line = 0; line < from.lines; ++line) {
    for (int32_t x = 0; x < from.columns; ++x) {
      std::memcpy(to + x * toStride + std::ptrdiff_t{line} * 2, from.first + line * from.stride + std::ptrdiff_t{x} * 2,
                  2);
    }
  }
}

constexpr PerLevel<ReverseRow> REVERSE_ROW16 = ZQCC_EVERY_LEVEL(reverseRow);
constexpr PerLevel<TransposeBlock> TRANSPOSE_BLOCK16 = ZQCC_EVERY_LEVEL(transposeBlock);

} // namespace zqcc
#endif
