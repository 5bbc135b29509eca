// The exported functions that know of views and descriptions alone.
#include "picture/description.h"
#include "picture/views.h"
#include "zqPicture.h"

#include <iterator>

namespace zqp {
namespace {

constexpr const char *kSentences[] = {
    "Success.",
    "A pointer is null.",
    "A record's recordSize is not one that this library knows.",
    "The format does not exist, or is an input format only.",
    "A side is shorter than 1 or longer than 32768 pixels.",
    "The rectangle does not lie in the picture, or a part begins inside a chroma sample.",
    "The orientation is not one of EXIF's eight.",
    "There is no such filter.",
    "Matrix, range, siting, or Kr and Kb, cannot be.",
    "There is no such dither.",
    "The converter could not be allocated.",
    "Format or size of a view are not those of the conversion.",
    "A stride is shorter than a line, or an alignment is not a power of two up to 4096.",
    "A plane is null, or its memory is too small for its lines.",
    "Output memory overlaps input memory or another output plane.",
    "The lines do not lie in the output picture.",
};

constexpr uint32_t kMostAlignment = 4096;

bool isAlignment(uint32_t alignment) {
  return alignment >= 1 && alignment <= kMostAlignment && (alignment & (alignment - 1)) == 0;
}

int32_t checkShape(const Format *format, int32_t width, int32_t height) {
  if (format == nullptr) {
    return ZQP_ERR_FORMAT;
  }
  const bool areSides = width >= 1 && width <= ZQP_MOST_PIXELS && height >= 1 && height <= ZQP_MOST_PIXELS;
  return areSides ? ZQP_OK : ZQP_ERR_SIZE;
}

std::size_t strideOf(const PlaneShape &shape, uint32_t alignment) {
  const std::size_t rest = std::size_t{alignment} - 1;
  return (shape.lineBytes + rest) & ~rest;
}

int32_t checkPart(const Format &format, const ZqpPicture &picture, const ZqpRect &part) {
  const Shifts whole = wholeSamples(format);
  const bool isInside = part.x >= 0 && part.y >= 0 && part.width >= 1 && part.height >= 1 &&
                        part.width <= picture.width && part.height <= picture.height &&
                        part.x <= picture.width - part.width && part.y <= picture.height - part.height;
  const bool isWhole = (part.x & ((1 << whole.x) - 1)) == 0 && (part.y & ((1 << whole.y) - 1)) == 0;
  return isInside && isWhole ? ZQP_OK : ZQP_ERR_CROP;
}

/// A plane of the part, whose lowest address is that of its last line if the stride is negative.
ZqpPlane planeOfPart(const ZqpPicture &picture, const Format &format, const Planes &planes, int32_t plane,
                     const ZqpRect &part) {
  const PlaneShape before = placeInPlane(format, part.x, part.y, plane);
  const PlaneShape shape = planeShape(format, part.width, part.height, plane);
  const std::ptrdiff_t stride = picture.planes[plane].stride;
  const std::ptrdiff_t toLast = shape.lines > 1 ? stride * (shape.lines - 1) : 0;
  uint8_t *first =
      planes.line[plane] + before.lines * planes.stride[plane] + static_cast<std::ptrdiff_t>(before.lineBytes);
  const std::ptrdiff_t extent = toLast < 0 ? -toLast : toLast;
  return {toLast < 0 ? first + toLast : first, stride, static_cast<std::size_t>(extent) + shape.lineBytes};
}

} // namespace
} // namespace zqp

using namespace zqp;

const char *zqpErrorText(int32_t error) {
  return error >= 0 && error < static_cast<int32_t>(std::size(kSentences)) ? kSentences[error]
                                                                           : "There is no such error.";
}

int32_t zqpPictureBytes(int32_t format, int32_t width, int32_t height, uint32_t strideAlignment, size_t *bytes) {
  const Format *known = formatOf(format);
  if (bytes == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (const int32_t error = checkShape(known, width, height); error != ZQP_OK) {
    return error;
  }
  if (!isAlignment(strideAlignment)) {
    return ZQP_ERR_STRIDE;
  }
  std::size_t sum = 0;
  for (int32_t p = 0; p < known->planes(); ++p) {
    const PlaneShape shape = planeShape(*known, width, height, p);
    const std::size_t plane = strideOf(shape, strideAlignment) * static_cast<std::size_t>(shape.lines);
    if (plane > SIZE_MAX - sum || plane / strideOf(shape, strideAlignment) != static_cast<std::size_t>(shape.lines)) {
      return ZQP_ERR_SIZE; // more than addresses of 32 bits reach
    }
    sum += plane;
  }
  *bytes = sum;
  return ZQP_OK;
}

int32_t zqpPictureLayOut(ZqpPicture *picture, int32_t format, int32_t width, int32_t height, uint32_t strideAlignment,
                         void *memory, size_t bytes) {
  if (picture == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (picture->recordSize != sizeof(ZqpPicture)) {
    return ZQP_ERR_RECORD;
  }
  size_t needed = 0;
  if (const int32_t error = zqpPictureBytes(format, width, height, strideAlignment, &needed); error != ZQP_OK) {
    return error;
  }
  if (memory == nullptr || bytes < needed) {
    return ZQP_ERR_PLANE;
  }
  const Format &known = *formatOf(format);
  ZqpPicture laidOut{};
  laidOut.recordSize = sizeof(ZqpPicture);
  laidOut.format = format;
  laidOut.width = width;
  laidOut.height = height;
  auto *at = static_cast<uint8_t *>(memory);
  for (int32_t p = 0; p < known.planes(); ++p) {
    const PlaneShape shape = planeShape(known, width, height, p);
    const std::size_t stride = strideOf(shape, strideAlignment);
    const std::size_t plane = stride * static_cast<std::size_t>(shape.lines);
    laidOut.planes[p] = {at, static_cast<std::ptrdiff_t>(stride), plane};
    at += plane;
  }
  *picture = laidOut;
  return ZQP_OK;
}

int32_t zqpPicturePart(const ZqpPicture *picture, int32_t x, int32_t y, int32_t width, int32_t height,
                       ZqpPicture *part) {
  if (picture == nullptr || part == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (picture->recordSize != sizeof(ZqpPicture) || part->recordSize != sizeof(ZqpPicture)) {
    return ZQP_ERR_RECORD;
  }
  const Format *format = formatOf(picture->format);
  if (const int32_t error = checkShape(format, picture->width, picture->height); error != ZQP_OK) {
    return error;
  }
  const ZqpRect rect = {x, y, width, height};
  if (const int32_t error = checkPart(*format, *picture, rect); error != ZQP_OK) {
    return error;
  }
  Planes planes{};
  if (const int32_t error = planesOf(*picture, *format, planes); error != ZQP_OK) {
    return error;
  }
  ZqpPicture cut{};
  cut.recordSize = sizeof(ZqpPicture);
  cut.format = picture->format;
  cut.width = width;
  cut.height = height;
  for (int32_t p = 0; p < format->planes(); ++p) {
    cut.planes[p] = planeOfPart(*picture, *format, planes, p, rect);
  }
  *part = cut;
  return ZQP_OK;
}

int32_t zqpConversionInit(ZqpConversion *conversion) {
  if (conversion == nullptr) {
    return ZQP_ERR_NULL;
  }
  if (conversion->recordSize != sizeof(ZqpConversion)) {
    return ZQP_ERR_RECORD;
  }
  *conversion = {};
  conversion->recordSize = sizeof(ZqpConversion);
  conversion->orientation = 1;
  return ZQP_OK;
}
