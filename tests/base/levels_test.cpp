#include "base/levels.h"

#include <gtest/gtest.h>

namespace {

using zqcc::Level;
using zqcc::LevelSet;
using zqcc::PerLevel;
using zqcc::setOf;

int sse4() {
  return 1;
}
int avx512() {
  return 3;
}

/// A kernel to which AVX2 adds nothing.
constexpr PerLevel<int (*)()> kKernel{{nullptr, sse4, nullptr, avx512, nullptr, nullptr}};

TEST(PerLevel, TakesTheHighestLevelThatMayRun) {
  EXPECT_EQ(kKernel.levelIn(zqcc::kEveryLevel), zqcc::LEVEL_AVX512);
  EXPECT_EQ(kKernel.in(zqcc::kEveryLevel), avx512);
}

TEST(PerLevel, FallsThroughWhereALevelHasNothing) {
  const LevelSet upToAvx2 = setOf(zqcc::LEVEL_PORTABLE) | setOf(zqcc::LEVEL_SSE4) | setOf(zqcc::LEVEL_AVX2);
  EXPECT_EQ(kKernel.levelIn(upToAvx2), zqcc::LEVEL_SSE4);
  EXPECT_EQ(kKernel.in(upToAvx2), sse4);
}

TEST(PerLevel, SkipsLevelsThatMayNotRun) {
  EXPECT_EQ(kKernel.in(setOf(zqcc::LEVEL_SSE4) | setOf(zqcc::LEVEL_NEON)), sse4);
  EXPECT_EQ(kKernel.in(setOf(zqcc::LEVEL_AVX512)), avx512);
}

TEST(PerLevel, IsPortableWhereNothingMayRun) {
  for (const LevelSet usable :
       {LevelSet{0}, setOf(zqcc::LEVEL_PORTABLE), setOf(zqcc::LEVEL_AVX2), setOf(zqcc::LEVEL_NEON)}) {
    EXPECT_EQ(kKernel.levelIn(usable), zqcc::LEVEL_PORTABLE) << usable;
    EXPECT_EQ(kKernel.in(usable), nullptr) << usable;
  }
}

} // namespace
