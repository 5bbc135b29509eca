// The tables of a run, in Markdown.
#pragma once

#include "measure.h"

#include <span>
#include <string>

namespace bench {

/// Ratios best peer's time / this library's by job and size, then their geometric means by group.
std::string report(std::span<const Result> results);

/// Columns of the file of results, separated by tabs.
std::string resultHeading();
std::string resultLine(const Result &result);

} // namespace bench
