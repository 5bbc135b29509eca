#include "fuzz/records.h"

#include "containment/expectation.h"
#include "reference/result_code.h"
#include "support/picture.h"

#include <algorithm>

namespace fuzz {
namespace {

constexpr uint8_t kOddModes = 0xC0;
constexpr uint8_t kAnyStride = 0xF0;
constexpr uint8_t kStrideNearLimit = 0xE8;
constexpr uint8_t kStrideNearLimitEnd = 0xEC;

int64_t lineBytes(int type, int64_t width) {
  const int64_t bounded = std::clamp<int64_t>(width, 0, 1 << 24);
  return support::tightStride(type, static_cast<int>(bounded));
}

int32_t readStride(Script &script, int type, int width) {
  const uint8_t choice = script.byte();
  if (choice >= kStrideNearLimit && choice < kStrideNearLimitEnd) {
    return script.nearLimit();
  }
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

void widenStrides(ConvertParams &p) {
  const auto atLeast = [](int32_t stride, int64_t tight) {
    return static_cast<int32_t>(std::clamp<int64_t>(tight, stride, INT32_MAX));
  };
  p.inStride = atLeast(std::max(p.inStride, 0), support::tightStride<int64_t>(p.inType, std::max(p.inWidth, 0)));
  p.outStride =
      atLeast(std::max(p.outStride, 0), support::tightStride<int64_t>(p.outType, std::max(writtenSize(p).width, 0)));
}

/// A factor that makes a product of about 2^31, 2^32 or 2^33.
int32_t partnerOf(Script &script, int32_t factor) {
  return script.near((int64_t{1} << (31 + script.below(3))) / std::max(factor, 1));
}

void writeModes(ScriptWriter &writer, const ConvertParams &p) {
  const auto indexOf = [](int type) {
    return static_cast<uint8_t>(std::find(std::begin(kTypes), std::end(kTypes), type) - std::begin(kTypes));
  };
  writer.byte(indexOf(p.inType));
  writer.byte(indexOf(p.outType));
  const bool twoSizes = p.isResize == 0 && (p.inWidth != p.outWidth || p.inHeight != p.outHeight);
  if (twoSizes) {
    writer.byte(kOddModes);
    writer.byte(static_cast<uint8_t>(p.isResize));
    writer.byte(static_cast<uint8_t>(p.rotation));
    writer.byte(static_cast<uint8_t>(p.antiAlias));
  } else {
    writer.byte(static_cast<uint8_t>(p.isResize | p.rotation << 1 | p.antiAlias << 4));
  }
  writer.size(p.inWidth);
  writer.size(p.inHeight);
  if (p.isResize != 0 || twoSizes) {
    writer.size(p.outWidth);
    writer.size(p.outHeight);
  }
}

/// The mode is one that converts something.
bool isServed(const ConvertParams &p) {
  static uint8_t somewhere = 0;
  ConvertParams small = p;
  small.inWidth = small.inHeight = small.outWidth = small.outHeight = 16;
  small.inStride = small.outStride = 64;
  std::fill(std::begin(small.inBuf), std::end(small.inBuf), &somewhere);
  std::fill(std::begin(small.outBuf), std::end(small.outBuf), &somewhere);
  const bool doesNothing = p.inType == COLOR_RGB24 && p.outType != COLOR_RGB565;
  return !doesNothing && reference::resultCode(small, small) == CC_OK;
}

int64_t area(int32_t a, int32_t b) {
  return int64_t{std::max(a, 0)} * std::max(b, 0);
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

zqcc::Level readLevel(Script &script) {
  return static_cast<zqcc::Level>(script.below(zqcc::LEVEL_COUNT));
}

void writeLevel(ScriptWriter &writer, zqcc::Level level) {
  writer.byte(static_cast<uint8_t>(level));
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

void writeRecord(ScriptWriter &writer, const ConvertParams &p) {
  writeModes(writer, p);
  writer.any(p.inStride);
  writer.any(p.outStride);
}

void writeRecord(ScriptWriter &writer, const ConvertParams &p, int inExtra, int outExtra) {
  writeModes(writer, p);
  writeStrides(writer, inExtra, outExtra);
}

void moveToLimit(Script &script, ConvertParams &p) {
  const bool scales = p.isResize == 1;
  switch (script.below(12)) {
  case 0: // enlarged a little more or less than set-up allows
    p.outWidth = script.near(int64_t{1024} * p.inWidth);
    break;
  case 1:
    p.outHeight = script.near(int64_t{1024} * p.inHeight);
    break;
  case 2: // tall
    p.inHeight = script.nearLimit();
    p.inWidth = 1 + script.below(8);
    p.outHeight = scales ? 1 + script.below(40) : p.inHeight;
    p.outWidth = scales ? 1 + script.below(8) : p.inWidth;
    break;
  case 3: // wide
    p.inWidth = script.nearLimit();
    p.inHeight = 1 + script.below(8);
    p.outWidth = scales ? 1 + script.below(40) : p.inWidth;
    p.outHeight = scales ? 1 + script.below(8) : p.inHeight;
    break;
  case 4: // made tall or wide
    p.outHeight = script.nearLimit();
    p.outWidth = 1 + script.below(4);
    break;
  case 5:
    p.outWidth = script.nearLimit();
    p.outHeight = 1 + script.below(4);
    break;
  case 6: // a sample of a large picture
    p.inWidth = script.nearLimit();
    p.inHeight = script.nearLimit();
    p.outWidth = 1 + script.below(16);
    p.outHeight = 1 + script.below(16);
    break;
  case 7: // lines far apart
    p.inStride = partnerOf(script, p.inHeight);
    return;
  case 8:
    p.outStride = partnerOf(script, writtenSize(p).height);
    return;
  case 9:
    p.inStride = script.nearLimit();
    p.outStride = script.nearLimit();
    return;
  case 10:
    p.inHeight = partnerOf(script, p.inStride);
    break;
  default:
    p.outWidth = script.nearLimit();
    return; // and strides that are too short for it
  }
  widenStrides(p);
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

bool isComparedInTime(const ConvertParams &p) {
  if (containment::readsPadding(p)) {
    return pixelsOf(p) <= kLargestCompared && p.outHeight <= 1000; // the models look for every line's chroma anew
  }
  const bool thin = std::min(p.outWidth, p.outHeight) < 8;
  return pixelsOf(p) <= (thin ? kMostThinPixels : kLargestCompared);
}

bool exceedsSplitPlanes(const ConvertParams &setup, const ConvertParams &p) {
  const int64_t made = support::isSemiPlanar(setup.inType) ? area(setup.inStride, setup.inHeight) / 4 + 32 : 0;
  const int64_t lines = p.inHeight / 2;
  return isSemiPlanarConversion(p) && lines > 0 && (lines - 1) * (p.inStride >> 1) + p.inWidth / 2 > made;
}

bool turnsPlanes(const ConvertParams &p) {
  const bool quarter = p.rotation == ROTATION_90_LEFT || p.rotation == ROTATION_90_RIGHT;
  const bool other = p.inType == 0 || p.inType == 2 || p.inType == 4 || p.inType == 37;
  return p.inType != p.outType && p.isResize == 1 && quarter && other;
}

SetUpMemory setUpMemory(const ConvertParams &p) {
  const int64_t split = support::isSemiPlanar(p.inType) ? area(p.inStride, p.inHeight) / 4 : 0;
  const int64_t turned = turnsPlanes(p) ? area(p.inWidth, p.inHeight) : 0;
  const int64_t longest = std::max({p.outWidth, p.outHeight, 0});
  const int64_t scaled = reference::scales(p) ? 3 * 4 * longest : 0;
  if (isServed(p) && std::max({split, turned, scaled}) > 2 * kLargestMalloc) {
    return SetUpMemory::TooLittle;
  }
  // Grouped tables have a word for every 16 source samples, which cost time as well.
  const bool grouped = support::isRgb16(p.outType) && !support::isPacked422(p.inType);
  const int64_t sources = grouped ? 4 * (int64_t{std::max(p.inWidth, 0)} + std::max(p.inHeight, 0)) : 0;
  // Behind a table of columns stands the plan that vector code reads, of means some hundred bytes a column.
  constexpr int64_t kPlanOfColumn = 512;
  const int64_t tables = p.isResize == 0 ? 0 : (2 * 60 + kPlanOfColumn) * longest + sources;
  return 2 * split + bounded(3 * bounded(turned)) + tables <= kLargestSetUp ? SetUpMemory::Enough
                                                                            : SetUpMemory::Unclear;
}

} // namespace fuzz
