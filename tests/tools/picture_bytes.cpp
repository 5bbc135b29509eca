#include "picture_bytes.h"

#include "error.h"
#include "job.h"
#include "options.h"
#include "workspace.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <stdexcept>

namespace picture_bytes {

using zqconvert::Size;

namespace {

/// The bytes of a group of samples, a letter each, and how many columns and lines share it. 'y' is the luma of the
/// group's second pixel; 'l' and 'h' are the lower and upper byte of a 16-bit word.
struct Plane {
  std::string letters;
  int columns;
  int lines;
};

struct Layout {
  std::string name;
  bool output;
  std::vector<Plane> planes;
};

const std::vector<Layout> &layouts() {
  static const std::vector<Layout> all{
      {"i420", true, {{"Y", 1, 1}, {"U", 2, 2}, {"V", 2, 2}}},
      {"yv12", true, {{"Y", 1, 1}, {"V", 2, 2}, {"U", 2, 2}}},
      {"nv12", true, {{"Y", 1, 1}, {"UV", 2, 2}}},
      {"nv21", true, {{"Y", 1, 1}, {"VU", 2, 2}}},
      {"i422", true, {{"Y", 1, 1}, {"U", 2, 1}, {"V", 2, 1}}},
      {"yv16", true, {{"Y", 1, 1}, {"V", 2, 1}, {"U", 2, 1}}},
      {"i444", true, {{"Y", 1, 1}, {"U", 1, 1}, {"V", 1, 1}}},
      {"grey", true, {{"Y", 1, 1}}},
      {"yuyv", true, {{"YUyV", 2, 1}}},
      {"uyvy", true, {{"UYVy", 2, 1}}},
      {"yvyu", true, {{"YVyU", 2, 1}}},
      {"vyuy", true, {{"VYUy", 2, 1}}},
      {"rgb565", true, {{"lh", 1, 1}}},
      {"rgb565be", true, {{"hl", 1, 1}}},
      {"rgb16alt", true, {{"lh", 1, 1}}},
      {"rgb24", true, {{"RGB", 1, 1}}},
      {"bgr24", true, {{"BGR", 1, 1}}},
      {"rgba", true, {{"RGBA", 1, 1}}},
      {"bgra", true, {{"BGRA", 1, 1}}},
      {"i440", false, {{"Y", 1, 1}, {"U", 1, 2}, {"V", 1, 2}}},
      {"i411", false, {{"Y", 1, 1}, {"U", 4, 1}, {"V", 4, 1}}},
      {"yuv-quarter-height", false, {{"Y", 1, 1}, {"U", 1, 4}, {"V", 1, 4}}},
      {"yuyv2", false, {{"yUYV", 2, 1}}},
      {"uyvy2", false, {{"UyVY", 2, 1}}},
      {"yvyu2", false, {{"yVYU", 2, 1}}},
      {"vyuy2", false, {{"VyUY", 2, 1}}},
      {"rgbp", false, {{"R", 1, 1}, {"G", 1, 1}, {"B", 1, 1}}},
      {"gbrp", false, {{"G", 1, 1}, {"B", 1, 1}, {"R", 1, 1}}},
  };
  return all;
}

const Layout &layoutOf(const std::string &name) {
  const auto at = std::ranges::find(layouts(), name, &Layout::name);
  if (at == layouts().end()) {
    throw std::runtime_error("no layout " + name);
  }
  return *at;
}

int groups(int pixels, int shared) {
  return (pixels + shared - 1) / shared;
}

std::size_t bytesOf(const Plane &plane, Size size) {
  return plane.letters.size() * static_cast<std::size_t>(groups(size.width, plane.columns)) *
         static_cast<std::size_t>(groups(size.height, plane.lines));
}

int rounded(double value) {
  return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
}

int wordOf(const Rgb &colour) {
  const auto bits = [](double value, int most) { return static_cast<int>(std::lround(value * most / 255)); };
  return bits(colour[0], 31) * 2048 + bits(colour[1], 63) * 32 + bits(colour[2], 31);
}

int byteOf(char letter, const Rgb &colour, const Coding &coding) {
  const Yuv yuv = toYuv(colour, coding);
  switch (letter) {
  case 'Y':
  case 'y':
    return rounded(yuv[0]);
  case 'U':
    return rounded(yuv[1]);
  case 'V':
    return rounded(yuv[2]);
  case 'R':
    return rounded(colour[0]);
  case 'G':
    return rounded(colour[1]);
  case 'B':
    return rounded(colour[2]);
  case 'l':
    return wordOf(colour) % 256;
  case 'h':
    return wordOf(colour) / 256;
  default:
    return 255;
  }
}

/// All letters that say something of the pixel, with their bytes.
struct Letters {
  std::array<int, 128> value{};
  std::array<bool, 128> present{};
  [[nodiscard]] int at(char letter) const { return value.at(static_cast<std::size_t>(letter)); }
  [[nodiscard]] bool has(char letter) const { return present.at(static_cast<std::size_t>(letter)); }
};

void readGroup(Letters &letters, const Plane &plane, const char *bytes, bool second) {
  for (std::size_t i = 0; i < plane.letters.size(); ++i) {
    char letter = plane.letters[i];
    if (letter == (second ? 'Y' : 'y') && plane.letters.find('y') != std::string::npos) {
      continue; // the other pixel's
    }
    letter = letter == 'y' ? 'Y' : letter;
    letters.value.at(static_cast<std::size_t>(letter)) = static_cast<uint8_t>(bytes[i]);
    letters.present.at(static_cast<std::size_t>(letter)) = true;
  }
}

} // namespace

Yuv toYuv(const Rgb &colour, const Coding &coding) {
  const double luma = coding.kr * colour[0] + (1 - coding.kr - coding.kb) * colour[1] + coding.kb * colour[2];
  const double u = (colour[2] - luma) / (2 * (1 - coding.kb));
  const double v = (colour[0] - luma) / (2 * (1 - coding.kr));
  if (coding.full) {
    return {luma, 128 + u, 128 + v};
  }
  return {16 + luma * 219 / 255, 128 + u * 224 / 255, 128 + v * 224 / 255};
}

Rgb toRgb(const Yuv &samples, const Coding &coding) {
  const double luma = coding.full ? samples[0] : (samples[0] - 16) * 255 / 219;
  const double chroma = coding.full ? 1 : 255.0 / 224;
  const double red = luma + 2 * (1 - coding.kr) * (samples[2] - 128) * chroma;
  const double blue = luma + 2 * (1 - coding.kb) * (samples[1] - 128) * chroma;
  const double green = (luma - coding.kr * red - coding.kb * blue) / (1 - coding.kr - coding.kb);
  return {std::clamp(red, 0.0, 255.0), std::clamp(green, 0.0, 255.0), std::clamp(blue, 0.0, 255.0)};
}

std::vector<std::string> inputNames() {
  std::vector<std::string> names;
  for (const Layout &layout : layouts()) {
    names.push_back(layout.name);
  }
  return names;
}

std::vector<std::string> outputNames() {
  std::vector<std::string> names;
  for (const Layout &layout : layouts()) {
    if (layout.output) {
      names.push_back(layout.name);
    }
  }
  return names;
}

bool isGrey(const std::string &name) {
  return name == "grey";
}

bool isYuv(const std::string &name) {
  return layoutOf(name).planes[0].letters.find('Y') != std::string::npos;
}

std::string encode(const std::string &name, Size size, const Coding &coding,
                   const std::function<Rgb(int x, int y)> &at) {
  std::string bytes;
  for (const Plane &plane : layoutOf(name).planes) {
    for (int j = 0; j < groups(size.height, plane.lines); ++j) {
      for (int i = 0; i < groups(size.width, plane.columns); ++i) {
        for (const char letter : plane.letters) {
          const int x = std::min(i * plane.columns + (letter == 'y' ? 1 : 0), size.width - 1);
          bytes.push_back(static_cast<char>(byteOf(letter, at(x, j * plane.lines), coding)));
        }
      }
    }
  }
  return bytes;
}

std::size_t bytesOf(const std::string &name, Size size) {
  std::size_t bytes = 0;
  for (const Plane &plane : layoutOf(name).planes) {
    bytes += bytesOf(plane, size);
  }
  return bytes;
}

Rgb decode(const std::string &name, Size size, const Coding &coding, const std::string &bytes, int x, int y) {
  Letters letters;
  std::size_t start = 0;
  for (const Plane &plane : layoutOf(name).planes) {
    const int group = y / plane.lines * groups(size.width, plane.columns) + x / plane.columns;
    const std::size_t at = start + static_cast<std::size_t>(group) * plane.letters.size();
    readGroup(letters, plane, bytes.substr(at, plane.letters.size()).data(), x % 2 != 0);
    start += bytesOf(plane, size);
  }
  if (letters.has('l')) {
    const int word = letters.at('h') * 256 + letters.at('l');
    return {word / 2048 * 255 / 31.0, word / 32 % 64 * 255 / 63.0, word % 32 * 255 / 31.0};
  }
  if (letters.has('R')) {
    return {1.0 * letters.at('R'), 1.0 * letters.at('G'), 1.0 * letters.at('B')};
  }
  const bool grey = !letters.has('U');
  return toRgb({1.0 * letters.at('Y'), grey ? 128.0 : letters.at('U'), grey ? 128.0 : letters.at('V')}, coding);
}

std::string pixelsOfPng(const std::string &file, Size &size) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, file.data(), file.size()) == 0) {
    throw std::runtime_error(image.message);
  }
  image.format = PNG_FORMAT_RGB;
  std::string pixels(PNG_IMAGE_SIZE(image), '\0');
  size = {static_cast<int>(image.width), static_cast<int>(image.height)};
  if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) {
    throw std::runtime_error(image.message);
  }
  return pixels;
}

std::string pixelsOfPpm(const std::string &file, Size &size) {
  std::istringstream words(file);
  std::string magic;
  int most = 0;
  words >> magic >> size.width >> size.height >> most;
  if (magic != "P6" || most != 255) {
    throw std::runtime_error("no PPM");
  }
  return file.substr(static_cast<std::size_t>(words.tellg()) + 1);
}

std::string job(const std::vector<std::string> &arguments) {
  try {
    zqconvert::run(zqconvert::parseOptions(arguments));
    return {};
  } catch (const std::exception &error) {
    return error.what();
  }
}

} // namespace picture_bytes
