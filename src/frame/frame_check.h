// What makes a description or a frame impossible. Nothing here writes anything.
#pragma once

#include "frame/context.h"
#include "frame/route.h"

#include <cstdint>

namespace zqcc {

/// isResize, rotation and antiAlias hold codes that exist.
bool modesAreValid(const ConvertParams &params);

/// A resizing description has at least 2 x 2 input samples and 1 x 1 outputs and enlarges at most 1024 times;
/// semi-planar chroma can be split only with a stride and a height that are not negative.
bool sizesArePossible(const ConvertParams &params);

/// A frame that is not resized and has no lines or no columns: there is nothing to convert. Sizes below 0 are none.
bool isEmptyPicture(const ConvertParams &params, const Route &route);

/// Bytes of each plane that takes split semi-planar chroma.
int64_t splitChromaBytes(const ConvertParams &params);

/// Whether a routed frame that is not empty can run: sizes and strides that can be, planes there and none without
/// samples, tables and scratch as this description needs them.
bool frameCanRun(const ConvertContext &context, const ConvertParams &params, const Route &route);

} // namespace zqcc
