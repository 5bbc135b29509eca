#include "vector/box_rows.h"

#include "base/limits.h"
#include "base/table_format.h"

#include <cstring>

namespace zqcc {
namespace {

/// How many of a box's listed samples lie below a limit.
int32_t listedBelow(const int32_t *entry, int32_t limit) {
  int32_t count = 0;
  while (count < kBoxWords && entry[count] >= 0 && entry[count] < limit) {
    ++count;
  }
  return count;
}

/// By the number of samples.
struct Quotients {
  BoxQuotient of[kMostBoxSamples * kMostBoxSamples + 1]{};

  constexpr Quotients() {
    int32_t samples = 0;
    for (BoxQuotient &quotient : of) {
      quotient = boxQuotient(samples++ < 2 ? 2 : samples - 1);
    }
  }
};

constexpr Quotients kQuotients;

uint32_t quotientOf(uint32_t sum, const BoxQuotient &quotient) {
  return (sum * quotient.factor >> 16) >> quotient.shift;
}

constexpr int32_t kEightBytes = 8;

/// The sum of the last `columns` of eight columns, one at least: bytes are added in 16-bit lanes of a register.
uint32_t sumOfLast(const AddedLines &lines, int32_t first, int32_t columns) {
  constexpr uint64_t kEven = 0x00FF00FF00FF00FF;
  uint64_t sums = 0;
  for (int32_t l = 0; l < lines.count; ++l) {
    uint64_t bytes = 0;
    std::memcpy(&bytes, lines.line[l] + first, sizeof bytes);
    bytes >>= 8 * (kEightBytes - columns);
    sums += (bytes & kEven) + (bytes >> 8 & kEven);
  }
  return static_cast<uint32_t>(sums * 0x0001000100010001 >> 48);
}

} // namespace

// Sums are made before they are read.
// cppcheck-suppress uninitMemberVar
BoxRows::BoxRows(const Job &job, const MeanPlane &plane, int /*number*/, int32_t /*chromaShift*/, Room &room)
    : xTable_(job.xTable), plane_(plane), levels_(job.levels), samples_(listedBelow(xTable_, plane.limitX)),
      spacing_(samples_ > 1 ? xTable_[1] - xTable_[0] : 1), widest_(samples_ > 0 ? (samples_ - 1) * spacing_ + 1 : 0),
      apart_(samples_ > 0 && job.params.outWidth > 1 ? xTable_[kBoxWords] - xTable_[0] + 1 : 0), row_(room.sums) {}

const int32_t *BoxRows::entry(int32_t i) const {
  return xTable_ + (first_ + i) * kBoxWords;
}

/// Two columns a sum serve if all boxes begin at even distances and have whole pairs of columns, or every second one.
BoxRows::Sums BoxRows::sumsOf(int32_t count) const {
  const Sums single{ADD_LINES.in(levels_), 1, samples_, spacing_};
  int32_t odd = 0;
  for (int32_t i = 0; i < count; ++i) {
    odd |= entry(i)[0] - entry(0)[0];
  }
  if (odd % 2 != 0) {
    return single;
  }
  if (spacing_ % 2 == 0) {
    return {ADD_FIRST_ONES.in(levels_), 2, samples_, spacing_ / 2};
  }
  return spacing_ == 1 && samples_ % 2 == 0 ? Sums{ADD_PAIRS.in(levels_), 2, samples_ / 2, 1} : single;
}

/// Boxes near the end of a line have fewer columns than those before them.
bool BoxRows::isWhole(int32_t i) const {
  const int32_t last = entry(i)[samples_ - 1];
  return last >= 0 && last < plane_.limitX;
}

/// Distances between boxes are rounded multiples of one number: if the last box is a multiple of the whole part of it
/// away from the first one, all between are.
StraightBoxes BoxRows::straightStage() const {
  const LevelSet levels = levels_ & straightLevels(whole_);
  if (levels == 0) {
    return nullptr;
  }
  const int32_t distance = xTable_[kBoxWords] - xTable_[0];
  if (distance != samples_ * spacing_ || entry(whole_ - 1)[0] - entry(0)[0] != (whole_ - 1) * distance) {
    return nullptr;
  }
  if (spacing_ == 1) {
    return samples_ == 4 ? BOXES_OF_FOUR.in(levels) : samples_ == 6 ? BOXES_OF_SIX.in(levels) : nullptr;
  }
  return samples_ == 4 && spacing_ == 2 && entry(0)[0] > 0 ? BOXES_OF_EVERY_SECOND.in(levels) : nullptr;
}

void BoxRows::columns(int32_t first, int32_t count) {
  first_ = first;
  count_ = count;
  whole_ = samples_ > 0 ? count : 0;
  while (whole_ > 0 && !isWhole(whole_ - 1)) {
    --whole_;
  }
  straight_ = straightStage();
  if (straight_ == nullptr) {
    planSums();
  }
  cut_ = whole_ < count ? listedBelow(entry(whole_), plane_.limitX) : 0;
}

void BoxRows::planSums() {
  sums_ = sumsOf(whole_);
  // A pair of columns can end behind the box.
  while (whole_ > 0 && sums_.columns == 2 &&
         entry(whole_ - 1)[0] + widest_ >= plane_.readable + (spacing_ == 1 ? 1 : 0)) {
    --whole_;
  }
  placeRuns();
}

/// As many boxes a run as have room for their sums.
void BoxRows::placeRuns() {
  static_assert((kColumns & (kColumns - 1)) == 0);
  run_ = kColumns;
  while (run_ > kFilterGroup && widest_ + (run_ - 1) * apart_ > kSums) {
    run_ /= 2;
  }
  for (int32_t i = 0; i < whole_; ++i) {
    const int32_t inRun = i & (run_ - 1);
    start_[i] = (entry(i)[0] - entry(i - inRun)[0]) >> (sums_.columns - 1);
  }
  for (int32_t i = whole_; i % kFilterGroup != 0; ++i) {
    start_[i] = start_[i - 1];
  }
}

void BoxRows::makeRun(const AddedLines &lines, int32_t from, int32_t end, const BoxQuotient &quotient, uint8_t *to) {
  constexpr int32_t kWindow = 8;
  const int32_t widest = (sums_.perBox - 1) * sums_.spacing + 1;
  sums_.add(lines, entry(from)[0], start_[end - 1] + widest, row_);
  BoxColumns columns{start_ + from, {}, quotient};
  if (widest > kWindow) {
    for (int32_t i = from; i < end; ++i) {
      uint32_t sum = 0;
      for (int32_t k = 0; k < sums_.perBox; ++k) {
        sum += row_[start_[i] + k * sums_.spacing];
      }
      to[i - from] = static_cast<uint8_t>(quotientOf(sum, quotient));
    }
    return;
  }
  // A lone sample counts twice, for one is no quotient.
  for (int32_t k = 0; k < sums_.perBox; ++k) {
    columns.pattern[k * sums_.spacing] = samples_ * lines.count == 1 ? 2 : 1;
  }
  BOX_ROW.in(levels_)(row_, columns, filterGroups(end - from), to);
}

/// The first `columns` of a box.
uint32_t BoxRows::sumOf(const AddedLines &lines, int32_t first, int32_t columns) const {
  uint32_t sum = 0;
  for (int32_t l = 0; l < lines.count; ++l) {
    for (int32_t c = 0; c < columns; ++c) {
      sum += lines.line[l][first + c * spacing_];
    }
  }
  return sum;
}

/// Boxes that are cut short, and empty ones.
void BoxRows::makeRest(const AddedLines &lines, int32_t from, uint8_t *to) const {
  for (int32_t i = from; i < count_; ++i) {
    const int32_t columns = i == whole_ ? cut_ : listedBelow(entry(i), plane_.limitX);
    const int32_t end = entry(i)[0] + columns;
    const bool areTogether = spacing_ == 1 && columns > 0 && end >= kEightBytes;
    const uint32_t sum =
        areTogether ? sumOfLast(lines, end - kEightBytes, columns) : sumOf(lines, entry(i)[0], columns);
    const int32_t samples = columns * lines.count;
    to[i] = static_cast<uint8_t>(samples == 1 ? sum : quotientOf(sum, kQuotients.of[samples]));
  }
}

void BoxRows::row(const int32_t *yEntry, uint8_t *to) {
  AddedLines lines;
  lines.count = 0;
  for (int32_t y = yEntry[0]; y >= 0 && y < plane_.limitY && lines.count < kMostBoxSamples; y = yEntry[lines.count]) {
    lines.line[lines.count++] = plane_.samples + y * plane_.stride;
  }
  lines.next = lines.count > 0 ? (yEntry[kBoxWords] - yEntry[0]) * plane_.stride : 0;
  const int32_t samples = samples_ * lines.count;
  int32_t done = 0;
  if (samples > 0) {
    const BoxQuotient &quotient = kQuotients.of[samples];
    if (straight_ != nullptr) {
      straight_(lines, entry(0)[0], whole_, quotient, to);
      done = whole_;
    }
    for (; done < whole_; done += run_) {
      makeRun(lines, done, smaller(done + run_, whole_), quotient, to + done);
    }
    done = whole_;
  }
  if (done < count_) {
    makeRest(lines, done, to);
  }
}

} // namespace zqcc
