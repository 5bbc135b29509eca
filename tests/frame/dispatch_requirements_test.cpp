// What a frame must bring along: planes, a set-up that agrees with it, sizes that can be.
#include "frame/dispatch_fixture.h"
#include "reference/result_code.h"

#include <functional>
#include <utility>

namespace {

using frame_test::DispatchFixture;
using frame_test::kRoutes;
using frame_test::nameOf;
using frame_test::shrink;

class DispatchRequirements : public DispatchFixture {};

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
