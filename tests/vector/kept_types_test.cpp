// Stages for pictures that keep their type: 16-bit pixels into rows of components, and rows into macropixels, at every
// level that this machine has, against plain loops.
#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"
#include "vector/packed_store.h"
#include "vector/scale_rows.h"
#include "vector/scaled_rows.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zqcc {
namespace {

using support::Against;
using support::GuardedPages;
using Access = GuardedPages::Access;

constexpr std::size_t kWidest = 200;

class KeptTypes : public testing::TestWithParam<Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }
};

TEST_P(KeptTypes, PartWordsIntoTheTopsOfBytes) {
  GuardedPages words(1024, Access::ReadOnly);
  GuardedPages rows[3] = {{256, Access::ReadWrite}, {256, Access::ReadWrite}, {256, Access::ReadWrite}};
  for (std::size_t pixels = kLeastPixels; pixels <= kWidest; ++pixels) {
    for (const Against against : {Against::End, Against::Start}) {
      words.place(2 * pixels, against);
      support::fill(words.write(), words.size(), support::Fill::Noise, static_cast<uint32_t>(pixels));
      for (GuardedPages &row : rows) {
        row.place(pixels, against);
      }
      const auto fault = support::catchFault([&] {
        RGB565_ROWS.of[GetParam()]({nullptr, nullptr, words.data()}, {rows[0].data(), rows[1].data(), rows[2].data()},
                                   static_cast<int32_t>(pixels));
      });
      ASSERT_FALSE(fault.has_value()) << "touches what lies outside its rows, " << pixels << " pixels";
      for (const GuardedPages &row : rows) {
        ASSERT_FALSE(row.damage().has_value()) << pixels << " pixels";
      }
      for (std::size_t i = 0; i < pixels; ++i) {
        const int word = words.write()[2 * i] + 256 * words.write()[2 * i + 1];
        ASSERT_EQ(rows[0].write()[i], word / 2048 * 8) << "red of pixel " << i << " of " << pixels;
        ASSERT_EQ(rows[1].write()[i], word / 32 % 64 * 4) << "green of pixel " << i << " of " << pixels;
        ASSERT_EQ(rows[2].write()[i], word % 32 * 8) << "blue of pixel " << i << " of " << pixels;
      }
    }
  }
}

/// Components of a word, red first, at the top of bytes.
std::array<int32_t, 3> componentsOf(const uint8_t *word) {
  const int32_t pixel = word[0] + 256 * word[1];
  return {pixel / 2048 * 8, pixel / 32 % 64 * 4, pixel % 32 * 8};
}

/// One line of words made into outputs; what is mixed without a second line is the row itself, cut to samples.
void expectInterpolatedWords(Level level, Scaling scaling, Against against) {
  const auto taps = tapsFor(scaling);
  const GuardedPlan plan(taps, {scaling.samples, 2, 2});
  if (plan.taps().parts == 0) {
    return; // not served
  }
  GuardedPages line(std::size_t{1} << 16, Access::ReadOnly);
  line.place(2 * static_cast<std::size_t>(scaling.samples), against);
  support::fill(line.write(), line.size(), support::Fill::Noise, static_cast<uint32_t>(scaling.samples));
  const int32_t groups = planGroups(scaling.outputs);
  const auto room = static_cast<std::size_t>(groups) * kPlanGroup;
  std::vector<int32_t> rows[3] = {std::vector<int32_t>(room), std::vector<int32_t>(room), std::vector<int32_t>(room)};
  int32_t *const to[3] = {rows[0].data(), rows[1].data(), rows[2].data()};
  const auto fault = support::catchFault([&] { FILL_WORD_ROWS.of[level](line.data(), plan.taps(), 0, groups, to); });
  ASSERT_FALSE(fault.has_value()) << scaling.samples << " words to " << scaling.outputs;
  for (std::size_t c = 0; c < 3; ++c) {
    std::vector<uint8_t> samples(room);
    MIX_ROWS.of[level](rows[c].data(), rows[c].data(), 0, groups, samples.data());
    for (std::size_t i = 0; i < taps.size(); ++i) {
      const int32_t last = scaling.samples - 1;
      const int32_t self = componentsOf(line.write() + 2 * taps[i].index)[c];
      const int32_t next = componentsOf(line.write() + 2 * std::min(taps[i].index + 1, last))[c];
      ASSERT_EQ(samples[i], (self * (1024 - taps[i].next) + next * taps[i].next) >> 10)
          << "component " << c << " of output " << i << ", " << scaling.samples << " words to " << scaling.outputs;
    }
  }
}

TEST_P(KeptTypes, InterpolateTheComponentsOfWords) {
  for (const Scaling scaling : everyScaling()) {
    for (const Against against : {Against::End, Against::Start}) {
      expectInterpolatedWords(GetParam(), scaling, against);
      ASSERT_FALSE(HasFatalFailure());
    }
  }
}

/// Where the bytes of a macropixel come from: numbers of luma (0, 1), first (2) and second (3) chroma sample.
std::array<int, 4> bytesOf(MacropixelBytes order) {
  const int first = order.rightFirst ? 1 : 0;
  const int second = order.rightFirst ? 0 : 1;
  return order.chromaFirst ? std::array<int, 4>{2, first, 3, second} : std::array<int, 4>{first, 2, second, 3};
}

/// `count` macropixels between unmapped pages.
void expectMacropixels(Level level, MacropixelBytes order, std::size_t count, Against against) {
  GuardedPages luma(512, Access::ReadOnly);
  GuardedPages first(256, Access::ReadOnly);
  GuardedPages second(256, Access::ReadOnly);
  GuardedPages to(1024, Access::ReadWrite);
  luma.place(2 * count, against);
  first.place(count, against);
  second.place(count, against);
  to.place(4 * count, against);
  uint32_t seed = static_cast<uint32_t>(count);
  for (GuardedPages *row : {&luma, &first, &second}) {
    support::fill(row->write(), row->size(), support::Fill::Noise, ++seed);
  }
  const auto fault = support::catchFault([&] {
    STORE_MACROPIXELS.of[level]({luma.data(), first.data(), second.data()}, order, to.data(),
                                static_cast<int32_t>(count));
  });
  ASSERT_FALSE(fault.has_value()) << "touches what lies outside, " << count << " macropixels";
  ASSERT_FALSE(to.damage().has_value()) << count << " macropixels";
  const std::array<int, 4> places = bytesOf(order);
  for (std::size_t i = 0; i < count; ++i) {
    const uint8_t samples[4] = {luma.write()[2 * i], luma.write()[2 * i + 1], first.write()[i], second.write()[i]};
    for (std::size_t byte = 0; byte < 4; ++byte) {
      ASSERT_EQ(to.write()[4 * i + byte], samples[places[byte]])
          << "byte " << byte << " of macropixel " << i << " of " << count;
    }
  }
}

TEST_P(KeptTypes, PutRowsTogetherAsMacropixelsOfEveryOrder) {
  for (std::size_t count = kLeastPixels / 2; count <= kWidest / 2; ++count) {
    for (const bool chromaFirst : {false, true}) {
      for (const bool rightFirst : {false, true}) {
        for (const Against against : {Against::End, Against::Start}) {
          expectMacropixels(GetParam(), {chromaFirst, rightFirst}, count, against);
          ASSERT_FALSE(HasFatalFailure()) << "chroma first " << chromaFirst << ", right first " << rightFirst;
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, KeptTypes, testing::Values(LEVEL_SSE4, LEVEL_AVX2, LEVEL_AVX512, LEVEL_NEON),
                         [](const auto &level) { return support::nameOf(level.param); });

} // namespace
} // namespace zqcc
