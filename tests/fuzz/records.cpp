#include "fuzz/records.h"

#include "containment/expectation.h"
#include "support/picture.h"

#include <algorithm>

namespace fuzz {
namespace {

constexpr uint8_t kOddModes = 0xC0;
constexpr uint8_t kAnyStride = 0xF0;

int64_t lineBytes(int type, int64_t width) {
  const int64_t bounded = std::clamp<int64_t>(width, 0, 1 << 24);
  return support::tightStride(type, static_cast<int>(bounded));
}

int32_t readStride(Script &script, int type, int width) {
  const uint8_t choice = script.byte();
  if (choice < kAnyStride) {
    // Lines of odd packed width may lack the second half of their last group.
    const bool cut = choice % 64 == 63 && support::isPacked422(type) && width % 2 != 0;
    return static_cast<int32_t>(cut ? 2 * int64_t{width} : lineBytes(type, width) + choice % 32);
  }
  return script.number() & 0x7FFFFFFF;
}

reference::Size writtenSize(const ConvertParams &p) {
  return containment::writtenSize(p);
}

} // namespace

void readStrides(Script &script, ConvertParams &p) {
  p.inStride = readStride(script, p.inType, p.inWidth);
  p.outStride = readStride(script, p.outType, writtenSize(p).width);
}

void writeStrides(ScriptWriter &writer, int inExtra, int outExtra) {
  writer.byte(static_cast<uint8_t>(inExtra));
  writer.byte(static_cast<uint8_t>(outExtra));
}

ConvertParams readRecord(Script &script) {
  ConvertParams p{};
  p.inType = kTypes[script.below(kTypeCount)];
  p.outType = kTypes[script.below(kTypeCount)];
  const uint8_t modes = script.byte();
  p.isResize = modes & 1U;
  p.rotation = modes >> 1 & 7U;
  p.antiAlias = modes >> 4 & 3U;
  if ((modes & kOddModes) == kOddModes) {
    p.isResize = script.byte() % 4U;
    p.rotation = script.byte() % 12U;
    p.antiAlias = script.byte() % 6U;
  }
  p.inWidth = script.size();
  p.inHeight = script.size();
  const bool sameSize = p.isResize == 0 && (modes & kOddModes) != kOddModes;
  p.outWidth = sameSize ? p.inWidth : script.size();
  p.outHeight = sameSize ? p.inHeight : script.size();
  readStrides(script, p);
  return p;
}

void writeRecord(ScriptWriter &writer, const ConvertParams &p, int inExtra, int outExtra) {
  const auto indexOf = [](int type) {
    return static_cast<uint8_t>(std::find(kTypes, kTypes + kTypeCount, type) - kTypes);
  };
  writer.byte(indexOf(p.inType));
  writer.byte(indexOf(p.outType));
  writer.byte(static_cast<uint8_t>(p.isResize | p.rotation << 1 | p.antiAlias << 4));
  writer.size(p.inWidth);
  writer.size(p.inHeight);
  if (p.isResize != 0) {
    writer.size(p.outWidth);
    writer.size(p.outHeight);
  }
  writeStrides(writer, inExtra, outExtra);
}

void changeRecord(Script &script, ConvertParams &p) {
  switch (script.below(9)) {
  case 0:
    p.inType = kTypes[script.below(kTypeCount)];
    break;
  case 1:
    p.outType = kTypes[script.below(kTypeCount)];
    break;
  case 2:
    p.isResize ^= 1U;
    break;
  case 3:
    p.rotation = script.byte() % 9U;
    break;
  case 4:
    p.antiAlias = script.byte() % 5U;
    break;
  case 5:
    p.inWidth = script.size();
    break;
  case 6:
    p.inHeight = script.size();
    break;
  case 7:
    p.outWidth = script.size();
    break;
  default:
    p.outHeight = script.size();
    break;
  }
  readStrides(script, p);
}

bool isSemiPlanarConversion(const ConvertParams &p) {
  return support::isSemiPlanar(p.inType) && p.inType != p.outType;
}

bool inputLinesOverlap(const ConvertParams &p) {
  const int64_t width = std::max(p.inWidth, p.isResize != 0 ? 0 : p.outWidth);
  return p.inStride < (support::isPacked422(p.inType) ? 2 * width : lineBytes(p.inType, width));
}

int64_t pixelsOf(const ConvertParams &p) {
  return int64_t{std::max(p.outWidth, 0)} * std::max(p.outHeight, 0);
}

int64_t setUpBytes(const ConvertParams &p) {
  const auto area = [](int32_t a, int32_t b) { return bounded(int64_t{std::max(a, 0)} * std::max(b, 0)); };
  const int64_t chroma = support::isSemiPlanar(p.inType) ? area(p.inStride, p.inHeight) / 2 : 0;
  if (p.isResize == 0) {
    return chroma;
  }
  const int64_t tables = (int64_t{std::max(p.outWidth, 0)} + std::max(p.outHeight, 0)) * 60;
  return chroma + tables + area(p.inWidth, p.inHeight) * 3;
}

} // namespace fuzz
