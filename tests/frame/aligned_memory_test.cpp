#include "frame/aligned_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

TEST(AlignedMemory, BlocksStartAtTheAlignmentWithTheDistanceInFront) {
  for (const std::size_t alignment : {1U, 2U, 16U, 64U, 128U}) {
    for (std::size_t size = 0; size < 200; size += 7) {
      auto *block = static_cast<unsigned char *>(zqcc::aligned_alloc64(size, alignment));
      ASSERT_NE(nullptr, block);
      EXPECT_EQ(0U, reinterpret_cast<std::uintptr_t>(block) % alignment);
      EXPECT_GE(block[-1], 1);
      EXPECT_LE(block[-1], alignment);
      std::memset(block, 0xEE, size);
      zqcc::aligned_free64(block);
    }
  }
}

TEST(AlignedMemory, WithoutAlignmentTheBlockStartsOneByteOn) {
  auto *block = static_cast<unsigned char *>(zqcc::aligned_alloc64(10, 0));
  ASSERT_NE(nullptr, block);
  EXPECT_EQ(1, block[-1]);
  zqcc::aligned_free64(block);
}

TEST(AlignedMemory, NullIsIgnoredAndTheImpossibleRefused) {
  zqcc::aligned_free64(nullptr);
  EXPECT_EQ(nullptr, zqcc::aligned_alloc64(SIZE_MAX - 10));
}

} // namespace
