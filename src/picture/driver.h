// The two ways through a picture: line by line, or, where lines become columns, by blocks. Both go down chunks of
// columns, so that what is made of a line is still at hand for the next one.
#pragma once

#include "picture/placing.h"
#include "picture/row_recipes.h"

namespace zqp {

/// Lines of the finished picture.
struct Band {
  int32_t first;
  int32_t count;
};

/// Lines of a pass that a band makes: those of chroma whose first line of luma it has.
Band bandOf(const Band &band, int32_t shift);

/// A chunk of the luma grid from `first` on, and its chroma.
Chunk chunkOf(const ZqpConverter &converter, int32_t first, int32_t count);

/// Columns that chunks begin at a multiple of.
int32_t chunkStep(const ZqpConverter &converter);

class UprightDriver {
public:
  UprightDriver(const ZqpConverter &converter, const Planes &in, const Planes &out, const Stages &stages);
  void layOut(Arena &arena, int32_t columns);
  void convert(const Band &band);

private:
  void line(const Pass &pass, const Chunk &chunk, int32_t y);
  void reverse(const Pass &pass, const Chunk &chunk, const uint8_t *rows[4]);

  const ZqpConverter &converter_;
  const PlaceStages &place_;
  RowRecipes recipes_;
  Placer placer_;
  uint8_t *made_[4] = {};
  uint8_t *reversed_[4] = {};
};

class TurnedDriver {
public:
  TurnedDriver(const ZqpConverter &converter, const Planes &in, const Planes &out, const Stages &stages);
  void layOut(Arena &arena, int32_t columns);
  void convert(const Band &band);

private:
  void block(const Pass &pass, const Chunk &chunk, const Band &lines, const Band &columns);
  void makeLine(const Pass &pass, const Chunk &chunk, int32_t x, int32_t row);
  void turn(const Pass &pass, const Chunk &chunk, const Band &lines, const Band &columns);

  const ZqpConverter &converter_;
  const PlaceStages &place_;
  RowRecipes recipes_;
  Placer placer_;
  std::ptrdiff_t rowBytes_ = 0;
  uint8_t *made_[4] = {};   ///< rows of a block
  uint8_t *turned_[4] = {}; ///< its columns, some at a time
};

} // namespace zqp
