// Packed 4:2:2 to packed 4:2:2: copies, quarter turns and resizing of all eight byte orders.
#include "reference/same_format_check.h"

#include <gtest/gtest.h>

namespace {

using reference::convertBoth;
using reference::kUntouched;
using reference::Outcome;
using reference::sameFormatParams;
using Bytes = std::vector<uint8_t>;

constexpr std::array<int, 8> kTypes{COLOR_YUV422_YUYV,  COLOR_YUV422_YVYU,  COLOR_YUV422_UYVY,  COLOR_YUV422_VYUY,
                                    COLOR_YUV422_YUYV2, COLOR_YUV422_YVYU2, COLOR_YUV422_UYVY2, COLOR_YUV422_VYUY2};

void expectBytes(ConvertParams p, int type, const Bytes &in, const Bytes &expected) {
  p.inType = p.outType = type;
  const Outcome outcome = convertBoth(p, {in, {}, {}}, {expected.size(), 0, 0});
  ASSERT_EQ(outcome.code, CC_OK) << "type " << type;
  EXPECT_EQ(outcome.library[0], expected) << "library, type " << type;
  EXPECT_EQ(outcome.reference[0], expected) << "reference, type " << type;
}

TEST(SameFormatPacked, CopiesUpright) {
  const Bytes in{1, 2, 3, 4, 5, 6, 7, 8, 99, 11, 12, 13, 14, 15, 16, 17, 18, 99};
  for (const int type : kTypes) {
    for (const uint32_t rotation : {0U, 1U, 2U, 5U, 6U, 7U}) {
      ConvertParams p = sameFormatParams(type, 4, 2, 4, 2, 9, 8);
      p.rotation = rotation;
      p.antiAlias = rotation % 3; // without resizing the quality plays no part
      expectBytes(p, type, in, {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18});
    }
  }
}

// Two lines of one group each.
const Bytes kTwoGroups{1, 2, 3, 4, 11, 12, 13, 14};

TEST(SameFormatPacked, TurnsCarryTheFirstLinesChroma) {
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 2, 2, 2, 2, 4, 4);
  p.rotation = ROTATION_90_LEFT;
  // The lower output line holds the left pixels of both lines; chroma bytes 1 and 3 come from the upper line's group.
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU}) {
    expectBytes(p, type, kTwoGroups, {3, 2, 13, 4, 1, 2, 11, 4});
  }
  for (const int type : {COLOR_YUV422_UYVY, COLOR_YUV422_VYUY}) {
    expectBytes(p, type, kTwoGroups, {1, 4, 3, 14, 1, 2, 3, 12});
  }
  p.rotation = ROTATION_90_RIGHT;
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU}) {
    expectBytes(p, type, kTwoGroups, {11, 12, 1, 14, 13, 12, 3, 14});
  }
  for (const int type : {COLOR_YUV422_UYVY, COLOR_YUV422_VYUY}) {
    expectBytes(p, type, kTwoGroups, {11, 12, 13, 2, 11, 14, 13, 4});
  }
}

TEST(SameFormatPacked, TurnsOfSwappedOrdersKeepChromaAsItFalls) {
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV2, 2, 2, 2, 2, 4, 4);
  for (std::size_t i = 4; i < kTypes.size(); ++i) {
    p.rotation = ROTATION_90_LEFT;
    expectBytes(p, kTypes[i], kTwoGroups, {3, 4, 13, 14, 1, 2, 11, 12});
    p.rotation = ROTATION_90_RIGHT;
    expectBytes(p, kTypes[i], kTwoGroups, {11, 12, 1, 2, 13, 14, 3, 4});
  }
}

TEST(SameFormatPacked, ResizedTurnsRepairEveryByteOrder) {
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 2, 2, 2, 2, 4, 4);
  p.isResize = 1;
  p.rotation = ROTATION_90_LEFT;
  for (const uint32_t quality : {0U, 1U, 2U}) {
    p.antiAlias = quality;
    for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU, COLOR_YUV422_YUYV2, COLOR_YUV422_YVYU2}) {
      expectBytes(p, type, kTwoGroups, {3, 2, 13, 4, 1, 2, 11, 4});
    }
    for (const int type : {COLOR_YUV422_UYVY, COLOR_YUV422_VYUY, COLOR_YUV422_UYVY2, COLOR_YUV422_VYUY2}) {
      expectBytes(p, type, kTwoGroups, {1, 4, 3, 14, 1, 2, 3, 12});
    }
  }
}

TEST(SameFormatPacked, LoneLastLineOfATurnServesAsBoth) {
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 2, 1, 2, 1, 4, 4);
  p.rotation = ROTATION_90_LEFT;
  expectBytes(p, COLOR_YUV422_YUYV, {1, 2, 3, 4}, {3, 2, 3, 4, 1, 2, 1, 4});
  // Without room for a whole group the line ends behind its pixel.
  p.outStride = 2;
  expectBytes(p, COLOR_YUV422_YUYV, {1, 2, 3, 4}, {3, 2, 1, 2});
}

TEST(SameFormatPacked, TurnOfAnOddWidthWritesItsLinesOnly) {
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 3, 2, 3, 2, 8, 4);
  p.rotation = ROTATION_90_RIGHT;
  const Bytes in{1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18};
  expectBytes(p, COLOR_YUV422_YUYV, in,
              {11, 12, 1, 14, 13, 12, 3, 14, 15, 16, 5, 18, kUntouched, kUntouched, kUntouched, kUntouched});
}

TEST(SameFormatPacked, WidthOfOneWritesAWholeGroup) {
  // The group's chroma is that of position 0; the right pixel does not exist.
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 4, 2, 1, 2, 8, 4);
  p.isResize = 1;
  const Bytes in{1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18};
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU}) {
    p.inType = p.outType = type;
    const Outcome outcome = convertBoth(p, {in, {}, {}}, {8, 0, 0});
    ASSERT_EQ(outcome.code, CC_OK);
    for (const Bytes &bytes : {outcome.library[0], outcome.reference[0]}) {
      // Two lines to two: the second stands at the last line and becomes the mean of both.
      EXPECT_EQ(bytes[0], 1);
      EXPECT_EQ(bytes[1], 2);
      EXPECT_EQ(bytes[3], 4);
      EXPECT_EQ(bytes[4], 6);
      EXPECT_EQ(bytes[5], 7);
      EXPECT_EQ(bytes[7], 9);
      EXPECT_NE(bytes[2], kUntouched);
    }
  }
}

TEST(SameFormatPacked, WidthOfOneWritesAWholeGroupInEveryByteOrder) {
  // Position 0 is the first group's left pixel and the first group's chroma. Position 1 lies behind the table's last
  // entry, where all words are 0, and weights of 0 leave no luma. The second of two lines is the mean of both: 5 more.
  ConvertParams p = sameFormatParams(COLOR_YUV422_UYVY, 4, 2, 1, 2, 8, 4);
  p.isResize = 1;
  const Bytes in{1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14, 15, 16, 17, 18};
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU}) {
    expectBytes(p, type, in, {1, 2, 0, 4, 6, 7, 0, 9});
  }
  for (const int type : {COLOR_YUV422_UYVY, COLOR_YUV422_VYUY}) {
    expectBytes(p, type, in, {1, 2, 3, 0, 6, 7, 8, 0});
  }
  // With exchanged luma the left pixel's is the second one, on both sides.
  for (const int type : {COLOR_YUV422_YUYV2, COLOR_YUV422_YVYU2}) {
    expectBytes(p, type, in, {0, 2, 3, 4, 0, 7, 8, 9});
  }
  for (const int type : {COLOR_YUV422_UYVY2, COLOR_YUV422_VYUY2}) {
    expectBytes(p, type, in, {1, 0, 3, 4, 6, 0, 8, 9});
  }
}

TEST(SameFormatPacked, FilteredWidthOfOneWritesAWholeGroup) {
  // Eight pixels to one: the taps stand at 0, 0 (in place of -1.4), 0.9, 1.4 and -0.9 (weights 1945 and -921), for
  // luma in pixels, for chroma in groups. Both lines are alike.
  //   luma 100, 140, 180:    (100 + 100 + 135 + 155 + 64) / 5 = 110
  //   chroma 50, 90, 130:    (50 + 50 + 85 + 105 + 14) / 5 = 60
  //   chroma 10, 30, 50:     (10 + 10 + 27 + 37 - 8) / 5 = 15
  constexpr std::array<uint8_t, 8> kLuma{100, 140, 180, 220, 1, 2, 3, 4};
  constexpr std::array<uint8_t, 4> kFirst{50, 90, 130, 170};
  constexpr std::array<uint8_t, 4> kSecond{10, 30, 50, 70};
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_YVYU, COLOR_YUV422_UYVY, COLOR_YUV422_VYUY}) {
    const bool chromaFirst = type == COLOR_YUV422_UYVY || type == COLOR_YUV422_VYUY;
    Bytes in;
    for (std::size_t g = 0; g < 8; ++g) {
      const std::size_t k = g % 4;
      const uint8_t left = kLuma.at(2 * k);
      const uint8_t right = kLuma.at(2 * k + 1);
      if (chromaFirst) {
        in.insert(in.end(), {kFirst.at(k), left, kSecond.at(k), right});
      } else {
        in.insert(in.end(), {left, kFirst.at(k), right, kSecond.at(k)});
      }
    }
    ConvertParams p = sameFormatParams(type, 8, 2, 1, 2, 16, 4);
    p.isResize = 1;
    p.antiAlias = 1;
    // There is no second pixel to sample: its luma is written as 0.
    expectBytes(p, type, in,
                chromaFirst ? Bytes{60, 110, 15, 0, 60, 110, 15, 0} : Bytes{110, 60, 0, 15, 110, 60, 0, 15});
  }
}

TEST(SameFormatPacked, RightTurnStartsAtTheLastLineOfTheInput) {
  // Of four lines the turn takes two, upwards from the last; chroma is that of the line read first.
  ConvertParams p = sameFormatParams(COLOR_YUV422_YUYV, 2, 4, 2, 2, 4, 4);
  p.rotation = ROTATION_90_RIGHT;
  const Bytes in{1, 2, 3, 4, 11, 12, 13, 14, 21, 22, 23, 24, 31, 32, 33, 34};
  expectBytes(p, COLOR_YUV422_YUYV, in, {31, 32, 21, 34, 33, 32, 23, 34});
  expectBytes(p, COLOR_YUV422_VYUY, in, {31, 32, 33, 22, 31, 34, 33, 24});
  expectBytes(p, COLOR_YUV422_YVYU2, in, {31, 32, 21, 22, 33, 34, 23, 24});
}

/// Lines of eight pixels whose groups hold luma 10 apart and chroma 40 apart, two of them.
Bytes steps(int luma, int chroma, bool chromaFirst) {
  Bytes line;
  for (int g = 0; g < 4; ++g) {
    for (int i = 0; i < 2; ++i) {
      const auto y = static_cast<uint8_t>(luma + 20 * g + 10 * i);
      const auto c = static_cast<uint8_t>(chroma + 40 * g + 100 * i);
      line.push_back(chromaFirst ? c : y);
      line.push_back(chromaFirst ? y : c);
    }
  }
  line.insert(line.end(), line.begin(), line.end());
  return line;
}

TEST(SameFormatPacked, BilinearChromaFollowsItsOwnEntries) {
  // Eight pixels to sixteen. Luma at 0, 0.5, 1, ...: steps of 5 up to the last, whose entries are the mean of the last
  // two. Group k takes entry k as a group number: 0, 0.5, 1, 1.5, 2, 2.5, then the mean of the last two groups.
  const std::array<int, 16> luma{0, 5, 10, 15, 20, 25, 30, 35, 40, 45, 50, 55, 60, 65, 65, 65};
  const std::array<int, 8> chroma{0, 20, 40, 60, 80, 100, 100, 100};
  for (const int type : kTypes) {
    const bool chromaFirst = type == 8 || type == 9 || type == 16 || type == 17;
    const bool swapped = type >= 14;
    Bytes in = steps(0, 0, chromaFirst);
    Bytes line;
    for (std::size_t i = 0; i < 16; ++i) {
      const auto y = static_cast<uint8_t>(luma.at(swapped ? i ^ 1U : i));
      const auto c = static_cast<uint8_t>(chroma.at(i / 2) + (i % 2 == 0 ? 0 : 100));
      line.push_back(chromaFirst ? c : y);
      line.push_back(chromaFirst ? y : c);
    }
    if (swapped) {
      for (std::size_t at = chromaFirst ? 1 : 0; at + 2 < in.size(); at += 4) {
        std::swap(in.at(at), in.at(at + 2));
      }
    }
    line.insert(line.end(), line.begin(), line.end());
    ConvertParams p = sameFormatParams(type, 8, 2, 16, 2, 16, 32);
    p.isResize = 1;
    expectBytes(p, type, in, line);
  }
}

TEST(SameFormatPacked, SwappedOrdersIgnoreTheQuality) {
  for (std::size_t i = 4; i < kTypes.size(); ++i) {
    ConvertParams p = sameFormatParams(kTypes[i], 8, 2, 12, 2, 16, 24);
    p.isResize = 1;
    const Bytes in = steps(3, 1, i >= 6);
    const Outcome plain = convertBoth(p, {in, {}, {}}, {48, 0, 0});
    p.antiAlias = 2;
    const Outcome filtered = convertBoth(p, {in, {}, {}}, {48, 0, 0});
    EXPECT_EQ(plain.code, CC_OK);
    EXPECT_EQ(filtered.code, CC_OK);
    EXPECT_EQ(plain.library[0], filtered.library[0]);
  }
}

TEST(SameFormatPacked, FilteredTapsKeepTheirOwnVerticalWeights) {
  // Columns are flat, so only the lines count: at line 8 the five taps stand at 8, 7.1, 6.6, 8.9 and 9.4. With 100 on
  // line 9 alone they give 0, 0, 0, 89 and 60: (89 + 60) / 5 = 29.
  for (const int type : {COLOR_YUV422_YUYV, COLOR_YUV422_VYUY}) {
    Bytes in;
    for (std::size_t line = 0; line < 16; ++line) {
      in.insert(in.end(), 32, line == 9 ? 100 : 0);
    }
    ConvertParams p = sameFormatParams(type, 16, 16, 16, 16, 32, 32);
    p.isResize = 1;
    p.antiAlias = 1;
    const Outcome outcome = convertBoth(p, {in, {}, {}}, {512, 0, 0});
    ASSERT_EQ(outcome.code, CC_OK);
    for (std::size_t at = 256; at < 288; ++at) { // line 8
      EXPECT_EQ(outcome.library[0][at], 29) << "byte " << at % 32;
      EXPECT_EQ(outcome.reference[0][at], 29) << "byte " << at % 32;
    }
  }
}

TEST(SameFormatPacked, EveryModeAgreesWithTheReference) {
  reference::Tally tally;
  for (const int type : kTypes) {
    EXPECT_EQ(reference::sweepSameFormat(type, 8, 51, tally), "");
  }
  EXPECT_GT(tally.converted, 900);
}

} // namespace
