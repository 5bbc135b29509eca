// What test pictures show.
#pragma once

#include "picture/reference/own_picture.h"

#include <cstdint>

namespace picture {

enum class Content { Noise, Extremes, Blocks, Ramp };
inline constexpr Content kContents[] = {Content::Noise, Content::Extremes, Content::Blocks, Content::Ramp};

void fill(reference::OwnPicture &picture, Content content, uint32_t seed);

/// Luma, or red, green and blue, of one value, chroma in the middle, alpha 255.
void fillGrey(reference::OwnPicture &picture, int value);

} // namespace picture
