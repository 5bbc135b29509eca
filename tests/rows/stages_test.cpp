#include "rows/stages.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

namespace {

TEST(Stages, EveryLevelHasItsOwn) {
  const zqp::Stages &portable = zqp::stagesOf(zqcc::setOf(zqcc::LEVEL_PORTABLE));
  const zqp::Stages &best = zqp::stagesOf(zqcc::detectedLevels());
  EXPECT_EQ(&portable == &best, zqcc::detectedLevels() == zqcc::setOf(zqcc::LEVEL_PORTABLE));
  EXPECT_EQ(portable.scale == best.scale, &portable == &best);
}

} // namespace
