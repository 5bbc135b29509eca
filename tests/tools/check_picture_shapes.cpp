// Parts, turns, sizes and filters of zqPicture by the program, and the same bytes on any number of threads.
#include "picture_bytes.h"
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

using namespace picture_bytes;
using workspace::Folder;
using workspace::Outcome;
using zqconvert::Size;

namespace {

/// A raw picture of rgb24 and what the program makes of it, RGB again.
class PictureShapes : public testing::Test {
protected:
  static constexpr Size kSize{13, 9};

  void SetUp() override { input_ = folder_.file("in.raw", noise_); }
  std::string convert(std::vector<std::string> options) {
    options.insert(options.end(),
                   {"--size", "13x9", "--from", "rgb24", "--to", "rgb24", input_, folder_.path("out.raw")});
    EXPECT_EQ(job(options), "");
    return workspace::readFile(folder_.path("out.raw"));
  }
  /// The picture whose pixel x, y is pixel from(x, y) of the input.
  template <class From>
  std::string picked(Size size, From from) const {
    std::string bytes;
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        const auto [column, line] = from(x, y);
        bytes += noise_.substr(static_cast<std::size_t>(3 * (line * kSize.width + column)), 3);
      }
    }
    return bytes;
  }

  Folder folder_;
  std::string noise_ = workspace::bytes(std::size_t{3} * 13 * 9, 4);
  std::string input_;
};

TEST_F(PictureShapes, PartsBeginAnywhere) {
  EXPECT_TRUE(convert({"--crop", "5,3,7,5"}) == picked({7, 5}, [](int x, int y) { return std::pair{x + 5, y + 3}; }));
  EXPECT_TRUE(convert({"--crop", "12,8,1,1"}) == picked({1, 1}, [](int, int) { return std::pair{12, 8}; }));
}

TEST_F(PictureShapes, TurnsAndMirroringsAndBoth) {
  using Pixel = std::pair<int, int>;
  const int right = kSize.width - 1;
  const int bottom = kSize.height - 1;
  const Size stands{kSize.height, kSize.width};
  const auto expect = [&](const std::vector<std::string> &options, Size size, auto from) {
    EXPECT_TRUE(convert(options) == picked(size, from)) << testing::PrintToString(options);
  };
  const auto clockwise = [&](int x, int y) { return Pixel{y, bottom - x}; };
  const auto anticlockwise = [&](int x, int y) { return Pixel{right - y, x}; };
  const auto upsideDown = [&](int x, int y) { return Pixel{right - x, bottom - y}; };
  expect({"--rotate", "right"}, stands, clockwise);
  expect({"--rotate", "90"}, stands, clockwise);
  expect({"--rotate", "left"}, stands, anticlockwise);
  expect({"--rotate", "270"}, stands, anticlockwise);
  expect({"--rotate", "180"}, kSize, upsideDown);
  expect({"--flip", "h"}, kSize, [&](int x, int y) { return Pixel{right - x, y}; });
  expect({"--flip", "V"}, kSize, [&](int x, int y) { return Pixel{x, bottom - y}; });
  // Mirroring comes last.
  expect({"--rotate", "right", "--flip", "h"}, stands, [&](int x, int y) { return clockwise(bottom - x, y); });
  expect({"--flip", "v", "--rotate", "right"}, stands, [&](int x, int y) { return clockwise(x, right - y); });
  expect({"--rotate", "left", "--flip", "h"}, stands, [&](int x, int y) { return anticlockwise(bottom - x, y); });
  expect({"--rotate", "left", "--flip", "v"}, stands, [&](int x, int y) { return anticlockwise(x, right - y); });
  expect({"--rotate", "180", "--flip", "v"}, kSize, [&](int x, int y) { return upsideDown(x, bottom - y); });
}

TEST_F(PictureShapes, SizesAreThoseOfTheFinishedPicture) {
  const std::string nearest = convert({"--scale", "26x18", "--filter", "nearest"});
  EXPECT_TRUE(nearest == picked({26, 18}, [](int x, int y) { return std::pair{x / 2, y / 2}; }));
  EXPECT_TRUE(convert({"--rotate", "right", "--scale", "18x26", "--filter", "nearest"}) ==
              picked({18, 26}, [](int x, int y) {
                return std::pair{y / 2, 8 - x / 2};
              }));
  EXPECT_EQ(convert({"--rotate", "right", "--scale", "18x-1"}).size(), 18U * 26U * 3U);
  EXPECT_EQ(convert({"--scale", "-2x6", "--crop", "0,0,8,5"}).size(), 10U * 6U * 3U); // 9.6, to the nearest even
}

TEST_F(PictureShapes, FiltersAreWhatTheyAreCalled) {
  const std::string in = folder_.file("four.raw", std::string("\x0A\x14\x1E\x28\x32\x3C\x46\x50", 8));
  const auto grey = [&](const char *filter, const char *size) {
    EXPECT_EQ(job({"--size", "4x2", "--from", "grey", "--to", "grey", "--filter", filter, "--scale", size, in,
                   folder_.path("out.raw")}),
              "");
    return workspace::readFile(folder_.path("out.raw"));
  };
  // Lines 10 20 30 40 and 50 60 70 80.
  EXPECT_EQ(grey("area", "1x1"), "\x2D");                 // 45
  EXPECT_EQ(grey("area", "2x1"), "\x23\x37");             // 35, 55
  EXPECT_EQ(grey("bilinear", "1x1"), "\x2D");             // of 20 30 60 70
  EXPECT_EQ(grey("nearest", "2x1"), "\x0A\x1E");          // the first of two that are equally near
  EXPECT_EQ(grey("bilinear", "4x1"), "\x1E\x28\x32\x3C"); // 30 40 50 60
}

/// A clip with frames that differ.
std::string clip(int frames) {
  return workspace::y4m420(50, 70, frames, 3);
}

TEST_F(PictureShapes, ThreadsGiveTheSameBytes) {
  const std::string in = folder_.file("clip.y4m", clip(5));
  for (const std::vector<std::string> &options :
       std::vector<std::vector<std::string>>{{"--to", "nv12"},
                                             {"--to", "rgb565", "--dither", "ordered", "--rotate", "left"},
                                             {"--to", "rgb24", "--scale", "31x77", "--filter", "area"},
                                             {"--to", "i420", "--scale", "99x201", "--flip", "v"}}) {
    std::string want;
    for (const char *threads : {"1", "2", "3", "7", "64"}) {
      std::vector<std::string> arguments = options;
      arguments.insert(arguments.end(), {"--threads", threads, in, folder_.path("out.raw")});
      ASSERT_EQ(job(arguments), "");
      const std::string got = workspace::readFile(folder_.path("out.raw"));
      EXPECT_TRUE(want.empty() || got == want) << threads << testing::PrintToString(options);
      want = got;
    }
  }
}

TEST(PictureProgram, ASignalEndsItWithAllItsThreads) {
  for (const int number : {SIGINT, SIGTERM}) {
    const Folder folder;
    const std::string stream = clip(2);
    workspace::Process process({"--threads", "4", "-", folder.path("out.raw")}, {});
    process.feed(stream.substr(0, stream.rfind("FRAME\n")));
    ASSERT_TRUE(workspace::within10Seconds([&] { return !folder.names().empty() && process.sleeps(); }));
    process.kill(number);
    const Outcome outcome = process.wait();
    EXPECT_EQ(outcome.status, 128 + number);
    EXPECT_EQ(outcome.err, "zqconvert: interrupted\n");
    EXPECT_THAT(folder.names(), testing::IsEmpty());
  }
}

TEST(PictureProgram, StandardInputIsKnownByItsFirstByte) {
  const Folder folder;
  const std::string y4m = folder.file("clip.y4m", clip(1));
  ASSERT_EQ(job({y4m, folder.path("a.png")}), "");
  ASSERT_EQ(job({y4m, folder.path("a.bmp")}), "");
  for (const char *file : {"a.png", "a.bmp", "clip.y4m"}) {
    const Outcome piped = workspace::run({"--to", "rgb24", "-", "-"}, folder.path(file));
    EXPECT_EQ(piped.status, 0) << piped.err;
    EXPECT_EQ(piped.err, "");
    EXPECT_EQ(job({"--to", "rgb24", folder.path(file), folder.path("b.raw")}), "");
    EXPECT_TRUE(piped.out == workspace::readFile(folder.path("b.raw"))) << file;
  }
}

TEST(PictureProgram, PicturesOfOnePixelHaveColours) {
  const Folder folder;
  for (const std::string &name : inputNames()) {
    const auto violet = [](int, int) { return Rgb{160, 60, 200}; };
    const std::string in = folder.file("in.raw", encode(name, {1, 1}, {}, violet));
    ASSERT_EQ(job({"--size", "1x1", "--from", name, "--to", "rgb24", in, folder.path("out.raw")}), "") << name;
    const Rgb got = decode("rgb24", {1, 1}, {}, workspace::readFile(folder.path("out.raw")), 0, 0);
    const double luma = 0.299 * 160 + 0.587 * 60 + 0.114 * 200;
    EXPECT_NEAR(got[0], isGrey(name) ? luma : 160, 5) << name;
    EXPECT_NEAR(got[2], isGrey(name) ? luma : 200, 5) << name;
  }
}

} // namespace
