// zqPicture on several threads at the same time, under the thread sanitizer: one converter for the bands of one
// picture, each on the next free thread; and a converter for each thread. What comes out is what one thread makes. The
// process begins with conversions on all threads at once, so that what is found out once, like the levels of vector
// code, is found out by all of them. With --race two threads make the same lines, and the sanitizer has to say so.
#include "picture/cases.h"
#include "picture/reference/own_picture.h"
#include "vector/detect.h"

#include <algorithm>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>
#include <vector>

namespace {

using picture::between;
using picture::Random;
using reference::OwnPicture;

constexpr std::size_t kThreads = 4;

/// A converter, its pictures, and what one thread makes of them.
class Conversion {
public:
  Conversion(const ZqpConversion &conversion, int bandLines)
      : bandLines_(bandLines), in_(conversion.inFormat, conversion.inWidth, conversion.inHeight, {}, 7),
        blank_(conversion.outFormat, conversion.outWidth, conversion.outHeight, {3, 3, 5}, 8), out_(blank_),
        alone_(blank_) {
    (void)zqpConverterMake(&conversion, &converter_);
  }
  Conversion(const Conversion &) = delete;
  Conversion &operator=(const Conversion &) = delete;
  ~Conversion() { zqpConverterFree(converter_); }

  bool convertAlone() { return convertInto(alone_); }
  bool convert() { return convertInto(out_); }
  [[nodiscard]] bool isRight() const { return out_.memory() == alone_.memory(); }

  /// Before threads share it.
  void restart() {
    out_ = blank_;
    inView_ = in_.view();
    outView_ = out_.view();
    nextLine_ = 0;
  }
  /// Makes bands that nobody has begun, until there are none.
  bool convertBands() {
    bool isOk = true;
    for (int line = nextLine_.fetch_add(bandLines_); line < outView_.height; line = nextLine_.fetch_add(bandLines_)) {
      isOk &= zqpConvertLines(converter_, &inView_, &outView_, line, std::min(bandLines_, outView_.height - line)) ==
              ZQP_OK;
    }
    return isOk;
  }
  /// The first line, whoever else makes it.
  bool convertFirstLine() { return zqpConvertLines(converter_, &inView_, &outView_, 0, 1) == ZQP_OK; }

private:
  bool convertInto(OwnPicture &out) {
    const ZqpPicture from = in_.view();
    const ZqpPicture to = out.view();
    return zqpConvert(converter_, &from, &to) == ZQP_OK;
  }

  ZqpConverter *converter_ = nullptr;
  int bandLines_;
  OwnPicture in_;
  OwnPicture blank_;
  OwnPicture out_;
  OwnPicture alone_;
  ZqpPicture inView_{};
  ZqpPicture outView_{};
  std::atomic<int> nextLine_{0};
};

using Conversions = std::vector<std::unique_ptr<Conversion>>;

Conversions everyPair() {
  Random random(11);
  Conversions all;
  for (const int32_t in : picture::inputFormats()) {
    for (const int32_t out : picture::outputFormats()) {
      ZqpConversion c = (all.size() & 1) != 0 ? picture::anySameSize(random, in, out, between(random, 1, 90), 31)
                                              : picture::anyResized(random, in, out, 60);
      all.push_back(std::make_unique<Conversion>(c, between(random, 1, 5)));
    }
  }
  return all;
}

/// Calls work(t) with 0 to kThreads - 1 on as many threads, which begin at the same time; how many said no.
template <class Work>
int onAllThreads(const Work &work) {
  std::barrier start(static_cast<std::ptrdiff_t>(kThreads));
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      start.arrive_and_wait();
      wrong += work(t) ? 0 : 1;
    });
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
  return wrong;
}

/// A converter for each thread: every kThreads-th conversion.
int convertOwn(const Conversions &all) {
  return onAllThreads([&](std::size_t t) {
    bool isOk = true;
    for (std::size_t i = t; i < all.size(); i += kThreads) {
      isOk &= all[i]->convert();
    }
    return isOk;
  });
}

/// One converter after the other for all threads, which share its picture.
int convertShared(const Conversions &all) {
  int wrong = 0;
  for (const auto &conversion : all) {
    conversion->restart();
    wrong += onAllThreads([&](std::size_t) { return conversion->convertBands(); });
    wrong += conversion->isRight() ? 0 : 1;
  }
  return wrong;
}

int race(Conversion &conversion) {
  conversion.restart();
  return onAllThreads([&](std::size_t) { return conversion.convertFirstLine(); });
}

} // namespace

int main(int count, char **words) {
  const Conversions all = everyPair();
  if (count == 2 && std::strcmp(words[1], "--race") == 0) {
    return race(*all.front());
  }
  int wrong = convertOwn(all);
  for (const auto &conversion : all) {
    wrong += conversion->convertAlone() && conversion->isRight() ? 0 : 1;
  }
  wrong += convertShared(all);
  std::printf("%zu conversions on %zu threads, levels %x: %d differ from one thread's\n", all.size(), kThreads,
              zqcc::detectedLevels(), wrong);
  return wrong == 0 ? 0 : 1;
}
