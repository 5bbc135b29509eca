// What every conversion routine is given, and the shape of the routines in the static tables.
#pragma once

#include "base/levels.h"
#include "zqColorConversion.h"

#include <cstdint>

namespace zqcc {

struct ColorMatrix;
struct ResizePlan;

/// One frame on its way through a routine, after the pre-passes. Routines never fail: dispatch has seen to it that the
/// picture has pixels, that the planes they read and write are there, and that the tables fit the sizes.
struct Job {
  const ConvertParams &params;
  const int32_t *xTable;     ///< built by set-up in the format that the routine reads; null if it reads none
  const int32_t *yTable;     ///< as xTable
  const ColorMatrix *matrix; ///< the matrix in force
  bool isYuv420;             ///< the input, after the pre-passes, is planar 4:2:0
  uint32_t packedVariant;    ///< 0..7 for packed 4:2:2 types 6..9 and 14..17
  int64_t inRoom;            ///< bytes from the start of an input line to the end of its stride
  LevelSet levels = setOf(LEVEL_PORTABLE); ///< the vector code that may run
  bool hasChromaPairs = false;      ///< isYuv420, but its chroma lies in pairs in the second plane, as inType says
  const ResizePlan *plan = nullptr; ///< what vector code resizes by; null where it does not
};

using Routine = void (*)(const Job &);

} // namespace zqcc
