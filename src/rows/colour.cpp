#include "rows/targets.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "rows/colour.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "rows/colour.h"
#include "rows/colour_components-inl.h"
#include "rows/colour_fours-inl.h"
#include "rows/colour_weighed-inl.h"

HWY_BEFORE_NAMESPACE();
namespace zqp::HWY_NAMESPACE {

extern const RgbOfBytes kRgbOfBytes[kYuvLayouts][kRgbLayouts];
extern const RgbOfWords kRgbOfWords[kRgbLayouts];

extern const ColourStages kColourStages;
const ColourStages kColourStages = {
    kRgbOfBytes, kRgbOfWords, componentOfBytes, componentOfWords, bytesOfWords,      lumaOfYuv,
    chromaOfYuv, sumOfBytes,  sumOfWords,       lumaOfFourBytes,  chromaOfFourBytes,
};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
