// Pictures as OpenCV has them, and the steps between them.
#pragma once

#include "frame.h"

#include <opencv2/core.hpp>

#include <optional>
#include <vector>

namespace bench::opencv {

/// The planes of a picture. Those of planar 4:2:0 lie behind one another in `whole`, which is what conversions read.
struct Picture {
  int32_t type;
  std::vector<cv::Mat> planes;
  cv::Mat whole;
};

/// Format of one-plane types; 8 bits where there are several planes.
int formatOf(int32_t type);
/// Somebody else's planes; `whole` is left empty.
Picture pictureOf(const View &view);
Picture newPicture(int32_t type, const Size &size);
/// Planar 4:2:0 is copied into one matrix, once; the others are read where they lie.
Picture convertible(const View &view);

bool convertsToBgr(int32_t type);
/// To 24 bits, bytes B, G, R.
void makeBgr(const Picture &from, const cv::Mat &bgr);

std::optional<int> turnOf(uint32_t rotation);
void turn(const Picture &from, const Picture &to, int turn);
void resize(const Picture &from, const Picture &to, int interpolation);

} // namespace bench::opencv
