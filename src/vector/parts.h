// Pictures taken apart by vector code, as the families call it. A picture is done or left alone, and which is said;
// what is left, and everything where there is no vector code, is the portable code's.
#pragma once

#include "base/levels.h"
#include "vector/part_planes.h"
#if ZQCC_VECTOR
#include "vector/stages.h"
#endif

namespace zqcc {

#if ZQCC_VECTOR

inline bool parted(LevelSet levels, const PairLines &picture) {
  const PartPairs part = PART_PAIRS.in(levels);
  if (part == nullptr || picture.count < kLeastPixels / 2) {
    return false;
  }
  part(picture);
  return true;
}

inline bool parted(LevelSet levels, const MacropixelLines &picture) {
  const PartMacropixels part = PART_MACROPIXELS.in(levels);
  if (part == nullptr || picture.pixels < kLeastPixels) {
    return false;
  }
  part(picture);
  return true;
}

#else

template <class Lines>
constexpr bool parted(LevelSet /*levels*/, const Lines & /*picture*/) {
  return false;
}

#endif

} // namespace zqcc
