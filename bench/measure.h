// Times of several programs that do the same job. They take turns in short series, so that whatever else the machine
// does meets all of them; the shortest series of each counts, because other work can only make a series longer.
#pragma once

#include "runner.h"

#include <span>
#include <string>
#include <vector>

namespace bench {

struct Pace {
  int rounds;           ///< series of each program
  double seriesSeconds; ///< about how long one takes
};

struct Result {
  std::string group, job, program;
  Size size;
  bool own = false;
  double best = 0;   ///< ns a call
  double median = 0; ///< of the series, for judging how quiet the machine was
  double pixels = 0; ///< that a call makes
};

/// Results of all programs that can do the job. What makes another picture than this library is left out and told on
/// the error stream; peers that are far behind leave after two rounds.
std::vector<Result> measure(const Job &job, const Size &size, const Pace &pace, std::span<const Program> own,
                            std::span<const Program> peers);

/// The same for something that is no conversion.
Result measureAlone(const Job &job, const Size &size, const Pace &pace, const Runner &run);

} // namespace bench
