// Rows of the components of an output grid, a part of the columns at a time.
#pragma once

#include "picture/line_means.h"

namespace zqp {

class GridRows {
public:
  GridRows(const GridPlan &plan, InputRows &input, const ScaleStages &scale)
      : plan_(plan), input_(input), scale_(scale), means_(plan, input, scale) {}

  /// Takes the scratch for parts of at most so many outputs, made of at most so many samples, or, if there are more,
  /// of as many at a time.
  void layOut(Arena &arena, int32_t outputs, int32_t samples, bool isWide);
  void aim(const Part &part);

  [[nodiscard]] const GridPlan &plan() const { return plan_; }

  /// Rows for line `j` of the grid, one for each component. Bytes are there if the plan's way is Bytes or Middle, words
  /// if it wants words. They stay until another line is asked for.
  const uint8_t *const *bytes(int32_t j);
  const int16_t *const *words(int32_t j);

  /// Of a plan that doubles columns: rows of the samples themselves.
  void halves(int32_t j, const uint8_t *to[2]);

private:
  struct WordLine {
    int32_t line;
    int16_t *row[4];
  };
  [[nodiscard]] int32_t lineOf(int32_t j) const;
  void fillMiddle(int32_t outputs);
  void pick(int32_t line);
  void makeWords(int32_t j);
  void widen(const uint8_t *const *rows);
  const WordLine &wordLine(int32_t line);
  void lerp(int32_t j);
  void tap(int32_t j);

  const GridPlan &plan_;
  InputRows &input_;
  const ScaleStages &scale_;
  bool isWide_ = false;
  Part part_ = {};
  Span span_ = {};
  int32_t bytesLine_ = 0; ///< of the input
  int32_t wordsLine_ = 0; ///< of the output
  const uint8_t *bytes_[4] = {};
  const int16_t *words_[4] = {};
  uint8_t *byteRows_[4] = {};
  int16_t *wordRows_[4] = {};
  WordLine lines_[2] = {}; ///< the last two of the input, their columns made
  LineMeans means_;
};

} // namespace zqp
