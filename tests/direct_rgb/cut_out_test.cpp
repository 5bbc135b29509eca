// Flips to 16-bit RGB that are asked to scale: they turn the output's size, cut out of the picture's top left corner,
// upside down. The planes remain the input's: a lone last column or line of what is cut out has the chroma that the
// input gives it.
#include "reference/direct.h"
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace reference;
using support::Canvas;
using support::Picture;

/// All luma 100; V is 128 + 8 * column and U 128 + 8 * line of the chroma sample.
Picture numbered(int type, int width, int height, int stride) {
  Picture picture(type, width, height, stride, support::Fill::Flat, 100);
  const bool vFirst = type == 12 || type == 13;
  for (const int plane : {1, 2}) {
    if (support::isSemiPlanar(type)) {
      break;
    }
    const support::PlaneShape shape = support::planeShape(type, width, height, stride, plane);
    const bool isV = (plane == 1) == vFirst;
    for (int y = 0; y < shape.lines; ++y) {
      for (int x = 0; x < shape.lineBytes; ++x) {
        lineOf(picture, plane, y, shape.stride)[x] = static_cast<uint8_t>(128 + 8 * (isV ? x : y));
      }
    }
  }
  for (int y = 0; support::isSemiPlanar(type) && y < height / 2; ++y) {
    for (int x = 0; x < width / 2; ++x) {
      uint8_t *pair = lineOf(picture, 1, y, stride) + 2 * x;
      pair[type == 11 ? 0 : 1] = static_cast<uint8_t>(128 + 8 * y);
      pair[type == 11 ? 1 : 0] = static_cast<uint8_t>(128 + 8 * x);
    }
  }
  return picture;
}

/// With every coefficient one, red is (100 + 8 * sample) >> 3 = 12 + sample and blue 12 + line, which no dither offset
/// (-3 to 2) can change. Green is (100 - 8 * (sample + line)) >> 2 = 25 - 2 * (sample + line) where its offset is 0,
/// one less where it is -1 to -3.
uint16_t pixelOf(int sample, int line, bool evenCell) {
  const int green = std::max(25 - 2 * (sample + line) - (evenCell ? 0 : 1), 0);
  return static_cast<uint16_t>((12 + sample) << 11 | green << 5 | (12 + line));
}

/// `samples` and `lines` are the chroma samples of the output's columns and of the source's lines.
void expectFlip(const Picture &picture, int outType, const std::vector<int> &samples, const std::vector<int> &lines) {
  const DitherRestorer restorer;
  const MatrixChoice ones = MatrixChoice::customOf({512.0, 512.0, 512.0, 512.0});
  const auto w = static_cast<int>(samples.size());
  const auto h = static_cast<int>(lines.size());
  const int stride = 2 * w + 5;
  ConvertParams p = support::blankParams();
  picture.describe(p);
  p.outType = outType;
  p.outWidth = w;
  p.outHeight = h;
  p.isResize = 1;
  p.rotation = ROTATION_FLIP_V;
  const Canvas fresh = Canvas::forPicture(outType, w, h, stride);
  Canvas want = fresh;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const uint16_t word = pixelOf(samples.at(static_cast<std::size_t>(x)), lines.at(static_cast<std::size_t>(y)),
                                    x % 2 == 0 && y % 2 == 0);
      uint8_t *at = lineOf(want, 0, h - 1 - y, stride) + 2 * static_cast<std::ptrdiff_t>(x);
      at[0] = static_cast<uint8_t>(word & 0xFF);
      at[1] = static_cast<uint8_t>(word >> 8);
    }
  }
  Canvas model = fresh;
  model.describe(p);
  convertDirect(p, ones.colour());
  EXPECT_EQ(model.difference(want), "") << "reference, type " << picture.type;
  Canvas library = fresh;
  library.describe(p);
  EXPECT_EQ(convertWith(p, ones), CC_OK);
  EXPECT_EQ(library.difference(want), "") << "library, type " << picture.type;
}

/// 0, ..., 0, 1, ..., 1, ...: each number `times` times, `count` in all.
std::vector<int> steps(int count, int times) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    numbers[i] = static_cast<int>(i) / times;
  }
  return numbers;
}

TEST(FlippedCutOut, TheLoneColumnTakesItsOwnSample) {
  // 11 columns have five samples, so column 6 takes sample 3, though seven columns would have three.
  for (const int type : {13, 1}) {
    expectFlip(numbered(type, 11, 16, 11), COLOR_RGB16_ALT, {0, 0, 1, 1, 2, 2, 3}, {0, 0, 1});
    expectFlip(numbered(type, 11, 16, 19), COLOR_RGB565, {0, 0, 1, 1, 2, 2, 3}, {0, 0, 1});
  }
  for (const int type : {3, 12, 11, 35}) {
    expectFlip(numbered(type, 11, 16, 11), COLOR_RGB565, {0, 0, 1, 1, 2, 2, 3}, {0, 0, 1});
  }
  for (const int type : {3, 11}) {
    expectFlip(numbered(type, 30, 11, 30), COLOR_RGB565, steps(29, 2), steps(8, 2));
  }
}

TEST(FlippedCutOut, TheLoneLineTakesItsOwnSample) {
  for (const int type : {3, 12, 11, 35}) {
    expectFlip(numbered(type, 12, 11, 14), COLOR_RGB565, steps(6, 2), {0, 0, 1, 1, 2, 2, 3});
    expectFlip(numbered(type, 12, 11, 14), COLOR_RGB16_ALT, {0, 0, 1}, {0, 0, 1});
  }
}

TEST(FlippedCutOut, TheInputsLastSampleIsTheLast) {
  // All of 11 x 11: five samples and five lines, the sixth and lone column and line take the last.
  expectFlip(numbered(3, 11, 11, 11), COLOR_RGB565, {0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4},
             {0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4});
}

TEST(FlippedCutOut, OtherLayoutsTakeTheirOwnSamples) {
  // Quarter width: four samples, of which 7 columns would have one.
  expectFlip(numbered(4, 16, 8, 16), COLOR_RGB565, {0, 0, 0, 0, 1, 1, 1}, steps(5, 1));
  // Quarter height: four lines.
  expectFlip(numbered(37, 8, 16, 8), COLOR_RGB565, steps(7, 1), {0, 0, 0, 0, 1, 1, 1});
  // Half height: even samples, and line 3 for line 6.
  expectFlip(numbered(2, 8, 11, 9), COLOR_RGB16_ALT, {0, 0, 2, 2, 4, 4, 6}, {0, 0, 1, 1, 2, 2, 3});
  expectFlip(numbered(0, 8, 8, 8), COLOR_RGB565, steps(7, 1), steps(5, 1));
}

TEST(FlippedCutOut, ASinglePixelNeedsNoChromaOfItsOwn) {
  for (const int type : {3, 12, 1, 13, 11, 35, 2, 4, 37, 0}) {
    expectFlip(numbered(type, 8, 8, 8), COLOR_RGB565, {0}, {0});
  }
}

TEST(FlippedCutOut, AgreesWithTheModel) {
  uint32_t n = 0;
  for (const int type : {3, 12, 1, 13, 11, 35, 0, 2, 4, 37, 34}) {
    for (int k = 0; k < 80; ++k) {
      DirectCase c;
      ++n;
      c.inType = type;
      c.outType = k % 3 == 0 ? COLOR_RGB16_ALT : COLOR_RGB565;
      c.width = 4 + static_cast<int>(n * 7 % 47);
      c.height = 4 + static_cast<int>(n * 11 % 43);
      c.rotation = ROTATION_FLIP_V;
      c.isResize = 1;
      c.outWidth = 1 + static_cast<int>(n * 13) % c.width;
      c.outHeight = 1 + static_cast<int>(n * 17) % c.height;
      c.inExtra = static_cast<int>(n % 4 == 0 ? 0 : n * 3 % 21);
      c.outExtra = static_cast<int>(n % 3 == 0 ? 0 : n * 5 % 17);
      c.misalign = n % 4;
      c.seed = n;
      c.fill = static_cast<support::Fill>(n % 3);
      c.matrix = MatrixChoice::entryOf(n % 3);
      ASSERT_TRUE(matches(c));
    }
  }
}

} // namespace
