// One converter, several threads: whole pictures and bands of one.
#include "picture/bench.h"
#include "picture/reference/exact_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace {

using picture::difference;
using picture::Random;
using reference::OwnPicture;

constexpr int kThreads = 4;

template <class Work>
void onThreads(const Work &work) {
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back(work, thread);
  }
  for (std::thread &thread : threads) {
    thread.join();
  }
}

ZqpConversion anyConversion(Random &random) {
  const std::vector<int32_t> ins = picture::inputFormats();
  const std::vector<int32_t> outs = picture::outputFormats();
  const int32_t in = ins[random() % ins.size()];
  const int32_t out = outs[random() % outs.size()];
  return picture::anyResized(random, in, out, 90);
}

TEST(Threads, EachConvertAPictureOfItsOwn) {
  for (uint32_t seed = 1; seed <= 40; ++seed) {
    Random random(seed);
    const ZqpConversion c = anyConversion(random);
    const auto converter = picture::makeConverter(c);
    ASSERT_TRUE(converter);
    std::vector<OwnPicture> ins;
    std::vector<OwnPicture> made;
    std::vector<OwnPicture> expected;
    for (uint32_t thread = 0; thread < kThreads; ++thread) {
      ins.emplace_back(c.inFormat, c.inWidth, c.inHeight, picture::anyInputLie(random), seed + thread);
      made.emplace_back(c.outFormat, c.outWidth, c.outHeight, picture::anyOutputLie(random), seed);
      expected.push_back(made.back());
      convertExactly(c, ins.back(), expected.back());
    }
    std::atomic<int> errors{0};
    onThreads([&](int thread) {
      const auto i = static_cast<std::size_t>(thread);
      const ZqpPicture in = ins[i].view();
      const ZqpPicture out = made[i].view();
      for (int again = 0; again < 3; ++again) {
        errors += zqpConvert(converter.get(), &in, &out) == ZQP_OK ? 0 : 1;
      }
    });
    EXPECT_EQ(errors, 0);
    for (std::size_t i = 0; i < made.size(); ++i) {
      ASSERT_EQ(difference(made[i], expected[i]), "") << picture::describe(c);
    }
  }
}

/// Bands of a few lines are taken by whoever comes next.
TEST(Threads, ShareThePictureByBands) {
  for (uint32_t seed = 101; seed <= 160; ++seed) {
    Random random(seed);
    const ZqpConversion c = anyConversion(random);
    const auto converter = picture::makeConverter(c);
    ASSERT_TRUE(converter);
    OwnPicture in(c.inFormat, c.inWidth, c.inHeight, picture::anyInputLie(random), seed);
    OwnPicture made(c.outFormat, c.outWidth, c.outHeight, picture::anyOutputLie(random), seed);
    OwnPicture expected = made;
    convertExactly(c, in, expected);
    const ZqpPicture from = in.view();
    const ZqpPicture to = made.view();
    const int lines = picture::between(random, 1, 7);
    std::atomic<int> next{0};
    std::atomic<int> errors{0};
    onThreads([&](int) {
      for (int first = next.fetch_add(lines); first < c.outHeight; first = next.fetch_add(lines)) {
        const int32_t error = zqpConvertLines(converter.get(), &from, &to, first, std::min(lines, c.outHeight - first));
        errors += error == ZQP_OK ? 0 : 1;
      }
    });
    EXPECT_EQ(errors, 0);
    ASSERT_EQ(difference(made, expected), "") << picture::describe(c);
  }
}

TEST(Threads, MakeAndFreeConvertersAtOnce) {
  std::atomic<int> errors{0};
  onThreads([&](int thread) {
    for (uint32_t round = 0; round < 50; ++round) {
      Random random(round * kThreads + static_cast<uint32_t>(thread));
      const ZqpConversion c = anyConversion(random);
      ZqpConverter *converter = nullptr;
      errors += zqpConverterMake(&c, &converter) == ZQP_OK ? 0 : 1;
      zqpConverterFree(converter);
    }
  });
  EXPECT_EQ(errors, 0);
}

} // namespace
