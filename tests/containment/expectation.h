// What an accepted frame is expected to give: the size of the picture written, and the reference models' bytes.
#pragma once

#include "reference/colour.h"
#include "reference/direct_case.h"
#include "zqColorConversion.h"

#include <cstdint>

namespace containment {

/// Width and height of the written picture.
reference::Size writtenSize(const ConvertParams &p);

/// Some converters step through a plane by a pitch that is not its own, and so meet the bytes between its lines: the
/// turns of planar 4:2:0 take every plane for tight, the filtered resize of 16-bit RGB drops the last bit of a stride,
/// that of planar 4:2:2 lets chroma columns run on to the stride's end, and converters to planar 4:2:0 and RGB24 take
/// every chroma layout for 4:2:0 or 4:2:2.
bool readsPadding(const ConvertParams &p);

/// Writes what an accepted frame has to write.
/// `cropped` bytes of the input lines lie in front of the frame's.
void convertByReference(const ConvertParams &p, const reference::Colour &colour, int cropped = 0);

} // namespace containment
