// Filtered resizing without changing the type: widths around those made at a time, wide ratios, and lines that lie on
// one another.
#include "reference/same_format_check.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using reference::SameFormatCase;
using reference::Tally;

/// The types that are filtered: planar 4:2:0, 16-bit RGB, packed 4:2:2 of every order.
constexpr std::array<int, 12> kTypes{3, 12, 30, 31, 6, 7, 8, 9, 14, 15, 16, 17};

std::string check(const SameFormatCase &c) {
  Tally tally;
  const std::string difference = checkSameFormat(c, tally);
  return tally.converted == 1 ? difference : difference + " was not converted";
}

SameFormatCase caseOf(int type, int width, int height, int outWidth, int outHeight, uint32_t seed) {
  SameFormatCase c{.type = type, .width = width, .height = height, .outWidth = outWidth, .outHeight = outHeight};
  c.isResize = 1;
  c.antiAlias = 1 + seed % 2;
  c.seed = seed;
  c.misalign = seed % 4;
  c.fill = seed % 3 == 0 ? support::Fill::Extremes : support::Fill::Noise;
  return c;
}

TEST(SameFormatFiltered, WidthsAroundThoseMadeAtATime) {
  uint32_t seed = 1;
  for (const int type : kTypes) {
    for (const int outWidth : {2, 5, 61, 62, 63, 64, 65, 66, 67, 127, 128, 129, 130, 193, 257}) {
      for (const int width : {outWidth * 5 / 3 + 1, outWidth / 2 + 2, outWidth + 9}) {
        ASSERT_EQ(check(caseOf(type, width, 11, outWidth, 7, ++seed)), "");
      }
    }
  }
}

TEST(SameFormatFiltered, WideRatios) {
  uint32_t seed = 1;
  for (const int type : kTypes) {
    for (const auto &s : {std::array<int, 4>{2112, 8, 66, 5},
                          {100, 90, 66, 21},
                          {110, 190, 66, 50},
                          {200, 165, 70, 60},
                          {100, 168, 66, 60},
                          {8, 700, 5, 2},
                          {1500, 300, 2, 2},
                          {4, 4, 130, 3},
                          {2, 2, 70, 100},
                          {3, 3, 67, 5}}) {
      ASSERT_EQ(check(caseOf(type, s[0], s[1], s[2], s[3], ++seed)), "");
    }
  }
}

TEST(SameFormatFiltered, LinesThatLieOnOneAnother) {
  // The lower line's bytes stay, up to the last of a line that another covers.
  uint32_t seed = 1;
  for (const int type : kTypes) {
    for (const int outWidth : {20, 66, 100, 131}) {
      for (const int shorter : {1, 2, 3, 6, 17, 32, 63}) {
        SameFormatCase c = caseOf(type, 90, 12, outWidth, 9, ++seed);
        c.outPadding = -(shorter < outWidth ? shorter : outWidth - 1);
        ASSERT_EQ(check(c), "") << type << " shorter by " << shorter;
        c.outPadding = 0;
        c.inPadding = -shorter;
        ASSERT_EQ(check(c), "") << type << " input shorter by " << shorter;
      }
    }
  }
}

} // namespace
