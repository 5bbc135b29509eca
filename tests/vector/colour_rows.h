// Rows of samples and pixels for tests of colour stages, each against an unmapped page.
#pragma once

#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"
#include "tables/packed_layout.h"
#include "vector/stages.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zqcc {

inline constexpr int32_t kShortestRow = kLeastPixels;
inline constexpr int32_t kLongestRow = 2 * 64 + 2; ///< twice the lanes of the widest vectors and some more

/// The levels of this machine that have something of their own for a stage.
template <class Function>
std::vector<Level> levelsOf(const PerLevel<Function> &stage) {
  std::vector<Level> levels;
  for (uint32_t level = LEVEL_PORTABLE; level < LEVEL_COUNT; ++level) {
    if (stage.of[level] != nullptr && support::hasLevel(static_cast<Level>(level))) {
      levels.push_back(static_cast<Level>(level));
    }
  }
  return levels;
}

/// Noise to read and room to write for one stage.
class GuardedRows {
public:
  GuardedRows(std::size_t lumaBytes, std::size_t chromaBytes, std::size_t outBytes, support::Against against) {
    support::GuardedPages *const inputs[] = {&y0_, &y1_, &u_, &v_};
    for (support::GuardedPages *input : inputs) {
      const bool isLuma = input == &y0_ || input == &y1_;
      input->place(isLuma ? lumaBytes : chromaBytes, against);
      support::fill(input->write(), input->size(), support::Fill::Noise, ++seed_);
    }
    out0_.place(outBytes, against);
    out1_.place(outBytes, against);
  }

  [[nodiscard]] SampleRows samples() const { return {{y0_.data(), y1_.data()}, u_.data(), v_.data()}; }
  /// The luma rows taken for macropixels of that order.
  [[nodiscard]] SampleRows packedSamples(const PackedLayout &order) const {
    return {{y0_.data() + order.left, y1_.data() + order.left}, y0_.data() + order.u, y0_.data() + order.v};
  }
  [[nodiscard]] uint8_t *out(int line) const { return line == 0 ? out0_.write() : out1_.write(); }

  /// The pixel as it was written.
  [[nodiscard]] uint16_t pixel(int line, int32_t x) const {
    uint16_t value = 0;
    std::memcpy(&value, out(line) + std::ptrdiff_t{2} * x, sizeof value);
    return value;
  }

  /// Runs a stage; no byte outside the rows is read or written.
  void run(ColourRows stage, int32_t pixels, int32_t line, const ColourConstants &constants) const {
    run(stage, samples(), pixels, line, constants);
  }
  void run(ColourRows stage, const SampleRows &from, int32_t pixels, int32_t line,
           const ColourConstants &constants) const {
    uint8_t *const to[2] = {out0_.data(), out1_.data()};
    const auto fault = support::catchFault([&] { stage(from, to, pixels, line, constants); });
    EXPECT_FALSE(fault.has_value()) << "touches what lies outside its rows";
    EXPECT_FALSE(out0_.damage().has_value() || out1_.damage().has_value()) << "writes outside its rows";
  }

private:
  using Access = support::GuardedPages::Access;
  static constexpr std::size_t kCapacity = 1024;

  support::GuardedPages y0_{kCapacity, Access::ReadOnly};
  support::GuardedPages y1_{kCapacity, Access::ReadOnly};
  support::GuardedPages u_{kCapacity, Access::ReadOnly};
  support::GuardedPages v_{kCapacity, Access::ReadOnly};
  support::GuardedPages out0_{kCapacity, Access::ReadWrite};
  support::GuardedPages out1_{kCapacity, Access::ReadWrite};
  uint32_t seed_ = 0;
};

/// Tests that run at one level each, and say so where the machine does not have it.
class AtEveryLevel : public testing::TestWithParam<Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }
};

inline constexpr Level kVectorLevels[] = {LEVEL_SSE4, LEVEL_AVX2, LEVEL_AVX512, LEVEL_NEON};
/// With the one that has some stages of its own only.
inline constexpr Level kFilterLevels[] = {LEVEL_SSE4, LEVEL_AVX2, LEVEL_AVX512, LEVEL_AVX512VBMI, LEVEL_NEON};

} // namespace zqcc
