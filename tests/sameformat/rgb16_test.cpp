// 16-bit RGB to 16-bit RGB: copies, quarter turns and resizing.
#include "reference/same_format_check.h"

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
