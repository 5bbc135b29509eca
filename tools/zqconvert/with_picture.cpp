#include "picture.h"
#include "picture_engine.h"

namespace zqconvert {

std::unique_ptr<Engine> makePictureEngine(const Options &options, const StreamInfo &info) {
  PictureRequest request = options.picture;
  request.outType = options.outType.value_or(defaultPictureType(options.format, options.output, info.type));
  requireHolds(options.format, request.outType, Library::Picture);
  return std::make_unique<PictureEngine>(info, request, options.format);
}

} // namespace zqconvert
