// Descriptions of any bytes: a code that applies and no converter, or a converter that makes the picture that the model
// makes, in planes of exactly its bytes. And pictures laid out, and parts of them, from any numbers.
#include "fuzz/picture_rules.h"
#include "picture/reference/exact_model.h"
#include "picture/reference/own_picture.h"
#include "support/levels.h"

#include <algorithm>
#include <cstring>

namespace {

using fuzz::Script;
using reference::Lie;
using reference::OwnPicture;

constexpr int64_t kMostPixels = 1 << 14;  // that are converted
constexpr int64_t kModelPixels = 1 << 10; // that the model makes in time

Lie readLie(Script &script) {
  Lie lie;
  lie.padding = script.below(3) == 0 ? script.below(80) : 0;
  lie.isBottomUp = script.below(4) == 0;
  return lie;
}

int64_t pixelsOf(const ZqpConversion &c) {
  return int64_t{c.inWidth} * c.inHeight + int64_t{c.outWidth} * c.outHeight;
}

bool convertInBands(const ZqpConverter *converter, const ZqpPicture &in, const ZqpPicture &out, int32_t lines) {
  for (int32_t line = 0; line < out.height; line += lines) {
    if (zqpConvertLines(converter, &in, &out, line, std::min(lines, out.height - line)) != ZQP_OK) {
      return false;
    }
  }
  return true;
}

void tryConverter(const ZqpConversion &c, const ZqpConverter *converter, Script &script) {
  OwnPicture in(c.inFormat, c.inWidth, c.inHeight, readLie(script), 3);
  OwnPicture made(c.outFormat, c.outWidth, c.outHeight, readLie(script), 4);
  OwnPicture expected = made;
  const OwnPicture before = in;
  const int32_t lines = script.below(2) != 0 ? c.outHeight : 1 + script.below(9);
  const ZqpPicture inView = in.view();
  const ZqpPicture outView = made.view();
  if (!convertInBands(converter, inView, outView, lines)) {
    fuzz::failPicture("a good conversion is refused", 0);
  }
  if (pixelsOf(c) <= kModelPixels) {
    convertExactly(c, in, expected);
  } else {
    const support::LevelsForced portable(zqcc::LEVEL_PORTABLE);
    const ZqpPicture expectedView = expected.view();
    (void)zqpConvert(converter, &inView, &expectedView);
  }
  if (made.memory() != expected.memory() || in.memory() != before.memory()) {
    fuzz::failPicture("another picture", 0);
  }
}

void tryDescription(Script &script) {
  const ZqpConversion c = fuzz::readConversion(script);
  uint8_t nothing = 0;
  auto *converter = reinterpret_cast<ZqpConverter *>(&nothing);
  const int32_t error = zqpConverterMake(&c, &converter);
  fuzz::expect(error, fuzz::errorsOf(c), "zqpConverterMake");
  if ((error == ZQP_OK) != (converter != nullptr)) {
    fuzz::failPicture("a code and a converter do not agree", error);
  }
  if (converter != nullptr && pixelsOf(c) <= kMostPixels) {
    tryConverter(c, converter, script);
  }
  zqpConverterFree(converter);
}

/// Where the samples of a plane are, from its lowest address on.
std::size_t extentOf(const ZqpPicture &picture, int plane) {
  const reference::Format &format = reference::formatOf(picture.format);
  const auto stride = picture.planes[plane].stride;
  return static_cast<std::size_t>(stride < 0 ? -stride : stride) *
             static_cast<std::size_t>(planeLinesOf(format, plane, picture.height) - 1) +
         static_cast<std::size_t>(lineBytesOf(format, plane, picture.width));
}

/// Every plane of a picture lies in the memory.
void expectWithin(const ZqpPicture &picture, const uint8_t *memory, std::size_t bytes) {
  for (int p = 0; p < planesOf(reference::formatOf(picture.format)); ++p) {
    const auto *data = static_cast<const uint8_t *>(picture.planes[p].data);
    const auto start = static_cast<std::size_t>(data - memory);
    if (data < memory || start > bytes || extentOf(picture, p) > bytes - start ||
        picture.planes[p].bytes > bytes - start) {
      fuzz::failPicture("a plane outside of the memory", p);
    }
  }
}

/// A picture laid out in memory that may be too small, and a rectangle of it. No memory is touched.
void tryViews(Script &script) {
  static uint8_t memory[1];
  const int32_t format = script.below(30) - 2;
  const int32_t width = script.size();
  const int32_t height = script.size();
  const uint32_t alignment = script.below(4) == 0 ? script.word() : 1U << script.below(14);
  std::size_t needed = 0;
  const int32_t error = zqpPictureBytes(format, width, height, alignment, &needed);
  ZqpPicture picture{};
  picture.recordSize = sizeof picture;
  const std::size_t bytes = needed - std::min<std::size_t>(needed, static_cast<std::size_t>(script.below(3)));
  const ZqpPicture before = picture;
  const int32_t laidOut = zqpPictureLayOut(&picture, format, width, height, alignment, memory, bytes);
  if (laidOut != (error == ZQP_OK && bytes < needed ? ZQP_ERR_PLANE : error)) {
    fuzz::failPicture("zqpPictureLayOut", laidOut);
  }
  if (laidOut != ZQP_OK) {
    if (std::memcmp(&picture, &before, sizeof picture) != 0) {
      fuzz::failPicture("a refused layout is written", laidOut);
    }
    return;
  }
  expectWithin(picture, memory, bytes);
  if (script.below(2) != 0) {
    for (ZqpPlane &plane : picture.planes) {
      plane.stride = -plane.stride;
    }
  }
  ZqpPicture part = before;
  const ZqpRect rect = {script.size(), script.size(), script.size(), script.size()};
  const int32_t cut = zqpPicturePart(&picture, rect.x, rect.y, rect.width, rect.height, &part);
  if (cut == ZQP_OK) {
    if (part.width != rect.width || part.height != rect.height || part.format != format) {
      fuzz::failPicture("a part of another shape", cut);
    }
    expectWithin(part, memory, bytes);
  } else if (cut != ZQP_ERR_CROP && cut != ZQP_ERR_SIZE) {
    fuzz::failPicture("zqpPicturePart", cut);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  Script script(bytes, count);
  const support::LevelsForced level(static_cast<zqcc::Level>(script.below(zqcc::LEVEL_COUNT)));
  if (script.below(4) == 0) {
    tryViews(script);
  } else {
    tryDescription(script);
  }
  return 0;
}
