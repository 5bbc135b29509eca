// One description, one decision: which routine converts a frame, and in which format it reads its tables. Set-up and
// dispatch both ask here, so they cannot disagree.
#pragma once

#include "base/job.h"
#include "base/plan_kind.h"
#include "base/table_format.h"

#include <cstdint>

namespace zqcc {

/// How the output size relates to the input size.
enum ResizeRatioClass : uint32_t {
  RATIO_GENERAL,
  RATIO_POW2_DOWN,
  RATIO_THREE_QUARTERS,
  RATIO_THREE_HALVES,
  RATIO_DOUBLE,
  RATIO_CLASS_COUNT
};

ResizeRatioClass ratioClassOf(const ConvertParams &params);

/// What is done to the input before the routine runs.
enum class PrePass { None, SplitChroma, TurnPlanes };

struct Route {
  uint32_t code = 0;         ///< CC_OK, or the code a frame of this description gets
  Routine routine = nullptr; ///< null with CC_OK: the frame succeeds and nothing is written
  TableFormat tables = TableFormat::None;
  PlanKind plan = PlanKind::None; ///< what the routine's vector code reads beside them
  PrePass prePass = PrePass::None;
  bool scales = true;             ///< false: the routine keeps the size whatever isResize says
  bool copies = false;            ///< samples go over as they are, upright: a single line has no chroma to move
  bool sizedByInput = false;      ///< without resizing, too, the picture's size is that of the input fields
  bool fromLastInputLine = false; ///< starts at the last line that inHeight tells of, with or without resizing
  bool ownPairs = false;          ///< the lone last column of an odd semi-planar picture has a chroma pair of its own
  bool fromStrideEnd = false;     ///< the picture, or a part of it, is placed from the end of each output line's stride
};

/// Mode fields, types and quality decide; sizes only choose between resizing routines. Types 12 and 13 count as 3 and
/// 1, semi-planar input as planar 4:2:0 with its chroma split beforehand.
Route routeOf(const ConvertParams &params);

/// The description as the routine sees it once the planes have been turned by a quarter: sizes exchanged, tight stride,
/// the type whose chroma layout the turned planes have, upright. Planes are left alone.
ConvertParams turnedDescription(const ConvertParams &params);

} // namespace zqcc
