// The other libraries that were found when the benchmarks were configured.
#include "runner.h"

namespace bench {

std::vector<Program> peerPrograms() {
  std::vector<Program> programs;
#ifdef ZQCC_BENCH_LIBYUV
  addLibyuv(programs);
#endif
#ifdef ZQCC_BENCH_LIBYUV_ROWS
  addLibyuvRows(programs);
#endif
#ifdef ZQCC_BENCH_SWSCALE
  addSwscale(programs);
#endif
#ifdef ZQCC_BENCH_OPENCV
  addOpenCv(programs);
  addOpenCvBgra(programs);
#endif
  return programs;
}

} // namespace bench
