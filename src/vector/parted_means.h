// Rows of five-point means of pictures whose pixels hold three components, 16-bit pixels and packed 4:2:2: source lines
// are parted into rows of components before their windows are laid out.
#pragma once

#include "vector/fetch.h"
#include "vector/five_point_rows.h"

#include <cstddef>
#include <cstdint>

namespace zqcc {

/// The lines of a picture and what parts them. A unit is a pixel, or a macropixel of two that share their chroma.
struct PartedLines {
  const uint8_t *bytes;
  std::ptrdiff_t stride;
  int32_t units; ///< whole ones of a line
  int32_t lines;
  int32_t shift; ///< 1 if units are macropixels
  FetchRows part;
  int32_t at[3]; ///< where in a unit the stage takes its sources from
};

class PartedMeans {
public:
  static constexpr int32_t kColumns = FivePointRows::kColumns;

  /// Columns of a chunk whose windows have room.
  static int32_t mostColumns(const Job &job, int32_t shift) { return FivePointRows::mostColumns(job, shift, true); }

  /// Lines have kLeastPixels or more.
  PartedMeans(const Job &job, const PartedLines &from, const MeanKind (&kinds)[3]);

  /// False where samples would have to be gathered one by one, too.
  static bool serve(const Job &job);

  void columns(int32_t first, int32_t count);

  /// Rows of the three components, of the lines of a table entry; whole groups are written.
  void rows(const int32_t *yEntry, uint8_t *const (&to)[3]);
  /// The same of two table entries that follow one another.
  void twoRows(const int32_t *yEntry, uint8_t *const (&to0)[3], uint8_t *const (&to1)[3]);

private:
  /// Outputs that have windows are less than five samples apart.
  static constexpr int32_t kSamples = 5 * kColumns + 4 * kWindowBytes;

  void part(int32_t line, uint8_t *const (&to)[3]);
  void makeLines(const int32_t *yEntry);
  void askAhead(const int32_t *yEntry);

  FivePointRows::Room room_;
  alignas(64) uint8_t samples_[3][kSamples];
  PartedLines from_;
  FivePointRows means_[3];
  int32_t first_ = 0; ///< units that the chunk reads
  int32_t count_ = 0;
  int32_t parted_ = -1; ///< the line whose samples stand there
};

} // namespace zqcc
