// usage: zqcc_bench [--quick] [--results FILE] [REGEX]
// Measures the jobs whose "group/name" matches the expression and prints the tables; the figures of every program go to
// the file.
#include "measure.h"
#include "report.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <regex>

namespace bench {
namespace {

constexpr Pace kFull = {9, 0.012};
constexpr Pace kQuick = {5, 0.004};
constexpr Size kSetUpSize = {1920, 1080};

struct Options {
  Pace pace = kFull;
  std::string file;
  std::string pattern = ".";
};

class Run {
public:
  explicit Run(const Options &options) : pace_(options.pace), pattern_(options.pattern), file_(options.file) {
    if (!options.file.empty()) {
      file_ << resultHeading() << '\n';
    }
  }

  void conversion(const Job &job, const Size &size) {
    if (wanted(job)) {
      for (const Result &result : measure(job, size, pace_, own_, peers_)) {
        add(result);
      }
    }
  }
  void setUp(const Job &job) {
    if (wanted(job)) {
      if (const Runner run = setUpRunner({job, {job.inType, kSetUpSize, {}, {}}, {}})) {
        add(measureAlone(job, kSetUpSize, pace_, run));
      }
    }
  }
  [[nodiscard]] const std::vector<Result> &results() const { return results_; }

private:
  bool wanted(const Job &job) const {
    return std::regex_search(std::string(job.group) + "/" + job.name, pattern_);
  }
  void add(const Result &result) {
    results_.push_back(result);
    if (file_.is_open()) {
      file_ << resultLine(result) << std::endl;
    }
  }

  Pace pace_;
  std::regex pattern_;
  std::ofstream file_;
  std::vector<Program> own_ = ownPrograms();
  std::vector<Program> peers_ = peerPrograms();
  std::vector<Result> results_;
};

int benchmark(const Options &options) {
  Run run(options);
  for (const Job &job : jobs()) {
    for (const Size &size : kSizes) {
      run.conversion(job, size);
    }
  }
  for (const Job &job : calls()) {
    run.conversion(job, kTinySize);
  }
  for (const Job &job : setUps()) {
    run.setUp(job);
  }
  if (run.results().empty()) {
    std::fprintf(stderr, "nothing matches %s\n", options.pattern.c_str());
    return 1;
  }
  std::fputs(report(run.results()).c_str(), stdout);
  return 0;
}

} // namespace
} // namespace bench

int main(int argc, char **argv) {
  bench::Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--quick") == 0) {
      options.pace = bench::kQuick;
    } else if (std::strcmp(argv[i], "--results") == 0 && i + 1 < argc) {
      options.file = argv[++i];
    } else if (argv[i][0] == '-') {
      std::fputs("usage: zqcc_bench [--quick] [--results FILE] [REGEX]\n", stderr);
      return 2;
    } else {
      options.pattern = argv[i];
    }
  }
  return bench::benchmark(options);
}
