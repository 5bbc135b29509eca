// Nothing outside the planes is read or written, whatever their sizes, addresses and strides: planes lie against pages
// that nobody may touch, and inputs are read-only.
#include "picture/guarded_case.h"

#include <gtest/gtest.h>

namespace {

using picture::between;
using picture::GuardedCase;
using picture::GuardedRoom;
using picture::Random;

constexpr int kMost = 70;

class Guarded : public testing::Test {
protected:
  /// Calls make(random, in, out), which is to return a conversion, for every pair of formats, and tries it.
  template <class Make>
  void forAllPairs(const Make &make) {
    for (const int32_t in : picture::inputFormats()) {
      for (const int32_t out : picture::outputFormats()) {
        const ZqpConversion c = make(random_, in, out);
        const std::string report = GuardedCase(room_, c, random_).run();
        ASSERT_EQ(report, "");
      }
    }
  }

private:
  GuardedRoom room_;
  Random random_{20};
};

TEST_F(Guarded, EveryWidth) {
  for (int width = 1; width <= kMost && !HasFatalFailure(); ++width) {
    forAllPairs([&](Random &random, int32_t in, int32_t out) {
      return picture::anySameSize(random, in, out, width, between(random, 1, 5));
    });
  }
}

TEST_F(Guarded, EveryHeight) {
  for (int height = 1; height <= kMost && !HasFatalFailure(); height += height < 8 ? 1 : 3) {
    forAllPairs([&](Random &random, int32_t in, int32_t out) {
      return picture::anySameSize(random, in, out, between(random, 1, 5), height);
    });
  }
}

/// The usual colours, upright: the shortest ways, which put pixels together straight from the input's memory.
TEST_F(Guarded, EveryWidthUprightInOneMatrix) {
  for (int width = 1; width <= kMost && !HasFatalFailure(); width += width < 36 ? 1 : 2) {
    forAllPairs([&](Random &random, int32_t in, int32_t out) {
      ZqpConversion c = picture::usual(in, out, width, between(random, 1, 4));
      c.filter = between(random, ZQP_FILTER_BILINEAR, ZQP_FILTER_AREA);
      c.inColours.siting = c.outColours.siting = between(random, ZQP_SITING_LEFT, ZQP_SITING_CENTRE);
      return c;
    });
  }
}

/// Other sizes, and parts that begin and end anywhere in the input.
TEST_F(Guarded, ResizedAndCropped) {
  for (int round = 0; round < 12 && !HasFatalFailure(); ++round) {
    forAllPairs([](Random &random, int32_t in, int32_t out) { return picture::anyResized(random, in, out, kMost); });
  }
}

/// Rows of several chunks.
TEST_F(Guarded, LongLines) {
  for (int round = 0; round < 2 && !HasFatalFailure(); ++round) {
    forAllPairs([&](Random &random, int32_t in, int32_t out) {
      ZqpConversion c = picture::anyResized(random, in, out, 4);
      c.inWidth += between(random, 200, 4000);
      (c.orientation >= 5 ? c.outHeight : c.outWidth) += round == 0 ? c.inWidth - 1 : between(random, 20, 2000);
      return c;
    });
  }
}

} // namespace
