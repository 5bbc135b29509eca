// A hundred thousand set-ups and one-shot calls leave no memory behind, and handles do not disturb each other.
#include "containment/cells.h"
#include "support/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <malloc.h>

#if defined(__has_feature)
#define ZQCC_CLANG_HAS_ASAN __has_feature(address_sanitizer)
#else
#define ZQCC_CLANG_HAS_ASAN 0
#endif
#if defined(__SANITIZE_ADDRESS__) || ZQCC_CLANG_HAS_ASAN
#define ZQCC_OWN_ALLOCATOR 1
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // GCC does not ship the header
#endif

namespace {

using containment::Mode;
using support::Canvas;
using support::Fill;
using support::Picture;

/// Bytes that the program holds on its heap.
std::size_t heapInUse() {
#if defined(ZQCC_OWN_ALLOCATOR)
  return __sanitizer_get_current_allocated_bytes();
#else
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

constexpr int kRounds = 100000;
/// The first rounds may grow the runtime's own structures.
constexpr int kWarmUp = 100;

/// One of each kind of set-up: tables of every format, split chroma, turned planes, none, and two that are refused.
const std::vector<ConvertParams> &descriptions() {
  static const std::vector<ConvertParams> kAll = [] {
    std::vector<ConvertParams> all;
    const containment::Sizes scaled{24, 20, 17, 11};
    for (const Mode &mode : {Mode{3, 30, 1, 2, 0}, Mode{3, 30, 1, 2, 2}, Mode{3, 30, 1, 2, 3}, Mode{3, 32, 1, 2, 0},
                             Mode{3, 3, 1, 2, 0}, Mode{3, 3, 1, 2, 1}, Mode{6, 6, 1, 3, 0}, Mode{11, 30, 1, 2, 0},
                             Mode{35, 30, 0, 5, 0}, Mode{4, 30, 1, 3, 0}, Mode{37, 3, 1, 4, 0}, Mode{30, 30, 1, 2, 0},
                             Mode{3, 30, 0, 3, 0}, Mode{3, 30, 1, 8, 0}, Mode{3, 30, 1, 2, 4}}) {
      all.push_back(containment::recordOf(mode, scaled));
      all.back().inStride = 24;
    }
    return all;
  }();
  return kAll;
}

TEST(Endurance, SetUpsLeaveNothingBehind) {
  ConvertContext *handle = nullptr;
  ASSERT_EQ(zqCCInit(&handle), CC_OK);
  std::size_t before = 0;
  uint32_t accepted = 0;
  for (int round = 0; round < kRounds; ++round) {
    if (round % 1000 == kWarmUp) { // now and then a new handle, released with everything it holds
      zqCCUninit(handle);
      ASSERT_EQ(zqCCInit(&handle), CC_OK);
      before = before == 0 ? heapInUse() : before;
      ASSERT_EQ(heapInUse(), before) << "after " << round << " set-ups";
    }
    ConvertParams params = descriptions()[static_cast<std::size_t>(round) % descriptions().size()];
    accepted += zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params) == CC_OK ? 1 : 0;
  }
  zqCCUninit(handle);
  ASSERT_EQ(zqCCInit(&handle), CC_OK);
  EXPECT_EQ(heapInUse(), before);
  EXPECT_EQ(zqCCUninit(handle), CC_OK);
  EXPECT_GT(accepted, 0.85 * kRounds) << "only two descriptions of the fifteen are refused";
}

/// Calls of every one-shot function on small pictures, some of which are refused on the way.
uint32_t oneShot(int number, const uint8_t *in, uint8_t *out) {
  switch (number % 12) {
  case 0:
    return zqScaleFrame(in, out, 8, 8, 5, 6, 3, 0);
  case 1:
    return zqScaleFrame(in, out, 8, 8, 5, 6, 30, 2);
  case 2:
    return zqScaleCroppedFrame(in, out, 12, 12, 2, 2, 8, 8, 6, 5, 6, 1);
  case 3:
    return zqRotateFrame(in, out, 8, 8, 8, 8, 30, 3);
  case 4:
    return zqRotateCroppedFrame(in, out, 12, 12, 2, 2, 8, 8, 8, 8, 3, 5);
  case 5:
    return zqColorConvert(in, out, 11, 30, 8, 8, 8, nullptr);
  case 6:
    return zqYUV420PlanartoRGB16Rotate(in, out, 12, 12, 2, 2, 8, 8, 0, 8, 0, 0, 4);
  case 7:
    return zqYUV422PacktoRGB16Rotate(8, in, out, 12, 0, 4, 2, 8, 8, 0, 8, 0, 0, 3);
  case 8:
    return zqYUV420PacktoRGB16Rotate(in, out, 12, 12, 2, 2, 8, 8, 0, 8, 0, 0, 2);
  case 9:
    return zqYUV420Pack2toRGB16Rotate(in, out, 12, 12, 2, 2, 8, 8, 0, 8, 0, 0, 5);
  case 10:
    return zqScaleFrame(in, out, 8, 8, 5, 6, 12, 2); // no filter for this type
  default:
    return zqColorConvert(in, out, 3, 3, 8, 8, 8, nullptr); // nothing to convert
  }
}

TEST(Endurance, OneShotCallsLeaveNothingBehind) {
  std::vector<uint8_t> in(12 * 12 * 4, 90);
  std::vector<uint8_t> out(12 * 12 * 4);
  std::size_t before = 0;
  uint32_t accepted = 0;
  for (int round = 0; round < kRounds; ++round) {
    before = round == kWarmUp ? heapInUse() : before;
    accepted += oneShot(round, in.data(), out.data()) == CC_OK ? 1 : 0;
  }
  EXPECT_EQ(heapInUse(), before);
  EXPECT_EQ(accepted, static_cast<uint32_t>(kRounds - 2 * (kRounds / 12))) << "two kinds of twelve are refused";
}

/// A handle with a conversion of its own, its picture, and what it makes of it when nobody else is there.
struct Worker {
  Worker(const Mode &mode, const containment::Sizes &sizes, int stride)
      : picture(mode.inType, sizes.width, sizes.height, stride, Fill::Noise, 5),
        canvas(Canvas::forPicture(mode.outType, sizes.outWidth, sizes.outHeight,
                                  support::tightStride(mode.outType, sizes.outWidth))),
        alone(canvas) {
    params = containment::recordOf(mode, sizes);
    picture.describe(params);
    params.outType = mode.outType;
  }
  uint32_t convertInto(Canvas &target) {
    picture.describe(params);
    target.describe(params);
    return zqCCProcess(handle, &params);
  }
  Picture picture;
  Canvas canvas;
  Canvas alone;
  ConvertParams params{};
  ConvertContext *handle = nullptr;
};

TEST(Endurance, InterleavedHandlesAndOneShotCalls) {
  std::array<Worker, 2> workers{Worker({11, 30, 1, 2, 1}, {32, 20, 21, 27}, 32),
                                Worker({3, 3, 1, 2, 0}, {18, 26, 40, 30}, 20)};
  for (Worker &worker : workers) {
    ASSERT_EQ(zqCCInit(&worker.handle), CC_OK);
    ASSERT_EQ(zqCCSetParameter(worker.handle, PARAM_CONVERT_DESC, &worker.params), CC_OK);
    ASSERT_EQ(worker.convertInto(worker.alone), CC_OK);
    ASSERT_NE(worker.alone.touched(), "");
  }
  const std::vector<uint8_t> in(12 * 12 * 4, 90);
  std::array<std::vector<uint8_t>, 10> alone;
  for (std::size_t i = 0; i < alone.size(); ++i) {
    alone[i].assign(12 * 12 * 4, 0);
    ASSERT_EQ(oneShot(static_cast<int>(i), in.data(), alone[i].data()), CC_OK);
  }
  for (int round = 0; round < 200; ++round) {
    Worker &worker = workers[static_cast<std::size_t>(round % 2)];
    Canvas canvas = worker.canvas;
    ASSERT_EQ(worker.convertInto(canvas), CC_OK);
    ASSERT_EQ(canvas.difference(worker.alone), "") << "round " << round;
    const auto kind = static_cast<std::size_t>(round * 7 % 10);
    std::vector<uint8_t> out(12 * 12 * 4, 0);
    ASSERT_EQ(oneShot(static_cast<int>(kind), in.data(), out.data()), CC_OK);
    ASSERT_EQ(out, alone[kind]) << "round " << round;
  }
  for (Worker &worker : workers) {
    EXPECT_EQ(zqCCUninit(worker.handle), CC_OK);
  }
}

} // namespace
