#include "containment/mistakes.h"

#include "containment/guarded_case.h"

#include <cstdio>
#include <string>
#include <vector>

namespace containment {
namespace {

using Planes = std::vector<PlaneInMemory>;

struct Mistake {
  const char *what;
  const char *words; ///< what the report has to say; empty: nothing
  Sabotage how;
};

void spoil(const PlaneInMemory &plane, std::ptrdiff_t offset) {
  volatile uint8_t *byte = plane.pages->data() + offset;
  *byte = static_cast<uint8_t>(*byte ^ 0x5AU);
}

void look(const PlaneInMemory &plane, std::ptrdiff_t offset) {
  volatile const uint8_t *byte = plane.pages->data() + offset;
  [[maybe_unused]] const uint8_t value = *byte;
}

std::ptrdiff_t end(const PlaneInMemory &plane) {
  return static_cast<std::ptrdiff_t>(plane.pages->size());
}

/// Planar 4:2:0 to RGB565 with padded lines, 40x20.
GuardedCase example() {
  GuardedCase c;
  c.mode = {COLOR_YUV420_PLANAR, COLOR_RGB565, 0, ROTATION_NONE, 0};
  c.sizes = {40, 20, 40, 20};
  c.inPadding = 8;
  c.outPadding = 12;
  return c;
}

const std::vector<Mistake> &mistakes() {
  static const std::vector<Mistake> kAll{
      {"nothing", "", [](const Planes &, const Planes &) {}},
      {"a wrong byte in the picture", "inside the picture, line 3, byte 17",
       [](const Planes &, const Planes &out) { spoil(out[0], 3 * out[0].shape.stride + 17); }},
      {"a byte behind a line", "right edge of line 4 crossed by 2 bytes",
       [](const Planes &, const Planes &out) { spoil(out[0], 4 * out[0].shape.stride + 81); }},
      {"a byte in front of a line", "left edge of line 5 crossed by 3 bytes",
       [](const Planes &, const Planes &out) { spoil(out[0], 5 * out[0].shape.stride - 3); }},
      {"a write behind the picture", "right edge of the last line (bottom edge) crossed by 1 byte",
       [](const Planes &, const Planes &out) { spoil(out[0], end(out[0])); }},
      {"a write in front of the picture", "left edge of the first line (top edge) crossed by 4 bytes",
       [](const Planes &, const Planes &out) { spoil(out[0], -4); }},
      {"a write far below the picture", "bottom edge crossed by 301 bytes",
       [](const Planes &, const Planes &out) { spoil(out[0], end(out[0]) + 300); }},
      {"a write far above the picture", "top edge crossed by 300 bytes",
       [](const Planes &, const Planes &out) { spoil(out[0], -300); }},
      {"a read behind the luma plane", "at input plane 0: right edge of the last line (bottom edge) crossed by 1 byte",
       [](const Planes &in, const Planes &) { look(in[0], end(in[0])); }},
      {"a read behind a chroma plane", "at input plane 2: right edge of the last line (bottom edge) crossed by 2 bytes",
       [](const Planes &in, const Planes &) { look(in[2], end(in[2]) + 1); }},
      {"a read in front of a chroma plane",
       "at input plane 1: left edge of the first line (top edge) crossed by 1 byte",
       [](const Planes &in, const Planes &) { look(in[1], -1); }},
      {"a write into the input", "at input plane 0: inside the picture, line 0, byte 7",
       [](const Planes &in, const Planes &) { spoil(in[0], 7); }},
      {"a picture that depends on input padding", "inside the picture, line 0, byte 0",
       [](const Planes &in, const Planes &out) {
         out[0].pages->data()[0] = static_cast<uint8_t>(in[0].pages->data()[in[0].shape.lineBytes + 3]);
       }},
  };
  return kAll;
}

} // namespace

int selfTest() {
  Bench bench(std::size_t{64} << 10);
  int silent = 0;
  for (const Mistake &mistake : mistakes()) {
    bench.sabotage(mistake.how);
    const std::string report = bench.run(example()).report;
    const std::string words = mistake.words;
    const bool right = words.empty() ? report.empty() : report.find(words) != std::string::npos;
    silent += right ? 0 : 1;
    std::printf("%s: %s\n", mistake.what, right ? "reported as it should be" : "NOT REPORTED AS IT SHOULD BE");
    if (!right) {
      std::printf("  looked for: %s\n  got: %s\n", mistake.words, report.c_str());
    } else {
      std::fputs(report.c_str(), stdout);
    }
  }
  return silent == 0 ? 0 : 1;
}

} // namespace containment
