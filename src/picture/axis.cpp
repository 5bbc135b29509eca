#include "picture/axis.h"

#include "zqPicture.h"

namespace zqp {
namespace {

/// Rounded down; the divisor is positive.
constexpr int64_t floorOf(int64_t dividend, int64_t divisor) {
  const int64_t quotient = dividend / divisor;
  return dividend % divisor < 0 ? quotient - 1 : quotient;
}

constexpr int64_t smaller(int64_t a, int64_t b) {
  return a < b ? a : b;
}
constexpr int64_t larger(int64_t a, int64_t b) {
  return a > b ? a : b;
}

Sampling samplingOf(const OutputAxis &out, const InputAxis &in, int32_t filter) {
  const bool keepsSize = in.pixels == out.pixels;
  const bool isMeanOfChroma = keepsSize && out.shift > in.shift;
  const int64_t covered = int64_t{in.pixels} << out.shift;
  const int64_t sample = int64_t{out.pixels} << in.shift;
  if (isMeanOfChroma || (filter == ZQP_FILTER_AREA && covered > sample)) {
    return Sampling::Area;
  }
  return filter == ZQP_FILTER_NEAREST ? Sampling::Nearest : Sampling::Bilinear;
}

} // namespace

Axis::Axis(const OutputAxis &out, const InputAxis &in, int32_t filter)
    : out_(out), in_(in), sampling_(samplingOf(out, in, filter)),
      outputs_(static_cast<int32_t>((int64_t{out.pixels} + (1 << out.shift) - 1) >> out.shift)),
      first_(in.start >> in.shift), samples_(((in.start + in.pixels - 1) >> in.shift) - first_ + 1),
      unit_((int64_t{2} * out.pixels) << in.shift) {
  // Steps are a sample long then, so that all outputs are at samples if the first one is.
  if (in.pixels == out.pixels && in.shift == out.shift && place(twiceCentre(0)) == 0) {
    sampling_ = Sampling::Same;
  }
}

/// Where output k is, in half pixels of the output.
int64_t Axis::twiceCentre(int32_t k) const {
  const int64_t number = out_.isMirrored ? outputs_ - 1 - k : k;
  const int64_t twice = out_.isLeft ? (number << out_.shift) * 2 + 1 : (2 * number + 1) << out_.shift;
  return out_.isMirrored ? int64_t{2} * out_.pixels - twice : twice;
}

/// A place in half pixels of the output, in units of which unit_ are from one input sample that takes part to the next.
int64_t Axis::place(int64_t twicePosition) const {
  const int64_t pixels = out_.pixels;
  const int64_t offset = in_.isLeft ? pixels : pixels << in_.shift;
  return 2 * pixels * in_.start + twicePosition * in_.pixels - offset - first_ * unit_;
}

int32_t Axis::nearest(int32_t k) const {
  const int64_t at = -floorOf(unit_ - 2 * place(twiceCentre(k)), 2 * unit_);
  return static_cast<int32_t>(smaller(larger(at, 0), samples_ - 1));
}

Lerp Axis::lerp(int32_t k) const {
  const int64_t where = place(twiceCentre(k));
  if (where < 0) {
    return {0, 0};
  }
  const auto at = static_cast<int32_t>(where / unit_);
  if (at >= samples_ - 1) {
    return {samples_ - 1, 0};
  }
  return {at, static_cast<int32_t>(((where % unit_) << 15) / unit_)};
}

Taps Axis::taps(int32_t k, int32_t *weights) const {
  constexpr int32_t kAll = 1 << kFewTapsBits;
  if (sampling_ == Sampling::Area) {
    return mean(k, weights);
  }
  Lerp lerped{k, 0};
  if (sampling_ == Sampling::Nearest) {
    lerped.at = nearest(k);
  } else if (sampling_ == Sampling::Bilinear) {
    lerped = lerp(k);
    lerped.next >>= 15 - kFewTapsBits;
  }
  if (weights != nullptr) {
    weights[0] = kAll - lerped.next;
  }
  if (lerped.next == 0) {
    return {lerped.at, 1, 0};
  }
  if (weights != nullptr) {
    weights[1] = lerped.next;
  }
  return {lerped.at, 2, 0};
}

Taps Axis::mean(int32_t k, int32_t *weights) const {
  // The pixels that the output stands for, as far as they lie in the picture; sample n covers n to n + 1.
  const int64_t centre = twiceCentre(k);
  const int64_t half = int64_t{1} << out_.shift;
  const int64_t end = int64_t{2} * out_.pixels;
  const int64_t last = samples_ * unit_;
  const int64_t from = larger(place(larger(centre - half, 0)) + unit_ / 2, 0);
  const int64_t to = smaller(place(smaller(centre + half, end)) + unit_ / 2, last);
  Taps taps{static_cast<int32_t>(from / unit_), 0, 0};
  taps.count = static_cast<int32_t>((to - 1) / unit_) - taps.first + 1;
  if (weights == nullptr) {
    return taps;
  }
  const int64_t all = int64_t{1} << (taps.count <= kFewTaps ? kFewTapsBits : kManyTapsBits);
  int64_t before = 0;
  for (int32_t n = 0; n < taps.count; ++n) {
    const int64_t covered = smaller((taps.first + n + 1) * unit_, to) - from;
    const int64_t together = (2 * covered * all + (to - from)) / (2 * (to - from));
    weights[n] = static_cast<int32_t>(together - before);
    before = together;
  }
  return taps;
}

bool Axis::halves() const {
  bool isHalved = sampling_ == Sampling::Area && outputs_ == (samples_ + 1) / 2;
  for (int32_t k = 0; isHalved && k < outputs_; ++k) {
    const int32_t count = 2 * k + 1 < samples_ ? 2 : 1;
    int32_t weights[2] = {};
    const Taps made = taps(k, nullptr);
    isHalved = made.first == 2 * k && made.count == count;
    if (isHalved && count == 2) {
      taps(k, weights);
      isHalved = weights[0] == weights[1];
    }
  }
  return isHalved;
}

bool Axis::halvesLeft() const {
  bool isHalved = sampling_ == Sampling::Area && outputs_ == (samples_ + 1) / 2;
  for (int32_t k = 0; isHalved && k < outputs_; ++k) {
    const int32_t first = k == 0 ? 0 : 2 * k - 1;
    const int32_t end = 2 * k + 1 < samples_ ? 2 * k + 2 : samples_;
    const Taps made = taps(k, nullptr);
    isHalved = made.first == first && made.count == end - first;
    if (isHalved && made.count > 1) {
      int32_t weights[3] = {};
      taps(k, weights);
      const int32_t middle = weights[2 * k - first];
      const int32_t beside = weights[k == 0 ? 1 : 0];
      const int32_t before = made.count == 3 ? weights[2] : beside;
      isHalved = before == beside && middle - 2 * beside >= 0 && middle - 2 * beside <= 1;
    }
  }
  return isHalved;
}

} // namespace zqp
