#include "conversions.h"

#include <algorithm>

namespace corpus {
namespace {

constexpr int32_t kBandLines = 5;

int32_t convertInBands(const ZqpConverter *converter, const ZqpPicture &in, const ZqpPicture &out) {
  int32_t code = ZQP_OK;
  for (int32_t line = 0; line < out.height && code == ZQP_OK; line += kBandLines) {
    code = zqpConvertLines(converter, &in, &out, line, std::min(kBandLines, out.height - line));
  }
  return code;
}

} // namespace

ZqpConversion conversionOf(int32_t in, int32_t out, const Geometry &geometry, int32_t orientation) {
  ZqpConversion c{};
  c.recordSize = sizeof c;
  (void)zqpConversionInit(&c);
  c.inFormat = in;
  c.inWidth = geometry.inWidth;
  c.inHeight = geometry.inHeight;
  c.crop = geometry.crop;
  c.outFormat = out;
  c.outWidth = geometry.outWidth;
  c.outHeight = geometry.outHeight;
  if (geometry.outWidth == 0) {
    const bool isCropped = geometry.crop.width != 0;
    c.outWidth = isCropped ? geometry.crop.width : geometry.inWidth;
    c.outHeight = isCropped ? geometry.crop.height : geometry.inHeight;
    if (orientation >= 5) {
      std::swap(c.outWidth, c.outHeight);
    }
  }
  c.orientation = orientation;
  return c;
}

ZqpColours coloursBy(uint32_t number) {
  ZqpColours colours{};
  colours.matrix = static_cast<int32_t>(number % 4);
  colours.range = static_cast<int32_t>(number / 4 % 3);
  colours.siting = static_cast<int32_t>(number / 12 % 2);
  colours.kr = 0.25F;
  colours.kb = number / 24 % 2 == 0 ? 0.125F : 0.0625F;
  return colours;
}

void convert(const ZqpConversion &c, const Lie &lie, uint32_t number, Hash &hash) {
  ZqpConverter *converter = nullptr;
  int32_t code = zqpConverterMake(&c, &converter);
  if (code == ZQP_OK) {
    const Canvas in({c.inFormat, c.inWidth, c.inHeight}, lie, number);
    const Canvas out({c.outFormat, c.outWidth, c.outHeight}, lie, 12345);
    code = number % 2 == 0 ? zqpConvert(converter, &in.view(), &out.view())
                           : convertInBands(converter, in.view(), out.view());
    out.addTo(hash);
  }
  hash.add(static_cast<uint32_t>(code));
  zqpConverterFree(converter);
}

} // namespace corpus
