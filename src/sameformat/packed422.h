// Packed 4:2:2 to packed 4:2:2: copied, turned by a quarter, resized. All eight byte orders; there is no half turn.
//
// Lines of odd width end with a whole group where the stride has room for it and after 2 * width bytes where it has
// not. The second luma sample of a resized lone pixel's group is 0. Turned pictures are outHeight pixels wide
// and outWidth lines high.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Copies outWidth x outHeight pixels.
void copyPacked422(const Job &job);

/// Turns outWidth x outHeight pixels; the right turn starts at the last line of inHeight. Two source lines make one
/// column of groups, whose chroma is the first line's; with exchanged luma bytes (variants 4 to 7) each pixel keeps the
/// byte of chroma beside it instead.
void rotatePacked422(const Job &job);

/// Runs the one of the next three that serves the variant and the quality.
void resizePacked422Select(const Job &job);

/// Bilinear, variants 0 to 3; tables of one tap a position. A group's chroma has its own position: entry k of the
/// table's first half, counted in source groups.
void resizePacked422(const Job &job);

/// As resizePacked422 for variants 4 to 7.
void resizePacked422Swapped(const Job &job);

/// The mean of five bilinear taps, variants 0 to 3; tables of five taps a position.
void resizePacked422AntiAlias(const Job &job);

/// Nearest group with a quarter turn; tables of one word a position, of which the columns' are source groups.
void resizeRotatePacked422(const Job &job);

} // namespace zqcc
