// The exported functions that convert.
#include "picture/driver.h"
#include "vector/detect.h"

namespace zqp {
namespace {

struct Views {
  Planes in;
  Planes out;
};

int32_t checkView(const ZqpPicture &picture, const Format &format, int32_t width, int32_t height, Planes &planes) {
  if (picture.format != format.id || picture.width != width || picture.height != height) {
    return ZQP_ERR_VIEW;
  }
  return planesOf(picture, format, planes);
}

int32_t checkViews(const ZqpConverter *converter, const ZqpPicture *in, const ZqpPicture *out, Views &views) {
  if (converter == nullptr || in == nullptr || out == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (in->recordSize != sizeof(ZqpPicture) || out->recordSize != sizeof(ZqpPicture)) {
    return ZQP_ERR_RECORD;
  }
  const Description &description = converter->description;
  int32_t error = checkView(*in, *description.in, description.inWidth, description.inHeight, views.in);
  if (error == ZQP_OK) {
    error = checkView(*out, *description.out, description.outWidth, description.outHeight, views.out);
  }
  return error == ZQP_OK ? checkOverlap(*in, *description.in, *out, *description.out) : error;
}

template <class Driver>
void drive(const ZqpConverter &converter, const Views &views, const Band &band) {
  alignas(Arena::kAlignment) uint8_t scratch[kScratchMargin + kScratchBytes + kScratchMargin];
  Arena arena(scratch + kScratchMargin);
  Driver driver(converter, views.in, views.out, stagesOf(zqcc::usableLevels()));
  driver.layOut(arena, converter.chunkColumns);
  driver.convert(band);
}

void convert(const ZqpConverter &converter, const Views &views, const Band &band) {
  if (converter.turnsYuv) {
    drive<TurnedYuvDriver>(converter, views, band);
  } else if (converter.description.turn.isTransposed) {
    drive<TurnedDriver>(converter, views, band);
  } else {
    drive<UprightDriver>(converter, views, band);
  }
}

} // namespace
} // namespace zqp

using namespace zqp;

int32_t zqpConvert(const ZqpConverter *converter, const ZqpPicture *in, const ZqpPicture *out) {
  Views views{};
  if (const int32_t error = checkViews(converter, in, out, views); error != ZQP_OK) {
    return error;
  }
  convert(*converter, views, {0, converter->description.outHeight});
  return ZQP_OK;
}

int32_t zqpConvertLines(const ZqpConverter *converter, const ZqpPicture *in, const ZqpPicture *out, int32_t firstLine,
                        int32_t lineCount) {
  Views views{};
  if (const int32_t error = checkViews(converter, in, out, views); error != ZQP_OK) {
    return error;
  }
  const int32_t lines = converter->description.outHeight;
  if (firstLine < 0 || lineCount < 0 || firstLine > lines || lineCount > lines - firstLine) {
    return ZQP_ERR_LINES;
  }
  if (lineCount > 0) {
    convert(*converter, views, {firstLine, lineCount});
  }
  return ZQP_OK;
}
