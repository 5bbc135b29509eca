#include "vector/parted_means.h"

#include "base/limits.h"
#include "vector/resize_plan.h"
#include "vector/stages.h"

namespace zqcc {
namespace {

MeanPlane planeOf(const PartedLines &from) {
  return {nullptr, 0, 0, from.lines, 0};
}

} // namespace

bool PartedMeans::serve(const Job &job) {
  return FivePointRows::serve(job) && job.plan->filter.kind != FilterWindows::Gathered;
}

// Samples are made before they are read.
// cppcheck-suppress uninitMemberVar
PartedMeans::PartedMeans(const Job &job, const PartedLines &from, const MeanKind (&kinds)[3])
    : from_(from), means_{{job, planeOf(from), 0, from.shift, room_, kinds[0]},
                          {job, planeOf(from), 1, from.shift, room_, kinds[1]},
                          {job, planeOf(from), 2, from.shift, room_, kinds[2]}} {}

void PartedMeans::columns(int32_t first, int32_t count) {
  const int32_t least = kLeastPixels >> from_.shift;
  const int32_t chromaCount = (count + from_.shift) >> from_.shift;
  means_[0].columns(first, count);
  means_[1].columns(first >> from_.shift, chromaCount);
  means_[2].columns(first >> from_.shift, chromaCount);
  const ByteRange luma = means_[0].bytesTaken();
  const ByteRange chroma = means_[1].bytesTaken();
  first_ = smaller(smaller(luma.first >> from_.shift, chroma.first), from_.units - least);
  count_ = larger(larger((luma.end + from_.shift) >> from_.shift, chroma.end) - first_, least);
  parted_ = -1;
  means_[0].beginLines(first_ << from_.shift);
  means_[1].beginLines(first_);
  means_[2].beginLines(first_);
}

void PartedMeans::part(int32_t line, uint8_t *const (&to)[3]) {
  const std::ptrdiff_t unitBytes = std::ptrdiff_t{2} << from_.shift;
  const uint8_t *bytes = from_.bytes + line * from_.stride + first_ * unitBytes;
  from_.part({bytes + from_.at[0], bytes + from_.at[1], bytes + from_.at[2]}, {to[0], to[1], to[2]},
             count_ << from_.shift);
}

/// All components take the same lines.
void PartedMeans::makeLines(const int32_t *yEntry) {
  means_[0].forEachMissing(yEntry, [this](int32_t line, int32_t tap) {
    if (means_[0].takesLines()) {
      part(line, {means_[0].keptLine(line), means_[1].keptLine(line), means_[2].keptLine(line)});
      means_[0].keep(line, count_ << from_.shift);
      means_[1].keep(line, count_);
      means_[2].keep(line, count_);
      return;
    }
    if (line != parted_) {
      part(line, {samples_[0], samples_[1], samples_[2]});
    }
    parted_ = line;
    for (int c = 0; c < 3; ++c) {
      const uint8_t *samples = samples_[c]; // of the line, from the first that is taken on
      means_[c].take(line, tap, samples - (std::ptrdiff_t{first_} << (c == 0 ? from_.shift : 0)));
    }
  });
}

/// The pieces of a line that the components' rows ask for lie behind one another; a byte for every sample of three
/// components would be one piece too many of two-byte pixels.
void PartedMeans::askAhead(const int32_t *yEntry) {
  constexpr int32_t kLowest = 4; // line tap
  const int32_t last = smaller(yEntry[kLowest * kTapWords] + 1, from_.lines - 1);
  const uint8_t *ahead[kLinesAhead];
  for (int32_t i = 0; i < kLinesAhead; ++i) {
    ahead[i] = from_.bytes + smaller(last + 1 + i, from_.lines - 1) * from_.stride +
               first_ * (std::ptrdiff_t{2} << from_.shift);
  }
  for (int c = 0; c < 3; ++c) {
    means_[c].askFor(ahead);
    for (const uint8_t *&bytes : ahead) {
      bytes += c == 0 ? count_ << from_.shift : count_ * from_.shift;
    }
  }
}

void PartedMeans::rows(const int32_t *yEntry, uint8_t *const (&to)[3]) {
  makeLines(yEntry);
  for (int c = 0; c < 3; ++c) {
    means_[c].row(yEntry, to[c]);
  }
}

void PartedMeans::twoRows(const int32_t *yEntry, uint8_t *const (&to0)[3], uint8_t *const (&to1)[3]) {
  const int32_t *next = yEntry + kEntryWords<kFilterTaps>;
  if (!means_[0].takesLines()) {
    rows(yEntry, to0);
    rows(next, to1);
    return;
  }
  makeLines(yEntry);
  makeLines(next);
  askAhead(next);
  for (int c = 0; c < 3; ++c) {
    FivePointRows::two(means_[c], yEntry, to0[c], means_[c], next, to1[c]);
  }
}

} // namespace zqcc
