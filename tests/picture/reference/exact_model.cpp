#include "picture/reference/exact_model.h"

#include "picture/reference/colours.h"
#include "picture/reference/weights.h"

#include <optional>

namespace reference {

namespace {

constexpr int kMiddle = 128 * 128; ///< chroma of grey

/// The input's components at the places of one component of the output.
class Components {
public:
  Components(const ZqpConversion &c, const OwnPicture &in, int outComponent) {
    for (int component = 0; component < in.format().components; ++component) {
      parts_[component].emplace(c, in, component, outComponent);
    }
  }

  void words(int x, int y, int to[4]) const {
    for (int component = 0; component < 4; ++component) {
      to[component] = parts_[component] ? parts_[component]->word(x, y) : kMiddle;
    }
  }

private:
  std::optional<Resampled> parts_[4];
};

int alphaOf(const Format &in, const int words[4]) {
  return in.components > kAlpha ? (words[kAlpha] + 64) >> 7 : 255;
}

int sampleOf(const Colours &colours, const Format &in, const Format &out, int component, const int words[4], int x,
             int y) {
  if (component == kAlpha) {
    return alphaOf(in, words);
  }
  if (in.kind == Kind::Rgb) {
    return out.kind == Kind::Rgb ? colours.rgbOfRgb(component, words, x, y) : colours.yuvOfRgb(component, words);
  }
  return out.kind == Kind::Rgb ? colours.rgbOfYuv(component, words, x, y) : colours.yuvOfYuv(component, words);
}

/// The last group of packed 4:2:2 with an odd number of columns repeats its luma.
bool isRepeated(const OwnPicture &out, int component, int x) {
  return x + 1 == out.width() && x % 2 == 0 && out.format().places[component].perGroup == 2;
}

} // namespace

void convertExactly(const ZqpConversion &c, const OwnPicture &in, OwnPicture &out) {
  const Colours colours(c);
  const Format &format = out.format();
  for (int component = 0; component < format.components; ++component) {
    const Components components(c, in, component);
    for (int y = 0; y < linesOf(format, component, out.height()); ++y) {
      for (int x = 0; x < columnsOf(format, component, out.width()); ++x) {
        int words[4];
        components.words(x, y, words);
        const int sample = sampleOf(colours, in.format(), format, component, words, x, y);
        out.setSample(component, x, y, sample);
        if (isRepeated(out, component, x)) {
          out.setSample(component, x + 1, y, sample);
        }
      }
    }
  }
}

} // namespace reference
