// Colour types as zqPicture has them.
#pragma once

#include "frame.h"
#include "zqPicture.h"

namespace zqconvert {

/// A code of colorTypes(Library::Picture).
ZqpFormat pictureFormat(int type);
/// Whether zqPicture makes pictures of the type; it reads all of them.
bool isPictureOutput(int type);
/// A view of a frame whose planes are as Frame::whole() says.
ZqpPicture viewOf(const Frame &frame);
/// The table that --list-types prints.
std::string describePictureTypes();

} // namespace zqconvert
