// Pictures that are resized and keep their type, by rows: bilinear rows of samples go where they belong without a
// colour stage. A build without vector code never does it.
#pragma once

#include "base/job.h"

namespace zqcc {

#if ZQCC_VECTOR

/// Resizes planar 4:2:0 as the job's plan says. False if nothing was done: the portable code then has the picture.
bool resizePlanesByPlan(const Job &job);

/// The same by means of five samples.
bool filterPlanesByPlan(const Job &job);

/// The same of packed 4:2:2.
bool resizePackedByPlan(const Job &job);
bool filterPackedByPlan(const Job &job);

/// 16-bit pixels, by means of five samples.
bool filterWordsByPlan(const Job &job);

inline bool resizedPlanesByRows(const Job &job) {
  return job.plan != nullptr && resizePlanesByPlan(job);
}
inline bool filteredPlanesByRows(const Job &job) {
  return job.plan != nullptr && filterPlanesByPlan(job);
}
inline bool resizedPackedByRows(const Job &job) {
  return job.plan != nullptr && resizePackedByPlan(job);
}
inline bool filteredPackedByRows(const Job &job) {
  return job.plan != nullptr && filterPackedByPlan(job);
}
inline bool filteredWordsByRows(const Job &job) {
  return job.plan != nullptr && filterWordsByPlan(job);
}

#else

constexpr bool resizedPlanesByRows(const Job & /*job*/) {
  return false;
}
constexpr bool filteredPlanesByRows(const Job & /*job*/) {
  return false;
}
constexpr bool resizedPackedByRows(const Job & /*job*/) {
  return false;
}
constexpr bool filteredPackedByRows(const Job & /*job*/) {
  return false;
}
constexpr bool filteredWordsByRows(const Job & /*job*/) {
  return false;
}

#endif

} // namespace zqcc
