// Planar 4:2:0 to planar 4:2:0: copied, turned, resized. The planes are worked on one by one, the first at full size
// and the other two at half, with half pitches; U and V keep their places, so both plane orders share every routine.
//
// The routines that resize and turn write a picture outHeight samples wide and outWidth lines high; the half turn and
// the upright ones outWidth x outHeight.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Copies outWidth x outHeight samples.
void copyYuv420Planar(const Job &job);

/// Quarter and half turns of inWidth x inHeight samples. Both pictures are tight: the strides are not read.
void rotateYuv420Planar(const Job &job);
void rotate180Yuv420Planar(const Job &job);

/// Bilinear; tables of one tap a position.
void resizeYuv420Planar(const Job &job);

/// The mean of five bilinear taps; tables of five taps a position.
void resizeYuv420PlanarAntiAlias(const Job &job);

/// Nearest sample, turned; tables of one word a position.
void resizeRotateYuv420Planar(const Job &job);
void resizeRotate180Yuv420Planar(const Job &job);

} // namespace zqcc
