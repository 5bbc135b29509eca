// Black, white and greys come out exact, and greys stay grey.
#include "picture/cases.h"
#include "picture/contents.h"
#include "picture/reference/exact_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using reference::Format;
using reference::Kind;
using reference::OwnPicture;

constexpr int kGreys = 256;

bool isLimited(const Format &format, int32_t range) {
  return range == ZQP_RANGE_LIMITED || (range == ZQP_RANGE_USUAL && format.kind != Kind::Rgb);
}

/// The number of a grey in another range, and of `most` + 1 values, rounded.
int greyOf(int grey, bool fromLimited, bool toLimited, int most) {
  const double white = fromLimited ? (grey - 16) / 219. : grey / 255.;
  const double number = toLimited ? 16 + 219 * white : 255 * white;
  return static_cast<int>(std::floor(std::clamp(number * most / 255, 0., 1. * most) + .5));
}

/// A line of all greys, those of RGB565 apart, which has few.
OwnPicture greys(int32_t format) {
  OwnPicture line(format, kGreys, 1);
  picture::fillGrey(line, 0);
  for (int component = 0; component < (line.format().kind == Kind::Rgb ? 3 : 1); ++component) {
    for (int x = 0; x < kGreys; ++x) {
      line.setSample(component, x, 0, x);
    }
  }
  return line;
}

std::vector<ZqpColours> colours() {
  std::vector<ZqpColours> all;
  for (int32_t matrix = ZQP_BT601; matrix <= ZQP_MATRIX_GIVEN; ++matrix) {
    for (int32_t range = ZQP_RANGE_USUAL; range <= ZQP_RANGE_FULL; ++range) {
      all.push_back({matrix, range, ZQP_SITING_LEFT, .3F, .5F});
    }
  }
  return all;
}

/// Greys as they are, not resampled: luma, red, green and blue of one size.
void expectGreys(const ZqpConversion &c, const OwnPicture &out) {
  const bool fromLimited = isLimited(reference::formatOf(c.inFormat), c.inColours.range);
  const bool toLimited = isLimited(out.format(), c.outColours.range);
  for (int component = 0; component < out.format().components; ++component) {
    for (int x = 0; x < columnsOf(out.format(), component, kGreys); ++x) {
      int expected = greyOf(x, fromLimited, toLimited, mostOf(out.format(), component));
      if (isChroma(out.format(), component)) {
        expected = 128;
      } else if (component == reference::kAlpha) {
        expected = 255;
      }
      ASSERT_EQ(out.sample(component, x, 0), expected)
          << picture::describe(c) << " component " << component << " grey " << x;
    }
  }
}

/// Of black and white, which RGB565 has too.
void expectEnds(const ZqpConversion &c, int value) {
  OwnPicture in(c.inFormat, c.inWidth, c.inHeight);
  const bool fromLimited = isLimited(in.format(), c.inColours.range);
  const bool toLimited = isLimited(reference::formatOf(c.outFormat), c.outColours.range);
  int grey = value * 255;
  if (in.format().store == reference::Store::Bytes && fromLimited) {
    grey = 16 + value * 219;
  }
  picture::fillGrey(in, grey);
  OwnPicture out(c.outFormat, c.outWidth, c.outHeight);
  convertExactly(c, in, out);
  const int most = mostOf(out.format(), 0);
  EXPECT_EQ(out.sample(0, 0, 0), greyOf(grey, fromLimited, toLimited, most)) << picture::describe(c);
}

TEST(Greys, AreExactForEveryMatrixAndRange) {
  for (const int32_t in : picture::inputFormats()) {
    if (reference::formatOf(in).store != reference::Store::Bytes) {
      continue;
    }
    const OwnPicture line = greys(in);
    for (const int32_t out : picture::outputFormats()) {
      for (const ZqpColours &from : colours()) {
        // The output's matrix varies with the input's, so that all pairs occur among the formats.
        const std::vector<ZqpColours> all = colours();
        const auto shift = static_cast<std::size_t>(in + out) % all.size();
        for (std::size_t i = 0; i < 3; ++i) {
          ZqpConversion c = picture::usual(in, out, kGreys, 1);
          c.inColours = from;
          c.outColours = all[(shift + 4 * i + i) % all.size()];
          OwnPicture made(out, kGreys, 1);
          convertExactly(c, line, made);
          expectGreys(c, made);
          ASSERT_FALSE(HasFatalFailure());
        }
      }
    }
  }
}

TEST(Greys, BlackAndWhiteAreExactOfWordsToo) {
  for (const int32_t in : {ZQP_RGB565, ZQP_RGB565_SWAPPED, ZQP_NV12, ZQP_BGRA}) {
    for (const int32_t out : picture::outputFormats()) {
      for (const ZqpColours &from : colours()) {
        for (const ZqpColours &to : colours()) {
          ZqpConversion c = picture::usual(in, out, 1, 1);
          c.inColours = from;
          c.outColours = to;
          expectEnds(c, 0);
          expectEnds(c, 1);
        }
      }
    }
  }
}

/// Lines of greys of which none is like the next: no colour may show where they are mixed.
TEST(Greys, StayGreyWhereTheyAreResampled) {
  picture::Random random(5);
  for (const int32_t in : picture::inputFormats()) {
    if (reference::formatOf(in).store != reference::Store::Bytes) {
      continue;
    }
    const OwnPicture line = greys(in);
    for (const int32_t out : picture::outputFormats()) {
      for (int32_t filter = ZQP_FILTER_BILINEAR; filter <= ZQP_FILTER_AREA; ++filter) {
        ZqpConversion c = picture::anySameSize(random, in, out, kGreys, 1);
        c.filter = filter;
        c.dither = ZQP_DITHER_NONE;
        c.outWidth = picture::between(random, 1, 40);
        c.outHeight = picture::between(random, 1, 40);
        OwnPicture made(out, c.outWidth, c.outHeight);
        convertExactly(c, line, made);
        const bool isRgb = made.format().kind == Kind::Rgb;
        for (int y = 0; y < linesOf(made.format(), 1, c.outHeight) && made.format().components > 1; ++y) {
          for (int x = 0; x < columnsOf(made.format(), 1, c.outWidth); ++x) {
            const int expected = isRgb ? made.sample(0, x, y) : 128;
            ASSERT_EQ(made.sample(2, x, y), expected) << picture::describe(c);
            if (mostOf(made.format(), 1) == 255) {
              ASSERT_EQ(made.sample(1, x, y), expected) << picture::describe(c);
            }
          }
        }
      }
    }
  }
}

TEST(Greys, EvenPicturesStayEvenUnderEveryFilter) {
  picture::Random random(6);
  for (const int32_t in : picture::inputFormats()) {
    for (const int32_t out : picture::outputFormats()) {
      ZqpConversion c = picture::anyResized(random, in, out, 60);
      c.dither = ZQP_DITHER_NONE;
      OwnPicture even(in, c.inWidth, c.inHeight);
      const int value = picture::between(random, 0, 255);
      picture::fillGrey(even, value);
      OwnPicture made(out, c.outWidth, c.outHeight);
      convertExactly(c, even, made);
      for (int component = 0; component < made.format().components; ++component) {
        for (int y = 0; y < linesOf(made.format(), component, c.outHeight); ++y) {
          for (int x = 0; x < columnsOf(made.format(), component, c.outWidth); ++x) {
            ASSERT_EQ(made.sample(component, x, y), made.sample(component, 0, 0)) << picture::describe(c);
          }
        }
      }
    }
  }
}

} // namespace
