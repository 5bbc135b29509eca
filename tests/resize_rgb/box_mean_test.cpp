// Means of boxes by multiplication, for every number of samples and every sum.
#include "resize_rgb/box_mean.h"

#include "frame/resample_tables.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(BoxMean, EveryQuotientIsExact) {
  for (int32_t samples = 1; samples <= zqcc::kMostSamples; ++samples) {
    const uint32_t reciprocal = zqcc::reciprocalOf(samples);
    const auto count = static_cast<uint32_t>(samples);
    for (uint32_t sum = 0; sum <= 255 * count; ++sum) {
      ASSERT_EQ(zqcc::boxMean(sum, reciprocal), sum / count) << sum << " / " << samples;
    }
  }
}

/// Samples that the entries of a table list, at most.
int mostListed(const std::vector<int32_t> &table, int32_t positions) {
  int most = 0;
  for (int32_t i = 0; i < positions; ++i) {
    int count = 0;
    while (count < zqcc::kBoxWords && table[static_cast<std::size_t>(i * zqcc::kBoxWords + count)] >= 0) {
      ++count;
    }
    most = count > most ? count : most;
  }
  return most;
}

TEST(BoxMean, NoTableListsMoreSamplesADirection) {
  // Entries depend on the factor: its whole part says how far they reach, and from 8 on how far samples are apart.
  int most = 0;
  for (int32_t positions = 1; positions < 12; ++positions) {
    for (int32_t source = 2; source < 1500; ++source) {
      const zqcc::Axis axis{source, positions};
      std::vector<int32_t> table(zqcc::tableWords(zqcc::TableFormat::Box, axis, 3));
      zqcc::buildBox(table.data(), axis, zqcc::boxSpacing(axis));
      const int listed = mostListed(table, positions);
      ASSERT_LE(listed, zqcc::kMostOfBox) << source << " to " << positions;
      most = listed > most ? listed : most;
    }
  }
  EXPECT_EQ(most, zqcc::kMostOfBox);
}

} // namespace
