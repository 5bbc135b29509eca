#include "frame/plan_place.h"

#include "frame/resample_tables.h"
#include "vector/detect.h"
#include "vector/resize_plan.h"

namespace zqcc {
namespace {

constexpr uint64_t kPlanAlignment = 64;

/// Whether frames are made with a plan. What the processor has decides, not what may run of it just now: that may
/// change between set-up and frame.
bool isPlanned(const Route &route) {
  return route.plan != PlanKind::None && detectedLevels() != setOf(LEVEL_PORTABLE);
}

} // namespace

PlanPlace planPlaceOf(const Route &route, const ConvertParams &seen) {
  const Axis columns{seen.inWidth, seen.outWidth};
  const uint64_t table = tableWords(route.tables, columns, seen.antiAlias) * sizeof(int32_t);
  if (!isPlanned(route)) {
    return {table, table};
  }
  const uint64_t offset = (table + kPlanAlignment - 1) & ~(kPlanAlignment - 1);
  return {offset, offset + resizePlanBytes(route.plan, seen)};
}

const ResizePlan *planOf(const ConvertContext &context, const Route &route, LevelSet usable) {
  if (route.plan == PlanKind::None || usable == setOf(LEVEL_PORTABLE)) {
    return nullptr;
  }
  const PlanPlace place = planPlaceOf(route, context.params);
  if (place.end == place.offset) {
    return nullptr;
  }
  const auto *table = reinterpret_cast<const uint8_t *>(context.xTable);
  return reinterpret_cast<const ResizePlan *>(table + place.offset);
}

} // namespace zqcc
