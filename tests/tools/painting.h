// Pictures of known colours in every type, and what colours results have.
#pragma once

#include "frame.h"
#include "routes.h"

#include <cstdint>
#include <functional>

namespace painting {

/// Y, U, V - or red, green, blue for types that are RGB.
struct Sample {
  int first, second, third;
};

zqconvert::Frame paint(int type, zqconvert::Size size, const std::function<Sample(int x, int y)> &at);
/// Red, green and blue of a pixel of RGB565 or RGB24, spread over 8 bits.
Sample pixelOf(const zqconvert::Frame &frame, int x, int y);
bool isRgb(int type);
bool isYuv(int type);

/// The library's answer to a route, `upright` being the size of the result before it is turned; `blank` is what stands
/// in the output before, `matrix` an index.
zqconvert::Frame viaLibrary(const zqconvert::Route &route, zqconvert::Frame &in, zqconvert::Size upright,
                            uint8_t blank = 0, int matrix = 0);

} // namespace painting
