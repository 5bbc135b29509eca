// Reading numbers and words that people or files wrote. Nothing here accepts trailing rubbish or overflows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zqconvert {

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size &) const = default;
};

/// Largest width or height, and largest number of pixels, of any picture that the program touches. Beyond them a
/// header is taken for damaged rather than believed.
inline constexpr int kMaxSide = 65535;
inline constexpr int64_t kMaxPixels = int64_t{1} << 28;

std::string lowerCase(std::string_view text);
std::vector<std::string> split(std::string_view text, char separator);

/// Digits only (no sign, no blanks); nothing for anything else, or for a value above `max`.
std::optional<int> parseCount(std::string_view text, int max = 2147483647);
/// A finite decimal number.
std::optional<double> parseNumber(std::string_view text);

std::string toText(Size size);
/// The size with its open side filled in: a side of -N gets what keeps the shape, to the nearest multiple of N.
Size completed(Size scale, Size shape);
/// Throws Error, naming the picture as `what`, if the size is beyond the limits above.
void requirePlausible(Size size, std::string_view what);

} // namespace zqconvert
