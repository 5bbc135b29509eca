/**
 * @file zqPicture.hpp
 * @brief zqPicture for C++20: views over std::span, and a converter that frees itself. Nothing but inline code over
 * zqPicture.h; throws nothing and needs no exceptions.
 */
#ifndef ZQ_PICTURE_HPP
#define ZQ_PICTURE_HPP

#include "zqPicture.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

namespace zq {

/** @brief An error of the library, ZQP_OK among them; true as a condition if it is an error. */
class [[nodiscard]] Error {
public:
  constexpr Error() = default;
  constexpr explicit Error(int32_t code) : code_(code) {}
  [[nodiscard]] constexpr int32_t code() const { return code_; }
  /** @brief A sentence that says what it means. */
  [[nodiscard]] const char *text() const { return zqpErrorText(code_); }
  constexpr explicit operator bool() const { return code_ != ZQP_OK; }
  friend constexpr bool operator==(Error, Error) = default;

private:
  int32_t code_ = ZQP_OK;
};

/** @brief What an operation made, or why it did not. */
template <class T>
class [[nodiscard]] Result {
public:
  Result(T value) : value_(std::move(value)) {}
  Result(Error error) : error_(error) {}
  [[nodiscard]] explicit operator bool() const { return !error_; }
  [[nodiscard]] Error error() const { return error_; }
  /** @brief The value; an empty one unless this is true as a condition. */
  [[nodiscard]] T &operator*() & { return value_; }
  [[nodiscard]] const T &operator*() const & { return value_; }
  [[nodiscard]] T &&operator*() && { return std::move(value_); }
  [[nodiscard]] T *operator->() { return &value_; }
  [[nodiscard]] const T *operator->() const { return &value_; }

private:
  T value_{};
  Error error_;
};

/** @brief The shape of a picture. */
struct Shape {
  ZqpFormat format = ZQP_I420;
  int32_t width = 0;
  int32_t height = 0;
};

/** @brief Bytes of memory for a picture whose strides are multiples of @p alignment. */
inline Result<std::size_t> bytesOf(const Shape &shape, uint32_t alignment = 1) {
  std::size_t bytes = 0;
  const Error error{zqpPictureBytes(shape.format, shape.width, shape.height, alignment, &bytes)};
  return error ? Result<std::size_t>(error) : Result<std::size_t>(bytes);
}

/** @brief A view of a picture: like a pointer, it owns nothing and is copied freely. */
class Picture {
public:
  Picture() { view_.recordSize = sizeof view_; }
  /** @brief A picture with planes of any places and strides, set by plane(). */
  explicit Picture(const Shape &shape) : Picture() {
    view_.format = shape.format;
    view_.width = shape.width;
    view_.height = shape.height;
  }

  /** @brief Planes one after the other in @p memory, see zqpPictureLayOut(). */
  static Result<Picture> layOut(const Shape &shape, std::span<std::byte> memory, uint32_t alignment = 1) {
    Picture picture;
    const Error error{zqpPictureLayOut(&picture.view_, shape.format, shape.width, shape.height, alignment,
                                       memory.data(), memory.size())};
    return error ? Result<Picture>(error) : Result<Picture>(picture);
  }

  /**
   * @brief Sets a plane.
   * @param memory from its lowest address on.
   * @param stride bytes from a line to the next; negative for pictures that are stored bottom-up.
   */
  Picture &plane(std::size_t number, std::span<std::byte> memory, std::ptrdiff_t stride) {
    if (number < std::size(view_.planes)) {
      view_.planes[number] = {memory.data(), stride, memory.size()};
    }
    return *this;
  }
  /** @brief The same for a plane that is read only, of an input. */
  Picture &plane(std::size_t number, std::span<const std::byte> memory, std::ptrdiff_t stride) {
    return plane(number, std::span(const_cast<std::byte *>(memory.data()), memory.size()), stride);
  }

  /** @brief A view of a rectangle, see zqpPicturePart(). */
  [[nodiscard]] Result<Picture> part(const ZqpRect &rect) const {
    Picture cut;
    const Error error{zqpPicturePart(&view_, rect.x, rect.y, rect.width, rect.height, &cut.view_)};
    return error ? Result<Picture>(error) : Result<Picture>(cut);
  }

  [[nodiscard]] int32_t width() const { return view_.width; }
  [[nodiscard]] int32_t height() const { return view_.height; }
  [[nodiscard]] const ZqpPicture &view() const { return view_; }

private:
  ZqpPicture view_{};
};

/** @brief A description with the usual values; its fields are set by hand. */
inline ZqpConversion conversion(const Shape &in, const Shape &out) {
  ZqpConversion description{};
  description.recordSize = sizeof description;
  static_cast<void>(zqpConversionInit(&description));
  description.inFormat = in.format;
  description.inWidth = in.width;
  description.inHeight = in.height;
  description.outFormat = out.format;
  description.outWidth = out.width;
  description.outHeight = out.height;
  return description;
}

/** @brief A converter, shared by as many threads as one likes and freed with its owner. */
class Converter {
public:
  Converter() = default;

  static Result<Converter> make(const ZqpConversion &description) {
    Converter converter;
    ZqpConverter *made = nullptr;
    const Error error{zqpConverterMake(&description, &made)};
    converter.handle_.reset(made);
    return error ? Result<Converter>(error) : Result<Converter>(std::move(converter));
  }

  Error operator()(const Picture &in, const Picture &out) const {
    return Error{zqpConvert(handle_.get(), &in.view(), &out.view())};
  }

  /** @brief A band of output lines, see zqpConvertLines(). */
  Error lines(const Picture &in, const Picture &out, int32_t first, int32_t count) const {
    return Error{zqpConvertLines(handle_.get(), &in.view(), &out.view(), first, count)};
  }

private:
  struct Free {
    void operator()(ZqpConverter *converter) const { zqpConverterFree(converter); }
  };
  std::unique_ptr<ZqpConverter, Free> handle_;
};

} // namespace zq

#endif // ZQ_PICTURE_HPP
