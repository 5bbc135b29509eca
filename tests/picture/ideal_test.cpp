// The integers that define the library's bytes, beside real numbers: how far from the ideal they are.
#include "picture/cases.h"
#include "picture/contents.h"
#include "picture/reference/exact_model.h"
#include "picture/reference/ideal_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

using picture::Random;
using reference::OwnPicture;

/// What differences there are between the integers and the ideal.
struct Errors {
  double most = 0;
  double sum = 0;
  double count = 0;
  std::string where;

  void add(double error, const ZqpConversion &c) {
    if (error > most) {
      most = error;
      where = picture::describe(c);
    }
    sum += error;
    ++count;
  }
  [[nodiscard]] double mean() const { return sum / count; }
  void report(const std::string &name) const {
    testing::Test::RecordProperty(name + "_most", std::to_string(most));
    testing::Test::RecordProperty(name + "_mean", std::to_string(mean()));
    testing::Test::RecordProperty(name + "_samples", std::to_string(count));
  }
};

void compare(const ZqpConversion &c, picture::Content content, uint32_t seed, Errors &errors) {
  OwnPicture in(c.inFormat, c.inWidth, c.inHeight);
  picture::fill(in, content, seed);
  OwnPicture out(c.outFormat, c.outWidth, c.outHeight);
  convertExactly(c, in, out);
  const auto ideal = reference::idealOf(c, in);
  for (int component = 0; component < out.format().components; ++component) {
    const reference::IdealPlane &plane = ideal[static_cast<std::size_t>(component)];
    for (int y = 0; y < plane.lines; ++y) {
      for (int x = 0; x < plane.columns; ++x) {
        errors.add(std::abs(out.sample(component, x, y) - plane.at(x, y)), c);
      }
    }
  }
}

bool hasWords(int32_t format) {
  return reference::formatOf(format).store != reference::Store::Bytes;
}

template <class Make>
void sweep(const Make &make, int rounds, Errors &bytes, Errors &words) {
  uint32_t seed = 1;
  for (int round = 0; round < rounds; ++round) {
    for (const int32_t in : picture::inputFormats()) {
      for (const int32_t out : picture::outputFormats()) {
        Random random(seed);
        ZqpConversion c = make(random, in, out);
        c.dither = ZQP_DITHER_NONE;
        compare(c, picture::kContents[seed % 4], seed, hasWords(out) ? words : bytes);
        ++seed;
      }
    }
  }
}

TEST(Ideal, SameSizeIsWithinOne) {
  Errors bytes;
  Errors words;
  sweep(
      [](Random &random, int32_t in, int32_t out) {
        return picture::anySameSize(random, in, out, picture::between(random, 1, 24), picture::between(random, 1, 24));
      },
      12, bytes, words);
  bytes.report("bytes");
  words.report("rgb565");
  EXPECT_LE(bytes.most, 1) << bytes.where;
  EXPECT_LE(words.most, 1) << words.where;
  EXPECT_LE(bytes.mean(), .26) << "rounding alone is off by a quarter";
  EXPECT_LE(words.mean(), .26);
}

TEST(Ideal, ResizedIsWithinTwo) {
  Errors bytes;
  Errors words;
  sweep([](Random &random, int32_t in, int32_t out) { return picture::anyResized(random, in, out, 40); }, 12, bytes,
        words);
  bytes.report("bytes");
  words.report("rgb565");
  EXPECT_LE(bytes.most, 2) << bytes.where;
  EXPECT_LE(words.most, 1) << words.where;
  EXPECT_LE(bytes.mean(), .26);
  EXPECT_LE(words.mean(), .26);
}

} // namespace
