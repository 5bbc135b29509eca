#include "frame/context.h"

#include "frame/aligned_memory.h"

#include <cstring>

namespace zqcc {
namespace {

template <class T>
void release(T *&buffer) {
  aligned_free64(buffer);
  buffer = nullptr;
}

} // namespace

ConvertContext *createContext() {
  void *memory = aligned_alloc64(sizeof(ConvertContext));
  if (memory != nullptr) {
    std::memset(memory, 0, sizeof(ConvertContext));
  }
  return static_cast<ConvertContext *>(memory);
}

void releaseBuffers(ConvertContext &context) {
  release(context.yTable);
  release(context.xTable);
  release(context.rotBuf[2]);
  release(context.rotBuf[1]);
  release(context.rotBuf[0]);
  release(context.uvBuf[1]);
  release(context.uvBuf[0]);
  release(context.auxBuf);
}

void destroyContext(ConvertContext *context) {
  if (context != nullptr) {
    releaseBuffers(*context);
    aligned_free64(context);
  }
}

} // namespace zqcc
