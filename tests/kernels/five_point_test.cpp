// Means of five samples by multiplication, for every sum.
#include "kernels/five_point.h"

#include <gtest/gtest.h>

namespace {

TEST(FivePoint, EveryFifthIsExact) {
  for (int32_t sum = 0; sum <= 5 * 255; ++sum) {
    ASSERT_EQ(zqcc::fifthOfBytes(sum), sum / 5) << sum;
  }
}

} // namespace
