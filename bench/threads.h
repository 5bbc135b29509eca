// What a second thread is worth.
#pragma once

#include "measure.h"

#include <string>

namespace bench {

/// A table of zqPicture's conversions in four bands on two threads beside one thread, by the clock on the wall.
std::string threadTable(const Pace &pace);

} // namespace bench
