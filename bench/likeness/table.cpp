#include "likeness/table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <set>
#include <vector>

namespace likeness {
namespace {

std::string decibels(double value) {
  if (std::isinf(value)) {
    return "equal";
  }
  char text[64];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

std::string row(const std::vector<std::string> &cells) {
  std::string text = "|";
  for (const std::string &cell : cells) {
    text += " " + cell + " |";
  }
  return text + "\n";
}

using Chosen = std::vector<const Comparison *>;

/// The least alike first.
void sort(Chosen &chosen) {
  std::stable_sort(chosen.begin(), chosen.end(),
                   [](const Comparison *one, const Comparison *other) { return one->each.all < other->each.all; });
}

std::string groupRow(const std::string &name, Chosen chosen) {
  sort(chosen);
  const auto equal = std::count_if(chosen.begin(), chosen.end(),
                                   [](const Comparison *comparison) { return std::isinf(comparison->each.all); });
  double worst = chosen.front()->each.worst;
  for (const Comparison *comparison : chosen) {
    worst = std::min(worst, comparison->each.worst);
  }
  return row({name, std::to_string(chosen.size()), std::to_string(equal), decibels(chosen.front()->each.all),
              decibels(chosen[chosen.size() / 2]->each.all), decibels(worst)});
}

std::string idealText(const std::optional<Psnr> &psnr) {
  return psnr ? decibels(psnr->all) : "";
}

} // namespace

std::string tables(std::span<const Comparison> comparisons, double limit) {
  std::set<std::string> groups;
  Chosen every;
  Chosen low;
  for (const Comparison &comparison : comparisons) {
    groups.insert(comparison.group);
    every.push_back(&comparison);
    if (comparison.each.all < limit) {
      low.push_back(&comparison);
    }
  }
  std::string text = row({"conversions", "number", "equal", "minimum", "median", "worst component"}) +
                     row({"---", "---:", "---:", "---:", "---:", "---:"});
  for (const std::string &group : groups) {
    Chosen chosen;
    std::copy_if(every.begin(), every.end(), std::back_inserter(chosen),
                 [&group](const Comparison *comparison) { return comparison->group == group; });
    text += groupRow(group, chosen);
  }
  text += every.empty() ? "" : groupRow("all", every);
  if (!low.empty()) {
    text += "\n" + row({"below " + decibels(limit) + " dB", "to each other", "ours to the ideal", "theirs to it"}) +
            row({"---", "---:", "---:", "---:"});
    sort(low);
    for (const Comparison *comparison : low) {
      text += row({comparison->name, decibels(comparison->each.all), idealText(comparison->oursToIdeal),
                   idealText(comparison->theirsToIdeal)});
    }
  }
  return text;
}

std::string lines(std::span<const Comparison> comparisons) {
  std::string text = "conversions\tconversion\tpsnr\tworst_component\tours_to_ideal\ttheirs_to_ideal\n";
  for (const Comparison &comparison : comparisons) {
    text += comparison.group + "\t" + comparison.name + "\t" + decibels(comparison.each.all) + "\t" +
            decibels(comparison.each.worst) + "\t" + idealText(comparison.oursToIdeal) + "\t" +
            idealText(comparison.theirsToIdeal) + "\n";
  }
  return text;
}

} // namespace likeness
