#include "error.h"
#include "pixels.h"
#include "writers.h"

#include <png.h>

#include <ostream>

namespace zqconvert {

namespace {

/// libpng reports through longjmp unless its error function throws; C++ frames lie in between, so it throws.
[[noreturn]] void pngFailed(png_structp /*png*/, png_const_charp message) {
  throw Error(std::string("cannot make the PNG: ") + message);
}

void pngWarned(png_structp /*png*/, png_const_charp /*message*/) {}

void pngWrite(png_structp png, png_bytep bytes, png_size_t count) {
  writeBytes(*static_cast<std::ostream *>(png_get_io_ptr(png)), bytes, count);
}

void pngFlush(png_structp /*png*/) {}

int colourOf(int type) {
  return type == kGrey ? PNG_COLOR_TYPE_GRAY : hasAlpha(type) ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
}

class PngWriter {
public:
  PngWriter() : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, pngFailed, pngWarned)) {
    if (png_ != nullptr) {
      info_ = png_create_info_struct(png_);
    }
    if (info_ == nullptr) {
      png_destroy_write_struct(&png_, &info_);
      throw Error("cannot make the PNG: not enough memory");
    }
  }
  PngWriter(const PngWriter &) = delete;
  PngWriter &operator=(const PngWriter &) = delete;
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

  void write(std::ostream &stream, const Frame &frame) {
    png_set_write_fn(png_, &stream, pngWrite, pngFlush);
    png_set_IHDR(png_, info_, static_cast<png_uint_32>(frame.width), static_cast<png_uint_32>(frame.height), 8,
                 colourOf(frame.type), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png_, info_);
    std::vector<uint8_t> rgb;
    for (int line = 0; line < frame.height; ++line) {
      if (frame.type == kGrey) {
        png_write_row(png_, lineOf(frame, line));
        continue;
      }
      expandLine(frame, line, PixelOrder::Rgb, true, rgb);
      png_write_row(png_, rgb.data());
    }
    png_write_end(png_, info_);
  }

private:
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

} // namespace

void writePng(std::ostream &stream, const Frame &frame) {
  PngWriter().write(stream, frame);
}

void writePpm(std::ostream &stream, const Frame &frame) {
  stream << "P6\n" << frame.width << " " << frame.height << "\n255\n";
  std::vector<uint8_t> rgb;
  for (int line = 0; line < frame.height; ++line) {
    expandLine(frame, line, PixelOrder::Rgb, false, rgb);
    writeBytes(stream, rgb.data(), rgb.size());
  }
}

void writeRaw(std::ostream &stream, const Frame &frame) {
  for (int i = 0; i < planeCount(frame.type); ++i) {
    writePlane(stream, frame, i);
  }
}

} // namespace zqconvert
