// Same-size conversion with a quarter or half turn, and the top-bottom flip.
#pragma once

#include "base/job.h"

namespace zqcc {

void convertRotatedMbYuv420ToRgb565(const Job &job);
void convertRotatedMbYuv444ToRgb565(const Job &job);
void convertRotatedMbYuv440ToRgb565(const Job &job);
void convertRotatedMbYuv411ToRgb565(const Job &job);
void convertRotatedMbYuvQuarterHeightToRgb565(const Job &job);
void convertRotatedPlanarRgbToRgb565(const Job &job);

void convertFlippedYuv420ToRgb565(const Job &job);
void convertFlippedYuv444ToRgb565(const Job &job);
void convertFlippedYuv440ToRgb565(const Job &job);
void convertFlippedYuv411ToRgb565(const Job &job);
void convertFlippedYuvQuarterHeightToRgb565(const Job &job);
void convertFlippedPlanarRgbToRgb565(const Job &job);

} // namespace zqcc
