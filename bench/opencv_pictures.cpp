#include "opencv_pictures.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstddef>

namespace bench::opencv {
namespace {

/// Conversion of a layout to 24 bits by cvtColor.
std::optional<int> codeOf(int32_t type) {
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
  case COLOR_RGB565:
    return cv::COLOR_BGR5652BGR;
  default:
    return {};
  }
}

cv::Mat matrix(const View &view, std::size_t plane, int cvType, const Size &size) {
  return {size.height, size.width, cvType, view.plane[plane], static_cast<std::size_t>(view.stride[plane])};
}

} // namespace

int formatOf(int32_t type) {
  switch (type) {
  case COLOR_RGB24:
    return CV_8UC3;
  case kBgra:
    return CV_8UC4;
  case COLOR_YUV422_YUYV:
  case COLOR_YUV422_YVYU:
  case COLOR_YUV422_UYVY:
  case COLOR_RGB565:
    return CV_8UC2;
  default:
    return CV_8UC1;
  }
}

Picture pictureOf(const View &view) {
  const Size &size = view.size;
  const Size half = {size.width / 2, size.height / 2};
  const auto samples = [&view](std::size_t plane, const Size &of) { return matrix(view, plane, CV_8UC1, of); };
  switch (view.type) {
  case COLOR_YUV420_PLANAR:
    return {view.type, {samples(0, size), samples(1, half), samples(2, half)}, {}};
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {view.type, {samples(0, size), matrix(view, 1, CV_8UC2, half)}, {}};
  case COLOR_RGB888_PLANAR: // blue first, as merge wants it
    return {view.type, {samples(2, size), samples(1, size), samples(0, size)}, {}};
  default:
    return {view.type, {matrix(view, 0, formatOf(view.type), size)}, {}};
  }
}

Picture newPicture(int32_t type, const Size &size) {
  const cv::Size whole(size.width, size.height);
  const cv::Size half(size.width / 2, size.height / 2);
  switch (type) {
  case COLOR_YUV420_PLANAR: {
    const cv::Mat all(size.height * 3 / 2, size.width, CV_8UC1);
    uint8_t *u = all.data + whole.area();
    return {
        type, {all.rowRange(0, size.height), cv::Mat(half, CV_8UC1, u), cv::Mat(half, CV_8UC1, u + half.area())}, all};
  }
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    return {type, {cv::Mat(whole, CV_8UC1), cv::Mat(half, CV_8UC2)}, {}};
  case COLOR_RGB888_PLANAR:
    return {type, {cv::Mat(whole, CV_8UC1), cv::Mat(whole, CV_8UC1), cv::Mat(whole, CV_8UC1)}, {}};
  default:
    return {type, {cv::Mat(whole, formatOf(type))}, {}};
  }
}

Picture convertible(const View &view) {
  const Picture source = pictureOf(view);
  if (view.type != COLOR_YUV420_PLANAR) {
    return source;
  }
  const Picture copy = newPicture(view.type, view.size);
  for (std::size_t i = 0; i < copy.planes.size(); ++i) {
    cv::Mat to = copy.planes[i];
    source.planes[i].copyTo(to);
  }
  return copy;
}

bool convertsToBgr(int32_t type) {
  return type == COLOR_RGB24 || type == COLOR_RGB888_PLANAR || codeOf(type);
}

void makeBgr(const Picture &from, const cv::Mat &bgr) {
  if (from.type == COLOR_RGB888_PLANAR) {
    cv::merge(from.planes, bgr);
  } else if (from.planes.size() == 2) {
    cv::cvtColorTwoPlane(from.planes[0], from.planes[1], bgr, *codeOf(from.type));
  } else {
    cv::cvtColor(from.whole.empty() ? from.planes[0] : from.whole, bgr, *codeOf(from.type));
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

void turn(const Picture &from, const Picture &to, int turn) {
  for (std::size_t i = 0; i < from.planes.size(); ++i) {
    cv::rotate(from.planes[i], to.planes[i], turn);
  }
}

void resize(const Picture &from, const Picture &to, int interpolation) {
  for (std::size_t i = 0; i < from.planes.size(); ++i) {
    cv::resize(from.planes[i], to.planes[i], to.planes[i].size(), 0, 0, interpolation);
  }
}

} // namespace bench::opencv
