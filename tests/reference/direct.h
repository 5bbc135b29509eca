// A slow, literal model of the conversions that do not scale: every output pixel is worked out on its own, from the
// samples of its source pixel, the arithmetic of the region it lies in and the address it goes to. It shares nothing
// with the library but the public header, so that a mistake has to be made twice to go unnoticed.
#pragma once

#include "reference/colour.h"
#include "zqColorConversion.h"

namespace reference {

/// Converts one frame without scaling, in the colour state given. Handles every pair of different types that has a
/// route, all rotation codes, the exchanged planes of types 12 and 13 and semi-planar input; the record is not
/// changed. A pair without a route, and RGB24 to anything but type 30, writes nothing.
void convertDirect(const ConvertParams &p, const Colour &colour);

} // namespace reference
