// OpenCV making four bytes a pixel, and planar 4:2:0 of them, by cvtColor.
#include "opencv_pictures.h"
#include "runner.h"

#include <opencv2/imgproc.hpp>

namespace bench {
namespace {

using opencv::Picture;

std::optional<int> codeOf(int32_t type) {
  switch (type) {
  case COLOR_YUV420_PLANAR:
    return cv::COLOR_YUV2BGRA_I420;
  case COLOR_YUV420_PACK:
    return cv::COLOR_YUV2BGRA_NV12;
  case COLOR_YUV422_YUYV:
    return cv::COLOR_YUV2BGRA_YUY2;
  default:
    return {};
  }
}

Runner toBgra(const Task &task) {
  const auto code = codeOf(task.job.inType);
  if (!code) {
    return {};
  }
  const Picture from = opencv::convertible(task.input);
  const Picture output = opencv::pictureOf(task.output);
  const auto turn = opencv::turnOf(task.job.rotation);
  const Picture upright = turn ? opencv::newPicture(kBgra, task.input.size) : output;
  return [=] {
    const cv::Mat &to = upright.planes[0];
    if (from.planes.size() == 2) {
      cv::cvtColorTwoPlane(from.planes[0], from.planes[1], to, *code);
    } else {
      cv::cvtColor(from.whole.empty() ? from.planes[0] : from.whole, to, *code);
    }
    if (turn) {
      cv::rotate(to, output.planes[0], *turn);
    }
    return true;
  };
}

/// Into planes that lie behind one another, which no other library asks for. They are copied to the output once.
Runner toPlanar(const Task &task) {
  const Picture from = opencv::pictureOf(task.input);
  const Picture between = opencv::newPicture(COLOR_YUV420_PLANAR, task.output.size);
  const auto run = [=] {
    cv::cvtColor(from.planes[0], between.whole, cv::COLOR_BGRA2YUV_I420);
    return true;
  };
  return [=, output = opencv::pictureOf(task.output), copied = false]() mutable {
    run();
    for (std::size_t i = 0; !copied && i < output.planes.size(); ++i) {
      between.planes[i].copyTo(output.planes[i]);
    }
    return copied = true;
  };
}

Runner bgraRunner(const Task &task) {
  const Job &job = task.job;
  cv::setNumThreads(1);
  if (job.resizes()) {
    return {};
  }
  if (job.outType == kBgra) {
    return toBgra(task);
  }
  return job.inType == kBgra && job.outType == COLOR_YUV420_PLANAR && !job.turns() ? toPlanar(task) : Runner{};
}

} // namespace

void addOpenCvBgra(std::vector<Program> &programs) {
  programs.push_back({"OpenCV's BGRA", bgraRunner});
}

} // namespace bench
