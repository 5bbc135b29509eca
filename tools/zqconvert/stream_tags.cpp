#include "stream_tags.h"

#include "zqColorConversion.h"

#include <algorithm>
#include <numeric>

namespace zqconvert {

namespace {

bool isQuarterTurn(uint32_t rotation) {
  return rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT;
}

/// Whether the first line of the result is of the fields that the second line of the input is of.
bool exchangesFields(const Change &change) {
  const bool upsideDown = change.rotation == ROTATION_180 || change.rotation == ROTATION_FLIP_V;
  const int first = upsideDown ? change.part.y + change.part.height - 1 : change.part.y;
  return first % 2 != 0;
}

void adaptInterlacing(StreamInfo &info, const Change &change) {
  const bool keepsLines = !isQuarterTurn(change.rotation) && change.upright.height == change.part.height;
  const bool exchanged = keepsLines && exchangesFields(change);
  info.frameTags = keepsLines && !exchanged;
  if (info.interlacing == 'p' || info.frameTags) {
    return;
  }
  if (exchanged && info.interlacing != 'm') {
    info.interlacing = info.interlacing == 't' ? 'b' : info.interlacing == 'b' ? 't' : '?';
    return;
  }
  info.interlacing = '?'; // mixed frames say themselves what they are, and what they say no longer holds
}

/// The shape of a pixel when the same picture has another number of them; "0:0", unknown, where it cannot be said.
void adaptAspect(StreamInfo &info, const Change &change) {
  const std::vector<std::string> sides = split(info.aspect, ':');
  const std::optional<int> across = parseCount(sides.front());
  const std::optional<int> down = parseCount(sides.back());
  if (!across || !down || *across == 0 || *down == 0) {
    info.aspect = "0:0";
    return;
  }
  int64_t width = *across;
  int64_t height = *down;
  const auto stretch = [&](int64_t byWidth, int64_t byHeight) {
    const int64_t common = std::gcd(byWidth, byHeight);
    byWidth /= common;
    byHeight /= common;
    // Shortened crosswise first: the products of two 31-bit numbers then fit.
    const int64_t one = std::gcd(width, byHeight);
    const int64_t other = std::gcd(height, byWidth);
    width = width / one * (byWidth / other);
    height = height / other * (byHeight / one);
  };
  const bool scaled = change.upright.width != change.part.width || change.upright.height != change.part.height;
  if (scaled) {
    stretch(int64_t{change.part.width} * change.upright.height, int64_t{change.part.height} * change.upright.width);
  }
  if (isQuarterTurn(change.rotation)) {
    std::swap(width, height);
  }
  constexpr int64_t kMost = 2147483647;
  info.aspect = width > kMost || height > kMost ? "0:0" : std::to_string(width) + ":" + std::to_string(height);
}

/// Chroma words of the input hold for 4:2:0 that is not turned, and for that whose samples lie in the middle of their
/// pixels: the format has no name for sites on the other sides.
void adaptChroma(StreamInfo &info, const Change &change, int inType) {
  const bool turned = change.rotation != ROTATION_NONE;
  const bool centred = info.siting == "420jpeg" || info.siting == "420";
  const bool keeps = inType == COLOR_YUV420_PLANAR && (centred || !turned);
  if (keeps) {
    return;
  }
  info.siting = "420jpeg";
  std::erase_if(info.extras,
                [](const std::string &word) { return word.starts_with("XYSCSS=") || word.starts_with("XCHROMA"); });
}

} // namespace

void adaptTags(StreamInfo &info, const Change &change, int inType) {
  adaptInterlacing(info, change);
  adaptAspect(info, change);
  adaptChroma(info, change, inType);
}

} // namespace zqconvert
