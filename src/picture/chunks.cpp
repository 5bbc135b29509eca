#include "picture/chunks.h"

#include "picture/driver.h"
#include "picture/wide_rows.h"

namespace zqp {
namespace {

/// What stays in the first-level cache beside the lines of the pictures.
constexpr std::size_t kNearBytes = std::size_t{32} * 1024;
constexpr int32_t kMostColumns[] = {1024, 768, 512, 384, 256, 128, 64};

int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// The most samples that any chunk needs.
void measureSpans(ZqpConverter &converter) {
  const bool isTurned = converter.description.turn.isTransposed;
  const bool isWhole = converter.chunkColumns >= converter.columns;
  const int32_t step = isTurned && !isWhole ? chunkStep(converter) : converter.chunkColumns; // bands begin anywhere
  converter.spans[0] = 0;
  converter.spans[1] = 0;
  converter.fetched = 0;
  for (int32_t first = 0; first < converter.columns; first += step) {
    const Region region = regionOf(converter, chunkOf(converter, first, converter.chunkColumns));
    converter.spans[0] = larger(converter.spans[0], region.luma.count);
    converter.spans[1] = larger(converter.spans[1], region.chroma.count);
    converter.fetched = larger(converter.fetched, fetchedSpan(converter, region).count);
  }
}

std::size_t scratchOf(const ZqpConverter &converter) {
  const Planes none{};
  const Stages &stages = stagesOf(0);
  Arena arena(nullptr);
  if (converter.description.turn.isTransposed) {
    TurnedDriver(converter, none, none, stages).layOut(arena, converter.chunkColumns);
  } else {
    UprightDriver(converter, none, none, stages).layOut(arena, converter.chunkColumns);
  }
  return arena.used();
}

bool fits(ZqpConverter &converter, int32_t columns, std::size_t bytes) {
  converter.chunkColumns = columns;
  measureSpans(converter);
  return scratchOf(converter) <= bytes;
}

/// At most so many columns, all chunks nearly alike.
int32_t balanced(const ZqpConverter &converter, int32_t most) {
  const int32_t chunks = (converter.columns + most - 1) / most;
  const int32_t columns = (converter.columns + chunks - 1) / chunks;
  const int32_t step = chunkStep(converter);
  return (columns + step - 1) / step * step;
}

bool fitsInChunks(ZqpConverter &converter, std::size_t bytes) {
  for (const int32_t most : kMostColumns) {
    if (most >= chunkStep(converter) && fits(converter, balanced(converter, most), bytes)) {
      return true;
    }
  }
  return false;
}

} // namespace

void chooseChunks(ZqpConverter &converter) {
  const bool isTurned = converter.description.turn.isTransposed;
  const bool isNear =
      !isTurned && (fits(converter, converter.columns, kNearBytes) || fitsInChunks(converter, kNearBytes));
  if (isNear || fitsInChunks(converter, kScratchBytes)) {
    return;
  }
  converter.isWide = true;
  converter.chunkColumns = chunkStep(converter);
  converter.spans[0] = kSegment;
  converter.spans[1] = kSegment;
  converter.fetched = kSegment;
}

} // namespace zqp
