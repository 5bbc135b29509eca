#include "vector/packed_rows.h"

#include "tables/packed_layout.h"
#include "vector/pick_macropixels.h"
#include "vector/resize_rows.h"
#include "vector/row_stages.h"

namespace zqcc {
namespace {

/// Columns of a chunk: nothing is kept of a line for longer than it takes to make two, so that long pieces do best.
constexpr std::size_t kPackedColumns = kMostColumns;
constexpr std::size_t kMostMacropixels = kPackedColumns / 2;

/// Lines of macropixels that are picked for a chunk: the last two that were asked for.
class PickedLines {
public:
  // cppcheck-suppress uninitMemberVar ; what is read has been picked
  explicit PickedLines(const Job &job)
      : params_(job.params), xTable_(job.xTable), layout_(packedLayout(job.packedVariant)),
        pick_(PICK_MACROPIXELS.in(job.levels)) {}

  [[nodiscard]] bool canPick() const { return pick_ != nullptr; }
  [[nodiscard]] const PackedLayout &layout() const { return layout_; }

  void columns(int32_t first, int32_t count) {
    index_ = xTable_ + first / 2;
    count_ = count;
    source_[0] = source_[1] = kNone;
  }

  /// Which of the two slots has a source line, and whether it had to be made. Lines do not fall, so that the other slot
  /// is kept for the line before.
  struct Slot {
    int number;
    bool isNew;
  };
  Slot slotOf(int32_t line) {
    for (int slot = 0; slot < 2; ++slot) {
      if (source_[slot] == line) {
        return {slot, false};
      }
    }
    const int slot = source_[0] < source_[1] ? 0 : 1;
    source_[slot] = line;
    pick(params_.inBuf[0] + std::ptrdiff_t{line} * params_.inStride, macropixels_[slot]);
    return {slot, true};
  }

  /// Where the samples of a slot's first pixel stand.
  [[nodiscard]] SourceLine lineAt(int slot) const {
    const uint8_t *first = macropixels_[slot];
    return {first + layout_.left, first + layout_.u, first + layout_.v};
  }

  /// Asks for a line that comes next.
  [[gnu::always_inline]] void prefetch(int32_t line) const {
    const uint8_t *from = params_.inBuf[0] + std::ptrdiff_t{line} * params_.inStride;
    const uint8_t *end = from + index_[(count_ - 1) / 2] * kMacropixelBytes;
    for (from += index_[0] * kMacropixelBytes; from < end; from += 64) {
      __builtin_prefetch(from);
    }
  }

  /// Asks for the lines of the next two outputs, if there are so many.
  [[gnu::always_inline]] void prefetchPair(const int32_t *lines, int32_t left) const {
    if (left >= 2) {
      prefetch(lines[0]);
      prefetch(lines[1]);
    }
  }

private:
  static constexpr int32_t kNone = -1;

  void pick(const uint8_t *from, uint8_t *to) const {
    const int32_t whole = count_ / 2;
    if (whole > 0) {
      pick_(from, index_, whole, index_[whole - 1] + 1, to);
    }
    if (count_ % 2 != 0) {
      pickLone(from + index_[whole] * kMacropixelBytes, to + whole * kMacropixelBytes);
    }
  }

  /// The macropixel of a lone last pixel may end the line before its second luma sample.
  void pickLone(const uint8_t *from, uint8_t *to) const {
    to[layout_.left] = from[layout_.left];
    to[layout_.u] = from[layout_.u];
    to[layout_.v] = from[layout_.v];
  }

  const ConvertParams &params_;
  const int32_t *xTable_;
  const PackedLayout layout_;
  PickMacropixels pick_;
  const int32_t *index_ = nullptr;
  int32_t count_ = 0;
  int32_t source_[2] = {kNone, kNone};
  alignas(64) uint8_t macropixels_[2][kMostMacropixels * kMacropixelBytes];
};

/// Rows of macropixels, for stages that read them as they lie.
class PackedSampler {
public:
  static constexpr std::size_t kColumns = kPackedColumns;

  explicit PackedSampler(const Job &job) : lines_(job), yTable_(job.yTable), height_(job.params.outHeight) {}
  [[nodiscard]] bool canSample() const { return lines_.canPick(); }

  void columns(int32_t first, int32_t count) { lines_.columns(first, count); }

  void lines(int32_t j, int32_t lineCount, SampleRows (&rows)[2]) {
    for (int32_t line = 0; line < lineCount; ++line) {
      const SourceLine from = lines_.lineAt(lines_.slotOf(yTable_[j + line]).number);
      rows[line] = {{from.y, nullptr}, from.u, from.v};
    }
    if (lineCount == 1) {
      rows[1] = rows[0];
      return;
    }
    lines_.prefetchPair(yTable_ + j + 2, height_ - j - 2);
  }

private:
  PickedLines lines_;
  const int32_t *yTable_;
  int32_t height_;
};

/// The same taken apart into rows of luma and half chroma.
class PartedSampler {
public:
  static constexpr std::size_t kColumns = kPackedColumns;

  // cppcheck-suppress uninitMemberVar ; what is read has been made of a line
  explicit PartedSampler(const Job &job)
      : lines_(job), yTable_(job.yTable), height_(job.params.outHeight),
        part_((lines_.layout().isSwapped() ? SWAPPED_PACKED_ROWS : PACKED_ROWS).in(job.levels)) {}
  [[nodiscard]] bool canSample() const { return lines_.canPick() && part_ != nullptr; }

  void columns(int32_t first, int32_t count) {
    lines_.columns(first, count);
    const int32_t even = (count + 1) & ~1;
    count_ = even < kLeastPixels ? kLeastPixels : even;
  }

  void lines(int32_t j, int32_t lineCount, SampleRows (&rows)[2]) {
    for (int32_t line = 0; line < lineCount; ++line) {
      const PickedLines::Slot slot = lines_.slotOf(yTable_[j + line]);
      Rows &to = rows_[slot.number];
      if (slot.isNew) {
        part_(lines_.lineAt(slot.number), {to.y, to.u, to.v}, count_);
      }
      rows[line] = {{to.y, nullptr}, to.u, to.v};
    }
    if (lineCount == 1) {
      rows[1] = rows[0];
      return;
    }
    lines_.prefetchPair(yTable_ + j + 2, height_ - j - 2);
  }

private:
  struct Rows {
    alignas(64) uint8_t y[kColumns];
    alignas(64) uint8_t u[kColumns / 2];
    alignas(64) uint8_t v[kColumns / 2];
  };

  PickedLines lines_;
  const int32_t *yTable_;
  int32_t height_;
  FetchRows part_;
  int32_t count_ = 0;
  Rows rows_[2];
};

/// Rows make no fewer than kLeastPixels pixels, and what is done before the first of them costs as much as the portable
/// code's time for about a hundred.
bool isLargeEnough(const ConvertParams &p) {
  return p.outWidth >= kLeastPixels / 2 && int64_t{p.outWidth} * p.outHeight >= 128;
}

template <class Sampler>
bool resizePacked(const Job &job, const ResizeStages &stages, Turn turn, const Target &target) {
  const ConvertParams &p = job.params;
  if (!isLargeEnough(p)) {
    return false;
  }
  Sampler sampler(job);
  return sampler.canSample() &&
         resizeByRows(sampler, stages, job.levels, {turn, p.outWidth, p.outHeight, target}, *job.matrix);
}

constexpr ResizeStages kTo16{nullptr, &MATRIX565_HALF, makeMatrixConstants, kPlaceOf<2>, 2};

constexpr ResizeStages to24(const PerLevel<ColourRows> &packed) {
  return {nullptr, &packed, makeMatrixConstants, kPlaceOf<3>, 3};
}
constexpr ResizeStages kTo24 = to24(MATRIX_RGB24_PACKED);
constexpr ResizeStages kSwappedTo24 = to24(MATRIX_RGB24_PACKED_SWAPPED);

} // namespace

bool resizePackedByRows16(const Job &job, Turn turn, const Target &target) {
  return resizePacked<PartedSampler>(job, kTo16, turn, target);
}

bool resizePackedByRows24(const Job &job, Turn turn, const Target &target) {
  const bool swapped = packedLayout(job.packedVariant).isSwapped();
  return resizePacked<PackedSampler>(job, swapped ? kSwappedTo24 : kTo24, turn, target);
}

} // namespace zqcc
