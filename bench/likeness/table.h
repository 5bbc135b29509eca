// What was compared, as a table of classes and as lines.
#pragma once

#include "likeness/likeness.h"

#include <optional>
#include <span>
#include <string>

namespace likeness {

struct Comparison {
  std::string group; ///< kind of conversion
  std::string name;
  Psnr each; ///< of the two results
  std::optional<Psnr> oursToIdeal;
  std::optional<Psnr> theirsToIdeal;
};

/// In Markdown: a row for each group; then what is below the limit, the least alike first.
std::string tables(std::span<const Comparison> comparisons, double limit);

/// A heading and a line for each, columns separated by tabs.
std::string lines(std::span<const Comparison> comparisons);

} // namespace likeness
