// Filtered resizing by rows as the family of conversions asks for it; a build without vector code never does it.
#pragma once

#include "base/job.h"

#include <cstdint>

namespace zqcc {

#if ZQCC_VECTOR

/// Resizes the whole picture by five-point or box means, as the job's quality says. Chroma sample k serves output
/// columns k << columnShift on, and lines k << lineShift on; of RGB the planes are packed instead. False if nothing was
/// done: the portable code then has the picture.
bool filteredByRows(const Job &job, int32_t columnShift, int32_t lineShift, bool isRgb);

#else

constexpr bool filteredByRows(const Job & /*job*/, int32_t /*columnShift*/, int32_t /*lineShift*/, bool /*isRgb*/) {
  return false;
}

#endif

} // namespace zqcc
