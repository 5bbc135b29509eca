// Plans of pictures that are resized and keep their type: luma and chroma have tables of positions one by one, chroma
// takes the first half of luma's.
#pragma once

#include "base/plan_kind.h"
#include "vector/column_plan.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// Columns of luma and of chroma: interpolated, or taken as they are where no position lies between samples.
struct KeptPlan {
  TapPlan luma;
  TapPlan chroma;
  PickPlan pickedLuma;
  PickPlan pickedChroma; ///< of pairs, both bytes
};

constexpr bool keepsType(PlanKind kind) {
  switch (kind) {
  case PlanKind::Planes420:
  case PlanKind::Planes420Nearest:
  case PlanKind::Planes420Turned:
  case PlanKind::SemiPlanar:
  case PlanKind::Packed422:
    return true;
  default:
    return false;
  }
}

/// Bytes of memory that a plan of one of these kinds is made in; 0 if there is none.
uint64_t keptPlanBytes(PlanKind kind, const ConvertParams &seen);

/// Makes the plan in that memory, which is aligned to 64 bytes.
KeptPlan makeKeptPlan(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, uint8_t *memory);

} // namespace zqcc
