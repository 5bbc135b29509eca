// zqPicture's records for a job.
#pragma once

#include "runner.h"
#include "zqPicture.h"

#include <memory>

namespace bench {

struct FreeConverter {
  void operator()(ZqpConverter *converter) const { zqpConverterFree(converter); }
};
using Converter = std::shared_ptr<ZqpConverter>;

ZqpPicture zqpPictureOf(const View &view);
/// Null if the library refuses.
Converter converterFor(const Task &task);

} // namespace bench
