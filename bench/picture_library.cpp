// zqPicture doing a job at each of its levels: one converter, then one call a frame.
#include "picture_library.h"

#include "vector/detect.h"

#include <utility>

namespace bench {
namespace {

constexpr std::pair<int32_t, ZqpFormat> kFormats[] = {
    {COLOR_YUV420_PLANAR, ZQP_I420}, {COLOR_YUV420_PACK, ZQP_NV12}, {COLOR_YUV422_YUYV, ZQP_YUYV},
    {COLOR_RGB565, ZQP_RGB565},      {COLOR_RGB24, ZQP_BGR24},      {kBgra, ZQP_BGRA},
};

int32_t formatOf(int32_t type) {
  for (const auto &[first, format] : kFormats) {
    if (first == type) {
      return format;
    }
  }
  return 0;
}

int32_t orientationOf(uint32_t rotation) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return 8;
  case ROTATION_90_RIGHT:
    return 6;
  case ROTATION_180:
    return 3;
  case ROTATION_FLIP_V:
    return 4;
  default:
    return 1;
  }
}

int32_t filterOf(Sampling sampling) {
  switch (sampling) {
  case Sampling::Bilinear:
    return ZQP_FILTER_BILINEAR;
  case Sampling::Filtered:
  case Sampling::Box:
    return ZQP_FILTER_AREA;
  default:
    return ZQP_FILTER_NEAREST;
  }
}

/// The level that is selected when the runner runs is the one that counts.
Runner conversion(const Task &task) {
  const Converter converter = converterFor(task);
  if (!converter) {
    return {};
  }
  return [converter, in = zqpPictureOf(task.input), out = zqpPictureOf(task.output)] {
    return zqpConvert(converter.get(), &in, &out) == ZQP_OK;
  };
}

} // namespace

ZqpPicture zqpPictureOf(const View &view) {
  ZqpPicture picture{};
  picture.recordSize = sizeof picture;
  picture.format = formatOf(view.type);
  picture.width = view.size.width;
  picture.height = view.size.height;
  for (int32_t i = 0; i < planeCount(view.type); ++i) {
    const auto p = static_cast<std::size_t>(i);
    const Size size = planeSize(view, i);
    const auto stride = static_cast<std::size_t>(view.stride[p]);
    picture.planes[p] = {view.plane[p], view.stride[p],
                         stride * static_cast<std::size_t>(size.height - 1) + static_cast<std::size_t>(size.width)};
  }
  return picture;
}

Converter converterFor(const Task &task) {
  ZqpConversion conversion{};
  conversion.recordSize = sizeof conversion;
  if (zqpConversionInit(&conversion) != ZQP_OK) {
    return {};
  }
  conversion.inFormat = formatOf(task.input.type);
  conversion.inWidth = task.input.size.width;
  conversion.inHeight = task.input.size.height;
  conversion.outFormat = formatOf(task.output.type);
  conversion.outWidth = task.output.size.width;
  conversion.outHeight = task.output.size.height;
  conversion.orientation = orientationOf(task.job.rotation);
  conversion.filter = filterOf(task.job.sampling);
  conversion.inColours.siting = ZQP_SITING_CENTRE;
  conversion.outColours.siting = ZQP_SITING_CENTRE;
  ZqpConverter *converter = nullptr;
  return zqpConverterMake(&conversion, &converter) == ZQP_OK ? Converter(converter, FreeConverter{}) : Converter{};
}

std::vector<Program> picturePrograms() {
  std::vector<Program> programs = ownPrograms();
  for (Program &program : programs) {
    program.make = conversion;
  }
  return programs;
}

} // namespace bench
