// Lines of the input as rows of components: where they lie, or taken apart into scratch.
#pragma once

#include "picture/converter.h"
#include "picture/views.h"

namespace zqp {

/// What is needed of every line.
struct Region {
  Span luma;
  Span chroma;
};

/// What of it is taken apart, in samples of the plane that holds it: pairs of chroma, groups, or pixels.
Span fetchedSpan(const ZqpConverter &converter, const Region &region);

class InputRows {
public:
  InputRows(const ZqpConverter &converter, const Planes &planes, const FetchStages &fetch);

  /// Takes the scratch that lines need which are taken apart.
  void layOut(Arena &arena);
  void aim(const Region &region);

  /// Rows of components, each from the first sample that takes part on, though nothing but the region is there. Lines
  /// are counted likewise. The last two lines stay, or the last kLines if means of more than two are made.
  static constexpr int32_t kLines = 4;
  void rows(bool isChroma, int32_t line, const uint8_t *to[4]);

  /// Whether that many lines are there at once.
  [[nodiscard]] bool holds(bool isChroma, int32_t lines) const;

private:
  struct Fetched {
    int32_t line;
    uint8_t *row[4];
  };
  const Fetched &fetched(int32_t line);
  void fetch(int32_t line, uint8_t *const row[4]) const;
  [[nodiscard]] const uint8_t *lineOf(int32_t plane, int32_t line) const;

  const ZqpConverter &converter_;
  const Format &format_;
  const Planes &planes_;
  const FetchStages &fetch_;
  int32_t first_ = 0; ///< of what is fetched
  int32_t count_ = 0;
  int32_t slots_ = kLines;
  Fetched lines_[kLines] = {};
};

/// A row as if all samples before the first one that is there lay before it. Nothing is read there.
inline const uint8_t *fromStart(const uint8_t *row, int32_t first) {
  return row - first;
}

} // namespace zqp
