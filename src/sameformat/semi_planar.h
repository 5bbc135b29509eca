// Semi-planar 4:2:0 to semi-planar 4:2:0: copied, turned by a quarter, resized by nearest sample. A chroma pair moves
// as one unit, so both pair orders share every routine. There is no half turn.
//
// A chroma plane has outHeight / 2 lines at the luma plane's pitch. A line has a pair for every two columns, upright
// one for a lone last column too (see chroma_pairs.h); turned it has outHeight / 2 pairs, and there are outWidth / 2
// lines. Turned pictures are outHeight samples wide and outWidth lines high.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Copies outWidth x outHeight samples.
void copyYuv420SemiPlanar(const Job &job);

/// Turns outWidth x outHeight samples. The right turn starts at the last line of inHeight.
void rotateYuv420SemiPlanar(const Job &job);

/// Nearest sample; tables of one word a position.
void resizeYuv420SemiPlanar(const Job &job);
void resizeRotateYuv420SemiPlanar(const Job &job);

} // namespace zqcc
