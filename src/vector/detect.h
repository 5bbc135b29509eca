// Which levels of vector code may run.
#pragma once

#include "base/levels.h"

namespace zqcc {

#if ZQCC_VECTOR

/// The levels that this processor and its system can run, the portable one among them. Found out once in a process;
/// threads that ask at the same time for the first time find out the same.
LevelSet detectedLevels();

/// The detected levels without those that were masked out. The portable level always stays.
LevelSet usableLevels();

/// Restricts what usableLevels() gives from now on, for tests and measurements; kEveryLevel lifts it.
void setLevelMask(LevelSet mask);

#else

// A build without vector code has one level.
constexpr LevelSet detectedLevels() {
  return setOf(LEVEL_PORTABLE);
}
constexpr LevelSet usableLevels() {
  return setOf(LEVEL_PORTABLE);
}
inline void setLevelMask(LevelSet /*mask*/) {}

#endif

} // namespace zqcc
