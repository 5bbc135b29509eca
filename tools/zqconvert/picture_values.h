// The words behind the options of zqPicture. Everything throws Error, in words that help, for what makes no sense.
#pragma once

#include "picture_request.h"

#include <string>

namespace zqconvert {

/// EXIF's number for a turn and a mirroring after it; either may be empty.
int parseOrientation(const std::string &rotate, const std::string &flip);
ZqpFilter parseFilter(const std::string &text);
ZqpDither parseDither(const std::string &text);
int parseThreads(const std::string &text);
/// IN, IN:OUT or :OUT, set in the request; an empty text says nothing.
void parseMatrices(const std::string &text, PictureRequest &request);
void parseRanges(const std::string &text, PictureRequest &request);
void parseSitings(const std::string &text, PictureRequest &request);

} // namespace zqconvert
