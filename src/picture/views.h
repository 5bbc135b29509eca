// Views of pictures, checked.
#pragma once

#include "picture/formats.h"
#include "zqPicture.h"

namespace zqp {

/// Planes by their first lines as one sees them; strides may be negative.
struct Planes {
  uint8_t *line[3];
  std::ptrdiff_t stride[3];
};

/// Whether the planes of a view hold its picture: ZQP_OK, ZQP_ERR_STRIDE or ZQP_ERR_PLANE. Format and size were
/// checked.
int32_t planesOf(const ZqpPicture &picture, const Format &format, Planes &planes);

/// Whether output memory is input memory or that of two planes: ZQP_OK or ZQP_ERR_OVERLAP. Both passed planesOf().
int32_t checkOverlap(const ZqpPicture &in, const Format &inFormat, const ZqpPicture &out, const Format &outFormat);

} // namespace zqp
