#include "zqPicture.hpp"

#include <type_traits>

// A file that includes nothing else, without exceptions and run-time types, and uses what the header declares.
zq::Error convertOnce(std::span<const std::byte> luma, std::span<const std::byte> chroma, std::span<std::byte> pixels);
zq::Error convertOnce(std::span<const std::byte> luma, std::span<const std::byte> chroma, std::span<std::byte> pixels) {
  const zq::Shape in = {ZQP_NV12, 16, 8};
  const zq::Shape out = {ZQP_RGB565, 16, 8};
  const zq::Result<zq::Converter> converter = zq::Converter::make(zq::conversion(in, out));
  const zq::Result<zq::Picture> to = zq::Picture::layOut(out, pixels);
  if (!converter || !to) {
    return converter ? to.error() : converter.error();
  }
  const zq::Picture from = zq::Picture(in).plane(0, luma, 16).plane(1, chroma, 16);
  const zq::Error error = (*converter)(from, *to);
  return error ? error : converter->lines(from, *to, 0, 4);
}

static_assert(std::is_nothrow_move_constructible_v<zq::Converter> && !std::is_copy_constructible_v<zq::Converter>);
static_assert(std::is_trivially_copyable_v<zq::Picture> && std::is_trivially_copyable_v<zq::Error>);
