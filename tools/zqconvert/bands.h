// Work that is done in parts by several threads.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zqconvert {

/// Threads that wait for work between frames. Signals reach the thread that made them, never these.
class Bands {
public:
  /// `threads` counts the one that calls run(). Throws Error if they cannot be had.
  explicit Bands(int threads);
  Bands(const Bands &) = delete;
  Bands &operator=(const Bands &) = delete;
  ~Bands();

  [[nodiscard]] int threads() const { return static_cast<int>(helpers_.size()) + 1; }
  /// Calls work(0) to work(count - 1), each once, on all threads, and returns when all are done. `work` throws nothing.
  void run(int count, const std::function<void(int)> &work);

private:
  void start(int helpers);
  void end();
  void help();
  /// Takes parts until none is left. Called and returns with `lock` held.
  void takeParts(std::unique_lock<std::mutex> &lock);

  std::mutex mutex_;
  std::condition_variable begins_;
  std::condition_variable ends_;
  const std::function<void(int)> *work_ = nullptr;
  int next_ = 0;    ///< The part that nobody has taken yet.
  int count_ = 0;   ///< Parts in all.
  int pending_ = 0; ///< Parts that are not done.
  bool stops_ = false;
  std::vector<std::thread> helpers_;
};

} // namespace zqconvert
