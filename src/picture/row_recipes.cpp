#include "picture/row_recipes.h"

#include <initializer_list>

namespace zqp {
namespace {

/// Rows of red, green and blue, of pixels without alpha.
void setRows(uint8_t *const made[3], const uint8_t *rows[4]) {
  for (int32_t c = 0; c < 3; ++c) {
    rows[c] = made[c];
  }
  rows[3] = nullptr;
}

} // namespace

Region regionOf(const ZqpConverter &converter, const Chunk &chunk) {
  const GridPlan &chroma = converter.chroma;
  const Span ofLuma = spanOf(converter.luma, chunk.luma);
  const Span ofPixels = spanOf(converter.pixelChroma, chunk.luma);
  const Span ofChroma = spanOf(chroma, chunk.chroma);
  const Span none = {0, 0};
  return {united(ofLuma, chroma.isOfChroma ? none : ofChroma), united(ofPixels, chroma.isOfChroma ? ofChroma : none)};
}

const RowRecipes::LumaRecipeOf RowRecipes::kLumaRecipes[] = {
    &RowRecipes::rgbOfYuvStraight, &RowRecipes::rgbOfYuvBytes,  &RowRecipes::rgbOfYuvWords,
    &RowRecipes::rgbOfRgbBytes,    &RowRecipes::rgbOfRgbWords,  &RowRecipes::rgbAsItIs,
    &RowRecipes::lumaAsItIs,       &RowRecipes::lumaRounded,    &RowRecipes::lumaChanged,
    &RowRecipes::lumaOfRgbBytes,   &RowRecipes::lumaOfRgbWords, &RowRecipes::lumaOfRgbStraight,
};
const RowRecipes::ChromaRecipeOf RowRecipes::kChromaRecipes[] = {
    &RowRecipes::noChroma,         &RowRecipes::chromaAsItIs,        &RowRecipes::chromaAsItIs,
    &RowRecipes::chromaRounded,    &RowRecipes::chromaChanged,       &RowRecipes::chromaOfRgbBytes,
    &RowRecipes::chromaOfRgbWords, &RowRecipes::chromaOfRgbStraight,
};

RowRecipes::RowRecipes(const ZqpConverter &converter, const Planes &planes, const Stages &stages)
    : converter_(converter), colouring_(converter.colouring), planes_(planes), colour_(*stages.colour),
      input_(converter, planes, *stages.fetch), ownLuma_(converter.luma, input_, *stages.scale),
      ownPixelChroma_(converter.pixelChroma, input_, *stages.scale),
      ownChroma_(converter.chroma, input_, *stages.scale), chromaRows_(converter.isChromaLuma          ? ownLuma_
                                                                       : converter.isChromaPixelChroma ? ownPixelChroma_
                                                                                                       : ownChroma_),
      layout_(converter.makesPixels ? converter.colouring.pixels : RgbLayout::Rows),
      luma_(kLumaRecipes[static_cast<int32_t>(converter.lumaRecipe)]),
      chroma_(kChromaRecipes[static_cast<int32_t>(converter.chromaRecipe)]) {}

void RowRecipes::layOut(Arena &arena, int32_t columns) {
  if (converter_.lumaRecipe == LumaRecipe::RgbOfYuvStraight) {
    return;
  }
  input_.layOut(arena);
  for (GridRows *rows : {&ownLuma_, &ownPixelChroma_, &ownChroma_}) {
    if (rows->plan().isUsed) {
      rows->layOut(arena, columns, converter_.spans[rows->plan().isOfChroma ? 1 : 0], converter_.isWide);
    }
  }
}

void RowRecipes::aim(const Chunk &chunk) {
  chunk_ = chunk;
  input_.aim(regionOf(converter_, chunk));
  ownLuma_.aim(chunk.luma);
  ownPixelChroma_.aim(chunk.luma);
  ownChroma_.aim(chunk.chroma);
}

Rounding RowRecipes::roundingOf(int32_t j) const {
  const Description &description = converter_.description;
  if (!description.isDithered) {
    return colouring_.halves;
  }
  const Turn &turn = description.turn;
  const int32_t i = chunk_.luma.first;
  const int32_t x = turn.isTransposed ? j : i;
  const int32_t y = turn.isTransposed ? i : j;
  const Place first = {turn.mirrorsColumns ? description.outWidth - 1 - x : x,
                       turn.mirrorsLines ? description.outHeight - 1 - y : y};
  const Place step = turn.isTransposed ? Place{0, turn.mirrorsLines ? -1 : 1} : Place{turn.mirrorsColumns ? -1 : 1, 0};
  return thresholds(first, step);
}

void RowRecipes::rgbOfYuvStraight(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const GridPlan &chroma = converter_.pixelChroma;
  const Format &format = *converter_.description.in;
  const int32_t columns = chunk_.luma.first;
  const int32_t chromaColumns = colouring_.samples == YuvLayout::Full ? columns : columns / 2;
  const int32_t line = converter_.lumaOrigin.line + converter_.luma.lines.nearest(j);
  const int32_t chromaLine = converter_.chromaOrigin.line + chroma.lines.nearest(j);
  const auto at = [&](int32_t plane, int32_t inPlane, int32_t sample) {
    return planes_.line[plane] + planes_.stride[plane] * inPlane + sample;
  };
  const int32_t chromaSample = converter_.chromaOrigin.column + chromaColumns;
  YuvBytes from{};
  if (format.family == Family::Packed422) {
    from.y = at(0, line, 2 * (converter_.lumaOrigin.column + columns));
  } else {
    from.y = at(0, line, converter_.lumaOrigin.column + columns);
    if (format.family == Family::SemiPlanar) {
      from.u = at(1, chromaLine, 2 * chromaSample);
    } else {
      from.u = at(format.isSwapped ? 2 : 1, chromaLine, chromaSample);
      from.v = at(format.isSwapped ? 1 : 2, chromaLine, chromaSample);
    }
  }
  const RgbOfBytes make = colour_.rgbOfBytes[static_cast<int32_t>(colouring_.samples)][static_cast<int32_t>(layout_)];
  make(from, colouring_.rgb, roundingOf(j), chunk_.luma.count, to);
  setRows(to, rows);
}

void RowRecipes::rgbOfYuvBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const bool areHalves = converter_.pixelChroma.isDoubling && !converter_.isWide;
  const uint8_t *chroma[2];
  if (areHalves) {
    ownPixelChroma_.halves(j, chroma);
  } else {
    const uint8_t *const *whole = ownPixelChroma_.bytes(j);
    chroma[0] = whole[0];
    chroma[1] = whole[1];
  }
  const YuvBytes from = {ownLuma_.bytes(j)[0], chroma[0], chroma[1]};
  const YuvLayout samples = areHalves ? YuvLayout::Half : YuvLayout::Full;
  const RgbOfBytes make = colour_.rgbOfBytes[static_cast<int32_t>(samples)][static_cast<int32_t>(layout_)];
  make(from, colouring_.rgb, roundingOf(j), chunk_.luma.count, to);
  setRows(to, rows);
}

void RowRecipes::rgbOfYuvWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const int16_t *const *chroma = ownPixelChroma_.words(j);
  const YuvWords from = {ownLuma_.words(j)[0], chroma[0], chroma[1]};
  colour_.rgbOfWords[static_cast<int32_t>(layout_)](from, colouring_.rgb, roundingOf(j), chunk_.luma.count, to);
  setRows(to, rows);
}

void RowRecipes::rgbOfRgbBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const bool isNarrow = converter_.description.out->family == Family::Rgb565;
  const Rounding rounding = roundingOf(j);
  const uint8_t *const *from = ownLuma_.bytes(j);
  const int32_t count = chunk_.luma.count;
  colour_.componentOfBytes(from[0], colouring_.rgb.red, isNarrow ? rounding.five : rounding.eight, count, to[0]);
  colour_.componentOfBytes(from[1], colouring_.rgb.green, isNarrow ? rounding.six : rounding.eight, count, to[1]);
  colour_.componentOfBytes(from[2], colouring_.rgb.blue, isNarrow ? rounding.five : rounding.eight, count, to[2]);
  setRows(to, rows);
  rows[3] = converter_.keepsAlpha ? from[3] : nullptr;
}

void RowRecipes::rgbOfRgbWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const bool isNarrow = converter_.description.out->family == Family::Rgb565;
  const Rounding rounding = roundingOf(j);
  const int16_t *const *from = ownLuma_.words(j);
  const int32_t count = chunk_.luma.count;
  colour_.componentOfWords(from[0], colouring_.rgb.red, isNarrow ? rounding.five : rounding.eight, count, to[0]);
  colour_.componentOfWords(from[1], colouring_.rgb.green, isNarrow ? rounding.six : rounding.eight, count, to[1]);
  colour_.componentOfWords(from[2], colouring_.rgb.blue, isNarrow ? rounding.five : rounding.eight, count, to[2]);
  setRows(to, rows);
  if (converter_.keepsAlpha) {
    colour_.bytesOfWords(from[3], count, to[3]);
    rows[3] = to[3];
  }
}

void RowRecipes::rgbAsItIs(int32_t j, uint8_t *const /*to*/[4], const uint8_t *rows[4]) {
  const uint8_t *const *from = ownLuma_.bytes(j);
  for (int32_t c = 0; c < 3; ++c) {
    rows[c] = from[c];
  }
  rows[3] = converter_.keepsAlpha ? from[3] : nullptr;
}

void RowRecipes::lumaAsItIs(int32_t j, uint8_t *const /*to*/[4], const uint8_t *rows[4]) {
  rows[0] = ownLuma_.bytes(j)[0];
}

void RowRecipes::lumaRounded(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  colour_.bytesOfWords(ownLuma_.words(j)[0], chunk_.luma.count, to[0]);
  rows[0] = to[0];
}

void RowRecipes::lumaChanged(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  const int16_t *const *chroma = ownPixelChroma_.words(j);
  const YuvWords from = {ownLuma_.words(j)[0], chroma[0], chroma[1]};
  colour_.lumaOfYuv(from, colouring_.yuv, chunk_.luma.count, to[0]);
  rows[0] = to[0];
}

void RowRecipes::lumaOfRgbBytes(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  colour_.sumOfBytes(ownLuma_.bytes(j), colouring_.sums.y, chunk_.luma.count, to[0]);
  rows[0] = to[0];
}

void RowRecipes::lumaOfRgbWords(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  colour_.sumOfWords(ownLuma_.words(j), colouring_.sums.y, chunk_.luma.count, to[0]);
  rows[0] = to[0];
}

/// A line of pixels of four bytes, from the chunk's first column on.
const uint8_t *RowRecipes::fourBytes(int32_t line) const {
  const std::ptrdiff_t column = converter_.lumaOrigin.column + chunk_.luma.first;
  return planes_.line[0] + planes_.stride[0] * (converter_.lumaOrigin.line + line) + 4 * column;
}

void RowRecipes::lumaOfRgbStraight(int32_t j, uint8_t *const to[4], const uint8_t *rows[4]) {
  colour_.lumaOfFourBytes(fourBytes(converter_.luma.lines.nearest(j)), converter_.description.in->isSwapped,
                          colouring_.sums.y, chunk_.luma.count, to[0]);
  rows[0] = to[0];
}

void RowRecipes::noChroma(int32_t /*j*/, uint8_t *const /*to*/[2], const uint8_t * /*rows*/[2]) {}

void RowRecipes::chromaAsItIs(int32_t j, uint8_t *const /*to*/[2], const uint8_t *rows[2]) {
  const uint8_t *const *from = chromaRows_.bytes(j);
  rows[0] = from[0];
  rows[1] = from[1];
}

void RowRecipes::chromaRounded(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) {
  const int16_t *const *from = chromaRows_.words(j);
  for (int32_t c = 0; c < 2; ++c) {
    colour_.bytesOfWords(from[c], chunk_.chroma.count, to[c]);
    rows[c] = to[c];
  }
}

void RowRecipes::chromaChanged(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) {
  const int16_t *const *from = chromaRows_.words(j);
  colour_.chromaOfYuv(from[0], from[1], colouring_.yuv, chunk_.chroma.count, to[0], to[1]);
  rows[0] = to[0];
  rows[1] = to[1];
}

void RowRecipes::chromaOfRgbBytes(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) {
  const uint8_t *const *from = chromaRows_.bytes(j);
  colour_.sumOfBytes(from, colouring_.sums.u, chunk_.chroma.count, to[0]);
  colour_.sumOfBytes(from, colouring_.sums.v, chunk_.chroma.count, to[1]);
  rows[0] = to[0];
  rows[1] = to[1];
}

void RowRecipes::chromaOfRgbWords(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) {
  const int16_t *const *from = chromaRows_.words(j);
  colour_.sumOfWords(from, colouring_.sums.u, chunk_.chroma.count, to[0]);
  colour_.sumOfWords(from, colouring_.sums.v, chunk_.chroma.count, to[1]);
  rows[0] = to[0];
  rows[1] = to[1];
}

void RowRecipes::chromaOfRgbStraight(int32_t j, uint8_t *const to[2], const uint8_t *rows[2]) {
  const Taps lines = converter_.chroma.lines.taps(j, nullptr);
  const uint8_t *upper = fourBytes(lines.first);
  const uint8_t *lower = fourBytes(lines.first + lines.count - 1);
  const bool isBlueFirst = converter_.description.in->isSwapped;
  const Sum sums[2] = {colouring_.sums.u, colouring_.sums.v};
  if (converter_.isChromaLeft) {
    colour_.leftChromaOfFourBytes(upper, lower, isBlueFirst, sums, chunk_.luma.first > 0, chunk_.luma.count, to[0],
                                  to[1]);
  } else {
    colour_.chromaOfFourBytes(upper, lower, isBlueFirst, sums, chunk_.luma.count, to[0], to[1]);
  }
  rows[0] = to[0];
  rows[1] = to[1];
}

} // namespace zqp
