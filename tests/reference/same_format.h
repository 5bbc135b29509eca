// Reference for frames whose input and output types are equal: one output sample at a time, no blocks, no words.
#pragma once

#include "zqColorConversion.h"

namespace reference {

/// Converts one frame of an accepted description with inType == outType.
void convertSameFormat(const ConvertParams &p);

} // namespace reference
