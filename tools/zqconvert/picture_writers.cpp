#include "error.h"
#include "writers.h"

#include <png.h>

#include <array>
#include <initializer_list>
#include <ostream>

namespace zqconvert {

namespace {

void putLittle(std::vector<uint8_t> &bytes, std::initializer_list<uint32_t> values, int size) {
  for (const uint32_t value : values) {
    for (int i = 0; i < size; ++i) {
      bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
  }
}

const uint8_t *lineOf(const Frame &frame, int line) {
  return frame.planes[0].data() + static_cast<std::size_t>(line) * static_cast<std::size_t>(frame.stride);
}

/// One line as bytes R, G, B.
void expandLine(const Frame &frame, int line, std::vector<uint8_t> &rgb) {
  const uint8_t *in = lineOf(frame, line);
  rgb.clear();
  if (colorType(frame.type).family == Family::Rgb24) {
    for (int x = 0; x < frame.width; ++x, in += 3) {
      rgb.insert(rgb.end(), {in[2], in[1], in[0]});
    }
    return;
  }
  for (int x = 0; x < frame.width; ++x, in += 2) {
    const unsigned word = in[0] | (unsigned{in[1]} << 8);
    const unsigned red = word >> 11;
    const unsigned green = (word >> 5) & 63;
    const unsigned blue = word & 31;
    rgb.push_back(static_cast<uint8_t>((red << 3) | (red >> 2)));
    rgb.push_back(static_cast<uint8_t>((green << 2) | (green >> 4)));
    rgb.push_back(static_cast<uint8_t>((blue << 3) | (blue >> 2)));
  }
}

/// libpng reports through longjmp unless its error function throws; C++ frames lie in between, so it throws.
[[noreturn]] void pngFailed(png_structp /*png*/, png_const_charp message) {
  throw Error(std::string("cannot make the PNG: ") + message);
}

void pngWarned(png_structp /*png*/, png_const_charp /*message*/) {}

void pngWrite(png_structp png, png_bytep bytes, png_size_t count) {
  writeBytes(*static_cast<std::ostream *>(png_get_io_ptr(png)), bytes, count);
}

void pngFlush(png_structp /*png*/) {}

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
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png_, info_);
    std::vector<uint8_t> rgb;
    for (int line = 0; line < frame.height; ++line) {
      expandLine(frame, line, rgb);
      png_write_row(png_, rgb.data());
    }
    png_write_end(png_, info_);
  }

private:
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

} // namespace

void writeBmp(std::ostream &stream, const Frame &frame) {
  const bool bitFields = colorType(frame.type).family == Family::Rgb16;
  const uint32_t headerBytes = bitFields ? 66 : 54;
  const auto lineBytes = static_cast<uint32_t>(frame.shape(0).lineBytes);
  const uint32_t padding = (4 - lineBytes % 4) % 4;
  const uint32_t imageBytes = (lineBytes + padding) * static_cast<uint32_t>(frame.height);

  std::vector<uint8_t> header{'B', 'M'};
  putLittle(header, {headerBytes + imageBytes, 0, headerBytes}, 4);
  // A negative height says that the first line of the file is the picture's top.
  putLittle(header, {40, static_cast<uint32_t>(frame.width), static_cast<uint32_t>(-frame.height)}, 4);
  putLittle(header, {1, bitFields ? 16U : 24U}, 2);
  constexpr uint32_t kPixelsPerMetre = 2835; // 72 dots an inch
  putLittle(header, {bitFields ? 3U : 0U, imageBytes, kPixelsPerMetre, kPixelsPerMetre, 0, 0}, 4);
  if (bitFields) {
    putLittle(header, {0xF800, 0x07E0, 0x001F}, 4);
  }
  writeBytes(stream, header.data(), header.size());
  constexpr std::array<uint8_t, 3> kZeros{};
  for (int line = 0; line < frame.height; ++line) {
    writeBytes(stream, lineOf(frame, line), lineBytes);
    writeBytes(stream, kZeros.data(), padding);
  }
}

void writePng(std::ostream &stream, const Frame &frame) {
  PngWriter().write(stream, frame);
}

void writePpm(std::ostream &stream, const Frame &frame) {
  stream << "P6\n" << frame.width << " " << frame.height << "\n255\n";
  std::vector<uint8_t> rgb;
  for (int line = 0; line < frame.height; ++line) {
    expandLine(frame, line, rgb);
    writeBytes(stream, rgb.data(), rgb.size());
  }
}

void writeRaw(std::ostream &stream, const Frame &frame) {
  for (int i = 0; i < planeCount(frame.type); ++i) {
    writePlane(stream, frame, i);
  }
}

} // namespace zqconvert
