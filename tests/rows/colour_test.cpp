// Rows of bytes of one component: every stage at every level.
#include "rows/colour_lines.h"
#include "rows/colour_reading.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace zqp;
using namespace zqp::lines;

class ColourRows : public testing::TestWithParam<zqcc::Level> {
protected:
  static const ColourStages &stages() { return stagesAt(GetParam()); }

  int16_t word() {
    constexpr int16_t kEnds[4] = {0, 1, 32639, 32640};
    const auto chosen = random() % 20;
    return chosen < 4 ? kEnds[chosen] : static_cast<int16_t>(random() % 32641);
  }
  void fill(Row<int16_t> &row, size_t count) {
    for (size_t x = 0; x < count; ++x) {
      row[x] = word();
    }
  }
  void fill(Row<uint8_t> &row, size_t count) {
    for (size_t x = 0; x < count; ++x) {
      row[x] = static_cast<uint8_t>(random());
    }
  }

  std::mt19937 random{3};
};
INSTANTIATE_TEST_SUITE_P(Levels, ColourRows, testing::ValuesIn(levels()),
                         [](const auto &level) { return std::to_string(level.param); });

/// A row that is made between guards.
class Made {
public:
  explicit Made(size_t count) : memory(count + 2 * kGuards + count % 9, kGuard), skew(kGuards + count % 9) {}
  uint8_t *to() { return memory.data() + skew; }
  void expect(const std::vector<int32_t> &wanted) const {
    std::vector<uint8_t> all(memory.size(), kGuard);
    for (size_t x = 0; x < wanted.size(); ++x) {
      all[skew + x] = static_cast<uint8_t>(wanted[x]);
    }
    ASSERT_EQ(memory, all) << wanted.size() << " columns";
  }

private:
  std::vector<uint8_t> memory;
  size_t skew;
};

const Component &componentOf(size_t number) {
  static const std::vector<Component> components = [] {
    std::vector<Component> all;
    for (const int32_t most : {255, 31, 63}) {
      for (const reading::Range &in : {reading::kLimited, reading::kFull}) {
        for (const reading::Range &out : {reading::kFull, reading::kLimited}) {
          all.push_back(reading::componentOf(in, out, most, 0, 0));
        }
      }
    }
    return all;
  }();
  return components[number % components.size()];
}

int32_t grey(const Component &component, int32_t s, const Rounding &rounding, size_t x) {
  const uint16_t *eight = reading::roundingOf(rounding, component.most);
  return reading::component(component, {s, 32768, 32768}, eight[x % 8]);
}

TEST_P(ColourRows, Components) {
  for (size_t width = 1; width <= 400; ++width) {
    const Component &component = componentOf(width);
    const Rounding rounding = reading::dither(static_cast<int32_t>(width % 8));
    Row<uint8_t> bytes(width, width % 5);
    Row<int16_t> words(width, width % 3);
    fill(bytes, width);
    fill(words, width);
    std::vector<int32_t> ofBytes;
    std::vector<int32_t> ofWords;
    for (size_t x = 0; x < width; ++x) {
      ofBytes.push_back(grey(component, bytes[x] << 8, rounding, x));
      ofWords.push_back(grey(component, 2 * words[x], rounding, x));
    }
    Made made(width);
    const auto count = static_cast<int32_t>(width);
    const uint16_t *eight = reading::roundingOf(rounding, component.most);
    stages().componentOfBytes(bytes.begin(), component, eight, count, made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(ofBytes));
    stages().componentOfWords(words.begin(), component, eight, count, made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(ofWords));
  }
}

TEST_P(ColourRows, EveryWordOfEveryComponent) {
  Row<int16_t> words(32641, 0);
  for (size_t x = 0; x < 32641; ++x) {
    words[x] = static_cast<int16_t>(x);
  }
  Made made(32641);
  std::vector<int32_t> wanted(32641);
  for (size_t number = 0; number < 12; ++number) {
    const Component &component = componentOf(number);
    for (size_t x = 0; x < wanted.size(); ++x) {
      wanted[x] = grey(component, 2 * static_cast<int32_t>(x), reading::halves(), x);
    }
    const Rounding rounding = reading::halves();
    stages().componentOfWords(words.begin(), component, reading::roundingOf(rounding, component.most), 32641,
                              made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(wanted));
  }
  for (size_t x = 0; x < wanted.size(); ++x) {
    wanted[x] = (static_cast<int32_t>(x) + 64) >> 7;
  }
  stages().bytesOfWords(words.begin(), 32641, made.to());
  ASSERT_NO_FATAL_FAILURE(made.expect(wanted));
}

TEST_P(ColourRows, BytesOfWords) {
  for (size_t width = 1; width <= 200; ++width) {
    Row<int16_t> words(width, width % 7);
    fill(words, width);
    std::vector<int32_t> wanted;
    for (size_t x = 0; x < width; ++x) {
      wanted.push_back((words[x] + 64) >> 7);
    }
    Made made(width);
    stages().bytesOfWords(words.begin(), static_cast<int32_t>(width), made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(wanted));
  }
}

/// Numbers of all sizes: sums of any may saturate.
YuvOfYuv anyColours(std::mt19937 &random) {
  const auto any = [&random] { return static_cast<int16_t>(static_cast<int32_t>(random() % 65535) - 32767); };
  const auto small = [&random] { return static_cast<int16_t>(static_cast<int32_t>(random() % 12001) - 6000); };
  const Level luma = random() % 2 == 0 ? reading::levelOf(reading::kLimited, reading::kFull, 255, 6)
                                       : reading::levelOf(reading::kFull, reading::kLimited, 255, 6);
  const Level rounded = {luma.factor, static_cast<int16_t>(luma.bias + 32)};
  if (random() % 2 == 0) {
    return {rounded, any(), any(), any(), any(), any(), any()};
  }
  return {rounded, small(), small(), small(), small(), small(), small()};
}

TEST_P(ColourRows, YuvOfYuv) {
  for (size_t width = 1; width <= 400; ++width) {
    const YuvOfYuv c = anyColours(random);
    Row<int16_t> rows[3] = {{width, width % 5}, {width, width % 3}, {width, width % 7}};
    std::vector<int32_t> wanted[3];
    for (auto &row : rows) {
      fill(row, width);
    }
    for (size_t x = 0; x < width; ++x) {
      const int32_t u = 2 * rows[1][x] - 32768;
      const int32_t v = 2 * rows[2][x] - 32768;
      const auto sum = [u, v](int32_t ofU, int32_t ofV) {
        return reading::sat(reading::f(u, ofU) + reading::f(v, ofV));
      };
      const int32_t y = reading::sat(reading::lumaOf(c.luma, 2 * rows[0][x]) + sum(c.lumaU, c.lumaV));
      wanted[0].push_back(std::clamp(y >> 6, 0, 255));
      wanted[1].push_back(std::clamp((sum(c.uu, c.uv) + 8224) >> 6, 0, 255));
      wanted[2].push_back(std::clamp((sum(c.vu, c.vv) + 8224) >> 6, 0, 255));
    }
    Made made[3] = {Made(width), Made(width), Made(width)};
    const auto count = static_cast<int32_t>(width);
    stages().lumaOfYuv({rows[0].begin(), rows[1].begin(), rows[2].begin()}, c, count, made[0].to());
    stages().chromaOfYuv(rows[1].begin(), rows[2].begin(), c, count, made[1].to(), made[2].to());
    for (size_t i = 0; i < 3; ++i) {
      ASSERT_NO_FATAL_FAILURE(made[i].expect(wanted[i])) << "row " << i;
    }
  }
}

/// Luma, U and V of RGB, as the page has them.
Sum sumOf(size_t number) {
  const reading::Matrix &m = reading::kMatrices[number % 3];
  const reading::Range &in = number % 5 < 2 ? reading::kLimited : reading::kFull;
  const reading::Range &out = number % 7 < 3 ? reading::kFull : reading::kLimited;
  const double c = 16384 * out.chroma / (in.white - in.black);
  const double k = 16384 * (out.white - out.black) / (in.white - in.black);
  const auto word = [](int32_t a) { return static_cast<int16_t>(a); };
  using reading::nearest;
  if (number % 4 == 0) {
    const int32_t kr = nearest(-c * m.kr / (2 * (1 - m.kb)));
    const int32_t kb = nearest(c / 2);
    return {word(kr), word(-kr - kb), word(kb), (1 << 20) + 128 * (1 << 21)};
  }
  if (number % 4 == 1) {
    const int32_t kr = nearest(c / 2);
    const int32_t kb = nearest(-c * m.kb / (2 * (1 - m.kr)));
    return {word(kr), word(-kr - kb), word(kb), (1 << 20) + 128 * (1 << 21)};
  }
  const int32_t kr = nearest(k * m.kr);
  const int32_t kb = nearest(k * m.kb);
  const auto bias = static_cast<int32_t>((1 << 20) + (1 << 21) * out.black - 128 * in.black * nearest(k));
  return {word(kr), word(nearest(k) - kr - kb), word(kb), bias + static_cast<int32_t>(number % 3)};
}

int32_t weighed(const Sum &sum, int64_t red, int64_t green, int64_t blue) {
  const int64_t all = sum.red * red + sum.green * green + sum.blue * blue + sum.bias;
  return static_cast<int32_t>(std::clamp<int64_t>(all >> 21, 0, 255));
}

TEST_P(ColourRows, Sums) {
  for (size_t width = 1; width <= 1000; ++width) {
    const Sum sum = sumOf(width);
    Row<uint8_t> bytes[3] = {{width, width % 5}, {width, width % 3}, {width, width % 7}};
    Row<int16_t> words[3] = {{width, width % 5}, {width, width % 3}, {width, width % 7}};
    for (size_t row = 0; row < 3; ++row) {
      fill(bytes[row], width);
      fill(words[row], width);
    }
    std::vector<int32_t> ofBytes;
    std::vector<int32_t> ofWords;
    for (size_t x = 0; x < width; ++x) {
      ofBytes.push_back(weighed(sum, 128 * bytes[0][x], 128 * bytes[1][x], 128 * bytes[2][x]));
      ofWords.push_back(weighed(sum, words[0][x], words[1][x], words[2][x]));
    }
    Made made(width);
    const auto count = static_cast<int32_t>(width);
    const uint8_t *const fromBytes[3] = {bytes[0].begin(), bytes[1].begin(), bytes[2].begin()};
    stages().sumOfBytes(fromBytes, sum, count, made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(ofBytes));
    const int16_t *const fromWords[3] = {words[0].begin(), words[1].begin(), words[2].begin()};
    stages().sumOfWords(fromWords, sum, count, made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(ofWords));
  }
}

/// Rows of pixels of four bytes, with anything for alpha.
TEST_P(ColourRows, SumsOfFourBytes) {
  for (size_t width = 1; width <= 700; ++width) {
    Row<uint8_t> lines[2] = {{4 * width, width % 5}, {4 * width, width % 3}};
    fill(lines[0], 4 * width);
    fill(lines[1], 4 * width);
    const bool isBlueFirst = width % 2 == 0;
    const size_t red = isBlueFirst ? 2 : 0;
    const Sum sums[2] = {sumOf(width), sumOf(width + 1)};
    const auto sumUp = [&](size_t component, size_t column, size_t columns) {
      int64_t all = 0;
      for (size_t x = column; x < column + columns; ++x) {
        all += lines[0][4 * x + component] + lines[1][4 * x + component];
      }
      return all * 64 / static_cast<int64_t>(columns); // a mean in units of 1/128
    };
    std::vector<int32_t> luma;
    std::vector<int32_t> chroma[2];
    for (size_t x = 0; x < width; ++x) {
      luma.push_back(
          weighed(sums[0], 128 * lines[0][4 * x + red], 128 * lines[0][4 * x + 1], 128 * lines[0][4 * x + 2 - red]));
    }
    for (size_t x = 0; x < width; x += 2) {
      const size_t columns = std::min<size_t>(2, width - x);
      for (size_t c = 0; c < 2; ++c) {
        chroma[c].push_back(weighed(sums[c], sumUp(red, x, columns), sumUp(1, x, columns), sumUp(2 - red, x, columns)));
      }
    }
    const auto pixels = static_cast<int32_t>(width);
    Made made(width);
    stages().lumaOfFourBytes(lines[0].begin(), isBlueFirst, sums[0], pixels, made.to());
    ASSERT_NO_FATAL_FAILURE(made.expect(luma));
    Made u(chroma[0].size());
    Made v(chroma[1].size());
    stages().chromaOfFourBytes(lines[0].begin(), lines[1].begin(), isBlueFirst, sums, pixels, u.to(), v.to());
    ASSERT_NO_FATAL_FAILURE(u.expect(chroma[0]));
    ASSERT_NO_FATAL_FAILURE(v.expect(chroma[1]));
  }
}

/// Words of a line of chroma that stands on the first of two columns: each column counts as much as lies within half a
/// sample of the place, and what lies outside of the picture does not.
std::vector<int32_t> leftWords(Row<uint8_t> (&lines)[2], size_t component, size_t first, size_t width) {
  std::vector<int32_t> words;
  for (size_t x = first; x < width; x += 2) {
    int64_t all = 0;
    int64_t weights = 0;
    const auto add = [&](size_t column, int64_t weight) {
      all += weight * 64 * (lines[0][4 * column + component] + lines[1][4 * column + component]);
      weights += weight;
    };
    const bool isCut = x == 0 || x + 1 >= width;
    const bool isAlone = width == 1;
    add(x, isAlone ? 16384 : isCut ? 10923 : 8192);
    if (x > 0) {
      add(x - 1, isCut ? 5461 : 4096);
    }
    if (x + 1 < width) {
      add(x + 1, isCut ? 5461 : 4096);
    }
    EXPECT_EQ(weights, 16384);
    words.push_back(static_cast<int32_t>((all + 8192) >> 14));
  }
  return words;
}

TEST_P(ColourRows, LeftChromaOfFourBytes) {
  for (size_t width = 1; width <= 700; ++width) {
    for (const size_t first : {size_t{0}, size_t{2}}) {
      if (first >= width) {
        continue;
      }
      Row<uint8_t> lines[2] = {{4 * width, width % 5}, {4 * width, width % 3}};
      fill(lines[0], 4 * width);
      fill(lines[1], 4 * width);
      const bool isBlueFirst = width % 2 == 0;
      const size_t red = isBlueFirst ? 2 : 0;
      const Sum sums[2] = {sumOf(width), sumOf(width + 1)};
      const std::vector<int32_t> reds = leftWords(lines, red, first, width);
      const std::vector<int32_t> greens = leftWords(lines, 1, first, width);
      const std::vector<int32_t> blues = leftWords(lines, 2 - red, first, width);
      std::vector<int32_t> chroma[2];
      for (size_t c = 0; c < 2; ++c) {
        for (size_t x = 0; x < reds.size(); ++x) {
          chroma[c].push_back(weighed(sums[c], reds[x], greens[x], blues[x]));
        }
      }
      Made u(chroma[0].size());
      Made v(chroma[1].size());
      stages().leftChromaOfFourBytes(lines[0].begin() + 4 * first, lines[1].begin() + 4 * first, isBlueFirst, sums,
                                     first > 0, static_cast<int32_t>(width - first), u.to(), v.to());
      ASSERT_NO_FATAL_FAILURE(u.expect(chroma[0]));
      ASSERT_NO_FATAL_FAILURE(v.expect(chroma[1]));
    }
  }
}

} // namespace
