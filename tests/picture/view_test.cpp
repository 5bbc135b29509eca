// Views of pictures that are handed to a conversion: what is refused, and that nothing is written then.
#include "picture/bench.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <limits>

namespace {

using picture::difference;
using reference::OwnPicture;

constexpr int kWidth = 9;
constexpr int kHeight = 7;

/// A conversion, its pictures and their views, to be spoilt.
struct Scene {
  explicit Scene(int32_t inFormat = ZQP_NV12, int32_t outFormat = ZQP_I420)
      : in(inFormat, kWidth, kHeight, {0, 0, 3, false}), out(outFormat, kWidth, kHeight, {5, 6, 7, false}),
        inView(in.view()), outView(out.view()),
        converter(picture::makeConverter(picture::usual(inFormat, outFormat, kWidth, kHeight))) {}

  [[nodiscard]] int32_t convert() const { return zqpConvert(converter.get(), &inView, &outView); }

  OwnPicture in;
  OwnPicture out;
  ZqpPicture inView;
  ZqpPicture outView;
  picture::Converter converter;
};

/// What zqpConvert() and zqpConvertLines() say of a scene that was spoilt; nothing is written.
int32_t errorWhere(const std::function<void(Scene &)> &spoil, int32_t inFormat = ZQP_NV12,
                   int32_t outFormat = ZQP_I420) {
  Scene scene(inFormat, outFormat);
  spoil(scene);
  const OwnPicture before = scene.out;
  const OwnPicture inBefore = scene.in;
  const int32_t error = scene.convert();
  EXPECT_EQ(zqpConvertLines(scene.converter.get(), &scene.inView, &scene.outView, 2, 3), error);
  if (error != ZQP_OK) {
    EXPECT_EQ(difference(scene.out, before), "");
  }
  EXPECT_TRUE(error == ZQP_OK || difference(scene.in, inBefore).empty());
  return error;
}

TEST(View, AGoodOneIsTaken) {
  EXPECT_EQ(errorWhere([](Scene &) {}), ZQP_OK);
}

TEST(View, NullIsRefused) {
  Scene scene;
  const OwnPicture before = scene.out;
  EXPECT_EQ(zqpConvert(nullptr, &scene.inView, &scene.outView), ZQP_ERR_NULL);
  EXPECT_EQ(zqpConvert(scene.converter.get(), nullptr, &scene.outView), ZQP_ERR_NULL);
  EXPECT_EQ(zqpConvert(scene.converter.get(), &scene.inView, nullptr), ZQP_ERR_NULL);
  EXPECT_EQ(zqpConvertLines(nullptr, &scene.inView, &scene.outView, 0, 1), ZQP_ERR_NULL);
  EXPECT_EQ(zqpConvertLines(scene.converter.get(), nullptr, &scene.outView, 0, 1), ZQP_ERR_NULL);
  EXPECT_EQ(zqpConvertLines(scene.converter.get(), &scene.inView, nullptr, 0, 1), ZQP_ERR_NULL);
  EXPECT_EQ(difference(scene.out, before), "");
}

TEST(View, OtherRecordsAreRefused) {
  for (const uint32_t size : {0U, 4U, static_cast<uint32_t>(sizeof(ZqpPicture)) - 1,
                              static_cast<uint32_t>(sizeof(ZqpPicture)) + 8, 0xFFFFFFFFU}) {
    EXPECT_EQ(errorWhere([=](Scene &s) { s.inView.recordSize = size; }), ZQP_ERR_RECORD) << size;
    EXPECT_EQ(errorWhere([=](Scene &s) { s.outView.recordSize = size; }), ZQP_ERR_RECORD) << size;
  }
}

TEST(View, OtherFormatsAndSizesAreRefused) {
  for (const auto view : {&Scene::inView, &Scene::outView}) {
    for (const int32_t format : {0, -1, int32_t{ZQP_NV21}, int32_t{ZQP_YV12}, int32_t{ZQP_RGB_PLANES}, 26}) {
      EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).format = format; }), ZQP_ERR_VIEW) << format;
    }
    for (const int by : {-1, 1}) {
      EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).width += by; }), ZQP_ERR_VIEW);
      EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).height += by; }), ZQP_ERR_VIEW);
    }
    EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).width = -kWidth; }), ZQP_ERR_VIEW);
  }
}

/// Calls test(view, plane, bytes of a line) for every plane of every format, as an input and as an output.
void forEveryPlane(
    const std::function<void(int32_t in, int32_t out, ZqpPicture Scene::*view, int plane, int bytes)> &test) {
  for (const reference::Format &format : reference::allFormats()) {
    for (int plane = 0; plane < planesOf(format); ++plane) {
      const int bytes = lineBytesOf(format, plane, kWidth);
      test(format.number, ZQP_RGB24, &Scene::inView, plane, bytes);
      if (!format.isInputOnly) {
        test(ZQP_RGB24, format.number, &Scene::outView, plane, bytes);
      }
    }
  }
}

TEST(View, StridesShorterThanALineAreRefused) {
  forEveryPlane([](int32_t in, int32_t out, ZqpPicture Scene::*view, int plane, int bytes) {
    const auto errorWithStride = [&](ptrdiff_t stride) {
      return errorWhere([=](Scene &s) { (s.*view).planes[plane].stride = stride; }, in, out);
    };
    for (const ptrdiff_t stride :
         {ptrdiff_t{0}, ptrdiff_t{1}, ptrdiff_t{-1}, ptrdiff_t{bytes - 1}, ptrdiff_t{1 - bytes}}) {
      if (std::abs(stride) < bytes) {
        EXPECT_EQ(errorWithStride(stride), ZQP_ERR_STRIDE) << in << " to " << out << " stride " << stride;
      }
    }
    EXPECT_EQ(errorWithStride(bytes), ZQP_OK) << in << " to " << out;
    EXPECT_EQ(errorWithStride(-bytes), ZQP_OK) << in << " to " << out;
  });
}

TEST(View, StridesThatNoMemoryHoldsAreRefused) {
  forEveryPlane([](int32_t in, int32_t out, ZqpPicture Scene::*view, int plane, int) {
    constexpr ptrdiff_t most = std::numeric_limits<ptrdiff_t>::max();
    for (const ptrdiff_t stride : {most, -most, most / 4, most / 6 + 1, -most / 6 - 1}) {
      EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).planes[plane].stride = stride; }, in, out), ZQP_ERR_PLANE)
          << in << " to " << out << " stride " << stride;
    }
    EXPECT_NE(errorWhere([=](Scene &s) { (s.*view).planes[plane].stride = -most - 1; }, in, out), ZQP_OK);
  });
}

TEST(View, PlanesThatAreMissingOrTooSmallAreRefused) {
  forEveryPlane([](int32_t in, int32_t out, ZqpPicture Scene::*view, int plane, int) {
    EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).planes[plane].data = nullptr; }, in, out), ZQP_ERR_PLANE);
    EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).planes[plane].bytes -= 1; }, in, out), ZQP_ERR_PLANE);
    EXPECT_EQ(errorWhere([=](Scene &s) { (s.*view).planes[plane].bytes = 0; }, in, out), ZQP_ERR_PLANE);
  });
}

TEST(View, PlanesThatTheFormatHasNotAreNotLookedAt) {
  EXPECT_EQ(errorWhere([](Scene &s) { s.inView.planes[2] = {nullptr, -1, 7}; }), ZQP_OK);
  EXPECT_EQ(errorWhere(
                [](Scene &s) {
                  s.outView.planes[1] = s.inView.planes[0];
                  s.outView.planes[2] = {nullptr, 0, 1};
                },
                ZQP_NV12, ZQP_GREY),
            ZQP_OK);
}

/// The output's plane `plane` is moved over the input's or another one of the output.
TEST(View, OutputsThatOverlapAreRefused) {
  for (int plane = 0; plane < 3; ++plane) {
    EXPECT_EQ(errorWhere([=](Scene &s) { s.outView.planes[plane].data = s.inView.planes[0].data; }), ZQP_ERR_OVERLAP);
    EXPECT_EQ(errorWhere([=](Scene &s) { s.outView.planes[plane].data = s.outView.planes[(plane + 1) % 3].data; }),
              ZQP_ERR_OVERLAP);
  }
}

/// Luma of 9 x 7 made of memory that also holds a grey input: they touch, and are one byte into one another.
TEST(View, PlanesMayTouchButNotOverlap) {
  constexpr std::size_t size = std::size_t{kWidth} * kHeight;
  for (const bool isInputFirst : {true, false}) {
    for (const std::size_t apart : {size - 1, size, size + 1}) {
      std::vector<uint8_t> memory(3 * size, 77);
      OwnPicture shape(ZQP_GREY, kWidth, kHeight);
      ZqpPicture in = shape.view();
      ZqpPicture out = shape.view();
      in.planes[0].data = memory.data() + (isInputFirst ? 0 : apart);
      out.planes[0].data = memory.data() + (isInputFirst ? apart : 0);
      const auto converter = picture::makeConverter(picture::usual(ZQP_GREY, ZQP_GREY, kWidth, kHeight));
      ASSERT_TRUE(converter);
      EXPECT_EQ(zqpConvert(converter.get(), &in, &out), apart < size ? ZQP_ERR_OVERLAP : ZQP_OK);
    }
  }
}

TEST(View, InputPlanesMayBeTheSame) {
  EXPECT_EQ(errorWhere([](Scene &s) { s.inView.planes[2] = s.inView.planes[1]; }, ZQP_I420, ZQP_BGRA), ZQP_OK);
}

TEST(Bands, ThatDoNotLieInThePictureAreRefused) {
  constexpr int32_t least = std::numeric_limits<int32_t>::min();
  constexpr int32_t most = std::numeric_limits<int32_t>::max();
  Scene scene;
  const OwnPicture before = scene.out;
  const auto errorOf = [&](int32_t first, int32_t lines) {
    return zqpConvertLines(scene.converter.get(), &scene.inView, &scene.outView, first, lines);
  };
  for (const auto &[first, lines] : std::initializer_list<std::pair<int32_t, int32_t>>{{-1, 1},
                                                                                       {0, -1},
                                                                                       {0, kHeight + 1},
                                                                                       {kHeight, 1},
                                                                                       {1, kHeight},
                                                                                       {kHeight - 1, 2},
                                                                                       {most, 1},
                                                                                       {1, most},
                                                                                       {most, most},
                                                                                       {least, 1},
                                                                                       {3, least},
                                                                                       {-1, 2}}) {
    EXPECT_EQ(errorOf(first, lines), ZQP_ERR_LINES) << first << " " << lines;
  }
  EXPECT_EQ(errorOf(0, 0), ZQP_OK);
  EXPECT_EQ(errorOf(3, 0), ZQP_OK);
  EXPECT_EQ(difference(scene.out, before), "");
  EXPECT_EQ(errorOf(0, kHeight), ZQP_OK);
  EXPECT_NE(difference(scene.out, before), "");
}

} // namespace
