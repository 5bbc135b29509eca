// Planar 4:2:0 and 4:2:2 to RGB565 at any ratio: bilinear luma, one chroma sample for 2 x 2 pixels.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeYuvToRgb565(const Job &job);
void resizeYuvToRgb565Rot3(const Job &job);
void resizeYuvToRgb565Rot4(const Job &job);
void resizeYuvToRgb565Rot5(const Job &job);

} // namespace zqcc
