// What libyuv offers, one step a function, by the layouts of the two pictures. Each returns false where it has nothing.
#pragma once

#include "frame.h"

#include <libyuv/rotate.h>
#include <libyuv/scale.h>

namespace bench::yuv {

/// The two functions that make 16-bit words.
enum class Packer { Plain, Dithering };

bool scale(const View &from, const View &to, libyuv::FilterMode filter);
bool rotate(const View &from, const View &to, libyuv::RotationMode mode);
/// Same size, other layout.
bool convert(const View &from, const View &to, Packer packer);
/// Chroma of a layout that libyuv does not know, resampled to one that it does; luma is not touched.
bool spreadChroma(const View &from, const View &to);
bool copy(const View &from, const View &to);

} // namespace bench::yuv
