#include "picture/reference/weights.h"

#include <algorithm>

namespace reference {

namespace {

constexpr int kFewTaps = 16;
constexpr int kFewBits = 14;
constexpr int kManyBits = 23;

int held(int64_t index, const Part &part) {
  return static_cast<int>(std::clamp(index, part.first, part.last));
}

/// Of the mean over what the spot covers of the samples that take part.
void setMean(AxisSample &sample, const Spot &spot, const Part &part) {
  const int64_t half = spot.unit / 2;
  const int64_t e0 = std::max(spot.begin, part.first * spot.unit - half);
  const int64_t e1 = std::min(spot.end, part.last * spot.unit + half);
  // The sample that holds e0 and the last one that begins before e1.
  const int64_t first = floorOf(e0 + half, spot.unit);
  const int64_t last = floorOf(e1 + half - 1, spot.unit);
  sample.bits = last - first + 1 <= kFewTaps ? kFewBits : kManyBits;
  const int64_t all = int64_t{1} << sample.bits;
  int64_t before = 0;
  for (int64_t k = first; k <= last; ++k) {
    const int64_t e = std::min(e1, k * spot.unit + half);
    const int64_t upTo = k == last ? all : floorOf(2 * all * (e - e0) + (e1 - e0), 2 * (e1 - e0));
    sample.taps.push_back({static_cast<int>(k), upTo - before});
    before = upTo;
  }
}

AxisSample sampleOf(const Spot &spot, const Part &part, Way way) {
  AxisSample sample{};
  const int64_t low = floorOf(spot.t, spot.unit);
  const int64_t rest = spot.t - low * spot.unit;
  sample.nearest = held(-floorOf(spot.unit / 2 - spot.t, spot.unit), part);
  sample.low = held(low, part);
  sample.high = held(low + 1, part);
  sample.distance = 32768 * rest / spot.unit;
  sample.bits = kFewBits;
  const int64_t all = int64_t{1} << kFewBits;
  switch (way) {
  case Way::Same:
  case Way::Nearest:
    sample.taps = {{sample.nearest, all}};
    break;
  case Way::Bilinear: {
    const int64_t next = all * rest / spot.unit;
    sample.taps = {{sample.low, all - next}, {sample.high, next}};
    break;
  }
  case Way::Area:
    setMean(sample, spot, part);
    break;
  }
  return sample;
}

Grid columnGridOf(const Format &format, int component, const ZqpColours &colours) {
  return {shiftXOf(format, component), colours.siting == ZQP_SITING_LEFT};
}

Grid lineGridOf(const Format &format, int component) {
  return {shiftYOf(format, component), false};
}

int64_t mix(int64_t a, int64_t b, int64_t w) {
  return a + (((b - a) * w + 16384) >> 15);
}

bool isOne(Way way, Way a, Way b) {
  return way == a || way == b;
}

} // namespace

AxisPlan planAxis(const Axis &axis, Grid in, Grid out, int64_t count, int32_t filter) {
  AxisPlan plan{wayOf(axis, in, out, count, filter), {}};
  for (int64_t k = 0; k < count; ++k) {
    plan.samples.push_back(sampleOf(spotOf(axis, in, out, k), partOf(axis, in), plan.way));
  }
  return plan;
}

int byteOf(const OwnPicture &picture, int component, int x, int y) {
  const int n = picture.sample(component, x, y);
  switch (mostOf(picture.format(), component)) {
  case 31:
    return (527 * n + 23) >> 6;
  case 63:
    return (259 * n + 33) >> 6;
  default:
    return n;
  }
}

Resampled::Resampled(const ZqpConversion &c, const OwnPicture &in, int component, int outComponent)
    : in_(&in), component_(component), swapsAxes_(turnOf(c.orientation).swapsAxes), filter_(c.filter) {
  const Format &out = formatOf(c.outFormat);
  const Grid alongX = columnGridOf(out, outComponent, c.outColours);
  const Grid alongY = lineGridOf(out, outComponent);
  const int outColumns = columnsOf(out, outComponent, c.outWidth);
  const int outLines = linesOf(out, outComponent, c.outHeight);
  columns_ = planAxis(columnAxisOf(c), columnGridOf(in.format(), component, c.inColours), swapsAxes_ ? alongY : alongX,
                      swapsAxes_ ? outLines : outColumns, filter_);
  lines_ = planAxis(lineAxisOf(c), lineGridOf(in.format(), component), swapsAxes_ ? alongX : alongY,
                    swapsAxes_ ? outColumns : outLines, filter_);
}

int Resampled::sample(int column, int line) const {
  return byteOf(*in_, component_, column, line);
}

int Resampled::bilinear(const AxisSample &column, const AxisSample &line) const {
  const auto along = [&](int y) {
    return mix(128 * sample(column.low, y), 128 * sample(column.high, y), column.distance);
  };
  return static_cast<int>(mix(along(line.low), along(line.high), line.distance));
}

int Resampled::weighed(const AxisSample &column, const AxisSample &line) const {
  int64_t sum = int64_t{1} << (column.bits - 1);
  for (const Tap &across : column.taps) {
    int64_t v = int64_t{1} << (line.bits - 8);
    for (const Tap &down : line.taps) {
      v += sample(across.index, down.index) * down.weight;
    }
    sum += (v >> (line.bits - 7)) * across.weight;
  }
  return static_cast<int>(sum >> column.bits);
}

int Resampled::word(int x, int y) const {
  const AxisSample &column = columns_.samples[static_cast<std::size_t>(swapsAxes_ ? y : x)];
  const AxisSample &line = lines_.samples[static_cast<std::size_t>(swapsAxes_ ? x : y)];
  if (isOne(columns_.way, Way::Same, Way::Nearest) && isOne(lines_.way, Way::Same, Way::Nearest)) {
    return 128 * sample(column.nearest, line.nearest);
  }
  const bool isBilinear = isOne(columns_.way, Way::Same, Way::Bilinear) && isOne(lines_.way, Way::Same, Way::Bilinear);
  return isBilinear && filter_ != ZQP_FILTER_AREA ? bilinear(column, line) : weighed(column, line);
}

} // namespace reference
