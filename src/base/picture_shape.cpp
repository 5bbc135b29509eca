#include "base/picture_shape.h"

namespace zqcc {

ChromaShape chromaShape(int32_t type, int32_t width, int32_t height, int32_t stride) {
  switch (type) {
  case COLOR_YUV444_PLANAR:
  case COLOR_RGB888_PLANAR:
    return {width, height, stride};
  case COLOR_YUV422_PLANAR:
  case COLOR_YVU422_PLANAR:
    return {width / 2, height, stride >> 1};
  case COLOR_YUV440_PLANAR:
    return {width, height / 2, stride};
  case COLOR_YUV420_PLANAR:
  case COLOR_YVU420_PLANAR:
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {width / 2, height / 2, stride >> 1};
  case COLOR_YUV411_PLANAR:
    return {width / 4, height, stride >> 2};
  case COLOR_YUV_QUARTER_HEIGHT:
    return {width, height / 4, stride};
  default:
    return {0, 0, 0};
  }
}

int64_t chromaPlaneBytes(int32_t type, int32_t width, int32_t height, int32_t stride) {
  const ChromaShape shape = chromaShape(type, width, height, stride);
  return int64_t{shape.lines - 1} * shape.pitch + shape.columns;
}

ChromaLimits halfPitchLimits(int32_t type, int32_t width, int32_t height, int32_t stride) {
  const int32_t pitch = stride >> 1;
  const int32_t columns = width < 2 ? 1 : width / 2;
  const int64_t bytes = chromaPlaneBytes(type, width, height, stride);
  const int64_t room = bytes - columns;
  if (room < 0) {
    return {0, static_cast<int32_t>(bytes) - 1};
  }
  const int64_t line = pitch > 0 ? room / pitch : 0;
  return {line < height ? static_cast<int32_t>(line) : height - 1, columns - 1};
}

} // namespace zqcc
