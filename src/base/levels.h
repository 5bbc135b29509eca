// Levels of vector code: what the processor can run and what each kernel has for it.
#pragma once

#include <cstdint>

namespace zqcc {

/// From the plainest to the widest of a processor family; portable code serves where nothing else does.
enum Level : uint32_t {
  LEVEL_PORTABLE,
  LEVEL_SSE4,
  LEVEL_AVX2,
  LEVEL_AVX512,
  LEVEL_AVX512VBMI,
  LEVEL_NEON,
  LEVEL_COUNT
};

/// A set of levels, one bit each.
using LevelSet = uint32_t;

constexpr LevelSet setOf(Level level) {
  return LevelSet{1} << level;
}

inline constexpr LevelSet kEveryLevel = (LevelSet{1} << LEVEL_COUNT) - 1;

/// What every level has for one kernel, null where it has nothing of its own.
template <class Function>
struct PerLevel {
  Function of[LEVEL_COUNT];

  /// The highest level of `usable` that has something, LEVEL_PORTABLE if none has.
  [[nodiscard]] constexpr Level levelIn(LevelSet usable) const {
    for (uint32_t level = LEVEL_COUNT - 1; level > LEVEL_PORTABLE; --level) {
      if ((usable >> level & 1U) != 0 && of[level] != nullptr) {
        return static_cast<Level>(level);
      }
    }
    return LEVEL_PORTABLE;
  }

  /// What that level has; null where only the portable code serves.
  [[nodiscard]] constexpr Function in(LevelSet usable) const { return of[levelIn(usable)]; }
};

} // namespace zqcc
