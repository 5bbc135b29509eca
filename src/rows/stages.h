// The stages that conversions are put together from. Every level has all of them; a stage gives the same bytes at every
// level. They take any count from 1 on, any alignment, and touch nothing outside of the rows that they are given: short
// rows go through buffers, the last group of a long row overlaps the one before it.
#pragma once

#include "base/levels.h"
#include "rows/colour.h"
#include "rows/fetch.h"
#include "rows/place.h"
#include "rows/scale.h"

namespace zqp {

struct Stages {
  const FetchStages *fetch;
  const PlaceStages *place;
  const ScaleStages *scale;
  const ColourStages *colour;
};

/// Those of the highest of the levels.
const Stages &stagesOf(zqcc::LevelSet usable);

} // namespace zqp
