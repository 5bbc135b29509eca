// What a stream says about its frames beside size and samples, and what a conversion leaves true of it.
#pragma once

#include "frame.h"

namespace zqconvert {

struct Change {
  Rectangle part; ///< Of the input that is converted.
  Size upright;   ///< Size of the result before it is turned.
  uint32_t rotation;
};

/// Corrects the words of `info`, which describe an input of the colour type `inType`, so that they hold for the result;
/// drops those that do not. The order of fields turns with the lines and is lost where lines are mixed or stood on end;
/// pixels stretch as the scale asks; chroma words hold while 4:2:0 keeps its sites.
void adaptTags(StreamInfo &info, const Change &change, int inType);

} // namespace zqconvert
