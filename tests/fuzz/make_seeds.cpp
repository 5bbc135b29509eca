// Writes the seed inputs of the fuzzers: make_seeds DIRECTORY makes one directory in it for each fuzzer.
#include "fuzz/one_shot_call.h"
#include "fuzz/records.h"
#include "fuzz/script.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

void save(const fs::path &directory, int number, const char *bytes, std::size_t count) {
  fs::create_directories(directory);
  std::ofstream file(directory / ("seed-" + std::to_string(number)), std::ios::binary);
  file.write(bytes, static_cast<std::streamsize>(count));
}

void save(const fs::path &directory, int number, const fuzz::ScriptWriter &writer) {
  const std::vector<uint8_t> &bytes = writer.bytes();
  save(directory, number, reinterpret_cast<const char *>(bytes.data()), bytes.size());
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
      record.outWidth = 4 + number % 53;
      record.outHeight = 4 + number % 47;
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
      save(directory, number++, writer);
    }
  }
}

void oneShots(const fs::path &directory) {
  using F = fuzz::Function;
  int number = 0;
  const auto add = [&](F function, const std::array<int32_t, 13> &arguments) {
    fuzz::ScriptWriter writer;
    fuzz::writeCall(writer, function, arguments);
    save(directory, number++, writer);
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
      save(directory, number++, text.data(), text.size());
    }
  }
}

void rawFrames(const fs::path &directory) {
  for (int i = 0; i < fuzz::kTypeCount - 1; ++i) {
    std::string text{static_cast<char>(i), static_cast<char>(4 + i % 5), static_cast<char>(4 + i % 3)};
    text += std::string(5 + 400, 'x');
    save(directory, i, text.data(), text.size());
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
  oneShots(root / "fuzz_one_shot");
  streams(root / "fuzz_y4m");
  rawFrames(root / "fuzz_raw");
  return 0;
}
