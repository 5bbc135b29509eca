// libswscale converting the tests' pictures as exactly as it can, with its chroma where zqPicture has it.
#pragma once

#include "picture/reference/own_picture.h"

#include <cstdint>

namespace likeness {

/// Whether it has the format, as input or as output.
bool swscaleHas(int32_t format, bool asOutput);

/// Converts `in`, of the size of `out`; false if it refuses. Formats, colours and filter are those of the description.
bool convertBySwscale(const ZqpConversion &conversion, reference::OwnPicture &in, reference::OwnPicture &out);

} // namespace likeness
