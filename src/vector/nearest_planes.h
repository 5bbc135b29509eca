// Planes that keep their type and are resized to their nearest samples by vector code, as the families call it: upright
// and turned. Each call does all of a plane or nothing, and says which; what it leaves, and everything where there is
// no vector code, is the portable code's.
#pragma once

#include "base/job.h"
#include "base/limits.h"
#include "base/turn.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Source lines by the entries of a line table. Every second entry, halved, serves chroma that follows luma.
struct PickedLines {
  const uint8_t *first;
  std::ptrdiff_t stride;
  int32_t last; ///< the line that entries behind it take
  const int32_t *table;
  int shift = 0; ///< 1 for every second entry

  [[nodiscard]] const uint8_t *operator()(int32_t position) const {
    return first + smaller(table[std::ptrdiff_t{position} << shift] >> shift, last) * stride;
  }
};

/// `width` counts along the source's lines, `height` across them: a quarter turn is height wide and width high. Both
/// count units: samples, or pairs of them where a quarter turn is one of pairs. A half turn lies at the right end of
/// the output lines.
struct PickedPlane {
  PickedLines lines;
  uint8_t *to;
  std::ptrdiff_t toStride;
  int32_t width;
  int32_t height;
};

enum class PlaneUnit { Luma, Chroma, ChromaPair };

#if ZQCC_VECTOR

bool pickPlaneByPlan(const Job &job, Turn turn, PlaneUnit unit, const PickedPlane &plane);

inline bool pickedByRows(const Job &job, Turn turn, PlaneUnit unit, const PickedPlane &plane) {
  return job.plan != nullptr && pickPlaneByPlan(job, turn, unit, plane);
}

#else

constexpr bool pickedByRows(const Job & /*job*/, Turn /*turn*/, PlaneUnit /*unit*/, const PickedPlane & /*plane*/) {
  return false;
}

#endif

} // namespace zqcc
