// What vector code needs to know beforehand of a resizing conversion's columns. The route says which kind of plan its
// routine reads; set-up makes that plan and the routine is given it, so that the two cannot disagree.
#pragma once

#include <cstdint>

namespace zqcc {

enum class PlanKind : uint32_t {
  None,          ///< the routine resizes nothing, or not by rows
  General,       ///< planar 4:2:0 and 4:2:2, bilinear
  Pow2,          ///< the same reduced by a power of two
  ThreeQuarters, ///< the same at fixed phases: three outputs of four samples
  ThreeHalves,   ///< three outputs of two samples
  Double,        ///< every second output is the mean of its neighbours
  Yuv444,        ///< the other planar types, bilinear luma
  Yuv440,
  Yuv411,
  QuarterHeight,
  PlanarRgb,         ///< three planes, each bilinear
  Rgb24,             ///< the same of B, G, R bytes
  FivePoint,         ///< planar types, five-point means
  Box,               ///< planar types, box means
  Rgb16,             ///< 16-bit pixels that stay so, bilinear
  Rgb16Turned,       ///< the same in quarter turns: pairs of lines are weighed alike
  Planes420,         ///< planar 4:2:0 that stays so, every plane bilinear
  Planes420Nearest,  ///< the same reduced by whole numbers, which never lie between samples
  Planes420Turned,   ///< planar 4:2:0 resized and turned: the nearest sample of every plane, whatever the ratio
  SemiPlanar,        ///< semi-planar that stays so, nearest, upright and turned
  Packed422,         ///< packed 4:2:2 that stays so, luma and chroma bilinear
  FilteredPlanes420, ///< as Planes420, by five-point means
  FilteredPacked422, ///< as Packed422, by five-point means
  FilteredRgb16,     ///< as Rgb16, by five-point means
  RunLength,         ///< planar types to RGB24, nearest
  Packed,            ///< packed 4:2:2, nearest: the column table itself is all that vector code reads
};

} // namespace zqcc
