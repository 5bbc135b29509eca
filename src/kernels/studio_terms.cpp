#include "kernels/arithmetic.h"

namespace zqcc {
namespace {

constexpr StudioTerms makeTerms() {
  constexpr int32_t kLuma = -16 * Studio::kY;
  StudioTerms terms{};
  for (int32_t i = 0; i < 256; ++i) {
    const int32_t chroma = i - 128;
    terms.red[i] = kLuma + chroma * Studio::kCrR;
    terms.greenV[i] = kLuma - chroma * Studio::kCrG;
    terms.greenU[i] = -chroma * Studio::kCbG;
    terms.blue[i] = kLuma + chroma * Studio::kCbB;
  }
  return terms;
}

} // namespace

constexpr StudioTerms STUDIO_TERMS = makeTerms();

} // namespace zqcc
