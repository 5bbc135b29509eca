// What the numbers of input and output mean: what is asked for, else what the stream says, else what is usual.
#pragma once

#include "formats.h"
#include "picture_request.h"

#include <string>
#include <vector>

namespace zqconvert {

struct ColourPair {
  ZqpColours in;
  ZqpColours out;
};

ColourPair resolveColours(const StreamInfo &input, const PictureRequest &request, Format format);

/// Corrects the words of `output`, which are the input's, so that they say the colours of a result of its type.
void adaptColourTags(StreamInfo &output, const StreamInfo &input, const PictureRequest &request,
                     const ColourPair &colours);

/// Options that change nothing for these types, a line each.
std::vector<std::string> idleColourOptions(int inType, const PictureRequest &request);

} // namespace zqconvert
