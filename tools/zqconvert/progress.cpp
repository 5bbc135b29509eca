#include "progress.h"

#include <algorithm>
#include <cstdio>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace zqconvert {

namespace {

using Clock = std::chrono::steady_clock;

/// Work that ends within this time passes without a bar.
constexpr auto kPatience = std::chrono::milliseconds(700);
constexpr auto kInterval = std::chrono::milliseconds(100);

} // namespace

bool errorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

Progress::Progress(uint64_t total) : total_(total), terminal_(errorIsTerminal()), next_(Clock::now() + kPatience) {}

Progress::~Progress() {
  if (shown_) {
    std::fputs(kClearLine, stderr);
  }
}

void Progress::show(uint64_t done) {
  const Clock::time_point now = Clock::now();
  if (!terminal_ || now < next_) {
    return;
  }
  next_ = now + kInterval;
  shown_ = true;
  std::string text = std::to_string(done) + " frames";
  if (total_ > 0) {
    constexpr uint64_t kWidth = 40;
    const uint64_t filled = std::min(done, total_) * kWidth / total_;
    text = "[" + std::string(filled, '#') + std::string(kWidth - filled, ' ') + "] " + std::to_string(done) + "/" +
           std::to_string(total_) + " frames";
  }
  std::fprintf(stderr, "\r%s\033[K", text.c_str());
  std::fflush(stderr);
}

} // namespace zqconvert
