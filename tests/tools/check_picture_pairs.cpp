// Every way in and every way out of zqPicture, and the colours that arrive.
#include "picture_bytes.h"
#include "workspace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace picture_bytes;
using workspace::Folder;
using zqconvert::Size;

namespace {

constexpr Size kSize{37, 29}; // no side is a whole number of chroma samples of any kind

/// Four fields of colour; what is looked at is far from their borders.
Rgb fields(int x, int y) {
  constexpr std::array<Rgb, 4> kColours{Rgb{200, 40, 90}, Rgb{30, 170, 60}, Rgb{60, 70, 220}, Rgb{230, 210, 150}};
  return kColours.at((x < 20 ? 0U : 1U) + (y < 16 ? 0U : 2U));
}

constexpr std::array<std::array<int, 2>, 4> kSpots{{{9, 7}, {29, 7}, {9, 23}, {28, 23}}};

Rgb greyOf(const Rgb &colour) {
  const double luma = 0.299 * colour[0] + 0.587 * colour[1] + 0.114 * colour[2];
  return {luma, luma, luma};
}

/// How far a colour may be off: 8-bit YUV cannot say every colour, and RGB565 has steps of 8 and 4.
double tolerance(const std::string &name) {
  return name.starts_with("rgb565") || name == "rgb16alt" ? 4.2 : isYuv(name) ? 2.0 : 1.0;
}

void expectFields(const std::function<Rgb(int, int)> &at, bool grey, double tolerance) {
  for (const auto &[x, y] : kSpots) {
    const Rgb want = grey ? greyOf(fields(x, y)) : fields(x, y);
    const Rgb got = at(x, y);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(got.at(i), want.at(i), tolerance) << "component " << i << " at " << x << "," << y;
    }
  }
}

/// `pixels` are bytes R, G, B.
Rgb pixelAt(const std::string &pixels, int x, int y) {
  const auto at = static_cast<std::size_t>(3 * (y * kSize.width + x));
  const auto byte = [&](std::size_t i) { return 1.0 * static_cast<uint8_t>(pixels.at(at + i)); };
  return {byte(0), byte(1), byte(2)};
}

/// Of a stream of one frame.
std::string planesOf(const std::string &y4m) {
  const std::size_t frame = y4m.find("\nFRAME\n");
  return frame == std::string::npos ? "" : y4m.substr(frame + 7);
}

class PicturePairs : public testing::TestWithParam<std::string> {
protected:
  void SetUp() override {
    const Coding coding;
    input_ = folder_.file("in.data", encode(GetParam(), kSize, coding, fields));
  }
  std::string convert(const std::string &output, const std::vector<std::string> &options = {}) {
    std::vector<std::string> arguments{"--size", zqconvert::toText(kSize), "--from", GetParam()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), {input_, folder_.path(output)});
    const std::string wrong = job(arguments);
    EXPECT_EQ(wrong, "");
    return wrong.empty() ? workspace::readFile(folder_.path(output)) : "";
  }
  [[nodiscard]] double off(const std::string &output) const { return tolerance(GetParam()) + tolerance(output); }

  Folder folder_;
  std::string input_;
};

TEST_P(PicturePairs, EveryRawTypeIsMadeOfIt) {
  for (const std::string &name : outputNames()) {
    SCOPED_TRACE(GetParam() + " to " + name);
    const std::string bytes = convert("out.raw", {"--to", name});
    ASSERT_EQ(bytes.size(), bytesOf(name, kSize));
    const bool grey = isGrey(GetParam()) || isGrey(name);
    expectFields([&](int x, int y) { return decode(name, kSize, {}, bytes, x, y); }, grey, off(name));
    // The name of a file says as much as --to.
    EXPECT_TRUE(convert("out." + name) == bytes);
  }
}

TEST_P(PicturePairs, EveryFileToLookAtIsMadeOfIt) {
  for (const char *type : {"", "rgb565", "rgb565be", "rgb24", "bgr24", "rgba", "bgra", "grey"}) {
    const std::vector<std::string> to =
        *type == '\0' ? std::vector<std::string>{} : std::vector<std::string>{"--to", type};
    const std::string steps = *type == '\0' ? "rgb24" : type;
    const bool grey = isGrey(GetParam()) || steps == "grey";
    for (const char *format : {"png", "ppm"}) {
      SCOPED_TRACE(GetParam() + " to " + type + " in " + format);
      Size size;
      const std::string file = convert(std::string("out.") + format, to);
      const std::string pixels = *(format + 1) == 'n' ? pixelsOfPng(file, size) : pixelsOfPpm(file, size);
      ASSERT_EQ(size, kSize);
      expectFields([&](int x, int y) { return pixelAt(pixels, x, y); }, grey, off(steps == "grey" ? "rgb24" : steps));
    }
    SCOPED_TRACE(GetParam() + " to " + type + " in bmp");
    ASSERT_FALSE(convert("out.bmp", to).empty());
    EXPECT_EQ(job({folder_.path("out.bmp"), folder_.path("back.ppm")}), "");
    Size size;
    const std::string pixels = pixelsOfPpm(workspace::readFile(folder_.path("back.ppm")), size);
    expectFields([&](int x, int y) { return pixelAt(pixels, x, y); }, grey, off(steps == "grey" ? "rgb24" : steps));
  }
}

TEST_P(PicturePairs, EveryStreamIsMadeOfIt) {
  for (const char *type : {"i420", "i422", "i444", "grey"}) {
    SCOPED_TRACE(GetParam() + " to " + type);
    const std::string planes = planesOf(convert("out.y4m", {"--to", type}));
    ASSERT_EQ(planes.size(), bytesOf(type, kSize));
    const bool grey = isGrey(GetParam()) || isGrey(type);
    expectFields([&](int x, int y) { return decode(type, kSize, {}, planes, x, y); }, grey, off(type));
  }
  // A stream always has U first.
  EXPECT_TRUE(planesOf(convert("v.y4m", {"--to", "yv12"})) == planesOf(convert("u.y4m", {"--to", "i420"})));
  EXPECT_TRUE(planesOf(convert("v.y4m", {"--to", "yv16"})) == planesOf(convert("u.y4m", {"--to", "i422"})));
}

// What goes out comes in again, as a stream and as a picture.
TEST_P(PicturePairs, StreamsAndPicturesComeInAgain) {
  const bool grey = isGrey(GetParam());
  for (const char *file : {"way.y4m", "way.png", "way.bmp"}) {
    ASSERT_FALSE(convert(file).empty());
    for (const std::string &name : outputNames()) {
      SCOPED_TRACE(GetParam() + " by " + file + " to " + name);
      ASSERT_EQ(job({"--to", name, folder_.path(file), folder_.path("out.raw")}), "");
      const std::string bytes = workspace::readFile(folder_.path("out.raw"));
      ASSERT_EQ(bytes.size(), bytesOf(name, kSize));
      expectFields([&](int x, int y) { return decode(name, kSize, {}, bytes, x, y); }, grey || isGrey(name),
                   off(name) + 2);
    }
  }
}

// To the last column and line, whose chroma no other pixels share.
TEST(PictureCopies, OddPicturesStayAsTheyAre) {
  const Folder folder;
  for (const std::string &name : outputNames()) {
    const auto copied = [&](const std::string &bytes) {
      const std::string in = folder.file("in.data", bytes);
      const std::string out = folder.path("out.data");
      EXPECT_EQ(job({"--size", zqconvert::toText(kSize), "--from", name, "--to", name, in, out}), "");
      return workspace::readFile(out);
    };
    const std::string noise = workspace::bytes(bytesOf(name, kSize), 8);
    const std::string once = copied(noise);
    const bool packed = bytesOf(name, {1, 1}) == 4 && isYuv(name);
    // The last group of packed lines has room for a pixel that is not there.
    EXPECT_TRUE(packed || once == noise) << name;
    EXPECT_TRUE(copied(once) == once) << name;
  }
}

std::string testName(const testing::TestParamInfo<std::string> &test) {
  std::string name = test.param;
  std::ranges::replace(name, '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(All, PicturePairs, testing::ValuesIn(inputNames()), testName);

} // namespace
