// The whole errand of one command line: open, convert frame after frame, put the results in their places.
#pragma once

#include "options.h"

#include <atomic>

namespace zqconvert {

/// Set from outside (a signal) to make run() give up at the next frame; 0 while nobody asked.
extern std::atomic<int> stopSignal;

/// Throws Error or Interrupted; no file that the job began is left then.
void run(const Options &options);

} // namespace zqconvert
