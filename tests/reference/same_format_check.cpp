#include "reference/same_format_check.h"

#include "reference/result_code.h"
#include "reference/same_format.h"

#include <sstream>

namespace reference {

namespace {

std::string nameOf(const SameFormatCase &c) {
  std::ostringstream text;
  text << "type " << c.type << ", " << c.width << "x" << c.height << " to " << c.outWidth << "x" << c.outHeight
       << ", isResize " << c.isResize << ", rotation " << c.rotation << ", antiAlias " << c.antiAlias << ", padding "
       << c.inPadding << "/" << c.outPadding << ", misaligned by " << c.misalign << ", fill "
       << static_cast<int>(c.fill) << ", seed " << c.seed << ": ";
  return text.str();
}

bool turns(uint32_t rotation) {
  return rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT;
}

support::Canvas canvasFor(const SameFormatCase &c) {
  const int lineWidth = turns(c.rotation) ? c.outHeight : c.outWidth;
  const int lines = turns(c.rotation) ? c.outWidth : c.outHeight;
  return support::Canvas::forPicture(c.type, lineWidth, lines, support::tightStride(c.type, lineWidth) + c.outPadding,
                                     c.misalign);
}

/// A chroma plane without samples has no storage either; whether a null pointer would do there is not the question
/// here.
void giveEmptyPlanesAnAddress(ConvertParams &p) {
  static uint8_t nowhere = 0;
  for (int i = 0; i < support::planeCount(p.inType); ++i) {
    p.inBuf[i] = p.inBuf[i] == nullptr ? &nowhere : p.inBuf[i];
  }
}

/// Deterministic choices for the sweeps.
class Choice {
public:
  explicit Choice(uint32_t seed) : state_(seed * 747796405U + 2891336453U) {}
  int between(int low, int high) {
    state_ = state_ * 1664525U + 1013904223U;
    return low + static_cast<int>((state_ >> 8) % static_cast<uint32_t>(high - low + 1));
  }

private:
  uint32_t state_;
};

SameFormatCase drawCase(int type, Choice &choice) {
  SameFormatCase c;
  c.type = type;
  // Half of the sizes are small, where the edges meet.
  const int top = choice.between(0, 1) == 0 ? 12 : 70;
  c.width = choice.between(1, top);
  c.height = choice.between(1, top);
  c.inPadding = choice.between(0, 2) == 0 ? choice.between(1, 37) : 0;
  c.outPadding = choice.between(0, 2) == 0 ? choice.between(1, 37) : 0;
  c.misalign = static_cast<unsigned>(choice.between(0, 3));
  constexpr std::array<support::Fill, 4> kFills{support::Fill::Noise, support::Fill::Noise, support::Fill::Extremes,
                                                support::Fill::Ramp};
  c.fill = kFills.at(static_cast<std::size_t>(choice.between(0, 3)));
  c.seed = static_cast<uint32_t>(choice.between(1, 1 << 20));
  return c;
}

void drawOutputSize(SameFormatCase &c, Choice &choice) {
  c.outWidth = c.width;
  c.outHeight = c.height;
  if (c.isResize != 0) {
    c.outWidth = choice.between(1, 70);
    c.outHeight = choice.between(1, 70);
  }
  const int lineWidth = turns(c.rotation) ? c.outHeight : c.outWidth;
  if (support::isPacked422(c.type) && lineWidth % 2 != 0 && choice.between(0, 2) == 0) {
    c.outPadding = -2;
  }
  if (support::isPacked422(c.type) && c.width % 2 != 0 && choice.between(0, 2) == 0) {
    c.inPadding = -2;
  }
}

} // namespace

std::string checkSameFormat(const SameFormatCase &c, Tally &tally) {
  const support::Picture picture(c.type, c.width, c.height, support::tightStride(c.type, c.width) + c.inPadding, c.fill,
                                 c.seed, c.misalign, support::LastPair::Kept);
  support::Canvas got = canvasFor(c);
  support::Canvas want = canvasFor(c);
  ConvertParams p = support::blankParams();
  picture.describe(p);
  p.outType = c.type;
  p.outWidth = c.outWidth;
  p.outHeight = c.outHeight;
  p.isResize = c.isResize;
  p.rotation = c.rotation;
  p.antiAlias = c.antiAlias;
  got.describe(p);
  giveEmptyPlanesAnAddress(p);
  const uint32_t setup = setupCode(p);
  const uint32_t expected = setup != CC_OK ? setup : resultCode(p, p);
  const uint32_t code = support::convertOnce(p);
  if (code != expected) {
    std::ostringstream text;
    text << nameOf(c) << "code " << std::hex << code << ", expected " << expected << "\n";
    return text.str();
  }
  if (expected == CC_OK) {
    ++tally.converted;
    want.describe(p);
    convertSameFormat(p);
  } else {
    ++tally.refused;
  }
  const std::string difference = got.difference(want);
  return difference.empty() ? "" : nameOf(c) + difference;
}

std::string sweepSameFormat(int type, int sizes, uint32_t seed, Tally &tally) {
  Choice choice(seed + static_cast<uint32_t>(type) * 7919U);
  std::string failures;
  int failed = 0;
  for (int mode = 0; mode < 2 * 8 * 3; ++mode) {
    for (int i = 0; i < sizes; ++i) {
      SameFormatCase c = drawCase(type, choice);
      c.isResize = static_cast<uint32_t>(mode % 2);
      c.rotation = static_cast<uint32_t>(mode / 2 % 8);
      c.antiAlias = static_cast<uint32_t>(mode / 16);
      drawOutputSize(c, choice);
      const std::string failure = checkSameFormat(c, tally);
      failed += failure.empty() ? 0 : 1;
      if (failed <= 5) {
        failures += failure;
      }
    }
  }
  return failed > 5 ? failures + std::to_string(failed) + " cases failed in all\n" : failures;
}

Outcome convertBoth(ConvertParams p, const Planes &in, const std::array<std::size_t, 3> &outBytes) {
  Outcome outcome;
  for (std::size_t i = 0; i < 3; ++i) {
    p.inBuf[i] = in[i].empty() ? nullptr : in[i].data();
    outcome.library[i].assign(outBytes[i], kUntouched);
    outcome.reference[i].assign(outBytes[i], kUntouched);
    p.outBuf[i] = outBytes[i] == 0 ? nullptr : outcome.library[i].data();
  }
  outcome.code = support::convertOnce(p);
  for (std::size_t i = 0; i < 3; ++i) {
    p.outBuf[i] = outBytes[i] == 0 ? nullptr : outcome.reference[i].data();
  }
  convertSameFormat(p);
  return outcome;
}

ConvertParams sameFormatParams(int type, int width, int height, int outWidth, int outHeight, int inStride,
                               int outStride) {
  ConvertParams p = support::blankParams();
  p.inType = type;
  p.outType = type;
  p.inWidth = width;
  p.inHeight = height;
  p.outWidth = outWidth;
  p.outHeight = outHeight;
  p.inStride = inStride;
  p.outStride = outStride;
  return p;
}

} // namespace reference
