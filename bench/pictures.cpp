#include "pictures.h"

#include <map>
#include <utility>

namespace bench {

const View &inputOf(int32_t type, const Size &size) {
  static std::map<std::pair<int32_t, int32_t>, Frame> frames;
  const auto key = std::make_pair(type, size.width);
  auto found = frames.find(key);
  if (found == frames.end()) {
    found = frames.emplace(key, Frame(type, size)).first;
    found->second.drawScene();
  }
  return found->second.view();
}

Frame outputFor(const Job &job, const Size &size) {
  const Size out = job.outputOf(size);
  return {job.outType, job.quarterTurns() ? turned(out) : out};
}

} // namespace bench
