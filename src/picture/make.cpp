// Converters: made, and freed.
#include "picture/chunks.h"

#include <cstdlib>
#include <initializer_list>
#include <new>

namespace zqp {
namespace {

bool areSame(const Colours &a, const Colours &b) {
  return a.kr == b.kr && a.kb == b.kb && a.isLimited == b.isLimited;
}

struct Axes {
  OutputAxis columns;
  OutputAxis lines;
};

/// A grid of the output before the turn. What one sees as columns may be lines there.
Axes axesOf(const Description &description, const Shifts &shifts) {
  const Turn &turn = description.turn;
  const bool isLeft = description.outColours.isLeft;
  return {{description.width, shifts.x, isLeft && !turn.isTransposed,
           turn.isTransposed ? turn.mirrorsLines : turn.mirrorsColumns},
          {description.height, shifts.y, isLeft && turn.isTransposed,
           turn.isTransposed ? turn.mirrorsColumns : turn.mirrorsLines}};
}

GridPlan gridOf(const Description &description, const Shifts &shifts, bool isOfChroma) {
  const Axes out = axesOf(description, shifts);
  const Shifts in = isOfChroma ? description.in->chroma : Shifts{0, 0};
  const ZqpRect &crop = description.crop;
  const InputAxis columns = {crop.x, crop.width, in.x, description.inColours.isLeft};
  const InputAxis lines = {crop.y, crop.height, in.y, false};
  GridPlan grid = gridPlan(Axis(out.columns, columns, description.filter), Axis(out.lines, lines, description.filter),
                           description.filter);
  grid.isOfChroma = isOfChroma;
  if (isOfChroma && description.in->isGrey()) {
    grid.way = Way::Middle;
  }
  return grid;
}

/// Packed groups are put together of columns as one sees them. Mirrored, an odd picture's last one comes first.
int32_t paddingOf(const Description &description) {
  const Turn &turn = description.turn;
  return description.out->family == Family::Packed422 && !turn.isTransposed && turn.mirrorsColumns
             ? description.width & 1
             : 0;
}

void use(GridPlan &grid, int32_t components, bool wantsWords) {
  grid.isUsed = true;
  grid.components = components;
  grid.wantsWords = wantsWords;
}

void choosePasses(ZqpConverter &converter) {
  const Family family = converter.description.out->family;
  const int32_t colours = converter.keepsAlpha ? 4 : 3;
  const Shifts none = {0, 0};
  converter.passCount = 1;
  switch (family) {
  case Family::Rgb565:
    converter.passes[0] = {Placing::Rgb565, colours, false, none};
    return;
  case Family::Rgb24:
    converter.passes[0] = {Placing::Three, colours, false, none};
    return;
  case Family::Rgb32:
    converter.passes[0] = {Placing::Four, colours, false, none};
    return;
  case Family::Packed422:
    converter.passes[0] = {Placing::Packed, 3, false, none};
    return;
  default:
    converter.passes[0] = {Placing::Plane, 1, false, none};
  }
  if (family != Family::Grey) {
    converter.passCount = 2;
    converter.passes[1] = {family == Family::SemiPlanar ? Placing::ChromaPairs : Placing::ChromaPlanes, 2, true,
                           converter.chromaShifts};
  }
}

RgbLayout pixelsOf(const Format &format) {
  switch (format.family) {
  case Family::Rgb565:
    return format.isSwapped ? RgbLayout::Rgb565Swapped : RgbLayout::Rgb565;
  case Family::Rgb24:
    return format.isSwapped ? RgbLayout::Bgr24 : RgbLayout::Rgb24;
  default:
    return format.isSwapped ? RgbLayout::Bgra : RgbLayout::Rgba;
  }
}

void chooseColouring(ZqpConverter &converter) {
  const Description &description = converter.description;
  const Colours &in = description.inColours;
  const Colours &out = description.outColours;
  const bool isNarrow = description.out->family == Family::Rgb565;
  Colouring &colouring = converter.colouring;
  colouring.rgb = description.in->isRgb() ? rgbOfRgb(in, out, isNarrow) : rgbOfYuv(in, out, isNarrow);
  colouring.yuv = yuvOfYuv(in, out);
  colouring.sums = yuvOfRgb(in, out);
  colouring.halves = halves();
  colouring.pixels = pixelsOf(*description.out);
}

void chooseOfRgb(ZqpConverter &converter) {
  const Description &description = converter.description;
  const bool areBytes = converter.luma.way == Way::Bytes;
  if (description.out->isRgb()) {
    const bool isCopied = description.out->family != Family::Rgb565 &&
                          description.inColours.isLimited == description.outColours.isLimited;
    converter.lumaRecipe = !areBytes  ? LumaRecipe::RgbOfRgbWords
                           : isCopied ? LumaRecipe::RgbAsItIs
                                      : LumaRecipe::RgbOfRgbBytes;
    use(converter.luma, converter.keepsAlpha ? 4 : 3, !areBytes);
    return;
  }
  converter.lumaRecipe = areBytes ? LumaRecipe::OfRgbBytes : LumaRecipe::OfRgbWords;
  use(converter.luma, 3, !areBytes);
  if (description.out->isGrey()) {
    return;
  }
  converter.isChromaLuma = converter.chromaShifts.x == 0 && converter.chromaShifts.y == 0;
  const bool areChromaBytes = converter.chroma.way == Way::Bytes;
  converter.chromaRecipe = areChromaBytes ? ChromaRecipe::OfRgbBytes : ChromaRecipe::OfRgbWords;
  if (!converter.isChromaLuma) {
    use(converter.chroma, 3, !areChromaBytes);
  }
}

void chooseRgbOfYuv(ZqpConverter &converter) {
  const Way chroma = converter.pixelChroma.way;
  const bool areBytes = converter.luma.way == Way::Bytes && (chroma == Way::Bytes || chroma == Way::Middle);
  converter.lumaRecipe = areBytes ? LumaRecipe::RgbOfYuvBytes : LumaRecipe::RgbOfYuvWords;
  use(converter.luma, 1, !areBytes);
  use(converter.pixelChroma, 2, !areBytes);
}

void chooseYuvOfYuv(ZqpConverter &converter) {
  const Description &description = converter.description;
  const bool changes = !areSame(description.inColours, description.outColours);
  const bool areBytes = converter.luma.way == Way::Bytes;
  converter.lumaRecipe = changes ? LumaRecipe::Changed : areBytes ? LumaRecipe::AsItIs : LumaRecipe::Rounded;
  use(converter.luma, 1, changes || !areBytes);
  if (changes) {
    use(converter.pixelChroma, 2, true);
  }
  if (description.out->isGrey()) {
    return;
  }
  const Way way = converter.chroma.way;
  const bool isMiddle = way == Way::Middle;
  converter.isChromaPixelChroma =
      changes && !isMiddle && converter.chromaShifts.x == 0 && converter.chromaShifts.y == 0;
  converter.chromaRecipe = isMiddle            ? ChromaRecipe::Middle
                           : changes           ? ChromaRecipe::Changed
                           : way == Way::Bytes ? ChromaRecipe::AsItIs
                                               : ChromaRecipe::Rounded;
  if (!converter.isChromaPixelChroma) {
    use(converter.chroma, 2, !isMiddle && (changes || way != Way::Bytes));
  }
}

ZqpConverter converterOf(const Description &description) {
  const Format &out = *description.out;
  const bool isTransposed = description.turn.isTransposed;
  const Shifts shifts = isTransposed ? Shifts{out.chroma.y, out.chroma.x} : out.chroma;
  const bool isOfRgb = description.in->isRgb();
  const Shifts none = {0, 0};
  ZqpConverter converter{description, gridOf(description, none, false), gridOf(description, none, !isOfRgb),
                         gridOf(description, shifts, !isOfRgb)};
  converter.chromaShifts = shifts;
  const ZqpRect &crop = description.crop;
  converter.lumaOrigin = {crop.x, crop.y};
  converter.chromaOrigin = {crop.x >> description.in->chroma.x, crop.y >> description.in->chroma.y};
  converter.luma.padding = paddingOf(description);
  converter.pixelChroma.padding = converter.luma.padding;
  converter.columns = description.width + converter.luma.padding;
  converter.keepsAlpha = description.in->hasAlpha() && out.hasAlpha();
  converter.makesPlanes = !isTransposed && !description.turn.mirrorsColumns;
  converter.makesPixels = converter.makesPlanes && out.isRgb() && !isOfRgb;
  choosePasses(converter);
  chooseColouring(converter);
  if (isOfRgb) {
    chooseOfRgb(converter);
  } else if (out.isRgb()) {
    chooseRgbOfYuv(converter);
  } else {
    chooseYuvOfYuv(converter);
  }
  return converter;
}

/// Whether colours can be made of the input's memory, and of what samples.
bool liesStraight(const ZqpConverter &converter, YuvLayout &samples) {
  const Format &format = *converter.description.in;
  const GridPlan &chroma = converter.pixelChroma;
  if (converter.lumaRecipe != LumaRecipe::RgbOfYuvBytes || !converter.luma.keepsColumns || format.isGrey()) {
    return false;
  }
  if (chroma.keepsColumns) {
    samples = YuvLayout::Full;
    return format.family == Family::Planar;
  }
  if (!chroma.isDoubling) {
    return false;
  }
  if (format.family == Family::SemiPlanar) {
    samples = format.isSwapped ? YuvLayout::PairsVu : YuvLayout::Pairs;
  } else if (format.family == Family::Planar) {
    samples = YuvLayout::Half;
  } else {
    const bool isLumaFirst = format.order.y0 == 0;
    const bool isUFirst = format.order.u < format.order.v;
    samples =
        isLumaFirst ? (isUFirst ? YuvLayout::Yuyv : YuvLayout::Yvyu) : (isUFirst ? YuvLayout::Uyvy : YuvLayout::Vyuy);
    return format.order.y0 < format.order.y1 && converter.lumaOrigin.column % 2 == 0;
  }
  return true;
}

/// Whether luma and chroma can be made of the input's pixels as they lie, those of chroma of 2 x 2 or of 2 x 1 of them.
bool liesInFourBytes(const ZqpConverter &converter) {
  const bool isLuma = converter.lumaRecipe == LumaRecipe::OfRgbBytes && converter.luma.keepsColumns;
  if (converter.description.in->family != Family::Rgb32 || !isLuma || converter.luma.padding != 0) {
    return false;
  }
  const GridPlan &chroma = converter.chroma;
  return converter.chromaRecipe == ChromaRecipe::None ||
         (converter.chromaRecipe == ChromaRecipe::OfRgbWords &&
          (chroma.columns.halves() || chroma.columns.halvesLeft()) &&
          (chroma.lines.sampling() == Sampling::Same || chroma.lines.halves()));
}

/// Nothing is taken apart then, nor kept.
void makeOfFourBytes(ZqpConverter &converter) {
  converter.lumaRecipe = LumaRecipe::OfRgbStraight;
  if (converter.chromaRecipe != ChromaRecipe::None) {
    converter.chromaRecipe = ChromaRecipe::OfRgbStraight;
    converter.isChromaLeft = !converter.chroma.columns.halves();
  }
  converter.luma.isUsed = false;
  converter.chroma.isUsed = false;
}

/// Whether planes can be turned before they become pixels: chroma is shared by as many columns then as lines before.
bool turnsYuv(const ZqpConverter &converter) {
  const Description &description = converter.description;
  const Shifts shifts = description.in->chroma;
  const bool startsInside = (description.crop.y & ((1 << shifts.y) - 1)) != 0 ||
                            (description.turn.mirrorsColumns && (description.height & ((1 << shifts.y) - 1)) != 0);
  return converter.lumaRecipe == LumaRecipe::RgbOfYuvStraight && description.turn.isTransposed &&
         description.in->family != Family::Packed422 && shifts.y <= 1 && !startsInside &&
         converter.luma.lines.sampling() == Sampling::Same && description.crop.height == description.height;
}

void planGrids(ZqpConverter &converter, Arena &arena) {
  for (GridPlan *grid : {&converter.luma, &converter.pixelChroma, &converter.chroma}) {
    if (grid->isUsed) {
      plan(*grid, arena);
    }
  }
}

/// At a multiple of what tables begin at, within memory that was allocated before it.
uint8_t *aligned(void *memory) {
  const auto address = reinterpret_cast<uintptr_t>(memory);
  const uintptr_t rest = (Arena::kAlignment - address % Arena::kAlignment) % Arena::kAlignment;
  return static_cast<uint8_t *>(memory) + rest;
}

} // namespace
} // namespace zqp

using namespace zqp;

int32_t zqpConverterMake(const ZqpConversion *conversion, ZqpConverter **converter) {
  if (converter != nullptr) {
    *converter = nullptr;
  }
  if (conversion == nullptr || converter == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (conversion->recordSize != sizeof(ZqpConversion)) {
    return ZQP_ERR_RECORD;
  }
  Description description{};
  if (const int32_t error = describe(*conversion, description); error != ZQP_OK) {
    return error;
  }
  ZqpConverter made = converterOf(description);
  Arena measure(nullptr);
  planGrids(made, measure);
  // Behind the converter, tables begin at a multiple of their alignment.
  void *memory = std::malloc(sizeof(ZqpConverter) + Arena::kAlignment + measure.used());
  if (memory == nullptr) {
    return ZQP_ERR_MEMORY;
  }
  Arena tables(aligned(static_cast<uint8_t *>(memory) + sizeof(ZqpConverter)));
  planGrids(made, tables);
  if (liesStraight(made, made.colouring.samples)) {
    made.lumaRecipe = LumaRecipe::RgbOfYuvStraight;
  } else if (liesInFourBytes(made)) {
    makeOfFourBytes(made);
  }
  made.turnsYuv = turnsYuv(made);
  chooseChunks(made);
  *converter = new (memory) ZqpConverter(made);
  return ZQP_OK;
}

void zqpConverterFree(ZqpConverter *converter) {
  std::free(converter);
}
