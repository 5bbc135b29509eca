// 16-bit RGB to 16-bit RGB: copies, quarter turns and resizing.
#include "sameformat/rgb16.h"

#include "reference/same_format_check.h"
#include "vector/detect.h"

#include <gtest/gtest.h>

namespace {

using reference::convertBoth;
using reference::Outcome;
using reference::sameFormatParams;
using Words = std::vector<uint16_t>;

std::vector<uint8_t> bytesOf(const Words &words) {
  std::vector<uint8_t> bytes;
  for (const uint16_t word : words) {
    bytes.push_back(static_cast<uint8_t>(word & 0xFF));
    bytes.push_back(static_cast<uint8_t>(word >> 8));
  }
  return bytes;
}

void expectWords(ConvertParams p, const Words &in, const Words &expected) {
  for (const int type : {COLOR_RGB565, COLOR_RGB16_ALT}) {
    p.inType = p.outType = type;
    const Outcome outcome = convertBoth(p, {bytesOf(in), {}, {}}, {2 * expected.size(), 0, 0});
    ASSERT_EQ(outcome.code, CC_OK) << "type " << type;
    EXPECT_EQ(outcome.library[0], bytesOf(expected)) << "library, type " << type;
    EXPECT_EQ(outcome.reference[0], bytesOf(expected)) << "reference, type " << type;
  }
}

constexpr uint16_t kU = 0xA5A5; // a word that nobody wrote

TEST(SameFormatRgb16, HalfTurnAndOtherCodesCopyUnturned) {
  const Words in{1, 2, 3, 99, 4, 5, 6, 98};
  for (const uint32_t rotation : {0U, 1U, 2U, 5U, 6U, 7U}) {
    ConvertParams p = sameFormatParams(COLOR_RGB565, 3, 2, 3, 2, 8, 10);
    p.rotation = rotation;
    expectWords(p, in, {1, 2, 3, kU, kU, 4, 5, 6, kU, kU});
  }
}

TEST(SameFormatRgb16, QuarterTurnsOfAnySize) {
  const Words in{1, 2, 3, 4, 5, 11, 12, 13, 14, 15, 21, 22, 23, 24, 25};
  ConvertParams p = sameFormatParams(COLOR_RGB565, 5, 3, 5, 3, 10, 8);
  p.rotation = ROTATION_90_LEFT;
  expectWords(p, in, {5, 15, 25, kU, 4, 14, 24, kU, 3, 13, 23, kU, 2, 12, 22, kU, 1, 11, 21, kU});
  p.rotation = ROTATION_90_RIGHT;
  expectWords(p, in, {21, 11, 1, kU, 22, 12, 2, kU, 23, 13, 3, kU, 24, 14, 4, kU, 25, 15, 5, kU});
}

TEST(SameFormatRgb16, SmallQuarterTurns) {
  ConvertParams p = sameFormatParams(COLOR_RGB565, 1, 1, 1, 1, 2, 2);
  p.rotation = ROTATION_90_LEFT;
  expectWords(p, {0x1234}, {0x1234});
  p = sameFormatParams(COLOR_RGB565, 3, 1, 3, 1, 6, 2);
  p.rotation = ROTATION_90_LEFT;
  expectWords(p, {1, 2, 3}, {3, 2, 1});
}

TEST(SameFormatRgb16, TurnUsesAnOddStrideAsItIs) {
  ConvertParams p = sameFormatParams(COLOR_RGB565, 2, 2, 2, 2, 5, 4);
  p.rotation = ROTATION_90_RIGHT;
  const Outcome outcome = convertBoth(p, {{{1, 0, 2, 0, 77, 3, 0, 4, 0}, {}, {}}}, {8, 0, 0});
  ASSERT_EQ(outcome.code, CC_OK);
  EXPECT_EQ(outcome.library[0], bytesOf({3, 1, 4, 2}));
  EXPECT_EQ(outcome.reference[0], bytesOf({3, 1, 4, 2}));
}

TEST(SameFormatRgb16, BlocksWithoutPositionsAreSkipped) {
  // Sixty-four columns to two: both positions, 0 and 32, belong to the first block, the others are empty.
  Words in;
  for (int i = 0; i < 128; ++i) {
    in.push_back(static_cast<uint16_t>(i % 64 * 33));
  }
  ConvertParams p = sameFormatParams(COLOR_RGB565, 64, 2, 2, 2, 128, 4);
  p.isResize = 1;
  expectWords(p, in, {0, 32 * 33, 0, 32 * 33});
}

TEST(SameFormatRgb16, ABlockWithoutPositionsBetweenOthersIsSkipped) {
  // Sixty-four to four: the positions stand at 0, 16, 32, 48. Position 1 closes the first group and position 2 opens
  // the third, so the counts are 2, 0, 2, 0, in both directions. Every word tells its line in green and half its column
  // in blue: 16 * 32 = 512 a line, 8 a column.
  Words in;
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) {
      in.push_back(static_cast<uint16_t>((x & 1) * 0xF800 | y << 5 | x >> 1));
    }
  }
  ConvertParams p = sameFormatParams(COLOR_RGB565, 64, 64, 4, 4, 128, 8);
  p.isResize = 1;
  expectWords(p, in, {0, 8, 16, 24, 512, 520, 528, 536, 1024, 1032, 1040, 1048, 1536, 1544, 1552, 1560});
  p.rotation = ROTATION_90_LEFT;
  expectWords(p, in, {24, 536, 1048, 1560, 16, 528, 1040, 1552, 8, 520, 1032, 1544, 0, 512, 1024, 1536});
  p.rotation = ROTATION_90_RIGHT;
  expectWords(p, in, {1536, 1024, 512, 0, 1544, 1032, 520, 8, 1552, 1040, 528, 16, 1560, 1048, 536, 24});
}

/// Runs a routine on a 2 x 2 picture to 2 x 2 with tables that set-up would never build.
Words withTables(zqcc::Routine routine, const Words &in, const std::vector<int32_t> &x, const std::vector<int32_t> &y) {
  const std::vector<uint8_t> source = bytesOf(in);
  std::vector<uint8_t> out(8, reference::kUntouched);
  ConvertParams p = sameFormatParams(COLOR_RGB565, 2, 2, 2, 2, 4, 4);
  p.isResize = 1;
  p.rotation = ROTATION_90_LEFT; // of consequence to the turning routine only
  p.inBuf[0] = source.data();
  p.outBuf[0] = out.data();
  routine(zqcc::Job{p, x.data(), y.data(), nullptr, false, 0, 4, zqcc::usableLevels()});
  Words words;
  for (std::size_t i = 0; i < out.size(); i += 2) {
    words.push_back(static_cast<uint16_t>(out[i] | out[i + 1] << 8));
  }
  return words;
}

TEST(SameFormatRgb16, WeightsOfLessThanAWholeDarken) {
  // Columns weigh 1000 and 256 + 512 = 768, lines 1000 and 300 + 600 = 900, where 1024 would be the whole. Of red and
  // blue 31 and green 63 there remain, over 2^20 and truncated:
  //   31 * 1000 * 1000 = 29.56, 63 * 1000 * 1000 = 60.08    31 * 768 * 1000 = 22.70, 63 * 768 * 1000 = 46.14
  //   31 * 1000 *  900 = 26.61, 63 * 1000 *  900 = 54.07    31 * 768 *  900 = 20.43, 63 * 768 *  900 = 41.53
  const auto grey = [](int redBlue, int green) { return static_cast<uint16_t>(redBlue << 11 | green << 5 | redBlue); };
  const Words white(4, 0xFFFF);
  const std::vector<int32_t> x{2, 0, 0, 1000, 0, 256, 512};
  const std::vector<int32_t> y{2, 0, 0, 1000, 0, 300, 600};
  EXPECT_EQ(withTables(zqcc::resizeRgb16, white, x, y),
            (Words{grey(29, 60), grey(22, 46), grey(26, 54), grey(20, 41)}));
  // Turned left the second column comes first, and its two lines share the first one's 1000.
  EXPECT_EQ(withTables(zqcc::resizeRotateRgb16, white, x, y),
            (Words{grey(22, 46), grey(22, 46), grey(29, 60), grey(29, 60)}));
}

TEST(SameFormatRgb16, BilinearWeighsEachChannel) {
  ConvertParams p = sameFormatParams(COLOR_RGB565, 2, 2, 4, 2, 4, 8);
  p.isResize = 1;
  // Red 0 and 31, green 63 and 0, blue 10 and 20. The position at 1.5 moves to index 0 and keeps its weight of a half.
  const auto left = static_cast<uint16_t>((63 << 5) | 10);
  const auto right = static_cast<uint16_t>((31 << 11) | 20);
  const auto half = static_cast<uint16_t>((15 << 11) | (31 << 5) | 15);
  expectWords(p, {left, right, left, right}, {left, half, left, half, left, half, left, half});
}

TEST(SameFormatRgb16, WhiteStaysWhite) {
  for (const uint32_t quality : {0U, 1U, 2U}) {
    ConvertParams p = sameFormatParams(COLOR_RGB565, 7, 5, 11, 13, 14, 22);
    p.isResize = 1;
    p.antiAlias = quality;
    expectWords(p, Words(35, 0xFFFF), Words(143, 0xFFFF));
  }
}

TEST(SameFormatRgb16, SecondLineOfATurnedPairKeepsTheFirstOnesWeights) {
  // Four lines of blue 0, 4, 8, 12 to eight: upright the odd lines lie half-way, turned they repeat the even ones.
  const Words in{0, 0, 4, 4, 8, 8, 12, 12};
  ConvertParams p = sameFormatParams(COLOR_RGB565, 2, 4, 2, 8, 4, 4);
  p.isResize = 1;
  expectWords(p, in, {0, 0, 2, 2, 4, 4, 6, 6, 8, 8, 10, 10, 8, 8, 10, 10});
  p.outStride = 16;
  p.rotation = ROTATION_90_LEFT;
  expectWords(p, in, {0, 0, 4, 4, 8, 8, 8, 8, 0, 0, 4, 4, 8, 8, 8, 8});
  p.rotation = ROTATION_90_RIGHT;
  expectWords(p, in, {8, 8, 8, 8, 4, 4, 0, 0, 8, 8, 8, 8, 4, 4, 0, 0});
}

TEST(SameFormatRgb16, EveryModeAgreesWithTheReference) {
  reference::Tally tally;
  for (const int type : {COLOR_RGB565, COLOR_RGB16_ALT}) {
    EXPECT_EQ(reference::sweepSameFormat(type, 15, 23, tally), "");
  }
  EXPECT_GT(tally.converted, 300);
  EXPECT_GT(tally.refused, 100);
}

} // namespace
