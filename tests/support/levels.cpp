#include "support/levels.h"

#include "vector/detect.h"

#include <cstdio>

namespace support {
namespace {

using zqcc::Level;
using zqcc::LevelSet;

constexpr std::array<const char *, zqcc::LEVEL_COUNT> kNames{"portable", "sse4",       "avx2",
                                                             "avx512",   "avx512vbmi", "neon"};

/// What the library has been told last: it does not say.
LevelSet inForce = zqcc::kEveryLevel;

void force(LevelSet levels) {
  inForce = levels;
  zqcc::setLevelMask(levels);
}

} // namespace

const char *nameOf(Level level) {
  return kNames.at(level);
}

std::optional<Level> levelNamed(std::string_view name) {
  for (const Level level : kLevels) {
    if (name == nameOf(level)) {
      return level;
    }
  }
  return std::nullopt;
}

std::string namesOf(LevelSet levels) {
  std::string names;
  for (const Level level : kLevels) {
    if ((levels & zqcc::setOf(level)) != 0) {
      names += names.empty() ? "" : " ";
      names += nameOf(level);
    }
  }
  return names;
}

bool hasLevel(Level level) {
  return (zqcc::detectedLevels() & zqcc::setOf(level)) != 0;
}

std::string missing(Level level) {
  return std::string("level ") + nameOf(level) + " is missing: this build and this machine have " +
         namesOf(zqcc::detectedLevels());
}

LevelsForced::LevelsForced(LevelSet levels) : before_(inForce) {
  force(levels);
}

LevelsForced::~LevelsForced() {
  force(before_);
}

int holdAtLevel(std::string_view name) {
  const std::optional<Level> level = levelNamed(name);
  if (!level) {
    std::fprintf(stderr, "there is no level of that name; levels are %s\n", namesOf(zqcc::kEveryLevel).c_str());
    return 2;
  }
  if (!hasLevel(*level)) {
    std::fprintf(stderr, "skipped: %s\n", missing(*level).c_str());
    return kSkipped;
  }
  force(upTo(*level));
  return 0;
}

} // namespace support
