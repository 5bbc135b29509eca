// Writes the seed inputs of the fuzzers: make_seeds DIRECTORY makes one directory in it for each fuzzer.
#include "fuzz/one_shot_call.h"
#include "fuzz/records.h"
#include "fuzz/script.h"
#include "support/levels.h"
#include "support/picture.h"
#include "writers.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

void save(const fs::path &directory, const std::string &kind, int number, const char *bytes, std::size_t count) {
  fs::create_directories(directory);
  std::ofstream file(directory / (kind + "-" + std::to_string(number)), std::ios::binary);
  file.write(bytes, static_cast<std::streamsize>(count));
}

/// The levels take turns.
zqcc::Level levelOf(int number) {
  return static_cast<zqcc::Level>(number % zqcc::LEVEL_COUNT);
}

void save(const fs::path &directory, const std::string &kind, int number, const fuzz::ScriptWriter &writer) {
  const std::vector<uint8_t> &bytes = writer.bytes();
  save(directory, kind, number, reinterpret_cast<const char *>(bytes.data()), bytes.size());
}

/// For every pair of types and some modes: make a handle, prepare it, convert twice, change something, convert again.
void handles(const fs::path &directory) {
  int number = 0;
  for (const int in : fuzz::kTypes) {
    for (const int out : fuzz::kTypes) {
      fuzz::ScriptWriter writer;
      ConvertParams record{};
      record.inType = in;
      record.outType = out;
      record.isResize = number % 3 != 0 ? 1 : 0;
      record.rotation = static_cast<uint32_t>(number / 3 % 8);
      record.antiAlias = static_cast<uint32_t>(number / 5 % 4);
      record.inWidth = 8 + number % 41;
      record.inHeight = 8 + number % 29;
      record.outWidth = record.isResize != 0 ? 4 + number % 53 : record.inWidth;
      record.outHeight = record.isResize != 0 ? 4 + number % 47 : record.inHeight;
      fuzz::writeLevel(writer, levelOf(number));
      writer.byte(0);
      writer.byte(1);
      fuzz::writeRecord(writer, record, number % 7, number % 5);
      writer.byte(3);
      fuzz::writeStrides(writer, 0, 0);
      writer.byte(9);
      writer.byte(static_cast<uint8_t>(number % 4));
      writer.byte(10);
      for (const double value : {718.3, -365.5, 907.7, 0.25}) {
        writer.real(value);
      }
      writer.byte(3);
      fuzz::writeStrides(writer, 3, 2);
      writer.byte(6);
      writer.byte(static_cast<uint8_t>(number % 9));
      writer.byte(16);
      fuzz::writeStrides(writer, 1, 1);
      save(directory, "seed", number++, writer);
    }
  }
}

ConvertParams recordOf(int in, int out, uint32_t isResize, uint32_t rotation, uint32_t quality) {
  ConvertParams p{};
  p.inType = in;
  p.outType = out;
  p.isResize = isResize;
  p.rotation = rotation;
  p.antiAlias = quality;
  return p;
}

struct Picture {
  int32_t width, height, stride;
};

ConvertParams sized(ConvertParams p, const Picture &in, const Picture &out) {
  p.inWidth = in.width;
  p.inHeight = in.height;
  p.inStride = in.stride;
  p.outWidth = out.width;
  p.outHeight = out.height;
  p.outStride = out.stride;
  return p;
}

constexpr uint8_t kRestart = 0;
constexpr uint8_t kPrepare = 1;
constexpr uint8_t kConvert = 8;

/// Records at the limits: tall, wide, far apart, and a little too large. Each is prepared and converted.
class LargeHandles {
public:
  explicit LargeHandles(const fs::path &directory) : directory_(directory) {}

  void write() {
    limits();
    // Every type and every output meets every shape sooner or later.
    uint32_t variety = 0;
    for (int i = 0; i < fuzz::kTypeCount - 1; ++i, ++variety) {
      for (const int out : {fuzz::kTypes[i], 30, 32, 3}) {
        shape(fuzz::kTypes[i], out, variety++);
      }
    }
  }

private:
  void add(const ConvertParams &p) { add(p, p); }
  void add(const ConvertParams &prepared, const ConvertParams &frame) {
    fuzz::ScriptWriter writer;
    fuzz::writeLevel(writer, levelOf(number_));
    writer.byte(kRestart);
    writer.byte(kPrepare);
    fuzz::writeRecord(writer, prepared);
    writer.byte(kConvert);
    fuzz::writeRecord(writer, frame);
    save(directory_, "large", number_++, writer);
  }

  /// The limits that frames and set-ups are refused for, and products on the way there.
  void limits() {
    constexpr int32_t kMost = 0x7FFFFFFF;
    const Picture small{16, 16, 16};
    const Picture pixels{16, 16, 64};
    for (const int distance : {-1, 0, 1}) {
      add(sized(recordOf(3, 32, 1, 2, 0), {65536 + distance, 4, 65552}, {8, 8, 64}));
      add(sized(recordOf(3, 32, 1, 2, 0), {4, 65536 + distance, 4}, {8, 8, 64}));
      add(sized(recordOf(3, 3, 1, 2, 0), {16, 4, 16}, {16384 + distance, 2, 16400}));
      add(sized(recordOf(6, 30, 1, 2, 0), {4, 16, 16}, {2, 16384 + distance, 16}));
      add(sized(recordOf(12, 12, 1, 5, 0), small, {32, 4, 32 + distance}));
    }
    add(sized(recordOf(3, 32, 1, 2, 0), {4, 40000, 4}, {4, 40000, 12}));
    add(sized(recordOf(3, 30, 0, 5, 0), {1 << 30, 2, 1 << 30}, {1 << 30, 2, 64}));
    add(sized(recordOf(3, 30, 0, 4, 0), {16, 1 << 30, 16}, {16, 1 << 30, 64}));
    add(sized(recordOf(11, 30, 0, 2, 0), small, pixels),
        sized(recordOf(11, 30, 0, 2, 0), {16, 262144, 65536}, {16, 262144, 64}));
    add(sized(recordOf(11, 30, 0, 2, 0), {16, 2, 16}, {16, 2, 32}),
        sized(recordOf(11, 30, 0, 2, 0), {82, 2, 16}, {82, 2, 164}));
    add(sized(recordOf(11, 11, 0, 4, 0), {8, 2, 8}, {8, 6, 8}));
    add(sized(recordOf(6, 6, 0, 4, 0), {8, 1, 16}, {8, 4, 16}));
    add(sized(recordOf(0, 30, 1, 3, 0), {65536, 65536, 65536}, pixels));
    add(sized(recordOf(35, 30, 1, 2, 0), {65536, 65536, 65536}, pixels));
    for (const uint32_t quality : {0U, 1U, 3U}) {
      for (const uint32_t rotation : {2U, 3U, 5U}) {
        add(sized(recordOf(3, 3, 1, rotation, quality), {1 << 23, 2, 1 << 23}, {2, 2, 16}));
        add(sized(recordOf(3, 3, 1, rotation, quality), {kMost, 2, kMost}, {9, 4, 16}));
        add(sized(recordOf(6, 30, 1, rotation, quality), {1 << 29, 2, 1 << 30}, {9, 4, 32}));
        add(sized(recordOf(1, 30, 1, rotation, quality), {715827883, 2, 715827884}, {32, 4, 64}));
        add(sized(recordOf(3, 30, 1, rotation, quality), {2, 1 << 30, 8}, {4, 9, 64}));
        add(sized(recordOf(14, 32, 1, rotation, quality), {2, kMost, 8}, {4, 9, 16}));
      }
    }
    add(sized(recordOf(3, 3, 1, 2, 0), {4194304, 4, 4194304}, {5000, 2, 5000}));
  }

  /// A few lines far apart, many short ones, or a sample of a large picture.
  void shape(int in, int out, uint32_t variety) {
    const uint32_t rotation = 2 + variety % 5;
    const int32_t far = 1 << 30;
    const auto lines = support::tightStride(in, 6);
    const auto outLines = support::tightStride(out, 70);
    switch (variety % 4) {
    case 0:
      add(sized(recordOf(in, out, 0, rotation, 0), {6, 5, far}, {6, 5, far}));
      break;
    case 1:
      add(sized(recordOf(in, out, 1, rotation, 0), {6, 6, far}, {7, 5, far}));
      break;
    case 2:
      add(sized(recordOf(in, out, 0, 2, 0), {2, 65537, lines}, {2, 65537, outLines}));
      break;
    default:
      add(sized(recordOf(in, out, 1, rotation, variety / 4 % 4), {40000, 65536, 1 << 18}, {9, 7, outLines}));
      break;
    }
  }

  fs::path directory_;
  int number_ = 0;
};

/// Pictures at their own size that are wide enough for vector code, every conversion to RGB at every level: tight
/// lines, longer ones, and such as overlap.
void wideHandles(const fs::path &directory) {
  int number = 0;
  for (const int in : fuzz::kTypes) {
    for (const int out : {30, 32}) {
      for (uint32_t rotation = 2; rotation <= 6; ++rotation) {
        for (const zqcc::Level level : support::kLevels) {
          const int32_t width = 16 + number % 7 * 16 + number % 3;
          const int32_t height = 16 + number % 11;
          const bool quarter = rotation == ROTATION_90_LEFT || rotation == ROTATION_90_RIGHT;
          const int32_t inStride = support::tightStride(in, width) + number % 5;
          const int32_t outStride = support::tightStride(out, quarter ? height : width) - (number % 13 == 0 ? 7 : 0);
          const ConvertParams p =
              sized(recordOf(in, out, 0, rotation, 0), {width, height, inStride}, {width, height, outStride});
          fuzz::ScriptWriter writer;
          fuzz::writeLevel(writer, level);
          writer.byte(kRestart);
          writer.byte(kPrepare);
          fuzz::writeRecord(writer, p);
          writer.byte(kConvert);
          fuzz::writeRecord(writer, p);
          save(directory, "wide", number++, writer);
        }
      }
    }
  }
}

/// Products of strides, lines and places beside 2^31 and 2^32.
void largeOneShots(const fs::path &directory) {
  using F = fuzz::Function;
  int number = 0;
  const auto add = [&](F function, const std::array<int32_t, 13> &arguments) {
    fuzz::ScriptWriter writer;
    fuzz::writeLevel(writer, levelOf(number));
    fuzz::writeCall(writer, function, arguments);
    save(directory, "large", number++, writer);
  };
  constexpr int32_t kWide = 1 << 30;
  add(F::PackedToRgb16, {6, 24, 0, 0, 0, kWide + 8, 2, 0, 24, 0, 0, 2});
  add(F::PackedToRgb16, {6, kWide, 0, 0, 0, 8, 2, 0, 24, 0, 0, 2});
  for (const F function : {F::PlanarToRgb16, F::SemiPlanarToRgb16, F::SemiPlanar2ToRgb16}) {
    for (const int32_t lines : {32768, 65535, 65536, 65538}) {
      add(function, {65536, lines, 0, lines - 16, 16, 16, 0, 24, 0, 0, 2});
    }
    add(function, {16, 16, 0, 0, 8, 4, 0, kWide / 2, 0, 4, 2});
    add(function, {kWide, 4, 4, 2, 8, 2, 0, 24, 1, 2, 3});
    add(function, {16, 16, 0, 0, kWide, 2, 0, 32, 0, 0, 5});
  }
  for (const int32_t out : {3, 12, 30, 32}) {
    add(F::ColorConvert, {3, out, 8, 4, kWide});
    add(F::ColorConvert, {1, out, 8, 4, kWide});
    add(F::ColorConvert, {11, out, 8, 4, kWide});
    add(F::ColorConvert, {6, out, 2, 65537, 8});
    add(F::ColorConvert, {3, out, kWide, 2, kWide});
  }
  for (const int32_t type : {3, 6, 30}) {
    add(F::ScaleFrame, {65536, 65536, 9, 7, type, 0});
    add(F::ScaleFrame, {64, 64, 65536, 2, type, 0});
    add(F::ScaleFrame, {64, 64, 65537, 2, type, 0});
    add(F::ScaleCropped, {65536, 65536, 65500, 65500, 20, 16, 9, 7, type, 1});
    add(F::RotateCropped, {kWide / 2, 16, 20, 4, 8, 4, 8, 4, type, 3});
    add(F::RotateCropped, {40, 30, 4, 6, 8, 4, 8, kWide / 2, type, 3});
  }
}

void oneShots(const fs::path &directory) {
  using F = fuzz::Function;
  int number = 0;
  const auto add = [&](F function, const std::array<int32_t, 13> &arguments) {
    fuzz::ScriptWriter writer;
    fuzz::writeLevel(writer, levelOf(number));
    fuzz::writeCall(writer, function, arguments);
    save(directory, "seed", number++, writer);
  };
  for (const int type : fuzz::kTypes) {
    add(F::ScaleFrame, {20, 16, 13, 9, type, type % 3});
    add(F::ScaleCropped, {40, 30, 4, 6, 20, 16, 30, 21, type, 0});
    add(F::RotateFrame, {20, 16, 20, 16, type, type % 7});
    add(F::RotateCropped, {40, 30, 4, 6, 20, 16, 20, 16, type, 3});
    add(F::PackedToRgb16, {type, 40, 0, 4, 2, 20, 16, 0, 24, 1, 2, type % 7});
    for (const int out : fuzz::kTypes) {
      add(F::ColorConvert, {type, out, 22, 18, 24});
    }
  }
  for (int rotation = 0; rotation < 8; ++rotation) {
    for (const F function : {F::PlanarToRgb16, F::SemiPlanarToRgb16, F::SemiPlanar2ToRgb16}) {
      add(function, {40, 30, 4, 6, 20, 16, 0, 24, 1, 2, rotation});
    }
  }
}

void streams(const fs::path &directory) {
  int number = 0;
  for (const char *chroma :
       {"", " C420", " C420jpeg", " C420mpeg2", " C420paldv", " C422", " C444", " C440", " C411"}) {
    for (const char *head : {"YUV4MPEG2 W8 H6 F25:1 Ip A1:1", "YUV4MPEG2 W5 H7 F30000:1001", "YUV4MPEG2 H4 W4 XNOTE"}) {
      std::string text = std::string(head) + chroma + "\n";
      for (int frame = 0; frame < 2; ++frame) {
        text += frame == 0 ? "FRAME\n" : "FRAME Ixyz\n";
        text += std::string(8 * 7 * 3, static_cast<char>('a' + number % 26));
      }
      save(directory, "seed", number++, text.data(), text.size());
    }
  }
}

void rawFrames(const fs::path &directory) {
  for (int i = 0; i < fuzz::kTypeCount - 1; ++i) {
    std::string text{static_cast<char>(i), static_cast<char>(4 + i % 5), static_cast<char>(4 + i % 3)};
    text += std::string(5 + 400, 'x');
    save(directory, "seed", i, text.data(), text.size());
  }
}

/// A short header byte by byte is what mutations can get right; PNG files have sums that they cannot.
void pictures(const fs::path &directory) {
  using namespace zqconvert;
  int number = 0;
  for (const int type : {int{COLOR_RGB565}, int{COLOR_RGB24}, int{kRgba}, int{kGrey}}) {
    Frame frame = makeRoomyFrame(type, 5, 3);
    for (std::size_t i = 0; i < frame.planes[0].size(); ++i) {
      frame.planes[0][i] = static_cast<uint8_t>(37 * i);
    }
    for (const auto write : {writeBmp, writePng}) {
      std::ostringstream file;
      write(file, frame);
      const std::string text = file.str();
      save(directory, "seed", number++, text.data(), text.size());
    }
  }
}

} // namespace

int main(int count, char **words) {
  if (count != 2) {
    std::fputs("usage: make_seeds DIRECTORY\n", stderr);
    return 2;
  }
  const fs::path root = words[1];
  handles(root / "fuzz_handles");
  LargeHandles(root / "fuzz_handles").write();
  wideHandles(root / "fuzz_handles");
  oneShots(root / "fuzz_one_shot");
  largeOneShots(root / "fuzz_one_shot");
  streams(root / "fuzz_y4m");
  rawFrames(root / "fuzz_raw");
  pictures(root / "fuzz_pictures");
  return 0;
}
