// Reference for frames whose input and output types are equal: one output sample at a time, no blocks, no words.
#pragma once

#include "zqColorConversion.h"

namespace reference {

/// Converts one frame of an accepted description with inType == outType. The frame's lines start `cropped` bytes into
/// the lines of the input stride, which matters to where packed lines end.
void convertSameFormat(const ConvertParams &p, int cropped = 0);

} // namespace reference
