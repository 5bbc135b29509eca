// What set-up makes for the vector code of a resizing conversion: the columns that samples are taken from, in the form
// that its stages read. A plan lies behind the table of the columns, in the same allocation, so that a context needs no
// further one. It serves every level.
#pragma once

#include "base/plan_kind.h"
#include "zqColorConversion.h"

#include <cstdint>

#if ZQCC_VECTOR
#include "kernels/chroma_rules.h"
#include "vector/column_plan.h"
#include "vector/filter_plan.h"
#include "vector/kept_plan.h"
#endif

namespace zqcc {

#if ZQCC_VECTOR

/// How the words of the i-th output of a group become a tap, and the rule of the chroma, as values: see
/// kernels/tap_pairs.h and kernels/chroma_rules.h.
using Weighting = Tap (*)(const int32_t *words, int32_t i);

struct ChromaRule {
  int32_t (*column)(const PlaneView &view, int32_t x0, int32_t x1);
  int32_t (*line)(const PlaneView &view, const TapPair &y, int line);
  bool perColumn;
  bool perLine;
};

/// The weighting of lines and columns of a kind that reads grouped tables.
Weighting weightingOf(PlanKind kind);

/// Null where there is no chroma that is taken as it is.
const ChromaRule *chromaRuleOf(PlanKind kind);

struct ResizePlan {
  PlanKind kind;
  TapPlan luma;      ///< interpolated columns, of luma or of every plane of RGB
  PickPlan picked;   ///< columns of luma that are taken as they are
  PickPlan chroma;   ///< the same, of chroma
  FilterPlan filter; ///< columns of five-point means
  KeptPlan kept;     ///< columns of pictures that keep their type
};

/// Bytes of the plan of a frame that the routine sees as `seen`; 0 if it has none. May be more than memory can be
/// addressed by.
uint64_t resizePlanBytes(PlanKind kind, const ConvertParams &seen);

/// Makes that plan of the columns' table in as many bytes, which are aligned to 64 and hold the record at their start.
void buildResizePlan(PlanKind kind, const ConvertParams &seen, const int32_t *xTable, uint8_t *memory);

#else

struct ResizePlan;

constexpr uint64_t resizePlanBytes(PlanKind /*kind*/, const ConvertParams & /*seen*/) {
  return 0;
}
inline void buildResizePlan(PlanKind /*kind*/, const ConvertParams & /*seen*/, const int32_t * /*xTable*/,
                            uint8_t * /*memory*/) {}

#endif

} // namespace zqcc
