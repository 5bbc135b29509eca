// Rows of bytes from rows of samples that all have as many, group by group.

// Read once a level.
#if defined(ZQP_ROWS_COLOUR_ROWS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_COLOUR_ROWS_INL_H
#undef ZQP_ROWS_COLOUR_ROWS_INL_H
#else
#define ZQP_ROWS_COLOUR_ROWS_INL_H
#endif

#include "rows/colour_blocks-inl.h"

#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

/// Less than a group of outputs, by way of buffers.
template <class Group>
HWY_INLINE void makeFew(const Group &group, const typename Group::From *const *from, int32_t count,
                        uint8_t *const *to) {
  using From = typename Group::From;
  From samples[Group::kFrom][static_cast<size_t>(kGroup)] = {};
  uint8_t made[Group::kTo][static_cast<size_t>(kGroup)];
  const From *fromBuffers[Group::kFrom];
  uint8_t *toBuffers[Group::kTo];
  for (int32_t row = 0; row < Group::kFrom; ++row) {
    std::memcpy(samples[row], from[row], static_cast<size_t>(count) * sizeof(From));
    fromBuffers[row] = samples[row];
  }
  for (int32_t row = 0; row < Group::kTo; ++row) {
    toBuffers[row] = made[row];
  }
  group.make(fromBuffers, 0, toBuffers);
  for (int32_t row = 0; row < Group::kTo; ++row) {
    std::memcpy(to[row], made[row], static_cast<size_t>(count));
  }
}

/// A Group makes as many outputs as a vector has bytes, of kTo rows from kFrom rows; `last` those that end the row.
template <class Group>
HWY_INLINE void makeRows(const Group &group, const Group &last, const typename Group::From *const *from, int32_t count,
                         uint8_t *const *to) {
  if (count < kGroup) {
    makeFew(group, from, count, to);
    return;
  }
  int32_t x = 0;
  for (; x <= count - kGroup; x += kGroup) {
    group.make(from, x, to);
  }
  if (x < count) {
    last.make(from, count - kGroup, to);
  }
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
