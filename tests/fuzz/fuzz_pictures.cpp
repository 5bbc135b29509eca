// Files that claim to be BMP or PNG: read to their end or refused with an Error, every frame whole.
#include "error.h"
#include "picture_readers.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  std::istringstream stream(std::string(reinterpret_cast<const char *>(bytes), count));
  try {
    std::unique_ptr<zqconvert::PictureReader> reader;
    if (stream.peek() == 'B') {
      reader = std::make_unique<zqconvert::BmpReader>(stream, "stream");
    } else {
      reader = std::make_unique<zqconvert::PngReader>(stream, "stream");
    }
    zqconvert::Frame frame;
    if (!reader->next(frame) || reader->next(frame)) {
      std::abort(); // a picture is one frame
    }
    if (frame.type != reader->info().type || frame.planes[0].size() < frame.whole(0).bytes()) {
      std::abort();
    }
  } catch (const zqconvert::Error &) {
    return 0; // the one kind of failure that there may be
  }
  return 0;
}
