// Rows of the output's components, made of the input's by what its colours are.
#pragma once

#include "picture/grid_rows.h"
#include "rows/stages.h"

namespace zqp {

/// What is made at once: columns of luma and of chroma.
struct Chunk {
  Part luma;
  Part chroma;
};

/// What a chunk needs of the input.
Region regionOf(const ZqpConverter &converter, const Chunk &chunk);

class RowRecipes {
public:
  RowRecipes(const ZqpConverter &converter, const Planes &planes, const Stages &stages);
  RowRecipes(const RowRecipes &) = delete;
  RowRecipes &operator=(const RowRecipes &) = delete;
  RowRecipes(RowRecipes &&) = delete;
  RowRecipes &operator=(RowRecipes &&) = delete;
  ~RowRecipes() = default;

  /// Takes the scratch for chunks of so many columns.
  void layOut(Arena &arena, int32_t columns);
  void aim(const Chunk &chunk);

  /// Rows of line `j` of the luma grid: luma; red, green, blue and, null if it is 255, alpha. They are made in `to`, or
  /// lie elsewhere already. `to` is one line of pixels if the converter makes these.
  void luma(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) { (this->*luma_)(j, to, rows); }
  /// U and V of line `j` of the grid of chroma.
  void chroma(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) { (this->*chroma_)(j, to, rows); }

private:
  using LumaRecipeOf = void (RowRecipes::*)(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  using ChromaRecipeOf = void (RowRecipes::*)(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  static const LumaRecipeOf kLumaRecipes[];
  static const ChromaRecipeOf kChromaRecipes[];

  void rgbOfYuvStraight(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void rgbOfYuvBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void rgbOfYuvWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void rgbOfRgbBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void rgbOfRgbWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void rgbAsItIs(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaAsItIs(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaRounded(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaChanged(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaOfRgbBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaOfRgbWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void lumaOfRgbStraight(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]);
  void noChroma(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaAsItIs(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaRounded(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaChanged(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaOfRgbBytes(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaOfRgbWords(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);
  void chromaOfRgbStraight(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]);

  [[nodiscard]] Rounding roundingOf(int32_t j) const;
  [[nodiscard]] const uint8_t *fourBytes(int32_t line) const;

  const ZqpConverter &converter_;
  const Colouring &colouring_;
  const Planes &planes_;
  const ColourStages &colour_;
  Chunk chunk_ = {};
  InputRows input_;
  GridRows ownLuma_;
  GridRows ownPixelChroma_;
  GridRows ownChroma_;
  GridRows &chromaRows_; ///< of the grid of chroma, which may be one of the others
  RgbLayout layout_;
  LumaRecipeOf luma_;
  ChromaRecipeOf chroma_;
};

} // namespace zqp
