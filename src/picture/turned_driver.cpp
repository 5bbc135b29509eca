#include "picture/driver.h"

#include <cstring>

namespace zqp {
namespace {

bool isHalved(const Pass &pass, int32_t component) {
  return pass.placing == Placing::Packed && component > 0;
}

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}
int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// Columns before the turn that become the lines of a band.
Band columnsOf(const ZqpConverter &converter, const Band &band, int32_t shift) {
  const Band lines = bandOf(band, shift);
  const int32_t columns = samplesOf(converter.description.width, shift);
  return {converter.description.turn.mirrorsLines ? columns - lines.first - lines.count : lines.first, lines.count};
}

Band shared(const Band &band, const Part &part) {
  const int32_t first = larger(band.first, part.first);
  return {first, larger(smaller(band.first + band.count, part.first + part.count) - first, 0)};
}

} // namespace

TurnedDriver::TurnedDriver(const ZqpConverter &converter, const Planes &in, const Planes &out, const Stages &stages)
    : converter_(converter), place_(*stages.place), recipes_(converter, in, stages),
      placer_(converter, out, *stages.place) {}

void TurnedDriver::layOut(Arena &arena, int32_t columns) {
  recipes_.layOut(arena, columns);
  int32_t components = 0;
  for (int32_t p = 0; p < converter_.passCount; ++p) {
    components = larger(components, converter_.passes[p].components);
  }
  rowBytes_ = columns;
  for (int32_t c = 0; c < components; ++c) {
    made_[c] = arena.take<uint8_t>(static_cast<std::size_t>(columns) * kTurnedLines);
    turned_[c] = arena.take<uint8_t>(std::size_t{kColumnGroup} * kTurnedLines);
  }
}

void TurnedDriver::convert(const Band &band) {
  const int32_t step = chunkStep(converter_);
  const int32_t shift = converter_.chromaShifts.x;
  const Band luma = columnsOf(converter_, band, 0);
  const Band chroma = columnsOf(converter_, band, shift);
  const bool hasChroma = converter_.passCount > 1 && chroma.count > 0;
  const int32_t first = hasChroma ? smaller(luma.first, chroma.first << shift) : luma.first;
  const int32_t end =
      hasChroma ? larger(luma.first + luma.count, (chroma.first + chroma.count) << shift) : luma.first + luma.count;
  const int32_t alignedEnd = (end + step - 1) / step * step;
  const int32_t lines = converter_.description.height;
  for (int32_t i = first / step * step; i < smaller(end, converter_.columns); i += converter_.chunkColumns) {
    const Chunk chunk = chunkOf(converter_, i, smaller(converter_.chunkColumns, alignedEnd - i));
    recipes_.aim(chunk);
    for (int32_t x = 0; x < lines; x += kTurnedLines) {
      const Band all = {x, smaller(kTurnedLines, lines - x)};
      for (int32_t p = 0; p < converter_.passCount; ++p) {
        const Pass &pass = converter_.passes[p];
        block(pass, chunk, bandOf(all, pass.shifts.y),
              shared(pass.isChroma ? chroma : luma, pass.isChroma ? chunk.chroma : chunk.luma));
      }
    }
  }
}

/// `lines` become columns of the output and `columns` lines.
void TurnedDriver::block(const Pass &pass, const Chunk &chunk, const Band &lines, const Band &columns) {
  if (columns.count == 0) {
    return;
  }
  for (int32_t row = 0; row < lines.count; ++row) {
    makeLine(pass, chunk, lines.first + row, row);
  }
  turn(pass, chunk, lines, columns);
}

void TurnedDriver::makeLine(const Pass &pass, const Chunk &chunk, int32_t x, int32_t row) {
  const Description &description = converter_.description;
  const auto lineOf = [&](int32_t column, int32_t shift) {
    return description.turn.mirrorsColumns ? samplesOf(description.height, shift) - 1 - column : column;
  };
  const auto make = [&](bool isChroma, int32_t first, int32_t made, int32_t components, int32_t j) {
    const Part &part = isChroma ? chunk.chroma : chunk.luma;
    uint8_t *to[4] = {};
    const uint8_t *rows[4] = {};
    for (int32_t c = 0; c < components; ++c) {
      to[c] = made_[first + c] + made * rowBytes_;
    }
    if (isChroma) {
      recipes_.chroma(j, to, rows);
    } else {
      recipes_.luma(j, to, rows);
    }
    for (int32_t c = 0; c < components; ++c) {
      if (rows[c] != to[c] && rows[c] != nullptr) {
        std::memcpy(to[c], rows[c], static_cast<std::size_t>(part.count));
      }
    }
  };
  if (pass.placing != Placing::Packed) {
    make(pass.isChroma, 0, row, pass.components, lineOf(x, pass.shifts.y));
    return;
  }
  make(false, 0, row, 1, lineOf(x, 0));
  if ((x & 1) == 0) {
    make(true, 1, row / 2, 2, lineOf(x / 2, 1));
  }
}

void TurnedDriver::turn(const Pass &pass, const Chunk &chunk, const Band &lines, const Band &columns) {
  const Description &description = converter_.description;
  const bool mirrors = description.turn.mirrorsLines;
  const int32_t all = samplesOf(description.width, pass.shifts.x);
  const int32_t first = (pass.isChroma ? chunk.chroma : chunk.luma).first;
  const bool isPlanar = Placer::isPlanar(pass);
  for (int32_t k = 0; k < columns.count; k += kColumnGroup) {
    const int32_t count = smaller(kColumnGroup, columns.count - k);
    const int32_t column = columns.first + k;
    const int32_t y = mirrors ? all - 1 - column : column;
    for (int32_t c = 0; c < pass.components; ++c) {
      const std::ptrdiff_t stride = placer_.strideOf(pass, c);
      uint8_t *to = isPlanar ? placer_.at(pass, c, lines.first, y) : turned_[c];
      const std::ptrdiff_t planeStride = mirrors ? -stride : stride;
      place_.transposed(made_[c] + (column - first), rowBytes_, count,
                        isHalved(pass, c) ? samplesOf(lines.count, 1) : lines.count, to,
                        isPlanar ? planeStride : kTurnedLines);
    }
    if (!isPlanar) {
      placer_.placeBlock(pass, turned_, kTurnedLines, lines.count, lines.first, {count, y, mirrors ? -1 : 1});
    }
  }
}

} // namespace zqp
