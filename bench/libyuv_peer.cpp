// libyuv doing a job by its functions for whole pictures; and by the same functions on bands of the picture, so that
// what lies between the stages stays in the cache.
#include "libyuv_pipeline.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>

namespace bench {
namespace {

Runner wholeRunner(const Task &task, yuv::Packer packer) {
  const auto pipeline = std::make_shared<yuv::Pipeline>(task, packer, yuv::Scaled::Cheapest);
  const View input = task.input;
  const View output = yuv::target(task);
  if (!pipeline->run(input, output)) {
    return {};
  }
  return [=] { return pipeline->run(input, output); };
}

/// Lines of the source (columns, if a quarter turn makes lines of them) and what becomes of them.
struct Span {
  int32_t from, to;
};

/// The smallest stretch that fills whole lines of the output and of all chroma.
Span unitOf(const Span &whole) {
  constexpr int32_t kChromaStep = 4;
  const int32_t common = std::gcd(whole.from, whole.to);
  Span unit = {whole.from / common, whole.to / common};
  while (unit.from % kChromaStep != 0 || unit.to % kChromaStep != 0) {
    unit = {2 * unit.from, 2 * unit.to};
    if (unit.from > whole.from) {
      return whole;
    }
  }
  return unit;
}

/// A picture by bands, the last of which may be narrower. Scaling takes each band for a picture of its own, which
/// shows at its edges by a fraction of a line: in the peer's favour.
class Bands {
public:
  Bands(const Task &task, int32_t lines, yuv::Scaled scaled)
      : job_(task.job), scaled_(scaled), input_(task.input), output_(yuv::target(task)), resized_(task.resized()),
        whole_(task.job.quarterTurns() ? Span{input_.size.width, resized_.width}
                                       : Span{input_.size.height, resized_.height}) {
    const Span unit = unitOf(whole_);
    const int32_t count = std::max(1, lines / std::max(unit.from, unit.to));
    band_ = {count * unit.from, count * unit.to};
    const Span rest = {whole_.from % band_.from, whole_.to % band_.to};
    full_ = pipelineFor(band_);
    last_ = rest.from == 0 ? nullptr : pipelineFor(rest);
  }

  [[nodiscard]] bool several() const { return band_.from < whole_.from; }

  bool run() {
    for (Span at = {0, 0}; at.from < whole_.from; at = {at.from + band_.from, at.to + band_.to}) {
      const bool cut = at.from + band_.from > whole_.from;
      const Span size = cut ? Span{whole_.from - at.from, whole_.to - at.to} : band_;
      if (!(cut ? last_ : full_)->run(source(at, size), destination(at, size))) {
        return false;
      }
    }
    return true;
  }

private:
  [[nodiscard]] View source(const Span &at, const Span &size) const {
    return job_.quarterTurns() ? part(input_, at.from, 0, {size.from, input_.size.height})
                               : part(input_, 0, at.from, {input_.size.width, size.from});
  }
  /// Turned left and half turned the first band comes last.
  [[nodiscard]] View destination(const Span &at, const Span &size) const {
    const bool backwards = job_.rotation == ROTATION_90_LEFT || job_.rotation == ROTATION_180;
    return part(output_, 0, backwards ? whole_.to - at.to - size.to : at.to, {output_.size.width, size.to});
  }
  [[nodiscard]] std::unique_ptr<yuv::Pipeline> pipelineFor(const Span &size) const {
    Job job = job_;
    if (job.resizes()) {
      job.fixedOutput = job.quarterTurns() ? Size{size.to, resized_.height} : Size{resized_.width, size.to};
    }
    return std::make_unique<yuv::Pipeline>(Task{job, source({0, 0}, size), destination({0, 0}, size)},
                                           yuv::Packer::Dithering, scaled_);
  }

  Job job_;
  yuv::Scaled scaled_;
  View input_, output_;
  Size resized_;
  Span whole_;
  Span band_{};
  std::unique_ptr<yuv::Pipeline> full_, last_;
};

/// Same-size jobs to RGB have faster ways; what is a single step gains nothing.
Runner bandsRunner(const Task &task, int32_t lines, yuv::Scaled scaled) {
  const bool sameFormat = task.job.inType == task.job.outType;
  if (!task.job.resizes() && !(sameFormat && task.job.turns())) {
    return {};
  }
  const auto bands = std::make_shared<Bands>(task, lines, scaled);
  if (!bands->several() || !bands->run()) {
    return {};
  }
  return [bands] { return bands->run(); };
}

/// Pixels are scaled by two lines at most, which is a mean of boxes only where they are no larger.
Runner argbRunner(const Task &task, int32_t lines) {
  const Job &job = task.job;
  const bool toRgb = job.outType == COLOR_RGB565 || job.outType == COLOR_RGB24;
  const bool wide = job.sampling == Sampling::Box ||
                    (job.sampling == Sampling::Filtered && task.input.size.width >= 2 * task.resized().width);
  return toRgb && job.resizes() && !wide ? bandsRunner(task, lines, yuv::Scaled::Argb) : Runner{};
}

/// Upright pixels by bands, then turned by others.
Runner turnedLastRunner(const Task &task) {
  if (!task.job.quarterTurns() || !task.job.resizes() || task.job.outType != COLOR_RGB565) {
    return {};
  }
  Job upright = task.job;
  upright.rotation = ROTATION_NONE;
  Job turn = {"", "", COLOR_RGB565, COLOR_RGB565};
  turn.rotation = task.job.rotation;
  const auto between = std::make_shared<Frame>(COLOR_RGB565, task.resized(), Lines::Aligned);
  const Runner first = argbRunner({upright, task.input, between->view()}, 64);
  const Runner second = bandsRunner({turn, between->view(), task.output}, 16, yuv::Scaled::Planes);
  if (!first || !second) {
    return {};
  }
  return [between, first, second] { return first() && second(); };
}

} // namespace

void addLibyuv(std::vector<Program> &programs) {
  programs.push_back({"libyuv", [](const Task &task) { return wholeRunner(task, yuv::Packer::Plain); }});
  // For everything but 16-bit words it is the same.
  programs.push_back({"libyuv dithering", [](const Task &task) {
                        return task.job.outType == COLOR_RGB565 &&
                                       (task.job.inType != COLOR_RGB565 || task.job.resizes())
                                   ? wholeRunner(task, yuv::Packer::Dithering)
                                   : Runner{};
                      }});
  for (const int32_t lines : {16, 64, 256}) {
    const std::string name = " bands of " + std::to_string(lines);
    programs.push_back(
        {"libyuv" + name, [lines](const Task &task) { return bandsRunner(task, lines, yuv::Scaled::Planes); }});
    programs.push_back({"libyuv ARGB" + name, [lines](const Task &task) { return argbRunner(task, lines); }});
  }
  programs.push_back({"libyuv turned last", turnedLastRunner});
}

} // namespace bench
