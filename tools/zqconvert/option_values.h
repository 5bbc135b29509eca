// The words behind options, as people write them. Everything throws Error, in words that help, for what makes no sense.
#pragma once

#include "convert.h"

#include <string>

namespace zqconvert {

/// Frames are counted from 1; both ends belong to the range. last == 0: to the end of the input.
struct FrameRange {
  int first = 1;
  int last = 0;
};

/// WxH; `name` is the option's.
Size parseSizeOption(const std::string &name, const std::string &text);
/// WxH in which one side may be -N, as Request::scale has it.
Size parseScale(const std::string &text);
Matrix parseMatrix(const std::string &text);
/// Quarter turns by their side or by clockwise degrees.
uint32_t parseRotation(const std::string &text, bool flip);
uint32_t parseQuality(const std::string &text);
Rectangle parseCrop(const std::string &text);
FrameRange parseFrames(const std::string &text);

} // namespace zqconvert
