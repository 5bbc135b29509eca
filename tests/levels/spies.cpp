#include "levels/spies.h"

#include "support/levels.h"

#include "stage_headers.inc"

#include <array>
#include <cstddef>

namespace levels {

using zqcc::Level;
using zqcc::PerLevel;

// The library's own tables, by the name that --wrap gives them.
namespace real {
#define STAGE(Function, NAME, symbol) extern const PerLevel<zqcc::Function> NAME asm("__real_" symbol);
#include "stage_list.inc"
#undef STAGE
} // namespace real

namespace {

/// A number for each of them.
enum StageNumber : std::size_t {
#define STAGE(Function, NAME, symbol) NAME,
#include "stage_list.inc"
#undef STAGE
  STAGE_COUNT
};

std::array<std::array<uint64_t, zqcc::LEVEL_COUNT>, STAGE_COUNT> counts{};
bool muted = false;

template <StageNumber stage, Level level, const auto &table>
struct Spy;

template <StageNumber stage, Level level, class... Arguments, const PerLevel<void (*)(Arguments...)> &table>
struct Spy<stage, level, table> {
  static void call(Arguments... arguments) {
    ++counts[stage][level];
    if (!muted) {
      table.of[level](arguments...);
    }
  }
};

template <StageNumber stage, const auto &table>
auto spied() {
  const auto spy = [](Level level, auto function) { return table.of[level] != nullptr ? function : nullptr; };
  return std::remove_cvref_t<decltype(table)>{
      {nullptr, spy(zqcc::LEVEL_SSE4, Spy<stage, zqcc::LEVEL_SSE4, table>::call),
       spy(zqcc::LEVEL_AVX2, Spy<stage, zqcc::LEVEL_AVX2, table>::call),
       spy(zqcc::LEVEL_AVX512, Spy<stage, zqcc::LEVEL_AVX512, table>::call),
       spy(zqcc::LEVEL_AVX512VBMI, Spy<stage, zqcc::LEVEL_AVX512VBMI, table>::call),
       spy(zqcc::LEVEL_NEON, Spy<stage, zqcc::LEVEL_NEON, table>::call)}};
}

} // namespace

// What the library finds instead of its tables.
namespace wrapped {
#define STAGE(Function, NAME, symbol)                                                                                  \
  extern PerLevel<zqcc::Function> NAME asm("__wrap_" symbol);                                                          \
  PerLevel<zqcc::Function> NAME = spied<levels::NAME, real::NAME>();
#include "stage_list.inc"
#undef STAGE
} // namespace wrapped

namespace {

template <class Do>
void forEachStage([[maybe_unused]] const Do &what) {
#define STAGE(Function, NAME, symbol) what(#NAME, levels::NAME, wrapped::NAME, real::NAME);
#include "stage_list.inc"
#undef STAGE
}

} // namespace

std::vector<Calls> calls() {
  std::vector<Calls> made;
  forEachStage([&](const char *name, StageNumber stage, auto &, auto &) {
    for (const Level level : support::kLevels) {
      if (counts[stage][level] > 0) {
        made.push_back({name, level, counts[stage][level]});
      }
    }
  });
  return made;
}

void forgetCalls() {
  counts = {};
}

std::vector<Stage> stages() {
  std::vector<Stage> all;
  forEachStage([&](const char *name, StageNumber, auto &, auto &table) {
    Stage stage{name, 0};
    for (const Level level : support::kLevels) {
      stage.own |= table.of[level] != nullptr ? zqcc::setOf(level) : 0;
    }
    all.push_back(stage);
  });
  return all;
}

Muted::Muted() {
  muted = true;
}

Muted::~Muted() {
  muted = false;
}

Emptied::Emptied(Level level) {
  forEachStage([&](const char *, StageNumber, auto &table, auto &) { table.of[level] = nullptr; });
}

Emptied::~Emptied() {
#define STAGE(Function, NAME, symbol) wrapped::NAME = spied<levels::NAME, real::NAME>();
#include "stage_list.inc"
#undef STAGE
}

} // namespace levels
