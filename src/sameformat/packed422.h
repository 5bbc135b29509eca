// Packed 4:2:2 to packed 4:2:2: copied, and turned by a quarter with or without resizing. All eight byte orders; there
// is no half turn.
//
// Lines of odd width end with a whole macropixel where the stride has room for it and after 2 * width bytes where it
// has not. Turned pictures are outHeight pixels wide and outWidth lines high.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Copies outWidth x outHeight pixels.
void copyPacked422(const Job &job);

/// Turns outWidth x outHeight pixels; the right turn starts at the last line of inHeight. Two source lines make one
/// column of macropixels, whose chroma is the first line's; with exchanged luma bytes (variants 4 to 7) each pixel
/// keeps the byte of chroma beside it instead.
void rotatePacked422(const Job &job);

/// Nearest macropixel with a quarter turn; tables of one word a position, of which the columns' are source macropixels.
void resizeRotatePacked422(const Job &job);

} // namespace zqcc
