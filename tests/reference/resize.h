// Reference of the resizing conversions: one output pixel at a time, with its own tables and its own walk.
#pragma once

#include "reference/colour.h"
#include "zqColorConversion.h"

namespace reference {

/// Converts one frame with isResize 1 whose types differ and whose route scales: planar, semi-planar, packed 4:2:2 and
/// RGB24 input to 16-bit RGB (RGB24 only to 30), planar, semi-planar and packed input to RGB24. Rotation 6 of planar
/// input to 16-bit RGB does not scale and is not served. `params` is read only; types 12 and 13 are given in the
/// caller's plane order, turned and semi-planar input is rearranged in memory of its own.
void convertResized(const ConvertParams &params, const Colour &colour);

} // namespace reference
