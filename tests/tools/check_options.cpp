// The command line, taken and refused.
#include "error.h"
#include "options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace zqconvert;
using testing::HasSubstr;

namespace {

TEST(Options, Defaults) {
  const Options options = parseOptions({"in.y4m", "out.png"});
  EXPECT_EQ(options.message, "");
  EXPECT_EQ(options.input, "in.y4m");
  EXPECT_EQ(options.output, "out.png");
  EXPECT_EQ(options.format, Format::Png);
  EXPECT_FALSE(options.rawSize || options.rawType || options.outType || options.request.scale || options.request.crop);
  EXPECT_EQ(options.request.rotation, uint32_t{ROTATION_NONE});
  EXPECT_EQ(options.request.quality, 0U);
  EXPECT_EQ(options.request.matrix.index, MATRIX_BT601);
  EXPECT_EQ(options.frames.first, 1);
  EXPECT_EQ(options.frames.last, 0);
}

TEST(Options, EverythingAtOnce) {
  const Options options =
      parseOptions({"--size",   "640x480", "--type",    "YUY2", "--to",    "bgr24",      "--scale",  "320X200",
                    "--rotate", "left",    "--quality", "2",    "--crop",  "2,4,100,50", "--frames", "3:9",
                    "--matrix", "bt709",   "--format",  "bmp",  "--stats", "-",          "-"});
  EXPECT_EQ(options.rawSize, (Size{640, 480}));
  EXPECT_EQ(options.rawType, COLOR_YUV422_YUYV);
  EXPECT_EQ(options.outType, COLOR_RGB24);
  EXPECT_EQ(options.request.scale, (Size{320, 200}));
  EXPECT_EQ(options.request.rotation, uint32_t{ROTATION_90_LEFT});
  EXPECT_EQ(options.request.quality, 2U);
  ASSERT_TRUE(options.request.crop);
  EXPECT_EQ(options.request.crop->x, 2);
  EXPECT_EQ(options.request.crop->y, 4);
  EXPECT_EQ(options.request.crop->width, 100);
  EXPECT_EQ(options.request.crop->height, 50);
  EXPECT_EQ(options.frames.first, 3);
  EXPECT_EQ(options.frames.last, 9);
  EXPECT_EQ(options.request.matrix.index, MATRIX_BT709);
  EXPECT_EQ(options.format, Format::Bmp);
  EXPECT_TRUE(options.stats);
  EXPECT_EQ(options.input, "-");
  EXPECT_EQ(options.output, "-");
}

TEST(Options, Turns) {
  EXPECT_EQ(parseOptions({"--rotate", "right", "a", "b"}).request.rotation, uint32_t{ROTATION_90_RIGHT});
  EXPECT_EQ(parseOptions({"--rotate=180", "a", "b"}).request.rotation, uint32_t{ROTATION_180});
  EXPECT_EQ(parseOptions({"--flip", "a", "b"}).request.rotation, uint32_t{ROTATION_FLIP_V});
}

TEST(Options, Matrices) {
  EXPECT_EQ(parseOptions({"--matrix", "grey", "a", "b"}).request.matrix.index, MATRIX_GREY);
  EXPECT_EQ(parseOptions({"--matrix", "GRAY", "a", "b"}).request.matrix.index, MATRIX_GREY);
  const Matrix custom = parseOptions({"--matrix", "-1.5,2,3e2,0.25", "a", "b"}).request.matrix;
  EXPECT_EQ(custom.index, MATRIX_CUSTOM);
  EXPECT_EQ(custom.custom, (std::array<double, 4>{-1.5, 2, 300, 0.25}));
}

TEST(Options, FrameRanges) {
  const auto range = [](const char *text) { return parseOptions({"--frames", text, "a", "b"}).frames; };
  EXPECT_EQ(range("5").first, 5);
  EXPECT_EQ(range("5").last, 5);
  EXPECT_EQ(range("5:").first, 5);
  EXPECT_EQ(range("5:").last, 0);
  EXPECT_EQ(range(":5").first, 1);
  EXPECT_EQ(range(":5").last, 5);
  EXPECT_EQ(range("5:5").last, 5);
}

TEST(Options, InformationNeedsNoFiles) {
  const std::string help = parseOptions({"--help"}).message;
  for (const char *option : {"--to", "--matrix", "--scale", "--rotate", "--flip", "--quality", "--crop", "--frames",
                             "--size", "--type", "--list-types", "--version", "--stats", "--format", "Examples:"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
  EXPECT_EQ(parseOptions({"-h"}).message, help);
  EXPECT_THAT(parseOptions({"--version"}).message, testing::MatchesRegex("zqconvert [0-9]+.[0-9]+.[0-9]+\n"));
  EXPECT_THAT(parseOptions({"--list-types"}).message, HasSubstr("COLOR_YUV_QUARTER_HEIGHT"));
}

TEST(Options, HelpSaysWhatIsNeededAndFitsTheTerminal) {
  const std::string help = parseOptions({"--help"}).message;
  EXPECT_THAT(help, HasSubstr("\nUsage: zqconvert [OPTIONS] INPUT OUTPUT\n"));
  EXPECT_THAT(help, HasSubstr("for reducing only"));
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 100U) << line;
  }
}

TEST(Options, RefusalsAreInPlainWords) {
  const auto refusal = [](const std::vector<std::string> &arguments) -> std::string {
    try {
      parseOptions(arguments);
    } catch (const Error &error) {
      return error.what();
    }
    return {};
  };
  EXPECT_THAT(refusal({"--quality", "x", "a", "b"}), HasSubstr("--quality takes 0, 1, 2 or 3, not 'x'"));
  EXPECT_THAT(refusal({"--quality", "", "a", "b"}), HasSubstr("--quality takes 0, 1, 2 or 3, not ''"));
  EXPECT_THAT(refusal({"--to", "i420", "--to", "nv12", "a", "b"}), HasSubstr("--to is given more than once"));
  EXPECT_THAT(refusal({"a", "b", "--scale"}), HasSubstr("--scale needs a value"));
  EXPECT_THAT(refusal({"--flip=much", "a", "b"}), HasSubstr("take no value"));
  EXPECT_EQ(refusal({"--flip", "--flip", "--stats", "--stats", "a", "b"}), "");
}

TEST(Options, WhatMakesNoSenseIsRefusedInOneLine) {
  const std::vector<std::vector<std::string>> wrong{
      {},
      {"a"},
      {"a", "b", "c"},
      {"--nonsense", "a", "b"},
      {"--size", "640x480", "a", "b"},
      {"--type", "i420", "a", "b"},
      {"--size", "640", "--type", "i420", "a", "b"},
      {"--size", "0x480", "--type", "i420", "a", "b"},
      {"--size", "-4x480", "--type", "i420", "a", "b"},
      {"--size", "640x480x2", "--type", "i420", "a", "b"},
      {"--size", "65536x1", "--type", "i420", "a", "b"},
      {"--size", "65535x65535", "--type", "i420", "a", "b"},
      {"--size", "99999999999x2", "--type", "i420", "a", "b"},
      {"--size", "640x480", "--type", "jpeg", "a", "b"},
      {"--to", "xyz", "a", "b"},
      {"--to", "", "--to", "i420", "a", "b"},
      {"--scale", "640 x 480", "a", "b"},
      {"--scale", "70000x2", "a", "b"},
      {"--rotate", "45", "a", "b"},
      {"--rotate", "left", "--flip", "a", "b"},
      {"--quality", "4", "a", "b"},
      {"--quality", "-1", "a", "b"},
      {"--quality", "best", "a", "b"},
      {"--crop", "1,2,3", "a", "b"},
      {"--crop", "1,2,3,4,5", "a", "b"},
      {"--crop", "1,2,3,x", "a", "b"},
      {"--crop", "-1,2,3,4", "a", "b"},
      {"--frames", "0", "a", "b"},
      {"--frames", ":", "a", "b"},
      {"--frames", "", "--frames", "x", "a", "b"},
      {"--frames", "5:4", "a", "b"},
      {"--frames", "1:2:3", "a", "b"},
      {"--frames", "a:b", "a", "b"},
      {"--frames", "0:", "a", "b"},
      {"--frames", ":0", "a", "b"},
      {"--matrix", "bt2020", "a", "b"},
      {"--matrix", "1,2,3", "a", "b"},
      {"--matrix", "1,2,3,nan", "a", "b"},
      {"--matrix", "1,2,3,", "a", "b"},
      {"--format", "jpeg", "a", "b"},
  };
  for (const std::vector<std::string> &arguments : wrong) {
    try {
      parseOptions(arguments);
      ADD_FAILURE() << "taken: " << testing::PrintToString(arguments);
    } catch (const Error &error) {
      const std::string line = error.what();
      EXPECT_GT(line.size(), 10U) << testing::PrintToString(arguments);
      EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
  }
}

} // namespace
