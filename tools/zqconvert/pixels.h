// Lines of RGB and grey pictures as bytes, for files to look at.
#pragma once

#include "frame.h"

#include <cstdint>
#include <vector>

namespace zqconvert {

enum class PixelOrder { Rgb, Bgr };

bool hasAlpha(int type);
const uint8_t *lineOf(const Frame &frame, int line);
/// One line as three bytes a pixel in the given order, and a fourth one of alpha where `alpha` asks for it and the type
/// has it. The five and six bits of RGB565 are spread over the whole range; grey is red, green and blue.
void expandLine(const Frame &frame, int line, PixelOrder order, bool alpha, std::vector<uint8_t> &bytes);

} // namespace zqconvert
