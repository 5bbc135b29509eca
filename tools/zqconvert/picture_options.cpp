#include "error.h"
#include "option_words.h"
#include "picture_values.h"

#include <CLI/CLI.hpp>

namespace zqconvert {

const char *const kPictureDescription =
    "Converts pictures and clips between YUV, RGB and grey in any layout, scaled, turned, mirrored or\n"
    "cut out as asked, with the right colours for every combination.\n\n"
    "INPUT is a YUV4MPEG2 stream (8-bit 420, 422, 444, 440, 411 or mono), a PNG or uncompressed BMP\n"
    "file, raw frames with --size and --from, or - for standard input. OUTPUT is written as its\n"
    "extension says: .bmp, .png, .ppm, .y4m, or raw frames (.raw, .yuv, .rgb565, .nv12 and the like);\n"
    "- is standard output, raw unless --format says otherwise. A number in OUTPUT (out-%04d.png) gives\n"
    "one file a frame, numbered as in the input from 1; %% is a percent sign.";

const char *const kPictureExamples =
    "IN is said of the input, OUT behind a colon of the output; either may be left out (full, :full).\n\n"
    "Examples:\n"
    "  ffmpeg -i photo.jpg -pix_fmt yuv420p photo.y4m      make something to convert\n"
    "  zqconvert photo.y4m photo.png                       look at it\n"
    "  zqconvert --scale 320x-1 --filter area photo.png small.bmp\n"
    "  zqconvert --rotate right --scale 480x800 --to rgb565 --dither ordered photo.png panel.bmp\n"
    "  zqconvert --size 640x480 --from yuyv camera.raw camera-%03d.png\n"
    "  zqconvert --to i420 --scale 1280x720 clip.y4m - | ffplay -f rawvideo -video_size 1280x720 -\n"
    "  zqconvert --matrix bt601:bt709 --range full:limited old.y4m new.y4m\n"
    "  zqconvert --threads 4 --scale 1280x720 clip.y4m small.y4m\n\n"
    "A job that cannot be done ends with one line on standard error and status 2 and leaves no file\n"
    "behind; of a clip that ends inside a frame, the frames before it are converted.";

void describePictureInput(CLI::App &app, Words &words) {
  app.add_option("--from", words.from, "Colour type of raw input frames (--type is the same)")
      ->type_name("TYPE")
      ->group("Input");
  app.add_option("--type", words.type, "")->group("");
}

namespace {

void describeShape(CLI::App &app, Words &words) {
  app.add_option("--crop", words.crop, "Convert this part of the input only, at any place")
      ->type_name("X,Y,W,H")
      ->group("Conversion");
  app.add_option("--scale", words.scale,
                 "Size of the finished picture, as one sees it; -1 for a side keeps\nthe shape (640x-1), -2 keeps it "
                 "and makes the side even")
      ->type_name("WxH")
      ->group("Conversion");
  app.add_option("--filter", words.filter,
                 "How pixels are made where sizes differ: bilinear (the default),\nnearest, or area, the mean of what "
                 "a pixel covers, best for\nreducing to half and less")
      ->type_name("bilinear|nearest|area")
      ->group("Conversion");
  app.add_option("--rotate", words.rotate, "Turn: a quarter left or right, or clockwise by degrees")
      ->type_name("left|right|90|180|270")
      ->group("Conversion");
  app.add_option("--flip", words.flip, "Mirror left to right (h) or top to bottom (v), after a turn")
      ->type_name("h|v")
      ->group("Conversion");
}

void describeColours(CLI::App &app, Words &words) {
  app.add_option("--matrix", words.matrix,
                 "bt601 (the default), bt709, bt2020 or Kr,Kb; that of the output\nis that of the input unless said")
      ->type_name("IN[:OUT]")
      ->group("Colours");
  app.add_option("--range", words.range,
                 "limited or full. Usual are what the stream says, limited for\nYUV and full for RGB; YUV keeps its "
                 "range")
      ->type_name("IN[:OUT]")
      ->group("Colours");
  app.add_option("--siting", words.siting,
                 "Where chroma stands between columns: left or centre. Usual are\nwhat the stream says and left")
      ->type_name("IN[:OUT]")
      ->group("Colours");
  app.add_option("--dither", words.dither, "How RGB565 is rounded: none (the default) or ordered")
      ->type_name("none|ordered")
      ->group("Colours");
}

} // namespace

void describePictureConversion(CLI::App &app, Words &words) {
  app.add_option("--to", words.to, "Colour type of the result (else what OUTPUT is called or holds\nbest)")
      ->type_name("TYPE")
      ->group("Conversion");
  describeShape(app, words);
  describeColours(app, words);
  app.add_option("--quality", words.quality, "")->group(""); // taken so that the refusal can say what to take instead
  app.add_option("--threads", words.threads, "Convert bands of every frame on so many threads")
      ->type_name("N")
      ->group("Output");
}

void interpretPicture(const Words &words, Options &options) {
  if (words.quality != "0") {
    throw Error("--quality is an option of --classic; without it, --filter says how pictures are resampled");
  }
  PictureRequest &request = options.picture;
  request.orientation = parseOrientation(words.rotate, words.flip);
  if (!words.scale.empty()) {
    request.scale = parseScale(words.scale);
  }
  if (!words.crop.empty()) {
    request.crop = parseCrop(words.crop);
  }
  if (!words.filter.empty()) {
    request.filter = parseFilter(words.filter);
  }
  if (!words.dither.empty()) {
    request.dither = parseDither(words.dither);
  }
  if (!words.threads.empty()) {
    request.threads = parseThreads(words.threads);
  }
  parseMatrices(words.matrix, request);
  parseRanges(words.range, request);
  parseSitings(words.siting, request);
}

} // namespace zqconvert
