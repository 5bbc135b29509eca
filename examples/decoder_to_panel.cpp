// Frames of a decoder, NV12 of 1920 x 1080, for a panel of RGB565, 800 x 480, that hangs a quarter turn to the side.
#include <cstdio>
#include <vector>
#include <zqPicture.hpp>

int main() {
  const zq::Shape video{ZQP_NV12, 1920, 1080};
  const zq::Shape panel{ZQP_RGB565, 480, 800}; // as it is wired: upright pictures are turned to fit
  ZqpConversion description = zq::conversion(video, panel);
  description.orientation = 8; // a quarter turn anticlockwise
  description.inColours.matrix = ZQP_BT709;
  description.dither = ZQP_DITHER_ORDERED;
  const auto converter = zq::Converter::make(description); // once; any number of threads may use it

  std::vector<std::byte> frame(*zq::bytesOf(video), std::byte{128}); // what the decoder gave: grey
  std::vector<std::byte> screen(*zq::bytesOf(panel));
  const auto in = zq::Picture::layOut(video, frame);
  const auto out = zq::Picture::layOut(panel, screen);

  zq::Error error = converter.error();
  if (!error)
    error = (*converter)(*in, *out); // again for every frame
  if (error) {
    std::fprintf(stderr, "%s\n", error.text());
    return 1;
  }
  std::printf("first pixel: 0x%02X%02X\n", std::to_integer<unsigned>(screen[1]), std::to_integer<unsigned>(screen[0]));
}
