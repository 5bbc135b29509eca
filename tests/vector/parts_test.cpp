// Packed lines that are taken apart in pieces, at every level and at lengths around those of the pieces, against a
// plain loop.
#include "vector/parts.h"

#include "support/levels.h"
#include "support/picture.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint8_t kUntouched = 0xA5;

struct Samples {
  Bytes y;
  Bytes u;
  Bytes v;
  bool operator==(const Samples &) const = default;
};

/// What the byte table of a variant says of a line; bytes behind the line stay as they are.
Samples plainly(const Bytes &line, const zqcc::PackedLayout &layout, int pixels, bool chroma) {
  const Bytes row(static_cast<std::size_t>(pixels) + 64, kUntouched);
  Samples samples{row, row, row};
  for (int x = 0; x < pixels; x += 2) {
    const uint8_t *macropixel = line.data() + std::ptrdiff_t{x} * 2;
    const auto left = static_cast<std::size_t>(x);
    samples.y[left] = macropixel[layout.left];
    samples.y[left + 1] = macropixel[layout.right];
    if (chroma) {
      samples.u[left / 2] = macropixel[layout.u];
      samples.v[left / 2] = macropixel[layout.v];
    }
  }
  return samples;
}

std::vector<int> lengths() {
  std::vector<int> all;
  for (int pixels = 16; pixels < 140; pixels += 2) {
    all.push_back(pixels);
  }
  for (int pixels = 500; pixels < 540; pixels += 2) {
    all.push_back(pixels);
  }
  for (const int pixels : {1022, 1024, 1026, 1038, 1040, 1280, 1920}) {
    all.push_back(pixels);
  }
  return all;
}

void partAt(zqcc::Level level, uint32_t variant) {
  const zqcc::PackedLayout layout = zqcc::packedLayout(variant);
  const zqcc::MacropixelParts parts(zqcc::setOf(level), layout);
  for (const int pixels : lengths()) {
    Bytes line(static_cast<std::size_t>(pixels) * 2);
    support::fill(line.data(), line.size(), support::Fill::Noise, static_cast<uint32_t>(pixels));
    for (const bool chroma : {false, true}) {
      const Bytes row(static_cast<std::size_t>(pixels) + 64, kUntouched);
      Samples samples{row, row, row};
      const zqcc::PartedLine to{samples.y.data(), chroma ? samples.u.data() : nullptr, samples.v.data()};
      ASSERT_TRUE(parts.part(line.data(), to, pixels)) << pixels << " pixels of variant " << variant;
      ASSERT_TRUE(samples == plainly(line, layout, pixels, chroma)) << pixels << " pixels of variant " << variant;
    }
  }
}

TEST(MacropixelParts, AreTheSamplesOfEveryLine) {
  for (const zqcc::Level level : support::kLevels) {
    if (level == zqcc::LEVEL_PORTABLE || !support::hasLevel(level)) {
      continue;
    }
    for (uint32_t variant = 0; variant < zqcc::kPackedVariants; ++variant) {
      partAt(level, variant);
    }
  }
}

TEST(MacropixelParts, LeaveShortLinesAndWhatHasNoLevel) {
  const Bytes line(64, 1);
  Bytes samples(64, kUntouched);
  const zqcc::PartedLine to{samples.data(), samples.data() + 32, samples.data() + 48};
  const zqcc::PackedLayout layout = zqcc::packedLayout(0);
  EXPECT_FALSE(zqcc::MacropixelParts(zqcc::detectedLevels(), layout).part(line.data(), to, 14));
  EXPECT_FALSE(zqcc::MacropixelParts(zqcc::setOf(zqcc::LEVEL_PORTABLE), layout).part(line.data(), to, 16));
  EXPECT_FALSE(zqcc::PairParts(zqcc::detectedLevels()).part(line.data(), to.u, to.v, 7));
  EXPECT_FALSE(zqcc::PairParts(zqcc::setOf(zqcc::LEVEL_PORTABLE)).part(line.data(), to.u, to.v, 8));
  EXPECT_EQ(samples, Bytes(64, kUntouched));
}

} // namespace
