// Semi-planar pictures of odd width: the chroma pair of the lone last column, and what the strides leave of it.
#include "reference/same_format.h"
#include "reference/same_format_check.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using reference::SameFormatCase;
using reference::sameFormatParams;
using support::Canvas;

/// First and second byte of chroma pair k of line y. Neighbours differ, and so do first and second bytes.
uint8_t firstOf(int k, int y) {
  return static_cast<uint8_t>((k + 23 * y) % 128);
}
uint8_t secondOf(int k, int y) {
  return static_cast<uint8_t>(128 + (k + 23 * y) % 128);
}
uint8_t lumaOf(int x, int y) {
  return static_cast<uint8_t>(7 * x + 41 * y + 3);
}

/// Input planes of exactly the bytes from the first to the last sample. What a line leaves of its stride is 0xEE.
class Input {
public:
  Input(int width, int height, int stride)
      : luma_(bytes(width, height, stride)), pairs_(bytes(pairBytes(width, stride), height / 2, stride)) {
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        luma_.data()[y * stride + x] = lumaOf(x, y);
      }
    }
    for (int y = 0; y < height / 2; ++y) {
      for (int i = 0; i < pairBytes(width, stride); ++i) {
        pairs_.data()[y * stride + i] = i % 2 == 0 ? firstOf(i / 2, y) : secondOf(i / 2, y);
      }
    }
  }
  void describe(ConvertParams &p) const {
    p.inBuf[0] = luma_.data();
    p.inBuf[1] = pairs_.data();
  }
  /// Bytes of a chroma line: 2 * ceil(width / 2) where they fit into the stride.
  static int pairBytes(int width, int stride) { return std::min((width + 1) / 2 * 2, stride); }

private:
  static support::Block bytes(int line, int lines, int stride) {
    support::Block block(lines == 0 ? 0 : static_cast<std::size_t>((lines - 1) * stride + line));
    support::fill(block.data(), block.size(), support::Fill::Flat, 0xEE);
    return block;
  }
  support::Block luma_;
  support::Block pairs_;
};

/// Numbers of the input samples that an output line or column takes, in the output's order before a turn.
struct Sources {
  std::vector<int> columns;
  std::vector<int> lines;
};

/// Input pairs that the bytes of an output pair come from; -1 for a second byte that is not written.
struct PairBytes {
  int first = 0;
  int second = 0;
};

Canvas outputOf(const ConvertParams &p, int lineBytes, int lines) {
  return Canvas({{lineBytes, lines, p.outStride}, {lineBytes, lines / 2, p.outStride}});
}

void put(Canvas &canvas, int plane, int at, int byte) {
  if (byte >= 0) {
    canvas.plane(plane)[at] = static_cast<uint8_t>(byte);
  }
}

/// Converts with the library and with the reference model and compares both with `want`, guards included.
void expectBoth(ConvertParams p, const Input &input, const Canvas &want, const Canvas &fresh) {
  input.describe(p);
  for (const int type : {COLOR_YUV420_PACK, COLOR_YUV420_PACK2}) {
    p.inType = p.outType = type;
    Canvas library = fresh;
    library.describe(p);
    EXPECT_EQ(support::convertOnce(p), CC_OK) << "type " << type;
    EXPECT_EQ(library.difference(want), "")
        << "library, type " << type << ", strides " << p.inStride << " to " << p.outStride;
    Canvas model = fresh;
    model.describe(p);
    reference::convertSameFormat(p);
    EXPECT_EQ(model.difference(want), "")
        << "reference, type " << type << ", strides " << p.inStride << " to " << p.outStride;
  }
}

struct Strides {
  int in, out;
};

/// A copy moves `bytes` bytes of each chroma line.
void expectCopy(int width, int height, Strides strides, int bytes, uint32_t rotation = ROTATION_NONE) {
  ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, width, height, width, height, strides.in, strides.out);
  p.rotation = rotation;
  const Canvas fresh = outputOf(p, width, height);
  Canvas want = fresh;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      put(want, 0, y * strides.out + x, lumaOf(x, y));
    }
  }
  for (int y = 0; y < height / 2; ++y) {
    for (int i = 0; i < bytes; ++i) {
      put(want, 1, y * strides.out + i, i % 2 == 0 ? firstOf(i / 2, y) : secondOf(i / 2, y));
    }
  }
  expectBoth(p, Input(width, height, strides.in), want, fresh);
}

TEST(SemiPlanarOddWidth, CopiesEndWithThePairOfTheLoneColumn) {
  // 39 columns have 20 pairs, 40 bytes; 3 columns two pairs.
  expectCopy(39, 40, {40, 40}, 40);
  expectCopy(39, 40, {47, 41}, 40);
  expectCopy(39, 40, {41, 64}, 40);
  expectCopy(3, 12, {4, 4}, 4);
  expectCopy(3, 12, {16, 7}, 4);
  expectCopy(3, 3, {5, 4}, 4);
}

TEST(SemiPlanarOddWidth, CopiesEndWithTheShorterStride) {
  // No room for the second byte of the last pair on one side or on both.
  for (const Strides strides : {Strides{39, 39}, {39, 40}, {40, 39}, {39, 50}, {64, 39}}) {
    expectCopy(39, 40, strides, 39);
  }
  for (const Strides strides : {Strides{3, 3}, {3, 4}, {4, 3}, {3, 9}, {9, 3}}) {
    expectCopy(3, 12, strides, 3);
    expectCopy(3, 3, strides, 3);
  }
}

TEST(SemiPlanarOddWidth, OtherRotationsCopyTheSameBytes) {
  for (const uint32_t rotation : {0U, 1U, 5U, 6U, 7U}) {
    expectCopy(5, 6, {6, 8}, 6, rotation);
    expectCopy(5, 6, {5, 8}, 5, rotation);
  }
}

TEST(SemiPlanarOddWidth, EvenWidthsTakeNothingFromTheirStride) {
  expectCopy(4, 4, {4, 4}, 4);
  expectCopy(4, 4, {5, 6}, 4);
}

TEST(SemiPlanarOddWidth, ASingleColumnHasOnePair) {
  for (const Strides strides : {Strides{2, 2}, {2, 3}, {9, 2}}) {
    expectCopy(1, 4, strides, 2);
    expectCopy(1, 5, strides, 2);
  }
  for (const Strides strides : {Strides{1, 1}, {1, 2}, {2, 1}, {1, 7}}) {
    expectCopy(1, 4, strides, 1);
  }
}

/// One resized picture: sizes, the luma sources and, for chroma, the bytes of each pair and the input line of each
/// line.
struct Resized {
  int width, height, outWidth, outHeight;
  Sources luma;
  Sources chroma;
};

void expectUpright(const Resized &r, Strides strides, const std::vector<PairBytes> &pairs) {
  ConvertParams p =
      sameFormatParams(COLOR_YUV420_PACK, r.width, r.height, r.outWidth, r.outHeight, strides.in, strides.out);
  p.isResize = 1;
  const Canvas fresh = outputOf(p, r.outWidth, r.outHeight);
  Canvas want = fresh;
  for (std::size_t y = 0; y < r.luma.lines.size(); ++y) {
    for (std::size_t x = 0; x < r.luma.columns.size(); ++x) {
      put(want, 0, static_cast<int>(y) * strides.out + static_cast<int>(x), lumaOf(r.luma.columns[x], r.luma.lines[y]));
    }
  }
  for (std::size_t y = 0; y < r.chroma.lines.size(); ++y) {
    for (std::size_t k = 0; k < pairs.size(); ++k) {
      const int at = static_cast<int>(y) * strides.out + 2 * static_cast<int>(k);
      put(want, 1, at, firstOf(pairs[k].first, r.chroma.lines[y]));
      put(want, 1, at + 1, pairs[k].second < 0 ? -1 : secondOf(pairs[k].second, r.chroma.lines[y]));
    }
  }
  expectBoth(p, Input(r.width, r.height, strides.in), want, fresh);
}

TEST(SemiPlanarOddWidth, ReductionsToOddWidthsEndWithAWholePair) {
  // 8 to 5 columns by steps of 1638 / 1024: 0, 1, 3, 4, 6. Entries 0, 2 and 4, halved, are pairs 0, 1 and 3.
  const Resized r{8, 4, 5, 4, {{0, 1, 3, 4, 6}, {0, 1, 2, 3}}, {{}, {0, 1}}};
  for (const Strides strides : {Strides{8, 6}, {8, 7}, {11, 16}}) {
    expectUpright(r, strides, {{0, 0}, {1, 1}, {3, 3}});
  }
  // The output's line has no room: the last pair's first byte stands alone.
  expectUpright(r, {8, 5}, {{0, 0}, {1, 1}, {3, -1}});
  expectUpright(r, {9, 5}, {{0, 0}, {1, 1}, {3, -1}});
}

TEST(SemiPlanarOddWidth, EnlargementsToOddWidthsEndWithAWholePair) {
  // 4 to 7 columns by steps of 585 / 1024: 0, 0, 1, 1, 2, 2, 3. Entries 0, 2, 4, 6, halved: pairs 0, 0, 1, 1.
  const Resized r{4, 2, 7, 2, {{0, 0, 1, 1, 2, 2, 3}, {0, 1}}, {{}, {0}}};
  expectUpright(r, {4, 8}, {{0, 0}, {0, 0}, {1, 1}, {1, 1}});
  expectUpright(r, {6, 9}, {{0, 0}, {0, 0}, {1, 1}, {1, 1}});
  expectUpright(r, {4, 7}, {{0, 0}, {0, 0}, {1, 1}, {1, -1}});
}

TEST(SemiPlanarOddWidth, TheLastInputPairMayLackItsSecondByte) {
  // 5 to 5 columns: pairs 0, 1, 2. In a line of 5 bytes pair 2 has no second byte: pair 1's stands in.
  const Resized same{5, 4, 5, 4, {{0, 1, 2, 3, 4}, {0, 1, 2, 3}}, {{}, {0, 1}}};
  expectUpright(same, {6, 6}, {{0, 0}, {1, 1}, {2, 2}});
  expectUpright(same, {5, 6}, {{0, 0}, {1, 1}, {2, 1}});
  expectUpright(same, {5, 5}, {{0, 0}, {1, 1}, {2, -1}});
  expectUpright(same, {7, 5}, {{0, 0}, {1, 1}, {2, -1}});
  // 3 to 6 columns by steps of 512 / 1024: 0, 0, 1, 1, 2, 2. Entries 0, 2, 4, halved: pairs 0, 0, 1.
  const Resized wider{3, 2, 6, 2, {{0, 0, 1, 1, 2, 2}, {0, 1}}, {{}, {0}}};
  expectUpright(wider, {3, 6}, {{0, 0}, {0, 0}, {1, 0}});
  expectUpright(wider, {4, 6}, {{0, 0}, {0, 0}, {1, 1}});
}

TEST(SemiPlanarOddWidth, ASingleOutputColumnHasOnePair) {
  const Resized r{4, 4, 1, 4, {{0}, {0, 1, 2, 3}}, {{}, {0, 1}}};
  expectUpright(r, {4, 2}, {{0, 0}});
  expectUpright(r, {4, 1}, {{0, -1}});
}

TEST(SemiPlanarOddWidth, ALoneLastLineHasNoChroma) {
  // 3 to 7 lines by steps of 438 / 1024: 0, 0, 0, 1, 1, 2, 2. Three chroma lines, not four, follow entries 0, 2 and 4,
  // halved: 0, 0, 0. 3 to 6 lines: 0, 0, 1, 1, 2, 2; entry 4, halved, is line 1, where three lines have only line 0.
  const Resized r{3, 3, 3, 7, {{0, 1, 2}, {0, 0, 0, 1, 1, 2, 2}}, {{}, {0, 0, 0}}};
  const Resized past{3, 3, 3, 6, {{0, 1, 2}, {0, 0, 1, 1, 2, 2}}, {{}, {0, 0, 0}}};
  expectUpright(past, {4, 4}, {{0, 0}, {1, 1}});
  expectUpright(r, {4, 4}, {{0, 0}, {1, 1}});
  // 5 to 6 lines by steps of 853 / 1024: 0, 0, 1, 2, 3, 4. Entries 0, 2, 4, halved: lines 0, 0, 1.
  const Resized five{3, 5, 3, 6, {{0, 1, 2}, {0, 0, 1, 2, 3, 4}}, {{}, {0, 0, 1}}};
  expectUpright(five, {4, 4}, {{0, 0}, {1, 1}});
  // 7 to 10 lines by steps of 716 / 1024: 0, 0, 1, 2, 2, 3, 4, 4, 5, 6. Entries 0, 2, ..., 8, halved: 0, 0, 1, 2, 2.
  const Resized seven{3, 7, 3, 10, {{0, 1, 2}, {0, 0, 1, 2, 2, 3, 4, 4, 5, 6}}, {{}, {0, 0, 1, 2, 2}}};
  expectUpright(seven, {4, 4}, {{0, 0}, {1, 1}});
}

/// Turned: `pairs` are those of the chroma's columns before the turn, `lines` its input lines.
void expectTurned(const Resized &r, uint32_t rotation, Strides strides, const std::vector<PairBytes> &pairs) {
  ConvertParams p =
      sameFormatParams(COLOR_YUV420_PACK, r.width, r.height, r.outWidth, r.outHeight, strides.in, strides.out);
  p.isResize = 1;
  p.rotation = rotation;
  const bool left = rotation == ROTATION_90_LEFT;
  const Canvas fresh = outputOf(p, r.outHeight, r.outWidth);
  Canvas want = fresh;
  for (int i = 0; i < r.outWidth; ++i) {
    for (int j = 0; j < r.outHeight; ++j) {
      const int line = left ? r.outWidth - 1 - i : i;
      const int column = left ? j : r.outHeight - 1 - j;
      put(want, 0, line * strides.out + column, lumaOf(r.luma.columns.at(i), r.luma.lines.at(j)));
    }
  }
  const int lines = static_cast<int>(pairs.size());
  const int perLine = static_cast<int>(r.chroma.lines.size());
  for (int i = 0; i < lines; ++i) {
    for (int j = 0; j < perLine; ++j) {
      const int at = (left ? lines - 1 - i : i) * strides.out + 2 * (left ? j : perLine - 1 - j);
      put(want, 1, at, firstOf(pairs.at(i).first, r.chroma.lines.at(j)));
      put(want, 1, at + 1, secondOf(pairs.at(i).second, r.chroma.lines.at(j)));
    }
  }
  expectBoth(p, Input(r.width, r.height, strides.in), want, fresh);
}

TEST(SemiPlanarOddWidth, ResizedTurnsReadThePairOfTheLoneColumn) {
  // 13 to 34 columns by steps of 391 / 1024, 22 to 11 lines by steps of 2. 17 pairs take the first 17 columns' entries
  // as they stand, the last of which is 16 * 391 = 6256, pair 6; five chroma lines take lines 0, 2, 4, 6, 8.
  const Resized r{
      13,
      22,
      34,
      11,
      {{0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 6, 6, 6, 7, 7, 8, 8, 8, 9, 9, 9, 10, 10, 11, 11, 11, 12, 12},
       {0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20}},
      {{}, {0, 2, 4, 6, 8}}};
  std::vector<PairBytes> pairs;
  for (const int k : {0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 6}) {
    pairs.push_back({k, k});
  }
  for (const uint32_t rotation : {ROTATION_90_RIGHT, ROTATION_90_LEFT}) {
    for (const Strides strides : {Strides{14, 11}, {14, 12}, {20, 17}}) {
      expectTurned(r, rotation, strides, pairs);
    }
    // Lines of 13 bytes: pair 6 has no second byte of its own.
    std::vector<PairBytes> cut = pairs;
    cut.back().second = 5;
    for (const Strides strides : {Strides{13, 11}, {13, 12}}) {
      expectTurned(r, rotation, strides, cut);
    }
  }
}

TEST(SemiPlanarOddWidth, TurnedCopiesHoldWholePairsOnly) {
  // 5 x 6 turned is 6 x 5: two chroma lines of three pairs, which the lone column's pair is not among.
  for (const uint32_t rotation : {ROTATION_90_RIGHT, ROTATION_90_LEFT}) {
    const bool left = rotation == ROTATION_90_LEFT;
    for (const Strides strides : {Strides{5, 6}, {6, 6}, {8, 9}}) {
      ConvertParams p = sameFormatParams(COLOR_YUV420_PACK, 5, 6, 5, 6, strides.in, strides.out);
      p.rotation = rotation;
      const Canvas fresh = outputOf(p, 6, 5);
      Canvas want = fresh;
      for (int x = 0; x < 5; ++x) {
        for (int y = 0; y < 6; ++y) {
          put(want, 0, (left ? 4 - x : x) * strides.out + (left ? y : 5 - y), lumaOf(x, y));
        }
      }
      for (int k = 0; k < 2; ++k) {
        for (int y = 0; y < 3; ++y) {
          const int at = (left ? 1 - k : k) * strides.out + 2 * (left ? y : 2 - y);
          put(want, 1, at, firstOf(k, y));
          put(want, 1, at + 1, secondOf(k, y));
        }
      }
      expectBoth(p, Input(5, 6, strides.in), want, fresh);
    }
  }
}

TEST(SemiPlanarOddWidth, EveryStrideAgreesWithTheReference) {
  reference::Tally tally;
  uint32_t seed = 0;
  for (int width = 1; width < 42; width += 2) {
    for (const int height : {2, 3, 12, 40}) {
      for (const uint32_t rotation : {ROTATION_NONE, ROTATION_90_LEFT, ROTATION_90_RIGHT, ROTATION_180}) {
        for (const int inPadding : {0, 1, 2, 9}) {
          for (const int outPadding : {0, 1, 6}) {
            SameFormatCase c;
            c.type = ++seed % 2 == 0 ? COLOR_YUV420_PACK : COLOR_YUV420_PACK2;
            c.width = c.outWidth = width;
            c.height = c.outHeight = height;
            c.rotation = rotation;
            c.inPadding = inPadding;
            c.outPadding = outPadding;
            c.seed = seed;
            c.fill = seed % 3 == 0 ? support::Fill::Ramp : support::Fill::Noise;
            ASSERT_EQ(reference::checkSameFormat(c, tally), "");
            c.isResize = 1;
            c.outWidth = 1 + static_cast<int>(seed * 7 % 43);
            c.outHeight = 2 + static_cast<int>(seed * 5 % 29);
            ASSERT_EQ(reference::checkSameFormat(c, tally), "");
          }
        }
      }
    }
  }
  EXPECT_GT(tally.converted, 7000);
}

} // namespace
