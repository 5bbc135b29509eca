// What a y4m stream says beside size and samples reaches the y4m that is made of it, as far as it still holds.
#include "error.h"
#include "stream_tags.h"
#include "workspace.h"
#include "y4m_reader.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace zqconvert;
using testing::HasSubstr;
using testing::Not;
using workspace::Folder;

namespace {

std::string frameText(const std::string &tags = "") {
  return "FRAME" + tags + "\n" + workspace::bytes(32 * 16 * 3 / 2, 1);
}

/// The header line of what `options` make of a 32x16 stream with these words.
std::string headerAfter(const std::string &words, std::vector<std::string> options = {}) {
  const Folder folder;
  options.insert(options.end(), {folder.file("in.y4m", "YUV4MPEG2 W32 H16 F25:1 " + words + "\n" + frameText()),
                                 folder.path("out.y4m")});
  const workspace::Outcome outcome = workspace::classic(options);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string out = workspace::readFile(folder.path("out.y4m"));
  return out.substr(0, out.find('\n'));
}

TEST(StreamTags, ACopyKeepsThemAll) {
  const std::string words = "It A16:11 C420mpeg2 XYSCSS=420MPEG2 XCOLORRANGE=LIMITED Xmade-by-hand";
  EXPECT_EQ(headerAfter(words), "YUV4MPEG2 W32 H16 F25:1 " + words);
}

TEST(StreamTags, WhatIsNotSaidIsUnknown) {
  EXPECT_EQ(headerAfter("C420jpeg"), "YUV4MPEG2 W32 H16 F25:1 I? A0:0 C420jpeg");
  EXPECT_EQ(headerAfter("Iq A4 C420jpeg"), "YUV4MPEG2 W32 H16 F25:1 I? A0:0 C420jpeg");
}

TEST(StreamTags, AspectIsExchangedByQuarterTurns) {
  EXPECT_THAT(headerAfter("Ip A16:11", {"--rotate", "left"}), HasSubstr(" W16 H32 F25:1 Ip A11:16 "));
  EXPECT_THAT(headerAfter("Ip A16:11", {"--rotate", "right"}), HasSubstr(" A11:16 "));
  EXPECT_THAT(headerAfter("Ip A16:11", {"--rotate", "180"}), HasSubstr(" A16:11 "));
  EXPECT_THAT(headerAfter("Ip A0:0", {"--rotate", "left"}), HasSubstr(" A0:0 "));
}

// The picture keeps its shape on the screen: 32 to 16 columns make each twice as wide.
TEST(StreamTags, AspectFollowsTheScale) {
  EXPECT_THAT(headerAfter("Ip A1:1", {"--scale", "16x8"}), HasSubstr(" A1:1 "));
  EXPECT_THAT(headerAfter("Ip A1:1", {"--scale", "16x16"}), HasSubstr(" A2:1 "));
  EXPECT_THAT(headerAfter("Ip A16:11", {"--scale", "32x12"}), HasSubstr(" A12:11 "));
  EXPECT_THAT(headerAfter("Ip A16:11", {"--scale", "16x16", "--rotate", "left"}), HasSubstr(" A11:32 "));
  EXPECT_THAT(headerAfter("Ip A1:1", {"--crop", "0,0,16,16", "--scale", "16x8"}), HasSubstr(" A1:2 "));
  EXPECT_THAT(headerAfter("Ip A0:0", {"--scale", "16x16"}), HasSubstr(" A0:0 "));
  EXPECT_THAT(headerAfter("Ip A2147483647:2147483646", {"--scale", "31x14"}), HasSubstr(" A0:0 "));
}

StreamInfo after(const StreamInfo &info, const Change &change, int inType = COLOR_YUV420_PLANAR) {
  StreamInfo result = info;
  adaptTags(result, change, inType);
  return result;
}

TEST(StreamTags, TheOrderOfFieldsFollowsTheLines) {
  struct Case {
    char before;
    Change change;
    char want;
    bool frames;
  };
  const Rectangle whole{0, 0, 32, 16};
  const Rectangle odd{0, 0, 32, 15};
  const Rectangle below{0, 1, 32, 15};
  for (const Case &c :
       {Case{'t', {whole, {32, 16}, ROTATION_NONE}, 't', true}, Case{'m', {whole, {32, 16}, ROTATION_NONE}, 'm', true},
        Case{'t', {whole, {16, 16}, ROTATION_NONE}, 't', true}, // lines stay lines
        Case{'t', {whole, {32, 8}, ROTATION_NONE}, '?', false}, // lines of both fields are mixed
        Case{'p', {whole, {32, 8}, ROTATION_NONE}, 'p', false},
        Case{'b', {whole, {32, 16}, ROTATION_90_LEFT}, '?', false},
        Case{'p', {whole, {32, 16}, ROTATION_90_LEFT}, 'p', false},
        Case{'t', {whole, {32, 16}, ROTATION_180}, 'b', false}, // the last line comes first
        Case{'b', {whole, {32, 16}, ROTATION_FLIP_V}, 't', false},
        Case{'m', {whole, {32, 16}, ROTATION_180}, '?', false},
        Case{'t', {odd, {32, 15}, ROTATION_180}, 't', true}, // and is of the first line's field
        Case{'t', {below, {32, 15}, ROTATION_NONE}, 'b', false}, Case{'t', {below, {32, 15}, ROTATION_180}, 'b', false},
        Case{'?', {whole, {32, 16}, ROTATION_180}, '?', false}}) {
    StreamInfo info;
    info.interlacing = c.before;
    const StreamInfo result = after(info, c.change);
    EXPECT_EQ(result.interlacing, c.want) << c.before << " rotation " << c.change.rotation;
    EXPECT_EQ(result.frameTags, c.frames) << c.before << " rotation " << c.change.rotation;
  }
}

TEST(StreamTags, FramesKeepWhatTheySayOfThemselves) {
  const Folder folder;
  const std::string stream =
      "YUV4MPEG2 W32 H16 F25:1 Im A1:1 C420jpeg\n" + frameText(" Itii Xa") + frameText(" Ibii") + frameText();
  const std::string clip = folder.file("in.y4m", stream);
  EXPECT_EQ(workspace::classic({clip, folder.path("copy.y4m")}).status, 0);
  EXPECT_TRUE(workspace::readFile(folder.path("copy.y4m")) == stream);
  EXPECT_EQ(workspace::classic({"--rotate", "left", clip, folder.path("left.y4m")}).status, 0);
  EXPECT_THAT(workspace::readFile(folder.path("left.y4m")), Not(HasSubstr("Itii")));
}

TEST(StreamTags, ChromaWordsAreDroppedWhereTheyNoLongerHold) {
  const std::string side = "Ip A1:1 C420mpeg2 XYSCSS=420MPEG2 XCHROMALOC=LEFT Xother";
  EXPECT_THAT(headerAfter(side, {"--scale", "16x8"}), HasSubstr(side));
  // Turned samples lie where the format has no name for.
  EXPECT_THAT(headerAfter(side, {"--rotate", "180"}), HasSubstr("Ip A1:1 C420jpeg Xother"));
  const std::string middle = "Ip A1:1 C420jpeg XYSCSS=420JPEG";
  EXPECT_THAT(headerAfter(middle, {"--rotate", "left"}), HasSubstr(middle));
  StreamInfo from422;
  from422.extras = {"XYSCSS=422", "XCOLORRANGE=FULL"};
  EXPECT_THAT(after(from422, {{0, 0, 32, 16}, {32, 16}, ROTATION_NONE}, COLOR_YUV422_PLANAR).extras,
              testing::ElementsAre("XCOLORRANGE=FULL"));
}

TEST(StreamTags, RawInputThatIsCalledFullRangeSaysSo) {
  const Folder folder;
  const std::string raw = folder.file("in.raw", workspace::bytes(32 * 16 * 3 / 2, 1));
  const auto headerOf = [&](const char *type) {
    const workspace::Outcome outcome =
        workspace::classic({"--size", "32x16", "--type", type, "--format", "y4m", raw, "-"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out.substr(0, outcome.out.find('\n'));
  };
  EXPECT_EQ(headerOf("yuvj420p"), "YUV4MPEG2 W32 H16 F25:1 Ip A0:0 C420jpeg XCOLORRANGE=FULL");
  EXPECT_EQ(headerOf("yuv420p"), "YUV4MPEG2 W32 H16 F25:1 Ip A0:0 C420jpeg");
}

TEST(StreamTags, RangeIsReadAndTheOlderWordForChromaIsUnderstood) {
  const auto read = [](const std::string &words) {
    std::istringstream stream("YUV4MPEG2 W32 H16 " + words + "\n");
    return Y4mReader(stream, "in").info();
  };
  EXPECT_EQ(read("XCOLORRANGE=FULL").range, Range::Full);
  EXPECT_EQ(read("XCOLORRANGE=LIMITED").range, Range::Limited);
  EXPECT_EQ(read("XCOLORRANGE=").range, Range::Unknown);
  EXPECT_EQ(read("").range, Range::Unknown);
  EXPECT_EQ(read("XYSCSS=422").type, COLOR_YUV422_PLANAR);
  EXPECT_EQ(read("XYSCSS=422 C444").type, COLOR_YUV444_PLANAR);
  EXPECT_EQ(read("XYSCSS=420MPEG2").siting, "420mpeg2");
  EXPECT_THROW(read("XYSCSS=444P16"), Error);
}

} // namespace
