#include "error.h"
#include "picture.h"

namespace zqconvert {

std::unique_ptr<Engine> makePictureEngine(const Options & /*options*/, const StreamInfo & /*info*/) {
  throw Error("this program was built without zqPicture; --classic converts by the thirteen functions");
}

} // namespace zqconvert
