// What the formats of pictures hold, and where in memory it lies.
#pragma once

#include "zqPicture.h"

#include <cstdint>
#include <vector>

namespace reference {

enum class Kind { Yuv, Grey, Rgb };

/// Components by number: Y, U, V; R, G, B, A.
inline constexpr int kAlpha = 3;

/// Where the samples of a component lie in a line of a plane: groups of `groupBytes` hold `perGroup` of them each.
struct Place {
  int plane;
  int groupBytes;
  int perGroup;
  int at[2];
};

/// Whether components are bytes, or bits of 16-bit words.
enum class Store { Bytes, Words, WordsSwapped };

struct Format {
  int32_t number;
  const char *name;
  Kind kind;
  Store store;
  int components;
  int shiftX; ///< A sample of chroma for 2^shiftX columns
  int shiftY; ///< and 2^shiftY lines.
  bool isInputOnly;
  Place places[4];
};

/// In the order of their numbers, which begin with 1.
const std::vector<Format> &allFormats();
const Format &formatOf(int32_t number);

bool isChroma(const Format &format, int component);
int shiftXOf(const Format &format, int component);
int shiftYOf(const Format &format, int component);
int columnsOf(const Format &format, int component, int width);
int linesOf(const Format &format, int component, int height);
/// The largest value of a component: 255, 63 or 31.
int mostOf(const Format &format, int component);

int planesOf(const Format &format);
/// Bytes of a line that pixels take, and lines, of a plane.
int lineBytesOf(const Format &format, int plane, int width);
int planeLinesOf(const Format &format, int plane, int height);

} // namespace reference
