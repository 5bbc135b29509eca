// A conversion as it is carried out: what make() decided once, for every call.
#pragma once

#include "picture/coefficients.h"
#include "picture/description.h"
#include "picture/grid_plan.h"

namespace zqp {

/// Scratch of a call, on the stack. Chunks are as wide as it allows.
inline constexpr std::size_t kScratchBytes = std::size_t{96} * 1024;
/// Vectors may read beyond samples that are needed, but not beyond this.
inline constexpr std::size_t kScratchMargin = 128;

/// Lines that are turned at once, which become columns.
inline constexpr int32_t kTurnedLines = 32;

/// What the rows of the output's luma, or of its R, G and B, are made of.
enum class LumaRecipe : int32_t {
  RgbOfYuvStraight, ///< of the input's memory
  RgbOfYuvBytes,
  RgbOfYuvWords,
  RgbOfRgbBytes,
  RgbOfRgbWords,
  RgbAsItIs,
  AsItIs,
  Rounded,
  Changed, ///< from one matrix or range to another
  OfRgbBytes,
  OfRgbWords,
  OfRgbStraight, ///< of the input's memory, and so is chroma
};

enum class ChromaRecipe : int32_t { None, Middle, AsItIs, Rounded, Changed, OfRgbBytes, OfRgbWords, OfRgbStraight };

/// How rows become memory.
enum class Placing : int32_t { Plane, ChromaPlanes, ChromaPairs, Packed, Rgb565, Three, Four };

/// One of the rows that an output line is put together from at once.
struct Pass {
  Placing placing;
  int32_t components;
  bool isChroma; ///< on the grid of chroma
  Shifts shifts; ///< of the grid before the turn
};

struct Colouring {
  RgbOfYuv rgb;
  YuvOfYuv yuv;
  YuvOfRgb sums;
  Rounding halves;
  RgbLayout pixels;  ///< what the output is
  YuvLayout samples; ///< of LumaRecipe::RgbOfYuvStraight
};

/// Where a class of input components begins, in samples of its planes.
struct Origin {
  int32_t column;
  int32_t line;
};

} // namespace zqp

struct ZqpConverter {
  zqp::Description description;
  zqp::GridPlan luma;               ///< of luma, or R, G, B and alpha, on the output's luma grid
  zqp::GridPlan pixelChroma;        ///< of chroma, on the same
  zqp::GridPlan chroma;             ///< of chroma, or R, G and B, on the output's grid of chroma
  bool isChromaLuma = false;        ///< the grid of chroma is that of luma, and so is what it is made of
  bool isChromaPixelChroma = false; ///< the same, of chroma
  zqp::Origin lumaOrigin = {};
  zqp::Origin chromaOrigin = {};
  zqp::LumaRecipe lumaRecipe = {};
  zqp::ChromaRecipe chromaRecipe = {};
  bool makesPixels = false; ///< colours are put straight into the output
  bool makesPlanes = false; ///< rows that are made lie in the output at once
  bool turnsYuv = false;    ///< samples are turned, not pixels
  bool keepsAlpha = false;
  bool isChromaLeft = false; ///< of pixels of four bytes as they lie
  zqp::Colouring colouring = {};
  zqp::Pass passes[2] = {};
  int32_t passCount = 0;
  zqp::Shifts chromaShifts = {}; ///< of the output before the turn
  int32_t columns = 0;           ///< of the luma grid, padding included
  int32_t chunkColumns = 0;      ///< made at once, a multiple of what groups need unless it is all
  int32_t spans[2] = {};         ///< the most samples that a chunk needs, of luma and of chroma
  int32_t fetched = 0;           ///< the most that a chunk takes apart: pairs of chroma, groups, or pixels
  bool isWide = false;           ///< a chunk needs more samples than fit
};
