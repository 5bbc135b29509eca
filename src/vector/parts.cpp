#include "vector/parts.h"

#include "vector/lines_ahead.h"

namespace zqcc {
namespace {

/// Lines of macropixels are done in pieces, and while one is made, what comes some bytes behind it is asked for, of
/// narrow pictures the next line: it takes longer until the cache has a line to write to than it takes to fill it.
constexpr int32_t kPiece = 512;
constexpr std::ptrdiff_t kAhead = 512;

/// `bytes` bytes, which are going to be written.
void askFor(const uint8_t *first, std::ptrdiff_t bytes) {
  for (std::ptrdiff_t i = 0; i < bytes; i += 64) {
    __builtin_prefetch(first + i, 1);
  }
}

} // namespace

bool PairParts::part(const uint8_t *pairs, uint8_t *first, uint8_t *second, int32_t count) const {
  if (fetch_ == nullptr || count < kLeastPixels / 2) {
    return false;
  }
  fetch_({nullptr, pairs, pairs + 1}, {nullptr, first, second}, 2 * count);
  return true;
}

MacropixelParts::MacropixelParts(LevelSet levels, const PackedLayout &layout)
    : layout_(layout), whole_((layout.isSwapped() ? SWAPPED_PACKED_ROWS : PACKED_ROWS).in(levels)),
      luma_((layout.isSwapped() ? SWAPPED_PACKED_LUMA_ROW : PACKED_LUMA_ROW).in(levels)) {}

bool MacropixelParts::part(const uint8_t *from, const PartedLine &line, int32_t pixels) const {
  const bool chroma = line.u != nullptr;
  const FetchRows fetch = chroma ? whole_ : luma_;
  if (fetch == nullptr || pixels < kLeastPixels) {
    return false;
  }
  int32_t some = 0;
  for (int32_t x = 0; x < pixels; x += some) {
    some = nextUnits(pixels - x, kPiece, kLeastPixels);
    RowBuffers to{line.y + x, nullptr, nullptr};
    askFor(to.y + kAhead, some);
    if (chroma) {
      to.u = line.u + x / 2;
      to.v = line.v + x / 2;
      askFor(to.u + kAhead / 2, some / 2);
      askFor(to.v + kAhead / 2, some / 2);
    }
    const uint8_t *macropixels = from + x / 2 * kMacropixelBytes;
    fetch({macropixels + layout_.left, macropixels + layout_.u, macropixels + layout_.v}, to, some);
  }
  return true;
}

} // namespace zqcc
