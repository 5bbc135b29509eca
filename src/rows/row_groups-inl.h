// Rows from their beginning to their end: by groups that fill vectors, the last of which overlaps the one before it.

// Read once a level.
#if defined(ZQP_ROWS_ROW_GROUPS_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQP_ROWS_ROW_GROUPS_INL_H
#undef ZQP_ROWS_ROW_GROUPS_INL_H
#else
#define ZQP_ROWS_ROW_GROUPS_INL_H
#endif

#include <hwy/highway.h>

#include <cstddef>
#include <cstdint>

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

using WidestBytes = hn::ScalableTag<uint8_t>;
using LeastBytes = hn::CappedTag<uint8_t, 16>;

/// What one(i) does for a unit, for all of them. No emulation of vectors is as fast. Where there are vectors, rows are
/// done so that are too short for them: the empty statement keeps the compiler from trying nevertheless.
template <class Rows>
HWY_INLINE void oneByOne(const Rows &rows, ptrdiff_t count) {
  for (ptrdiff_t i = 0; i < count; ++i) {
    rows.one(i);
#if !ZQP_PORTABLE
    __asm__("");
#endif
  }
}

/// At least as many units as a group has.
template <class Groups>
HWY_INLINE void groupByGroup(const Groups &groups, ptrdiff_t count) {
  const ptrdiff_t last = count - Groups::kUnits;
  for (ptrdiff_t i = 0; i < last; i += Groups::kUnits) {
    groups.group(i);
  }
  groups.group(last);
}

/// Groups<D> is made of rows and does kUnits units at a time, group(i) from the i-th one on, by vectors of D.
template <template <class> class Groups, class Rows>
HWY_INLINE void eachUnit(const Rows &rows, ptrdiff_t count) {
#if ZQP_PORTABLE
  oneByOne(rows, count);
#else
  if (count >= Groups<WidestBytes>::kUnits) {
    groupByGroup(Groups<WidestBytes>(rows), count);
  } else if (count >= Groups<LeastBytes>::kUnits) {
    groupByGroup(Groups<LeastBytes>(rows), count);
  } else {
    oneByOne(rows, count);
  }
#endif
}

} // namespace
} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
