#include "corpus.h"
#include "pictures.h"

#include <algorithm>

namespace corpus {
namespace {

// 5 and 36 stand for the codes that are no types.
constexpr int kInTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 36, 37};
constexpr int kOutTypes[] = {3, 6, 7, 8, 9, 11, 12, 14, 15, 16, 17, 30, 31, 32, 35};

/// Sizes, the bytes added to the tight strides, and the distance of the buffers from alignment.
struct Geometry {
  int inWidth, inHeight, outWidth, outHeight, inPadding, outPadding;
  unsigned misalign;
};

// Whole blocks, partial ones, odd sizes, a picture smaller than a block, wide and odd strides, odd addresses.
constexpr Geometry kSameSize[] = {
    {32, 32, 32, 32, 0, 0, 0},  {37, 21, 37, 21, 0, 0, 0},  {50, 35, 50, 35, 5, 6, 1}, {18, 44, 18, 44, 8, 8, 2},
    {64, 16, 64, 16, 16, 4, 0}, {16, 16, 16, 16, 0, 16, 0}, {7, 5, 7, 5, 0, 1, 3},
};

// Every class of ratios, general ones up and down, odd sizes, strides and addresses.
constexpr Geometry kResized[] = {
    {36, 28, 47, 41, 0, 0, 0}, {37, 29, 23, 41, 3, 2, 1}, {64, 48, 32, 24, 0, 0, 0}, {80, 64, 10, 8, 4, 8, 0},
    {48, 32, 36, 24, 0, 0, 0}, {44, 36, 33, 27, 0, 4, 2}, {32, 24, 48, 36, 0, 0, 0}, {18, 22, 27, 33, 2, 0, 0},
    {20, 18, 40, 36, 0, 0, 0}, {50, 40, 17, 9, 2, 2, 0},  {12, 10, 39, 52, 0, 0, 0},
};

constexpr int kMatrices = 4;

struct Mode {
  int inType, outType;
  uint32_t isResize, rotation, antiAlias;
};

void selectMatrix(ConvertContext *handle, int matrix) {
  // Weights of about the built-in entries' size; see PARAM_CUSTOM_MATRIX for their scale.
  static double custom[4] = {700.5, -380.25, 890.75, -190.125};
  if (matrix == MATRIX_CUSTOM) {
    (void)zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, custom);
  } else {
    (void)zqCCSetParameter(handle, PARAM_COLOR_MATRIX, reinterpret_cast<void *>(static_cast<std::uintptr_t>(matrix)));
  }
}

/// One conversion on a handle of its own. The written picture may be turned or not, so the output holds either.
uint32_t convert(const Mode &mode, const Geometry &g, int matrix, Hash &hash) {
  const Input input(mode.inType, g.inWidth, g.inHeight, lineBytes(mode.inType, g.inWidth) + g.inPadding, g.misalign,
                    static_cast<uint32_t>(g.inWidth * 64 + g.inHeight));
  const int side = std::max(g.outWidth, g.outHeight);
  Output output(mode.outType, side, lineBytes(mode.outType, side) + g.outPadding, g.misalign);
  ConvertParams params{};
  input.describe(params);
  output.describe(params);
  params.outWidth = g.outWidth;
  params.outHeight = g.outHeight;
  params.isResize = mode.isResize;
  params.rotation = mode.rotation;
  params.antiAlias = mode.antiAlias;
  const uint8_t *const secondPlane = params.inBuf[1];

  ConvertContext *handle = nullptr;
  uint32_t code = zqCCInit(&handle);
  if (code == CC_OK) {
    selectMatrix(handle, matrix);
    code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params);
    hash.add(code);
    if (code == CC_OK) {
      code = zqCCProcess(handle, &params);
    }
    (void)zqCCUninit(handle);
  }
  hash.add(code);
  hash.add(params.inBuf[1] == secondPlane ? 0U : 1U);
  output.addTo(hash);
  return code;
}

/// All sizes with BT.601, the first two with the other matrices too. True when at least one frame was converted.
template <std::size_t count>
bool convertAll(const Mode &mode, const Geometry (&geometries)[count], Hash &hash) {
  bool accepted = false;
  for (std::size_t i = 0; i < count; ++i) {
    for (int matrix = 0; matrix < (i < 2 ? kMatrices : 1); ++matrix) {
      accepted |= convert(mode, geometries[i], matrix, hash) == CC_OK;
    }
  }
  return accepted;
}

bool isPossible(const Mode &mode) {
  return mode.isResize <= 1 && mode.rotation <= 7 && mode.antiAlias <= 3;
}

/// One field past its range and the others plain: enough to see every refusal once.
bool isNearlyPossible(const Mode &mode) {
  const int changed =
      (mode.isResize != 1 ? 1 : 0) + (mode.rotation != ROTATION_NONE ? 1 : 0) + (mode.antiAlias != 0 ? 1 : 0);
  return changed == 1;
}

std::string nameOf(const Mode &mode) {
  return std::to_string(mode.inType) + ' ' + std::to_string(mode.outType) + ' ' + std::to_string(mode.isResize) + ' ' +
         std::to_string(mode.rotation) + ' ' + std::to_string(mode.antiAlias);
}

void addMode(const Mode &mode, std::vector<Entry> &entries, Hash &refused) {
  Hash hash;
  const bool accepted = mode.isResize == 1 ? convertAll(mode, kResized, hash) : convertAll(mode, kSameSize, hash);
  if (accepted) {
    entries.push_back({nameOf(mode), hash.value()});
  } else {
    refused.add(static_cast<uint32_t>(hash.value()));
    refused.add(static_cast<uint32_t>(hash.value() >> 32));
  }
}

} // namespace

std::vector<Entry> handleEntries() {
  std::vector<Entry> entries;
  for (const int inType : kInTypes) {
    Hash refused;
    for (const int outType : kOutTypes) {
      for (uint32_t isResize = 0; isResize <= 2; ++isResize) {
        for (uint32_t rotation = 0; rotation <= 8; ++rotation) {
          for (uint32_t antiAlias = 0; antiAlias <= 4; ++antiAlias) {
            const Mode mode{inType, outType, isResize, rotation, antiAlias};
            if (isPossible(mode) || isNearlyPossible(mode)) {
              addMode(mode, entries, refused);
            }
          }
        }
      }
    }
    entries.push_back({"refused " + std::to_string(inType), refused.value()});
  }
  return entries;
}

} // namespace corpus
