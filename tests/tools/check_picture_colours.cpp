// Greys, matrices, ranges, siting and dither, as the options and the streams say them.
#include "picture_bytes.h"
#include "workspace.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace picture_bytes;
using workspace::Folder;
using zqconvert::Size;

namespace {

std::string through(const Folder &folder, const std::string &input, const std::vector<std::string> &options) {
  std::vector<std::string> arguments = options;
  arguments.insert(arguments.end(), {input, folder.path("out.raw")});
  EXPECT_EQ(job(arguments), "");
  return workspace::readFile(folder.path("out.raw"));
}

/// All 256 bytes in one line.
std::string ramp() {
  std::string bytes;
  for (int value = 0; value < 256; ++value) {
    bytes.push_back(static_cast<char>(value));
  }
  return bytes;
}

int byteAt(const std::string &bytes, std::size_t at) {
  return static_cast<uint8_t>(bytes.at(at));
}

int scaled(int value, int from0, int from1, int to0, int to1) {
  const double exact = to0 + (value - from0) * 1.0 * (to1 - to0) / (from1 - from0);
  return static_cast<int>(std::lround(std::clamp(exact, 0.0, 255.0)));
}

TEST(PictureColours, GreysAreExact) {
  const Folder folder;
  const std::string grey = folder.file("grey.raw", ramp());
  const std::string i444 = folder.file("i444.raw", ramp() + std::string(512, '\x80'));
  for (const auto &[range, black, white] : {std::tuple{"limited", 16, 235}, {"full", 0, 255}}) {
    for (const auto &[file, type] : {std::pair{grey, "grey"}, {i444, "i444"}}) {
      const std::vector<std::string> options{"--size", "256x1", "--from", type, "--range", range, "--to", "rgb24"};
      const std::string rgb = through(folder, file, options);
      ASSERT_EQ(rgb.size(), 768U);
      for (std::size_t i = 0; i < rgb.size(); ++i) {
        EXPECT_EQ(byteAt(rgb, i), scaled(static_cast<int>(i / 3), black, white, 0, 255)) << type << " " << range << i;
      }
    }
  }
}

TEST(PictureColours, GreysOfRgbAreGreyInYuv) {
  const Folder folder;
  std::string rgb;
  for (const char value : ramp()) {
    rgb += std::string(3, value);
  }
  const std::string input = folder.file("rgb.raw", rgb);
  for (const auto &[range, black, white] :
       {std::tuple{":limited", 16, 235}, {":full", 0, 255}, {"full:full", 0, 255}, {"full", 16, 235}}) {
    const std::string out =
        through(folder, input, {"--size", "256x1", "--from", "rgb24", "--range", range, "--to", "i444"});
    ASSERT_EQ(out.size(), 768U);
    for (int value = 0; value < 256; ++value) {
      const auto at = static_cast<std::size_t>(value);
      EXPECT_EQ(byteAt(out, at), scaled(value, 0, 255, black, white)) << range << " " << value;
      EXPECT_EQ(byteAt(out, at + 256), 128) << range << " " << value;
      EXPECT_EQ(byteAt(out, at + 512), 128) << range << " " << value;
    }
  }
}

/// Colours in wide steps, none of them out of reach.
Rgb palette(int x, int y) {
  return {20.0 + 30 * (x % 8), 15.0 + 28 * (y % 8), 10.0 + 25 * ((x + 2 * y) % 9)};
}

constexpr Size kPalette{24, 16};
struct Named {
  const char *name;
  double kr, kb;
};
constexpr std::array<Named, 4> kMatrices{
    {{"bt601", 0.299, 0.114}, {"bt709", 0.2126, 0.0722}, {"bt2020", 0.2627, 0.0593}, {"0.25,0.1", 0.25, 0.1}}};

void expectPalette(const std::string &name, const std::string &bytes, const Coding &coding, double tolerance) {
  for (int y = 0; y < kPalette.height; ++y) {
    for (int x = 0; x < kPalette.width; ++x) {
      const Rgb want = palette(x, y);
      const Rgb got = decode(name, kPalette, coding, bytes, x, y);
      for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_NEAR(got.at(i), want.at(i), tolerance) << x << "," << y << " component " << i;
      }
    }
  }
}

TEST(PictureColours, MatricesAndRangesAreWhatTheyAreCalled) {
  const Folder folder;
  for (const Named &matrix : kMatrices) {
    for (const bool full : {false, true}) {
      const Coding coding{matrix.kr, matrix.kb, full};
      SCOPED_TRACE(std::string(matrix.name) + (full ? " full" : " limited"));
      const std::string range = full ? "full" : "limited";
      const std::string size = zqconvert::toText(kPalette);
      const std::string yuv = folder.file("yuv.raw", encode("i444", kPalette, coding, palette));
      const std::string rgb = folder.file("rgb.raw", encode("rgb24", kPalette, coding, palette));
      expectPalette(
          "rgb24",
          through(folder, yuv,
                  {"--size", size, "--from", "i444", "--matrix", matrix.name, "--range", range, "--to", "rgb24"}),
          coding, full ? 2.0 : 2.5);
      expectPalette(
          "i444",
          through(folder, rgb,
                  {"--size", size, "--from", "rgb24", "--matrix", matrix.name, "--range", ":" + range, "--to", "i444"}),
          coding, full ? 2.0 : 2.5);
    }
  }
}

TEST(PictureColours, YuvIsRecodedFromOneMatrixAndRangeToAnother) {
  const Folder folder;
  const std::string yuv = folder.file("yuv.raw", encode("i444", kPalette, {0.299, 0.114, true}, palette));
  const std::vector<std::string> raw{"--size", zqconvert::toText(kPalette), "--from", "i444", "--to", "i444"};
  std::vector<std::string> options = raw;
  options.insert(options.end(), {"--matrix", "bt601:bt709", "--range", "full:limited"});
  expectPalette("i444", through(folder, yuv, options), {0.2126, 0.0722, false}, 4.0);
  // Nothing is recoded unless asked for: what is said of the input holds for the output.
  options = raw;
  options.insert(options.end(), {"--matrix", "bt709", "--range", "full"});
  EXPECT_TRUE(through(folder, yuv, options) == workspace::readFile(yuv));
  EXPECT_TRUE(through(folder, yuv, raw) == workspace::readFile(yuv));
}

TEST(PictureColours, ColumnsOfChromaStandWhereTheSitingSays) {
  const Folder folder;
  // One column of colour between grey ones, in full range: red tells where the chroma stands.
  const std::string luma(32, '\x80');
  const std::string u(16, '\x80');
  std::string v(16, '\x80');
  v[8] = '\xC0';
  const std::string raw = folder.file("i422.raw", luma + u + v);
  const auto red = [&](const std::string &siting) {
    const std::string out = through(
        folder, raw, {"--size", "32x1", "--from", "i422", "--range", "full", "--siting", siting, "--to", "rgb24"});
    std::array<int, 6> reds{};
    for (std::size_t i = 0; i < reds.size(); ++i) {
      reds.at(i) = byteAt(out, 3 * (14 + i));
    }
    return reds;
  };
  // 1.402 times 64 is 89.7 more red, or as much of it as is near.
  EXPECT_EQ(red("left"), (std::array{128, 173, 218, 173, 128, 128}));
  EXPECT_EQ(red("centre"), (std::array{128, 150, 195, 195, 150, 128}));
}

TEST(PictureColours, DitherKeepsTheMeanBetweenTwoSteps) {
  const Folder folder;
  constexpr int kValue = 100; // lies between steps of five and of six bits
  const std::string rgb = folder.file("rgb.raw", std::string(16 * 16 * 3, static_cast<char>(kValue)));
  const auto mean = [&](const char *dither) {
    const std::string words =
        through(folder, rgb, {"--size", "16x16", "--from", "rgb24", "--to", "rgb565", "--dither", dither});
    double sum = 0;
    for (int i = 0; i < 256; ++i) {
      sum += decode("rgb565", {16, 16}, {}, words, i % 16, i / 16)[0];
    }
    return sum / 256;
  };
  EXPECT_NEAR(mean("none"), std::lround(kValue * 31 / 255.0) * 255 / 31.0, 1e-9);
  EXPECT_NEAR(mean("ordered"), kValue, 0.2);
}

} // namespace
