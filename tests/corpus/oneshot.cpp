#include "corpus.h"
#include "pictures.h"

#include <utility>

namespace corpus {
namespace {

constexpr int kTypes[] = {0, 1, 2, 3, 4, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16, 17, 30, 31, 32, 34, 35, 37};

/// A buffer that holds a picture of any type with `side` columns and lines, turned or not.
struct Place {
  explicit Place(int side) : output(COLOR_YUV444_PLANAR, side, side + 4, 0) {}
  Output output;
};

/// Collects the functions' codes and outputs under one name at a time.
class Collector {
public:
  template <class Call>
  void run(int inType, int width, int height, Call call) {
    const int stride = lineBytes(inType, width);
    const Input input(inType, width, height, stride, 0, static_cast<uint32_t>(width * 64 + height));
    Place place(kSide);
    hash_.add(call(input.data(), place.output.data(), stride));
    place.output.addTo(hash_);
  }
  void finish(const std::string &name) {
    entries.push_back({name, hash_.value()});
    hash_ = Hash();
  }
  std::vector<Entry> entries;

private:
  static constexpr int kSide = 72;
  Hash hash_;
};

std::string named(const char *function, int a, int b) {
  return std::string(function) + ' ' + std::to_string(a) + ' ' + std::to_string(b);
}

void scaling(Collector &collector) {
  static constexpr int kSizes[][4] = {{36, 28, 47, 41}, {64, 48, 32, 24}, {32, 24, 48, 36}, {37, 29, 23, 40}};
  for (const int type : kTypes) {
    for (int quality = 0; quality <= 3; ++quality) {
      for (const auto &s : kSizes) {
        collector.run(type, s[0], s[1], [&](const uint8_t *in, uint8_t *out, int) {
          return zqScaleFrame(in, out, s[0], s[1], s[2], s[3], type, quality);
        });
      }
      collector.finish(named("zqScaleFrame", type, quality));
      for (const auto &s : kSizes) {
        collector.run(type, 70, 60, [&](const uint8_t *in, uint8_t *out, int) {
          return zqScaleCroppedFrame(in, out, 70, 60, 4, 6, s[0], s[1], s[2], s[3], type, quality);
        });
      }
      collector.finish(named("zqScaleCroppedFrame", type, quality));
    }
  }
}

void turning(Collector &collector) {
  static constexpr int kSizes[][2] = {{32, 32}, {36, 20}, {37, 21}};
  for (const int type : kTypes) {
    for (int rotation = 0; rotation <= 8; ++rotation) {
      for (const auto &s : kSizes) {
        collector.run(type, s[0], s[1], [&](const uint8_t *in, uint8_t *out, int) {
          return zqRotateFrame(in, out, s[0], s[1], s[0], s[0], type, rotation);
        });
      }
      collector.finish(named("zqRotateFrame", type, rotation));
      for (const auto &s : kSizes) {
        collector.run(type, 70, 60, [&](const uint8_t *in, uint8_t *out, int) {
          return zqRotateCroppedFrame(in, out, 70, 60, 6, 10, s[0], s[1], s[0] + 4, s[0] + 2, type, rotation);
        });
      }
      collector.finish(named("zqRotateCroppedFrame", type, rotation));
    }
  }
}

void converting(Collector &collector) {
  static constexpr double kCustom[4] = {700.5, -380.25, 890.75, -190.125};
  static constexpr int kSizes[][2] = {{32, 32}, {36, 20}, {37, 21}};
  for (const int inType : kTypes) {
    for (const int outType : kTypes) {
      for (const auto &s : kSizes) {
        for (const double *coefficients : {static_cast<const double *>(nullptr), kCustom}) {
          collector.run(inType, s[0], s[1], [&](const uint8_t *in, uint8_t *out, int stride) {
            return zqColorConvert(in, out, inType, outType, s[0], s[1], stride, coefficients);
          });
        }
      }
      collector.finish(named("zqColorConvert", inType, outType));
    }
  }
}

void placing(Collector &collector) {
  static constexpr int kSizes[][2] = {{32, 32}, {36, 20}, {37, 21}};
  for (int rotation = 0; rotation <= 8; ++rotation) {
    const auto semiPlanar = [&](const char *name, auto function, int type) {
      for (const auto &s : kSizes) {
        collector.run(type, 64, 48, [&](const uint8_t *in, uint8_t *out, int stride) {
          return function(in, out, stride, 48, 4, 6, s[0], s[1], -1, 44, 3, 2, rotation);
        });
      }
      collector.finish(named(name, type, rotation));
    };
    semiPlanar("zqYUV420PlanartoRGB16Rotate", zqYUV420PlanartoRGB16Rotate, COLOR_YUV420_PLANAR);
    semiPlanar("zqYUV420PacktoRGB16Rotate", zqYUV420PacktoRGB16Rotate, COLOR_YUV420_PACK);
    semiPlanar("zqYUV420Pack2toRGB16Rotate", zqYUV420Pack2toRGB16Rotate, COLOR_YUV420_PACK2);
    for (const int type : kTypes) {
      for (const auto &s : kSizes) {
        collector.run(type, 64, 48, [&](const uint8_t *in, uint8_t *out, int) {
          return zqYUV422PacktoRGB16Rotate(type, in, out, 64, -1, 8, 6, s[0], s[1], -1, 44, 3, 2, rotation);
        });
      }
      collector.finish(named("zqYUV422PacktoRGB16Rotate", type, rotation));
    }
  }
}

} // namespace

std::vector<Entry> oneShotEntries() {
  Collector collector;
  scaling(collector);
  turning(collector);
  converting(collector);
  placing(collector);
  return std::move(collector.entries);
}

} // namespace corpus
