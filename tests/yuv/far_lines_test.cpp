// Splitting chroma whose lines lie a gigabyte apart: set-up would need scratch planes of gigabytes, so the splitter is
// called by itself.
#include "yuv/yuv_to_yuv.h"

#include "support/picture.h"
#include "support/sparse_pages.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

TEST(FarLines, ChromaIsSplitBeyond32Bits) {
  constexpr int32_t kStride = 1 << 30;
  constexpr uint64_t kLines = 5; // the last one begins at 2^32, in the split planes at 2^31
  const support::SparsePages pairs(kLines * kStride);
  const support::SparsePages first(kLines * kStride / 2);
  const support::SparsePages second(kLines * kStride / 2);
  for (const support::SparsePages *pages : {&pairs, &first, &second}) {
    if (!pages->areThere()) {
      GTEST_SKIP() << pages->reason();
    }
  }
  ConvertParams params = support::blankParams();
  params.inType = COLOR_YUV420_PACK;
  params.inWidth = 4;
  params.inHeight = 2 * kLines;
  params.inStride = kStride;
  params.inBuf[1] = pairs.data();
  for (uint64_t k = 0; k < kLines; ++k) {
    const auto value = static_cast<uint8_t>(10 * k);
    const uint8_t line[] = {value, static_cast<uint8_t>(value + 100), static_cast<uint8_t>(value + 1),
                            static_cast<uint8_t>(value + 101)};
    std::memcpy(pairs.data() + k * kStride, line, sizeof line);
  }
  zqcc::deinterleaveChroma(zqcc::setOf(zqcc::LEVEL_PORTABLE), params, first.data(), second.data());
  for (uint64_t k = 0; k < kLines; ++k) {
    const auto value = static_cast<uint8_t>(10 * k);
    const uint8_t *u = first.data() + k * kStride / 2;
    const uint8_t *v = second.data() + k * kStride / 2;
    EXPECT_EQ(std::vector<int>(u, u + 3), (std::vector<int>{value, value + 1, 0})) << "line " << k;
    EXPECT_EQ(std::vector<int>(v, v + 3), (std::vector<int>{value + 100, value + 101, 0})) << "line " << k;
  }
}

} // namespace
