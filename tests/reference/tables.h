// Resampling tables built on their own, format by format, for the reference conversions and for comparison with the
// library's builders. Every function returns the table's content without the spare words behind it. `source` is the
// size of the input in the table's direction (at least 2), `positions` the number of output positions (at least 1).
#pragma once

#include <cstdint>
#include <vector>

namespace reference {

using Words = std::vector<int32_t>;

/// Source distance of two output positions with 10 fractional bits, truncated.
int64_t stepOf(int source, int positions);

/// One word a position: its source index. (The library appends four words of 255.)
Words nearest(int source, int positions);

/// Three words a position: index, weight of the next sample, weight of the sample itself.
Words bilinear(int source, int positions);

/// Fifteen words a position: five triples. Quality 1 has the narrower, 2 the wider tap spacing; the order of the five
/// differs between the columns' and the lines' table.
Words filtered(int source, int positions, int quality, bool isX);

/// Distance of the samples in a box of the columns' table.
int columnBoxStep(int source, int positions);
/// The same for the lines' table: below a reduction of 8 it keeps the columns' distance.
int lineBoxStep(int source, int positions, int columnStep);
/// Fifteen words a position: source indices, -1 where there is none.
Words box(int source, int positions, int sampleStep);

/// One group for each 16 source samples: a count, then that many triples.
Words grouped(int source, int positions);

/// One word an output column: index << 16, flag 2 for a new sample, flag 1 for a new chroma sample.
Words runLengthX(int source, int positions);

/// What the lines' table of run lengths says: a line, or the pair of lines that begins with an even one, or so many
/// repeats of a converted line.
struct LineInstruction {
  enum class Kind { Repeat, Line, Pair };
  Kind kind;
  int number;
};
/// The source lines of the output in runs, two runs at a time; the last source line three times at the end.
std::vector<LineInstruction> lineInstructions(int source, int positions);
/// The same in words: -m for m repeats, s for a line, s | 0x10000 for a pair.
Words runLengthY(int source, int positions);

} // namespace reference
