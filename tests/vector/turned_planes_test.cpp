// Whole planes turned block by block, at every level, against plain loops that put every unit where the turn wants it;
// with unmapped pages next to what is read and written.
#include "vector/turned_planes.h"
#include "vector/turns.h"

#include "support/guarded_pages.h"
#include "support/levels.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

namespace {

using support::Against;
using support::GuardedPages;
using zqcc::LineExchange;

struct Plane {
  std::ptrdiff_t unitBytes;
  int32_t columns;
  int32_t lines;
  std::ptrdiff_t padding;
  bool left; ///< the left turn, else the right one
  Against against;
};

std::ostream &operator<<(std::ostream &out, const Plane &p) {
  return out << p.columns << "x" << p.lines << " units of " << p.unitBytes << " bytes, padded by " << p.padding
             << (p.left ? ", left" : ", right") << (p.against == Against::End ? ", against the end" : "");
}

constexpr std::size_t kMostBytes = std::size_t{1} << 20;

class TurnedPlanes : public testing::TestWithParam<zqcc::Level> {
protected:
  void SetUp() override {
    if (!support::hasLevel(GetParam())) {
      GTEST_SKIP() << support::missing(GetParam());
    }
  }

  void place(std::ptrdiff_t inBytes, std::ptrdiff_t outBytes, Against against) {
    in_.place(static_cast<std::size_t>(inBytes), against);
    out_.place(static_cast<std::size_t>(outBytes), against);
    support::fill(in_.write(), in_.size(), support::Fill::Noise, seed_++);
    support::fill(out_.write(), out_.size(), support::Fill::Noise, seed_++);
    expected_.assign(out_.write(), out_.write() + out_.size());
  }

  [[nodiscard]] bool turn(std::ptrdiff_t unitBytes, const LineExchange &plane) const {
    const zqcc::LevelSet only = zqcc::setOf(GetParam());
    return unitBytes == 1 ? zqcc::turnedByBlocks<uint8_t>(only, plane) : zqcc::turnedByBlocks<uint16_t>(only, plane);
  }

  /// Turns the plane. Says what went wrong.
  std::string turned(const Plane &p) {
    const std::ptrdiff_t inPitch = p.columns * p.unitBytes + p.padding;
    const std::ptrdiff_t outPitch = p.lines * p.unitBytes + p.padding / 2;
    place(inPitch * p.lines - p.padding, outPitch * p.columns - p.padding / 2, p.against);
    for (std::ptrdiff_t y = 0; y < p.lines; ++y) {
      for (std::ptrdiff_t x = 0; x < p.columns; ++x) {
        const std::ptrdiff_t line = p.left ? p.columns - 1 - x : x;
        const std::ptrdiff_t column = p.left ? y : p.lines - 1 - y;
        std::memcpy(expected_.data() + line * outPitch + column * p.unitBytes,
                    in_.data() + y * inPitch + x * p.unitBytes, static_cast<std::size_t>(p.unitBytes));
      }
    }
    const uint8_t *const lastLine = in_.data() + (p.lines - 1) * inPitch;
    uint8_t *const lastOutput = out_.data() + (p.columns - 1) * outPitch;
    const LineExchange exchange = p.left ? LineExchange{in_.data(), inPitch, lastOutput, -outPitch, p.columns, p.lines}
                                         : LineExchange{lastLine, -inPitch, out_.data(), outPitch, p.columns, p.lines};
    bool served = false;
    if (support::catchFault([&] { served = turn(p.unitBytes, exchange); })) {
      return "touches memory that is not its own";
    }
    return served ? difference() : "is left to portable code";
  }

  [[nodiscard]] std::string difference() const {
    if (const auto damage = out_.damage()) {
      return "writes beside the output, " + std::to_string(*damage) + " bytes from its start";
    }
    const auto wrong = std::mismatch(expected_.begin(), expected_.end(), out_.write());
    return wrong.first == expected_.end() ? ""
                                          : "byte " + std::to_string(wrong.first - expected_.begin()) + " is wrong";
  }

  GuardedPages in_{kMostBytes, GuardedPages::Access::ReadOnly};
  GuardedPages out_{kMostBytes, GuardedPages::Access::ReadWrite};
  std::vector<uint8_t> expected_;
  uint32_t seed_ = 1;
};

TEST_P(TurnedPlanes, MapEveryUnitOfEverySize) {
  for (const std::ptrdiff_t unitBytes : {1, 2}) {
    const auto least = static_cast<int32_t>(zqcc::kLeastBytes / unitBytes);
    for (int32_t side = least; side < 150; ++side) {
      // Every width and every height, each with another height or width.
      const bool left = side % 2 == 0;
      const Against against = side % 3 == 0 ? Against::Start : Against::End;
      const Plane wide{unitBytes, side, least + side * 29 % 137, side % 5, left, against};
      ASSERT_EQ(turned(wide), "") << wide;
      const Plane high{unitBytes, least + side * 31 % 139, side, side % 7, !left, against};
      ASSERT_EQ(turned(high), "") << high;
    }
  }
}

/// What is asked for beforehand changes nothing.
TEST_P(TurnedPlanes, MapEveryUnitOfLargePlanes) {
  for (const std::ptrdiff_t unitBytes : {1, 2}) {
    for (const int32_t columns : {320, 385, 527}) {
      for (const int32_t lines : {513, 521, 600}) {
        for (const bool left : {false, true}) {
          const Plane plane{unitBytes, columns, lines, columns % 4 * 3, left, left ? Against::End : Against::Start};
          ASSERT_EQ(turned(plane), "") << plane;
        }
      }
    }
  }
}

TEST_P(TurnedPlanes, LeaveWhatIsNoneOfTheirs) {
  place(4096, 4096, Against::End);
  for (const std::ptrdiff_t unitBytes : {1, 2}) {
    const auto least = static_cast<int32_t>(zqcc::kLeastBytes / unitBytes);
    const std::ptrdiff_t line = least * unitBytes;
    const LineExchange plane{in_.data(), line, out_.data(), line, least, least};
    LineExchange narrow = plane;
    --narrow.columns;
    LineExchange low = plane;
    --low.lines;
    LineExchange overlapping = plane;
    --overlapping.toStep;
    LineExchange overlappingUpwards = plane;
    overlappingUpwards.to += 2048;
    overlappingUpwards.toStep = 1 - line;
    for (const LineExchange &left : {narrow, low, overlapping, overlappingUpwards}) {
      EXPECT_FALSE(turn(unitBytes, left));
      EXPECT_EQ(difference(), "");
    }
    EXPECT_FALSE(zqcc::exchangeByBlocks({{nullptr, static_cast<int32_t>(unitBytes)}, nullptr, 64}, plane));
    EXPECT_EQ(difference(), "");
  }
}

TEST_P(TurnedPlanes, ReverseAnyNumberOfSamples) {
  std::vector<std::ptrdiff_t> counts;
  for (std::ptrdiff_t count = 0; count < 300; ++count) {
    counts.push_back(count);
  }
  for (std::ptrdiff_t count = (1 << 20) - 40; count <= 1 << 20; count += 7) {
    counts.push_back(count);
  }
  for (const std::ptrdiff_t count : counts) {
    place(count, count, count % 2 == 0 ? Against::End : Against::Start);
    const bool served = zqcc::reversedByRows(zqcc::setOf(GetParam()), in_.data(), out_.data(), count);
    ASSERT_EQ(served, count >= zqcc::kLeastBytes) << count;
    if (served) {
      std::reverse_copy(in_.data(), in_.data() + count, expected_.begin());
    }
    ASSERT_EQ(difference(), "") << count;
  }
}

/// More samples than go at a time, and so many that few would remain.
TEST_P(TurnedPlanes, ReverseMoreSamplesThanGoAtATime) {
  for (const std::ptrdiff_t count : {(1 << 20) + 1, (1 << 20) + 15, (1 << 20) + 16, (2 << 20) + 3, (3 << 20) - 1}) {
    std::vector<uint8_t> from(static_cast<std::size_t>(count));
    support::fill(from.data(), from.size(), support::Fill::Noise, seed_++);
    std::vector<uint8_t> to(from.size());
    ASSERT_TRUE(zqcc::reversedByRows(zqcc::setOf(GetParam()), from.data(), to.data(), count));
    std::reverse(to.begin(), to.end());
    EXPECT_TRUE(from == to) << count;
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, TurnedPlanes,
                         testing::Values(zqcc::LEVEL_SSE4, zqcc::LEVEL_AVX2, zqcc::LEVEL_AVX512, zqcc::LEVEL_NEON),
                         [](const testing::TestParamInfo<zqcc::Level> &level) -> std::string {
                           return support::nameOf(level.param);
                         });

} // namespace
