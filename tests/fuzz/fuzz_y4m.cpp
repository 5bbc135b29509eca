// Streams that claim to be YUV4MPEG2: read to their end or refused with an Error, never more samples than arrived.
#include "error.h"
#include "y4m_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// Every plane of a frame holds at least what its shape says, chroma to the last sample.
void requireWholePlanes(const zqconvert::Frame &frame) {
  for (int i = 0; i < zqconvert::planeCount(frame.type); ++i) {
    if (frame.planes.at(static_cast<std::size_t>(i)).size() < frame.whole(i).bytes()) {
      std::abort();
    }
  }
}

void read(const std::string &bytes, zqconvert::Library library) {
  std::istringstream stream(bytes);
  try {
    zqconvert::Y4mReader reader(stream, "stream", library);
    zqconvert::Frame frame;
    for (int n = 0; n < 8 && reader.next(frame); ++n) {
      requireWholePlanes(frame);
    }
  } catch (const zqconvert::Error &) {
    return; // the one kind of failure that there may be
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  const std::string text(reinterpret_cast<const char *>(bytes), count);
  read(text, zqconvert::Library::Classic);
  read(text, zqconvert::Library::Picture);
  return 0;
}
