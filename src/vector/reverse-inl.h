// Rows backwards.

// Read once a level.
#if defined(ZQCC_VECTOR_REVERSE_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQCC_VECTOR_REVERSE_INL_H
#undef ZQCC_VECTOR_REVERSE_INL_H
#else
#define ZQCC_VECTOR_REVERSE_INL_H
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqcc::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

/// The vector of bytes at `from` backwards to `to`. `order` does it for 16 bytes.
template <class D>
HWY_INLINE void reverseVector(D d, const uint8_t (&order)[16], const uint8_t *from, uint8_t *to) {
  const hn::Repartition<uint16_t, D> words; // ReverseBlocks knows no bytes
  const auto reversed = hn::TableLookupBytes(hn::LoadU(d, from), hn::LoadDup128(d, order));
  hn::StoreU(hn::BitCast(d, hn::ReverseBlocks(words, hn::BitCast(words, reversed))), d, to);
}

/// Vectors from the row's start on, the last of which overlaps. For rows of at least one vector.
template <class D>
HWY_INLINE void reverseVectors(D d, const uint8_t (&order)[16], const uint8_t *from, uint8_t *to,
                               std::ptrdiff_t bytes) {
  constexpr std::ptrdiff_t kVector = hn::MaxLanes(D());
  const uint8_t *last = from + bytes - kVector;
  uint8_t *end = to + bytes;
  for (; last - from >= kVector; from += 2 * kVector) {
    end -= 2 * kVector;
    reverseVector(d, order, from, end + kVector);
    reverseVector(d, order, from + kVector, end);
  }
  if (from < last) {
    reverseVector(d, order, from, end - kVector);
  }
  reverseVector(d, order, last, to);
}

/// A row of at least 16 bytes backwards, by the widest vectors or by those of 16 bytes.
HWY_INLINE void reverseBytes(const uint8_t (&order)[16], const uint8_t *from, uint8_t *to, std::ptrdiff_t bytes) {
  const hn::ScalableTag<uint8_t> d;
  if (bytes >= static_cast<std::ptrdiff_t>(hn::Lanes(d))) {
    reverseVectors(d, order, from, to, bytes);
  } else {
    reverseVectors(hn::CappedTag<uint8_t, 16>(), order, from, to, bytes);
  }
}

} // namespace
} // namespace zqcc::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
