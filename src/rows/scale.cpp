#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/scale.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/lerp-inl.h"
#include "rows/line_words-inl.h"
#include "rows/lines-inl.h"
#include "rows/pick-inl.h"
#include "rows/scale.h"
#include "rows/taps-inl.h"

// The functions are in the headers above, in regions of their level.
namespace zqp::HWY_NAMESPACE {

extern const ScaleStages kScaleStages;
const ScaleStages kScaleStages = {widen, pick, lerpColumns, lerpLines, addLines, addToSums, wordsOfSums, tapColumns};

} // namespace zqp::HWY_NAMESPACE
