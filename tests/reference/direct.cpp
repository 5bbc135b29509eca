#include "reference/direct.h"

#include "reference/colour_arith.h"
#include "reference/direct_source.h"
#include "support/picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace reference {
namespace {

using namespace direct;
using Offset = std::ptrdiff_t;

/// Size of the source picture as the converters that do not scale take it, and the output they write.
struct Frame {
  explicit Frame(const ConvertParams &p)
      : W(p.outWidth), H(p.outHeight), S(p.outStride), out(p.outBuf[0]), rotation(static_cast<int>(p.rotation)) {}
  Offset W, H, S;
  uint8_t *out;
  int rotation;

  void word(Offset at, uint16_t pixel) const { storeWord(out + at, pixel); }
  void bytes(Offset at, Components c) const {
    out[at] = static_cast<uint8_t>(c.blue);
    out[at + 1] = static_cast<uint8_t>(c.green);
    out[at + 2] = static_cast<uint8_t>(c.red);
  }
  /// Byte offsets of a column and line of the output, for two and three bytes a pixel.
  [[nodiscard]] Offset at16(Offset column, Offset line) const { return line * S + 2 * column; }
  [[nodiscard]] Offset at24(Offset column, Offset line) const { return line * S + 3 * column; }
  /// Whether (x, y) lies in a whole 16x16 block.
  [[nodiscard]] bool inFullBlock(int x, int y) const { return x / 16 < W / 16 && y / 16 < H / 16; }
};

template <typename F>
void forEachPixel(const Frame &f, F &&body) {
  for (int y = 0; y < f.H; ++y) {
    for (int x = 0; x < f.W; ++x) {
      body(x, y);
    }
  }
}

bool isTurn(int rotation) {
  return rotation >= 3 && rotation <= 5;
}
/// Types with a same-size converter of their own, which dithers and follows the matrix.
bool isOtherYuv(int type) {
  return type == 0 || type == 2 || type == 4 || type == 37;
}

// ---- to RGB565 -----------------------------------------------------------------------------------------------------

/// Byte offset of the pixel that source (x, y) becomes when whole blocks are turned. The half turn counts back from the
/// end of the last line's stride, so wide strides shift its picture to the right.
Offset turnedBlockAddress(const Frame &f, Offset x, Offset y) {
  switch (f.rotation) {
  case 3:
    return (f.W - 1 - x) * f.S + 2 * y;
  case 4:
    return x * f.S + 2 * (f.H - 1 - y);
  case 5:
    return (f.H - y) * f.S - 2 - 2 * x;
  default:
    return y * f.S + 2 * x;
  }
}

/// The same for the strips beside (right) and below the blocks: the right strip of the clockwise turn counts back from
/// the end of a stride, that of the half turn does not.
Offset turnedStripAddress(const Frame &f, Offset x, Offset y) {
  const Offset coveredW = f.W >= 16 && f.H >= 16 ? f.W / 16 * 16 : 0;
  const Offset coveredH = f.W >= 16 && f.H >= 16 ? f.H / 16 * 16 : 0;
  const bool right = y < coveredH;
  const Offset sx = right ? x - coveredW : x;
  const Offset sy = right ? y : y - coveredH;
  const Offset stripW = right ? f.W - coveredW : f.W;
  const Offset stripH = right ? coveredH : f.H - coveredH;
  if (f.rotation == 3) {
    const Offset origin = right ? 0 : 2 * coveredH;
    return origin + (stripW - 1 - sx) * f.S + 2 * sy;
  }
  if (f.rotation == 4) {
    const Offset origin = right ? (coveredW + 1) * f.S - 2 * coveredH : 0;
    return origin + 2 * stripH - 2 + sx * f.S - 2 * sy;
  }
  const Offset origin = right ? (f.H - 1) * f.S + 2 * (f.W - coveredW) : (f.H - coveredH) * f.S;
  return origin - 2 - 2 * sx - sy * f.S;
}

void turned(const Frame &f, const ConvertParams &p, const PlanarSource &source) {
  const bool rgb = p.inType == COLOR_RGB888_PLANAR;
  forEachPixel(f, [&](int x, int y) {
    const bool full = f.inFullBlock(x, y);
    const Offset at = full ? turnedBlockAddress(f, x, y) : turnedStripAddress(f, x, y);
    if (rgb) {
      f.word(at, source.rgb565(x, y));
      return;
    }
    // Blocks share the chroma of a line pair, strips take each line's own where the plane has one.
    const Chroma c = source.chroma(x, y, full ? ChromaLines::FirstOfPair : ChromaLines::Own);
    const int luma = source.luma(x, y);
    f.word(at, full ? studioFull(luma, c) : studioStrip(luma, c));
  });
}

void flipped(const Frame &f, const ConvertParams &p, const PlanarSource &source, const Colour &colour) {
  const bool rgb = p.inType == COLOR_RGB888_PLANAR;
  forEachPixel(f, [&](int x, int y) {
    const Offset at = f.at16(x, f.H - 1 - y);
    f.word(at, rgb ? source.rgb565(x, y)
                   : matrix565(source.luma(x, y), source.chroma(x, y, ChromaLines::Halved), colour, fixedDither(y, x)));
  });
}

void upright(const Frame &f, const ConvertParams &p, const PlanarSource &source, const Colour &colour) {
  forEachPixel(f, [&](int x, int y) {
    const Offset at = f.at16(x, y);
    const bool full = f.inFullBlock(x, y);
    if (p.inType == COLOR_RGB888_PLANAR) {
      f.word(at, source.rgb565(x, y));
      return;
    }
    const int luma = source.luma(x, y);
    const Chroma c = source.chroma(x, y, ChromaLines::FirstOfPair);
    if (isOtherYuv(p.inType)) {
      f.word(at, matrix565(luma, c, colour, full ? fixedDither(y, x) : storedDither(colour, y, x)));
    } else {
      f.word(at, full ? studioFull(luma, c) : studioEdge(luma, c));
    }
  });
}

/// Position of a packed pixel's offsets: by its place in the output word and by which output line the kernel writes
/// first from a source line pair.
Dither packedDither(int rotation, int x, int y) {
  switch (rotation) {
  case 3:
    return fixedDither(x, y);
  case 4:
    return fixedDither(x, y + 1);
  case 5:
    return fixedDither(y, x + 1);
  default:
    return fixedDither(y, x);
  }
}

void packedToRgb565(const Frame &f, const ConvertParams &p, const Colour &colour) {
  const PackedSource source(p);
  forEachPixel(f, [&](int x, int y) {
    const Chroma c = source.chroma(x, y / 2 * 2);
    f.word(turnedBlockAddress(f, x, y), matrix565(source.luma(x, y), c, colour, packedDither(f.rotation, x, y)));
  });
}

void rgb24ToRgb565(const Frame &f, const ConvertParams &p) {
  forEachPixel(f, [&](int x, int y) {
    const uint8_t *pixel = p.inBuf[0] + static_cast<Offset>(y) * p.inStride + 3 * static_cast<Offset>(x);
    const Offset at = f.rotation == 3   ? f.at16(y, f.W - 1 - x)
                      : f.rotation == 4 ? f.at16(f.H - 1 - y, x)
                                        : f.at16(x, y);
    f.word(at, pack888(pixel[2], pixel[1], pixel[0]));
  });
}

// ---- to RGB24 ------------------------------------------------------------------------------------------------------

void planarToRgb24(const Frame &f, const PlanarSource &source, const Colour &colour) {
  forEachPixel(f, [&](int x, int y) {
    const Chroma c = source.chromaAsHalfWidth(x, y);
    const int luma = source.luma(x, y);
    if (f.rotation == 6) {
      f.bytes(f.at24(x, f.H - 1 - y), matrix24(luma, c, colour));
    } else {
      f.bytes(f.at24(x, y), studioBytes(luma, c));
    }
  });
}

void packedToRgb24(const Frame &f, const ConvertParams &p, const Colour &colour) {
  const PackedSource source(p);
  forEachPixel(f, [&](int x, int y) {
    Offset at = f.at24(x, y);
    if (f.rotation == 3) {
      at = f.at24(y, f.W - 1 - x);
    } else if (f.rotation == 4) {
      at = f.at24(f.H - 1 - y, x);
    } else if (f.rotation == 5) {
      at = f.at24(f.W - 1 - x, f.H - 1 - y);
    }
    f.bytes(at, matrix24(source.luma(x, y), source.chroma(x, y), colour));
  });
}

// ---- to planar 4:2:0 -----------------------------------------------------------------------------------------------

void planarToYuv420(const ConvertParams &p) {
  const PlanarSource source(p);
  const Frame f(p);
  forEachPixel(f, [&](int x, int y) { f.out[y * f.S + x] = static_cast<uint8_t>(source.luma(x, y)); });
  const int samples = p.outWidth / 2;
  for (int plane = 1; plane <= 2; ++plane) {
    for (int k = 0; k < f.H / 2; ++k) {
      for (int i = 0; i < samples; ++i) {
        p.outBuf[plane][k * (f.S >> 1) + i] = static_cast<uint8_t>(source.halfPitch(plane, i, 2 * k));
      }
    }
  }
}

void packedToYuv420(const ConvertParams &p) {
  const PackedSource source(p);
  const Frame f(p);
  forEachPixel(f, [&](int x, int y) { f.out[y * f.S + x] = static_cast<uint8_t>(source.luma(x, y)); });
  for (int k = 0; k < f.H / 2; ++k) {
    for (int i = 0; i < f.W / 2; ++i) {
      const Chroma c = source.chroma(2 * i, 2 * k);
      p.outBuf[1][k * (f.S >> 1) + i] = static_cast<uint8_t>(c.u);
      p.outBuf[2][k * (f.S >> 1) + i] = static_cast<uint8_t>(c.v);
    }
  }
}

/// Types 0, 2, 4 and 37 asked to scale and to turn are turned first, plane by plane, and go on as the type whose layout
/// the turned planes have; the output routine then copies, unscaled.
void turnThenCopy(const ConvertParams &p) {
  const bool left = p.rotation == ROTATION_90_LEFT;
  const auto turnedChroma = [&](int i) {
    return turnedSamples(chromaPlane(p.inType, p.inBuf[i], p.inWidth, p.inHeight, p.inStride), left);
  };
  const std::vector<uint8_t> y = turnedSamples({p.inBuf[0], p.inStride, p.inWidth, p.inHeight}, left);
  const std::vector<uint8_t> u = turnedChroma(1);
  const std::vector<uint8_t> v = turnedChroma(2);
  ConvertParams t = p;
  t.inType = turnedLayout(p.inType);
  t.inWidth = p.inHeight;
  t.inHeight = p.inWidth;
  t.inStride = p.inHeight;
  t.outWidth = p.outHeight;
  t.outHeight = p.outWidth;
  t.inBuf[0] = y.data();
  t.inBuf[1] = u.data();
  t.inBuf[2] = v.data();
  planarToYuv420(t);
}

void convertPlanar(const ConvertParams &p, const Colour &colour) {
  if (p.outType == COLOR_YUV420_PLANAR || p.outType == COLOR_YVU420_PLANAR) {
    if (p.isResize == 1 && isOtherYuv(p.inType) && (p.rotation == 3 || p.rotation == 4)) {
      turnThenCopy(p);
    } else {
      planarToYuv420(p);
    }
    return;
  }
  const PlanarSource source(p);
  const Frame f(p);
  if (p.outType == COLOR_RGB24) {
    planarToRgb24(f, source, colour);
  } else if (p.outType != COLOR_RGB565 && p.outType != COLOR_RGB16_ALT) {
    return;
  } else if (f.rotation == ROTATION_FLIP_V) {
    flipped(f, p, source, colour);
  } else if (isTurn(f.rotation)) {
    turned(f, p, source);
  } else {
    upright(f, p, source, colour);
  }
}

} // namespace

void convertDirect(const ConvertParams &p, const Colour &colour) {
  if (p.inType == COLOR_RGB24) {
    if (p.outType == COLOR_RGB565) {
      rgb24ToRgb565(Frame(p), p);
    }
  } else if (!support::isPacked422(p.inType)) {
    convertPlanar(p, colour);
  } else if (p.outType == COLOR_RGB565 || p.outType == COLOR_RGB16_ALT) {
    packedToRgb565(Frame(p), p, colour);
  } else if (p.outType == COLOR_RGB24) {
    packedToRgb24(Frame(p), p, colour);
  } else if (p.outType == COLOR_YUV420_PLANAR) {
    packedToYuv420(p);
  }
}

} // namespace reference
