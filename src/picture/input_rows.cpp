#include "picture/input_rows.h"

#include <initializer_list>

namespace zqp {
namespace {

/// Whether lines of the class lie as rows of its components.
bool liesInRows(const Format &format, bool isChroma) {
  switch (format.family) {
  case Family::Planar:
  case Family::Grey:
  case Family::RgbPlanes:
    return true;
  case Family::SemiPlanar:
    return !isChroma;
  default:
    return false;
  }
}

/// Rows that a fetched line has.
int32_t rowsOf(const Format &format) {
  switch (format.family) {
  case Family::SemiPlanar:
    return 2;
  case Family::Rgb32:
    return 4;
  default:
    return 3;
  }
}

constexpr int32_t kNoLine = -1;

/// How many lines stay: as many as means are made of, if these are few.
int32_t slotsOf(const ZqpConverter &converter) {
  for (const GridPlan *grid : {&converter.luma, &converter.pixelChroma, &converter.chroma}) {
    if (grid->isUsed && grid->mostLines > 2) {
      return InputRows::kLines;
    }
  }
  return 2;
}

} // namespace

Span fetchedSpan(const ZqpConverter &converter, const Region &region) {
  const Family family = converter.description.in->family;
  const Span luma = {converter.lumaOrigin.column + region.luma.first, region.luma.count};
  const Span chroma = {converter.chromaOrigin.column + region.chroma.first, region.chroma.count};
  if (family == Family::SemiPlanar) {
    return chroma;
  }
  if (family != Family::Packed422) {
    return luma;
  }
  const int32_t first = luma.first >> 1;
  return united({first, luma.count == 0 ? 0 : ((luma.first + luma.count + 1) >> 1) - first}, chroma);
}

InputRows::InputRows(const ZqpConverter &converter, const Planes &planes, const FetchStages &fetch)
    : converter_(converter), format_(*converter.description.in), planes_(planes), fetch_(fetch) {}

void InputRows::layOut(Arena &arena) {
  const bool areStraight = converter_.lumaRecipe == LumaRecipe::RgbOfYuvStraight;
  if (areStraight || (liesInRows(format_, false) && liesInRows(format_, true))) {
    return;
  }
  const auto count = static_cast<std::size_t>(converter_.fetched);
  slots_ = slotsOf(converter_);
  for (int32_t slot = 0; slot < slots_; ++slot) {
    Fetched &line = lines_[slot];
    for (int32_t r = 0; r < rowsOf(format_); ++r) {
      const bool isLumaOfGroups = format_.family == Family::Packed422 && r == 0;
      line.row[r] = arena.take<uint8_t>(isLumaOfGroups ? 2 * count : count);
    }
  }
}

void InputRows::aim(const Region &region) {
  const Span fetched = fetchedSpan(converter_, region);
  first_ = fetched.first;
  count_ = fetched.count;
  for (Fetched &line : lines_) {
    line.line = kNoLine;
  }
}

const uint8_t *InputRows::lineOf(int32_t plane, int32_t line) const {
  return planes_.line[plane] + planes_.stride[plane] * line;
}

void InputRows::rows(bool isChroma, int32_t line, const uint8_t *to[4]) {
  const Origin &origin = isChroma ? converter_.chromaOrigin : converter_.lumaOrigin;
  const int32_t inPlane = origin.line + line;
  if (liesInRows(format_, isChroma)) {
    if (format_.family == Family::RgbPlanes) {
      for (int32_t c = 0; c < 3; ++c) {
        to[c] = lineOf(c, inPlane) + origin.column;
      }
    } else if (isChroma) {
      to[0] = lineOf(format_.isSwapped ? 2 : 1, inPlane) + origin.column;
      to[1] = lineOf(format_.isSwapped ? 1 : 2, inPlane) + origin.column;
    } else {
      to[0] = lineOf(0, inPlane) + origin.column;
    }
    return;
  }
  const Fetched &from = fetched(inPlane);
  if (format_.family == Family::Packed422) {
    const int32_t ofClass = isChroma ? first_ - origin.column : 2 * first_ - origin.column;
    to[0] = fromStart(from.row[isChroma ? 1 : 0], ofClass);
    to[1] = fromStart(from.row[2], ofClass);
    return;
  }
  for (int32_t c = 0; c < rowsOf(format_); ++c) {
    to[c] = fromStart(from.row[c], first_ - origin.column);
  }
}

const InputRows::Fetched &InputRows::fetched(int32_t line) {
  Fetched &slot = lines_[line % slots_];
  if (slot.line != line) {
    fetch(line, slot.row);
    slot.line = line;
  }
  return slot;
}

void InputRows::fetch(int32_t line, uint8_t *const row[4]) const {
  const std::ptrdiff_t first = first_;
  uint8_t *const swapped[4] = {row[2], row[1], row[0], row[3]};
  uint8_t *const *const to = format_.isSwapped ? swapped : row;
  switch (format_.family) {
  case Family::SemiPlanar:
    fetch_.pairs(lineOf(1, line) + 2 * first, count_, row[format_.isSwapped ? 1 : 0], row[format_.isSwapped ? 0 : 1]);
    break;
  case Family::Packed422:
    fetch_.packed(lineOf(0, line) + 4 * first, format_.order, 2 * count_, row[0], row[1], row[2]);
    break;
  case Family::Rgb565:
    fetch_.rgb565(lineOf(0, line) + 2 * first, format_.isSwapped, count_, row);
    break;
  case Family::Rgb24:
    fetch_.three(lineOf(0, line) + 3 * first, count_, to);
    break;
  case Family::Rgb32:
    fetch_.four(lineOf(0, line) + 4 * first, count_, to);
    break;
  default:
    break;
  }
}

bool InputRows::holds(bool isChroma, int32_t lines) const {
  return lines <= (liesInRows(format_, isChroma) ? kFewTaps : kLines);
}

} // namespace zqp
