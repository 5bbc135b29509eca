// The command line, taken and refused.
#include "error.h"
#include "options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace zqconvert;
using testing::HasSubstr;

namespace {

/// These are the options of --classic.
Options parseClassic(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "--classic");
  return parseOptions(arguments);
}

TEST(Options, Defaults) {
  const Options options = parseClassic({"in.y4m", "out.png"});
  EXPECT_EQ(options.message, "");
  EXPECT_EQ(options.input, "in.y4m");
  EXPECT_EQ(options.output, "out.png");
  EXPECT_EQ(options.format, Format::Png);
  EXPECT_FALSE(options.rawSize || options.rawLayout || options.outType || options.request.scale ||
               options.request.crop);
  EXPECT_EQ(options.request.rotation, uint32_t{ROTATION_NONE});
  EXPECT_EQ(options.request.quality, 0U);
  EXPECT_EQ(options.request.matrix.index, MATRIX_BT601);
  EXPECT_EQ(options.frames.first, 1);
  EXPECT_EQ(options.frames.last, 0);
}

TEST(Options, EverythingAtOnce) {
  const Options options =
      parseClassic({"--size",   "640x480", "--type",    "YUY2", "--to",    "bgr24",      "--scale",  "320X200",
                    "--rotate", "left",    "--quality", "2",    "--crop",  "2,4,100,50", "--frames", "3:9",
                    "--matrix", "bt709",   "--format",  "bmp",  "--stats", "-",          "-"});
  EXPECT_EQ(options.rawSize, (Size{640, 480}));
  ASSERT_TRUE(options.rawLayout);
  EXPECT_EQ(options.rawLayout->type, COLOR_YUV422_YUYV);
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
  EXPECT_EQ(parseClassic({"--rotate", "right", "a", "b"}).request.rotation, uint32_t{ROTATION_90_RIGHT});
  EXPECT_EQ(parseClassic({"--rotate=180", "a", "b"}).request.rotation, uint32_t{ROTATION_180});
  EXPECT_EQ(parseClassic({"--flip", "a", "b"}).request.rotation, uint32_t{ROTATION_FLIP_V});
  // Degrees go clockwise, as in the tools that people know.
  EXPECT_EQ(parseClassic({"--rotate", "90", "a", "b"}).request.rotation, uint32_t{ROTATION_90_RIGHT});
  EXPECT_EQ(parseClassic({"--rotate", "270", "a", "b"}).request.rotation, uint32_t{ROTATION_90_LEFT});
  EXPECT_EQ(parseClassic({"--rotate", "Left", "a", "b"}).request.rotation, uint32_t{ROTATION_90_LEFT});
}

TEST(Options, OneSideOfTheScaleMayBeOpen) {
  const auto scale = [](const char *text) { return parseClassic({"--scale", text, "a", "b"}).request.scale; };
  EXPECT_EQ(scale("640x-1"), (Size{640, -1}));
  EXPECT_EQ(scale("-1x480"), (Size{-1, 480}));
  EXPECT_EQ(scale("640X-2"), (Size{640, -2}));
  EXPECT_EQ(parseClassic({"--scale=-2x480", "a", "b"}).request.scale, (Size{-2, 480}));
}

TEST(Options, NamesOfRawLayouts) {
  const auto layout = [](const char *text) {
    return parseClassic({"--size", "8x8", "--type", text, "a", "b"}).rawLayout->type;
  };
  EXPECT_EQ(layout("gbrp"), COLOR_RGB888_PLANAR);
  EXPECT_EQ(layout("yuvj420p"), COLOR_YUV420_PLANAR);
  EXPECT_EQ(layout("37"), COLOR_YUV_QUARTER_HEIGHT);
  EXPECT_THAT(parseClassic({"--list-types"}).message, HasSubstr("gbrp"));
}

TEST(Options, Matrices) {
  EXPECT_EQ(parseClassic({"--matrix", "grey", "a", "b"}).request.matrix.index, MATRIX_GREY);
  EXPECT_EQ(parseClassic({"--matrix", "GRAY", "a", "b"}).request.matrix.index, MATRIX_GREY);
  const Matrix custom = parseClassic({"--matrix", "-1.5,2,3e2,0.25", "a", "b"}).request.matrix;
  EXPECT_EQ(custom.index, MATRIX_CUSTOM);
  EXPECT_EQ(custom.custom, (std::array<double, 4>{-1.5, 2, 300, 0.25}));
}

TEST(Options, FrameRanges) {
  const auto range = [](const char *text) { return parseClassic({"--frames", text, "a", "b"}).frames; };
  EXPECT_EQ(range("5").first, 5);
  EXPECT_EQ(range("5").last, 5);
  EXPECT_EQ(range("5:").first, 5);
  EXPECT_EQ(range("5:").last, 0);
  EXPECT_EQ(range(":5").first, 1);
  EXPECT_EQ(range(":5").last, 5);
  EXPECT_EQ(range("5:5").last, 5);
}

TEST(Options, InformationNeedsNoFiles) {
  const std::string help = parseClassic({"--help"}).message;
  for (const char *option : {"--to", "--matrix", "--scale", "--rotate", "--flip", "--quality", "--crop", "--frames",
                             "--size", "--type", "--list-types", "--version", "--stats", "--format", "Examples:"}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
  EXPECT_EQ(parseClassic({"-h"}).message, help);
  EXPECT_THAT(parseClassic({"--version"}).message, testing::MatchesRegex("zqconvert [0-9]+.[0-9]+.[0-9]+\n"));
  EXPECT_THAT(parseClassic({"--list-types"}).message, HasSubstr("COLOR_YUV_QUARTER_HEIGHT"));
}

TEST(Options, HelpSaysWhatIsNeededAndFitsTheTerminal) {
  const std::string help = parseClassic({"--help"}).message;
  EXPECT_THAT(help, HasSubstr("\nUsage: zqconvert --classic [OPTIONS] INPUT OUTPUT\n"));
  for (const char *words :
       {"for reducing only", "--frames N|A:B|A:|:B ", "%%", "640x-1", "left|right|90|180|270", ".rgb565"}) {
    EXPECT_THAT(help, HasSubstr(words));
  }
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 100U) << line;
  }
}

TEST(Options, RefusalsAreInPlainWords) {
  const auto refusal = [](const std::vector<std::string> &arguments) -> std::string {
    try {
      parseClassic(arguments);
    } catch (const Error &error) {
      return error.what();
    }
    return {};
  };
  EXPECT_THAT(refusal({"--quality", "x", "a", "b"}), HasSubstr("--quality takes 0, 1, 2 or 3, not 'x'"));
  EXPECT_THAT(refusal({"--quality", "", "a", "b"}), HasSubstr("--quality takes 0, 1, 2 or 3, not ''"));
  EXPECT_THAT(refusal({"--to", "i420", "--to", "nv12", "a", "b"}), HasSubstr("--to is given more than once"));
  EXPECT_THAT(refusal({"--rotate", "45", "a", "b"}), HasSubstr("90, 180 or 270 degrees clockwise, not '45'"));
  EXPECT_THAT(refusal({"--scale", "-1x-1", "a", "b"}), HasSubstr("or -1 for one of them (640x-1), not '-1x-1'"));
  EXPECT_THAT(refusal({"--scale", "64x0", "a", "b"}), HasSubstr("--scale: a picture of 64x0 has no pixels"));
  EXPECT_THAT(refusal({"--size", "0x4", "--type", "i420", "a", "b"}), HasSubstr("a picture of 0x4 has no pixels"));
  EXPECT_THAT(refusal({"a", "b.jpeg"}), HasSubstr("b.jpeg: nothing is known of .jpeg files; known are .bmp, .png"));
  EXPECT_EQ(refusal({"--format", "raw", "a", "b.jpeg"}), "");
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
      {"--scale", "70000x-1", "a", "b"},
      {"--scale", "-1x-2", "a", "b"},
      {"--scale", "-0x4", "a", "b"},
      {"--scale", "4x-99999999999", "a", "b"},
      {"--scale", "4x-", "a", "b"},
      {"--size", "640x-1", "--type", "i420", "a", "b"},
      {"a", "b.jpg"},
      {"a", "b.%04d"},
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
      parseClassic(arguments);
      ADD_FAILURE() << "taken: " << testing::PrintToString(arguments);
    } catch (const Error &error) {
      const std::string line = error.what();
      EXPECT_GT(line.size(), 10U) << testing::PrintToString(arguments);
      EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
  }
}

} // namespace
