// The cells of the routine tables by name, and which cell serves a frame.
#pragma once

#include "base/job.h"
#include "zqColorConversion.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace containment {

struct Cell {
  std::string name; ///< table and index, such as RESIZE_TO_RGB565[16]
  zqcc::Routine routine = nullptr;
};

/// Every entry of every table, the empty ones included, and the routines that are called without a table.
const std::vector<Cell> &cells();

/// Index of the cell whose routine serves a frame; -1 if none of the tables does.
int cellOf(const ConvertParams &params);

/// The types that pictures have.
inline constexpr std::array<int, 22> kTypes{0,  1,  2,  3,  4,  6,  7,  8,  9,  11, 12,
                                            13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37};

struct Sizes {
  int width, height, outWidth, outHeight;
};

/// Types and modes of a conversion.
struct Mode {
  int inType = 0;
  int outType = 0;
  uint32_t isResize = 0;
  uint32_t rotation = 0;
  uint32_t quality = 0;
};

/// Every combination of types, isResize, rotation and quality.
std::vector<Mode> allModes();

/// A record of this mode and these sizes without planes and strides.
ConvertParams recordOf(const Mode &mode, const Sizes &sizes);

} // namespace containment
