// Files byte by byte, and back through other readers.
#include "error.h"
#include "workspace.h"
#include "writers.h"
#include "y4m_reader.h"
#include "zqColorConversion.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>
#include <sstream>

using namespace zqconvert;

namespace {

std::string text(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

Frame rgb565(int width, int height, std::initializer_list<unsigned> words) {
  Frame frame = makeFrame(COLOR_RGB565, width, height);
  std::size_t at = 0;
  for (const unsigned word : words) {
    frame.planes[0][at++] = static_cast<uint8_t>(word);
    frame.planes[0][at++] = static_cast<uint8_t>(word >> 8);
  }
  return frame;
}

TEST(Bmp, SixteenBitsAreTheFramesBytes) {
  std::ostringstream stream;
  writeBmp(stream, rgb565(3, 2, {0xF800, 0x07E0, 0x001F, 0x1234, 0xABCD, 0xFFFF}));
  const std::string want =
      "BM" + text({66 + 16, 0, 0, 0, 0, 0, 0, 0, 66, 0, 0, 0}) +                         // file size, reserved, offset
      text({40, 0, 0, 0, 3, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 16, 0, 3, 0, 0, 0}) + // 3 x -2, one plane, 16 bits
      text({16, 0, 0, 0, 0x13, 0x0B, 0, 0, 0x13, 0x0B, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}) +  // bytes, 72 dpi, no palette
      text({0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0}) +                           // bit fields
      text({0, 0xF8, 0xE0, 0x07, 0x1F, 0, 0, 0}) + text({0x34, 0x12, 0xCD, 0xAB, 0xFF, 0xFF, 0, 0});
  EXPECT_EQ(stream.str(), want);
}

TEST(Bmp, TwentyFourBitsAreTheFramesBytesPadded) {
  Frame frame = makeFrame(COLOR_RGB24, 3, 2);
  for (std::size_t i = 0; i < 18; ++i) {
    frame.planes[0][i] = static_cast<uint8_t>(i + 1);
  }
  std::ostringstream stream;
  writeBmp(stream, frame);
  const std::string want = "BM" + text({54 + 24, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0}) +
                           text({40, 0, 0, 0, 3, 0, 0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 1, 0, 24, 0, 0, 0, 0, 0}) +
                           text({24, 0, 0, 0, 0x13, 0x0B, 0, 0, 0x13, 0x0B, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}) +
                           text({1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0}) +
                           text({10, 11, 12, 13, 14, 15, 16, 17, 18, 0, 0, 0});
  EXPECT_EQ(stream.str(), want);
}

TEST(Bmp, EveryWidthIsPaddedToFourBytes) {
  for (int width = 1; width < 9; ++width) {
    for (const int type : {COLOR_RGB565, COLOR_RGB16_ALT, COLOR_RGB24}) {
      std::ostringstream stream;
      writeBmp(stream, workspace::noiseFrame(type, width, 5, 4));
      const int line = (tightStride(type, width) + 3) / 4 * 4;
      EXPECT_EQ(stream.str().size(), static_cast<std::size_t>((type == COLOR_RGB24 ? 54 : 66) + 5 * line));
    }
  }
}

TEST(Ppm, SpreadsBitsOverTheWholeRange) {
  std::ostringstream stream;
  writePpm(stream, rgb565(4, 1, {0xFFFF, 0x0000, 0x8410, 0x0821}));
  EXPECT_EQ(stream.str(), "P6\n4 1\n255\n" + text({255, 255, 255, 0, 0, 0, 0x84, 0x82, 0x84, 8, 4, 8}));
}

std::vector<uint8_t> decodePng(const std::string &bytes, png_uint_32 &width, png_uint_32 &height) {
  png_image image;
  std::memset(&image, 0, sizeof image);
  image.version = PNG_IMAGE_VERSION;
  EXPECT_NE(png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()), 0) << image.message;
  EXPECT_EQ(image.format, static_cast<png_uint_32>(PNG_FORMAT_RGB));
  std::vector<uint8_t> pixels(PNG_IMAGE_SIZE(image));
  EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0) << image.message;
  width = image.width;
  height = image.height;
  return pixels;
}

TEST(Png, HoldsRgb565AsRedGreenBlue) {
  std::ostringstream stream;
  writePng(stream, rgb565(2, 3, {0xF800, 0x07E0, 0x001F, 0xFFFF, 0x0000, 0x0821}));
  png_uint_32 width = 0;
  png_uint_32 height = 0;
  const std::vector<uint8_t> want{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 8, 4, 8};
  EXPECT_EQ(decodePng(stream.str(), width, height), want);
  EXPECT_EQ(width, 2U);
  EXPECT_EQ(height, 3U);
}

TEST(Png, HoldsRgb24WithRedFirst) {
  Frame frame = makeFrame(COLOR_RGB24, 2, 1);
  frame.planes[0] = {1, 2, 3, 40, 50, 60};
  std::ostringstream stream;
  writePng(stream, frame);
  png_uint_32 width = 0;
  png_uint_32 height = 0;
  EXPECT_EQ(decodePng(stream.str(), width, height), (std::vector<uint8_t>{3, 2, 1, 60, 50, 40}));
}

TEST(Y4mWriter, WhatItWritesReadsBack) {
  for (const int type : {COLOR_YUV420_PLANAR, COLOR_YVU420_PLANAR}) {
    for (const Size size : {Size{8, 6}, Size{7, 6}, Size{8, 5}, Size{7, 5}, Size{2, 2}, Size{3, 3}}) {
      const Frame frame = workspace::noiseFrame(type, size.width, size.height, 9);
      std::ostringstream out;
      writeY4mHeader(out, {type, size.width, size.height, "30000:1001", "420mpeg2"});
      writeY4mFrame(out, frame);
      writeY4mFrame(out, frame);
      std::istringstream in(out.str());
      Y4mReader reader(in, "back");
      EXPECT_EQ(reader.info().rate, "30000:1001");
      EXPECT_EQ(reader.info().siting, "420mpeg2");
      Frame back;
      ASSERT_TRUE(reader.next(back));
      ASSERT_TRUE(reader.next(back));
      const bool vFirst = type == COLOR_YVU420_PLANAR;
      for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
          EXPECT_EQ(back.planes[0].at(static_cast<std::size_t>(y * back.stride + x)),
                    frame.planes[0].at(static_cast<std::size_t>(y * size.width + x)));
        }
      }
      const int chromaWidth = size.width / 2;
      for (int y = 0; y < (size.height + 1) / 2; ++y) {
        for (int x = 0; x < (size.width + 1) / 2; ++x) {
          const int fromX = std::min(x, chromaWidth - 1);
          const int fromY = std::min(y, size.height / 2 - 1);
          const std::size_t at = workspace::at(fromY, chromaWidth, fromX);
          const std::size_t backAt = workspace::at(y, back.stride / 2, x);
          EXPECT_EQ(back.planes[1].at(backAt), frame.planes[vFirst ? 2 : 1].at(at)) << size.width << " " << x;
          EXPECT_EQ(back.planes[2].at(backAt), frame.planes[vFirst ? 1 : 2].at(at)) << size.width << " " << x;
        }
      }
      EXPECT_FALSE(reader.next(back));
    }
  }
}

TEST(Raw, LeavesOutThePaddingOfLines) {
  Frame frame = makeFrame(COLOR_YUV420_PLANAR, 4, 2);
  frame.stride = 8;
  frame.planes = {std::vector<uint8_t>{1, 2, 3, 4, 99, 99, 99, 99, 5, 6, 7, 8}, std::vector<uint8_t>{9, 10},
                  std::vector<uint8_t>{11, 12}};
  std::ostringstream stream;
  writeRaw(stream, frame);
  EXPECT_EQ(stream.str(), text({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
}

TEST(Formats, NamesAndWhatTheyHold) {
  EXPECT_EQ(formatOfName("a/b.PNG"), Format::Png);
  EXPECT_EQ(formatOfName("b.bmp"), Format::Bmp);
  EXPECT_EQ(formatOfName("x.ppm"), Format::Ppm);
  EXPECT_EQ(formatOfName("x.Y4M"), Format::Y4m);
  EXPECT_EQ(formatOfName("png"), Format::Raw);
  EXPECT_EQ(formatOfName("-"), Format::Raw);
  EXPECT_EQ(formatOfName("x.png.yuv"), Format::Raw);
  for (const char *name : {"a.raw", "a.yuv", "a.RGB565", "a.rgb", "a.bgr", "a.bin", "a.nv12", "a.uyvy422", "a.d/b"}) {
    EXPECT_EQ(formatOfName(name), Format::Raw) << name;
  }
  for (const char *name : {"a.jpg", "a.png.gz", "a.rgb24"}) {
    EXPECT_THROW(formatOfName(name), Error) << name;
  }
  EXPECT_TRUE(isY4mName("a.Y4M"));
  EXPECT_FALSE(isY4mName("y4m") || isY4mName("a.yuv") || isY4mName("a.jpg"));
  EXPECT_THROW(parseFormat("jpeg"), Error);
  EXPECT_EQ(parseFormat("Bmp"), Format::Bmp);
  for (const ColorTypeInfo &type : colorTypes()) {
    const bool rgb = type.code == 30 || type.code == 31 || type.code == 32;
    for (const Format format : {Format::Bmp, Format::Png, Format::Ppm}) {
      EXPECT_EQ(rgb, [&] {
        try {
          requireHolds(format, type.code);
          return true;
        } catch (const Error &) {
          return false;
        }
      }()) << type.constant;
    }
    EXPECT_NO_THROW(requireHolds(Format::Raw, type.code));
    if (type.code != 3 && type.code != 12) {
      EXPECT_THROW(requireHolds(Format::Y4m, type.code), Error) << type.constant;
    }
  }
  EXPECT_NO_THROW(requireHolds(Format::Y4m, 3));
  EXPECT_NO_THROW(requireHolds(Format::Y4m, 12));
}

} // namespace
