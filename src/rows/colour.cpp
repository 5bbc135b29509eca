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
namespace {

void componentOfBytes(const uint8_t *from, const Component &component, const uint16_t rounding[8], int32_t count,
                      uint8_t *to) {
  makeComponent(from, component, rounding, count, to);
}
void componentOfWords(const int16_t *from, const Component &component, const uint16_t rounding[8], int32_t count,
                      uint8_t *to) {
  makeComponent(from, component, rounding, count, to);
}

void bytesOfWords(const int16_t *from, int32_t count, uint8_t *to) {
  const RoundedGroup group;
  makeRows(group, group, &from, count, &to);
}

void lumaOfYuv(const YuvWords &from, const YuvOfYuv &colours, int32_t count, uint8_t *to) {
  const LumaGroup group(colours);
  const int16_t *const rows[3] = {from.y, from.u, from.v};
  makeRows(group, group, rows, count, &to);
}

void chromaOfYuv(const int16_t *u, const int16_t *v, const YuvOfYuv &colours, int32_t count, uint8_t *toU,
                 uint8_t *toV) {
  const ChromaGroup group(colours);
  const int16_t *const from[2] = {u, v};
  uint8_t *const to[2] = {toU, toV};
  makeRows(group, group, from, count, to);
}

void sumOfBytes(const uint8_t *const from[3], const Sum &sum, int32_t count, uint8_t *to) {
  const WeighedGroup<uint8_t> group(sum);
  makeRows(group, group, from, count, &to);
}
void sumOfWords(const int16_t *const from[3], const Sum &sum, int32_t count, uint8_t *to) {
  const WeighedGroup<int16_t> group(sum);
  makeRows(group, group, from, count, &to);
}

} // namespace

extern const RgbOfBytes kRgbOfBytes[kYuvLayouts][kRgbLayouts];
extern const RgbOfWords kRgbOfWords[kRgbLayouts];

extern const ColourStages kColourStages;
const ColourStages kColourStages = {
    kRgbOfBytes, kRgbOfWords, componentOfBytes, componentOfWords, bytesOfWords,      lumaOfYuv,
    chromaOfYuv, sumOfBytes,  sumOfWords,       lumaOfFourBytes,  chromaOfFourBytes, leftChromaOfFourBytes,
};

} // namespace zqp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
