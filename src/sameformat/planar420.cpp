#include "sameformat/planar420.h"

#include "kernels/copy_lines.h"
#include "sameformat/bilinear.h"
#include "sameformat/five_point_lines.h"
#include "sameformat/nearest.h"
#include "sameformat/plane_rotation.h"
#include "vector/nearest_planes.h"
#include "vector/resized_planes.h"

namespace zqcc {

namespace {

constexpr int kPlanes = 3;

/// One plane of a frame, input and output.
struct Plane {
  const uint8_t *src;
  std::ptrdiff_t srcPitch;
  int32_t srcWidth;
  int32_t srcHeight;
  uint8_t *dst;
  std::ptrdiff_t dstPitch;
  int32_t width;
  int32_t height;
};

constexpr bool isChroma(int index) {
  return index > 0;
}

Plane planeOf(const ConvertParams &p, int index) {
  const int half = isChroma(index) ? 1 : 0;
  return {p.inBuf[index],  p.inStride >> half,  p.inWidth >> half,  p.inHeight >> half,
          p.outBuf[index], p.outStride >> half, p.outWidth >> half, p.outHeight >> half};
}

template <class ColumnTap, class LineTap>
void resamplePlane(const Plane &plane, const Job &job, const ColumnTap &columnTap, const LineTap &lineTap) {
  const auto byteOf = [](std::ptrdiff_t column) { return column; };
  for (int32_t j = 0; j < plane.height; ++j) {
    const SourceLines lines = linePair(plane.src, plane.srcPitch, lineTap(job.yTable + j * kTapWords));
    uint8_t *const out = plane.dst + j * plane.dstPitch;
    for (int32_t i = 0; i < plane.width; ++i) {
      out[i] = sampleByte(lines, columnTap(job.xTable + i * kTapWords), byteOf);
    }
  }
}

template <class TapOf>
void filterPlane(const Plane &plane, const Job &job, TapOf columnTap, TapOf lineTap) {
  const LinePath path{plane.src, plane.srcPitch, plane.dst, plane.dstPitch};
  forEachMeanChunk(plane.width, [&](int32_t first, int32_t count) {
    const FivePointColumns columns(job.xTable + first * kEntryWords<kFilterTaps>, count, columnTap, 1);
    for (int32_t j = 0; j < plane.height; ++j) {
      resizeLineByFivePoints(columns, path, job.yTable, j, lineTap, first, count, 1);
    }
  });
}

NearestSource nearestSource(const Plane &plane, const Job &job) {
  return {plane.src, plane.srcPitch, plane.srcWidth - 1, plane.srcHeight - 1, job.xTable, job.yTable};
}

bool pickedByRows(const Job &job, int index, const Plane &plane) {
  const PickedLines lines{plane.src, plane.srcPitch, plane.srcHeight - 1, job.yTable};
  return pickedByRows(job, turnOf(job.params.rotation), isChroma(index) ? PlaneUnit::Chroma : PlaneUnit::Luma,
                      {lines, plane.dst, plane.dstPitch, plane.width, plane.height});
}

} // namespace

void copyYuv420Planar(const Job &job) {
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    copyLines(plane.src, plane.srcPitch, plane.dst, plane.dstPitch, plane.width, plane.height);
  }
}

void rotateYuv420Planar(const Job &job) {
  const auto rotate = turnOf(job.params.rotation) == Turn::Left ? rotateTightPlaneLeft : rotateTightPlaneRight;
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    rotate(job.levels, plane.src, plane.srcWidth, plane.srcHeight, plane.srcPitch, plane.dst);
  }
}

void rotate180Yuv420Planar(const Job &job) {
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    rotateTightPlane180(job.levels, plane.src, plane.srcWidth, plane.srcHeight, plane.srcPitch, plane.dst);
  }
}

void resizeYuv420Planar(const Job &job) {
  if (resizedPlanesByRows(job)) {
    return;
  }
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    if (isChroma(i)) {
      // Columns past the end lose their weights, lines keep theirs.
      resamplePlane(plane, job, EvenAtEnd{plane.srcWidth}, HeldAtEnd{plane.srcHeight});
    } else {
      resamplePlane(plane, job, AsBuilt{}, AsBuilt{});
    }
  }
}

void resizeYuv420PlanarAntiAlias(const Job &job) {
  if (filteredPlanesByRows(job)) {
    return;
  }
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    if (isChroma(i)) {
      filterPlane(plane, job, EvenAtEnd{plane.srcWidth}, EvenAtEnd{plane.srcHeight});
    } else {
      filterPlane(plane, job, AsBuilt{}, AsBuilt{});
    }
  }
}

void resizeRotateYuv420Planar(const Job &job) {
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    if (!pickedByRows(job, i, plane)) {
      resizeRotatePlane(turnOf(job.params.rotation), nearestSource(plane, job), plane.dst, plane.width, plane.height,
                        plane.dstPitch);
    }
  }
}

void resizeRotate180Yuv420Planar(const Job &job) {
  for (int i = 0; i < kPlanes; ++i) {
    const Plane plane = planeOf(job.params, i);
    if (!pickedByRows(job, i, plane)) {
      resizeRotate180Plane(nearestSource(plane, job), plane.dst, plane.width, plane.height, plane.dstPitch);
    }
  }
}

} // namespace zqcc
