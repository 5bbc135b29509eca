#include "picture/reference/ideal_model.h"

#include "picture/reference/ideal_weights.h"

#include <algorithm>
#include <array>

namespace reference {

namespace {

using Three = std::array<double, 3>;

/// The meaning of a picture's numbers.
struct Scale {
  double kr = .299;
  double kb = .114;
  double black = 0;
  double span = 255;
  double chromaSpan = 255;
};

Scale scaleOf(const Format &format, const ZqpColours &colours) {
  Scale scale;
  switch (colours.matrix) {
  case ZQP_BT709:
    scale.kr = .2126;
    scale.kb = .0722;
    break;
  case ZQP_BT2020:
    scale.kr = .2627;
    scale.kb = .0593;
    break;
  case ZQP_MATRIX_GIVEN:
    scale.kr = static_cast<double>(colours.kr);
    scale.kb = static_cast<double>(colours.kb);
    break;
  default:
    break;
  }
  if (colours.range == ZQP_RANGE_LIMITED || (colours.range == ZQP_RANGE_USUAL && format.kind != Kind::Rgb)) {
    scale.black = 16;
    scale.span = 219;
    scale.chromaSpan = 224;
  }
  return scale;
}

/// R, G and B of which 0 is black and 1 is white.
Three decoded(Kind kind, const Scale &scale, const Three &samples) {
  const auto level = [&](double sample) { return (sample - scale.black) / scale.span; };
  if (kind == Kind::Rgb) {
    return {level(samples[0]), level(samples[1]), level(samples[2])};
  }
  const double luma = level(samples[0]);
  const double blue = luma + 2 * (1 - scale.kb) * (samples[1] - 128) / scale.chromaSpan;
  const double red = luma + 2 * (1 - scale.kr) * (samples[2] - 128) / scale.chromaSpan;
  return {red, (luma - scale.kr * red - scale.kb * blue) / (1 - scale.kr - scale.kb), blue};
}

double encoded(Kind kind, const Scale &scale, const Three &rgb, int component) {
  const auto index = static_cast<std::size_t>(component);
  if (kind == Kind::Rgb) {
    return scale.black + scale.span * rgb[index];
  }
  const double luma = scale.kr * rgb[0] + (1 - scale.kr - scale.kb) * rgb[1] + scale.kb * rgb[2];
  switch (component) {
  case 1:
    return 128 + scale.chromaSpan * (rgb[2] - luma) / (2 * (1 - scale.kb));
  case 2:
    return 128 + scale.chromaSpan * (rgb[0] - luma) / (2 * (1 - scale.kr));
  default:
    return scale.black + scale.span * luma;
  }
}

/// A component of the input where the samples of the output are.
IdealPlane resampled(const ZqpConversion &c, const OwnPicture &in, int component, int outComponent) {
  const Format &out = formatOf(c.outFormat);
  const IdealShares shares = idealShares(c, in.format(), component, outComponent);
  const double unit = 255. / mostOf(in.format(), component);
  IdealPlane plane{columnsOf(out, outComponent, c.outWidth), linesOf(out, outComponent, c.outHeight), {}};
  for (int y = 0; y < plane.lines; ++y) {
    for (int x = 0; x < plane.columns; ++x) {
      double sum = 0;
      for (const Share &line : shares.lines[static_cast<std::size_t>(shares.swapsAxes ? x : y)]) {
        for (const Share &column : shares.columns[static_cast<std::size_t>(shares.swapsAxes ? y : x)]) {
          sum += column.weight * line.weight * unit * in.sample(component, column.index, line.index);
        }
      }
      plane.samples.push_back(sum);
    }
  }
  return plane;
}

IdealPlane idealAlpha(const ZqpConversion &c, const OwnPicture &in) {
  if (in.format().components > kAlpha) {
    return resampled(c, in, kAlpha, kAlpha);
  }
  const auto pixels = static_cast<std::size_t>(c.outWidth) * static_cast<std::size_t>(c.outHeight);
  return {c.outWidth, c.outHeight, std::vector<double>(pixels, 255)};
}

IdealPlane idealPlane(const ZqpConversion &c, const OwnPicture &in, int outComponent) {
  const Format &out = formatOf(c.outFormat);
  const Scale from = scaleOf(in.format(), c.inColours);
  const Scale to = scaleOf(out, c.outColours);
  std::vector<IdealPlane> parts;
  for (int component = 0; component < std::min(in.format().components, 3); ++component) {
    parts.push_back(resampled(c, in, component, outComponent));
  }
  const double most = mostOf(out, outComponent);
  IdealPlane plane = parts[0];
  for (std::size_t i = 0; i < plane.samples.size(); ++i) {
    Three samples{0, 128, 128};
    for (std::size_t component = 0; component < parts.size(); ++component) {
      samples[component] = parts[component].samples[i];
    }
    const double sample = encoded(out.kind, to, decoded(in.format().kind, from, samples), outComponent);
    plane.samples[i] = std::clamp(sample, 0., 255.) * most / 255;
  }
  return plane;
}

} // namespace

std::vector<IdealPlane> idealOf(const ZqpConversion &c, const OwnPicture &in) {
  std::vector<IdealPlane> planes;
  planes.reserve(4);
  for (int component = 0; component < formatOf(c.outFormat).components; ++component) {
    planes.push_back(component == kAlpha ? idealAlpha(c, in) : idealPlane(c, in, component));
  }
  return planes;
}

} // namespace reference
