// Benchmarks of every family of routes: family/job/size/library, with ns per output pixel as a counter. Libraries
// follow one another job by job, so that all of them meet the same conditions and their ratios mean something.
#include "runner.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>

namespace bench {
namespace {

struct Library {
  const char *name;
  MakeRunner make;
};

constexpr Library kLibraries[] = {
    {"zqcc", libraryRunner},
#ifdef ZQCC_BENCH_LIBYUV
    {"libyuv", libyuvRunner},
#endif
#ifdef ZQCC_BENCH_SWSCALE
    {"swscale", swscaleRunner},
#endif
};

constexpr Size kTinySize = {16, 16};

/// Input pictures are drawn once and shared.
const View &inputOf(int32_t type, const Size &size) {
  static std::map<std::pair<int32_t, int32_t>, Frame> frames;
  const auto key = std::make_pair(type, size.width);
  auto found = frames.find(key);
  if (found == frames.end()) {
    found = frames.emplace(key, Frame(type, size)).first;
    found->second.drawScene();
  }
  return found->second.view();
}

Frame outputFor(const Job &job, const Size &size) {
  const Size out = job.outputOf(size);
  return {job.outType, job.quarterTurns() ? turned(out) : out};
}

/// How far the output is from what this library makes of the same picture; negative if that cannot be told.
double distanceFromLibrary(const Task &task) {
  const Frame reference = outputFor(task.job, task.input.size);
  const Runner run = libraryRunner({task.job, task.input, reference.view()});
  return run && run() ? largestDifference(reference.view(), task.output) : -1;
}

void runJob(benchmark::State &state, const Job &job, const Size &size, const Library &library) {
  const Frame output = outputFor(job, size);
  const Task task{job, inputOf(job.inType, size), output.view()};
  const Runner run = library.make(task);
  if (!run || !run()) {
    state.SkipWithError("not offered");
    return;
  }
  const double difference = distanceFromLibrary(task);
  if (difference < 0 || difference > job.tolerance) {
    state.SkipWithError(("another picture: mean difference " + std::to_string(difference)).c_str());
    return;
  }
  for (auto step : state) {
    static_cast<void>(step);
    run();
    benchmark::ClobberMemory();
  }
  const double pixels = static_cast<double>(output.view().size.width) * output.view().size.height;
  // Inverted rate of 10^-9 pixels: seconds for 10^-9 of them are nanoseconds for one.
  state.counters["ns_per_pixel"] =
      benchmark::Counter(pixels * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  state.counters["difference"] = difference;
}

/// Whether the library has a way to do the job, tried on a tiny picture.
bool offers(const Library &library, const Job &job) {
  const Frame output = outputFor(job, kTinySize);
  return static_cast<bool>(library.make({job, inputOf(job.inType, kTinySize), output.view()}));
}

void registerJob(const Job &job, const Size &size) {
  const std::string sizeName = std::to_string(size.width) + "x" + std::to_string(size.height);
  for (const Library &library : kLibraries) {
    if (!offers(library, job)) {
      continue;
    }
    const std::string name = std::string(job.family) + "/" + job.name + "/" + sizeName + "/" + library.name;
    benchmark::RegisterBenchmark(
        name.c_str(), [&job, size, &library](benchmark::State &state) { runJob(state, job, size, library); });
  }
}

/// A frame of 256 pixels costs little but the call itself.
constexpr Job kTinyJobs[] = {
    {"call", "i420_to_rgb565", COLOR_YUV420_PLANAR, COLOR_RGB565},
    {"call", "i420_to_rgb565_5:4", COLOR_YUV420_PLANAR, COLOR_RGB565, {5, 4}, Sampling::Bilinear},
    {"call", "yuyv_to_rgb565", COLOR_YUV422_YUYV, COLOR_RGB565},
};

void registerAll() {
  for (const Job &job : jobs()) {
    for (const Size &size : kSizes) {
      registerJob(job, size);
    }
  }
  for (const Job &job : kTinyJobs) {
    registerJob(job, kTinySize);
  }
  registerOverhead();
}

} // namespace
} // namespace bench

int main(int argc, char **argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  bench::registerAll();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
}
