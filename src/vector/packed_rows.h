// Nearest resizing of packed 4:2:2 by rows: macropixels are picked into a row, and from there on it is a line of packed
// 4:2:2 like any other.
#pragma once

#include "base/job.h"
#include "kernels/placement.h"

namespace zqcc {

#if ZQCC_VECTOR

/// The whole frame, to pixels of 16 bits without dither, or of 24 bits. False if nothing could be done by rows: nothing
/// has been written then.
bool resizePackedByRows16(const Job &job, Turn turn, const Target &target);
bool resizePackedByRows24(const Job &job, Turn turn, const Target &target);

#else

constexpr bool resizePackedByRows16(const Job & /*job*/, Turn /*turn*/, const Target & /*target*/) {
  return false;
}
constexpr bool resizePackedByRows24(const Job & /*job*/, Turn /*turn*/, const Target & /*target*/) {
  return false;
}

#endif

} // namespace zqcc
