#include "frame/setup.h"

#include "base/picture_shape.h"
#include "frame/aligned_memory.h"
#include "frame/frame_check.h"
#include "frame/plan_place.h"
#include "frame/resample_tables.h"
#include "frame/route.h"
#include "vector/resize_plan.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr int64_t kPlaneSlack = 32;

/// False if memory ran out.
bool allocateBytes(uint8_t *&buffer, int64_t bytes) {
  if (bytes < 0 || static_cast<uint64_t>(bytes) > SIZE_MAX) {
    return false;
  }
  buffer = static_cast<uint8_t *>(aligned_alloc64(static_cast<std::size_t>(bytes)));
  return buffer != nullptr;
}

/// A table of `bytes` bytes, the first `cleared` of which are zero.
bool allocateTable(int32_t *&table, uint64_t cleared, uint64_t bytes) {
  if (bytes > SIZE_MAX) {
    return false;
  }
  table = static_cast<int32_t *>(aligned_alloc64(static_cast<std::size_t>(bytes)));
  if (table != nullptr) {
    std::memset(table, 0, static_cast<std::size_t>(cleared));
  }
  return table != nullptr;
}

bool makeSplitChroma(ConvertContext &context, const ConvertParams &params) {
  const int64_t bytes = splitChromaBytes(params);
  return allocateBytes(context.uvBuf[0], bytes) && allocateBytes(context.uvBuf[1], bytes);
}

bool makeTurnedPlanes(ConvertContext &context, const ConvertParams &params) {
  const ChromaShape chroma = chromaShape(params.inType, params.inWidth, params.inHeight, params.inStride);
  const int64_t chromaBytes = int64_t{chroma.columns} * chroma.lines + kPlaneSlack;
  return allocateBytes(context.rotBuf[0], int64_t{params.inWidth} * params.inHeight + kPlaneSlack) &&
         allocateBytes(context.rotBuf[1], chromaBytes) && allocateBytes(context.rotBuf[2], chromaBytes);
}

/// `params` is the description that the routine sees.
void buildTables(ConvertContext &context, TableFormat format, const ConvertParams &params, const Axis &columns,
                 const Axis &lines) {
  int32_t *x = context.xTable;
  int32_t *y = context.yTable;
  switch (format) {
  case TableFormat::Nearest:
    buildNearest(x, columns);
    buildNearest(y, lines);
    break;
  case TableFormat::Bilinear:
    buildBilinear(x, columns);
    buildBilinear(y, lines);
    break;
  case TableFormat::Filtered:
    buildFiltered(x, columns, Direction::Horizontal, params.antiAlias);
    buildFiltered(y, lines, Direction::Vertical, params.antiAlias);
    break;
  case TableFormat::Box: {
    const int32_t spacing = boxSpacing(columns);
    const bool ownSpacing = int64_t{lines.source} >= int64_t{lines.positions} * 8;
    buildBox(x, columns, spacing);
    // Lines reduced by less than 8 keep the columns' spacing.
    buildBox(y, lines, ownSpacing ? boxSpacing(lines) : spacing);
    break;
  }
  case TableFormat::Grouped:
    buildGrouped(x, columns);
    buildGrouped(y, lines);
    break;
  case TableFormat::RunLength:
    buildRunLengthColumns(x, columns);
    buildRunLengthLines(y, lines);
    break;
  case TableFormat::None:
    break;
  }
}

/// The tables, and the plan that vector code reads behind that of the columns.
bool makeTables(ConvertContext &context, const Route &route, const ConvertParams &params) {
  const Axis columns{params.inWidth, params.outWidth};
  const Axis lines{params.inHeight, params.outHeight};
  if (route.tables == TableFormat::None) {
    return true;
  }
  const PlanPlace plan = planPlaceOf(route, params);
  const uint64_t lineBytes = tableWords(route.tables, lines, params.antiAlias) * sizeof(int32_t);
  if (!allocateTable(context.xTable, plan.offset, plan.end) || !allocateTable(context.yTable, lineBytes, lineBytes)) {
    return false;
  }
  buildTables(context, route.tables, params, columns, lines);
  if (plan.end != plan.offset) {
    buildResizePlan(route.plan, params, context.xTable, reinterpret_cast<uint8_t *>(context.xTable) + plan.offset);
  }
  return true;
}

} // namespace

uint32_t setUp(ConvertContext *context, const ConvertParams &params) {
  if (!modesAreValid(params) || !sizesArePossible(params)) {
    return CC_ERR_ARGUMENT;
  }
  const Route route = routeOf(params);
  const bool turns = route.prePass == PrePass::TurnPlanes;
  releaseBuffers(*context);
  context->params = turns ? turnedDescription(params) : params;
  context->params.rotation = params.rotation; // frames must turn the way their set-up did
  if (route.code != CC_OK) {
    return CC_OK;
  }
  const bool made = (!isSemiPlanar(params.inType) || makeSplitChroma(*context, params)) &&
                    (!turns || makeTurnedPlanes(*context, params)) && makeTables(*context, route, context->params);
  if (!made) {
    destroyContext(context);
    return CC_ERR_NO_MEMORY;
  }
  return CC_OK;
}

} // namespace zqcc
