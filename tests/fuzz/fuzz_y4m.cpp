// Streams that claim to be YUV4MPEG2: read to their end or refused with an Error, never more samples than arrived.
#include "error.h"
#include "y4m_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// Every plane of a frame holds at least what its shape says.
void requireWholePlanes(const zqconvert::Frame &frame) {
  for (int i = 0; i < zqconvert::planeCount(frame.type); ++i) {
    if (frame.planes.at(static_cast<std::size_t>(i)).size() < frame.shape(i).bytes()) {
      std::abort();
    }
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  std::istringstream stream(std::string(reinterpret_cast<const char *>(bytes), count));
  try {
    zqconvert::Y4mReader reader(stream, "stream");
    zqconvert::Frame frame;
    for (int n = 0; n < 8 && reader.next(frame); ++n) {
      requireWholePlanes(frame);
    }
  } catch (const zqconvert::Error &) {
    return 0; // the one kind of failure that there may be
  }
  return 0;
}
