// What allocations that fail leave behind, and how much is asked for when sizes leave 32 bits.
#include "frame/memory_ledger.h"
#include "zqColorConversion.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

using memory::begin;
using memory::check;
using memory::ledger;

constexpr std::size_t kSlack = 32;     // behind each scratch plane
constexpr std::size_t kAlignment = 64; // added to every request

using Picture = std::array<uint8_t, 512>;

/// A reddish packed picture to RGB565, which follows the matrix in force. Not a word of it is allocated.
Picture converted(ConvertContext *handle) {
  static Picture in;
  for (std::size_t i = 0; i < in.size(); i += 4) {
    in[i] = in[i + 2] = 128;
    in[i + 1] = 140;
    in[i + 3] = 192;
  }
  Picture out{};
  ConvertParams p{};
  p.inType = COLOR_YUV422_YUYV;
  p.outType = COLOR_RGB565;
  p.inWidth = p.outWidth = p.inHeight = p.outHeight = 16;
  p.inStride = p.outStride = 32;
  p.inBuf[0] = in.data();
  p.outBuf[0] = out.data();
  p.rotation = ROTATION_NONE;
  check(zqCCProcess(handle, &p) == CC_OK, "a frame is converted", "matrix", 0);
  return out;
}

void select(ConvertContext *handle, std::uintptr_t index) {
  void *value = nullptr;
  std::memcpy(&value, &index, sizeof value);
  check(zqCCSetParameter(handle, PARAM_COLOR_MATRIX, value) == CC_OK, "a matrix is selected", "matrix", 0);
}

constexpr std::array<double, 4> kCoefficients{896.0, 448.0, 300.0, 100.0};

/// Without a context nothing has begun, and the matrix stays as it is.
void matrixOutlivesMissingContexts(ConvertContext *handle, const Picture &grey) {
  const char *name = "no memory for a context";
  const Picture in{};
  Picture out{};
  begin(1);
  ConvertContext *other = handle;
  check(zqCCInit(&other) == CC_ERR_NO_MEMORY && other == nullptr, "zqCCInit reports", name, 1);
  memory::finish(name, 1);
  check(converted(handle) == grey, "the matrix stays after zqCCInit", name, 1);
  begin(1);
  check(zqScaleFrame(in.data(), out.data(), 8, 8, 8, 8, COLOR_RGB565, 0) == CC_ERR_NO_MEMORY_ONESHOT, "scaling reports",
        name, 1);
  memory::finish(name, 1);
  check(converted(handle) == grey, "the matrix stays after zqScaleFrame", name, 1);
  begin(1);
  check(zqColorConvert(in.data(), out.data(), 11, 30, 8, 8, 8, kCoefficients.data()) == CC_ERR_NO_MEMORY_ONESHOT,
        "converting reports", name, 1);
  memory::finish(name, 1);
  check(converted(handle) == grey, "the matrix stays after zqColorConvert", name, 1);
}

/// Coefficients are taken over although set-up has found no memory.
void matrixOfACallWithoutScratch(ConvertContext *handle, const Picture &custom) {
  const char *name = "no memory for scratch planes";
  const Picture in{};
  Picture out{};
  for (const int n : {2, 3}) {
    select(handle, MATRIX_GREY);
    begin(n);
    check(zqColorConvert(in.data(), out.data(), 11, 30, 8, 8, 8, kCoefficients.data()) == CC_ERR_NO_MEMORY,
          "the lack of memory is reported", name, n);
    memory::finish(name, n);
    check(out == Picture{}, "nothing is written", name, n);
    check(converted(handle) == custom, "the custom matrix is in force", name, n);
  }
}

void matrices() {
  const char *name = "matrix";
  ConvertContext *handle = nullptr;
  check(zqCCInit(&handle) == CC_OK, "zqCCInit", name, 0);
  const Picture bt601 = converted(handle);
  select(handle, MATRIX_GREY);
  const Picture grey = converted(handle);
  std::array<double, 4> values = kCoefficients;
  check(zqCCSetParameter(handle, PARAM_CUSTOM_MATRIX, values.data()) == CC_OK, "coefficients", name, 0);
  const Picture custom = converted(handle);
  check(bt601 != grey && grey != custom && custom != bt601, "the picture shows the matrix", name, 0);
  select(handle, MATRIX_GREY);
  matrixOutlivesMissingContexts(handle, grey);
  matrixOfACallWithoutScratch(handle, custom);
  check(zqCCUninit(handle) == CC_OK, "zqCCUninit", name, 0);
}

struct Planes {
  const char *name;
  int32_t type, width, height, stride;
  uint64_t first, second, third; ///< bytes of the blocks that set-up asks for; 0: it asks for two
};

/// Requests beyond 32 bits, of which a small part is given: set-up writes nothing into scratch planes.
void sizesAskedFor() {
  constexpr uint64_t kSquare = uint64_t{65536} * 65536;
  const std::array<Planes, 6> all{{{"4:4:4 turned", 0, 65536, 65536, 65536, kSquare, kSquare, kSquare},
                                   {"4:4:0 turned", 2, 65536, 65536, 65536, kSquare, kSquare / 2, kSquare / 2},
                                   {"4:4:0 turned, 8 GiB", 2, 131072, 65536, 131072, 2 * kSquare, kSquare, kSquare},
                                   {"4:1:1 turned", 4, 262144, 65536, 262144, 4 * kSquare, kSquare, kSquare},
                                   {"quarter height turned", 37, 65536, 262144, 65536, 4 * kSquare, kSquare, kSquare},
                                   {"split chroma", 11, 16, 262144, 65536, kSquare, kSquare, 0}}};
  for (const Planes &planes : all) {
    ConvertContext *handle = nullptr;
    begin(0);
    check(zqCCInit(&handle) == CC_OK, "zqCCInit", planes.name, 0);
    ledger.pretends = true;
    ConvertParams p{};
    p.inType = planes.type;
    p.outType = COLOR_RGB565;
    p.inWidth = planes.width;
    p.inHeight = planes.height;
    p.inStride = planes.stride;
    p.outWidth = planes.width / 1024;
    p.outHeight = planes.height / 1024;
    p.rotation = ROTATION_90_LEFT;
    p.isResize = planes.third != 0 ? 1 : 0;
    if (p.isResize == 0) {
      p.outWidth = p.inWidth;
      p.outHeight = p.inHeight;
    }
    check(zqCCSetParameter(handle, PARAM_CONVERT_DESC, &p) == CC_OK, "set-up", planes.name, 0);
    const uint64_t extra = kSlack + kAlignment;
    check(ledger.sizes[1] == planes.first + extra, "the first plane", planes.name, 0);
    check(ledger.sizes[2] == planes.second + extra, "the second plane", planes.name, 0);
    check(planes.third == 0 || ledger.sizes[3] == planes.third + extra, "the third plane", planes.name, 0);
    check(zqCCUninit(handle) == CC_OK, "zqCCUninit", planes.name, 0);
    memory::finish(planes.name, 0);
  }
}

} // namespace

int main() {
  matrices();
  if (sizeof(std::size_t) > 4) {
    sizesAskedFor();
  }
  return memory::report(30);
}
