// The other planar types to RGB565 at any ratio.
#pragma once

#include "base/job.h"

namespace zqcc {

void resizeYuv444ToRgb565(const Job &job);
void resizeYuv440ToRgb565(const Job &job);
void resizeYuv411ToRgb565(const Job &job);
void resizeYuvQuarterHeightToRgb565(const Job &job);

void resizePlanarRgbToRgb565(const Job &job);
void resizePlanarRgbToRgb565Rot3(const Job &job);
void resizePlanarRgbToRgb565Rot4(const Job &job);
void resizePlanarRgbToRgb565Rot5(const Job &job);

} // namespace zqcc
