#include "frame/dispatch.h"

#include "base/picture_shape.h"
#include "base/turn.h"
#include "frame/frame_check.h"
#include "frame/plan_place.h"
#include "frame/route.h"
#include "sameformat/plane_rotation.h"
#include "vector/detect.h"
#include "yuv/yuv_to_yuv.h"

namespace zqcc {
namespace {

Job jobFor(const ConvertContext &context, const ConvertParams &params, LevelSet levels, int64_t skippedBytes) {
  const uint32_t variant = isPacked422(params.inType) ? packedVariantOf(params.inType) : 0;
  return {params,
          context.xTable,
          context.yTable,
          currentMatrix(),
          isPlanar420(params.inType),
          variant,
          params.inStride - skippedBytes,
          levels};
}

/// V comes before U in these; the caller's own record is put right, so converting with the same record twice
/// alternates the planes.
void exchangeChroma(ConvertParams &params) {
  const uint8_t *second = params.inBuf[1];
  params.inBuf[1] = params.inBuf[2];
  params.inBuf[2] = second;
}

bool hasChromaExchanged(int32_t type) {
  return type == COLOR_YVU420_PLANAR || type == COLOR_YVU422_PLANAR;
}

/// The frame as planar 4:2:0, its chroma in the context's planes. 11 has U first in each pair, 35 has V.
ConvertParams splitChroma(const ConvertContext &context, const ConvertParams &params, LevelSet levels) {
  const int first = params.inType == COLOR_YUV420_PACK ? 0 : 1;
  deinterleaveChroma(levels, params, context.uvBuf[first], context.uvBuf[1 - first]);
  ConvertParams planar = params;
  planar.inType = COLOR_YUV420_PLANAR;
  planar.inBuf[1] = context.uvBuf[0];
  planar.inBuf[2] = context.uvBuf[1];
  return planar;
}

/// Whether the routine reads the pairs as they lie, which every conversion that keeps the size does where there is
/// vector code. The bytes are those of split planes. With a short stride these have lines that run into one another, so
/// that pairs have to be split then.
bool takesPairs(const ConvertParams &params, const Route &route, LevelSet levels) {
  const bool keepsSize = params.isResize == 0 || !route.scales;
  return levels != setOf(LEVEL_PORTABLE) && keepsSize && params.inWidth / 2 <= params.inStride / 2;
}

/// The frame turned by a quarter into the context's planes, each by its own geometry.
ConvertParams turnPlanes(const ConvertContext &context, const ConvertParams &params, LevelSet levels) {
  const auto rotate = turnOf(params.rotation) == Turn::Left ? rotatePlaneLeft : rotatePlaneRight;
  const ChromaShape chroma = chromaShape(params.inType, params.inWidth, params.inHeight, params.inStride);
  rotate(levels, params.inBuf[0], context.rotBuf[0], params.inWidth, params.inHeight, params.inStride, params.inHeight);
  ConvertParams turned = turnedDescription(params);
  turned.inBuf[0] = context.rotBuf[0];
  for (int i = 1; i < 3; ++i) {
    rotate(levels, params.inBuf[i], context.rotBuf[i], chroma.columns, chroma.lines, chroma.pitch, chroma.lines);
    turned.inBuf[i] = context.rotBuf[i];
  }
  return turned;
}

void run(ConvertContext &context, ConvertParams &params, const Route &route, int64_t skippedBytes) {
  const LevelSet levels = usableLevels();
  const ConvertParams *frame = &params;
  ConvertParams prepared; // the frame behind a pre-pass
  bool hasChromaPairs = false;
  switch (route.prePass) {
  case PrePass::SplitChroma:
    hasChromaPairs = takesPairs(params, route, levels);
    if (!hasChromaPairs) {
      prepared = splitChroma(context, params, levels);
      frame = &prepared;
    }
    break;
  case PrePass::TurnPlanes:
    prepared = turnPlanes(context, params, levels);
    frame = &prepared;
    skippedBytes = 0;
    break;
  case PrePass::None:
    break;
  }
  Job job = jobFor(context, *frame, levels, skippedBytes);
  job.plan = planOf(context, route, levels);
  if (hasChromaPairs) {
    job.isYuv420 = job.hasChromaPairs = true;
  }
  route.routine(job);
}

} // namespace

uint32_t dispatchFrame(ConvertContext &context, ConvertParams &params, int64_t skippedBytes) {
  const Route route = routeOf(params);
  if (route.code != CC_OK || route.routine == nullptr) {
    return route.code;
  }
  const bool empty = isEmptyPicture(params, route);
  if (!empty && !frameCanRun(context, params, route)) {
    return CC_ERR_ARGUMENT;
  }
  if (params.inType != params.outType && hasChromaExchanged(params.inType)) {
    exchangeChroma(params);
  }
  if (!empty) {
    run(context, params, route, skippedBytes);
  }
  return CC_OK;
}

} // namespace zqcc
