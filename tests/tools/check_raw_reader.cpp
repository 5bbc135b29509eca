// Raw files: every type, odd sizes in both ways of rounding, names of other programs, and files that fit no frame.
#include "error.h"
#include "raw_reader.h"
#include "workspace.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace zqconvert;
using testing::AllOf;
using testing::HasSubstr;
using workspace::at;
using workspace::bytes;
using workspace::Folder;
using workspace::Outcome;

namespace {

struct Sizes {
  int type;
  std::array<std::size_t, 3> down, up; ///< Bytes of each plane of 13 x 11 pixels, by either rounding.
};

const std::array kSizes{Sizes{0, {143, 143, 143}, {143, 143, 143}}, Sizes{1, {143, 66, 66}, {143, 77, 77}},
                        Sizes{2, {143, 65, 65}, {143, 78, 78}},     Sizes{3, {143, 30, 30}, {143, 42, 42}},
                        Sizes{4, {143, 33, 33}, {143, 44, 44}},     Sizes{6, {308, 0, 0}, {308, 0, 0}},
                        Sizes{7, {308, 0, 0}, {308, 0, 0}},         Sizes{8, {308, 0, 0}, {308, 0, 0}},
                        Sizes{9, {308, 0, 0}, {308, 0, 0}},         Sizes{11, {143, 60, 0}, {143, 84, 0}},
                        Sizes{12, {143, 30, 30}, {143, 42, 42}},    Sizes{13, {143, 66, 66}, {143, 77, 77}},
                        Sizes{14, {308, 0, 0}, {308, 0, 0}},        Sizes{15, {308, 0, 0}, {308, 0, 0}},
                        Sizes{16, {308, 0, 0}, {308, 0, 0}},        Sizes{17, {308, 0, 0}, {308, 0, 0}},
                        Sizes{30, {286, 0, 0}, {286, 0, 0}},        Sizes{31, {286, 0, 0}, {286, 0, 0}},
                        Sizes{32, {429, 0, 0}, {429, 0, 0}},        Sizes{34, {143, 143, 143}, {143, 143, 143}},
                        Sizes{35, {143, 60, 0}, {143, 84, 0}},      Sizes{37, {143, 26, 26}, {143, 39, 39}}};

constexpr Size kOdd{13, 11};

/// The samples of a plane that the file gives, in the file's order.
std::string samplesOf(const Frame &frame, int index, bool roundedDown) {
  const PlaneShape shape = roundedDown ? frame.shape(index) : frame.whole(index);
  std::string text;
  for (int line = 0; line < shape.lines; ++line) {
    for (int x = 0; x < shape.lineBytes; ++x) {
      text += static_cast<char>(frame.planes.at(static_cast<std::size_t>(index)).at(at(line, shape.stride, x)));
    }
  }
  return text;
}

void expectFrames(const Sizes &sizes, bool roundedDown) {
  const std::array<std::size_t, 3> &planes = roundedDown ? sizes.down : sizes.up;
  const std::size_t frameBytes = planes[0] + planes[1] + planes[2];
  const std::string file = bytes(2 * frameBytes, 7);
  std::istringstream stream(file);
  RawReader reader(stream, "raw", sizes.type, kOdd, file.size());
  EXPECT_EQ(reader.bytesPerFrame(), frameBytes) << sizes.type;
  Frame frame;
  std::size_t from = 0;
  for (int n = 0; n < 2; ++n) {
    ASSERT_TRUE(reader.next(frame)) << sizes.type;
    for (int i = 0; i < planeCount(sizes.type); ++i) {
      const std::size_t length = planes.at(static_cast<std::size_t>(i));
      EXPECT_TRUE(samplesOf(frame, i, roundedDown) == file.substr(from, length)) << sizes.type << " plane " << i;
      from += length;
      // The library divides the stride and finds whole lines.
      EXPECT_GE(frame.whole(i).stride, frame.whole(i).lineBytes) << sizes.type << " plane " << i;
      EXPECT_GE(frame.planes.at(static_cast<std::size_t>(i)).size(), frame.whole(i).bytes()) << sizes.type;
    }
  }
  EXPECT_FALSE(reader.next(frame)) << sizes.type;
}

TEST(RawReader, ChromaOfOddSidesMayBeRoundedUp) {
  for (const Sizes &sizes : kSizes) {
    expectFrames(sizes, false);
  }
  EXPECT_EQ(kSizes.size(), colorTypes().size());
}

TEST(RawReader, ChromaOfOddSidesMayBeRoundedDownWhereOnlyThatFits) {
  for (const Sizes &sizes : kSizes) {
    expectFrames(sizes, true);
  }
}

// Nobody knows the length of a pipe.
TEST(RawReader, ChromaIsRoundedUpWhereTheLengthIsUnknown) {
  std::istringstream stream(bytes(2 * (143 + 42 + 42), 1));
  RawReader reader(stream, "raw", COLOR_YUV420_PLANAR, kOdd);
  Frame frame;
  EXPECT_TRUE(reader.next(frame));
  EXPECT_TRUE(reader.next(frame));
  EXPECT_FALSE(reader.next(frame));
}

// What filters may touch behind the last sample is that sample.
TEST(RawReader, LinesGoOnWithTheirLastSample) {
  for (const bool roundedDown : {false, true}) {
    const std::string file = bytes(roundedDown ? 143 + 60 : 143 + 84, 3);
    std::istringstream stream(file);
    RawReader reader(stream, "raw", COLOR_YUV420_PACK, kOdd, file.size());
    Frame frame;
    ASSERT_TRUE(reader.next(frame));
    ASSERT_EQ(frame.stride, 14);
    EXPECT_EQ(frame.planes[0].at(13), frame.planes[0].at(12));
    if (roundedDown) {
      EXPECT_EQ(frame.planes[1].at(12), frame.planes[1].at(10));
      EXPECT_EQ(frame.planes[1].at(13), frame.planes[1].at(11));
      EXPECT_EQ(frame.planes[1].at(at(5, 14, 3)), frame.planes[1].at(at(4, 14, 3)));
    }
  }
}

TEST(RawReader, OddPicturesAreTheSameRawAndAsAStream) {
  const Folder folder;
  const std::string planes = bytes(33 * 17 + 2 * 17 * 9, 5);
  const std::string raw = folder.file("in.yuv", planes);
  const std::string stream = folder.file("in.y4m", "YUV4MPEG2 W33 H17 C420jpeg\nFRAME\n" + planes);
  EXPECT_EQ(workspace::classic({"--size", "33x17", "--type", "i420", raw, folder.path("raw.ppm")}).status, 0);
  EXPECT_EQ(workspace::classic({stream, folder.path("stream.ppm")}).status, 0);
  EXPECT_TRUE(workspace::readFile(folder.path("raw.ppm")) == workspace::readFile(folder.path("stream.ppm")));
}

// What the program writes raw it reads again, from a pipe as well; the samples that the library leaves alone stand
// twice.
TEST(RawReader, OddPicturesOfItsOwnAreReadAgain) {
  const Folder folder;
  for (const char *type : {"i420", "yv12", "nv12", "nv21"}) {
    const std::string in = folder.file("in.yuv", bytes(13 * 11 + 2 * 7 * 6, 5));
    const std::vector<std::string> options{"--size", "13x11", "--type", type, "--to", type};
    const auto run = [&](const std::string &from, const std::string &to, const std::string &standard) {
      std::vector<std::string> arguments = options;
      arguments.insert(arguments.end(), {from, to});
      return workspace::classic(arguments, standard);
    };
    const Outcome once = run(in, folder.path("once.yuv"), "/dev/null");
    EXPECT_EQ(once.status, 0) << once.err;
    EXPECT_EQ(workspace::readFile(folder.path("once.yuv")).size(), 13U * 11U + 2U * 7U * 6U) << type;
    const Outcome twice = run("-", folder.path("twice.yuv"), folder.path("once.yuv"));
    EXPECT_EQ(twice.status, 0) << twice.err;
    EXPECT_TRUE(workspace::readFile(folder.path("once.yuv")) == workspace::readFile(folder.path("twice.yuv"))) << type;
  }
}

TEST(RawReader, ASizeThatFitsNoWholeFrameNamesTheOptions) {
  const Folder folder;
  const std::string raw = folder.file("in.raw", bytes(384 + 100, 1));
  const Outcome outcome = workspace::classic({"--size", "16x16", "--type", "i420", raw, folder.path("out-%d.ppm")});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, AllOf(HasSubstr("middle of frame 2"), HasSubstr("16x16 i420 take 384 bytes"),
                                 HasSubstr("--size or --type is wrong")));
  EXPECT_THAT(folder.names(), testing::ElementsAre("in.raw", "out-1.ppm"));
}

TEST(RawReader, GreenMayComeFirst) {
  const std::string file = "GGGGBBBBRRRR";
  std::istringstream stream(file);
  RawReader reader(stream, "raw", parseRawLayout("GBRP"), {2, 2});
  Frame frame;
  ASSERT_TRUE(reader.next(frame));
  EXPECT_EQ(frame.type, COLOR_RGB888_PLANAR);
  EXPECT_EQ(samplesOf(frame, 0, false) + samplesOf(frame, 1, false) + samplesOf(frame, 2, false), "RRRRGGGGBBBB");
}

TEST(RawReader, GreyIsRedGreenAndBlue) {
  const Folder folder;
  std::string shades;
  for (int i = 0; i < 16 * 16; ++i) {
    shades += static_cast<char>(i);
  }
  const std::string raw = folder.file("in.gray", shades + shades);
  const Outcome outcome = workspace::classic({"--size", "16x16", "--type", "gray", raw, folder.path("%d.ppm")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  const std::string picture = workspace::readFile(folder.path("2.ppm"));
  ASSERT_EQ(picture.size(), std::string("P6\n16 16\n255\n").size() + 3 * 256);
  for (std::size_t i = 0; i < 256; ++i) {
    for (std::size_t channel = 0; channel < 3; ++channel) {
      const auto got = static_cast<unsigned char>(picture.at(picture.size() - 768 + 3 * i + channel));
      EXPECT_NEAR(got, static_cast<int>(i), channel == 1 ? 3 : 7) << i;
    }
  }
}

TEST(RawReader, NamesOfFullRangeSayTheirRange) {
  for (const auto &[name, type] :
       {std::pair{"yuvj420p", 3}, {"yuvj422p", 1}, {"yuvj444p", 0}, {"yuvj440p", 2}, {"yuvj411p", 4}}) {
    EXPECT_EQ(parseRawLayout(name).type, type);
    EXPECT_EQ(parseRawLayout(name).range, Range::Full);
  }
  EXPECT_EQ(parseRawLayout("yuv420p").range, Range::Unknown);
  EXPECT_THROW(parseRawLayout("gbrap"), Error);
  for (const std::string &name : rawLayoutNames()) {
    EXPECT_THROW(parseColorType(name), Error) << name << " is no output";
    EXPECT_THAT(describeRawLayouts(), HasSubstr(" " + name + " "));
  }
}

TEST(RawReader, ImpossibleSizesAreRefused) {
  std::istringstream stream("x");
  EXPECT_THROW(RawReader(stream, "raw", COLOR_YUV420_PLANAR, {1, 4}), Error);
  EXPECT_THROW(RawReader(stream, "raw", COLOR_RGB565, {65535, 65535}), Error);
  EXPECT_THROW(RawReader(stream, "raw", COLOR_RGB565, {0, 4}), Error);
}

} // namespace
