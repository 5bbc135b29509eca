#include "options.h"

#include "error.h"
#include "option_words.h"
#include "picture_types.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace zqconvert {

namespace {

/// INPUT and OUTPUT are needed, but not with --help and the like, so that the parser knows them as optional.
class HelpText : public CLI::Formatter {
public:
  explicit HelpText(std::string options) : options_(std::move(options)) {}
  std::string make_usage(const CLI::App * /*app*/, std::string name) const override {
    return "\nUsage: " + name + " " + options_ + " INPUT OUTPUT\n";
  }

private:
  std::string options_;
};

void describe(CLI::App &app, Options &options, Words &words) {
  const bool classic = options.library == Library::Classic;
  app.set_help_flag();
  app.formatter(std::make_shared<HelpText>(classic ? "--classic [OPTIONS]" : "[OPTIONS]"));
  app.get_formatter()->column_width(34);
  // Whoever gives an option twice hears so from requireSingle(), in plainer words than the parser's.
  app.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
  app.footer(classic ? kClassicExamples : kPictureExamples);
  app.add_option("INPUT", options.input, "What to convert")->type_name("");
  app.add_option("OUTPUT", options.output, "Where to put the result")->type_name("");
  app.add_option("--size", words.size, "Size of raw input frames")->type_name("WxH")->group("Input");
  (classic ? describeClassicInput : describePictureInput)(app, words);
  app.add_option("--frames", words.frames,
                 "Convert frame N only, or frames A to B, from A on, or up to B,\ncounted from 1")
      ->type_name("N|A:B|A:|:B")
      ->group("Input");
  (classic ? describeClassicConversion : describePictureConversion)(app, words);
  app.add_option("--format", words.format, "Format of OUTPUT, whatever its name: raw, bmp, png, ppm, y4m")
      ->type_name("NAME")
      ->group("Output");
  app.add_flag("--stats", options.stats, "Say on standard error what was done and how fast")->group("Output");
  app.add_flag("--classic", words.classic,
               classic ? "What this is the help of"
                       : "Convert by the thirteen functions;\n--classic --help has their options")
      ->group("Information");
  app.add_flag("-h,--help", words.help, "Show this text")->group("Information");
  app.add_flag("--version", words.version, "Show the version")->group("Information");
  app.add_flag("--list-types", words.listTypes, "Show the colour types and their names")->group("Information");
}

std::string versionText() {
  return "zqconvert " + std::to_string(ZQCC_VERSION_MAJOR) + "." + std::to_string(ZQCC_VERSION_MINOR) + "." +
         std::to_string(ZQCC_VERSION_PATCH) + "\n";
}

void interpretRawInput(const Words &words, Options &options) {
  const bool classic = options.library == Library::Classic;
  if (!words.type.empty() && !words.from.empty()) {
    throw Error("--from and --type are the same and cannot both be given");
  }
  const std::string &type = words.from.empty() ? words.type : words.from;
  if (words.size.empty() != type.empty()) {
    throw Error(std::string("raw input needs both --size and ") + (classic ? "--type" : "--from"));
  }
  if (!words.size.empty()) {
    options.rawSize = parseSizeOption("--size", words.size);
    options.rawLayout = parseRawLayout(type, options.library);
  }
}

void interpret(const Words &words, Options &options) {
  // First of all: an option that took INPUT for its value says so itself.
  (options.library == Library::Classic ? interpretClassic : interpretPicture)(words, options);
  if (options.input.empty() || options.output.empty()) {
    throw Error("INPUT and OUTPUT are needed (--help explains)");
  }
  interpretRawInput(words, options);
  if (!words.to.empty()) {
    options.outType = parseColorType(words.to, options.library);
  }
  options.format = words.format.empty() ? formatOfName(options.output, options.library) : parseFormat(words.format);
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
    return "options that take no value, such as --stats, cannot be given one"; // all others take any text
  }
  return line;
}

/// The two libraries have options of the same names and other values, so that this one is looked for first.
Library libraryOf(const std::vector<std::string> &arguments) {
  return std::ranges::find(arguments, "--classic") == arguments.end() ? Library::Picture : Library::Classic;
}

std::string typesText(Library library) {
  return library == Library::Classic ? describeColorTypes() + describeRawLayouts() : describePictureTypes();
}

} // namespace

Options parseOptions(const std::vector<std::string> &arguments) {
  Options options;
  options.library = libraryOf(arguments);
  Words words;
  CLI::App app(options.library == Library::Classic ? kClassicDescription : kPictureDescription, "zqconvert");
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
    options.message = typesText(options.library);
  } else {
    interpret(words, options);
  }
  return options;
}

} // namespace zqconvert
