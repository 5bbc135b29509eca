// Views of any planes: a code that applies and nothing written, or the picture that is made of planes of their own, and
// no byte beside it. All planes lie in one block, so that they may overlap, and what they claim may be more than it
// has.
#include "fuzz/picture_rules.h"
#include "picture/reference/own_picture.h"
#include "support/levels.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

using fuzz::Script;
using reference::Format;
using reference::OwnPicture;

constexpr std::size_t kRoomBytes = std::size_t{1} << 16;
constexpr int64_t kMostPixels = 1 << 13;

/// Planes one after the other, each with its own gap, in either direction.
ZqpPicture layOut(Script &script, int32_t format, int32_t width, int32_t height, uint8_t *room, std::size_t &used) {
  ZqpPicture picture{};
  picture.recordSize = sizeof picture;
  picture.format = format;
  picture.width = width;
  picture.height = height;
  const Format &is = reference::formatOf(format);
  for (int p = 0; p < planesOf(is); ++p) {
    const int stride = lineBytesOf(is, p, width) + (script.below(2) != 0 ? script.below(40) : 0);
    const auto bytes = static_cast<std::size_t>(stride * (planeLinesOf(is, p, height) - 1) + lineBytesOf(is, p, width));
    used += static_cast<std::size_t>(script.below(20));
    picture.planes[p] = {room + std::min(used, kRoomBytes), script.below(3) == 0 ? -stride : stride, bytes};
    used += bytes;
  }
  return picture;
}

void spoil(Script &script, ZqpPicture &picture, uint8_t *room) {
  ZqpPlane &plane = picture.planes[script.below(3)];
  switch (script.below(11)) {
  case 0:
    picture.recordSize = script.word();
    break;
  case 1:
    picture.format = script.below(30) - 2;
    break;
  case 2:
    picture.width += script.below(3) - 1;
    break;
  case 3:
    picture.height += script.below(3) - 1;
    break;
  case 4:
    plane.data = nullptr;
    break;
  case 5:
    plane.data = room + script.word() % kRoomBytes;
    break;
  case 6:
    plane.stride += script.below(5) - 2;
    break;
  case 7:
    plane.stride = static_cast<std::ptrdiff_t>(script.word() | static_cast<uint64_t>(script.word()) << 32);
    break;
  case 8:
    plane.bytes -= static_cast<std::size_t>(script.below(3));
    break;
  case 9: // beside or over another plane of the same picture
    if (auto *other = static_cast<uint8_t *>(picture.planes[script.below(3)].data); other != nullptr) {
      plane.data = other + script.below(64);
    }
    break;
  default:
    plane.bytes = static_cast<std::size_t>(script.word() | static_cast<uint64_t>(script.word()) << 32);
    break;
  }
}

/// What a line of a plane begins with, in the room.
uint8_t *lineOf(const ZqpPicture &picture, int plane, int line) {
  const ZqpPlane &is = picture.planes[plane];
  const int lines = planeLinesOf(reference::formatOf(picture.format), plane, picture.height);
  const int inMemory = is.stride < 0 ? lines - 1 - line : line;
  const std::ptrdiff_t pitch = lines > 1 ? (is.stride < 0 ? -is.stride : is.stride) : 0;
  return static_cast<uint8_t *>(is.data) + pitch * inMemory;
}

bool liesInRoom(const ZqpPicture &picture, const uint8_t *room) {
  const Format &format = reference::formatOf(picture.format);
  for (int p = 0; p < planesOf(format); ++p) {
    const auto bytes = static_cast<std::ptrdiff_t>(lineBytesOf(format, p, picture.width));
    const std::ptrdiff_t lines = planeLinesOf(format, p, picture.height);
    const ZqpPlane &plane = picture.planes[p];
    const std::ptrdiff_t pitch = lines > 1 ? (plane.stride < 0 ? -plane.stride : plane.stride) : 0;
    const std::ptrdiff_t start = static_cast<const uint8_t *>(plane.data) - room;
    const auto most = static_cast<std::ptrdiff_t>(kRoomBytes);
    if (start < 0 || start > most || pitch > most || pitch * (lines - 1) + bytes > most - start) {
      return false;
    }
  }
  return true;
}

/// Calls copy(line of a, line of b, bytes) for every line of two pictures of one shape.
template <class Copy>
void forLines(const ZqpPicture &a, const ZqpPicture &b, const Copy &copy) {
  const Format &format = reference::formatOf(a.format);
  for (int p = 0; p < planesOf(format); ++p) {
    for (int line = 0; line < planeLinesOf(format, p, a.height); ++line) {
      copy(lineOf(a, p, line), lineOf(b, p, line), static_cast<std::size_t>(lineBytesOf(format, p, a.width)));
    }
  }
}

/// Converts in planes of their own, by the portable level, and puts the picture where `out` has it.
void convertElsewhere(const ZqpConverter *converter, const ZqpPicture &in, const ZqpPicture &out, int32_t first,
                      int32_t lines) {
  const support::LevelsForced portable(zqcc::LEVEL_PORTABLE);
  OwnPicture ownIn(in.format, in.width, in.height);
  OwnPicture ownOut(out.format, out.width, out.height);
  const ZqpPicture from = ownIn.view();
  const ZqpPicture to = ownOut.view();
  const auto copy = [](uint8_t *target, const uint8_t *source, std::size_t bytes) {
    std::memcpy(target, source, bytes);
  };
  forLines(from, in, copy);
  forLines(to, out, copy);
  if (zqpConvertLines(converter, &from, &to, first, lines) != ZQP_OK) {
    fuzz::failPicture("planes of their own are refused", 0);
  }
  forLines(out, to, copy);
}

void tryViews(const ZqpConversion &c, const ZqpPicture &in, const ZqpPicture &out, std::vector<uint8_t> &room,
              Script &script) {
  const bool isWhole = script.below(2) != 0;
  const int32_t first = isWhole ? 0 : script.below(12) == 0 ? script.number() : script.below(80) % (c.outHeight + 1);
  const int32_t lines =
      isWhole ? c.outHeight
      : script.below(12) == 0
          ? script.number()
          : std::max(0, std::min(script.below(9), c.outHeight - first % 4096) + (script.below(8) == 0 ? 1 : 0));
  const fuzz::Errors errors = fuzz::errorsOf(c, in, out, first, lines);
  if (errors == 0 && !(liesInRoom(in, room.data()) && liesInRoom(out, room.data()))) {
    return; // they claim memory that there is not
  }
  ZqpConverter *converter = nullptr;
  if (zqpConverterMake(&c, &converter) != ZQP_OK) {
    fuzz::failPicture("a good description is refused", 0);
  }
  const std::vector<uint8_t> before = room;
  const int32_t error =
      isWhole ? zqpConvert(converter, &in, &out) : zqpConvertLines(converter, &in, &out, first, lines);
  fuzz::expect(error, errors, "zqpConvert");
  const std::vector<uint8_t> made = room;
  std::copy(before.begin(), before.end(), room.begin());
  if (error == ZQP_OK) {
    convertElsewhere(converter, in, out, first, lines);
  }
  zqpConverterFree(converter);
  if (made != room) {
    fuzz::failPicture(error == ZQP_OK ? "another picture" : "a refused picture is written", error);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  Script script(bytes, count);
  const support::LevelsForced level(static_cast<zqcc::Level>(script.below(zqcc::LEVEL_COUNT)));
  const ZqpConversion c = fuzz::readGoodConversion(script);
  if (int64_t{c.inWidth} * c.inHeight + int64_t{c.outWidth} * c.outHeight > kMostPixels) {
    return 0;
  }
  std::vector<uint8_t> room(kRoomBytes);
  uint32_t state = 1;
  for (uint8_t &byte : room) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<uint8_t>(state >> 24);
  }
  std::size_t used = 0;
  ZqpPicture in = layOut(script, c.inFormat, c.inWidth, c.inHeight, room.data(), used);
  ZqpPicture out = layOut(script, c.outFormat, c.outWidth, c.outHeight, room.data(), used);
  for (int i = script.below(4); i > 0; --i) {
    spoil(script, script.below(2) != 0 ? in : out, room.data());
  }
  tryViews(c, in, out, room, script);
  return 0;
}
