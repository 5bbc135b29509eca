// One conversion of a stream of frames through the thirteen functions' handle interface.
#pragma once

#include "engine.h"
#include "zqColorConversion.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace zqconvert {

struct Matrix {
  int index = MATRIX_BT601;
  std::array<double, 4> custom{}; ///< For MATRIX_CUSTOM.
};

/// What to do with every frame.
struct Request {
  int outType = COLOR_RGB565;
  Matrix matrix;
  /// In the input's orientation, before a turn. One side may be -N: as the other one asks for, a multiple of N.
  std::optional<Size> scale;
  uint32_t rotation = ROTATION_NONE;
  uint32_t quality = 0;
  std::optional<Rectangle> crop;
};

/// A result code of the library in words.
std::string describeResult(uint32_t code);

class Converter final : public Engine {
public:
  /// Throws Error if the request cannot be fulfilled for such a stream.
  Converter(const StreamInfo &input, const Request &request);
  Converter(const Converter &) = delete;
  Converter &operator=(const Converter &) = delete;
  ~Converter() override;

  [[nodiscard]] const StreamInfo &output() const override { return output_; }
  [[nodiscard]] const std::vector<std::string> &notes() const override { return notes_; }
  void convert(const Frame &in, Frame &out) override;
  [[nodiscard]] double seconds() const override { return seconds_; }

private:
  void requireCrop() const;
  void requireRoute(Size upright);
  void setUp(ConvertParams &params);
  void selectMatrix();
  [[nodiscard]] ConvertParams describe(const Frame &in, Frame &out) const;
  void requireOk(uint32_t code) const;

  StreamInfo input_;
  Request request_;
  Rectangle part_; ///< The part of the input that is converted.
  StreamInfo output_;
  std::vector<std::string> notes_;
  ConvertContext *handle_ = nullptr;
  bool ready_ = false;
  double seconds_ = 0;
};

} // namespace zqconvert
