#include "bands.h"

#include "error.h"

#include <csignal>
#include <system_error>

namespace zqconvert {

namespace {

/// While it lives, threads are born deaf to signals: what ends the program follows the main thread's list of files.
class SignalsHeld {
public:
#ifdef _WIN32
  SignalsHeld() = default;
#else
  SignalsHeld() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsHeld() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }
#endif
  SignalsHeld(const SignalsHeld &) = delete;
  SignalsHeld &operator=(const SignalsHeld &) = delete;

private:
#ifndef _WIN32
  sigset_t before_{};
#endif
};

} // namespace

Bands::Bands(int threads) {
  try {
    start(threads - 1);
  } catch (const std::system_error &) {
    end();
    throw Error("--threads " + std::to_string(threads) + ": the system gives no more threads");
  }
}

void Bands::start(int helpers) {
  [[maybe_unused]] const SignalsHeld held;
  for (int i = 0; i < helpers; ++i) {
    helpers_.emplace_back([this] { help(); });
  }
}

Bands::~Bands() {
  end();
}

void Bands::end() {
  {
    const std::scoped_lock lock(mutex_);
    stops_ = true;
  }
  begins_.notify_all();
  for (std::thread &helper : helpers_) {
    helper.join();
  }
  helpers_.clear();
}

void Bands::takeParts(std::unique_lock<std::mutex> &lock) {
  while (next_ < count_) {
    const int part = next_++;
    const auto &work = *work_;
    lock.unlock();
    work(part);
    lock.lock();
    if (--pending_ == 0) {
      ends_.notify_one();
    }
  }
}

void Bands::help() {
  std::unique_lock lock(mutex_);
  while (!stops_) {
    takeParts(lock);
    begins_.wait(lock, [this] { return stops_ || next_ < count_; });
  }
}

void Bands::run(int count, const std::function<void(int)> &work) {
  std::unique_lock lock(mutex_);
  work_ = &work;
  next_ = 0;
  count_ = count;
  pending_ = count;
  begins_.notify_all();
  takeParts(lock);
  ends_.wait(lock, [this] { return pending_ == 0; });
}

} // namespace zqconvert
