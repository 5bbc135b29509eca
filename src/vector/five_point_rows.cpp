#include "vector/five_point_rows.h"

#include "base/limits.h"
#include "kernels/taps.h"
#include "vector/resize_plan.h"

#include <cstring>

namespace zqcc {
namespace {

/// Copies as many bytes as a window has from every place listed.
template <std::size_t bytes>
uint8_t *copyWindows(const uint8_t *line, const int32_t *first, int32_t count, uint8_t *to) {
  for (int32_t i = 0; i < count; ++i, to += bytes) {
    std::memcpy(to, line + first[i], bytes);
  }
  return to;
}

} // namespace

// Windows are laid out before they are read.
// cppcheck-suppress uninitMemberVar
FivePointRows::FivePointRows(const Job &job, const MeanPlane &plane, int number)
    : plan_(job.plan->filter), plane_(plane),
      windowRow_((plan_.kind == FilterWindows::Near ? NEAR_WINDOW_ROW : WINDOW_ROW).in(job.levels)),
      stage_(FIVE_POINT_ROW.in(job.levels)), isLuma_(number == 0) {}

void FivePointRows::columns(int32_t first, int32_t count) {
  const int32_t start = first / kFilterGroup;
  const int32_t end = start + filterGroups(count);
  const int32_t split = isLuma_ ? end : clampTo(plan_.common, start, end);
  const auto from = [this](const FilterColumns &columns, int32_t group) {
    return FilterColumns{columns.groups + group, columns.windows + std::ptrdiff_t{group} * plan_.windowsPerGroup(),
                         columns.near + group};
  };
  parts_[0] = {from(plan_.luma, start), split - start};
  parts_[1] = {from(plan_.chroma, split > plan_.common ? split - plan_.common : 0), end - split};
  for (int32_t &line : held_) {
    line = -1;
  }
}

void FivePointRows::fill(const uint8_t *line, int32_t tap, uint8_t *row) const {
  const int32_t perGroup = plan_.windowsPerGroup();
  for (const Part &part : parts_) {
    const int32_t *windows = part.columns.windows;
    switch (plan_.kind) {
    case FilterWindows::Near:
    case FilterWindows::Shared:
      windowRow_(line, part.columns, part.groups, row);
      row += std::ptrdiff_t{part.groups} * kWindowBytes;
      break;
    case FilterWindows::OfTaps:
      for (int32_t g = 0; g < part.groups; ++g, windows += perGroup) {
        row = copyWindows<16>(line, windows + std::ptrdiff_t{4} * tap, 4, row);
      }
      break;
    case FilterWindows::Gathered:
      for (int32_t g = 0; g < part.groups; ++g, windows += perGroup) {
        row = copyWindows<4>(line, windows + std::ptrdiff_t{kFilterGroup} * tap, kFilterGroup, row);
      }
      break;
    }
  }
}

/// What of a line the chunk takes will be read soon.
void FivePointRows::prefetch(int32_t line) const {
  if (line >= plane_.limitY) {
    return;
  }
  const uint8_t *from = plane_.samples + line * plane_.stride;
  const Part &last = parts_[parts_[1].groups > 0 ? 1 : 0];
  const int32_t end = last.columns.windows[std::ptrdiff_t{last.groups} * plan_.windowsPerGroup() - 1];
  for (int32_t x = parts_[parts_[0].groups > 0 ? 0 : 1].columns.windows[0]; x < end; x += 64) {
    __builtin_prefetch(from + x);
  }
}

const uint8_t *FivePointRows::windowsOf(int32_t line, int32_t tap) {
  const int32_t slot = plan_.isShared() ? line % kSharedRows : kTapRows * tap + line % kTapRows;
  if (held_[slot] != line) {
    held_[slot] = line;
    fill(plane_.samples + line * plane_.stride, tap, windows_[slot]);
    prefetch(line + 4);
  }
  return windows_[slot];
}

void FivePointRows::row(const int32_t *yEntry, uint8_t *to) {
  const HeldAtEnd lineTap{plane_.limitY};
  FivePointLines lines;
  for (std::size_t t = 0; t < kFilterTaps; ++t, yEntry += kTapWords) {
    const SampleTap tap = lineTap(yEntry);
    lines.top[t] = windowsOf(static_cast<int32_t>(tap.self), static_cast<int32_t>(t));
    lines.bottom[t] = windowsOf(static_cast<int32_t>(tap.next), static_cast<int32_t>(t));
    lines.next[t] = tap.weights.next;
  }
  for (const Part &part : parts_) {
    stage_(part.columns.groups, part.groups, lines, to);
    const std::ptrdiff_t bytes = std::ptrdiff_t{part.groups} * kWindowBytes;
    for (std::size_t t = 0; t < kFilterTaps; ++t) {
      lines.top[t] += bytes;
      lines.bottom[t] += bytes;
    }
    to += std::ptrdiff_t{part.groups} * kFilterGroup;
  }
}

} // namespace zqcc
