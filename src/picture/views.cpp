#include "picture/views.h"

namespace zqp {
namespace {

/// The bytes from one line to the next in memory. A plane of one line has any stride.
std::size_t pitchOf(const ZqpPlane &plane) {
  // The most negative stride has no positive counterpart as a signed number.
  const auto stride = static_cast<std::size_t>(plane.stride);
  return plane.stride < 0 ? std::size_t{0} - stride : stride;
}

/// From a plane's lowest address on, to the end of its last line. Once planesOf() found that this fits its memory.
std::size_t extentOf(const ZqpPlane &plane, const PlaneShape &shape) {
  return pitchOf(plane) * static_cast<std::size_t>(shape.lines - 1) + shape.lineBytes;
}

int32_t checkPlane(const ZqpPlane &plane, const PlaneShape &shape) {
  if (plane.data == nullptr || plane.bytes < shape.lineBytes) {
    return ZQP_ERR_PLANE;
  }
  const auto gaps = static_cast<std::size_t>(shape.lines - 1);
  if (gaps == 0) {
    return ZQP_OK;
  }
  const std::size_t pitch = pitchOf(plane);
  if (pitch < shape.lineBytes) {
    return ZQP_ERR_STRIDE;
  }
  return pitch > (plane.bytes - shape.lineBytes) / gaps ? ZQP_ERR_PLANE : ZQP_OK;
}

struct Memory {
  uintptr_t start;
  std::size_t bytes;
};

/// Differences of addresses wrap, so that no end has to be computed.
bool overlap(const Memory &a, const Memory &b) {
  return a.start - b.start < b.bytes || b.start - a.start < a.bytes;
}

struct Extents {
  Memory of[3];
  int32_t count;
};

Extents extentsOf(const ZqpPicture &picture, const Format &format) {
  Extents extents{};
  extents.count = format.planes();
  for (int32_t p = 0; p < extents.count; ++p) {
    const PlaneShape shape = planeShape(format, picture.width, picture.height, p);
    const ZqpPlane &plane = picture.planes[p];
    extents.of[p] = {reinterpret_cast<uintptr_t>(plane.data),
                     shape.lines > 1 ? extentOf(plane, shape) : shape.lineBytes};
  }
  return extents;
}

} // namespace

int32_t planesOf(const ZqpPicture &picture, const Format &format, Planes &planes) {
  for (int32_t p = 0; p < format.planes(); ++p) {
    const PlaneShape shape = planeShape(format, picture.width, picture.height, p);
    const ZqpPlane &plane = picture.planes[p];
    if (const int32_t error = checkPlane(plane, shape); error != ZQP_OK) {
      return error;
    }
    const bool isBottomUp = plane.stride < 0 && shape.lines > 1;
    planes.stride[p] = shape.lines > 1 ? plane.stride : 0;
    planes.line[p] = static_cast<uint8_t *>(plane.data) + (isBottomUp ? extentOf(plane, shape) - shape.lineBytes : 0);
  }
  return ZQP_OK;
}

int32_t checkOverlap(const ZqpPicture &in, const Format &inFormat, const ZqpPicture &out, const Format &outFormat) {
  const Extents from = extentsOf(in, inFormat);
  const Extents to = extentsOf(out, outFormat);
  for (int32_t p = 0; p < to.count; ++p) {
    for (int32_t q = 0; q < from.count; ++q) {
      if (overlap(to.of[p], from.of[q])) {
        return ZQP_ERR_OVERLAP;
      }
    }
    for (int32_t q = 0; q < p; ++q) {
      if (overlap(to.of[p], to.of[q])) {
        return ZQP_ERR_OVERLAP;
      }
    }
  }
  return ZQP_OK;
}

} // namespace zqp
