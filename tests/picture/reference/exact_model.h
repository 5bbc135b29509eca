// A picture converted one sample of the output at a time, in the integers that the library's bytes are defined by.
#pragma once

#include "picture/reference/own_picture.h"

namespace reference {

/// `out` has format and size of the conversion. Bytes that no sample is made of stay as they are.
void convertExactly(const ZqpConversion &conversion, const OwnPicture &in, OwnPicture &out);

} // namespace reference
