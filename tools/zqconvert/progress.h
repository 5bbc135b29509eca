// A bar on the terminal for work that takes long enough to wonder about.
#pragma once

#include <chrono>
#include <cstdint>

namespace zqconvert {

bool errorIsTerminal();
/// Takes a bar away, so that what follows starts on a clean line.
inline constexpr char kClearLine[] = "\r\033[K";

class Progress {
public:
  /// `total` frames are expected; 0 if nobody knows. Shows nothing unless standard error is a terminal.
  explicit Progress(uint64_t total);
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;
  ~Progress();

  void show(uint64_t done);

private:
  uint64_t total_;
  bool terminal_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point next_;
};

} // namespace zqconvert
