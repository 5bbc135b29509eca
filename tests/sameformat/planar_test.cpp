// Planar 4:2:0 to planar 4:2:0: copies, turns, half turns and resizing.
#include "reference/same_format_check.h"

#include <gtest/gtest.h>

namespace {

using reference::convertBoth;
using reference::kUntouched;
using reference::Outcome;
using reference::Planes;
using reference::sameFormatParams;
using Bytes = std::vector<uint8_t>;

void expectBoth(const Outcome &outcome, std::size_t plane, const Bytes &expected) {
  ASSERT_EQ(outcome.code, CC_OK);
  EXPECT_EQ(outcome.library.at(plane), expected) << "library, plane " << plane;
  EXPECT_EQ(outcome.reference.at(plane), expected) << "reference, plane " << plane;
}

Bytes repeated(const Bytes &line, int times) {
  Bytes all;
  for (int i = 0; i < times; ++i) {
    all.insert(all.end(), line.begin(), line.end());
  }
  return all;
}

/// A column of values as a plane whose lines hold `width` equal samples.
Bytes columns(const Bytes &values, int width) {
  Bytes all;
  for (const uint8_t value : values) {
    all.insert(all.end(), static_cast<std::size_t>(width), value);
  }
  return all;
}

Bytes counted(int samples) {
  Bytes all;
  for (int i = 0; i < samples; ++i) {
    all.push_back(static_cast<uint8_t>(i));
  }
  return all;
}

TEST(SameFormatPlanar, CopiesLineByLineBetweenDifferentStrides) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 2, 4, 2, 6, 5);
  p.rotation = 0;
  const Planes in{Bytes{1, 2, 3, 4, 90, 91, 5, 6, 7, 8, 92, 93}, Bytes{20, 21, 94}, Bytes{30, 31, 95}};
  const Outcome outcome = convertBoth(p, in, {10, 2, 2});
  expectBoth(outcome, 0, {1, 2, 3, 4, kUntouched, 5, 6, 7, 8, kUntouched});
  expectBoth(outcome, 1, {20, 21});
  expectBoth(outcome, 2, {30, 31});
}

TEST(SameFormatPlanar, CopyTakesItsSizesFromTheOutputFields) {
  const ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 4, 2, 2, 4, 2);
  const Planes in{counted(16), Bytes{20, 21, 22, 23}, Bytes{30, 31, 32, 33}};
  const Outcome outcome = convertBoth(p, in, {4, 1, 1});
  expectBoth(outcome, 0, {0, 1, 4, 5});
  expectBoth(outcome, 1, {20});
  expectBoth(outcome, 2, {30});
}

TEST(SameFormatPlanar, SingleLineIsCopiedWithoutChroma) {
  const ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 1, 4, 1, 4, 4);
  const Outcome outcome = convertBoth(p, {Bytes{1, 2, 3, 4}, Bytes{9, 9}, Bytes{9, 9}}, {4, 2, 2});
  expectBoth(outcome, 0, {1, 2, 3, 4});
  expectBoth(outcome, 1, {kUntouched, kUntouched});
  expectBoth(outcome, 2, {kUntouched, kUntouched});
}

TEST(SameFormatPlanar, QuarterTurnsOfAFourByFourPlane) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 4, 4, 4, 4, 4);
  const Planes in{counted(16), Bytes{0, 1, 2, 3}, Bytes{5, 6, 7, 8}};
  p.rotation = ROTATION_90_LEFT;
  Outcome outcome = convertBoth(p, in, {16, 4, 4});
  expectBoth(outcome, 0, {3, 7, 11, 15, 2, 6, 10, 14, 1, 5, 9, 13, 0, 4, 8, 12});
  expectBoth(outcome, 1, {1, 3, 0, 2});
  p.rotation = ROTATION_90_RIGHT;
  outcome = convertBoth(p, in, {16, 4, 4});
  expectBoth(outcome, 0, {12, 8, 4, 0, 13, 9, 5, 1, 14, 10, 6, 2, 15, 11, 7, 3});
  expectBoth(outcome, 2, {7, 5, 8, 6});
}

TEST(SameFormatPlanar, HalfTurnReversesAnEightByOnePlane) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 16, 2, 16, 2, 16, 16);
  p.rotation = ROTATION_180;
  const Planes in{counted(32), Bytes{1, 2, 3, 4, 5, 6, 7, 8}, Bytes{11, 12, 13, 14, 15, 16, 17, 18}};
  const Outcome outcome = convertBoth(p, in, {32, 8, 8});
  expectBoth(outcome, 1, {8, 7, 6, 5, 4, 3, 2, 1});
  expectBoth(outcome, 2, {18, 17, 16, 15, 14, 13, 12, 11});
  EXPECT_EQ(outcome.library[0].front(), 31);
  EXPECT_EQ(outcome.library[0].back(), 0);
}

TEST(SameFormatPlanar, TurnsIgnoreTheStrides) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 2, 4, 2, 8, 6);
  p.rotation = ROTATION_90_RIGHT;
  // The second line is read four samples after the first, although the stride says eight.
  const Planes in{Bytes{1, 2, 3, 4, 5, 6, 7, 8, 50, 51, 52, 53}, Bytes{20, 21, 60, 61}, Bytes{30, 31, 62, 63}};
  const Outcome outcome = convertBoth(p, in, {24, 12, 12});
  Bytes luma{5, 1, 6, 2, 7, 3, 8, 4};
  luma.resize(24, kUntouched);
  expectBoth(outcome, 0, luma);
  Bytes chroma{20, 21};
  chroma.resize(12, kUntouched);
  expectBoth(outcome, 1, chroma);
}

TEST(SameFormatPlanar, HalfTurnIgnoresTheStrides) {
  // 16 x 4 samples are the first 64 bytes of their plane, although the stride says 20, and are written to the first 64
  // of theirs, although that stride says 24. Chroma: 8 x 2, the first 16 bytes.
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 16, 4, 16, 4, 20, 24);
  p.rotation = ROTATION_180;
  Planes in{counted(3 * 20 + 16), counted(10 + 8), counted(10 + 8)};
  for (uint8_t &sample : in[2]) {
    sample = static_cast<uint8_t>(sample + 200);
  }
  const Outcome outcome = convertBoth(p, in, {3 * 24 + 16, 12 + 8, 12 + 8});
  Bytes luma;
  for (uint8_t sample = 64; sample-- > 0;) {
    luma.push_back(sample); // 63, 62, ..., 0
  }
  luma.resize(88, kUntouched);
  expectBoth(outcome, 0, luma);
  Bytes chroma{15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
  chroma.resize(20, kUntouched);
  expectBoth(outcome, 1, chroma);
  chroma = {215, 214, 213, 212, 211, 210, 209, 208, 207, 206, 205, 204, 203, 202, 201, 200};
  chroma.resize(20, kUntouched);
  expectBoth(outcome, 2, chroma);
}

TEST(SameFormatPlanar, LeftTurnIgnoresTheStrides) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 4, 4, 4, 6, 7);
  p.rotation = ROTATION_90_LEFT;
  const Outcome outcome = convertBoth(p, {counted(22), Bytes{0, 1, 2, 3, 90}, Bytes{5, 6, 7, 8, 90}}, {25, 5, 5});
  Bytes luma{3, 7, 11, 15, 2, 6, 10, 14, 1, 5, 9, 13, 0, 4, 8, 12};
  luma.resize(25, kUntouched);
  expectBoth(outcome, 0, luma);
  expectBoth(outcome, 1, {1, 3, 0, 2, kUntouched});
  expectBoth(outcome, 2, {6, 8, 5, 7, kUntouched});
}

TEST(SameFormatPlanar, LateChromaColumnsAverageTheLastTwoSamples) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 8, 4, 16, 4, 8, 16);
  p.isResize = 1;
  const Planes in{Bytes(32, 7), repeated({10, 20, 40, 80}, 2), repeated({0, 0, 100, 201}, 2)};
  const Outcome outcome = convertBoth(p, in, {64, 16, 16});
  expectBoth(outcome, 0, Bytes(64, 7));
  expectBoth(outcome, 1, repeated({10, 15, 20, 30, 40, 60, 60, 60}, 2));
  expectBoth(outcome, 2, repeated({0, 0, 0, 50, 100, 150, 150, 150}, 2));
}

TEST(SameFormatPlanar, LateChromaLinesKeepTheirWeights) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 8, 4, 16, 4, 4);
  p.isResize = 1;
  const Bytes chroma = columns({10, 20, 40, 80}, 2);
  const Outcome outcome = convertBoth(p, {Bytes(32, 7), chroma, chroma}, {64, 16, 16});
  // Entry 6 stands at line 3 with weight 1024 for the line itself, which moves to line 2 with it.
  expectBoth(outcome, 1, columns({10, 15, 20, 30, 40, 60, 40, 60}, 2));
  expectBoth(outcome, 2, columns({10, 15, 20, 30, 40, 60, 40, 60}, 2));
}

TEST(SameFormatPlanar, LumaEndsInTheMeanOfItsLastTwoSamples) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 2, 8, 2, 4, 8);
  p.isResize = 1;
  const Planes in{repeated({0, 100, 200, 40}, 2), Bytes{1, 1}, Bytes{1, 1}};
  const Outcome outcome = convertBoth(p, in, {16, 4, 4});
  expectBoth(outcome, 0, repeated({0, 50, 100, 150, 200, 120, 120, 120}, 2));
}

TEST(SameFormatPlanar, FilteredMeanTruncatesTwice) {
  for (const uint32_t quality : {1U, 2U}) {
    ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 16, 16, 16, 16, 16, 16);
    p.isResize = 1;
    p.antiAlias = quality;
    const Planes flat{Bytes(256, 255), Bytes(64, 255), Bytes(64, 255)};
    Outcome outcome = convertBoth(p, flat, {256, 64, 64});
    expectBoth(outcome, 0, Bytes(256, 255));
    expectBoth(outcome, 1, Bytes(64, 255));
    // Around column 4 the left taps meet column 2 in part: one tap of quality 1 and two of quality 2 give 254, the
    // others 255.
    Bytes line(16, 255);
    line[2] = 254;
    outcome = convertBoth(p, {repeated(line, 16), flat[1], flat[2]}, {256, 64, 64});
    ASSERT_EQ(outcome.code, CC_OK);
    EXPECT_EQ(outcome.library[0][8 * 16 + 4], 254);
    EXPECT_EQ(outcome.reference[0][8 * 16 + 4], 254);
    EXPECT_EQ(outcome.library[0][8 * 16 + 10], 255);
    EXPECT_EQ(outcome.reference[0][8 * 16 + 10], 255);
  }
}

TEST(SameFormatPlanar, FilteredTapsAreFiveSamplesNotAGrid) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 16, 16, 16, 16, 16, 16);
  p.isResize = 1;
  p.antiAlias = 1;
  Planes in{Bytes(256, 0), Bytes(64, 0), Bytes(64, 0)};
  in[0][5 * 16 + 5] = 250;
  const Outcome outcome = convertBoth(p, in, {256, 64, 64});
  ASSERT_EQ(outcome.code, CC_OK);
  // At (4, 4) the third tap stands at column 4.9 and line 2.6, the fourth at column 5.4 and line 4.9, the others off
  // column 5 or line 5: columns weigh 615 of 1024, lines 921, (250 * 615 * 921) >> 20 = 135, and 135 / 5 = 27.
  EXPECT_EQ(outcome.library[0][4 * 16 + 4], 27);
  EXPECT_EQ(outcome.reference[0][4 * 16 + 4], 27);
}

TEST(SameFormatPlanar, EnlargedTurnsRepeatWholeLines) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 4, 8, 4, 4, 4);
  p.isResize = 1;
  p.rotation = ROTATION_90_LEFT;
  const Planes in{counted(16), Bytes{0, 1, 2, 3}, Bytes{4, 5, 6, 7}};
  Outcome outcome = convertBoth(p, in, {32, 8, 8});
  expectBoth(outcome, 0, {3, 7, 11, 15, 3, 7, 11, 15, 2, 6, 10, 14, 2, 6, 10, 14,
                          1, 5, 9,  13, 1, 5, 9,  13, 0, 4, 8,  12, 0, 4, 8,  12});
  expectBoth(outcome, 1, {1, 3, 1, 3, 0, 2, 0, 2});
  p.rotation = ROTATION_90_RIGHT;
  outcome = convertBoth(p, in, {32, 8, 8});
  expectBoth(outcome, 0, {12, 8,  4, 0, 12, 8,  4, 0, 13, 9,  5, 1, 13, 9,  5, 1,
                          14, 10, 6, 2, 14, 10, 6, 2, 15, 11, 7, 3, 15, 11, 7, 3});
}

TEST(SameFormatPlanar, ResizedHalfTurnMirrorsAboutTheStride) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 4, 2, 4, 2, 4, 6);
  p.isResize = 1;
  p.rotation = ROTATION_180;
  const Outcome outcome = convertBoth(p, {counted(8), Bytes{20, 21}, Bytes{30, 31}}, {12, 3, 3});
  expectBoth(outcome, 0, {kUntouched, kUntouched, 7, 6, 5, 4, kUntouched, kUntouched, 3, 2, 1, 0});
  expectBoth(outcome, 1, {kUntouched, 21, 20});
  expectBoth(outcome, 2, {kUntouched, 31, 30});
}

/// Vector code reverses lines piece by piece.
TEST(SameFormatPlanar, ResizedHalfTurnOfWideLines) {
  for (int32_t width = 500; width <= 1120; width += width < 532 || width > 1020 ? 1 : 61) {
    ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 700, 6, width, 8, 700, 1130);
    p.isResize = 1;
    p.rotation = ROTATION_180;
    const Outcome outcome = convertBoth(p, {counted(4200), counted(1050), counted(1050)}, {9040, 2260, 2260});
    ASSERT_EQ(outcome.code, CC_OK) << width;
    ASSERT_EQ(outcome.library, outcome.reference) << width;
  }
}

TEST(SameFormatPlanar, BothPlaneOrdersBehaveAlike) {
  for (const uint32_t resize : {0U, 1U}) {
    ConvertParams p = sameFormatParams(COLOR_YUV420_PLANAR, 6, 6, 6, 6, 6, 6);
    p.isResize = resize;
    const Planes in{counted(36), counted(9), Bytes{9, 8, 7, 6, 5, 4, 3, 2, 1}};
    const Outcome first = convertBoth(p, in, {36, 9, 9});
    p.inType = p.outType = COLOR_YVU420_PLANAR;
    const Outcome second = convertBoth(p, in, {36, 9, 9});
    EXPECT_EQ(first.code, CC_OK);
    EXPECT_EQ(second.code, CC_OK);
    EXPECT_EQ(first.library, second.library);
  }
}

TEST(SameFormatPlanar, EveryModeAgreesWithTheReference) {
  reference::Tally tally;
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR}) {
    EXPECT_EQ(reference::sweepSameFormat(type, 20, 11, tally), "");
  }
  EXPECT_GT(tally.converted, 350);
  EXPECT_GT(tally.refused, 150); // the filter without resizing or with a turn, and pictures without chroma
}

} // namespace
