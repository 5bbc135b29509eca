// Parts of pictures: where they lie, what is refused, and that they are pictures like any other.
#include "picture/bench.h"
#include "picture/reference/exact_model.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>

namespace {

using picture::between;
using picture::difference;
using picture::Random;
using reference::Format;
using reference::OwnPicture;

constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

ZqpPicture empty() {
  ZqpPicture picture;
  std::memset(&picture, 0x5A, sizeof picture);
  picture.recordSize = sizeof picture;
  return picture;
}

/// Where line `y` of a plane begins.
const uint8_t *lineOf(const ZqpPicture &picture, int plane, int lines, int y) {
  const ZqpPlane &p = picture.planes[plane];
  const auto *data = static_cast<const uint8_t *>(p.data);
  return p.stride < 0 ? data + (lines - 1 - y) * -p.stride : data + y * p.stride;
}

/// The planes of a part lie in those of the picture, and hold what they need. Where there is one line, its stride says
/// nothing.
void expectPart(const ZqpPicture &whole, const ZqpPicture &part, int x, int y) {
  const Format &format = reference::formatOf(whole.format);
  for (int plane = 0; plane < planesOf(format); ++plane) {
    const int lines = planeLinesOf(format, plane, part.height);
    const int linesAbove = y == 0 ? 0 : planeLinesOf(format, plane, y);
    const int bytesBefore = x == 0 ? 0 : lineBytesOf(format, plane, x);
    const int wholeLines = planeLinesOf(format, plane, whole.height);
    const ZqpPlane &is = part.planes[plane];
    const ZqpPlane &of = whole.planes[plane];
    if (lines > 1) {
      EXPECT_EQ(is.stride, of.stride);
    }
    EXPECT_EQ(lineOf(part, plane, lines, 0), lineOf(whole, plane, wholeLines, linesAbove) + bytesBefore);
    EXPECT_EQ(lineOf(part, plane, lines, lines - 1),
              lineOf(whole, plane, wholeLines, linesAbove + lines - 1) + bytesBefore);
    const auto least =
        static_cast<std::size_t>(std::abs(is.stride) * (lines - 1) + lineBytesOf(format, plane, part.width));
    EXPECT_GE(is.bytes, least);
    EXPECT_GE(is.data, of.data);
    EXPECT_LE(static_cast<const uint8_t *>(is.data) + is.bytes, static_cast<const uint8_t *>(of.data) + of.bytes);
  }
}

TEST(PicturePart, IsARectangleOfThePicture) {
  Random random(3);
  for (const Format &format : reference::allFormats()) {
    for (int round = 0; round < 60; ++round) {
      OwnPicture picture(format.number, between(random, 1, 40), between(random, 1, 40), picture::anyInputLie(random));
      const ZqpPicture whole = picture.view();
      const int x = between(random, 0, (picture.width() - 1) >> format.shiftX) << format.shiftX;
      const int y = between(random, 0, (picture.height() - 1) >> format.shiftY) << format.shiftY;
      const int width = between(random, 1, picture.width() - x);
      const int height = between(random, 1, picture.height() - y);
      ZqpPicture part = empty();
      ASSERT_EQ(zqpPicturePart(&whole, x, y, width, height, &part), ZQP_OK)
          << format.name << " " << x << " " << y << " " << width << "x" << height;
      EXPECT_EQ(part.recordSize, sizeof part);
      EXPECT_EQ(part.format, format.number);
      EXPECT_EQ(part.width, width);
      EXPECT_EQ(part.height, height);
      expectPart(whole, part, x, y);
      ZqpPicture itself = whole;
      ASSERT_EQ(zqpPicturePart(&itself, x, y, width, height, &itself), ZQP_OK);
      expectPart(whole, itself, x, y);
      EXPECT_EQ(itself.width, width);
    }
  }
}

/// A part as input is the picture that holds its samples; as output it is written, and nothing around it.
TEST(PicturePart, IsConvertedAsAPicture) {
  Random random(4);
  for (const Format &format : reference::allFormats()) {
    OwnPicture picture(format.number, 31, 23, picture::anyInputLie(random));
    const int x = between(random, 0, 15 >> format.shiftX) << format.shiftX;
    const int y = between(random, 0, 11 >> format.shiftY) << format.shiftY;
    const ZqpPicture whole = picture.view();
    ZqpPicture part = empty();
    ASSERT_EQ(zqpPicturePart(&whole, x, y, 9, 7, &part), ZQP_OK);
    OwnPicture copy(format.number, 9, 7);
    for (int component = 0; component < format.components; ++component) {
      for (int line = 0; line < linesOf(format, component, 7); ++line) {
        for (int column = 0; column < columnsOf(format, component, 9); ++column) {
          copy.setSample(component, column, line,
                         picture.sample(component, column + (x >> shiftXOf(format, component)),
                                        line + (y >> shiftYOf(format, component))));
        }
      }
    }
    const ZqpConversion c = picture::usual(format.number, ZQP_BGRA, 9, 7);
    OwnPicture made(ZQP_BGRA, 9, 7, {8, 8, 4, false});
    OwnPicture expected = made;
    convertExactly(c, copy, expected);
    const auto converter = picture::makeConverter(c);
    const ZqpPicture out = made.view();
    ASSERT_EQ(zqpConvert(converter.get(), &part, &out), ZQP_OK);
    EXPECT_EQ(difference(made, expected), "") << format.name;
  }
}

TEST(PicturePart, AsOutputNothingAroundItIsWritten) {
  Random random(5);
  for (const int32_t number : picture::outputFormats()) {
    const Format &format = reference::formatOf(number);
    OwnPicture made(number, 31, 23, picture::anyOutputLie(random));
    OwnPicture expected = made;
    const int x = 4;
    const int y = 6;
    const ZqpPicture whole = made.view();
    ZqpPicture part = empty();
    ASSERT_EQ(zqpPicturePart(&whole, x, y, 9, 7, &part), ZQP_OK);
    OwnPicture in(ZQP_RGBA, 9, 7);
    OwnPicture small(number, 9, 7);
    const ZqpConversion c = picture::usual(ZQP_RGBA, number, 9, 7);
    convertExactly(c, in, small);
    for (int component = 0; component < format.components; ++component) {
      const int pairs = format.places[component].perGroup;
      const int columns = (columnsOf(format, component, 9) + pairs - 1) / pairs * pairs;
      for (int line = 0; line < linesOf(format, component, 7); ++line) {
        for (int column = 0; column < columns; ++column) {
          expected.setSample(component, column + (x >> shiftXOf(format, component)),
                             line + (y >> shiftYOf(format, component)), small.sample(component, column, line));
        }
      }
    }
    const auto converter = picture::makeConverter(c);
    const ZqpPicture from = in.view();
    ASSERT_EQ(zqpConvert(converter.get(), &from, &part), ZQP_OK);
    EXPECT_EQ(difference(made, expected), "") << format.name;
  }
}

int32_t errorOfPart(int32_t format, int x, int y, int width, int height,
                    const std::function<void(ZqpPicture &)> &spoil = nullptr) {
  OwnPicture picture(format, 16, 12);
  ZqpPicture whole = picture.view();
  if (spoil) {
    spoil(whole);
  }
  ZqpPicture part = empty();
  const ZqpPicture before = part;
  const int32_t error = zqpPicturePart(&whole, x, y, width, height, &part);
  EXPECT_EQ(std::memcmp(&part, &before, sizeof part) == 0, error != ZQP_OK);
  return error;
}

TEST(PicturePart, RefusesWhatDoesNotLieInThePicture) {
  for (const Format &format : reference::allFormats()) {
    EXPECT_EQ(errorOfPart(format.number, 0, 0, 16, 12), ZQP_OK);
    EXPECT_EQ(errorOfPart(format.number, 8, 8, 8, 4), ZQP_OK);
    EXPECT_EQ(errorOfPart(format.number, 8, 8, 9, 4), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, 8, 8, 8, 5), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, 16, 0, 1, 1), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, 0, 12, 1, 1), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, -4, 0, 4, 4), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, 0, -4, 4, 4), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, 4, 4, 32768, 4), ZQP_ERR_CROP);
    EXPECT_EQ(errorOfPart(format.number, kMost & ~7, kMost & ~7, 8, 8), ZQP_ERR_CROP);
    for (const int side : {kLeast, -1, 0}) {
      EXPECT_NE(errorOfPart(format.number, 0, 0, side, 4), ZQP_OK);
      EXPECT_NE(errorOfPart(format.number, 0, 0, 4, side), ZQP_OK);
    }
  }
}

TEST(PicturePart, BeginsOnAWholeChromaSample) {
  for (const Format &format : reference::allFormats()) {
    for (int at = 0; at < 8; ++at) {
      EXPECT_EQ(errorOfPart(format.number, at, 0, 3, 3), at % (1 << format.shiftX) == 0 ? ZQP_OK : ZQP_ERR_CROP)
          << format.name << " column " << at;
      EXPECT_EQ(errorOfPart(format.number, 0, at, 3, 3), at % (1 << format.shiftY) == 0 ? ZQP_OK : ZQP_ERR_CROP)
          << format.name << " line " << at;
    }
  }
}

TEST(PicturePart, RefusesPicturesThatAreNone) {
  const auto errorWhere = [](const std::function<void(ZqpPicture &)> &spoil) {
    return errorOfPart(ZQP_NV12, 2, 2, 5, 5, spoil);
  };
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.recordSize -= 1; }), ZQP_ERR_RECORD);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.format = 0; }), ZQP_ERR_FORMAT);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.format = 26; }), ZQP_ERR_FORMAT);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.width = 0; }), ZQP_ERR_SIZE);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.height = ZQP_MOST_PIXELS + 1; }), ZQP_ERR_SIZE);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.planes[1].stride = 15; }), ZQP_ERR_STRIDE);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.planes[0].stride = -15; }), ZQP_ERR_STRIDE);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.planes[1].bytes -= 1; }), ZQP_ERR_PLANE);
  EXPECT_EQ(errorWhere([](ZqpPicture &p) { p.planes[1].data = nullptr; }), ZQP_ERR_PLANE);
  OwnPicture picture(ZQP_NV12, 16, 12);
  const ZqpPicture whole = picture.view();
  ZqpPicture part = empty();
  EXPECT_EQ(zqpPicturePart(nullptr, 2, 2, 5, 5, &part), ZQP_ERR_NULL);
  EXPECT_EQ(zqpPicturePart(&whole, 2, 2, 5, 5, nullptr), ZQP_ERR_NULL);
  part.recordSize = 0;
  EXPECT_EQ(zqpPicturePart(&whole, 2, 2, 5, 5, &part), ZQP_ERR_RECORD);
}

} // namespace
