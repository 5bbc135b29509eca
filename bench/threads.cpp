#include "threads.h"

#include "picture_library.h"
#include "pictures.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <limits>
#include <thread>

namespace bench {
namespace {

constexpr int32_t kBands = 4;
constexpr Job kThreaded[] = {
    {"zqpicture", "nv12_to_rgb565", COLOR_YUV420_PACK, COLOR_RGB565},
    {"zqpicture", "nv12_to_bgra", COLOR_YUV420_PACK, kBgra},
    {"zqpicture", "bgra_to_i420", kBgra, COLOR_YUV420_PLANAR},
};

/// A conversion whose bands are taken by whichever of two threads is free. The second one waits for pictures as long as
/// this lives, the way a program's worker does.
class TwoThreads {
public:
  explicit TwoThreads(const Task &task)
      : converter_(converterFor(task)), in_(zqpPictureOf(task.input)), out_(zqpPictureOf(task.output)),
        worker_([this] { serve(); }) {}
  ~TwoThreads() {
    stops_ = true;
    begin();
    worker_.join();
  }
  TwoThreads(const TwoThreads &) = delete;
  TwoThreads &operator=(const TwoThreads &) = delete;

  void alone() { zqpConvert(converter_.get(), &in_, &out_); }
  void together() {
    next_ = 0;
    finished_ = 0;
    begin();
    takeBands();
    while (finished_ < kBands) {
      std::this_thread::yield();
    }
  }

private:
  void begin() {
    ++picture_;
    picture_.notify_one();
  }
  void serve() {
    for (uint32_t seen = 0; !stops_;) {
      picture_.wait(seen);
      ++seen;
      takeBands();
    }
  }
  void takeBands() {
    const int32_t lines = (out_.height + kBands - 1) / kBands;
    for (int32_t band = next_++; band < kBands; band = next_++) {
      const int32_t first = band * lines;
      zqpConvertLines(converter_.get(), &in_, &out_, first, std::min(lines, out_.height - first));
      ++finished_;
    }
  }

  Converter converter_;
  ZqpPicture in_, out_;
  std::atomic<uint32_t> picture_{0};
  std::atomic<int32_t> next_{kBands}, finished_{kBands};
  std::atomic<bool> stops_{false};
  std::thread worker_;
};

template <class Function>
double milliseconds(const Function &function) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  function();
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::string line(const Job &job, const Pace &pace) {
  const Frame output = outputFor(job, kFullHd);
  TwoThreads conversion({job, inputOf(job.inType, kFullHd), output.view()});
  double alone = std::numeric_limits<double>::max();
  double together = alone;
  for (int i = 0; i < 30 * pace.rounds; ++i) { // in turns: whatever else runs meets both
    alone = std::min(alone, milliseconds([&] { conversion.alone(); }));
    together = std::min(together, milliseconds([&] { conversion.together(); }));
  }
  char text[128];
  std::snprintf(text, sizeof text, "| %s | %.3f | %.3f | %.2f |\n", job.name, alone, together, alone / together);
  return text;
}

} // namespace

std::string threadTable(const Pace &pace) {
  picturePrograms().back().select();
  std::string text = "| zqPicture in four bands at 1920x1080 | one thread, ms | two threads, ms | ratio |\n"
                     "| --- | ---: | ---: | ---: |\n";
  for (const Job &job : kThreaded) {
    text += line(job, pace);
  }
  return text + "\n";
}

} // namespace bench
