#include "picture/driver.h"
#include "vector/lines_ahead.h"

namespace zqp {
namespace {

static_assert(std::size_t{5} * TurnedYuvDriver::kColumns * TurnedYuvDriver::kLines <= kScratchBytes);

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}

} // namespace

TurnedYuvDriver::TurnedYuvDriver(const ZqpConverter &converter, const Planes &in, const Planes &out,
                                 const Stages &stages)
    : converter_(converter), in_(in), stages_(stages), placer_(converter, out, *stages.place),
      make_(stages.colour->rgbOfBytes[static_cast<int32_t>(isHalved() ? YuvLayout::Half : YuvLayout::Full)]
                                     [static_cast<int32_t>(converter.colouring.pixels)]) {}

bool TurnedYuvDriver::isHalved() const {
  return converter_.description.in->chroma.y != 0;
}

void TurnedYuvDriver::layOut(Arena &arena, int32_t /*columns*/) {
  luma_ = arena.take<uint8_t>(std::size_t{kColumns} * kLines);
  for (int32_t c = 0; c < 2; ++c) {
    chroma_[c] = arena.take<uint8_t>(std::size_t{kColumns} * kLines);
    apart_[c] = arena.take<uint8_t>(std::size_t{kColumns} * kLines);
  }
}

TurnedYuvDriver::Block TurnedYuvDriver::blockAt(const Band &band, int32_t x, int32_t y) const {
  const int32_t width = converter_.description.outWidth;
  const int32_t end = band.first + band.count;
  return {{y, smaller(kLines, end - y)}, {x, smaller(kColumns, width - x)}};
}

void TurnedYuvDriver::convert(const Band &band) {
  Block block = blockAt(band, 0, band.first);
  while (block.lines.count > 0) {
    const int32_t right = block.columns.first + block.columns.count;
    const bool isLast = right == converter_.description.outWidth;
    const Block next =
        blockAt(band, isLast ? 0 : right, isLast ? block.lines.first + block.lines.count : block.lines.first);
    make(block, next);
    block = next;
  }
}

TurnedYuvDriver::Source TurnedYuvDriver::source(const Block &block, int32_t plane) const {
  const Description &description = converter_.description;
  const Format &format = *description.in;
  const Turn &turn = description.turn;
  const Shifts shifts = plane == 0 ? Shifts{0, 0} : format.chroma;
  const Origin &origin = plane == 0 ? converter_.lumaOrigin : converter_.chromaOrigin;
  const int32_t column = turn.mirrorsLines ? description.width - block.lines.first - block.lines.count
                                           : block.lines.first; // of the input's crop
  const int32_t line = turn.mirrorsColumns ? description.height - 1 - block.columns.first : block.columns.first;
  const int32_t first = column >> shifts.x;
  const int32_t bytes = plane != 0 && format.family == Family::SemiPlanar ? 2 : 1;
  return {in_.line[plane] + in_.stride[plane] * (origin.line + (line >> shifts.y)) +
              std::ptrdiff_t{bytes} * (origin.column + first),
          in_.stride[plane] * (turn.mirrorsColumns ? -1 : 1),
          ((column + block.lines.count - 1) >> shifts.x) + 1 - first, samplesOf(block.columns.count, shifts.y)};
}

/// While colours are made, the samples of the next block are asked for: a line of them is short, and too far from the
/// one before it for the processor to see it coming.
void TurnedYuvDriver::make(const Block &block, const Block &next) {
  const Description &description = converter_.description;
  const Turn &turn = description.turn;
  const Band &lines = block.lines;
  const Band &columns = block.columns;
  const Source luma = source(block, 0);
  stages_.place->transposed(luma.first, luma.stride, luma.columns, luma.lines, luma_, kColumns);
  turnChroma(block);

  const bool arePairs = description.in->family == Family::SemiPlanar;
  const auto ahead = [&](int32_t plane) {
    const Source from = source(next, plane);
    const std::ptrdiff_t bytes = std::ptrdiff_t{from.columns} * (plane != 0 && arePairs ? 2 : 1);
    return zqcc::LinesAhead<false>(from.first, from.stride, next.lines.count > 0 ? from.lines : 0, bytes, lines.count);
  };
  zqcc::LinesAhead<false> nextSamples[3] = {ahead(0), ahead(1), ahead(arePairs ? 1 : 2)};
  const int32_t planes = arePairs ? 2 : 3;

  const int32_t shift = description.in->chroma.x;
  const int32_t firstColumn = turn.mirrorsLines ? description.width - lines.first - lines.count : lines.first;
  for (int32_t n = 0; n < lines.count; ++n) {
    for (int32_t p = 0; p < planes; ++p) {
      nextSamples[p].next();
    }
    const int32_t column = firstColumn + n;
    const std::ptrdiff_t chromaRow = ((column >> shift) - (firstColumn >> shift)) * std::ptrdiff_t{kColumns};
    const YuvBytes from = {luma_ + n * std::ptrdiff_t{kColumns}, chroma_[0] + chromaRow, chroma_[1] + chromaRow};
    const Place first = {columns.first, turn.mirrorsLines ? description.width - 1 - column : column};
    const Rounding rounding = description.isDithered ? thresholds(first, {1, 0}) : converter_.colouring.halves;
    uint8_t *const to[3] = {placer_.at(converter_.passes[0], 0, first.x, first.y), nullptr, nullptr};
    make_(from, converter_.colouring.rgb, rounding, columns.count, to);
  }
}

void TurnedYuvDriver::turnChroma(const Block &block) {
  const Format &format = *converter_.description.in;
  const bool arePairs = format.family == Family::SemiPlanar;
  const Source pairs = source(block, 1);
  for (int32_t n = 0; arePairs && n < pairs.lines; ++n) {
    const std::ptrdiff_t row = n * std::ptrdiff_t{kLines};
    stages_.fetch->pairs(pairs.first + n * pairs.stride, pairs.columns, apart_[format.isSwapped ? 1 : 0] + row,
                         apart_[format.isSwapped ? 0 : 1] + row);
  }
  for (int32_t c = 0; c < 2; ++c) {
    const Source plane = source(block, !arePairs && (c == 0) == format.isSwapped ? 2 : 1);
    stages_.place->transposed(arePairs ? apart_[c] : plane.first, arePairs ? kLines : plane.stride, plane.columns,
                              plane.lines, chroma_[c], kColumns);
  }
}

} // namespace zqp
