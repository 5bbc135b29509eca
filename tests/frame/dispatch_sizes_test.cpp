// Sizes and strides that a frame can have, and those that it cannot.
#include "frame/dispatch_fixture.h"

namespace {

using frame_test::DispatchFixture;
using frame_test::kRoutes;
using frame_test::nameOf;

class DispatchSizes : public DispatchFixture {};

TEST_F(DispatchSizes, ResizingSizesThatCannotBe) {
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

TEST_F(DispatchSizes, PicturesWithoutLinesOrColumnsAreDoneAtOnce) {
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

TEST_F(DispatchSizes, PicturesPlacedFromTheStrideEndNeedAWholeLine) {
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

TEST_F(DispatchSizes, PicturesTooSmallForTheirChromaAreRefused) {
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

TEST_F(DispatchSizes, OutputsTooSmallForTheirChromaAreRefused) {
  struct Small {
    int type, width, height;
    uint32_t rotation;
  };
  for (const Small &small : {Small{COLOR_YUV420_PLANAR, 1, 8, ROTATION_NONE},
                             {COLOR_YUV420_PLANAR, 8, 1, ROTATION_NONE},
                             {COLOR_YUV420_PACK, 8, 1, ROTATION_NONE},
                             {COLOR_YUV420_PACK, 1, 8, ROTATION_90_LEFT},
                             {COLOR_YUV420_PACK2, 8, 1, ROTATION_90_RIGHT}}) {
    ConvertParams p = buffers_.describe(small.type, small.type);
    p.isResize = 1;
    p.rotation = small.rotation;
    p.outWidth = small.width;
    p.outHeight = small.height;
    EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << nameOf(p);
    EXPECT_EQ(buffers_.touched(), "");
  }
}

TEST_F(DispatchSizes, ASingleUprightSemiPlanarColumnHasAPair) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, type);
    p.outWidth = 1;
    p.isResize = 1;
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    p.isResize = 0;
    p.inWidth = 1;
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    for (const uint32_t rotation : {ROTATION_90_LEFT, ROTATION_90_RIGHT}) {
      p.rotation = rotation; // turned pictures hold whole pairs only
      expectRefused(p, "no chroma");
    }
    p.rotation = ROTATION_NONE;
    p.outHeight = p.inHeight = 2;
    p.inBuf[1] = nullptr;
    expectRefused(p, "the chroma plane");
  }
}

/// What is cut out of a picture need not have chroma of its own.
TEST_F(DispatchSizes, CutOutsTakeTheInputsChroma) {
  for (const int type : {1, 2, 3, 4, 11, 12, 13, 35, 37}) {
    ConvertParams p = buffers_.describe(type, COLOR_RGB565);
    p.isResize = 1;
    p.rotation = ROTATION_FLIP_V;
    p.outWidth = p.outHeight = 1;
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    p.outType = COLOR_YUV420_PLANAR;
    p.outWidth = p.outHeight = 2;
    if (type != COLOR_YUV420_PLANAR) {
      EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    }
  }
  ConvertParams p = buffers_.describe(COLOR_YUV411_PLANAR, COLOR_RGB565);
  p.isResize = 1;
  p.rotation = ROTATION_FLIP_V;
  p.inWidth = p.outWidth = 3;
  EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << "three columns at a quarter of the width are no sample";
}

TEST_F(DispatchSizes, SizesBelowZeroAreNoPicture) {
  for (const auto &route : kRoutes) {
    for (const auto &size : {std::array<int, 2>{-4, 16}, {16, -1}, {-1, 0}, {-3, -3}}) {
      ConvertParams p = buffers_.describe(route[0], route[1]);
      ASSERT_EQ(setUp(p), CC_OK) << nameOf(p);
      p.inWidth = p.outWidth = size[0];
      p.inHeight = p.outHeight = size[1];
      expectRefused(p, "negative size");
    }
  }
}

TEST_F(DispatchSizes, StridesBelowZeroAreRefused) {
  for (const auto &route : kRoutes) {
    const ConvertParams p = buffers_.describe(route[0], route[1]);
    ASSERT_EQ(setUp(p), CC_OK) << nameOf(p);
    ConvertParams in = p;
    in.inStride = -80;
    expectRefused(in, "input stride");
    ConvertParams out = p;
    out.outStride = -80;
    expectRefused(out, "output stride");
  }
}

/// The planes are turned beforehand, so that a picture of one line is one that was asked for one column wide.
TEST_F(DispatchSizes, TurnedPlanesAreJudgedAsTheyAreOnceTurned) {
  for (const int type : {0, 2, 4, 37}) {
    for (const uint32_t rotation : {ROTATION_90_LEFT, ROTATION_90_RIGHT}) {
      ConvertParams p = buffers_.describe(type, COLOR_YUV420_PLANAR);
      p.isResize = 1;
      p.rotation = rotation;
      p.outWidth = 1;
      p.outHeight = 16;
      ASSERT_EQ(setUp(p), CC_OK) << nameOf(p);
      ConvertParams line = p;
      line.outBuf[1] = line.outBuf[2] = nullptr; // 16 x 1: there is no chroma to write
      EXPECT_EQ(process(line, true), CC_OK) << nameOf(p);
      line.inBuf[1] = nullptr; // but the planes are turned all the same
      expectRefused(line, "an input plane");
      p.outWidth = 16;
      p.outHeight = 1;
      EXPECT_EQ(convert(p), CC_ERR_ARGUMENT) << nameOf(p) << ": 1 x 16 has no chroma column";
      EXPECT_EQ(buffers_.touched(), "") << nameOf(p);
    }
  }
}

TEST_F(DispatchSizes, SemiPlanarChromaIsSplitWhateverIsMadeOfIt) {
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    ConvertParams p = buffers_.describe(type, COLOR_YUV420_PLANAR);
    p.outHeight = 1;
    EXPECT_EQ(convert(p), CC_OK) << nameOf(p);
    ConvertParams lacking = p;
    lacking.inBuf[1] = nullptr;
    expectRefused(lacking, "the chroma plane of 16 lines");
    lacking.inHeight = 1;
    EXPECT_EQ(process(lacking, true), CC_OK) << nameOf(p);
    ConvertParams narrow = p;
    narrow.inWidth = narrow.outWidth = 1;
    expectRefused(narrow, "a chroma plane without columns");
  }
}

/// These leave the output fields alone: what they say does not matter.
TEST_F(DispatchSizes, TurningCopiesOfPlanar420GoByTheInput) {
  for (const uint32_t rotation : {ROTATION_90_LEFT, ROTATION_90_RIGHT, ROTATION_180}) {
    ConvertParams p = buffers_.describe(COLOR_YUV420_PLANAR, COLOR_YUV420_PLANAR);
    p.rotation = rotation;
    p.outWidth = p.outHeight = 1;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    p.outWidth = p.outHeight = 0;
    EXPECT_EQ(process(p, true), CC_OK) << nameOf(p);
    EXPECT_EQ(converted_, 2) << nameOf(p);
    converted_ = 0;
    p.outWidth = p.outHeight = 16;
    p.inWidth = p.inHeight = 1;
    expectRefused(p, "no chroma");
    p.inHeight = 0;
    EXPECT_EQ(process(p, false), CC_OK) << nameOf(p);
  }
}

} // namespace
