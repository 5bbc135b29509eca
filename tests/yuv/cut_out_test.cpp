// Conversions to planar 4:2:0 that are asked to scale: they cut the output's size out of the picture's top left corner.
// The planes remain the input's, whatever is cut out of them, and so does the last line that a chroma line can come
// from.
#include "reference/direct.h"
#include "reference/direct_expect.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace reference;
using support::Canvas;
using support::Fill;
using support::Picture;

struct CutOut {
  int inType, outType;
  int width, height;
  int outWidth, outHeight;
  uint32_t rotation = ROTATION_NONE;
};

ConvertParams recordOf(const CutOut &c, const Picture &picture) {
  ConvertParams p = support::blankParams();
  picture.describe(p);
  p.outType = c.outType;
  p.outWidth = c.outWidth;
  p.outHeight = c.outHeight;
  p.isResize = 1;
  p.rotation = c.rotation;
  return p;
}

/// Converts by the library and by the model; both must give `want`, guards included.
void expectBoth(const CutOut &c, const Picture &picture, const Canvas &want, const Canvas &fresh) {
  ConvertParams p = recordOf(c, picture);
  Canvas model = fresh;
  model.describe(p);
  convertDirect(p, {});
  EXPECT_EQ(model.difference(want), "") << "reference, type " << c.inType << " to " << c.outType;
  Canvas library = fresh;
  library.describe(p);
  EXPECT_EQ(support::convertOnce(p), CC_OK);
  EXPECT_EQ(library.difference(want), "") << "library, type " << c.inType << " to " << c.outType;
}

/// `u` and `v` give the bytes of both chroma planes of the output by column and line; luma is the upright cut-out.
template <typename Luma, typename U, typename V>
void expectPlanes(const CutOut &c, const Picture &picture, Size written, const Luma &luma, const U &u, const V &v) {
  const int stride = written.width + 3;
  const Canvas fresh = Canvas::forPicture(c.outType, written.width, written.height, stride);
  Canvas want = fresh;
  for (int y = 0; y < written.height; ++y) {
    for (int x = 0; x < written.width; ++x) {
      lineOf(want, 0, y, stride)[x] = luma(x, y);
    }
  }
  for (int y = 0; y < written.height / 2; ++y) {
    for (int x = 0; x < written.width / 2; ++x) {
      lineOf(want, 1, y, stride >> 1)[x] = u(x, y);
      lineOf(want, 2, y, stride >> 1)[x] = v(x, y);
    }
  }
  expectBoth(c, picture, want, fresh);
}

auto uprightLuma(const Picture &picture) {
  return [&picture](int x, int y) { return lineOf(picture, 0, y, picture.stride)[x]; };
}

TEST(CutOutToYuv420, SemiPlanarLinesEndWithTheInputs) {
  // 30 x 19 has nine chroma lines; lines 10 and 12 do not exist, and the last is line 8, though a picture of 15 lines
  // would end with line 6. V comes first in type 35; U goes to the second plane of both output types.
  for (const int outType : {COLOR_YVU420_PLANAR, COLOR_YUV420_PLANAR}) {
    const CutOut c{35, outType, 30, 19, 2, 15, ROTATION_FLIP_V};
    const Picture picture(35, 30, 19, 30, Fill::Noise, 5);
    const std::vector<int> lines{0, 2, 4, 6, 8, 8, 8};
    const auto pair = [&](int x, int y, int byte) {
      return lineOf(picture, 1, lines.at(static_cast<std::size_t>(y)), 30)[2 * x + byte];
    };
    expectPlanes(
        c, picture, {2, 15}, uprightLuma(picture), [&](int x, int y) { return pair(x, y, 1); },
        [&](int x, int y) { return pair(x, y, 0); });
  }
}

TEST(CutOutToYuv420, PlanarLinesEndWithTheInputs) {
  // Of the eight chroma lines of 24 x 16, lines 0, 2, 4 and 6; a picture of eight lines would have four.
  const CutOut c{12, 3, 24, 16, 22, 8};
  for (const int stride : {24, 31}) {
    const Picture picture(12, 24, 16, stride, Fill::Noise, 6);
    expectPlanes(
        c, picture, {22, 8}, uprightLuma(picture),
        [&](int x, int y) { return lineOf(picture, 2, 2 * y, stride >> 1)[x]; },
        [&](int x, int y) { return lineOf(picture, 1, 2 * y, stride >> 1)[x]; });
  }
}

TEST(CutOutToYuv420, OtherLayoutsEndWithTheInputsPlane) {
  // Read at half the pitch of luma, chroma lines 0, 2, 4 and 6 lie 16 bytes apart. Both planes are 64 bytes: type 37
  // holds 4 lines of 16, type 4 holds 16 lines of 4. Half as many lines would end after 32.
  for (const int type : {37, 4}) {
    const CutOut c{type, 3, 16, 16, 16, 8};
    const Picture picture(type, 16, 16, 16, Fill::Noise, 7);
    expectPlanes(
        c, picture, {16, 8}, uprightLuma(picture), [&](int x, int y) { return picture.plane(1)[16 * y + x]; },
        [&](int x, int y) { return picture.plane(2)[16 * y + x]; });
  }
}

TEST(CutOutToYuv420, ALineThatEndsInThePlaneIsAsWideAsTheInputs) {
  // Type 37, 16 x 8 with lines of 20 bytes: the chroma plane ends after 36. At a pitch of 10, line 2 is the last of
  // which all 8 samples lie in it; that the 4 which are wanted of line 3 would too, makes no difference.
  const CutOut c{37, 3, 16, 8, 8, 8};
  const Picture picture(37, 16, 8, 20, Fill::Noise, 8);
  const std::vector<int> starts{0, 20, 20, 20};
  const auto sample = [&](int plane, int x, int y) {
    return picture.plane(plane)[starts.at(static_cast<std::size_t>(y)) + x];
  };
  expectPlanes(
      c, picture, {8, 8}, uprightLuma(picture), [&](int x, int y) { return sample(1, x, y); },
      [&](int x, int y) { return sample(2, x, y); });
}

TEST(CutOutToYuv420, TurnedPlanesAreCutOutInTheSameWay) {
  // Type 4, 30 x 13, has chroma planes of 7 x 13. Turned left they are 13 x 7, 91 bytes without gaps, in which sample
  // (x, y) of the input stands in column y of line 6 - x. Of the turned picture, 13 x 30, 8 x 27 is cut out: 13 chroma
  // lines of 4 samples, 12 bytes apart, as the pitch of 6 says; the last start that leaves 6 samples is 84.
  const CutOut c{4, 12, 30, 13, 27, 8, ROTATION_90_LEFT};
  for (const int stride : {30, 36}) {
    const Picture picture(4, 30, 13, stride, Fill::Noise, 9);
    const std::vector<int> starts{0, 12, 24, 36, 48, 60, 72, 84, 84, 84, 84, 84, 84};
    const auto turned = [&](int plane, int x, int y) {
      const int at = starts.at(static_cast<std::size_t>(y)) + x;
      return lineOf(picture, plane, at % 13, stride >> 2)[6 - at / 13];
    };
    expectPlanes(
        c, picture, {8, 27}, [&](int x, int y) { return lineOf(picture, 0, x, stride)[29 - y]; },
        [&](int x, int y) { return turned(1, x, y); }, [&](int x, int y) { return turned(2, x, y); });
  }
}

TEST(CutOutToYuv420, TheInputsPlanesNeedSamplesNotTheCutOutOnes) {
  // Two columns of type 4 and two lines of type 37 have no chroma of their own, but the input does.
  const Picture quarterWidth = flatPicture(4, 8, 4, 10, 20, 30);
  const Picture quarterHeight = flatPicture(37, 4, 8, 10, 20, 30);
  for (const Picture *picture : {&quarterWidth, &quarterHeight}) {
    const CutOut c{picture->type, 3, picture->width, picture->height, 2, 2};
    expectPlanes(
        c, *picture, {2, 2}, [](int, int) { return uint8_t{10}; }, [](int, int) { return uint8_t{20}; },
        [](int, int) { return uint8_t{30}; });
  }
}

TEST(CutOutToYuv420, WithoutResizingTheOutputFieldsAreThePicture) {
  // The same description with isResize 0: 8 lines have four chroma lines, and the last is line 3.
  const Picture picture(12, 24, 16, 24, Fill::Noise, 6);
  ConvertParams p = recordOf({12, 3, 24, 16, 22, 8}, picture);
  p.isResize = 0;
  const Canvas fresh = Canvas::forPicture(3, 22, 8, 22);
  Canvas library = fresh;
  library.describe(p);
  ASSERT_EQ(support::convertOnce(p), CC_OK);
  const std::vector<int> lines{0, 2, 3, 3};
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 11; ++x) {
      ASSERT_EQ(lineOf(library, 1, y, 11)[x], lineOf(picture, 2, lines.at(static_cast<std::size_t>(y)), 12)[x]);
      ASSERT_EQ(lineOf(library, 2, y, 11)[x], lineOf(picture, 1, lines.at(static_cast<std::size_t>(y)), 12)[x]);
    }
  }
}

TEST(CutOutToYuv420, AgreesWithTheModel) {
  uint32_t n = 0;
  for (const int type : {12, 1, 13, 11, 35, 0, 2, 4, 37, 34, 3, 6, 17}) {
    for (const int rotation : {2, 3, 4, 5, 6}) {
      for (int k = 0; k < 40; ++k) {
        DirectCase c;
        ++n;
        c.inType = type;
        c.outType = type == 3 || (k % 3 == 0 && !support::isPacked422(type) && type != 12) ? 12 : 3;
        c.width = 4 + static_cast<int>(n * 7 % 47);
        c.height = 4 + static_cast<int>(n * 11 % 43);
        c.rotation = rotation;
        c.isResize = 1;
        c.outWidth = 2 + static_cast<int>(n * 13) % (c.width - 1);
        c.outHeight = 2 + static_cast<int>(n * 17) % (c.height - 1);
        c.inExtra = static_cast<int>(n % 4 == 0 ? 0 : n * 3 % 21);
        c.outExtra = static_cast<int>(n % 3 == 0 ? 0 : n * 5 % 17);
        c.misalign = n % 4;
        c.seed = n;
        c.fill = static_cast<Fill>(n % 3);
        ASSERT_TRUE(matches(c));
      }
    }
  }
}

} // namespace
