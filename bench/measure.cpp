#include "measure.h"

#include "pictures.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <utility>

namespace bench {
namespace {

/// A peer that takes this much longer than the best of them after two rounds is not going to be the best.
constexpr double kHopeless = 1.3;

/// Processor time: what others use does not count.
double seconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// A program at work on a job.
class Entrant {
public:
  Entrant(const Program &program, Runner run, bool own) : program_(&program), run_(std::move(run)), own_(own) {}

  [[nodiscard]] bool own() const { return own_; }
  [[nodiscard]] double best() const { return *std::min_element(times_.begin(), times_.end()); }
  [[nodiscard]] double median() const {
    std::vector<double> sorted = times_;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }
  [[nodiscard]] const std::string &name() const { return program_->name; }

  /// The second run is free of page faults and tells how many make a series.
  void warmUp(double seriesSeconds) {
    program_->select();
    run_();
    calls_ = 1;
    double taken = series();
    while (taken * calls_ < seriesSeconds / 8) {
      calls_ *= 4;
      taken = series();
    }
    calls_ = std::max(1, static_cast<int>(seriesSeconds / taken));
  }
  void measure() {
    program_->select();
    times_.push_back(series());
  }

private:
  /// Seconds a call.
  double series() {
    const double start = seconds();
    for (int i = 0; i < calls_; ++i) {
      run_();
    }
    return (seconds() - start) / calls_;
  }

  const Program *program_;
  Runner run_;
  bool own_;
  int calls_ = 1;
  std::vector<double> times_;
};

void dropHopeless(std::vector<Entrant> &entrants) {
  double best = -1;
  for (const Entrant &entrant : entrants) {
    if (!entrant.own() && (best < 0 || entrant.best() < best)) {
      best = entrant.best();
    }
  }
  std::erase_if(entrants, [best](const Entrant &e) { return !e.own() && e.best() > kHopeless * best; });
}

/// A program that makes the picture, or nothing. Every level of this library makes the reference's bytes.
std::vector<Entrant> entrantsOf(const Task &task, const View &reference, std::span<const Program> programs, bool own) {
  std::vector<Entrant> entrants;
  for (const Program &program : programs) {
    program.select();
    Runner run = program.make(task);
    if (!run || !run()) {
      continue;
    }
    const double difference = largestDifference(reference, task.output);
    if (difference > (own ? 0 : task.job.tolerance)) {
      std::fprintf(stderr, "%s/%s: %s makes another picture: mean difference %.1f\n", task.job.group, task.job.name,
                   program.name.c_str(), difference);
      continue;
    }
    entrants.emplace_back(program, std::move(run), own);
  }
  return entrants;
}

Result resultOf(const Job &job, const Size &size, const Entrant &entrant, double pixels) {
  return {job.group, job.name, entrant.name(), size, entrant.own(), 1e9 * entrant.best(), 1e9 * entrant.median(),
          pixels};
}

} // namespace

std::vector<Result> measure(const Job &job, const Size &size, const Pace &pace, std::span<const Program> own,
                            std::span<const Program> peers) {
  const Frame reference = outputFor(job, size);
  own.front().select();
  const Runner run = own.front().make({job, inputOf(job.inType, size), reference.view()});
  if (!run || !run()) {
    std::fprintf(stderr, "%s/%s: the library refuses\n", job.group, job.name);
    return {};
  }
  const Frame output = outputFor(job, size);
  const Task task{job, inputOf(job.inType, size), output.view()};
  std::vector<Entrant> entrants = entrantsOf(task, reference.view(), own, true);
  std::vector<Entrant> others = entrantsOf(task, reference.view(), peers, false);
  std::move(others.begin(), others.end(), std::back_inserter(entrants));

  for (Entrant &entrant : entrants) {
    entrant.warmUp(pace.seriesSeconds);
  }
  for (int round = 0; round < pace.rounds; ++round) {
    for (Entrant &entrant : entrants) {
      entrant.measure();
    }
    if (round == 1) {
      dropHopeless(entrants);
    }
  }
  const double pixels = static_cast<double>(output.view().size.width) * output.view().size.height;
  std::vector<Result> results;
  for (const Entrant &entrant : entrants) {
    results.push_back(resultOf(job, size, entrant, pixels));
  }
  return results;
}

Result measureAlone(const Job &job, const Size &size, const Pace &pace, const Runner &run) {
  const Program program{"set-up", {}};
  Entrant entrant(program, run, true);
  entrant.warmUp(pace.seriesSeconds);
  for (int round = 0; round < pace.rounds; ++round) {
    entrant.measure();
  }
  return resultOf(job, size, entrant, 0);
}

} // namespace bench
