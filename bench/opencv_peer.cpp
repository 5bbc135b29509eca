// OpenCV doing a job of the same size: conversions by cvtColor, turns by rotate, one thread.
#include "runner.h"

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace bench {
namespace {

/// Conversion of a layout to 24 bits, bytes B, G, R.
std::optional<int> toBgr(int32_t type) {
  switch (type) {
  case COLOR_YUV420_PLANAR:
    return cv::COLOR_YUV2BGR_I420;
  case COLOR_YUV420_PACK:
    return cv::COLOR_YUV2BGR_NV12;
  case COLOR_YUV420_PACK2:
    return cv::COLOR_YUV2BGR_NV21;
  case COLOR_YUV422_YUYV:
    return cv::COLOR_YUV2BGR_YUY2;
  case COLOR_YUV422_YVYU:
    return cv::COLOR_YUV2BGR_YVYU;
  case COLOR_YUV422_UYVY:
    return cv::COLOR_YUV2BGR_UYVY;
  default:
    return {};
  }
}

std::optional<int> turnOf(uint32_t rotation) {
  switch (rotation) {
  case ROTATION_90_LEFT:
    return cv::ROTATE_90_COUNTERCLOCKWISE;
  case ROTATION_90_RIGHT:
    return cv::ROTATE_90_CLOCKWISE;
  case ROTATION_180:
    return cv::ROTATE_180;
  default:
    return {};
  }
}

cv::Mat matrix(const View &view, std::size_t plane, int cvType, const Size &size) {
  return {size.height, size.width, cvType, view.plane[plane], static_cast<std::size_t>(view.stride[plane])};
}

/// The source as matrices. Planar 4:2:0 is one matrix there: copied once, outside the time that is taken.
std::vector<cv::Mat> sourceOf(const View &view) {
  const Size &size = view.size;
  switch (view.type) {
  case COLOR_YUV420_PLANAR: {
    cv::Mat whole(size.height * 3 / 2, size.width, CV_8UC1);
    uint8_t *to = whole.data;
    for (int32_t p = 0; p < 3; ++p) {
      const Size plane = planeSize(view, p);
      const auto bytes = static_cast<std::size_t>(plane.width) * static_cast<std::size_t>(plane.height);
      std::copy_n(view.plane[static_cast<std::size_t>(p)], bytes, to);
      to += bytes;
    }
    return {whole};
  }
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {matrix(view, 0, CV_8UC1, size), matrix(view, 1, CV_8UC2, {size.width / 2, size.height / 2})};
  case COLOR_RGB888_PLANAR: // blue first, as merge wants it
    return {matrix(view, 2, CV_8UC1, size), matrix(view, 1, CV_8UC1, size), matrix(view, 0, CV_8UC1, size)};
  case COLOR_RGB24:
    return {matrix(view, 0, CV_8UC3, size)};
  default:
    return {matrix(view, 0, CV_8UC2, size)};
  }
}

void makeBgr(const std::vector<cv::Mat> &source, int32_t type, const cv::Mat &bgr) {
  if (type == COLOR_RGB888_PLANAR) {
    cv::merge(source, bgr);
  } else if (source.size() == 2) {
    cv::cvtColorTwoPlane(source[0], source[1], bgr, *toBgr(type));
  } else {
    cv::cvtColor(source[0], bgr, *toBgr(type));
  }
}

} // namespace

void addOpenCv(std::vector<Program> &programs) {
  programs.push_back({"OpenCV", [](const Task &task) -> Runner {
                        const Job &job = task.job;
                        const bool rgbSource = job.inType == COLOR_RGB24 || job.inType == COLOR_RGB888_PLANAR;
                        const bool words = job.outType == COLOR_RGB565;
                        if (job.resizes() || (!words && job.outType != COLOR_RGB24) ||
                            (!rgbSource && !toBgr(job.inType))) {
                          return {};
                        }
                        cv::setNumThreads(1);
                        const auto turn = turnOf(job.rotation);
                        const bool flips = job.rotation == ROTATION_FLIP_V;
                        const bool moves = turn || flips;
                        const int outFormat = words ? CV_8UC2 : CV_8UC3;
                        const std::vector<cv::Mat> source = sourceOf(task.input);
                        const Size size = task.input.size;
                        const cv::Mat output = matrix(task.output, 0, outFormat, task.output.size);
                        const cv::Mat upright = moves ? cv::Mat(size.height, size.width, outFormat) : output;
                        const cv::Mat bgr = !words                      ? upright
                                            : job.inType == COLOR_RGB24 ? source[0]
                                                                        : cv::Mat(size.height, size.width, CV_8UC3);
                        return [=, type = job.inType] {
                          if (type != COLOR_RGB24) {
                            makeBgr(source, type, bgr);
                          }
                          if (words) {
                            cv::cvtColor(bgr, upright, cv::COLOR_BGR2BGR565);
                          }
                          if (turn) {
                            cv::rotate(upright, output, *turn);
                          } else if (flips) {
                            cv::flip(upright, output, 0);
                          }
                          return true;
                        };
                      }});
}

} // namespace bench
