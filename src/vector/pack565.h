// Colour stages of RGB samples to RGB565: every component loses its low bits.
#pragma once

#include "vector/stages.h"

namespace zqcc {

/// PackRgb from planes.
extern const PerLevel<ColourRows> PACK565;

/// The same from B, G, R bytes, three a pixel: v points at the first of them, y and u are not looked at.
extern const PerLevel<ColourRows> PACK565_RGB24;

} // namespace zqcc
