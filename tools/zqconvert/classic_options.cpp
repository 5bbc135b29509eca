#include "option_words.h"

#include <CLI/CLI.hpp>

namespace zqconvert {

const char *const kClassicDescription =
    "Converts pictures between YUV and RGB layouts by the thirteen functions, byte for byte what they\n"
    "give, scaled, turned, flipped or cut out as asked. Take it to see what a program that calls them\n"
    "gets; without --classic, every combination of types and options has the right colours.\n\n"
    "INPUT is a YUV4MPEG2 stream (8-bit 420, 422, 444, 440 or 411), raw frames with --size and --type,\n"
    "or - for standard input. OUTPUT is written as its extension says: .bmp, .png, .ppm, .y4m, or raw\n"
    "frames (.raw, .yuv, .rgb565, .nv12 and the like); - is standard output, raw unless --format says\n"
    "otherwise. A number in OUTPUT (out-%04d.png) gives one file a frame, numbered as in the input\n"
    "from 1; %% is a percent sign.";

const char *const kClassicExamples =
    "Examples:\n"
    "  ffmpeg -i photo.jpg -pix_fmt yuv420p photo.y4m      make something to convert\n"
    "  zqconvert --classic photo.y4m photo.png             look at it as RGB565\n"
    "  zqconvert --classic --to bgr24 photo.y4m photo.bmp  the library's 24-bit bytes in a bitmap\n"
    "  zqconvert --classic --scale 320x-1 --quality 3 photo.y4m small.png\n"
    "  zqconvert --classic --rotate left --crop 64,32,320,240 photo.y4m part.bmp\n"
    "  zqconvert --classic --size 640x480 --type yuyv camera.raw camera-%03d.png\n"
    "  zqconvert --classic --frames 10:20 clip.y4m frame-%04d.png\n\n"
    "A job that cannot be done ends with one line on standard error and status 2 and leaves no file\n"
    "behind; of a clip that ends inside a frame, the frames before it are converted. Lines that begin\n"
    "with \"note:\" say what a conversion is known to get wrong.";

void describeClassicInput(CLI::App &app, Words &words) {
  app.add_option("--type", words.type, "Colour type of raw input frames, by name or code")
      ->type_name("TYPE")
      ->group("Input");
  app.add_option("--from", words.from, "")->group(""); // the name that it has without --classic
}

void describeClassicConversion(CLI::App &app, Words &words) {
  words.matrix = "bt601";
  app.add_option("--crop", words.crop, "Convert this part of the input only; X and Y must lie on chroma\nsamples")
      ->type_name("X,Y,W,H")
      ->group("Conversion");
  app.add_option("--to", words.to, "Colour type of the result (what OUTPUT is called, else rgb565)")
      ->type_name("TYPE")
      ->group("Conversion");
  app.add_option("--matrix", words.matrix,
                 "bt601 (the default), bt709, grey, or the four coefficients\n"
                 "Cr to R, Cr to G, Cb to B, Cb to G, each times 512. Conversions\n"
                 "with arithmetic of their own take no notice")
      ->type_name("NAME|a,b,c,d")
      ->group("Conversion");
  app.add_option("--scale", words.scale,
                 "Size of the result before it is turned; -1 for a side keeps the\nshape (640x-1), -2 keeps it and "
                 "makes the side even")
      ->type_name("WxH")
      ->group("Conversion");
  app.add_option("--quality", words.quality,
                 "Resampling with --scale: 0 plain, 1 and 2 five taps (narrower,\n"
                 "wider), 3 the mean of a box, for reducing only. Where a\n"
                 "conversion has no filters, a note says so")
      ->type_name("0..3")
      ->group("Conversion");
  app.add_option("--rotate", words.rotate, "Turn: a quarter left or right, or clockwise by degrees")
      ->type_name("left|right|90|180|270")
      ->group("Conversion");
  app.add_flag("--flip", words.flips, "Exchange top and bottom")->group("Conversion");
}

void interpretClassic(const Words &words, Options &options) {
  options.request.matrix = parseMatrix(words.matrix);
  options.request.rotation = parseRotation(words.rotate, words.flips);
  options.request.quality = parseQuality(words.quality);
  if (!words.scale.empty()) {
    options.request.scale = parseScale(words.scale);
  }
  if (!words.crop.empty()) {
    options.request.crop = parseCrop(words.crop);
  }
}

} // namespace zqconvert
