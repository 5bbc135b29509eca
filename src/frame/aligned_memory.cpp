#include "frame/aligned_memory.h"

#include <cstdint>
#include <cstdlib>

namespace zqcc {

// The byte in front of a block says how far the block lies from the start of the runtime's own. There is always such a
// byte: an address that was aligned already is moved on by a whole alignment.

void *aligned_alloc64(std::size_t size, std::size_t alignment) {
  const std::size_t extra = alignment == 0 ? 1 : alignment;
  if (size > SIZE_MAX - extra) {
    return nullptr;
  }
  auto *start = static_cast<unsigned char *>(std::malloc(size + extra));
  if (start == nullptr) {
    return nullptr;
  }
  const std::size_t past = alignment == 0 ? 0 : reinterpret_cast<std::uintptr_t>(start) & (alignment - 1);
  const std::size_t distance = extra - past;
  start[distance - 1] = static_cast<unsigned char>(distance);
  return start + distance;
}

void aligned_free64(void *block) {
  if (block == nullptr) {
    return;
  }
  auto *bytes = static_cast<unsigned char *>(block);
  std::free(bytes - bytes[-1]);
}

} // namespace zqcc
