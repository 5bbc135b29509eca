#include "picture/cases.h"

#include "picture/reference/formats.h"

#include <sstream>

namespace picture {

namespace {

ZqpColours anyColours(Random &random) {
  ZqpColours colours{};
  colours.matrix = between(random, ZQP_BT601, ZQP_MATRIX_GIVEN);
  colours.range = between(random, ZQP_RANGE_USUAL, ZQP_RANGE_FULL);
  colours.siting = between(random, ZQP_SITING_LEFT, ZQP_SITING_CENTRE);
  // Together at most .8: the less is left for green, the more chroma counts there.
  const int kr = between(random, 1, 78);
  colours.kr = static_cast<float>(kr) / 100;
  colours.kb = static_cast<float>(between(random, 1, 79 - kr)) / 100;
  return colours;
}

std::string describe(const ZqpColours &colours) {
  std::ostringstream text;
  text << "matrix " << colours.matrix;
  if (colours.matrix == ZQP_MATRIX_GIVEN) {
    text << " (" << colours.kr << ", " << colours.kb << ")";
  }
  text << " range " << colours.range << " siting " << colours.siting;
  return text.str();
}

} // namespace

int between(Random &random, int least, int most) {
  return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
}

std::vector<int32_t> inputFormats() {
  std::vector<int32_t> numbers;
  for (const reference::Format &format : reference::allFormats()) {
    numbers.push_back(format.number);
  }
  return numbers;
}

std::vector<int32_t> outputFormats() {
  std::vector<int32_t> numbers;
  for (const reference::Format &format : reference::allFormats()) {
    if (!format.isInputOnly) {
      numbers.push_back(format.number);
    }
  }
  return numbers;
}

ZqpConversion usual(int32_t inFormat, int32_t outFormat, int width, int height) {
  ZqpConversion c{};
  c.recordSize = sizeof c;
  c.inFormat = inFormat;
  c.inWidth = width;
  c.inHeight = height;
  c.outFormat = outFormat;
  c.outWidth = width;
  c.outHeight = height;
  c.orientation = 1;
  return c;
}

ZqpConversion anySameSize(Random &random, int32_t inFormat, int32_t outFormat, int width, int height) {
  ZqpConversion c = usual(inFormat, outFormat, width, height);
  c.orientation = between(random, 0, 8);
  if (c.orientation >= 5) {
    c.outWidth = height;
    c.outHeight = width;
  }
  c.filter = between(random, ZQP_FILTER_BILINEAR, ZQP_FILTER_AREA);
  c.dither = between(random, ZQP_DITHER_NONE, ZQP_DITHER_ORDERED);
  c.inColours = anyColours(random);
  c.outColours = anyColours(random);
  if (between(random, 0, 1) != 0) {
    keepColours(c);
  }
  return c;
}

ZqpConversion anyResized(Random &random, int32_t inFormat, int32_t outFormat, int most) {
  ZqpConversion c = anySameSize(random, inFormat, outFormat, between(random, 1, most), between(random, 1, most));
  c.outWidth = between(random, 1, most);
  c.outHeight = between(random, 1, most);
  if (between(random, 0, 2) != 0) {
    c.crop.x = between(random, 0, c.inWidth - 1);
    c.crop.y = between(random, 0, c.inHeight - 1);
    c.crop.width = between(random, 1, c.inWidth - c.crop.x);
    c.crop.height = between(random, 1, c.inHeight - c.crop.y);
  }
  // Often one axis keeps its size.
  const bool swapsAxes = c.orientation >= 5;
  const int width = c.crop.width != 0 ? c.crop.width : c.inWidth;
  const int height = c.crop.width != 0 ? c.crop.height : c.inHeight;
  switch (between(random, 0, 5)) {
  case 0:
    (swapsAxes ? c.outHeight : c.outWidth) = width;
    break;
  case 1:
    (swapsAxes ? c.outWidth : c.outHeight) = height;
    break;
  case 2:
    c.outWidth = swapsAxes ? height : width;
    c.outHeight = swapsAxes ? width : height;
    break;
  default:
    break;
  }
  return c;
}

void keepColours(ZqpConversion &c) {
  const int32_t siting = c.outColours.siting;
  c.outColours = c.inColours;
  c.outColours.siting = siting;
}

std::string describe(const ZqpConversion &c) {
  std::ostringstream text;
  text << reference::formatOf(c.inFormat).name << " " << c.inWidth << "x" << c.inHeight;
  if (c.crop.width != 0) {
    text << " crop " << c.crop.width << "x" << c.crop.height << " at (" << c.crop.x << ", " << c.crop.y << ")";
  }
  text << " to " << reference::formatOf(c.outFormat).name << " " << c.outWidth << "x" << c.outHeight << " orientation "
       << c.orientation << " filter " << c.filter << " dither " << c.dither << " in: " << describe(c.inColours)
       << " out: " << describe(c.outColours);
  return text.str();
}

} // namespace picture
