// Whatever a conversion is, what a call needs fits its scratch.
#include "picture/cases.h"
#include "picture/driver.h"
#include "zqPicture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace {

std::size_t scratchOf(const ZqpConverter &converter) {
  const zqp::Planes none{};
  const zqp::Stages &stages = zqp::stagesOf(0);
  zqp::Arena arena(nullptr);
  if (converter.turnsYuv) {
    zqp::TurnedYuvDriver(converter, none, none, stages).layOut(arena, converter.chunkColumns);
  } else if (converter.description.turn.isTransposed) {
    zqp::TurnedDriver(converter, none, none, stages).layOut(arena, converter.chunkColumns);
  } else {
    zqp::UprightDriver(converter, none, none, stages).layOut(arena, converter.chunkColumns);
  }
  return arena.used();
}

struct Side {
  int in;
  int out;
};
constexpr Side kSides[] = {{1, 1}, {1921, 1921}, {1919, 803}, {4097, 300}, {30001, 257}, {32768, 32768}, {32768, 1}};

TEST(Scratch, IsEnoughForEveryPairOfFormats) {
  picture::Random random(4711);
  int wide = 0;
  for (const int32_t in : picture::inputFormats()) {
    for (const int32_t out : picture::outputFormats()) {
      for (const Side &side : kSides) {
        ZqpConversion c = picture::anySameSize(random, in, out, side.in, 2000);
        const bool isTransposed = c.orientation >= 5;
        (isTransposed ? c.outHeight : c.outWidth) = side.out;
        (isTransposed ? c.outWidth : c.outHeight) = picture::between(random, 30, 3000);
        ZqpConverter *converter = nullptr;
        ASSERT_EQ(zqpConverterMake(&c, &converter), ZQP_OK) << picture::describe(c);
        EXPECT_LE(scratchOf(*converter), zqp::kScratchBytes) << picture::describe(c);
        wide += converter->isWide ? 1 : 0;
        zqpConverterFree(converter);
      }
    }
  }
  EXPECT_GT(wide, 0); // or the narrowest case was not among them
}

} // namespace
