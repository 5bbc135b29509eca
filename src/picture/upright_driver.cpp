#include "picture/driver.h"

#include <cstring>

namespace zqp {
namespace {

bool liesDirectly(const ZqpConverter &converter, const Pass &pass) {
  return converter.makesPixels || (converter.makesPlanes && Placer::isPlanar(pass));
}

} // namespace

Band bandOf(const Band &band, int32_t shift) {
  const int32_t first = samplesOf(band.first, shift);
  return {first, samplesOf(band.first + band.count, shift) - first};
}

int32_t chunkStep(const ZqpConverter &converter) {
  return kColumnGroup << converter.chromaShifts.x;
}

Chunk chunkOf(const ZqpConverter &converter, int32_t first, int32_t count) {
  const int32_t shift = converter.chromaShifts.x;
  const int32_t left = converter.columns - first;
  const bool isLast = count >= left;
  const int32_t chromaEnd = isLast ? samplesOf(converter.description.width, shift) : (first + count) >> shift;
  return {{first, isLast ? left : count}, {first >> shift, chromaEnd - (first >> shift)}};
}

UprightDriver::UprightDriver(const ZqpConverter &converter, const Planes &in, const Planes &out, const Stages &stages)
    : converter_(converter), in_(in), fetch_(*stages.fetch), place_(*stages.place), recipes_(converter, in, stages),
      placer_(converter, out, *stages.place) {}

void UprightDriver::layOut(Arena &arena, int32_t columns) {
  recipes_.layOut(arena, columns);
  int32_t components = 0;
  for (int32_t p = 0; p < converter_.passCount; ++p) {
    const Pass &pass = converter_.passes[p];
    if (!liesDirectly(converter_, pass) && pass.components > components) {
      components = pass.components;
    }
  }
  for (int32_t c = 0; c < components; ++c) {
    made_[c] = arena.take<uint8_t>(static_cast<std::size_t>(columns));
    if (converter_.description.turn.mirrorsColumns) {
      reversed_[c] = arena.take<uint8_t>(static_cast<std::size_t>(columns));
    }
  }
}

/// Whether lines of the input's planes become lines of the output's as they are, or pairs of them taken apart.
bool UprightDriver::isCopied(const Pass &pass) const {
  const Turn &turn = converter_.description.turn;
  const bool arePlanes = pass.placing == Placing::ChromaPlanes;
  if (turn.mirrorsColumns || turn.mirrorsLines || (pass.placing != Placing::Plane && !arePlanes)) {
    return false;
  }
  const GridPlan &grid = arePlanes ? converter_.chroma : converter_.luma;
  const bool isAsItIs =
      arePlanes ? converter_.chromaRecipe == ChromaRecipe::AsItIs : converter_.lumaRecipe == LumaRecipe::AsItIs;
  const Family family = converter_.description.in->family;
  const bool areRows = family == Family::Planar || family == Family::SemiPlanar || family == Family::Grey;
  return isAsItIs && areRows && grid.keepsColumns && grid.lines.sampling() == Sampling::Same;
}

/// All at once, if nothing lies between lines: long copies go past what short ones have to fetch before they write.
void UprightDriver::copy(const Pass &pass, const Band &band) {
  const Band lines = bandOf(band, pass.shifts.y);
  const Format &format = *converter_.description.in;
  if (pass.isChroma && format.family == Family::SemiPlanar) {
    splitPairs(pass, lines);
    return;
  }
  const Origin &origin = pass.isChroma ? converter_.chromaOrigin : converter_.lumaOrigin;
  const auto bytes = static_cast<std::size_t>(samplesOf(converter_.description.width, pass.shifts.x));
  for (int32_t c = 0; c < pass.components && lines.count > 0; ++c) {
    const int32_t plane = !pass.isChroma ? 0 : (c == 0) == format.isSwapped ? 2 : 1;
    const std::ptrdiff_t fromStride = in_.stride[plane];
    const std::ptrdiff_t toStride = placer_.strideOf(pass, c);
    const uint8_t *from = in_.line[plane] + fromStride * (origin.line + lines.first) + origin.column;
    uint8_t *to = placer_.at(pass, c, 0, lines.first);
    if (fromStride == toStride && toStride == static_cast<std::ptrdiff_t>(bytes)) {
      std::memcpy(to, from, bytes * static_cast<std::size_t>(lines.count));
      continue;
    }
    for (int32_t n = 0; n < lines.count; ++n) {
      std::memcpy(to + n * toStride, from + n * fromStride, bytes);
    }
  }
}

void UprightDriver::splitPairs(const Pass &pass, const Band &lines) {
  const bool isVuFirst = converter_.description.in->isSwapped;
  const Origin &origin = converter_.chromaOrigin;
  const int32_t count = samplesOf(converter_.description.width, pass.shifts.x);
  for (int32_t y = lines.first; y < lines.first + lines.count; ++y) {
    const uint8_t *from = in_.line[1] + in_.stride[1] * (origin.line + y) + std::ptrdiff_t{2} * origin.column;
    fetch_.pairs(from, count, placer_.at(pass, isVuFirst ? 1 : 0, 0, y), placer_.at(pass, isVuFirst ? 0 : 1, 0, y));
  }
}

void UprightDriver::convert(const Band &band) {
  bool isDone[2] = {};
  for (int32_t p = 0; p < converter_.passCount; ++p) {
    isDone[p] = isCopied(converter_.passes[p]);
    if (isDone[p]) {
      copy(converter_.passes[p], band);
    }
  }
  if (isDone[0] && (isDone[1] || converter_.passCount == 1)) {
    return;
  }
  for (int32_t x = 0; x < converter_.columns; x += converter_.chunkColumns) {
    const Chunk chunk = chunkOf(converter_, x, converter_.chunkColumns);
    recipes_.aim(chunk);
    for (int32_t y = band.first; y < band.first + band.count; ++y) {
      for (int32_t p = 0; p < converter_.passCount; ++p) {
        const Pass &pass = converter_.passes[p];
        if (!isDone[p] && (y & ((1 << pass.shifts.y) - 1)) == 0) {
          line(pass, chunk, y >> pass.shifts.y);
        }
      }
    }
  }
}

void UprightDriver::line(const Pass &pass, const Chunk &chunk, int32_t y) {
  const Description &description = converter_.description;
  const Turn &turn = description.turn;
  const Part &part = pass.isChroma ? chunk.chroma : chunk.luma;
  const int32_t columns = pass.isChroma ? samplesOf(description.width, pass.shifts.x) : converter_.columns;
  const int32_t lines = samplesOf(description.height, pass.shifts.y);
  const int32_t j = turn.mirrorsLines ? lines - 1 - y : y;
  const int32_t x = turn.mirrorsColumns ? columns - part.first - part.count : part.first;

  uint8_t *to[4] = {made_[0], made_[1], made_[2], made_[3]};
  if (liesDirectly(converter_, pass)) {
    for (int32_t c = 0; c < pass.components; ++c) {
      to[c] = placer_.at(pass, c, x, y);
    }
  }
  const uint8_t *rows[4] = {};
  if (pass.isChroma) {
    recipes_.chroma(j, to, rows);
  } else {
    recipes_.luma(j, to, rows);
  }
  if (pass.placing == Placing::Packed) {
    recipes_.chroma(j, to + 1, rows + 1);
  }
  if (converter_.makesPixels) {
    return;
  }
  if (turn.mirrorsColumns) {
    reverse(pass, chunk, rows);
  }
  placer_.place(pass, rows, part.count, x, y);
}

void UprightDriver::reverse(const Pass &pass, const Chunk &chunk, const uint8_t *rows[4]) {
  for (int32_t c = 0; c < pass.components; ++c) {
    const bool isChroma = pass.isChroma || (pass.placing == Placing::Packed && c > 0);
    if (rows[c] != nullptr) {
      place_.reversed(rows[c], isChroma ? chunk.chroma.count : chunk.luma.count, reversed_[c]);
      rows[c] = reversed_[c];
    }
  }
}

} // namespace zqp
