// Spies in the place of every stage of vector code. The linker gives the library tables of this program instead of its
// own (--wrap); what stands in them counts and passes the call on to the library's function. The library itself is the
// same as everywhere.
#pragma once

#include "base/levels.h"

#include <cstdint>
#include <string>
#include <vector>

namespace levels {

/// One call of a stage, or many of the same.
struct Calls {
  std::string stage;
  zqcc::Level level = zqcc::LEVEL_PORTABLE; ///< the column that was called
  uint64_t count = 0;
};

/// The calls since they were last forgotten, only those that there were.
std::vector<Calls> calls();
void forgetCalls();

/// A table and the levels that have a function of their own in it.
struct Stage {
  std::string name;
  zqcc::LevelSet own = 0;
};
std::vector<Stage> stages();

/// While it lives, stages count but do nothing, so that all that is written comes from portable code.
class Muted {
public:
  Muted();
  Muted(const Muted &) = delete;
  Muted &operator=(const Muted &) = delete;
  ~Muted();
};

/// While it lives, a level has nothing of its own in any table.
class Emptied {
public:
  explicit Emptied(zqcc::Level level);
  Emptied(const Emptied &) = delete;
  Emptied &operator=(const Emptied &) = delete;
  ~Emptied();
};

} // namespace levels
