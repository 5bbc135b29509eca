// Semi-planar 4:2:0 to semi-planar 4:2:0: copies, quarter turns and nearest-sample resizing.
#include "reference/same_format_check.h"

#include <gtest/gtest.h>

namespace {

using reference::convertBoth;
using reference::kUntouched;
using reference::Outcome;
using reference::sameFormatParams;
using Bytes = std::vector<uint8_t>;

void expectPlanes(ConvertParams p, const Bytes &luma, const Bytes &pairs, const Bytes &outLuma, const Bytes &outPairs) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    p.inType = p.outType = type;
    const Outcome outcome = convertBoth(p, {luma, pairs, {}}, {outLuma.size(), outPairs.size(), 0});
    ASSERT_EQ(outcome.code, CC_OK) << "type " << type;
    EXPECT_EQ(outcome.library[0], outLuma) << "library, type " << type;
    EXPECT_EQ(outcome.library[1], outPairs) << "library, type " << type;
    EXPECT_EQ(outcome.reference[0], outLuma) << "reference, type " << type;
    EXPECT_EQ(outcome.reference[1], outPairs) << "reference, type " << type;
  }
}

const Bytes kLuma{0, 1, 2, 3, 10, 11, 12, 13, 20, 21, 22, 23, 30, 31, 32, 33};
const Bytes kPairs{100, 200, 101, 201, 110, 210, 111, 211};

TEST(SameFormatSemiPlanar, CopyKeepsTheChromaBytes) {
  const ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 4, 4, 4, 4, 5);
  const Bytes wide{0,  1,  2,  3,  kUntouched, 10, 11, 12, 13, kUntouched,
                   20, 21, 22, 23, kUntouched, 30, 31, 32, 33, kUntouched};
  expectPlanes(p, kLuma, kPairs, wide, {100, 200, 101, 201, kUntouched, 110, 210, 111, 211, kUntouched});
}

TEST(SameFormatSemiPlanar, SingleLineIsCopiedWithoutChroma) {
  const ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 1, 4, 1, 4, 4);
  expectPlanes(p, {1, 2, 3, 4}, {9, 9, 9, 9}, {1, 2, 3, 4}, Bytes(4, kUntouched));
}

TEST(SameFormatSemiPlanar, HalfTurnFlipAndQualityLeaveACopy) {
  for (const uint32_t rotation : {0U, 1U, 5U, 6U, 7U}) {
    for (const uint32_t quality : {0U, 1U, 2U}) {
      ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 4, 4, 4, 4, 4);
      p.rotation = rotation;
      p.antiAlias = quality;
      expectPlanes(p, kLuma, kPairs, kLuma, kPairs);
    }
  }
}

TEST(SameFormatSemiPlanar, QuarterTurnsMoveWholePairs) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 4, 4, 4, 4, 4);
  p.rotation = ROTATION_90_LEFT;
  expectPlanes(p, kLuma, kPairs, {3, 13, 23, 33, 2, 12, 22, 32, 1, 11, 21, 31, 0, 10, 20, 30},
               {101, 201, 111, 211, 100, 200, 110, 210});
  p.rotation = ROTATION_90_RIGHT;
  expectPlanes(p, kLuma, kPairs, {30, 20, 10, 0, 31, 21, 11, 1, 32, 22, 12, 2, 33, 23, 13, 3},
               {110, 210, 100, 200, 111, 211, 101, 201});
}

TEST(SameFormatSemiPlanar, EnlargingRepeatsPairsWithTheColumns) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 2, 8, 4, 4, 8);
  p.isResize = 1;
  const Bytes luma{0,  0,  1,  1,  2,  2,  3,  3,  0,  0,  1,  1,  2,  2,  3,  3,
                   10, 10, 11, 11, 12, 12, 13, 13, 10, 10, 11, 11, 12, 12, 13, 13};
  const Bytes line{100, 200, 100, 200, 101, 201, 101, 201};
  Bytes pairs(line);
  pairs.insert(pairs.end(), line.begin(), line.end());
  expectPlanes(p, {0, 1, 2, 3, 10, 11, 12, 13}, {100, 200, 101, 201}, luma, pairs);
}

TEST(SameFormatSemiPlanar, ChromaFollowsTheEvenEntriesHalved) {
  // Six columns to four: positions 0, 1, 3, 4; pairs follow entries 0 and 2, halved: pairs 0 and 1, never pair 2.
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 6, 2, 4, 2, 6, 4);
  p.isResize = 1;
  expectPlanes(p, {0, 1, 2, 3, 4, 5, 10, 11, 12, 13, 14, 15}, {100, 200, 101, 201, 102, 202},
               {0, 1, 3, 4, 10, 11, 13, 14}, {100, 200, 101, 201});
}

TEST(SameFormatSemiPlanar, ChromaLinesFollowTheEvenEntriesHalved) {
  // Ten lines to six: the step is 1706 / 1024, the positions 0, 1, 3, 4, 6, 8. Entries 0, 2 and 4 are 0, 3 and 6;
  // halved they are chroma lines 0, 1 and 3. (The odd entries would give 0, 2 and 4.)
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 2, 10, 2, 6, 2, 2);
  p.isResize = 1;
  Bytes luma;
  for (int line = 0; line < 10; ++line) {
    luma.insert(luma.end(), {static_cast<uint8_t>(10 * line), static_cast<uint8_t>(10 * line + 1)});
  }
  const Bytes pairs{100, 200, 101, 201, 102, 202, 103, 203, 104, 204};
  expectPlanes(p, luma, pairs, {0, 1, 10, 11, 30, 31, 40, 41, 60, 61, 80, 81}, {100, 200, 101, 201, 103, 203});
  // Four lines to twelve: entries 0, 2, 4, ... stand at lines 0, 0, 1, 2, 2, 3 (the step is 341, and 6 * 341 = 2046 is
  // not yet 2), so entry 6 is still line 1.
  p = sameFormatParams(COLOR_YUV420_PACK, 2, 4, 2, 12, 2, 2);
  p.isResize = 1;
  const Bytes tall{0, 1, 0, 1, 0, 1, 0, 1, 10, 11, 10, 11, 10, 11, 20, 21, 20, 21, 20, 21, 30, 31, 30, 31};
  expectPlanes(p, {0, 1, 10, 11, 20, 21, 30, 31}, {100, 200, 101, 201}, tall,
               {100, 200, 100, 200, 100, 200, 100, 200, 101, 201, 101, 201});
}

TEST(SameFormatSemiPlanar, RightTurnStartsAtTheLastLineOfTheInput) {
  // Eight lines, of which the turn takes four: upwards from line 7 turned right, downwards from line 0 turned left; of
  // the four chroma lines two. The luma of line l and column x is 10 * l + x, pair k of chroma line l is 100 + 10 * l +
  // k and 200 + 10 * l + k.
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 8, 4, 4, 4, 4);
  Bytes luma;
  Bytes pairs;
  for (int line = 0; line < 8; ++line) {
    for (int x = 0; x < 4; ++x) {
      luma.push_back(static_cast<uint8_t>(10 * line + x));
    }
  }
  for (int line = 0; line < 4; ++line) {
    for (int k = 0; k < 2; ++k) {
      pairs.insert(pairs.end(), {static_cast<uint8_t>(100 + 10 * line + k), static_cast<uint8_t>(200 + 10 * line + k)});
    }
  }
  p.rotation = ROTATION_90_RIGHT;
  expectPlanes(p, luma, pairs, {70, 60, 50, 40, 71, 61, 51, 41, 72, 62, 52, 42, 73, 63, 53, 43},
               {130, 230, 120, 220, 131, 231, 121, 221});
  p.rotation = ROTATION_90_LEFT;
  expectPlanes(p, luma, pairs, {3, 13, 23, 33, 2, 12, 22, 32, 1, 11, 21, 31, 0, 10, 20, 30},
               {101, 201, 111, 211, 100, 200, 110, 210});
}

TEST(SameFormatSemiPlanar, ResizedTurnsUseTheFirstHalfOfTheTables) {
  // Four columns to eight give entries 0, 0, 1, 1 for the four pair columns.
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 4, 4, 8, 4, 4, 4);
  p.isResize = 1;
  p.rotation = ROTATION_90_LEFT;
  const Bytes left{3, 13, 23, 33, 3, 13, 23, 33, 2, 12, 22, 32, 2, 12, 22, 32,
                   1, 11, 21, 31, 1, 11, 21, 31, 0, 10, 20, 30, 0, 10, 20, 30};
  expectPlanes(p, kLuma, kPairs, left,
               {101, 201, 111, 211, 101, 201, 111, 211, 100, 200, 110, 210, 100, 200, 110, 210});
  p.rotation = ROTATION_90_RIGHT;
  const Bytes right{30, 20, 10, 0, 30, 20, 10, 0, 31, 21, 11, 1, 31, 21, 11, 1,
                    32, 22, 12, 2, 32, 22, 12, 2, 33, 23, 13, 3, 33, 23, 13, 3};
  expectPlanes(p, kLuma, kPairs, right,
               {110, 210, 100, 200, 110, 210, 100, 200, 111, 211, 101, 201, 111, 211, 101, 201});
}

TEST(SameFormatSemiPlanar, EveryModeAgreesWithTheReference) {
  reference::Tally tally;
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    EXPECT_EQ(reference::sweepSameFormat(type, 25, 37, tally), "");
  }
  EXPECT_GT(tally.converted, 600);
}

} // namespace
