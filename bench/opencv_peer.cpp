// OpenCV doing a job: conversions by cvtColor, turns by rotate, sizes by resize, one thread.
#include "opencv_pictures.h"
#include "runner.h"

#include <opencv2/imgproc.hpp>

#include <functional>
#include <utility>
#include <vector>

namespace bench {
namespace {

using opencv::Picture;

int interpolationOf(Sampling sampling) {
  switch (sampling) {
  case Sampling::Bilinear:
    return cv::INTER_LINEAR;
  case Sampling::Filtered:
  case Sampling::Box:
    return cv::INTER_AREA;
  default:
    return cv::INTER_NEAREST;
  }
}

/// Steps from picture to picture, the last of which writes the output.
class Steps {
public:
  explicit Steps(Picture source) : at_(std::move(source)) {}

  void turn(int how, const Picture &to) {
    add([from = at_, to, how] { opencv::turn(from, to, how); }, to);
  }
  void resize(int interpolation, const Picture &to) {
    add([from = at_, to, interpolation] { opencv::resize(from, to, interpolation); }, to);
  }
  void flip(const Picture &to) {
    add([from = at_, to] { cv::flip(from.planes[0], to.planes[0], 0); }, to);
  }
  void convert(const Picture &to) {
    if (to.type == COLOR_RGB24) {
      add([from = at_, to] { opencv::makeBgr(from, to.planes[0]); }, to);
      return;
    }
    if (at_.type != COLOR_RGB24) {
      convert(opencv::newPicture(COLOR_RGB24, size()));
    }
    add([from = at_, to] { cv::cvtColor(from.planes[0], to.planes[0], cv::COLOR_BGR2BGR565); }, to);
  }
  [[nodiscard]] int32_t type() const { return at_.type; }
  [[nodiscard]] Size size() const { return {at_.planes[0].cols, at_.planes[0].rows}; }

  [[nodiscard]] Runner runner() const {
    return [steps = steps_] {
      for (const auto &step : steps) {
        step();
      }
      return true;
    };
  }

private:
  void add(std::function<void()> step, const Picture &to) {
    steps_.push_back(std::move(step));
    at_ = to;
  }

  Picture at_;
  std::vector<std::function<void()>> steps_;
};

bool isRgb(int32_t type) {
  return type == COLOR_RGB24 || type == COLOR_RGB565;
}

/// Same size: pixels are made upright and moved then.
Runner sameSizeRunner(const Task &task) {
  const Job &job = task.job;
  if (!isRgb(job.outType) || job.inType == job.outType) {
    return {};
  }
  const auto turn = opencv::turnOf(job.rotation);
  const bool flips = job.rotation == ROTATION_FLIP_V;
  const Picture output = opencv::pictureOf(task.output);
  Steps steps(opencv::convertible(task.input));
  steps.convert(turn || flips ? opencv::newPicture(job.outType, task.input.size) : output);
  if (turn) {
    steps.turn(*turn, output);
  } else if (flips) {
    steps.flip(output);
  }
  return steps.runner();
}

Runner sameFormatTurnRunner(const Task &task) {
  const bool pairs = task.job.inType != COLOR_RGB565 && opencv::formatOf(task.job.inType) == CV_8UC2;
  const auto turn = opencv::turnOf(task.job.rotation);
  if (!turn || pairs || task.job.inType != task.job.outType) {
    return {};
  }
  Steps steps(opencv::pictureOf(task.input));
  steps.turn(*turn, opencv::pictureOf(task.output));
  return steps.runner();
}

/// Repeated pixels are converted before they are; else what is fewer is turned and what is resized is converted.
Runner resizingRunner(const Task &task) {
  const Job &job = task.job;
  const bool keeps = job.inType == job.outType;
  const bool packed = !isRgb(job.inType) && opencv::formatOf(job.inType) == CV_8UC2;
  const int interpolation = interpolationOf(job.sampling);
  const bool convertsFirst =
      interpolation == cv::INTER_NEAREST ? !keeps && (packed || task.enlarges()) : job.inType == COLOR_RGB565;
  if ((!isRgb(job.outType) && !keeps) || (packed && !convertsFirst) || job.rotation == ROTATION_FLIP_V) {
    return {};
  }
  const bool odd = task.resized().width % 2 != 0 || task.resized().height % 2 != 0;
  if (odd && opencv::pictureOf(task.input).planes.size() > 1) {
    return {};
  }
  const auto turn = opencv::turnOf(job.rotation);
  const Picture output = opencv::pictureOf(task.output);
  Steps steps(opencv::convertible(task.input));
  if (convertsFirst) {
    steps.convert(opencv::newPicture(job.inType == COLOR_RGB565 ? COLOR_RGB24 : job.outType, task.input.size));
  }
  if (turn && task.enlarges()) {
    const Size size = steps.size();
    steps.turn(*turn, opencv::newPicture(steps.type(), job.quarterTurns() ? turned(size) : size));
  }
  const bool turnsLast = turn && !task.enlarges();
  const bool convertsLast = steps.type() != job.outType;
  const Size size = turnsLast ? task.resized() : task.output.size;
  steps.resize(interpolation, turnsLast || convertsLast ? opencv::newPicture(steps.type(), size) : output);
  if (turnsLast) {
    steps.turn(*turn, convertsLast ? opencv::newPicture(steps.type(), task.output.size) : output);
  }
  if (convertsLast) {
    steps.convert(output);
  }
  return steps.runner();
}

Runner openCvRunner(const Task &task) {
  if (!opencv::convertsToBgr(task.job.inType)) {
    return {};
  }
  cv::setNumThreads(1);
  if (task.job.resizes()) {
    return resizingRunner(task);
  }
  return task.job.inType == task.job.outType ? sameFormatTurnRunner(task) : sameSizeRunner(task);
}

} // namespace

void addOpenCv(std::vector<Program> &programs) {
  programs.push_back({"OpenCV", openCvRunner});
}

} // namespace bench
