// Descriptions: what is usual, what is refused, and what is not looked at.
#include "picture/bench.h"
#include "picture/cases.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <set>
#include <string>

namespace {

constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

using Bytes = std::array<uint8_t, sizeof(ZqpConversion)>;

Bytes bytesOf(const ZqpConversion &c) {
  Bytes bytes;
  std::memcpy(bytes.data(), &c, sizeof c);
  return bytes;
}

ZqpConversion good() {
  return picture::usual(ZQP_NV12, ZQP_BGRA, 8, 6);
}

/// What zqpConverterMake() says. A pointer that is not null must become null where it refuses.
int32_t errorOf(const ZqpConversion &c) {
  char other = 0;
  auto *converter = reinterpret_cast<ZqpConverter *>(&other);
  const int32_t error = zqpConverterMake(&c, &converter);
  if (error == ZQP_OK) {
    EXPECT_NE(converter, nullptr);
    EXPECT_NE(static_cast<void *>(converter), static_cast<void *>(&other));
    zqpConverterFree(converter);
  } else {
    EXPECT_EQ(converter, nullptr) << zqpErrorText(error);
  }
  return error;
}

/// Of the good description with one member changed.
template <class Member>
int32_t errorWith(Member ZqpConversion::*member, Member value) {
  ZqpConversion c = good();
  c.*member = value;
  return errorOf(c);
}

template <class Member>
int32_t errorWithColours(ZqpColours ZqpConversion::*side, Member ZqpColours::*member, Member value) {
  ZqpConversion c = good();
  c.inFormat = ZQP_NV12;
  c.outFormat = ZQP_I420;
  c.*side.*member = value;
  return errorOf(c);
}

int32_t errorWithCrop(const ZqpRect &crop) {
  return errorWith(&ZqpConversion::crop, crop);
}

TEST(ErrorText, IsASentenceOfItsOwnForEveryCode) {
  std::set<std::string> sentences;
  for (int32_t error = ZQP_OK; error <= ZQP_ERR_LINES; ++error) {
    ASSERT_NE(zqpErrorText(error), nullptr);
    EXPECT_GT(std::strlen(zqpErrorText(error)), 3U) << error;
    sentences.insert(zqpErrorText(error));
  }
  EXPECT_EQ(sentences.size(), 16U);
  for (const int32_t unknown : {-1, 16, kLeast, kMost}) {
    EXPECT_NE(zqpErrorText(unknown), nullptr) << unknown;
  }
}

TEST(ConversionInit, SetsWhatIsUsual) {
  ZqpConversion c;
  std::memset(&c, 0x5A, sizeof c);
  c.recordSize = sizeof c;
  ASSERT_EQ(zqpConversionInit(&c), ZQP_OK);
  EXPECT_EQ(c.recordSize, sizeof c);
  EXPECT_EQ(c.crop.width, 0);
  EXPECT_EQ(c.crop.height, 0);
  EXPECT_EQ(c.orientation, 1);
  EXPECT_EQ(c.filter, ZQP_FILTER_BILINEAR);
  EXPECT_EQ(c.dither, ZQP_DITHER_NONE);
  for (const ZqpColours &colours : {c.inColours, c.outColours}) {
    EXPECT_EQ(colours.matrix, ZQP_BT601);
    EXPECT_EQ(colours.range, ZQP_RANGE_USUAL);
    EXPECT_EQ(colours.siting, ZQP_SITING_LEFT);
  }
  EXPECT_NE(errorOf(c), ZQP_OK) << "it has no formats and no sizes yet";
  c.inFormat = ZQP_NV12;
  c.outFormat = ZQP_RGB565;
  c.inWidth = c.outWidth = 3;
  c.inHeight = c.outHeight = 5;
  EXPECT_EQ(errorOf(c), ZQP_OK);
}

TEST(ConversionInit, RefusesNullAndOtherRecords) {
  EXPECT_EQ(zqpConversionInit(nullptr), ZQP_ERR_NULL);
  for (const uint32_t size : {0U, 4U, static_cast<uint32_t>(sizeof(ZqpConversion)) - 1,
                              static_cast<uint32_t>(sizeof(ZqpConversion)) + 4, 0xFFFFFFFFU}) {
    ZqpConversion c;
    std::memset(&c, 0x5A, sizeof c);
    c.recordSize = size;
    const Bytes before = bytesOf(c);
    EXPECT_EQ(zqpConversionInit(&c), ZQP_ERR_RECORD) << size;
    EXPECT_EQ(bytesOf(c), before) << size;
  }
}

TEST(Description, RefusesNullAndOtherRecords) {
  const ZqpConversion c = good();
  EXPECT_EQ(errorOf(c), ZQP_OK);
  EXPECT_EQ(zqpConverterMake(&c, nullptr), ZQP_ERR_NULL);
  char other = 0;
  auto *converter = reinterpret_cast<ZqpConverter *>(&other);
  EXPECT_EQ(zqpConverterMake(nullptr, &converter), ZQP_ERR_NULL);
  EXPECT_EQ(converter, nullptr);
  for (const uint32_t size : {0U, 4U, static_cast<uint32_t>(sizeof c) - 1, static_cast<uint32_t>(sizeof c) + 4}) {
    EXPECT_EQ(errorWith(&ZqpConversion::recordSize, size), ZQP_ERR_RECORD) << size;
  }
  zqpConverterFree(nullptr);
}

TEST(Description, RefusesFormatsThatCannotBe) {
  for (const int32_t number : {kLeast, -1, 0, 26, kMost}) {
    EXPECT_EQ(errorWith(&ZqpConversion::inFormat, number), ZQP_ERR_FORMAT) << number;
    EXPECT_EQ(errorWith(&ZqpConversion::outFormat, number), ZQP_ERR_FORMAT) << number;
  }
  for (const reference::Format &format : reference::allFormats()) {
    EXPECT_EQ(errorWith(&ZqpConversion::inFormat, format.number), ZQP_OK) << format.name;
    EXPECT_EQ(errorWith(&ZqpConversion::outFormat, format.number), format.isInputOnly ? ZQP_ERR_FORMAT : ZQP_OK)
        << format.name;
  }
}

TEST(Description, RefusesSizesThatCannotBe) {
  for (const auto side :
       {&ZqpConversion::inWidth, &ZqpConversion::inHeight, &ZqpConversion::outWidth, &ZqpConversion::outHeight}) {
    for (const int32_t size : {kLeast, -1, 0, ZQP_MOST_PIXELS + 1, kMost}) {
      EXPECT_EQ(errorWith(side, size), ZQP_ERR_SIZE) << size;
    }
    EXPECT_EQ(errorWith(side, 1), ZQP_OK);
    EXPECT_EQ(errorWith(side, ZQP_MOST_PIXELS), ZQP_OK);
  }
}

TEST(Description, RefusesCropsThatDoNotLieInThePicture) {
  for (const ZqpRect &crop : {ZqpRect{0, 0, 8, 6}, ZqpRect{7, 5, 1, 1}, ZqpRect{3, 1, 5, 5}, ZqpRect{1, 1, 1, 1}}) {
    EXPECT_EQ(errorWithCrop(crop), ZQP_OK) << crop.x << " " << crop.y << " " << crop.width << " " << crop.height;
  }
  for (const ZqpRect &crop :
       {ZqpRect{0, 0, 9, 6}, ZqpRect{0, 0, 8, 7}, ZqpRect{1, 0, 8, 6}, ZqpRect{0, 1, 8, 6}, ZqpRect{-1, 0, 4, 4},
        ZqpRect{0, -1, 4, 4}, ZqpRect{8, 0, 1, 1}, ZqpRect{0, 6, 1, 1}, ZqpRect{0, 0, 0, 6}, ZqpRect{0, 0, 8, 0},
        ZqpRect{0, 0, -1, 4}, ZqpRect{0, 0, 4, -1}, ZqpRect{4, 4, kMost, 1}, ZqpRect{4, 4, 1, kMost},
        ZqpRect{kMost, 0, 1, 1}, ZqpRect{kMost, kMost, kMost, kMost}, ZqpRect{kLeast, 0, kLeast, 1}}) {
    EXPECT_EQ(errorWithCrop(crop), ZQP_ERR_CROP) << crop.x << " " << crop.y << " " << crop.width << " " << crop.height;
  }
}

TEST(Description, RefusesNumbersWithoutAMeaning) {
  for (const int32_t number : {kLeast, -1, 9, kMost}) {
    EXPECT_EQ(errorWith(&ZqpConversion::orientation, number), ZQP_ERR_ORIENTATION) << number;
  }
  for (const int32_t number : {kLeast, -1, 3, kMost}) {
    EXPECT_EQ(errorWith(&ZqpConversion::filter, number), ZQP_ERR_FILTER) << number;
  }
  for (const int32_t number : {kLeast, -1, 2, kMost}) {
    ZqpConversion c = good();
    c.outFormat = ZQP_RGB565;
    c.dither = number;
    EXPECT_EQ(errorOf(c), ZQP_ERR_DITHER) << number;
  }
}

TEST(Description, RefusesColoursThatCannotBe) {
  for (const auto side : {&ZqpConversion::inColours, &ZqpConversion::outColours}) {
    for (const int32_t number : {kLeast, -1, kMost}) {
      EXPECT_EQ(errorWithColours(side, &ZqpColours::matrix, number), ZQP_ERR_COLOURS) << number;
      EXPECT_EQ(errorWithColours(side, &ZqpColours::range, number), ZQP_ERR_COLOURS) << number;
      EXPECT_EQ(errorWithColours(side, &ZqpColours::siting, number), ZQP_ERR_COLOURS) << number;
    }
    EXPECT_EQ(errorWithColours(side, &ZqpColours::matrix, 4), ZQP_ERR_COLOURS);
    EXPECT_EQ(errorWithColours(side, &ZqpColours::range, 3), ZQP_ERR_COLOURS);
    EXPECT_EQ(errorWithColours(side, &ZqpColours::siting, 2), ZQP_ERR_COLOURS);
  }
}

TEST(Description, RefusesKrAndKbThatCannotBe) {
  const float endless = std::numeric_limits<float>::infinity();
  const float none = std::nanf("");
  const auto errorWithGiven = [](ZqpColours ZqpConversion::*side, float kr, float kb) {
    ZqpConversion c = good();
    c.outFormat = ZQP_I444;
    c.*side = {ZQP_MATRIX_GIVEN, ZQP_RANGE_FULL, ZQP_SITING_CENTRE, kr, kb};
    return errorOf(c);
  };
  for (const auto side : {&ZqpConversion::inColours, &ZqpConversion::outColours}) {
    EXPECT_EQ(errorWithGiven(side, .3F, .1F), ZQP_OK);
    EXPECT_EQ(errorWithGiven(side, .01F, .78F), ZQP_OK);
    EXPECT_EQ(errorWithGiven(side, .25F, .5F), ZQP_OK);
    for (const float bad : {0.F, -.1F, .9F, 2.F, endless, -endless, none}) {
      EXPECT_EQ(errorWithGiven(side, bad, .1F), ZQP_ERR_COLOURS) << bad;
      EXPECT_EQ(errorWithGiven(side, .1F, bad), ZQP_ERR_COLOURS) << bad;
    }
    EXPECT_EQ(errorWithGiven(side, .5F, .40625F), ZQP_ERR_COLOURS);
  }
}

TEST(Description, DoesNotLookAtKrAndKbOfAMatrixThatHasItsOwn) {
  for (const auto side : {&ZqpConversion::inColours, &ZqpConversion::outColours}) {
    EXPECT_EQ(errorWithColours(side, &ZqpColours::kr, std::nanf("")), ZQP_OK);
    EXPECT_EQ(errorWithColours(side, &ZqpColours::kb, -1.F), ZQP_OK);
  }
}

TEST(Description, LooksAtMatrixAndRangeOfGrey) {
  for (const auto colour : {&ZqpColours::matrix, &ZqpColours::range}) {
    ZqpConversion c = picture::usual(ZQP_BGRA, ZQP_GREY, 3, 3);
    c.outColours.*colour = 99;
    EXPECT_EQ(errorOf(c), ZQP_ERR_COLOURS);
  }
}

} // namespace
