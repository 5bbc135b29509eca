// The library beside the model: whole buffers, at every level, in any bands.
#include "picture/bench.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using picture::between;
using picture::Content;
using picture::Random;
using picture::Trial;

/// Calls make(random, in, out), which is to return a conversion, `rounds` times for every pair of formats, and tries
/// it.
template <class Make>
void forAllPairs(int rounds, uint32_t seed, const Make &make) {
  for (int round = 0; round < rounds; ++round) {
    for (const int32_t in : picture::inputFormats()) {
      for (const int32_t out : picture::outputFormats()) {
        Random random(++seed);
        const ZqpConversion c = make(random, in, out);
        const Content content = picture::kContents[between(random, 0, 3)];
        const std::string report = Trial(c, content, seed).run();
        ASSERT_EQ(report, "") << "seed " << seed;
      }
    }
  }
}

TEST(Conversion, SameSize) {
  forAllPairs(6, 1000000, [](Random &random, int32_t in, int32_t out) {
    return picture::anySameSize(random, in, out, between(random, 1, 40), between(random, 1, 40));
  });
}

TEST(Conversion, SameSizeInOneMatrix) {
  forAllPairs(4, 2000000, [](Random &random, int32_t in, int32_t out) {
    ZqpConversion c = picture::anySameSize(random, in, out, between(random, 1, 40), between(random, 1, 40));
    c.inColours.range = c.outColours.range = ZQP_RANGE_USUAL;
    c.inColours.siting = c.outColours.siting;
    picture::keepColours(c);
    return c;
  });
}

TEST(Conversion, Upright) {
  forAllPairs(3, 3000000, [](Random &random, int32_t in, int32_t out) {
    ZqpConversion c = picture::anySameSize(random, in, out, between(random, 1, 300), between(random, 1, 9));
    if (c.orientation >= 5) {
      std::swap(c.outWidth, c.outHeight);
    }
    c.orientation = 1;
    return c;
  });
}

TEST(Conversion, Resized) {
  forAllPairs(8, 4000000,
              [](Random &random, int32_t in, int32_t out) { return picture::anyResized(random, in, out, 40); });
}

TEST(Conversion, CroppedAtTheSameSize) {
  forAllPairs(3, 5000000, [](Random &random, int32_t in, int32_t out) {
    const int width = between(random, 1, 40);
    const int height = between(random, 1, 40);
    ZqpConversion c = picture::anySameSize(random, in, out, width, height);
    c.crop = {between(random, 0, 9), between(random, 0, 9), width, height};
    c.inWidth = c.crop.x + width + between(random, 0, 9);
    c.inHeight = c.crop.y + height + between(random, 0, 9);
    return c;
  });
}

TEST(Conversion, LongLines) {
  forAllPairs(1, 6000000, [](Random &random, int32_t in, int32_t out) {
    const int width = between(random, 200, 2500);
    ZqpConversion c = picture::anySameSize(random, in, out, width, between(random, 1, 5));
    return c;
  });
}

TEST(Conversion, LongLinesResized) {
  forAllPairs(1, 7000000, [](Random &random, int32_t in, int32_t out) {
    ZqpConversion c = picture::anyResized(random, in, out, 12);
    c.inWidth += between(random, 0, 1500);
    (c.orientation >= 5 ? c.outHeight : c.outWidth) += between(random, 0, 700);
    if (c.crop.width != 0) {
      c.crop.width = between(random, 1, c.inWidth - c.crop.x);
    }
    return c;
  });
}

TEST(Conversion, HighPictures) {
  forAllPairs(1, 8000000, [](Random &random, int32_t in, int32_t out) {
    ZqpConversion c = picture::anyResized(random, in, out, 12);
    c.inHeight += between(random, 0, 1500);
    (c.orientation >= 5 ? c.outWidth : c.outHeight) += between(random, 0, 700);
    if (c.crop.width != 0) {
      c.crop.height = between(random, 1, c.inHeight - c.crop.y);
    }
    return c;
  });
}

/// Every number of columns, so that every way in which the last group of a row may be cut occurs.
TEST(Conversion, EveryWidth) {
  const std::vector<int32_t> inputs = picture::inputFormats();
  const std::vector<int32_t> outputs = picture::outputFormats();
  uint32_t seed = 9000000;
  for (int width = 1; width <= 150; ++width) {
    for (const int32_t in : inputs) {
      Random random(++seed);
      const int32_t out = outputs[seed % outputs.size()];
      ZqpConversion c = picture::anySameSize(random, in, out, width, 3);
      const std::string report = Trial(c, Content::Noise, seed).run();
      ASSERT_EQ(report, "") << "seed " << seed;
    }
  }
}

/// The longest lines there are, from and to; sums of weights have the least room in them.
TEST(Conversion, LongestSides) {
  const int longest = ZQP_MOST_PIXELS;
  struct Side {
    int in;
    int out;
  };
  uint32_t seed = 10000000;
  for (const Side &side : {Side{longest, 1}, Side{longest, longest - 1}, Side{longest - 1, longest}, Side{3, longest},
                           Side{longest, 1001}, Side{longest, longest}}) {
    for (int32_t filter = ZQP_FILTER_BILINEAR; filter <= ZQP_FILTER_AREA; ++filter) {
      for (const bool isHigh : {false, true}) {
        Random random(++seed);
        ZqpConversion c = picture::anySameSize(random, ZQP_NV12, seed % 2 != 0 ? ZQP_BGRA : ZQP_I420, 1, 1);
        c.filter = filter;
        c.orientation = isHigh ? 5 : 1;
        c.inWidth = side.in;
        (isHigh ? c.outHeight : c.outWidth) = side.out;
        if (seed % 3 == 0) {
          std::swap(c.inWidth, c.inHeight);
          std::swap(c.outWidth, c.outHeight);
        }
        const std::string report = Trial(c, Content::Extremes, seed).run();
        ASSERT_EQ(report, "") << "seed " << seed;
      }
    }
  }
}

/// Means of as many samples as have short weights, and of one more, whose ends are those of samples.
TEST(Conversion, MeansOfWholeSamples) {
  uint32_t seed = 12000000;
  for (const int samples : {2, 3, 4, 8, 15, 16, 17, 32, 33}) {
    for (const int32_t in : {ZQP_GREY, ZQP_NV12, ZQP_I444, ZQP_YUYV, ZQP_RGB24, ZQP_RGBA}) {
      for (const bool isAcross : {true, false}) {
        Random random(++seed);
        ZqpConversion c = picture::usual(in, seed % 2 != 0 ? ZQP_BGRA : ZQP_NV12, 7, 6);
        c.filter = ZQP_FILTER_AREA;
        (isAcross ? c.inWidth : c.inHeight) *= samples;
        c.inColours.siting = c.outColours.siting = between(random, 0, 1);
        const std::string report = Trial(c, Content::Noise, seed).run();
        ASSERT_EQ(report, "") << "seed " << seed;
      }
    }
  }
}

/// Many colours, in pictures that take several chunks of every row.
TEST(Conversion, ManyColours) {
  uint32_t seed = 11000000;
  for (const int32_t in : {ZQP_I444, ZQP_RGB24, ZQP_RGB565}) {
    for (const int32_t out : {ZQP_RGB24, ZQP_RGB565, ZQP_I444, ZQP_GREY}) {
      for (int round = 0; round < 3; ++round) {
        Random random(++seed);
        ZqpConversion c = picture::anySameSize(random, in, out, 317, 101);
        const std::string report = Trial(c, Content::Noise, seed).run();
        ASSERT_EQ(report, "") << "seed " << seed;
      }
    }
  }
}

} // namespace
