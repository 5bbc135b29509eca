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

TEST(SameFormatSemiPlanar, OddSizesHoldTruncatedChroma) {
  const ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 3, 3, 3, 3, 3, 3);
  expectPlanes(p, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {100, 200, 77}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {100, 200, kUntouched});
}

TEST(SameFormatSemiPlanar, EveryModeAgreesWithTheReference) {
  reference::Tally tally;
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    EXPECT_EQ(reference::sweepSameFormat(type, 25, 37, tally), "");
  }
  EXPECT_GT(tally.converted, 600);
}

} // namespace
