#include "options.h"

#include "error.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace zqconvert {

namespace {

constexpr const char *kDescription =
    "Converts pictures between YUV and RGB layouts, scaled, turned, flipped or cut out as asked.\n\n"
    "INPUT is a YUV4MPEG2 stream (8-bit 420, 422, 444, 440 or 411), raw frames with --size and --type,\n"
    "or - for standard input. OUTPUT is written as its extension says: .bmp, .png, .ppm, .y4m, or raw\n"
    "frames (.raw, .yuv, .rgb565, .nv12 and the like); - is standard output, raw unless --format says\n"
    "otherwise. A number in OUTPUT (out-%04d.png) gives one file a frame, numbered as in the input\n"
    "from 1; %% is a percent sign.";

constexpr const char *kExamples =
    "Examples:\n"
    "  ffmpeg -i photo.jpg -pix_fmt yuv420p photo.y4m      make something to convert\n"
    "  zqconvert photo.y4m photo.png                       look at it as RGB565\n"
    "  zqconvert --to bgr24 photo.y4m photo.bmp            the library's 24-bit bytes in a bitmap\n"
    "  zqconvert --scale 320x-1 --quality 3 photo.y4m small.png\n"
    "  zqconvert --rotate left --crop 64,32,320,240 photo.y4m part.bmp\n"
    "  zqconvert --size 640x480 --type yuyv camera.raw camera-%03d.png\n"
    "  zqconvert --to i420 --scale 1280x720 clip.y4m - | ffplay -f rawvideo -video_size 1280x720 -\n"
    "  zqconvert --frames 10:20 clip.y4m frame-%04d.png\n\n"
    "A job that cannot be done ends with one line on standard error and status 2 and leaves no file\n"
    "behind; of a clip that ends inside a frame, the frames before it are converted. Lines that begin\n"
    "with \"note:\" say what a conversion is known to get wrong.";

struct Words {
  std::string size, type, to, format, matrix = "bt601", scale, rotate, crop, frames;
  std::string quality = "0";
  bool flip = false, help = false, version = false, listTypes = false;
};

/// INPUT and OUTPUT are needed, but not with --help and the like, so that the parser knows them as optional.
class HelpText : public CLI::Formatter {
public:
  std::string make_usage(const CLI::App * /*app*/, std::string name) const override {
    return "\nUsage: " + name + " [OPTIONS] INPUT OUTPUT\n";
  }
};

void describe(CLI::App &app, Options &options, Words &words) {
  app.set_help_flag();
  app.formatter(std::make_shared<HelpText>());
  app.get_formatter()->column_width(34);
  // Whoever gives an option twice hears so from requireSingle(), in plainer words than the parser's.
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  app.footer(kExamples);
  app.add_option("INPUT", options.input, "What to convert")->type_name("");
  app.add_option("OUTPUT", options.output, "Where to put the result")->type_name("");
  app.add_option("--size", words.size, "Size of raw input frames")->type_name("WxH")->group("Input");
  app.add_option("--type", words.type, "Colour type of raw input frames, by name or code")
      ->type_name("TYPE")
      ->group("Input");
  app.add_option("--frames", words.frames,
                 "Convert frame N only, or frames A to B, from A on, or up to B,\ncounted from 1")
      ->type_name("N|A:B|A:|:B")
      ->group("Input");
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
  app.add_flag("--flip", words.flip, "Exchange top and bottom")->group("Conversion");
  app.add_option("--format", words.format, "Format of OUTPUT, whatever its name: raw, bmp, png, ppm, y4m")
      ->type_name("NAME")
      ->group("Output");
  app.add_flag("--stats", options.stats, "Say on standard error what was done and how fast")->group("Output");
  app.add_flag("-h,--help", words.help, "Show this text")->group("Information");
  app.add_flag("--version", words.version, "Show the version")->group("Information");
  app.add_flag("--list-types", words.listTypes, "Show the colour types and their names")->group("Information");
}

std::string versionText() {
  return "zqconvert " + std::to_string(ZQCC_VERSION_MAJOR) + "." + std::to_string(ZQCC_VERSION_MINOR) + "." +
         std::to_string(ZQCC_VERSION_PATCH) + "\n";
}

void interpret(const Words &words, Options &options) {
  if (options.input.empty() || options.output.empty()) {
    throw Error("INPUT and OUTPUT are needed (--help explains)");
  }
  if (words.size.empty() != words.type.empty()) {
    throw Error("raw input needs both --size and --type");
  }
  if (!words.size.empty()) {
    options.rawSize = parseSizeOption("--size", words.size);
    options.rawLayout = parseRawLayout(words.type);
  }
  if (!words.to.empty()) {
    options.outType = parseColorType(words.to);
  }
  options.format = words.format.empty() ? formatOfName(options.output) : parseFormat(words.format);
  options.request.matrix = parseMatrix(words.matrix);
  options.request.rotation = parseRotation(words.rotate, words.flip);
  options.request.quality = parseQuality(words.quality);
  if (!words.scale.empty()) {
    options.request.scale = parseScale(words.scale);
  }
  if (!words.crop.empty()) {
    options.request.crop = parseCrop(words.crop);
  }
  if (!words.frames.empty()) {
    options.frames = parseFrames(words.frames);
  }
}

void requireSingle(const CLI::App &app) {
  for (const CLI::Option *option : app.get_options()) {
    const bool flag = option->get_items_expected_max() == 0;
    if (!flag && option->count() > 1) {
      throw Error(option->get_name() + " is given more than once");
    }
  }
}

/// The parser's words, or plainer ones where it has riddles.
std::string explain(const CLI::ParseError &error) {
  std::string line = error.what();
  std::replace(line.begin(), line.end(), '\n', ' ');
  if (dynamic_cast<const CLI::ArgumentMismatch *>(&error) != nullptr) {
    return line.substr(0, line.find(':')) + " needs a value"; // it is "--size: 1 required WxH missing"
  }
  if (dynamic_cast<const CLI::ConversionError *>(&error) != nullptr) {
    return "options that take no value, such as --flip, cannot be given one"; // all others take any text
  }
  return line;
}

} // namespace

Options parseOptions(const std::vector<std::string> &arguments) {
  Options options;
  Words words;
  CLI::App app(kDescription, "zqconvert");
  describe(app, options, words);
  try {
    // The parser takes its words from the back.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    app.parse(reversed);
  } catch (const CLI::ParseError &error) {
    throw Error(explain(error) + " (--help explains)");
  }
  requireSingle(app);
  if (words.help) {
    options.message = app.help();
  } else if (words.version) {
    options.message = versionText();
  } else if (words.listTypes) {
    options.message = describeColorTypes() + describeRawLayouts();
  } else {
    interpret(words, options);
  }
  return options;
}

} // namespace zqconvert
