// Raw frames of every type and size: as many as the stream holds, then its end or an Error.
#include "error.h"
#include "raw_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "fuzz/script.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  constexpr std::size_t kHead = 8;
  if (count < kHead) {
    return 0;
  }
  fuzz::Script head(bytes, kHead);
  const int type = fuzz::kTypes[head.below(fuzz::kTypeCount - 1)];
  const zqconvert::Size size{head.size(), head.size()};
  std::istringstream stream(std::string(reinterpret_cast<const char *>(bytes) + kHead, count - kHead));
  uint64_t frames = 0;
  uint64_t perFrame = 0;
  try {
    zqconvert::RawReader reader(stream, "stream", type, size);
    perFrame = reader.bytesPerFrame();
    zqconvert::Frame frame;
    while (reader.next(frame)) {
      ++frames;
      for (int i = 0; i < zqconvert::planeCount(type); ++i) {
        if (frame.planes.at(static_cast<std::size_t>(i)).size() < frame.shape(i).bytes()) {
          std::abort();
        }
      }
    }
  } catch (const zqconvert::Error &) {
    perFrame = perFrame == 0 ? UINT64_MAX : perFrame;
  }
  if (frames != (perFrame == UINT64_MAX ? 0 : (count - kHead) / perFrame)) {
    std::abort(); // a frame was invented or lost
  }
  return 0;
}
