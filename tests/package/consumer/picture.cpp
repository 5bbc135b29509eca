#include <zqPicture.hpp>

#include <array>

int main() {
  std::array<std::byte, 12> pixels{std::byte{255}};
  std::array<std::byte, 8> words{};
  const zq::Shape in = {ZQP_RGB24, 4, 1};
  const zq::Shape out = {ZQP_RGB565, 4, 1};
  const auto converter = zq::Converter::make(zq::conversion(in, out));
  const auto from = zq::Picture::layOut(in, pixels);
  const auto to = zq::Picture::layOut(out, words);
  if (!converter || !from || !to || (*converter)(*from, *to)) {
    return 1;
  }
  return words[1] == std::byte{0xF8} && words[3] == std::byte{0} ? 0 : 2;
}
