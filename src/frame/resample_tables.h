// Building resampling tables; their formats stand in base/table_format.h. Positions are computed in floating point,
// which the library uses here and for custom matrices only.
#pragma once

#include "base/table_format.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

enum class Direction { Horizontal, Vertical };

/// One direction of a resampling: `positions` outputs over `source` samples; at least 2 samples and 1 position.
struct Axis {
  int32_t source;
  int32_t positions;
};

/// Words to allocate for a table, spare ones included; all of them are zero before it is built. May be more than memory
/// can be addressed by.
uint64_t tableWords(TableFormat format, const Axis &axis, uint32_t antiAlias);

/// Fixed-point step between output positions: trunc(source / positions * 1024).
int64_t stepOf(const Axis &axis);

void buildNearest(int32_t *table, const Axis &axis);
void buildBilinear(int32_t *table, const Axis &axis);
/// The two directions take their five positions in different orders.
void buildFiltered(int32_t *table, const Axis &axis, Direction direction, uint32_t antiAlias);
/// Distance between the samples of a box: a quarter of the factor from 8 on, else 1.
int32_t boxSpacing(const Axis &axis);
void buildBox(int32_t *table, const Axis &axis, int32_t spacing);
void buildGrouped(int32_t *table, const Axis &axis);
void buildRunLengthColumns(int32_t *table, const Axis &axis);
void buildRunLengthLines(int32_t *table, const Axis &axis);

} // namespace zqcc
