// Writes the seed inputs of zqPicture's fuzzers: make_picture_seeds DIRECTORY makes one directory in it for each
// fuzzer.
#include "base/levels.h"
#include "fuzz/picture_rules.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fs = std::filesystem;

void save(const fs::path &directory, const std::string &name, const fuzz::ScriptWriter &writer) {
  fs::create_directories(directory);
  std::ofstream file(directory / name, std::ios::binary);
  file.write(reinterpret_cast<const char *>(writer.bytes().data()),
             static_cast<std::streamsize>(writer.bytes().size()));
}

/// The levels take turns.
uint8_t levelOf(int number) {
  return static_cast<uint8_t>(number % zqcc::LEVEL_COUNT);
}

/// A good description and how often it is spoilt; what follows is zeros.
void describe(const fs::path &directory, int32_t in, int32_t out, int number) {
  fuzz::ScriptWriter writer;
  writer.byte(levelOf(number));
  writer.byte(1);
  writer.byte(static_cast<uint8_t>(1 + number % 3));
  fuzz::writeConversion(writer, in, out, number);
  save(directory, "pair-" + std::to_string(number), writer);
}

void view(const fs::path &directory, int32_t in, int32_t out, int number) {
  fuzz::ScriptWriter writer;
  writer.byte(levelOf(number));
  fuzz::writeConversion(writer, in, out, number);
  for (int i = 0; i < 40; ++i) {
    writer.byte(static_cast<uint8_t>(number * (i + 1)));
  }
  save(directory, "pair-" + std::to_string(number), writer);
}

/// The bytes of a record.
void record(const fs::path &directory, int number) {
  ZqpConversion c{};
  c.recordSize = sizeof c;
  (void)zqpConversionInit(&c);
  c.inFormat = 1 + number % ZQP_RGB_PLANES;
  c.outFormat = 1 + number % ZQP_BGRA;
  c.inWidth = c.outWidth = 5 + number;
  c.inHeight = c.outHeight = 7;
  unsigned char bytes[sizeof c];
  std::memcpy(bytes, &c, sizeof c);
  fuzz::ScriptWriter writer;
  writer.byte(levelOf(number));
  writer.byte(1);
  writer.byte(0);
  for (const unsigned char byte : bytes) {
    writer.byte(byte);
  }
  save(directory, "record-" + std::to_string(number), writer);
}

/// A layout and a part.
void layOut(const fs::path &directory, int number) {
  fuzz::ScriptWriter writer;
  writer.byte(levelOf(number));
  writer.byte(0);
  writer.byte(static_cast<uint8_t>(number));
  for (const int size : {40, 30}) {
    writer.size(size);
  }
  for (const int value : {1, number % 14, number % 3, number % 2, number % 8, number % 6, 9, 7}) {
    writer.byte(static_cast<uint8_t>(value));
  }
  save(directory, "layout-" + std::to_string(number), writer);
}

} // namespace

int main(int count, char **words) {
  if (count != 2) {
    std::fputs("usage: make_picture_seeds DIRECTORY\n", stderr);
    return 2;
  }
  const fs::path root = words[1];
  int number = 0;
  for (int32_t in = 1; in <= ZQP_RGB_PLANES; ++in) {
    for (int32_t out = 1; out <= ZQP_BGRA; ++out, ++number) {
      describe(root / "fuzz_description", in, out, number);
      view(root / "fuzz_views", in, out, number);
    }
  }
  for (number = 0; number < 30; ++number) {
    record(root / "fuzz_description", number);
    layOut(root / "fuzz_description", number);
  }
  return 0;
}
