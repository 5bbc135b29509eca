// Same-size conversions to RGB by libyuv's row functions. Upright, flipped and half-turned pictures go line by line.
// Quarter turns go by strips of columns, whose planes are turned into the second-level cache first.
#include "libyuv_rows.h"
#include "runner.h"

#include <libyuv.h>

#include <algorithm>
#include <memory>

namespace bench {
namespace {

bool isRgb(int32_t type) {
  return type == COLOR_RGB565 || type == COLOR_RGB24 || type == kBgra;
}

Runner uprightRunner(const Task &task) {
  const bool half = task.job.rotation == ROTATION_180;
  const View to = half || task.job.rotation == ROTATION_FLIP_V ? bottomUp(task.output) : task.output;
  const yuv::RowPicture from = yuv::rowPicture(task.input);
  const auto converter = std::make_shared<yuv::RowConverter>(from, to.type, half);
  return [from, to, converter] {
    for (int32_t y = 0; y < to.size.height; ++y) {
      converter->line(from, y, to.plane[0] + std::ptrdiff_t{y} * to.stride[0]);
    }
    return true;
  };
}

/// Planes of a strip of columns, as they are and turned.
class TurnedStrip {
public:
  TurnedStrip(const View &input, bool left, int32_t columns)
      : input_(input), rows_(yuv::rowPicture(input)), mode_(left ? libyuv::kRotate270 : libyuv::kRotate90),
        columns_(columns), turnedStride_((input.size.height + 63) / 64 * 64) {
    const auto lines = static_cast<std::size_t>(columns);
    const auto height = static_cast<std::size_t>(input.size.height);
    for (std::size_t p = 0; p < 3; ++p) {
      turned_[p].resize(lines * static_cast<std::size_t>(turnedStride_) + kSlack);
      upright_[p].resize(lines * height + kSlack);
    }
  }

  /// The strip that begins at a column, as a picture of `columns` lines.
  yuv::RowPicture at(int32_t column) {
    switch (rows_.kind) {
    case yuv::RowKind::I422:
      return planes(column, {1, rows_.chromaShift});
    case yuv::RowKind::I444:
      return planes(column, {0, rows_.chromaShift});
    case yuv::RowKind::I411:
      return planes(column, {2, 0});
    case yuv::RowKind::PlanarRgb:
      return planes(column, {0, 0});
    case yuv::RowKind::Nv12:
    case yuv::RowKind::Nv21:
      return semiPlanar(column);
    case yuv::RowKind::Yuy2:
    case yuv::RowKind::Uyvy:
      return packed(column);
    case yuv::RowKind::Rgb24:
      return rgb24(column);
    default:
      return {};
    }
  }

private:
  struct Shifts {
    int32_t across, down;
  };

  void turn(const uint8_t *from, int32_t stride, std::size_t plane, int32_t columns, int32_t height) {
    libyuv::RotatePlane(from, stride, turned_[plane].data(), turnedStride_, columns, height, mode_);
  }

  [[nodiscard]] yuv::RowPicture result(Shifts shifts) {
    constexpr yuv::RowKind kByShift[] = {yuv::RowKind::I444, yuv::RowKind::I422, yuv::RowKind::I411};
    yuv::RowPicture picture;
    picture.kind = isRgbSource() ? yuv::RowKind::PlanarRgb : kByShift[shifts.down];
    picture.chromaShift = shifts.across;
    picture.swapsChroma = rows_.swapsChroma;
    picture.view.size = {input_.size.height, columns_};
    for (std::size_t p = 0; p < 3; ++p) {
      picture.view.plane[p] = turned_[p].data();
      picture.view.stride[p] = turnedStride_;
    }
    return picture;
  }
  [[nodiscard]] bool isRgbSource() const {
    return rows_.kind == yuv::RowKind::PlanarRgb || rows_.kind == yuv::RowKind::Rgb24;
  }

  /// Of full-height chroma every second line is all that a turned picture shows.
  yuv::RowPicture planes(int32_t column, Shifts shifts) {
    const bool halves = shifts.down == 0 && !isRgbSource();
    for (std::size_t p = 0; p < 3; ++p) {
      const bool chroma = p > 0;
      const int32_t down = !chroma ? 0 : halves ? 1 : shifts.down;
      const int32_t across = chroma ? shifts.across : 0;
      turn(input_.plane[p] + (column >> across), input_.stride[p] << (chroma && halves ? 1 : 0), p, columns_ >> across,
           input_.size.height >> down);
    }
    return result({shifts.across, halves ? 1 : shifts.down});
  }

  yuv::RowPicture semiPlanar(int32_t column) {
    const bool vFirst = rows_.kind == yuv::RowKind::Nv21;
    turn(input_.plane[0] + column, input_.stride[0], 0, columns_, input_.size.height);
    libyuv::SplitRotateUV(input_.plane[1] + column, input_.stride[1], turned_[vFirst ? 2 : 1].data(), turnedStride_,
                          turned_[vFirst ? 1 : 2].data(), turnedStride_, columns_ / 2, input_.size.height / 2, mode_);
    return result({1, 1});
  }

  /// One chroma line for two lines: less work than keeping all of them, and nobody sees the difference.
  yuv::RowPicture packed(int32_t column) {
    const auto split = rows_.kind == yuv::RowKind::Yuy2 ? libyuv::YUY2ToI420 : libyuv::UYVYToI420;
    split(input_.plane[0] + std::ptrdiff_t{2} * column, input_.stride[0], upright_[0].data(), columns_,
          upright_[1].data(), columns_ / 2, upright_[2].data(), columns_ / 2, columns_, input_.size.height);
    turn(upright_[0].data(), columns_, 0, columns_, input_.size.height);
    for (std::size_t p = 1; p < 3; ++p) {
      turn(upright_[p].data(), columns_ / 2, p, columns_ / 2, input_.size.height / 2);
    }
    return result({1, 1});
  }

  yuv::RowPicture rgb24(int32_t column) {
    // Blue is the first byte; the planes of the result are red, green, blue.
    libyuv::SplitRGBPlane(input_.plane[0] + std::ptrdiff_t{3} * column, input_.stride[0], upright_[2].data(), columns_,
                          upright_[1].data(), columns_, upright_[0].data(), columns_, columns_, input_.size.height);
    for (std::size_t p = 0; p < 3; ++p) {
      turn(upright_[p].data(), columns_, p, columns_, input_.size.height);
    }
    return result({0, 0});
  }

  static constexpr std::size_t kSlack = 256;
  View input_;
  yuv::RowPicture rows_;
  libyuv::RotationMode mode_;
  int32_t columns_;
  int32_t turnedStride_;
  std::array<std::vector<uint8_t>, 3> turned_, upright_;
};

Runner turnedRunner(const Task &task, int32_t columns) {
  const int32_t width = task.input.size.width;
  if (width % columns != 0) {
    return {};
  }
  const bool left = task.job.rotation == ROTATION_90_LEFT;
  const auto strip = std::make_shared<TurnedStrip>(task.input, left, columns);
  const auto converter = std::make_shared<yuv::RowConverter>(strip->at(0), task.output.type, false);
  const View to = task.output;
  return [=] {
    for (int32_t top = 0; top < width; top += columns) {
      const yuv::RowPicture lines = strip->at(left ? width - top - columns : top);
      for (int32_t y = 0; y < columns; ++y) {
        converter->line(lines, y, to.plane[0] + std::ptrdiff_t{top + y} * to.stride[0]);
      }
    }
    return true;
  };
}

bool served(const Task &task) {
  return yuv::haveRows() && !task.job.resizes() && isRgb(task.job.outType) &&
         yuv::rowPicture(task.input).kind != yuv::RowKind::None;
}

} // namespace

void addLibyuvRows(std::vector<Program> &programs) {
  programs.push_back({"libyuv rows", [](const Task &task) {
                        return served(task) && !task.job.quarterTurns() ? uprightRunner(task) : Runner{};
                      }});
  for (const int32_t columns : {16, 32, 64, 128}) {
    programs.push_back({"libyuv strips of " + std::to_string(columns), [columns](const Task &task) {
                          return served(task) && task.job.quarterTurns() ? turnedRunner(task, columns) : Runner{};
                        }});
  }
}

} // namespace bench
