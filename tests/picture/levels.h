// Levels of vector code that tests hold the library at.
#pragma once

#include "base/levels.h"
#include "vector/detect.h"

#include <cstdint>
#include <vector>

namespace picture {

/// Sets of levels of which the highest is each of those that this processor can run, the portable one first.
inline std::vector<zqcc::LevelSet> levelsHere() {
  std::vector<zqcc::LevelSet> sets;
  for (uint32_t level = zqcc::LEVEL_PORTABLE; level < zqcc::LEVEL_COUNT; ++level) {
    if ((zqcc::detectedLevels() >> level & 1U) != 0) {
      sets.push_back((zqcc::LevelSet{2} << level) - 1);
    }
  }
  return sets;
}

/// Holds the library at a level as long as it lives.
class AtLevel {
public:
  explicit AtLevel(zqcc::LevelSet levels) { zqcc::setLevelMask(levels); }
  ~AtLevel() { zqcc::setLevelMask(zqcc::kEveryLevel); }
  AtLevel(const AtLevel &) = delete;
  AtLevel &operator=(const AtLevel &) = delete;
};

} // namespace picture
