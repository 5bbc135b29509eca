#include "vector/detect.h"

#include <atomic>
#include <initializer_list>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace zqcc {
namespace {

#if defined(__x86_64__)

struct CpuidAnswer {
  unsigned a;
  unsigned b;
  unsigned c;
  unsigned d;
};

/// Zeros where the processor does not know the leaf.
CpuidAnswer cpuid(unsigned leaf) {
  CpuidAnswer answer{};
  __get_cpuid_count(leaf, 0, &answer.a, &answer.b, &answer.c, &answer.d);
  return answer;
}

constexpr unsigned bits(std::initializer_list<unsigned> numbers) {
  unsigned set = 0;
  for (const unsigned number : numbers) {
    set |= 1U << number;
  }
  return set;
}

constexpr bool hasAll(unsigned value, unsigned wanted) {
  return (value & wanted) == wanted;
}

/// The register states that the system saves.
unsigned savedStates() {
  unsigned low = 0;
  unsigned high = 0;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return low;
}

LevelSet detect() {
  constexpr unsigned kSse4 = bits({0, 9, 19, 20, 23}); // SSE3, SSSE3, SSE4.1, SSE4.2, POPCNT
  constexpr unsigned kAvxSaved = bits({27, 28});       // OSXSAVE, AVX
  constexpr unsigned kAvx2 = bits({5});
  constexpr unsigned kAvx512 = bits({16, 17, 30, 31}); // F, DQ, BW, VL
  constexpr unsigned kVbmi = bits({1});                // in the third word
  constexpr unsigned kYmmStates = bits({1, 2});
  constexpr unsigned kZmmStates = bits({5, 6, 7});
  LevelSet levels = setOf(LEVEL_PORTABLE);
  const CpuidAnswer features = cpuid(1);
  if (!hasAll(features.c, kSse4)) {
    return levels;
  }
  levels |= setOf(LEVEL_SSE4);
  const CpuidAnswer extended = cpuid(7);
  if (!hasAll(features.c, kAvxSaved) || !hasAll(extended.b, kAvx2)) {
    return levels;
  }
  const unsigned saved = savedStates();
  if (!hasAll(saved, kYmmStates)) {
    return levels;
  }
  levels |= setOf(LEVEL_AVX2);
  if (hasAll(saved, kZmmStates) && hasAll(extended.b, kAvx512)) {
    levels |= setOf(LEVEL_AVX512);
    if (hasAll(extended.c, kVbmi)) {
      levels |= setOf(LEVEL_AVX512VBMI);
    }
  }
  return levels;
}

#elif defined(__aarch64__)

LevelSet detect() {
  return setOf(LEVEL_PORTABLE) | setOf(LEVEL_NEON); // part of the architecture
}

#else

LevelSet detect() {
  return setOf(LEVEL_PORTABLE);
}

#endif

/// 0 until somebody has asked. Nothing else hangs on its value, so no order of memory is asked for.
std::atomic<LevelSet> detected{0};
std::atomic<LevelSet> levelMask{kEveryLevel};

} // namespace

LevelSet detectedLevels() {
  LevelSet levels = detected.load(std::memory_order_relaxed);
  if (levels == 0) {
    levels = detect();
    detected.store(levels, std::memory_order_relaxed);
  }
  return levels;
}

LevelSet usableLevels() {
  return (detectedLevels() & levelMask.load(std::memory_order_relaxed)) | setOf(LEVEL_PORTABLE);
}

void setLevelMask(LevelSet mask) {
  levelMask.store(mask, std::memory_order_relaxed);
}

} // namespace zqcc
