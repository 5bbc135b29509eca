// Planar 4:2:0 and 4:2:2 to RGB565 at the simple ratios, whose luma needs less than bilinear interpolation.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeYuvToRgb565Pow2(const Job &job);
void resizeYuvToRgb565Pow2Rot3(const Job &job);
void resizeYuvToRgb565Pow2Rot4(const Job &job);
void resizeYuvToRgb565ThreeQuarters(const Job &job);
void resizeYuvToRgb565ThreeQuartersRot3(const Job &job);
void resizeYuvToRgb565ThreeQuartersRot4(const Job &job);
void resizeYuvToRgb565ThreeHalves(const Job &job);
void resizeYuvToRgb565ThreeHalvesRot3(const Job &job);
void resizeYuvToRgb565ThreeHalvesRot4(const Job &job);
void resizeYuvToRgb565Double(const Job &job);
void resizeYuvToRgb565DoubleRot3(const Job &job);
void resizeYuvToRgb565DoubleRot4(const Job &job);

} // namespace zqcc
