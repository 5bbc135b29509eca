// What a frame is expected to give: its code, the size of the picture written, and the reference models' bytes.
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

/// The code of a frame after a successful set-up with `setup`. A converter that keeps the size although it is asked to
/// scale takes the source picture's size from the output fields, and refuses a picture of that size whose chroma would
/// hold no sample; if it turns the planes first, set-up must have made planes for that; on its way to planar 4:2:0 a
/// single line has no chroma to move. Where a picture is placed from the end of each line's stride, the stride must hold
/// a line.
uint32_t expectedCode(const ConvertParams &setup, const ConvertParams &frame);

/// Writes what an accepted frame has to write.
void convertByReference(const ConvertParams &p, const reference::Colour &colour);

} // namespace containment
