#include "formats.h"

#include "color_types.h"
#include "error.h"
#include "text.h"
#include "zqColorConversion.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace zqconvert {

namespace {

struct FormatName {
  const char *name;
  Format format;
};

constexpr auto kFormats = std::to_array<FormatName>(
    {{"raw", Format::Raw}, {"bmp", Format::Bmp}, {"png", Format::Png}, {"ppm", Format::Ppm}, {"y4m", Format::Y4m}});

struct RawExtension {
  const char *name;
  RawName meaning;
};

// Files of one colour type may be called by its names as well.
constexpr auto kRawExtensions = std::to_array<RawExtension>({{"raw", {}},
                                                             {"bin", {}},
                                                             {"data", {}},
                                                             {"rgb", {}},
                                                             {"yuv", {RawName::AnyYuv, 0}},
                                                             {"rgb565", {RawName::OneType, COLOR_RGB565}},
                                                             {"bgr", {RawName::OneType, COLOR_RGB24}}});

/// In lower case, without the dot; empty if the name has none.
std::string extensionOf(std::string_view name) {
  const std::string extension = std::filesystem::path(name).extension().string();
  return extension.empty() ? "" : lowerCase(std::string_view(extension).substr(1));
}

const RawExtension *findRaw(const std::string &extension) {
  const auto *at = std::ranges::find_if(kRawExtensions, [&](const auto &known) { return extension == known.name; });
  return at == kRawExtensions.end() ? nullptr : at;
}

const ColorTypeInfo *findType(const std::string &extension, Library library) {
  for (const ColorTypeInfo &type : colorTypes(library)) {
    const std::vector<std::string> names = split(type.names, ' ');
    if (std::ranges::find(names, extension) != names.end()) {
      return &type;
    }
  }
  return nullptr;
}

std::string knownExtensions() {
  std::string text;
  for (const FormatName &known : kFormats) {
    text += known.format == Format::Raw ? "" : "." + std::string(known.name) + ", ";
  }
  text += "and for raw frames ";
  for (const RawExtension &known : kRawExtensions) {
    text += "." + std::string(known.name) + ", ";
  }
  return text + "or a colour type's name such as .nv12";
}

bool isPicture(int type) {
  const Family family = colorType(type).family;
  return family == Family::Rgb16 || family == Family::Rgb24 || family == Family::Rgb32 || family == Family::Grey;
}

} // namespace

Format parseFormat(std::string_view text) {
  for (const FormatName &known : kFormats) {
    if (lowerCase(text) == known.name) {
      return known.format;
    }
  }
  throw Error("unknown format '" + std::string(text) + "' (raw, bmp, png, ppm and y4m are known)");
}

Format formatOfName(std::string_view name, Library library) {
  const std::string extension = extensionOf(name);
  if (extension.empty() || findRaw(extension) != nullptr || findType(extension, library) != nullptr) {
    return Format::Raw;
  }
  for (const FormatName &known : kFormats) {
    if (extension == known.name) {
      return known.format;
    }
  }
  throw Error(std::string(name) + ": nothing is known of ." + extension + " files; known are " + knownExtensions() +
              " (or say --format)");
}

bool isY4mName(std::string_view name) {
  return extensionOf(name) == "y4m";
}

RawName rawName(std::string_view fileName, Library library) {
  const std::string extension = extensionOf(fileName);
  const ColorTypeInfo *type = findType(extension, library);
  if (library == Library::Picture && extension == "rgb") {
    return {RawName::OneType, kRgb24};
  }
  if (const RawExtension *known = findRaw(extension); known != nullptr) {
    return known->meaning;
  }
  return type == nullptr ? RawName{} : RawName{RawName::OneType, type->code};
}

bool isPictureFormat(Format format) {
  return format == Format::Bmp || format == Format::Png || format == Format::Ppm;
}

void requireHolds(Format format, int type, Library library) {
  if (isPictureFormat(format) && !isPicture(type)) {
    throw Error("a picture file holds no " + shortName(type) + "; take --to rgb565 or --to bgr24, or a raw file");
  }
  if (format == Format::Y4m && library == Library::Classic && !isPlanar420(type)) {
    throw Error("a y4m file is written from i420 and yv12 only, not from " + shortName(type));
  }
  if (format == Format::Y4m && y4mKind(type).empty() && !isPlanar420(type)) {
    throw Error("a y4m file holds i420, yv12, i422, yv16, i444 or grey, not " + shortName(type));
  }
}

std::string_view y4mKind(int type) {
  switch (type) {
  case COLOR_YUV422_PLANAR:
  case COLOR_YVU422_PLANAR:
    return "422";
  case COLOR_YUV444_PLANAR:
    return "444";
  case kGrey:
    return "mono";
  default:
    return {};
  }
}

bool isPlanar420(int type) {
  return type == COLOR_YUV420_PLANAR || type == COLOR_YVU420_PLANAR;
}

} // namespace zqconvert
