// Levels of vector code by name, and conversions that are held at one of them.
#pragma once

#include "base/levels.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace support {

inline constexpr std::array<zqcc::Level, zqcc::LEVEL_COUNT> kLevels{zqcc::LEVEL_PORTABLE,   zqcc::LEVEL_SSE4,
                                                                    zqcc::LEVEL_AVX2,       zqcc::LEVEL_AVX512,
                                                                    zqcc::LEVEL_AVX512VBMI, zqcc::LEVEL_NEON};

const char *nameOf(zqcc::Level level);
std::optional<zqcc::Level> levelNamed(std::string_view name);
/// The names of a set of levels, from the plainest on, with spaces in between.
std::string namesOf(zqcc::LevelSet levels);

/// A level and all that look-ups fall through to from there.
constexpr zqcc::LevelSet upTo(zqcc::Level level) {
  return (zqcc::LevelSet{2} << level) - 1;
}

/// Whether this build has a level and this machine can run it.
bool hasLevel(zqcc::Level level);
/// Why it is not there, for tests that are skipped.
std::string missing(zqcc::Level level);

/// Restricts what may run for as long as it lives, then puts back what was allowed before.
class LevelsForced {
public:
  explicit LevelsForced(zqcc::LevelSet levels);
  explicit LevelsForced(zqcc::Level level) : LevelsForced(upTo(level)) {}
  LevelsForced(const LevelsForced &) = delete;
  LevelsForced &operator=(const LevelsForced &) = delete;
  ~LevelsForced();

private:
  zqcc::LevelSet before_;
};

/// Exit status of programs that were asked for a level which is not there; CTest reports such a test as skipped.
inline constexpr int kSkipped = 77;

/// Holds the whole process at the level of a name, for programs that take one. 0 if that is done; else the exit status,
/// and the reason has been printed: kSkipped if the level is missing, 2 if there is none of that name.
int holdAtLevel(std::string_view name);

} // namespace support
