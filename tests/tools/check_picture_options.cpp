// The command line of zqPicture, taken and refused.
#include "error.h"
#include "options.h"
#include "picture_bytes.h"
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace zqconvert;
using testing::HasSubstr;
using workspace::Folder;

namespace {

PictureRequest requestOf(std::vector<std::string> arguments) {
  arguments.insert(arguments.end(), {"a", "b"});
  return parseOptions(arguments).picture;
}

TEST(PictureOptions, Defaults) {
  const Options options = parseOptions({"in.png", "out.bmp"});
  EXPECT_EQ(options.library, Library::Picture);
  EXPECT_FALSE(options.rawSize || options.rawLayout || options.outType || options.picture.scale ||
               options.picture.crop);
  EXPECT_EQ(options.picture.orientation, 1);
  EXPECT_EQ(options.picture.filter, ZQP_FILTER_BILINEAR);
  EXPECT_EQ(options.picture.dither, ZQP_DITHER_NONE);
  EXPECT_EQ(options.picture.threads, 1);
  EXPECT_FALSE(options.picture.in.matrix || options.picture.out.range || options.picture.in.siting);
}

TEST(PictureOptions, EveryOption) {
  const Options options =
      parseOptions({"--size",    "64x48", "--from",   "NV21", "--to",     "rgba", "--crop",   "1,2,3,5",
                    "--scale",   "-2x10", "--filter", "Area", "--rotate", "left", "--dither", "ordered",
                    "--threads", "3",     "--frames", "2:",   "--format", "raw",  "-",        "-"});
  EXPECT_EQ(options.rawSize, (Size{64, 48}));
  EXPECT_EQ(options.rawLayout->type, COLOR_YUV420_PACK2);
  EXPECT_EQ(options.outType, int{kRgba});
  EXPECT_EQ(options.picture.crop->x, 1);
  EXPECT_EQ(options.picture.crop->height, 5);
  EXPECT_EQ(options.picture.scale, (Size{-2, 10}));
  EXPECT_EQ(options.picture.filter, ZQP_FILTER_AREA);
  EXPECT_EQ(options.picture.orientation, 8);
  EXPECT_EQ(options.picture.dither, ZQP_DITHER_ORDERED);
  EXPECT_EQ(options.picture.threads, 3);
  EXPECT_EQ(options.frames.first, 2);
  // The older name does as well, with --classic too.
  EXPECT_EQ(parseOptions({"--size", "8x8", "--type", "grey", "a", "b"}).rawLayout->type, int{kGrey});
  EXPECT_EQ(parseOptions({"--classic", "--size", "8x8", "--from", "nv12", "a", "b"}).rawLayout->type,
            COLOR_YUV420_PACK);
}

TEST(PictureOptions, InAndOut) {
  const PictureRequest both =
      requestOf({"--range", "full:limited", "--matrix", "BT601:0.2,0.1", "--siting", "left:centre"});
  EXPECT_EQ(both.in.range, Range::Full);
  EXPECT_EQ(both.out.range, Range::Limited);
  EXPECT_EQ(both.in.matrix->matrix, ZQP_BT601);
  EXPECT_EQ(both.out.matrix->matrix, ZQP_MATRIX_GIVEN);
  EXPECT_FLOAT_EQ(both.out.matrix->kr, 0.2F);
  EXPECT_FLOAT_EQ(both.out.matrix->kb, 0.1F);
  EXPECT_EQ(both.in.siting, Siting::Left);
  EXPECT_EQ(both.out.siting, Siting::Centre);
  const PictureRequest in = requestOf({"--range", "limited", "--matrix", "bt2020"});
  EXPECT_EQ(in.in.range, Range::Limited);
  EXPECT_FALSE(in.out.range || in.out.matrix);
  const PictureRequest out = requestOf({"--range", ":full", "--matrix", ":bt709", "--siting", ":center"});
  EXPECT_FALSE(out.in.range || out.in.matrix || out.in.siting);
  EXPECT_EQ(out.out.range, Range::Full);
  EXPECT_EQ(out.out.matrix->matrix, ZQP_BT709);
  EXPECT_EQ(out.out.siting, Siting::Centre);
}

TEST(PictureOptions, HelpsSayWhichIsWhich) {
  const std::string help = parseOptions({"--help"}).message;
  EXPECT_THAT(help, HasSubstr("\nUsage: zqconvert [OPTIONS] INPUT OUTPUT\n"));
  EXPECT_THAT(help, HasSubstr("--classic --help"));
  EXPECT_THAT(help, testing::Not(HasSubstr("--quality")));
  const std::string classic = parseOptions({"--classic", "--help"}).message;
  EXPECT_THAT(classic, HasSubstr("without --classic"));
  EXPECT_THAT(classic, testing::Not(HasSubstr("--dither")));
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 100U) << line;
  }
  const std::string types = parseOptions({"--list-types"}).message;
  for (const char *words : {"rgba ", "input only   Y, U, V planes, chroma w x h/4", "yuvj420p"}) {
    EXPECT_THAT(types, HasSubstr(words));
  }
}

TEST(PictureOptions, WhatMakesNoSenseIsRefusedInPlainWords) {
  struct Case {
    std::vector<std::string> arguments;
    const char *words;
  };
  for (const Case &c : std::vector<Case>{
           {{"a"}, "INPUT and OUTPUT are needed"},
           {{"--size", "8x8", "a", "b"}, "raw input needs both --size and --from"},
           {{"--from", "i420", "a", "b"}, "raw input needs both --size and --from"},
           {{"--from", "i420", "--type", "i420", "--size", "8x8", "a", "b"}, "cannot both be given"},
           {{"--to", "jpeg", "a", "b"}, "unknown colour type 'jpeg'"},
           {{"--to", "1003", "a", "b"}, "unknown colour type '1003'"},
           {{"--flip", "photo.y4m", "out.png"}, "--flip takes h (left to right) or v (top to bottom), not 'photo.y4m'"},
           {{"--rotate", "45", "a", "b"}, "90, 180 or 270 degrees clockwise, not '45'"},
           {{"--filter", "cubic", "a", "b"}, "--filter takes bilinear, nearest or area, not 'cubic'"},
           {{"--dither", "noise", "a", "b"}, "--dither takes none or ordered"},
           {{"--matrix", "grey", "a", "b"}, "--matrix takes bt601, bt709, bt2020 or two numbers"},
           {{"--matrix", "0.3", "a", "b"}, "--matrix takes"},
           {{"--matrix", "0.3,0.1,0.2", "a", "b"}, "--matrix takes"},
           {{"--matrix", "0.5,0.4", "a", "b"}, "together at most 0.8"},
           {{"--matrix", "0,0.4", "a", "b"}, "must be above 0"},
           {{"--matrix", "bt601:bt709:bt2020", "a", "b"}, "--matrix takes IN, IN:OUT or :OUT"},
           {{"--range", "full:", "a", "b"}, "--range takes IN, IN:OUT or :OUT"},
           {{"--range", ":", "a", "b"}, "--range takes IN, IN:OUT or :OUT"},
           {{"--range", "tv", "a", "b"}, "--range takes limited or full"},
           {{"--siting", "top", "a", "b"}, "--siting takes left or centre"},
           {{"--threads", "0", "a", "b"}, "--threads takes a number from 1 to 256"},
           {{"--threads", "257", "a", "b"}, "--threads takes a number from 1 to 256"},
           {{"--quality", "3", "a", "b"}, "--quality is an option of --classic"},
           {{"--scale", "0x4", "a", "b"}, "has no pixels"},
           {{"a", "b.jpeg"}, "nothing is known of .jpeg files"},
           {{"--classic", "--dither", "none", "a", "b"}, "--dither"},
           {{"--classic", "a", "b.rgba"}, "nothing is known of .rgba files"},
       }) {
    try {
      parseOptions(c.arguments);
      ADD_FAILURE() << "taken: " << testing::PrintToString(c.arguments);
    } catch (const Error &error) {
      EXPECT_THAT(error.what(), HasSubstr(c.words));
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
  }
}

TEST(PictureOptions, JobsThatCannotBeDoneEndInOneLineAndStatus2) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", workspace::y4m420(16, 16, 2));
  const std::string text = folder.file("text", "hello");
  const std::string empty = folder.file("empty", "");
  const std::string raw = folder.path("out.raw");
  const std::vector<std::string> before = folder.names();
  struct Case {
    std::vector<std::string> arguments;
    const char *words;
  };
  for (const Case &c : std::vector<Case>{
           {{text, raw}, "neither a YUV4MPEG2 stream nor a PNG or BMP file"},
           {{empty, raw}, "neither a YUV4MPEG2 stream nor a PNG or BMP file"},
           {{"--size", "8x8", "--from", "i420", clip, raw}, "--size and --from are for raw frames"},
           {{"--to", "i440", clip, raw}, "pictures of i440 are read, but not made"},
           {{"--to", "nv12", clip, folder.path("out.y4m")}, "a y4m file holds i420, yv12, i422, yv16, i444 or grey"},
           {{"--to", "i420", "--frames", "1", clip, folder.path("out.png")}, "a picture file holds no i420"},
           {{"--crop", "1,1,16,4", clip, raw}, "--crop reaches outside the picture of 16x16"},
           {{"--crop", "1,1,0,4", clip, raw}, "has no pixels"},
           {{"--scale", "40000x2", clip, raw}, "i420 16x16 to rgb565 40000x2: "},
           {{clip, folder.path("out.png")}, "holds one picture, but the input has more"},
           {{"--frames", "3", clip, raw}, "has 2 frames"},
       }) {
    SCOPED_TRACE(testing::PrintToString(c.arguments));
    workspace::expectRefusal(workspace::run(c.arguments), c.words);
    EXPECT_EQ(folder.names(), before);
  }
}

TEST(PictureOptions, WhatChangesNothingIsSaid) {
  const Folder folder;
  const std::string png = folder.path("in.png");
  ASSERT_EQ(picture_bytes::job({"--frames", "1", folder.file("clip.y4m", workspace::y4m420(16, 16, 1)), png}), "");
  const auto said = [&](std::vector<std::string> options) {
    options.insert(options.end(), {png, folder.path("out.raw")});
    const workspace::Outcome outcome = workspace::run(options);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.err;
  };
  EXPECT_EQ(said({"--matrix", "bt709", "--to", "rgba"}),
            "zqconvert: note: --matrix changes nothing from rgb24 to rgba, which are both RGB\n");
  EXPECT_THAT(said({"--siting", "centre", "--to", "i444"}), HasSubstr("note: --siting changes nothing"));
  EXPECT_THAT(said({"--dither", "ordered", "--to", "bgr24"}), HasSubstr("note: --dither changes nothing"));
  EXPECT_EQ(said({"--matrix", "bt709", "--siting", ":centre", "--to", "i420"}), "");
  EXPECT_EQ(said({"--dither", "ordered", "--to", "rgb565"}), "");
}

} // namespace
