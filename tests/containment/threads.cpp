// Conversions on different handles on different threads at the same time, under the thread sanitizer: every cell of the
// routine tables, and results equal to those of one thread. The process begins with frames on all threads at once, so
// that what is found out once, like the levels of vector code, is found out by all of them. Nobody changes the matrix
// meanwhile; --race does, and the sanitizer has to say so.
#include "containment/cells.h"
#include "support/picture.h"
#include "vector/detect.h"

#include <algorithm>
#include <barrier>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numeric>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using containment::Mode;
using containment::Sizes;

constexpr std::size_t kThreads = 6;
constexpr int kFrames = 3;
constexpr int kPlaneBytes = 128 * 128 * 4;

/// A conversion with a handle, planes and result of its own. The planes are larger than any type needs.
class Conversion {
public:
  Conversion(const Mode &mode, const Sizes &sizes) : params_(containment::recordOf(mode, sizes)) {
    for (auto &plane : in_) {
      plane.resize(kPlaneBytes);
      support::fill(plane.data(), plane.size(), support::Fill::Noise, 3);
    }
    params_.inStride = support::tightStride(mode.inType, sizes.width) + 4;
    params_.outStride = 128 * 3;
  }
  Conversion(const Conversion &) = delete;
  Conversion &operator=(const Conversion &) = delete;
  ~Conversion() { zqCCUninit(handle_); }

  uint32_t prepare() {
    const uint32_t code = zqCCInit(&handle_);
    return code == CC_OK ? zqCCSetParameter(handle_, PARAM_CONVERT_DESC, &params_) : code;
  }

  /// The bytes of all output planes after one frame; empty if the library refuses it.
  std::vector<uint8_t> frame() {
    std::vector<uint8_t> out(std::size_t{3} * kPlaneBytes, 0x5A);
    ConvertParams params = params_;
    for (std::size_t i = 0; i < 3; ++i) {
      params.inBuf[i] = in_[i].data();
      params.outBuf[i] = out.data() + i * kPlaneBytes;
    }
    return zqCCProcess(handle_, &params) == CC_OK ? out : std::vector<uint8_t>{};
  }

  std::vector<uint8_t> alone; ///< what one thread makes of it

private:
  ConvertParams params_;
  std::vector<uint8_t> in_[3];
  ConvertContext *handle_ = nullptr;
};

using Conversions = std::vector<std::unique_ptr<Conversion>>;

/// One conversion for every cell, with sizes of each ratio class; `reached` collects the cells.
Conversions everyCell(std::set<int> &reached) {
  Conversions all;
  for (const Sizes &sizes : {Sizes{48, 40, 48, 40}, Sizes{44, 36, 50, 30}, Sizes{64, 48, 32, 24}, Sizes{48, 32, 36, 24},
                             Sizes{32, 32, 48, 48}, Sizes{24, 20, 48, 40}}) {
    const bool same = sizes.width == sizes.outWidth;
    for (const Mode &mode : containment::allModes()) {
      const int cell = same == (mode.isResize == 0) ? containment::cellOf(containment::recordOf(mode, sizes)) : -1;
      if (cell >= 0 && reached.insert(cell).second) {
        all.push_back(std::make_unique<Conversion>(mode, sizes));
      }
    }
  }
  return all;
}

/// Calls `work` with 0 to kThreads - 1 on as many threads, which begin at the same time.
template <class Work>
void onAllThreads(const Work &work) {
  std::barrier start(static_cast<std::ptrdiff_t>(kThreads));
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arrive_and_wait();
      work(t);
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
}

/// The first frames of the process, all at the same time: what is found out once in a process is found out here.
std::vector<std::vector<uint8_t>> firstFrames(const Conversions &all) {
  std::vector<std::vector<uint8_t>> frames(kThreads);
  onAllThreads([&](std::size_t t) { frames[t] = all[t]->frame(); });
  return frames;
}

/// Each thread takes every kThreads-th conversion, all of them at the same time.
int convertTogether(const Conversions &all) {
  std::vector<int> wrong(kThreads, 0);
  onAllThreads([&](std::size_t t) {
    for (int n = 0; n < kFrames; ++n) {
      for (std::size_t i = t; i < all.size(); i += kThreads) {
        wrong[t] += all[i]->frame() == all[i]->alone ? 0 : 1;
      }
    }
  });
  return std::accumulate(wrong.begin(), wrong.end(), 0);
}

/// What hosts must not do: one thread selects a matrix while another converts.
void race(Conversion &conversion) {
  ConvertContext *handle = nullptr;
  if (zqCCInit(&handle) != CC_OK) {
    return;
  }
  std::barrier start(2);
  std::thread other([&] {
    start.arrive_and_wait();
    for (int i = 0; i < 50; ++i) {
      zqCCSetParameter(handle, PARAM_COLOR_MATRIX, nullptr);
    }
  });
  start.arrive_and_wait();
  conversion.frame();
  other.join();
  zqCCUninit(handle);
}

} // namespace

int main(int count, char **words) {
  std::set<int> reached;
  const Conversions all = everyCell(reached);
  std::size_t filled = 0;
  for (const containment::Cell &cell : containment::cells()) {
    filled += cell.routine != nullptr ? 1 : 0;
  }
  if (std::any_of(all.begin(), all.end(), [](const auto &conversion) { return conversion->prepare() != CC_OK; })) {
    std::puts("a conversion is refused");
    return 1;
  }
  const std::vector<std::vector<uint8_t>> first = firstFrames(all);
  for (const auto &conversion : all) {
    conversion->alone = conversion->frame();
    if (conversion->alone.empty()) {
      std::puts("a frame is refused");
      return 1;
    }
  }
  if (count == 2 && std::strcmp(words[1], "--race") == 0) {
    race(*all.front());
    return 0;
  }
  int wrong = convertTogether(all);
  for (std::size_t t = 0; t < kThreads; ++t) {
    wrong += first[t] == all[t]->alone ? 0 : 1;
  }
  std::printf("%zu conversions through %zu of %zu cells, %d frames each on %zu threads, levels %x: %d differ from one "
              "thread's\n",
              all.size(), reached.size(), filled, kFrames, kThreads, zqcc::detectedLevels(), wrong);
  return wrong == 0 && reached.size() == filled ? 0 : 1;
}
