// The tables of a run, in Markdown.
#pragma once

#include "measure.h"

#include <span>
#include <string>

namespace bench {

/// Headings of a set of tables, which tell it from others, and what is reported together.
struct Sheet {
  const char *jobs;
  const char *means;
  std::span<const Group> groups;
  /// The same for all jobs of the groups that something is demanded of; none if zero.
  double must, aim;
};

/// Ratios best peer's time / this library's by job and size, then their geometric means by group.
std::string report(std::span<const Result> results, const Sheet &sheet);

/// How far the median series of the programs that count lies above the best one.
std::string noise(std::span<const Result> results);

/// Columns of the file of results, separated by tabs.
std::string resultHeading();
std::string resultLine(const Result &result);

} // namespace bench
