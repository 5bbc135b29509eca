// One conversion of a stream of frames through zqPicture.
#pragma once

#include "bands.h"
#include "engine.h"
#include "formats.h"
#include "picture_request.h"

#include <memory>

namespace zqconvert {

/// What people expect who did not say: what the name of the file says, or what its format holds best of the input.
int defaultPictureType(Format format, std::string_view outputName, int inType);

class PictureEngine final : public Engine {
public:
  /// Throws Error if the request cannot be fulfilled for such a stream. `format` is what the result is meant for.
  PictureEngine(const StreamInfo &input, const PictureRequest &request, Format format);

  [[nodiscard]] const StreamInfo &output() const override { return output_; }
  [[nodiscard]] const std::vector<std::string> &notes() const override { return notes_; }
  void convert(const Frame &in, Frame &out) override;
  [[nodiscard]] double seconds() const override { return seconds_; }

private:
  struct Free {
    void operator()(ZqpConverter *converter) const { zqpConverterFree(converter); }
  };

  [[nodiscard]] ZqpConversion describe(const Rectangle &part, const PictureRequest &request, Format format);
  [[nodiscard]] int32_t convertBands(const ZqpPicture &in, const ZqpPicture &out);
  void requireOk(int32_t error) const;

  StreamInfo input_;
  StreamInfo output_;
  std::vector<std::string> notes_;
  std::unique_ptr<ZqpConverter, Free> converter_;
  Bands bands_;
  double seconds_ = 0;
};

} // namespace zqconvert
