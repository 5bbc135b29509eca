// YUV to YUV without arithmetic on the samples: splitting interleaved chroma, and reduction to planar 4:2:0.
#pragma once

#include "base/job.h"

namespace zqcc {

/// Splits the chroma pairs of a semi-planar frame: the first sample of each pair goes to `first`, the second to
/// `second`, both with half the input's stride. An odd last column has no pair of its own; a single column has one.
/// `levels` is the vector code that may do it.
void deinterleaveChroma(LevelSet levels, const ConvertParams &params, uint8_t *first, uint8_t *second);

/// Planar input to planar 4:2:0: output chroma line k takes input chroma line 2k at half the luma stride, 4:2:0 input
/// included. Reads chroma pairs as they lie where the job has such.
void copyPlanarToYuv420Planar(const Job &job);

/// Packed 4:2:2 to planar 4:2:0: the chroma of every second line is dropped.
void convertPacked422ToYuv420Planar(const Job &job);

} // namespace zqcc
