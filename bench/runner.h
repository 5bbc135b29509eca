// One library doing one job on one picture.
#pragma once

#include "frame.h"
#include "jobs.h"

#include <functional>

namespace bench {

/// Converts the picture once; false if the library refused.
using Runner = std::function<bool()>;

struct Task {
  const Job &job;
  View input;
  View output;

  /// Size of the output in the input's orientation.
  [[nodiscard]] Size resized() const { return job.outputOf(input.size); }
};

/// Everything that needs to be done once is done here; an empty runner means that the library has no way to do the job.
using MakeRunner = Runner (*)(const Task &task);

Runner libraryRunner(const Task &task);
Runner libyuvRunner(const Task &task);
Runner swscaleRunner(const Task &task);

/// Description of a job for a picture of the given size; planes are left null.
ConvertParams describe(const Job &job, const Size &in);

/// Adds the benchmarks of set-up and of calls on tiny pictures.
void registerOverhead();

} // namespace bench
