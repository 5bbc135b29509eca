#include "picture/bench.h"

#include "picture/levels.h"
#include "picture/reference/exact_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

namespace picture {

namespace {

using reference::OwnPicture;

using Band = std::pair<int, int>; ///< first line, number of lines

/// Bands of any heights, some empty, in any order.
std::vector<Band> anyBands(Random &random, int height) {
  std::vector<Band> bands;
  const int most = between(random, 0, 2) == 0 ? 1 + height / 200 : std::max(1, height / 2);
  for (int line = 0; line < height;) {
    const int lines = std::min(between(random, 0, most), height - line);
    bands.emplace_back(line, lines);
    line += lines;
  }
  std::shuffle(bands.begin(), bands.end(), random);
  return bands;
}

} // namespace

Converter makeConverter(const ZqpConversion &conversion) {
  ZqpConverter *converter = nullptr;
  const int32_t error = zqpConverterMake(&conversion, &converter);
  EXPECT_EQ(error, ZQP_OK) << zqpErrorText(error) << " " << describe(conversion);
  return Converter(converter);
}

std::string difference(const OwnPicture &made, const OwnPicture &expected) {
  for (std::size_t plane = 0; plane < expected.memory().size(); ++plane) {
    const std::vector<uint8_t> &is = made.memory()[plane];
    const std::vector<uint8_t> &wanted = expected.memory()[plane];
    const auto [at, wantedAt] = std::mismatch(is.begin(), is.end(), wanted.begin(), wanted.end());
    if (at != is.end()) {
      std::ostringstream text;
      text << "plane " << plane << " byte " << at - is.begin() << " of " << is.size() << " is " << int{*at} << ", not "
           << int{*wantedAt};
      return text.str();
    }
  }
  return {};
}

reference::Lie anyInputLie(Random &random) {
  reference::Lie lie;
  lie.before = between(random, 0, 17);
  lie.padding = between(random, 0, 1) * between(random, 1, 33);
  lie.isBottomUp = between(random, 0, 3) == 0;
  return lie;
}

reference::Lie anyOutputLie(Random &random) {
  reference::Lie lie = anyInputLie(random);
  lie.before += 64;
  lie.behind = 64;
  return lie;
}

Trial::Trial(const ZqpConversion &c, Content content, uint32_t seed)
    : conversion_(c), random_(seed), in_(c.inFormat, c.inWidth, c.inHeight, anyInputLie(random_), seed),
      blank_(c.outFormat, c.outWidth, c.outHeight, anyOutputLie(random_), seed + 1), expected_(blank_) {
  fill(in_, content, seed);
  convertExactly(c, in_, expected_);
}

std::string Trial::runHere() {
  const Converter converter = makeConverter(conversion_);
  if (!converter) {
    return "it was refused";
  }
  const ZqpPicture in = in_.view();
  OwnPicture made = blank_;
  const ZqpPicture out = made.view();
  int32_t error = zqpConvert(converter.get(), &in, &out);
  std::string report = error == ZQP_OK ? difference(made, expected_) : zqpErrorText(error);
  if (!report.empty()) {
    return report;
  }
  OwnPicture banded = blank_;
  const ZqpPicture outBands = banded.view();
  for (const auto &[first, lines] : anyBands(random_, conversion_.outHeight)) {
    error = zqpConvertLines(converter.get(), &in, &outBands, first, lines);
    if (error != ZQP_OK) {
      return std::string("in bands: ") + zqpErrorText(error);
    }
  }
  report = difference(banded, expected_);
  return report.empty() ? report : "in bands: " + report;
}

std::string Trial::run() {
  const OwnPicture before = in_;
  for (const zqcc::LevelSet levels : levelsHere()) {
    const AtLevel level(levels);
    const std::string report = runHere();
    if (!report.empty()) {
      return describe(conversion_) + " at levels " + std::to_string(levels) + ": " + report;
    }
  }
  const std::string report = difference(in_, before);
  return report.empty() ? report : describe(conversion_) + " changed its input: " + report;
}

} // namespace picture
