#include "vector/five_point_rows.h"

#include "base/limits.h"
#include "vector/resize_plan.h"

#include <cstring>

namespace zqcc {
namespace {

constexpr int32_t kWindow = 16; ///< bytes of a window that serves four outputs

/// Windows of four bytes, one for every output.
void gatherRow(const uint8_t *line, const FilterColumns &columns, int32_t rows, int32_t groups, uint8_t *to) {
  const int32_t *windows = columns.windows;
  for (int32_t g = 0; g < groups; ++g, windows += rows * kFilterGroup) {
    for (int32_t i = 0; i < kFilterGroup; ++i, to += 4) {
      std::memcpy(to, line + windows[i], 4);
    }
  }
}

WindowRow windowRowOf(FilterWindows kind, LevelSet usable) {
  if (kind == FilterWindows::Gathered) {
    return gatherRow;
  }
  return (isNear(kind) ? NEAR_WINDOW_ROW : WINDOW_ROW).in(usable);
}

} // namespace

bool FivePointRows::serve(const Job &job) {
  return job.plan->filter.exists && POSITIVE_FIVE_POINT_ROW.in(job.levels) != nullptr;
}

bool FivePointRows::usesLines(const Job &job, bool made) {
  const ConvertParams &p = job.params;
  return job.plan->filter.kind == FilterWindows::Near && FIVE_POINT_LINE_ROW.in(job.levels) != nullptr &&
         (!made || int64_t{4} * p.inHeight <= int64_t{kMostQuarters} * p.outHeight);
}

FivePointRows::Layout FivePointRows::layoutOf(const Job &job, bool made) {
  const FilterPlan &plan = job.plan->filter;
  if (!usesLines(job, made)) {
    return {slotsOf(plan.kind), 4, 0};
  }
  if (!made) {
    return {0, 0, 0}; // lines are read where they lie
  }
  // The last one of the lines that are kept is followed by the first one once more.
  return {kMadeLines + 1, plan.luma.lines.bytes / kFilterGroup, kWindowBytes};
}

int32_t FivePointRows::mostColumns(const Job &job, int32_t chromaShift, bool made) {
  constexpr auto kRoom = static_cast<int32_t>(sizeof(Room));
  constexpr int32_t kMultiple = 128;
  const Layout layout = layoutOf(job, made);
  const int32_t rest = layout.rows * (layout.rest + (2 * layout.rest >> chromaShift));
  const int32_t bytesOfColumn = layout.rows * (layout.bytesOfColumn + (2 * layout.bytesOfColumn >> chromaShift));
  const int32_t room = bytesOfColumn == 0 ? kColumns : (kRoom - rest) / bytesOfColumn;
  const int32_t most = smaller(room, kColumns) & -kMultiple;
  // Chunks of one size rather than a narrow last one.
  const int32_t chunks = (job.params.outWidth + most - 1) / most;
  return smaller(most, ((job.params.outWidth + chunks - 1) / chunks + kMultiple - 1) & -kMultiple);
}

// Windows are laid out before they are read.
// cppcheck-suppress uninitMemberVar
FivePointRows::FivePointRows(const Job &job, const MeanPlane &plane, int number, int32_t chromaShift, Room &room,
                             const MeanKind &kind)
    : plan_(job.plan->filter), plane_(plane), windowRow_(windowRowOf(plan_.kind, job.levels)),
      stage_(POSITIVE_FIVE_POINT_ROW.in(job.levels)),
      negativeStage_((kind.isWhole ? WHOLE_FIVE_POINT_ROW : FIVE_POINT_ROW).in(job.levels)), kind_(kind),
      isLuma_(number == 0), windows_(room.bytes) {
  const bool made = plane.samples == nullptr;
  const Layout layout = layoutOf(job, made);
  if (usesLines(job, made)) {
    lineStage_ = (kind.isWhole ? WHOLE_FIVE_POINT_LINE_ROW : FIVE_POINT_LINE_ROW).in(job.levels);
  }
  rowBytes_ = layout.bytesOfColumn * mostColumns(job, chromaShift, made) + layout.rest;
  if (number > 0) {
    windows_ += layout.rows * rowBytes_;
    rowBytes_ >>= chromaShift;
    windows_ += (number - 1) * layout.rows * rowBytes_;
  }
  if (made) {
    plane_.stride = rowBytes_;
  }
}

void FivePointRows::columns(int32_t first, int32_t count) {
  const int32_t start = first / kFilterGroup;
  const int32_t end = start + filterGroups(count);
  const int32_t split = isLuma_ ? end : clampTo(plan_.common, start, end);
  parts_[0] = {plan_.from(plan_.luma, start), split - start};
  parts_[1] = {plan_.from(plan_.chroma, split > plan_.common ? split - plan_.common : 0), end - split};
  leading_ = clampTo(plan_.leading, start, end) - start;
  for (int32_t &line : held_) {
    line = -1;
  }
}

void FivePointRows::fill(const uint8_t *line, int32_t row, uint8_t *to) const {
  for (const Part &part : parts_) {
    const FilterColumns columns{nullptr, part.columns.windows + row * windowsOfGroup(plan_.kind),
                                part.columns.near + row};
    windowRow_(line, columns, windowRows(plan_.kind), part.groups, to);
    to += std::ptrdiff_t{part.groups} * kWindowBytes;
  }
}

/// What of a line the chunk takes will be read soon.
void FivePointRows::prefetch(int32_t line) const {
  if (line >= plane_.limitY) {
    return;
  }
  const uint8_t *from = plane_.samples + line * plane_.stride;
  const Part &last = parts_[parts_[1].groups > 0 ? 1 : 0];
  const int32_t end = plan_.from(last.columns, last.groups).windows[-1];
  for (int32_t x = parts_[parts_[0].groups > 0 ? 0 : 1].columns.windows[0]; x < end; x += 64) {
    __builtin_prefetch(from + x);
  }
}

ByteRange FivePointRows::bytesTaken() const {
  ByteRange range{INT32_MAX, 0};
  const int32_t rows = windowRows(plan_.kind);
  for (const Part &part : parts_) {
    for (int32_t k = 0; k < part.groups * rows * windowsOfGroup(plan_.kind); ++k) {
      const int32_t window = part.columns.windows[k];
      range = {smaller(range.first, window), larger(range.end, window + kWindow)};
    }
    for (int32_t k = 0; isNear(plan_.kind) && k < part.groups * rows; ++k) {
      const int32_t first = part.columns.near[k].first;
      range = {smaller(range.first, first), larger(range.end, first + kWindowBytes)};
    }
  }
  return range;
}

void FivePointRows::take(int32_t line, int32_t tap, const uint8_t *from) {
  const int32_t slot = slotOf(line, tap);
  held_[slot] = line;
  fill(from, isShared() ? 0 : tap, windows_ + slot * rowBytes_);
}

const uint8_t *FivePointRows::windowsOf(int32_t line, int32_t tap) {
  const int32_t slot = slotOf(line, tap);
  if (held_[slot] != line) {
    take(line, tap, plane_.samples + line * plane_.stride);
    prefetch(line + 4);
  }
  return windows_ + slot * rowBytes_;
}

void FivePointRows::keep(int32_t line, int32_t count) {
  const int32_t slot = slotOf(line, 0);
  held_[slot] = line;
  if (slot == 0) {
    std::memcpy(windows_ + std::ptrdiff_t{kMadeLines} * rowBytes_, windows_, static_cast<std::size_t>(count));
  }
}

bool FivePointRows::readTaps(const int32_t *yEntry, SampleTap (&taps)[kFilterTaps]) const {
  bool isNegative = false;
  for (SampleTap &tap : taps) {
    tap = tapOf(yEntry);
    tap.weights.next = (kind_.isAlike ? taps[0] : tap).weights.next;
    isNegative = isNegative || tap.weights.next < 0;
    yEntry += kTapWords;
  }
  return isNegative;
}

bool FivePointRows::setLines(const int32_t *yEntry, FivePointLines &lines) {
  SampleTap taps[kFilterTaps];
  const bool isNegative = readTaps(yEntry, taps);
  lines.bits = kind_.bits;
  for (int32_t t = 0; t < static_cast<int32_t>(kFilterTaps); ++t) {
    lines.top[t] = windowsOf(static_cast<int32_t>(taps[t].self), t);
    lines.bottom[t] = windowsOf(static_cast<int32_t>(taps[t].next), t);
    lines.next[t] = taps[t].weights.next;
  }
  return isNegative;
}

bool FivePointRows::setTaps(const int32_t *yEntry, int row, FivePointTaps &to) const {
  SampleTap taps[kFilterTaps];
  const bool isNegative = readTaps(yEntry, taps);
  for (std::size_t t = 0; t < kFilterTaps; ++t) {
    to.top[row][t] = lineAt(static_cast<int32_t>(taps[t].self));
    to.next[row][t] = taps[t].weights.next;
  }
  return isNegative;
}

/// Fills places `first` to `end` from that line on.
void FivePointRows::setAhead(int32_t line, FivePointTaps &to, int32_t first, int32_t end) const {
  for (int32_t i = first; i < end; ++i, ++line) {
    to.ahead[i] = plane_.samples == nullptr ? ahead_[i] : lineAt(smaller(line, plane_.limitY - 1));
  }
}

void FivePointRows::two(FivePointRows &rows0, const int32_t *yEntry0, uint8_t *to0, FivePointRows &rows1,
                        const int32_t *yEntry1, uint8_t *to1) {
  if (rows0.lineStage_ == nullptr) {
    rows0.row(yEntry0, to0);
    rows1.row(yEntry1, to1);
    return;
  }
  FivePointTaps taps;
  taps.bits = rows0.kind_.bits;
  taps.below = rows0.plane_.limitY > 1 ? rows0.plane_.stride : 0;
  const bool isNegative0 = rows0.setTaps(yEntry0, 0, taps);
  const bool isNegative1 = rows1.setTaps(yEntry1, 1, taps);
  const int32_t ahead = yEntry0[0] + kAhead;
  rows0.setAhead(ahead, taps, 0, kLinesAhead / 2);
  rows1.setAhead(&rows0 == &rows1 ? ahead + kLinesAhead / 2 : ahead, taps, kLinesAhead / 2, kLinesAhead);
  int32_t leading = rows0.leading_;
  for (const Part &part : rows0.parts_) {
    if (part.groups > 0) {
      const int32_t negative = isNegative0 || isNegative1 ? part.groups : smaller(leading, part.groups);
      rows0.lineStage_(part.columns.lines, {negative, part.groups}, taps, {to0, to1});
      to0 += std::ptrdiff_t{part.groups} * kFilterGroup;
      to1 += std::ptrdiff_t{part.groups} * kFilterGroup;
      leading -= smaller(leading, part.groups);
    }
  }
}

void FivePointRows::row(const int32_t *yEntry, uint8_t *to) {
  if (lineStage_ != nullptr) {
    two(*this, yEntry, to, *this, yEntry, to);
    return;
  }
  FivePointLines lines;
  const bool isNegative = setLines(yEntry, lines);
  const auto make = [&](FivePointRow stage, const FilterGroup *groups, int32_t count) {
    if (count == 0) {
      return; // calls cost as much as a few groups
    }
    stage(groups, count, lines, to);
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      lines.top[t] += std::ptrdiff_t{count} * kWindowBytes;
      lines.bottom[t] += std::ptrdiff_t{count} * kWindowBytes;
    }
    to += std::ptrdiff_t{count} * kFilterGroup;
  };
  int32_t leading = leading_;
  for (const Part &part : parts_) {
    const int32_t whole = isNegative ? part.groups : smaller(leading, part.groups);
    make(negativeStage_, part.columns.groups, whole);
    make(stage_, part.columns.groups + whole, part.groups - whole);
    leading -= smaller(leading, part.groups);
  }
}

} // namespace zqcc
