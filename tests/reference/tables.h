// Resampling tables built on their own, format by format, for the reference conversions and for comparison with the
// library's builders. Every function returns the table's content without the spare words behind it. `source` is the
// size of the input in the table's direction (at least 2), `positions` the number of output positions (at least 1).
#pragma once

#include <cstdint>
#include <vector>

namespace reference {

using Words = std::vector<int32_t>;

/// Source distance of two output positions with 10 fractional bits, truncated.
int32_t stepOf(int source, int positions);

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
/// Line instructions: s | 0x10000 a pair of lines, s a line, -m a repeat; the last line three times at the end.
Words runLengthY(int source, int positions);

} // namespace reference
