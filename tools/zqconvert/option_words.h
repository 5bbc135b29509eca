// How the options of either library are described to the parser, and what their words become.
#pragma once

#include "options.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zqconvert {

/// What stands behind the options, as typed. Flags that may be given twice have no words.
struct Words {
  std::string size, type, to, format, matrix, scale, rotate, crop, frames;
  std::string from, filter, flip, range, siting, dither, threads; ///< Of zqPicture alone.
  std::string quality = "0";                                      ///< Of the thirteen functions alone, as is flips.
  bool flips = false, classic = false, help = false, version = false, listTypes = false;
};

/// The text above the options and the one below.
extern const char *const kClassicDescription;
extern const char *const kClassicExamples;
extern const char *const kPictureDescription;
extern const char *const kPictureExamples;

void describeClassicInput(CLI::App &app, Words &words);
void describeClassicConversion(CLI::App &app, Words &words);
void interpretClassic(const Words &words, Options &options);

void describePictureInput(CLI::App &app, Words &words);
void describePictureConversion(CLI::App &app, Words &words);
void interpretPicture(const Words &words, Options &options);

} // namespace zqconvert
