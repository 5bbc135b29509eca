// One conversion of the corpus.
#pragma once

#include "canvas.h"

namespace corpus {

/// Sizes, the crop (of no size where everything is converted), and how the pictures lie in memory. Of a conversion at
/// the input's own size `out` is empty.
struct Geometry {
  int32_t inWidth, inHeight;
  ZqpRect crop;
  int32_t outWidth, outHeight;
  Lie lie;
};

/// zqpConversionInit()'s of two formats and a geometry, turned.
ZqpConversion conversionOf(int32_t in, int32_t out, const Geometry &geometry, int32_t orientation);

/// Every colour setting in turn, as the bits of `number` choose.
ZqpColours coloursBy(uint32_t number);

/// Converts noise and adds code and output; odd numbers are made in bands.
void convert(const ZqpConversion &conversion, const Lie &lie, uint32_t number, Hash &hash);

} // namespace corpus
