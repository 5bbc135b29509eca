// Drives every cell of every routine table with random sizes, strides, contents and alignments on buffers that end at
// unmapped pages, and says of a conversion that goes wrong which edge it crossed, by how much, and which pixels differ.
//
//   zqcc_checker [--seconds N | --rounds N] [--seed S] [--cell NAME] [--level NAME] [--list] [--self-test]
#include "containment/mistakes.h"
#include "containment/random_case.h"
#include "support/levels.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using containment::Bench;
using containment::CaseMaker;
using containment::cells;

constexpr std::size_t kPlaneBytes = std::size_t{1} << 20;
constexpr int kShownFailures = 10;

struct Options {
  long seconds = 0;
  long rounds = 0;
  uint32_t seed = 1;
  std::string cell;
  std::string level; ///< of vector code; empty: the best there is
  bool list = false;
  bool selfTest = false;
};

int usage() {
  std::fputs(
      "usage: zqcc_checker [--seconds N | --rounds N] [--seed S] [--cell NAME] [--level NAME] [--list] [--self-test]\n",
      stderr);
  return 2;
}

bool parse(int count, char **words, Options &options) {
  for (int i = 1; i < count; ++i) {
    const std::string_view word = words[i];
    if (word == "--list" || word == "--self-test") {
      (word == "--list" ? options.list : options.selfTest) = true;
      continue;
    }
    if (i + 1 == count) {
      return false;
    }
    const char *value = words[++i];
    if (word == "--seconds") {
      options.seconds = std::strtol(value, nullptr, 10);
    } else if (word == "--rounds") {
      options.rounds = std::strtol(value, nullptr, 10);
    } else if (word == "--seed") {
      options.seed = static_cast<uint32_t>(std::strtoul(value, nullptr, 10));
    } else if (word == "--cell") {
      options.cell = value;
    } else if (word == "--level") {
      options.level = value;
    } else {
      return false;
    }
  }
  return true;
}

struct Count {
  long converted = 0;
  long refused = 0;
};

class Run {
public:
  explicit Run(const Options &options) : options_(options), maker_(options.seed), bench_(kPlaneBytes) {}

  int all() {
    std::vector<int> chosen;
    for (std::size_t i = 0; i < cells().size(); ++i) {
      if (cells()[i].routine != nullptr && cells()[i].name.find(options_.cell) != std::string::npos) {
        chosen.push_back(static_cast<int>(i));
      }
    }
    long round = 0;
    for (; !chosen.empty() && goesOn(round); ++round) {
      for (const int cell : chosen) {
        check(cell);
      }
    }
    return verdict(chosen, round);
  }

private:
  using Clock = std::chrono::steady_clock;

  /// At least one round in any case, so that no cell goes unseen however slow the machine is.
  [[nodiscard]] bool goesOn(long round) const {
    if (failures_ >= kShownFailures) {
      return false;
    }
    const bool inTime = Clock::now() - start_ < std::chrono::seconds(options_.seconds);
    return round == 0 || (options_.rounds > 0 ? round < options_.rounds : inTime);
  }

  void check(int cell) {
    const containment::GuardedCase c = maker_.make(cell);
    const containment::Outcome outcome = bench_.run(c);
    if (!outcome.report.empty()) {
      ++failures_;
      std::printf("FAILED %s\n%s", cells()[static_cast<std::size_t>(cell)].name.c_str(), outcome.report.c_str());
      return;
    }
    const int reached = containment::cellOf(containment::recordOf(c.mode, c.sizes));
    if (reached >= 0) {
      Count &count = counts_[static_cast<std::size_t>(reached)];
      ++(outcome.code == CC_OK ? count.converted : count.refused);
    }
  }

  [[nodiscard]] int verdict(const std::vector<int> &chosen, long rounds) const {
    Count total;
    int missed = 0;
    for (const int cell : chosen) {
      const Count &count = counts_[static_cast<std::size_t>(cell)];
      total.converted += count.converted;
      total.refused += count.refused;
      if (count.converted == 0) {
        ++missed;
        std::printf("no conversion ran through %s\n", cells()[static_cast<std::size_t>(cell)].name.c_str());
      }
    }
    std::printf("%zu cells, %ld rounds, seed %u: %ld cases converted as expected, %ld refused as expected, %d failed\n",
                chosen.size(), rounds, options_.seed, total.converted, total.refused, failures_);
    return failures_ == 0 && missed == 0 && !chosen.empty() ? 0 : 1;
  }

  Options options_;
  CaseMaker maker_;
  Bench bench_;
  Clock::time_point start_ = Clock::now();
  std::vector<Count> counts_ = std::vector<Count>(cells().size());
  int failures_ = 0;
};

int list() {
  const CaseMaker maker(1);
  for (std::size_t i = 0; i < cells().size(); ++i) {
    const bool empty = cells()[i].routine == nullptr;
    std::printf("%s%s\n", cells()[i].name.c_str(), empty ? " (empty)" : "");
    if (!empty && !maker.hasModes(static_cast<int>(i))) {
      std::puts("  no mode leads here");
      return 1;
    }
  }
  return 0;
}

} // namespace

int main(int count, char **words) {
  // Reports must be out before a leak check or a crash ends the program.
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  Options options;
  if (!parse(count, words, options)) {
    return usage();
  }
  if (!options.level.empty()) {
    if (const int status = support::holdAtLevel(options.level)) {
      return status;
    }
  }
  if (options.list) {
    return list();
  }
  return options.selfTest ? containment::selfTest() : Run(options).all();
}
