#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <optional>
#include <vector>

namespace bench {
namespace {

std::string number(double value, int digits) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string ratioText(std::optional<double> ratio) {
  return ratio ? number(*ratio, 2) : "";
}

std::string sizeText(const Size &size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::string row(const std::vector<std::string> &cells) {
  std::string text = "|";
  for (const std::string &cell : cells) {
    text += " " + cell + " |";
  }
  return text + "\n";
}

/// A heading and the line below it: the first column to the left, the others to the right.
std::string heading(const std::vector<std::string> &cells) {
  std::vector<std::string> rule(cells.size(), "---:");
  rule.front() = "---";
  return row(cells) + row(rule);
}

/// Everything about one job at one size.
struct Cell {
  const Group *group;
  std::string job;
  Size size;
  std::vector<const Result *> own;
  const Result *peer = nullptr; ///< the best one

  [[nodiscard]] std::optional<double> ratio(const std::string &level) const {
    for (const Result *result : own) {
      if (result->program == level && peer != nullptr) {
        return peer->best / result->best;
      }
    }
    return {};
  }
};

const Group &groupOf(const std::string &key, std::span<const Group> all) {
  const auto found = std::find_if(all.begin(), all.end(), [&](const Group &group) { return key == group.key; });
  return found == all.end() ? all.back() : *found;
}

std::vector<Cell> cellsOf(std::span<const Result> results, std::span<const Group> groups) {
  std::vector<Cell> cells;
  for (const Result &result : results) {
    const Group &group = groupOf(result.group, groups);
    auto cell = std::find_if(cells.begin(), cells.end(), [&](const Cell &c) {
      return c.group == &group && c.job == result.job && c.size.width == result.size.width;
    });
    if (cell == cells.end()) {
      cell = cells.insert(cells.end(), {&group, result.job, result.size, {}});
    }
    if (result.own) {
      cell->own.push_back(&result);
    } else if (cell->peer == nullptr || result.best < cell->peer->best) {
      cell->peer = &result;
    }
  }
  return cells;
}

/// Names of the levels, the lowest first.
std::vector<std::string> levelsOf(std::span<const Cell> cells) {
  std::vector<std::string> levels;
  for (const Cell &cell : cells) {
    for (const Result *result : cell.own) {
      if (std::find(levels.begin(), levels.end(), result->program) == levels.end() && result->pixels > 0) {
        levels.push_back(result->program);
      }
    }
  }
  return levels;
}

std::string limitText(double limit) {
  const bool tenths = std::abs(limit * 10 - std::round(limit * 10)) < 1e-6;
  return limit == 0 ? "" : number(limit, tenths ? 1 : 2);
}

std::string verdict(std::optional<double> ratio, double must) {
  if (!ratio || must == 0) {
    return "";
  }
  return *ratio >= must ? "yes" : "**no**";
}

/// One table a size. Times are ns a pixel, and ns a call for pictures that are little but a call.
std::string jobTable(std::span<const Cell> cells, const Size &size, const std::vector<std::string> &levels,
                     const Sheet &sheet) {
  const bool tiny = size.width == kTinySize.width;
  std::vector<std::string> head = {sheet.jobs + (" at " + sizeText(size))};
  head.insert(head.end(), levels.begin(), levels.end());
  for (const char *name : {"must", "met", "aim", "best peer", "peer's ns", "our ns"}) {
    head.emplace_back(name);
  }
  std::string text = heading(head);
  for (const Cell &cell : cells) {
    if (cell.size.width != size.width || cell.own.empty() || cell.own.front()->pixels == 0) {
      continue;
    }
    const double unit = tiny ? 1 : cell.own.front()->pixels;
    std::vector<std::string> line = {std::string(cell.group->key) + "/" + cell.job};
    for (const std::string &level : levels) {
      line.push_back(ratioText(cell.ratio(level)));
    }
    line.push_back(limitText(cell.group->jobMust()));
    line.push_back(verdict(cell.ratio(cell.own.back()->program), cell.group->jobMust()));
    line.push_back(limitText(cell.group->aim));
    line.push_back(cell.peer == nullptr ? "none" : cell.peer->program);
    line.push_back(cell.peer == nullptr ? "" : number(cell.peer->best / unit, tiny ? 0 : 3));
    line.push_back(number(cell.own.back()->best / unit, tiny ? 0 : 3));
    text += row(line);
  }
  return text + "\n";
}

using Chosen = std::function<bool(const Cell &)>;

/// Geometric mean over the cells that are chosen, or nothing without any.
std::optional<double> meanRatio(std::span<const Cell> cells, const Chosen &chosen, const std::string &level) {
  double sum = 0;
  int count = 0;
  for (const Cell &cell : cells) {
    const auto ratio = chosen(cell) ? cell.ratio(level) : std::nullopt;
    if (ratio) {
      sum += std::log(*ratio);
      ++count;
    }
  }
  return count == 0 ? std::nullopt : std::optional<double>(std::exp(sum / count));
}

std::string groupTable(std::span<const Cell> cells, const std::vector<std::string> &levels, const Sheet &sheet) {
  std::vector<std::string> head = {sheet.means};
  head.insert(head.end(), levels.begin(), levels.end());
  for (const char *name : {"must", "met", "aim"}) {
    head.emplace_back(name);
  }
  std::string text = heading(head);
  const auto addRow = [&](const Group &demand, const Chosen &chosen) {
    std::vector<std::string> line = {demand.title};
    std::optional<double> last;
    for (const std::string &level : levels) {
      last = meanRatio(cells, chosen, level);
      line.push_back(ratioText(last));
    }
    line.push_back(limitText(demand.must));
    line.push_back(verdict(last, demand.must));
    line.push_back(limitText(demand.aim));
    text += last ? row(line) : "";
  };
  for (const Group &group : sheet.groups) {
    addRow(group, [&group](const Cell &cell) { return cell.group == &group; });
  }
  if (sheet.must > 0) {
    addRow({"", "all jobs of groups with a must", sheet.must, sheet.aim},
           [](const Cell &cell) { return cell.group->must > 0; });
    addRow({"", "all jobs"}, [](const Cell &) { return true; });
  }
  return text + "\n";
}

std::string setUpTable(std::span<const Cell> cells) {
  std::string text = heading({"set-up, at 1920x1080", "microseconds"});
  for (const Cell &cell : cells) {
    if (!cell.own.empty() && cell.own.front()->pixels == 0) {
      text += row({cell.job, number(cell.own.front()->best / 1000, 2)});
    }
  }
  return text;
}

} // namespace

std::string report(std::span<const Result> results, const Sheet &sheet) {
  const std::vector<Cell> cells = cellsOf(results, sheet.groups);
  const std::vector<std::string> levels = levelsOf(cells);
  std::string text;
  for (const Size &size : {kSmall, kHd, kFullHd, kTinySize}) {
    const bool present = std::any_of(cells.begin(), cells.end(), [&](const Cell &cell) {
      return cell.size.width == size.width && !cell.own.empty() && cell.own.front()->pixels > 0;
    });
    if (present) {
      text += jobTable(cells, size, levels, sheet);
    }
  }
  if (!levels.empty()) {
    text += groupTable(cells, levels, sheet);
  }
  if (levels.empty() || std::any_of(cells.begin(), cells.end(), [](const Cell &c) { return c.peer == nullptr; })) {
    text += setUpTable(cells);
  }
  return text + "\n";
}

std::string noise(std::span<const Result> results) {
  std::vector<double> noise;
  for (const Result &result : results) {
    if (result.own) {
      noise.push_back(result.median / result.best - 1);
    }
  }
  std::sort(noise.begin(), noise.end());
  return "The median series of a program is " + number(100 * noise[noise.size() / 2], 1) +
         " % longer than its best one in the median cell, " + number(100 * noise[noise.size() * 9 / 10], 1) +
         " % in nine out of ten.\n";
}

std::string resultHeading() {
  return "group\tjob\tsize\tprogram\town\tbest_ns\tmedian_ns\tpixels\tns_per_pixel";
}

std::string resultLine(const Result &result) {
  std::string line = result.group + "\t" + result.job + "\t" + sizeText(result.size) + "\t" + result.program + "\t" +
                     (result.own ? "yes" : "no") + "\t" + number(result.best, 1) + "\t" + number(result.median, 1) +
                     "\t" + number(result.pixels, 0) + "\t";
  return line + (result.pixels > 0 ? number(result.best / result.pixels, 4) : "");
}

} // namespace bench
