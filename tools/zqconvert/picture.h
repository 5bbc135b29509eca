// The way to zqPicture, which is not built everywhere.
#pragma once

#include "engine.h"
#include "options.h"

#include <memory>

namespace zqconvert {

/// Throws Error if the request cannot be fulfilled, or if this program was built without zqPicture.
std::unique_ptr<Engine> makePictureEngine(const Options &options, const StreamInfo &info);

} // namespace zqconvert
