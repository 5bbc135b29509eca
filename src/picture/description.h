// A conversion, checked and with its defaults filled in.
#pragma once

#include "picture/formats.h"
#include "zqPicture.h"

namespace zqp {

/// How pixel (i, j) of the picture as the input lies becomes pixel (x, y) of the output: exchanged or not, then
/// mirrored.
struct Turn {
  bool isTransposed;
  bool mirrorsColumns;
  bool mirrorsLines;
};

struct Colours {
  double kr;
  double kb;
  bool isLimited;
  bool isLeft;
};

/// `width` x `height` is the output before the turn.
struct Description {
  const Format *in;
  int32_t inWidth;
  int32_t inHeight;
  ZqpRect crop;
  const Format *out;
  int32_t outWidth;
  int32_t outHeight;
  int32_t width;
  int32_t height;
  Turn turn;
  int32_t filter;
  bool isDithered;
  Colours inColours;
  Colours outColours;
};

/// ZQP_OK or what is wrong.
int32_t describe(const ZqpConversion &conversion, Description &description);

} // namespace zqp
