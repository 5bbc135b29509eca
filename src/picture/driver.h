// The ways through a picture: line by line, or, where lines become columns, by blocks. They go down chunks of columns,
// so that what is made of a line is still at hand for the next one.
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
  [[nodiscard]] bool isCopied(const Pass &pass) const;
  void copy(const Pass &pass, const Band &band);
  void splitPairs(const Pass &pass, const Band &lines);
  void line(const Pass &pass, const Chunk &chunk, int32_t y);
  void reverse(const Pass &pass, const Chunk &chunk, const uint8_t *rows[4]);

  const ZqpConverter &converter_;
  const Planes &in_;
  const FetchStages &fetch_;
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

/// Lines become columns, and YUV becomes RGB of the same size: samples are fewer than pixels' bytes, so they are turned
/// first, and colours are made in the output.
class TurnedYuvDriver {
public:
  TurnedYuvDriver(const ZqpConverter &converter, const Planes &in, const Planes &out, const Stages &stages);
  void layOut(Arena &arena, int32_t columns);
  void convert(const Band &band);

  /// A block, of the output.
  static constexpr int32_t kColumns = 256;
  static constexpr int32_t kLines = 64;

private:
  /// Of the output; one without lines is behind the last one.
  struct Block {
    Band lines;
    Band columns;
  };
  [[nodiscard]] bool isHalved() const;
  [[nodiscard]] Block blockAt(const Band &band, int32_t x, int32_t y) const;
  /// What a block is made of: the sample that its first line and column have in a plane of the input, lines going down
  /// or up, and how many columns and lines.
  struct Source {
    const uint8_t *first;
    std::ptrdiff_t stride;
    int32_t columns;
    int32_t lines;
  };
  [[nodiscard]] Source source(const Block &block, int32_t plane) const;
  void make(const Block &block, const Block &next);
  void turnChroma(const Block &block);

  const ZqpConverter &converter_;
  const Planes &in_;
  const Stages &stages_;
  Placer placer_;
  RgbOfBytes make_;
  uint8_t *luma_ = nullptr;
  uint8_t *chroma_[2] = {};
  uint8_t *apart_[2] = {}; ///< of chroma in pairs, before it is turned
};

} // namespace zqp
