// The manual page and the completion of bash say what --help says.
#include "color_types.h"
#include "error.h"
#include "options.h"
#include "picture_types.h"
#include "raw_reader.h"
#include "text.h"
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <set>
#include <sstream>

using namespace zqconvert;
using testing::ElementsAreArray;
using testing::IsEmpty;
using workspace::Folder;

namespace {

/// An option and the form of its value, or an empty one.
using Forms = std::set<std::pair<std::string, std::string>>;

/// "--name VALUE" or "--name", behind the short form of the option or without one.
void addForm(Forms &forms, std::string text) {
  std::erase(text, '"');
  std::erase(text, ',');
  std::istringstream words(text.starts_with("-h") ? text.substr(2) : text);
  std::string name;
  std::string value;
  words >> name >> value;
  if (name.starts_with("--")) {
    forms.emplace(name, value);
  }
}

/// Two blanks end what the help says of an option's form; descriptions begin at a column of their own.
Forms formsOfHelp(const std::vector<std::string> &arguments = {"--help"}) {
  Forms forms;
  std::istringstream help(parseOptions(arguments).message);
  for (std::string line; std::getline(help, line);) {
    if (line.starts_with("  -")) {
      const std::string form = line.substr(2, line.find("  ", 2) - 2);
      addForm(forms, form.starts_with("-h,") ? form.substr(3) : form);
    }
  }
  return forms;
}

Forms formsOfClassicHelp() {
  return formsOfHelp({"--classic", "--help"});
}

/// Options are tagged paragraphs of the manual.
Forms formsOfManual(const std::string &manual) {
  Forms forms;
  std::istringstream lines(manual);
  bool tag = false;
  for (std::string line; std::getline(lines, line);) {
    if (tag && line.starts_with(".B")) {
      std::string plain = line.substr(line.find(' ') + 1);
      std::erase(plain, '\\');
      addForm(forms, plain);
    }
    tag = line == ".TP";
  }
  return forms;
}

std::set<std::string> wordsOf(const std::string &text) {
  std::istringstream lines(text);
  std::set<std::string> words;
  for (std::string word; lines >> word;) {
    words.insert(word);
  }
  return words;
}

/// What a shell command prints, on either channel.
std::string outputOf(const std::string &command) {
  std::FILE *pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) {
    throw std::runtime_error("no shell");
  }
  std::string text;
  std::array<char, 4096> buffer{};
  for (std::size_t got = 0; (got = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    text.append(buffer.data(), got);
  }
  pclose(pipe);
  return text;
}

bool exists(const std::string &program) {
  return !outputOf("command -v " + program).empty();
}

/// What the completion offers for the last of these words, typed in `directory`.
std::set<std::string> offers(const std::vector<std::string> &typed, const std::string &directory = "/") {
  std::string words = "zqconvert";
  for (const std::string &word : typed) {
    words += " '" + word + "'";
  }
  const std::string script =
      "cd " + directory + "; . " ZQCONVERT_COMPLETION "; COMP_WORDS=(" + words +
      "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zqconvert; printf \"%s\\n\" \"${COMPREPLY[@]}\"";
  return wordsOf(outputOf("bash -c " + workspace::quoted(script)));
}

TEST(Manual, HasTheOptionsOfBothHelpsAndNoOthers) {
  Forms help = formsOfHelp();
  Forms classic = formsOfClassicHelp();
  EXPECT_GE(help.size(), 20U);
  EXPECT_GE(classic.size(), 15U);
  EXPECT_TRUE(help.contains({"--size", "WxH"}) && help.contains({"--flip", "h|v"}) && help.contains({"--help", ""}));
  EXPECT_TRUE(classic.contains({"--flip", ""}) && classic.contains({"--type", "TYPE"}));
  help.merge(classic);
  EXPECT_EQ(formsOfManual(workspace::readFile(ZQCONVERT_MANUAL)), help);
}

TEST(Manual, SaysNoVersion) {
  const std::vector<std::string> words = split(parseOptions({"--version"}).message, ' ');
  const std::string version = words.back().substr(0, words.back().find('\n'));
  ASSERT_GE(version.size(), 5U);
  EXPECT_EQ(workspace::readFile(ZQCONVERT_MANUAL).find(version), std::string::npos);
}

TEST(Manual, IsSetWithoutComplaints) {
  bool seen = false;
  if (exists("groff")) {
    seen = true;
    EXPECT_EQ(outputOf("groff -man -ww -Tutf8 " ZQCONVERT_MANUAL " > /dev/null"), "");
  }
  if (exists("mandoc")) {
    seen = true;
    EXPECT_EQ(outputOf("mandoc -Tlint " ZQCONVERT_MANUAL), "");
  }
  if (!seen) {
    GTEST_SKIP() << "neither groff nor mandoc is here";
  }
}

std::set<std::string> namesOf(const Forms &forms) {
  std::set<std::string> names{"-h"};
  for (const auto &[name, value] : forms) {
    names.insert(name);
  }
  return names;
}

TEST(Completion, OffersTheOptionsOfTheHelpAndNoOthers) {
  EXPECT_THAT(offers({"-"}), ElementsAreArray(namesOf(formsOfHelp())));
  EXPECT_THAT(offers({"--classic", "-"}), ElementsAreArray(namesOf(formsOfClassicHelp())));
  EXPECT_THAT(offers({"--ro"}), testing::ElementsAre("--rotate"));
}

TEST(Completion, OffersTheColourTypes) {
  std::set<std::string> types;
  for (const ColorTypeInfo &type : colorTypes()) {
    types.merge(wordsOf(type.names));
  }
  EXPECT_THAT(offers({"--classic", "--to", ""}), ElementsAreArray(types));
  for (const std::string &name : rawLayoutNames()) {
    types.insert(name);
  }
  EXPECT_THAT(offers({"--classic", "--type", ""}), ElementsAreArray(types));
  EXPECT_THAT(offers({"--classic", "--type", "nv"}), testing::ElementsAre("nv12", "nv21"));
}

TEST(Completion, OffersTheColourTypesOfZqPicture) {
  std::set<std::string> inputs;
  std::set<std::string> outputs;
  for (const ColorTypeInfo &type : colorTypes(Library::Picture)) {
    const std::set<std::string> names = wordsOf(type.names);
    inputs.insert(names.begin(), names.end());
    if (isPictureOutput(type.code)) {
      outputs.insert(names.begin(), names.end());
    }
  }
  EXPECT_THAT(offers({"--to", ""}), ElementsAreArray(outputs));
  for (const std::string &name : rawLayoutNames(Library::Picture)) {
    inputs.insert(name);
  }
  EXPECT_THAT(offers({"--from", ""}), ElementsAreArray(inputs));
  EXPECT_THAT(offers({"--from", "nv"}), testing::ElementsAre("nv12", "nv21"));
}

// Every value on offer is taken; what the help calls by words is on offer.
TEST(Completion, OffersTheFixedValues) {
  for (const auto &[option, count] :
       {std::pair{"--rotate", 5U}, {"--quality", 4U}, {"--format", 5U}, {"--matrix", 3U}}) {
    const std::set<std::string> values = offers({"--classic", option, ""});
    EXPECT_EQ(values.size(), count) << option;
    for (const std::string &value : values) {
      EXPECT_NO_THROW(parseOptions({"--classic", option, value, "a", "b"})) << option << " " << value;
    }
    EXPECT_THAT(offers({"--classic", option, "=", ""}), ElementsAreArray(values)) << option;
    EXPECT_THAT(offers({"--classic", option, "="}), ElementsAreArray(values)) << option;
  }
  for (const auto &[option, count] : {std::pair{"--rotate", 5U},
                                      {"--format", 5U},
                                      {"--matrix", 3U},
                                      {"--filter", 3U},
                                      {"--range", 2U},
                                      {"--siting", 2U},
                                      {"--dither", 2U},
                                      {"--flip", 2U}}) {
    const std::set<std::string> values = offers({option, ""});
    EXPECT_EQ(values.size(), count) << option;
    for (const std::string &value : values) {
      EXPECT_NO_THROW(parseOptions({option, value, "a", "b"})) << option << " " << value;
    }
    EXPECT_THAT(offers({option, "=", ""}), ElementsAreArray(values)) << option;
    EXPECT_THAT(offers({option, "="}), ElementsAreArray(values)) << option;
  }
  std::set<std::string> turns;
  for (const auto &[name, value] : formsOfHelp()) {
    if (name == "--rotate") {
      const std::vector<std::string> parts = split(value, '|');
      turns.insert(parts.begin(), parts.end());
    }
  }
  EXPECT_THAT(offers({"--rotate", ""}), ElementsAreArray(turns));
  EXPECT_THAT(offers({"--size", ""}), IsEmpty());
}

TEST(Completion, OffersFileNames) {
  const Folder folder;
  static_cast<void>(folder.file("clip.y4m", ""));
  static_cast<void>(folder.file("clap.y4m", ""));
  EXPECT_THAT(offers({"cl"}, folder.path("")), testing::ElementsAre("clap.y4m", "clip.y4m"));
  EXPECT_THAT(offers({"--classic", "--flip", "cli"}, folder.path("")), testing::ElementsAre("clip.y4m"));
  EXPECT_THAT(outputOf("bash -c '. " ZQCONVERT_COMPLETION "; complete -p zqconvert'"),
              testing::HasSubstr("-F _zqconvert zqconvert"));
}

} // namespace
