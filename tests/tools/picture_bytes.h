// Raw pictures of known colours in every layout, written down and read again by tables of their own, with real numbers.
#pragma once

#include "text.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace picture_bytes {

/// Red, green, blue, from 0 to 255.
using Rgb = std::array<double, 3>;
/// Y, U, V as they are stored.
using Yuv = std::array<double, 3>;

struct Coding {
  double kr = 0.299;
  double kb = 0.114;
  bool full = false;
};

Yuv toYuv(const Rgb &colour, const Coding &coding);
Rgb toRgb(const Yuv &samples, const Coding &coding);

/// Every name that raw pictures of each layout are known by here, once; those of them that can be made.
std::vector<std::string> inputNames();
std::vector<std::string> outputNames();
bool isGrey(const std::string &name);
bool isYuv(const std::string &name);

/// One frame. Chroma is that of the first pixel that shares the sample; alpha is 255.
std::string encode(const std::string &name, zqconvert::Size size, const Coding &coding,
                   const std::function<Rgb(int x, int y)> &at);
std::size_t bytesOf(const std::string &name, zqconvert::Size size);
/// The colour of a pixel; a grey one of grey pictures.
Rgb decode(const std::string &name, zqconvert::Size size, const Coding &coding, const std::string &bytes, int x, int y);

/// A picture file's pixels as bytes R, G, B, by libpng's own short way or by hand; `size` is what the file says.
std::string pixelsOfPng(const std::string &file, zqconvert::Size &size);
std::string pixelsOfPpm(const std::string &file, zqconvert::Size &size);

/// Runs a whole job in this process. Empty, or what was wrong.
std::string job(const std::vector<std::string> &arguments);

} // namespace picture_bytes
