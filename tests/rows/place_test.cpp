#include "rows/line_guard.h"

namespace {

using namespace rowtest;

using Bytes = std::vector<uint8_t>;

/// For every level and count: stage, count and a number that moves rows to other alignments.
template <class Try>
void forAll(const Try &attempt) {
  for (const zqcc::LevelSet level : levels()) {
    for (const int32_t count : counts()) {
      SCOPED_TRACE(saying(level, count));
      attempt(*zqp::stagesOf(level).place, static_cast<size_t>(count), static_cast<size_t>(count) * 7 % 64);
      if (testing::Test::HasFailure()) {
        return;
      }
    }
  }
}

void expect(const Output &line, const Bytes &bytes) {
  EXPECT_TRUE(line.bytes() == bytes);
  EXPECT_TRUE(line.guardsStand());
}

TEST(PlaceStages, PairsAreJoinedInOrder) {
  forAll([](const zqp::PlaceStages &stages, size_t count, size_t shift) {
    const Input first(count, shift, 1);
    const Input second(count, shift + 3, 2);
    Output to(2 * count, shift + 5);
    stages.pairs(first.data(), second.data(), static_cast<int32_t>(count), to.data());
    Bytes bytes;
    for (size_t i = 0; i < count; ++i) {
      bytes.insert(bytes.end(), {first[i], second[i]});
    }
    expect(to, bytes);
  });
}

TEST(PlaceStages, MacropixelsArePutTogetherInEveryOrder) {
  forAll([](const zqp::PlaceStages &stages, size_t pixels, size_t shift) {
    const size_t groups = (pixels + 1) / 2;
    const Input y(pixels, shift, 1);
    const Input u(groups, shift + 1, 2);
    const Input v(groups, shift + 18, 3);
    for (const zqp::PackedOrder &order : kOrders) {
      Output to(4 * groups, shift + 7);
      stages.packed(y.data(), u.data(), v.data(), order, static_cast<int32_t>(pixels), to.data());
      Bytes bytes(4 * groups);
      for (size_t i = 0; i < groups; ++i) {
        bytes[4 * i + order.y0] = y[2 * i];
        bytes[4 * i + order.y1] = 2 * i + 1 < pixels ? y[2 * i + 1] : y[2 * i];
        bytes[4 * i + order.u] = u[i];
        bytes[4 * i + order.v] = v[i];
      }
      expect(to, bytes);
    }
  });
}

/// A row of numbers of that many bits.
Input ofBits(size_t count, size_t shift, uint32_t seed, uint32_t bits) {
  Input row(count, shift, seed);
  for (size_t i = 0; i < count; ++i) {
    row.data()[i] = static_cast<uint8_t>(row[i] >> (8 - bits));
  }
  return row;
}

void tryWords(const zqp::PlaceStages &stages, const Input &red, const Input &green, const Input &blue, size_t pixels,
              size_t shift) {
  const uint8_t *const from[3] = {red.data(), green.data(), blue.data()};
  for (const bool isSwapped : {false, true}) {
    Output to(2 * pixels, shift + 6);
    stages.rgb565(from, isSwapped, static_cast<int32_t>(pixels), to.data());
    Bytes bytes;
    for (size_t i = 0; i < pixels; ++i) {
      const uint32_t word = red[i] * 2048U + green[i] * 32U + blue[i];
      const auto low = static_cast<uint8_t>(word % 256);
      const auto high = static_cast<uint8_t>(word / 256);
      bytes.insert(bytes.end(), {isSwapped ? high : low, isSwapped ? low : high});
    }
    expect(to, bytes);
  }
}

TEST(PlaceStages, WordsArePacked) {
  forAll([](const zqp::PlaceStages &stages, size_t pixels, size_t shift) {
    tryWords(stages, ofBits(pixels, shift, 1, 5), ofBits(pixels, shift + 8, 2, 6), ofBits(pixels, shift + 3, 3, 5),
             pixels, shift);
  });
}

TEST(PlaceStages, EveryWordIsPacked) {
  constexpr size_t kWords = 65536;
  Input red(kWords, 0, 0);
  Input green(kWords, 0, 0);
  Input blue(kWords, 0, 0);
  for (size_t i = 0; i < kWords; ++i) {
    red.data()[i] = static_cast<uint8_t>(i / 2048);
    green.data()[i] = static_cast<uint8_t>(i / 32 % 64);
    blue.data()[i] = static_cast<uint8_t>(i % 32);
  }
  for (const zqcc::LevelSet level : levels()) {
    SCOPED_TRACE(saying(level, kWords));
    tryWords(*zqp::stagesOf(level).place, red, green, blue, kWords, 0);
  }
}

TEST(PlaceStages, PixelsOfThreeBytesArePutTogether) {
  forAll([](const zqp::PlaceStages &stages, size_t pixels, size_t shift) {
    const Input first(pixels, shift, 1);
    const Input second(pixels, shift + 2, 2);
    const Input third(pixels, shift + 19, 3);
    const uint8_t *const from[3] = {first.data(), second.data(), third.data()};
    Output to(3 * pixels, shift + 9);
    stages.three(from, static_cast<int32_t>(pixels), to.data());
    Bytes bytes;
    for (size_t i = 0; i < pixels; ++i) {
      bytes.insert(bytes.end(), {first[i], second[i], third[i]});
    }
    expect(to, bytes);
  });
}

TEST(PlaceStages, PixelsOfFourBytesArePutTogether) {
  forAll([](const zqp::PlaceStages &stages, size_t pixels, size_t shift) {
    const Input first(pixels, shift, 1);
    const Input second(pixels, shift + 2, 2);
    const Input third(pixels, shift + 19, 3);
    const Input fourth(pixels, shift + 40, 4);
    for (const bool isOpaque : {false, true}) {
      const uint8_t *const from[4] = {first.data(), second.data(), third.data(), isOpaque ? nullptr : fourth.data()};
      Output to(4 * pixels, shift + 11);
      stages.four(from, static_cast<int32_t>(pixels), to.data());
      Bytes bytes;
      for (size_t i = 0; i < pixels; ++i) {
        bytes.insert(bytes.end(), {first[i], second[i], third[i], isOpaque ? uint8_t{255} : fourth[i]});
      }
      expect(to, bytes);
    }
  });
}

TEST(PlaceStages, RowsAreReversed) {
  forAll([](const zqp::PlaceStages &stages, size_t count, size_t shift) {
    const Input from(count, shift, 1);
    Output to(count, shift + 9);
    stages.reversed(from.data(), static_cast<int32_t>(count), to.data());
    Bytes bytes;
    for (size_t i = count; i > 0; --i) {
      bytes.push_back(from[i - 1]);
    }
    expect(to, bytes);
  });
}

/// A block and its memory: lines that are further apart than they are long, from the first or from the last one on.
struct Block {
  int32_t columns;
  int32_t lines;
  ptrdiff_t gap;
  bool isUpwards;

  [[nodiscard]] ptrdiff_t distance() const { return columns + gap; }
  [[nodiscard]] size_t bytes() const { return static_cast<size_t>(distance() * (lines - 1) + columns); }
  [[nodiscard]] ptrdiff_t stride() const { return isUpwards ? -distance() : distance(); }
  [[nodiscard]] ptrdiff_t at(ptrdiff_t x, ptrdiff_t line) const {
    return (isUpwards ? lines - 1 - line : line) * distance() + x;
  }
};

void tryBlock(const zqp::PlaceStages &stages, const Block &block, const Block &turned) {
  const Input from(block.bytes(), static_cast<size_t>(block.columns % 5), 6);
  Output to(turned.bytes(), static_cast<size_t>(block.lines * 3));
  stages.transposed(from.data() + block.at(0, 0), block.stride(), block.columns, block.lines,
                    to.data() + turned.at(0, 0), turned.stride());
  Bytes bytes(turned.bytes(), kGuard);
  for (ptrdiff_t line = 0; line < block.lines; ++line) {
    for (ptrdiff_t x = 0; x < block.columns; ++x) {
      bytes[static_cast<size_t>(turned.at(line, x))] = from[static_cast<size_t>(block.at(x, line))];
    }
  }
  EXPECT_TRUE(to.bytes() == bytes) << block.columns << " x " << block.lines;
  EXPECT_TRUE(to.guardsStand()) << block.columns << " x " << block.lines;
}

void tryBlocks(int32_t columns, int32_t lines) {
  for (const zqcc::LevelSet level : levels()) {
    SCOPED_TRACE(saying(level, columns));
    for (const int strides : {0, 1, 2, 3}) {
      tryBlock(*zqp::stagesOf(level).place, {columns, lines, lines % 4, strides % 2 != 0},
               {lines, columns, columns % 3, strides / 2 != 0});
    }
  }
}

TEST(PlaceStages, BlocksOfEverySmallSizeAreTransposed) {
  for (int32_t columns = 1; columns <= 70 && !HasFailure(); ++columns) {
    for (int32_t lines = 1; lines <= 70 && !HasFailure(); ++lines) {
      tryBlocks(columns, lines);
    }
  }
}

TEST(PlaceStages, LargeBlocksAreTransposed) {
  for (const int32_t columns : {1, 15, 17, 128, 131, 640}) {
    for (const int32_t lines : {1, 7, 16, 64, 127, 129, 360}) {
      tryBlocks(columns, lines);
    }
  }
}

} // namespace
