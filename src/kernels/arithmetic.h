// From samples to pixels. Every arithmetic has the same two steps: terms(u, v) turns a chroma pair (0..255 each) into
// what its pixels share, pixel<line, column>(terms, y) makes one pixel. line and column are the parities of the
// source pixel within its 2 x 2 cell; only those with kDithers look at them.
#pragma once

#include "kernels/placement.h"
#include "kernels/writers.h"
#include "tables/clip_tables.h"
#include "tables/color_matrix.h"

#include <cstdint>

namespace zqcc {

/// Nested so that both shifts come with the operation that uses them on ARM.
constexpr uint32_t packRgb565(uint32_t red5, uint32_t green6, uint32_t blue5) {
  return (red5 << 6 | green6) << 5 | blue5;
}

/// What the four pixels of a chroma sample add to their luma.
struct ColorTerms {
  int32_t red;
  int32_t green;
  int32_t blue;
};

// --- Fixed limited-range BT.601, 20 fractional bits (ITU-R BT.601: 1.164, 1.596, 0.813, 0.392, 2.017) -------------
//   R = 1.164 (Y - 16) + 1.596 (V - 128)
//   G = 1.164 (Y - 16) - 0.813 (V - 128) - 0.392 (U - 128)
//   B = 1.164 (Y - 16) + 2.017 (U - 128)

/// The terms by sample: on ARM four loads from one base cost half as much as the products and their constants.
struct StudioTerms {
  int32_t red[256];
  int32_t greenV[256];
  int32_t greenU[256];
  int32_t blue[256];
};
extern const StudioTerms STUDIO_TERMS;

struct Studio {
  static constexpr bool kDithers = false;
  static constexpr int32_t kY = 1220542;
  static constexpr int32_t kCrR = 1673527;
  static constexpr int32_t kCrG = 852492;
  static constexpr int32_t kCbG = 411041;
  static constexpr int32_t kCbB = 2114977;

  Studio() = default;
  explicit Studio(const ColorMatrix & /*not used: these coefficients are built in*/) {}

  /// The offsets of luma (16) and chroma (128) are part of the terms, so that a pixel costs one product.
  static ColorTerms terms(int32_t u, int32_t v) {
    return {STUDIO_TERMS.red[v], STUDIO_TERMS.greenV[v] + STUDIO_TERMS.greenU[u], STUDIO_TERMS.blue[u]};
  }
};

/// Full range of 5 and 6 bits: one look-up reduces to 6 bits and saturates, red and blue drop one more bit.
struct StudioSixBit : Studio {
  using Studio::Studio;
  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    const int32_t luma = y * kY;
    return packRgb565(half[(luma + t.red) >> 22], six[(luma + t.green) >> 22], half[(luma + t.blue) >> 22]);
  }

private:
  ClipTable<-96, 159> six = clipSix();
  ClipTable<-96, 159> half = clipSixHalved();
};

/// Blocks cut by the right or bottom edge saturate to video range before they lose bits: black is (2, 4, 2) there.
struct StudioVideoRange : Studio {
  using Studio::Studio;
  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    const int32_t luma = y * kY;
    return packRgb565(eight[(luma + t.red) >> 20] >> 3, eight[(luma + t.green) >> 20] >> 2,
                      eight[(luma + t.blue) >> 20] >> 3);
  }

private:
  ClipTable<-384, 639> eight = clipEight();
};

/// The strips of a turned picture reduce red and blue through the 5-bit table, which is no plain clamp near the top.
struct StudioFiveSix : Studio {
  using Studio::Studio;
  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    const int32_t luma = y * kY;
    return packRgb565(five[(luma + t.red) >> 23], six[(luma + t.green) >> 22], five[(luma + t.blue) >> 23]);
  }

private:
  ClipTable<-48, 79> five = clipFive();
  ClipTable<-96, 159> six = clipSix();
};

/// 24-bit pixels of the macroblock walk: the same equations with 12 fractional bits, clamped to 0..255.
struct StudioQ12 {
  static constexpr bool kDithers = false;
  explicit StudioQ12(const ColorMatrix & /*built in*/) {}

  static ColorTerms terms(int32_t u, int32_t v) {
    u -= 128;
    v -= 128;
    constexpr int32_t kOffset = -16 * 4767;
    return {6537 * v + kOffset, kOffset - (3330 * v + 1605 * u), 8261 * u + kOffset};
  }
  template <int line, int column>
  static Bgr pixel(const ColorTerms &t, int32_t y) {
    const int32_t luma = y * 4767;
    return {clamp(luma + t.blue), clamp(luma + t.green), clamp(luma + t.red)};
  }

private:
  static uint8_t clamp(int32_t sum) { return static_cast<uint8_t>(clampTo(sum >> 12, 0, 255)); }
};

// --- The matrix in force, full range ------------------------------------------------------------------------------
//   R = Y + crToR (V - 128),  G = Y - cbToG (U - 128) - crToG (V - 128),  B = Y + cbToB (U - 128)

struct Matrix {
  explicit Matrix(const ColorMatrix &m) : matrix(m) {}

  /// Sums wrap as 32-bit two's complement. Past +-320 a term alone saturates every luma (0..255) with every fixed
  /// dither offset, so limiting it here keeps the pixels' table indices inside the tables whatever the matrix.
  [[nodiscard]] ColorTerms terms(int32_t u, int32_t v) const {
    const ColorTerms t = exactTerms(u, v);
    return {clampTo(t.red, -320, 320), clampTo(t.green, -320, 320), clampTo(t.blue, -320, 320)};
  }

protected:
  [[nodiscard]] ColorTerms exactTerms(int32_t u, int32_t v) const {
    const auto cb = static_cast<uint32_t>(u - 128);
    const auto cr = static_cast<uint32_t>(v - 128);
    const auto shifted = [](uint32_t sum) { return static_cast<int32_t>(sum) >> 20; };
    return {shifted(cr * word(matrix.crToR)), -shifted(cb * word(matrix.cbToG) + cr * word(matrix.crToG)),
            shifted(cb * word(matrix.cbToB))};
  }

private:
  static constexpr uint32_t word(int32_t coefficient) { return static_cast<uint32_t>(coefficient); }
  const ColorMatrix matrix;
};

/// 16-bit pixels without dither.
struct MatrixPlain : Matrix {
  static constexpr bool kDithers = false;
  using Matrix::Matrix;
  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    return packRgb565(five[(y + t.red) >> 3], six[(y + t.green) >> 2], five[(y + t.blue) >> 3]);
  }

private:
  ClipTable<-48, 79> five = clipFive();
  ClipTable<-96, 159> six = clipSix();
};

/// 24-bit pixels, every component held in video range.
struct MatrixRgb24 : Matrix {
  static constexpr bool kDithers = false;
  using Matrix::Matrix;
  template <int line, int column>
  [[nodiscard]] Bgr pixel(const ColorTerms &t, int32_t y) const {
    return {component(y + t.blue), component(y + t.green), component(y + t.red)};
  }

private:
  [[nodiscard]] uint8_t component(int32_t value) const { return static_cast<uint8_t>(eight[value]); }
  ClipTable<-384, 639> eight = clipEight();
};

/// Offsets of the 2 x 2 dither as constants: [line parity][pixel parity].
inline constexpr int32_t kDitherRed[2][2] = {{1, -3}, {2, -1}};
inline constexpr int32_t kDitherGreen[2][2] = {{0, -3}, {-2, -1}};
inline constexpr int32_t kDitherBlue[2][2] = {{2, -1}, {1, -3}};

/// Where an offset stands in the tables above.
struct DitherPlace {
  int line;
  int column;
};

/// The place of the offset for the source pixel of these parities: quarter turns lay the cell on its side.
template <Turn turn>
constexpr DitherPlace ditherPlace(int line, int column) {
  const int neighbour = isQuarterTurn(turn) ? line : column;
  return {isQuarterTurn(turn) ? column : line, pairsBackwards(turn) ? 1 - neighbour : neighbour};
}

/// 16-bit pixels with the fixed dither. `turn` says which way the 2 x 2 cell lies: the offsets follow the source pixel
/// for Upright, and the place in the output word for the others.
template <Turn turn>
struct MatrixDither : Matrix {
  static constexpr bool kDithers = true;
  using Matrix::Matrix;
  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    constexpr int l = ditherPlace<turn>(line, column).line;
    constexpr int c = ditherPlace<turn>(line, column).column;
    return packRgb565(five[(y + t.red + kDitherRed[l][c]) >> 3], six[(y + t.green + kDitherGreen[l][c]) >> 2],
                      five[(y + t.blue + kDitherBlue[l][c]) >> 3]);
  }

private:
  ClipTable<-48, 79> five = clipFive();
  ClipTable<-96, 159> six = clipSix();
};

/// Edge blocks of the other chroma layouts read the dither words as they stand, which a custom matrix has replaced if
/// there was one; red and blue rows are exchanged against the constants above. Words and terms can be anything, so
/// sums wrap and the look-ups are the guarded ones.
struct MatrixDitherWords : Matrix {
  static constexpr bool kDithers = true;
  explicit MatrixDitherWords(const ColorMatrix &m) : Matrix(m), words(currentDither()) {}

  [[nodiscard]] ColorTerms terms(int32_t u, int32_t v) const { return exactTerms(u, v); }

  template <int line, int column>
  [[nodiscard]] uint32_t pixel(const ColorTerms &t, int32_t y) const {
    return packRgb565(clipFive().at(sum(y, t.red, words.redBlue[line][column]) >> 3),
                      clipSix().at(sum(y, t.green, words.green[line][column]) >> 2),
                      clipFive().at(sum(y, t.blue, words.redBlue[1 - line][column]) >> 3));
  }

private:
  static int32_t sum(int32_t y, int32_t term, int32_t offset) {
    return static_cast<int32_t>(static_cast<uint32_t>(y) + static_cast<uint32_t>(term) + static_cast<uint32_t>(offset));
  }
  const DitherWords words;
};

// --- RGB in ---------------------------------------------------------------------------------------------------------

/// Red comes where luma does, green and blue where chroma does; each loses its low bits.
struct PackRgb {
  static constexpr bool kDithers = false;
  struct Terms {
    uint32_t green;
    uint32_t blue;
  };
  PackRgb() = default;
  explicit PackRgb(const ColorMatrix & /*no colour arithmetic*/) {}
  static Terms terms(int32_t green, int32_t blue) {
    return {static_cast<uint32_t>(green), static_cast<uint32_t>(blue)};
  }
  template <int line, int column>
  static uint32_t pixel(const Terms &t, int32_t red) {
    return packRgb565(static_cast<uint32_t>(red) >> 3, t.green >> 2, t.blue >> 3);
  }
};

} // namespace zqcc
