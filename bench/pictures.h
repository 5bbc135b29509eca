// The pictures that a job is about.
#pragma once

#include "frame.h"
#include "jobs.h"

namespace bench {

/// Drawn at the first call and shared from then on.
const View &inputOf(int32_t type, const Size &size);
Frame outputFor(const Job &job, const Size &size);

} // namespace bench
