#include "picture/driver.h"

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

void TurnedYuvDriver::convert(const Band &band) {
  const Description &description = converter_.description;
  for (int32_t y = band.first; y < band.first + band.count; y += kLines) {
    const Band lines = {y, smaller(kLines, band.first + band.count - y)};
    for (int32_t x = 0; x < description.outWidth; x += kColumns) {
      block(lines, {x, smaller(kColumns, description.outWidth - x)});
    }
  }
}

/// Lines and columns of the output.
void TurnedYuvDriver::block(const Band &lines, const Band &columns) {
  const Description &description = converter_.description;
  const Turn &turn = description.turn;
  const Shifts shifts = description.in->chroma;
  const int32_t firstColumn =
      turn.mirrorsLines ? description.width - lines.first - lines.count : lines.first; // of the input's crop
  const int32_t firstLine = turn.mirrorsColumns ? description.height - 1 - columns.first : columns.first;
  const int32_t step = turn.mirrorsColumns ? -1 : 1;

  const uint8_t *luma = in_.line[0] + in_.stride[0] * (converter_.lumaOrigin.line + firstLine) +
                        converter_.lumaOrigin.column + firstColumn;
  stages_.place->transposed(luma, in_.stride[0] * step, lines.count, columns.count, luma_, kColumns);

  const int32_t firstChroma = firstColumn >> shifts.x;
  const int32_t endChroma = ((firstColumn + lines.count - 1) >> shifts.x) + 1;
  turnChroma({firstLine >> shifts.y, samplesOf(columns.count, shifts.y)}, step, {firstChroma, endChroma - firstChroma});

  for (int32_t n = 0; n < lines.count; ++n) {
    const int32_t column = firstColumn + n;
    const std::ptrdiff_t chromaRow = ((column >> shifts.x) - firstChroma) * std::ptrdiff_t{kColumns};
    const YuvBytes from = {luma_ + n * std::ptrdiff_t{kColumns}, chroma_[0] + chromaRow, chroma_[1] + chromaRow};
    const Place first = {columns.first, turn.mirrorsLines ? description.width - 1 - column : column};
    const Rounding rounding = description.isDithered ? thresholds(first, {1, 0}) : converter_.colouring.halves;
    uint8_t *const to[3] = {placer_.at(converter_.passes[0], 0, first.x, first.y), nullptr, nullptr};
    make_(from, converter_.colouring.rgb, rounding, columns.count, to);
  }
}

/// `lines` of chroma from the first on, going down or up, of which so many columns become rows.
void TurnedYuvDriver::turnChroma(const Band &lines, int32_t step, const Band &columns) {
  const Format &format = *converter_.description.in;
  const bool arePairs = format.family == Family::SemiPlanar;
  const int32_t line = converter_.chromaOrigin.line + lines.first;
  const int32_t column = converter_.chromaOrigin.column + columns.first;
  for (int32_t n = 0; arePairs && n < lines.count; ++n) {
    const uint8_t *pairs = in_.line[1] + in_.stride[1] * (line + n * step) + std::ptrdiff_t{2} * column;
    const std::ptrdiff_t row = n * std::ptrdiff_t{kLines};
    stages_.fetch->pairs(pairs, columns.count, apart_[format.isSwapped ? 1 : 0] + row,
                         apart_[format.isSwapped ? 0 : 1] + row);
  }
  for (int32_t c = 0; c < 2; ++c) {
    const int32_t plane = (c == 0) == format.isSwapped ? 2 : 1;
    const uint8_t *from = arePairs ? apart_[c] : in_.line[plane] + in_.stride[plane] * line + column;
    const std::ptrdiff_t stride = arePairs ? kLines : in_.stride[plane] * step;
    stages_.place->transposed(from, stride, columns.count, lines.count, chroma_[c], kColumns);
  }
}

} // namespace zqp
