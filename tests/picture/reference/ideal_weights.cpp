#include "picture/reference/ideal_weights.h"

#include <algorithm>
#include <cmath>

namespace reference {

namespace {

/// Numbers that ought to be whole, or halves, may be off by this.
constexpr double kNoise = 1e-9;

struct Side {
  double begin; ///< of the crop
  double size;
  double out;
  bool runsBack;
};

/// Pixels that a sample stands for, and where in them its centre is.
struct Spacing {
  double pixels;
  double centre;
};

Spacing spacingOf(int shift, bool isLeft) {
  const double pixels = 1 << shift;
  return {pixels, isLeft ? .5 : pixels / 2};
}

/// One output sample in samples of the input.
struct Window {
  double centre;
  double begin;
  double end;
};

class Ruler {
public:
  Ruler(const Side &side, const Spacing &in, const Spacing &out) : side_(side), in_(in), out_(out) {}

  [[nodiscard]] Window windowOf(int k) const {
    const double ahead = k * out_.pixels + out_.centre;
    const double p = side_.runsBack ? side_.out - ahead : ahead;
    return {inSamples(p), inSamples(std::max(p - out_.pixels / 2, 0.)),
            inSamples(std::min(p + out_.pixels / 2, side_.out))};
  }

private:
  [[nodiscard]] double inSamples(double p) const {
    return (side_.begin + p * side_.size / side_.out - in_.centre) / in_.pixels;
  }

  Side side_;
  Spacing in_;
  Spacing out_;
};

std::vector<Share> between(double t, double first, double last) {
  const double low = std::floor(t);
  const auto index = [&](double at) { return static_cast<int>(std::clamp(at, first, last)); };
  return {{index(low), 1 - (t - low)}, {index(low + 1), t - low}};
}

std::vector<Share> nearest(double t, double first, double last) {
  return {{static_cast<int>(std::clamp(std::ceil(t - .5 - kNoise), first, last)), 1}};
}

std::vector<Share> mean(const Window &window, double first, double last) {
  const double begin = std::max(window.begin, first - .5);
  const double end = std::min(window.end, last + .5);
  std::vector<Share> shares;
  const int lastIndex = static_cast<int>(last);
  for (int k = static_cast<int>(first); k <= lastIndex; ++k) {
    const double covered = std::min(end, k + .5) - std::max(begin, k - .5);
    if (covered > 0) {
      shares.push_back({k, covered / (end - begin)});
    }
  }
  return shares;
}

bool isWhole(double a) {
  return std::abs(a - std::round(a)) < kNoise;
}

Shares sharesOf(const Side &side, const Spacing &in, const Spacing &out, int count, int32_t filter) {
  const Ruler ruler(side, in, out);
  const bool isOfOneSize = side.size == side.out;
  const bool isSame = isOfOneSize && in.pixels == out.pixels && isWhole(ruler.windowOf(0).centre);
  const bool isThinned = isOfOneSize && out.pixels > in.pixels;
  const bool isReduced = side.size * out.pixels > side.out * in.pixels;
  const double first = std::floor(side.begin / in.pixels);
  const double last = std::floor((side.begin + side.size - 1) / in.pixels);
  Shares shares;
  for (int k = 0; k < count; ++k) {
    const Window window = ruler.windowOf(k);
    if (isSame || (filter == ZQP_FILTER_NEAREST && !isThinned)) {
      shares.push_back(nearest(window.centre, first, last));
    } else if (isThinned || (filter == ZQP_FILTER_AREA && isReduced)) {
      shares.push_back(mean(window, first, last));
    } else {
      shares.push_back(between(window.centre, first, last));
    }
  }
  return shares;
}

} // namespace

IdealShares idealShares(const ZqpConversion &c, const Format &in, int component, int outComponent) {
  const Format &out = formatOf(c.outFormat);
  const ZqpRect crop = c.crop.width == 0 && c.crop.height == 0 ? ZqpRect{0, 0, c.inWidth, c.inHeight} : c.crop;
  const Spacing inAcross = spacingOf(shiftXOf(in, component), c.inColours.siting == ZQP_SITING_LEFT);
  const Spacing inDown = spacingOf(shiftYOf(in, component), false);
  const Spacing outAcross = spacingOf(shiftXOf(out, outComponent), c.outColours.siting == ZQP_SITING_LEFT);
  const Spacing outDown = spacingOf(shiftYOf(out, outComponent), false);
  const int across = columnsOf(out, outComponent, c.outWidth);
  const int down = linesOf(out, outComponent, c.outHeight);
  // The input's columns run to the right, down, to the left or up in the finished picture, and so do its lines.
  const bool swapsAxes = c.orientation >= 5;
  const bool columnsRunBack = c.orientation == 2 || c.orientation == 3 || c.orientation == 7 || c.orientation == 8;
  const bool linesRunBack = c.orientation == 3 || c.orientation == 4 || c.orientation == 6 || c.orientation == 7;
  const Side columns{static_cast<double>(crop.x), static_cast<double>(crop.width),
                     static_cast<double>(swapsAxes ? c.outHeight : c.outWidth), columnsRunBack};
  const Side lines{static_cast<double>(crop.y), static_cast<double>(crop.height),
                   static_cast<double>(swapsAxes ? c.outWidth : c.outHeight), linesRunBack};
  return {sharesOf(columns, inAcross, swapsAxes ? outDown : outAcross, swapsAxes ? down : across, c.filter),
          sharesOf(lines, inDown, swapsAxes ? outAcross : outDown, swapsAxes ? across : down, c.filter), swapsAxes};
}

} // namespace reference
