// Helpers that lay planes out and cut parts of pictures out.
#include "picture/bench.h"
#include "picture/reference/exact_model.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>

namespace {

using picture::between;
using picture::Random;
using reference::Format;

constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

std::size_t strideOf(const Format &format, int plane, int width, uint32_t alignment) {
  const auto bytes = static_cast<std::size_t>(lineBytesOf(format, plane, width));
  return (bytes + alignment - 1) / alignment * alignment;
}

std::size_t bytesOf(const Format &format, int width, int height, uint32_t alignment) {
  std::size_t bytes = 0;
  for (int plane = 0; plane < planesOf(format); ++plane) {
    bytes += strideOf(format, plane, width, alignment) * static_cast<std::size_t>(planeLinesOf(format, plane, height));
  }
  return bytes;
}

ZqpPicture empty() {
  ZqpPicture picture;
  std::memset(&picture, 0x5A, sizeof picture);
  picture.recordSize = sizeof picture;
  return picture;
}

TEST(PictureBytes, AreThoseOfThePlanes) {
  Random random(1);
  for (const Format &format : reference::allFormats()) {
    for (uint32_t alignment = 1; alignment <= 4096; alignment *= 2) {
      const int width = between(random, 1, 70);
      const int height = between(random, 1, 70);
      std::size_t bytes = 0;
      ASSERT_EQ(zqpPictureBytes(format.number, width, height, alignment, &bytes), ZQP_OK);
      EXPECT_EQ(bytes, bytesOf(format, width, height, alignment)) << format.name << " " << width << "x" << height;
    }
  }
}

TEST(PictureBytes, OfTheLargestPicture) {
  if (sizeof(std::size_t) < 8) {
    GTEST_SKIP() << "it has no place in the address space";
  }
  for (const Format &format : reference::allFormats()) {
    std::size_t bytes = 0;
    ASSERT_EQ(zqpPictureBytes(format.number, ZQP_MOST_PIXELS, ZQP_MOST_PIXELS, 4096, &bytes), ZQP_OK);
    EXPECT_EQ(bytes, bytesOf(format, ZQP_MOST_PIXELS, ZQP_MOST_PIXELS, 4096)) << format.name;
  }
}

/// What zqpPictureBytes() and zqpPictureLayOut() say, neither of which writes anything then.
int32_t errorOf(int32_t format, int32_t width, int32_t height, uint32_t alignment) {
  std::size_t bytes = 12345;
  const int32_t error = zqpPictureBytes(format, width, height, alignment, &bytes);
  std::array<uint8_t, 64> memory{};
  ZqpPicture picture = empty();
  const ZqpPicture before = picture;
  EXPECT_EQ(zqpPictureLayOut(&picture, format, width, height, alignment, memory.data(), memory.size()), error);
  if (error != ZQP_OK) {
    EXPECT_EQ(bytes, 12345U);
    EXPECT_EQ(std::memcmp(&picture, &before, sizeof picture), 0);
  }
  return error;
}

TEST(PictureBytes, RefuseWhatCannotBe) {
  EXPECT_EQ(errorOf(ZQP_NV12, 3, 3, 2), ZQP_OK);
  for (const int32_t format : {kLeast, -1, 0, 26, kMost}) {
    EXPECT_EQ(errorOf(format, 3, 3, 2), ZQP_ERR_FORMAT) << format;
  }
  for (const int32_t side : {kLeast, -1, 0, ZQP_MOST_PIXELS + 1, kMost}) {
    EXPECT_EQ(errorOf(ZQP_NV12, side, 3, 2), ZQP_ERR_SIZE) << side;
    EXPECT_EQ(errorOf(ZQP_NV12, 3, side, 2), ZQP_ERR_SIZE) << side;
  }
  for (const uint32_t alignment : {0U, 3U, 6U, 4095U, 8192U, 0x80000000U, 0xFFFFFFFFU}) {
    EXPECT_EQ(errorOf(ZQP_NV12, 3, 3, alignment), ZQP_ERR_STRIDE) << alignment;
  }
  EXPECT_EQ(zqpPictureBytes(ZQP_NV12, 3, 3, 1, nullptr), ZQP_ERR_NULL);
}

TEST(PictureLayOut, PutsPlanesOneBehindTheOther) {
  Random random(2);
  for (const Format &format : reference::allFormats()) {
    for (int round = 0; round < 20; ++round) {
      const int width = between(random, 1, 70);
      const int height = between(random, 1, 70);
      const uint32_t alignment = 1U << between(random, 0, 7);
      std::vector<uint8_t> memory(bytesOf(format, width, height, alignment));
      ZqpPicture picture = empty();
      ASSERT_EQ(zqpPictureLayOut(&picture, format.number, width, height, alignment, memory.data(), memory.size()),
                ZQP_OK);
      EXPECT_EQ(picture.recordSize, sizeof picture);
      EXPECT_EQ(picture.format, format.number);
      EXPECT_EQ(picture.width, width);
      EXPECT_EQ(picture.height, height);
      const uint8_t *begin = memory.data();
      for (int plane = 0; plane < planesOf(format); ++plane) {
        const std::size_t stride = strideOf(format, plane, width, alignment);
        const std::size_t bytes = stride * static_cast<std::size_t>(planeLinesOf(format, plane, height));
        EXPECT_EQ(picture.planes[plane].data, begin);
        EXPECT_EQ(picture.planes[plane].stride, static_cast<ptrdiff_t>(stride));
        EXPECT_EQ(picture.planes[plane].bytes, bytes);
        begin += bytes;
      }
    }
  }
}

TEST(PictureLayOut, RefusesMemoryThatIsNoneOrTooLittle) {
  std::vector<uint8_t> memory(4096);
  for (const Format &format : reference::allFormats()) {
    const std::size_t bytes = bytesOf(format, 13, 7, 8);
    ZqpPicture picture = empty();
    const ZqpPicture before = picture;
    EXPECT_EQ(zqpPictureLayOut(&picture, format.number, 13, 7, 8, memory.data(), bytes - 1), ZQP_ERR_PLANE);
    EXPECT_EQ(zqpPictureLayOut(&picture, format.number, 13, 7, 8, memory.data(), 0), ZQP_ERR_PLANE);
    EXPECT_EQ(zqpPictureLayOut(&picture, format.number, 13, 7, 8, nullptr, bytes), ZQP_ERR_PLANE);
    EXPECT_EQ(std::memcmp(&picture, &before, sizeof picture), 0);
    EXPECT_EQ(zqpPictureLayOut(nullptr, format.number, 13, 7, 8, memory.data(), bytes), ZQP_ERR_NULL);
    picture.recordSize = sizeof picture - 4;
    EXPECT_EQ(zqpPictureLayOut(&picture, format.number, 13, 7, 8, memory.data(), bytes), ZQP_ERR_RECORD);
    EXPECT_EQ(picture.width, before.width);
  }
}

} // namespace
