// Semi-planar 4:2:0: a luma plane and a plane of two-byte chroma pairs, both with the same stride; nearest samples
// only.
//
// A chroma line has a pair for every two columns and one for a lone last column: (w + 1) / 2 pairs. Only the stride can
// take something from them. Where it equals an odd width there is no room for the second byte of the lone column's
// pair: the line ends with the first. Each side goes by its own width and stride, and a byte that has no room is
// neither read nor written:
// - a copy moves the bytes that both lines have, which are of equal width then;
// - resized, a pair number past the last takes the last, first bytes and second bytes each by themselves: where the
//   input's last pair has no second byte, that of the pair before stands in for it; where the output's has none, the
//   first is written alone;
// - turned, the output has whole pairs only, w / 2 lines of h / 2 pairs. The input's lines are what they always are.
// There are h / 2 chroma lines: a lone last line has no chroma of its own.
#include "reference/same_format_detail.h"

#include <array>
#include <vector>

namespace reference::detail {

namespace {

/// A chroma line of so many columns: how many of its pairs have a first byte and how many a second.
struct PairLine {
  std::array<int, 2> count;

  PairLine(int columns, int stride) : count{columns / 2 + columns % 2, columns / 2 + columns % 2} {
    const bool lone = columns % 2 != 0;
    if (lone && stride <= columns) {
      --count[1];
    }
  }
  [[nodiscard]] int pairs() const { return count[0]; }
  [[nodiscard]] bool has(int pair, int byte) const { return pair < count.at(slot(byte)); }
  /// Offset of a pair's first or second byte; a pair past the last takes the last that has such a byte.
  [[nodiscard]] int offset(int pair, int byte) const { return 2 * std::min(pair, count.at(slot(byte)) - 1) + byte; }
};

struct ChromaPlane {
  const uint8_t *bytes;
  int stride;
  int lines;
  PairLine line;

  [[nodiscard]] uint8_t at(int pair, int byte, int y) const {
    return bytes[static_cast<std::ptrdiff_t>(std::min(y, lines - 1)) * stride + line.offset(pair, byte)];
  }
};

/// Where an upright picture's sample (x, y) of w x h lands.
uint8_t *placeOf(const ConvertParams &p, const Target &target, int x, int y, int w, int h) {
  return quarterTurn(p) ? placeTurned(target, p.rotation, x, y, w, h) : target.sample(x, y);
}

/// The input position of each output column or line, for luma.
struct Positions {
  std::vector<int32_t> columns;
  std::vector<int32_t> lines;
};

/// Without resizing the output fields are the picture's size, and a turn to the right counts `lines` input lines back
/// from the last one.
Positions unscaled(const ConvertParams &p) {
  Positions at;
  for (int x = 0; x < p.outWidth; ++x) {
    at.columns.push_back(x);
  }
  const int skipped = p.rotation == ROTATION_90_RIGHT ? p.inHeight - p.outHeight : 0;
  for (int y = 0; y < p.outHeight; ++y) {
    at.lines.push_back(y + skipped);
  }
  return at;
}

void convertLuma(const ConvertParams &p, const Positions &from) {
  const Target out{p.outBuf[0], p.outStride};
  for (int y = 0; y < p.outHeight; ++y) {
    for (int x = 0; x < p.outWidth; ++x) {
      *placeOf(p, out, x, y, p.outWidth, p.outHeight) =
          p.inBuf[0][static_cast<std::ptrdiff_t>(from.lines[slot(y)]) * p.inStride + from.columns[slot(x)]];
    }
  }
}

/// Copies take the bytes that the lines of both sides have.
void copyPairs(const ConvertParams &p) {
  const PairLine in(p.outWidth, p.inStride);
  const PairLine out(p.outWidth, p.outStride);
  for (int y = 0; y < p.outHeight / 2; ++y) {
    for (int k = 0; k < out.pairs(); ++k) {
      for (int byte = 0; byte < 2; ++byte) {
        if (in.has(k, byte) && out.has(k, byte)) {
          p.outBuf[1][static_cast<std::ptrdiff_t>(y) * p.outStride + 2 * k + byte] =
              p.inBuf[1][static_cast<std::ptrdiff_t>(y) * p.inStride + 2 * k + byte];
        }
      }
    }
  }
}

/// Upright, an output pair follows the even luma column above it, and a chroma line the even luma line.
void resizePairs(const ConvertParams &p, const ChromaPlane &in, const Positions &luma) {
  const PairLine out(p.outWidth, p.outStride);
  for (int y = 0; y < p.outHeight / 2; ++y) {
    for (int k = 0; k < out.pairs(); ++k) {
      for (int byte = 0; byte < 2; ++byte) {
        if (out.has(k, byte)) {
          p.outBuf[1][static_cast<std::ptrdiff_t>(y) * p.outStride + 2 * k + byte] =
              in.at(luma.columns[slot(2 * k)] >> 1, byte, luma.lines[slot(2 * y)] >> 1);
        }
      }
    }
  }
}

/// `pairOf(k)` and `lineOf(y)` give the input's pair and chroma line for pair k of line y before the turn.
template <typename PairOf, typename LineOf>
void turnPairs(const ConvertParams &p, const ChromaPlane &in, const PairOf &pairOf, const LineOf &lineOf) {
  const Target out{p.outBuf[1], p.outStride, 2};
  for (int y = 0; y < p.outHeight / 2; ++y) {
    for (int k = 0; k < p.outWidth / 2; ++k) {
      for (int byte = 0; byte < 2; ++byte) {
        placeOf(p, out, k, y, p.outWidth / 2, p.outHeight / 2)[byte] = in.at(pairOf(k), byte, lineOf(y));
      }
    }
  }
}

void copyOrTurn(const ConvertParams &p) {
  convertLuma(p, unscaled(p));
  if (!quarterTurn(p)) {
    copyPairs(p);
    return;
  }
  const ChromaPlane in{p.inBuf[1], p.inStride, std::max(p.inHeight, p.outHeight), PairLine(p.outWidth, p.inStride)};
  const int skipped = p.rotation == ROTATION_90_RIGHT ? p.inHeight / 2 - p.outHeight / 2 : 0;
  turnPairs(
      p, in, [](int k) { return k; }, [skipped](int y) { return y + skipped; });
}

void resize(const ConvertParams &p) {
  const Positions luma{nearestPositions(p.inWidth, p.outWidth), nearestPositions(p.inHeight, p.outHeight)};
  convertLuma(p, luma);
  const ChromaPlane in{p.inBuf[1], p.inStride, p.inHeight / 2, PairLine(p.inWidth, p.inStride)};
  if (quarterTurn(p)) {
    // The first halves of the tables are pair and chroma line numbers as they stand.
    turnPairs(
        p, in, [&](int k) { return luma.columns[slot(k)]; }, [&](int y) { return luma.lines[slot(y)]; });
  } else {
    resizePairs(p, in, luma);
  }
}

} // namespace

void convertSemiPlanar(const ConvertParams &p) {
  p.isResize == 0 ? copyOrTurn(p) : resize(p);
}

} // namespace reference::detail
