#include "text.h"

#include "error.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace zqconvert {

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char &c : lower) {
    // Not std::tolower: names must not depend on the user's locale.
    if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return lower;
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator, start)) {
    parts.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  parts.emplace_back(text.substr(start));
  return parts;
}

std::optional<int> parseCount(std::string_view text, int max) {
  if (text.empty() || text.front() < '0' || text.front() > '9') {
    return std::nullopt;
  }
  int value = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value > max) {
    return std::nullopt;
  }
  return value;
}

std::optional<double> parseNumber(std::string_view text) {
  double value = 0;
  const char *end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::string toText(Size size) {
  return std::to_string(size.width) + "x" + std::to_string(size.height);
}

Size completed(Size scale, Size shape) {
  const auto complete = [](int &open, int given, int openPart, int givenPart) {
    if (open < 0) {
      const int64_t step = -int64_t{open};
      const int64_t unit = givenPart * step;
      const int64_t steps = (int64_t{given} * openPart + unit / 2) / unit;
      open = static_cast<int>(std::max<int64_t>(1, steps) * step);
    }
  };
  complete(scale.width, scale.height, shape.width, shape.height);
  complete(scale.height, scale.width, shape.height, shape.width);
  return scale;
}

void requirePlausible(Size size, std::string_view what) {
  const int64_t pixels = int64_t{size.width} * size.height;
  if (size.width < 1 || size.height < 1 || size.width > kMaxSide || size.height > kMaxSide || pixels > kMaxPixels) {
    throw Error(std::string(what) + ": a picture of " + toText(size) + " is out of range (at most " +
                std::to_string(kMaxSide) + " a side and " + std::to_string(kMaxPixels) + " pixels)");
  }
}

} // namespace zqconvert
