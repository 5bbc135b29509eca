// What a frame must bring along: planes, a set-up that agrees with it, sizes that can be.
#include "frame/dispatch_fixture.h"
#include "reference/result_code.h"

#include <functional>
#include <utility>

namespace {

using frame_test::DispatchFixture;
using frame_test::nameOf;
using frame_test::shrink;

class DispatchRequirements : public DispatchFixture {};

/// Pairs of types that stand for every kind of input and output.
constexpr std::array<std::array<int, 2>, 22> kRoutes{
    {{3, 3},   {12, 12}, {30, 30}, {31, 31}, {11, 11}, {35, 35}, {6, 6},   {17, 17}, {3, 30}, {12, 31}, {1, 30},
     {13, 32}, {0, 30},  {2, 32},  {4, 3},   {37, 12}, {34, 31}, {11, 30}, {35, 3},  {9, 30}, {16, 3},  {32, 30}}};

TEST_F(DispatchRequirements, EveryPlaneThatARouteNeedsIsRequired) {
  for (const auto &route : kRoutes) {
    for (const uint32_t isResize : {0U, 1U}) {
      ConvertParams p = buffers_.describe(route[0], route[1]);
      p.isResize = isResize;
      if (isResize != 0) {
        shrink(p);
      }
      ASSERT_EQ(setUp(p), CC_OK);
      for (int i = 0; i < 3; ++i) {
        ConvertParams bad = p;
        bad.inBuf[i] = nullptr;
        if (i < support::planeCount(route[0])) {
          expectRefused(bad, "input plane");
        } else {
          EXPECT_EQ(process(bad, true), CC_OK) << nameOf(bad);
        }
        bad = p;
        bad.outBuf[i] = nullptr;
        if (i < support::planeCount(route[1])) {
          expectRefused(bad, "output plane");
        } else {
          EXPECT_EQ(process(bad, true), CC_OK) << nameOf(bad);
        }
      }
    }
  }
}

TEST_F(DispatchRequirements, ResizingNeedsItsOwnSetUp) {
  for (const auto &route : kRoutes) {
    ConvertParams p = buffers_.describe(route[0], route[1]);
    p.isResize = 1;
    shrink(p);
    if (!reference::scales(p)) {
      continue;
    }
    ConvertContext *fresh = nullptr;
    ASSERT_EQ(zqCCInit(&fresh), CC_OK);
    ConvertParams frame = p;
    EXPECT_EQ(zqCCProcess(fresh, &frame), CC_ERR_ARGUMENT) << "no set-up: " << nameOf(p);
    EXPECT_EQ(zqCCUninit(fresh), CC_OK);
    const std::array<std::function<void(ConvertParams &)>, 9> changes{
        [](ConvertParams &q) { q.inWidth = 14; },
        [](ConvertParams &q) { q.inHeight = 14; },
        [](ConvertParams &q) { q.outWidth = 10; },
        [](ConvertParams &q) { q.outHeight = 10; },
        [](ConvertParams &q) { q.isResize = 0; },
        [](ConvertParams &q) { q.rotation = ROTATION_90_LEFT; },
        [](ConvertParams &q) { q.antiAlias = 1; },
        [](ConvertParams &q) { q.inType = q.outType = 7; },
        [](ConvertParams &q) { std::swap(q.inWidth, q.inHeight), std::swap(q.outWidth, q.outHeight); }};
    for (const auto &change : changes) {
      ConvertParams other = p;
      change(other);
      ASSERT_EQ(setUp(other), CC_OK);
      expectRefused(p, "set up for something else");
    }
    ConvertParams strides = p;
    strides.inStride += 8;
    strides.outStride += 8;
    ASSERT_EQ(setUp(strides), CC_OK);
    EXPECT_EQ(process(p, true), CC_OK) << "strides may differ: " << nameOf(p);
  }
}

TEST_F(DispatchRequirements, SemiPlanarConversionNeedsScratchPlanes) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    const ConvertParams p = buffers_.describe(type, COLOR_RGB565);
    ASSERT_EQ(setUp(buffers_.describe(COLOR_YUV420_PLANAR, COLOR_RGB565)), CC_OK);
    expectRefused(p, "no scratch");
    ConvertParams small = p;
    small.inStride = 4;
    small.inWidth = small.outWidth = 4;
    small.inHeight = small.outHeight = 2;
    ASSERT_EQ(setUp(small), CC_OK);
    expectRefused(p, "scratch too small");
    ASSERT_EQ(setUp(p), CC_OK);
    EXPECT_EQ(process(p, true), CC_OK);
    ConvertParams smaller = p;
    smaller.inHeight = smaller.outHeight = 8;
    EXPECT_EQ(process(smaller, true), CC_OK);
  }
}

TEST_F(DispatchRequirements, OtherFramesNeedNoSetUp) {
  for (const auto &route : kRoutes) {
    const bool scratch = support::isSemiPlanar(route[0]) && route[0] != route[1];
    if (!scratch) {
      const ConvertParams p = buffers_.describe(route[0], route[1]);
      EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    }
  }
  EXPECT_EQ(converted_, 20);
}

TEST_F(DispatchRequirements, ResizingSizesThatCannotBe) {
  struct Sizes {
    int inWidth, inHeight, outWidth, outHeight;
  };
  const std::array<Sizes, 10> sizes{{{1, 16, 8, 8},
                                     {16, 1, 8, 8},
                                     {0, 16, 8, 8},
                                     {16, -2, 8, 8},
                                     {16, 16, 0, 8},
                                     {16, 16, 8, 0},
                                     {16, 16, -8, 8},
                                     {16, 16, 8, -8},
                                     {2, 16, 2049, 8},
                                     {16, 2, 8, 2049}}};
  for (const auto &route : kRoutes) {
    for (const Sizes &size : sizes) {
      ConvertParams p = buffers_.describe(route[0], route[1]);
      p.isResize = 1;
      p.inWidth = size.inWidth;
      p.inHeight = size.inHeight;
      p.outWidth = size.outWidth;
      p.outHeight = size.outHeight;
      EXPECT_EQ(setUp(p), CC_ERR_ARGUMENT) << nameOf(p);
      expectRefused(p, "sizes");
    }
  }
}

TEST_F(DispatchRequirements, PicturesWithoutLinesOrColumnsAreDoneAtOnce) {
  for (const auto &route : kRoutes) {
    for (const auto &size : {std::array<int, 2>{0, 16}, {16, 0}, {0, 0}}) {
      ConvertParams p = buffers_.describe(route[0], route[1]);
      p.inWidth = p.outWidth = size[0];
      p.inHeight = p.outHeight = size[1];
      EXPECT_EQ(setUp(p), CC_OK) << nameOf(p);
      EXPECT_EQ(process(p, false), CC_OK) << nameOf(p);
    }
  }
}

TEST_F(DispatchRequirements, PicturesPlacedFromTheStrideEndNeedAWholeLine) {
  struct Placement {
    int inType, outType;
    uint32_t isResize, rotation;
    int lineBytes; ///< of the 16 x 8 picture, or 16 wide lines of 8 for the right turn
    bool fromEnd;
  };
  const std::array<Placement, 16> placements{{{3, 30, 0, ROTATION_180, 32, true},
                                              {3, 30, 0, ROTATION_90_RIGHT, 16, true},
                                              {3, 30, 0, ROTATION_90_LEFT, 16, false},
                                              {3, 30, 0, ROTATION_FLIP_V, 32, false},
                                              {0, 31, 0, ROTATION_180, 32, true},
                                              {34, 30, 0, ROTATION_90_RIGHT, 16, true},
                                              {11, 30, 0, ROTATION_180, 32, true},
                                              {3, 30, 1, ROTATION_180, 32, true},
                                              {34, 30, 1, ROTATION_180, 32, true},
                                              {3, 30, 1, ROTATION_90_RIGHT, 16, false},
                                              {0, 30, 1, ROTATION_180, 32, false},
                                              {6, 30, 0, ROTATION_180, 32, true},
                                              {6, 30, 0, ROTATION_90_RIGHT, 16, false},
                                              {6, 30, 1, ROTATION_180, 32, false},
                                              {3, 3, 1, ROTATION_180, 16, true},
                                              {3, 3, 0, ROTATION_180, 16, false}}};
  for (const Placement &place : placements) {
    ConvertParams p = buffers_.describe(place.inType, place.outType);
    p.isResize = place.isResize;
    p.rotation = place.rotation;
    p.inHeight = p.outHeight = 8;
    ASSERT_EQ(setUp(p), CC_OK) << nameOf(p);
    p.outStride = place.lineBytes;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.outStride = place.lineBytes - 2;
    if (place.fromEnd) {
      expectRefused(p, "a stride shorter than a line");
      p.outStride = -80;
      expectRefused(p, "a negative stride");
    } else {
      EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    }
  }
}

TEST_F(DispatchRequirements, PicturesTooSmallForTheirChromaAreRefused) {
  struct Small {
    int type, width, height;
  };
  const std::array<Small, 14> smalls{{{1, 1, 8},
                                      {13, 1, 8},
                                      {2, 8, 1},
                                      {3, 1, 8},
                                      {3, 8, 1},
                                      {12, 1, 1},
                                      {4, 3, 8},
                                      {37, 8, 3},
                                      {11, 1, 8},
                                      {11, 8, 1},
                                      {35, 1, 8},
                                      {35, 8, 1},
                                      {12, 8, 1},
                                      {4, 1, 1}}};
  for (const Small &small : smalls) {
    ConvertParams p = buffers_.describe(small.type, COLOR_RGB565);
    p.inWidth = p.outWidth = small.width;
    p.inHeight = p.outHeight = small.height;
    ASSERT_EQ(setUp(p), CC_OK) << nameOf(p);
    expectRefused(p, "no chroma");
  }
  // One sample is enough.
  for (const Small &least : {Small{1, 2, 1},
                             {2, 1, 2},
                             {3, 2, 2},
                             {12, 3, 3},
                             {4, 4, 1},
                             {37, 1, 4},
                             {11, 2, 2},
                             {35, 3, 2},
                             {0, 1, 1},
                             {34, 1, 1},
                             {6, 1, 1},
                             {17, 1, 1}}) {
    ConvertParams p = buffers_.describe(least.type, COLOR_RGB565);
    p.inWidth = p.outWidth = least.width;
    p.inHeight = p.outHeight = least.height;
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
  }
}

TEST_F(DispatchRequirements, OutputsTooSmallForTheirChromaAreRefused) {
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YUV420_PACK}) {
    for (const auto &size : {std::array<int, 2>{1, 8}, {8, 1}}) {
      ConvertParams p = buffers_.describe(type, type);
      p.isResize = 1;
      p.outWidth = size[0];
      p.outHeight = size[1];
      EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << nameOf(p);
      EXPECT_EQ(buffers_.touched(), "");
    }
  }
}

TEST_F(DispatchRequirements, RoutesThatDoNotScaleMayCutButNotGrow) {
  struct Route {
    int inType, outType;
    uint32_t rotation;
  };
  for (const Route &route : {Route{3, 30, 6},
                             {1, 31, 6},
                             {34, 30, 6},
                             {11, 30, 6},
                             {3, 12, 2},
                             {1, 3, 3},
                             {35, 12, 2},
                             {6, 3, 2},
                             {17, 3, 4}}) {
    ConvertParams p = buffers_.describe(route.inType, route.outType);
    p.isResize = 1;
    p.rotation = route.rotation;
    shrink(p);
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    for (const auto &size : {std::array<int, 2>{17, 16}, {16, 17}}) {
      p.outWidth = size[0];
      p.outHeight = size[1];
      EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << nameOf(p);
      EXPECT_EQ(buffers_.touched(), "");
    }
  }
}

TEST_F(DispatchRequirements, FilteredTurnsHaveNoRoutine) {
  for (const int type : {3, 12, 30, 31}) {
    for (uint32_t rotation = 0; rotation < 8; ++rotation) {
      ConvertParams p = buffers_.describe(type, type);
      p.isResize = 1;
      p.antiAlias = 1;
      p.rotation = rotation;
      shrink(p);
      const bool refused = rotation == 3 || rotation == 4 || (rotation == 5 && type < 30);
      EXPECT_EQ(convert(p), refused ? CC_ERR_ARGUMENT : CC_OK) << nameOf(p);
      p.isResize = 0;
      p.outWidth = p.outHeight = 16;
      EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << nameOf(p);
    }
  }
}

} // namespace
