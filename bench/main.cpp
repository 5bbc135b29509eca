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
#include "threads.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <regex>
#include <utility>

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

  void conversions(std::span<const Job> jobs, std::span<const Program> own, std::span<const Program> peers) {
    for (const Job &job : jobs) {
      for (const Size &size : job.sizes) {
        conversion(job, size, own, peers);
      }
    }
  }
  /// What is no conversion, at the highest level.
  void alone(const Job &job, const Size &size, const std::function<Runner()> &make) {
    if (wanted(job)) {
      ownPrograms().back().select();
      if (const Runner run = make()) {
        add(measureAlone(job, size, pace_, run));
      }
    }
  }
  /// What was measured since this was asked last.
  [[nodiscard]] std::vector<Result> take() { return std::exchange(results_, {}); }

private:
  bool wanted(const Job &job) const { return std::regex_search(nameOf(job), pattern_); }
  void conversion(const Job &job, const Size &size, std::span<const Program> own, std::span<const Program> peers) {
    if (wanted(job)) {
      for (const Result &result : measure(job, size, pace_, own, peers)) {
        add(result);
      }
    }
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

const Job *jobNamed(std::span<const Job> table, const std::string &name) {
  for (const Job &job : table) {
    if (nameOf(job) == name) {
      return &job;
    }
  }
  return nullptr;
}

const Job *jobNamed(const std::string &name) {
  const Job *job = jobNamed(jobs(), name);
  return job == nullptr ? jobNamed(pictureJobs(), name) : job;
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
  const bool isPicture = jobNamed(pictureJobs(), arguments[2]) != nullptr;
  std::vector<Program> programs = isPicture ? picturePrograms() : ownPrograms();
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

std::string firstSheet(Run &run, const std::vector<Program> &peers, std::vector<Result> &all) {
  for (const auto &table : {jobs(), calls()}) {
    run.conversions(table, ownPrograms(), peers);
  }
  for (const Job &job : setUps()) {
    run.alone(job, kSetUpSize, [&job] { return setUpRunner({job, {job.inType, kSetUpSize, {}, {}}, {}}); });
  }
  run.alone({"setup", "a context made and released", 0, 0}, kSetUpSize, contextRunner);
  run.alone({"setup", "one-shot call, 16x16", 0, 0}, kTinySize, oneShotRunner);
  run.alone({"setup", "one-shot call, 16x16 to 20x20", 0, 0}, kTinySize, oneShotScaleRunner);
  run.alone({"setup", "one frame in a context of its own, 16x16 to 20x20", 0, 0}, kTinySize, oneFrameRunner);
  all = run.take();
  return all.empty() ? ""
                     : report(all, {"job", "geometric mean over jobs and sizes", groups(), kMustOverall, kAimOverall});
}

std::string pictureSheet(Run &run, const std::vector<Program> &peers, const Pace &pace, std::vector<Result> &all) {
  const std::vector<Program> own = picturePrograms();
  run.conversions(pictureJobs(), own, peers);
  run.conversions(pictureJobsOfBoth(), own, firstLibraryPrograms());
  const std::vector<Result> results = run.take();
  all.insert(all.end(), results.begin(), results.end());
  if (results.empty()) {
    return "";
  }
  return report(results, {"zqPicture", "zqPicture beside", pictureGroups(), 0, 0}) + threadTable(pace);
}

int benchmark(const Options &options) {
  Run run(options);
  const std::vector<Program> peers = peerPrograms();
  std::vector<Result> all;
  std::string text = firstSheet(run, peers, all);
  text += pictureSheet(run, peers, options.pace, all);
  if (all.empty()) {
    std::fprintf(stderr, "nothing matches %s\n", options.pattern.c_str());
    return 1;
  }
  std::fputs((text + noise(all)).c_str(), stdout);
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
