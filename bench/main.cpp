// usage: zqcc_bench [--quick] [--results FILE] [REGEX]
// Measures the jobs whose "group/name" matches the expression and prints the tables; the figures of every program go to
// the file.
//
// usage: zqcc_bench --frames NUMBER PROGRAM GROUP/NAME WIDTHxHEIGHT
// Lets one program do one job that often, for those who count instructions: what two frames execute more than one is
// free of start-up and set-up.
//
// usage: zqcc_bench --pixels GROUP/NAME WIDTHxHEIGHT
// Prints how many pixels the job makes of a picture of that size.
#include "measure.h"
#include "pictures.h"
#include "report.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
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

std::string nameOf(const Job &job) {
  return std::string(job.group) + "/" + job.name;
}

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
  /// What is no conversion, at the highest level.
  void alone(const Job &job, const Size &size, const std::function<Runner()> &make) {
    if (wanted(job)) {
      own_.back().select();
      if (const Runner run = make()) {
        add(measureAlone(job, size, pace_, run));
      }
    }
  }
  [[nodiscard]] const std::vector<Result> &results() const { return results_; }

private:
  bool wanted(const Job &job) const { return std::regex_search(nameOf(job), pattern_); }
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

/// False if the program has no way to do the job. SIGCONT is a mark for whoever watches and nothing for anybody else.
bool runFrames(const Program &program, const Job &job, const Size &size, int frames) {
  program.select();
  const Frame output = outputFor(job, size);
  const Runner run = program.make({job, inputOf(job.inType, size), output.view()});
  bool done = static_cast<bool>(run);
  while (done && frames-- > 0) {
    std::raise(SIGCONT);
    done = run();
  }
  return done;
}

const Job *jobNamed(const std::string &name) {
  for (const Job &job : jobs()) {
    if (nameOf(job) == name) {
      return &job;
    }
  }
  return nullptr;
}

bool readSize(const char *text, Size &size) {
  return std::sscanf(text, "%dx%d", &size.width, &size.height) == 2;
}

int countedFrames(char **arguments) {
  const std::string programName = arguments[1];
  const Job *job = jobNamed(arguments[2]);
  Size size{};
  if (!readSize(arguments[3], size)) {
    return 2;
  }
  std::vector<Program> programs = ownPrograms();
  const std::vector<Program> peers = peerPrograms();
  programs.insert(programs.end(), peers.begin(), peers.end());
  for (const Program &program : programs) {
    if (job != nullptr && program.name == programName) {
      return runFrames(program, *job, size, std::atoi(arguments[0])) ? 0 : 3;
    }
  }
  return 3;
}

int printPixels(char **arguments) {
  const Job *job = jobNamed(arguments[0]);
  Size size{};
  if (job == nullptr || !readSize(arguments[1], size)) {
    return 2;
  }
  const Size out = job->outputOf(size);
  std::printf("%d\n", out.width * out.height);
  return 0;
}

int benchmark(const Options &options) {
  Run run(options);
  for (const auto &table : {jobs(), calls()}) {
    for (const Job &job : table) {
      for (const Size &size : job.sizes) {
        run.conversion(job, size);
      }
    }
  }
  for (const Job &job : setUps()) {
    run.alone(job, kSetUpSize, [&job] { return setUpRunner({job, {job.inType, kSetUpSize, {}, {}}, {}}); });
  }
  run.alone({"setup", "a context made and released", 0, 0}, kSetUpSize, contextRunner);
  run.alone({"setup", "one-shot call, 16x16", 0, 0}, kTinySize, oneShotRunner);
  run.alone({"setup", "one-shot call, 16x16 to 20x20", 0, 0}, kTinySize, oneShotScaleRunner);
  run.alone({"setup", "one frame in a context of its own, 16x16 to 20x20", 0, 0}, kTinySize, oneFrameRunner);
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
  if (argc == 6 && std::strcmp(argv[1], "--frames") == 0) {
    return bench::countedFrames(argv + 2);
  }
  if (argc == 4 && std::strcmp(argv[1], "--pixels") == 0) {
    return bench::printPixels(argv + 2);
  }
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
