#include "reference/same_format.h"

#include "reference/same_format_detail.h"

namespace reference {

void convertSameFormat(const ConvertParams &p, int cropped) {
  if (p.outWidth <= 0 || p.outHeight <= 0) {
    return;
  }
  switch (p.inType) {
  case COLOR_YUV420_PLANAR:
  case COLOR_YVU420_PLANAR:
    detail::convertPlanar(p);
    break;
  case COLOR_YUV420_PACK:
  case COLOR_YUV420_PACK2:
    detail::convertSemiPlanar(p);
    break;
  case COLOR_RGB565:
  case COLOR_RGB16_ALT:
    detail::convertRgb16(p);
    break;
  default:
    detail::convertPacked(p, p.inStride - cropped);
    break;
  }
}

} // namespace reference
