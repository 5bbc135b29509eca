// 16-bit RGB to 16-bit RGB: copied, turned by a quarter, resized. A pixel is a little-endian word, red in bits 11-15,
// green in 5-10, blue in 0-4, and is resampled channel by channel. There is no half turn.
//
// Turned pictures are outHeight pixels wide and outWidth lines high.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Copies outWidth x outHeight pixels.
void copyRgb16(const Job &job);

/// Turns outWidth x outHeight pixels, by a quarter.
void rotateRgb16(const Job &job);

/// Bilinear; grouped tables.
void resizeRgb16(const Job &job);

/// Bilinear with a quarter turn; grouped tables. The two lines of a pair share the first one's line weights.
void resizeRotateRgb16(const Job &job);

/// The mean of five bilinear taps; tables of five taps a position, of whose line weights only the first tap's count.
void resizeRgb16AntiAlias(const Job &job);

} // namespace zqcc
