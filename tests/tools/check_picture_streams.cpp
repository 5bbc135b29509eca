// What a YUV4MPEG2 header says is honoured, and what is written says what is there.
#include "picture_bytes.h"
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace picture_bytes;
using testing::HasSubstr;
using testing::Not;
using workspace::Folder;

namespace {

class PictureStreams : public testing::Test {
protected:
  /// A stream of one frame, 16 x 8, with these words.
  std::string stream(const std::string &words, std::size_t samples = 192) {
    return folder_.file("in.y4m",
                        "YUV4MPEG2 W16 H8 F30:1 It A1:1 " + words + "\nFRAME\n" + workspace::bytes(samples, 7));
  }
  std::string convert(const std::string &input, std::vector<std::string> options, const char *output = "out.y4m") {
    options.insert(options.end(), {input, folder_.path(output)});
    EXPECT_EQ(job(options), "") << testing::PrintToString(options);
    return workspace::readFile(folder_.path(output));
  }
  std::string headerOf(const std::string &words, const std::vector<std::string> &options = {},
                       std::size_t samples = 192) {
    const std::string result = convert(stream(words, samples), options);
    return result.substr(0, result.find('\n'));
  }

  Folder folder_;
};

TEST_F(PictureStreams, WhatIsNotChangedIsCopied) {
  for (const auto &[words, samples] : {std::pair{"C420jpeg XCOLORRANGE=LIMITED", 192U},
                                       {"C420paldv XYSCSS=420PALDV XCOLORRANGE=FULL", 192U},
                                       {"C420mpeg2", 192U},
                                       {"C422 XCOLORRANGE=FULL", 256U},
                                       {"C444", 384U},
                                       {"Cmono", 128U}}) {
    const std::string in = stream(words, samples);
    EXPECT_EQ(convert(in, {}), workspace::readFile(in)) << words;
  }
}

TEST_F(PictureStreams, TheRangeIsHonouredAndWritten) {
  const std::string limited = convert(stream("C444 XCOLORRANGE=LIMITED", 384), {}, "limited.png");
  const std::string full = convert(stream("C444 XCOLORRANGE=FULL", 384), {}, "full.png");
  EXPECT_FALSE(limited == full);
  EXPECT_TRUE(convert(stream("C444", 384), {}, "plain.png") == limited);
  // What is asked for counts more than what the stream says of itself.
  EXPECT_TRUE(convert(stream("C444 XCOLORRANGE=LIMITED", 384), {"--range", "full"}, "asked.png") == full);

  EXPECT_THAT(headerOf("C420jpeg"), Not(HasSubstr("XCOLORRANGE")));
  EXPECT_THAT(headerOf("C420jpeg", {"--range", "full"}), HasSubstr(" XCOLORRANGE=FULL"));
  EXPECT_THAT(headerOf("C420jpeg XCOLORRANGE=FULL", {"--range", ":limited"}), HasSubstr(" XCOLORRANGE=LIMITED"));
  EXPECT_THAT(headerOf("C420jpeg XCOLORRANGE=FULL", {"--range", ":limited"}), Not(HasSubstr("FULL")));
  // What comes from RGB is limited unless asked for.
  EXPECT_THAT(convert(folder_.path("full.png"), {}), HasSubstr(" XCOLORRANGE=LIMITED\n"));
  EXPECT_THAT(convert(folder_.path("full.png"), {"--range", ":full"}), HasSubstr(" XCOLORRANGE=FULL\n"));
}

TEST_F(PictureStreams, TheSitingIsHonouredAndWritten) {
  const std::string centre = convert(stream("C420jpeg"), {}, "centre.png");
  const std::string left = convert(stream("C420mpeg2"), {}, "left.png");
  EXPECT_FALSE(centre == left);
  EXPECT_TRUE(convert(stream("C420"), {}, "a.png") == centre);
  EXPECT_TRUE(convert(stream(""), {}, "a.png") == centre);
  EXPECT_TRUE(convert(stream("C420paldv"), {}, "a.png") == left);
  EXPECT_TRUE(convert(stream("C420mpeg2"), {"--siting", "centre"}, "a.png") == centre);

  EXPECT_THAT(headerOf("C420jpeg", {"--scale", "8x8"}), HasSubstr(" C420jpeg"));
  EXPECT_THAT(headerOf("C420mpeg2", {"--rotate", "left"}), HasSubstr(" C420mpeg2"));
  EXPECT_THAT(headerOf("C420jpeg", {"--siting", ":left"}), HasSubstr(" C420mpeg2"));
  EXPECT_THAT(headerOf("C420mpeg2 XYSCSS=420MPEG2", {"--siting", ":centre"}),
              testing::AllOf(HasSubstr(" C420jpeg"), Not(HasSubstr("XYSCSS"))));
  EXPECT_THAT(headerOf("C444", {"--to", "i420"}, 384), HasSubstr(" C420mpeg2"));
  EXPECT_THAT(convert(folder_.path("left.png"), {"--siting", ":centre"}), HasSubstr(" C420jpeg "));
  // A file of other chroma cannot say centre, and is read as left.
  EXPECT_TRUE(convert(stream("C420jpeg"), {"--to", "i422"}) ==
              convert(stream("C420jpeg"), {"--to", "i422", "--siting", "centre:left"}));
}

TEST_F(PictureStreams, RawPicturesAreSitedLeftAndThoseOfJpegFilesInTheCentre) {
  const std::string raw = folder_.file("in.raw", workspace::bytes(192, 9));
  const auto from = [&](const char *type, std::vector<std::string> options) {
    options.insert(options.end(), {"--size", "16x8", "--from", type});
    const std::string result = convert(raw, options);
    return result.substr(0, result.find('\n'));
  };
  EXPECT_THAT(from("i420", {}), testing::AllOf(HasSubstr(" C420mpeg2"), Not(HasSubstr("XCOLORRANGE"))));
  EXPECT_THAT(from("yuvj420p", {}), testing::AllOf(HasSubstr(" C420jpeg"), HasSubstr("XCOLORRANGE=FULL")));
}

TEST_F(PictureStreams, FieldsAndShapesOfPixelsAreKeptWhereTheyAre) {
  EXPECT_THAT(headerOf("C420jpeg"), HasSubstr(" F30:1 It A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--flip", "h"}), HasSubstr(" It A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--flip", "v"}), HasSubstr(" Ib A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--rotate", "180"}), HasSubstr(" Ib A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--crop", "0,1,16,4"}), HasSubstr(" Ib A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--rotate", "left"}), HasSubstr(" I? A1:1 "));
  EXPECT_THAT(headerOf("C420jpeg", {"--scale", "8x8"}), HasSubstr(" It A2:1 "));
  // Of the finished picture, 4 x 16: lines are half as many as columns were.
  EXPECT_THAT(headerOf("C420jpeg", {"--rotate", "left", "--scale", "4x16"}), HasSubstr(" I? A2:1 "));
}

TEST_F(PictureStreams, KindsOfPlanesStayWhereTheFormatHasThem) {
  EXPECT_THAT(headerOf("C422", {}, 256), HasSubstr(" C422"));
  EXPECT_THAT(headerOf("C444", {}, 384), HasSubstr(" C444"));
  EXPECT_THAT(headerOf("Cmono", {}, 128), HasSubstr(" Cmono"));
  EXPECT_THAT(headerOf("C440", {}, 256), HasSubstr(" C420"));
  EXPECT_THAT(headerOf("C411", {}, 192), HasSubstr(" C420"));
  EXPECT_THAT(headerOf("C444", {"--to", "grey"}, 384), HasSubstr(" Cmono"));
}

} // namespace
