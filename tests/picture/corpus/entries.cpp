// The corpus of zqPicture: every pair of formats by every filter, at the input's size and at others, in all
// orientations; matrices and ranges of both sides; what is refused.
#include "conversions.h"
#include "corpus/hash_file.h"

#include <initializer_list>
#include <utility>

namespace corpus {

const char *const kNamesAre =
    "in out filter at the same size or resized, in out orientation, or in out and what is changed";

namespace {

constexpr int32_t kFormats = ZQP_RGB_PLANES;
constexpr int32_t kOutputs = ZQP_BGRA;
constexpr int32_t kFilters = ZQP_FILTER_AREA + 1;
constexpr int32_t kOrientations = 8;

constexpr ZqpRect kAll = {0, 0, 0, 0};

// Odd sizes first, one pixel, single lines and columns, several chunks of a row, crops that begin anywhere; all kinds
// of addresses and strides.
constexpr Geometry kSameSize[] = {
    {37, 21, kAll, 0, 0, {0, 1, false}},
    {1, 1, kAll, 0, 0, {3, 1, false}},
    {131, 3, kAll, 0, 0, {1, 1, true}},
    {64, 16, kAll, 0, 0, {0, 64, false}},
    {50, 35, {3, 5, 41, 27}, 0, 0, {7, 4, false}},
    {2, 67, kAll, 0, 0, {5, 2, true}},
    {2000, 2, kAll, 0, 0, {9, 1, false}},
    {80, 40, {16, 8, 33, 17}, 0, 0, {0, 16, false}},
};

// Up and down, whole ratios and others, one way each, to and from a single pixel.
constexpr Geometry kResized[] = {
    {37, 29, kAll, 23, 41, {1, 1, false}},
    {36, 28, kAll, 47, 41, {0, 4, false}},
    {64, 48, kAll, 32, 24, {0, 16, false}},
    {50, 40, {3, 5, 41, 31}, 17, 9, {5, 1, true}},
    {5, 3, kAll, 1, 1, {2, 1, false}},
    {1, 1, kAll, 9, 6, {0, 1, false}},
    {300, 6, kAll, 71, 6, {11, 1, false}},
    {9, 200, {1, 0, 7, 199}, 7, 31, {0, 8, false}},
    {700, 4, kAll, 1300, 3, {0, 1, false}},
    {48, 36, {7, 7, 12, 9}, 48, 36, {6, 2, true}},
    {33, 17, {32, 16, 1, 1}, 3, 3, {0, 1, false}},
};

constexpr Geometry kTurned[] = {
    {41, 35, kAll, 0, 0, {0, 1, false}},
    {67, 9, {1, 1, 64, 7}, 0, 0, {3, 1, true}},
    {30, 44, kAll, 25, 37, {0, 4, false}},
};

std::string words(std::initializer_list<int32_t> numbers) {
  std::string text;
  for (const int32_t number : numbers) {
    text += (text.empty() ? "" : " ") + std::to_string(number);
  }
  return text;
}

/// Numbers that are the same everywhere and little alike from one to the next.
uint32_t mixed(uint32_t number) {
  number = (number ^ number >> 15) * 0x2C1B3C6DU;
  number = (number ^ number >> 12) * 0x297A2D39U;
  return number ^ number >> 15;
}

template <std::size_t count>
Entry filtered(int32_t in, int32_t out, int32_t filter, const Geometry (&geometries)[count], const char *kind) {
  Hash hash;
  auto number = static_cast<uint32_t>((in * 32 + out) * 4 + filter);
  for (const Geometry &geometry : geometries) {
    number = mixed(number + static_cast<uint32_t>(geometry.inWidth));
    ZqpConversion c = conversionOf(in, out, geometry, 1 + static_cast<int32_t>(number / 8 % 3 == 0 ? number % 8 : 0));
    c.filter = filter;
    c.dither = static_cast<int32_t>(number >> 8 & 1U);
    c.inColours = coloursBy(number >> 10);
    c.outColours = (number >> 9 & 1U) != 0 ? coloursBy(number >> 16) : c.inColours;
    convert(c, geometry.lie, number >> 4, hash);
  }
  return {words({in, out, filter}) + kind, hash.value()};
}

Entry turned(int32_t in, int32_t out, int32_t orientation) {
  Hash hash;
  uint32_t number = mixed(static_cast<uint32_t>((in * 32 + out) * 16 + orientation));
  for (const Geometry &geometry : kTurned) {
    ZqpConversion c = conversionOf(in, out, geometry, orientation);
    c.dither = orientation % 2;
    c.filter = static_cast<int32_t>(number % kFilters);
    c.inColours.siting = static_cast<int32_t>(number >> 5 & 1U);
    c.outColours.siting = static_cast<int32_t>(number >> 6 & 1U);
    convert(c, geometry.lie, ++number, hash);
  }
  return {words({in, out}) + " orientation " + std::to_string(orientation), hash.value()};
}

/// Every matrix and range from and to.
void addColours(int32_t in, int32_t out, std::vector<Entry> &entries) {
  constexpr uint32_t kColours = 12;
  for (uint32_t from = 0; from < kColours; ++from) {
    for (uint32_t to = 0; to < kColours; ++to) {
      ZqpConversion c = conversionOf(in, out, {67, 23, kAll, 0, 0, {}}, 1);
      c.inColours = coloursBy(from);
      c.outColours = coloursBy(to + 24);
      Hash hash;
      convert(c, {0, 1, false}, 2 * (from * kColours + to), hash);
      entries.push_back(
          {words({in, out}) + " colours " + std::to_string(from) + ' ' + std::to_string(to), hash.value()});
    }
  }
}

/// Codes of descriptions with one field of any number.
Entry refused(const char *name, int32_t ZqpConversion::*field) {
  Hash hash;
  for (const int32_t value : {-1, 0, 1, 2, 3, 4, 9, 17, 18, 25, 26, 32768, 32769, INT32_MAX, INT32_MIN}) {
    ZqpConversion c = conversionOf(ZQP_NV12, ZQP_RGB565, {16, 8, {1, 1, 3, 3}, 4, 4, {}}, 1);
    c.*field = value;
    ZqpConverter *converter = nullptr;
    hash.add(static_cast<uint32_t>(zqpConverterMake(&c, &converter)));
    zqpConverterFree(converter);
  }
  return {std::string("codes by ") + name, hash.value()};
}

} // namespace

std::vector<Entry> allEntries() {
  std::vector<Entry> entries;
  for (int32_t in = 1; in <= kFormats; ++in) {
    for (int32_t out = 1; out <= kOutputs; ++out) {
      for (int32_t filter = 0; filter < kFilters; ++filter) {
        entries.push_back(filtered(in, out, filter, kSameSize, " same size"));
        entries.push_back(filtered(in, out, filter, kResized, " resized"));
      }
      for (int32_t orientation = 1; orientation <= kOrientations; ++orientation) {
        entries.push_back(turned(in, out, orientation));
      }
    }
  }
  using Pair = std::pair<int32_t, int32_t>;
  for (const auto &[in, out] : {Pair{ZQP_NV12, ZQP_BGRA}, Pair{ZQP_BGRA, ZQP_I420}, Pair{ZQP_I444, ZQP_RGB565},
                                Pair{ZQP_YUYV, ZQP_NV12}, Pair{ZQP_RGB24, ZQP_BGR24}, Pair{ZQP_GREY, ZQP_RGB24}}) {
    addColours(in, out, entries);
  }
  entries.push_back(refused("input format", &ZqpConversion::inFormat));
  entries.push_back(refused("output format", &ZqpConversion::outFormat));
  entries.push_back(refused("input width", &ZqpConversion::inWidth));
  entries.push_back(refused("output height", &ZqpConversion::outHeight));
  entries.push_back(refused("orientation", &ZqpConversion::orientation));
  entries.push_back(refused("filter", &ZqpConversion::filter));
  entries.push_back(refused("dither", &ZqpConversion::dither));
  return entries;
}

} // namespace corpus
