#include "frame/routine_tables.h"

#include "direct_rgb/macroblock.h"
#include "direct_rgb/packed422.h"
#include "direct_rgb/rgb24_output.h"
#include "direct_rgb/rotated.h"
#include "resize_rgb/antialias.h"
#include "resize_rgb/general.h"
#include "resize_rgb/other_planar.h"
#include "resize_rgb/packed422.h"
#include "resize_rgb/rgb24_input.h"
#include "resize_rgb/rgb24_output.h"
#include "resize_rgb/special_ratio.h"
#include "sameformat/packed422.h"
#include "sameformat/packed422_resize.h"
#include "sameformat/planar420.h"
#include "sameformat/rgb16.h"
#include "sameformat/semi_planar.h"
#include "yuv/rgb24_input.h"

namespace zqcc {

namespace {

constexpr Routine kSamePlanar420[] = {
    copyYuv420Planar,
    rotateYuv420Planar,
    rotate180Yuv420Planar,
    resizeYuv420Planar,
    resizeRotateYuv420Planar,
    resizeRotate180Yuv420Planar,
    resizeYuv420PlanarAntiAlias,
    nullptr,
    nullptr,
};

constexpr Routine kSameRgb16[] = {
    copyRgb16, rotateRgb16, resizeRgb16, resizeRotateRgb16, resizeRgb16AntiAlias, nullptr,
};

constexpr Routine kSameSemiPlanar[] = {
    copyYuv420SemiPlanar,
    rotateYuv420SemiPlanar,
    resizeYuv420SemiPlanar,
    resizeRotateYuv420SemiPlanar,
};

constexpr Routine kSamePacked422[] = {copyPacked422, rotatePacked422, resizePacked422Select, resizeRotatePacked422};

constexpr Routine kPlanarToRgb24[] = {convertYuvToRgb24, resizeYuvToRgb24};
constexpr Routine kPacked422ToRgb16[] = {convertPacked422ToRgb565, resizePacked422ToRgb565};
constexpr Routine kPacked422ToRgb24[] = {convertPacked422ToRgb24, resizePacked422ToRgb24};

constexpr Routine kRgb24ToRgb565[] = {
    convertRgb24ToRgb565, convertRgb24ToRgb565Left, convertRgb24ToRgb565Right,
    resizeRgb24ToRgb565,  resizeRgb24ToRgb565Left,  resizeRgb24ToRgb565Right,
};

constexpr Routine kResizeToRgb565[] = {
    resizeYuvToRgb565,
    resizeYuvToRgb565Pow2,
    resizeYuvToRgb565ThreeQuarters,
    resizeYuvToRgb565ThreeHalves,
    resizeYuvToRgb565Double,
    resizeYuvToRgb565Rot3,
    resizeYuvToRgb565Pow2Rot3,
    resizeYuvToRgb565ThreeQuartersRot3,
    resizeYuvToRgb565ThreeHalvesRot3,
    resizeYuvToRgb565DoubleRot3,
    resizeYuvToRgb565Rot4,
    resizeYuvToRgb565Pow2Rot4,
    resizeYuvToRgb565ThreeQuartersRot4,
    resizeYuvToRgb565ThreeHalvesRot4,
    resizeYuvToRgb565DoubleRot4,
    resizeYuvToRgb565Rot5,
    resizeYuvToRgb565AntiAlias,
    resizeYuv444ToRgb565,
    resizeYuv444ToRgb565AntiAlias,
    resizeYuv440ToRgb565,
    resizeYuv440ToRgb565AntiAlias,
    resizeYuv411ToRgb565,
    resizeYuv411ToRgb565AntiAlias,
    resizeYuvQuarterHeightToRgb565,
    resizeYuvQuarterHeightToRgb565AntiAlias,
    resizePlanarRgbToRgb565,
    resizePlanarRgbToRgb565AntiAlias,
    resizePlanarRgbToRgb565Rot3,
    resizePlanarRgbToRgb565Rot4,
    resizePlanarRgbToRgb565Rot5,
};

constexpr Routine kPlanarToRgb565[][3] = {
    {convertMbYuv420ToRgb565, convertRotatedMbYuv420ToRgb565, convertFlippedYuv420ToRgb565},
    {convertMbYuv444ToRgb565, convertRotatedMbYuv444ToRgb565, convertFlippedYuv444ToRgb565},
    {convertMbYuv440ToRgb565, convertRotatedMbYuv440ToRgb565, convertFlippedYuv440ToRgb565},
    {convertMbYuv411ToRgb565, convertRotatedMbYuv411ToRgb565, convertFlippedYuv411ToRgb565},
    {convertMbYuvQuarterHeightToRgb565, convertRotatedMbYuvQuarterHeightToRgb565,
     convertFlippedYuvQuarterHeightToRgb565},
    {convertMbPlanarRgbToRgb565, convertRotatedPlanarRgbToRgb565, convertFlippedPlanarRgbToRgb565},
};

} // namespace

// The sizes are part of the index formulas: a table with a cell too few or too many does not bind.
const Routine (&SAME_PLANAR420)[9] = kSamePlanar420;
const Routine (&SAME_RGB16)[6] = kSameRgb16;
const Routine (&SAME_SEMI_PLANAR)[4] = kSameSemiPlanar;
const Routine (&SAME_PACKED422)[4] = kSamePacked422;
const Routine (&PLANAR_TO_RGB24)[2] = kPlanarToRgb24;
const Routine (&PACKED422_TO_RGB16)[2] = kPacked422ToRgb16;
const Routine (&PACKED422_TO_RGB24)[2] = kPacked422ToRgb24;
const Routine (&RGB24_TO_RGB565)[6] = kRgb24ToRgb565;
const Routine (&RESIZE_TO_RGB565)[30] = kResizeToRgb565;
const Routine (&PLANAR_TO_RGB565)[KIND_COUNT][3] = kPlanarToRgb565;

static_assert(kResizeYuvEntries.half == 3 * RATIO_CLASS_COUNT &&
              RESIZE_PLANAR_RGB + kResizePlanarRgbEntries.half == 29);

} // namespace zqcc
