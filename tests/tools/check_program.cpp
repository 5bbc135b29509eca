// The built program from the outside: files, streams, status and the one line of an error.
#include "color_types.h"
#include "text.h"
#include "workspace.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using workspace::expectRefusal;
using workspace::Folder;
using workspace::Outcome;
using workspace::y4m420;

namespace {

TEST(Program, ConvertsAStreamToABitmapOfTheLibrarysBytes) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(32, 16, 1));
  const Outcome outcome = workspace::classic({clip, folder.path("out.bmp")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.err, "");
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "out.bmp"));

  // The same picture straight through the library.
  std::string planes = y4m420(32, 16, 1);
  planes = planes.substr(planes.find("FRAME\n") + 6);
  const auto *in = reinterpret_cast<const uint8_t *>(planes.data());
  std::string pixels(std::size_t{32} * 16 * 2, '\0');
  ASSERT_EQ(zqColorConvert(in, reinterpret_cast<uint8_t *>(pixels.data()), COLOR_YUV420_PLANAR, COLOR_RGB565, 32, 16,
                           32, nullptr),
            CC_OK);
  EXPECT_TRUE(workspace::readFile(folder.path("out.bmp")).substr(66) == pixels);
}

TEST(Program, StandardInputAndOutput) {
  const Folder folder;
  const std::string clip = folder.file("clip", y4m420(32, 16, 3));
  const Outcome piped = workspace::classic({"-", "-"}, clip);
  EXPECT_EQ(piped.status, 0) << piped.err;
  EXPECT_EQ(piped.out.size(), 3U * 32U * 16U * 2U);
  const Outcome file = workspace::classic({clip, folder.path("out.raw")});
  EXPECT_EQ(file.status, 0) << file.err;
  EXPECT_TRUE(workspace::readFile(folder.path("out.raw")) == piped.out);
  const Outcome bitmap = workspace::classic({"--frames", "2", "--format", "bmp", clip, "-"});
  EXPECT_EQ(bitmap.status, 0) << bitmap.err;
  const std::size_t frame = std::size_t{32} * 16 * 2;
  EXPECT_TRUE(bitmap.out.substr(66) == piped.out.substr(frame, frame));
}

TEST(Program, FramesAreNumberedAsInTheInput) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(16, 16, 5));
  const Outcome outcome = workspace::classic({"--frames", "2:4", clip, folder.path("f-%02d.ppm")});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "f-02.ppm", "f-03.ppm", "f-04.ppm"));
  EXPECT_FALSE(workspace::readFile(folder.path("f-02.ppm")) == workspace::readFile(folder.path("f-03.ppm")));
}

TEST(Program, Y4mStaysY4m) {
  const Folder folder;
  const std::string stream = y4m420(16, 16, 2);
  const std::string clip = folder.file("clip.y4m", stream);
  EXPECT_EQ(workspace::classic({clip, folder.path("copy.y4m")}).status, 0);
  const std::string copy = workspace::readFile(folder.path("copy.y4m"));
  EXPECT_TRUE(copy.substr(copy.find('\n')) == stream.substr(stream.find('\n')));
  EXPECT_THAT(copy, StartsWith("YUV4MPEG2 W16 H16 F30:1 "));
  EXPECT_THAT(copy.substr(0, copy.find('\n')), HasSubstr(" C420jpeg"));
}

/// 16 x 8 4:2:0 in which every U sample is 'u' and every V sample 'v'.
std::string colouredY4m() {
  return "YUV4MPEG2 W16 H8 F25:1 Ip A0:0 C420jpeg\nFRAME\n" + workspace::bytes(128, 1) + std::string(32, 'u') +
         std::string(32, 'v');
}

TEST(Program, Yv12KeepsTheColoursOfAStream) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", colouredY4m());
  const Outcome stream = workspace::classic({"--to", "yv12", "--format", "y4m", clip, "-"});
  EXPECT_EQ(stream.status, 0) << stream.err;
  EXPECT_TRUE(stream.out == colouredY4m());
  const Outcome raw = workspace::classic({"--to", "yv12", clip, "-"});
  EXPECT_EQ(raw.status, 0) << raw.err;
  EXPECT_TRUE(raw.out == workspace::bytes(128, 1) + std::string(32, 'v') + std::string(32, 'u'));
  // And back: raw yv12 is read V first.
  const Outcome back = workspace::classic(
      {"--size", "16x8", "--type", "yv12", "--to", "i420", "--format", "y4m", folder.file("v.raw", raw.out), "-"});
  EXPECT_EQ(back.status, 0) << back.err;
  EXPECT_TRUE(back.out == colouredY4m());
}

TEST(Program, AQualityThatChangesNothingIsSaid) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(32, 16, 1));
  const auto run = [&](std::vector<std::string> options) {
    options.insert(options.end(), {clip, "-"});
    return workspace::classic(options);
  };
  for (const std::vector<std::string> &options : std::vector<std::vector<std::string>>{
           {},
           {"--scale", "16x8", "--rotate", "left"},
           {"--scale", "64x32", "--rotate", "180"},
           {"--scale", "16x8", "--to", "bgr24"},
       }) {
    std::vector<std::string> asked = options;
    asked.insert(asked.end(), {"--quality", "3"});
    const Outcome outcome = run(asked);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.err, StartsWith("zqconvert: note: --quality changes nothing "));
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    EXPECT_TRUE(outcome.out == run(options).out) << outcome.err;
  }
  EXPECT_EQ(run({"--scale", "16x8", "--quality", "3"}).err, "");
  EXPECT_EQ(run({"--scale", "16x8", "--rotate", "left", "--quality", "0"}).err, "");
}

TEST(Program, InputMayBeItsOwnOutput) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(16, 16, 2));
  EXPECT_EQ(workspace::classic({clip, clip}).status, 0);
  EXPECT_EQ(workspace::readFile(clip).size(),
            std::string("YUV4MPEG2 W16 H16 F30:1 Ip A0:0 C420jpeg\n").size() + std::size_t{2} * (6 + 384));
}

TEST(Program, EveryTypeComesInByNameAndByCode) {
  const Folder folder;
  for (const zqconvert::ColorTypeInfo &type : zqconvert::colorTypes()) {
    const zqconvert::Frame frame = workspace::noiseFrame(type.code, 18, 14, 2);
    std::string raw;
    for (const std::vector<uint8_t> &plane : frame.planes) {
      raw.append(plane.begin(), plane.end());
    }
    const std::string file = folder.file("in.raw", raw);
    const std::string bmp = folder.path("out.bmp");
    std::string first;
    for (const std::string &name :
         {zqconvert::shortName(type.code), std::string(type.constant), std::to_string(type.code)}) {
      std::filesystem::remove(bmp);
      const Outcome outcome = workspace::classic({"--size", "18x14", "--type", name, file, bmp});
      ASSERT_EQ(outcome.status, 0) << name << ": " << outcome.err;
      const std::string bytes = workspace::readFile(bmp);
      EXPECT_EQ(bytes.size(), 66U + 14U * 36U) << name;
      EXPECT_TRUE(first.empty() || bytes == first) << name;
      first = bytes;
    }
  }
}

TEST(Program, NotesAreSaidOnceOneLineEach) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", "YUV4MPEG2 W24 H16 XCOLORRANGE=FULL\nFRAME\n" +
                                                       workspace::bytes(576, 1) + "FRAME\n" + workspace::bytes(576, 2));
  const auto lines = [&](std::vector<std::string> options) {
    options.insert(options.end(), {clip, "-"});
    const Outcome outcome = workspace::classic(options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return zqconvert::split(outcome.err, '\n');
  };
  using testing::AllOf;
  const auto note = [](const std::string &words) { return AllOf(StartsWith("zqconvert: note: "), HasSubstr(words)); };
  EXPECT_THAT(lines({}), ElementsAre(note("of full range"), note("the last 8 columns"), ""));
  EXPECT_THAT(lines({"--matrix", "bt709", "--rotate", "left"}),
              ElementsAre(note("--matrix changes nothing"), note("of full range"), ""));
  EXPECT_THAT(lines({"--matrix", "1,2,3,4", "--to", "i420"}), ElementsAre(note("--matrix changes nothing"), ""));
  EXPECT_THAT(lines({"--to", "bgr24", "--scale", "24x32"}),
              ElementsAre(note("of full range"), note("only parts of the lines"), ""));
  EXPECT_THAT(lines({"--to", "yv12"}), ElementsAre(note("colours in wrong places"), ""));
  EXPECT_THAT(lines({"--flip", "--matrix", "bt709"}), ElementsAre(""));
  EXPECT_THAT(lines({"--crop", "0,0,16,16", "--rotate", "180", "--quality", "1"}),
              ElementsAre(note("--quality"), note("of full range"), ""));
}

TEST(Program, BadInputIsRefusedInOneLine) {
  const Folder folder;
  const std::string good = folder.file("good.y4m", y4m420(16, 16, 2));
  const std::string out = folder.path("out.bmp");
  const std::string raw = folder.path("out.raw");
  struct Case {
    std::vector<std::string> arguments;
    std::string words;
  };
  const std::vector<Case> cases{
      {{folder.path("missing.y4m"), out}, "cannot be read"},
      {{folder.path(""), out}, "is a directory"},
      {{folder.file("empty.y4m", ""), out}, "not a YUV4MPEG2"},
      {{folder.file("none.y4m", "YUV4MPEG2 W16 H16\n"), out}, "holds no frame"},
      {{folder.file("odd.y4m", "YUV4MPEG2 Wx H16\n"), out}, "is no number"},
      {{folder.file("deep.y4m", "YUV4MPEG2 W16 H16 C420p10\n"), out}, "C420p10"},
      {{folder.file("huge.y4m", "YUV4MPEG2 W65535 H65535\nFRAME\n"), out}, "out of range"},
      {{folder.file("liar.y4m", "YUV4MPEG2 W16384 H16384\nFRAME\n"), raw}, "middle of frame 1"},
      {{folder.file("text.raw", "hello"), out}, "not a YUV4MPEG2"},
      {{"--size", "16x16", "--type", "i420", folder.path("text.raw"), out}, "middle of frame 1"},
      {{"--size", "16x16", "--type", "i420", folder.file("void.raw", ""), out}, "holds no frame"},
      {{"--size", "16x16", "--type", "i420", good, out}, "says its own size"},
      {{"--to", "nonsense", good, out}, "unknown colour type"},
      {{good, out}, "more"},
      {{"--frames", "1", "--to", "i420", good, out}, "holds no i420"},
      {{"--frames", "1", "--to", "rgb565", good, folder.path("out.y4m")}, "y4m"},
      {{"--to", "nv12", good, raw}, "no conversion"},
      {{"--frames", "3", good, out}, "has 2 frames,"},
      {{"--frames", "2", folder.file("one.y4m", y4m420(16, 16, 1)), out}, "has 1 frame,"},
      {{"--frames", "1:3", good, folder.path("f%d.png")}, "has 2 frames, so --frames cannot reach 3"},
      {{"--scale", "17x8", "--quality", "3", good, raw}, "--quality 3 is for reducing"},
      {{"--scale", "8x16", "--quality", "3", good, raw}, "--quality 3 is for reducing"},
      {{folder.file("text.y4m", "YUV4MPEG2 W16 H16\r\nFRAME\r\n"), raw}, "CR LF"},
      {{"--frames", "2:3", good, raw}, "has 2 frames"},
      {{"--frames", "5:", good, raw}, "has 2 frames"},
      {{"--crop", "1,0,8,8", good, raw}, "multiple of 2"},
      {{"--crop", "0,0,18,8", good, raw}, "outside the picture"},
      {{"--to", "bgr24", "--rotate", "left", good, raw}, "--rotate left"},
      {{"--to", "i420", "--scale", "8x8", "--quality", "3", good, raw}, "--quality 3"},
      {{"--scale", "16385x16385", good, raw}, "out of range"},
      {{"--scale", "60000x-1", good, raw}, "out of range"},
      {{"--scale", "0x8", good, raw}, "--scale: a picture of 0x8 has no pixels"},
      {{"--scale", "-1x0", good, raw}, "has no pixels"},
      {{"--crop", "0,0,8,0", good, raw}, "--crop: a part of 8x0 has no pixels"},
      {{"--size", "0x8", "--type", "i420", folder.path("text.raw"), raw}, "--size: a picture of 0x8 has no pixels"},
      {{good, folder.path("out.jpg")}, ".png, .ppm, .y4m"},
      {{good, folder.path("out.xyz")}, ".rgb565"},
      {{good, folder.path("no/such/folder.raw")}, "cannot be written"},
      {{good, folder.path("")}, "is a directory"},
      {{good}, "INPUT and OUTPUT"},
      {{"--bogus", good, out}, "--bogus"},
  };
  const std::vector<std::string> before = folder.names();
  for (const Case &c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.arguments));
    expectRefusal(workspace::classic(c.arguments), c.words);
    EXPECT_EQ(folder.names(), before);
  }
}

TEST(Program, FullDisk) {
  if (!std::filesystem::is_character_file("/dev/full")) {
    GTEST_SKIP() << "no /dev/full here";
  }
  const Folder folder;
  expectRefusal(workspace::classic({folder.file("clip.y4m", y4m420(64, 64, 4)), "/dev/full"}), "written");
}

TEST(Program, ALimitOnFileSizesIsAnErrorLikeAFullDisk) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(64, 64, 4));
  workspace::Process process({"--classic", clip, folder.path("out.raw")}, {.fileLimit = 4096});
  expectRefusal(process.wait(), "cannot be written completely");
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m"));
}

TEST(Program, InformationGoesToStandardOutput) {
  const Outcome help = workspace::classic({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.err, "");
  EXPECT_THAT(help.out, HasSubstr("Examples:"));
  const Outcome version = workspace::classic({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_THAT(version.out, StartsWith("zqconvert "));
  const Outcome types = workspace::classic({"--list-types"});
  EXPECT_EQ(types.status, 0);
  EXPECT_THAT(types.out, HasSubstr("nv12"));
}

TEST(Program, StatsAreOneLineOnStandardError) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(32, 16, 3));
  const Outcome outcome = workspace::classic({"--stats", "--rotate", "left", clip, "-"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, StartsWith("zqconvert: 3 frames, i420 32x16 to rgb565 16x32: "));
  EXPECT_THAT(outcome.err, HasSubstr("million output pixels per second\n"));
}

} // namespace
