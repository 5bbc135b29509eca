#include "likeness/likeness.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace likeness {
namespace {

using reference::OwnPicture;

double decibels(double squares, double count) {
  return squares == 0 ? std::numeric_limits<double>::infinity() : 10 * std::log10(255. * 255 * count / squares);
}

/// `other` gives a sample of a component.
template <class Other>
Psnr compare(const OwnPicture &picture, const Other &other) {
  const reference::Format &format = picture.format();
  double squares = 0;
  double count = 0;
  double worst = std::numeric_limits<double>::infinity();
  for (int component = 0; component < std::min(format.components, reference::kAlpha); ++component) {
    const int columns = columnsOf(format, component, picture.width());
    const int lines = linesOf(format, component, picture.height());
    double sum = 0;
    for (int y = 0; y < lines; ++y) {
      for (int x = 0; x < columns; ++x) {
        const double difference = picture.sample(component, x, y) - other(component, x, y);
        sum += difference * difference;
      }
    }
    const double samples = static_cast<double>(columns) * lines;
    worst = std::min(worst, decibels(sum, samples));
    squares += sum;
    count += samples;
  }
  return {decibels(squares, count), worst};
}

} // namespace

Psnr psnrOf(const OwnPicture &one, const OwnPicture &other) {
  return compare(one, [&other](int component, int x, int y) { return other.sample(component, x, y); });
}

Psnr psnrOf(const OwnPicture &made, const std::vector<reference::IdealPlane> &ideal) {
  return compare(made,
                 [&ideal](int component, int x, int y) { return ideal[static_cast<std::size_t>(component)].at(x, y); });
}

} // namespace likeness
