// The whole errand of one command line: open, convert frame after frame, put the results in their places.
#pragma once

#include "options.h"

namespace zqconvert {

/// Throws Error. Frames before the damage are delivered if the error is that the input ends inside a frame; otherwise
/// no file that the job began is left.
void run(const Options &options);

} // namespace zqconvert
