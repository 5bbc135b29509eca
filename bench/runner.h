// One program doing one job on one picture: this library at a level, or one way to do it with another library.
#pragma once

#include "frame.h"
#include "jobs.h"

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Converts the picture once; false if the library refused.
using Runner = std::function<bool()>;

struct Task {
  const Job &job;
  View input;
  View output;

  /// Size of the output in the input's orientation.
  [[nodiscard]] Size resized() const { return job.outputOf(input.size); }
  [[nodiscard]] bool enlarges() const { return resized().width > input.size.width; }
};

/// Everything that needs to be done once is done in `make`; an empty runner means that there is no way to do the job.
/// `select` comes before every series of runs.
struct Program {
  std::string name;
  std::function<Runner(const Task &)> make;
  std::function<void()> select = [] {};
};

/// This library, once a level that the machine has, the lowest first.
std::vector<Program> ownPrograms();
/// zqPicture at the same levels.
std::vector<Program> picturePrograms();
/// The first library at the highest level, as a peer of zqPicture.
std::vector<Program> firstLibraryPrograms();
/// The other libraries, each in every way that may be the fastest for some job.
std::vector<Program> peerPrograms();

void addLibyuv(std::vector<Program> &programs);
void addLibyuvRows(std::vector<Program> &programs);
void addSwscale(std::vector<Program> &programs);
void addOpenCv(std::vector<Program> &programs);
void addOpenCvBgra(std::vector<Program> &programs);

/// Description of a job for a picture of the given size; planes are left null.
ConvertParams describe(const Job &job, const Size &in);
/// Set-up for a job and nothing else.
Runner setUpRunner(const Task &task);
/// A context made and released.
Runner contextRunner();
/// The whole road in one call for a picture of kTinySize: context, set-up, conversion, release.
Runner oneShotRunner();
/// The same for planar 4:2:0 that is resized by 5/4, and from there to RGB565 through the handle interface.
Runner oneShotScaleRunner();
Runner oneFrameRunner();

} // namespace bench
