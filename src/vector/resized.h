// Resizing by rows as the families of conversions ask for it; a build without vector code never does it.
#pragma once

#include "base/job.h"
#include "base/turn.h"
#include "kernels/placement.h"
#include "kernels/plane_view.h"

namespace zqcc {

#if ZQCC_VECTOR

/// Resizes the whole picture as the job's plan says. False if nothing was done: the portable code then has the picture.
bool resizeByPlan(const Job &job, const PlaneView &view, Turn turn, const Target &target);

inline bool resizedByRows(const Job &job, const PlaneView &view, Turn turn, const Target &target) {
  return job.plan != nullptr && resizeByPlan(job, view, turn, target);
}

#else

constexpr bool resizedByRows(const Job & /*job*/, const PlaneView & /*view*/, Turn /*turn*/,
                             const Target & /*target*/) {
  return false;
}

#endif

} // namespace zqcc
