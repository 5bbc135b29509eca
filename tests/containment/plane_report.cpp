#include "containment/plane_report.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <vector>

namespace containment {
namespace {

constexpr int kShownLines = 4;
constexpr int kShownPixels = 6;

std::string count(std::ptrdiff_t bytes) {
  return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

struct Place {
  std::ptrdiff_t line = 0;
  std::ptrdiff_t column = 0;
};

Place placeAt(const PlaneInMemory &plane, std::ptrdiff_t offset) {
  const std::ptrdiff_t stride = std::max(plane.shape.stride, 1);
  const std::ptrdiff_t line = offset >= 0 ? offset / stride : -((-offset + stride - 1) / stride);
  return {line, offset - line * stride};
}

/// Bytes beyond an end that still count as the side of the line there, not as another line.
std::ptrdiff_t sideways(const PlaneInMemory &plane) {
  return std::max<std::ptrdiff_t>(16, plane.shape.stride - plane.shape.lineBytes);
}

std::string beyondEnds(const PlaneInMemory &plane, std::ptrdiff_t offset) {
  const bool above = offset < 0;
  const std::ptrdiff_t crossed = above ? -offset : offset - static_cast<std::ptrdiff_t>(plane.pages->size()) + 1;
  const Place place = placeAt(plane, offset);
  if (crossed <= sideways(plane)) {
    return above ? "left edge of the first line (top edge) crossed by " + count(crossed)
                 : "right edge of the last line (bottom edge) crossed by " + count(crossed);
  }
  return std::string(above ? "top" : "bottom") + " edge crossed by " + count(crossed) + ", in what would be line " +
         std::to_string(place.line) + ", byte " + std::to_string(place.column);
}

void printPixels(std::ostringstream &text, const uint8_t *bytes, std::ptrdiff_t from, std::ptrdiff_t to, int group) {
  for (std::ptrdiff_t i = from; i < to; ++i) {
    text << std::setw(2) << std::setfill('0') << std::hex << int{bytes[i]} << std::dec
         << ((i - from + 1) % group == 0 ? " " : "");
  }
}

void printLine(std::ostringstream &text, const PlaneInMemory &plane, const uint8_t *expected, std::size_t bytes,
               std::ptrdiff_t offset) {
  const Place place = placeAt(plane, offset);
  const std::ptrdiff_t group = plane.pixelBytes;
  const std::ptrdiff_t start = place.line * std::max(plane.shape.stride, 1);
  const std::ptrdiff_t from = start + std::max<std::ptrdiff_t>(0, place.column / group - 1) * group;
  const std::ptrdiff_t to = std::min(
      {from + kShownPixels * group, start + std::max(plane.shape.stride, 1), static_cast<std::ptrdiff_t>(bytes)});
  text << "    line " << place.line << ", byte " << from - start << ": ";
  printPixels(text, plane.pages->write(), from, to, plane.pixelBytes);
  text << "| expected ";
  printPixels(text, expected, from, to, plane.pixelBytes);
  text << "\n";
}

} // namespace

std::string placeOf(const PlaneInMemory &plane, std::ptrdiff_t offset) {
  if (offset < 0 || offset >= static_cast<std::ptrdiff_t>(plane.pages->size())) {
    return beyondEnds(plane, offset);
  }
  const Place place = placeAt(plane, offset);
  const std::ptrdiff_t lineBytes = plane.shape.lineBytes;
  if (place.column < lineBytes) {
    return "inside the picture, line " + std::to_string(place.line) + ", byte " + std::to_string(place.column);
  }
  const std::ptrdiff_t right = place.column - lineBytes + 1;
  const std::ptrdiff_t left = plane.shape.stride - place.column;
  return right <= left ? "right edge of line " + std::to_string(place.line) + " crossed by " + count(right)
                       : "left edge of line " + std::to_string(place.line + 1) + " crossed by " + count(left);
}

std::string differences(const PlaneInMemory &plane, const uint8_t *expected, std::size_t bytes) {
  std::vector<std::ptrdiff_t> firstOfLine;
  std::ptrdiff_t total = 0;
  std::ptrdiff_t lastLine = -1;
  for (std::size_t i = 0; i < bytes; ++i) {
    if (plane.pages->write()[i] == expected[i]) {
      continue;
    }
    ++total;
    const auto offset = static_cast<std::ptrdiff_t>(i);
    if (placeAt(plane, offset).line != lastLine) {
      lastLine = placeAt(plane, offset).line;
      firstOfLine.push_back(offset);
    }
  }
  if (total == 0) {
    return "";
  }
  std::ostringstream text;
  text << "  " << plane.name << ": " << count(total) << " differ in " << firstOfLine.size()
       << " line(s); the first: " << placeOf(plane, firstOfLine.front()) << "\n";
  for (std::size_t i = 0; i < firstOfLine.size() && i < kShownLines; ++i) {
    printLine(text, plane, expected, bytes, firstOfLine[i]);
  }
  return text.str();
}

} // namespace containment
