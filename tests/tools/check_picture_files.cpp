// PNG and BMP files as input: hand-made ones of every kind, damaged ones, and what the program wrote itself.
#include "error.h"
#include "picture_bytes.h"
#include "picture_readers.h"
#include "workspace.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <png.h>

#include <sstream>

using namespace zqconvert;
using testing::HasSubstr;
using workspace::Folder;

namespace {

std::string little(std::initializer_list<uint32_t> values, int size) {
  std::string bytes;
  for (const uint32_t value : values) {
    for (int i = 0; i < size; ++i) {
      bytes.push_back(static_cast<char>(value >> (8 * i)));
    }
  }
  return bytes;
}

struct Bitmap {
  int width = 3;
  int height = 2;
  uint32_t bits = 24;
  uint32_t compression = 0;
  std::string masks = {};    ///< Behind the 40 bytes that all headers have.
  uint32_t headerBytes = 40; ///< What the second header says of itself.
  std::string between = {};  ///< Before the pixels.
  std::string pixels = {};

  [[nodiscard]] std::string file() const {
    const auto offset = static_cast<uint32_t>(54 + masks.size() + between.size());
    return "BM" + little({offset + static_cast<uint32_t>(pixels.size()), 0, offset}, 4) +
           little({headerBytes, static_cast<uint32_t>(width), static_cast<uint32_t>(height)}, 4) +
           little({1, bits}, 2) + little({compression, 0, 0, 0, 0, 0}, 4) + masks + between + pixels;
  }
};

Frame readBmp(const std::string &file) {
  std::istringstream stream(file);
  BmpReader reader(stream, "a.bmp");
  Frame frame;
  EXPECT_TRUE(reader.next(frame));
  EXPECT_EQ(frame.type, reader.info().type);
  Frame second;
  EXPECT_FALSE(reader.next(second));
  return frame;
}

std::string pixelsOf(const Frame &frame) {
  return {frame.planes[0].begin(), frame.planes[0].end()};
}

// Lines of three pixels of 24 bits are filled up by three bytes.
const std::string kUpper = "abcdefghi";
const std::string kLower = "ABCDEFGHI";

TEST(BmpReader, LinesOfEitherDirection) {
  Bitmap bitmap;
  bitmap.pixels = kLower + "..." + kUpper + "...";
  const Frame up = readBmp(bitmap.file());
  EXPECT_EQ(up.type, COLOR_RGB24);
  EXPECT_EQ(pixelsOf(up), kUpper + kLower);
  bitmap.height = -2;
  bitmap.pixels = kUpper + "..." + kLower; // what fills the last line up may be missing
  EXPECT_EQ(pixelsOf(readBmp(bitmap.file())), kUpper + kLower);
}

TEST(BmpReader, SixteenBits) {
  Bitmap bitmap{.width = 2, .height = -1, .bits = 16};
  bitmap.pixels = little({0x7FFF, 0x4210}, 2); // without masks five bits each
  EXPECT_EQ(pixelsOf(readBmp(bitmap.file())), "\xFF\xFF\xFF\x84\x84\x84");
  bitmap.compression = 3;
  bitmap.masks = little({0xF800, 0x07E0, 0x001F}, 4);
  const Frame frame = readBmp(bitmap.file());
  EXPECT_EQ(frame.type, COLOR_RGB565);
  EXPECT_EQ(pixelsOf(frame), bitmap.pixels);
  bitmap.masks = little({0x0F00, 0x00F0, 0x000F, 0xF000}, 4);
  bitmap.compression = 6;
  bitmap.pixels = little({0x81F2, 0xF000}, 2);
  const Frame four = readBmp(bitmap.file());
  EXPECT_EQ(four.type, int{kBgra});
  EXPECT_EQ(pixelsOf(four), std::string("\x22\xFF\x11\x88\0\0\0\xFF", 8));
}

TEST(BmpReader, ThirtyTwoBits) {
  Bitmap bitmap{.width = 1, .height = 1, .bits = 32};
  bitmap.pixels = "bgrx"; // the fourth byte says nothing without a mask
  const Frame plain = readBmp(bitmap.file());
  EXPECT_EQ(plain.type, COLOR_RGB24);
  EXPECT_EQ(pixelsOf(plain), "bgr");
  bitmap.compression = 3;
  bitmap.masks = little({0x000000FF, 0x0000FF00, 0x00FF0000}, 4);
  EXPECT_EQ(pixelsOf(readBmp(bitmap.file())), "rgb");
  // The long headers have a mask of alpha, and more behind it that nobody needs.
  bitmap.headerBytes = 108;
  bitmap.masks = little({0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000}, 4) + std::string(52, 'x');
  bitmap.between = "a profile";
  const Frame alpha = readBmp(bitmap.file());
  EXPECT_EQ(alpha.type, int{kBgra});
  EXPECT_EQ(pixelsOf(alpha), "bgrx");
  bitmap.masks = little({0x3FF00000, 0x000FFC00, 0x000003FF, 0}, 4) + std::string(52, 'x'); // ten bits each
  bitmap.pixels = little({0x3FF00000 | (512U << 10) | 1}, 4);
  EXPECT_EQ(pixelsOf(readBmp(bitmap.file())), std::string("\0\x80\xFF", 3));
}

TEST(BmpReader, WhatIsNotTakenIsRefusedInOneLine) {
  Bitmap good;
  good.pixels = std::string(24, 'p');
  ASSERT_NO_THROW(readBmp(good.file()));
  const auto changed = [&](auto change) {
    Bitmap bitmap = good;
    change(bitmap);
    return bitmap.file();
  };
  for (const auto &[file, words] : std::vector<std::pair<std::string, std::string>>{
           {"BX", "not a bitmap"},
           {"B", "ends in the middle"},
           {good.file().substr(0, 40), "ends in the middle"},
           {good.file().substr(0, 70), "ends in the middle"},
           {changed([](Bitmap &b) { b.bits = 8; }), "of 8 bits"},
           {changed([](Bitmap &b) { b.bits = 0; }), "of 0 bits"},
           {changed([](Bitmap &b) { b.compression = 1; }), "compressed"},
           {changed([](Bitmap &b) { b.compression = 3; }), "compressed"},
           {changed([](Bitmap &b) { b.width = 0; }), "without pixels"},
           {changed([](Bitmap &b) { b.width = -3; }), "without pixels"},
           {changed([](Bitmap &b) { b.height = 0; }), "without pixels"},
           {changed([](Bitmap &b) { b.height = -2147483647 - 1; }), "without pixels"},
           {changed([](Bitmap &b) { b.width = 70000; }), "out of range"},
           {changed([](Bitmap &b) { b.headerBytes = 12; }), "sizes that are not taken"},
           {changed([](Bitmap &b) { b.headerBytes = 124; }), "sizes that are not taken"},
           {changed([](Bitmap &b) { b.headerBytes = 0xFFFFFFF0; }), "sizes that are not taken"},
           {changed([](Bitmap &b) {
              b.bits = 32, b.compression = 3, b.masks = little({0xF0F, 0xF0, 1}, 4);
            }),
            "masks"},
           {changed([](Bitmap &b) {
              b.bits = 32, b.compression = 3, b.masks = little({0xF00, 0, 1}, 4);
            }),
            "masks"},
           {changed([](Bitmap &b) {
              b.bits = 16, b.compression = 3, b.masks = little({0xF0000, 6, 1}, 4);
            }),
            "masks"},
       }) {
    try {
      readBmp(file);
      ADD_FAILURE() << "taken: " << words;
    } catch (const Error &error) {
      EXPECT_THAT(error.what(), testing::StartsWith("a.bmp: "));
      EXPECT_THAT(error.what(), HasSubstr(words));
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
  }
}

struct PngKind {
  int colour;
  int depth;
  bool interlaced = false;
};

void append(png_structp png, png_bytep bytes, png_size_t count) {
  static_cast<std::string *>(png_get_io_ptr(png))->append(reinterpret_cast<const char *>(bytes), count);
}

/// A PNG of these lines; palettes are 10 20 30, 40 50 60 and so on.
std::string pngOf(const PngKind &kind, Size size, std::string lines) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  std::string file;
  png_set_write_fn(png, &file, append, nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(size.width), static_cast<png_uint_32>(size.height), kind.depth,
               kind.colour, kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  const std::array<png_color, 4> palette{{{10, 20, 30}, {40, 50, 60}, {70, 80, 90}, {100, 110, 120}}};
  if (kind.colour == PNG_COLOR_TYPE_PALETTE) {
    png_set_PLTE(png, info, palette.data(), 4);
  }
  const std::size_t lineBytes = lines.size() / static_cast<std::size_t>(size.height);
  std::vector<png_bytep> rows;
  for (std::size_t y = 0; y < static_cast<std::size_t>(size.height); ++y) {
    rows.push_back(reinterpret_cast<png_bytep>(lines.data() + y * lineBytes));
  }
  png_set_rows(png, info, rows.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return file;
}

std::string readPng(const std::string &file, int type) {
  std::istringstream stream(file);
  PngReader reader(stream, "a.png");
  EXPECT_EQ(reader.info().type, type);
  Frame frame;
  EXPECT_TRUE(reader.next(frame));
  Frame second;
  EXPECT_FALSE(reader.next(second));
  return pixelsOf(frame);
}

TEST(PngReader, EveryKindBecomesEightBitRgb) {
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_RGB, 8}, {2, 1}, "rgbRGB"), kRgb24), "rgbRGB");
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_RGB_ALPHA, 8}, {2, 1}, "rgbaRGBA"), kRgba), "rgbaRGBA");
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_GRAY, 8}, {2, 2}, "wxyz"), kRgb24), "wwwxxxyyyzzz");
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_GRAY_ALPHA, 8}, {1, 1}, "ya"), kRgba), "yyya");
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_GRAY, 1}, {4, 1}, "\x50"), kRgb24),
            std::string("\0\0\0\xFF\xFF\xFF\0\0\0\xFF\xFF\xFF", 12));
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_PALETTE, 2}, {3, 1}, "\x1C"), kRgb24),
            std::string("\x0A\x14\x1E\x28\x32\x3C\x64\x6E\x78"));
  // 16 bits to the nearest 8: 0x8081 / 257 is 128.00..., 0x7FFF / 257 is 127.5 less a little.
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_GRAY, 16}, {2, 1}, "\x80\x81\x7F\xFF"), kRgb24), "\x80\x80\x80\x7F\x7F\x7F");
  const std::string noise = workspace::bytes(std::size_t{3} * 17 * 11, 3);
  EXPECT_EQ(readPng(pngOf({PNG_COLOR_TYPE_RGB, 8, true}, {17, 11}, noise), kRgb24), noise);
}

TEST(PngReader, DamageIsRefusedInOneLine) {
  const std::string good = pngOf({PNG_COLOR_TYPE_RGB, 8}, {17, 11}, workspace::bytes(std::size_t{3} * 17 * 11, 3));
  ASSERT_NO_THROW(readPng(good, kRgb24));
  std::string flipped = good;
  flipped[good.size() / 2] = static_cast<char>(flipped[good.size() / 2] ^ 0x40);
  std::string huge = good;
  huge.replace(16, 4, "\x7F\xFF\xFF\xFF");
  for (const std::string &file : {good.substr(0, 5), good.substr(0, 20), good.substr(0, good.size() / 2),
                                  good.substr(0, good.size() - 5), flipped, huge, "\x89PNX" + good.substr(4)}) {
    try {
      readPng(file, kRgb24);
      ADD_FAILURE() << "taken";
    } catch (const Error &error) {
      EXPECT_THAT(error.what(), testing::StartsWith("a.png: "));
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
  }
}

class PictureFiles : public testing::Test {
protected:
  /// Raw noise of the type to a file and back.
  std::string thereAndBack(const std::string &type, std::size_t pixelBytes, const char *file) {
    const std::string raw = folder_.file("in.raw", workspace::bytes(pixelBytes * 19 * 7, 5));
    EXPECT_EQ(picture_bytes::job({"--size", "19x7", "--from", type, "--to", type, raw, folder_.path(file)}), "");
    EXPECT_EQ(picture_bytes::job({"--to", type, folder_.path(file), folder_.path("out.raw")}), "");
    EXPECT_TRUE(workspace::readFile(folder_.path("out.raw")) == workspace::readFile(raw)) << type << " " << file;
    return workspace::readFile(folder_.path(file));
  }
  Folder folder_;
};

TEST_F(PictureFiles, ComeBackAsTheyWere) {
  for (const char *file : {"way.png", "way.bmp"}) {
    thereAndBack("rgb24", 3, file);
    thereAndBack("bgr24", 3, file);
    thereAndBack("rgba", 4, file);
    thereAndBack("bgra", 4, file);
    thereAndBack("rgb565", 2, file);
    thereAndBack("rgb565be", 2, file);
  }
}

TEST_F(PictureFiles, HoldAlphaWhereThePictureHasIt) {
  EXPECT_EQ(thereAndBack("rgba", 4, "a.png")[25], PNG_COLOR_TYPE_RGB_ALPHA);
  // Without --to the file of a picture with alpha has it, too.
  EXPECT_EQ(picture_bytes::job({folder_.path("a.png"), folder_.path("a.bmp")}), "");
  EXPECT_EQ(picture_bytes::job({"--to", "rgba", folder_.path("a.bmp"), folder_.path("b.raw")}), "");
  EXPECT_TRUE(workspace::readFile(folder_.path("b.raw")) == workspace::readFile(folder_.path("in.raw")));
  const std::string bmp = workspace::readFile(folder_.path("a.bmp"));
  EXPECT_EQ(bmp.substr(10, 8), little({122, 108}, 4));
  EXPECT_EQ(bmp.substr(28, 2), little({32}, 2));
}

TEST_F(PictureFiles, GreyIsSpreadFromBlackToWhite) {
  const std::string raw = folder_.file("in.raw", "\x10\x7E\xEB"); // black, a grey and white of limited range
  ASSERT_EQ(picture_bytes::job({"--size", "3x1", "--from", "grey", raw, folder_.path("a.png")}), "");
  const std::string png = workspace::readFile(folder_.path("a.png"));
  EXPECT_EQ(png[25], PNG_COLOR_TYPE_GRAY);
  Size size;
  EXPECT_EQ(picture_bytes::pixelsOfPng(png, size), std::string("\0\0\0\x80\x80\x80\xFF\xFF\xFF", 9));
}

} // namespace
