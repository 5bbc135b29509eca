#include "error.h"
#include "picture_readers.h"

#include <png.h>

namespace zqconvert {

/// libpng reports through longjmp unless its error function throws; C++ frames lie in between, so it throws. The
/// messages are libpng's own, so that the bytes of a damaged file do not reach the terminal.
struct PngReader::State {
  explicit State(PngReader &owner) : reader(owner) {
    png = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, failed, warned);
    info = png == nullptr ? nullptr : png_create_info_struct(png);
    if (info == nullptr) {
      png_destroy_read_struct(&png, nullptr, nullptr);
      throw Error(reader.name() + ": not enough memory");
    }
    png_set_read_fn(png, this, read);
    png_set_user_limits(png, kMaxSide, kMaxSide);
  }
  State(const State &) = delete;
  State &operator=(const State &) = delete;
  ~State() { png_destroy_read_struct(&png, &info, nullptr); }

  [[noreturn]] static void failed(png_structp png, png_const_charp message) {
    static_cast<State *>(png_get_error_ptr(png))->reader.refuse(std::string("a damaged PNG: ") + message);
  }
  static void warned(png_structp /*png*/, png_const_charp /*message*/) {}
  static void read(png_structp png, png_bytep bytes, png_size_t count) {
    static_cast<State *>(png_get_io_ptr(png))->reader.readBytes(bytes, count);
  }

  PngReader &reader;
  png_structp png = nullptr;
  png_infop info = nullptr;
};

PngReader::PngReader(std::istream &stream, const std::string &name)
    : PictureReader(stream, name), state_(std::make_unique<State>(*this)) {
  png_structp png = state_->png;
  png_read_info(png, state_->info);
  png_set_expand(png); // palettes, few bits and transparent colours
  png_set_scale_16(png);
  png_set_gray_to_rgb(png);
  passes_ = png_set_interlace_handling(png);
  png_read_update_info(png, state_->info);
  const bool alpha = (png_get_color_type(png, state_->info) & PNG_COLOR_MASK_ALPHA) != 0;
  setShape(alpha ? kRgba : kRgb24, {static_cast<int>(png_get_image_width(png, state_->info)),
                                    static_cast<int>(png_get_image_height(png, state_->info))});
}

PngReader::~PngReader() = default;

void PngReader::readPixels(Frame &frame) {
  const auto pitch = static_cast<std::size_t>(frame.stride);
  const auto lines = static_cast<std::size_t>(frame.height);
  std::vector<uint8_t> &plane = frame.planes[0];
  if (passes_ == 1) {
    for (std::size_t line = 0; line < lines; ++line) {
      plane.resize((line + 1) * pitch);
      png_read_row(state_->png, plane.data() + line * pitch, nullptr);
    }
  } else {
    plane.resize(lines * pitch); // every pass reaches to the last line
    std::vector<png_bytep> rows;
    for (std::size_t line = 0; line < lines; ++line) {
      rows.push_back(plane.data() + line * pitch);
    }
    png_read_image(state_->png, rows.data());
  }
  png_read_end(state_->png, nullptr);
}

} // namespace zqconvert
