#include "picture/reference/formats.h"

#include <algorithm>

namespace reference {

namespace {

constexpr Place plane(int number) {
  return {number, 1, 1, {0, 0}};
}

/// One of several components that alternate.
constexpr Place every(int plane, int bytes, int at) {
  return {plane, bytes, 1, {at, at}};
}

constexpr Place lumaPair(int first, int second) {
  return {0, 4, 2, {first, second}};
}

constexpr Format planar(int32_t number, const char *name, int shiftX, int shiftY, int u, int v, bool isInputOnly) {
  return {number, name, Kind::Yuv, Store::Bytes, 3, shiftX, shiftY, isInputOnly, {plane(0), plane(u), plane(v)}};
}

constexpr Format pairs(int32_t number, const char *name, int u, int v) {
  return {number, name, Kind::Yuv, Store::Bytes, 3, 1, 1, false, {plane(0), every(1, 2, u), every(1, 2, v)}};
}

constexpr Format packed(int32_t number, const char *name, int y0, int y1, int u, int v) {
  return {number, name, Kind::Yuv, Store::Bytes, 3, 1, 0, y0 > y1, {lumaPair(y0, y1), every(0, 4, u), every(0, 4, v)}};
}

constexpr Format words(int32_t number, const char *name, Store store) {
  return {number, name, Kind::Rgb, store, 3, 0, 0, false, {every(0, 2, 0), every(0, 2, 0), every(0, 2, 0)}};
}

constexpr Format pixels(int32_t number, const char *name, int bytes, int red, int blue) {
  return {number,
          name,
          Kind::Rgb,
          Store::Bytes,
          bytes,
          0,
          0,
          false,
          {every(0, bytes, red), every(0, bytes, 1), every(0, bytes, blue), every(0, bytes, 3)}};
}

} // namespace

const std::vector<Format> &allFormats() {
  static const std::vector<Format> formats = {
      planar(ZQP_I420, "I420", 1, 1, 1, 2, false),
      planar(ZQP_YV12, "YV12", 1, 1, 2, 1, false),
      pairs(ZQP_NV12, "NV12", 0, 1),
      pairs(ZQP_NV21, "NV21", 1, 0),
      planar(ZQP_I422, "I422", 1, 0, 1, 2, false),
      planar(ZQP_I444, "I444", 0, 0, 1, 2, false),
      {ZQP_GREY, "GREY", Kind::Grey, Store::Bytes, 1, 0, 0, false, {plane(0)}},
      packed(ZQP_YUYV, "YUYV", 0, 2, 1, 3),
      packed(ZQP_UYVY, "UYVY", 1, 3, 0, 2),
      packed(ZQP_YVYU, "YVYU", 0, 2, 3, 1),
      packed(ZQP_VYUY, "VYUY", 1, 3, 2, 0),
      words(ZQP_RGB565, "RGB565", Store::Words),
      words(ZQP_RGB565_SWAPPED, "RGB565_SWAPPED", Store::WordsSwapped),
      pixels(ZQP_RGB24, "RGB24", 3, 0, 2),
      pixels(ZQP_BGR24, "BGR24", 3, 2, 0),
      pixels(ZQP_RGBA, "RGBA", 4, 0, 2),
      pixels(ZQP_BGRA, "BGRA", 4, 2, 0),
      planar(ZQP_I440, "I440", 0, 1, 1, 2, true),
      planar(ZQP_I411, "I411", 2, 0, 1, 2, true),
      planar(ZQP_QUARTER_HEIGHT, "QUARTER_HEIGHT", 0, 2, 1, 2, true),
      packed(ZQP_YUYV2, "YUYV2", 2, 0, 1, 3),
      packed(ZQP_UYVY2, "UYVY2", 3, 1, 0, 2),
      packed(ZQP_YVYU2, "YVYU2", 2, 0, 3, 1),
      packed(ZQP_VYUY2, "VYUY2", 3, 1, 2, 0),
      {ZQP_RGB_PLANES, "RGB_PLANES", Kind::Rgb, Store::Bytes, 3, 0, 0, true, {plane(0), plane(1), plane(2)}},
  };
  return formats;
}

const Format &formatOf(int32_t number) {
  return allFormats().at(static_cast<std::size_t>(number - 1));
}

bool isChroma(const Format &format, int component) {
  return format.kind == Kind::Yuv && component != 0;
}

int shiftXOf(const Format &format, int component) {
  return isChroma(format, component) ? format.shiftX : 0;
}

int shiftYOf(const Format &format, int component) {
  return isChroma(format, component) ? format.shiftY : 0;
}

int columnsOf(const Format &format, int component, int width) {
  const int shift = shiftXOf(format, component);
  return (width + (1 << shift) - 1) >> shift;
}

int linesOf(const Format &format, int component, int height) {
  const int shift = shiftYOf(format, component);
  return (height + (1 << shift) - 1) >> shift;
}

int mostOf(const Format &format, int component) {
  if (format.store == Store::Bytes) {
    return 255;
  }
  return component == 1 ? 63 : 31;
}

int planesOf(const Format &format) {
  int planes = 0;
  for (int component = 0; component < format.components; ++component) {
    planes = std::max(planes, format.places[component].plane + 1);
  }
  return planes;
}

int lineBytesOf(const Format &format, int plane, int width) {
  int bytes = 0;
  for (int component = 0; component < format.components; ++component) {
    const Place &place = format.places[component];
    if (place.plane == plane) {
      const int groups = (columnsOf(format, component, width) + place.perGroup - 1) / place.perGroup;
      bytes = std::max(bytes, groups * place.groupBytes);
    }
  }
  return bytes;
}

int planeLinesOf(const Format &format, int plane, int height) {
  int lines = 0;
  for (int component = 0; component < format.components; ++component) {
    if (format.places[component].plane == plane) {
      lines = std::max(lines, linesOf(format, component, height));
    }
  }
  return lines;
}

} // namespace reference
