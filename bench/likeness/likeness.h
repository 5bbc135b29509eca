// How alike two pictures are, as ratio of the largest value's power to that of their differences.
#pragma once

#include "picture/reference/ideal_model.h"
#include "picture/reference/own_picture.h"

#include <vector>

namespace likeness {

/// Decibels; infinite where nothing differs.
struct Psnr {
  double all;   ///< over the samples of all components
  double worst; ///< of the component that differs most
};

/// Of two pictures of one format and size. Alpha is left out.
Psnr psnrOf(const reference::OwnPicture &one, const reference::OwnPicture &other);
Psnr psnrOf(const reference::OwnPicture &made, const std::vector<reference::IdealPlane> &ideal);

} // namespace likeness
