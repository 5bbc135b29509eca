// Where set-up puts a plan of the columns: behind their table, in the same allocation.
#pragma once

#include "frame/context.h"
#include "frame/route.h"

#include <cstdint>

namespace zqcc {

/// Bytes from the start of the columns' table.
struct PlanPlace {
  uint64_t offset; ///< where the plan begins
  uint64_t end;    ///< of the allocation; the offset if there is no plan
};

/// `seen` is the description that the routine sees.
PlanPlace planPlaceOf(const Route &route, const ConvertParams &seen);

/// The plan of a frame whose tables fit; null if it has none, or no vector code may run.
const ResizePlan *planOf(const ConvertContext &context, const Route &route, LevelSet usable);

} // namespace zqcc
